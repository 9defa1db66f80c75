/// @file
/// The list of pointers to one type that can destroy what they point to.

#pragma once

#include <platform/collections/CPlex.h>
#include <platform/collections/CPtrArray.h>
#include <platform/collections/CPtrList.h>
#include <platform/collections/TypedPointer.h>
#include <zt/containers/CyclicPtrList.h>
#include <zt/containers/CyclicWalks.h>
#include <zt/frame/Export.h>
#include <zt/frame/RefObj.h>
#include <zt/ranges/RangePos.h>

#include <concepts>
#include <cstdint>
#include <utility>

namespace ZT {

/// A list of pointers to `T` that lends its nodes to other lists and takes over theirs, and
/// that destroys its elements when it is told to.
///
/// Elements may be null and may occur more than once. Destroying the list frees its nodes and
/// leaves the elements alone: `Clear`, `DeleteAll` and `Delete` destroy elements, and whatever
/// else takes elements out does not. An element is deleted as a `T`, so that a `T` which
/// others derive from needs a virtual destructor.
///
/// The chain is linear. Cyclic operations, here and in `CyclicPtrList`, take the tail's
/// successor to be the head. A position that is handed in must be null or stand in the list
/// that the operation means; it is not checked. What `CPtrList` offers and this class does not
/// name again stays callable, on untyped pointers. Memory for nodes that cannot be had raises
/// the platform's memory exception.
///
/// A list owns blocks, from which nodes are cut, and a chain of free nodes. `Extend` and
/// `MoveAttributes` hand the nodes of one list over to another together with the blocks that
/// they lie in; positions stay valid. `SetEmpty` lets go of all of it.
///
/// The library holds the instance for `RangeS1`, the base of `SetS1`.
template <class T>
class ZT_API HXPtrListBase2 : public CyclicPtrList<T> {
    using Base = CyclicPtrList<T>;

public:
    using value_type = T*;
    using const_iterator = Collections::TypedWalker<T*, CPtrList::const_iterator>;
    using iterator = const_iterator;

    /// An empty list, which takes memory for ten elements at a time.
    HXPtrListBase2() : Base(10) {}

    /// Deletes `p`, unless it is null. `DeleteAll` and `Delete` destroy elements through this
    /// operation, `Clear` does not.
    virtual void DeleteElement(T* p) { delete p; }

    /// The element at `pos`. A null position raises the invalid-argument exception.
    virtual T* GetAtVirt(POSITION pos) const { return GetAt(pos); }

    /// @name Adding and copying
    /// @{

    /// Adds `p` before the head or behind the tail and returns its position.
    POSITION Add(T* p, bool bHead) {
        void* const element = p;  // Also where T is a list, whose elements are not meant.
        return bHead ? this->AddHead(element) : this->AddTail(element);
    }

    /// As `Add`; but with `bUnique` an element that stands in the list already is not added,
    /// and the result is null.
    POSITION AddEx(T* p, bool bHead, bool bUnique) {
        return bUnique && this->Find(p) != nullptr ? nullptr : Add(p, bHead);
    }

    /// Adds every element of `src` at the tail. Its elements must point to `T`s.
    void AppendPtrList(const CPtrList& src) { this->AddTail(&src); }

    /// Takes all elements out, and then adds those of `src` at the tail. A list that is copied
    /// to itself comes out empty.
    void CopyPtrList(const CPtrList& src) {
        this->RemoveAll();
        AppendPtrList(src);
    }

    /// Adds the run of `src` from `from` through `to` at the tail, or, with `bReverse`, from
    /// `to` back through `from`. A null `from` means the head and a null `to` the tail. A run
    /// whose other end does not come up stops at the end of `src`; it does not turn round. The
    /// elements that the list had stay.
    void Copy(const HXPtrListBase2& src, bool bReverse, POSITION from = nullptr,
              POSITION to = nullptr);

    /// Makes `out` the elements from head to tail.
    void CopyToPtrArray(CPtrArray& out) const;

