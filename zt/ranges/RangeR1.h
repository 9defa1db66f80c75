/// @file
/// Intervals on the real line: the record that all range classes derive from or
/// hold.

#pragma once

#include <emmintrin.h>
#include <platform/collections/ElementHelpers.h>
#include <platform/collections/SerializeElements.h>
#include <zt/frame/Export.h>
#include <zt/frame/ZT.h>
#include <zt/numerics/ScalarFunctions.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

class CArchive;

namespace PW {
class Range;
}

namespace ZT {

class PCExBase;

/// An interval on the real line, from a lower to an upper limit, or, with the
/// external flag set, its complement: all numbers outside of the two limits.
///
/// The limits are two plain doubles that nothing keeps in order. A range is
/// - **empty** if the lower limit lies above the upper one by more than the
///   tolerance. The canonical empty range has the limits 1e307 and -1e307, into which
///   a point or a range can be included as into nothing; `Reset` gives a second form,
///   0 and -1, into which it cannot.
/// - a **singleton** if the limits lie closer together than the tolerance. It is not
///   empty, but it is an *empty interval* (`IsEmptyInterval`), for it has no length.
/// - **full** if its limits are infinite: -1e307 and 1e307, or, for an external range,
///   1e307 and 1e307, the complement of a range that lies at infinity. The latter is
///   full and at the same time not valid.
/// - **not valid** (`IsValid`) if it is out of order by more than the tolerance or if
///   both limits lie at the same infinity.
///
/// Infinity is the large finite number `zInfinity`, and a limit is infinite beyond
/// `zFullBound`.
///
/// Two numbers closer together than the tolerance `zToler` are one number. A test
/// with a tolerance is strict, so that two numbers exactly the tolerance apart are
/// different, unless its line says otherwise. Assigning a range that differs by less
/// than the tolerance changes nothing.
///
/// The external flag turns the meaning of `In`, of the operations that are told in
/// terms of `In`, of the distances where a range is full, of `IsFull` and of the
/// containment operators. All other operations look at the limits alone, as they stand,
/// and leave the flag as it is.
///
/// Limit 0 is the lower limit, and any other number means the upper one.
///
/// The operations are not virtual, apart from `GetClass` and `Set`, and derived classes
/// hide those that they define anew. What is said here to go through `Set` reaches a
/// derived class's `Set`, which may bring the limits into a form of its own; all other
/// operations write the limits directly. No operation allocates.
class ZT_API RangeR1 {
public:
    /// The classes of ranges.
    enum EClass : std::int32_t {
        eClassR1 = 0,     ///< Real: `RangeR1` and what adds no kind of number of its own.
        eClassRange = 1,  ///< `Range`, which is real or an angle.
        eClassS1 = 2,     ///< `RangeS1`, an arc.
    };

    /// The place of a point against a range. The value 4 is not used.
    enum ELocn : std::int32_t {
        eLocnIn = 1,     ///< Between the limits, away from both.
        eLocnAtMin = 2,  ///< At the lower limit, within the tolerance.
        eLocnAtMax = 3,  ///< At the upper limit, within the tolerance.
        eLocnOut = 5,    ///< Outside of an arc, where before and after do not exist.
        eLocnBelow = 6,  ///< Below the lower limit.
        eLocnAbove = 7,  ///< Above the upper limit.
    };

    /// The place of a second range against this one. The values 6 and 13 are not used.
    enum ERangeLocn : std::int32_t {
        eRangeLocnIn = 1,          ///< It lies strictly inside this one.
        eRangeLocnInAtMin = 2,     ///< It lies inside this one and shares its start.
        eRangeLocnInAtMax = 3,     ///< It lies inside this one and shares its end.
        eRangeLocnPointAtMin = 4,  ///< It is a point at the start of this one.
        eRangeLocnPointAtMax = 5,  ///< It is a point at the end of this one.
        eRangeLocnSame = 7,        ///< It equals this one.
        eRangeLocnCoverAtMin = 8,  ///< This one lies inside it and shares its start.
        eRangeLocnCoverAtMax = 9,  ///< This one lies inside it and shares its end.
        eRangeLocnCover = 10,      ///< This one lies strictly inside it.
        eRangeLocnOverlap = 11,    ///< They overlap, and neither is inside the other.
        eRangeLocnTouch = 12,      ///< They meet in a single point.
        eRangeLocnApart = 14,      ///< They have no point in common.
    };

    /// The lower limit, also called limit 0.
    double m_min;
    /// The upper limit, also called limit 1.
    double m_max;
    /// Whether the range stands for the numbers outside of its limits.
    bool m_bExternal;

    /// @name Making and storing
    /// @{

    /// The canonical empty range.
    RangeR1() : RangeR1(zInfinity, -zInfinity) {}
    /// The range between two limits, which are not put in order.
    RangeR1(double lo, double hi) : m_min(lo), m_max(hi), m_bExternal(false) {}
    /// The same limits and flag, to the bit.
    RangeR1(const RangeR1& r) : m_min(r.m_min), m_max(r.m_max), m_bExternal(r.m_bExternal) {}

