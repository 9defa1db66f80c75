#include <zt/numerics/ScalarFunctions.h>

#include <algorithm>

namespace ZT {

namespace {

// The right end of the segment of `x` between two bounds, by bisection. Bounds
// with nothing between them give `hi`.
int BisectSegment(double x, const double* a, int64 lo, int64 hi) {
    while (hi - lo > 1) {
        const int64 mid = (lo + hi) / 2;
        if (a[mid] + zToler > x) {
            hi = mid;
        } else {
            lo = mid;
        }
    }
    return static_cast<int>(hi);
}

// The test is on the first entry of the array and not on `lo`, deliberately.
bool IsBelowArray(double x, const double* a) {
    return a[0] + zToler > x;
}

}  // namespace

int zFindSegment(double x, const double* a, int lo, int hi) {
    return IsBelowArray(x, a) ? 0 : BisectSegment(x, a, lo, hi);
}

int zFindNearest(double x, const double* a, int lo, int hi) {
    if (IsBelowArray(x, a)) return 0;
    const int right = BisectSegment(x, a, lo, hi);
    if (right == 0) return 0;
    return a[right] - x > x - a[right - 1] ? right - 1 : right;
}

bool hxCopy3d(double* dst, const double* src) {
    bool changed = false;
    for (int i = 0; i < 3; ++i) {
        if (std::fabs(dst[i] - src[i]) > zToler) {
            dst[i] = src[i];
            changed = true;
        }
    }
    return changed;
}

bool hxNormalize(double* v) {
    const double length = std::sqrt(0.0 + v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    if (zToler > length) return false;
    std::for_each(v, v + 3, [length](double& component) { component /= length; });
    return true;
}

void zMemSet(double* p, int n, double value) {
    if (p != nullptr && n > 0) std::fill_n(p, n, value);
}

}  // namespace ZT
