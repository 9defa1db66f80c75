// Cutting a real interval into segments, and fitting it to a grid.

#include <zt/numerics/DoubleZT.h>
#include <zt/ranges/RangeR1.h>

namespace ZT {

namespace {

// Where a point lies among the knots: on knot `index`, or after it.
struct KnotPlace {
    int index = 0;
    bool onKnot = false;
};

// For an `n` of 0 the place is that before the only knot.
KnotPlace FindKnot(const RangeR1& r, double x, int n) {
    if (n == 0) return {};
    if (zToler > std::fabs(x - r.m_max)) return {n, true};
    const double step = (r.m_max - r.m_min) / n;
    if (zToler > step) return {0, true};
    const int k = zFactorN(x - r.m_min, step);
    return {k, zToler > std::fabs(x - k * step - r.m_min)};
}

// The number of knot `i` among the knots 0 to `n`, which repeat; the sign of `i` stays.
double WrapKnot(int64 i, int n) {
    return static_cast<double>(i % (int64{n} + 1));
}

// Knot `i` by way of its ratio, which may differ from the sum of steps in the last bit.
double PointAtKnot(const RangeR1& r, int64 i, int n) {
    return n == 0 ? r.m_min : r.GetPoint(WrapKnot(i, n) / n);
}

// After the last knot comes the first, deliberately.
double KnotAfter(const RangeR1& r, int k, int n) {
    if (n == 0) return r.m_min;
    return r.m_min + WrapKnot(int64{k} + 1, n) * (r.m_max - r.m_min) / n;
}

}  // namespace

double RangeR1::GetPoint(int i, int n) const {
    return PointAtKnot(*this, i, n);
}

int RangeR1::GetSegment(double x, int n, bool* pOnKnot) const {
    const KnotPlace place = FindKnot(*this, x, n);
    if (pOnKnot != nullptr && n != 0) *pOnKnot = place.onKnot;
    return place.index;
}

void RangeR1::GetSegment(int i, int n, RangeR1& out) const {
    out.StoreLimits(PointAtKnot(*this, i, n), PointAtKnot(*this, int64{i} + 1, n));
}

double RangeR1::GetNext(double x, int n, bool* pOnKnot, int* pIndex) const {
    const KnotPlace place = FindKnot(*this, x, n);
    if (pOnKnot != nullptr) *pOnKnot = place.onKnot;
    if (pIndex != nullptr) *pIndex = place.index < n ? place.index + 1 : place.index;
    return KnotAfter(*this, place.index, n);
}

double RangeR1::GetUpper(double x, int n, bool* pOnKnot) const {
    const KnotPlace place = FindKnot(*this, x, n);
    if (pOnKnot != nullptr) *pOnKnot = place.onKnot;
    return place.onKnot ? x : KnotAfter(*this, place.index, n);
}

void RangeR1::Setup(double step, int& n) {
    const double length = GetLength();
    double count = std::max(1, DoubleZT::Ceil(length, step));
    double covered = count * step;
    // A whole number of steps gains one more, deliberately.
    if (length + zToler > covered) {
        count += 1;
        covered += step;
    }
    n = TruncateToInt32(count);
    m_max = m_min + covered;
}

void RangeR1::Setup(double step, int& n, const double* pOrigin) {
    if (pOrigin != nullptr) Align(step, *pOrigin);
    Setup(step, n);
}

void RangeR1::Align(double step, double origin) {
    if (!(step > zToler)) return;
    const double below =
        origin > m_min ? origin - DoubleZT::Ceil(origin - m_min, step) * step : origin;
    m_min = TruncateToInt32(std::floor((m_min - below) / step)) * step + below;
}

}  // namespace ZT
