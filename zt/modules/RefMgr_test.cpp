#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zt/interfaces/IQueryClient.h>
#include <zt/modules/RefMgr.h>
#include <zt/frame/VirtualTable_test.hpp>

#include <functional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;

std::vector<std::string> told;

class QueryClient final : public IQueryClient {
public:
    explicit QueryClient(std::string itsName) : name(std::move(itsName)) {}

    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override {
        told.push_back(name + " +");
        return 2;
    }
    ULONG Release() override {
        told.push_back(name + " -");
        return 1;
    }
    HRESULT Reserved() override {
        told.push_back(name + " reserved");
        return E_FAIL;
    }
    HRESULT OnFinalRelease(void* a, void* b) override {
        told.push_back(name);
        lastA = a;
        lastB = b;
        onTold();
        return E_FAIL;
    }

    std::string name;
    void* lastA = nullptr;
    void* lastB = nullptr;
    std::function<void()> onTold = [] {};
};

struct RefMgrTest : testing::Test {
    QueryClient a{"A"}, b{"B"}, c{"C"}, d{"D"};
    RefMgr clients;
    int first = 0, second = 0;

    RefMgrTest() {
        told.clear();
        for (QueryClient* client : {&a, &b, &c}) clients.AddClient(client);
    }
    void Tell() { clients.OnFinalRelease(&first, &second); }
};

TEST_F(RefMgrTest, IsAnArrayOfPointers) {
    EXPECT_EQ(sizeof(RefMgr), sizeof(CPtrArray));
    EXPECT_TRUE((std::is_base_of_v<CPtrArray, RefMgr>));
    EXPECT_EQ(RefMgr().GetSize(), 0);
    EXPECT_EQ(clients.GetAt(1), static_cast<IQueryClient*>(&b));
}

TEST_F(RefMgrTest, FinalReleaseStandsBehindOneFurtherOperation) {
    IQueryClient* const client = &a;
    EXPECT_EQ((CallSlot<HRESULT, void*, void*>(client, 4, &first, &second)), E_FAIL);
    EXPECT_THAT(told, ElementsAre("A"));
    EXPECT_EQ(a.lastA, &first);
    EXPECT_EQ(a.lastB, &second);
}

TEST_F(RefMgrTest, AddsAClientOnceWithoutAReference) {
    clients.AddClient(&b);
    EXPECT_EQ(clients.GetSize(), 3);
    EXPECT_EQ(clients.Find(&a), 0);
    EXPECT_EQ(clients.Find(&c), 2);
    EXPECT_EQ(clients.Find(&d), -1);
    EXPECT_TRUE(told.empty());
}

TEST_F(RefMgrTest, RemovesAClientThatIsThere) {
    EXPECT_TRUE(clients.RemoveClient(&b));
    EXPECT_FALSE(clients.RemoveClient(&b));
    EXPECT_EQ(clients.GetSize(), 2);
    EXPECT_EQ(clients.Find(&c), 1);
    EXPECT_TRUE(told.empty());
}

TEST_F(RefMgrTest, NullIsAClientThatIsNeverTold) {
    EXPECT_EQ(clients.Find(nullptr), -1);
    clients.AddClient(nullptr);
    clients.AddClient(nullptr);
    clients.AddClient(&d);
    EXPECT_EQ(clients.GetSize(), 5);
    EXPECT_EQ(clients.Find(nullptr), 3);
    Tell();
    EXPECT_THAT(told, ElementsAre("A", "B", "C", "D"));
    EXPECT_TRUE(clients.RemoveClient(nullptr));
    EXPECT_EQ(clients.Find(nullptr), -1);
}

TEST_F(RefMgrTest, TellsAllInTheirOrder) {
    Tell();
    EXPECT_THAT(told, ElementsAre("A", "B", "C"));
    EXPECT_EQ(c.lastA, &first);
    EXPECT_EQ(c.lastB, &second);
}

TEST_F(RefMgrTest, ClientThatRemovesItselfCostsTheNextItsTurn) {
    a.onTold = [&] { clients.RemoveClient(&a); };
    Tell();
    EXPECT_THAT(told, ElementsAre("A", "C"));
    EXPECT_EQ(clients.GetSize(), 2);
}

TEST_F(RefMgrTest, RoundEndsWhereTheListEndsByThen) {
    a.onTold = [&] {
        clients.RemoveClient(&b);
        clients.RemoveClient(&c);
    };
    Tell();
    EXPECT_THAT(told, ElementsAre("A"));
}

TEST_F(RefMgrTest, ClientThatIsAddedMeanwhileIsTold) {
    c.onTold = [&] { clients.AddClient(&d); };
    Tell();
    EXPECT_THAT(told, ElementsAre("A", "B", "C", "D"));
}

TEST_F(RefMgrTest, ExceptionEndsTheRoundAndKeepsTheClient) {
    b.onTold = [] { throw std::runtime_error("no"); };
    EXPECT_THROW(Tell(), std::runtime_error);
    EXPECT_THAT(told, ElementsAre("A", "B"));
    EXPECT_EQ(clients.GetSize(), 3);
}

TEST_F(RefMgrTest, EndTellsNobody) {
    {
        RefMgr others;
        others.AddClient(&a);
    }
    EXPECT_TRUE(told.empty());
}

}  // namespace
}  // namespace ZT
