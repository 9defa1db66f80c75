#include <zt/ranges/RangeR1.h>

#include <platform/files/CArchive.h>
#include <sibling/Range.h>

namespace {

// What stands before and behind the limits, as the number that its bytes make.
constexpr std::uint64_t kHeader = 0;
constexpr std::uint64_t kFlagByte = 0xFF;

void StoreElement(CArchive& ar, const ZT::RangeR1& range) {
    const std::uint64_t flag = range.m_bExternal ? 1 : 0;
    ar << kHeader << range.m_min << range.m_max << flag;
}

void LoadElement(CArchive& ar, ZT::RangeR1& range) {
    std::uint64_t header;
    double lo;
    double hi;
    std::uint64_t flag;
    ar >> header >> lo >> hi >> flag;
    range.m_min = lo;
    range.m_max = hi;
    range.m_bExternal = (flag & kFlagByte) != 0;
}

}  // namespace

template <>
void SerializeElements<ZT::RangeR1>(CArchive& ar, ZT::RangeR1* pElements, INT_PTR nCount) {
    for (ZT::RangeR1* range = pElements; range != pElements + nCount; ++range) {
        if (ar.IsStoring()) {
            StoreElement(ar, *range);
        } else {
            LoadElement(ar, *range);
        }
    }
}

namespace ZT {

RangeR1::EClass RangeR1::GetClass() const {
    return eClassR1;
}

void RangeR1::Set(double lo, double hi) {
    StoreLimits(lo, hi);
}

void RangeR1::CopyToPw(PW::Range* target) const {
    target->Set(m_min, m_max);
    target->SetExternal(m_bExternal);
}

void RangeR1::SetFull(bool bInfinite) {
    if (bInfinite) {
        StoreLimits(m_bExternal ? zInfinity : -zInfinity, zInfinity);
    } else {
        SetFullAngle();
    }
}

void RangeR1::SetFullAngle() {
    Set(zFullAngleStart, zPi);
}

bool RangeR1::SetEx(double lo, double hi) {
    const bool moved = std::fabs(lo - m_min) > zToler || std::fabs(hi - m_max) > zToler;
    StoreLimits(lo, hi);
    return moved;
}

void RangeR1::SetExternal(bool bExternal) {
    const bool wasFull = IsFull();
    m_bExternal = bExternal;
    if (wasFull) SetFull(true);
}

ETri RangeR1::IsAfter(const RangeR1& r) const {
    if (*this >= r || r >= *this) return eUnknown;
    return m_max > r.m_max ? eTrue : eFalse;
}

ETri RangeR1::IsAfterClosed(const RangeR1& r) const {
    RangeR1 shared(*this);
    shared.Intersect(r);
    if (shared.IsEmpty()) return m_max > r.m_max ? eTrue : eFalse;
    if (shared.GetLength() >= zToler) return eTrue;

    const bool meetsPoint = r.IsSingleton();
    if (r.m_max >= m_max && meetsPoint) return eUnknown;
    if (m_max < r.m_max) return eFalse;
    if (GetLength() >= zToler) return m_max > r.m_max ? eTrue : eFalse;
    return meetsPoint ? eUnknown : eTrue;
}

void RangeR1::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        archive << m_min << m_max;
    } else {
        archive >> m_min >> m_max;
    }
}

}  // namespace ZT
