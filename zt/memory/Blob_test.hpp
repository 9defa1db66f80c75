// Blobs in tests.

#pragma once

#include <zt/memory/HXBlob.h>

#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace ZT {

/// The bytes that a blob names.
inline std::string Bytes(const HXBlob& blob) {
    if (!blob.m_pData) return {};
    return {reinterpret_cast<const char*>(blob.m_pData), blob.m_nSize};
}

/// A blob with a block of its own that ends with it.
struct Own : HXBlob {
    explicit Own(std::string_view bytes)
        : HXBlob(reinterpret_cast<const unsigned char*>(bytes.data()),
                 static_cast<ulong>(bytes.size()), false) {
        m_bAutoDelete = true;
    }
    /// Takes over the block of a result.
    explicit Own(const HXBlob& result) : HXBlob(result) { m_bAutoDelete = true; }
    Own() : HXBlob(true) {}
};

/// Names the bytes of a text that stands elsewhere.
inline HXBlob Naming(std::string& bytes) {
    return HXBlob(static_cast<ulong>(bytes.size()), reinterpret_cast<unsigned char*>(bytes.data()));
}

inline unsigned char* AddressIn(std::string& bytes, std::size_t offset = 0) {
    return reinterpret_cast<unsigned char*>(bytes.data()) + offset;
}

/// A blob with a size and without a block.
inline HXBlob Blockless(ulong size) {
    return HXBlob(size, nullptr);
}

/// `n` bytes that differ from their neighbours.
inline std::string Pattern(std::size_t n) {
    std::string bytes(n, '\0');
    for (std::size_t i = 0; i < n; ++i) bytes[i] = static_cast<char>(i * 31 + (i >> 8));
    return bytes;
}

using namespace std::string_literals;

}  // namespace ZT