    /// @}
    /// @name Destroying and removing
    /// @{

    /// Deletes all elements directly, without `DeleteElement`, and empties the list. Destroys
    /// an element twice that stands in the list twice.
    void Clear();

    /// From head to tail, hands each element to `DeleteElement` and takes it out.
    void DeleteAll() { Delete(this->GetHeadPosition(), nullptr, false); }

    /// From `from` through `to`, which is the tail when it is null, hands each element to
    /// `DeleteElement` and takes it out. Nothing happens for a null `from`. With `bCyclic` the
    /// walk goes on at the head after the tail. A `to` that does not come up makes it end
    /// where no element is left: at the tail, or, with `bCyclic`, when the list is empty.
    void Delete(POSITION from, POSITION to, bool bCyclic);

    /// Takes the first `p` out of the list. Returns the position that it had, which is stale
    /// and good for comparing only, or null when there is no such element.
    POSITION Remove(T* p);

    /// Takes the elements from `from`, or from the head when that is null, through `to` out of
    /// the list; or through the tail when `to` does not come up.
    void Remove(POSITION from, POSITION to) {
        CyclicWalks::RemoveRun(*this, OrElse(from, this->GetHeadPosition()), to);
    }

    /// Releases the reference that each element holds, null ones excepted, and empties the
    /// list. Only for a `T` that derives from `RefObj`.
    template <std::derived_from<RefObj> E = T>
    void ReleaseAllRefObj();

    /// Makes the list empty and frees nothing: neither elements nor nodes nor blocks. All are
    /// lost unless another list has taken them over.
    void SetEmpty();

    /// @}
    /// @name Moving nodes
    /// Nothing is copied: the positions of what is moved stay valid, except for `MoveCyclic`.
    /// @{

    /// Puts the whole of `*pOther` behind the tail and leaves that list empty, with its block
    /// size. Its blocks become this list's. The free nodes that this list had come to no more
    /// use; their memory goes with the rest. Nothing happens for a null or an empty list, or
    /// for this one.
    void Extend(HXPtrListBase2* pOther);

    /// Becomes what `other`, another list, is, its block size included, and leaves it empty
    /// with that block size. What this list held before is not freed: nodes and blocks of a list
    /// that is not empty, or has been emptied by `SetEmpty`, are lost.
    void MoveAttributes(HXPtrListBase2& other);

    /// Puts the run from `first` through `last`, which is the tail when it is null, in front of
    /// all others. Nothing happens when `first` is null or the head, or the list is empty.
    /// `last` must not stand before `first`: that would tear the chain.
    void MoveToHead(POSITION first, POSITION last);

    /// Puts the run from `first`, which is the head when it is null, through `last` behind all
    /// others. Nothing happens when the list is empty or `last` is the tail; otherwise a null
    /// `last` raises the invalid-argument exception. `first` must not stand behind `last`:
    /// that would tear the chain.
    void MoveToTail(POSITION first, POSITION last);

    /// Takes the run from `from` through `to`, which is the tail when it is null, out of `src`
    /// and adds its elements at the tail of this list. The run may pass the tail of `src` and
    /// go on at its head; a `to` that is not in `src` takes all. Nothing happens for a null
    /// `from`. `src` must be another list.
    void MoveCyclic(HXPtrListBase2& src, POSITION from, POSITION to);

    /// Not for use: leaves both lists broken, deliberately, and with `bAfter` does not end but
    /// by the memory exception. To put elements into a list, use `InsertBefore`, `InsertAfter`,
    /// `Copy` or `Extend`.
    ///
    /// Walks over `*pList` and inserts each of its elements with the next position of
    /// `*pList`, not with one of this list, as the place; `pos` counts for nothing. Without
    /// `bAfter`, every element of `*pList` but the last comes to stand there twice, by a node
    /// of this list that neither list counts right, and the last one becomes the head here.
    /// From then on `*pList` must not be changed, nor used longer than this list lives. Nothing
    /// happens for a null or an empty list.
    void InsertList(POSITION pos, bool bAfter, HXPtrListBase2* pList);

