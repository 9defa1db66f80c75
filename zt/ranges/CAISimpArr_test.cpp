#include <zt/ranges/CAISimpArr.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/collections/CountedElement_test.h>
#include <platform/object/CMemoryException.h>
#include <tests/Raises.h>
#include <zt/ranges/RangeFamily_test.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using namespace testing_support;
using testing::ElementsAre;

using Item = CountedElement;
using Items = CAISimpArr<Item>;

std::vector<int> Numbers(const Items& items) {
    std::vector<int> numbers;
    for (int64 i = 0; i < items.GetCount(); ++i) numbers.push_back(items[i].Number());
    return numbers;
}

// Whatever a test made has ended with it.
struct NewArray : testing::Test {
    ~NewArray() override { EXPECT_EQ(Item::Living(), 0); }
};

// 100, 200 and 300.
struct ThreeItems : NewArray {
    ThreeItems() {
        for (const int n : {100, 200, 300}) items.Add(Item(n));
    }
    Items items;
};

// Counts how often elements are assigned.
struct Assigned {
    Assigned() {}
    Assigned(const Assigned&) {}
    Assigned& operator=(const Assigned&) {
        ++count;
        return *this;
    }
    static inline int count = 0;
};

// --- fields

TEST_F(NewArray, FieldsStandInTheirOrder) {
    static_assert(offsetof(Items, m_pData) == 0);
    static_assert(offsetof(Items, m_nSize) == 8);
    static_assert(offsetof(Items, m_nCount) == 16);
    static_assert(offsetof(Items, m_nBlock) == 24);
    static_assert(!std::is_polymorphic_v<Items>);
}

TEST_F(NewArray, StartsEmptyWithoutMemory) {
    const Items items;
    EXPECT_EQ(items.GetData(), nullptr);
    EXPECT_EQ(items.GetSize(), 0);
    EXPECT_EQ(items.GetCount(), 0);
    EXPECT_EQ(items.m_nBlock, 3);
    EXPECT_TRUE(items.IsEmpty());
}

// --- elements

TEST_F(ThreeItems, OneElementUnderThreeNames) {
    EXPECT_EQ(&items[1], items.GetData() + 1);
    EXPECT_EQ(&items.Elem(1), items.GetData() + 1);
    const Items& constant = items;
    EXPECT_EQ(&constant.GetAt(1), items.GetData() + 1);
    EXPECT_EQ(&constant[1], items.GetData() + 1);
    const Item copy = constant(1);
    EXPECT_EQ(copy.Number(), 200);
}

TEST_F(ThreeItems, GetRefAtGivesTheLastElementWhateverTheIndex) {
    EXPECT_EQ(items.GetRefAt(0).Number(), 300);
    EXPECT_EQ(items.GetRefAt(7).Number(), 300);
    EXPECT_EQ(&items.GetLast(), items.GetData() + 2);
}

TEST_F(ThreeItems, AirDoesNothing) {
    items.Air(100);
    EXPECT_THAT(Numbers(items), ElementsAre(100, 200, 300));
}

// --- adding

TEST_F(NewArray, AddReturnsTheIndexAndKeepsTheElements) {
    Items items;
    for (int i = 0; i < 100; ++i) EXPECT_EQ(items.Add(Item(i * 100)), i);
    EXPECT_EQ(items.GetCount(), 100);
    EXPECT_GE(items.GetSize(), 100);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(items[i].Number(), i * 100);
    EXPECT_EQ(Item::Living(), items.GetSize());
}

TEST_F(NewArray, AddingManyMovesElementsSeldom) {
    const Assigned value;
    CAISimpArr<Assigned> array;
    const auto assignmentsIn = [&](auto addOne) {
        array = CAISimpArr<Assigned>();
        Assigned::count = 0;
        for (int i = 0; i < 1000; ++i) addOne();
        EXPECT_EQ(array.GetCount(), 1000);
        const std::unique_ptr<Assigned[]> left(array.GetData());
        array.Detach();
        return Assigned::count;
    };
    EXPECT_LT(assignmentsIn([&] { array.Add(); }), 1100);
    EXPECT_LT(assignmentsIn([&] { array.InsertAt(array.GetCount(), value); }), 3100);
    EXPECT_LT(assignmentsIn([&] { array.SetAtGrow(array.GetCount(), value); }), 3100);
}