    /// Takes over the limits and the flag of `r`, and tells whether anything changed. If
    /// both limits differ by less than the tolerance and the flags agree, nothing is
    /// stored: this range keeps its own limits, with their small difference.
    bool operator=(const RangeR1& r) { return Copy(r); }

    /// The class of the range.
    virtual EClass GetClass() const;

    /// Stores the limits without putting them in order. The flag stays.
    virtual void Set(double lo, double hi);

    virtual ~RangeR1() = default;

    /// The same as `operator=`.
    bool Copy(const RangeR1& r) {
        if (IsWithinTolerance(r)) return false;
        Store(r);
        return true;
    }

    /// Hands the limits to the older sibling's range through its `Set`, and then the
    /// flag.
    void CopyToPw(PW::Range* target) const;

    /// The second form of the empty range: limits 0 and -1, not external.
    void Reset() {
        StoreLimits(0.0, -1.0);
        m_bExternal = false;
    }

    /// The canonical empty range, not external.
    void Invalidate() {
        SetEmpty();
        m_bExternal = false;
    }

    /// The canonical empty limits. The flag stays, so that an external range then holds
    /// everything but what lies between 1e307 and -1e307.
    void SetEmpty() { StoreLimits(zInfinity, -zInfinity); }

    /// The full range under the present flag, or, with `bInfinite` false, the full angle
    /// in radians.
    void SetFull(bool bInfinite);

    /// The full angle in radians, through `Set`. It starts 1.5e-10 above the negative of
    /// pi, so that it keeps clear of the seam of the circle.
    void SetFullAngle();

    /// Stores the smaller of two numbers as the lower limit.
    void SetUnordered(double a, double b) { b >= a ? StoreLimits(a, b) : StoreLimits(b, a); }

    /// Stores both limits, and tells whether either moved by more than the tolerance.
    bool SetEx(double lo, double hi);

    /// Stores the flag. A range that was full under the old flag is then made full under
    /// the new one.
    void SetExternal(bool bExternal);

    /// Whether the range stands for the numbers outside of its limits.
    bool IsExternal() const { return m_bExternal; }

    /// @}
    /// @name Limits
    /// @{

    /// Both limits.
    void Get(double& lo, double& hi) const {
        lo = m_min;
        hi = m_max;
    }

    /// The lower limit for an `i` of 0, the upper one for any other.
    double GetLimit(unsigned char i) const { return i != 0 ? m_max : m_min; }

    /// The start, which is the lower limit, if `bStart` is true, and the end if it is
    /// false. The sense is the opposite of that of `GetLimit`, deliberately.
    double GetEnd(bool bStart) const { return bStart ? m_min : m_max; }

    /// Which limit lies within `tol` of `x`: 0 or 1, the lower one first, and 2 if
    /// neither does.
    unsigned char FindLimit(double x, double tol) const;

    /// Which limit this range shares with `r`: 0 or 1, the lower one first, and 3 if
    /// neither. `FindLimit` says 2 for none; the mismatch is deliberate.
    unsigned char FindSameLimit(const RangeR1& r) const;

    /// @}
    /// @name Comparison
    /// The operators `>=` and `<=` mean containment.
    /// @{

    /// Whether no limit differs by more than the tolerance. A difference of exactly the
    /// tolerance is equal here, while for an assignment it is a change. The flags are not
    /// compared.
    bool operator==(const RangeR1& r) const { return IsSame(r, zToler); }
    bool operator!=(const RangeR1& r) const { return !(*this == r); }

    /// Whether this contains `r`.
    ///
    /// With equal flags, both limits of `r` have to be in this range by `In`; so a range
    /// does not contain the canonical empty one unless it reaches to infinity itself. A
    /// plain range contains an external one only if it is full. An external range contains
    /// a plain one that lies on one side of the hole, borders included; if its own limits
    /// are out of order, it contains just what is empty.
    bool operator>=(const RangeR1& r) const;

    /// Whether `r` contains this.
    bool operator<=(const RangeR1& r) const { return r >= *this; }

    /// Whether no limit differs by more than `tol`. The flags are not compared.
    bool IsSame(const RangeR1& r, double tol) const {
        return !(std::fabs(m_min - r.m_min) > tol) && !(std::fabs(m_max - r.m_max) > tol);
    }

    /// Whether no limit differs from `lo` and `hi` by more than `tol`. An infinite `lo` or
    /// `hi` asks for a limit that is infinite on the same side.
    bool Is(double lo, double hi, double tol) const;

    /// Whether this range ends above the end of `r`; `eUnknown` if either contains the
    /// other.
    ETri IsAfter(const RangeR1& r) const;

    /// Whether this range comes after `r`, both taken with closed ends. Ranges that
    /// overlap in more than a point give `eTrue`, whichever comes first. Of ranges that
    /// lie apart the one that ends higher is after. Where they meet in a single point,
    /// - against an `r` with length, that is so too, and a point at the end of `r`, which
    ///   ends no higher, is after it as well (`eTrue`);
    /// - against a point, the answer is `eTrue` for a range with length that ends higher,
    ///   and otherwise `eUnknown`: also for a range that ends in that point, though it is
    ///   no point itself.
    ETri IsAfterClosed(const RangeR1& r) const;

