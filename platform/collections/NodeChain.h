/// @file
/// The doubly linked chain of nodes that all lists share.

#pragma once

#include <platform/base/Types.h>
#include <platform/collections/CPlex.h>
#include <platform/collections/ElementHelpers.h>
#include <platform/collections/POSITION.h>
#include <platform/object/CInvalidArgException.h>

#include <concepts>
#include <cstddef>
#include <iterator>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace Collections {

/// The nodes of a list and every operation on them: what `CPtrList`, `CObList` and
/// `CList` have in common.
///
/// The chain is linear, with null before the head and behind the tail. Nodes are cut
/// from blocks of `m_nBlockSize`; a node whose element is removed goes to the free chain
/// and serves the next element. When the last element goes, so do all blocks. A position
/// is a node: it stays valid until its own element is removed.
///
/// An operation on the head or the tail of an empty list, and one on a null position,
/// raises the invalid-argument exception. That a position belongs to this list and is
/// still in it is the caller's care.
///
/// Derived classes may relink nodes themselves; what they must keep is said at the
/// fields.
template <class TYPE, class ARG_TYPE>
class NodeChain {
protected:
    /// One element with its neighbours. A node in the free chain uses `pNext` alone, and
    /// holds no element.
    struct CNode {
        CNode* pNext;
        CNode* pPrev;
        TYPE data;
    };
    static_assert(alignof(CNode) <= alignof(CPlex), "blocks are aligned for ordinary types only");

    template <bool CONST>
    class Walker;

public:
    using value_type = TYPE;
    using iterator = Walker<false>;
    using const_iterator = Walker<true>;

    /// An empty chain whose blocks will hold `nBlockSize` nodes each. A block size below 1
    /// raises the invalid-argument exception.
    explicit NodeChain(INT_PTR nBlockSize) : m_nBlockSize(nBlockSize) {
        if (nBlockSize < 1) AfxThrowInvalidArgException();
    }
    NodeChain(const NodeChain&) = delete;
    NodeChain& operator=(const NodeChain&) = delete;

    /// @name Size
    /// @{
    INT_PTR GetCount() const { return m_nCount; }
    INT_PTR GetSize() const { return m_nCount; }
    bool IsEmpty() const { return m_nCount == 0; }
    /// @}

    /// @name Ends
    /// @{
    TYPE& GetHead() { return CheckedNode(m_pNodeHead)->data; }
    const TYPE& GetHead() const { return CheckedNode(m_pNodeHead)->data; }
    TYPE& GetTail() { return CheckedNode(m_pNodeTail)->data; }
    const TYPE& GetTail() const { return CheckedNode(m_pNodeTail)->data; }

    /// Takes the first element out of the list and returns it.
    TYPE RemoveHead() { return TakeOut(CheckedNode(m_pNodeHead)); }
    /// Takes the last element out of the list and returns it.
    TYPE RemoveTail() { return TakeOut(CheckedNode(m_pNodeTail)); }

    /// Puts an element in front of all others, and returns its position.
    POSITION AddHead(ARG_TYPE newElement) { return Insert(nullptr, m_pNodeHead, newElement); }
    /// Puts an element behind all others, and returns its position.
    POSITION AddTail(ARG_TYPE newElement) { return Insert(m_pNodeTail, nullptr, newElement); }

    /// Puts copies of another list's elements, in their order, in front of the present
    /// ones. The other list stays as it is; it may be this one. A null list raises the
    /// invalid-argument exception.
    template <std::derived_from<NodeChain> LIST>
    void AddHead(const LIST* pNewList) {
        const NodeChain* source = Checked(pNewList);
        const CNode* node = source->m_pNodeTail;
        for (INT_PTR left = source->m_nCount; left > 0; --left, node = node->pPrev) {
            Insert(nullptr, m_pNodeHead, node->data);
        }
    }
    /// Puts copies of another list's elements, in their order, behind the present ones,
    /// as `AddHead` does.
    template <std::derived_from<NodeChain> LIST>
    void AddTail(const LIST* pNewList) {
        const NodeChain* source = Checked(pNewList);
        const CNode* node = source->m_pNodeHead;
        for (INT_PTR left = source->m_nCount; left > 0; --left, node = node->pNext) {
            Insert(m_pNodeTail, nullptr, node->data);
        }
    }

    /// Ends all elements and frees all blocks. What pointer elements point to is not
    /// touched.
    void RemoveAll() {
        if constexpr (!std::is_trivially_destructible_v<TYPE>) {
            for (CNode* node = m_pNodeHead; node != nullptr; node = node->pNext) {
                std::destroy_at(&node->data);
            }
        }
        m_nCount = 0;
        m_pNodeHead = m_pNodeTail = m_pNodeFree = nullptr;
        CPlex::FreeDataChain(m_pBlocks);
        m_pBlocks = nullptr;
    }
    /// @}

    /// @name Walking
    /// @{
    /// Position of the first element; null in an empty list.
    POSITION GetHeadPosition() const { return PositionOf(m_pNodeHead); }
    /// Position of the last element; null in an empty list.
    POSITION GetTailPosition() const { return PositionOf(m_pNodeTail); }

