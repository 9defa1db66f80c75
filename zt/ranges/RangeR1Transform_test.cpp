// Moving, scaling and fitting a real interval.

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

TEST(RangeR1Transform, TranslateMovesBothLimits) {
    RangeR1 range(1.0, 3.0);
    range.Translate(-4.0);
    EXPECT_THAT(range, HasLimits(-3.0, -1.0));
}

TEST(RangeR1Transform, SwapExchangesTheLimits) {
    RangeR1 range(1.0, 3.0);
    range.Swap();
    EXPECT_THAT(range, HasLimits(3.0, 1.0));
}

TEST(RangeR1Transform, ExpandMovesTheLimitsOutwards) {
    RangeR1 range(1.0, 3.0);
    range.Expand(0.5);
    EXPECT_THAT(range, HasLimits(0.5, 3.5));
    range.Expand(-2.0);
    EXPECT_THAT(range, HasLimits(2.5, 1.5));
}

TEST(RangeR1Transform, SpreadGivesALengthAboutTheCentre) {
    RangeR1 range(1.0, 3.0);
    range.Spread(6.0);
    EXPECT_THAT(range, HasLimits(-1.0, 5.0));
}

TEST(RangeR1Transform, LimitsLieHalfTheLengthFromTheCentre) {
    RangeR1 range(0.1, 0.8);
    range.Spread(0.3);
    const double middle = (0.1 + 0.8) * 0.5;
    EXPECT_THAT(range, HasLimits(middle - 0.3 * 0.5, middle + 0.3 * 0.5));
    range.Set(0.1, 0.8);
    range.SetLengthKeepCenter(0.3);
    const double center = 0.8 * 0.5 + 0.1 * 0.5;
    EXPECT_THAT(range, HasLimits(center - 0.3 * 0.5, center + 0.3 * 0.5));
    range.Set(0.1, 0.8);
    range.AdjustCentral(RangeR1(0.3, 0.6));
    EXPECT_THAT(range,
                HasLimits(middle - std::fabs(0.3 - middle), middle + std::fabs(0.3 - middle)));
}

TEST(RangeR1Transform, ScaleMultipliesTheLength) {
    RangeR1 range(1.0, 3.0);
    range.Scale(3.0);
    EXPECT_THAT(range, HasLimits(-1.0, 5.0));
}

TEST(RangeR1Transform, ScaleTakesTheHalfOfTheScaledLength) {
    RangeR1 range(0.1, 0.8);
    range.Scale(0.3);
    const double c = 0.8 * 0.5 + 0.1 * 0.5;
    const double half = (0.8 - 0.1) * 0.3 * 0.5;
    EXPECT_THAT(range, HasLimits(c - half, c + half));
}

TEST(RangeR1Transform, InflateAddsAShareOfTheLength) {
    RangeR1 range(1.0, 3.0);
    range.Inflate(2.0);
    EXPECT_THAT(range, HasLimits(-1.0, 5.0));
    range.Inflate(0.0);
    EXPECT_THAT(range, HasLimits(-1.0, 5.0));
}

TEST(RangeR1Transform, InflateTakesTheHalfOfTheInflatedLength) {
    RangeR1 range(0.1, 0.8);
    range.Inflate(0.3);
    const double c = 0.8 * 0.5 + 0.1 * 0.5;
    const double half = (0.8 - 0.1) * (1 + 0.3) * 0.5;
    EXPECT_THAT(range, HasLimits(c - half, c + half));
}

TEST(RangeR1Transform, InflateAddsToTheFactorAndNotToTheLength) {
    RangeR1 range(0.5, 1.7);
    range.Inflate(0.9);
    const double c = 1.7 * 0.5 + 0.5 * 0.5;
    const double half = (1.7 - 0.5) * (1 + 0.9) * 0.5;
    ASSERT_NE(half, ((1.7 - 0.5) + (1.7 - 0.5) * 0.9) * 0.5);
    EXPECT_THAT(range, HasLimits(c - half, c + half));
}

TEST(RangeR1Transform, InflateAboutAPivotTakesTheFactorItself) {
    RangeR1 range(1.0, 3.0);
    range.Inflate(2.0, 2.0);
    EXPECT_THAT(range, HasLimits(0.0, 4.0));
    range.Inflate(0.0, 1.0);
    EXPECT_THAT(range, HasLimits(1.0, 1.0));
}

