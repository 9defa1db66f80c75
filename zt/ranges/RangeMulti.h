/// @file
/// Lists of ranges that splitting a range gives.

#pragma once

#include <zt/frame/Export.h>
#include <zt/ranges/CAISimpArr.h>
#include <zt/ranges/Range.h>
#include <zt/ranges/RangeS1.h>

extern template class ZT_API ZT::CAISimpArr<ZT::Range>;

namespace ZT {

/// An ordered list of ranges, its members: what an operation gives that may split a range into
/// pieces.
///
/// `Add` and `Unite` keep the list in order and merge what meets, so that members have at most
/// ends in common; `IsValid` tests that. The other operations do not keep it.
///
/// A list may hold empty members, for cutting leaves them in place: it is empty if all of them
/// are, whatever their count, and `IsEmpty` and `FindRange` are the ways to read one that was
/// cut. Compare `SetR1`, which removes them.
///
/// Members are compared and cut as plain intervals, by `RangeR1`, also where they are angular,
/// unless an operation says otherwise. A member that is copied or moved up or down in the list is
/// assigned by `Range::Copy`, which
/// - leaves limits alone that differ by less than the tolerance from those that were in the place;
/// - makes the full circle of an empty angular range in radians, whose limits are at pi: inserted
///   into a list, or moved in it, it is full from then on. In degrees it stays empty.
///
/// **Copying** a list, by constructor or `=`, is cheap: both lists share the members, and what is
/// written through one shows in the other, until either needs more room. The last of them to end
/// frees the members. `Copy` is the deep form. See `CAISimpArr`, whose other operations are all
/// available, for `Detach` and `Attach`.
///
/// No operation tests an index.
class ZT_API RangeMulti : public CAISimpArr<Range> {
public:
    /// @name Making and copying
    /// @{

    /// The empty list.
    RangeMulti() = default;
    /// A list of `n` full real ranges.
    explicit RangeMulti(int n) { SetCount(n); }
    /// A list that shares the members of `src`.
    RangeMulti(const RangeMulti& src) = default;

    /// Shares the members of `src` from now on. Unlike that of the array, this assignment frees
    /// the present members if no other list shares them. If `src` was attached to them it shares
    /// them, too, and this list goes on as their owner. Its `GetData` may then be behind the start
    /// of their block, so that `delete[]` of what `Detach` leaves to the caller takes the address
    /// that `GetData` gave before the assignment.
    RangeMulti& operator=(const RangeMulti& src);

    /// Makes this the list of one full range: member 0 by `Range::SetFull`, of the kind that it
    /// has, or had when it was last in use.
    virtual void SetFull();

    virtual ~RangeMulti();

    /// The deep copy: takes over the count, and each member by `Range::Copy`.
    void Copy(const RangeMulti& src);

    /// Makes this the list of one range, the full angle in radians, by `RangeR1::SetFullAngle`.
    void SetFullAngle();

    /// Makes the count 0. The room stays.
    void SetEmpty() { m_nCount = 0; }

    /// @}
    /// @name Single members
    /// @{

    /// Gives member `i` other limits, through its `Set`.
    void Set(int i, double lo, double hi) { m_pData[i].Set(lo, hi); }

    /// Sets member `i` to the real range from `lo` to `hi`, and makes room where the list is not
    /// so long, as `CAISimpArr::SetAtGrow` does.
    void SetAtGrow(int i, double lo, double hi);

    /// Inserts `r` before member `i`. Its place is not tested.
    void InsertAt(int i, const Range& r) { CAISimpArr<Range>::InsertAt(i, r); }

    /// Replaces member `i` by all members of `other`. Nothing happens if `other` has none.
    void SetAt(int i, const RangeMulti& other) { Replace(i, 1, other); }

    /// Inserts all members of `other` behind member `i`.
    void InsertAfter(int i, const RangeMulti& other) { Replace(int64{i} + 1, 0, other); }

    /// Removes the members from `first` to `last`, both included. Nothing happens if `first` is
    /// above `last`.
    void Remove(int first, int last) { RemoveAt(first, int64{last} - first + 1); }

    /// @}
    /// @name Union and intersection
    /// @{

    /// Adds `r` in its place, merged with all members from the first to the last that it meets;
    /// to touch, within the tolerance, is to meet. An empty range adds nothing.
    ///
    /// Members are widened by `RangeR1::Unite`: the flag and the state of the first one stay.
    void Add(const Range& r);

    /// Adds each member of `other`, in order.
    void Unite(const RangeMulti& other);

    /// Cuts every member down to `r`, by `RangeR1::Intersect`, and tells whether anything is left
    /// of any. Members of which nothing is left stay in the list, empty.
    bool Intersect(const Range& r);

    /// Replaces the list by what each of its members shares with each of `other`, the members of
    /// this list outermost. A pair that does not meet is there, too, as a member with the
    /// canonical empty limits, so that the list is in general not valid; the state of an angular
    /// member does not tell that it is empty. An `other` without members leaves none here.
    void Intersect(const RangeMulti& other);

    /// Makes this the list of what two arcs share: none, one or two ranges, of angles in radians.
    /// If one contains the other, by `RangeS1::operator>=`, that is the inner one, by
    /// `Range::Copy`; otherwise it goes by the limits of `b` that lie on `a`.
    ///
    /// **An empty arc comes out as a real one**, deliberately: it answers from the limits that it
    /// has kept. An empty arc from 0.5 to 1 within one from 0 to 2 gives (0.5, 1), and one with
    /// its limits at pi gives the full circle. Ask both whether they are empty before.
    ///
    /// Of external arcs not every row of what comes out agrees with the sense of the flag, and
    /// where only the end of `b` lies on `a`, and neither is external, the result is the part of
    /// `a` behind that end; deliberately.
    ///
    /// Members that were in use before keep their unit. They also keep their flag, except for that
    /// of an inner arc, which takes the arc's.
    void IntersectS1(const RangeS1& a, const RangeS1& b);

    /// @}
    /// @name Tests and search
    /// @{

    /// The index of the last member that starts below `x`, or above it by less than the
    /// tolerance; -1 if none does.
    int FindFirstOnLeft(double x) const;

    /// The index of the first member that holds `x`, by `Range::In`; -1 if none does. The
    /// canonical empty limits hold every number by `RangeR1::In`: ask the member `IsEmpty`.
    int FindRange(double x) const;

    /// Whether there is no member that is not empty, by `Range::IsEmpty`.
    bool IsEmpty() const;

    /// Whether no member ends above the start of the next by more than the tolerance.
    bool IsValid() const;

    /// @}

private:
    void Replace(int64 i, int64 n, const CAISimpArr<Range>& members);
    Range& AngularMember(int64 i);
};

}  // namespace ZT
