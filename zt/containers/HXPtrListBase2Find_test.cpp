// What a list answers about its elements, positions, runs and contents.

#include <platform/object/CInvalidArgException.h>
#include <tests/Raises.h>
#include <zt/containers/HXPtrListBase2_test.h>

#include <cstdint>
#include <type_traits>

namespace {

using namespace testing_support;
using testing::ElementsAre;

// A list of (1, 2, 3, 2, 4), and an empty one.
struct HXPtrListBase2Find : ItemLists {
    HXPtrListBase2Find() { Fill(list, {1, 2, 3, 2, 4}); }

    POSITION Place(int index) const { return index < 0 ? nullptr : At(list, index); }
};

TEST_F(HXPtrListBase2Find, ElementsAtTheEnds) {
    EXPECT_EQ(list.GetHead(), Of(1));
    EXPECT_EQ(list.GetTail(), Of(4));
    EXPECT_EQ(list.GetEnd(true), Of(4));
    EXPECT_EQ(list.GetEnd(false), Of(1));
    EXPECT_TRUE((std::is_same_v<decltype(list.GetHead()), Item*>));
}

TEST_F(HXPtrListBase2Find, EmptyListHasNoElementsAtItsEnds) {
    EXPECT_EQ(other.GetEnd(true), nullptr);
    EXPECT_EQ(other.GetEnd(false), nullptr);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { other.GetHead(); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { other.GetTail(); }));
}

TEST_F(HXPtrListBase2Find, ElementAtAPosition) {
    EXPECT_EQ(list.GetAt(Place(2)), Of(3));
    EXPECT_EQ(list.GetAtVirt(Place(4)), Of(4));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.GetAt(nullptr); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.GetAtVirt(nullptr); }));
}

TEST_F(HXPtrListBase2Find, StepsEndInNullAtEitherEnd) {
    POSITION pos = Place(3);
    EXPECT_EQ(list.GetNext(pos), Of(2));
    EXPECT_EQ(pos, Place(4));
    EXPECT_EQ(list.GetNext(pos), Of(4));
    EXPECT_EQ(pos, nullptr);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.GetNext(pos); }));

    pos = Place(1);
    EXPECT_EQ(list.GetPrev(pos), Of(2));
    EXPECT_EQ(pos, Place(0));
    EXPECT_EQ(list.GetPrev(pos), Of(1));
    EXPECT_EQ(pos, nullptr);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.GetPrev(pos); }));
}

TEST_F(HXPtrListBase2Find, IsWalkedByRangeFor) {
    std::vector<int> numbers;
    for (Item* item : list) numbers.push_back(item->number);
    EXPECT_THAT(numbers, ElementsAre(1, 2, 3, 2, 4));
}

TEST_F(HXPtrListBase2Find, ElementAtAnIndex) {
    EXPECT_EQ(list.GetAtIndex(0), Of(1));
    EXPECT_EQ(list.GetAtIndex(4), Of(4));
    EXPECT_EQ(list.GetAtIndex(5), nullptr);
    EXPECT_EQ(list.GetAtIndex(-1), nullptr);
    EXPECT_EQ(other.GetAtIndex(0), nullptr);
}

TEST_F(HXPtrListBase2Find, IndexOfTheFirstOfEqualElements) {
    EXPECT_EQ(list.FindIndex(Of(1)), 0);
    EXPECT_EQ(list.FindIndex(Of(2)), 1);
    EXPECT_EQ(list.FindIndex(Of(4)), 4);
    EXPECT_EQ(list.FindIndex(Of(5)), -1);
    EXPECT_EQ(list.FindIndex(nullptr), -1);
    EXPECT_EQ(list.GetIndex(Of(2)), 1);
    EXPECT_EQ(list.GetIndex(Of(5)), -1);
    EXPECT_EQ(other.FindIndex(Of(1)), -1);
    Fill(list, {0});
    EXPECT_EQ(list.FindIndex(nullptr), 5);
}

// The search for an element has taken the name from the way to an index.
TEST_F(HXPtrListBase2Find, IndexOfZeroIsTheSearchForNull) {
    EXPECT_EQ(list.FindIndex(0), -1);
    EXPECT_EQ(list.IndexToPosition(0), list.GetHeadPosition());
    EXPECT_EQ(list.CPtrList::FindIndex(0), list.GetHeadPosition());
}