    /// @}
    /// @name Classification
    /// @{

    /// Whether the limits are out of order by more than the tolerance.
    bool IsEmpty() const { return m_min > m_max + zToler; }

    /// Whether the range has no length: empty, or a singleton. A lower limit beyond
    /// `zFinite` counts as infinite: then the range has no length if it lies wholly at
    /// that infinity.
    bool IsEmptyInterval() const {
        if (std::fabs(m_min) > zFinite) return m_min > 0 || m_max < -zFinite;
        return zToler > m_max - m_min;
    }

    /// Whether the range holds every number. The flag counts; see the class.
    bool IsFull() const {
        return m_max > zFullBound && (m_bExternal ? m_min > zFullBound : m_min < -zFullBound);
    }

    /// Whether the range is longer than about 3e306, so that at least one of its limits is
    /// a huge number.
    bool IsUnlimited() const;

    /// Whether the lower limit, or with `bLower` false the upper one, is infinite.
    bool IsUnlimited(bool bLower) const {
        return bLower ? m_min < -zFullBound : m_max > zFullBound;
    }

    /// Whether the limits are in order within the tolerance and do not both lie at the
    /// same infinity. The full external range is not valid, deliberately.
    bool IsValid() const;

    /// Whether the limits lie closer together than the tolerance.
    bool IsSingleton() const { return IsSingleton2(zToler); }

    /// Whether the limits lie closer together than `tol`.
    bool IsSingleton2(double tol) const { return tol > std::fabs(m_max - m_min); }

    /// Whether no limit differs from `x` by more than `tol`.
    bool IsSingleton(double x, double tol) const {
        return !(std::fabs(m_min - x) > tol) && !(std::fabs(m_max - x) > tol);
    }

    /// @}
    /// @name Points
    /// These take the smaller and the larger of the two limits, so that their order does
    /// not matter, except where a line says otherwise.
    /// @{

    /// Whether the range holds `x`: the main test, and the only one of a point that obeys
    /// the flag. Both borders are included, moved outwards by `tol`, also that distance
    /// itself. An external range holds what is not between its limits, and the borders
    /// within less than `tol`.
    ///
    /// Emptiness is not asked for: the canonical empty range, whose limits in order reach
    /// from one infinity to the other, holds every number by this test, and by all that
    /// are told in its terms. Ask `IsEmpty` first.
    bool In(double x, double tol) const {
        const bool between = In(x, m_min, m_max, tol);
        if (!m_bExternal) return between;
        return !between || IsNearEither(x, tol);
    }

    /// Whether `x` lies between `a` and `b`, both moved outwards by `tol` and included.
    static bool In(double x, double a, double b, double tol) {
        // Without a branch: whether a point is inside is seldom foreseeable.
        return static_cast<int>(x >= std::min(a, b) - tol) &
               static_cast<int>(std::max(a, b) + tol >= x);
    }

    /// Whether `x` lies between `a` and `b`, with no tolerance; both are included.
    static bool InNoToler(double x, double a, double b) {
        return x >= std::min(a, b) && std::max(a, b) >= x;
    }

    /// Whether `x` lies between the limits and not within `tol` of either. The flag does
    /// not count.
    bool InOpen(double x, double tol) const {
        return In(x, m_min, m_max, tol) && !IsNearEither(x, tol);
    }

    /// As the static `In` with the library's tolerance, for numbers; but a NaN is in, which
    /// it is not by `In`.
    static bool IsIn(double x, double a, double b) { return IsIn(x, a, b, true, true); }

    /// Whether `x` lies between `a` and `b`. The smaller and the larger of the two can each
    /// be closed, and so moved outwards by the tolerance, or open, and so moved inwards by
    /// it. A NaN is in.
    static bool IsIn(double x, double a, double b, bool bMinClosed, bool bMaxClosed);

    /// The same on the limits, the lower one closed and the upper one open.
    bool IsInSemiOpen(double x) const { return IsIn(x, m_min, m_max, true, false); }

    /// Whether `x` is at a limit.
    bool IsEnd(double x) const { return IsNearEither(x, zToler); }

    /// Near which limit `x` lies: `eFalse` for the lower one, `eTrue` for the upper one,
    /// `eUnknown` for neither. Everything below the lower limit counts as near it, however
    /// far, and likewise above the upper one. The limits count as they stand, and a
    /// distance of exactly `tol` is near.
    ETri IsNearLimit(double x, double tol) const;

    /// Whether a point at `x` that moves with the speed `v` is heading for the centre. A
    /// speed of zero heads nowhere.
    bool IsApproaching(double x, double v) const;

    /// The place of `x` against the limits as they stand: never `eLocnOut`. The flag does
    /// not count.
    ELocn GetPointLocation(double x, double tol) const;

    /// @}
    /// @name Ranges against ranges
    /// @{

