// How nodes move within a list and from list to list.

#include <platform/object/CInvalidArgException.h>
#include <platform/object/CMemoryException.h>
#include <tests/Raises.h>
#include <zt/containers/HXPtrListBase2_test.h>

#include <cstdint>

namespace {

using namespace testing_support;
using testing::ElementsAre;
using testing::IsEmpty;

using HXPtrListBase2Move = ItemLists;

// The positions of a list, in order.
std::vector<POSITION> Positions(const CPtrList& list) {
    std::vector<POSITION> positions;
    for (POSITION pos = list.GetHeadPosition(); pos != nullptr; list.GetNext(pos)) {
        positions.push_back(pos);
    }
    return positions;
}

TEST_F(HXPtrListBase2Move, ExtendTakesOverNodesBlocksAndFreeNodes) {
    Fill(list, {1, 2});
    Fill(other, {3, 4, 5});
    other.m_nBlockSize = 12;
    CPlex* const ours = list.m_pBlocks;
    CPlex* const theirs = other.m_pBlocks;
    auto* const freeNode = other.m_pNodeFree;
    std::vector<POSITION> positions = Positions(list);
    for (const POSITION pos : Positions(other)) positions.push_back(pos);

    list.Extend(&other);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_EQ(Positions(list), positions);
    EXPECT_EQ(list.m_pBlocks, theirs);
    EXPECT_EQ(theirs->pNext, ours);
    EXPECT_EQ(ours->pNext, nullptr);
    EXPECT_EQ(list.m_pNodeFree, freeNode);
    // The eight free nodes of the first list are lost until its blocks go.
    EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 2, .listed = 5, .free = 7, .lost = 8}));

    EXPECT_EQ(other.Ledger(), NodeLedger());
    EXPECT_EQ(other.m_pNodeHead, nullptr);
    EXPECT_EQ(other.m_pNodeTail, nullptr);
    EXPECT_EQ(other.m_nCount, 0);
    EXPECT_EQ(other.m_nBlockSize, 12);
    EXPECT_EQ(list.m_nBlockSize, 10);
}

TEST_F(HXPtrListBase2Move, ExtendJoinsChainsOfSeveralBlocks) {
    for (int i = 1; i <= 11; ++i) Fill(list, {i});
    for (int i = 12; i <= 32; ++i) Fill(other, {i});
    CPlex* const oldest = list.GetFirstBlock();
    list.Extend(&other);
    EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 5, .listed = 32, .free = 9, .lost = 9}));
    EXPECT_EQ(list.GetFirstBlock(), oldest);
    EXPECT_EQ(Numbers(list).back(), 32);
}

TEST_F(HXPtrListBase2Move, ExtendedListUsesTheFreeNodesThatItGot) {
    Fill(list, {1});
    Fill(other, {2});
    list.Extend(&other);
    for (int i = 3; i <= 11; ++i) Fill(list, {i});
    EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 2, .listed = 11, .lost = 9}));
    Fill(list, {12});
    EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 3, .listed = 12, .free = 9, .lost = 9}));
}

TEST_F(HXPtrListBase2Move, ExtendOfAnEmptyListTakesAll) {
    Fill(other, {1, 2});
    list.Extend(&other);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2));
    EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 1, .listed = 2, .free = 8}));
    Fill(other, {3});
    EXPECT_THAT(Numbers(other), ElementsAre(3));
}

TEST_F(HXPtrListBase2Move, ExtendByNothingDoesNothing) {
    Fill(list, {1, 2});
    list.Extend(nullptr);
    list.Extend(&other);
    list.Extend(&list);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2));
    EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 1, .listed = 2, .free = 8}));
}

