/// @file
/// Points on the circle of angles, and arithmetic on raw angles.

#pragma once

#include <zt/frame/Export.h>
#include <zt/numerics/Constants.h>
#include <zt/numerics/IntegerConversion.h>
#include <zt/ranges/RangeR1.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

template <class TYPE, class ARG_TYPE>
class CList;

namespace ZT {

/// The half-width of the seam: two angles that both lie closer than this to pi or to its
/// negative are the same point.
inline constexpr double zSeamBand = 10.0 * zToler;

static_assert(detail::HasBits(zSeamBand, 0x3E112E0BE826D695));

/// A point on the circle of angles, and, in its static operations, the arithmetic on raw
/// angles that arcs are made of.
///
/// Angles are in radians unless an operation says degrees, and pi is the library's `zPi`.
/// The canonical interval of an angle is half open: above -pi, up to and including +pi. The
/// seam of the circle lies at pi, and a value within the tolerance of -pi is stored as +pi.
/// A point is canonical after every operation that runs `Factor`; an angle is out of the
/// interval only in a copy of such a point or after a write to the field.
///
/// The tests near the seam do not share one bound. The member `IsValid` takes in -pi, the
/// static one does not, and `IsValidExt` does again; `Equal` takes all values within
/// `zSeamBand` of the seam as one point. The differences are deliberate.
///
/// No operation but `InsertSorted` allocates.
class ZT_API S1 {
public:
    /// The angle in radians.
    double m_angle;

    /// @name Making and storing
    /// @{

    /// The angle 0.
    S1() : m_angle(0.0) {}
    /// The point at `angle`, brought into the canonical interval.
    S1(double angle) : m_angle(Factored(angle)) {}
    /// The same angle, to the bit and also if it is not canonical.
    S1(const S1&) = default;

    virtual ~S1() = default;

    /// Moves the point to `angle`, brought into the canonical interval.
    S1& operator=(double angle) {
        m_angle = Factored(angle);
        return *this;
    }
    /// Takes the same angle, to the bit and also if it is not canonical.
    S1& operator=(const S1&) = default;

    double GetAngle() const { return m_angle; }

    /// Brings the angle into the canonical interval.
    ///
    /// The angle is divided by `zPi` and the fraction multiplied by it again, so that the
    /// last bit may change even if the angle is canonical already. An angle of more than
    /// 2^31 half turns gives a defined angle without a meaning.
    void Factor() { m_angle = Factored(m_angle); }

    /// Turns the point by `d`, and tells whether it did: within the tolerance of 0 nothing
    /// changes.
    bool Translate(double d) {
        if (zToler > std::fabs(d)) return false;
        *this = m_angle + d;
        return true;
    }

    /// @}
    /// @name Points
    /// @{

    /// Whether the two are the same point by `Equal`.
    bool operator==(const S1& other) const { return Equal(m_angle, other.m_angle, false); }

    S1 operator+(const S1& other) const { return S1(m_angle + other.m_angle); }
    S1 operator-(const S1& other) const { return S1(m_angle - other.m_angle); }

    /// Turns the point; the result is a copy of the new value.
    S1 operator+=(const S1& other) { return *this = m_angle + other.m_angle; }
    S1 operator-=(const S1& other) { return *this = m_angle - other.m_angle; }

    /// Whether the angle lies between -pi and pi, both moved outwards by the tolerance. The
    /// static test of the same name is tighter at -pi.
    bool IsValid() const {
        return !(m_angle > zPiPlus) && !(m_angle < -zPiPlus);  // -pi is in, deliberately.
    }

    /// The point at the fraction `t` of the shorter way from this point to `other`. Of
    /// opposite points the way is the counter-clockwise one.
    S1 GetSegmentPoint(const S1& other, double t) const;

    /// Whether this point, `a` and `b` follow one another counter-clockwise, within the
    /// tolerance: going round from this point, `b` comes no earlier than `a`. A point at this
    /// one counts as a full turn away.
    bool IsCCWSequence(const S1& a, const S1& b) const;