    /// Whether `r` lies in this range.
    bool IsIn(const RangeR1& r) const { return r.IsInsideOf(*this); }

    /// Whether this range is empty or both its limits are in `r`, by `In`. So everything
    /// is inside of the canonical empty range.
    bool IsInsideOf(const RangeR1& r) const {
        return IsEmpty() || (r.In(m_min, zToler) && r.In(m_max, zToler));
    }

    /// Cuts this range down to what it shares with `r`, and tells whether anything is left.
    /// Ranges that touch share a singleton. Where two limits are the same number, that of `r`
    /// is taken, but the upper limit stays unless `r` starts below. The flags do not count,
    /// but when `r` lies inside this range its flag comes along.
    ///
    /// Of ranges that lie apart the canonical empty limits are left. Two that do not, and of
    /// which one is out of order, can give false as well, but the limits are then what the
    /// cut makes of them: (2, 1) stays so against (0, 3), and (0, 10) becomes (6, 5) against
    /// (6, 5).
    bool Intersect(const RangeR1& r);

    /// Whether the ranges share a point, or, with `bStrict`, more than a point. The flags
    /// do not count.
    bool IsIntersection(const RangeR1& r, bool bStrict) const;

    /// Whether the ranges share no point, or, with `bStrict`, no more than a point. Without
    /// `bStrict` this is the opposite of `IsIntersection`.
    bool IsEmptyIntersection(const RangeR1& r, bool bStrict) const;

    /// @}
    /// @name Measures
    /// @{

    /// The length, which is negative for an empty range.
    double GetLength() const { return m_max - m_min; }

    /// The length, or 0 where that is negative.
    double GetSize() const { return std::max(0.0, GetLength()); }

    /// The centre, in a form that does not overflow for huge limits. The operations that
    /// move the centre take it as half the sum of the limits instead; each keeps its form.
    double GetCenter() const { return m_max * 0.5 + m_min * 0.5; }

    /// The point at the ratio `t`: the lower limit at 0, the upper one at 1.
    double GetPoint(double t) const { return GetPoint(t, m_min, m_max); }

    /// The point at the ratio `t` of the way from `a` to `b`.
    static double GetPoint(double t, double a, double b) { return (1 - t) * a + t * b; }

    /// Knot `i` of a subdivision into `n` equal segments. After knot `n` they start again
    /// with the lower limit; a negative `i` counts from there downwards. With an `n` of 0
    /// this is the lower limit. An `n` of -1 divides an integer by zero.
    double GetPoint(int i, int n) const;

    /// The ratio of `x`: 0 at the lower limit, 1 at the upper one. 0.0 for a range that is
    /// shorter than the tolerance or empty.
    double GetRatio(double x) const { return GetRatio(x, m_min, m_max); }

    /// The ratio of `x` on the way from `a` to `b`.
    static double GetRatio(double x, double a, double b) {
        return zToler > b - a ? 0.0 : (x - a) / (b - a);
    }

    /// Turns `x` into its ratio. On a range that is shorter than the tolerance or empty, an
    /// `x` at the lower limit becomes 0.0 and any other stays, and the result is false.
    bool ToUnitRange(double& x) const;

    /// From the point at the ratio `t2` to that at `t1`.
    double GetDiff(double t1, double t2) const { return GetPoint(t1) - GetPoint(t2); }

    /// The upper limit less the lower limit of `r`, whatever the two look like: the overlap
    /// of ranges that are known to follow one another.
    double GetOverlap(const RangeR1& r) const { return m_max - r.m_min; }

    /// How many segments of the length `step` cover the range. A step of zero, or a count
    /// beyond 32 bits, gives the most negative integer.
    int GetCoverSegmCount(double step) const;

    /// The distance from `x` to the nearer limit; in spite of the name not that limit.
    double GetNearestEnd(double x) const {
        return std::min(std::fabs(x - m_min), std::fabs(x - m_max));
    }

    /// `x` if it is in the range, and otherwise the nearer limit, the upper one on a tie.
    double GetBestMatch(double x) const { return In(x, zToler) ? x : Nearer(m_min, m_max, x); }

    /// `x`, clamped to the limits, in whichever order they stand. No tolerance.
    double ToRange(double x) const { return ToRange(m_min, m_max, x); }

    /// `x`, clamped to `a` and `b`, in whichever order they stand. Mind the order of the
    /// arguments: the value to clamp is the last.
    static double ToRange(double a, double b, double x) {
        return InNoToler(x, a, b) ? x : Nearer(a, b, x);
    }

    /// The signed distance from `x` to the nearer limit: negative inside, positive outside.
    /// `pNearest`, which may be null, receives the nearest point of the range.
    ///
    /// An empty range gives 1e307 and leaves `*pNearest`; a full one gives 0.0, and `x`
    /// itself is the nearest point.
    double GetDist(double x, double* pNearest) const;

