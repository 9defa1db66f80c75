#include <zt/numerics/ScalarFunctions.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/ExactNumbers.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing_support::Is;
using testing_support::SameDouble;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kIeeeInfinity = std::numeric_limits<double>::infinity();

// The doubles next to the tolerance.
const double kBelowToler = std::nextafter(zToler, 0.0);
const double kAboveToler = std::nextafter(zToler, 1.0);

// Comparison.

TEST(zEqual, DifferenceBelowTheToleranceIsEqual) {
    EXPECT_TRUE(zEqual(1.0, 1.0 + 5e-11));
    EXPECT_TRUE(zEqual(1.0 + 5e-11, 1.0));
    EXPECT_FALSE(zEqual(1.0, 1.0 + 2e-10));
    EXPECT_FALSE(zEqual(1.0 + 2e-10, 1.0));
}

TEST(zEqual, DifferenceOfExactlyTheToleranceIsNotEqual) {
    EXPECT_FALSE(zEqual(zToler, 0.0));
    EXPECT_FALSE(zEqual(0.0, zToler));
    EXPECT_FALSE(zEqual(-zToler, 0.0));
    EXPECT_TRUE(zEqual(kBelowToler, 0.0));
    EXPECT_TRUE(zEqual(0.0, -kBelowToler));
}

TEST(zEqual, InfiniteNumbersOfOneSideAreEqual) {
    EXPECT_TRUE(zEqual(1e307, 5e306));
    EXPECT_TRUE(zEqual(5e306, 1e307));
    EXPECT_TRUE(zEqual(-1e307, -5e306));
    EXPECT_FALSE(zEqual(1e307, 9e305));
    EXPECT_FALSE(zEqual(9e305, 1e307));
    EXPECT_FALSE(zEqual(-1e307, 1e307));
    EXPECT_FALSE(zEqual(1e307, -1e307));
}

TEST(zEqual, ThresholdItselfIsFinite) {
    EXPECT_FALSE(zEqual(zFinite, 1e307));
    EXPECT_FALSE(zEqual(1e307, zFinite));
    EXPECT_TRUE(zEqual(zFinite, zFinite));
    EXPECT_FALSE(zEqual(-zFinite, -1e307));
    EXPECT_FALSE(zEqual(-1e307, -zFinite));
    EXPECT_TRUE(zEqual(std::nextafter(zFinite, 1e307), 1e307));
}

TEST(zEqual, BetweenTheScalarAndTheRangeThresholdIsInfinite) {
    EXPECT_TRUE(zEqual(2e306, 8e306));
    EXPECT_TRUE(zEqual(-2e306, -8e306));
    EXPECT_LT(8e306, zFullBound);
}

TEST(zEqual, NaNEqualsNothing) {
    EXPECT_FALSE(zEqual(kNaN, 0.0));
    EXPECT_FALSE(zEqual(0.0, kNaN));
    EXPECT_FALSE(zEqual(kNaN, kNaN));
    EXPECT_FALSE(zEqual(kNaN, 1e307));
    EXPECT_FALSE(zEqual(kNaN, -1e307));
    EXPECT_FALSE(zEqual(1e307, kNaN));
}

TEST(zEqual, IeeeInfinityCountsAsInfinite) {
    EXPECT_TRUE(zEqual(kIeeeInfinity, 1e307));
    EXPECT_TRUE(zEqual(-1e307, -kIeeeInfinity));
    EXPECT_FALSE(zEqual(kIeeeInfinity, -kIeeeInfinity));
}

TEST(zSign, TellsPositiveFromNegative) {
    EXPECT_EQ(zSign(1.0), eTrue);
    EXPECT_EQ(zSign(-1.0), eFalse);
    EXPECT_EQ(zSign(kIeeeInfinity), eTrue);
}

TEST(zSign, UnknownWithinTheTolerance) {
    EXPECT_EQ(zSign(0.0), eUnknown);
    EXPECT_EQ(zSign(kBelowToler), eUnknown);
    EXPECT_EQ(zSign(-kBelowToler), eUnknown);
}

