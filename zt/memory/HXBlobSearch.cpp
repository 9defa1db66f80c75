// Searching and comparing the bytes of blobs.

#include <zt/memory/HXBlob.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

namespace ZT {

namespace {

unsigned char* Find(unsigned char* from, unsigned char c, std::size_t n) {
    return static_cast<unsigned char*>(std::memchr(from, c, n));
}

std::uint32_t Reversed(std::uint32_t word) {
    return word >> 24 | (word >> 8 & 0xFF00) | (word << 8 & 0xFF0000) | word << 24;
}

}  // namespace

unsigned char* HXBlob::FindChar(unsigned char c, ulong from) const {
    // Not checked, deliberately.
    return m_pData ? Find(m_pData + from, c, m_nSize - from) : nullptr;
}

unsigned char* HXBlob::FindData(const HXBlob& pattern) const {
    if (!IsValid() || !pattern.IsValid()) return nullptr;
    const unsigned char* const wanted = pattern.m_pData;
    const std::size_t length = pattern.m_nSize;
    if (void* const inside = memmem(m_pData, m_nSize, wanted, length))
        return static_cast<unsigned char*>(inside);
    // A hit too near to the end is compared past it, deliberately.
    const std::size_t tail = std::min<std::size_t>(m_nSize, length - 1);
    unsigned char* const end = GetEnd();
    unsigned char* hit = end - tail;
    while ((hit = Find(hit, *wanted, static_cast<std::size_t>(end - hit)))) {
        if (std::memcmp(hit, wanted, length) == 0) return hit;
        ++hit;
    }
    return nullptr;
}

bool HXBlob::IsSameData(const HXBlob& o) const {
    // Equal sizes are enough, deliberately.
    return m_nSize == o.m_nSize;
}

bool HXBlob::IsAllZeros(const unsigned char* p, int n) {
    if (!p || n < 1) return true;
    return *p == 0 && std::memcmp(p, p + 1, static_cast<std::size_t>(n) - 1) == 0;
}

void HXBlob::SwapEndianBytes(unsigned char* p, ulong n) {
    if (!p) return;
    for (ulong left = n / 4; left != 0; --left, p += 4) {
        std::uint32_t word;
        std::memcpy(&word, p, sizeof word);
        word = Reversed(word);
        std::memcpy(p, &word, sizeof word);
    }
}

}  // namespace ZT
