/// @file
/// Lists of numbered items in tests: what they hold and where their nodes lie.

#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tests/ListNodes.h>
#include <zt/containers/HXPtrListBase2.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <memory>
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

/// A list of items with its fields open.
class ItemList : public OpenList<ZT::HXPtrListBase2<Item>> {
public:
    /// Takes over whatever `other` holds, which must let go of it then.
    void Adopt(const ItemList& other) {
        m_pNodeHead = other.m_pNodeHead;
        m_pNodeTail = other.m_pNodeTail;
        m_nCount = other.m_nCount;
        m_pNodeFree = other.m_pNodeFree;
        m_pBlocks = other.m_pBlocks;
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