TEST(zSign, ExactlyTheToleranceHasASign) {
    EXPECT_EQ(zSign(zToler), eTrue);
    EXPECT_EQ(zSign(-zToler), eFalse);
}

TEST(zSign, NaNIsNotPositive) {
    EXPECT_EQ(zSign(kNaN), eFalse);
}

TEST(zGetRangeLocn, EnumeratorsHaveTheirValues) {
    EXPECT_EQ(eInRange, 0);
    EXPECT_EQ(eAtStart, 1);
    EXPECT_EQ(eAtEnd, 2);
    EXPECT_EQ(eBeforeRange, 4);
    EXPECT_EQ(eAfterRange, 5);
    EXPECT_EQ(sizeof(ERangeLocn), 4u);
}

TEST(zGetRangeLocn, TellsTheFivePlaces) {
    EXPECT_EQ(zGetRangeLocn(0.5, 0.0, 1.0), eInRange);
    EXPECT_EQ(zGetRangeLocn(-1.0, 0.0, 1.0), eBeforeRange);
    EXPECT_EQ(zGetRangeLocn(2.0, 0.0, 1.0), eAfterRange);
    EXPECT_EQ(zGetRangeLocn(0.0, 0.0, 1.0), eAtStart);
    EXPECT_EQ(zGetRangeLocn(1.0, 0.0, 1.0), eAtEnd);
}

TEST(zGetRangeLocn, WithinTheToleranceOfALimitIsAtIt) {
    EXPECT_EQ(zGetRangeLocn(kBelowToler, 0.0, 1.0), eAtStart);
    EXPECT_EQ(zGetRangeLocn(-kBelowToler, 0.0, 1.0), eAtStart);
    EXPECT_EQ(zGetRangeLocn(kBelowToler, -1.0, 0.0), eAtEnd);
    EXPECT_EQ(zGetRangeLocn(-kBelowToler, -1.0, 0.0), eAtEnd);
}

TEST(zGetRangeLocn, ExactlyTheToleranceFromEitherLimitIsAtTheEnd) {
    EXPECT_EQ(zGetRangeLocn(zToler, 0.0, 1.0), eAtEnd);
    EXPECT_EQ(zGetRangeLocn(-zToler, 0.0, 1.0), eAtEnd);
    EXPECT_EQ(zGetRangeLocn(zToler, -1.0, 0.0), eAtEnd);
    EXPECT_EQ(zGetRangeLocn(-zToler, -1.0, 0.0), eAtEnd);
}

TEST(zGetRangeLocn, JustBeyondTheToleranceIsOutsideOrInside) {
    EXPECT_EQ(zGetRangeLocn(kAboveToler, 0.0, 1.0), eInRange);
    EXPECT_EQ(zGetRangeLocn(-kAboveToler, 0.0, 1.0), eBeforeRange);
    EXPECT_EQ(zGetRangeLocn(kAboveToler, -1.0, 0.0), eAfterRange);
    EXPECT_EQ(zGetRangeLocn(-kAboveToler, -1.0, 0.0), eInRange);
}

TEST(zGetRangeLocn, ToleranceIsAddedToALimitBeforeTheComparison) {
    // As a difference from the limit it would be more than the tolerance, by rounding.
    ASSERT_GT((1.0 + zToler) - 1.0, zToler);
    ASSERT_GT(1.0 - (1.0 - zToler), zToler);
    EXPECT_EQ(zGetRangeLocn(1.0 + zToler, 1.0, 2.0), eAtEnd);
    EXPECT_EQ(zGetRangeLocn(1.0 - zToler, 1.0, 2.0), eAtEnd);
    EXPECT_EQ(zGetRangeLocn(1.0 + zToler, 0.0, 1.0), eAtEnd);
    EXPECT_EQ(zGetRangeLocn(1.0 - zToler, 0.0, 1.0), eAtEnd);
}

