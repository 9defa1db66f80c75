// Cutting a real interval into segments, and fitting it to a grid.

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

const double kBelowToler = std::nextafter(zToler, 0.0);

struct Place {
    int index;
    bool onKnot;
    bool operator==(const Place&) const = default;
};

void PrintTo(const Place& place, std::ostream* os) {
    *os << place.index << (place.onKnot ? " on a knot" : " between knots");
}

Place Locate(const RangeR1& range, double x, int n) {
    bool onKnot = false;
    const int index = range.GetSegment(x, n, &onKnot);
    bool alsoOnKnot = !onKnot;
    EXPECT_EQ(range.GetSegm(x, n, &alsoOnKnot), index);
    EXPECT_EQ(alsoOnKnot, onKnot);
    EXPECT_EQ(range.GetSegment(x, n, nullptr), index);
    return {index, onKnot};
}

TEST(RangeR1Subdivision, SegmentHoldsThePoint) {
    const RangeR1 range(0.0, 10.0);
    EXPECT_EQ(Locate(range, 5.0, 4), (Place{2, true}));
    EXPECT_EQ(Locate(range, 6.0, 4), (Place{2, false}));
    EXPECT_EQ(Locate(range, 0.0, 4), (Place{0, true}));
    EXPECT_EQ(Locate(range, 1.0, 4), (Place{0, false}));
    EXPECT_EQ(Locate(range, 9.0, 4), (Place{3, false}));
}

TEST(RangeR1Subdivision, UpperLimitIsOnTheLastKnot) {
    EXPECT_EQ(Locate(RangeR1(0.0, 5.0), 5.0, 4), (Place{4, true}));
    EXPECT_EQ(Locate(RangeR1(-1.0, 0.0), kBelowToler, 4), (Place{4, true}));
}

TEST(RangeR1Subdivision, PointJustBesideAKnotIsOnIt) {
    const RangeR1 range(0.0, 8.0);
    EXPECT_EQ(Locate(range, 2.0 - 5e-11, 4), (Place{1, true}));
    EXPECT_EQ(Locate(range, 2.0 + 5e-11, 4), (Place{1, true}));
    EXPECT_EQ(Locate(range, 2.0 + 2e-10, 4), (Place{1, false}));
    EXPECT_EQ(Locate(range, 2.0 - 2e-10, 4), (Place{0, false}));
}

TEST(RangeR1Subdivision, PointExactlyTheToleranceAboveAKnotIsNotOnIt) {
    EXPECT_EQ(Locate(RangeR1(0.0, 8.0), zToler, 4), (Place{0, false}));
}

TEST(RangeR1Subdivision, PointExactlyTheToleranceBesideTheUpperLimitIsNotOnIt) {
    EXPECT_EQ(Locate(RangeR1(-1.0, 0.0), zToler, 4), (Place{4, false}));
    EXPECT_EQ(Locate(RangeR1(-1.0, 0.0), -zToler, 4), (Place{3, false}));
}

TEST(RangeR1Subdivision, StepsAreTakenFromThePointBeforeTheLowerLimit) {
    // Points at the tolerance from a knot: in another order the same terms say otherwise.
    EXPECT_EQ(Locate(RangeR1(0.4, 3.5), 2.466666666766667, 3), (Place{2, true}));
    EXPECT_EQ(Locate(RangeR1(-2.2, -1.5000000000000002), -1.9374999999000004, 8),
              (Place{3, false}));
}

TEST(RangeR1Subdivision, SegmentsOfExactlyTheToleranceAreNotTooShort) {
    const RangeR1 range(0.0, 4 * zToler);
    EXPECT_EQ(Locate(range, 2.5 * zToler, 4), (Place{3, true}));
}

TEST(RangeR1Subdivision, CountGoesOnOutsideTheRange) {
    const RangeR1 range(0.0, 8.0);
    EXPECT_EQ(Locate(range, 11.0, 4), (Place{5, false}));
    EXPECT_EQ(Locate(range, -3.0, 4), (Place{-1, false}));
    EXPECT_EQ(Locate(range, -4.0, 4), (Place{-2, true}));
}

TEST(RangeR1Subdivision, ShortSegmentsGiveTheFirstKnot) {
    EXPECT_EQ(Locate(RangeR1(0.0, 1e-10), 3.0, 4), (Place{0, true}));
    EXPECT_EQ(Locate(RangeR1(2.0, 1.0), 1.5, 4), (Place{0, true}));
    EXPECT_EQ(Locate(RangeR1(5.0, 5.0), 7.0, 4), (Place{0, true}));
    EXPECT_EQ(Locate(RangeR1(0.0, 8.0), 3.0, -4), (Place{0, true}));
}