TEST_F(HXPtrListBase2Find, FindItemBeginsAtTheHeadWhateverTheStart) {
    unsigned int index = 77;
    EXPECT_EQ(list.FindItem(Of(1), Place(3), &index), Place(0));
    EXPECT_EQ(index, 0U);
    EXPECT_EQ(list.FindItem(Of(2), Place(2), &index), Place(1));
    EXPECT_EQ(index, 1U);
    EXPECT_EQ(list.FindItem(Of(4), nullptr, &index), Place(4));
    EXPECT_EQ(index, 4U);
    EXPECT_EQ(list.FindItem(Of(3)), Place(2));
}

TEST_F(HXPtrListBase2Find, FindItemThatFailsLeavesAllBitsSet) {
    unsigned int index = 77;
    EXPECT_EQ(list.FindItem(Of(5), nullptr, &index), nullptr);
    EXPECT_EQ(index, 0xFFFFFFFFU);
    index = 77;
    EXPECT_EQ(other.FindItem(Of(1), nullptr, &index), nullptr);
    EXPECT_EQ(index, 0xFFFFFFFFU);
    EXPECT_EQ(list.FindItem(Of(5)), nullptr);
}

TEST_F(HXPtrListBase2Find, FindCyclicGoesOnceRoundFromItsStart) {
    EXPECT_EQ(list.FindCyclic(Of(2)), Place(1));
    EXPECT_EQ(list.FindCyclic(Of(2), Place(1)), Place(1));
    EXPECT_EQ(list.FindCyclic(Of(2), Place(2)), Place(3));
    EXPECT_EQ(list.FindCyclic(Of(2), Place(4)), Place(1));
    EXPECT_EQ(list.FindCyclic(Of(1), Place(1)), Place(0));
    EXPECT_EQ(list.FindCyclic(Of(4), Place(0)), Place(4));
    EXPECT_EQ(list.FindCyclic(Of(5), Place(3)), nullptr);
    EXPECT_EQ(list.FindCyclic(Of(5)), nullptr);
    EXPECT_EQ(other.FindCyclic(Of(1)), nullptr);
}

TEST_F(HXPtrListBase2Find, PositionSomeStepsOn) {
    EXPECT_EQ(list.IndexToPosition(0), Place(0));
    EXPECT_EQ(list.IndexToPosition(4), Place(4));
    EXPECT_EQ(list.IndexToPosition(5), nullptr);
    EXPECT_EQ(list.IndexToPosition(INT64_MAX), nullptr);
    EXPECT_EQ(list.IndexToPosition(0, Place(2)), Place(2));
    EXPECT_EQ(list.IndexToPosition(2, Place(2)), Place(4));
    EXPECT_EQ(list.IndexToPosition(3, Place(2)), nullptr);
    EXPECT_EQ(list.IndexToPosition(-1, Place(2)), nullptr);
    EXPECT_EQ(other.IndexToPosition(0), nullptr);
}

TEST_F(HXPtrListBase2Find, IndexOfAPosition) {
    EXPECT_EQ(list.PositionToIndex(Place(0)), 0);
    EXPECT_EQ(list.PositionToIndex(Place(3)), 3);
    EXPECT_EQ(list.PositionToIndex(nullptr), -1);
    EXPECT_EQ(other.PositionToIndex(Place(0)), -1);
    EXPECT_TRUE((std::is_same_v<decltype(list.PositionToIndex(nullptr)), std::int64_t>));
}

TEST_F(HXPtrListBase2Find, KnowsItsOwnPositions) {
    EXPECT_TRUE(list.IsValidPosn(Place(0)));
    EXPECT_TRUE(list.IsValidPosn(Place(4)));
    EXPECT_FALSE(list.IsValidPosn(nullptr));
    EXPECT_FALSE(other.IsValidPosn(nullptr));
    EXPECT_FALSE(other.IsValidPosn(Place(0)));
}

