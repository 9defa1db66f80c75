/// @file
/// Static helpers on doubles.

#pragma once

#include <platform/text/CString.h>
#include <zt/frame/Export.h>
#include <zt/numerics/Constants.h>
#include <zt/numerics/IntegerConversion.h>

#include <cmath>

namespace ZT {

/// Comparisons of doubles with a tolerance of the caller's choice, roundings to 32
/// bits, and the text of a double. All operations are static; an object holds
/// nothing.
///
/// A comparison is strict, so that a difference of exactly the tolerance counts, and
/// with a NaN it is false. A number that has to fit into 32 bits and does not gives
/// a defined but useless result, by way of `TruncateToInt32`.
class ZT_API DoubleZT {
public:
    /// Whether `a` and `b` differ by less than `tol`, or lie beyond `zFinite` on the
    /// same side. Whether the pair counts as infinite depends on `b`.
    static bool IsEqual(double a, double b, double tol) {
        if (b > zFinite) return a > zFinite;
        if (b < -zFinite) return a < -zFinite;
        return tol > std::fabs(a - b);
    }

    /// Whether `b` differs from `a` by less than the given fraction of `a`: 0.01 is
    /// one percent. An `a` smaller than 1e-8 equals every `b` that is.
    static bool IsEqualPercent(double a, double b, double fraction) {
        constexpr double kTooSmallForABase = 1e-8;
        if (kTooSmallForABase > std::fabs(a)) return kTooSmallForABase > std::fabs(b);
        return fraction > std::fabs((b - a) / a);
    }

    /// Whether `x` is closer to zero than `tol`.
    static bool IsZero(double x, double tol) { return tol > std::fabs(x); }

    /// Whether the magnitude of `x` is below `zFinite`. False for a NaN.
    static bool IsFinite(double x) { return zFinite > std::fabs(x); }

    /// Whether `x` is not a number.
    static bool IsNaN(double x) { return x != x; }

    /// Whether `x` is negative, or, with `bNegative` false, whether it is positive.
    /// Within `tol` of zero the result is `bAtZero`.
    static bool IsNegative(double x, bool bNegative, bool bAtZero, double tol) {
        if (tol > std::fabs(x)) return bAtZero;
        return bNegative ? x < 0 : x > 0;
    }

    /// Whether `x` lies between 0 and 1, both moved outwards by `tol` and included.
    static bool IsRatio(double x, double tol) { return x >= -tol && 1.0 + tol >= x; }

    /// The nearest integer; an exact half rounds down, towards minus infinity.
    static int Round(double x) { return TruncateToInt32(RoundIn32Bits(x)); }

    /// `x` rounded to a number of decimal digits, an exact half down. The product of
    /// `x` and that power of ten has to fit into 32 bits.
    static double Round(double x, unsigned char digits) {
        const double scale = std::pow(10.0, digits);
        return RoundIn32Bits(scale * x) / scale;
    }

    /// How many steps it takes to cover `x`, with a snap: a number within the
    /// tolerance of the truncated count of steps, or of one less, counts as that many.
    /// Otherwise the result is one more than the truncated count, also for a negative
    /// `x`, where truncation has already gone up. With a step that is zero, `x` itself
    /// is truncated.
    static int Ceil(double x, double step) {
        if (zToler > std::fabs(step)) return TruncateToInt32(x);
        const int truncated = TruncateToInt32(x / step);
        const double k = truncated;
        if (zToler > std::fabs(x - k * step)) return truncated;
        if (zToler > std::fabs(x - (k - 1) * step)) return TruncateToInt32(k - 1);
        return TruncateToInt32(k + 1);
    }

    /// `x` with four decimals and a point, whatever the locale. Beyond `zFinite` the
    /// text is "inf " or "-inf ", each with its trailing blank.
    static CString ToString(double x);

private:
    static double RoundIn32Bits(double x) {
        const double n = TruncateToInt32(std::floor(x));
        return x - n > 0.5 ? n + 1 : n;
    }
};

}  // namespace ZT
