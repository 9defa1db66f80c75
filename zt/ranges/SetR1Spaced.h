/// @file
/// Items on a line that are pushed apart.

#pragma once

#include <zt/frame/Export.h>
#include <zt/ranges/SetR1.h>

namespace ZT {

/// Items on a line, such as labels along an axis: each is an interval, from the lowest to the
/// highest, and they may overlap. `Arrange` pushes them apart, outwards from the central one,
/// which never moves.
///
/// It is the array of a `SetR1` and all that goes with it; the operations here read it as a row of
/// items. A push starts at one item and goes on towards the end of the row, away from the central
/// item: `bLower` says which way, true for the lower end. It never crosses the central item from
/// the far side.
class ZT_API SetR1Spaced : public SetR1 {
public:
    SetR1Spaced() = default;
    SetR1Spaced(const SetR1Spaced&) = default;
    ~SetR1Spaced() override;

    /// Whether no item is empty and neighbours keep a distance of `d`, within the tolerance;
    /// `SetR1::IsValidEx`, which this hides, compares to the bit.
    bool IsValidEx(double d) const;

    /// The index of the central item: the middle one, or the lower of the two in the middle. 0 for
    /// an empty row.
    int GetCenter() const;

    /// Pushes items that overlap apart until they touch. Lengths stay, and gaps take up what is
    /// pushed into them.
    ///
    /// An item that overlaps the next one first moves back into what gap is left between it and
    /// the central item. That gap need not lie directly behind it: an item that stays where it is
    /// passes it on, and is then overlapped by the one that moves back, deliberately. In a row
    /// where every item meets the next there is no such gap, and nothing overlaps afterwards.
    void Arrange();

    /// Pushes items apart until neighbours are `spacing` from end to end, or farther. Each is
    /// placed in the middle of where it comes to lie if it is longer by `spacing`. That is
    /// `Arrange` for the longer items, so that a gap which is passed on can leave neighbours nearer
    /// than `spacing`, or overlapping, here too.
    ///
    /// Nothing happens for a negative spacing; one within the tolerance of 0 is none. Nothing moves
    /// for one from the tolerance up to twice the tolerance either, deliberately: `Center` leaves
    /// an item whose room is less than the tolerance at each end.
    void Arrange(double spacing);

    /// Pushes item `i` by `d` and passes on to the next what its gap does not take up, and so on,
    /// up to the end of the row, or for a push from the far side up to the item before the central
    /// one. Returns what is left of the push: positive where something would still overlap,
    /// negative where a gap is left.
    ///
    /// A row of fewer than two items, or an `i` behind the last one, gives 0 and moves nothing. A
    /// push that has nowhere to go returns `d`. A negative `i` raises the invalid-argument
    /// exception, unless the push goes to the lower end: that has nowhere to go.
    double PushRange(int i, bool bLower, double d);

    /// Moves item `i` by `d` if that is positive, and returns the push for the next one: `d` less
    /// the gap to it, or `d` itself at the end of the row. An `i` behind the last item gives 0 and
    /// moves nothing; a negative one raises the invalid-argument exception.
    ///
    /// A negative `d` is a gap behind the item. If the item overlaps the next one it moves back
    /// into that gap, by the smaller of the two amounts; otherwise it stays. The result is the
    /// same whether it moves or stays, deliberately.
    double PushSingleRange(int i, bool bLower, double d);

private:
    int GetCount32() const { return static_cast<int>(GetSize()); }
};

}  // namespace ZT
