#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <platform/modules/detail/FileMapping.h>

#include <cerrno>

FileMapping::~FileMapping() {
    if (m_address) munmap(m_address, m_size);
}

int FileMapping::Open(const char* path) {
    // A pipe is not waited for.
    const int file = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return errno;
    const int error = Map(file);
    close(file);
    return error;
}

int FileMapping::Map(int file) {
    struct stat status {};
    if (fstat(file, &status) != 0) return errno;
    if (S_ISDIR(status.st_mode)) return EISDIR;
    if (!S_ISREG(status.st_mode)) return EINVAL;
    FileMapping mapped;
    if (status.st_size > 0) {
        const auto size = static_cast<std::size_t>(status.st_size);
        void* const address = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        if (address == MAP_FAILED) return errno;
        mapped.m_address = address;
        mapped.m_size = size;
    }
    *this = std::move(mapped);
    return 0;
}
