#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CInvalidArgException.h>
#include <tests/Raises.h>
#include <zt/modules/NotifyServer.h>
#include <zt/frame/VirtualTable_test.hpp>
#include <zt/modules/NotifyClient_test.hpp>

#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::Raises;

struct NotifyServerTest : testing::Test {
    NotifyServerTest() { heard.clear(); }

    NotifyClient a{"A"}, b{"B"}, c{"C"}, d{"D"};
    int message = 0;
};

// A server without references to A, B and C.
struct PlainServer : NotifyServerTest {
    NotifyServer server;
    PlainServer() {
        for (NotifyClient* client : {&a, &b, &c}) server.AddClient(client);
    }
    bool NotifyRaises() {
        return Raises<CInvalidArgException>([this] { server.Notify(&message); });
    }
};

// A server with A for the events 1, B for 2, C for 1 and 4.
struct MaskedServer : NotifyServerTest {
    NotifyServer server;
    MaskedServer() {
        server.AddClient(&a, 1);
        server.AddClient(&b, 2);
        server.AddClient(&c, 5);
        heard.clear();
    }
    bool NotifyRaises() {
        return Raises<CInvalidArgException>([this] { server.Notify(&message); });
    }
    bool MaskedNotifyRaises(ulong mask) {
        return Raises<CInvalidArgException>([this, mask] { server.Notify(&message, mask); });
    }
    const NotifyServer::ClientRec& Record(int i) const {
        return *static_cast<const NotifyServer::ClientRec*>(server.GetAt(i));
    }
};

std::vector<INotify*> ClientsOf(const NotifyServer& server) {
    std::vector<INotify*> clients;
    for (int i = 0; i < static_cast<int>(server.GetSize()); ++i)
        clients.push_back(server.GetNotify(i));
    return clients;
}

TEST_F(NotifyServerTest, FieldsStandInTheirOrder) {
    EXPECT_EQ(offsetof(NotifyServer, m_bMasked), sizeof(CPtrArray));
    EXPECT_EQ(offsetof(NotifyServer, m_bEnabled), sizeof(CPtrArray) + 4);
    EXPECT_EQ(sizeof(NotifyServer), sizeof(CPtrArray) + 8);
    EXPECT_EQ(offsetof(NotifyServer::ClientRec, m_pClient), 0u);
    EXPECT_EQ(offsetof(NotifyServer::ClientRec, m_mask), 8u);
    EXPECT_EQ(sizeof(NotifyServer::ClientRec), 16u);
    static_assert(std::is_same_v<decltype(NotifyServer::m_bMasked), std::int32_t>);
    static_assert(std::is_same_v<decltype(NotifyServer::ClientRec::m_mask), std::uint32_t>);
    static_assert(std::is_base_of_v<CPtrArray, NotifyServer>);
}

TEST_F(NotifyServerTest, NotifyStandsBehindTheOperationsOfIUnknown) {
    INotify* const client = &a;
    EXPECT_EQ((CallSlot<HRESULT, void*>(client, 3, &message)), E_FAIL);
    EXPECT_EQ(a.last, &message);
}

TEST_F(NotifyServerTest, StartsEmptyPlainAndEnabled) {
    NotifyServer server;
    EXPECT_EQ(server.GetSize(), 0);
    EXPECT_EQ(server.m_bMasked, 0);
    EXPECT_TRUE(server.m_bEnabled);
    EXPECT_EQ(server.Find(&a), -1);
    server.Notify(&message);
    server.Notify(&message, 1);
    EXPECT_THAT(heard, IsEmpty());
}

// ---- Clients.

TEST_F(PlainServer, KeepsItsClientsInOrderWithoutReferences) {
    server.AddClient(&b);
    server.AddClient(nullptr);
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &b, &c));
    EXPECT_EQ(server.GetAt(1), static_cast<INotify*>(&b));
    EXPECT_EQ(server.m_bMasked, 0);
    EXPECT_EQ(server.Find(&a), 0);
    EXPECT_EQ(server.Find(&c), 2);
    EXPECT_EQ(server.Find(&d), -1);
    EXPECT_EQ(server.Find(nullptr), -1);
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(PlainServer, DetachesWithoutAWord) {
    server.DetachClient(&b);
    server.DetachClient(&d);
    server.DetachClient(nullptr);
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &c));
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(PlainServer, IndexOutOfRangeRaises) {
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { server.GetNotify(-1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { server.GetNotify(3); }));
}