TEST_F(ThreeItems, AddWithoutAValueGivesTheSlotAsItIs) {
    items.SetCount(1);
    EXPECT_EQ(items.Add()->Number(), 200);
    EXPECT_EQ(items.GetCount(), 2);
    EXPECT_EQ(Items().Add()->Number(), 0);
}

TEST_F(ThreeItems, AnElementOfTheArrayMayBeGivenToIt) {
    for (int i = 0; i < 40; ++i) items.Add(items[1]);
    EXPECT_EQ(items[42].Number(), 200);
    for (int i = 0; i < 40; ++i) items.InsertAt(0, items[i + 2]);
    EXPECT_EQ(items[0].Number(), 300);
    for (int i = 0; i < 40; ++i) items.SetAtGrow(items.GetCount(), items[0]);
    EXPECT_EQ(items.GetLast().Number(), 300);
}

TEST_F(ThreeItems, InsertAtMovesTheElementsBehindUp) {
    items.InsertAt(1, Item(150000));
    EXPECT_THAT(Numbers(items), ElementsAre(100, 150000, 200, 300));
    items.InsertAt(4, Item(400));
    items.InsertAt(0, Item(0));
    EXPECT_THAT(Numbers(items), ElementsAre(0, 100, 150000, 200, 300, 400));
}

TEST_F(ThreeItems, InsertAtMovesNothingBeyondTheLastElement) {
    items.SetSizeGrow(6);
    items.SetCount(5);
    const Item last(500);
    items[4] = last;
    items.SetCount(3);
    items.InsertAt(0, Item(0));
    EXPECT_EQ(items.GetData()[4].Number(), 500);
}

TEST_F(ThreeItems, RemoveAtMovesTheElementsBehindDown) {
    items.Add(Item(400));
    items.RemoveAt(1, 2);
    EXPECT_THAT(Numbers(items), ElementsAre(100, 400));
    items.RemoveAt(0, 0);
    items.RemoveAt(0, -1);
    EXPECT_THAT(Numbers(items), ElementsAre(100, 400));
    items.RemoveAt(0, 2);
    EXPECT_TRUE(items.IsEmpty());
}

// Assigning a range leaves limits that differ by less than the tolerance, and so do moves.
struct RangesThatAreNearlyTheSame : testing::Test {
    RangesThatAreNearlyTheSame() {
        array.Add(Range(0.0, 1.0));
        array.Add(Range(5e-11, 1.0));
        array.SetSizeGrow(3);
    }
    CAISimpArr<Range> array;
};

TEST_F(RangesThatAreNearlyTheSame, MoveUpByAssignment) {
    array.InsertAt(0, Range(7.0, 8.0));
    EXPECT_THAT(array[0], HasLimits(7.0, 8.0));
    EXPECT_THAT(array[1], HasLimits(5e-11, 1.0));
    EXPECT_THAT(array[2], HasLimits(5e-11, 1.0));
}

TEST_F(RangesThatAreNearlyTheSame, MoveDownByAssignment) {
    array.RemoveAt(0, 1);
    EXPECT_THAT(array[0], HasLimits(0.0, 1.0));
}

TEST_F(RangesThatAreNearlyTheSame, GrowByAssignmentToNewOnes) {
    array[0].m_eState = RangeS1::eStateEmpty;
    array.SetSizeGrow(100);
    EXPECT_THAT(array[0], HasLimits(0.0, 1.0));
    EXPECT_EQ(array[0].m_eState, RangeS1::eStateEmpty);
    EXPECT_THAT(array[1], HasLimits(5e-11, 1.0));
}

// --- growing by blocks

TEST_F(NewArray, SetAtGrowTakesMultiplesOfTheBlock) {
    Items items;
    items.SetAtGrow(1, Item(100));
    EXPECT_EQ(items.GetSize(), 3);
    EXPECT_THAT(Numbers(items), ElementsAre(0, 100));
    items.SetAtGrow(4, Item(400));
    EXPECT_EQ(items.GetSize(), 6);
    EXPECT_THAT(Numbers(items), ElementsAre(0, 100, 0, 0, 400));
    items.SetAtGrow(0, Item(700));
    EXPECT_THAT(Numbers(items), ElementsAre(700, 100, 0, 0, 400));
}

