/// @file
/// A file in memory, for reading.

#pragma once

#include <platform/base/Export.h>
#include <platform/modules/detail/ResourceSection.h>

#include <utility>

/// The bytes of a regular file, mapped for reading. They stay those of the file that was
/// opened when another one takes its name. Whoever shortens the file in its place takes
/// the bytes away: reading them then ends the process, as it does with a module's code.
class ZTP_API FileMapping {
public:
    FileMapping() = default;
    FileMapping(FileMapping&& other) noexcept
        : m_address(std::exchange(other.m_address, nullptr)),
          m_size(std::exchange(other.m_size, 0)) {}
    FileMapping& operator=(FileMapping&& other) noexcept {
        std::swap(m_address, other.m_address);
        std::swap(m_size, other.m_size);
        return *this;
    }
    ~FileMapping();

    /// Maps the file at `path`, or what an open descriptor stands for; 0, or the system's
    /// error number. What is no regular file cannot be mapped (EINVAL).
    int Open(const char* path);
    int Map(int file);

    ByteView Bytes() const { return {static_cast<const BYTE*>(m_address), m_size}; }

private:
    void* m_address = nullptr;
    std::size_t m_size = 0;
};