    /// The distance between this range and `r`: positive if they lie apart, otherwise 0.0.
    /// With `bInside`, an `r` that lies inside this range, by `IsInsideOf`, gives instead
    /// how far it clears the nearer end, and 0.0 for a full `r`. That is a positive number
    /// again, so that the number alone does not tell the two cases from one another; it is
    /// negative where `r` sticks out by no more than the tolerance. In an external range
    /// lies also what has both its limits outside of the hole: then the number can be
    /// negative by any amount.
    ///
    /// If either range is empty, the result is the plain difference of two limits and tells
    /// nothing.
    double GetDist(const RangeR1& r, bool bInside) const;

    /// The distance from `x` to the farther limit, which `*pFarthest` receives; `pFarthest`
    /// may be null. An empty range gives 1e307 and a full one 0.0, although it is unlimited;
    /// both leave `*pFarthest`.
    double GetMaxDist(double x, double* pFarthest) const;

    /// The greatest distance between a point of this range and one of `r`. If this range
    /// lies inside `r`, that is the greater of the distances from either end of `r` to the
    /// opposite end of this; otherwise it is the length of the span of both.
    double GetMaxDist(const RangeR1& r) const;

    /// The largest factor by which `r` can grow about `pivot` and stay within this range.
    /// 1e307 if the pivot is not above the start of this range and of `r` and below the end
    /// of this one. The end of `r` is not tested: at the pivot it divides by zero.
    double GetScale(const RangeR1& r, double pivot) const;

    /// Point `i` of `n` sampling points that lie as a cosine spaces them: close to one
    /// another at the start of the range, or, with `bStart` false, at its end. Point 0 is
    /// the lower limit and point `n` the upper one, up to rounding. An `n` of 0 gives a NaN.
    double GetArcSingilarSamplingPt(int i, int n, bool bStart) const;

    /// @}
    /// @name Subdivision
    /// The range is cut into `n` equal segments; knot k lies at lo + k * (hi - lo) / n. The
    /// output pointers may be null.
    ///
    /// Below the lower limit the number of steps to a point is cut towards zero, so that a
    /// point between two knots there belongs to the segment above its own, and the knot
    /// after it is the second one. On (0, 8) with an `n` of 4, -3 is in segment -1, which
    /// runs from -2 to 0, and the knot after -5 is -2, not -4.
    /// @{

    /// The index of the segment that holds `x`, and in `*pOnKnot` whether `x` is on a knot,
    /// which is then the knot of that index. A point at the upper limit is on knot `n`, so
    /// that the result is one more than the last segment. Segments shorter than the
    /// tolerance give 0, as on a knot. Outside of the range the count goes on, below it as
    /// the group tells.
    ///
    /// With an `n` of 0 the result is 0 and `*pOnKnot` stays as it is.
    int GetSegment(double x, int n, bool* pOnKnot) const;

    /// The same as `GetSegment`.
    int GetSegm(double x, int n, bool* pOnKnot) const { return GetSegment(x, n, pOnKnot); }

    /// Segment `i`, from knot `i` to the next. The knots start again after the last, so
    /// segment `n` runs backwards from the upper to the lower limit. With an `n` of 0 both
    /// limits are the lower one. An `n` of -1 divides an integer by zero. The flag of `out`
    /// stays.
    void GetSegment(int i, int n, RangeR1& out) const;

    /// The knot after `x`, below the range as the group tells, and its index in `*pIndex`.
    /// `*pOnKnot` is as for `GetSegment`.
    ///
    /// After the last knot the sequence wraps round to the lower limit, deliberately, while
    /// the index stays `n`. With an `n` of 0 the result is the lower limit, the index 0, and
    /// `*pOnKnot` false. An `n` of -1 divides an integer by zero.
    double GetNext(double x, int n, bool* pOnKnot, int* pIndex) const;

    /// `x` if it is on a knot, and otherwise the knot after it, as `GetNext` gives it.
    double GetUpper(double x, int n, bool* pOnKnot) const;

    /// Moves the upper limit up, so that the range becomes a whole number of steps, at least
    /// one, which `n` receives. A range that is one already gains one more step.
    void Setup(double step, int& n);

    /// The same, after an `Align` with `*pOrigin` if that is not null.
    void Setup(double step, int& n, const double* pOrigin);

    /// Moves the lower limit down to the grid of the given step that goes through `origin`.
    /// Nothing happens if the step is not greater than the tolerance.
    void Align(double step, double origin);

    /// @}
    /// @name Mapping
    /// @{

    /// The point of this range at the ratio that `x` has in `from`. A `from` that is shorter
    /// than the tolerance gives the lower limit.
    double Map(double x, const RangeR1& from) const { return GetPoint(from.GetRatio(x)); }

    /// Maps both limits of `r` in this way, through the `Set` of `r`.
    void Map(RangeR1& r, const RangeR1& from) const;

    /// The blend of two ranges, limit by limit: `a` at a `t` of 0, `b` at 1. The flag stays.
    void Combine(const RangeR1& a, const RangeR1& b, double t) {
        StoreLimits(GetPoint(t, a.m_min, b.m_min), GetPoint(t, a.m_max, b.m_max));
    }

    /// @}
    /// @name Union and difference
    /// @{

