// What the blobs have in common: making and copying blocks of up to 2^32 - 1 bytes.

#pragma once

#include <platform/object/Allocation.h>
#include <zt/frame/ZT.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace ZT::memory {

/// Bytes of the size in front of an image and of the inner bytes of a composite.
inline constexpr ulong kPrefixBytes = sizeof(ulong);

/// Memory that an archive may claim by a size, before it has shown that it has the bytes.
inline constexpr std::size_t kBytesOnTrust = std::size_t{1} << 20;

/// Bytes that a document may claim without having digits for them.
inline constexpr std::size_t kMissingBytes = std::size_t{1} << 24;

/// A block without defined values, or the memory exception.
inline unsigned char* NewBytes(ulong n) {
    return AfxNewArray<unsigned char>(n);
}

/// Copies bytes that may overlap. Either place may have no address when `n` is 0.
inline void CopyBytes(void* to, const void* from, std::size_t n) {
    if (n != 0) std::memmove(to, from, n);
}

/// The sum of sizes. What no size can tell raises the memory exception.
template <class... Sizes>
ulong Total(Sizes... sizes) {
    const std::uint64_t total = (std::uint64_t{sizes} + ...);
    if (total > std::numeric_limits<ulong>::max()) AfxThrowMemoryException();
    return static_cast<ulong>(total);
}

/// The size in front of an image.
inline ulong Prefix(const unsigned char* image) {
    ulong size;
    std::memcpy(&size, image, sizeof size);
    return size;
}

}  // namespace ZT::memory
