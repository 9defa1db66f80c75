// What a server of clients does when there is no memory for the record of one.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tests/AllocationCount.h>
#include <zt/modules/NotifyServer.h>
#include <zt/modules/NotifyClient_test.hpp>

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

}  // namespace
}  // namespace ZT