    /// Extends the range to `x`. The canonical empty range becomes a singleton.
    void Include(double x) { StoreLimits(std::min(m_min, x), std::max(m_max, x)); }

    /// Extends the range to the limits of `r`, and tells whether that changed anything. It
    /// does not ask whether either is empty: the canonical empty range adds nothing, but
    /// one such as (0, -1) does.
    bool Include(const RangeR1& r) { return Unite(r); }

    /// The same as `Include`.
    bool Unite(const RangeR1& r) {
        const bool changed = static_cast<int>(m_min > r.m_min) | static_cast<int>(r.m_max > m_max);
        StoreLimits(std::min(m_min, r.m_min), std::max(m_max, r.m_max));
        return changed;
    }

    /// Extends the range to the limits of `r`. An empty range becomes `r`, with its flag, by
    /// the rule of `Copy`. Whether `r` is empty is not asked: the canonical empty range adds
    /// nothing, but one such as (0, -1) does, deliberately.
    RangeR1& operator+=(const RangeR1& r);

    /// Takes `r` away, and tells how many pieces remain: 0, 1 or 2. Of two pieces the upper
    /// one is returned in `r`, through the `Set` of `r`.
    ///
    /// A range that lies inside `r`, by `IsInsideOf`, becomes empty. Taking away a point, or
    /// a range that lies apart, takes away nothing, and 1 is the answer. A piece above `r`
    /// that remains alone is stored through `Set`. If what is shared covers this range to
    /// the bit, the answer is 0 but the range stays.
    unsigned char Subtract(RangeR1& r);

    /// @}
    /// @name Moving, scaling and fitting
    /// @{

    /// Moves the range by `d`.
    void Translate(double d) { StoreLimits(m_min + d, m_max + d); }

    /// Exchanges the limits.
    void Swap() { std::swap(m_min, m_max); }

    /// Moves both limits outwards by `d`.
    void Expand(double d) { StoreLimits(m_min - d, m_max + d); }

    /// Gives the range the length `len` about its centre.
    void Spread(double len);

    /// Multiplies the length by `k` about the centre, through `Set`.
    void Scale(double k);

    /// Multiplies the length by 1 + `k` about the centre, through `Set`.
    void Inflate(double k);

    /// Multiplies the distances from `pivot` by `k`: here `k` is the factor itself, not 1 + k
    /// as in the overload without a pivot, deliberately.
    void Inflate(double k, double pivot) {
        StoreLimits(pivot - (pivot - m_min) * k, pivot + (m_max - pivot) * k);
    }

    /// `Inflate(k, pivot)` about the point at the ratio `t`.
    void Inflate2(double k, double t) { Inflate(k, GetPoint(t)); }

    /// Multiplies both limits. A negative factor turns the range round, and then the limits
    /// are exchanged if they are out of order by more than the tolerance. With a factor of -1
    /// the canonical empty range becomes the full one.
    RangeR1& operator*=(double k);

    /// Multiplies both limits by the degrees in a radian. Nothing records the unit: a second
    /// call multiplies again.
    void ToDegrees() { StoreLimits(m_min * zDegPerRad, m_max * zDegPerRad); }

    /// Multiplies both limits by the radians in a degree. Nothing records the unit.
    void ToRadians() { StoreLimits(m_min * zRadPerDeg, m_max * zRadPerDeg); }

    /// Moves the range to a new centre, and tells whether it moved: it does not if the
    /// centre lies within the tolerance already.
    bool SetCenter(double c);

    /// Moves the upper limit, so that the range has the length `len`.
    void SetLength(double len) { m_max = m_min + len; }

    /// Gives the range the length `len` about its centre, through `Set`.
    void SetLengthKeepCenter(double len);

    /// Gives the range the length `len` and keeps limit `i`.
    void SetLengthKeepLimit(double len, unsigned char i);

    /// Moves the range so that its limit `i` is at `x`, through `Set`.
    void SetLimitKeepLength(unsigned char i, double x) {
        i != 0 ? SetMaxKeepLength(x) : SetMinKeepLength(x);
    }

    /// Moves the range so that it ends at `x`, through `Set`.
    void SetMaxKeepLength(double x) { Set(x - GetLength(), x); }

    /// Moves the range so that it starts at `x`, through `Set`.
    void SetMinKeepLength(double x) { Set(x, x + GetLength()); }

    /// Widens the range where it needs it to clear `r` by `margin` at both ends. It never
    /// becomes narrower.
    void AddMargin(const RangeR1& r, double margin);

    /// Keeps the centre and takes the length that it needs to cover `r`, also if that is
    /// shorter than the present one.
    void AdjustCentral(const RangeR1& r);

    /// Centres the range within `r` and keeps its length, through `Set`. A range longer than
    /// `r` does not move.
    void Center(const RangeR1& r);

    /// Makes the range symmetric about 0, by its limit of the greater magnitude, through
    /// `Set`; tells whether it was not.
    bool MakeSymmetric();

    /// Exchanges the limits if they are out of order, by however little, and tells whether
    /// they were. Limits that are NaN count as out of order.
    bool MakeValid();

