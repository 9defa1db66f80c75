/// @file
/// Subsets of the real line as arrays of intervals.

#pragma once

#include <platform/collections/CArray.h>
#include <platform/collections/CObArray.h>
#include <platform/collections/CTypedPtrArray.h>
#include <zt/frame/Export.h>
#include <zt/ranges/Pair2.h>
#include <zt/ranges/RangeR1.h>

extern template class ZT_API Collections::ElementArray<ZT::RangeR1, const ZT::RangeR1&>;
extern template class ZT_API CArray<ZT::RangeR1, const ZT::RangeR1&>;

namespace ZT {

/// A subset of the real line: its connected parts as an array of intervals, the members, in
/// ascending order. It may be the parts of a parameter line that are in, or the spans that a
/// scan line crosses.
///
/// The set is its array and nothing else. Whoever builds it keeps the members in order, which
/// no operation tests or repairs: add them in ascending order, or let `Unite` find their places.
/// In a set that is well made
/// - every member lies before the next;
/// - no member is empty, which `IsValid` tests;
/// - members keep a gap, as wide as `IsValidEx` is asked for.
///
/// Points and members that touch may stand in a set until `RemoveSingletons`, `MergeAdjacent`
/// or `MakeValid` cleans it up. The empty set has no member.
///
/// Each operation says how it goes through the members, and does so also on a set that is out of
/// order or overlaps itself. The external flag of a member is never looked at here, except by
/// `FindRange`, through `RangeR1::In`; it travels with copies, and with an intersection as
/// `RangeR1::Intersect` says. Point queries answer `zInfinity` where there is no point.
///
/// All operations of the array are available: `GetSize`, `IsEmpty`, `[]`, `Add`, `InsertAt`,
/// `RemoveAt` and the others keep their meaning, and none of them keeps the order. A new member,
/// as `SetSize` makes it, is the canonical empty range. Assigning to a member goes by the rule of
/// `RangeR1::operator=`, which leaves it alone if nothing would change by as much as the
/// tolerance. An index outside of the set raises the invalid-argument exception, and does not
/// change the set.
///
/// `Serialize` is the array's: the count, and then for each member 32 bytes, of which the first
/// 8 are 0, two doubles are the limits, one byte is the external flag and the last 7 are 0. On
/// loading, what stands in the first 8 and the last 7 is passed over. A file that ends too early
/// raises the archive exception with the cause `endOfFile`; the set has then the new size, and
/// the members that were not loaded whole are as they were, or empty. Only a file that claims more
/// members than an array loads at a time, `Collections::ElementsAtATime` of their 32 bytes, is
/// believed no further than it has been read: the set then ends with the part that was begun.
class ZT_API SetR1 : public CArray<RangeR1, const RangeR1&> {
public:
    /// Sets as the queries over several of them take them.
    using Sets = CTypedPtrArray<CObArray, SetR1*>;

    /// @name Making and copying
    /// Sets are not assigned to one another with `=`.
    /// @{

    SetR1() = default;
    SetR1(const SetR1& other) : CArray() { Copy(other); }
    ~SetR1() override;

    /// Takes over size and members of `other`. A member that was there already and differs from
    /// the new one by less than the tolerance keeps its limits.
    void Copy(const SetR1& other);

    /// Puts a member behind the last one. It is neither moved to its place nor merged; `Unite`
    /// does that.
    void AddRange(double lo, double hi) { Add(RangeR1(lo, hi)); }

    /// Gives member `i` other limits, through its `Set`.
    void SetRange(int i, double lo, double hi) { (*this)[i].Set(lo, hi); }

    /// The same, and then cuts the member down to `*pClip`, unless that is null. A member that
    /// lies outside of it becomes empty and stays.
    void SetRange2(int i, double lo, double hi, const RangeR1* pClip);

    /// @}
    /// @name Tests
    /// @{

    /// Whether no member is empty. Order and gaps are not tested. The empty set is valid.
    bool IsValid() const;

    /// Whether no member is empty and each keeps a distance of at least `d` from the one before,
    /// to the bit. A `d` of 0 lets members touch, and a negative one lets them overlap so far.
    bool IsValidEx(double d) const;

    /// Whether the set is the one interval from `lo` to `hi`, as `RangeR1::Is` compares.
    bool Is(double lo, double hi) const { return Is2(lo, hi, zToler); }
    /// Whether member `i` is the interval from `lo` to `hi`.
    bool Is(int i, double lo, double hi) const { return Is2(i, lo, hi, zToler); }
    /// Whether the set is the one interval from `lo` to `hi`, within `tol`.
    bool Is2(double lo, double hi, double tol) const {
        return GetSize() == 1 && GetData()->Is(lo, hi, tol);
    }
    /// Whether member `i` is the interval from `lo` to `hi`, within `tol`.
    bool Is2(int i, double lo, double hi, double tol) const { return (*this)[i].Is(lo, hi, tol); }

