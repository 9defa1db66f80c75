// The list itself, its virtual operations, and how elements come into it.

#include <zt/containers/HXPtrListBase2_test.h>
#include <zt/frame/VirtualTable_test.hpp>

#include <type_traits>

namespace {

using namespace testing_support;
using testing::ElementsAre;
using testing::IsEmpty;

using HXPtrListBase2 = ItemLists;

TEST_F(HXPtrListBase2, AddsNoFieldToTheListOfPointers) {
    EXPECT_EQ(sizeof(ZT::HXPtrListBase2<Item>), sizeof(CPtrList));
    EXPECT_TRUE((std::is_base_of_v<CPtrList, ZT::HXPtrListBase2<Item>>));
    EXPECT_STREQ(list.GetRuntimeClass()->m_lpszClassName, "CPtrList");
}

TEST_F(HXPtrListBase2, NewListIsEmptyWithBlocksOfTen) {
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.m_nBlockSize, 10);
    EXPECT_EQ(list.Ledger(), NodeLedger());
    Fill(list, {1});
    EXPECT_EQ(list.Ledger(), (NodeLedger{.blocks = 1, .listed = 1, .free = 9}));
}

TEST_F(HXPtrListBase2, OwnVirtualOperationsFollowThoseOfTheObjectInOrder) {
    FillFromHeap(list, {1});
    CallSlot<void>(&list, kSlotFirstOwn, static_cast<Item*>(new Item(7, &ended)));
    EXPECT_THAT(ended, ElementsAre(7));
    const POSITION head = list.GetHeadPosition();
    EXPECT_EQ(CallSlot<Item*>(&list, kSlotFirstOwn + 1, head), list.GetHead());
    list.Clear();
}

TEST_F(HXPtrListBase2, DestructorLeavesTheElementsAlone) {
    {
        ItemList inner;
        inner.Add(items[0].get(), false);
        items[0]->ended = &ended;
    }
    EXPECT_THAT(ended, IsEmpty());
    items[0]->ended = nullptr;
}

TEST_F(HXPtrListBase2, ElementIsDestroyedThroughItsVirtualDestructor) {
    struct Derived : Item {
        explicit Derived(std::vector<int>* log) : Item(3, log) {}
        ~Derived() override { number = 33; }
    };
    list.DeleteElement(new Derived(&ended));
    EXPECT_THAT(ended, ElementsAre(33));
    list.DeleteElement(nullptr);
    EXPECT_THAT(ended, ElementsAre(33));
}

TEST_F(HXPtrListBase2, AddsAtTheHeadOrTheTailAndTellsWhere) {
    const POSITION first = list.Add(Of(1), true);
    const POSITION second = list.Add(Of(2), false);
    const POSITION third = list.Add(Of(3), true);
    EXPECT_THAT(Numbers(list), ElementsAre(3, 1, 2));
    EXPECT_EQ(first, At(list, 1));
    EXPECT_EQ(second, At(list, 2));
    EXPECT_EQ(third, At(list, 0));
    list.Add(nullptr, false);
    list.Add(Of(1), false);
    EXPECT_THAT(Numbers(list), ElementsAre(3, 1, 2, 0, 1));
}

TEST_F(HXPtrListBase2, UniqueElementIsAddedOnce) {
    const POSITION one = list.AddEx(Of(1), false, true);
    const POSITION two = list.AddEx(Of(2), true, true);
    EXPECT_EQ(list.AddEx(Of(1), true, true), nullptr);
    EXPECT_EQ(list.AddEx(Of(2), false, true), nullptr);
    EXPECT_THAT(Numbers(list), ElementsAre(2, 1));
    EXPECT_EQ(one, At(list, 1));
    EXPECT_EQ(two, At(list, 0));
}

TEST_F(HXPtrListBase2, ElementThatNeedNotBeUniqueIsAddedAgain) {
    Fill(list, {2, 1});
    const POSITION head = list.AddEx(Of(1), true, false);
    const POSITION tail = list.AddEx(Of(2), false, false);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 1, 2));
    EXPECT_EQ(head, At(list, 0));
    EXPECT_EQ(tail, At(list, 3));
}

TEST_F(HXPtrListBase2, NullIsUniqueToo) {
    EXPECT_NE(list.AddEx(nullptr, false, true), nullptr);
    EXPECT_EQ(list.AddEx(nullptr, false, true), nullptr);
    EXPECT_THAT(Numbers(list), ElementsAre(0));
}

TEST_F(HXPtrListBase2, ListOfListsHoldsTheListsAndNotTheirElements) {
    Fill(list, {1, 2});
    ZT::HXPtrListBase2<ItemList> lists;
    lists.Add(&list, true);
    lists.AddEx(&other, false, true);
    ZT::HXPtrListBase2<ItemList> copies;
    copies.Copy(lists, true);
    copies.MoveCyclic(lists, lists.GetHeadPosition(), nullptr);
    EXPECT_THAT(std::vector<ItemList*>(copies.begin(), copies.end()),
                ElementsAre(&other, &list, &list, &other));
}

