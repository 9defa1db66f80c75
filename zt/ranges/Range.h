/// @file
/// Ranges that know whether their numbers are reals or angles.

#pragma once

#include <zt/frame/Export.h>
#include <zt/numerics/S1.h>
#include <zt/ranges/RangeR1.h>
#include <zt/ranges/RangeS1.h>

#include <cmath>
#include <cstdint>

class CArchive;
class IUnknown;

namespace ZT {

/// The kind of number that a range holds. Values other than these two count as angles.
enum EScalarType : std::int32_t {
    eScalarReal = 0,   ///< Plain real numbers.
    eScalarAngle = 1,  ///< Angles, in radians or in degrees.
};

/// A range that knows what its numbers are: an interval on the real line, or an arc on the
/// circle of angles, held in radians or in degrees. For a client who has one variable for
/// either.
///
/// Almost every operation goes by the scalar type. On a real range it is that of `RangeR1`,
/// though with the library's tolerance where that asks for one. An angular range behaves much
/// as a `RangeS1`: the arc runs counter-clockwise from `m_min` to `m_max`, the external flag
/// turns it round, and a stored state says whether it is full, empty or partial. What is in
/// degrees is converted for the comparison. An argument is a number in the unit of the range.
///
/// The state is the truth for an angular range. For a real one the limits are, and the state
/// lags behind them: it is set by the constructor from limits and by `UpdateState`, and not by
/// `Set`, `SetEmpty` and `SetFull()`.
///
/// Where the two kinds and `RangeS1` differ in what they do at the seam or for an empty range,
/// that is deliberate; the lines below say so.
///
/// - `Set`, `GetPoint` and the comparison with pi of `Copy` take angles in radians whatever the
///   unit. Convert a range in degrees before.
/// - A new angular range is full and holds the limits of the full real range, which are no valid
///   angles, until the first `Set`.
///
/// All operations that are named here hide those of `RangeR1` by that name, also in their other
/// forms. What is not named here works on the limits as plain numbers, without a look at type,
/// unit and state. No operation allocates.
class ZT_API Range : public RangeR1 {
public:
    /// How much of the circle an angular range is.
    RangeS1::EState m_eState;
    /// Whether the limits of an angular range are in degrees.
    bool m_bDegrees;
    /// The kind of number.
    EScalarType m_eScalarType;

    /// @name Making and storing
    /// @{

    /// The full real range.
    Range() : Range(eScalarReal) {}
    /// A full range of the given kind, in radians. Its limits are -1e307 and 1e307 also if it is
    /// angular.
    explicit Range(EScalarType type)
        : RangeR1(-zInfinity, zInfinity),
          m_eState(RangeS1::eStateFull),
          m_bDegrees(false),
          m_eScalarType(type) {}
    /// The real range between two limits, which are not put in order, with the state that they
    /// have by `UpdateState`.
    Range(double lo, double hi);
    /// The same limits, flag, state, unit and kind, to the bit.
    Range(const Range&) = default;

    /// The same as `Copy`.
    void operator=(const Range& r) { Copy(r); }

    EClass GetClass() const override;

    /// Stores the limits. On a real range that is all, and the state stays. On an angular one
    /// they are brought into canonical form, in radians also if the range is in degrees, and
    /// the state becomes partial, or full where the full angle of `SetFullAngle` is found.
    ///
    /// The limits -pi and pi are not: -pi folds to pi, and the result is a partial range at pi
    /// that is not valid. `RangeS1::Set` makes the whole circle of them.
    void Set(double lo, double hi) override;

    ~Range() override = default;

    /// Takes over limits and flag by the rule of `RangeR1::operator=`, and, from a `Range`, also
    /// state, kind and unit.
    ///
    /// On what is an angular range then, the state follows the limits: partial if they are
    /// different points, and full if they are the same point at pi. So the copy of an empty range
    /// in radians, whose limits are at pi, is full. Limits that are the same point elsewhere, as
    /// those of an empty range in degrees, leave the state.
    void Copy(const RangeR1& r);

    /// On a real range the canonical empty limits, and the state stays. On an angular one the
    /// limits are both `PI()`, and the state is empty. If the kind is none of the two, the limits
    /// stay, and only the state is stored.
    void SetEmpty();