TEST(zGetRangeLocn, ShortRangeIsAtItsStart) {
    EXPECT_EQ(zGetRangeLocn(3.0, 3.0, 3.0), eAtStart);
    EXPECT_EQ(zGetRangeLocn(5e-11, 0.0, 5e-11), eAtStart);
}

TEST(zGetRangeLocn, NaNIsAtTheEnd) {
    EXPECT_EQ(zGetRangeLocn(kNaN, 0.0, 1.0), eAtEnd);
}

TEST(matrIsValidVar, OnlyTheBytesOfABoolAreValid) {
    for (int byte = 0; byte < 256; ++byte) {
        alignas(bool) unsigned char memory[sizeof(bool)] = {static_cast<unsigned char>(byte)};
        EXPECT_EQ(matrIsValidVar(reinterpret_cast<const bool&>(memory)), byte <= 1) << byte;
    }
}

TEST(matrIsValidVar, ProperBoolsAreValid) {
    const bool yes = true;
    const bool no = false;
    EXPECT_TRUE(matrIsValidVar(yes));
    EXPECT_TRUE(matrIsValidVar(no));
}

// Rounding and reduction.

TEST(zRound, ExactHalfRoundsDown) {
    EXPECT_EQ(zRound(2.5), 2);
    EXPECT_EQ(zRound(-2.5), -3);
    EXPECT_EQ(zRound(0.5), 0);
    EXPECT_EQ(zRound(-0.5), -1);
}

TEST(zRound, AllElseRoundsToTheNearest) {
    EXPECT_EQ(zRound(2.500001), 3);
    EXPECT_EQ(zRound(2.4), 2);
    EXPECT_EQ(zRound(-2.4), -2);
    EXPECT_EQ(zRound(-2.6), -3);
    EXPECT_EQ(zRound(-0.0), 0);
    EXPECT_EQ(zRound(std::nextafter(0.5, 1.0)), 1);
}

TEST(zRound, ResultHas64Bits) {
    static_assert(std::is_same_v<decltype(zRound(0.0)), int64>);
    EXPECT_EQ(zRound(1e15 + 0.75), 1000000000000001);
    EXPECT_EQ(zRound(-9e18), -9000000000000000000);
}

TEST(zStickyFloor, IsTheFloor) {
    EXPECT_EQ(zStickyFloor(2.9), 2);
    EXPECT_EQ(zStickyFloor(2.1), 2);
    EXPECT_EQ(zStickyFloor(2.5), 2);
    EXPECT_EQ(zStickyFloor(3.0), 3);
    EXPECT_EQ(zStickyFloor(-2.1), -3);
    EXPECT_EQ(zStickyFloor(-2.5), -3);
    EXPECT_EQ(zStickyFloor(-2.9), -3);
}

TEST(zStickyFloor, SticksToAnIntegerJustAbove) {
    EXPECT_EQ(zStickyFloor(2.99999999999), 3);
    EXPECT_EQ(zStickyFloor(-kBelowToler), 0);
    EXPECT_EQ(zStickyFloor(3.00000000001), 3);
}

TEST(zStickyFloor, ExactlyTheToleranceBelowDoesNotStick) {
    EXPECT_EQ(zStickyFloor(-zToler), -1);
}

TEST(zStickyFloor, WhatDoesNotFitHasADefinedResult) {
    EXPECT_EQ(zStickyFloor(-1e300), kNoInt64);
    EXPECT_EQ(zStickyFloor(kNaN), kNoInt64);
}

TEST(zFactorN, CountsWholeSteps) {
    EXPECT_EQ(zFactorN(7.5, 2.0), 3);
    EXPECT_EQ(zFactorN(6.0, 2.0), 3);
    EXPECT_EQ(zFactorN(-7.5, 2.0), -3);
    EXPECT_EQ(zFactorN(7.5, -2.0), -3);
}

