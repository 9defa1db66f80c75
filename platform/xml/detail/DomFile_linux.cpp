#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
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
