/// @file
/// The free functions on doubles: comparing, rounding and reducing, searching in
/// sorted arrays, and vectors of three.
///
/// A comparison uses the tolerance `zToler` and is strict: two numbers that lie
/// exactly the tolerance apart are different. Every function answers for every
/// input; a comparison with a NaN is false.
///
/// A function with a 32-bit integer inside or as its result expects that the
/// quotient fits. What it gives otherwise is defined but of no use: it follows
/// from `TruncateToInt32`.

#pragma once

#include <zt/frame/Export.h>
#include <zt/frame/ZT.h>
#include <zt/numerics/Constants.h>
#include <zt/numerics/IntegerConversion.h>

#include <cmath>

namespace ZT {

/// The place of a number against a closed interval. The value 3 is not used.
enum ERangeLocn : std::int32_t {
    eInRange = 0,      ///< Inside, by more than the tolerance at both ends.
    eAtStart = 1,      ///< Within the tolerance of the lower limit.
    eAtEnd = 2,        ///< Within the tolerance of the upper limit and not of the lower.
    eBeforeRange = 4,  ///< Below the lower limit by more than the tolerance.
    eAfterRange = 5,   ///< Above the upper limit by more than the tolerance.
};

/// @name Comparison
/// @{

/// Whether `a` and `b` are the same number. Two numbers beyond `zFinite` on the
/// same side are both infinite and so the same; whether the pair is looked at in
/// this way depends on `b`.
inline bool zEqual(double a, double b) {
    if (b > zFinite) return a > zFinite;
    if (b < -zFinite) return a < -zFinite;
    return zToler > std::fabs(a - b);
}

/// Whether `x` is positive: `eUnknown` within the tolerance of zero. A NaN is not
/// positive.
inline ETri zSign(double x) {
    if (zToler > std::fabs(x)) return eUnknown;
    return x > 0 ? eTrue : eFalse;
}

/// The place of `x` against the interval from `lo` to `hi`. In an interval shorter
/// than the tolerance, a point near both limits is `eAtStart`. A point exactly the
/// tolerance away from a limit, on either side, is `eAtEnd`, and so is a NaN.
inline ERangeLocn zGetRangeLocn(double x, double lo, double hi) {
    if (x > lo + zToler && hi - zToler > x) return eInRange;
    if (lo - zToler > x) return eBeforeRange;
    if (x > hi + zToler) return eAfterRange;
    return zToler > std::fabs(x - lo) ? eAtStart : eAtEnd;
}

/// Whether the byte behind `b` holds 0 or 1, as that of a proper bool does. For a
/// bool in memory that may never have been set.
inline bool matrIsValidVar(const bool& b) {
    return reinterpret_cast<const unsigned char&>(b) <= 1;
}

/// @}
/// @name Rounding and reduction
/// @{

/// The nearest integer. An exact half rounds down, towards minus infinity, also
/// for positive numbers.
inline int64 zRound(double x) {
    const int64 n = TruncateToInt64(std::floor(x));
    return x - static_cast<double>(n) > 0.5 ? n + 1 : n;
}

/// The largest integer that is not above `x`, except that a number within the
/// tolerance below an integer sticks to that integer.
inline int64 zStickyFloor(double x) {
    const int64 nearest = zRound(x);
    const double r = static_cast<double>(nearest);
    if (zToler > std::fabs(x - r) || x > r) return nearest;
    return nearest == kNoInt64 ? kNoInt64 : nearest - 1;
}

/// How many steps lie in `x`, truncated towards zero, with a snap: a number within
/// the tolerance of one step more or one step less counts as that many. With a
/// step that is zero, `x` itself is truncated.
inline int zFactorN(double x, double step) {
    if (zToler > std::fabs(step)) return TruncateToInt32(x);
    const int truncated = TruncateToInt32(x / step);
    const double k = truncated;
    if (zToler > std::fabs(x - (k + 1) * step)) return TruncateToInt32(k + 1);
    if (zToler > std::fabs(x - (k - 1) * step)) return TruncateToInt32(k - 1);
    return truncated;
}

/// The multiple of `y` that is next to `x` on the side of zero: in spite of its
/// name this neither rounds up nor snaps. A NaN if `y` is 0.
inline double zCeil(double x, double y) {
    return x - std::fmod(x, y);  // Not a ceiling, deliberately.
}

/// The remainder of `x` by `y`, with the sign of `x`. A number within `tol` of the
/// multiple after or before the truncated one gives exactly 0.0; a number just
/// above the truncated multiple itself keeps its small remainder. With a `y` within
/// `zToler` of zero, whatever `tol` is, the result is `x`.
inline double zModulod(double x, double y, double tol) {
    if (zToler > std::fabs(y)) return x;
    const double k = TruncateToInt32(x / y);
    if (tol > std::fabs(x - (k + 1) * y) || tol > std::fabs(x - (k - 1) * y)) return 0.0;
    return x - k * y;
}

/// The same, with `zToler` for the snap.
inline double zModulod(double x, double y) {
    return zModulod(x, y, zToler);
}

/// The multiple of `y` that `x` exceeds by its remainder `zModulod`. With a `y` of
/// zero this is 0.0.
inline double zFloor(double x, double y) {
    return x - zModulod(x, y);
}

/// The angle `x` in radians, brought between 0 and `z2Pi`. There is no tolerance: an
/// angle just below a multiple of the circle is not brought to 0, and a negative one too
/// small to tell gives `z2Pi` itself.
inline double zTo02Pi(double x) {
    const double r = std::fmod(x, z2Pi);
    return r < 0 ? r + z2Pi : r;
}

/// Moves `a` up and `b` down by `d`. A pair closer together than `d` stays as it is; one
/// that is closer than twice `d` ends up in the opposite order.
inline void zShrinkRange(double& a, double& b, double d) {
    if (d > std::fabs(b - a)) return;
    a += d;
    b -= d;
}

/// @}
/// @name Search in sorted arrays
/// @{

/// The index of the right end of the segment that holds `x`, among the ascending
/// entries `a[lo]` to `a[hi]`. An `x` within the tolerance of an entry lies to the
/// left of it, and an `x` beyond the last entry gives `hi`.
///
/// The result is 0 for an `x` at or below `a[0]`, whatever `lo` is: `a[0]` is always read.
/// With at most one segment between the bounds the result is `hi`, without a look
/// at it.
ZT_API int zFindSegment(double x, const double* a, int lo, int hi);

/// The index of the entry nearest to `x`, among the ascending entries `a[lo]` to
/// `a[hi]`; on a tie, that of the upper one. The result is 0 for an `x` at or below
/// `a[0]`, whatever `lo` is. The entry before the right end is read also when it lies
/// before `lo`, and a negative `hi` reads before the array.
ZT_API int zFindNearest(double x, const double* a, int lo, int hi);

/// @}
/// @name Vectors and memory
/// @{

/// Copies those of three components that differ by more than the tolerance, and
/// tells whether any did. A component that differs by less keeps its own value.
ZT_API bool hxCopy3d(double* dst, const double* src);

/// Brings a vector of three components to the length 1. False, and the vector as it
/// was, if it is shorter than the tolerance.
ZT_API bool hxNormalize(double* v);

/// Stores `value` into `n` doubles. Nothing happens if `p` is null or `n` is not
/// positive.
ZT_API void zMemSet(double* p, int n, double value);

/// @}

}  // namespace ZT