TEST(RangeR1Transform, InflateAboutAPivotMultipliesTheDistances) {
    RangeR1 range(0.1, 0.8);
    range.Inflate(0.7, 0.3);
    EXPECT_THAT(range, HasLimits(0.3 - (0.3 - 0.1) * 0.7, 0.3 + (0.8 - 0.3) * 0.7));
    range.Set(0.7, 1.8);
    range.Inflate(0.3, 1.5);
    EXPECT_THAT(range, HasLimits(1.5 - (1.5 - 0.7) * 0.3, 1.5 + (1.8 - 1.5) * 0.3));
    range.Set(0.1, 0.8);
    range.Inflate2(0.7, 0.3);
    const double pivot = (1 - 0.3) * 0.1 + 0.3 * 0.8;
    EXPECT_THAT(range, HasLimits(pivot - (pivot - 0.1) * 0.7, pivot + (0.8 - pivot) * 0.7));
}

TEST(RangeR1Transform, InflateAboutAPivotOutside) {
    RangeR1 range(1.0, 3.0);
    range.Inflate(2.0, 0.0);
    EXPECT_THAT(range, HasLimits(2.0, 6.0));
}

TEST(RangeR1Transform, Inflate2TakesThePivotAtARatio) {
    RangeR1 range(1.0, 3.0);
    range.Inflate2(2.0, 0.0);
    EXPECT_THAT(range, HasLimits(1.0, 5.0));
    range.Inflate2(2.0, 1.0);
    EXPECT_THAT(range, HasLimits(-3.0, 5.0));
}

TEST(RangeR1Transform, TimesAssignMultipliesBothLimits) {
    RangeR1 range(1.0, 2.0);
    range *= 3.0;
    EXPECT_THAT(range, HasLimits(3.0, 6.0));
}

TEST(RangeR1Transform, TimesAssignByANegativeFactorTurnsTheRangeRound) {
    RangeR1 range(1.0, 2.0);
    range *= -2.0;
    EXPECT_THAT(range, HasLimits(-4.0, -2.0));
}

TEST(RangeR1Transform, TimesAssignKeepsAnOrderBrokenByLessThanTheTolerance) {
    RangeR1 range(0.0, 5e-11);
    range *= -1.0;
    EXPECT_THAT(range, HasLimits(-0.0, -5e-11));
    range.Set(0.0, zToler);
    range *= -1.0;
    EXPECT_THAT(range, HasLimits(-0.0, -zToler));
}

TEST(RangeR1Transform, TimesAssignByAPositiveFactorNeverSwaps) {
    RangeR1 range(2.0, 1.0);
    range *= 2.0;
    EXPECT_THAT(range, HasLimits(4.0, 2.0));
    range *= 0.5;
    EXPECT_THAT(range, HasLimits(2.0, 1.0));
}

TEST(RangeR1Transform, TimesAssignTurnsTheCanonicalEmptyRangeIntoAFullOne) {
    RangeR1 range;
    range *= -1.0;
    EXPECT_THAT(range, HasLimits(-1e307, 1e307));
}

TEST(RangeR1Transform, UnitsMultiplyByTheLibrarysFactors) {
    RangeR1 range(-1.0, 2.0);
    range.ToDegrees();
    EXPECT_THAT(range, HasLimits(-zDegPerRad, 2.0 * zDegPerRad));
    range.Set(-90.0, 180.0);
    range.ToRadians();
    EXPECT_THAT(range, HasLimits(-90.0 * zRadPerDeg, 180.0 * zRadPerDeg));
}

TEST(RangeR1Transform, UnitsAreNotRecorded) {
    RangeR1 range(-1.0, 2.0);
    range.ToDegrees();
    range.ToDegrees();
    EXPECT_THAT(range, HasLimits(-zDegPerRad * zDegPerRad, 2.0 * zDegPerRad * zDegPerRad));
}

TEST(RangeR1Transform, SetCenterMovesTheRange) {
    RangeR1 range(1.0, 3.0);
    EXPECT_TRUE(range.SetCenter(10.0));
    EXPECT_THAT(range, HasLimits(9.0, 11.0));
}

