// Copies of arrays, shared and deep; merging; the archive record.

#include <zt/ranges/CAISimpArr.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/collections/CountedElement_test.h>
#include <zt/ranges/RangeFamily_test.h>
#include <platform/files/Archived_test.hpp>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace ZT {
namespace {

using namespace testing_support;
using testing::ElementsAre;

using Item = CountedElement;
using Items = CAISimpArr<Item>;
using Ranges = CAISimpArr<Range>;

std::vector<int> Numbers(const Items& items) {
    std::vector<int> numbers;
    for (int64 i = 0; i < items.GetCount(); ++i) numbers.push_back(items[i].Number());
    return numbers;
}

Items ItemsOf(std::initializer_list<int> numbers) {
    Items items;
    for (const int n : numbers) items.Add(n);
    return items;
}

void Put(Items& items, int64 i, int number) {
    const Item item(number);
    items[i] = item;
}

Ranges RangesOf(std::initializer_list<Range> ranges) {
    Ranges array;
    for (const Range& range : ranges) array.Add(range);
    return array;
}

std::vector<Range> All(const Ranges& ranges) {
    return {ranges.GetData(), ranges.GetData() + ranges.GetCount()};
}

// Ends what an array has left to the caller.
using LeftItems = std::unique_ptr<Item[]>;

struct CAISimpArrCopies : testing::Test {
    ~CAISimpArrCopies() override { EXPECT_EQ(Item::Living(), 0); }
};

// --- sharing

TEST_F(CAISimpArrCopies, CopyConstructionSharesTheElements) {
    Items items = ItemsOf({1, 2, 3});
    items.m_nBlock = 8;
    const int living = Item::Living();
    Items copy(items);
    EXPECT_EQ(Item::Living(), living);
    EXPECT_EQ(copy.GetData(), items.GetData());
    EXPECT_EQ(copy.GetSize(), items.GetSize());
    EXPECT_EQ(copy.GetCount(), 3);
    EXPECT_EQ(copy.m_nBlock, 8);
    Put(copy, 1, 9);
    EXPECT_THAT(Numbers(items), ElementsAre(1, 9, 3));
    copy.SetCount(1);
    EXPECT_EQ(items.GetCount(), 3);
}

TEST_F(CAISimpArrCopies, TheLastOfThoseThatShareEndsTheElements) {
    for (const bool originalFirst : {false, true}) {
        auto original = std::make_unique<Items>(ItemsOf({1, 2, 3}));
        auto copy = std::make_unique<Items>(*original);
        const int living = Item::Living();
        (originalFirst ? original : copy).reset();
        EXPECT_EQ(Item::Living(), living);
        EXPECT_THAT(Numbers(originalFirst ? *copy : *original), ElementsAre(1, 2, 3));
        (originalFirst ? copy : original).reset();
        EXPECT_EQ(Item::Living(), 0);
    }
}

TEST_F(CAISimpArrCopies, GrowingParts) {
    Items items = ItemsOf({1, 2, 3});
    Items copy(items);
    copy.SetSizeGrow(100);
    Put(copy, 0, 9);
    EXPECT_THAT(Numbers(items), ElementsAre(1, 2, 3));
    EXPECT_THAT(Numbers(copy), ElementsAre(9, 2, 3));
    Items second(items);
    items.Create();
    EXPECT_THAT(Numbers(second), ElementsAre(1, 2, 3));
}

TEST_F(CAISimpArrCopies, AssignmentSharesAndLeavesTheOldElementsToTheCaller) {
    Items items = ItemsOf({1, 2, 3});
    Items other = ItemsOf({7, 8});
    const LeftItems old(other.GetData());
    const int living = Item::Living();
    other = items;
    EXPECT_EQ(Item::Living(), living);
    EXPECT_EQ(old[1].Number(), 8);
    EXPECT_EQ(other.GetData(), items.GetData());
    EXPECT_EQ(other.GetCount(), 3);
}

TEST_F(CAISimpArrCopies, AssignmentToItselfOrToOneThatSharesChangesNothing) {
    Items items = ItemsOf({1, 2, 3});
    Items copy(items);
    Items& same = items;
    items = same;
    items = copy;
    EXPECT_THAT(Numbers(items), ElementsAre(1, 2, 3));
    Items alone = ItemsOf({4});
    Items& sameAlone = alone;
    alone = sameAlone;
    EXPECT_THAT(Numbers(alone), ElementsAre(4));
}

TEST_F(CAISimpArrCopies, OldElementsThatAreSharedLiveOnWithTheOther) {
    Items items = ItemsOf({1, 2, 3});
    const Items copy(items);
    items = Items();
    EXPECT_TRUE(items.IsEmpty());
    EXPECT_THAT(Numbers(copy), ElementsAre(1, 2, 3));
}

TEST_F(CAISimpArrCopies, DetachLeavesTheElementsToTheCaller) {
    Items items = ItemsOf({1, 2, 3});
    items.m_nBlock = 8;
    const int living = Item::Living();
    const LeftItems left(items.GetData());
    items.Detach();
    EXPECT_EQ(Item::Living(), living);
    EXPECT_EQ(items.GetData(), nullptr);
    EXPECT_EQ(items.GetSize(), 0);
    EXPECT_EQ(items.GetCount(), 0);
    EXPECT_EQ(items.m_nBlock, 8);
    EXPECT_EQ(left[2].Number(), 3);
}

TEST_F(CAISimpArrCopies, DetachOfOneOfTwoLeavesTheElementsToTheOther) {
    Items items = ItemsOf({1, 2, 3});
    Items copy(items);
    items.Detach();
    EXPECT_THAT(Numbers(copy), ElementsAre(1, 2, 3));
}

TEST_F(CAISimpArrCopies, AttachUsesElementsOfTheCaller) {
    Item own[] = {4, 5};
    Items items = ItemsOf({1, 2, 3});
    const LeftItems old(items.GetData());
    items.Attach(own, 2);
    EXPECT_EQ(items.GetData(), own);
    EXPECT_EQ(items.GetSize(), 2);
    EXPECT_THAT(Numbers(items), ElementsAre(4, 5));
    EXPECT_EQ(old[0].Number(), 1);
    {
        const Items copy(items);
        EXPECT_EQ(copy.GetData(), own);
    }
    items.Add(6);
    EXPECT_THAT(Numbers(items), ElementsAre(4, 5, 6));
    Put(items, 0, 9);
    EXPECT_EQ(own[0].Number(), 4);
}

TEST_F(CAISimpArrCopies, ElementsMayBeHandedFromOneToTheOther) {
    Items from = ItemsOf({1, 2, 3});
    Items to;
    const LeftItems left(from.GetData());
    to.Attach(from.GetData(), from.GetCount());
    from.Detach();
    EXPECT_THAT(Numbers(to), ElementsAre(1, 2, 3));
}

TEST_F(CAISimpArrCopies, GetSubArrayEndsTheElementsAndGivesNothing) {
    Items items = ItemsOf({1, 2, 3});
    Items sub = ItemsOf({7});
    items.GetSubArray(sub, 0, 1);
    EXPECT_EQ(Item::Living(), sub.GetSize());
    EXPECT_THAT(Numbers(sub), ElementsAre(7));
    EXPECT_TRUE(items.IsEmpty());
    EXPECT_EQ(items.GetData(), nullptr);
    items.Add(4);
    EXPECT_THAT(Numbers(items), ElementsAre(4));
}

TEST_F(CAISimpArrCopies, GetSubArrayLeavesElementsThatAreSharedOrOfTheCaller) {
    Items items = ItemsOf({1, 2, 3});
    const Items copy(items);
    items.GetSubArray(Items(), 0, 1);
    EXPECT_THAT(Numbers(copy), ElementsAre(1, 2, 3));
    const Item own[] = {4, 5};
    items.Attach(own, 2);
    items.GetSubArray(Items(), 0, 1);
    EXPECT_EQ(own[1].Number(), 5);
}

// The sharing by which lists of ranges are assigned.
struct FreeingItems : Items {
    using Items::ShareInstead;
};

TEST_F(CAISimpArrCopies, SharingInsteadEndsTheOldElementsUnlessAnotherSharesThem) {
    const Items items = ItemsOf({1, 2, 3});
    FreeingItems other;
    other.SetSize(7, 2);
    const int living = Item::Living();
    other.ShareInstead(items);
    EXPECT_EQ(Item::Living(), living - 7);
    EXPECT_EQ(other.GetData(), items.GetData());
    EXPECT_THAT(Numbers(other), ElementsAre(1, 2, 3));
    other.ShareInstead(ItemsOf({8, 9}));
    EXPECT_THAT(Numbers(items), ElementsAre(1, 2, 3));
    EXPECT_THAT(Numbers(other), ElementsAre(8, 9));
    other.ShareInstead(Items());
    EXPECT_EQ(other.GetData(), nullptr);
    EXPECT_EQ(Item::Living(), items.GetSize());
}

TEST_F(CAISimpArrCopies, SharingInsteadWithOneAttachedToTheElementsKeepsThem) {
    for (const int first : {0, 1}) {
        FreeingItems items;
        items.Copy(ItemsOf({1, 2, 3}));
        items.ShareInstead(items);
        Items view;
        view.Attach(items.GetData() + first, 2);
        items.ShareInstead(view);
        EXPECT_EQ(Item::Living(), 3);
        EXPECT_EQ(items.GetData(), view.GetData());
        EXPECT_THAT(Numbers(items), ElementsAre(first + 1, first + 2));
    }
    EXPECT_EQ(Item::Living(), 0);
}

TEST_F(CAISimpArrCopies, SharingInsteadKeepsTheWholeBlockWhateverTheFiguresSay) {
    FreeingItems items;
    items.Copy(ItemsOf({1, 2, 3}));
    Items first;
    Items rest;
    first.Attach(items.GetData(), 1);
    rest.Attach(items.GetData() + 1, 2);
    items.SetCount(1);
    items.Create(1);
    items.ShareInstead(rest);
    EXPECT_EQ(Item::Living(), 3);
    EXPECT_THAT(Numbers(items), ElementsAre(2, 3));
    // Those before the first one, too.
    items.ShareInstead(first);
    EXPECT_EQ(Item::Living(), 3);
    EXPECT_THAT(Numbers(items), ElementsAre(1));
    EXPECT_THAT(Numbers(rest), ElementsAre(2, 3));
}

// --- copying elements

TEST_F(CAISimpArrCopies, CopyIsDeep) {
    const Items items = ItemsOf({1, 2, 3});
    Items copy = ItemsOf({9});
    copy.Copy(items);
    EXPECT_NE(copy.GetData(), items.GetData());
    Put(copy, 0, 5);
    EXPECT_THAT(Numbers(items), ElementsAre(1, 2, 3));
    EXPECT_THAT(Numbers(copy), ElementsAre(5, 2, 3));
    copy.Copy(ItemsOf({8}));
    EXPECT_THAT(Numbers(copy), ElementsAre(8));
}

TEST_F(CAISimpArrCopies, CopyKeepsACapacityThatIsLargeEnough) {
    Items copy;
    copy.SetSize(20);
    const Item* const before = copy.GetData();
    copy.Copy(ItemsOf({1, 2}));
    EXPECT_EQ(copy.GetData(), before);
    EXPECT_EQ(copy.GetSize(), 20);
    Items small;
    Items source = ItemsOf({1, 2, 3, 4, 5});
    small.Copy(source);
    EXPECT_EQ(small.GetSize(), 5);
    source.SetCount(0);
    small.Copy(source);
    EXPECT_TRUE(small.IsEmpty());
    EXPECT_EQ(small.GetSize(), 5);
}

TEST_F(CAISimpArrCopies, CopyOfAnArrayThatSharesGivesElementsOfItsOwn) {
    Items items = ItemsOf({1, 2, 3});
    Items copy(items);
    copy.Copy(items);
    Put(copy, 0, 9);
    EXPECT_THAT(Numbers(items), ElementsAre(1, 2, 3));
    EXPECT_THAT(Numbers(copy), ElementsAre(9, 2, 3));
    items.Copy(items);
    EXPECT_THAT(Numbers(items), ElementsAre(1, 2, 3));
}

TEST_F(CAISimpArrCopies, CopyAssignsAlsoWhatLiesBeyondTheCount) {
    Items items = ItemsOf({1, 2, 3});
    items.SetCount(1);
    Items copy;
    copy.SetSize(3);
    copy.Copy(items);
    EXPECT_THAT(Numbers(copy), ElementsAre(1));
    EXPECT_EQ(copy.Add()->Number(), 2);
}

TEST_F(CAISimpArrCopies, CopyAfterTheCapacityFigureShrankTakesAllThatCounts) {
    Items items = ItemsOf({1, 2, 3});
    items.Create(1);
    Items copy;
    copy.Copy(items);
    EXPECT_THAT(Numbers(copy), ElementsAre(1, 2, 3));
    // The same of itself.
    items.Copy(items);
    EXPECT_THAT(Numbers(items), ElementsAre(1, 2, 3));
    EXPECT_EQ(items.GetSize(), 3);
}

TEST_F(CAISimpArrCopies, CopyOfOneAttachedToTheElementsGivesElementsOfItsOwn) {
    for (const int first : {0, 1}) {
        Items items = ItemsOf({1, 2, 3});
        const Item* const before = items.GetData();
        Items view;
        view.Attach(items.GetData() + first, 2);
        items.Copy(view);
        EXPECT_NE(items.GetData(), before);
        EXPECT_THAT(Numbers(items), ElementsAre(first + 1, first + 2));
    }
}

TEST_F(CAISimpArrCopies, CopyOfOneAttachedBeyondTheFiguresTakesTheElementsAsTheyWere) {
    using Copying = void (*)(Items&, const Items&);
    const Copying copyings[] = {
        [](Items& items, const Items& view) { items.Copy(view); },
        [](Items& items, const Items& view) { items.Copy(view, 0, 0); },
        [](Items& items, const Items& view) { items.CopySubArr(view, 0, 1, false); },
    };
    for (const Copying copy : copyings) {
        Items items = ItemsOf({1, 2, 3});
        Items view;
        view.Attach(items.GetData() + 1, 2);
        items.SetCount(1);
        items.Create(1);
        copy(items, view);
        EXPECT_THAT(Numbers(items), ElementsAre(2, 3));
    }
}

TEST_F(CAISimpArrCopies, CopyMakesTheElementsOfACapacityThatHasNone) {
    const Items source = ItemsOf({1, 2});
    const int living = Item::Living();
    Items items;
    items.m_nSize = 5;
    items.Copy(source);
    EXPECT_EQ(Item::Living(), living + 5);
    EXPECT_EQ(items.GetSize(), 5);
    EXPECT_THAT(Numbers(items), ElementsAre(1, 2));
    // As a source, it has no elements either.
    Items bare;
    bare.m_nSize = 9;
    items.Copy(bare);
    EXPECT_TRUE(items.IsEmpty());
    EXPECT_EQ(items.Add()->Number(), 1);
}

TEST_F(CAISimpArrCopies, CopyOfATailOverwritesAndExtends) {
    Items items = ItemsOf({1, 2, 3});
    items.Copy(ItemsOf({7, 8, 9}), 2, 1);
    EXPECT_THAT(Numbers(items), ElementsAre(1, 2, 8, 9));
    items.Copy(ItemsOf({7, 8, 9}), 0, 2);
    EXPECT_THAT(Numbers(items), ElementsAre(9, 2, 8, 9));
    items.Copy(ItemsOf({7}), 50, 1);
    EXPECT_THAT(Numbers(items), ElementsAre(9, 2, 8, 9));
}

TEST_F(CAISimpArrCopies, CopyOfATailOfItsOwnTakesTheElementsAsTheyWere) {
    for (const int64 room : {4, 10}) {
        Items items = ItemsOf({1, 2, 3});
        items.SetSizeGrow(room);
        items.Copy(items, 1, 0);
        EXPECT_THAT(Numbers(items), ElementsAre(1, 1, 2, 3));
        const Items copy(items);
        items.Copy(copy, 2, 1);
        EXPECT_THAT(Numbers(items), ElementsAre(1, 1, 1, 2, 3));
    }
}

TEST_F(CAISimpArrCopies, CopySubArrTakesARunInEitherOrder) {
    const Items source = ItemsOf({1, 2, 3, 4, 5});
    Items items = ItemsOf({9, 9, 9, 9, 9, 9});
    items.CopySubArr(source, 1, 3, false);
    EXPECT_THAT(Numbers(items), ElementsAre(2, 3, 4));
    items.CopySubArr(source, 1, 4, true);
    EXPECT_THAT(Numbers(items), ElementsAre(5, 4, 3, 2));
    items.CopySubArr(source, 2, 2, true);
    EXPECT_THAT(Numbers(items), ElementsAre(3));
    Items own = ItemsOf({1, 2, 3});
    own.CopySubArr(own, 0, 2, true);
    EXPECT_THAT(Numbers(own), ElementsAre(3, 2, 1));
}

TEST_F(CAISimpArrCopies, CopySubArrOfItsOwnReachesToTheCapacity) {
    Items items = ItemsOf({1, 2, 3});
    items.SetSizeGrow(6);
    items.CopySubArr(items, 0, 4, false);
    EXPECT_THAT(Numbers(items), ElementsAre(1, 2, 3, 0, 0));
    Items copy(items);
    copy.CopySubArr(items, 1, 5, true);
    EXPECT_THAT(Numbers(copy), ElementsAre(0, 0, 0, 3, 2));
}

TEST_F(CAISimpArrCopies, FindComparesByEquality) {
    const Items items = ItemsOf({1, 2, 3, 2});
    const Item two = 2;
    const Item four = 4;
    EXPECT_EQ(items.Find(&two), 1);
    EXPECT_EQ(items.Find(&four), -1);
    const Range near(5e-11, 1.0);
    EXPECT_EQ(RangesOf({{2.0, 3.0}, {0.0, 1.0}}).Find(&near), 1);
}

// --- order

TEST_F(CAISimpArrCopies, IsIncreasingAsksWhetherARangeLiesInsideTheOneBefore) {
    EXPECT_TRUE(Ranges().IsIncreasing());
    EXPECT_TRUE(RangesOf({{5.0, 6.0}}).IsIncreasing());
    EXPECT_TRUE(RangesOf({{5.0, 6.0}, {0.0, 1.0}}).IsIncreasing());
    EXPECT_TRUE(RangesOf({{0.25, 0.5}, {0.0, 1.0}, {0.0, 1.0}}).IsIncreasing());
    EXPECT_FALSE(RangesOf({{0.0, 1.0}, {0.25, 0.5}}).IsIncreasing());
    EXPECT_FALSE(RangesOf({{7.0, 8.0}, {0.0, 1.0}, {0.0, 0.5}}).IsIncreasing());
}

// The members of the merger, whose count was returned.
std::vector<Range> Merged(const Ranges& a, const Ranges& b) {
    Ranges merged = RangesOf({{50.0, 60.0}, {50.0, 60.0}, {50.0, 60.0}});
    const int64 n = merged.Merge(a, b);
    EXPECT_EQ(n, merged.GetCount());
    return All(merged);
}

TEST_F(CAISimpArrCopies, MergeWithAnEmptyListIsTheOther) {
    const Ranges list = RangesOf({{0.0, 1.0}, {2.0, 3.0}});
    EXPECT_THAT(Merged({}, {}), ElementsAre());
    EXPECT_THAT(Merged(list, {}), ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.0)));
    EXPECT_THAT(Merged({}, list), ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.0)));
}

