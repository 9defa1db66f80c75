#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <platform/files/detail/FileReplacement.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>

namespace {

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// The new name reaches the disk with its folder. That cannot be done everywhere, and
// the file is whole either way.
void SyncFolder(const std::string& path) {
    const int folder = ::open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return;
    static_cast<void>(::fsync(folder));
    ::close(folder);
}

// Where a chain of symbolic links ends; the path itself where that cannot be told.
std::string Resolved(const char* path) {
    char* real = ::realpath(path, nullptr);
    if (real == nullptr) return path;
    std::string resolved(real);
    std::free(real);
    return resolved;
}

// Tries names in `folder` that nobody has until `make` succeeds under one or fails for
// another reason than the name; what it answered last, and the name.
template <class Make>
int UnderNewName(const std::string& folder, std::string& name, Make make) {
    static std::atomic<unsigned> counter = 0;
    const std::string start = folder + "/.new-" + std::to_string(::getpid()) + '-';
    int result = -1;
    do {
        name = start + std::to_string(counter++);
        result = make(name.c_str());
    } while (result < 0 && errno == EEXIST);
    return result;
}

// The owner stays where the system allows it. Where it does not, the file is not run
// under the name of an owner who never wrote it.
mode_t KeepOwner(int file, const struct stat& old) {
    struct stat made = {};
    if (::fstat(file, &made) != 0) return old.st_mode & 0777;
    const bool same = made.st_uid == old.st_uid && made.st_gid == old.st_gid;
    const bool kept = same || ::fchown(file, old.st_uid, old.st_gid) == 0;
    return old.st_mode & (kept ? 07777 : 0777);
}

}  // namespace

FileReplacement::~FileReplacement() {
    Close();
    if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
}

int FileReplacement::Open(const char* path) {
    struct stat status = {};
    const bool exists = ::stat(path, &status) == 0;
    if (!exists && errno != ENOENT) return errno;
    m_path = exists ? Resolved(path) : path;
    if (!exists) return OpenBeside();
    if (S_ISREG(status.st_mode)) return Replace();
    m_direct = true;
    m_file = ::open(path, O_WRONLY | O_CLOEXEC);
    return m_file < 0 ? errno : 0;
}

// A file without a name leaves nothing behind when the process ends; where the file
// system has no such files, it has a name from the start.
int FileReplacement::OpenBeside() {
    const std::string folder = FolderOf(m_path);
    if (!m_named) m_file = ::open(folder.c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, 0666);
    if (m_file >= 0) return 0;
    std::string name;
    m_file = UnderNewName(folder, name, [](const char* path) {
        return ::open(path, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    });
    if (m_file < 0) return errno;
    m_temporary = std::move(name);
    return 0;
}

int FileReplacement::Replace() {
    // A file that must not be written to is not replaced either.
    if (::access(m_path.c_str(), W_OK) != 0) return errno;
    struct stat old = {};
    if (::stat(m_path.c_str(), &old) != 0) return errno;
    if (const int error = OpenBeside(); error != 0) return error;
    return ::fchmod(m_file, KeepOwner(m_file, old)) == 0 ? 0 : errno;
}

int FileReplacement::Write(const void* data, std::size_t size) {
    const char* from = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t put = ::write(m_file, from, size);
        if (put < 0 && errno == EINTR) continue;
        if (put < 0) return errno;
        from += put;
        size -= static_cast<std::size_t>(put);
    }
    return 0;
}

int FileReplacement::Finish() {
    if (m_direct) return Close();
    if (::fsync(m_file) != 0) return errno;
    if (const int error = Name(); error != 0) return error;
    if (const int error = Close(); error != 0) return error;
    if (::rename(m_temporary.c_str(), m_path.c_str()) != 0) return errno;
    m_temporary.clear();
    SyncFolder(m_path);
    return 0;
}

int FileReplacement::Name() {
    if (!m_temporary.empty()) return 0;
    const std::string open = "/proc/self/fd/" + std::to_string(m_file);
    std::string name;
    const int linked = UnderNewName(FolderOf(m_path), name, [&open](const char* path) {
        return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, path, AT_SYMLINK_FOLLOW);
    });
    if (linked != 0) return errno;
    m_temporary = std::move(name);
    return 0;
}

int FileReplacement::Close() {
    if (m_file < 0) return 0;
    const int result = ::close(m_file);
    m_file = -1;
    return result == 0 ? 0 : errno;
}
