/// @file
/// Sets of several arcs on the circle of angles.

#pragma once

#include <platform/collections/POSITION.h>
#include <zt/containers/HXPtrListBase2.h>
#include <zt/frame/Export.h>
#include <zt/ranges/RangeS1.h>

namespace ZT {

extern template class HXPtrListBase2<RangeS1>;

/// A subset of the circle of angles: a list of arcs, read counter-clockwise, in which the head
/// follows the tail.
///
/// Its members should be in order, none empty and no two neighbours with a point in common,
/// tail and head included. `IsValidEx` and `IsSorted` test for that; no operation enforces it,
/// and `Add` and its like put in whatever they are given. The empty set has no member, and the
/// full one a full arc as its head.
///
/// There is no union and no intersection. The complement of a set is what remains of a full
/// one after `Subtract`:
///
///     SetS1 complement;
///     complement.SetFull();
///     complement.Subtract(set);
///
/// The arcs stand on the heap. `SetFull` and `Subtract` make and delete them, so that whatever
/// is added to a set must come from `new`. The destructor leaves the arcs alone: call `Clear`
/// first. `RemoveSingletons`, `Remove` and `RemoveCyclic` take arcs out and leave them to the
/// caller.
class ZT_API SetS1 : public HXPtrListBase2<RangeS1> {
public:
    /// The empty set.
    SetS1() = default;

    /// Puts `p` into the first gap between two members, from the one between tail and head on,
    /// in which its start follows the end of the one and comes no later than the start of the
    /// other, within the tolerance of `S1::IsCCWSequence`. Neither the end of `p` nor whether
    /// it meets a member is looked at.
    ///
    /// An arc between tail and head goes before the head. One that no gap takes, as when it
    /// starts on a member, goes behind the tail; so does one that comes into a set of fewer than
    /// two.
    void InsertSorted(RangeS1* p);

    /// Whether there is a head and it is the whole circle. Other members do not count.
    bool IsFull() const { return !IsEmpty() && GetHead()->IsFull(); }

    /// Deletes all arcs and makes the whole circle, of one new arc.
    void SetFull();

    /// Takes `r`, its ends excluded, away from every member by `RangeS1::Subtract`. A member of
    /// which nothing is left is deleted, and of one that is split the second piece follows as a
    /// new arc. `r` stays as it is; it may be a member.
    ///
    /// An `r` with equal limits, a point or the whole circle, takes nothing away from a partial
    /// member, and makes of a full one the point at these limits, deliberately: to empty the
    /// set, subtract a full set. The flag of `r` goes to the arcs that are new.
    ///
    /// An empty `r` is no harmless one, deliberately: it takes nothing away from a full member,
    /// but counts with the limits that it has kept, and as lying inside a partial member
    /// wherever they are. A member between these limits that does not hold the angle 0 goes.
    /// Any other is cut as if they lay on it, and so grows when they do not: of the arc from 1
    /// to 2 and an empty one with the limits 2.5 and 3 come the arcs from 1 to 2.5 and from 3
    /// round to 2. Test `r` by `IsEmpty` first.
    void Subtract(const RangeS1& r);

    /// Takes each member of `other` away, from its head to its tail. If `other` is full by
    /// `IsFull`, deletes all arcs. A set is only taken away from itself if no two of its members
    /// meet.
    void Subtract(const SetS1& other);

    /// Takes the arcs whose `GetDiff` is below `tol` out of the set. They are not deleted.
    void RemoveSingletons(double tol);

    /// Whether no member is empty and no member meets the one before it, ends included; that
    /// of the head is the tail. `d` counts for nothing.
    ///
    /// A set of one arc is not valid, deliberately: the arc meets itself. The set must not be
    /// empty, which raises the invalid-argument exception.
    bool IsValidEx(double d) const;

    /// Whether the set is valid by `IsValidEx` and its members follow one another
    /// counter-clockwise. So a set of one arc is not sorted, and an empty one raises the
    /// invalid-argument exception.
    ///
    /// Members with equal limits make the test coarse, deliberately. Behind one of them, a
    /// member is tested by both of its limits. Of two in succession the second is tested
    /// against the start of the member that follows, which is itself passed over: the one behind
    /// it is tested as behind the second point. If there is none to pass over, the
    /// invalid-argument exception is raised.
    bool IsSorted() const;

    /// Does nothing and returns 0, deliberately.
    unsigned char GetNearestRanges(POSITION* const out) const;
};

}  // namespace ZT