TEST(RangeR1Subdivision, UpperLimitIsTestedBeforeTheLengthOfTheSegments) {
    EXPECT_EQ(Locate(RangeR1(5.0, 5.0), 5.0, 4), (Place{4, true}));
}

TEST(RangeR1Subdivision, NoSegmentsLeaveTheFlagUnwritten) {
    for (const bool before : {false, true}) {
        bool onKnot = before;
        EXPECT_EQ(RangeR1(0.0, 8.0).GetSegment(3.0, 0, &onKnot), 0);
        EXPECT_EQ(onKnot, before);
        EXPECT_EQ(RangeR1(0.0, 8.0).GetSegm(3.0, 0, &onKnot), 0);
        EXPECT_EQ(onKnot, before);
    }
}

TEST(RangeR1Subdivision, SegmentByIndexRunsFromItsKnotToTheNext) {
    RangeR1 out = External(7.0, 7.0);
    RangeR1(0.0, 8.0).GetSegment(1, 4, out);
    EXPECT_THAT(out, HasLimits(2.0, 4.0));
    EXPECT_TRUE(out.IsExternal());
    RangeR1(0.0, 8.0).GetSegment(3, 4, out);
    EXPECT_THAT(out, HasLimits(6.0, 8.0));
}

TEST(RangeR1Subdivision, SegmentByIndexEndsInThePointsOfThatIndex) {
    const RangeR1 range(0.1, 0.8);
    for (int i = 0; i < 7; ++i) {
        RangeR1 out;
        range.GetSegment(i, 7, out);
        const double t = i / 7.0;
        const double u = (i + 1) / 7.0;
        EXPECT_THAT(out, HasLimits((1 - t) * 0.1 + t * 0.8, (1 - u) * 0.1 + u * 0.8)) << i;
    }
}

TEST(RangeR1Subdivision, SegmentAfterTheLastRunsBackwards) {
    RangeR1 out;
    RangeR1(0.0, 8.0).GetSegment(4, 4, out);
    EXPECT_THAT(out, HasLimits(8.0, 0.0));
    RangeR1(0.0, 8.0).GetSegment(5, 4, out);
    EXPECT_THAT(out, HasLimits(0.0, 2.0));
}

TEST(RangeR1Subdivision, SegmentBeforeTheFirstKeepsTheSign) {
    RangeR1 out;
    RangeR1(0.0, 8.0).GetSegment(-1, 4, out);
    EXPECT_THAT(out, HasLimits(-2.0, 0.0));
}

TEST(RangeR1Subdivision, SegmentOfNoSegmentsIsTheLowerLimit) {
    RangeR1 out;
    RangeR1(3.0, 8.0).GetSegment(2, 0, out);
    EXPECT_THAT(out, HasLimits(3.0, 3.0));
}

TEST(RangeR1Subdivision, SegmentOfTheGreatestIndexDoesNotOverflow) {
    RangeR1 out;
    RangeR1(0.0, 8.0).GetSegment(std::numeric_limits<int>::max(), 3, out);
    EXPECT_THAT(out, HasLimits(8.0, 0.0));
}

TEST(RangeR1Subdivision, SegmentIntoTheRangeItself) {
    RangeR1 range(0.0, 8.0);
    range.GetSegment(1, 4, range);
    EXPECT_THAT(range, HasLimits(2.0, 4.0));
}

TEST(RangeR1Subdivision, NextIsTheKnotAfterThePoint) {
    const RangeR1 range(0.0, 8.0);
    bool onKnot = true;
    int index = -1;
    EXPECT_THAT(range.GetNext(3.0, 4, &onKnot, &index), Is(4.0));
    EXPECT_FALSE(onKnot);
    EXPECT_EQ(index, 2);
    EXPECT_THAT(range.GetNext(4.0, 4, &onKnot, &index), Is(6.0));
    EXPECT_TRUE(onKnot);
    EXPECT_EQ(index, 3);
}

TEST(RangeR1Subdivision, NextAfterTheLastKnotWrapsToTheLowerLimit) {
    const RangeR1 range(1.0, 9.0);
    bool onKnot = false;
    int index = -1;
    EXPECT_THAT(range.GetNext(9.0, 4, &onKnot, &index), Is(1.0));
    EXPECT_TRUE(onKnot);
    EXPECT_EQ(index, 4);
}

TEST(RangeR1Subdivision, NextInTheLastSegmentIsTheLastKnot) {
    int index = -1;
    EXPECT_THAT(RangeR1(1.0, 9.0).GetNext(8.5, 4, nullptr, &index), Is(9.0));
    EXPECT_EQ(index, 4);
}