    /// On a real range the full one under the present flag, and the state stays. On an angular
    /// one the limits are both `PI()`, and the state is full. If the kind is none of the two, the
    /// limits stay, and only the state is stored.
    void SetFull();

    /// The full range, and also the state. The argument does not count: a real range becomes
    /// the infinite one, an angular one the full angle.
    void SetFull(bool);

    /// Brings the state in line with the limits: full, empty if they are out of order, or partial.
    ///
    /// A real range is full if both limits lie beyond `zFinite`, which is less than `IsFull` asks
    /// for. An angular one is full if it runs from `MPI()` to `PI()`; that includes limits that
    /// are both at pi. An angular range whose limits are in reverse order becomes empty here,
    /// although they make a valid arc.
    void UpdateState();

    EScalarType GetScalarType() const { return m_eScalarType; }

    /// Stores the kind. Nothing is converted.
    void SetScalarType(EScalarType type) { m_eScalarType = type; }

    /// Writes and reads nothing, deliberately: there is no record of such a range.
    void Serialize(CArchive&) {}

    /// Does nothing. It is there for clients that treat all ranges as interface objects.
    void AttachOuterUnknown(IUnknown*) {}

    /// @}
    /// @name Units
    /// The limits are multiplied if the range is not in the target unit yet, also those of a real
    /// range; the kind stays. Half a turn in the range's unit is `PI()`.
    /// @{

    /// Converts the range to degrees, and tells whether it was not.
    bool ToDegrees();

    /// Converts the range to radians, and tells whether it was not.
    bool ToRadians();

    /// The same as `ToDegrees`. Declared const although it changes the range, and so never to be
    /// called on an object that was made const.
    void ToDeg() const { AsMutable().ToDegrees(); }

    /// The same as `ToRadians`. Declared const although it changes the range, as `ToDeg`.
    void ToRad() const { AsMutable().ToRadians(); }

    /// Converts the range to degrees, and, if it was not, `x` with it. Declared const although it
    /// changes the range, as `ToDeg`. Whether it did is not told, unlike in `ToRad`, deliberately.
    void ToDeg(double& x) const {
        if (AsMutable().ToDegrees()) S1::ToDegree(x);
    }

    /// Converts the range to radians, and, if it was not, `x` with it; tells whether it did.
    /// Declared const although it changes the range, as `ToDeg`.
    bool ToRad(double& x) const {
        const bool converted = AsMutable().ToRadians();
        if (converted) S1::ToRadian(x);
        return converted;
    }

    /// Half a turn: `zPi`, or 180.
    double PI() const { return m_bDegrees ? 180.0 : zPi; }

    /// The start of the full circle for `UpdateState`: half a turn back, moved inwards by twice
    /// the tolerance. In degrees it is the same angle, converted, and so not -180.
    double MPI() const { return m_bDegrees ? kMinusPiDegrees : kMinusPi; }

    /// @}
    /// @name State
    /// @{

    /// Whether the range is empty: by its limits if it is real, by its state if it is angular.
    bool IsEmpty() const {
        return IsReal() ? RangeR1::IsEmpty() : m_eState == RangeS1::eStateEmpty;
    }

    /// Whether the range is full: by its limits if it is real, by its state if it is angular.
    bool IsFull() const { return IsReal() ? RangeR1::IsFull() : m_eState == RangeS1::eStateFull; }

    /// Whether the limits can be those of a range. For an angular one they have to be valid by the
    /// static `S1::IsValid` and to fit the state: different points need a partial range, and
    /// limits at pi one that is not.
    bool IsValid() const;

    /// @}
    /// @name Points
    /// @{

    /// Whether the range holds `x`, within the tolerance. A full angular range holds every
    /// number; an empty one is not asked for its state and answers from its limits. An angle has
    /// to be in the canonical interval.
    bool In(double x) const {
        if (IsReal()) return RangeR1::In(x, zToler);
        return m_eState == RangeS1::eStateFull || HoldsAngle(x);
    }

    /// The same without the limits. A full angular range holds every number also here.
    bool InOpen(double x) const;