TEST_F(HXPtrListBase2, AppendsTheElementsOfAnyListOfPointers) {
    CPtrList source;
    Fill(source, {3, 4});
    Fill(list, {1, 2});
    list.AppendPtrList(source);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(Numbers(source), ElementsAre(3, 4));
    list.AppendPtrList(list);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3, 4, 1, 2, 3, 4));
}

TEST_F(HXPtrListBase2, CopiesAListOfPointersInPlaceOfItsOwnElements) {
    CPtrList source;
    Fill(source, {3, 4});
    FillFromHeap(list, {1, 2});
    const std::unique_ptr<Item> one(list.GetHead());
    const std::unique_ptr<Item> two(list.GetTail());
    list.CopyPtrList(source);
    EXPECT_THAT(Numbers(list), ElementsAre(3, 4));
    EXPECT_THAT(ended, IsEmpty());
    list.CopyPtrList(list);
    EXPECT_THAT(Numbers(list), IsEmpty());
}

TEST_F(HXPtrListBase2, CopiesARunBehindItsOwnElements) {
    Fill(list, {9});
    Fill(other, {1, 2, 3, 4, 5});
    list.Copy(other, false, At(other, 1), At(other, 3));
    EXPECT_THAT(Numbers(list), ElementsAre(9, 2, 3, 4));
    list.Copy(other, true, At(other, 1), At(other, 3));
    EXPECT_THAT(Numbers(list), ElementsAre(9, 2, 3, 4, 4, 3, 2));
    EXPECT_THAT(Numbers(other), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(HXPtrListBase2, CopiedRunOfOneElement) {
    Fill(other, {1, 2, 3});
    list.Copy(other, false, At(other, 1), At(other, 1));
    list.Copy(other, true, At(other, 1), At(other, 1));
    EXPECT_THAT(Numbers(list), ElementsAre(2, 2));
}

TEST_F(HXPtrListBase2, CopiedRunTakesHeadAndTailForMissingEnds) {
    Fill(other, {1, 2, 3, 4});
    list.Copy(other, false);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3, 4));
    list.RemoveAll();
    list.Copy(other, true);
    EXPECT_THAT(Numbers(list), ElementsAre(4, 3, 2, 1));
    list.RemoveAll();
    list.Copy(other, false, nullptr, At(other, 1));
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2));
    list.Copy(other, false, At(other, 2), nullptr);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3, 4));
    list.RemoveAll();
    list.Copy(other, true, nullptr, At(other, 1));
    EXPECT_THAT(Numbers(list), ElementsAre(2, 1));
    list.Copy(other, true, At(other, 2), nullptr);
    EXPECT_THAT(Numbers(list), ElementsAre(2, 1, 4, 3));
}

TEST_F(HXPtrListBase2, CopiedRunThatIsTheWrongWayRoundEndsWithTheSource) {
    Fill(other, {1, 2, 3, 4});
    list.Copy(other, false, At(other, 2), At(other, 1));
    EXPECT_THAT(Numbers(list), ElementsAre(3, 4));
    list.RemoveAll();
    list.Copy(other, true, At(other, 2), At(other, 1));
    EXPECT_THAT(Numbers(list), ElementsAre(2, 1));
}

TEST_F(HXPtrListBase2, CopyOfAnEmptyListAddsNothing) {
    Fill(list, {1});
    list.Copy(other, false);
    list.Copy(other, true);
    EXPECT_THAT(Numbers(list), ElementsAre(1));
}

TEST_F(HXPtrListBase2, CopiesItselfAsItWasBefore) {
    Fill(list, {1, 2, 3});
    list.Copy(list, true);
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3, 3, 2, 1));
    list.Copy(list, false, At(list, 4), At(list, 0));
    EXPECT_THAT(Numbers(list), ElementsAre(1, 2, 3, 3, 2, 1, 2, 1));
}

TEST_F(HXPtrListBase2, CopiesToAnArrayInPlaceOfItsElements) {
    Fill(list, {1, 2, 0, 1});
    CPtrArray array;
    array.SetSize(9);
    array.SetAt(0, Of(5));
    list.CopyToPtrArray(array);
    ASSERT_EQ(array.GetSize(), 4);
    EXPECT_EQ(array.GetAt(0), Of(1));
    EXPECT_EQ(array.GetAt(1), Of(2));
    EXPECT_EQ(array.GetAt(2), nullptr);
    EXPECT_EQ(array.GetAt(3), Of(1));
    other.CopyToPtrArray(array);
    EXPECT_EQ(array.GetSize(), 0);
}

}  // namespace