TEST(zFactorN, SnapsToTheNextStep) {
    EXPECT_EQ(zFactorN(0.9999999999999, 1.0), 1);
}

TEST(zFactorN, SnapsToThePreviousStep) {
    EXPECT_EQ(zFactorN(-0.9999999999999, 1.0), -1);
    EXPECT_EQ(zFactorN(-2.9999999999999, 1.0), -3);
    EXPECT_EQ(zFactorN(-5.9999999999999, 2.0), -3);
}

TEST(zFactorN, ExactlyTheToleranceAwayDoesNotSnap) {
    // From 0, both the step after and the step before lie exactly the tolerance away.
    EXPECT_EQ(zFactorN(0.0, zToler), 0);
    EXPECT_EQ(zFactorN(1.0 - 2e-10, 1.0), 0);
    EXPECT_EQ(zFactorN(-1.0 + 2e-10, 1.0), 0);
}

TEST(zFactorN, StepOfZeroTruncatesTheNumber) {
    EXPECT_EQ(zFactorN(7.0, 0.0), 7);
    EXPECT_EQ(zFactorN(7.9, kBelowToler), 7);
    EXPECT_EQ(zFactorN(-7.9, -kBelowToler), -7);
}

TEST(zFactorN, StepOfExactlyTheToleranceIsAStep) {
    EXPECT_EQ(zFactorN(3.5 * zToler, zToler), 4);
}

TEST(zFactorN, WhatDoesNotFitHasADefinedResult) {
    EXPECT_EQ(zFactorN(1e300, 1.0), kNoInt32);
    EXPECT_EQ(zFactorN(kNaN, 1.0), kNoInt32);
    EXPECT_EQ(zFactorN(2147483647.75, 1.0), 2147483647);
}

TEST(zFactorN, AgreesWithTheRemainder) {
    EXPECT_TRUE(rc::check("x = zFactorN * step + zModulod, up to the tolerance", [] {
        const double step = 0.25 + 0.125 * *rc::gen::inRange(0, 40);
        const double x = *rc::gen::inRange(-100000, 100000) / 64.0;
        const double sum = zFactorN(x, step) * step + zModulod(x, step);
        RC_ASSERT(std::fabs(sum - x) < zToler);
    }));
}

TEST(zModulod, KeepsTheRemainderWithTheSignOfTheNumber) {
    EXPECT_THAT(zModulod(7.5, 2.0), Is(1.5));
    EXPECT_THAT(zModulod(-7.5, 2.0), Is(-1.5));
    EXPECT_THAT(zModulod(7.5, -2.0), Is(1.5));
}

TEST(zModulod, IsTheNumberLessAProduct) {
    // The exact remainder is another number.
    EXPECT_THAT(zModulod(1.0, 0.3), Is(1.0 - 3 * 0.3));
    EXPECT_NE(zModulod(1.0, 0.3), std::fmod(1.0, 0.3));
    EXPECT_THAT(zFloor(1.0, 0.3), Is(1.0 - (1.0 - 3 * 0.3)));
}

TEST(zModulod, JustBelowTheNextMultipleIsExactlyZero) {
    EXPECT_THAT(zModulod(2.9999999999999, 1.0), Is(0.0));
    EXPECT_THAT(zModulod(5.9999999999999, 2.0), Is(0.0));
}

TEST(zModulod, JustAboveThePreviousMultipleIsExactlyZero) {
    EXPECT_THAT(zModulod(-2.9999999999999, 1.0), Is(0.0));
    EXPECT_THAT(zModulod(-5.9999999999999, 2.0), Is(0.0));
}

TEST(zModulod, BeyondTheToleranceOfAMultipleIsNotSnapped) {
    const double x = 3.0 - 1.5e-10;
    EXPECT_THAT(zModulod(x, 1.0), Is(x - 2.0));
    EXPECT_THAT(zModulod(-x, 1.0), Is(2.0 - x));
}