TEST_F(NewArray, SetAtGrowHoldsAnIndexThatIsAMultipleOfTheBlock) {
    for (const int i : {0, 3, 6, 9, 300}) {
        Items items;
        items.SetAtGrow(i, Item(100));
        EXPECT_GT(items.GetSize(), i);
        EXPECT_EQ(items.GetCount(), i + 1);
        EXPECT_EQ(items.GetLast().Number(), 100);
    }
}

TEST_F(NewArray, SetAtGrowMakesABlockBelowOneFive) {
    for (const int block : {0, -4}) {
        Items items;
        items.m_nBlock = block;
        items.SetAtGrow(0, Item(100));
        EXPECT_EQ(items.m_nBlock, 5);
        EXPECT_EQ(items.GetSize(), 5);
    }
    Items large;
    large.SetSize(4);
    large.m_nBlock = 0;
    large.SetAtGrow(3, Item(100));
    EXPECT_EQ(large.m_nBlock, 0);
}

// --- capacity

TEST_F(ThreeItems, SetSizeLosesTheContentsOnlyWhereItGrows) {
    const Item* const before = items.GetData();
    items.SetSize(2);
    EXPECT_EQ(items.GetData(), before);
    items.SetSize(20);
    EXPECT_EQ(items.GetSize(), 20);
    EXPECT_THAT(Numbers(items), ElementsAre(0, 0, 0));
    items.SetSize(21, 2);
    EXPECT_EQ(items.GetSize(), 21);
    EXPECT_EQ(items.GetCount(), 2);
    items.SetSize(1, 30);
    EXPECT_EQ(items.GetSize(), 30);
    EXPECT_EQ(items.GetCount(), 30);
}

TEST_F(ThreeItems, SetSizeGrowAndSetCountKeepTheContents) {
    items.SetSizeGrow(20);
    EXPECT_EQ(items.GetSize(), 20);
    EXPECT_THAT(Numbers(items), ElementsAre(100, 200, 300));
    items.SetSizeGrow(2);
    EXPECT_EQ(items.GetSize(), 20);
    items.SetCount(22);
    EXPECT_EQ(items.GetSize(), 22);
    EXPECT_EQ(items[2].Number(), 300);
    EXPECT_EQ(items[21].Number(), 0);
    items.SetCount(1);
    EXPECT_THAT(Numbers(items), ElementsAre(100));
    EXPECT_EQ(items.GetSize(), 22);
}

TEST_F(ThreeItems, CreateGivesDefaultElementsAndKeepsTheCount) {
    const int64 size = items.GetSize();
    items.Create();
    EXPECT_EQ(items.GetSize(), size);
    EXPECT_THAT(Numbers(items), ElementsAre(0, 0, 0));
    EXPECT_EQ(Item::Living(), size);
}

TEST_F(ThreeItems, CreateOfNoMoreThanThereIsOnlyChangesTheFigure) {
    const Item* const before = items.GetData();
    items.Create(2);
    EXPECT_EQ(items.GetSize(), 2);
    EXPECT_EQ(items.GetData(), before);
    EXPECT_THAT(Numbers(items), ElementsAre(100, 200, 300));
    items.Create(3);
    EXPECT_EQ(items.GetSize(), 3);
    EXPECT_THAT(Numbers(items), ElementsAre(0, 0, 0));
    EXPECT_EQ(Item::Living(), 3);
}

TEST_F(NewArray, PlainElementsStartAsZero) {
    CAISimpArr<double> numbers;
    numbers.SetCount(1000);
    for (int64 i = 0; i < 1000; ++i) ASSERT_EQ(numbers[i], 0.0);
}

TEST_F(ThreeItems, MemoryThatCannotBeHadRaisesTheMemoryExceptionAndLeavesTheArray) {
    const int64 most = std::numeric_limits<int64>::max();
    EXPECT_TRUE(Raises<CMemoryException>([&] { items.SetSizeGrow(most); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { items.SetSize(most / 8); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { items.Create(most); }));
    EXPECT_THAT(Numbers(items), ElementsAre(100, 200, 300));
}

}  // namespace
}  // namespace ZT