    /// @}
    /// @name Members and points
    /// @{

    /// Makes `out` the interval that spans all members: empty for the empty set. Its flag stays.
    void GetBounds(RangeR1& out) const;

    /// The index of the first member that holds `x`, borders and tolerance included; -1 if none
    /// does. An external member holds what lies outside of its limits. An empty one is asked like
    /// any other, and the canonical empty range holds every number by `RangeR1::In`.
    ///
    /// The set may be out of order, so that all members up to the answer are asked: the time is
    /// in proportion to their number.
    int FindRange(double x) const;

    /// The index of the first member that ends at or above `x`, to the bit: the one that holds
    /// `x`, or the next one after it. -1 if the set ends below `x`.
    ///
    /// `*pIn` tells whether `x` is not below the member's start. It stays as it is if no member is
    /// found; `pIn` may be null.
    int FindPrevRange(double x, bool* pIn) const;

    /// The least point of the set that is not below `x`: `x` itself in a member, otherwise the
    /// start of the next one. 1e307 if there is none. An `x` at or below -1e306 gives the start of
    /// the first member.
    double GetFirstPoint(double x) const;

    /// The end of the last member; 1e307 for the empty set.
    double GetLastPoint() const;

    /// The end of the first member; 1e307 for the empty set.
    double GetLastPointFirstRange() const;

    /// Which of several sets has the least point that is not below `x`, by `GetFirstPoint`: its
    /// index and the point, in `out`. A point at or above 1e306 does not count, and of equal ones
    /// that of the earliest set. False, with an `out` of -1 and 1e306, if no set has one. No
    /// pointer may be null.
    static bool GetFirstPoint(const Sets& sets, double x, Pair2<int, double>& out);

    /// The same for the ends of the first members, by `GetLastPointFirstRange`.
    static bool GetLastPointFirstRange(const Sets& sets, Pair2<int, double>& out);

    /// @}
    /// @name Union and intersection
    /// @{

    /// Adds an interval to the set, in its place, merging the members that it reaches.
    ///
    /// All comparisons are exact: an interval that starts at the very end of a member is merged
    /// with it, one that starts just above is not, and nothing is done about gaps narrower than
    /// the tolerance; see `MergeAdjacent`.
    ///
    /// Where the interval reaches from one member, or from the gap below it, into the reach of a
    /// later one, two things happen that a caller may not expect, deliberately. Members are
    /// reached up to the first that ends at or above the end of `r`:
    /// - the first one keeps its start, so that the part of `r` below it is lost: [0, 1] and
    ///   [2, 3] with [-1, 2.5] gives [0, 3];
    /// - the last one is removed even if it lies wholly above `r`: [0, 1] and [2, 3] with
    ///   [0.5, 1.5] gives [0, 1.5].
    ///
    /// An interval that reaches past the end of the set loses nothing. One in reverse order
    /// changes nothing if a member before the place of its lower limit reaches to the upper one.
    void Unite(const RangeR1& r);

    /// Adds each member of `other`, first to last, in the same way.
    void Unite(const SetR1& other);

    /// Cuts every member down to `r` and removes those of which nothing is left. Tells whether
    /// any remains.
    bool Intersect(const RangeR1& r);

    /// Makes `out` the gaps of this set inside `within`, with their ends: the complement. Where
    /// the set leaves less than the tolerance at an end of `within`, there is no gap. If the set
    /// has nothing in `within`, `out` is that one interval.
    ///
    /// The gaps between members are those from the first member on, as many as `within` needs: if
    /// it leaves out members at the start, they are not the ones inside it, deliberately.
    /// `Intersect` with `within` first where that can happen.
    ///
    /// `out` keeps the flags of members that it has already. It may be this set.
    void GetComplimentarySet(const RangeR1& within, SetR1& out) const;

    /// @}
    /// @name Changing all members
    /// @{

    /// Moves the limits of every member outwards by `d`. Members that come to overlap stay so.
    void Expand(double d);

    /// Centres every member within the member of `other` of the same index, as `RangeR1::Center`
    /// does. Nothing happens if the two sets are not of one size.
    void Center(const SetR1& other);

    /// Removes the members whose limits lie closer together than the tolerance.
    void RemoveSingletons();

    /// Merges members that touch: where one starts within less than the tolerance of the end of
    /// the one before, also a chain of them. Members that overlap by more stay.
    void MergeAdjacent();

    /// Removes singletons, then merges what touches.
    void MakeValid();

    /// @}

private:
    INT_PTR FirstEndingFrom(double x, INT_PTR from) const;

    template <class Test>
    void RemoveWhere(Test test);
};

}  // namespace ZT