TEST(zModulod, JustAboveAMultipleIsNotSnapped) {
    const double x = 3.0 + 5e-11;
    EXPECT_THAT(zModulod(x, 1.0), Is(x - 3.0));
    EXPECT_GT(zModulod(x, 1.0), 0.0);
    EXPECT_THAT(zModulod(-kBelowToler, 1.0), Is(-kBelowToler));
}

TEST(zModulod, DivisorOfZeroGivesTheNumber) {
    EXPECT_THAT(zModulod(5.0, 0.0), Is(5.0));
    EXPECT_THAT(zModulod(5.0, kBelowToler), Is(5.0));
    EXPECT_THAT(zModulod(5.0, -kBelowToler), Is(5.0));
}

TEST(zModulod, DivisorOfExactlyTheToleranceIsADivisor) {
    EXPECT_THAT(zModulod(2.5 * zToler, zToler), Is(0.0));
    EXPECT_THAT(zModulod(2.5 * zToler, zToler, 0.0), Is(2.5 * zToler - 2 * zToler));
}

TEST(zModulod, ExplicitToleranceIsForTheSnapOnly) {
    EXPECT_THAT(zModulod(2.75, 1.0, 0.5), Is(0.0));
    EXPECT_THAT(zModulod(2.75, 1.0, 0.125), Is(0.75));
    // The divisor counts as zero by the library's tolerance, whatever the caller's.
    EXPECT_THAT(zModulod(5.0, kBelowToler, 0.0), Is(5.0));
    EXPECT_THAT(zModulod(2.75, 0.5, 0.0), Is(0.25));
}

TEST(zModulod, ExactlyTheToleranceAwayDoesNotSnap) {
    EXPECT_THAT(zModulod(2.75, 1.0, 0.25), Is(0.75));
    EXPECT_THAT(zModulod(-2.75, 1.0, 0.25), Is(-0.75));
}

TEST(zCeil, IsTheMultipleOnTheSideOfZero) {
    EXPECT_THAT(zCeil(7.5, 2.0), Is(6.0));
    EXPECT_THAT(zCeil(-7.5, 2.0), Is(-6.0));
    EXPECT_THAT(zCeil(6.0, 2.0), Is(6.0));
}

TEST(zCeil, HasNoTolerance) {
    EXPECT_THAT(zCeil(2.9999999999999, 1.0), Is(2.0));
}

TEST(zCeil, DivisorOfZeroGivesNaN) {
    EXPECT_TRUE(std::isnan(zCeil(5.0, 0.0)));
}

TEST(zFloor, IsTheNumberLessItsRemainder) {
    EXPECT_THAT(zFloor(7.5, 2.0), Is(6.0));
    EXPECT_THAT(zFloor(-7.5, 2.0), Is(-6.0));
    EXPECT_THAT(zFloor(2.9999999999999, 1.0), Is(2.9999999999999));
}

TEST(zFloor, DivisorOfZeroGivesZero) {
    EXPECT_THAT(zFloor(5.0, 0.0), Is(0.0));
}

TEST(zTo02Pi, BringsAnAngleBetweenZeroAndTheCircle) {
    EXPECT_THAT(zTo02Pi(1.0), Is(1.0));
    EXPECT_THAT(zTo02Pi(-1.0), Is(-1.0 + z2Pi));
    EXPECT_THAT(zTo02Pi(7.0), Is(std::fmod(7.0, z2Pi)));
    EXPECT_THAT(zTo02Pi(-7.0), Is(std::fmod(-7.0, z2Pi) + z2Pi));
}

TEST(zTo02Pi, CircleIsZero) {
    EXPECT_THAT(zTo02Pi(z2Pi), Is(0.0));
}

TEST(zTo02Pi, NegativeZeroStays) {
    EXPECT_THAT(zTo02Pi(-0.0), Is(-0.0));
}

TEST(zTo02Pi, NegativeNumberTooSmallToTellIsTheWholeCircle) {
    EXPECT_THAT(zTo02Pi(-1e-20), Is(z2Pi));
}

