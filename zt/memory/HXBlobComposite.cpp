// Joining blobs, nesting them, and their bits.

#include <zt/containers/HXBitArray.h>
#include <zt/memory/HXBlob.h>
#include <zt/memory/detail/BlockBytes.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace ZT {

using memory::CopyBytes;
using memory::kPrefixBytes;
using memory::NewBytes;

HXBlob HXBlob::operator+(const HXBlob& b) const {
    const ulong total = memory::Total(Held(), b.Held());
    if (total == 0) return HXBlob();
    HXBlob sum(total, NewBytes(total));
    CopyBytes(sum.m_pData, m_pData, Held());
    CopyBytes(sum.m_pData + Held(), b.m_pData, b.Held());
    return sum;
}

void HXBlob::Append(const HXBlob& b) {
    const ulong more = b.Held();
    if (more == 0) return;
    if (m_pData && m_nSize == 0) {
        // A block of size 0 stays, deliberately, whatever its real size.
        CopyBytes(m_pData, b.m_pData, more);
        m_nSize = more;
        return;
    }
    const HXBlob joined = *this + b;
    delete[] m_pData;
    CopyShallow(joined);
}

HXBlob HXBlob::operator*(const HXBlob& b) const {
    const ulong inner = Held();
    const ulong total = memory::Total(inner, kPrefixBytes, b.Held());
    HXBlob composite(total, NewBytes(total));
    unsigned char* const bytes = composite.m_pData + kPrefixBytes;
    CopyBytes(composite.m_pData, &inner, kPrefixBytes);
    CopyBytes(bytes, m_pData, inner);
    CopyBytes(bytes + inner, b.m_pData, b.Held());
    return composite;
}

void HXBlob::Embed(const HXBlob& inner) {
    CopyShallow(inner * *this);
}

HXBlob HXBlob::GetInnerBlob() const {
    if (Held() < kPrefixBytes) return HXBlob();
    const ulong inner = memory::Prefix(m_pData);
    // Compared with the whole size, deliberately, not with what stands behind the prefix.
    if (inner == 0 || inner >= m_nSize) return HXBlob();
    return HXBlob(inner, m_pData + kPrefixBytes);
}

HXBlob HXBlob::GetOuterBlob() const {
    if (Held() < kPrefixBytes) return HXBlob();
    // Believed, deliberately.
    const ulong inner = memory::Prefix(m_pData);
    return HXBlob(m_nSize - inner - kPrefixBytes, m_pData + kPrefixBytes + inner);
}

HXBitArray HXBlob::GetBits() const {
    constexpr ulong most = std::numeric_limits<std::int32_t>::max() / 8;
    return HXBitArray(m_pData, static_cast<std::int32_t>(8 * std::min(Held(), most)));
}

namespace {

// Puts a bit where `Set` puts it, unless that is behind the end.
void PutInside(const HXBitArray& bits, const unsigned char* end, std::int64_t place, bool bit) {
    if (place >= std::numeric_limits<std::int32_t>::max()) return;
    const auto i = static_cast<int>(place);
    unsigned char* const byte = bits.GetByte(i);
    if (byte >= end) return;
    const auto flag = static_cast<unsigned char>(bit << (i & 7));
    *byte = static_cast<unsigned char>((*byte & HXBitArray::ConstructHoleByte(i)) | flag);
}

// Whether every bit goes to its own place, and the order in which they go does not show.
bool IsPlainCopy(const HXBlob& to, const HXBlob& from) {
    constexpr ulong exact = (ulong{1} << 24) / 8;
    return from.m_nSize == to.m_nSize && to.m_nSize <= exact && !to.In(from.m_pData) &&
           !from.In(to.m_pData);
}

}  // namespace

void HXBlob::Inject(const HXBlob& o) {
    if (Held() == 0 || o.Held() == 0 || o.m_nSize > m_nSize) return;
    if (IsPlainCopy(*this, o)) return CopyData(o);
    const HXBitArray bits = GetBits();
    const HXBitArray spread = o.GetBits();
    const unsigned char* const end = GetEnd();
    const float ratio = static_cast<float>(m_nSize) / static_cast<float>(o.m_nSize);
    std::int64_t last = -1;
    for (int i = 0; i < spread.m_nBits; ++i) {
        auto place = static_cast<std::int64_t>(static_cast<float>(i) * ratio);
        // Only the place before is looked at, deliberately.
        if (place == last) ++place;
        last = place;
        PutInside(bits, end, place, spread.Get(i));
    }
}

}  // namespace ZT