TEST_F(HXPtrListBase2Move, MoveAttributesTakesOverAllFields) {
    Fill(other, {1, 2, 3});
    other.m_nBlockSize = 7;
    const ItemList::Node* const head = other.m_pNodeHead;
    const ItemList::Node* const tail = other.m_pNodeTail;
    const ItemList::Node* const freeNode = other.m_pNodeFree;
    const CPlex* const blocks = other.m_pBlocks;
    list.MoveAttributes(other);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3));
    EXPECT_EQ(list.m_pNodeHead, head);
    EXPECT_EQ(list.m_pNodeTail, tail);
    EXPECT_EQ(list.m_pNodeFree, freeNode);
    EXPECT_EQ(list.m_pBlocks, blocks);
    EXPECT_EQ(list.m_nBlockSize, 7);

    EXPECT_EQ(other.m_pNodeHead, nullptr);
    EXPECT_EQ(other.m_pNodeTail, nullptr);
    EXPECT_EQ(other.m_nCount, 0);
    EXPECT_EQ(other.m_pNodeFree, nullptr);
    EXPECT_EQ(other.m_pBlocks, nullptr);
    EXPECT_EQ(other.m_nBlockSize, 7);
}

TEST_F(HXPtrListBase2Move, MoveAttributesDoesNotFreeWhatTheListHeld) {
    Fill(list, {8, 9});
    Fill(other, {1});
    ItemList keeper;
    keeper.Adopt(list);
    list.MoveAttributes(other);
    EXPECT_THAT(Numbers(list), ElementsAre(1));
    EXPECT_THAT(Numbers(keeper), ElementsAre(8, 9));
    EXPECT_EQ(keeper.Ledger(), (NodeLedger{.blocks = 1, .listed = 2, .free = 8}));
}

TEST_F(HXPtrListBase2Move, MoveAttributesOfAnEmptyListEmpties) {
    Fill(list, {8, 9});
    ItemList keeper;
    keeper.Adopt(list);
    list.MoveAttributes(other);
    EXPECT_EQ(list.Ledger(), NodeLedger());
    EXPECT_TRUE(list.IsEmpty());
}

// Moves a run of (1, 2, 3, 4, 5), given by indices; -1 is no position.
struct HXPtrListBase2Run : ItemLists {
    HXPtrListBase2Run() { Fill(list, {1, 2, 3, 4, 5}); }

    POSITION Place(int index) const { return index < 0 ? nullptr : At(list, index); }

    std::vector<int> ToHead(int first, int last) {
        list.MoveToHead(Place(first), Place(last));
        EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 1, .listed = 5, .free = 5}));
        return Numbers(list);
    }
    std::vector<int> ToTail(int first, int last) {
        list.MoveToTail(Place(first), Place(last));
        EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 1, .listed = 5, .free = 5}));
        return Numbers(list);
    }
};

