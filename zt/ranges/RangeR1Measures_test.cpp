// Lengths, ratios, distances and factors of a real interval.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tests/RangeMatchers.h>
#include <zt/ranges/RangeR1.h>

#include <limits>

namespace ZT {
namespace {

using testing_support::External;
using testing_support::HasLimits;
using testing_support::Is;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const double kBelowToler = std::nextafter(zToler, 0.0);
const double kAboveToler = std::nextafter(zToler, 1.0);

// A value that no operation here gives, to see what stays unwritten.
constexpr double kUntouched = -12345.0;

TEST(RangeR1Measures, LengthIsSigned) {
    EXPECT_THAT(RangeR1(1.0, 3.5).GetLength(), Is(2.5));
    EXPECT_THAT(RangeR1(3.5, 1.0).GetLength(), Is(-2.5));
    EXPECT_THAT(RangeR1().GetLength(), Is(-1e307 - 1e307));
}

TEST(RangeR1Measures, SizeIsAtLeastZero) {
    EXPECT_THAT(RangeR1(1.0, 3.5).GetSize(), Is(2.5));
    EXPECT_THAT(RangeR1(3.5, 1.0).GetSize(), Is(0.0));
    EXPECT_THAT(RangeR1().GetSize(), Is(0.0));
}

TEST(RangeR1Measures, CenterDoesNotOverflow) {
    EXPECT_THAT(RangeR1(1.0, 4.0).GetCenter(), Is(2.5));
    EXPECT_THAT(RangeR1(1e308, 1e308).GetCenter(), Is(1e308));
    EXPECT_THAT(RangeR1(0.1, 0.7).GetCenter(), Is(0.7 * 0.5 + 0.1 * 0.5));
}

TEST(RangeR1Measures, PointIsTheBlendOfTheLimits) {
    const RangeR1 range(2.0, 6.0);
    EXPECT_THAT(range.GetPoint(0.0), Is(2.0));
    EXPECT_THAT(range.GetPoint(1.0), Is(6.0));
    EXPECT_THAT(range.GetPoint(0.25), Is(3.0));
    EXPECT_THAT(range.GetPoint(-0.5), Is(0.0));
    EXPECT_THAT(RangeR1(0.1, 0.7).GetPoint(0.3), Is((1 - 0.3) * 0.1 + 0.3 * 0.7));
    EXPECT_THAT(RangeR1::GetPoint(0.25, 6.0, 2.0), Is(5.0));
}

TEST(RangeR1Measures, PointByIndexWrapsAfterTheLastKnot) {
    const RangeR1 range(0.0, 8.0);
    EXPECT_THAT(range.GetPoint(0, 4), Is(0.0));
    EXPECT_THAT(range.GetPoint(1, 4), Is(2.0));
    EXPECT_THAT(range.GetPoint(4, 4), Is(8.0));
    EXPECT_THAT(range.GetPoint(5, 4), Is(0.0));
    EXPECT_THAT(range.GetPoint(6, 4), Is(2.0));
}

TEST(RangeR1Measures, PointByIndexIsThePointAtItsRatio) {
    // The sum of the lower limit and the steps is another number.
    const RangeR1 range(0.1, 0.8);
    EXPECT_THAT(range.GetPoint(2, 7), Is((1 - 2.0 / 7) * 0.1 + 2.0 / 7 * 0.8));
    EXPECT_NE(range.GetPoint(2, 7), 0.1 + 2 * (0.8 - 0.1) / 7);
}

TEST(RangeR1Measures, PointByNegativeIndexKeepsItsSign) {
    const RangeR1 range(0.0, 8.0);
    EXPECT_THAT(range.GetPoint(-1, 4), Is(-2.0));
    EXPECT_THAT(range.GetPoint(-6, 4), Is(-2.0));
}

TEST(RangeR1Measures, PointByIndexOfNoSegmentsIsTheLowerLimit) {
    EXPECT_THAT(RangeR1(3.0, 8.0).GetPoint(5, 0), Is(3.0));
}

TEST(RangeR1Measures, PointByIndexOfTheGreatestCountDoesNotOverflow) {
    constexpr int kMost = std::numeric_limits<int>::max();
    EXPECT_THAT(RangeR1(0.0, 8.0).GetPoint(kMost, kMost), Is(8.0));
}

TEST(RangeR1Measures, RatioGoesFromZeroToOne) {
    const RangeR1 range(2.0, 6.0);
    EXPECT_THAT(range.GetRatio(2.0), Is(0.0));
    EXPECT_THAT(range.GetRatio(6.0), Is(1.0));
    EXPECT_THAT(range.GetRatio(3.0), Is(0.25));
    EXPECT_THAT(range.GetRatio(0.0), Is(-0.5));
    EXPECT_THAT(RangeR1::GetRatio(3.0, 2.0, 6.0), Is(0.25));
}

TEST(RangeR1Measures, RatioIsOneQuotient) {
    for (int i = 0; i < 100; ++i) {
        const double x = 0.1 * i;
        double ratio = x;
        EXPECT_THAT(RangeR1(0.1, 0.8).GetRatio(x), Is((x - 0.1) / (0.8 - 0.1)));
        EXPECT_TRUE(RangeR1(0.1, 0.8).ToUnitRange(ratio));
        EXPECT_THAT(ratio, Is((x - 0.1) / (0.8 - 0.1)));
    }
}

TEST(RangeR1Measures, RatioOnASingletonIsZero) {
    for (const double x : {-1e300, 0.0, 5.0, 7.0}) {
        EXPECT_THAT(RangeR1(5.0, 5.0).GetRatio(x), Is(0.0));
    }
}

TEST(RangeR1Measures, RatioOnAnythingShorterThanTheToleranceIsZero) {
    EXPECT_THAT(RangeR1(0.0, kBelowToler).GetRatio(1.0), Is(0.0));
    EXPECT_THAT(RangeR1(2.0, 1.0).GetRatio(1.5), Is(0.0));
    EXPECT_THAT(RangeR1::GetRatio(1.5, 2.0, 1.0), Is(0.0));
    EXPECT_THAT(RangeR1(0.0, zToler).GetRatio(zToler), Is(1.0));
}

TEST(RangeR1Measures, ToUnitRangeTurnsANumberIntoItsRatio) {
    double x = 3.0;
    EXPECT_TRUE(RangeR1(2.0, 6.0).ToUnitRange(x));
    EXPECT_THAT(x, Is(0.25));
}

TEST(RangeR1Measures, ToUnitRangeOnASingletonHoldsThePointAlone) {
    double x = 5.0 + 5e-11;
    EXPECT_TRUE(RangeR1(5.0, 5.0).ToUnitRange(x));
    EXPECT_THAT(x, Is(0.0));
    x = 7.0;
    EXPECT_FALSE(RangeR1(5.0, 5.0).ToUnitRange(x));
    EXPECT_THAT(x, Is(7.0));
    x = 3.0;
    EXPECT_FALSE(RangeR1(5.0, 5.0).ToUnitRange(x));
    EXPECT_THAT(x, Is(3.0));
    x = zToler;
    EXPECT_FALSE(RangeR1(0.0, 0.0).ToUnitRange(x));
    EXPECT_THAT(x, Is(zToler));
}

TEST(RangeR1Measures, ToUnitRangeOnExactlyTheToleranceHasALength) {
    double x = 3 * zToler;
    EXPECT_TRUE(RangeR1(0.0, zToler).ToUnitRange(x));
    EXPECT_THAT(x, Is(3 * zToler / zToler));
}

TEST(RangeR1Measures, ToUnitRangeOnAnEmptyRangeLooksAtTheLowerLimit) {
    double x = 2.0;
    EXPECT_TRUE(RangeR1(2.0, 1.0).ToUnitRange(x));
    EXPECT_THAT(x, Is(0.0));
}

TEST(RangeR1Measures, DiffIsFromTheSecondRatioToTheFirst) {
    EXPECT_THAT(RangeR1(2.0, 6.0).GetDiff(0.75, 0.25), Is(2.0));
    EXPECT_THAT(RangeR1(2.0, 6.0).GetDiff(0.25, 0.75), Is(-2.0));
}

TEST(RangeR1Measures, OverlapIsARawFigure) {
    EXPECT_THAT(RangeR1(0.0, 3.0).GetOverlap(RangeR1(1.0, 5.0)), Is(2.0));
    EXPECT_THAT(RangeR1(0.0, 3.0).GetOverlap(RangeR1(4.0, 5.0)), Is(-1.0));
    EXPECT_THAT(RangeR1(0.0, 3.0).GetOverlap(RangeR1(-9.0, -8.0)), Is(12.0));
}

TEST(RangeR1Measures, CoverSegmCountIsTheCeiling) {
    EXPECT_EQ(RangeR1(0.0, 7.5).GetCoverSegmCount(2.0), 4);
    EXPECT_EQ(RangeR1(0.0, 8.0).GetCoverSegmCount(2.0), 4);
    EXPECT_EQ(RangeR1(8.0, 0.5).GetCoverSegmCount(2.0), -3);
    EXPECT_EQ(RangeR1(0.0, 8.0).GetCoverSegmCount(0.0), kNoInt32);
    EXPECT_EQ(RangeR1(0.0, 0.0).GetCoverSegmCount(0.0), kNoInt32);
}

TEST(RangeR1Measures, NearestEndIsADistance) {
    const RangeR1 range(0.0, 10.0);
    EXPECT_THAT(range.GetNearestEnd(3.0), Is(3.0));
    EXPECT_THAT(range.GetNearestEnd(8.0), Is(2.0));
    EXPECT_THAT(range.GetNearestEnd(-4.0), Is(4.0));
    EXPECT_THAT(range.GetNearestEnd(15.0), Is(5.0));
    EXPECT_THAT(RangeR1(4.0, 10.0).GetNearestEnd(5.0), Is(1.0));
}

TEST(RangeR1Measures, BestMatchIsTheNumberOrTheNearerLimit) {
    const RangeR1 range(0.0, 10.0);
    EXPECT_THAT(range.GetBestMatch(3.0), Is(3.0));
    EXPECT_THAT(range.GetBestMatch(10.0 + 5e-11), Is(10.0 + 5e-11));
    EXPECT_THAT(range.GetBestMatch(10.0 + 1.5e-10), Is(10.0));
    EXPECT_THAT(range.GetBestMatch(-1.0), Is(0.0));
    EXPECT_THAT(range.GetBestMatch(11.0), Is(10.0));
}

TEST(RangeR1Measures, BestMatchInTheHoleOfAnExternalRange) {
    const RangeR1 range = External(0.0, 10.0);
    EXPECT_THAT(range.GetBestMatch(11.0), Is(11.0));
    EXPECT_THAT(range.GetBestMatch(3.0), Is(0.0));
    EXPECT_THAT(range.GetBestMatch(7.0), Is(10.0));
    EXPECT_THAT(range.GetBestMatch(5.0), Is(10.0));
}

TEST(RangeR1Measures, ToRangeClamps) {
    const RangeR1 range(0.0, 10.0);
    EXPECT_THAT(range.ToRange(3.0), Is(3.0));
    EXPECT_THAT(range.ToRange(0.0), Is(0.0));
    EXPECT_THAT(range.ToRange(-1.0), Is(0.0));
    EXPECT_THAT(range.ToRange(11.0), Is(10.0));
    EXPECT_THAT(range.ToRange(10.0 + 5e-11), Is(10.0));
    EXPECT_THAT(range.ToRange(kNaN), Is(10.0));
}

TEST(RangeR1Measures, ToRangeTakesTheLimitsInEitherOrder) {
    EXPECT_THAT(RangeR1(10.0, 0.0).ToRange(3.0), Is(3.0));
    EXPECT_THAT(RangeR1(10.0, 0.0).ToRange(12.0), Is(10.0));
    EXPECT_THAT(RangeR1(10.0, 0.0).ToRange(-2.0), Is(0.0));
}

TEST(RangeR1Measures, StaticToRangeTakesTheNumberLast) {
    EXPECT_THAT(RangeR1::ToRange(0.0, 10.0, 3.0), Is(3.0));
    EXPECT_THAT(RangeR1::ToRange(0.0, 10.0, -3.0), Is(0.0));
    EXPECT_THAT(RangeR1::ToRange(0.0, 10.0, 13.0), Is(10.0));
    EXPECT_THAT(RangeR1::ToRange(4.0, 10.0, -20.0), Is(4.0));
    EXPECT_THAT(RangeR1::ToRange(10.0, 4.0, 20.0), Is(10.0));
}

TEST(RangeR1Measures, DistToAPointIsNegativeInside) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_THAT(range.GetDist(0.5, nullptr), Is(-0.5));
    EXPECT_THAT(range.GetDist(0.75, nullptr), Is(-0.25));
    EXPECT_THAT(range.GetDist(0.25, nullptr), Is(-0.25));
    EXPECT_THAT(range.GetDist(-3.0, nullptr), Is(3.0));
}

TEST(RangeR1Measures, DistFromTheCentreIsToTheLowerLimit) {
    const double center = 0.8 * 0.5 + 0.1 * 0.5;
    EXPECT_NE(0.1 - center, center - 0.8);
    EXPECT_THAT(RangeR1(0.1, 0.8).GetDist(center, nullptr), Is(0.1 - center));
}

TEST(RangeR1Measures, DistancesTakeTheCentreInTheFormThatDoesNotOverflow) {
    const RangeR1 range(1e308, 1.5e308);
    EXPECT_THAT(range.GetDist(1.4e308, nullptr), Is(1.4e308 - 1.5e308));
    EXPECT_THAT(range.GetMaxDist(1.4e308, nullptr), Is(1.4e308 - 1e308));
    EXPECT_THAT(RangeR1(0.9e308, 1.75e308).GetDist(range, true), Is(1e308 - 0.9e308));
}

TEST(RangeR1Measures, DistToAPointGivesTheNearestPoint) {
    const RangeR1 range(0.0, 1.0);
    double nearest = kUntouched;
    EXPECT_THAT(range.GetDist(2.0, &nearest), Is(1.0));
    EXPECT_THAT(nearest, Is(1.0));
    EXPECT_THAT(range.GetDist(-2.0, &nearest), Is(2.0));
    EXPECT_THAT(nearest, Is(0.0));
    range.GetDist(0.25, &nearest);
    EXPECT_THAT(nearest, Is(0.25));
    range.GetDist(0.75, &nearest);
    EXPECT_THAT(nearest, Is(0.75));
}

TEST(RangeR1Measures, DistToAPointNearALimitTakesThePoint) {
    double nearest = kUntouched;
    RangeR1(-1.0, 0.0).GetDist(kBelowToler, &nearest);
    EXPECT_THAT(nearest, Is(kBelowToler));
    RangeR1(0.0, 1.0).GetDist(-kBelowToler, &nearest);
    EXPECT_THAT(nearest, Is(-kBelowToler));
    RangeR1(-1.0, 0.0).GetDist(zToler, &nearest);
    EXPECT_THAT(nearest, Is(0.0));
    nearest = kUntouched;
    RangeR1(0.0, 1.0).GetDist(-zToler, &nearest);
    EXPECT_THAT(nearest, Is(0.0));
}

TEST(RangeR1Measures, DistToAPointOfAnEmptyRange) {
    double nearest = kUntouched;
    EXPECT_THAT(RangeR1().GetDist(0.5, &nearest), Is(1e307));
    EXPECT_THAT(RangeR1(2.0, 1.0).GetDist(1.5, &nearest), Is(1e307));
    EXPECT_THAT(nearest, Is(kUntouched));
}

TEST(RangeR1Measures, DistToAPointOfAFullRange) {
    double nearest = kUntouched;
    EXPECT_THAT(RangeR1(-1e307, 1e307).GetDist(0.5, &nearest), Is(0.0));
    EXPECT_THAT(nearest, Is(0.5));
    EXPECT_THAT(External(1e307, 1e307).GetDist(0.25, &nearest), Is(0.0));
    EXPECT_THAT(nearest, Is(0.25));
    EXPECT_THAT(RangeR1(1e307, 1e307).GetDist(0.25, nullptr), Is(1e307 - 0.25));
}

TEST(RangeR1Measures, DistToAPointIgnoresTheFlagOtherwise) {
    EXPECT_THAT(External(0.0, 1.0).GetDist(0.5, nullptr), Is(-0.5));
}

TEST(RangeR1Measures, MaxDistToAPointIsToTheFartherLimit) {
    const RangeR1 range(0.0, 10.0);
    double farthest = kUntouched;
    EXPECT_THAT(range.GetMaxDist(8.0, &farthest), Is(8.0));
    EXPECT_THAT(farthest, Is(0.0));
    EXPECT_THAT(range.GetMaxDist(2.0, &farthest), Is(8.0));
    EXPECT_THAT(farthest, Is(10.0));
    EXPECT_THAT(range.GetMaxDist(5.0, &farthest), Is(5.0));
    EXPECT_THAT(farthest, Is(10.0));
    EXPECT_THAT(range.GetMaxDist(-3.0, nullptr), Is(13.0));
}

TEST(RangeR1Measures, MaxDistToAPointOfAnEmptyOrFullRange) {
    double farthest = kUntouched;
    EXPECT_THAT(RangeR1().GetMaxDist(0.5, &farthest), Is(1e307));
    EXPECT_THAT(RangeR1(-1e307, 1e307).GetMaxDist(0.5, &farthest), Is(0.0));
    EXPECT_THAT(External(1e307, 1e307).GetMaxDist(0.5, &farthest), Is(0.0));
    EXPECT_THAT(farthest, Is(kUntouched));
}

TEST(RangeR1Measures, DistToARangeThatLiesApart) {
    EXPECT_THAT(RangeR1(0.0, 1.0).GetDist(RangeR1(3.0, 4.0), false), Is(2.0));
    EXPECT_THAT(RangeR1(3.0, 4.0).GetDist(RangeR1(0.0, 1.0), true), Is(2.0));
}

TEST(RangeR1Measures, DistToAnEmptyRangeIsARawDifference) {
    EXPECT_THAT(RangeR1(0.0, 1.0).GetDist(RangeR1(6.0, 5.0), false), Is(5.0));
    EXPECT_THAT(RangeR1(0.0, 1.0).GetDist(RangeR1(0.75, 0.25), false), Is(-0.25));
    EXPECT_THAT(RangeR1(6.0, 5.0).GetDist(RangeR1(0.0, 1.0), false), Is(5.0));
    EXPECT_THAT(RangeR1(0.0, 1.0).GetDist(RangeR1(), false), Is(1e307));
    // Which limits are taken depends on one comparison alone, and that is strict.
    EXPECT_THAT(RangeR1(1.0, 2.0).GetDist(RangeR1(5.0, 1.0), false), Is(3.0));
    EXPECT_THAT(RangeR1(1.0, 2.0).GetDist(RangeR1(5.0, 1.5), false), Is(3.0));
    EXPECT_THAT(RangeR1(3.0, 1.0).GetDist(RangeR1(0.0, 5.0), false), Is(-1.0));
}

TEST(RangeR1Measures, DistToARangeThatOverlapsIsZero) {
    EXPECT_THAT(RangeR1(0.0, 2.0).GetDist(RangeR1(1.0, 4.0), true), Is(0.0));
    EXPECT_THAT(RangeR1(0.0, 2.0).GetDist(RangeR1(2.0, 4.0), false), Is(0.0));
    EXPECT_THAT(RangeR1(0.0, 10.0).GetDist(RangeR1(3.0, 4.0), false), Is(0.0));
    EXPECT_THAT(RangeR1(3.0, 4.0).GetDist(RangeR1(0.0, 10.0), true), Is(0.0));
}

TEST(RangeR1Measures, DistToARangeInsideTellsHowFarItClearsTheEnds) {
    // The centre of the inner range lies between the limits: r.lo - lo against hi - r.hi.
    EXPECT_THAT(RangeR1(0.0, 10.0).GetDist(RangeR1(3.0, 4.0), true), Is(3.0));
    EXPECT_THAT(RangeR1(0.0, 10.0).GetDist(RangeR1(7.0, 8.0), true), Is(2.0));
    EXPECT_THAT(RangeR1(0.0, 10.0).GetDist(RangeR1(0.0, 10.0), true), Is(0.0));
}

TEST(RangeR1Measures, DistToARangeInsideAtTheLowerEnd) {
    // The centre of the inner range lies below the lower limit, within the tolerance.
    const RangeR1 range(0.0, 1.0);
    const RangeR1 point(-8e-11, -6e-11);
    EXPECT_THAT(range.GetDist(point, true), Is(6e-11));
}

TEST(RangeR1Measures, DistToARangeInsideAtTheUpperEnd) {
    // The centre of the inner range is not below the upper limit.
    const RangeR1 range(-1.0, 0.0);
    const RangeR1 point(6e-11, 8e-11);
    EXPECT_THAT(range.GetDist(point, true), Is(6e-11));
}

TEST(RangeR1Measures, DistToARangeInsideWithItsCentreAtALimit) {
    // At the lower limit the centre is not below it, and at the upper one it is not.
    const RangeR1 around(std::nextafter(1.0, 0.0), std::nextafter(1.0, 2.0));
    ASSERT_THAT(around.GetCenter(), Is(1.0));
    EXPECT_THAT(RangeR1(1.0, 2.0).GetDist(around, true), Is(around.m_min - 1.0));
    EXPECT_THAT(RangeR1(0.0, 1.0).GetDist(around, true), Is(around.m_min - 1.0));
}

TEST(RangeR1Measures, DistFromAFullRangeToAFullOneIsZero) {
    EXPECT_THAT(RangeR1(-1e307, 1e307).GetDist(RangeR1(-1e307, 1e307), true), Is(0.0));
    EXPECT_THAT(RangeR1(-2e307, 2e307).GetDist(RangeR1(-1e307, 1e307), true), Is(0.0));
}

TEST(RangeR1Measures, MaxDistToARangeRoundThisOne) {
    EXPECT_THAT(RangeR1(3.0, 4.0).GetMaxDist(RangeR1(0.0, 10.0)), Is(7.0));
    EXPECT_THAT(RangeR1(8.0, 9.0).GetMaxDist(RangeR1(0.0, 10.0)), Is(9.0));
    EXPECT_THAT(RangeR1(8.0, 9.0).GetMaxDist(RangeR1(1.0, 10.0)), Is(8.0));
}

TEST(RangeR1Measures, MaxDistToAnyOtherRangeIsTheLengthOfBoth) {
    EXPECT_THAT(RangeR1(0.0, 1.0).GetMaxDist(RangeR1(3.0, 4.0)), Is(4.0));
    EXPECT_THAT(RangeR1(0.0, 10.0).GetMaxDist(RangeR1(3.0, 4.0)), Is(10.0));
    EXPECT_THAT(RangeR1(2.0, 10.0).GetMaxDist(RangeR1(0.0, 4.0)), Is(10.0));
    EXPECT_THAT(RangeR1(2.0, 10.0).GetMaxDist(RangeR1(1.0, 4.0)), Is(9.0));
}

TEST(RangeR1Measures, DistancesOfRangesAskTheFlagForWhatLiesInside) {
    // All of the other range is in the external one, whose hole lies within it.
    EXPECT_THAT(External(0.0, 1.0).GetDist(RangeR1(-1.0, 2.0), true), Is(-1.0));
    EXPECT_THAT(RangeR1(-1.0, 2.0).GetMaxDist(External(0.0, 1.0)), Is(2.0));
}

TEST(RangeR1Measures, DistanceInsideIsNegativeWhereTheRangeSticksOutByTheTolerance) {
    EXPECT_THAT(RangeR1(0.0, 1.0).GetDist(RangeR1(-zToler, 0.5), true), Is(-zToler));
    EXPECT_THAT(RangeR1(0.0, 1.0).GetDist(RangeR1(-kAboveToler, 0.5), true), Is(0.0));
}

TEST(RangeR1Measures, ScaleIsTheSmallerOfTheTwoSides) {
    const RangeR1 range(0.0, 10.0);
    EXPECT_THAT(range.GetScale(RangeR1(2.0, 6.0), 4.0), Is(2.0));
    EXPECT_THAT(range.GetScale(RangeR1(3.0, 8.0), 4.0), Is(1.5));
    EXPECT_THAT(RangeR1(1.0, 10.0).GetScale(RangeR1(2.0, 6.0), 4.0), Is(1.5));
}

TEST(RangeR1Measures, ScaleNeedsThePivotInside) {
    const RangeR1 range(0.0, 10.0);
    EXPECT_THAT(range.GetScale(RangeR1(-2.0, 6.0), 0.0), Is(1e307));
    EXPECT_THAT(range.GetScale(RangeR1(4.0, 6.0), 4.0), Is(1e307));
    EXPECT_THAT(range.GetScale(RangeR1(2.0, 6.0), 10.0), Is(1e307));
    EXPECT_THAT(range.GetScale(RangeR1(2.0, 6.0), kNaN), Is(1e307));
    EXPECT_THAT(RangeR1(1.0, 10.0).GetScale(RangeR1(0.0, 6.0), 0.5), Is(1e307));
}

TEST(RangeR1Measures, ScaleNeedsMoreThanTheTolerance) {
    EXPECT_THAT(RangeR1(0.0, 10.0).GetScale(RangeR1(-1.0, 6.0), zToler), Is(1e307));
    EXPECT_THAT(RangeR1(-1.0, 10.0).GetScale(RangeR1(0.0, 6.0), zToler), Is(1e307));
    EXPECT_THAT(RangeR1(-1.0, 0.0).GetScale(RangeR1(-2.0, 6.0), -zToler), Is(1e307));
    EXPECT_NE(RangeR1(0.0, 10.0).GetScale(RangeR1(-1.0, 6.0), kAboveToler), 1e307);
    EXPECT_NE(RangeR1(-1.0, 10.0).GetScale(RangeR1(0.0, 6.0), kAboveToler), 1e307);
    EXPECT_NE(RangeR1(-1.0, 0.0).GetScale(RangeR1(-2.0, 6.0), -kAboveToler), 1e307);
}

TEST(RangeR1Measures, ScaleDoesNotTestTheUpperEndOfTheOther) {
    // At the pivot the quotient is infinite and the lower side decides; below it, it is
    // negative and the smaller.
    EXPECT_THAT(RangeR1(0.0, 10.0).GetScale(RangeR1(2.0, 4.0), 4.0), Is(2.0));
    EXPECT_THAT(RangeR1(0.0, 10.0).GetScale(RangeR1(2.0, 3.0), 4.0), Is(-6.0));
}

TEST(RangeR1Measures, SamplingPointsCrowdAtTheStart) {
    const RangeR1 range(2.0, 10.0);
    for (int i = 0; i <= 49; ++i) {
        const double w = std::cos(i * 0.5 * zPi / 49);
        EXPECT_THAT(range.GetArcSingilarSamplingPt(i, 49, true), Is(2.0 * w + (1 - w) * 10.0)) << i;
    }
    EXPECT_THAT(range.GetArcSingilarSamplingPt(0, 49, true), Is(2.0));
    EXPECT_NEAR(range.GetArcSingilarSamplingPt(49, 49, true), 10.0, 1e-13);
    EXPECT_LT(range.GetArcSingilarSamplingPt(1, 49, true), 2.01);
}

TEST(RangeR1Measures, SamplingPointsCrowdAtTheEnd) {
    const RangeR1 range(2.0, 10.0);
    for (int i = 0; i <= 49; ++i) {
        const double w = std::cos((49 - i) * 0.5 * zPi / 49);
        EXPECT_THAT(range.GetArcSingilarSamplingPt(i, 49, false), Is(2.0 * (1 - w) + w * 10.0))
            << i;
    }
    EXPECT_NEAR(range.GetArcSingilarSamplingPt(0, 49, false), 2.0, 1e-13);
    EXPECT_THAT(range.GetArcSingilarSamplingPt(49, 49, false), Is(10.0));
    EXPECT_GT(range.GetArcSingilarSamplingPt(48, 49, false), 9.99);
}

TEST(RangeR1Measures, SamplingPointOfNoPointsIsNaN) {
    EXPECT_TRUE(std::isnan(RangeR1(2.0, 10.0).GetArcSingilarSamplingPt(0, 0, true)));
}

TEST(RangeR1Measures, MapCarriesTheRatioOver) {
    EXPECT_THAT(RangeR1(10.0, 20.0).Map(3.0, RangeR1(2.0, 6.0)), Is(12.5));
    EXPECT_THAT(RangeR1(20.0, 10.0).Map(3.0, RangeR1(2.0, 6.0)), Is(17.5));
}

TEST(RangeR1Measures, MapFromASingletonGivesTheLowerLimit) {
    EXPECT_THAT(RangeR1(10.0, 20.0).Map(3.0, RangeR1(2.0, 2.0)), Is(10.0));
}

TEST(RangeR1Measures, MapOfARangeMapsBothLimits) {
    RangeR1 range(3.0, 5.0);
    RangeR1(10.0, 20.0).Map(range, RangeR1(2.0, 6.0));
    EXPECT_THAT(range, HasLimits(12.5, 17.5));
}

TEST(RangeR1Measures, MapOfARangeFromItself) {
    RangeR1 range(3.0, 5.0);
    RangeR1(10.0, 20.0).Map(range, range);
    EXPECT_THAT(range, HasLimits(10.0, 20.0));
}

TEST(RangeR1Measures, CombineBlendsLimitByLimit) {
    RangeR1 range = External(7.0, 8.0);
    range.Combine(RangeR1(0.0, 1.0), RangeR1(4.0, 9.0), 0.25);
    EXPECT_THAT(range, HasLimits(1.0, 3.0));
    EXPECT_TRUE(range.IsExternal());
    range.Combine(RangeR1(0.1, 0.2), RangeR1(0.3, 0.7), 0.3);
    EXPECT_THAT(range, HasLimits((1 - 0.3) * 0.1 + 0.3 * 0.3, (1 - 0.3) * 0.2 + 0.3 * 0.7));
}

}  // namespace
}  // namespace ZT
