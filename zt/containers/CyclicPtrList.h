/// @file
/// The list of pointers with cyclic walks.

#pragma once

#include <platform/collections/CPtrList.h>
#include <zt/containers/CyclicWalks.h>

namespace ZT {

/// A list of pointers to `T`, which it does not own, that can be walked as a loop: what
/// `HXVoidPtrList` and `HXPtrListBase2` have in common. It adds no field and no virtual
/// operation to `CPtrList`.
///
/// What cyclic means is said at `ZT::CyclicWalks`. A position that is handed in belongs to
/// this list, unless it is null.
template <class T>
class CyclicPtrList : public CPtrList {
public:
    using CPtrList::CPtrList;

    /// @name Walking
    /// @{
    /// Where a walk begins: the head when it goes forward, otherwise the tail.
    POSITION GetStartPosition(bool bForward) const {
        return CyclicWalks::StartPosition(*this, bForward);
    }
    /// The same as `GetStartPosition`, with the same sense of the argument: the head for true.
    POSITION GetEndPosition(bool bForward) const { return GetStartPosition(bForward); }

    /// The element at `pos`, which moves on or back; to null at the end of the chain. A null
    /// `pos` raises the invalid-argument exception.
    T* Next(POSITION& pos, bool bForward) const {
        return Element(CyclicWalks::Next(*this, pos, bForward));
    }
    /// With `bCyclic` as `GetNextCyclic`, otherwise as `Next` above.
    T* Next(POSITION& pos, bool bForward, bool bCyclic) const {
        return Element(CyclicWalks::Next(*this, pos, bForward, bCyclic));
    }
    /// The element at `pos`, which moves on; after the tail to the head. A null `pos` gives
    /// null and stays null.
    T* GetNextCyclic(POSITION& pos) const {
        return Element(CyclicWalks::GetNextCyclic(*this, pos));
    }
    /// Forward as above, backward as `GetPrevCyclic`: only backward does a null `pos` raise.
    T* GetNextCyclic(POSITION& pos, bool bForward) const {
        return Element(CyclicWalks::GetNextCyclic(*this, pos, bForward));
    }
    /// The element at `pos`, which moves back; before the head to the tail. A null `pos` raises
    /// the invalid-argument exception.
    T* GetPrevCyclic(POSITION& pos) const {
        return Element(CyclicWalks::GetPrevCyclic(*this, pos));
    }
    /// @}

    /// @name Runs
    /// @{
    /// Whether `b` stands right behind `a`. The tail and the head are no neighbours; a null
    /// position has none.
    bool IsNeighbourPosns(POSITION a, POSITION b) const {
        return CyclicWalks::IsNeighbourPosns(*this, a, b);
    }
    /// Number of elements of the cyclic run, both ends included: 1 when they are the same
    /// position, 0 for a null `from`. A `to` that is not in the list makes this walk without
    /// end.
    int Count(POSITION from, POSITION to) const { return CyclicWalks::Count(*this, from, to); }
    /// Appends the elements of the cyclic run of `src`, both ends included. Nothing happens for
    /// a null `from`. A `to` that is not in `src` makes this append without end.
    void CopyCyclic(const CyclicPtrList& src, POSITION from, POSITION to) {
        CyclicWalks::CopyCyclic(*this, src, from, to);
    }
    /// Takes the cyclic run, both ends included, out of the list: every element when `to` is
    /// null or not in the list. What they point to stays alive. Nothing happens for a null
    /// `from`.
    void RemoveCyclic(POSITION from, POSITION to) { CyclicWalks::RemoveCyclic(*this, from, to); }
    /// @}

    /// Whether the ends of the list agree with its count, and the head, if there is one, holds
    /// an element that is not null. Nothing between the ends is looked at.
    bool IsValidList() const { return CyclicWalks::IsValidList(*this); }

private:
    static T* Element(void* element) { return static_cast<T*>(element); }
};

}  // namespace ZT