TEST(zTo02Pi, MultipleOfTheCircleIsNotSnapped) {
    const double x = z2Pi - 5e-11;
    EXPECT_THAT(zTo02Pi(x), Is(x));
    EXPECT_THAT(zTo02Pi(-5e-11), Is(-5e-11 + z2Pi));
}

TEST(zShrinkRange, MovesBothEndsInwards) {
    double a = 1.0;
    double b = 4.0;
    zShrinkRange(a, b, 0.5);
    EXPECT_THAT(a, Is(1.5));
    EXPECT_THAT(b, Is(3.5));
}

TEST(zShrinkRange, PairCloserThanTheDistanceStays) {
    double a = 4.0;
    double b = 3.5;
    zShrinkRange(a, b, 0.625);
    EXPECT_THAT(a, Is(4.0));
    EXPECT_THAT(b, Is(3.5));
}

TEST(zShrinkRange, PairOutOfOrderMovesApart) {
    double a = 4.0;
    double b = 1.0;
    zShrinkRange(a, b, 1.0);
    EXPECT_THAT(a, Is(5.0));
    EXPECT_THAT(b, Is(0.0));
}

TEST(zShrinkRange, PairExactlyTheDistanceApartChangesPlaces) {
    double a = 3.0;
    double b = 3.5;
    zShrinkRange(a, b, 0.5);
    EXPECT_THAT(a, Is(3.5));
    EXPECT_THAT(b, Is(3.0));
}

// Search in sorted arrays.

// Between one and many ascending entries, some of them equal.
std::vector<double> AnyKnots() {
    auto knots = *rc::gen::nonEmpty<std::vector<int>>();
    std::sort(knots.begin(), knots.end());
    return {knots.begin(), knots.end()};
}

struct Knots : testing::Test {
    const std::array<double, 6> a{0.0, 1.0, 2.0, 4.0, 8.0, 16.0};
    int Segment(double x, int lo = 0, int hi = 5) const {
        return zFindSegment(x, a.data(), lo, hi);
    }
    int Nearest(double x, int lo = 0, int hi = 5) const {
        return zFindNearest(x, a.data(), lo, hi);
    }
};

TEST_F(Knots, SegmentIsNamedByItsRightEnd) {
    EXPECT_EQ(Segment(0.5), 1);
    EXPECT_EQ(Segment(3.0), 3);
    EXPECT_EQ(Segment(12.0), 5);
}

TEST_F(Knots, PointOnAKnotLiesInTheSegmentToItsLeft) {
    EXPECT_EQ(Segment(2.0), 2);
    EXPECT_EQ(Segment(2.0 + 5e-11), 2);
    EXPECT_EQ(Segment(2.0 + 2e-10), 3);
    EXPECT_EQ(Segment(2.0 - 5e-11), 2);
    EXPECT_EQ(Segment(1.0 + zToler), 2);
}

TEST_F(Knots, PointAtOrBelowTheFirstEntryGivesZeroWhateverTheLowerBound) {
    EXPECT_EQ(Segment(0.0, 2, 5), 0);
    EXPECT_EQ(Segment(-7.0, 2, 5), 0);
    EXPECT_EQ(Segment(kBelowToler, 2, 5), 0);
    EXPECT_EQ(Nearest(-7.0, 2, 5), 0);
}

TEST_F(Knots, PointExactlyTheToleranceAboveTheFirstEntryIsInTheFirstSegment) {
    EXPECT_EQ(Segment(zToler), 1);
}

TEST_F(Knots, ToleranceIsAddedToAnEntryBeforeTheComparison) {
    // As a difference from the entry it would be less than the tolerance, by rounding.
    const double x = 0.1 + zToler;
    ASSERT_LT(x - 0.1, zToler);
    const double entries[] = {0.0, 0.1, 0.2};
    EXPECT_EQ(zFindSegment(x, entries, 0, 2), 2);
    EXPECT_EQ(zFindSegment(x, entries + 1, 0, 1), 1);
}

