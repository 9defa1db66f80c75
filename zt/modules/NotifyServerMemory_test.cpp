// What a server of clients does when there is no memory for the record of one.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CMemoryException.h>
#include <tests/AllocationCount.h>
#include <zt/modules/NotifyServer.h>
#include <zt/modules/NotifyClient_test.hpp>

#include <cstdlib>
#include <new>

namespace {

// Whether there is memory for the rows of arrays, which ask for it with an alignment.
bool memory_for_rows = true;

void* Aligned(std::size_t size, std::align_val_t alignment) noexcept {
    const auto boundary = static_cast<std::size_t>(alignment);
    return std::aligned_alloc(boundary, (size / boundary + 1) * boundary);
}

}  // namespace

void* operator new(std::size_t size, std::align_val_t alignment) {
    if (void* const memory = Aligned(size, alignment)) return memory;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return memory_for_rows ? Aligned(size, alignment) : nullptr;
}
void operator delete(void* memory, std::align_val_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
    std::free(memory);
}

namespace ZT {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::MemoryFor;

struct NotifyServerMemory : testing::Test {
    NotifyServerMemory() {
        heard.clear();
        heard.reserve(50);  // clients hear something also while there is no memory
    }

    NotifyClient a{"A"}, b{"B"}, c{"C"}, d{"D"}, e{"E"};
    NotifyServer server;
    int message = 0;
};

TEST_F(NotifyServerMemory, ClientWithoutARecordStopsTheRoundByMask) {
    for (NotifyClient* client : {&a, &b, &c}) server.AddClient(client, 1);
    heard.clear();
    server.SetSize(8);
    server.SetSize(3);  // has room for more
    {
        const MemoryFor none(0);
        server.AddClient(&d, 7);
    }
    EXPECT_THAT(heard, ElementsAre("D +"));
    EXPECT_EQ(server.GetSize(), 4);
    EXPECT_EQ(server.GetAt(3), nullptr);
    EXPECT_EQ(server.GetNotify(3), nullptr);
    EXPECT_EQ(server.Find(&d), -1);
    EXPECT_EQ(server.Find(nullptr), -1);
    heard.clear();
    server.DetachClient(&d);
    server.Notify(&message, 7);
    EXPECT_THAT(heard, IsEmpty());
    server.AddClient(&e, 1);
    heard.clear();
    server.Notify(&message, 7);
    EXPECT_THAT(heard, ElementsAre("E"));
    server.Notify(&message);
    EXPECT_THAT(heard, ElementsAre("E", "A", "B", "C", "E"));
    server.DetachClient(&e);
}

TEST_F(NotifyServerMemory, FirstClientWithoutARecordMakesTheServerMasked) {
    server.SetSize(8);
    server.RemoveAt(0, 8);  // keeps the room
    {
        const MemoryFor none(0);
        server.AddClient(&a, 1);
    }
    EXPECT_EQ(server.m_bMasked, 1);
    EXPECT_EQ(a.count, 2u);
}

TEST_F(NotifyServerMemory, WithoutMemoryForTheListNothingHasHappened) {
    // No memory at all; then memory for the record only.
    for (const int allocations : {0, 1}) {
        bool raised = false;
        memory_for_rows = false;
        {
            const MemoryFor few(static_cast<std::size_t>(allocations));
            try {
                server.AddClient(&a, 1);
            } catch (CMemoryException* exception) {
                raised = true;
                exception->Delete();
            }
        }
        memory_for_rows = true;
        EXPECT_TRUE(raised) << allocations;
        EXPECT_EQ(server.GetSize(), 0) << allocations;
        EXPECT_EQ(server.m_bMasked, 0) << allocations;
        EXPECT_EQ(a.count, 1u) << allocations;
        EXPECT_THAT(heard, IsEmpty()) << allocations;
    }
    server.AddClient(&a, 1);
    EXPECT_THAT(heard, ElementsAre("A +"));
    EXPECT_EQ(server.GetNotify(0), &a);
}

}  // namespace
}  // namespace ZT
