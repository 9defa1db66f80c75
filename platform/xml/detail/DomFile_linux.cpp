#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <platform/xml/detail/DomFile.h>

namespace {

// A file descriptor that is closed in the end.
class OpenFile {
public:
    explicit OpenFile(int file) : m_file(file) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        if (m_file >= 0) ::close(m_file);
    }
    int Get() const { return m_file; }

private:
    int m_file;
};

constexpr std::size_t kFirstRoom = 16 * 1024;

// Reads on until the end of the file or of `room`; the count, or -1.
ssize_t ReadFully(int file, char* to, std::size_t room) {
    std::size_t done = 0;
    while (done < room) {
        const ssize_t got = ::read(file, to + done, room - done);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return -1;
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return static_cast<ssize_t>(done);
}

DomBuffer Grown(DomBuffer& content) {
    DomBuffer larger(content.Size() * 2);
    if (larger) std::memcpy(larger.Data(), content.Data(), content.Size());
    return larger;
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// The new name reaches the disk with its folder. That cannot be done everywhere, and
// the file is whole either way.
void SyncFolder(const std::string& path) {
    const OpenFile folder(::open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.Get() >= 0) static_cast<void>(::fsync(folder.Get()));
}

// Where a chain of symbolic links ends; the path itself where that cannot be told.
std::string Resolved(const char* path) {
    char* real = ::realpath(path, nullptr);
    if (real == nullptr) return path;
    std::string resolved(real);
    std::free(real);
    return resolved;
}

// A new file in `folder` under a name that nobody else has; its name, and its
// descriptor or -1.
int CreateUnique(const std::string& folder, std::string& name) {
    static std::atomic<unsigned> counter = 0;
    const std::string start = folder + "/.dom-" + std::to_string(::getpid()) + '-';
    int file = -1;
    do {
        name = start + std::to_string(counter++);
        file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    } while (file < 0 && errno == EEXIST);
    return file;
}

}  // namespace

int ReadDomFile(const char* path, DomBuffer& content) {
    const OpenFile file(::open(path, O_RDONLY | O_CLOEXEC));
    if (file.Get() < 0) return errno;
    struct stat status = {};
    if (::fstat(file.Get(), &status) != 0) return errno;
    if (S_ISDIR(status.st_mode)) return EISDIR;
    // One byte more than the file has shows its end without growing.
    const auto known = static_cast<std::size_t>(S_ISREG(status.st_mode) ? status.st_size : 0);
    DomBuffer text(known > 0 ? known + 1 : kFirstRoom);
    std::size_t used = 0;
    for (;;) {
        if (!text) return ENOMEM;
        const ssize_t got = ReadFully(file.Get(), text.Data() + used, text.Size() - used);
        if (got < 0) return errno;
        used += static_cast<std::size_t>(got);
        if (used < text.Size()) break;
        text = Grown(text);
    }
    text.Resize(used);
    content = std::move(text);
    return 0;
}

DomFileWriter::~DomFileWriter() {
    Close();
    if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
}

int DomFileWriter::Open(const char* path) {
    struct stat status = {};
    const bool exists = ::stat(path, &status) == 0;
    if (!exists && errno != ENOENT) return errno;
    m_path = exists ? Resolved(path) : path;
    if (!exists) return OpenBeside();
    if (S_ISREG(status.st_mode)) return Replace(status.st_mode & 07777);
    m_file = ::open(path, O_WRONLY | O_CLOEXEC);
    return m_file < 0 ? errno : 0;
}

int DomFileWriter::OpenBeside() {
    std::string name;
    m_file = CreateUnique(FolderOf(m_path), name);
    if (m_file < 0) return errno;
    m_temporary = std::move(name);
    return 0;
}

int DomFileWriter::Replace(unsigned mode) {
    // A file that must not be written to is not replaced either.
    if (::access(m_path.c_str(), W_OK) != 0) return errno;
    if (const int error = OpenBeside(); error != 0) return error;
    return ::fchmod(m_file, mode) == 0 ? 0 : errno;
}

int DomFileWriter::Write(const void* data, std::size_t size) {
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

int DomFileWriter::Finish() {
    if (m_temporary.empty()) return Close();
    if (::fsync(m_file) != 0) return errno;
    if (const int error = Close(); error != 0) return error;
    if (::rename(m_temporary.c_str(), m_path.c_str()) != 0) return errno;
    m_temporary.clear();
    SyncFolder(m_path);
    return 0;
}

int DomFileWriter::Close() {
    if (m_file < 0) return 0;
    const int result = ::close(m_file);
    m_file = -1;
    return result == 0 ? 0 : errno;
}