TEST(RangeR1Transform, SetCenterTakesHalfTheLength) {
    RangeR1 range(0.1, 0.8);
    EXPECT_TRUE(range.SetCenter(3.3));
    const double half = (0.8 - 0.1) * 0.5;
    EXPECT_THAT(range, HasLimits(3.3 - half, 3.3 + half));
}

TEST(RangeR1Transform, SetCenterToThePresentCentreDoesNothing) {
    RangeR1 range(1.0, 3.0);
    EXPECT_FALSE(range.SetCenter(2.0));
    EXPECT_THAT(range, HasLimits(1.0, 3.0));
    EXPECT_TRUE(range.SetCenter(-2.0));
    EXPECT_THAT(range, HasLimits(-3.0, -1.0));
}

TEST(RangeR1Transform, SetCenterWithinTheToleranceDoesNothing) {
    RangeR1 range(-1.0, 1.0);
    EXPECT_FALSE(range.SetCenter(kBelowToler));
    EXPECT_THAT(range, HasLimits(-1.0, 1.0));
    EXPECT_TRUE(range.SetCenter(zToler));
    EXPECT_THAT(range, HasLimits(zToler - 1.0, zToler + 1.0));
}

TEST(RangeR1Transform, CentreFormsDifferForHugeLimits) {
    // Half the sum of two huge limits is infinite, the sum of the halves is not.
    RangeR1 range(1e308, 1e308);
    EXPECT_TRUE(range.SetCenter(1e308));
    EXPECT_THAT(range.GetCenter(), Is(1e308));
    range.Set(1e308, 1.5e308);
    range.SetLengthKeepCenter(0.0);
    EXPECT_THAT(range, HasLimits(1.5e308 * 0.5 + 1e308 * 0.5, 1.5e308 * 0.5 + 1e308 * 0.5));
    range.Set(1e308, 1.5e308);
    range.Scale(0.0);
    EXPECT_THAT(range, HasLimits(1.5e308 * 0.5 + 1e308 * 0.5, 1.5e308 * 0.5 + 1e308 * 0.5));
    range.Set(1e308, 1.5e308);
    range.Inflate(-1.0);
    EXPECT_THAT(range, HasLimits(1.5e308 * 0.5 + 1e308 * 0.5, 1.5e308 * 0.5 + 1e308 * 0.5));
    range.Set(1e308, 1.5e308);
    range.Spread(0.0);
    constexpr double kIeeeInfinity = std::numeric_limits<double>::infinity();
    EXPECT_THAT(range, HasLimits(kIeeeInfinity, kIeeeInfinity));
    range.Set(1e308, 1.5e308);
    range.AdjustCentral(RangeR1(0.0, 0.0));
    EXPECT_THAT(range, HasLimits(kNaN, kIeeeInfinity));
}

TEST(RangeR1Transform, SetLengthMovesTheUpperLimit) {
    RangeR1 range(1.0, 3.0);
    range.SetLength(5.0);
    EXPECT_THAT(range, HasLimits(1.0, 6.0));
    range.SetLength(-2.0);
    EXPECT_THAT(range, HasLimits(1.0, -1.0));
}

TEST(RangeR1Transform, SetLengthKeepCenter) {
    RangeR1 range(1.0, 3.0);
    range.SetLengthKeepCenter(6.0);
    EXPECT_THAT(range, HasLimits(-1.0, 5.0));
}

TEST(RangeR1Transform, SetLengthKeepLimit) {
    RangeR1 range(1.0, 3.0);
    range.SetLengthKeepLimit(5.0, 1);
    EXPECT_THAT(range, HasLimits(-2.0, 3.0));
    range.SetLengthKeepLimit(1.0, 0);
    EXPECT_THAT(range, HasLimits(-2.0, -1.0));
    range.SetLengthKeepLimit(3.0, 200);
    EXPECT_THAT(range, HasLimits(-4.0, -1.0));
}

TEST(RangeR1Transform, SetLimitKeepLength) {
    RangeR1 range(1.0, 3.0);
    range.SetLimitKeepLength(1, 10.0);
    EXPECT_THAT(range, HasLimits(8.0, 10.0));
    range.SetLimitKeepLength(0, 0.0);
    EXPECT_THAT(range, HasLimits(0.0, 2.0));
    range.SetLimitKeepLength(200, 5.0);
    EXPECT_THAT(range, HasLimits(3.0, 5.0));
}