TEST_F(PlainServer, MaskForAClientThatIsThereIsIgnored) {
    server.AddClient(&b, 7);
    EXPECT_EQ(server.m_bMasked, 0);
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &b, &c));
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(NotifyServerTest, EndOfAPlainServerTellsNobody) {
    std::make_unique<NotifyServer>()->AddClient(&a);
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(NotifyServerTest, FirstMaskMakesTheServerMasked) {
    NotifyServer server;
    server.AddClient(nullptr, 1);
    server.AddClient(&a, 0);
    EXPECT_EQ(server.m_bMasked, 0);
    EXPECT_EQ(server.GetSize(), 0);
    server.AddClient(&a, 6);
    EXPECT_EQ(server.m_bMasked, 1);
    EXPECT_THAT(heard, ElementsAre("A +"));
    server.DetachClient(&a);
    EXPECT_EQ(server.m_bMasked, 1);
    EXPECT_EQ(server.GetSize(), 0);
}

TEST_F(MaskedServer, KeepsRecordsOfItsClients) {
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &b, &c));
    EXPECT_EQ(Record(1).m_pClient, &b);
    EXPECT_EQ(Record(1).m_mask, 2u);
    EXPECT_EQ(a.count, 2u);
    EXPECT_EQ(server.Find(&c), 2);
    EXPECT_EQ(server.Find(&d), -1);
    EXPECT_EQ(server.Find(nullptr), -1);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { server.GetNotify(3); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { server.GetNotify(-1); }));
}

TEST_F(MaskedServer, SecondMaskIsAddedToTheFirst) {
    server.AddClient(&b, 8);
    EXPECT_EQ(server.GetSize(), 3);
    EXPECT_EQ(Record(1).m_mask, 10u);
    EXPECT_EQ(b.count, 2u);
    server.Notify(&message, 2);
    server.Notify(&message, 8);
    server.Notify(&message, 10);
    EXPECT_THAT(heard, ElementsAre("B", "B", "B"));
}

TEST_F(MaskedServer, ClientWithoutAMaskIsIgnored) {
    server.AddClient(&d);
    server.AddClient(&b);
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &b, &c));
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(MaskedServer, DetachedClientHearsItJustBeforeItsRelease) {
    int placeOnNotify = 7, placeOnRelease = 7;
    b.onNotify = [&] { placeOnNotify = server.Find(&b); };
    b.onRelease = [&] { placeOnRelease = server.Find(&b); };
    server.DetachClient(&b);
    EXPECT_THAT(heard, ElementsAre("B null", "B -"));
    // It leaves the list after both.
    EXPECT_EQ(placeOnNotify, 1);
    EXPECT_EQ(placeOnRelease, 1);
    EXPECT_EQ(b.count, 1u);
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &c));
    server.DetachClient(&b);
    server.DetachClient(nullptr);
    EXPECT_THAT(heard, ElementsAre("B null", "B -"));
}

TEST_F(MaskedServer, ExceptionOfTheClientThatIsDetachedReachesTheCaller) {
    b.onNotify = [] { throw std::runtime_error("stay"); };
    EXPECT_THROW(server.DetachClient(&b), std::runtime_error);
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &b, &c));
    EXPECT_EQ(b.count, 2u);
    EXPECT_THAT(heard, ElementsAre("B null"));
}

TEST_F(MaskedServer, ClientMayDetachOthersAndItselfWhileItIsDetached) {
    b.onNotify = [&] { server.DetachClient(&a); };
    server.DetachClient(&b);
    EXPECT_THAT(ClientsOf(server), ElementsAre(&c));
    EXPECT_THAT(heard, ElementsAre("B null", "A null", "A -", "B -"));
    heard.clear();
    bool again = false;
    c.onNotify = [&] {
        if (!std::exchange(again, true)) server.DetachClient(&c);
    };
    server.DetachClient(&c);
    EXPECT_EQ(server.GetSize(), 0);
    EXPECT_THAT(heard, ElementsAre("C null", "C null", "C -"));
    EXPECT_EQ(c.count, 1u);
}

