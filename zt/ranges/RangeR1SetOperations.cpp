// Union and difference of real intervals. The intersection is inline.

#include <zt/ranges/RangeR1.h>

namespace ZT {

RangeR1& RangeR1::operator+=(const RangeR1& r) {
    if (IsEmpty()) {
        Copy(r);
    } else {
        // An empty r is not looked for, deliberately.
        StoreLimits(std::min(m_min, r.m_min), std::max(m_max, r.m_max));
    }
    return *this;
}

unsigned char RangeR1::Subtract(RangeR1& r) {
    if (IsInsideOf(r)) {
        SetEmpty();
        return 0;
    }
    RangeR1 shared(*this);
    if (!shared.Intersect(r) || r.IsSingleton()) return 1;

    const bool piecesBelow = shared.m_min > m_min;
    const bool piecesAbove = m_max > shared.m_max;
    if (piecesBelow && piecesAbove) {
        RangeR1 below(m_min, shared.m_min);
        below.m_bExternal = m_bExternal;
        r.Set(shared.m_max, m_max);
        Copy(below);
        return 2;
    }
    if (piecesBelow) {
        if (!(zToler > std::fabs(shared.m_min - m_max))) m_max = shared.m_min;
        return 1;
    }
    if (piecesAbove) {
        Set(shared.m_max, m_max);
        return 1;
    }
    return 0;
}

}  // namespace ZT
