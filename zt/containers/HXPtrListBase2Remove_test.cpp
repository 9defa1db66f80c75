// How elements are destroyed, released or taken out.

#include <zt/containers/HXPtrListBase2_test.h>
#include <zt/frame/RefObj.h>

namespace {

using namespace testing_support;
using testing::ElementsAre;
using testing::IsEmpty;

// Keeps what it is to delete.
class KeepingList : public ItemList {
public:
    void DeleteElement(Item* p) override {
        deleted.push_back(NumberOf(p));
        counts.push_back(GetCount());
        heads.push_back(NumberOf(GetHead()));
    }

    std::vector<int> deleted;
    std::vector<INT_PTR> counts;
    std::vector<int> heads;
};

struct HXPtrListBase2Remove : ItemLists {
    KeepingList keeping;
};

TEST_F(HXPtrListBase2Remove, ClearDestroysElementsAndFreesTheNodes) {
    FillFromHeap(list, {1, 0, 2, 3});
    list.Clear();
    EXPECT_THAT(ended, ElementsAre(1, 2, 3));
    EXPECT_EQ(list.Ledger(), NodeLedger());
    EXPECT_TRUE(list.IsEmpty());
    list.Clear();
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(HXPtrListBase2Remove, ClearDoesNotAskTheVirtualOperation) {
    FillFromHeap(keeping, {1, 2});
    keeping.Clear();
    EXPECT_THAT(keeping.deleted, IsEmpty());
    EXPECT_THAT(ended, ElementsAre(1, 2));
}

TEST_F(HXPtrListBase2Remove, DeleteAllHandsEachElementOverBeforeItTakesItOut) {
    Fill(keeping, {1, 0, 2});
    keeping.DeleteAll();
    EXPECT_THAT(keeping.deleted, ElementsAre(1, 0, 2));
    EXPECT_THAT(keeping.counts, ElementsAre(3, 2, 1));
    EXPECT_THAT(keeping.heads, ElementsAre(1, 0, 2));
    EXPECT_EQ(keeping.Ledger(), NodeLedger());
}

TEST_F(HXPtrListBase2Remove, DeleteAllDestroysElements) {
    FillFromHeap(list, {1, 0, 2});
    list.DeleteAll();
    EXPECT_THAT(ended, ElementsAre(1, 2));
    EXPECT_TRUE(list.IsEmpty());
    list.DeleteAll();
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(HXPtrListBase2Remove, DeleteTakesARun) {
    Fill(keeping, {1, 2, 3, 4, 5});
    keeping.Delete(At(keeping, 1), At(keeping, 3), false);
    EXPECT_THAT(keeping.deleted, ElementsAre(2, 3, 4));
    EXPECT_THAT(keeping.counts, ElementsAre(5, 4, 3));
    EXPECT_THAT(Numbers(keeping), ElementsAre(1, 5));
    EXPECT_EQ(keeping.Ledger(), (NodeLedger{.blocks = 1, .listed = 2, .free = 8}));
}

TEST_F(HXPtrListBase2Remove, DeleteDestroysElements) {
    FillFromHeap(list, {1, 2, 3});
    list.Delete(At(list, 0), At(list, 1), false);
    EXPECT_THAT(ended, ElementsAre(1, 2));
    list.Delete(At(list, 0), At(list, 0), true);
    EXPECT_THAT(ended, ElementsAre(1, 2, 3));
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(HXPtrListBase2Remove, DeleteFromNowhereDoesNothing) {
    Fill(keeping, {1, 2});
    keeping.Delete(nullptr, At(keeping, 1), false);
    keeping.Delete(nullptr, nullptr, true);
    EXPECT_THAT(Numbers(keeping), ElementsAre(1, 2));
    EXPECT_THAT(keeping.deleted, IsEmpty());
}

TEST_F(HXPtrListBase2Remove, DeleteWithoutALastGoesToTheTail) {
    Fill(keeping, {1, 2, 3});
    keeping.Delete(At(keeping, 1), nullptr, false);
    EXPECT_THAT(keeping.deleted, ElementsAre(2, 3));
    EXPECT_THAT(Numbers(keeping), ElementsAre(1));
}

TEST_F(HXPtrListBase2Remove, CyclicDeleteWithoutALastStopsAtTheTail) {
    Fill(keeping, {1, 2, 3});
    keeping.Delete(At(keeping, 1), nullptr, true);
    EXPECT_THAT(keeping.deleted, ElementsAre(2, 3));
    EXPECT_THAT(Numbers(keeping), ElementsAre(1));
}

TEST_F(HXPtrListBase2Remove, CyclicDeletePassesTheTail) {
    Fill(keeping, {1, 2, 3, 4, 5});
    keeping.Delete(At(keeping, 3), At(keeping, 1), true);
    EXPECT_THAT(keeping.deleted, ElementsAre(4, 5, 1, 2));
    EXPECT_THAT(Numbers(keeping), ElementsAre(3));
}

TEST_F(HXPtrListBase2Remove, PlainDeleteEndsAtTheTail) {
    Fill(keeping, {1, 2, 3, 4, 5});
    keeping.Delete(At(keeping, 3), At(keeping, 1), false);
    EXPECT_THAT(keeping.deleted, ElementsAre(4, 5));
    EXPECT_THAT(Numbers(keeping), ElementsAre(1, 2, 3));
}

TEST_F(HXPtrListBase2Remove, CyclicDeleteToAPlaceElsewhereEndsWithTheLastElement) {
    Fill(keeping, {1, 2, 3});
    Fill(other, {9});
    keeping.Delete(At(keeping, 1), At(other, 0), true);
    EXPECT_THAT(keeping.deleted, ElementsAre(2, 3, 1));
    EXPECT_TRUE(keeping.IsEmpty());
    EXPECT_EQ(keeping.Ledger(), NodeLedger());
}

TEST_F(HXPtrListBase2Remove, CyclicDeleteRoundTheWholeList) {
    Fill(keeping, {1, 2, 3});
    keeping.Delete(At(keeping, 2), At(keeping, 1), true);
    EXPECT_THAT(keeping.deleted, ElementsAre(3, 1, 2));
    EXPECT_TRUE(keeping.IsEmpty());
}

TEST_F(HXPtrListBase2Remove, CyclicDeleteOfOneElement) {
    Fill(keeping, {1, 2, 3});
    keeping.Delete(At(keeping, 1), At(keeping, 1), true);
    EXPECT_THAT(keeping.deleted, ElementsAre(2));
    EXPECT_THAT(Numbers(keeping), ElementsAre(1, 3));
}

TEST_F(HXPtrListBase2Remove, RemovesTheFirstOfEqualElements) {
    Fill(list, {1, 2, 1, 2});
    const POSITION second = At(list, 1);
    EXPECT_EQ(list.Remove(Of(2)), second);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 1, 2));
    EXPECT_EQ(list.Remove(Of(5)), nullptr);
    EXPECT_EQ(list.Remove(static_cast<Item*>(nullptr)), nullptr);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 1, 2));
}