TEST_F(HXPtrListBase2Run, InTheMiddleMovesToTheHead) {
    EXPECT_THAT(ToHead(1, 2), ElementsAre(2, 3, 1, 4, 5));
}
TEST_F(HXPtrListBase2Run, OfOneMovesToTheHead) {
    EXPECT_THAT(ToHead(3, 3), ElementsAre(4, 1, 2, 3, 5));
}
TEST_F(HXPtrListBase2Run, AtTheTailMovesToTheHead) {
    EXPECT_THAT(ToHead(3, 4), ElementsAre(4, 5, 1, 2, 3));
    EXPECT_THAT(ToHead(4, 4), ElementsAre(3, 4, 5, 1, 2));
}
TEST_F(HXPtrListBase2Run, WithoutALastReachesToTheTailWhenItMovesToTheHead) {
    EXPECT_THAT(ToHead(2, -1), ElementsAre(3, 4, 5, 1, 2));
}
TEST_F(HXPtrListBase2Run, AllButTheHeadMovesToTheHead) {
    EXPECT_THAT(ToHead(1, 4), ElementsAre(2, 3, 4, 5, 1));
}
TEST_F(HXPtrListBase2Run, FromTheHeadOrNowhereDoesNotMoveToTheHead) {
    EXPECT_THAT(ToHead(0, 2), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(ToHead(0, -1), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(ToHead(-1, 2), ElementsAre(1, 2, 3, 4, 5));
}
TEST_F(HXPtrListBase2Run, OfAnotherListDoesNotMoveToTheHeadOfAnEmptyOne) {
    other.MoveToHead(Place(1), Place(2));
    EXPECT_TRUE(other.IsEmpty());
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(HXPtrListBase2Run, InTheMiddleMovesToTheTail) {
    EXPECT_THAT(ToTail(1, 2), ElementsAre(1, 4, 5, 2, 3));
}
TEST_F(HXPtrListBase2Run, OfOneMovesToTheTail) {
    EXPECT_THAT(ToTail(1, 1), ElementsAre(1, 3, 4, 5, 2));
}
TEST_F(HXPtrListBase2Run, AtTheHeadMovesToTheTail) {
    EXPECT_THAT(ToTail(0, 1), ElementsAre(3, 4, 5, 1, 2));
    EXPECT_THAT(ToTail(0, 0), ElementsAre(4, 5, 1, 2, 3));
}
TEST_F(HXPtrListBase2Run, WithoutAFirstReachesFromTheHeadWhenItMovesToTheTail) {
    EXPECT_THAT(ToTail(-1, 2), ElementsAre(4, 5, 1, 2, 3));
}
TEST_F(HXPtrListBase2Run, AllButTheTailMovesToTheTail) {
    EXPECT_THAT(ToTail(0, 3), ElementsAre(5, 1, 2, 3, 4));
}
TEST_F(HXPtrListBase2Run, AtTheTailDoesNotMoveThere) {
    EXPECT_THAT(ToTail(2, 4), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(ToTail(-1, 4), ElementsAre(1, 2, 3, 4, 5));
}
TEST_F(HXPtrListBase2Run, WithoutALastRaisesOnTheWayToTheTail) {
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.MoveToTail(Place(1), nullptr); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.MoveToTail(nullptr, nullptr); }));
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3, 4, 5));
}
TEST_F(HXPtrListBase2Run, DoesNotMoveToTheTailOfAnEmptyList) {
    other.MoveToTail(Place(1), Place(2));
    other.MoveToTail(nullptr, nullptr);
    EXPECT_TRUE(other.IsEmpty());
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3, 4, 5));
}
TEST_F(HXPtrListBase2Run, KeepsItsPositionsWhenItMoves) {
    const POSITION second = At(list, 1);
    const POSITION third = At(list, 2);
    list.MoveToHead(second, third);
    EXPECT_EQ(At(list, 0), second);
    EXPECT_EQ(At(list, 1), third);
    list.MoveToTail(second, third);
    EXPECT_EQ(At(list, 3), second);
    EXPECT_EQ(At(list, 4), third);
}

TEST_F(HXPtrListBase2Run, MovesToAnotherList) {
    Fill(other, {9});
    other.MoveCyclic(list, Place(1), Place(3));
    EXPECT_THAT(Numbers(other), ElementsAre(9, 2, 3, 4));
    EXPECT_THAT(Numbers(list), ElementsAre(1, 5));
    EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 1, .listed = 2, .free = 8}));
    EXPECT_EQ(other.Ledger(), (NodeLedger{.blocks = 1, .listed = 4, .free = 6}));
}
TEST_F(HXPtrListBase2Run, MovesToAnotherListPastTheTail) {
    other.MoveCyclic(list, Place(3), Place(1));
    EXPECT_THAT(Numbers(other), ElementsAre(4, 5, 1, 2));
    EXPECT_THAT(Numbers(list), ElementsAre(3));
}
TEST_F(HXPtrListBase2Run, OfTheWholeLoopMovesToAnotherList) {
    other.MoveCyclic(list, Place(2), Place(1));
    EXPECT_THAT(Numbers(other), ElementsAre(3, 4, 5, 1, 2));
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.Ledger(), NodeLedger());
}
TEST_F(HXPtrListBase2Run, OfOneMovesToAnotherList) {
    other.MoveCyclic(list, Place(4), Place(4));
    EXPECT_THAT(Numbers(other), ElementsAre(5));
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3, 4));
}
TEST_F(HXPtrListBase2Run, WithoutALastMovesToAnotherListUpToTheTail) {
    other.MoveCyclic(list, Place(3), nullptr);
    EXPECT_THAT(Numbers(other), ElementsAre(4, 5));
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3));
}
TEST_F(HXPtrListBase2Run, FromNowhereDoesNotMoveToAnotherList) {
    other.MoveCyclic(list, nullptr, Place(2));
    other.MoveCyclic(list, nullptr, nullptr);
    EXPECT_TRUE(other.IsEmpty());
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3, 4, 5));
}
TEST_F(HXPtrListBase2Run, WhoseLastIsElsewhereMovesToAnotherListWhole) {
    Fill(other, {9});
    other.MoveCyclic(list, Place(1), At(other, 0));
    EXPECT_THAT(Numbers(other), ElementsAre(9, 2, 3, 4, 5, 1));
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(HXPtrListBase2Run, TurnsRound) {
    std::vector<POSITION> positions = Positions(list);
    list.Reverse();
    EXPECT_THAT(Numbers(list), ElementsAre(5, 4, 3, 2, 1));
    std::reverse(positions.begin(), positions.end());
    EXPECT_EQ(Positions(list), positions);
    EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 1, .listed = 5, .free = 5}));
    other.Reverse();
    EXPECT_TRUE(other.IsEmpty());
    Fill(other, {1});
    other.Reverse();
    EXPECT_THAT(Numbers(other), ElementsAre(1));
}