TEST_F(Knots, PointBeyondTheLastEntryGivesTheUpperBound) {
    EXPECT_EQ(Segment(100.0), 5);
    EXPECT_EQ(Segment(100.0, 0, 3), 3);
}

TEST_F(Knots, OneSegmentBetweenTheBoundsIsNotRead) {
    const double first = 0.0;
    EXPECT_EQ(zFindSegment(1.0, &first, 6, 7), 7);
    EXPECT_EQ(zFindSegment(1.0, &first, 7, 7), 7);
    EXPECT_EQ(zFindSegment(1.0, &first, 9, 7), 7);
}

TEST_F(Knots, SegmentAgreesWithAPlainScan) {
    EXPECT_TRUE(rc::check("the first entry that, with the tolerance, is above x", [] {
        const auto entries = AnyKnots();
        const int x = *rc::gen::arbitrary<int>();
        const double shift = *rc::gen::element(0.0, 5e-11, -5e-11, 0.25);
        const int last = static_cast<int>(entries.size()) - 1;
        const auto above = std::find_if(entries.begin(), entries.end(),
                                        [&](double entry) { return entry + zToler > x + shift; });
        const auto scanned = static_cast<int>(above - entries.begin());
        RC_ASSERT(zFindSegment(x + shift, entries.data(), 0, last) == std::min(scanned, last));
    }));
}

TEST_F(Knots, NearestEntryIsFound) {
    EXPECT_EQ(Nearest(0.25), 0);
    EXPECT_EQ(Nearest(0.75), 1);
    EXPECT_EQ(Nearest(2.5), 2);
    EXPECT_EQ(Nearest(15.0), 5);
    EXPECT_EQ(Nearest(100.0), 5);
}

TEST_F(Knots, NearestOnATieIsTheUpperNeighbour) {
    EXPECT_EQ(Nearest(0.5), 1);
    EXPECT_EQ(Nearest(3.0), 3);
    EXPECT_EQ(Nearest(6.0), 4);
}

TEST_F(Knots, NearestOfOneSegmentComparesItsEnds) {
    EXPECT_EQ(Nearest(3.5, 2, 3), 3);
    EXPECT_EQ(Nearest(2.5, 2, 3), 2);
}

TEST_F(Knots, NearestWithAnUpperBoundOfZeroIsZero) {
    EXPECT_EQ(Nearest(3.0, 0, 0), 0);
}

TEST_F(Knots, NearestWithOnlyTheUpperBoundLooksAtTheEntryBelowIt) {
    EXPECT_EQ(Nearest(1.25, 2, 2), 1);
    EXPECT_EQ(Nearest(1.75, 2, 2), 2);
}

TEST_F(Knots, NearestAgreesWithAPlainScan) {
    EXPECT_TRUE(rc::check("no entry is nearer", [] {
        const auto entries = AnyKnots();
        const double x = *rc::gen::arbitrary<int>() + 0.25;
        const int last = static_cast<int>(entries.size()) - 1;
        const int found = zFindNearest(x, entries.data(), 0, last);
        for (const double entry : entries) {
            RC_ASSERT(std::fabs(entries[static_cast<std::size_t>(found)] - x) <=
                      std::fabs(entry - x));
        }
    }));
}

// Vectors and memory.

TEST(hxCopy3d, CopiesComponentsThatDiffer) {
    double dst[3] = {1.0, 2.0, 3.0};
    const double src[3] = {1.0, 5.0, 3.0 + 5e-11};
    EXPECT_TRUE(hxCopy3d(dst, src));
    EXPECT_THAT(dst, ElementsAre(Is(1.0), Is(5.0), Is(3.0)));
}

TEST(hxCopy3d, CopiesThreeComponentsAndNoMore) {
    double dst[4] = {1.0, 2.0, 3.0, 4.0};
    const double src[4] = {5.0, 6.0, 7.0, 8.0};
    EXPECT_TRUE(hxCopy3d(dst, src));
    EXPECT_THAT(dst, ElementsAre(Is(5.0), Is(6.0), Is(7.0), Is(4.0)));
}