    /// Inserts this point into a list that is in counter-clockwise order, at the place where
    /// it follows its predecessor, with the tail as the predecessor of the head. A list of
    /// fewer than two points gets it at the tail, and so does one whose gap between tail and
    /// head takes it.
    ///
    /// A point that no gap takes is dropped, silently: out of a list that is not in order, and
    /// also out of one that is, if it lies about the tolerance after a point of the list.
    void InsertSorted(CList<S1, S1>& list) const;

    /// @}
    /// @name Reduction
    /// These run `Factor` twice. The second pass does not move the angle to another interval,
    /// but it may change the last bits; a third changes nothing.
    /// @{

    /// The canonical form of an angle.
    static double Factorize(double a) { return FactoredAgain(Factored(a)); }

    /// The canonical form of an angle in degrees.
    static double FactorizeDeg(double a) { return Factorize(a * zRadPerDeg) * zDegPerRad; }

    /// The canonical form of the opposite angle.
    static double GetOpposite(double a) { return Factorize(a + zPi); }

    /// @}
    /// @name Stepping and units
    /// @{

    /// Adds `d` to `a` and takes a full turn off or adds one if the sum lies outside of the
    /// interval; the new `a` is also the result. That is one turn at most: a long step leaves
    /// an angle that is not canonical, deliberately.
    static double Increment(double& a, double d) {
        a += d;
        if (a > zPiPlus) {
            a -= z2Pi;
        } else if (a < -zPiMinus) {
            a += z2Pi;
        }
        return a;
    }

    /// Multiplies an angle in radians by the degrees in one. It is not reduced.
    static void ToDegree(double& a) { a *= zDegPerRad; }
    /// Multiplies an angle in degrees by the radians in one. It is not reduced.
    static void ToRadian(double& a) { a *= zRadPerDeg; }
    /// The same on two angles. There is no such form of `ToDegree`, deliberately.
    static void ToRadian(double& a, double& b) {
        a *= zRadPerDeg;
        b *= zRadPerDeg;
    }

    /// @}
    /// @name Tests of angles
    /// @{

    /// Whether `a` lies above -pi, by at least the tolerance, and not above pi by more than it.
    /// So -pi is not valid here, while it is as the angle of a point. A NaN is valid.
    static bool IsValid(double a) {
        return !(a < -zPiMinus) && !(a > zPiPlus);  // Tighter at -pi than the member, deliberately.
    }

    /// `IsValid`, or within the tolerance of -pi.
    static bool IsValidExt(double a) { return IsValid(a) || zToler > std::fabs(a + zPi); }

    /// As the static `IsValid`, but strict at both ends, and false for a NaN.
    static bool InRange(double a) { return a > -zPiMinus && zPiPlus > a; }

    /// Whether `x` lies on the arc from `a` counter-clockwise to `b`, or, with `bCCW` false,
    /// from `b` counter-clockwise to `a`. The ends belong to it, moved outwards by the
    /// tolerance.
    ///
    /// An angle that is not valid by the static `IsValid` makes the answer false, so that no
    /// arc holds the raw angle -pi. The arc between equal angles is that point.
    static bool InRange(double x, double a, double b, bool bCCW);

    /// The same without the ends: false also within the tolerance of either.
    static bool InOpenRange(double x, double a, double b, bool bCCW);

    /// Whether `a` and `b` are the same point: within the tolerance of one another, or both
    /// at the seam, within `zSeamBand` of pi or -pi. With `bDegrees` they are in degrees; the
    /// first test then takes the tolerance in degrees.
    static bool Equal(double a, double b, bool bDegrees) {
        if (zToler > std::fabs(a - b)) return true;
        if (bDegrees) ToRadian(a, b);
        return IsAtSeam(a) && IsAtSeam(b);
    }

    /// @}
    /// @name Differences
    /// These take angles in the canonical interval and do not reduce.
    /// @{