TEST(RangeR1Transform, SetMaxAndMinKeepLength) {
    RangeR1 range(1.0, 3.0);
    range.SetMaxKeepLength(10.0);
    EXPECT_THAT(range, HasLimits(8.0, 10.0));
    range.SetMinKeepLength(-1.0);
    EXPECT_THAT(range, HasLimits(-1.0, 1.0));
    range.Set(0.1, 0.8);
    range.SetMaxKeepLength(3.3);
    EXPECT_THAT(range, HasLimits(3.3 - (0.8 - 0.1), 3.3));
    range.Set(0.1, 0.8);
    range.SetMinKeepLength(3.3);
    EXPECT_THAT(range, HasLimits(3.3, 3.3 + (0.8 - 0.1)));
    range.Set(0.4, 1.3);
    range.SetMaxKeepLength(4.9);
    EXPECT_THAT(range, HasLimits(4.9 - (1.3 - 0.4), 4.9));
    range.Set(0.4, 1.3);
    range.SetMinKeepLength(4.9);
    EXPECT_THAT(range, HasLimits(4.9, 4.9 + (1.3 - 0.4)));
}

TEST(RangeR1Transform, AddMarginWidensWhereItIsTooTight) {
    RangeR1 range(0.0, 10.0);
    range.AddMargin(RangeR1(1.0, 8.0), 1.5);
    EXPECT_THAT(range, HasLimits(-0.5, 10.0));
    range.AddMargin(RangeR1(1.0, 9.0), 1.5);
    EXPECT_THAT(range, HasLimits(-0.5, 10.5));
    range.Set(-3.0, 10.0);
    range.AddMargin(RangeR1(1.0, 2.0), 2.0);
    EXPECT_THAT(range, HasLimits(-3.0, 10.0));
    range.Set(3.0, 10.0);
    range.AddMargin(RangeR1(4.0, 5.0), 2.0);
    EXPECT_THAT(range, HasLimits(2.0, 10.0));
}

TEST(RangeR1Transform, AddMarginNeverNarrows) {
    RangeR1 range(0.0, 10.0);
    range.AddMargin(RangeR1(4.0, 5.0), 1.0);
    EXPECT_THAT(range, HasLimits(0.0, 10.0));
    range.AddMargin(RangeR1(1.0 - 5e-11, 9.0 + 5e-11), 1.0);
    EXPECT_THAT(range, HasLimits(0.0, 10.0));
}

TEST(RangeR1Transform, AddMarginAtExactlyTheToleranceStays) {
    RangeR1 range(0.0, 0.0);
    range.AddMargin(RangeR1(0.0, 0.0), zToler);
    EXPECT_THAT(range, HasLimits(0.0, 0.0));
    range.AddMargin(RangeR1(0.0, 0.0), 2 * zToler);
    EXPECT_THAT(range, HasLimits(-2 * zToler, 2 * zToler));
}

TEST(RangeR1Transform, AddMarginComparesItWithTheGapBetweenTheLimits) {
    // In another order the same terms say otherwise, by rounding.
    const double lo = 3.1999999998999997;
    ASSERT_LT(lo - (2.3 - zToler), 0.9);
    RangeR1 range(0.9, 100.0);
    range.AddMargin(RangeR1(lo, 50.0), 2.3);
    EXPECT_THAT(range, HasLimits(0.9, 100.0));
}

TEST(RangeR1Transform, AdjustCentralCoversTheOtherSymmetrically) {
    RangeR1 range(-1.0, 1.0);
    range.AdjustCentral(RangeR1(-3.0, 2.0));
    EXPECT_THAT(range, HasLimits(-3.0, 3.0));
    range.AdjustCentral(RangeR1(0.25, 0.5));
    EXPECT_THAT(range, HasLimits(-0.5, 0.5));
    range.Set(4.0, 6.0);
    range.AdjustCentral(RangeR1(3.0, 4.0));
    EXPECT_THAT(range, HasLimits(3.0, 7.0));
    range.AdjustCentral(RangeR1(7.0, 9.0));
    EXPECT_THAT(range, HasLimits(1.0, 9.0));
    range.Set(4.0, 6.0);
    range.AdjustCentral(RangeR1(4.0, 1.0));
    EXPECT_THAT(range, HasLimits(1.0, 9.0));
}

