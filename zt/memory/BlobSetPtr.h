/// @file
/// Positions in blob sets.

#pragma once

#include <zt/frame/ZT.h>

#include <cstdint>

namespace ZT {

/// A position in a `BlobSet`: the address of a byte and the index of the blob that holds it.
/// The address is null when there is no byte. It is valid as long as the blob's block is.
class ZT_API BlobSetPtr {
public:
    /// No byte, index 0.
    BlobSetPtr() noexcept : BlobSetPtr(nullptr, 0) {}

    /// The byte at `p` in blob `i`.
    BlobSetPtr(unsigned char* p, int i) noexcept : m_pPos(p), m_nBlob(i) {}

    BlobSetPtr(const BlobSetPtr&) = default;
    BlobSetPtr& operator=(const BlobSetPtr&) = default;

    virtual ~BlobSetPtr();

    unsigned char* m_pPos;  ///< The byte, or null.
    std::int32_t m_nBlob;   ///< Index of its blob; -1 after a walk ran off the end.
};

}  // namespace ZT
