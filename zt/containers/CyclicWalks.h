/// @file
/// Walks over lists that may turn round at the ends, and the runs between two positions.

#pragma once

#include <platform/collections/NodeChain.h>
#include <platform/collections/POSITION.h>

#include <cstdint>

/// The operations that every list of the library has in common, over any list of the
/// platform: a `CPtrList`, a `CObList` or one derived from them.
///
/// A list is a linear chain, with null at both ends; it is never closed in memory. A cyclic
/// operation treats the tail's successor as the head, and the head's predecessor as the tail.
/// That is how a closed loop, such as a boundary or the arcs of a circle, is kept in an
/// ordinary list. A cyclic run from one position to another may pass the tail and go on at the
/// head; both of its ends belong to it.
///
/// Lists of pointers have these as operations of their own: see `ZT::CyclicPtrList`.
namespace ZT::CyclicWalks {

/// Any list of the platform.
template <class E, class A>
using Chain = Collections::NodeChain<E, A>;

/// Where a walk begins: the head when it goes forward, otherwise the tail.
template <class E, class A>
POSITION StartPosition(const Chain<E, A>& list, bool bForward) {
    return bForward ? list.GetHeadPosition() : list.GetTailPosition();
}

/// The element at `pos`, which moves on or back; to null at the end of the chain. A null `pos`
/// raises the invalid-argument exception.
template <class E, class A>
E Next(const Chain<E, A>& list, POSITION& pos, bool bForward) {
    return bForward ? list.GetNext(pos) : list.GetPrev(pos);
}

/// The element at `pos`, which moves on; after the tail to the head. A null `pos` raises the
/// invalid-argument exception.
template <class E, class A>
E NextRound(const Chain<E, A>& list, POSITION& pos) {
    E element = list.GetNext(pos);
    // A branch: a choice without one would hold up the walk at every step.
    if (pos == nullptr) [[unlikely]]
        pos = list.GetHeadPosition();
    return element;
}

/// As `NextRound`, but a null `pos` gives null and stays null.
template <class E, class A>
E GetNextCyclic(const Chain<E, A>& list, POSITION& pos) {
    return pos == nullptr ? E() : NextRound(list, pos);
}

/// The element at `pos`, which moves back; before the head to the tail. A null `pos` raises the
/// invalid-argument exception.
template <class E, class A>
E GetPrevCyclic(const Chain<E, A>& list, POSITION& pos) {
    E element = list.GetPrev(pos);
    if (pos == nullptr) [[unlikely]]
        pos = list.GetTailPosition();
    return element;
}

/// `GetNextCyclic` or `GetPrevCyclic`. They deliberately differ on a null `pos`.
template <class E, class A>
E GetNextCyclic(const Chain<E, A>& list, POSITION& pos, bool bForward) {
    return bForward ? GetNextCyclic(list, pos) : GetPrevCyclic(list, pos);
}

/// A step of either kind.
template <class E, class A>
E Next(const Chain<E, A>& list, POSITION& pos, bool bForward, bool bCyclic) {
    return bCyclic ? GetNextCyclic(list, pos, bForward) : Next(list, pos, bForward);
}

/// Whether `b` stands right behind `a`. The tail and the head are no neighbours; a null
/// position has none.
template <class E, class A>
bool IsNeighbourPosns(const Chain<E, A>& list, POSITION a, POSITION b) {
    if (a == nullptr || b == nullptr) return false;
    list.GetNext(a);
    return a == b;
}

/// Number of elements of the cyclic run; 0 for a null `from`. A `to` that is not in the list
/// makes this walk without end.
template <class E, class A>
int Count(const Chain<E, A>& list, POSITION from, POSITION to) {
    if (from == nullptr) return 0;
    int count = 1;
    while (from != to) {
        NextRound(list, from);
        ++count;
    }
    return count;
}

/// Appends the elements of the cyclic run of `source`, which may be `list` itself and then
/// turns round at the tail that it had before. Nothing happens for a null `from`. A `to` that
/// is not in `source` makes this append without end.
template <class E, class A>
void CopyCyclic(Chain<E, A>& list, const Chain<E, A>& source, POSITION from, POSITION to) {
    if (from == nullptr) return;
    const POSITION tail = source.GetTailPosition();
    for (POSITION pos = from;;) {
        const POSITION here = pos;
        list.AddTail(source.GetNext(pos));
        if (here == to) return;
        if (here == tail) pos = source.GetHeadPosition();
    }
}

/// Calls `act` with each element from `from` through `to` and then takes it out of the list.
/// The run ends at the tail or, with `bCyclic`, goes on at the head; when `to` is not met it
/// ends with the last element there is. Nothing happens for a null `from`.
template <class E, class A, class Act>
void TakeOut(Chain<E, A>& list, POSITION from, POSITION to, bool bCyclic, Act act) {
    for (POSITION pos = from; pos != nullptr;) {
        const POSITION here = pos;
        E element = Next(list, pos, true, bCyclic);
        if (here == to || here == pos) pos = nullptr;
        act(element);
        list.RemoveAt(here);
    }
}

/// Takes the elements from `from` through `to` out of the list, or to the tail when `to` is
/// not met on the way. Nothing happens for a null `from`.
template <class E, class A>
void RemoveRun(Chain<E, A>& list, POSITION from, POSITION to) {
    TakeOut(list, from, to, false, [](const E&) {});
}

/// Takes the elements of the cyclic run out of the list: all of them when `to` is null or not
/// in the list. Nothing happens for a null `from`.
template <class E, class A>
void RemoveCyclic(Chain<E, A>& list, POSITION from, POSITION to) {
    TakeOut(list, from, to, true, [](const E&) {});
}

/// Index of `pos`, counted from the head; -1 when it is not in the list, as null never is.
template <class E, class A>
std::int64_t IndexOf(const Chain<E, A>& list, POSITION pos) {
    std::int64_t index = 0;
    for (POSITION next = list.GetHeadPosition(); next != nullptr; ++index) {
        if (next == pos) return index;
        list.GetNext(next);
    }
    return -1;
}

/// Whether an element occurs twice. If so, `earlier` and `later` get its first two places; of
/// several such elements that is the one that begins first. Otherwise they stay. The walk is
/// quadratic.
template <class E, class A>
bool FindDuplicates(const Chain<E, A>& list, POSITION& earlier, POSITION& later) {
    for (POSITION pos = list.GetHeadPosition(); pos != nullptr;) {
        const POSITION here = pos;
        const POSITION twin = list.Find(list.GetNext(pos), here);
        if (twin == nullptr) continue;
        earlier = here;
        later = twin;
        return true;
    }
    return false;
}

/// Whether the ends of the list agree with its count, and the head, if there is one, holds an
/// element that is not null. Nothing between the ends is looked at.
template <class E, class A>
bool IsValidList(const Chain<E, A>& list) {
    if (list.IsEmpty()) return true;
    const POSITION head = list.GetHeadPosition();
    if (head == nullptr || list.GetAt(head) == nullptr) return false;
    const bool isTail = head == list.GetTailPosition();
    if (list.GetCount() != 1) return !isTail;
    POSITION second = head;
    list.GetNext(second);
    return isTail && second == nullptr;
}

}  // namespace ZT::CyclicWalks