TEST_F(HXPtrListBase2Remove, RemovedElementLives) {
    items[0]->ended = &ended;
    Fill(list, {1});
    EXPECT_NE(list.Remove(Of(1)), nullptr);
    EXPECT_THAT(ended, IsEmpty());
    EXPECT_EQ(list.Ledger(), NodeLedger());
    Fill(list, {1, 2});
    list.Remove(nullptr, nullptr);
    EXPECT_THAT(ended, IsEmpty());
    items[0]->ended = nullptr;
}

TEST_F(HXPtrListBase2Remove, RemovesARun) {
    Fill(list, {1, 2, 3, 4, 5});
    list.Remove(At(list, 1), At(list, 2));
    EXPECT_THAT(Numbers(list), ElementsAre(1, 4, 5));
    EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 1, .listed = 3, .free = 7}));
    list.Remove(At(list, 1), At(list, 1));
    EXPECT_THAT(Numbers(list), ElementsAre(1, 5));
}

TEST_F(HXPtrListBase2Remove, RemovesFromTheHeadOrToTheEnd) {
    Fill(list, {1, 2, 3, 4, 5});
    list.Remove(nullptr, At(list, 1));
    EXPECT_THAT(Numbers(list), ElementsAre(3, 4, 5));
    list.Remove(At(list, 1), nullptr);
    EXPECT_THAT(Numbers(list), ElementsAre(3));
    list.Remove(nullptr, nullptr);
    EXPECT_TRUE(list.IsEmpty());
    list.Remove(nullptr, nullptr);
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(HXPtrListBase2Remove, RemovedRunWhoseLastStandsBeforeGoesToTheEnd) {
    Fill(list, {1, 2, 3, 4});
    list.Remove(At(list, 2), At(list, 0));
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2));
}

TEST_F(HXPtrListBase2Remove, SetEmptyLetsGoOfEverything) {
    Fill(list, {1, 2, 3});
    list.m_nBlockSize = 11;
    ItemList keeper;
    keeper.Adopt(list);
    list.SetEmpty();
    EXPECT_EQ(list.m_pNodeHead, nullptr);
    EXPECT_EQ(list.m_pNodeTail, nullptr);
    EXPECT_EQ(list.m_nCount, 0);
    EXPECT_EQ(list.m_pNodeFree, nullptr);
    EXPECT_EQ(list.m_pBlocks, nullptr);
    EXPECT_EQ(list.m_nBlockSize, 11);
    // Nothing was freed: the keeper has it all, and frees it.
    EXPECT_THAT(Numbers(keeper), ElementsAre(1, 2, 3));
    EXPECT_EQ(keeper.Ledger(), (NodeLedger{.blocks = 1, .listed = 3, .free = 7}));
}

// An object that notes its references and is never deleted by them.
class Counted : public ZT::RefObj {
public:
    Counted() { SetByVal(true, false); }
    using RefObj::GetRef;
};

TEST_F(HXPtrListBase2Remove, ReleasesEachElementAndEmptiesTheList) {
    Counted first;
    Counted second;
    first.AddRef();
    ZT::HXPtrListBase2<Counted> objects;
    for (Counted* object : {&first, static_cast<Counted*>(nullptr), &second, &first}) {
        objects.Add(object, false);
    }
    objects.ReleaseAllRefObj();
    EXPECT_EQ(first.GetRef(), 0U);
    EXPECT_EQ(second.GetRef(), 0U);
    EXPECT_TRUE(objects.IsEmpty());
}

TEST_F(HXPtrListBase2Remove, LastReferenceDeletesTheElement) {
    struct Noting : ZT::RefObj {
        explicit Noting(std::vector<int>* log) : ended(log) {}
        ~Noting() override { ended->push_back(1); }
        std::vector<int>* ended;
    };
    ZT::HXPtrListBase2<Noting> objects;
    objects.Add(new Noting(&ended), false);
    objects.ReleaseAllRefObj();
    EXPECT_THAT(ended, ElementsAre(1));
}

}  // namespace
