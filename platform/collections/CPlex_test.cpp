#include <platform/collections/CPlex.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CMemoryException.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>

namespace {

TEST(CPlex, NewBlockStandsInFrontOfTheChain) {
    CPlex* head = nullptr;
    CPlex* first = CPlex::Create(head, 3, 8);
    EXPECT_EQ(head, first);
    EXPECT_EQ(first->pNext, nullptr);

    CPlex* second = CPlex::Create(head, 5, 24);
    EXPECT_EQ(head, second);
    EXPECT_EQ(second->pNext, first);
    EXPECT_EQ(first->pNext, nullptr);
    head->FreeDataChain();
}

TEST(CPlex, ElementsAreAlignedAndWritable) {
    CPlex* head = nullptr;
    CPlex* block = CPlex::Create(head, 100, 24);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block->data()) % alignof(std::max_align_t), 0U);
    std::memset(block->data(), 0xA5, 100 * 24);
    EXPECT_EQ(block->pNext, nullptr);
    head->FreeDataChain();
}

TEST(CPlex, NoElementsRaiseInvalidArgument) {
    CPlex* head = nullptr;
    EXPECT_THROW(CPlex::Create(head, 0, 8), CInvalidArgException*);
    EXPECT_THROW(CPlex::Create(head, 8, 0), CInvalidArgException*);
    EXPECT_EQ(head, nullptr);
}

TEST(CPlex, SizeThatOverflowsRaisesMemoryAndLeavesTheChain) {
    constexpr UINT_PTR kMost = std::numeric_limits<UINT_PTR>::max();
    CPlex* head = nullptr;
    CPlex* block = CPlex::Create(head, 1, 1);
    EXPECT_THROW(CPlex::Create(head, kMost / 8 + 2, 8), CMemoryException*);
    EXPECT_THROW(CPlex::Create(head, kMost, kMost), CMemoryException*);
    EXPECT_THROW(CPlex::Create(head, 1, kMost - 8), CMemoryException*);
    EXPECT_EQ(head, block);
    head->FreeDataChain();
}

TEST(CPlex, FreeingNoChainDoesNothing) {
    CPlex::FreeDataChain(nullptr);
}

}  // namespace
