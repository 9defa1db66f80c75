/// @file
/// Uniform grids on a real interval.

#pragma once

#include <platform/object/CObject.h>
#include <zt/frame/Export.h>
#include <zt/frame/ZT.h>
#include <zt/ranges/RangeR1.h>

#include <cstdint>

namespace ZT {

class RangeInt;

/// A uniform subdivision of a real interval into equal segments.
///
/// A grid is a range and a number of segments, and nothing else: the step between two knots is
/// computed from the two each time. Knot 0 is the lower limit of the range, and the knots go on
/// outside of it. A grid is
/// - **empty** if its range is, by `RangeR1::IsEmpty`, as that of a new grid: it has no knot;
/// - **without segments** if their number is 0: the step is then 1e307 and every knot the lower
///   limit. Such a grid has to be given segments before it can grow or be searched; the
///   operations compute with that step all the same.
///
/// The extended sequence of knots, of `GetKnotAll` and `FindRangeAll`, places the grid inside
/// an outer range: index 0 is the lower limit of that, then come all knots of the grid, then the
/// upper limit of the outer range. For an empty grid it has the indices 0 and 1.
///
/// No operation reports an error, and none allocates. Like all objects of its root, a grid is
/// not copied.
class ZT_API Grid1D : public CObject {
public:
    /// The span of the grid.
    RangeR1 m_range;
    /// The number of segments.
    std::int32_t m_nSegments;

    /// @name Making
    /// @{

    /// An empty grid without segments.
    Grid1D() : m_nSegments(0) {}
    /// The span `r`, without segments: the caller sets their number or the step.
    explicit Grid1D(const RangeR1& r) : Grid1D() { m_range = r; }
    /// The span from `lo` to `hi` in `n` segments. Empty and without segments if `hi` is not
    /// above `lo` by more than the tolerance or `n` is not positive.
    Grid1D(double lo, double hi, int n);

    ~Grid1D() override;

    /// @}
    /// @name Steps and knots
    /// @{

    /// The length of a segment; 1e307 if their number is not positive.
    double GetStep() const;

    /// Knot `i`, which may lie outside of the range.
    double GetKnot(int i) const;

    /// One more than the number of segments; 0 for an empty grid.
    int GetKnotCount() const;

    /// The point at index `i` of the extended sequence in the outer range `all`.
    double GetKnotAll(int i, const RangeR1& all) const;

    int GetSegmentCount() const { return m_nSegments; }

    /// Stores the number of segments and leaves the range, so that the step changes.
    void SetSegmentCount(int n) { m_nSegments = n; }

    /// Whether the range has these limits, as `RangeR1::Is` tells, and the grid `n` segments.
    bool Is(double lo, double hi, int n, double tol) const {
        return m_range.Is(lo, hi, tol) && m_nSegments == n;
    }

    /// @}
    /// @name Search
    /// @{

    /// The segment that holds `x`, and in `*pOnKnot`, which may be null, whether `x` is on a
    /// knot, as `RangeR1::GetSegm` tells. On a grid without segments `*pOnKnot` stays as it is.
    int GetSegment(double x, bool* pOnKnot) const {
        return m_range.GetSegm(x, m_nSegments, pOnKnot);
    }

    /// Whether `x` is on a knot, and that not below the grid. On a grid without segments no
    /// point is; on one whose step is below the tolerance every point is.
    bool IsKnot(double x) const;

    /// The index of the knot nearest to `x`; the upper one if `x` is half way. -1 for an `x` that
    /// lies a step or more below the grid, and for a step below the tolerance.
    int GetNearestKnot(double x) const;

    /// The index of a knot in `r`, by `RangeR1::In`: the one at the start of the segment that
    /// holds the lower limit of `r`, or else the next. -1 if neither is in `r`, and 0 for a step
    /// that is not above the tolerance.
    ///
    /// Below the grid the search begins with the knot after the lower limit of `r`, and -1 may
    /// also be the index of a knot there.
    int GetFirstKnotIn(const RangeR1& r) const;

