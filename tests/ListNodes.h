/// @file
/// Lists that let a test look into their nodes and blocks.

#pragma once

#include <gtest/gtest.h>
#include <platform/collections/CPlex.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

namespace testing_support {

/// `LIST` with its fields open.
template <class LIST>
class OpenList : public LIST {
public:
    using Node = typename LIST::CNode;
    using LIST::LIST;
    using LIST::m_nBlockSize;
    using LIST::m_nCount;
    using LIST::m_pBlocks;
    using LIST::m_pNodeFree;
    using LIST::m_pNodeHead;
    using LIST::m_pNodeTail;
    using LIST::NodeOf;

    std::ptrdiff_t BlockCount() const {
        std::ptrdiff_t count = 0;
        for (const CPlex* block = m_pBlocks; block != nullptr; block = block->pNext) ++count;
        return count;
    }

    /// Every node of every block stands once in the list or once in the free chain, and the
    /// two chains hold nothing else.
    bool OwnsEachNodeOnce() const {
        std::set<const Node*> ours;
        for (CPlex* block = m_pBlocks; block != nullptr; block = block->pNext) {
            auto* nodes = static_cast<const Node*>(block->data());
            for (INT_PTR i = 0; i < m_nBlockSize; ++i) ours.insert(&nodes[i]);
        }
        return TakeEach(m_pNodeHead, ours) && TakeEach(m_pNodeFree, ours) && ours.empty();
    }

    /// Whether links, ends, count and blocks agree, and no node is lost or held twice.
    testing::AssertionResult IsSound() const {
        if (!LIST::IsConsistent()) return testing::AssertionFailure() << "inconsistent";
        if (!OwnsEachNodeOnce()) return testing::AssertionFailure() << "nodes lost or held twice";
        return testing::AssertionSuccess();
    }

    /// Makes the list hold 1, 2, ... `count` as pointers.
    void Fill(std::uintptr_t count) {
        for (std::uintptr_t i = 1; i <= count; ++i) LIST::AddTail(reinterpret_cast<void*>(i));
    }

    /// The elements as numbers, from head to tail.
    std::vector<std::uintptr_t> Numbers() const {
        std::vector<std::uintptr_t> numbers;
        for (void* element : *this) numbers.push_back(reinterpret_cast<std::uintptr_t>(element));
        return numbers;
    }

private:
    static bool TakeEach(const Node* node, std::set<const Node*>& ours) {
        for (; node != nullptr; node = node->pNext) {
            if (ours.erase(node) == 0) return false;
        }
        return true;
    }
};

}  // namespace testing_support
