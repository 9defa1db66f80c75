#include <zt/ranges/SetR1Spaced.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CInvalidArgException.h>
#include <tests/Raises.h>
#include <zt/ranges/SetFamily_test.h>

#include <cmath>
#include <limits>
#include <type_traits>

namespace ZT {
namespace {

using namespace testing_support;

SetR1Spaced Items(std::initializer_list<RangeR1> items) {
    return SetOf<SetR1Spaced>(items);
}

SetR1Spaced Arranged(SetR1Spaced items) {
    items.Arrange();
    return items;
}

SetR1Spaced Arranged(SetR1Spaced items, double spacing) {
    items.Arrange(spacing);
    return items;
}

// Five items of length 1, each 1 behind the one before; item 2 is the central one.
struct FiveItems : testing::Test {
    SetR1Spaced items = Items({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}, {6.0, 7.0}, {8.0, 9.0}});
};

TEST(SetR1Spaced, IsASetAndNothingElse) {
    static_assert(std::is_base_of_v<SetR1, SetR1Spaced>);
    static_assert(sizeof(SetR1Spaced) == sizeof(SetR1));
    EXPECT_TRUE(SetR1Spaced().IsEmpty());
    const SetR1Spaced items = Items({{0.0, 1.0}, External(0.5, 2.0)});
    EXPECT_THAT(SetR1Spaced(items), IsSet(items));
}

TEST(SetR1Spaced, CenterIsTheLowerOfTwoInTheMiddle) {
    const int centers[] = {0, 0, 0, 1, 1, 2, 2, 3, 3};
    for (int n = 0; n < 9; ++n) {
        SetR1Spaced items;
        items.SetSize(n);
        EXPECT_EQ(items.GetCenter(), centers[n]) << n;
    }
}

TEST(SetR1Spaced, IsValidExComparesWithinTheTolerance) {
    EXPECT_TRUE(SetR1Spaced().IsValidEx(5.0));
    EXPECT_TRUE(Items({{0.0, 1.0}}).IsValidEx(5.0));
    EXPECT_FALSE(Items({{1.0, 0.0}}).IsValidEx(0.0));
    const SetR1Spaced items = Items({{0.0, 1.0}, {2.0, 3.0}});
    EXPECT_TRUE(items.IsValidEx(1.0));
    EXPECT_TRUE(items.IsValidEx(1.0 + 5e-11));
    EXPECT_FALSE(items.IsValidEx(1.0 + 2e-10));
    EXPECT_FALSE(items.SetR1::IsValidEx(1.0 + 5e-11));
    // Exactly the tolerance is valid.
    EXPECT_TRUE(Items({{0.0, zToler}, {0.0, 1.0}}).IsValidEx(0.0));
    EXPECT_FALSE(Items({{0.0, std::nextafter(zToler, 1.0)}, {0.0, 1.0}}).IsValidEx(0.0));
    EXPECT_FALSE(Items({{0.0, 1.0}, {2.0, 3.0}, {3.5, 4.0}}).IsValidEx(1.0));
}

// --- arranging

TEST(SetR1Spaced, ArrangePushesOverlapsAwayFromTheCentralItem) {
    EXPECT_THAT(Arranged(Items({{0.0, 2.0}, {1.0, 3.0}, {2.0, 4.0}})),
                Is({{-1.0, 1.0}, {1.0, 3.0}, {3.0, 5.0}}));
}

TEST(SetR1Spaced, ArrangeLeavesFewerThanTwoItems) {
    EXPECT_THAT(Arranged(SetR1Spaced()), Is({}));
    EXPECT_THAT(Arranged(Items({{0.0, 2.0}})), Is({{0.0, 2.0}}));
}

TEST(SetR1Spaced, ArrangeOfTwoMovesTheUpperOne) {
    EXPECT_THAT(Arranged(Items({{0.0, 2.0}, {1.0, 3.0}})), Is({{0.0, 2.0}, {2.0, 4.0}}));
}

TEST_F(FiveItems, ArrangeLeavesItemsThatDoNotOverlap) {
    EXPECT_THAT(Arranged(items), IsSet(items));
}

TEST(SetR1Spaced, ArrangePassesOnWhatAGapDoesNotTakeUp) {
    // The push of 1.5 into the item behind the centre, less the gap of 0.5, moves the last by 1.
    EXPECT_THAT(Arranged(Items({{-9.0, -8.0}, {0.0, 4.0}, {2.5, 3.5}, {4.0, 5.0}})),
                Is({{-9.0, -8.0}, {0.0, 4.0}, {4.0, 5.0}, {5.0, 6.0}}));
    // The same downwards.
    EXPECT_THAT(
        Arranged(Items({{-5.0, -4.0}, {-3.5, -2.5}, {-4.0, 0.0}, {9.0, 10.0}, {11.0, 12.0}})),
        Is({{-6.0, -5.0}, {-5.0, -4.0}, {-4.0, 0.0}, {9.0, 10.0}, {11.0, 12.0}}));
}

TEST(SetR1Spaced, ArrangeMovesAnItemBackIntoTheGapTowardsTheCentre) {
    // Item 2 overlaps the last by 1 and has a gap of 0.25 to the centre: it moves back by that,
    // and the last one takes the push of -0.25 + 1.
    EXPECT_THAT(Arranged(Items({{-9.0, -8.0}, {0.0, 1.0}, {1.25, 3.25}, {2.25, 4.0}})),
                Is({{-9.0, -8.0}, {0.0, 1.0}, {1.0, 3.0}, {3.0, 4.75}}));
    // The gap is larger than the overlap.
    EXPECT_THAT(Arranged(Items({{-9.0, -8.0}, {0.0, 1.0}, {5.0, 7.0}, {6.5, 8.0}})),
                Is({{-9.0, -8.0}, {0.0, 1.0}, {4.5, 6.5}, {6.5, 8.0}}));
    EXPECT_THAT(
        Arranged(Items({{-4.0, -2.25}, {-3.25, -1.25}, {-1.0, 0.0}, {9.0, 10.0}, {11.0, 12.0}})),
        Is({{-4.75, -3.0}, {-3.0, -1.0}, {-1.0, 0.0}, {9.0, 10.0}, {11.0, 12.0}}));
}

TEST(SetR1Spaced, ArrangeCarriesAGapOnOverAnItemThatTouchesTheNext) {
    // Item 4 moves back by the gap of 0.5 behind item 3, into item 3, which has not moved.
    EXPECT_THAT(Arranged(Items(
                    {{-9.0, -8.0}, {-7.0, -6.0}, {0.0, 1.0}, {1.5, 2.0}, {2.0, 3.0}, {2.0, 4.0}})),
                Is({{-9.0, -8.0}, {-7.0, -6.0}, {0.0, 1.0}, {1.5, 2.0}, {1.5, 2.5}, {2.5, 4.5}}));
}

TEST(SetR1Spaced, ArrangeWithASpacing) {
    // Longer by 1 each, the items are [-0.5, 2.5], [0.5, 3.5], [1.5, 4.5]; pushed apart,
    // [-2.5, 0.5], [0.5, 3.5], [3.5, 6.5].
    EXPECT_THAT(Arranged(Items({{0.0, 2.0}, {1.0, 3.0}, {2.0, 4.0}}), 1.0),
                Is({{-2.0, 0.0}, {1.0, 3.0}, {4.0, 6.0}}));
    EXPECT_THAT(Arranged(Items({{0.0, 2.0}, {5.0, 6.0}}), 3.0), Is({{0.0, 2.0}, {5.0, 6.0}}));
    EXPECT_THAT(Arranged(Items({{0.0, 2.0}, {5.0, 6.0}}), 4.0), Is({{0.0, 2.0}, {6.0, 7.0}}));
}

TEST(SetR1Spaced, ArrangeWithANegativeSpacingDoesNothing) {
    const SetR1Spaced items = Items({{0.0, 2.0}, {1.0, 3.0}, {2.0, 4.0}});
    for (const double spacing : {-1.0, -zToler, -2e-10, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THAT(Arranged(items, spacing), IsSet(items)) << spacing;
    }
}

TEST(SetR1Spaced, ArrangeWithASpacingWithinTheToleranceIsArrange) {
    const SetR1Spaced items = Items({{0.0, 2.0}, {1.0, 3.0}, {2.0, 4.0}});
    for (const double spacing : {0.0, -5e-11, 5e-11}) {
        EXPECT_THAT(Arranged(items, spacing), IsSet(Arranged(items))) << spacing;
    }
}

TEST(SetR1Spaced, ArrangeWithASpacingBelowTwiceTheToleranceMovesNothing) {
    const SetR1Spaced items = Items({{0.0, 2.0}, {1.0, 3.0}, {2.0, 4.0}});
    EXPECT_THAT(Arranged(items, zToler), IsSet(items));
    EXPECT_THAT(Arranged(items, 1.5e-10), IsSet(items));
    const SetR1Spaced moved = Arranged(items, 2.5e-10);
    EXPECT_NEAR(moved[0].m_min, -1.0 - 2.5e-10, 1e-14);
    EXPECT_NEAR(moved[0].m_max, 1.0 - 2.5e-10, 1e-14);
    EXPECT_NEAR(moved[2].m_min, 3.0 + 2.5e-10, 1e-14);
    EXPECT_NEAR(moved[2].m_max, 5.0 + 2.5e-10, 1e-14);
}

TEST(SetR1Spaced, ArrangeWithASpacingCarriesAGapOnToo) {
    // Longer by 0.5 each, the items from the third one on are [-0.25, 1.25], [2.25, 2.75],
    // [2.75, 3.75], [2.75, 5.25]: item 3 touches item 4, which moves back by 1 into the gap of 1
    // that item 3 has passed on, and the last one stays, with a push of 0.
    const SetR1Spaced items =
        Items({{-9.0, -8.0}, {-7.0, -6.0}, {0.0, 1.0}, {2.5, 2.5}, {3.0, 3.5}, {3.0, 5.0}});
    EXPECT_THAT(Arranged(items, 0.5),
                Is({{-9.0, -8.0}, {-7.0, -6.0}, {0.0, 1.0}, {2.5, 2.5}, {2.0, 2.5}, {3.0, 5.0}}));
}

TEST(SetR1Spaced, ArrangeWithASpacingKeepsFlagsAndItemsWithinTheToleranceOfTheirPlace) {
    SetR1Spaced items = Items({{0.0, 2.0}, External(5.0, 6.0)});
    items.Arrange(4.0);
    EXPECT_THAT(items, Is({{0.0, 2.0}, External(6.0, 7.0)}));
}

// --- pushing one item

TEST_F(FiveItems, PushSingleRangeMovesAnItemAndReturnsWhatTheGapLeaves) {
    EXPECT_THAT(items.PushSingleRange(1, false, 1.5), testing_support::Is(0.5));
    EXPECT_THAT(items[1], HasLimits(3.5, 4.5));
    EXPECT_THAT(items.PushSingleRange(3, true, 0.25), testing_support::Is(-0.75));
    EXPECT_THAT(items[3], HasLimits(5.75, 6.75));
}

TEST_F(FiveItems, PushSingleRangeAtTheEndReturnsThePush) {
    EXPECT_THAT(items.PushSingleRange(4, false, 2.0), testing_support::Is(2.0));
    EXPECT_THAT(items[4], HasLimits(10.0, 11.0));
    EXPECT_THAT(items.PushSingleRange(0, true, 2.0), testing_support::Is(2.0));
    EXPECT_THAT(items[0], HasLimits(-2.0, -1.0));
    EXPECT_THAT(items.PushSingleRange(0, true, -2.0), testing_support::Is(-2.0));
    EXPECT_THAT(items[0], HasLimits(-2.0, -1.0));
}

TEST_F(FiveItems, PushSingleRangeByANegativeAmountMovesNothingWhereThereIsAGap) {
    EXPECT_THAT(items.PushSingleRange(1, false, -3.0), testing_support::Is(-4.0));
    EXPECT_THAT(items.PushSingleRange(1, true, -3.0), testing_support::Is(-4.0));
    EXPECT_THAT(items[1], HasLimits(2.0, 3.0));
}

TEST_F(FiveItems, PushSingleRangeMovesBackByTheSmallerOfOverlapAndGap) {
    items.SetRange(1, 2.0, 4.5);  // overlaps item 2 by 0.5
    EXPECT_THAT(items.PushSingleRange(1, false, -2.0), testing_support::Is(-1.5));
    EXPECT_THAT(items[1], HasLimits(1.5, 4.0));
    items.SetRange(1, 2.0, 4.5);
    EXPECT_THAT(items.PushSingleRange(1, false, -0.25), testing_support::Is(0.25));
    EXPECT_THAT(items[1], HasLimits(1.75, 4.25));
    items.SetRange(3, 4.5, 7.0);  // overlaps item 2 by 0.5
    EXPECT_THAT(items.PushSingleRange(3, true, -2.0), testing_support::Is(-1.5));
    EXPECT_THAT(items[3], HasLimits(5.0, 7.5));
    // Touching is no overlap, and a push of 0 no slack.
    items.SetRange(3, 5.0, 7.0);
    EXPECT_THAT(items.PushSingleRange(3, true, -2.0), testing_support::Is(-2.0));
    EXPECT_THAT(items[3], HasLimits(5.0, 7.0));
    items.SetRange(3, 4.5, 7.0);
    EXPECT_THAT(items.PushSingleRange(3, true, 0.0), testing_support::Is(0.5));
    EXPECT_THAT(items[3], HasLimits(4.5, 7.0));
}

TEST_F(FiveItems, PushSingleRangeOutsideTheRow) {
    EXPECT_THAT(items.PushSingleRange(5, false, 2.0), testing_support::Is(0.0));
    EXPECT_THAT(items.PushSingleRange(5, true, 2.0), testing_support::Is(0.0));
    for (const bool lower : {false, true}) {
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { items.PushSingleRange(-1, lower, 2.0); }));
    }
    EXPECT_THAT(SetR1Spaced().PushSingleRange(0, false, 2.0), testing_support::Is(0.0));
    EXPECT_THAT(items, IsSet(Items({{0, 1}, {2, 3}, {4, 5}, {6, 7}, {8, 9}})));
}