TEST_F(HXPtrListBase2Find, PositionStandsBeforeTheOnesBehindIt) {
    EXPECT_TRUE(list.IsBefore(Place(0), Place(1)));
    EXPECT_TRUE(list.IsBefore(Place(0), Place(4)));
    EXPECT_FALSE(list.IsBefore(Place(1), Place(0)));
    EXPECT_FALSE(list.IsBefore(Place(4), Place(0)));
    EXPECT_FALSE(list.IsBefore(Place(2), Place(2)));
    EXPECT_FALSE(list.IsBefore(nullptr, Place(2)));
    EXPECT_FALSE(list.IsBefore(Place(2), nullptr));
    EXPECT_FALSE(list.IsBefore(nullptr, nullptr));
}

TEST_F(HXPtrListBase2Find, ItemCountLeavesTheLastOneOut) {
    EXPECT_EQ(list.GetItemCount(), 4);
    EXPECT_EQ(list.GetItemCount(Place(1), Place(3)), 2);
    EXPECT_EQ(list.GetItemCount(Place(1), Place(2)), 1);
    EXPECT_EQ(list.GetItemCount(nullptr, Place(2)), 2);
    EXPECT_EQ(list.GetItemCount(Place(3), nullptr), 1);
    EXPECT_TRUE((std::is_same_v<decltype(list.GetItemCount()), std::int64_t>));
}

TEST_F(HXPtrListBase2Find, ItemCountOfARunThatDoesNotEndGoesToTheEndOfTheList) {
    EXPECT_EQ(list.GetItemCount(Place(2), Place(2)), 3);
    EXPECT_EQ(list.GetItemCount(nullptr, Place(0)), 5);
    EXPECT_EQ(list.GetItemCount(Place(4), nullptr), 1);
    EXPECT_EQ(list.GetItemCount(Place(3), Place(1)), 2);
}

TEST_F(HXPtrListBase2Find, CountsOfListsOfThreeOneAndNone) {
    EXPECT_EQ(other.GetItemCount(), 0);
    EXPECT_EQ(other.GetRangeCount(), 0);
    EXPECT_EQ(other.GetItemCount(Place(1), Place(3)), 0);
    EXPECT_EQ(other.GetRangeCount(Place(1), Place(3)), 0);
    Fill(other, {1});
    EXPECT_EQ(other.GetItemCount(), 1);
    EXPECT_EQ(other.GetRangeCount(), 1);
    Fill(other, {2, 3});
    EXPECT_EQ(other.GetItemCount(), 2);
    EXPECT_EQ(other.GetRangeCount(), 3);
}

TEST_F(HXPtrListBase2Find, RangeCountTakesInBothEnds) {
    EXPECT_EQ(list.GetRangeCount(Place(1), Place(3)), 3);
    EXPECT_EQ(list.GetRangeCount(Place(2), Place(2)), 1);
    EXPECT_EQ(list.GetRangeCount(nullptr, Place(1)), 2);
    EXPECT_EQ(list.GetRangeCount(Place(3), nullptr), 2);
    EXPECT_EQ(list.GetRangeCount(Place(3), Place(1)), 2);
    EXPECT_TRUE((std::is_same_v<decltype(list.GetRangeCount()), std::int32_t>));
}

TEST_F(HXPtrListBase2Find, FirstBlockIsTheOldest) {
    EXPECT_EQ(other.GetFirstBlock(), nullptr);
    CPlex* const oldest = list.m_pBlocks;
    EXPECT_EQ(list.GetFirstBlock(), oldest);
    for (int i = 0; i < 20; ++i) Fill(list, {9});
    EXPECT_NE(list.m_pBlocks, oldest);
    EXPECT_EQ(list.GetFirstBlock(), oldest);
}

TEST_F(HXPtrListBase2Find, SameContentsDoNotCountHowOftenOrWhere) {
    Fill(other, {4, 1, 3, 3, 2});
    EXPECT_TRUE(list.IsSameContents(other));
    EXPECT_TRUE(other.IsSameContents(list));
    EXPECT_TRUE(list.IsSameContents(list));
    other.RemoveTail();
    EXPECT_FALSE(list.IsSameContents(other));
    Fill(other, {5});
    EXPECT_FALSE(list.IsSameContents(other));
}

