// Union and difference of real intervals.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tests/RangeMatchers.h>
#include <zt/ranges/RangeR1.h>

#include <limits>

namespace ZT {
namespace {

using testing_support::External;
using testing_support::HasLimits;

TEST(RangeR1SetOperations, IncludeExtendsToAPoint) {
    RangeR1 range(0.0, 1.0);
    range.Include(0.5);
    EXPECT_THAT(range, HasLimits(0.0, 1.0));
    range.Include(3.0);
    EXPECT_THAT(range, HasLimits(0.0, 3.0));
    range.Include(-2.0);
    EXPECT_THAT(range, HasLimits(-2.0, 3.0));
    range.Include(3.0 + 5e-11);
    EXPECT_THAT(range, HasLimits(-2.0, 3.0 + 5e-11));
}

TEST(RangeR1SetOperations, IncludeIntoTheCanonicalEmptyRangeGivesASingleton) {
    RangeR1 range;
    range.Include(3.0);
    EXPECT_THAT(range, HasLimits(3.0, 3.0));
}

TEST(RangeR1SetOperations, IncludeOfNaNChangesNothing) {
    RangeR1 range(0.0, 1.0);
    range.Include(std::numeric_limits<double>::quiet_NaN());
    EXPECT_THAT(range, HasLimits(0.0, 1.0));
}

// Include of a range is one operation under two names.
struct RangeR1Unite : testing::TestWithParam<bool> {
    static bool Unite(RangeR1& range, const RangeR1& other) {
        return GetParam() ? range.Unite(other) : range.Include(other);
    }
};

INSTANTIATE_TEST_SUITE_P(BothNames, RangeR1Unite, testing::Bool(),
                         [](const auto& test) { return test.param ? "Unite" : "Include"; });

TEST_P(RangeR1Unite, TakesTheOuterLimits) {
    RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(Unite(range, RangeR1(-1.0, 0.5)));
    EXPECT_THAT(range, HasLimits(-1.0, 1.0));
    EXPECT_TRUE(Unite(range, RangeR1(0.0, 2.0)));
    EXPECT_THAT(range, HasLimits(-1.0, 2.0));
    EXPECT_TRUE(Unite(range, RangeR1(5.0, 6.0)));
    EXPECT_THAT(range, HasLimits(-1.0, 6.0));
}

TEST_P(RangeR1Unite, SaysWhenNothingChanges) {
    RangeR1 range(0.0, 1.0);
    EXPECT_FALSE(Unite(range, RangeR1(0.25, 0.5)));
    EXPECT_FALSE(Unite(range, RangeR1(0.0, 1.0)));
    EXPECT_FALSE(Unite(range, RangeR1()));
    EXPECT_THAT(range, HasLimits(0.0, 1.0));
}

TEST_P(RangeR1Unite, ReportsAChangeOfAnySize) {
    RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(Unite(range, RangeR1(-1e-300, 1.0)));
    EXPECT_THAT(range, HasLimits(-1e-300, 1.0));
}

TEST_P(RangeR1Unite, DoesNotKnowEmptiness) {
    RangeR1 range(5.0, 6.0);
    EXPECT_TRUE(Unite(range, RangeR1(0.0, -1.0)));
    EXPECT_THAT(range, HasLimits(0.0, 6.0));
}

TEST_P(RangeR1Unite, KeepsItsFlag) {
    RangeR1 range(5.0, 6.0);
    Unite(range, External(0.0, 9.0));
    EXPECT_FALSE(range.IsExternal());
}

TEST(RangeR1SetOperations, PlusAssignTakesTheOuterLimits) {
    RangeR1 range(0.0, 1.0);
    range += External(-1.0, 0.5);
    EXPECT_THAT(range, HasLimits(-1.0, 1.0));
    EXPECT_FALSE(range.IsExternal());
    range += RangeR1(5.0, 6.0);
    EXPECT_THAT(range, HasLimits(-1.0, 6.0));
}

TEST(RangeR1SetOperations, PlusAssignToASingletonIsAUnion) {
    RangeR1 range(3.0, 3.0);
    range += External(5.0, 6.0);
    EXPECT_THAT(range, HasLimits(3.0, 6.0));
    EXPECT_FALSE(range.IsExternal());
}

TEST(RangeR1SetOperations, PlusAssignToAnEmptyRangeCopiesWithTheFlag) {
    RangeR1 range(0.0, -1.0);
    range += External(3.0, 4.0);
    EXPECT_THAT(range, HasLimits(3.0, 4.0));
    EXPECT_TRUE(range.IsExternal());
}

TEST(RangeR1SetOperations, PlusAssignToAnEmptyRangeCopiesByTheToleranceRule) {
    RangeR1 range(0.0, -1.0);
    range += RangeR1(5e-11, -1.0);
    EXPECT_THAT(range, HasLimits(0.0, -1.0));
}

TEST(RangeR1SetOperations, PlusAssignOfTheCanonicalEmptyRangeChangesNothing) {
    RangeR1 range(5.0, 6.0);
    range += RangeR1();
    EXPECT_THAT(range, HasLimits(5.0, 6.0));
}

TEST(RangeR1SetOperations, PlusAssignOfTheSecondEmptyFormChangesTheLimits) {
    RangeR1 range(5.0, 6.0);
    range += RangeR1(0.0, -1.0);
    EXPECT_THAT(range, HasLimits(0.0, 6.0));
}

TEST(RangeR1SetOperations, SubtractFromTheMiddleLeavesTwoPieces) {
    RangeR1 range(0.0, 10.0);
    RangeR1 other(3.0, 4.0);
    EXPECT_EQ(range.Subtract(other), 2);
    EXPECT_THAT(range, HasLimits(0.0, 3.0));
    EXPECT_THAT(other, HasLimits(4.0, 10.0));
}

TEST(RangeR1SetOperations, SubtractOfAllLeavesTheCanonicalEmptyRange) {
    RangeR1 range(0.0, 10.0);
    RangeR1 other(-1.0, 11.0);
    EXPECT_EQ(range.Subtract(other), 0);
    EXPECT_THAT(range, HasLimits(1e307, -1e307));
    EXPECT_THAT(other, HasLimits(-1.0, 11.0));
}

TEST(RangeR1SetOperations, SubtractOfTheSameRangeLeavesNothing) {
    RangeR1 range(0.0, 10.0);
    EXPECT_EQ(range.Subtract(range), 0);
    EXPECT_THAT(range, HasLimits(1e307, -1e307));
}

TEST(RangeR1SetOperations, SubtractFromAnEmptyRangeMakesItCanonical) {
    RangeR1 range(0.0, -1.0);
    RangeR1 other(5.0, 6.0);
    EXPECT_EQ(range.Subtract(other), 0);
    EXPECT_THAT(range, HasLimits(1e307, -1e307));
}

TEST(RangeR1SetOperations, SubtractKeepsTheFlagWhenItEmpties) {
    RangeR1 range = External(0.0, 1.0);
    RangeR1 other = External(0.0, 1.0);
    EXPECT_EQ(range.Subtract(other), 0);
    EXPECT_TRUE(range.IsExternal());
}

TEST(RangeR1SetOperations, SubtractOfARangeApartTakesNothing) {
    RangeR1 range(0.0, 10.0);
    RangeR1 other(11.0, 12.0);
    EXPECT_EQ(range.Subtract(other), 1);
    EXPECT_THAT(range, HasLimits(0.0, 10.0));
    EXPECT_THAT(other, HasLimits(11.0, 12.0));
}

TEST(RangeR1SetOperations, SubtractOfTheCanonicalEmptyRangeTakesAll) {
    // Between its limits, taken in order, lies every number.
    RangeR1 range(0.0, 10.0);
    RangeR1 empty;
    EXPECT_EQ(range.Subtract(empty), 0);
    EXPECT_THAT(range, HasLimits(1e307, -1e307));
}

TEST(RangeR1SetOperations, SubtractOfTheSecondEmptyFormApartTakesNothing) {
    RangeR1 range(5.0, 10.0);
    RangeR1 empty(0.0, -1.0);
    EXPECT_EQ(range.Subtract(empty), 1);
    EXPECT_THAT(range, HasLimits(5.0, 10.0));
}

TEST(RangeR1SetOperations, SubtractOfAPointTakesNothing) {
    RangeR1 range(0.0, 10.0);
    RangeR1 point(5.0, 5.0);
    EXPECT_EQ(range.Subtract(point), 1);
    EXPECT_THAT(range, HasLimits(0.0, 10.0));
    EXPECT_THAT(point, HasLimits(5.0, 5.0));
}

TEST(RangeR1SetOperations, SubtractFromAboveLeavesTheLowerPiece) {
    RangeR1 range(0.0, 10.0);
    RangeR1 other(6.0, 12.0);
    EXPECT_EQ(range.Subtract(other), 1);
    EXPECT_THAT(range, HasLimits(0.0, 6.0));
    EXPECT_THAT(other, HasLimits(6.0, 12.0));
}

TEST(RangeR1SetOperations, SubtractOfARangeThatTouchesTheEndKeepsTheEnd) {
    // Within the tolerance of the upper limit the limit stays as it is.
    RangeR1 range(0.0, 10.0);
    RangeR1 other(10.0 - 5e-11, 12.0);
    EXPECT_EQ(range.Subtract(other), 1);
    EXPECT_THAT(range, HasLimits(0.0, 10.0));
}

TEST(RangeR1SetOperations, SubtractFromExactlyTheToleranceBelowTheEndMovesTheEnd) {
    RangeR1 range(-1.0, 0.0);
    RangeR1 other(-zToler, 1.0);
    EXPECT_EQ(range.Subtract(other), 1);
    EXPECT_THAT(range, HasLimits(-1.0, -zToler));
    range.Set(-1.0, 0.0);
    other.Set(-std::nextafter(zToler, 0.0), 1.0);
    EXPECT_EQ(range.Subtract(other), 1);
    EXPECT_THAT(range, HasLimits(-1.0, 0.0));
}

TEST(RangeR1SetOperations, SubtractFromBelowLeavesTheUpperPiece) {
    RangeR1 range(0.0, 10.0);
    RangeR1 other(-2.0, 4.0);
    EXPECT_EQ(range.Subtract(other), 1);
    EXPECT_THAT(range, HasLimits(4.0, 10.0));
    EXPECT_THAT(other, HasLimits(-2.0, 4.0));
}

TEST(RangeR1SetOperations, SubtractOfARangeThatTouchesTheStartMovesTheStart) {
    // Unlike at the end, there is no tolerance here.
    RangeR1 range(0.0, 10.0);
    RangeR1 other(-2.0, 5e-11);
    EXPECT_EQ(range.Subtract(other), 1);
    EXPECT_THAT(range, HasLimits(5e-11, 10.0));
}

TEST(RangeR1SetOperations, SubtractThatLeavesNeitherPieceKeepsTheRange) {
    // The shared part covers this range to the bit, but an external range around a hole
    // does not hold its middle.
    RangeR1 range(0.0, 1.0);
    RangeR1 other = External(-1.0, 2.0);
    EXPECT_EQ(range.Subtract(other), 0);
    EXPECT_THAT(range, HasLimits(0.0, 1.0));
    EXPECT_THAT(other, HasLimits(-1.0, 2.0));
}

TEST(RangeR1SetOperations, SubtractOfAnExternalRangeLooksAtTheLimitsAlone) {
    // Both limits lie beside the hole, so the range counts as inside, hole and all.
    RangeR1 range(0.0, 10.0);
    RangeR1 other = External(3.0, 4.0);
    EXPECT_EQ(range.Subtract(other), 0);
    EXPECT_THAT(range, HasLimits(1e307, -1e307));
}

TEST(RangeR1SetOperations, SubtractWithTwoPiecesStoresTheLowerOneByTheToleranceRule) {
    // A range out of order by exactly the tolerance: no singleton, and not yet empty. The
    // lower piece ends within the tolerance of the present end, which therefore stays.
    const double lo = -7.89498860124165e-11;
    const double hi = -1.789498860124165e-10;
    RangeR1 range(-3.0, 0.0);
    RangeR1 other(lo, hi);
    ASSERT_FALSE(other.IsSingleton());
    ASSERT_FALSE(other.IsEmpty());
    EXPECT_EQ(range.Subtract(other), 2);
    EXPECT_THAT(range, HasLimits(-3.0, 0.0));
    EXPECT_THAT(other, HasLimits(hi, 0.0));
}

TEST(RangeR1SetOperations, SubtractWithTwoPiecesKeepsBothFlags) {
    RangeR1 range = External(0.0, 10.0);
    RangeR1 other(3.0, 4.0);
    EXPECT_EQ(range.Subtract(other), 2);
    EXPECT_THAT(range, HasLimits(0.0, 3.0));
    EXPECT_TRUE(range.IsExternal());
    EXPECT_THAT(other, HasLimits(4.0, 10.0));
    EXPECT_FALSE(other.IsExternal());
}

}  // namespace
}  // namespace ZT