TEST(RangeR1Subdivision, NextBeyondTheRangeCountsOnRoundTheKnots) {
    int index = -1;
    EXPECT_THAT(RangeR1(0.0, 8.0).GetNext(11.0, 4, nullptr, &index), Is(2.0));
    EXPECT_EQ(index, 5);
    EXPECT_THAT(RangeR1(0.0, 8.0).GetNext(-5.0, 4, nullptr, &index), Is(-2.0));
    EXPECT_EQ(index, -1);
}

TEST(RangeR1Subdivision, NextOfNoSegmentsIsTheLowerLimit) {
    bool onKnot = true;
    int index = -1;
    EXPECT_THAT(RangeR1(3.0, 8.0).GetNext(5.0, 0, &onKnot, &index), Is(3.0));
    EXPECT_FALSE(onKnot);
    EXPECT_EQ(index, 0);
    EXPECT_THAT(RangeR1(3.0, 8.0).GetNext(5.0, 0, nullptr, nullptr), Is(3.0));
}

TEST(RangeR1Subdivision, NextIsTheSumOfTheLowerLimitAndTheSteps) {
    const RangeR1 range(0.1, 0.8);
    for (int n = 2; n <= 40; ++n) {
        for (int k = 0; k < n; ++k) {
            const double between = 0.1 + (k + 0.5) * (0.8 - 0.1) / n;
            const double next = 0.1 + (k + 1) * (0.8 - 0.1) / n;
            EXPECT_THAT(range.GetNext(between, n, nullptr, nullptr), Is(next)) << k << " of " << n;
            EXPECT_THAT(range.GetUpper(between, n, nullptr), Is(next)) << k << " of " << n;
        }
    }
}

TEST(RangeR1Subdivision, UpperIsThePointItselfOnAKnot) {
    const RangeR1 range(0.0, 8.0);
    bool onKnot = false;
    EXPECT_THAT(range.GetUpper(2.0 + 5e-11, 4, &onKnot), Is(2.0 + 5e-11));
    EXPECT_TRUE(onKnot);
    EXPECT_THAT(range.GetUpper(8.0, 4, &onKnot), Is(8.0));
    EXPECT_TRUE(onKnot);
}

TEST(RangeR1Subdivision, UpperIsTheNextKnotOtherwise) {
    bool onKnot = true;
    EXPECT_THAT(RangeR1(0.0, 8.0).GetUpper(3.0, 4, &onKnot), Is(4.0));
    EXPECT_FALSE(onKnot);
    EXPECT_THAT(RangeR1(0.0, 8.0).GetUpper(3.0, 4, nullptr), Is(4.0));
    EXPECT_THAT(RangeR1(0.0, 8.0).GetUpper(9.0, 4, nullptr), Is(0.0));
}

TEST(RangeR1Subdivision, UpperOfNoSegmentsTakesThePointAsBetweenKnots) {
    bool onKnot = true;
    EXPECT_THAT(RangeR1(3.0, 8.0).GetUpper(5.0, 0, &onKnot), Is(3.0));
    EXPECT_FALSE(onKnot);
}

TEST(RangeR1Subdivision, SetupOfWholeStepsGainsOneMore) {
    RangeR1 range(0.0, 3.0);
    int n = -1;
    range.Setup(1.0, n);
    EXPECT_EQ(n, 4);
    EXPECT_THAT(range, HasLimits(0.0, 4.0));
}

TEST(RangeR1Subdivision, SetupCoversTheRange) {
    RangeR1 range(1.0, 3.5);
    int n = -1;
    range.Setup(1.0, n);
    EXPECT_EQ(n, 3);
    EXPECT_THAT(range, HasLimits(1.0, 4.0));
}

TEST(RangeR1Subdivision, SetupGivesAtLeastOneStep) {
    RangeR1 range(5.0, 5.0);
    int n = -1;
    range.Setup(2.0, n);
    EXPECT_EQ(n, 1);
    EXPECT_THAT(range, HasLimits(5.0, 7.0));
    range.Set(5.0, 1.0);
    range.Setup(2.0, n);
    EXPECT_EQ(n, 1);
    EXPECT_THAT(range, HasLimits(5.0, 7.0));
}

TEST(RangeR1Subdivision, SetupJustBelowWholeStepsGainsOneMore) {
    RangeR1 range(0.0, 3.0 - 5e-11);
    int n = -1;
    range.Setup(1.0, n);
    EXPECT_EQ(n, 4);
    EXPECT_THAT(range, HasLimits(0.0, 4.0));
}