    /// The element at `rPosition`, which moves to the next one: to null after the tail.
    TYPE& GetNext(POSITION& rPosition) { return StepForward(rPosition)->data; }
    const TYPE& GetNext(POSITION& rPosition) const { return StepForward(rPosition)->data; }
    /// The element at `rPosition`, which moves to the previous one: to null before the
    /// head.
    TYPE& GetPrev(POSITION& rPosition) { return StepBackward(rPosition)->data; }
    const TYPE& GetPrev(POSITION& rPosition) const { return StepBackward(rPosition)->data; }

    iterator begin() { return {this, m_pNodeHead}; }
    iterator end() { return {this, nullptr}; }
    const_iterator begin() const { return {this, m_pNodeHead}; }
    const_iterator end() const { return {this, nullptr}; }
    /// @}

    /// @name Elements at a position
    /// @{
    TYPE& GetAt(POSITION position) { return CheckedNode(position)->data; }
    const TYPE& GetAt(POSITION position) const { return CheckedNode(position)->data; }
    void SetAt(POSITION position, ARG_TYPE newElement) { CheckedNode(position)->data = newElement; }
    /// Takes the element out of the list. The position is stale afterwards, the others
    /// stay valid.
    void RemoveAt(POSITION position) {
        CNode* node = CheckedNode(position);
        Unlink(node);
        FreeNode(node);
    }
    /// Puts an element in front of the one at `position`, or in front of all when that is
    /// null; returns the position of the new one.
    POSITION InsertBefore(POSITION position, ARG_TYPE newElement) {
        if (position == nullptr) return AddHead(newElement);
        CNode* node = NodeOf(position);
        return Insert(node->pPrev, node, newElement);
    }
    /// Puts an element behind the one at `position`, or behind all when that is null;
    /// returns the position of the new one.
    POSITION InsertAfter(POSITION position, ARG_TYPE newElement) {
        if (position == nullptr) return AddTail(newElement);
        CNode* node = NodeOf(position);
        return Insert(node, node->pNext, newElement);
    }
    /// @}

    /// @name Searching
    /// Both walk the list.
    /// @{
    /// Position of the first element that equals `searchValue` by `CompareElements`, behind
    /// `startAfter` or, when that is null, from the head on. Null when there is none.
    POSITION Find(ARG_TYPE searchValue, POSITION startAfter = nullptr) const {
        const CNode* node = startAfter == nullptr ? m_pNodeHead : NodeOf(startAfter)->pNext;
        while (node != nullptr && !Equal(node, searchValue)) node = node->pNext;
        return PositionOf(node);
    }
    /// Position of the element with `nIndex` elements before it; null when the index is
    /// below 0 or beyond the tail.
    POSITION FindIndex(INT_PTR nIndex) const {
        if (nIndex < 0 || nIndex >= m_nCount) return nullptr;
        CNode* node = m_pNodeHead;
        while (nIndex-- > 0) node = node->pNext;
        return PositionOf(node);
    }
    /// @}

protected:
    ~NodeChain() { RemoveAll(); }

    /// The node that a position stands for, unchecked.
    static CNode* NodeOf(POSITION position) { return reinterpret_cast<CNode*>(position); }
    /// The position that stands for a node.
    static POSITION PositionOf(const CNode* node) {
        return reinterpret_cast<POSITION>(const_cast<CNode*>(node));
    }
    /// The node that a position stands for; null raises the invalid-argument exception.
    static CNode* CheckedNode(POSITION position) { return CheckedNode(NodeOf(position)); }
    static CNode* CheckedNode(CNode* node) {
        if (node == nullptr) [[unlikely]]
            AfxThrowInvalidArgException();
        return node;
    }

    /// A node from the free chain, or from a new block, with the given neighbours noted in
    /// it and a default element, zero for a plain type. It counts, but its neighbours do
    /// not know it yet.
    CNode* NewNode(CNode* pPrev, CNode* pNext) {
        if (m_pNodeFree == nullptr) AddBlock();
        CNode* node = m_pNodeFree;
        CNode* nextFree = node->pNext;
        ::new (static_cast<void*>(std::addressof(node->data))) TYPE();
        m_pNodeFree = nextFree;
        node->pPrev = pPrev;
        node->pNext = pNext;
        ++m_nCount;
        return node;
    }

    /// Ends the element of an unlinked node and puts the node into the free chain; frees
    /// all blocks when it was the last.
    void FreeNode(CNode* pNode) {
        std::destroy_at(std::addressof(pNode->data));
        pNode->pNext = m_pNodeFree;
        m_pNodeFree = pNode;
        if (--m_nCount == 0) RemoveAll();
    }

    /// Whether the fields agree with one another: ends, links, count and blocks. Walks the
    /// whole list.
    bool IsConsistent() const {
        return HasConsistentEnds() && HasConsistentLinks() && HasConsistentBlocks();
    }