TEST_F(MaskedServer, ClientMayDetachOthersInItsRelease) {
    c.onRelease = [&] { server.DetachClient(&a); };
    server.DetachClient(&c);
    EXPECT_THAT(ClientsOf(server), ElementsAre(&b));
}

TEST_F(NotifyServerTest, EndOfAMaskedServerReleasesItsClientsWithoutAWord) {
    auto server = std::make_unique<NotifyServer>();
    server->AddClient(&a, 1);
    server->AddClient(&b, 1);
    heard.clear();
    b.onRelease = [&, list = server.get()] { EXPECT_EQ(list->Find(&b), -1); };
    server.reset();
    EXPECT_THAT(heard, ElementsAre("A -", "B -"));
}

// ---- Sending to all.

TEST_F(PlainServer, TellsAllFirstToLast) {
    server.Notify(&message);
    EXPECT_THAT(heard, ElementsAre("A", "B", "C"));
    EXPECT_EQ(b.last, &message);
    server.Notify(nullptr);
    EXPECT_THAT(heard, ElementsAre("A", "B", "C", "A null", "B null", "C null"));
}

TEST_F(PlainServer, MaskOfTheMessagePlaysNoPart) {
    server.Notify(&message, 0);
    server.Notify(&message, 4);
    EXPECT_THAT(heard, ElementsAre("A", "B", "C", "A", "B", "C"));
}

TEST_F(MaskedServer, MessageWithoutAMaskGoesToAllFirstToLast) {
    server.Notify(&message);
    EXPECT_THAT(heard, ElementsAre("A", "B", "C"));
}

TEST_F(PlainServer, DisabledServerTellsNobodyUntilItIsEnabled) {
    server.Enable(false);
    server.Notify(&message);
    server.Notify(&message, 1);
    EXPECT_THAT(heard, IsEmpty());
    server.Enable(true);
    server.Notify(&message);
    EXPECT_THAT(heard, ElementsAre("A", "B", "C"));
}

TEST_F(MaskedServer, DisabledServerTellsNobody) {
    server.Enable(false);
    server.Notify(&message);
    server.Notify(&message, 7);
    EXPECT_THAT(heard, IsEmpty());
    server.DetachClient(&a);  // this is no message
    EXPECT_THAT(heard, ElementsAre("A null", "A -"));
}

TEST_F(PlainServer, DisablingMeanwhileLetsTheRoundGoToItsEnd) {
    a.onNotify = [&] { server.Enable(false); };
    server.Notify(&message);
    EXPECT_THAT(heard, ElementsAre("A", "B", "C"));
    server.Notify(&message);
    EXPECT_EQ(heard.size(), 3u);
}

TEST_F(MaskedServer, DisablingMeanwhileLetsTheRoundByMaskGoToItsEnd) {
    c.onNotify = [&] { server.Enable(false); };
    server.Notify(&message, 7);
    EXPECT_THAT(heard, ElementsAre("C", "B", "A"));
    server.Notify(&message, 7);
    EXPECT_EQ(heard.size(), 3u);
}

TEST_F(PlainServer, ThrowerIsRemovedTheNextIsMissedAndTheRoundRunsOut) {
    a.onNotify = [] { throw 1; };
    EXPECT_TRUE(NotifyRaises());
    EXPECT_THAT(heard, ElementsAre("A", "C"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&b, &c));
}

TEST_F(PlainServer, TwoThrowersOfOneRoundAreRemoved) {
    server.AddClient(&d);
    a.onNotify = c.onNotify = [] { throw 1; };
    EXPECT_TRUE(NotifyRaises());
    EXPECT_THAT(heard, ElementsAre("A", "C"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&b, &d));
}

TEST_F(PlainServer, ThrowerInTheMiddleIsRemovedAndTheRoundRunsOut) {
    b.onNotify = [] { throw 1; };
    EXPECT_TRUE(NotifyRaises());
    EXPECT_THAT(heard, ElementsAre("A", "B"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &c));
}