    /// The point at the ratio `t`: `m_min` at 0, `m_max` at 1.
    ///
    /// A full angular range runs from -pi to pi, and starts the tolerance above -pi. Degrees are
    /// not considered: the limits count as radians.
    double GetPoint(double t) const;

    /// The ratio of `x`; 0.0 on a range whose limits are within the tolerance of one another.
    ///
    /// A range in degrees converts itself to radians and back, which may change the last bits of
    /// its limits.
    double GetRatio(double x);

    /// Moves a limit to `x` if `x` lies outside by more than the tolerance, and tells whether it
    /// did; the limits count as numbers also if they are angles. An empty range becomes the
    /// point `x` then; an empty angular one with `x` between the limits that it keeps stays as it
    /// is. The state stays.
    bool Include(double x);

    /// @}
    /// @name Comparison of ranges
    /// The operators with a range mean containment. They do not convert: the limits of `r` count
    /// in the unit of this range.
    /// @{

    /// Whether no limit differs by more than the tolerance. Nothing else is compared.
    bool operator==(const Range& r) const { return RangeR1::operator==(r); }

    /// Whether this contains `r`.
    ///
    /// A full angular range contains everything, an empty one what is empty. A partial one
    /// contains an `r` whose limits it holds and that does not hold the middle of its gap; whether
    /// `r` is empty is not asked.
    bool operator>=(const Range& r) const;

    /// Whether `r` contains this. If this is real, both count as real ranges.
    bool operator<=(const Range& r) const { return IsReal() ? RangeR1::operator<=(r) : r >= *this; }

    /// Whether `r` contains this and a limit differs by more than the tolerance.
    bool operator<(const Range& r) const {
        return *this <= r &&
               (std::fabs(m_min - r.m_min) > zToler || std::fabs(m_max - r.m_max) > zToler);
    }

    /// Extends the range by `r`.
    ///
    /// Of two angular ranges neither of which contains the other, this one takes the end of `r`
    /// if it holds the start of `r`, and otherwise the start of `r`. The state stays: an empty
    /// range remains one.
    Range& operator+=(const Range& r);

    /// @}
    /// @name Comparison with numbers
    /// Both limits count as plain numbers, and a NaN compares as true.
    /// @{

    /// Whether both limits are below `x`.
    bool operator<(double x) const { return !(m_min >= x) && !(m_max >= x); }
    /// Whether neither limit is above `x`.
    bool operator<=(double x) const { return !(m_min > x) && !(m_max > x); }
    /// Whether both limits are above `x`.
    bool operator>(double x) const { return !(x >= m_min) && !(x >= m_max); }
    /// Whether neither limit is below `x`.
    bool operator>=(double x) const { return !(x > m_min) && !(x > m_max); }

    /// @}
    /// @name Arithmetic of the lower limit
    /// A range offers its lower limit to arithmetic.
    /// @{

    double operator-(const Range& r) const { return m_min - r.m_min; }
    double operator-(double x) const { return m_min - x; }
    double operator+(double x) const { return m_min + x; }

    /// @}

private:
    // -pi and twice the tolerance, in radians and, converted, in degrees.
    static constexpr double kMinusPi = -3.14159265338979;
    static constexpr double kMinusPiDegrees = -179.99999998854085;
    static_assert(detail::HasBits(kMinusPi, 0xC00921FB543D4DD9));
    static_assert(detail::HasBits(kMinusPiDegrees, 0xC0667FFFFFF9D911));

    void Store(double lo, double hi, RangeS1::EState state) {
        m_min = lo;
        m_max = hi;
        m_eState = state;
    }

    Range& AsMutable() const { return const_cast<Range&>(*this); }

    bool IsReal() const { return m_eScalarType == eScalarReal; }
    bool HasEqualLimits() const { return zToler > std::fabs(m_max - m_min); }
    double InRadians(double x) const { return m_bDegrees ? x * zRadPerDeg : x; }

    bool HoldsAngle(double x) const {
        return S1::InRange(InRadians(x), InRadians(m_min), InRadians(m_max), !m_bExternal);
    }

    RangeS1::EState StateOfLimits() const;
    void SetWhole(RangeS1::EState state);
    double MiddleOfGap() const;
};

}  // namespace ZT