TEST_F(CAISimpArrCopies, MergeTakesTheInnerRangeFirstAndOtherwiseThatOfTheSecondList) {
    EXPECT_THAT(Merged(RangesOf({{0.25, 0.5}}), RangesOf({{0.0, 1.0}})),
                ElementsAre(HasLimits(0.25, 0.5), HasLimits(0.0, 1.0)));
    EXPECT_THAT(Merged(RangesOf({{0.0, 1.0}}), RangesOf({{0.25, 0.5}})),
                ElementsAre(HasLimits(0.25, 0.5), HasLimits(0.0, 1.0)));
    EXPECT_THAT(Merged(RangesOf({{0.0, 1.0}}), RangesOf({{2.0, 3.0}})),
                ElementsAre(HasLimits(2.0, 3.0), HasLimits(0.0, 1.0)));
}

TEST_F(CAISimpArrCopies, MergeAppendsTheRestOfTheOtherList) {
    // The second list ends first, then the first one.
    EXPECT_THAT(Merged(RangesOf({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}}), RangesOf({{7.0, 8.0}})),
                ElementsAre(HasLimits(7.0, 8.0), HasLimits(0.0, 1.0), HasLimits(2.0, 3.0),
                            HasLimits(4.0, 5.0)));
    EXPECT_THAT(Merged(RangesOf({{2.0, 3.0}}), RangesOf({{1.0, 4.0}, {5.0, 6.0}, {7.0, 8.0}})),
                ElementsAre(HasLimits(2.0, 3.0), HasLimits(1.0, 4.0), HasLimits(5.0, 6.0),
                            HasLimits(7.0, 8.0)));
}