TEST_F(PlainServer, RoundEndsWellWhenTheLastThrows) {
    c.onNotify = [] { throw 1; };
    server.Notify(&message);
    EXPECT_THAT(heard, ElementsAre("A", "B", "C"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &b));
}

TEST_F(MaskedServer, ThrowerOfARoundToAllIsRemovedWithoutARelease) {
    a.onNotify = [] { throw 1; };
    EXPECT_TRUE(NotifyRaises());
    EXPECT_THAT(heard, ElementsAre("A", "C"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&b, &c));
    EXPECT_EQ(a.count, 2u);
}

TEST_F(PlainServer, EverythingThatIsRaisedEndsHere) {
    c.onNotify = [] { throw new CountedException; };
    server.Notify(&message);
    EXPECT_EQ(CountedException::alive, 0);
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &b));
    b.onNotify = [] { throw "text"; };
    server.Notify(&message);
    a.onNotify = [] { AfxThrowInvalidArgException(); };
    server.Notify(&message);
    EXPECT_EQ(server.GetSize(), 0);
}

TEST_F(PlainServer, ClientThatDetachesItselfMakesTheRoundRunOut) {
    a.onNotify = [&] { server.DetachClient(&a); };
    EXPECT_TRUE(NotifyRaises());
    EXPECT_THAT(heard, ElementsAre("A", "C"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&b, &c));
}

TEST_F(PlainServer, LastClientMayDetachItself) {
    c.onNotify = [&] { server.DetachClient(&c); };
    server.Notify(&message);
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &b));
}

TEST_F(PlainServer, ClientThatDetachesOthersMakesTheRoundRunOut) {
    b.onNotify = [&] { server.DetachClient(&a); };
    EXPECT_TRUE(NotifyRaises());
    // C has moved to the place that was told already.
    EXPECT_THAT(heard, ElementsAre("A", "B"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&b, &c));
}

TEST_F(PlainServer, ClientThatDetachesItselfAndThrowsTakesTheNextAlong) {
    a.onNotify = [&] {
        server.DetachClient(&a);
        throw 1;
    };
    EXPECT_TRUE(NotifyRaises());
    EXPECT_THAT(heard, ElementsAre("A"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&c));
}

TEST_F(PlainServer, LastThatDetachesItselfAndThrowsRunsOut) {
    c.onNotify = [&] {
        server.DetachClient(&c);
        throw 1;
    };
    EXPECT_TRUE(NotifyRaises());
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &b));
}

TEST_F(PlainServer, ClientThatIsAddedMeanwhileIsNotTold) {
    b.onNotify = [&] { server.AddClient(&d); };
    server.Notify(&message);
    EXPECT_THAT(heard, ElementsAre("A", "B", "C"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &b, &c, &d));
}

// Detaches itself at the first message that is not the one of being detached, and then runs
// `then`.
void DetachOnMessage(
    NotifyServer& server, NotifyClient& client, std::function<void()> then = [] {}) {
    client.onNotify = [&server, &client, then] {
        if (client.last == nullptr) return;
        server.DetachClient(&client);
        then();
    };
}

void ThrowIt() {
    throw 1;
}

TEST_F(MaskedServer, ClientThatDetachesItselfMakesTheRoundToAllRunOut) {
    DetachOnMessage(server, a);
    EXPECT_TRUE(NotifyRaises());
    EXPECT_THAT(heard, ElementsAre("A", "A null", "A -", "C"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&b, &c));
}

TEST_F(MaskedServer, ClientThatDetachesItselfAndThrowsInARoundToAllTakesTheNextAlong) {
    DetachOnMessage(server, a, ThrowIt);
    EXPECT_TRUE(NotifyRaises());
    EXPECT_THAT(heard, ElementsAre("A", "A null", "A -"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&c));
    EXPECT_EQ(a.count, 1u);
    EXPECT_EQ(b.count, 2u);  // cut off without a release
}