TEST_F(HXPtrListBase2Find, SameContentsAskForTheElementsOfTheFirstListOnly) {
    ItemList twins;
    Fill(twins, {1, 1});
    Fill(other, {1, 2});
    EXPECT_TRUE(twins.IsSameContents(other));
    EXPECT_FALSE(other.IsSameContents(twins));
    ItemList none;
    EXPECT_TRUE(none.IsSameContents(ItemList()));
    EXPECT_FALSE(none.IsSameContents(twins));
}

TEST_F(HXPtrListBase2Find, SublistStandsWithoutAGapFromItsStart) {
    CPtrList sub;
    EXPECT_TRUE(list.IsContiguousSublist(sub));
    Fill(sub, {2, 3});
    EXPECT_FALSE(list.IsContiguousSublist(sub));
    EXPECT_TRUE(list.IsContiguousSublist(sub, Place(1)));
    EXPECT_FALSE(list.IsContiguousSublist(sub, Place(3)));
    Fill(sub, {4});
    EXPECT_FALSE(list.IsContiguousSublist(sub, Place(1)));
    EXPECT_TRUE(list.IsContiguousSublist(list));
}

TEST_F(HXPtrListBase2Find, SublistDoesNotRunPastTheEnd) {
    CPtrList sub;
    Fill(sub, {2, 4});
    EXPECT_TRUE(list.IsContiguousSublist(sub, Place(3)));
    Fill(sub, {1});
    EXPECT_FALSE(list.IsContiguousSublist(sub, Place(3)));
    Fill(other, {2});
    EXPECT_FALSE(other.IsContiguousSublist(sub));
}

TEST_F(HXPtrListBase2Find, SublistOfAnEmptyListIsEmpty) {
    CPtrList sub;
    EXPECT_TRUE(other.IsContiguousSublist(sub));
    Fill(sub, {1});
    EXPECT_FALSE(other.IsContiguousSublist(sub));
    EXPECT_FALSE(other.IsContiguousSublist(sub, Place(0)));
    sub.RemoveAll();
    sub.AddTail(nullptr);
    EXPECT_FALSE(other.IsContiguousSublist(sub));
}

TEST_F(HXPtrListBase2Find, EarliestElementWithATwinIsTheDuplicate) {
    Fill(other, {1, 2, 3, 3, 2, 2});
    EXPECT_FALSE(other.CheckDuplicates());
    ZT::RangePos found;
    EXPECT_TRUE(other.FindDuplicates(found));
    EXPECT_EQ(found.m_posFirst, At(other, 1));
    EXPECT_EQ(found.m_posLast, At(other, 4));
    Fill(other, {1});
    EXPECT_TRUE(other.FindDuplicates(found));
    EXPECT_EQ(found.m_posFirst, At(other, 0));
    EXPECT_EQ(found.m_posLast, At(other, 6));
}

TEST_F(HXPtrListBase2Find, ListWithoutTwinsHasNoDuplicates) {
    EXPECT_TRUE(other.CheckDuplicates());
    Fill(other, {1, 2, 3, 0});
    EXPECT_TRUE(other.CheckDuplicates());
    ZT::RangePos found;
    found.m_posFirst = At(list, 1);
    found.m_posLast = At(list, 2);
    EXPECT_FALSE(other.FindDuplicates(found));
    EXPECT_EQ(found.m_posFirst, At(list, 1));
    EXPECT_EQ(found.m_posLast, At(list, 2));
    Fill(other, {0});
    EXPECT_FALSE(other.CheckDuplicates());
}

// The walks round the list, which all lists of pointers share.

TEST_F(HXPtrListBase2Find, WalksStartAtTheHeadOrTheTail) {
    EXPECT_EQ(list.GetStartPosition(true), Place(0));
    EXPECT_EQ(list.GetStartPosition(false), Place(4));
    EXPECT_EQ(list.GetEndPosition(true), Place(0));
    EXPECT_EQ(list.GetEndPosition(false), Place(4));
    EXPECT_EQ(other.GetStartPosition(true), nullptr);
}