TEST_F(CAISimpArrCopies, MergeDropsWhatStartsWithinTheToleranceOfWhatItTakes) {
    // Taken from the first list, the second list's is dropped, and goes on.
    EXPECT_THAT(Merged(RangesOf({{0.0, 1.0}, {2.0, 3.0}}), RangesOf({{5e-11, 1.0}, {2.0, 4.0}})),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.0)));
    // Taken from the second list, the first list's is dropped.
    EXPECT_THAT(Merged(RangesOf({{0.0, 1.0}, {2.0, 3.0}}), RangesOf({{0.0, 0.5}, {2.0, 2.5}})),
                ElementsAre(HasLimits(0.0, 0.5), HasLimits(2.0, 2.5)));
    // Exactly the tolerance is no duplicate.
    EXPECT_THAT(Merged(RangesOf({{0.0, 1.0}}), RangesOf({{zToler, 1.0}})),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(zToler, 1.0)));
}

TEST_F(CAISimpArrCopies, MergeThatDropsTheLastOfAListAppendsTheRestOfTheOneTakenFrom) {
    EXPECT_THAT(Merged(RangesOf({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}}), RangesOf({{0.0, 1.0}})),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
    EXPECT_THAT(Merged(RangesOf({{0.0, 1.0}}), RangesOf({{0.0, 0.5}, {2.0, 3.0}, {4.0, 5.0}})),
                ElementsAre(HasLimits(0.0, 0.5), HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
    // Both end at once.
    EXPECT_THAT(Merged(RangesOf({{0.0, 1.0}}), RangesOf({{0.0, 1.0}})),
                ElementsAre(HasLimits(0.0, 1.0)));
}

TEST_F(CAISimpArrCopies, MergeTakesTheResultForAnArgument) {
    Ranges list = RangesOf({{0.0, 1.0}, {4.0, 5.0}});
    EXPECT_EQ(list.Merge(list, RangesOf({{2.0, 3.0}})), 3);
    EXPECT_THAT(All(list),
                ElementsAre(HasLimits(2.0, 3.0), HasLimits(0.0, 1.0), HasLimits(4.0, 5.0)));
    EXPECT_EQ(list.Merge(list, list), 3);
    EXPECT_THAT(All(list),
                ElementsAre(HasLimits(2.0, 3.0), HasLimits(0.0, 1.0), HasLimits(4.0, 5.0)));
    EXPECT_EQ(list.Merge(RangesOf({{0.25, 0.5}}), list), 4);
    EXPECT_THAT(All(list), ElementsAre(HasLimits(2.0, 3.0), HasLimits(0.25, 0.5),
                                       HasLimits(0.0, 1.0), HasLimits(4.0, 5.0)));
}

TEST_F(CAISimpArrCopies, MergeOfAnglesGoesByArcs) {
    const auto arc = [](double lo, double hi) {
        Range range(eScalarAngle);
        range.Set(lo, hi);
        return range;
    };
    // (-3, -2) lies inside the arc from 2 over the seam to -1, though not between the numbers.
    EXPECT_THAT(Merged(RangesOf({arc(-3.0, -2.0)}), RangesOf({arc(2.0, -1.0)})),
                ElementsAre(HasLimits(-3.0, -2.0), HasLimits(2.0, -1.0)));
}

// --- the archive record

// An element with a record of its own.
struct Number {
    int value = 0;
    void Serialize(CArchive& ar) { ar.IsStoring() ? ar << value : ar >> value; }
};

TEST_F(CAISimpArrCopies, RecordOfRangesIsCapacityAndCountAndNoLimits) {
    Ranges ranges = RangesOf({{1.0, 2.0}, {3.0, 4.0}});
    ranges.SetSizeGrow(7);
    const std::string record = Stored([&](CArchive& ar) { ranges.Serialize(ar); });
    EXPECT_EQ(record, std::string("\7\0\0\0\2\0\0\0", 8));
    Ranges loaded;
    Loaded(record, [&](CArchive& ar) { loaded.Serialize(ar); });
    EXPECT_EQ(loaded.GetSize(), 7);
    EXPECT_THAT(All(loaded), ElementsAre(HasLimits(-1e307, 1e307), HasLimits(-1e307, 1e307)));
}

TEST_F(CAISimpArrCopies, RecordHoldsTheLowHalvesOfTheFigures) {
    Ranges ranges;
    ranges.m_nSize = 0x100000007;
    EXPECT_EQ(Stored([&](CArchive& ar) { ranges.Serialize(ar); }),
              std::string("\7\0\0\0\0\0\0\0", 8));
    CAISimpArr<Number> numbers;
    numbers.m_nSize = 0x7FFFFFFF00000000;
    EXPECT_EQ(Stored([&](CArchive& ar) { numbers.Serialize(ar); }), std::string(8, '\0'));
}

TEST_F(CAISimpArrCopies, LoadingWithoutNeedOfMoreRoomKeepsTheElements) {
    Ranges loaded = RangesOf({{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}});
    const auto load = [&](CArchive& ar) { loaded.Serialize(ar); };
    Loaded(std::string("\2\0\0\0\1\0\0\0", 8), load);
    EXPECT_THAT(All(loaded), ElementsAre(HasLimits(1.0, 2.0)));
    Loaded(std::string("\x20\0\0\0\1\0\0\0", 8), load);
    EXPECT_EQ(loaded.GetSize(), 32);
    EXPECT_THAT(All(loaded), ElementsAre(HasLimits(-1e307, 1e307)));
}

TEST_F(CAISimpArrCopies, LoadingRaisesTheCapacityToTheCount) {
    Ranges loaded;
    Loaded(std::string("\2\0\0\0\5\0\0\0", 8), [&](CArchive& ar) { loaded.Serialize(ar); });
    EXPECT_EQ(loaded.GetSize(), 5);
    EXPECT_EQ(loaded.GetCount(), 5);
}

TEST_F(CAISimpArrCopies, LoadingNegativeFiguresGivesNoElements) {
    Ranges loaded = RangesOf({{1.0, 2.0}});
    Loaded(std::string(8, '\xFF'), [&](CArchive& ar) { loaded.Serialize(ar); });
    EXPECT_EQ(loaded.GetCount(), 0);
}

TEST_F(CAISimpArrCopies, RecordHoldsWhatTheElementsStore) {
    CAISimpArr<Number> numbers;
    numbers.SetSize(3, 2);
    numbers[0].value = 258;
    numbers[1].value = -1;
    const std::string record = Stored([&](CArchive& ar) { numbers.Serialize(ar); });
    EXPECT_EQ(record, std::string("\3\0\0\0\2\0\0\0\2\1\0\0\xFF\xFF\xFF\xFF", 16));
    CAISimpArr<Number> loaded;
    Loaded(record, [&](CArchive& ar) { loaded.Serialize(ar); });
    EXPECT_EQ(loaded.GetCount(), 2);
    EXPECT_EQ(loaded[0].value, 258);
    EXPECT_EQ(loaded[1].value, -1);
}

TEST_F(CAISimpArrCopies, EndOfTheRecordRaisesTheArchivesExceptionAndLeavesTheArray) {
    const std::string record("\7\0\0\0\2\0\0\0", 8);
    for (std::size_t length = 0; length < record.size(); ++length) {
        Ranges loaded = RangesOf({{1.0, 2.0}});
        const auto load = [&](CArchive& ar) { loaded.Serialize(ar); };
        EXPECT_EQ(LoadingCause(record.substr(0, length), load), CArchiveException::endOfFile);
        EXPECT_THAT(All(loaded), ElementsAre(HasLimits(1.0, 2.0)));
    }
}

}  // namespace
}  // namespace ZT
