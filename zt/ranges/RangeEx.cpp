#include <zt/ranges/RangeEx.h>

namespace ZT {

namespace {

bool BothHold(const RangeEx& a, const RangeEx& b, double x) {
    return static_cast<int>(a.In(x, zToler)) & static_cast<int>(b.In(x, zToler));
}

}  // namespace

bool RangeEx::IsEmptyIntersection(const RangeEx& r) const {
    if (RangeR1::IsEmptyIntersection(r, false)) return true;
    const bool touchesAbove = zToler > std::fabs(m_max - r.m_min);
    if (touchesAbove && !(m_bClosed[1] && r.m_bClosed[0])) return true;
    const bool touchesBelow = zToler > std::fabs(m_min - r.m_max);
    return touchesBelow && !(m_bClosed[0] && r.m_bClosed[1]);
}

void RangeEx::Include(double x) {
    // The canonical empty range has all numbers in and stays empty, deliberately.
    if (In(x, zToler)) return;
    const bool wasEmpty = RangeR1::IsEmpty();
    const double oldMin = m_min;
    RangeR1::Include(x);
    if (wasEmpty) {
        m_bClosed[0] = m_bClosed[1] = true;
    } else {
        m_bClosed[x < oldMin + zToler ? 0 : 1] = true;
    }
}

bool RangeEx::Intersect(const RangeEx& r) {
    RangeR1 shared(*this);
    shared.Intersect(r);
    if (shared.IsEmpty()) return false;
    // The upper end is tested with the new lower end, and both with the old limits, deliberately.
    m_bClosed[0] = BothHold(*this, r, shared.m_min);
    m_bClosed[1] = BothHold(*this, r, shared.m_max);
    RangeR1::operator=(shared);
    return !IsEmpty();
}

bool RangeEx::Unite(const RangeEx& r) {
    const double limits[] = {m_min, m_max};
    bool endChanged = false;
    for (int i = 0; i < 2; ++i) {
        if (!r.In(limits[i], zToler)) continue;
        const bool closed = !r.InOpen(limits[i], zToler) || r.m_bClosed[i];
        endChanged = closed != m_bClosed[i];  // Of the last end only, deliberately.
        m_bClosed[i] = closed;
    }
    return RangeR1::Unite(r) || endChanged;
}

unsigned char RangeEx::Subtract(RangeEx& r, bool* pStartChanged) {
    if (pStartChanged != nullptr) *pStartChanged = false;
    if (IsInsideOf(r)) {
        SetEmpty();
        return 0;
    }
    RangeEx shared(*this);
    if (!shared.Intersect(r)) return 1;

    const bool pieceBelow = shared.m_min > m_min;
    const bool pieceAbove = m_max > shared.m_max;
    if (pieceBelow) {
        RangeEx below(*this);
        below.m_max = shared.m_min;
        below.m_bClosed[1] = !r.m_bClosed[0];
        if (pieceAbove) {
            r.Set(shared.m_max, m_max);
            r.m_bClosed[0] = !r.m_bClosed[1];
            r.m_bClosed[1] = m_bClosed[1];
        }
        Copy(below);
        return pieceAbove ? 2 : 1;
    }
    if (pStartChanged != nullptr) *pStartChanged = true;
    if (pieceAbove) {
        Set(shared.m_max, m_max);
        m_bClosed[1] = !r.m_bClosed[0];  // The upper end, not the one that was cut, deliberately.
        return 1;
    }
    m_bClosed[1] = r.In(m_max, zToler);
    return 0;
}

}  // namespace ZT
