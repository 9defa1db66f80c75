#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <platform/modules/detail/LockedFile.h>

#include <cerrno>

namespace {

// 0 for a regular file that may be written to.
int CheckWritable(const char* path, const struct stat& status) {
    if (S_ISDIR(status.st_mode)) return EISDIR;
    if (!S_ISREG(status.st_mode)) return EINVAL;
    if ((status.st_mode & S_IWUSR) == 0) return EACCES;
    return access(path, W_OK) == 0 ? 0 : errno;
}

// Where the file system has no locks, nobody is waited for.
void WaitForLock(int file) {
    while (flock(file, LOCK_EX) != 0 && errno == EINTR) {
    }
}

bool IsFileOf(const char* path, const struct stat& opened) {
    struct stat status {};
    return stat(path, &status) == 0 && status.st_dev == opened.st_dev &&
           status.st_ino == opened.st_ino;
}

}  // namespace

LockedFile::~LockedFile() {
    Close();
}

int LockedFile::Open(const char* path) {
    struct stat status {};
    // A file that has gone from its path meanwhile is looked for anew, and so missed.
    do {
        Close();
        m_file = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        if (m_file < 0 || fstat(m_file, &status) != 0) return errno;
        if (const int error = CheckWritable(path, status); error != 0) return error;
        WaitForLock(m_file);
    } while (!IsFileOf(path, status));
    return 0;
}

void LockedFile::Close() {
    if (m_file >= 0) close(m_file);
    m_file = -1;
}