    /// Turns the order of the elements round.
    void Reverse();

    /// @}
    /// @name Elements
    /// @{

    /// The first element. An empty list raises the invalid-argument exception.
    T* GetHead() const { return Typed(CPtrList::GetHead()); }
    /// The last element. An empty list raises the invalid-argument exception.
    T* GetTail() const { return Typed(CPtrList::GetTail()); }
    /// The last element for true and the first for false; null for an empty list.
    T* GetEnd(bool bTail) const;

    /// The element at `pos`. A null position raises the invalid-argument exception.
    T* GetAt(POSITION pos) const { return Typed(CPtrList::GetAt(pos)); }
    /// The element at index `i`; null when there is none.
    T* GetAtIndex(int i) const;

    /// The element at `pos`, which moves to the next one, or to null after the tail. A null
    /// position raises the invalid-argument exception.
    T* GetNext(POSITION& pos) const { return Typed(CPtrList::GetNext(pos)); }
    /// The element at `pos`, which moves to the previous one, or to null before the head. A
    /// null position raises the invalid-argument exception.
    T* GetPrev(POSITION& pos) const { return Typed(CPtrList::GetPrev(pos)); }

    const_iterator begin() const { return const_iterator(CPtrList::begin()); }
    const_iterator end() const { return const_iterator(CPtrList::end()); }

    /// @}
    /// @name Searching
    /// These walk the list.
    /// @{

    /// Index of the first `p`, or -1.
    ///
    /// Hides the operation of `CPtrList` by that name, from an index to its position, which
    /// `IndexToPosition` is here: `FindIndex(0)` compiles and looks for a null element.
    int FindIndex(const T* p) const;
    /// The same as `FindIndex`.
    int GetIndex(const T* p) const { return FindIndex(p); }

    /// Position of the first `p`, or null. `*pIndex`, unless `pIndex` is null, receives its
    /// index, or 0xFFFFFFFF. The search begins at the head whatever `start` says,
    /// deliberately; `FindCyclic` begins elsewhere.
    POSITION FindItem(const T* p, POSITION start = nullptr, unsigned int* pIndex = nullptr) const;

    /// Position of the first `p` on the way from `start`, or from the head when that is null,
    /// once round the list; or null.
    POSITION FindCyclic(const T* p, POSITION start = nullptr) const;

    /// The position `i` steps behind `start`, or behind the head when that is null. Null past
    /// the tail, and for a negative `i`.
    POSITION IndexToPosition(std::int64_t i, POSITION start = nullptr) const;
    /// Index of `pos`, counted from the head; -1 when it is not in the list.
    std::int64_t PositionToIndex(POSITION pos) const { return CyclicWalks::IndexOf(*this, pos); }

    /// Whether `pos` is one of the list's positions.
    bool IsValidPosn(POSITION pos) const { return PositionToIndex(pos) >= 0; }
    /// Whether `b` stands somewhere behind `a`. False for null positions.
    bool IsBefore(POSITION a, POSITION b) const;

    /// @}
    /// @name Sizes of runs
    /// A null `from` means the head and a null `to` the tail.
    /// @{

    /// Number of steps from `from` on until `to` comes up, or the end of the list. `to` itself
    /// is not counted, deliberately: a whole list of three has two. But a run whose ends are
    /// the same goes on to the end of the list, so that a list of one has one. 0 for an empty
    /// list.
    std::int64_t GetItemCount(POSITION from = nullptr, POSITION to = nullptr) const;

    /// Number of elements from `from` through `to`, or through the tail when `to` does not come
    /// up. 0 for an empty list.
    std::int32_t GetRangeCount(POSITION from = nullptr, POSITION to = nullptr) const;

    /// @}
    /// @name Contents
    /// @{