// --- pushing a run

TEST_F(FiveItems, PushRangeGoesOnToTheEndOfTheRow) {
    EXPECT_THAT(items.PushRange(3, false, 3.0), testing_support::Is(2.0));
    EXPECT_THAT(items, Is({{0, 1}, {2, 3}, {4, 5}, {9, 10}, {10, 11}}));
    EXPECT_THAT(items.PushRange(1, true, 3.0), testing_support::Is(2.0));
    EXPECT_THAT(items, Is({{-2, -1}, {-1, 0}, {4, 5}, {9, 10}, {10, 11}}));
}

TEST_F(FiveItems, PushRangeFromTheCentralItemMovesIt) {
    EXPECT_THAT(items.PushRange(2, false, 1.5), testing_support::Is(-0.5));
    EXPECT_THAT(items, Is({{0, 1}, {2, 3}, {5.5, 6.5}, {6.5, 7.5}, {8, 9}}));
}

TEST_F(FiveItems, PushRangeStopsBeforeTheCentralItem) {
    EXPECT_THAT(items.PushRange(0, false, 3.0), testing_support::Is(1.0));
    EXPECT_THAT(items, Is({{3, 4}, {4, 5}, {4, 5}, {6, 7}, {8, 9}}));
    EXPECT_THAT(items.PushRange(4, true, 4.0), testing_support::Is(2.0));
    EXPECT_THAT(items, Is({{3, 4}, {4, 5}, {4, 5}, {3, 4}, {4, 5}}));
}