TEST_F(HXPtrListBase2Find, StepsInEitherDirection) {
    POSITION pos = Place(4);
    EXPECT_EQ(list.Next(pos, false), Of(4));
    EXPECT_EQ(pos, Place(3));
    EXPECT_EQ(list.Next(pos, true), Of(2));
    EXPECT_EQ(list.Next(pos, true), Of(4));
    EXPECT_EQ(pos, nullptr);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.Next(pos, true); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.Next(pos, true, false); }));
    EXPECT_EQ(list.Next(pos, true, true), nullptr);
    pos = Place(4);
    EXPECT_EQ(list.Next(pos, true, true), Of(4));
    EXPECT_EQ(pos, Place(0));
    EXPECT_EQ(list.Next(pos, false, true), Of(1));
    EXPECT_EQ(pos, Place(4));
    EXPECT_EQ(list.Next(pos, true, false), Of(4));
    EXPECT_EQ(pos, nullptr);
}

TEST_F(HXPtrListBase2Find, CyclicStepsTurnRoundAtTheEnds) {
    POSITION pos = Place(4);
    EXPECT_EQ(list.GetNextCyclic(pos), Of(4));
    EXPECT_EQ(pos, Place(0));
    EXPECT_EQ(list.GetPrevCyclic(pos), Of(1));
    EXPECT_EQ(pos, Place(4));
    EXPECT_EQ(list.GetNextCyclic(pos, false), Of(4));
    EXPECT_EQ(pos, Place(3));
    EXPECT_EQ(list.GetNextCyclic(pos, true), Of(2));
    EXPECT_EQ(pos, Place(4));
    EXPECT_TRUE((std::is_same_v<decltype(list.GetNextCyclic(pos)), Item*>));
    pos = nullptr;
    EXPECT_EQ(list.GetNextCyclic(pos), nullptr);
    EXPECT_EQ(list.GetNextCyclic(pos, true), nullptr);
    EXPECT_EQ(pos, nullptr);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.GetPrevCyclic(pos); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.GetNextCyclic(pos, false); }));
}

TEST_F(HXPtrListBase2Find, CyclicRunsAreCountedWithBothEnds) {
    EXPECT_EQ(list.Count(Place(4), Place(0)), 2);
    EXPECT_EQ(list.Count(Place(1), Place(3)), 3);
    EXPECT_EQ(list.Count(Place(3), Place(1)), 4);
    EXPECT_EQ(list.Count(Place(2), Place(2)), 1);
    EXPECT_EQ(list.Count(nullptr, Place(2)), 0);
    Fill(other, {1});
    EXPECT_EQ(other.Count(At(other, 0), At(other, 0)), 1);
}

TEST_F(HXPtrListBase2Find, CyclicRunsAreCopiedAndRemoved) {
    other.CopyCyclic(list, Place(3), Place(1));
    EXPECT_THAT(Numbers(other), ElementsAre(2, 4, 1, 2));
    other.CopyCyclic(list, nullptr, Place(1));
    EXPECT_EQ(other.GetCount(), 4);
    list.RemoveCyclic(nullptr, Place(0));
    list.RemoveCyclic(Place(4), Place(0));
    EXPECT_THAT(Numbers(list), ElementsAre(2, 3, 2));
    list.RemoveCyclic(Place(1), nullptr);
    EXPECT_TRUE(list.IsEmpty());
    other.RemoveCyclic(At(other, 2), reinterpret_cast<POSITION>(&other));
    EXPECT_TRUE(other.IsEmpty());
    EXPECT_EQ(other.Ledger(), NodeLedger());
}

TEST_F(HXPtrListBase2Find, NeighboursAndEndsAreChecked) {
    EXPECT_TRUE(list.IsNeighbourPosns(Place(1), Place(2)));
    EXPECT_FALSE(list.IsNeighbourPosns(Place(2), Place(1)));
    EXPECT_FALSE(list.IsNeighbourPosns(Place(4), Place(0)));
    EXPECT_FALSE(list.IsNeighbourPosns(Place(4), nullptr));
    EXPECT_FALSE(list.IsNeighbourPosns(nullptr, Place(0)));
    EXPECT_TRUE(list.IsValidList());
    EXPECT_TRUE(other.IsValidList());
    Fill(other, {0, 1});
    EXPECT_FALSE(other.IsValidList());
}

}  // namespace
