#include <zt/ranges/RangeR1.h>

#include <platform/files/CArchive.h>
#include <sibling/Range.h>

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

unsigned char RangeR1::FindLimit(double x, double tol) const {
    if (tol > std::fabs(m_min - x)) return 0;
    if (tol > std::fabs(m_max - x)) return 1;
    return 2;  // Not 3 as in FindSameLimit, deliberately.
}

unsigned char RangeR1::FindSameLimit(const RangeR1& r) const {
    if (zToler > std::fabs(m_min - r.m_min)) return 0;
    if (zToler > std::fabs(m_max - r.m_max)) return 1;
    return 3;  // Not 2 as in FindLimit, deliberately.
}

bool RangeR1::operator>=(const RangeR1& r) const {
    if (m_bExternal == r.m_bExternal) return In(r.m_min, zToler) && In(r.m_max, zToler);
    if (r.m_bExternal) return m_min < -zFullBound && m_max > zFullBound;
    if (IsEmpty()) return r.IsEmpty();
    const double belowHole = m_min + zToler;
    if (r.m_min < belowHole && r.m_max < belowHole) return true;
    const double aboveHole = m_max - zToler;
    return r.m_min > aboveHole && r.m_max > aboveHole;
}

bool RangeR1::Is(double lo, double hi, double tol) const {
    // An infinite limit is recognised from zFinite on here, not from zFullBound, deliberately.
    const bool sameMin = zEqual(lo, -zInfinity) ? m_min < -zFinite : !(std::fabs(m_min - lo) > tol);
    const bool sameMax = zEqual(hi, zInfinity) ? m_max > zFinite : !(std::fabs(m_max - hi) > tol);
    return sameMin && sameMax;
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

bool RangeR1::IsUnlimited() const {
    constexpr double kLongest = 2.9999999999999996e306;
    static_assert(detail::HasBits(kLongest, 0x7F9116AC579AAC1E));
    return m_max - m_min > kLongest;
}

bool RangeR1::IsValid() const {
    const bool atMinusInfinity = m_min < -zFullBound && m_max < -zFullBound;
    const bool atInfinity = m_min > zFullBound && m_max > zFullBound;
    return !(atMinusInfinity || atInfinity || m_min - zToler > m_max);
}

bool RangeR1::IsIn(double x, double a, double b, bool bMinClosed, bool bMaxClosed) {
    const double min = std::min(a, b);
    const double max = std::max(a, b);
    const double lowest = bMinClosed ? min - zToler : min + zToler;
    const double highest = bMaxClosed ? max + zToler : max - zToler;
    return !(x < lowest) && !(x > highest);
}

ETri RangeR1::IsNearLimit(double x, double tol) const {
    // One-sided and not strict, unlike FindLimit, deliberately.
    if (tol >= x - m_min) return eFalse;
    if (tol >= m_max - x) return eTrue;
    return eUnknown;
}

bool RangeR1::IsApproaching(double x, double v) const {
    if (zToler > std::fabs(v)) return false;
    const double c = GetMiddle();
    return (x > c - zToler && v < 0) || (c + zToler > x && v > 0);
}

RangeR1::ELocn RangeR1::GetPointLocation(double x, double tol) const {
    if (x < m_min - tol) return eLocnBelow;
    if (x < m_min + tol) return eLocnAtMin;
    if (x < m_max - tol) return eLocnIn;
    if (x < m_max + tol) return eLocnAtMax;
    return eLocnAbove;
}

bool RangeR1::IsIntersection(const RangeR1& r, bool bStrict) const {
    if (!bStrict) return !IsEmpty() && !r.IsEmpty() && !LiesApartFrom(r);
    RangeR1 shared(*this);
    shared.Intersect(r);
    return !shared.IsEmptyInterval();
}

bool RangeR1::IsEmptyIntersection(const RangeR1& r, bool bStrict) const {
    if (!bStrict) return !IsIntersection(r, false);
    // Not the opposite of the strict IsIntersection at the tolerance, deliberately.
    return IsEmptyInterval() || r.m_min > m_max - zToler || m_min + zToler > r.m_max ||
           r.IsEmptyInterval();
}

void RangeR1::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        archive << m_min << m_max;
    } else {
        archive >> m_min >> m_max;
    }
}

}  // namespace ZT
