/// @file
/// Real intervals with open and closed ends.

#pragma once

#include <zt/frame/Export.h>
#include <zt/ranges/RangeR1.h>

#include <cmath>

namespace ZT {

/// A real interval whose two ends can each be open or closed.
///
/// An open end is a hole at the limit, as wide as the tolerance to both sides: a point within
/// the tolerance of it is out. A range without length is
/// - a **singleton** with both ends closed,
/// - **empty** with both ends open,
/// - neither of the two with one end open.
///
/// What is named here hides the operation of `RangeR1` on the same arguments; the rest stays
/// that of `RangeR1` and takes no notice of the ends. So does every operation through a
/// reference to `RangeR1`: only `Set` is virtual, and `Set` leaves the ends as they are.
///
/// The external flag is taken along by copies, and counts where `RangeR1::In` is asked. No
/// operation allocates.
class ZT_API RangeEx : public RangeR1 {
public:
    /// Whether the lower end, index 0, and the upper end, index 1, belong to the set.
    bool m_bClosed[2];

    /// @name Making and storing
    /// @{

    /// The canonical empty range with closed ends.
    RangeEx() : m_bClosed{true, true} {}
    /// The range between two limits, which are not put in order.
    RangeEx(double a, double b, bool bClosedMin, bool bClosedMax)
        : RangeR1(a, b), m_bClosed{bClosedMin, bClosedMax} {}
    /// The same with the ends from an array of two, lower end first, which may not be null.
    RangeEx(double a, double b, const bool* pClosed) : RangeEx(a, b, pClosed[0], pClosed[1]) {}
    /// The same limits, flag and ends, to the bit.
    RangeEx(const RangeEx&) = default;

    /// Takes over limits and external flag by the rule of `RangeR1::operator=`, which keeps
    /// limits that differ by less than the tolerance, and then both ends. The result tells
    /// whether limits or external flag changed; a change of the ends does not count.
    bool operator=(const RangeEx& r) { return Copy(r); }

    /// The same as `operator=`.
    bool Copy(const RangeEx& r) {
        const bool changed = RangeR1::operator=(r);
        m_bClosed[0] = r.m_bClosed[0];
        m_bClosed[1] = r.m_bClosed[1];
        return changed;
    }

    /// @}
    /// @name Tests
    /// @{

    using RangeR1::In;
    /// Whether `RangeR1` has `x` in, and `x` is not within `tol` of an open end.
    bool In(double x, double tol) const {
        // Without a branch: whether a point is inside is seldom foreseeable.
        return static_cast<int>(RangeR1::In(x, tol)) & static_cast<int>(!IsAtOpenEnd(x, tol));
    }

    /// Whether `RangeR1` finds the limits empty, or the range has no length and two open ends.
    bool IsEmpty() const {
        return RangeR1::IsEmpty() || (RangeR1::IsSingleton() && !m_bClosed[0] && !m_bClosed[1]);
    }

    using RangeR1::IsSingleton;
    /// Whether the range has no length and two closed ends.
    bool IsSingleton() const { return RangeR1::IsSingleton() && m_bClosed[0] && m_bClosed[1]; }

    /// Whether this range is empty, or both its limits are in `r` by `RangeR1::In`. Whether
    /// ends are open does not count, neither of this range nor of an `r` that has them: the
    /// closed range lies inside of the open one with the same limits.
    ///
    /// The canonical empty range has every ordinary number in by `RangeR1::In`, so that
    /// everything lies inside of it.
    bool IsInsideOf(const RangeR1& r) const {
        return IsEmpty() || (r.In(m_min, zToler) && r.In(m_max, zToler));
    }

    using RangeR1::IsIn;
    /// Whether `r` lies in this range, by its `IsInsideOf`.
    bool IsIn(const RangeEx& r) const { return r.IsInsideOf(*this); }

    /// Whether the ranges share no point. Ranges that touch share one only if both the ends
    /// that touch are closed.
    ///
    /// An empty range is known by its limits alone: with an open point, such as (1, 1) against
    /// [0, 5], the answer is false, although `IsEmpty` finds it empty.
    bool IsEmptyIntersection(const RangeEx& r) const;

    /// @}
    /// @name Set operations
    /// @{

    using RangeR1::Include;
    /// Extends the range to `x`, unless `x` is in by `In`. The end that moved, or at which `x`
    /// lies, becomes closed; of a range that was empty by its limits both ends do.
    ///
    /// The canonical empty range has every ordinary number in by `In`, so that nothing happens:
    /// a new range does not become a point in this way.
    void Include(double x);

    /// Cuts this range down to what it shares with `r`, and tells whether anything is left.
    /// An end stays closed if both ranges have it in. If the limits share nothing, the range
    /// stays as it was; the canonical empty limits, which `RangeR1::Intersect` leaves, are not
    /// stored.
    bool Intersect(const RangeEx& r);

    /// Extends the range to the limits of `r`, and tells whether that changed it.
    ///
    /// An end whose old limit lies strictly within `r` becomes that of `r`, and one at a limit
    /// that `r` has in becomes closed. Any other end stays as it was, also where its limit
    /// moves: of ranges that lie apart the end of `r` is not taken. A change of an end counts
    /// for the result only if no limit changes; if both ends were looked at, only that of the
    /// upper one.
    ///
    /// The canonical empty range counts as one that holds everything: uniting with `RangeEx()`
    /// leaves the limits and closes both ends, and the answer is true if the upper end was open.
    bool Unite(const RangeEx& r);

    /// Takes `r` away, and tells how many pieces remain: 0, 1 or 2. Of two pieces the upper
    /// one is returned in `r`, through its `Set`. `*pStartChanged`, if that is not null, tells
    /// whether what is taken away begins at the start of this range.
    ///
    /// - A range that lies inside `r`, by `IsInsideOf`, becomes empty; with the canonical empty
    ///   range as `r` that is every range.
    /// - A lower piece ends where `r` starts. Its end is closed if the start of `r` is open,
    ///   and open if that is closed.
    /// - An upper piece of two starts where `r` ends, with the opposite of the end of `r`.
    /// - An upper piece that remains alone is stored through `Set`. It keeps the start of this
    ///   range, closed or open as it was, and its end becomes the opposite of the start of `r`.
    /// - If nothing remains below or above, although this range does not lie inside `r`, the
    ///   limits stay, the upper end is closed or not as `r` has it in, and the answer is 0.
    unsigned char Subtract(RangeEx& r, bool* pStartChanged);

    /// @}

private:
    bool IsOpenAndNear(int i, double distance, double tol) const {
        return static_cast<int>(!m_bClosed[i]) & static_cast<int>(tol > std::fabs(distance));
    }

    bool IsAtOpenEnd(double x, double tol) const {
        return static_cast<int>(IsOpenAndNear(0, x - m_min, tol)) |
               static_cast<int>(IsOpenAndNear(1, x - m_max, tol));
    }
};

}  // namespace ZT