TEST_F(FiveItems, PushRangeDownwardsFromTheCentralItemGoesToTheStart) {
    EXPECT_THAT(items.PushRange(2, true, 1.5), testing_support::Is(-0.5));
    EXPECT_THAT(items, Is({{0, 1}, {1.5, 2.5}, {2.5, 3.5}, {6, 7}, {8, 9}}));
}

TEST_F(FiveItems, PushRangeThatHasNowhereToGoReturnsThePush) {
    EXPECT_THAT(items.PushRange(-1, true, 3.0), testing_support::Is(3.0));
    EXPECT_THAT(items, Is({{0, 1}, {2, 3}, {4, 5}, {6, 7}, {8, 9}}));
}

TEST_F(FiveItems, PushRangeOutsideTheRow) {
    EXPECT_THAT(items.PushRange(5, true, 3.0), testing_support::Is(0.0));
    EXPECT_THAT(items.PushRange(5, false, 3.0), testing_support::Is(0.0));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { items.PushRange(-1, false, 3.0); }));
}

TEST(SetR1Spaced, PushRangeOfFewerThanTwoItemsDoesNothing) {
    SetR1Spaced items = Items({{0.0, 1.0}});
    EXPECT_THAT(items.PushRange(0, false, 3.0), testing_support::Is(0.0));
    EXPECT_THAT(items.PushRange(0, true, 3.0), testing_support::Is(0.0));
    EXPECT_THAT(items, Is({{0.0, 1.0}}));
}

TEST(SetR1Spaced, PushRangeOfTwoItemsFromTheUpperOneDownwardsStaysAboveTheCentre) {
    SetR1Spaced items = Items({{0.0, 1.0}, {2.0, 3.0}});
    EXPECT_THAT(items.PushRange(1, true, 0.5), testing_support::Is(-0.5));
    EXPECT_THAT(items, Is({{0.0, 1.0}, {1.5, 2.5}}));
}

}  // namespace
}  // namespace ZT