    /// The run of segments that covers `r`, both ends included, in `out`. The end is cut down to
    /// the last segment; the start is not cut, and neither end is raised to 0.
    ///
    /// A limit of `r` that lies below the grid and not on a knot counts for the segment above its
    /// own, as in `RangeR1::GetSegment`, so that the run need not cover `r`: on a grid from 0 in
    /// steps of 2, (-1, -0.5) gives segment 0.
    void GetCoverSet(const RangeR1& r, RangeInt& out) const;

    /// Makes `out` the grid of those knots that lie strictly inside of `r`; its external flag
    /// stays. If there are none it gets 0 segments and an inverted, empty range.
    ///
    /// Below the grid a limit of `r` between two knots counts for the segment above its own. So
    /// the knot after the lower limit of `r` is missed, and at the upper limit the knot after it,
    /// which lies outside of `r`, is taken in: on a grid from 0 in steps of 1, (-4.5, 20) begins
    /// with -3, and (-9, -4.5) ends with -4.
    ///
    /// A grid without segments gives its lower limit as a single knot, wherever that lies below
    /// the upper limit of `r` or at it, also outside of `r`; otherwise the inverted range.
    void GetInternalKnots(const RangeR1& r, Grid1D& out) const;

    /// The interval of the extended sequence in the outer range `all` that holds `x`, by the
    /// index at its start, and in `bOnKnot` whether `x` is at a point of the sequence.
    ///
    /// Below the grid, which is interval 0, the flag tells whether `x` is at either limit of
    /// `all`. At the upper limit of `all` the index is the last one of the sequence.
    int FindRangeAll(double x, const RangeR1& all, bool& bOnKnot) const;

    /// @}
    /// @name Changing the grid
    /// @{

    /// Changes the number of segments and keeps the step, so that the range grows or shrinks:
    /// at its upper end with `bKeepMin` true, and otherwise at its lower one. Nothing happens
    /// for an `n` that is not positive.
    void SetSegmentCountEx(int n, bool bKeepMin);

    /// Gives the grid as many whole steps as its length holds, and then, by `mode`:
    /// - `eUnknown`: keeps the range and divides it evenly, so that the step becomes longer;
    /// - `eFalse`: adds a segment, so that the range grows to a whole number of steps;
    /// - `eTrue`, and every other value: cuts the range to a whole number of steps.
    ///
    /// A range that is a whole number of steps stays. Nothing happens if the length is not
    /// greater than `step`.
    void SetStepSize(double step, ETri mode);

    /// Moves the grid down so that a knot comes to stand on `x`, and tells its index. If `x` is on
    /// a knot already, nothing moves, and the result is that knot. With `bExtend` the grid gains
    /// one segment at its end.
    ///
    /// From the lower limit on, it is the knot after `x`, and the grid moves by less than a step.
    /// Below the grid it is the second knot after `x`, and the grid moves by more than a step: on
    /// a grid from 0 in steps of 2, -1 is the new place of knot 1, which moves by 3.
    int Align(double x, bool bExtend);

    /// Lets the grid grow until it reaches `x`. The knots that were there stay, and the step as
    /// well. Nothing happens if `x` is in the range, by `RangeR1::In`, which takes the limits in
    /// either order: so a new grid, whose empty range has the widest limits, does not grow. A
    /// grid with other limits out of order grows for an `x` that is not between them.
    void Include(double x);

    /// Includes `x` and moves it to the nearest knot, if there is one.
    void Snap(double& x);

    /// Makes the grid anew: with the given step, on multiples of it, so that it covers `r`
    /// widened by `margin` at both ends.
    ///
    /// The limits are cut towards zero, deliberately: a lower limit that is negative and not on
    /// a multiple lies outside, by less than a step.
    void CoverRangeZeroAligned(const RangeR1& r, double step, double margin);

    /// @}

private:
    int LastIndexAll() const;
    void GrowUpTo(double x);
    void GrowDownTo(double x);
};

}  // namespace ZT
