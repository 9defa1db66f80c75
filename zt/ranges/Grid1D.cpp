#include <zt/ranges/Grid1D.h>

#include <zt/numerics/DoubleZT.h>
#include <zt/numerics/IntegerConversion.h>
#include <zt/numerics/WrappingArithmetic.h>
#include <zt/ranges/RangeInt.h>

#include <algorithm>

namespace ZT {

Grid1D::Grid1D(double lo, double hi, int n) : Grid1D() {
    if (!(hi > lo + zToler) || n <= 0) return;
    m_range.Set(lo, hi);
    m_nSegments = n;
}

Grid1D::~Grid1D() = default;

double Grid1D::GetStep() const {
    return m_nSegments > 0 ? m_range.GetLength() / m_nSegments : zInfinity;
}

double Grid1D::GetKnot(int i) const {
    return m_nSegments == 0 ? m_range.m_min : i * GetStep() + m_range.m_min;
}

int Grid1D::GetKnotCount() const {
    return m_range.IsEmpty() ? 0 : WrappingSum(m_nSegments, 1);
}

int Grid1D::LastIndexAll() const {
    return WrappingSum(GetKnotCount(), 1);
}

double Grid1D::GetKnotAll(int i, const RangeR1& all) const {
    if (i == 0) return all.m_min;
    return i == LastIndexAll() ? all.m_max : GetKnot(WrappingDifference(i, 1));
}

bool Grid1D::IsKnot(double x) const {
    bool onKnot = false;
    const int k = GetSegment(x, &onKnot);
    return onKnot && k >= 0;
}

int Grid1D::GetNearestKnot(double x) const {
    const int k = GetSegment(x, nullptr);
    if (k < 0) return -1;
    const double step = GetStep();
    if (m_nSegments > 0 && zToler > step) return -1;
    return x - GetKnot(k) < step * 0.5 ? k : WrappingSum(k, 1);
}

int Grid1D::GetFirstKnotIn(const RangeR1& r) const {
    const double step = GetStep();
    if (m_nSegments > 0 && !(step > zToler)) return 0;
    const int k = TruncateToInt32((r.m_min - m_range.m_min) / step);
    const double knot = GetKnot(k);
    if (r.In(knot, zToler)) return k;
    return r.In(knot + step, zToler) ? WrappingSum(k, 1) : -1;
}

void Grid1D::GetCoverSet(const RangeR1& r, RangeInt& out) const {
    const int first = GetSegment(r.m_min, nullptr);
    const int last = GetSegment(r.m_max, nullptr);
    // Only the end is cut, and only at the upper side, deliberately.
    out.Set(first, last >= m_nSegments ? WrappingDifference(m_nSegments, 1) : last);
}

void Grid1D::GetInternalKnots(const RangeR1& r, Grid1D& out) const {
    const int first = WrappingSum(GetSegment(r.m_min, nullptr), 1);
    const double lo = GetKnot(first);
    double hi = lo - 1.0;  // Inverted, if no knot is inside, deliberately.
    int count = 0;
    if (!(lo > r.m_max)) {
        bool onKnot = false;
        const int segment = GetSegment(r.m_max, &onKnot);
        const int last = onKnot ? WrappingDifference(segment, 1) : segment;
        count = std::max(0, WrappingDifference(last, first));
        hi = GetKnot(last);
    }
    out.m_range.m_min = lo;
    out.m_range.m_max = hi;
    out.m_nSegments = count;
}

int Grid1D::FindRangeAll(double x, const RangeR1& all, bool& bOnKnot) const {
    if (x < GetKnot(0)) {
        bOnKnot = all.IsEnd(x);
        return 0;
    }
    const bool isEmpty = m_range.IsEmpty();
    const double last = GetKnot(isEmpty ? -1 : m_nSegments);
    if (!(x > last - zToler)) {
        bOnKnot = false;
        return WrappingSum(GetSegment(x, &bOnKnot), 1);
    }
    bOnKnot = last + zToler > x;
    if (!(x > all.m_max - zToler)) return isEmpty ? 0 : WrappingSum(m_nSegments, 1);
    bOnKnot = true;
    return LastIndexAll();
}

void Grid1D::SetSegmentCountEx(int n, bool bKeepMin) {
    if (n <= 0 || n == m_nSegments) return;
    const double span = n * GetStep();
    if (bKeepMin) {
        m_range.m_max = m_range.m_min + span;
    } else {
        m_range.m_min = m_range.m_max - span;
    }
    m_nSegments = n;
}

void Grid1D::SetStepSize(double step, ETri mode) {
    const double length = m_range.GetLength();
    if (!(length > step)) return;
    m_nSegments = TruncateToInt32(length / step);
    if (mode == eUnknown) return;
    if (m_nSegments * step > length - zToler) return;
    // Values other than the three count as eTrue here, not as eFalse, deliberately.
    if (mode == eFalse) m_nSegments = WrappingSum(m_nSegments, 1);
    m_range.m_max = m_range.m_min + m_nSegments * step;
}

int Grid1D::Align(double x, bool bExtend) {
    bool onKnot = false;
    const int k = GetSegment(x, &onKnot);
    if (onKnot) return k;
    const int next = WrappingSum(k, 1);
    const double d = GetKnot(next) - x;
    if (bExtend) {
        const double step = GetStep();
        m_nSegments = WrappingSum(m_nSegments, 1);
        m_range.m_min -= d;
        m_range.m_max = m_range.m_min + m_nSegments * step;
    } else {
        m_range.Translate(-d);
    }
    return next;
}

void Grid1D::Include(double x) {
    if (m_range.In(x, zToler)) return;
    if (x > m_range.m_max) {
        GrowUpTo(x);
    } else {
        GrowDownTo(x);
    }
}

void Grid1D::GrowUpTo(double x) {
    const double step = GetStep();
    m_range.Include(x);
    const double length = m_range.GetLength();
    m_nSegments = TruncateToInt32(length / step);
    if (m_nSegments * step > length - zToler) return;
    m_nSegments = WrappingSum(m_nSegments, 1);
    m_range.m_max = m_range.m_min + m_nSegments * step;
}

void Grid1D::GrowDownTo(double x) {
    const double step = GetStep();
    const int count = DoubleZT::Ceil(m_range.m_max - x, step);
    if (count <= 0 || count == m_nSegments) return;
    m_nSegments = count;
    m_range.m_min = m_range.m_max - count * step;
}

void Grid1D::Snap(double& x) {
    Include(x);
    const int k = GetNearestKnot(x);
    if (k >= 0) x = GetKnot(k);
}

void Grid1D::CoverRangeZeroAligned(const RangeR1& r, double step, double margin) {
    const RangeR1 unit(0.0, step);
    // Towards zero, also below it, deliberately.
    const int first = unit.GetSegm(r.m_min - margin, 1, nullptr);
    bool onKnot = false;
    const int last = unit.GetSegm(r.m_max + margin, 1, &onKnot);
    m_range.m_min = first * step;
    m_range.m_max = last * step;
    m_nSegments = WrappingDifference(last, first);
    if (onKnot) return;
    m_range.m_max += step;
    m_nSegments = WrappingSum(m_nSegments, 1);
}

}  // namespace ZT
