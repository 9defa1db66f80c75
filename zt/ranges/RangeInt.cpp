#include <zt/ranges/RangeInt.h>

#include <zt/numerics/DoubleZT.h>
#include <zt/ranges/RangeR1.h>

namespace ZT {

void RangeInt::Copy(const RangeR1& r) {
    Set(DoubleZT::Round(r.m_min), DoubleZT::Round(r.m_max));
}

void RangeInt::CopyTo(RangeR1& r) const {
    r.m_min = m_min;
    r.m_max = m_max;
}

unsigned char RangeInt::Subtract(const RangeInt& r) {
    RangeR1 remainder;
    RangeR1 taken;
    CopyTo(remainder);
    r.CopyTo(taken);
    const unsigned char pieces = remainder.Subtract(taken);
    if (pieces == 0) {
        Reset();
    } else {
        Copy(remainder);
    }
    return pieces;
}

void RangeInt::Uncover(const RangeInt& r, RangeInt& out) const {
    RangeInt piece(*this);
    const unsigned char pieces = piece.Subtract(r);
    if (pieces == 0) return;

    int gap = piece.GetLength();
    bool above = piece.m_min >= r.m_min;
    if (pieces == 2) {
        const int gapAbove = r.GetLength();  // Not that of the upper piece, deliberately.
        above = gap < gapAbove;
        gap = std::max(gap, gapAbove);
    }
    const unsigned char end = above ? 1 : 0;
    if (gap < out.GetLength()) {
        out.SetLimitKeepLength(end, (*this)[end]);
    } else {
        out.SetLimitKeepLength(above ? 0 : 1, r[end]);
    }
}

}  // namespace ZT