TEST(RangeR1Subdivision, SetupBelowWholeStepsByMoreThanTheToleranceGainsNone) {
    RangeR1 range(0.0, 3.0 - 1.5e-10);
    int n = -1;
    range.Setup(1.0, n);
    EXPECT_EQ(n, 3);
    EXPECT_THAT(range, HasLimits(0.0, 3.0));
}

TEST(RangeR1Subdivision, SetupGainsNoStepForExactlyTheTolerance) {
    RangeR1 range(0.0, 0.0);
    int n = -1;
    range.Setup(zToler, n);
    EXPECT_EQ(n, 1);
    EXPECT_THAT(range, HasLimits(0.0, zToler));
    // As a difference the same terms would be above zero, by rounding.
    const double length = 0.1 - zToler;
    ASSERT_GT(length - 0.1 + zToler, 0.0);
    range.Set(0.0, length);
    range.Setup(0.1, n);
    EXPECT_EQ(n, 1);
    EXPECT_THAT(range, HasLimits(0.0, 0.1));
}

TEST(RangeR1Subdivision, SetupAddsTheLastStepToTheProduct) {
    // Five steps and one more are not the same as six.
    RangeR1 range(0.0, 5 * 0.3);
    int n = -1;
    range.Setup(0.3, n);
    EXPECT_EQ(n, 6);
    EXPECT_THAT(range, HasLimits(0.0, 5 * 0.3 + 0.3));
    EXPECT_NE(range.m_max, 6 * 0.3);
}

TEST(RangeR1Subdivision, SetupWithAnOriginAlignsFirst) {
    RangeR1 range(1.25, 3.0);
    int n = -1;
    const double origin = 0.5;
    range.Setup(1.0, n, &origin);
    EXPECT_EQ(n, 3);
    EXPECT_THAT(range, HasLimits(0.5, 3.5));
}

TEST(RangeR1Subdivision, SetupWithoutAnOriginDoesNotAlign) {
    RangeR1 range(1.25, 3.0);
    int n = -1;
    range.Setup(1.0, n, nullptr);
    EXPECT_EQ(n, 2);
    EXPECT_THAT(range, HasLimits(1.25, 3.25));
}

TEST(RangeR1Subdivision, AlignMovesTheLowerLimitDownToTheGrid) {
    RangeR1 range(7.25, 20.0);
    range.Align(2.0, 1.0);
    EXPECT_THAT(range, HasLimits(7.0, 20.0));
    range.Align(2.0, 1.0);
    EXPECT_THAT(range, HasLimits(7.0, 20.0));
}

TEST(RangeR1Subdivision, AlignWithAnOriginAboveTheRange) {
    RangeR1 range(7.25, 20.0);
    range.Align(2.0, 12.0);
    EXPECT_THAT(range, HasLimits(6.0, 20.0));
    range.Set(-7.25, 20.0);
    range.Align(2.0, 0.0);
    EXPECT_THAT(range, HasLimits(-8.0, 20.0));
}

TEST(RangeR1Subdivision, AlignAddsTheOriginToWholeSteps) {
    RangeR1 range(1.1, 20.0);
    range.Align(0.3, 0.1);
    EXPECT_THAT(range, HasLimits(3 * 0.3 + 0.1, 20.0));
}

TEST(RangeR1Subdivision, AlignMovesAnOriginAboveTheRangeDownFirst) {
    RangeR1 range(1.1, 20.0);
    range.Align(0.3, 3.3);
    EXPECT_THAT(range, HasLimits(0 * 0.3 + (3.3 - 8 * 0.3), 20.0));
}

TEST(RangeR1Subdivision, AlignWithAnOriginThatSnapsToJustAboveTheLimitGoesAStepLower) {
    // Five steps down the origin lies within the tolerance above the limit and stays there,
    // so that the limit is almost a whole step away from the grid point below it.
    RangeR1 range(1.0, 20.0);
    const double origin = 1.0 + 5 * 0.3 + 5e-11;
    range.Align(0.3, origin);
    EXPECT_THAT(range, HasLimits(-1 * 0.3 + (origin - 5 * 0.3), 20.0));
}

TEST(RangeR1Subdivision, AlignNeedsAStepAboveTheTolerance) {
    RangeR1 range(7.25, 20.0);
    range.Align(zToler, 1.0);
    range.Align(0.0, 1.0);
    range.Align(-2.0, 1.0);
    EXPECT_THAT(range, HasLimits(7.25, 20.0));
    const double step = 1.5 * zToler;
    range.Set(4 * zToler, 20.0);
    range.Align(step, 0.0);
    EXPECT_THAT(range, HasLimits(2 * step, 20.0));
}

}  // namespace
}  // namespace ZT
