/// @file
/// Lists that let a test look into their nodes and blocks.

#pragma once

#include <gtest/gtest.h>
#include <platform/collections/CPlex.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <set>
#include <vector>

namespace testing_support {

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

    /// The blocks must all be of the size that the list has now.
    NodeLedger Ledger() const {
        std::set<const Node*> ours;
        NodeLedger ledger;
        for (CPlex* block = m_pBlocks; block != nullptr; block = block->pNext, ++ledger.blocks) {
            auto* nodes = static_cast<const Node*>(block->data());
            for (INT_PTR i = 0; i < m_nBlockSize; ++i) ours.insert(&nodes[i]);
        }
        ledger.listed = TakeEach(m_pNodeHead, ours, ledger.foreign);
        ledger.free = TakeEach(m_pNodeFree, ours, ledger.foreign);
        ledger.lost = std::ssize(ours);
        return ledger;
    }

    std::ptrdiff_t BlockCount() const { return Ledger().blocks; }

    /// Every node of every block stands once in the list or once in the free chain, and the
    /// two chains hold nothing else.
    bool OwnsEachNodeOnce() const {
        const NodeLedger ledger = Ledger();
        return ledger.lost == 0 && ledger.foreign == 0;
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
    static std::ptrdiff_t TakeEach(const Node* node, std::set<const Node*>& ours,
                                   std::ptrdiff_t& foreign) {
        std::ptrdiff_t count = 0;
        for (; node != nullptr; node = node->pNext, ++count) {
            if (ours.erase(node) == 0) ++foreign;
        }
        return count;
    }
};

}  // namespace testing_support