TEST(RangeR1Transform, CenterMovesTheRangeIntoTheMiddle) {
    RangeR1 range(0.0, 2.0);
    range.Center(RangeR1(10.0, 20.0));
    EXPECT_THAT(range, HasLimits(14.0, 16.0));
}

TEST(RangeR1Transform, CenterLeavesTheSameRoomAtBothEnds) {
    RangeR1 range(0.1, 0.8);
    range.Center(RangeR1(0.3, 2.6));
    const double room = ((2.6 - 0.3) - (0.8 - 0.1)) * 0.5;
    EXPECT_THAT(range, HasLimits(0.3 + room, 2.6 - room));
}

TEST(RangeR1Transform, CenterDoesNotMoveALongerRange) {
    RangeR1 range(0.0, 20.0);
    range.Center(RangeR1(10.0, 20.0));
    EXPECT_THAT(range, HasLimits(0.0, 20.0));
    range.Set(0.0, 10.0);
    range.Center(RangeR1(10.0, 20.0));
    EXPECT_THAT(range, HasLimits(0.0, 10.0));
}

TEST(RangeR1Transform, CenterWithRoomOfExactlyTheToleranceMoves) {
    RangeR1 range(5.0, 5.0);
    range.Center(RangeR1(0.0, 2 * zToler));
    EXPECT_THAT(range, HasLimits(zToler, zToler));
}

TEST(RangeR1Transform, MakeSymmetricTakesTheGreaterMagnitude) {
    RangeR1 range(-1.0, 3.0);
    EXPECT_TRUE(range.MakeSymmetric());
    EXPECT_THAT(range, HasLimits(-3.0, 3.0));
    range.Set(-5.0, 3.0);
    EXPECT_TRUE(range.MakeSymmetric());
    EXPECT_THAT(range, HasLimits(-5.0, 5.0));
    range.Set(-1.0, -5.0);
    EXPECT_TRUE(range.MakeSymmetric());
    EXPECT_THAT(range, HasLimits(-5.0, 5.0));
}

TEST(RangeR1Transform, MakeSymmetricStoresAlsoWhatItDoesNotReport) {
    RangeR1 range(-1.0, 1.0);
    EXPECT_FALSE(range.MakeSymmetric());
    range.Set(-1.0 + 5e-11, 1.0);
    EXPECT_FALSE(range.MakeSymmetric());
    EXPECT_THAT(range, HasLimits(-1.0, 1.0));
    range.Set(-1.0, 1.0 - 5e-11);
    EXPECT_FALSE(range.MakeSymmetric());
    EXPECT_THAT(range, HasLimits(-1.0, 1.0));
}

TEST(RangeR1Transform, MakeSymmetricByExactlyTheToleranceReportsNothing) {
    RangeR1 range(0.0, zToler);
    EXPECT_FALSE(range.MakeSymmetric());
    EXPECT_THAT(range, HasLimits(-zToler, zToler));
    range.Set(-zToler, 0.0);
    EXPECT_FALSE(range.MakeSymmetric());
    EXPECT_THAT(range, HasLimits(-zToler, zToler));
    range.Set(0.0, 1.5 * zToler);
    EXPECT_TRUE(range.MakeSymmetric());
    range.Set(-1.5 * zToler, 0.0);
    EXPECT_TRUE(range.MakeSymmetric());
}

TEST(RangeR1Transform, MakeValidSwapsLimitsOutOfOrder) {
    RangeR1 range(3.0, 1.0);
    EXPECT_TRUE(range.MakeValid());
    EXPECT_THAT(range, HasLimits(1.0, 3.0));
    EXPECT_FALSE(range.MakeValid());
    EXPECT_THAT(range, HasLimits(1.0, 3.0));
}

TEST(RangeR1Transform, MakeValidHasNoTolerance) {
    RangeR1 range(1.0, 1.0);
    EXPECT_FALSE(range.MakeValid());
    range.Set(1e-300, 0.0);
    EXPECT_TRUE(range.MakeValid());
    EXPECT_THAT(range, HasLimits(0.0, 1e-300));
}

TEST(RangeR1Transform, MakeValidTakesNaNAsOutOfOrder) {
    RangeR1 range(kNaN, 1.0);
    EXPECT_TRUE(range.MakeValid());
    EXPECT_THAT(range, HasLimits(1.0, kNaN));
    EXPECT_TRUE(range.MakeValid());
    EXPECT_THAT(range, HasLimits(kNaN, 1.0));
}