std::vector<int> Forward(const CPtrList& list) {
    std::vector<int> numbers;
    for (const void* element : list) numbers.push_back(NumberOf(element));
    return numbers;
}

std::vector<int> Backward(const CPtrList& list) {
    std::vector<int> numbers;
    for (POSITION pos = list.GetTailPosition(); pos != nullptr;) {
        numbers.push_back(NumberOf(list.GetPrev(pos)));
    }
    return numbers;
}

// The insertion of a list takes that list's positions for its own. What comes of it is of no
// use, but it is what it does.
TEST_F(HXPtrListBase2Move, InsertedListGetsTheNewNodesItself) {
    Fill(list, {7, 8});
    Fill(other, {1, 2, 3});
    list.InsertList(At(list, 1), false, &other);
    EXPECT_THAT(Forward(other), ElementsAre(1, 1, 2, 2, 3));
    EXPECT_THAT(Backward(other), ElementsAre(3, 2, 2, 1, 1));
    EXPECT_EQ(other.GetCount(), 3);
    EXPECT_THAT(Forward(list), ElementsAre(3, 7, 8));
    EXPECT_THAT(Backward(list), ElementsAre(8, 7, 3));
    EXPECT_EQ(list.GetCount(), 5);
    // The two nodes between are this list's. The other one holds them too.
    EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 1, .listed = 3, .free = 5, .lost = 2}));
    EXPECT_EQ(other.Ledger(), (NodeLedger{.blocks = 1, .listed = 5, .free = 7, .foreign = 2}));
}

TEST_F(HXPtrListBase2Move, InsertedListOfOneComesToTheHead) {
    Fill(other, {1});
    list.InsertList(nullptr, false, &other);
    EXPECT_THAT(Numbers(list), ElementsAre(1));
    EXPECT_THAT(Numbers(other), ElementsAre(1));
    Fill(list, {2});
    list.InsertList(At(list, 1), false, &other);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 1, 2));
}

TEST_F(HXPtrListBase2Move, InsertionOfNoListDoesNothing) {
    Fill(list, {7, 8});
    for (const bool after : {false, true}) {
        list.InsertList(At(list, 0), after, nullptr);
        list.InsertList(At(list, 0), after, &other);
    }
    EXPECT_THAT(Numbers(list), ElementsAre(7, 8));
}

// Where no further block can be had, the walk that does not end comes to one.
TEST_F(HXPtrListBase2Move, InsertionBehindEndsOnlyWithTheMemory) {
    Fill(list, {7, 8, 9, 10});
    list.m_nBlockSize = PTRDIFF_MAX;
    Fill(other, {1, 2});
    EXPECT_TRUE(Raises<CMemoryException>([&] { list.InsertList(nullptr, true, &other); }));
    EXPECT_EQ(list.GetCount(), 10);
    EXPECT_EQ(list.m_pNodeFree, nullptr);
    EXPECT_THAT(Forward(other), ElementsAre(1, 2, 1, 1, 1, 1, 1, 1));
    EXPECT_THAT(Forward(list), ElementsAre(7, 8, 9, 10));
}

}  // namespace