    /// Makes a default range for a value, through `Set`: from 0 to one and a half times the
    /// value, or from -10 to 10 for a value of zero.
    void MakeValid(double v);

    /// Moves the range by the length of what it shares with `r`, down if the centre of `r`
    /// is above its own and otherwise up, so that the two only touch. False, and the range
    /// as it was, if they share nothing. Ranges that touch already hardly move, but the
    /// answer is true.
    bool MoveAwayFrom(const RangeR1& r);

    /// Moves `x` to the limit that lies within `tol` of it, the lower one first. Otherwise
    /// `x` stays.
    void Snap(double& x, double tol) const;

    /// Moves both limits of `r` in this way, without its `Set`.
    void Snap(RangeR1& r, double tol) const;

    /// Replaces the range by the reciprocals of its limits, in order. False, and the range as
    /// it was, if it is not valid or is empty.
    ///
    /// The reciprocal of a zero limit is infinite with the sign opposite to the other limit:
    /// (0, 5) gives (-1e307, 0.2), deliberately. The reciprocal of a limit beyond `zFinite`
    /// is 0; if that is the upper limit, both reciprocals are 0. The range at zero gives
    /// (1e307, 1e307).
    bool Invert();

    /// @}
    /// @name Persistence
    /// @{

    /// Stores the two limits in an archive, or loads them: 16 bytes. The flag is not part of
    /// the record and stays as it is on loading. The archive raises its exception when it
    /// ends early.
    void Serialize(CArchive& archive);

    /// Stores or loads the two limits as one element "Rg" at the cursor. The flag takes no
    /// part.
    void PersistXML(PCExBase& pc);

    /// @}

private:
    void StoreLimits(double lo, double hi) {
        m_min = lo;
        m_max = hi;
    }

    void Store(const RangeR1& r) {
        StoreLimits(r.m_min, r.m_max);
        m_bExternal = r.m_bExternal;
    }

    bool IsWithinTolerance(const RangeR1& r) const {
        return zToler > std::fabs(m_min - r.m_min) && zToler > std::fabs(m_max - r.m_max) &&
               m_bExternal == r.m_bExternal;
    }

    bool IsNearEither(double x, double tol) const {
        return tol > std::fabs(x - m_min) || tol > std::fabs(x - m_max);
    }

    bool LiesApartFrom(const RangeR1& r) const {
        return static_cast<int>(r.m_min > m_max + zToler) |
               static_cast<int>(m_min - zToler > r.m_max);
    }

    static double Nearer(double a, double b, double x) {
        return std::fabs(x - b) > std::fabs(x - a) ? a : b;
    }

