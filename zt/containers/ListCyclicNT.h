/// @file
/// The list of untyped pointers that is a loop.

#pragma once

#include <platform/collections/CPtrList.h>
#include <zt/containers/CyclicWalks.h>
#include <zt/frame/Export.h>
#include <zt/ranges/RangePos.h>

namespace ZT {

/// A list of untyped pointers, which it does not own, with the cyclic operations and nothing
/// else; `HXVoidPtrList` has more. What cyclic means is said at `ZT::CyclicWalks`.
class ZT_API ListCyclicNT : public CPtrList {
public:
    /// Empty.
    ListCyclicNT();

    /// The element at `pos`, which moves on; after the tail to the head. A null `pos` raises
    /// the invalid-argument exception, other than with `HXVoidPtrList`.
    void* GetNextCyclic(POSITION& pos) const { return CyclicWalks::NextRound(*this, pos); }
    /// The element at `pos`, which moves back; before the head to the tail. A null `pos` raises
    /// the invalid-argument exception.
    void* GetPrevCyclic(POSITION& pos) const { return CyclicWalks::GetPrevCyclic(*this, pos); }

    /// Whether `pos` lies in the cyclic run from the first to the last position of `range`, both
    /// included; false when one of these is null. When they are one and the same, the run is
    /// the whole loop.
    bool InRange(POSITION pos, const RangePos& range) const;

    /// Takes the cyclic run from `from` through `to`, which are different elements of this
    /// list, out of it. A null `to` means the tail. Gives the number of elements taken out
    /// without the last: a run of n gives n - 1, deliberately. 0 for a null `from`.
    ///
    /// For a `to` that is not in the list it takes out and counts every element.
    int Remove(POSITION from, POSITION to);
};

}  // namespace ZT
