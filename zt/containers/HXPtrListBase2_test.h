/// @file
/// Lists of numbered items in tests: what they hold and where their nodes lie.

#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zt/containers/HXPtrListBase2.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <set>
#include <vector>

namespace testing_support {

/// An element with a number from 1 on, which notes its end.
struct Item {
    explicit Item(int n, std::vector<int>* log = nullptr) : number(n), ended(log) {}
    virtual ~Item() {
        if (ended != nullptr) ended->push_back(number);
    }

    int number;
    std::vector<int>* ended;
};

/// Where the nodes of a list's blocks are: in the list, free, or lost to both.
struct NodeLedger {
    std::ptrdiff_t blocks = 0;
    std::ptrdiff_t listed = 0;
    std::ptrdiff_t free = 0;
    std::ptrdiff_t lost = 0;
    std::ptrdiff_t foreign = 0;  ///< in the list or free, but in no block or in both chains

    bool operator==(const NodeLedger&) const = default;
};

inline void PrintTo(const NodeLedger& ledger, std::ostream* os) {
    *os << ledger.blocks << " blocks, " << ledger.listed << " listed, " << ledger.free << " free, "
        << ledger.lost << " lost, " << ledger.foreign << " foreign";
}

/// A list that looks into its own nodes and blocks. The blocks are all of ten nodes.
class ItemList : public ZT::HXPtrListBase2<Item> {
public:
    using List = ZT::HXPtrListBase2<Item>;
    using Node = CNode;
    using List::m_nBlockSize;
    using List::m_nCount;
    using List::m_pBlocks;
    using List::m_pNodeFree;
    using List::m_pNodeHead;
    using List::m_pNodeTail;
    using List::NodeOf;

    NodeLedger Ledger() const {
        std::set<const Node*> ours;
        NodeLedger ledger;
        for (CPlex* block = m_pBlocks; block != nullptr; block = block->pNext, ++ledger.blocks) {
            auto* nodes = static_cast<const Node*>(block->data());
            for (int i = 0; i < 10; ++i) ours.insert(&nodes[i]);
        }
        ledger.listed = TakeEach(m_pNodeHead, ours, ledger.foreign);
        ledger.free = TakeEach(m_pNodeFree, ours, ledger.foreign);
        ledger.lost = std::ssize(ours);
        return ledger;
    }

    /// Takes over whatever `other` holds, which must let go of it then.
    void Adopt(const ItemList& other) {
        m_pNodeHead = other.m_pNodeHead;
        m_pNodeTail = other.m_pNodeTail;
        m_nCount = other.m_nCount;
        m_pNodeFree = other.m_pNodeFree;
        m_pBlocks = other.m_pBlocks;
    }

private:
    static std::ptrdiff_t TakeEach(const Node* node, std::set<const Node*>& ours,
                                   std::ptrdiff_t& foreign) {
        std::ptrdiff_t count = 0;
        for (; node != nullptr; node = node->pNext, ++count) {
            if (ours.erase(node) == 0) ++foreign;
        }
        return count;
    }
};

inline int NumberOf(const void* element) {
    return element != nullptr ? static_cast<const Item*>(element)->number : 0;
}

/// The numbers from head to tail, 0 for null. The way back and the count must agree.
inline std::vector<int> Numbers(const CPtrList& list) {
    std::vector<int> forward;
    for (const void* element : list) forward.push_back(NumberOf(element));
    std::vector<int> backward;
    for (POSITION pos = list.GetTailPosition(); pos != nullptr;) {
        backward.push_back(NumberOf(list.GetPrev(pos)));
    }
    std::reverse(backward.begin(), backward.end());
    EXPECT_EQ(forward, backward);
    EXPECT_EQ(list.GetCount(), std::ssize(forward));
    return forward;
}

/// Some items and two lists for them.
struct ItemLists : testing::Test {
    ItemLists() {
        for (int i = 1; i <= 40; ++i) items.push_back(std::make_unique<Item>(i));
    }

    /// The item with the number `n`, which the test owns; null for 0.
    Item* Of(int n) const {
        return n > 0 ? items.at(static_cast<std::size_t>(n) - 1).get() : nullptr;
    }

    void Fill(CPtrList& target, std::initializer_list<int> numbers) const {
        for (const int n : numbers) target.AddTail(Of(n));
    }
    /// Items that the list is to delete.
    void FillFromHeap(CPtrList& target, std::initializer_list<int> numbers) {
        for (const int n : numbers) target.AddTail(n > 0 ? new Item(n, &ended) : nullptr);
    }

    static POSITION At(const CPtrList& target, int index) { return target.FindIndex(index); }

    std::vector<std::unique_ptr<Item>> items;
    std::vector<int> ended;
    ItemList list;
    ItemList other;
};

}  // namespace testing_support
