#include <zt/containers/HXBitArray.h>

#include <zt/containers/HexText.h>

#include <platform/object/Allocation.h>
#include <bit>
#include <cstring>

namespace ZT {

namespace {

unsigned char* NewBytes(int count) {
    return AfxNewArray<unsigned char>(static_cast<std::size_t>(count));
}

// A block without bytes may have no address.
void CopyBytes(unsigned char* to, const unsigned char* from, int count) {
    if (count > 0) std::memmove(to, from, static_cast<std::size_t>(count));
}

// A loop that changes nothing could be taken for one that ends.
[[noreturn]] void WalkForever() {
    volatile unsigned char place = 0;
    for (;;) place = static_cast<unsigned char>(place + 1);
}

template <class Word>
Word Load(const unsigned char* p) {
    Word word;
    std::memcpy(&word, p, sizeof word);
    return word;
}

// Index of the first of the `count` bits at `p` that differs from the bits of `skipped`,
// which are all alike; -1 if there is none.
int FirstOther(const unsigned char* p, int count, uint64 skipped) {
    int64 done = 0;
    for (; count - done >= 64; done += 64) {
        const uint64 other = Load<uint64>(p + done / 8) ^ skipped;
        if (other != 0) return static_cast<int>(done) + std::countr_zero(other);
    }
    for (; done < count; done += 8) {
        const unsigned other = (p[done / 8] ^ skipped) & 0xFF;
        if (other == 0) continue;
        const int64 found = done + std::countr_zero(other);
        return found < count ? static_cast<int>(found) : -1;
    }
    return -1;
}

}  // namespace

static_assert(std::endian::native == std::endian::little);

HXBitArray::~HXBitArray() = default;

void HXBitArray::SetSize(int n) {
    if (const int bytes = GetByteCount(n); bytes > GetByteCount()) {
        unsigned char* const block = NewBytes(bytes);
        delete[] m_pBits;
        m_pBits = block;
    }
    m_nBits = n;
}

void HXBitArray::Copy(const HXBitArray& src) {
    if (!src.m_pBits) return;
    const int bytes = src.GetByteCount();
    if (bytes > GetByteCount()) {
        // Both may name one block, which goes last.
        unsigned char* const block = NewBytes(bytes);
        CopyBytes(block, src.m_pBits, bytes);
        delete[] m_pBits;
        m_pBits = block;
    } else {
        CopyBytes(m_pBits, src.m_pBits, bytes);
    }
    m_nBits = src.m_nBits;
}

void HXBitArray::Copy(const unsigned char* p) {
    if (!p) return;
    if (!m_pBits) m_pBits = NewBytes(GetByteCount());
    CopyBytes(m_pBits, p, GetByteCount());
}

void HXBitArray::CopyTo(unsigned char* p) const {
    if (p) CopyBytes(p, m_pBits, GetByteCount());
}

void HXBitArray::SetAll(bool b) {
    if (m_pBits) std::memset(m_pBits, b ? 0xFF : 0, static_cast<std::size_t>(GetByteCount()));
}

bool HXBitArray::IsClear() const {
    const int bytes = GetByteCount();
    int done = 0;
    for (; bytes - done >= 8; done += 8)
        if (Load<uint64>(m_pBits + done) != 0) return false;
    for (; done < bytes; ++done)
        if (m_pBits[done] != 0) return false;
    return true;
}

int HXBitArray::FindFirstBit(bool b) const {
    return FirstOther(m_pBits, m_nBits, b ? 0 : ~uint64{0});
}

bool HXBitArray::operator==(const HXBitArray& o) const {
    if (m_nBits != o.m_nBits) return false;
    const int bytes = GetByteCount();
    return bytes == 0 || std::memcmp(m_pBits, o.m_pBits, static_cast<std::size_t>(bytes)) == 0;
}

unsigned char HXBitArray::GetBitsValue(unsigned char first, unsigned char last) const {
    unsigned char value = 0;
    unsigned char weight = 1;
    // One byte wide, deliberately: a `last` of 255 is never passed.
    if (last == 255) WalkForever();
    for (unsigned char i = first; i <= last; ++i) {
        if (Get(i)) value = static_cast<unsigned char>(value + weight);
        weight = static_cast<unsigned char>(weight << 1);
    }
    return value;
}

ulong HXBitArray::GetVal(int first, int last) const {
    ulong value = 0;
    for (int k = first; k <= last; ++k)
        if (Get(k)) value += std::rotl(ulong{1}, k);
    return value;
}

void HXBitArray::SetBits(ulong mask, bool b) {
    for (; mask != 0; mask &= mask - 1) Set(std::countr_zero(mask), b);
}

void HXBitArray::SetBitsValue(unsigned char first, unsigned char last, unsigned short value) {
    uint64 rest = value;
    for (int i = first; i <= last; ++i, rest >>= 1) Set(i, (rest & 1) != 0);
}

void HXBitArray::SetFlagFromValue(ulong mask, bool b, ulong& word) {
    if (mask != 0) SetFlag(std::countr_zero(mask), b, word);
}

CString HXBitArray::GetHexString() const {
    return hxBinaryToString(m_pBits, static_cast<ulong>(GetByteCount()));
}

CString HXBitArray::GetString() const {
    CString text;
    if (m_nBits <= 0) return text;
    char* const digits = text.GetBufferSetLength(m_nBits);
    for (int i = 0; i < m_nBits; ++i) digits[m_nBits - 1 - i] = Get(i) ? '1' : '0';
    text.ReleaseBufferSetLength(m_nBits);
    return text;
}

}  // namespace ZT
