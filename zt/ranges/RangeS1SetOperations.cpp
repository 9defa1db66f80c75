// Arcs against arcs: what one contains, shares with another, or loses to it.

#include <zt/ranges/RangeS1.h>

namespace ZT {

namespace {

bool SamePlace(double a, double b) {
    return zToler > std::fabs(a - b);
}

}  // namespace

bool RangeS1::operator>=(const RangeS1& r) const {
    if (IsFull()) return true;
    if (IsEmpty()) return r.IsEmpty();
    if (!HoldsLimitsOf(r)) return false;
    if (r.IsFull()) return false;
    return !r.HoldsByLimits(S1::GetSegmentPoint(m_max, m_min, 0.5, !m_bExternal));
}

bool RangeS1::IsInsideOf(const RangeS1& r) const {
    if (IsEmpty()) return true;
    if (!r.IsFull() && !r.HoldsLimitsOf(*this)) return false;
    double opposite = 0.0;  // Stays so for the whole circle, deliberately.
    r.GetAnyOutside(opposite);
    return !In(opposite);
}

bool RangeS1::IsEmptyIntersection(const RangeS1& r) const {
    RangeS1 shared(*this);
    RangeS1 other(r);
    return shared.Intersect(other) == 0;
}

bool RangeS1::IsComplimentary(const RangeS1& r) const {
    if (IsFull()) return r.IsEmpty();
    if (IsEmpty()) return r.IsFull();
    return SamePlace(r.m_min, m_max) && SamePlace(r.m_max, m_min);
}

bool RangeS1::GetComplimentary(RangeS1& out) const {
    if (IsFull()) {
        out.SetEmpty();
        return false;
    }
    if (IsEmpty()) {
        out.SetFull();
    } else {
        out.StoreArc(m_max, m_min, eStatePartial);
    }
    return true;
}

unsigned char RangeS1::Intersect(RangeS1& r) {
    if (IsEmpty()) return 0;
    if (r.IsEmpty()) {
        SetEmpty();
        return 0;
    }
    if (r.IsFull()) return 1;
    if (IsFull()) {
        Copy(r);
        return IsEmpty() ? 0 : 1;
    }
    return IntersectPartial(r);
}

unsigned char RangeS1::IntersectPartial(RangeS1& r) {
    const bool holdsStart = HoldsByLimits(r.m_min);
    const bool holdsEnd = HoldsByLimits(r.m_max);
    if (!holdsStart && !holdsEnd) {
        if (IsInsideOf(r)) return 1;
        SetEmpty();
        return 0;
    }
    if (!holdsStart) {
        m_max = r.m_max;
        return 1;
    }
    if (!holdsEnd) {
        m_min = r.m_min;
        return 1;
    }
    double outside = 0.0;
    GetAnyOutside(outside);
    if (!r.HoldsByLimits(outside)) {
        StoreLimits(r.m_min, r.m_max);
        return 1;
    }
    Set(m_min, r.m_max);
    r.Set(r.m_min, m_max);  // The limit that has just been stored, r's own, deliberately.
    return 2;
}

unsigned char RangeS1::Subtract(RangeS1& r, bool* pChanged) {
    bool unused;
    bool& changed = pChanged != nullptr ? *pChanged : unused;
    changed = false;
    if (IsEmpty()) return 0;
    if (IsFull()) return CutFull(r, changed);
    if (r.IsSingleton()) return 1;  // Also of the whole circle, deliberately.
    if (IsInsideOf(r)) {
        SetEmpty();
        changed = true;
        return 0;
    }
    return r.IsInsideOf(*this) ? CutInner(r, changed) : CutEnds(r, changed);
}

unsigned char RangeS1::CutFull(const RangeS1& r, bool& changed) {
    if (r.IsEmpty()) return 1;
    StoreArc(r.m_max, r.m_min, eStatePartial);
    changed = true;
    return 1;
}

// The flag that tells of a change stays in all cases but one, deliberately.
unsigned char RangeS1::CutInner(RangeS1& r, bool& changed) {
    const bool sameStart = SamePlace(m_min, r.m_min);
    const bool sameEnd = SamePlace(m_max, r.m_max);
    if (sameStart && sameEnd) {
        SetEmpty();
        return 0;
    }
    if (sameStart) {
        m_min = r.m_max;
        changed = true;
        return 1;
    }
    if (sameEnd) {
        m_max = r.m_min;
        return 1;
    }
    const double end = m_max;
    m_max = S1::Factorize(r.m_min);
    r.Set(r.m_max, end);
    return 2;
}

unsigned char RangeS1::CutEnds(const RangeS1& r, bool& changed) {
    if (r.In(m_min)) {
        changed = !SamePlace(m_min, r.m_max);
        m_min = r.m_max;
    }
    if (r.In(m_max)) m_max = r.m_min;
    return 1;
}

RangeR1::ERangeLocn RangeS1::GetRangeLocation(const RangeS1& r, double tol) const {
    RangeS1 other(r);
    if (tol > zToler) Snap(other, tol);
    if (other.IsInsideOf(*this)) return GetInnerLocation(other, tol);
    if (IsInsideOf(other)) return GetCoverLocation(other);
    RangeS1 shared(*this);
    if (shared.Intersect(other) == 0) return eRangeLocnApart;
    return shared.IsSingleton() ? eRangeLocnTouch : eRangeLocnOverlap;
}

RangeR1::ERangeLocn RangeS1::GetInnerLocation(const RangeS1& r, double tol) const {
    if (IsSame(r, tol)) return eRangeLocnSame;
    const bool point = r.IsSingleton2(tol);
    if (tol > std::fabs(r.m_min - m_min)) return point ? eRangeLocnPointAtMin : eRangeLocnInAtMin;
    if (tol > std::fabs(r.m_max - m_max)) return point ? eRangeLocnPointAtMax : eRangeLocnInAtMax;
    return eRangeLocnIn;
}

RangeR1::ERangeLocn RangeS1::GetCoverLocation(const RangeS1& r) const {
    if (SamePlace(m_min, r.m_min)) return eRangeLocnCoverAtMin;
    return SamePlace(m_max, r.m_max) ? eRangeLocnCoverAtMax : eRangeLocnCover;
}

}  // namespace ZT