    CNode* m_pNodeHead = nullptr;  ///< null in an empty list, as is the tail
    CNode* m_pNodeTail = nullptr;
    INT_PTR m_nCount = 0;          ///< nodes from head to tail
    CNode* m_pNodeFree = nullptr;  ///< nodes of the blocks without element, by `pNext`
    CPlex* m_pBlocks = nullptr;    ///< the newest block; what it and its like hold is ours
    INT_PTR m_nBlockSize;          ///< nodes of the next block, at least 1

private:
    template <class LIST>
    static const NodeChain* Checked(const LIST* list) {
        if (list == nullptr) AfxThrowInvalidArgException();
        return list;
    }

    void AddBlock() {
        const auto count = static_cast<UINT_PTR>(m_nBlockSize);
        auto* nodes = static_cast<CNode*>(CPlex::Create(m_pBlocks, count, sizeof(CNode))->data());
        // Backwards, so that nodes are handed out in the order of their addresses.
        for (UINT_PTR i = count; i-- > 0;) {
            nodes[i].pNext = m_pNodeFree;
            m_pNodeFree = &nodes[i];
        }
    }

    POSITION Insert(CNode* before, CNode* after, ARG_TYPE element) {
        CNode* node = NewNode(before, after);
        Assign(node, element);
        (before == nullptr ? m_pNodeHead : before->pNext) = node;
        (after == nullptr ? m_pNodeTail : after->pPrev) = node;
        return PositionOf(node);
    }

    /// Gives a new node its element; a node whose element cannot be had is given back.
    void Assign(CNode* node, ARG_TYPE element) {
        if constexpr (std::is_nothrow_assignable_v<TYPE&, ARG_TYPE&>) {
            node->data = element;
        } else {
            try {
                node->data = element;
            } catch (...) {
                FreeNode(node);
                throw;
            }
        }
    }

    void Unlink(CNode* node) {
        (node->pPrev == nullptr ? m_pNodeHead : node->pPrev->pNext) = node->pNext;
        (node->pNext == nullptr ? m_pNodeTail : node->pNext->pPrev) = node->pPrev;
    }

    TYPE TakeOut(CNode* node) {
        TYPE element = std::move(node->data);
        Unlink(node);
        FreeNode(node);
        return element;
    }

    static CNode* StepForward(POSITION& position) {
        CNode* node = CheckedNode(position);
        position = PositionOf(node->pNext);
        return node;
    }
    static CNode* StepBackward(POSITION& position) {
        CNode* node = CheckedNode(position);
        position = PositionOf(node->pPrev);
        return node;
    }

    static bool Equal(const CNode* node, ARG_TYPE value) {
        return CompareElements(std::addressof(node->data), std::addressof(value)) != 0;
    }

    bool HasConsistentEnds() const {
        if (m_nCount < 0 || m_nBlockSize < 1) return false;
        if (m_nCount == 0) return m_pNodeHead == nullptr && m_pNodeTail == nullptr;
        return m_pNodeHead != nullptr && m_pNodeTail != nullptr;
    }

    bool HasConsistentLinks() const {
        const CNode* previous = nullptr;
        INT_PTR seen = 0;
        for (const CNode* node = m_pNodeHead; node != nullptr; node = node->pNext) {
            if (node->pPrev != previous || ++seen > m_nCount) return false;
            previous = node;
        }
        return seen == m_nCount && previous == m_pNodeTail;
    }

    bool HasConsistentBlocks() const {
        return m_pBlocks != nullptr || (m_pNodeFree == nullptr && m_nCount == 0);
    }
};

/// Walks a chain in either direction; stepping back from the end leads to the tail.
template <class TYPE, class ARG_TYPE>
template <bool CONST>
class NodeChain<TYPE, ARG_TYPE>::Walker {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = TYPE;
    using difference_type = std::ptrdiff_t;
    using reference = std::conditional_t<CONST, const TYPE&, TYPE&>;
    using pointer = std::remove_reference_t<reference>*;

    Walker() = default;
    Walker(const NodeChain* chain, CNode* node) : m_chain(chain), m_node(node) {}
    template <bool OTHER>
    requires(CONST && !OTHER) Walker(const Walker<OTHER>& other)
        : m_chain(other.m_chain), m_node(other.m_node) {}

    /// The place in the list, for the operations that take one; null at the end.
    POSITION Position() const { return PositionOf(m_node); }

    reference operator*() const { return m_node->data; }
    pointer operator->() const { return std::addressof(m_node->data); }

    Walker& operator++() {
        m_node = m_node->pNext;
        return *this;
    }
    Walker operator++(int) {
        Walker old = *this;
        ++*this;
        return old;
    }
    Walker& operator--() {
        m_node = m_node == nullptr ? m_chain->m_pNodeTail : m_node->pPrev;
        return *this;
    }
    Walker operator--(int) {
        Walker old = *this;
        --*this;
        return old;
    }
    friend bool operator==(const Walker& a, const Walker& b) { return a.m_node == b.m_node; }

private:
    friend class Walker<true>;

    const NodeChain* m_chain = nullptr;
    CNode* m_node = nullptr;
};

}  // namespace Collections