    // Half the sum of the limits, which overflows for two huge ones.
    double GetMiddle() const { return (m_min + m_max) * 0.5; }
};

inline unsigned char RangeR1::FindLimit(double x, double tol) const {
    if (tol > std::fabs(m_min - x)) return 0;
    if (tol > std::fabs(m_max - x)) return 1;
    return 2;  // Not 3 as in FindSameLimit, deliberately.
}

inline unsigned char RangeR1::FindSameLimit(const RangeR1& r) const {
    if (zToler > std::fabs(m_min - r.m_min)) return 0;
    if (zToler > std::fabs(m_max - r.m_max)) return 1;
    return 3;  // Not 2 as in FindLimit, deliberately.
}

inline bool RangeR1::operator>=(const RangeR1& r) const {
    if (m_bExternal == r.m_bExternal) return In(r.m_min, zToler) && In(r.m_max, zToler);
    if (r.m_bExternal) return m_min < -zFullBound && m_max > zFullBound;
    if (IsEmpty()) return r.IsEmpty();
    const double belowHole = m_min + zToler;
    if (r.m_min < belowHole && r.m_max < belowHole) return true;
    const double aboveHole = m_max - zToler;
    return r.m_min > aboveHole && r.m_max > aboveHole;
}

inline bool RangeR1::Is(double lo, double hi, double tol) const {
    // An infinite limit is recognised from zFinite on here, not from zFullBound, deliberately.
    const bool sameMin = zEqual(lo, -zInfinity) ? m_min < -zFinite : !(std::fabs(m_min - lo) > tol);
    const bool sameMax = zEqual(hi, zInfinity) ? m_max > zFinite : !(std::fabs(m_max - hi) > tol);
    return sameMin && sameMax;
}

inline bool RangeR1::IsUnlimited() const {
    constexpr double kLongest = 2.9999999999999996e306;
    static_assert(detail::HasBits(kLongest, 0x7F9116AC579AAC1E));
    return m_max - m_min > kLongest;
}

inline bool RangeR1::IsValid() const {
    const bool atMinusInfinity = m_min < -zFullBound && m_max < -zFullBound;
    const bool atInfinity = m_min > zFullBound && m_max > zFullBound;
    return !(atMinusInfinity || atInfinity || m_min - zToler > m_max);
}

inline bool RangeR1::IsIn(double x, double a, double b, bool bMinClosed, bool bMaxClosed) {
    const double min = std::min(a, b);
    const double max = std::max(a, b);
    const double lowest = bMinClosed ? min - zToler : min + zToler;
    const double highest = bMaxClosed ? max + zToler : max - zToler;
    return !(x < lowest) && !(x > highest);
}

inline ETri RangeR1::IsNearLimit(double x, double tol) const {
    // One-sided and not strict, unlike FindLimit, deliberately.
    if (tol >= x - m_min) return eFalse;
    if (tol >= m_max - x) return eTrue;
    return eUnknown;
}

inline bool RangeR1::IsApproaching(double x, double v) const {
    if (zToler > std::fabs(v)) return false;
    const double c = GetMiddle();
    return (x > c - zToler && v < 0) || (c + zToler > x && v > 0);
}

inline RangeR1::ELocn RangeR1::GetPointLocation(double x, double tol) const {
    if (x < m_min - tol) return eLocnBelow;
    if (x < m_min + tol) return eLocnAtMin;
    if (x < m_max - tol) return eLocnIn;
    if (x < m_max + tol) return eLocnAtMax;
    return eLocnAbove;
}

// Both limits at once, the lower one in the first half of each register, and without a
// branch: how two ranges lie to one another is seldom foreseeable.
//
// A limit of r is taken or this range's own is kept:
// - the lower one is taken if r starts inside this range or at its start;
// - the upper one is then taken if it lies below the own, and otherwise, for an r that
//   starts below this range, if it does not lie above the own.
inline bool RangeR1::Intersect(const RangeR1& r) {
    const __m128d own = _mm_set_pd(m_max, m_min);
    const __m128d other = _mm_set_pd(r.m_max, r.m_min);
    const __m128d below = _mm_sub_pd(own, _mm_set1_pd(zToler));
    const __m128d above = _mm_add_pd(own, _mm_set1_pd(zToler));

    const __m128d notBelow = _mm_cmpnlt_pd(other, below);
    const __m128d startsInside = _mm_unpacklo_pd(notBelow, notBelow);
    const __m128d takesMax = _mm_or_pd(_mm_andnot_pd(notBelow, startsInside),
                                       _mm_andnot_pd(startsInside, _mm_cmpngt_pd(other, above)));
    const __m128d takes = _mm_shuffle_pd(notBelow, takesMax, 2);
    const __m128d shared = _mm_or_pd(_mm_and_pd(takes, other), _mm_andnot_pd(takes, own));

    // The lower limit of either against the upper limit of the other.
    const __m128d gaps = _mm_cmpgt_pd(_mm_unpacklo_pd(other, below), _mm_unpackhi_pd(above, other));
    const __m128d apart = _mm_or_pd(gaps, _mm_shuffle_pd(gaps, gaps, 1));
    const __m128d result = _mm_or_pd(_mm_and_pd(apart, _mm_set_pd(-zInfinity, zInfinity)),
                                     _mm_andnot_pd(apart, shared));
    _mm_storel_pd(&m_min, result);
    _mm_storeh_pd(&m_max, result);

    // An r that lies inside this range is copied with its flag. The tolerance of `Copy`
    // makes no difference: its upper limit lies at least that far below the own.
    if (m_bExternal != r.m_bExternal) {
        const bool isInside = _mm_movemask_pd(notBelow) == 1 && _mm_movemask_pd(apart) == 0;
        if (isInside) m_bExternal = r.m_bExternal;
    }
    return !IsEmpty();
}

inline bool RangeR1::IsIntersection(const RangeR1& r, bool bStrict) const {
    if (!bStrict) return !IsEmpty() && !r.IsEmpty() && !LiesApartFrom(r);
    RangeR1 shared(*this);
    shared.Intersect(r);
    return !shared.IsEmptyInterval();
}

inline bool RangeR1::IsEmptyIntersection(const RangeR1& r, bool bStrict) const {
    if (!bStrict) return !IsIntersection(r, false);
    // Not the opposite of the strict IsIntersection at the tolerance, deliberately.
    return IsEmptyInterval() || r.m_min > m_max - zToler || m_min + zToler > r.m_max ||
           r.IsEmptyInterval();
}

}  // namespace ZT

/// Ranges in an array move as bytes: apart from the pointer to its table, a range is three plain
/// fields, and ending one does nothing.
template <>
inline void RelocateElements<ZT::RangeR1>(ZT::RangeR1* pDest, ZT::RangeR1* pSrc,
                                          INT_PTR nCount) noexcept {
    const void* const source = pSrc;
    if (nCount > 0) {
        std::memmove(static_cast<void*>(pDest), source,
                     static_cast<UINT_PTR>(nCount) * sizeof(ZT::RangeR1));
    }
}

/// The record of a range in an array, 32 bytes: 8 that are 0, the limits, the flag in one byte,
/// and 7 that are 0. What the first 8 and the last 7 hold is passed over on loading. A range is
/// loaded whole or not at all.
template <>
ZT_API void SerializeElements<ZT::RangeR1>(CArchive& ar, ZT::RangeR1* pElements, INT_PTR nCount);