TEST(RangeR1Transform, MakeValidForAValueGivesADefaultRange) {
    RangeR1 range = External(5.0, 6.0);
    range.MakeValid(-2.0);
    EXPECT_THAT(range, HasLimits(-3.0, 0.0));
    range.MakeValid(4.0);
    EXPECT_THAT(range, HasLimits(0.0, 6.0));
    range.MakeValid(0.0);
    EXPECT_THAT(range, HasLimits(-10.0, 10.0));
    range.MakeValid(-kBelowToler);
    EXPECT_THAT(range, HasLimits(-10.0, 10.0));
    range.MakeValid(zToler);
    EXPECT_THAT(range, HasLimits(0.0, 1.5 * zToler));
    EXPECT_TRUE(range.IsExternal());
}

TEST(RangeR1Transform, MoveAwayFromARangeAboveGoesDown) {
    RangeR1 range(0.0, 4.0);
    EXPECT_TRUE(range.MoveAwayFrom(RangeR1(3.0, 8.0)));
    EXPECT_THAT(range, HasLimits(-1.0, 3.0));
}

TEST(RangeR1Transform, MoveAwayFromARangeBelowGoesUp) {
    RangeR1 range(0.0, 4.0);
    EXPECT_TRUE(range.MoveAwayFrom(RangeR1(-5.0, 1.0)));
    EXPECT_THAT(range, HasLimits(1.0, 5.0));
}

TEST(RangeR1Transform, MoveAwayFromTheSameCentreGoesUp) {
    RangeR1 range(0.0, 4.0);
    EXPECT_TRUE(range.MoveAwayFrom(RangeR1(1.0, 3.0)));
    EXPECT_THAT(range, HasLimits(2.0, 6.0));
}

TEST(RangeR1Transform, MoveAwayTakesTheCentresInTheFormThatDoesNotOverflow) {
    RangeR1 range(0.75e308, 1.25e308);
    EXPECT_TRUE(range.MoveAwayFrom(RangeR1(1e308, 1.125e308)));
    EXPECT_THAT(range, HasLimits(0.75e308 - (1.125e308 - 1e308), 1.25e308 - (1.125e308 - 1e308)));
    range.Set(0.75e308, 1.5e308);
    EXPECT_TRUE(range.MoveAwayFrom(RangeR1(0.75e308, 1e308)));
    EXPECT_THAT(range, HasLimits(1e308, 1.5e308 + (1e308 - 0.75e308)));
}

TEST(RangeR1Transform, MoveAwayFromARangeApartDoesNothing) {
    RangeR1 range(0.0, 4.0);
    EXPECT_FALSE(range.MoveAwayFrom(RangeR1(5.0, 8.0)));
    EXPECT_THAT(range, HasLimits(0.0, 4.0));
}

TEST(RangeR1Transform, MoveAwayFromARangeThatTouchesIsTrueAndHardlyMoves) {
    RangeR1 range(0.0, 4.0);
    EXPECT_TRUE(range.MoveAwayFrom(RangeR1(4.0, 8.0)));
    EXPECT_THAT(range, HasLimits(0.0, 4.0));
}

TEST(RangeR1Transform, SnapMovesANumberToALimit) {
    const RangeR1 range(0.0, 1.0);
    double x = 0.0625;
    range.Snap(x, 0.125);
    EXPECT_THAT(x, Is(0.0));
    x = 1.0625;
    range.Snap(x, 0.125);
    EXPECT_THAT(x, Is(1.0));
    for (const double apart : {0.5, -5.0, 5.0}) {
        x = apart;
        range.Snap(x, 0.125);
        EXPECT_THAT(x, Is(apart));
    }
    x = 4.0625;
    RangeR1(4.0, 5.0).Snap(x, 0.125);
    EXPECT_THAT(x, Is(4.0));
}

TEST(RangeR1Transform, SnapIsStrictAndPrefersTheLowerLimit) {
    double x = 0.125;
    RangeR1(0.0, 1.0).Snap(x, 0.125);
    EXPECT_THAT(x, Is(0.125));
    x = 1.125;
    RangeR1(0.0, 1.0).Snap(x, 0.125);
    EXPECT_THAT(x, Is(1.125));
    x = 0.75;
    RangeR1(0.0, 1.0).Snap(x, 2.0);
    EXPECT_THAT(x, Is(0.0));
}

