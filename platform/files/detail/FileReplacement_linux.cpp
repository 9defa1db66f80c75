#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <platform/files/detail/FileReplacement.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <optional>

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

// The path of the file without symbolic links; the path itself where that cannot be told.
std::string Resolved(const std::string& path) {
    char* real = ::realpath(path.c_str(), nullptr);
    if (real == nullptr) return path;
    std::string resolved(real);
    std::free(real);
    return resolved;
}

// What a symbolic link says; none if the path is no link.
std::optional<std::string> LinkText(const std::string& path) {
    char text[PATH_MAX];
    const ssize_t size = ::readlink(path.c_str(), text, sizeof text);
    return size < 0 ? std::nullopt : std::optional(std::string(text, text + size));
}

// The number of the open file of this process that a link like "/dev/fd/1" stands for.
std::optional<int> OpenFileOf(const std::string& link) {
    const std::string name = link.substr(link.rfind('/') + 1);
    const bool number = !name.empty() && name.size() < 9 &&
                        std::all_of(name.begin(), name.end(),
                                    [](unsigned char letter) { return std::isdigit(letter); });
    if (!number || Resolved(FolderOf(link)) != Resolved("/proc/self/fd")) return std::nullopt;
    return std::atoi(name.c_str());
}

// What a path names in the end.
struct End {
    // Behind all links but those to an open file of this process; there may be nothing.
    std::string path;
    std::optional<int> openFile;
};

End EndOf(std::string path) {
    // The system follows no more links either.
    for (int links = 0; links < 40; ++links) {
        const std::optional<std::string> text = LinkText(path);
        if (!text) break;
        if (const std::optional<int> open = OpenFileOf(path)) return {path, open};
        path = text->starts_with('/') ? *text : FolderOf(path) + '/' + *text;
    }
    return {path, {}};
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
    const End end = EndOf(path);
    m_path = exists ? Resolved(path) : end.path;
    m_direct = end.openFile || (exists && !S_ISREG(status.st_mode));
    if (!m_direct) return exists ? Replace() : OpenBeside();
    m_file = end.openFile ? ::fcntl(*end.openFile, F_DUPFD_CLOEXEC, 0)
                          : ::open(path, O_WRONLY | O_CLOEXEC);
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
