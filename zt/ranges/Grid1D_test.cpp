// Uniform grids on a real interval.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/RangeMatchers.h>
#include <zt/ranges/Grid1D.h>
#include <zt/ranges/RangeInt.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <ostream>
#include <type_traits>

namespace ZT {

void PrintTo(const Grid1D& grid, std::ostream* os) {
    PrintTo(grid.m_range, os);
    *os << " in " << grid.m_nSegments;
}

namespace {

using testing_support::External;
using testing_support::HasLimits;
using testing_support::InFull;
using testing_support::Is;
using testing_support::SameDouble;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

MATCHER_P3(IsGrid, lo, hi, n,
           "is [" + InFull(lo) + ", " + InFull(hi) + "] in " + std::to_string(n)) {
    return SameDouble(arg.m_range.m_min, lo) && SameDouble(arg.m_range.m_max, hi) &&
           arg.m_nSegments == n;
}

// A grid whose fields the constructor would not let through.
struct AnyGrid : Grid1D {
    AnyGrid(double lo, double hi, int n) {
        m_range.m_min = lo;
        m_range.m_max = hi;
        m_nSegments = n;
    }
};

// From 0 to 10 in steps of 2.
struct GridOfTen : testing::Test {
    Grid1D grid{0, 10, 5};
    AnyGrid noSegments{0, 10, 0};
    Grid1D empty;
};

// The record.

TEST(Grid1D, FieldsFollowTheTableInOrder) {
    EXPECT_TRUE((std::is_base_of_v<CObject, Grid1D>));
    EXPECT_EQ(offsetof(Grid1D, m_range), 8u);
    EXPECT_EQ(offsetof(Grid1D, m_nSegments), 8 + sizeof(RangeR1));
    EXPECT_EQ(sizeof(Grid1D), 16 + sizeof(RangeR1));
    EXPECT_EQ(sizeof(Grid1D::m_nSegments), 4u);
}

TEST(Grid1D, VirtualOperationsAreThoseOfTheRoot) {
    EXPECT_TRUE(std::has_virtual_destructor_v<Grid1D>);
    EXPECT_EQ(Grid1D().GetRuntimeClass(), CObject::GetThisClass());
    EXPECT_FALSE(Grid1D().IsSerializable());
}

TEST(Grid1D, NewOneIsEmptyWithoutSegments) {
    const Grid1D grid;
    EXPECT_THAT(grid, IsGrid(1e307, -1e307, 0));
    EXPECT_EQ(grid.GetKnotCount(), 0);
    EXPECT_THAT(grid.GetStep(), Is(1e307));
}

TEST(Grid1D, MadeFromARangeHasItsLimitsAndFlagAndNoSegments) {
    const Grid1D grid(External(3, 7));
    EXPECT_THAT(grid, IsGrid(3.0, 7.0, 0));
    EXPECT_TRUE(grid.m_range.IsExternal());
}

TEST(Grid1D, MadeFromLimitsAndACount) {
    EXPECT_THAT(Grid1D(3, 7, 2), IsGrid(3.0, 7.0, 2));
    EXPECT_THAT(Grid1D(0, 2e-10, 1), IsGrid(0.0, 2e-10, 1));
}

TEST(Grid1D, MadeFromLimitsThatAreNotApartOrWithoutACountIsEmpty) {
    EXPECT_THAT(Grid1D(7, 3, 2), IsGrid(1e307, -1e307, 0));
    EXPECT_THAT(Grid1D(3, 3, 2), IsGrid(1e307, -1e307, 0));
    EXPECT_THAT(Grid1D(0, zToler, 2), IsGrid(1e307, -1e307, 0));
    EXPECT_THAT(Grid1D(3, 7, 0), IsGrid(1e307, -1e307, 0));
    EXPECT_THAT(Grid1D(3, 7, -2), IsGrid(1e307, -1e307, 0));
    EXPECT_THAT(Grid1D(kNaN, 7, 2), IsGrid(1e307, -1e307, 0));
}

// Steps and knots.

TEST_F(GridOfTen, StepIsTheLengthOfASegment) {
    EXPECT_THAT(Grid1D(0, 10, 4).GetStep(), Is(2.5));
    EXPECT_THAT(grid.GetStep(), Is(2.0));
}

TEST_F(GridOfTen, StepWithoutSegmentsIsInfinite) {
    EXPECT_THAT(noSegments.GetStep(), Is(1e307));
    EXPECT_THAT(AnyGrid(0, 10, -3).GetStep(), Is(1e307));
}

TEST_F(GridOfTen, KnotsGoOnOutsideOfTheRange) {
    EXPECT_THAT(grid.GetKnot(0), Is(0.0));
    EXPECT_THAT(grid.GetKnot(3), Is(6.0));
    EXPECT_THAT(grid.GetKnot(5), Is(10.0));
    EXPECT_THAT(grid.GetKnot(7), Is(14.0));
    EXPECT_THAT(grid.GetKnot(-2), Is(-4.0));
    EXPECT_THAT(Grid1D(0, 10, 4).GetKnot(7), Is(17.5));
}

// Tenths, which are not exact: the results tell in which order the operations are taken.
struct GridOfTenths : testing::Test {
    Grid1D grid{0, 1, 10};
};

TEST_F(GridOfTenths, KnotIsAMultipleOfTheStep) {
    EXPECT_THAT(grid.GetKnot(3), Is(0.30000000000000004));
}

TEST_F(GridOfTenths, SetSegmentCountExStoresAMultipleOfTheStep) {
    grid.SetSegmentCountEx(3, true);
    EXPECT_THAT(grid, IsGrid(0.0, 0.30000000000000004, 3));
}

TEST_F(GridOfTenths, IncludeStoresAMultipleOfTheStepAbove) {
    grid.Include(1.15);
    EXPECT_THAT(grid, IsGrid(0.0, 1.2000000000000002, 12));
}

TEST_F(GridOfTenths, IncludeTakesAMultipleOfTheStepFromTheUpperLimitBelow) {
    grid.Include(-0.25);
    EXPECT_THAT(grid, IsGrid(-0.30000000000000004, 1.0, 13));
}

TEST_F(GridOfTenths, SetStepSizeStoresAMultipleOfTheStep) {
    AnyGrid shrunk(0, 0.35, 1);
    shrunk.SetStepSize(0.1, eTrue);
    EXPECT_THAT(shrunk, IsGrid(0.0, 0.30000000000000004, 3));
}

TEST_F(GridOfTenths, ZeroAlignedGridAddsTheLastStepToAMultiple) {
    grid.CoverRangeZeroAligned({0.35, 0.55}, 0.1, 0);
    EXPECT_THAT(grid, IsGrid(0.30000000000000004, 0.6, 3));
}

// 49 forty-ninths are a little less than 1.
struct GridOfFortyNinths : testing::Test {
    Grid1D grid{0, 1, 49};
};

TEST_F(GridOfFortyNinths, SetSegmentCountExOfThePresentCountKeepsTheLimitsToTheBit) {
    ASSERT_NE(49 * grid.GetStep(), 1.0);
    for (const bool keepMin : {true, false}) {
        grid.SetSegmentCountEx(49, keepMin);
        EXPECT_THAT(grid, IsGrid(0.0, 1.0, 49));
    }
}

TEST_F(GridOfFortyNinths, IncludeThatNeedsNoFurtherSegmentKeepsTheLimitsToTheBit) {
    // A point between the limits that is not in: in the hole of an external range.
    grid.m_range.m_bExternal = true;
    grid.Include(0.005);
    EXPECT_THAT(grid, IsGrid(0.0, 1.0, 49));
}

TEST_F(GridOfTen, KnotWithoutSegmentsIsTheLowerLimit) {
    for (const int i : {-1, 0, 1, 100}) EXPECT_THAT(AnyGrid(3, 10, 0).GetKnot(i), Is(3.0));
}

TEST_F(GridOfTen, KnotWithANegativeCountIsAMultipleOfTheInfiniteStep) {
    EXPECT_THAT(AnyGrid(3, 10, -2).GetKnot(0), Is(3.0));
    EXPECT_THAT(AnyGrid(3, 10, -2).GetKnot(2), Is(2e307));
    EXPECT_THAT(AnyGrid(3, 10, -2).GetKnot(-1), Is(-1e307));
}

TEST_F(GridOfTen, KnotCountIsOneMoreThanTheSegments) {
    EXPECT_EQ(grid.GetKnotCount(), 6);
    EXPECT_EQ(noSegments.GetKnotCount(), 1);
    EXPECT_EQ(empty.GetKnotCount(), 0);
    EXPECT_EQ(AnyGrid(5, 3, 4).GetKnotCount(), 0);
}

TEST_F(GridOfTen, ExtendedSequenceHasTheOuterLimitsAtBothEnds) {
    const RangeR1 all(-5, 20);
    EXPECT_THAT(grid.GetKnotAll(0, all), Is(-5.0));
    EXPECT_THAT(grid.GetKnotAll(1, all), Is(0.0));
    EXPECT_THAT(grid.GetKnotAll(6, all), Is(10.0));
    EXPECT_THAT(grid.GetKnotAll(7, all), Is(20.0));
    EXPECT_THAT(grid.GetKnotAll(8, all), Is(14.0));
    EXPECT_THAT(grid.GetKnotAll(-1, all), Is(-4.0));
}

TEST_F(GridOfTen, ExtendedSequenceOfAnEmptyGridIsTheOuterLimits) {
    const RangeR1 all(-5, 20);
    EXPECT_THAT(empty.GetKnotAll(0, all), Is(-5.0));
    EXPECT_THAT(empty.GetKnotAll(1, all), Is(20.0));
    EXPECT_THAT(AnyGrid(5, 3, 4).GetKnotAll(1, all), Is(20.0));
    EXPECT_THAT(noSegments.GetKnotAll(1, all), Is(0.0));
    EXPECT_THAT(noSegments.GetKnotAll(2, all), Is(20.0));
}

TEST_F(GridOfTen, SetSegmentCountChangesTheStep) {
    grid.SetSegmentCount(4);
    EXPECT_THAT(grid, IsGrid(0.0, 10.0, 4));
    EXPECT_EQ(grid.GetSegmentCount(), 4);
    EXPECT_THAT(grid.GetStep(), Is(2.5));
    grid.SetSegmentCount(-1);
    EXPECT_EQ(grid.GetSegmentCount(), -1);
}

TEST_F(GridOfTen, IsComparesLimitsByToleranceAndTheCount) {
    EXPECT_TRUE(grid.Is(0.25, 10, 5, 0.25));
    EXPECT_FALSE(grid.Is(0.5, 10, 5, 0.25));
    EXPECT_FALSE(grid.Is(0, 10, 4, 0.25));
    EXPECT_TRUE(AnyGrid(-2e306, 2e306, 5).Is(-1e307, 1e307, 5, 0.25));
}

// Search.

TEST_F(GridOfTen, SegmentHoldsThePoint) {
    bool onKnot = true;
    EXPECT_EQ(grid.GetSegment(5, &onKnot), 2);
    EXPECT_FALSE(onKnot);
    EXPECT_EQ(grid.GetSegment(4, &onKnot), 2);
    EXPECT_TRUE(onKnot);
    EXPECT_EQ(grid.GetSegment(10, nullptr), 5);
}

TEST_F(GridOfTen, SegmentOfAGridWithoutSegmentsLeavesTheFlag) {
    bool onKnot = true;
    EXPECT_EQ(noSegments.GetSegment(5, &onKnot), 0);
    EXPECT_TRUE(onKnot);
}

TEST_F(GridOfTen, IsKnotOnAKnotNotBelowTheGrid) {
    EXPECT_TRUE(grid.IsKnot(4));
    EXPECT_TRUE(grid.IsKnot(4 + 5e-11));
    EXPECT_TRUE(grid.IsKnot(-5e-11));
    EXPECT_TRUE(grid.IsKnot(10));
    EXPECT_TRUE(grid.IsKnot(14));
    EXPECT_FALSE(grid.IsKnot(4.5));
    EXPECT_FALSE(grid.IsKnot(-2));
}

TEST_F(GridOfTen, NoPointIsAKnotWithoutSegments) {
    EXPECT_FALSE(noSegments.IsKnot(0));
    EXPECT_FALSE(noSegments.IsKnot(10));
    EXPECT_FALSE(empty.IsKnot(0));
}

TEST_F(GridOfTen, EveryPointIsAKnotIfTheStepIsBelowTheTolerance) {
    EXPECT_TRUE(AnyGrid(0, 1e-10, 2).IsKnot(3));
    EXPECT_TRUE(AnyGrid(5, 3, 2).IsKnot(4));
    EXPECT_FALSE(AnyGrid(0, 3e-10, 1).IsKnot(1.5e-10));
}

TEST_F(GridOfTen, NearestKnotOfAPointHalfWayIsTheUpper) {
    const Grid1D quarters(0, 10, 4);
    EXPECT_EQ(quarters.GetNearestKnot(1.25), 1);
    EXPECT_EQ(quarters.GetNearestKnot(1.2), 0);
    EXPECT_EQ(grid.GetNearestKnot(5), 3);
    EXPECT_EQ(grid.GetNearestKnot(std::nextafter(5.0, 0.0)), 2);
    EXPECT_EQ(grid.GetNearestKnot(10), 5);
}

TEST_F(GridOfTen, NearestKnotGoesOnAboveTheGridAndStopsBelowIt) {
    EXPECT_EQ(grid.GetNearestKnot(13.5), 7);
    EXPECT_EQ(grid.GetNearestKnot(-1.5), 0);
    EXPECT_EQ(grid.GetNearestKnot(-2), -1);
    EXPECT_EQ(grid.GetNearestKnot(-100), -1);
}

TEST_F(GridOfTen, NearestKnotWithAStepBelowTheToleranceIsNone) {
    EXPECT_EQ(AnyGrid(0, 1e-10, 2).GetNearestKnot(0), -1);
    EXPECT_EQ(AnyGrid(0, zToler, 1).GetNearestKnot(0), 0);
}

TEST_F(GridOfTen, NearestKnotWithoutSegmentsRunsOnTheInfiniteStep) {
    EXPECT_EQ(noSegments.GetNearestKnot(7), 0);
    EXPECT_EQ(noSegments.GetNearestKnot(6e306), 1);
    EXPECT_EQ(AnyGrid(0, 10, -3).GetNearestKnot(10), -1);
    EXPECT_EQ(AnyGrid(0, 10, -3).GetNearestKnot(7), 0);
}

TEST_F(GridOfTen, FirstKnotInARangeIsThatOfItsSegmentOrTheNext) {
    EXPECT_EQ(grid.GetFirstKnotIn({4, 5}), 2);
    EXPECT_EQ(grid.GetFirstKnotIn({3, 5}), 2);
    EXPECT_EQ(grid.GetFirstKnotIn({3, 9}), 2);
    EXPECT_EQ(grid.GetFirstKnotIn({4 + 5e-11, 5}), 2);
    EXPECT_EQ(grid.GetFirstKnotIn({4.5, 5.5}), -1);
    EXPECT_EQ(grid.GetFirstKnotIn({13, 15}), 7);
}

TEST_F(GridOfTen, FirstKnotBelowTheGridIsCutTowardsZero) {
    EXPECT_EQ(grid.GetFirstKnotIn({-1, 1}), 0);
    EXPECT_EQ(grid.GetFirstKnotIn({-5, -3}), -2);
    EXPECT_EQ(grid.GetFirstKnotIn({-3, -1}), -1);
    EXPECT_EQ(grid.GetFirstKnotIn({-3, -2.5}), -1);
}

TEST_F(GridOfTen, FirstKnotWithAStepNotAboveTheToleranceIsZero) {
    EXPECT_EQ(AnyGrid(0, zToler, 1).GetFirstKnotIn({5, 6}), 0);
    EXPECT_EQ(AnyGrid(7, 3, 2).GetFirstKnotIn({5, 6}), 0);
    EXPECT_EQ(AnyGrid(0, 2e-10, 1).GetFirstKnotIn({5, 5}), -1);
}

TEST_F(GridOfTen, FirstKnotWithoutSegmentsRunsOnTheInfiniteStep) {
    EXPECT_EQ(noSegments.GetFirstKnotIn({-1, 1}), 0);
    EXPECT_EQ(noSegments.GetFirstKnotIn({3, 5}), -1);
    EXPECT_EQ(noSegments.GetFirstKnotIn({3, 1e307}), 1);
}

TEST_F(GridOfTen, FirstKnotObeysTheFlagOfTheRange) {
    EXPECT_EQ(grid.GetFirstKnotIn(External(4, 5)), 2);
    EXPECT_EQ(grid.GetFirstKnotIn(External(3, 5)), 1);
    EXPECT_EQ(grid.GetFirstKnotIn(External(3, 9)), 1);
}

TEST_F(GridOfTen, CoverSetIsTheRunOfSegmentsOfBothLimits) {
    const auto cover = [this](double lo, double hi) {
        RangeInt out(77, 77);
        grid.GetCoverSet({lo, hi}, out);
        return out;
    };
    EXPECT_TRUE(cover(3, 7).Is(1, 3));
    EXPECT_TRUE(cover(4, 8).Is(2, 4));
    EXPECT_TRUE(cover(0, 10).Is(0, 4));
    EXPECT_TRUE(cover(3, 20).Is(1, 4));
}

TEST_F(GridOfTen, CoverSetIsCutAtTheEndOnly) {
    RangeInt out;
    grid.GetCoverSet({12, 20}, out);
    EXPECT_TRUE(out.Is(6, 4));
    grid.GetCoverSet({-5, -3}, out);
    EXPECT_TRUE(out.Is(-2, -1));
    grid.GetCoverSet({-1, -0.5}, out);
    EXPECT_TRUE(out.Is(0, 0));
}

TEST_F(GridOfTen, CoverSetWithoutSegmentsIsEmpty) {
    RangeInt out(77, 77);
    noSegments.GetCoverSet({3, 7}, out);
    EXPECT_TRUE(out.Is(0, -1));
}

struct InternalKnots : testing::Test {
    Grid1D grid{0, 10, 10};
    Grid1D out{-1, 1, 3};
    const Grid1D& Of(double lo, double hi) {
        grid.GetInternalKnots({lo, hi}, out);
        return out;
    }
};

TEST_F(InternalKnots, AreTheKnotsBetweenTheLimits) {
    EXPECT_THAT(Of(2.5, 5.5), IsGrid(3.0, 5.0, 2));
}

TEST_F(InternalKnots, DoNotIncludeAKnotAtALimit) {
    EXPECT_THAT(Of(2, 5.5), IsGrid(3.0, 5.0, 2));
    EXPECT_THAT(Of(2.5, 6), IsGrid(3.0, 5.0, 2));
    EXPECT_THAT(Of(2, 6), IsGrid(3.0, 5.0, 2));
    EXPECT_THAT(Of(0, 10), IsGrid(1.0, 9.0, 8));
    EXPECT_THAT(Of(2 - 5e-11, 6 + 5e-11), IsGrid(3.0, 5.0, 2));
}

TEST_F(InternalKnots, OfWhichThereIsOneAreASingletonWithoutSegments) {
    EXPECT_THAT(Of(2.5, 3.5), IsGrid(3.0, 3.0, 0));
}

TEST_F(InternalKnots, OfWhichThereIsNoneAreAnInvertedRange) {
    EXPECT_THAT(Of(2.1, 2.9), IsGrid(3.0, 2.0, 0));
    EXPECT_TRUE(out.m_range.IsEmpty());
    EXPECT_EQ(out.GetKnotCount(), 0);
}

TEST_F(InternalKnots, BeforeAKnotAtTheUpperLimitAreAnInvertedRange) {
    EXPECT_THAT(Of(2.5, 3), IsGrid(3.0, 2.0, 0));
}

TEST_F(GridOfTen, InternalKnotsOfWhichThereIsNoneEndOneBelowTheirStartWhateverTheStep) {
    Grid1D out(-1, 1, 3);
    grid.GetInternalKnots({2.5, 3.5}, out);
    EXPECT_THAT(out, IsGrid(4.0, 3.0, 0));
}

TEST_F(GridOfTen, InternalKnotsBeforeAKnotAtTheUpperLimitEndAtTheKnotBefore) {
    Grid1D out(-1, 1, 3);
    grid.GetInternalKnots({3, 4}, out);
    EXPECT_THAT(out, IsGrid(4.0, 2.0, 0));
}

TEST_F(GridOfTen, InternalKnotsWithoutSegmentsAreTheLowerLimitOrNone) {
    Grid1D out(-1, 1, 3);
    noSegments.GetInternalKnots({-5, 5}, out);
    EXPECT_THAT(out, IsGrid(0.0, 0.0, 0));
    noSegments.GetInternalKnots({-5, -3}, out);
    EXPECT_THAT(out, IsGrid(0.0, -1.0, 0));
    // Also where the lower limit lies below the range.
    noSegments.GetInternalKnots({3, 5}, out);
    EXPECT_THAT(out, IsGrid(0.0, 0.0, 0));
}

TEST_F(InternalKnots, GoOnOutsideOfTheGrid) {
    EXPECT_THAT(Of(-5, 20), IsGrid(-4.0, 19.0, 23));
}

TEST_F(InternalKnots, BelowTheGridAreCutTowardsZero) {
    // The knot -4 is missed at the start, and taken in at the end, above the range.
    EXPECT_THAT(Of(-4.5, 20), IsGrid(-3.0, 19.0, 22));
    EXPECT_THAT(Of(-9, -4.5), IsGrid(-8.0, -4.0, 4));
}

TEST_F(InternalKnots, KeepTheFlagOfTheResult) {
    out.m_range.m_bExternal = true;
    Of(2.5, 5.5);
    EXPECT_TRUE(out.m_range.IsExternal());
}

struct ExtendedPlace {
    int index;
    bool onKnot;
    bool operator==(const ExtendedPlace&) const = default;
};

void PrintTo(const ExtendedPlace& place, std::ostream* os) {
    *os << place.index << (place.onKnot ? " on a knot" : " between knots");
}

ExtendedPlace Find(const Grid1D& grid, double x, const RangeR1& all) {
    bool onKnot = true;
    const int index = grid.FindRangeAll(x, all, onKnot);
    bool sameFlag = false;
    EXPECT_EQ(grid.FindRangeAll(x, all, sameFlag), index);
    EXPECT_EQ(sameFlag, onKnot);
    return {index, onKnot};
}

TEST_F(GridOfTen, ExtendedIntervalBelowTheGridIsTheFirst) {
    const RangeR1 all(-5, 20);
    EXPECT_EQ(Find(grid, -3, all), (ExtendedPlace{0, false}));
    EXPECT_EQ(Find(grid, -5, all), (ExtendedPlace{0, true}));
    EXPECT_EQ(Find(grid, -5 + 5e-11, all), (ExtendedPlace{0, true}));
    EXPECT_EQ(Find(grid, -7, all), (ExtendedPlace{0, false}));
}

TEST_F(GridOfTen, PointJustBelowTheFirstKnotIsNotOnIt) {
    EXPECT_EQ(Find(grid, -5e-11, {-5, 20}), (ExtendedPlace{0, false}));
    EXPECT_EQ(Find(grid, 5e-11, {-5, 20}), (ExtendedPlace{1, true}));
}

TEST_F(GridOfTen, PointBelowTheGridCanBeAtTheUpperOuterLimit) {
    EXPECT_EQ(Find(grid, -3, {-5, -3}), (ExtendedPlace{0, true}));
}

TEST_F(GridOfTen, ExtendedIntervalInTheGridIsOneMoreThanTheSegment) {
    const RangeR1 all(-5, 20);
    EXPECT_EQ(Find(grid, 0, all), (ExtendedPlace{1, true}));
    EXPECT_EQ(Find(grid, 1, all), (ExtendedPlace{1, false}));
    EXPECT_EQ(Find(grid, 2, all), (ExtendedPlace{2, true}));
    EXPECT_EQ(Find(grid, 9.5, all), (ExtendedPlace{5, false}));
}

TEST_F(GridOfTen, ExtendedIntervalAfterTheGrid) {
    const RangeR1 all(-5, 20);
    EXPECT_EQ(Find(grid, 10 - 5e-11, all), (ExtendedPlace{6, true}));
    EXPECT_EQ(Find(grid, 10, all), (ExtendedPlace{6, true}));
    EXPECT_EQ(Find(grid, 10 + 5e-11, all), (ExtendedPlace{6, true}));
    EXPECT_EQ(Find(grid, 15, all), (ExtendedPlace{6, false}));
}

TEST_F(GridOfTen, PointAtOrAboveTheUpperOuterLimitIsOnTheLastIndex) {
    const RangeR1 all(-5, 20);
    EXPECT_EQ(Find(grid, 20 - 5e-11, all), (ExtendedPlace{7, true}));
    EXPECT_EQ(Find(grid, 20, all), (ExtendedPlace{7, true}));
    EXPECT_EQ(Find(grid, 25, all), (ExtendedPlace{7, true}));
    EXPECT_EQ(Find(grid, 10, {-5, 10}), (ExtendedPlace{7, true}));
    EXPECT_EQ(Find(grid, 9, {-5, 5}), (ExtendedPlace{5, false}));
}

TEST_F(GridOfTen, ExtendedIntervalOfAnEmptyGrid) {
    const RangeR1 all(0, 10);
    EXPECT_EQ(Find(empty, 3, all), (ExtendedPlace{0, false}));
    EXPECT_EQ(Find(empty, 0, all), (ExtendedPlace{0, true}));
    EXPECT_EQ(Find(empty, 10, all), (ExtendedPlace{0, true}));
    const AnyGrid reversed(5, 3, 0);
    EXPECT_EQ(Find(reversed, 4, all), (ExtendedPlace{0, false}));
    EXPECT_EQ(Find(reversed, 5, all), (ExtendedPlace{0, true}));
    EXPECT_EQ(Find(reversed, 7, all), (ExtendedPlace{0, false}));
    EXPECT_EQ(Find(reversed, 10, all), (ExtendedPlace{1, true}));
}

TEST_F(GridOfTen, ExtendedIntervalOfAnEmptyGridWithSegmentsEndsAtKnotMinusOne) {
    // The step is -0.5, so that knot -1 lies at 5.5.
    const AnyGrid reversed(5, 3, 4);
    EXPECT_THAT(reversed.GetStep(), Is(-0.5));
    EXPECT_EQ(Find(reversed, 5.5, {0, 10}), (ExtendedPlace{0, true}));
    EXPECT_EQ(Find(reversed, 6, {0, 10}), (ExtendedPlace{0, false}));
    EXPECT_EQ(Find(reversed, 5.25, {0, 10}), (ExtendedPlace{1, true}));
}

TEST_F(GridOfTen, ExtendedIntervalWithoutSegments) {
    const RangeR1 all(-5, 20);
    EXPECT_EQ(Find(noSegments, -3, all), (ExtendedPlace{0, false}));
    EXPECT_EQ(Find(noSegments, 0, all), (ExtendedPlace{1, true}));
    EXPECT_EQ(Find(noSegments, 3, all), (ExtendedPlace{1, false}));
    EXPECT_EQ(Find(noSegments, 20, all), (ExtendedPlace{2, true}));
}

TEST_F(GridOfTen, FlagThatTheSearchLeavesUnwrittenIsFalse) {
    EXPECT_EQ(Find(noSegments, kNaN, {-5, 20}), (ExtendedPlace{1, false}));
}

// Changing the grid.

TEST_F(GridOfTen, SetSegmentCountExKeepsTheStepAndOneLimit) {
    grid.SetSegmentCountEx(7, true);
    EXPECT_THAT(grid, IsGrid(0.0, 14.0, 7));
    grid.SetSegmentCountEx(4, false);
    EXPECT_THAT(grid, IsGrid(6.0, 14.0, 4));
}

TEST_F(GridOfTen, SetSegmentCountExIgnoresACountThatIsNotPositiveOrTheSame) {
    for (const int n : {5, 0, -1}) {
        grid.SetSegmentCountEx(n, true);
        EXPECT_THAT(grid, IsGrid(0.0, 10.0, 5));
    }
}

TEST_F(GridOfTen, SetSegmentCountExWithoutSegmentsKeepsTheInfiniteStep) {
    noSegments.SetSegmentCountEx(2, true);
    EXPECT_THAT(noSegments, IsGrid(0.0, 2e307, 2));
}

TEST_F(GridOfTen, SetStepSizeGrowsShrinksOrDividesEvenly) {
    Grid1D grown(0, 10, 1);
    grown.SetStepSize(3, eFalse);
    EXPECT_THAT(grown, IsGrid(0.0, 12.0, 4));
    Grid1D shrunk(0, 10, 1);
    shrunk.SetStepSize(3, eTrue);
    EXPECT_THAT(shrunk, IsGrid(0.0, 9.0, 3));
    Grid1D divided(0, 10, 1);
    divided.SetStepSize(3, eUnknown);
    EXPECT_THAT(divided, IsGrid(0.0, 10.0, 3));
}

TEST_F(GridOfTen, SetStepSizeShrinksForAnyOtherValue) {
    for (const int value : {7, -2}) {
        Grid1D shrunk(0, 10, 1);
        shrunk.SetStepSize(3, static_cast<ETri>(value));
        EXPECT_THAT(shrunk, IsGrid(0.0, 9.0, 3));
    }
}

TEST_F(GridOfTen, SetStepSizeNotBelowTheLengthChangesNothing) {
    for (const ETri mode : {eUnknown, eFalse, eTrue}) {
        for (const double step : {20.0, 10.0}) {
            grid.SetStepSize(step, mode);
            EXPECT_THAT(grid, IsGrid(0.0, 10.0, 5));
        }
    }
}

TEST_F(GridOfTen, SetStepSizeThatFitsKeepsTheRange) {
    for (const ETri mode : {eUnknown, eFalse, eTrue}) {
        grid.SetStepSize(2.5, mode);
        EXPECT_THAT(grid, IsGrid(0.0, 10.0, 4));
        AnyGrid slightlyLonger(0, 10 + 5e-11, 1);
        slightlyLonger.SetStepSize(2.5, mode);
        EXPECT_THAT(slightlyLonger, IsGrid(0.0, 10 + 5e-11, 4));
    }
}

TEST_F(GridOfTen, SetStepSizeOfASlightlyShorterRangeDoesNotSnap) {
    AnyGrid grown(0, 10 - 5e-11, 1);
    grown.SetStepSize(2.5, eFalse);
    EXPECT_THAT(grown, IsGrid(0.0, 10.0, 4));
    AnyGrid shrunk(0, 10 - 5e-11, 1);
    shrunk.SetStepSize(2.5, eTrue);
    EXPECT_THAT(shrunk, IsGrid(0.0, 7.5, 3));
}

TEST_F(GridOfTen, AlignMovesTheNextKnotDownToThePoint) {
    EXPECT_EQ(grid.Align(5.5, false), 3);
    EXPECT_THAT(grid, IsGrid(-0.5, 9.5, 5));
    EXPECT_THAT(grid.GetKnot(3), Is(5.5));
}

TEST_F(GridOfTen, AlignWithExtensionGainsASegment) {
    EXPECT_EQ(grid.Align(5.5, true), 3);
    EXPECT_THAT(grid, IsGrid(-0.5, 11.5, 6));
    EXPECT_THAT(grid.GetKnot(3), Is(5.5));
}

TEST_F(GridOfTen, AlignOfAPointOnAKnotChangesNothing) {
    for (const bool extend : {false, true}) {
        EXPECT_EQ(grid.Align(4, extend), 2);
        EXPECT_EQ(grid.Align(10, extend), 5);
        EXPECT_EQ(grid.Align(4 + 5e-11, extend), 2);
        EXPECT_EQ(grid.Align(-2, extend), -1);
        EXPECT_THAT(grid, IsGrid(0.0, 10.0, 5));
    }
}

TEST_F(GridOfTen, AlignBelowTheGridCutsTheSegmentTowardsZero) {
    EXPECT_EQ(grid.Align(-1, false), 1);
    EXPECT_THAT(grid, IsGrid(-3.0, 7.0, 5));
}

TEST_F(GridOfTen, AlignWithAStepBelowTheToleranceTakesEveryPointForTheFirstKnot) {
    AnyGrid tiny(0, 1e-10, 2);
    for (const bool extend : {false, true}) {
        EXPECT_EQ(tiny.Align(7, extend), 0);
        EXPECT_THAT(tiny, IsGrid(0.0, 1e-10, 2));
    }
}

TEST_F(GridOfTen, AlignWithoutSegmentsMovesTheLowerLimitToThePoint) {
    AnyGrid moved(0, 10, 0);
    EXPECT_EQ(moved.Align(3, false), 1);
    EXPECT_THAT(moved, IsGrid(3.0, 13.0, 0));
    EXPECT_EQ(noSegments.Align(3, true), 1);
    EXPECT_THAT(noSegments, IsGrid(3.0, 1e307, 1));
}

TEST_F(GridOfTen, IncludeOfAPointInTheRangeChangesNothing) {
    for (const double x : {0.0, 5.0, 10.0, 10 + 5e-11, -5e-11}) {
        grid.Include(x);
        EXPECT_THAT(grid, IsGrid(0.0, 10.0, 5));
    }
}

TEST_F(GridOfTen, IncludeGrowsUpByTheStepThatTheGridHad) {
    Grid1D other(0, 10, 5);
    other.Include(11);
    EXPECT_THAT(other, IsGrid(0.0, 12.0, 6));
    grid.Include(12);
    EXPECT_THAT(grid, IsGrid(0.0, 12.0, 6));
    grid.Include(17);
    EXPECT_THAT(grid, IsGrid(0.0, 18.0, 9));
}

TEST_F(GridOfTen, IncludeKeepsAnUpperLimitWithinTheToleranceOfAKnot) {
    Grid1D above(0, 10, 5);
    above.Include(12 + 5e-11);
    EXPECT_THAT(above, IsGrid(0.0, 12 + 5e-11, 6));
    Grid1D below(0, 10, 5);
    below.Include(12 - 5e-11);
    EXPECT_THAT(below, IsGrid(0.0, 12.0, 6));
}

TEST_F(GridOfTen, IncludeGrowsDownAndKeepsTheUpperLimit) {
    Grid1D other(0, 10, 5);
    other.Include(-2);
    EXPECT_THAT(other, IsGrid(-2.0, 10.0, 6));
    grid.Include(-3);
    EXPECT_THAT(grid, IsGrid(-4.0, 10.0, 7));
}

TEST_F(GridOfTen, IncludeIntoAnEmptyGridChangesNothing) {
    empty.Include(3);
    EXPECT_THAT(empty, IsGrid(1e307, -1e307, 0));
}

TEST_F(GridOfTen, IncludeIntoAGridWithReversedLimitsGrowsIt) {
    AnyGrid reversed(5, 3, 0);
    reversed.Include(4);
    EXPECT_THAT(reversed, IsGrid(5.0, 3.0, 0));
    reversed.Include(10);
    EXPECT_THAT(reversed, IsGrid(5.0, 1e307, 1));
}

TEST_F(GridOfTen, IncludeWithoutSegmentsRunsOnTheInfiniteStep) {
    AnyGrid upwards(0, 10, 0);
    upwards.Include(12);
    EXPECT_THAT(upwards, IsGrid(0.0, 1e307, 1));
    noSegments.Include(-3);
    EXPECT_THAT(noSegments, IsGrid(10 - 1e307, 10.0, 1));
}

TEST_F(GridOfTen, IncludeOfANaNChangesNothing) {
    grid.Include(kNaN);
    EXPECT_THAT(grid, IsGrid(0.0, 10.0, 5));
}

TEST_F(GridOfTen, SnapMovesThePointToTheNearestKnotOfTheGrownGrid) {
    double x = 3.2;
    grid.Snap(x);
    EXPECT_THAT(x, Is(4.0));
    x = 2.9;
    grid.Snap(x);
    EXPECT_THAT(x, Is(2.0));
    EXPECT_THAT(grid, IsGrid(0.0, 10.0, 5));
    x = 11;
    grid.Snap(x);
    EXPECT_THAT(x, Is(12.0));
    EXPECT_THAT(grid, IsGrid(0.0, 12.0, 6));
    x = -3;
    grid.Snap(x);
    EXPECT_THAT(x, Is(-2.0));
    EXPECT_THAT(grid, IsGrid(-4.0, 12.0, 8));
}

TEST_F(GridOfTen, SnapWithoutANearestKnotKeepsThePoint) {
    AnyGrid tiny(0, 1e-10, 2);
    double x = 7e-11;
    tiny.Snap(x);
    EXPECT_THAT(x, Is(7e-11));
}

struct ZeroAligned : testing::Test {
    Grid1D grid{100, 200, 3};
    const Grid1D& Cover(double lo, double hi, double step, double margin) {
        grid.CoverRangeZeroAligned({lo, hi}, step, margin);
        return grid;
    }
};

TEST_F(ZeroAligned, CoversTheRangeOnMultiplesOfTheStep) {
    EXPECT_THAT(Cover(3, 7, 2, 0), IsGrid(2.0, 8.0, 3));
    EXPECT_THAT(Cover(4, 8, 2, 0), IsGrid(4.0, 8.0, 2));
    EXPECT_THAT(Cover(1, 2, 2, 0), IsGrid(0.0, 2.0, 1));
}

TEST_F(ZeroAligned, CoversTheMarginAtBothEnds) {
    EXPECT_THAT(Cover(4, 8, 2, 1), IsGrid(2.0, 10.0, 4));
    EXPECT_THAT(Cover(4, 8, 2, 2), IsGrid(2.0, 10.0, 4));
}

TEST_F(ZeroAligned, SnapsToAMultipleWithinTheTolerance) {
    EXPECT_THAT(Cover(4 - 5e-11, 8 - 5e-11, 2, 0), IsGrid(4.0, 8.0, 2));
    EXPECT_THAT(Cover(4 + 5e-11, 8 + 5e-11, 2, 0), IsGrid(4.0, 8.0, 2));
}

TEST_F(ZeroAligned, DoesNotCoverANegativeLowerLimitOffAMultiple) {
    EXPECT_THAT(Cover(-3, 3, 2, 0), IsGrid(-2.0, 4.0, 3));
    EXPECT_THAT(Cover(-7, -3, 2, 0), IsGrid(-6.0, 0.0, 3));
    EXPECT_THAT(Cover(-4, 4, 2, 0), IsGrid(-4.0, 4.0, 4));
}

TEST_F(ZeroAligned, WithAStepBelowTheToleranceIsAPointAtZero) {
    EXPECT_THAT(Cover(3, 7, 0, 0), IsGrid(0.0, 0.0, 0));
    EXPECT_THAT(Cover(3, 7, 5e-11, 0), IsGrid(0.0, 0.0, 0));
}

TEST_F(ZeroAligned, CanCoverTheGridsOwnRange) {
    Grid1D own(3, 7, 1);
    own.CoverRangeZeroAligned(own.m_range, 2, 0);
    EXPECT_THAT(own, IsGrid(2.0, 8.0, 3));
}

TEST_F(ZeroAligned, KeepsTheFlagOfTheRange) {
    grid.m_range.m_bExternal = true;
    Cover(3, 7, 2, 0);
    EXPECT_TRUE(grid.m_range.IsExternal());
}

// Laws, on grids whose steps are multiples of 1/4, so that knots are exact.

struct RandomGrid : Grid1D {
    RandomGrid()
        : Grid1D(RangeR1(*rc::gen::inRange(-100, 100) / 4.0, 0)),
          step(*rc::gen::inRange(1, 20) / 4.0) {
        m_nSegments = *rc::gen::inRange(1, 20);
        m_range.m_max = m_range.m_min + m_nSegments * step;
    }
    double step;
};

double RandomPoint() {
    return *rc::gen::inRange(-4000, 4000) / 16.0;
}

TEST(Grid1DLaws, NearestKnotIsNoFartherThanHalfAStep) {
    EXPECT_TRUE(rc::check([] {
        const RandomGrid grid;
        const double x = grid.m_range.m_min + *rc::gen::inRange(0, 400) / 16.0;
        const int k = grid.GetNearestKnot(x);
        RC_ASSERT(k >= 0);
        RC_ASSERT(std::fabs(x - grid.GetKnot(k)) <= grid.step / 2);
        RC_ASSERT(grid.GetKnot(k) - x != -grid.step / 2);
    }));
}

TEST(Grid1DLaws, IncludeReachesThePointAndKeepsTheKnots) {
    EXPECT_TRUE(rc::check([] {
        RandomGrid grid;
        const RangeR1 before = grid.m_range;
        const double x = RandomPoint();
        grid.Include(x);
        RC_ASSERT(grid.m_range.In(x, zToler));
        RC_ASSERT(grid.m_range >= before);
        RC_ASSERT(grid.GetStep() == grid.step);
        RC_ASSERT(grid.IsKnot(before.m_min));
        RC_ASSERT(grid.IsKnot(before.m_max));
    }));
}

TEST(Grid1DLaws, AlignPutsAKnotAtThePoint) {
    EXPECT_TRUE(rc::check([] {
        RandomGrid grid;
        const double x = RandomPoint();
        const int count = grid.GetSegmentCount();
        const bool extend = *rc::gen::arbitrary<bool>();
        const int k = grid.Align(x, extend);
        RC_ASSERT(grid.GetKnot(k) == x);
        RC_ASSERT(grid.GetStep() == grid.step);
        RC_ASSERT(grid.GetSegmentCount() == count ||
                  (extend && grid.GetSegmentCount() == count + 1));
    }));
}

TEST(Grid1DLaws, ExtendedIntervalHoldsThePoint) {
    EXPECT_TRUE(rc::check([] {
        const RandomGrid grid;
        const RangeR1 all(grid.m_range.m_min - 5, grid.m_range.m_max + 5);
        const double x = all.m_min + *rc::gen::inRange(0, 16 * 100) / 16.0;
        if (x > all.m_max) return;
        const ExtendedPlace place = Find(grid, x, all);
        RC_ASSERT(grid.GetKnotAll(place.index, all) <= x);
        if (x < all.m_max) RC_ASSERT(x < grid.GetKnotAll(place.index + 1, all));
        RC_ASSERT(place.onKnot == (grid.GetKnotAll(place.index, all) == x));
    }));
}

TEST(Grid1DLaws, InternalKnotsAreAllThatLieStrictlyInside) {
    EXPECT_TRUE(rc::check([] {
        const RandomGrid grid;
        const double lo = grid.m_range.m_min + *rc::gen::inRange(0, 400) / 16.0;
        const RangeR1 r(lo, lo + *rc::gen::inRange(0, 400) / 16.0);
        Grid1D out;
        grid.GetInternalKnots(r, out);
        int inside = 0;
        for (int k = 0; k < 500; ++k)
            inside += r.m_min < grid.GetKnot(k) && grid.GetKnot(k) < r.m_max;
        RC_ASSERT(out.GetKnotCount() == inside);
        if (inside > 1) RC_ASSERT(out.GetStep() == grid.step);
        if (inside > 0) RC_ASSERT(r.InOpen(out.m_range.m_min, 0) && r.InOpen(out.m_range.m_max, 0));
    }));
}

TEST(Grid1DLaws, ZeroAlignedGridCoversWhatLiesAboveZero) {
    EXPECT_TRUE(rc::check([] {
        const double lo = *rc::gen::inRange(0, 400) / 16.0;
        const RangeR1 r(lo, lo + *rc::gen::inRange(0, 400) / 16.0);
        const double step = *rc::gen::inRange(1, 20) / 4.0;
        Grid1D grid;
        grid.CoverRangeZeroAligned(r, step, 0);
        RC_ASSERT(grid.m_range >= r);
        RC_ASSERT(std::fmod(grid.m_range.m_min, step) == 0.0);
        RC_ASSERT(grid.m_range.GetLength() == grid.m_nSegments * step);
        RC_ASSERT(grid.m_range.GetLength() < r.GetLength() + 2 * step);
    }));
}

}  // namespace
}  // namespace ZT