TEST(RangeR1Transform, SnapOfARangeMovesItsLimits) {
    RangeR1 other = External(0.0625, 1.0625);
    RangeR1(0.0, 1.0).Snap(other, 0.125);
    EXPECT_THAT(other, HasLimits(0.0, 1.0));
    EXPECT_TRUE(other.IsExternal());
    other.Set(1.0625, 0.5);
    RangeR1(0.0, 1.0).Snap(other, 0.125);
    EXPECT_THAT(other, HasLimits(1.0, 0.5));
}

struct InvertCase {
    const char* name;
    RangeR1 range;
    bool any;
    double lo;
    double hi;
};

struct RangeR1Invert : testing::TestWithParam<InvertCase> {};

TEST_P(RangeR1Invert, Gives) {
    RangeR1 range = GetParam().range;
    EXPECT_EQ(range.Invert(), GetParam().any);
    EXPECT_THAT(range, HasLimits(GetParam().lo, GetParam().hi));
}

INSTANTIATE_TEST_SUITE_P(
    RangeR1, RangeR1Invert,
    testing::Values(
        InvertCase{"Positive", {2.0, 4.0}, true, 0.25, 0.5},
        InvertCase{"Negative", {-4.0, -2.0}, true, -0.5, -0.25},
        InvertCase{"RoundZero", {-2.0, 4.0}, true, -0.5, 0.25},
        InvertCase{"FromZeroIsInfiniteBelow", {0.0, 5.0}, true, -1e307, 0.2},
        InvertCase{"ToZeroIsInfiniteAbove", {-5.0, 0.0}, true, -0.2, 1e307},
        InvertCase{"FromWithinTheToleranceOfZero", {5e-11, 5.0}, true, -1e307, 0.2},
        InvertCase{"FromExactlyTheTolerance", {zToler, 5.0}, true, 0.2, 1 / zToler},
        InvertCase{"FromZeroToExactlyTheTolerance", {0.0, zToler}, true, -1e307, 1 / zToler},
        InvertCase{"JustBelowZeroAndOutOfOrder", {-8e-11, -1.5e-10}, true, 1 / -1.5e-10, 1e307},
        InvertCase{"AtZero", {0.0, 0.0}, true, 1e307, 1e307},
        InvertCase{"WithinTheToleranceOfZero", {-5e-11, 5e-11}, true, 1e307, 1e307},
        InvertCase{"InfiniteAboveLosesBoth", {2.0, 1e307}, true, 0.0, 0.0},
        InvertCase{"ZeroToInfiniteLosesBoth", {0.0, 1e307}, true, 0.0, 0.0},
        InvertCase{"InfiniteBelow", {-1e307, -2.0}, true, -0.5, 0.0},
        InvertCase{"InfiniteBelowToPositive", {-1e307, 4.0}, true, 0.0, 0.25},
        InvertCase{"InfiniteBelowToZero", {-1e307, 0.0}, true, 0.0, 1e307},
        InvertCase{"Full", {-1e307, 1e307}, true, 0.0, 0.0},
        InvertCase{"UpperAtTheBoundIsFinite", {0.5, zFinite}, true, 1 / zFinite, 2.0},
        InvertCase{"UpperBeyondTheBound", {0.5, 2e306}, true, 0.0, 0.0},
        InvertCase{"BothBelowAtInfinity", {-1e307, -1e307}, false, -1e307, -1e307},
        InvertCase{"BothAboveAtInfinity", {1e307, 1e307}, false, 1e307, 1e307},
        InvertCase{"OutOfOrder", {2.0, 1.0}, false, 2.0, 1.0},
        InvertCase{"Empty", {1e307, -1e307}, false, 1e307, -1e307},
        InvertCase{"OutOfOrderByLessThanTheTolerance", {zToler, 0.0}, true, -1e307, 1e10}),
    [](const auto& test) { return test.param.name; });

TEST(RangeR1Transform, InvertKeepsTheFlag) {
    RangeR1 range = External(2.0, 4.0);
    EXPECT_TRUE(range.Invert());
    EXPECT_TRUE(range.IsExternal());
}

}  // namespace
}  // namespace ZT