    /// The angle from `b` counter-clockwise to `a`, or, with `bCCW` false, clockwise: from 0
    /// to below a full turn. Within the tolerance the angle is the plain difference, which may
    /// be slightly negative, in either sense.
    static double diff(double a, double b, bool bCCW) {
        const double d = Raised(a, b) - b;
        return zToler > std::fabs(d) || bCCW ? d : z2Pi - d;
    }

    /// The angle from `b` to `a` the shorter way: negative if that is clockwise.
    static double DiffSigned(double a, double b) {
        const double d = Raised(a, b) - b;
        return d > zPiPlus ? d - z2Pi : d;
    }

    /// The angle from `a` counter-clockwise to `b`, less half a turn if that is more than
    /// half a turn. It is not the mirror of `DiffSigned`.
    static double dist(double a, double b) {
        const double d = Raised(b, a) - a;
        return zPiPlus > d ? d : d - zPi;  // Half a turn less and not a full one, deliberately.
    }

    /// The point at the fraction `t` of the arc from `a` counter-clockwise to `b`, or, with
    /// `bCCW` false, from `a` clockwise to `b`. `a` itself if the two are within the tolerance
    /// of one another.
    static double GetSegmentPoint(double a, double b, double t, bool bCCW) {
        if (zToler > std::fabs(b - a)) return a;
        const double s = bCCW ? a : b;
        const double e = Raised(bCCW ? b : a, s);
        const double u = bCCW ? t : 1 - t;
        return Factorize((1 - u) * s + u * e);
    }

    /// @}

private:
    // One pass of Factor, and the next, for which no half turn is left to take off.
    static double Factored(double angle);
    static double FactoredAgain(double angle) {
        const double rest = angle / zPi * zPi;
        return zToler > std::fabs(rest + zPi) ? zPi : rest;
    }
    static double FactoredFar(double angle);
    static double FromHalfTurns(bool odd, double rest);

    // `InRange` counter-clockwise, at any place.
    static bool InRangeNearEnd(double x, double s, double e);

    // `a`, a full turn later if `from` lies above it by more than the tolerance.
    static double Raised(double a, double from) { return from > a + zToler ? a + z2Pi : a; }

    static bool IsAtSeam(double a) { return zSeamBand > std::fabs(std::fabs(a) - zPi); }
};

// Without a branch on whether the half turns are odd, which is seldom foreseeable. Adding
// -0.0 changes no number.
inline double S1::FromHalfTurns(bool odd, double rest) {
    const double fromMinusPi = rest + (odd ? -0.0 : zPi);
    if (zToler > std::fabs(fromMinusPi)) [[unlikely]]
        return zPi;
    return rest + (odd ? std::copysign(zPi, -rest) : -0.0);
}

inline double S1::Factored(double angle) {
    const double halfTurns = angle / zPi;
    if (!(std::fabs(halfTurns) < 2147483648.0)) [[unlikely]]
        return FactoredFar(angle);
    const auto whole = static_cast<std::int32_t>(halfTurns);
    // The fraction keeps the sign also where it is zero.
    const double fraction = std::copysign(halfTurns - whole, halfTurns);
    return FromHalfTurns((whole & 1) != 0, fraction * zPi);
}

// Away from both ends neither the tolerance nor the seam matters, and the answer needs no
// branch: on which side of the ends an angle lies is seldom foreseeable.
inline bool S1::InRange(double x, double a, double b, bool bCCW) {
    constexpr double kAway = 10.0 * zSeamBand;
    const double s = bCCW ? a : b;
    const double e = bCCW ? b : a;
    if (!(std::fabs(x - s) > kAway && std::fabs(x - e) > kAway)) return InRangeNearEnd(x, s, e);
    // The raw angle -pi is not valid here and lies on no arc, deliberately.
    const bool valid = IsValid(std::min({s, e, x})) && IsValid(std::max({s, e, x}));
    const bool afterStart = x > s;
    const bool beforeEnd = e > x;
    return valid & ((afterStart & beforeEnd) | ((s > e) & (afterStart | beforeEnd)));
}

}  // namespace ZT