TEST_F(MaskedServer, LastThatDetachesItselfAndThrowsInARoundToAllRunsOut) {
    DetachOnMessage(server, c, ThrowIt);
    EXPECT_TRUE(NotifyRaises());
    EXPECT_THAT(heard, ElementsAre("A", "B", "C", "C null", "C -"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &b));
}

// ---- Sending by mask.

TEST_F(MaskedServer, TellsThoseWhoShareABitLastToFirst) {
    server.Notify(&message, 1);
    EXPECT_THAT(heard, ElementsAre("C", "A"));
    server.Notify(&message, 6);
    EXPECT_THAT(heard, ElementsAre("C", "A", "C", "B"));
    heard.clear();
    server.Notify(&message, 7);
    EXPECT_THAT(heard, ElementsAre("C", "B", "A"));
    EXPECT_EQ(a.last, &message);
    server.Notify(&message, 0);
    server.Notify(&message, 8);
    EXPECT_EQ(heard.size(), 3u);
}

TEST_F(MaskedServer, ThrowerIsRemovedWithoutAReleaseAndTheOthersAreTold) {
    b.onNotify = [] { throw new CountedException; };
    server.Notify(&message, 7);
    EXPECT_THAT(heard, ElementsAre("C", "B", "A"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &c));
    EXPECT_EQ(b.count, 2u);
    EXPECT_EQ(CountedException::alive, 0);
}

TEST_F(MaskedServer, AllMayThrow) {
    for (NotifyClient* client : {&a, &b, &c}) client->onNotify = [] { throw 1; };
    server.Notify(&message, 7);
    EXPECT_THAT(heard, ElementsAre("C", "B", "A"));
    EXPECT_EQ(server.GetSize(), 0);
}

TEST_F(MaskedServer, ClientMayDetachItself) {
    DetachOnMessage(server, b);
    server.Notify(&message, 7);
    EXPECT_THAT(heard, ElementsAre("C", "B", "B null", "B -", "A"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &c));
}

TEST_F(MaskedServer, ClientMayDetachTheOneBehindOrBefore) {
    b.onNotify = [&] { server.DetachClient(&c); };
    server.Notify(&message, 7);
    EXPECT_THAT(heard, ElementsAre("C", "B", "C null", "C -", "A"));
    heard.clear();
    b.onNotify = [&] { server.DetachClient(&a); };
    server.Notify(&message, 7);
    // B has moved to the place of A, and is told a second time.
    EXPECT_THAT(heard, ElementsAre("B", "A null", "A -", "B"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&b));
}

TEST_F(MaskedServer, AsManyAreToldTwiceAsAreDetachedBefore) {
    server.AddClient(&d, 8);
    heard.clear();
    c.onNotify = [&] {
        server.DetachClient(&a);
        server.DetachClient(&b);
    };
    server.Notify(&message, 15);
    EXPECT_THAT(heard, ElementsAre("D", "C", "A null", "A -", "B null", "B -", "D", "C"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&c, &d));
}

TEST_F(MaskedServer, RoundRunsOutWhenTooManyAreGone) {
    c.onNotify = [&] {
        server.DetachClient(&a);
        server.DetachClient(&b);
    };
    EXPECT_TRUE(MaskedNotifyRaises(7));
    EXPECT_THAT(heard, ElementsAre("C", "A null", "A -", "B null", "B -"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&c));
}

TEST_F(MaskedServer, ClientThatDetachesItselfAndThrowsTakesTheOneInItsPlaceAlong) {
    DetachOnMessage(server, b, ThrowIt);
    server.Notify(&message, 7);
    EXPECT_THAT(heard, ElementsAre("C", "B", "B null", "B -", "A"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a));
    EXPECT_EQ(c.count, 2u);  // cut off without a release
}

TEST_F(MaskedServer, LastThatDetachesItselfAndThrowsRunsOut) {
    DetachOnMessage(server, c, ThrowIt);
    EXPECT_TRUE(MaskedNotifyRaises(7));
    EXPECT_THAT(heard, ElementsAre("C", "C null", "C -"));
    EXPECT_THAT(ClientsOf(server), ElementsAre(&a, &b));
}

}  // namespace
}  // namespace ZT