    /// The block of nodes that was allocated first; null when there is none.
    CPlex* GetFirstBlock() const;

    /// Whether the lists are of one size and each element of this one occurs in `other`. How
    /// often it occurs does not matter: (a, a, b) and (a, b, b) have the same contents, and (a,
    /// a) and (a, b) have, but not in the other order. Quadratic.
    bool IsSameContents(const HXPtrListBase2& other) const;

    /// Whether the elements of `sub` stand in this list from `start`, or from the head when
    /// that is null, on: in order and without a gap. True for an empty `sub`.
    bool IsContiguousSublist(const CPtrList& sub, POSITION start = nullptr) const;

    /// Whether no element occurs twice: true is the good answer. Quadratic.
    bool CheckDuplicates() const;

    /// Whether an element occurs twice. If so, `out` receives its first two positions, the
    /// earlier as its first; of several such elements that is the one that begins first.
    /// Otherwise `out` stays. Quadratic.
    bool FindDuplicates(RangePos& out) const;

    /// @}

protected:
    using typename Base::CNode;

    using Base::m_nBlockSize;
    using Base::m_nCount;
    using Base::m_pBlocks;
    using Base::m_pNodeFree;
    using Base::m_pNodeHead;
    using Base::m_pNodeTail;

    using Base::NodeOf;
    using Base::PositionOf;

private:
    static T* Typed(void* element) { return static_cast<T*>(element); }

    static POSITION OrElse(POSITION pos, POSITION missing) {
        return pos != nullptr ? pos : missing;
    }

    // Where a run begins; nowhere in an empty list.
    POSITION BeginOf(POSITION from) const {
        return this->IsEmpty() ? nullptr : OrElse(from, this->GetHeadPosition());
    }