TEST(hxCopy3d, DifferencesBelowTheToleranceChangeNothing) {
    double dst[3] = {1.0, 2.0, 3.0};
    const double src[3] = {1.0 + 5e-11, 2.0 - 5e-11, 3.0 + 5e-11};
    EXPECT_FALSE(hxCopy3d(dst, src));
    EXPECT_THAT(dst, ElementsAre(Is(1.0), Is(2.0), Is(3.0)));
}

TEST(hxCopy3d, DifferenceOfExactlyTheToleranceChangesNothing) {
    double dst[3] = {0.0, 0.0, 0.0};
    const double src[3] = {zToler, -zToler, kAboveToler};
    EXPECT_TRUE(hxCopy3d(dst, src));
    EXPECT_THAT(dst, ElementsAre(Is(0.0), Is(0.0), Is(kAboveToler)));
}

TEST(hxCopy3d, NaNIsNotCopied) {
    double dst[3] = {1.0, 2.0, 3.0};
    const double src[3] = {kNaN, 2.0, 3.0};
    EXPECT_FALSE(hxCopy3d(dst, src));
    EXPECT_THAT(dst[0], Is(1.0));
}

TEST(hxNormalize, DividesByTheLength) {
    double v[3] = {3.0, 0.0, 4.0};
    EXPECT_TRUE(hxNormalize(v));
    EXPECT_THAT(v, ElementsAre(Is(0.6), Is(0.0), Is(0.8)));
}

TEST(hxNormalize, AddsTheSquaresFromTheFirstOn) {
    // In any other order the length is another number.
    double v[3] = {-5.1, 8.4, -1.1};
    const double length = std::sqrt(((v[0] * v[0]) + v[1] * v[1]) + v[2] * v[2]);
    ASSERT_NE(length, std::sqrt(v[0] * v[0] + (v[1] * v[1] + v[2] * v[2])));
    ASSERT_NE(length, std::sqrt((v[0] * v[0] + v[2] * v[2]) + v[1] * v[1]));
    const double expected[3] = {v[0] / length, v[1] / length, v[2] / length};
    EXPECT_TRUE(hxNormalize(v));
    EXPECT_THAT(v, ElementsAre(Is(expected[0]), Is(expected[1]), Is(expected[2])));
}

TEST(hxNormalize, VectorShorterThanTheToleranceStays) {
    double v[3] = {1e-11, 0.0, 0.0};
    EXPECT_FALSE(hxNormalize(v));
    EXPECT_THAT(v, ElementsAre(Is(1e-11), Is(0.0), Is(0.0)));
}

TEST(hxNormalize, VectorOfExactlyTheToleranceHasADirection) {
    double v[3] = {0.0, -zToler, 0.0};
    EXPECT_TRUE(hxNormalize(v));
    EXPECT_THAT(v, ElementsAre(Is(0.0), Is(-1.0), Is(0.0)));
}

TEST(zMemSet, StoresTheValueIntoAll) {
    double p[4] = {1.0, 2.0, 3.0, 4.0};
    zMemSet(p, 3, 7.0);
    EXPECT_THAT(p, ElementsAre(Is(7.0), Is(7.0), Is(7.0), Is(4.0)));
    zMemSet(p, 1, 8.0);
    EXPECT_THAT(p, ElementsAre(Is(8.0), Is(7.0), Is(7.0), Is(4.0)));
}

TEST(zMemSet, DoesNothingWithoutACountOrAPlace) {
    double p[1] = {1.0};
    zMemSet(p, 0, 7.0);
    zMemSet(p, -5, 7.0);
    zMemSet(nullptr, 3, 7.0);
    EXPECT_THAT(p[0], Is(1.0));
}

}  // namespace
}  // namespace ZT