    void CutOut(CNode* first, CNode* last);
    void LinkBehindTail(CNode* first, CNode* last);
};

template <class T>
void HXPtrListBase2<T>::Copy(const HXPtrListBase2& src, bool bReverse, POSITION from, POSITION to) {
    const POSITION head = src.GetHeadPosition();
    const POSITION tail = src.GetTailPosition();
    const POSITION last = bReverse ? OrElse(from, head) : OrElse(to, tail);
    // Where src ends now: if it is this list, it grows.
    const POSITION end = bReverse ? head : tail;
    for (POSITION pos = bReverse ? OrElse(to, tail) : OrElse(from, head); pos != nullptr;) {
        const POSITION here = pos;
        Add(src.Next(pos, !bReverse), false);
        if (here == last || here == end) return;
    }
}

template <class T>
void HXPtrListBase2<T>::CopyToPtrArray(CPtrArray& out) const {
    out.SetSize(0);
    out.SetSize(m_nCount);
    INT_PTR index = 0;
    for (T* element : *this) out.SetAt(index++, element);
}

template <class T>
void HXPtrListBase2<T>::Clear() {
    for (T* element : *this) delete element;
    this->RemoveAll();
}

template <class T>
void HXPtrListBase2<T>::Delete(POSITION from, POSITION to, bool bCyclic) {
    CyclicWalks::TakeOut(*this, from, OrElse(to, this->GetTailPosition()), bCyclic,
                         [this](void* element) { DeleteElement(Typed(element)); });
}

template <class T>
POSITION HXPtrListBase2<T>::Remove(T* p) {
    const POSITION pos = this->Find(p);
    if (pos != nullptr) this->RemoveAt(pos);
    return pos;
}

template <class T>
template <std::derived_from<RefObj> E>
void HXPtrListBase2<T>::ReleaseAllRefObj() {
    for (E* element : *this) {
        if (element != nullptr) static_cast<RefObj*>(element)->Release();
    }
    this->RemoveAll();
}

template <class T>
void HXPtrListBase2<T>::SetEmpty() {
    m_pNodeHead = m_pNodeTail = m_pNodeFree = nullptr;
    m_nCount = 0;
    m_pBlocks = nullptr;
}

template <class T>
void HXPtrListBase2<T>::Extend(HXPtrListBase2* pOther) {
    if (pOther == nullptr || pOther == this || pOther->IsEmpty()) return;
    LinkBehindTail(pOther->m_pNodeHead, pOther->m_pNodeTail);
    m_nCount += pOther->m_nCount;
    pOther->GetFirstBlock()->pNext = m_pBlocks;
    m_pBlocks = pOther->m_pBlocks;
    m_pNodeFree = pOther->m_pNodeFree;
    pOther->SetEmpty();
}

template <class T>
void HXPtrListBase2<T>::MoveAttributes(HXPtrListBase2& other) {
    m_pNodeHead = std::exchange(other.m_pNodeHead, nullptr);
    m_pNodeTail = std::exchange(other.m_pNodeTail, nullptr);
    m_nCount = std::exchange(other.m_nCount, 0);
    m_pNodeFree = std::exchange(other.m_pNodeFree, nullptr);
    m_pBlocks = std::exchange(other.m_pBlocks, nullptr);
    m_nBlockSize = other.m_nBlockSize;
}

template <class T>
void HXPtrListBase2<T>::MoveToHead(POSITION first, POSITION last) {
    if (first == nullptr || first == this->GetHeadPosition() || this->IsEmpty()) return;
    CNode* const front = NodeOf(first);
    CNode* const back = NodeOf(OrElse(last, this->GetTailPosition()));
    CutOut(front, back);
    front->pPrev = nullptr;
    back->pNext = m_pNodeHead;
    m_pNodeHead->pPrev = back;
    m_pNodeHead = front;
}

template <class T>
void HXPtrListBase2<T>::MoveToTail(POSITION first, POSITION last) {
    if (this->IsEmpty()) return;
    CNode* const back = Base::CheckedNode(last);
    if (back->pNext == nullptr) return;
    CNode* const front = NodeOf(OrElse(first, this->GetHeadPosition()));
    CutOut(front, back);
    LinkBehindTail(front, back);
}

template <class T>
void HXPtrListBase2<T>::MoveCyclic(HXPtrListBase2& src, POSITION from, POSITION to) {
    CyclicWalks::TakeOut(src, from, OrElse(to, src.GetTailPosition()), true,
                         [this](void* element) { this->AddTail(element); });
}

template <class T>
void HXPtrListBase2<T>::InsertList(POSITION, bool bAfter, HXPtrListBase2* pList) {
    if (pList == nullptr) return;
    for (CNode* node = pList->m_pNodeHead; node != nullptr;) {
        CNode* const next = node->pNext;
        const POSITION place = PositionOf(next);  // One of the other list, deliberately.
        const POSITION added =
            bAfter ? this->InsertAfter(place, node->data) : this->InsertBefore(place, node->data);
        node = bAfter ? NodeOf(added) : next;
    }
}

template <class T>
void HXPtrListBase2<T>::Reverse() {
    for (CNode* node = m_pNodeHead; node != nullptr; node = node->pPrev) {
        std::swap(node->pNext, node->pPrev);
    }
    std::swap(m_pNodeHead, m_pNodeTail);
}

template <class T>
T* HXPtrListBase2<T>::GetEnd(bool bTail) const {
    if (this->IsEmpty()) return nullptr;
    return bTail ? GetTail() : GetHead();
}

template <class T>
T* HXPtrListBase2<T>::GetAtIndex(int i) const {
    const POSITION pos = CPtrList::FindIndex(i);
    return pos != nullptr ? GetAt(pos) : nullptr;
}

template <class T>
int HXPtrListBase2<T>::FindIndex(const T* p) const {
    unsigned int index;
    return FindItem(p, nullptr, &index) != nullptr ? static_cast<int>(index) : -1;
}

template <class T>
POSITION HXPtrListBase2<T>::FindItem(const T* p, POSITION, unsigned int* pIndex) const {
    unsigned int unused;
    unsigned int& found = pIndex != nullptr ? *pIndex : unused;
    found = 0xFFFFFFFF;
    unsigned int index = 0;
    for (const CNode* node = m_pNodeHead; node != nullptr; node = node->pNext, ++index) {
        if (node->data != p) continue;
        found = index;
        return PositionOf(node);
    }
    return nullptr;
}

template <class T>
POSITION HXPtrListBase2<T>::FindCyclic(const T* p, POSITION start) const {
    const POSITION first = OrElse(start, this->GetHeadPosition());
    for (POSITION pos = first; pos != nullptr;) {
        const POSITION here = pos;
        if (this->GetNextCyclic(pos) == p) return here;
        if (pos == first) return nullptr;
    }
    return nullptr;
}

template <class T>
POSITION HXPtrListBase2<T>::IndexToPosition(std::int64_t i, POSITION start) const {
    if (i < 0) return nullptr;
    POSITION pos = OrElse(start, this->GetHeadPosition());
    while (i-- > 0 && pos != nullptr) GetNext(pos);
    return pos;
}

template <class T>
bool HXPtrListBase2<T>::IsBefore(POSITION a, POSITION b) const {
    for (POSITION pos = a; pos != nullptr;) {
        GetNext(pos);
        if (pos == b) return b != nullptr;
    }
    return false;
}

template <class T>
std::int64_t HXPtrListBase2<T>::GetItemCount(POSITION from, POSITION to) const {
    const POSITION last = OrElse(to, this->GetTailPosition());
    std::int64_t count = 0;
    for (POSITION pos = BeginOf(from); pos != nullptr;) {
        GetNext(pos);
        ++count;
        if (pos == last) break;
    }
    return count;
}

template <class T>
std::int32_t HXPtrListBase2<T>::GetRangeCount(POSITION from, POSITION to) const {
    std::int32_t count = 0;
    for (POSITION pos = BeginOf(from); pos != nullptr;) {
        const POSITION here = pos;
        GetNext(pos);
        ++count;
        if (here == to) break;
    }
    return count;
}

template <class T>
CPlex* HXPtrListBase2<T>::GetFirstBlock() const {
    CPlex* block = m_pBlocks;
    while (block != nullptr && block->pNext != nullptr) block = block->pNext;
    return block;
}

template <class T>
bool HXPtrListBase2<T>::IsSameContents(const HXPtrListBase2& other) const {
    if (m_nCount != other.m_nCount) return false;
    for (T* element : *this) {
        if (other.Find(element) == nullptr) return false;
    }
    return true;
}

template <class T>
bool HXPtrListBase2<T>::IsContiguousSublist(const CPtrList& sub, POSITION start) const {
    POSITION pos = BeginOf(start);
    for (void* element : sub) {
        if (pos == nullptr || GetNext(pos) != element) return false;
    }
    return true;
}

template <class T>
bool HXPtrListBase2<T>::CheckDuplicates() const {
    RangePos unused;
    return !FindDuplicates(unused);
}

template <class T>
bool HXPtrListBase2<T>::FindDuplicates(RangePos& out) const {
    return CyclicWalks::FindDuplicates(*this, out.m_posFirst, out.m_posLast);
}

// Relinks the neighbours of the run, which itself stays as it is.
template <class T>
void HXPtrListBase2<T>::CutOut(CNode* first, CNode* last) {
    (first->pPrev != nullptr ? first->pPrev->pNext : m_pNodeHead) = last->pNext;
    (last->pNext != nullptr ? last->pNext->pPrev : m_pNodeTail) = first->pPrev;
}

template <class T>
void HXPtrListBase2<T>::LinkBehindTail(CNode* first, CNode* last) {
    first->pPrev = m_pNodeTail;
    last->pNext = nullptr;
    (m_pNodeTail != nullptr ? m_pNodeTail->pNext : m_pNodeHead) = first;
    m_pNodeTail = last;
}

}  // namespace ZT
