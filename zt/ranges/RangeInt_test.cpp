// Closed intervals of integers.

#include <zt/ranges/RangeInt.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/RangeMatchers.h>
#include <zt/numerics/DoubleZT.h>
#include <zt/ranges/RangeR1.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

namespace ZT {

void PrintTo(const RangeInt& r, std::ostream* os) {
    *os << '(' << r.m_min << ", " << r.m_max << ')';
}

void showValue(const RangeInt& r, std::ostream& os) {
    PrintTo(r, &os);
}

namespace {

using testing_support::HasLimits;

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

MATCHER_P2(IsRange, lo, hi, "") {
    return arg.m_min == lo && arg.m_max == hi;
}

// The record.

TEST(RangeInt, FieldsFollowTheTableInOrder) {
    EXPECT_EQ(offsetof(RangeInt, m_min), 0u);
    EXPECT_EQ(offsetof(RangeInt, m_max), 4u);
    EXPECT_EQ(sizeof(RangeInt), 8u);
    EXPECT_FALSE(std::is_polymorphic_v<RangeInt>);
}

TEST(RangeInt, NewRangeHasTheEmptyForm) {
    EXPECT_THAT(RangeInt(), IsRange(0, -1));
    EXPECT_TRUE(RangeInt().IsEmpty());
    EXPECT_EQ(RangeInt().GetCount(), 0);
}

TEST(RangeInt, LimitsAreNotPutInOrder) {
    EXPECT_THAT(RangeInt(5, 3), IsRange(5, 3));
    RangeInt range;
    range.Set(7, -7);
    EXPECT_THAT(range, IsRange(7, -7));
}

TEST(RangeInt, CopiesBothLimits) {
    const RangeInt range(5, 3);
    EXPECT_THAT(RangeInt(range), IsRange(5, 3));
    RangeInt target;
    EXPECT_EQ(&(target = range), &target);
    EXPECT_THAT(target, IsRange(5, 3));
    RangeInt copy;
    copy.Copy(range);
    EXPECT_THAT(copy, IsRange(5, 3));
}

TEST(RangeInt, ResetGivesTheEmptyForm) {
    RangeInt range(3, 5);
    range.Reset();
    EXPECT_THAT(range, IsRange(0, -1));
}

TEST(RangeInt, CopyRoundsTheLimitsOfARealRangeAnExactHalfDown) {
    RangeInt range;
    range.Copy(RangeR1(2.5, 7.75));
    EXPECT_THAT(range, IsRange(2, 8));
    range.Copy(RangeR1(-2.5, -1.25));
    EXPECT_THAT(range, IsRange(-3, -1));
}

TEST(RangeInt, CopyRoundsInfiniteLimitsToo) {
    RangeInt range;
    range.Copy(RangeR1());
    EXPECT_THAT(range, IsRange(DoubleZT::Round(zInfinity), DoubleZT::Round(-zInfinity)));
}

struct CountingSet : RangeR1 {
    void Set(double lo, double hi) override {
        ++sets;
        RangeR1::Set(lo, hi);
    }
    int sets = 0;
};

TEST(RangeInt, CopyToWritesTheFieldsWithoutSet) {
    CountingSet target;
    target.m_bExternal = true;
    RangeInt(-3, 8).CopyTo(target);
    EXPECT_THAT(target, HasLimits(-3.0, 8.0));
    EXPECT_EQ(target.sets, 0);
    EXPECT_TRUE(target.m_bExternal);
}

TEST(RangeInt, EqualityIsExactAlsoOfEmptyRanges) {
    EXPECT_TRUE(RangeInt(1, 2) == RangeInt(1, 2));
    EXPECT_FALSE(RangeInt(1, 2) == RangeInt(1, 3));
    EXPECT_FALSE(RangeInt(1, 2) == RangeInt(0, 2));
    EXPECT_FALSE(RangeInt(0, -1) == RangeInt(5, 4));
    EXPECT_FALSE(RangeInt(1, 2) != RangeInt(1, 2));
    EXPECT_TRUE(RangeInt(1, 2) != RangeInt(1, 3));
    EXPECT_TRUE(RangeInt(1, 2) != RangeInt(0, 2));
}

TEST(RangeInt, IndexZeroIsTheLowerLimitAndAnyOtherTheUpper) {
    RangeInt range(3, 5);
    EXPECT_EQ(&range[0], &range.m_min);
    EXPECT_EQ(&range[1], &range.m_max);
    EXPECT_EQ(&range[2], &range.m_max);
    EXPECT_EQ(&range[-1], &range.m_max);
    range[0] = 1;
    range[1] = 9;
    EXPECT_THAT(range, IsRange(1, 9));
    EXPECT_EQ(std::as_const(range)[0], 1);
    EXPECT_EQ(std::as_const(range)[1], 9);
}

// Tests and measures.

TEST(RangeInt, CountIsOneMoreThanTheLength) {
    EXPECT_EQ(RangeInt(3, 3).GetCount(), 1);
    EXPECT_EQ(RangeInt(3, 3).GetLength(), 0);
    EXPECT_EQ(RangeInt(-2, 4).GetCount(), 7);
    EXPECT_EQ(RangeInt(-2, 4).GetLength(), 6);
    EXPECT_EQ(RangeInt(5, 3).GetCount(), -1);
    EXPECT_EQ(RangeInt(5, 3).GetLength(), -2);
}

TEST(RangeInt, CountThatDoesNotFitWrapsRound) {
    EXPECT_EQ(RangeInt(kLowest, kHighest).GetLength(), -1);
    EXPECT_EQ(RangeInt(kLowest, kHighest).GetCount(), 0);
    EXPECT_EQ(RangeInt(0, kHighest).GetCount(), kLowest);
}

TEST(RangeInt, IsComparesBothLimits) {
    EXPECT_TRUE(RangeInt(1, 2).Is(1, 2));
    EXPECT_FALSE(RangeInt(1, 2).Is(1, 3));
    EXPECT_FALSE(RangeInt(1, 2).Is(2, 2));
}

TEST(RangeInt, IsEmptyWithLimitsOutOfOrder) {
    EXPECT_TRUE(RangeInt(1, 0).IsEmpty());
    EXPECT_FALSE(RangeInt(1, 1).IsEmpty());
    EXPECT_FALSE(RangeInt(1, 2).IsEmpty());
}

TEST(RangeInt, IsSingletonWithEqualLimits) {
    EXPECT_TRUE(RangeInt(3, 3).IsSingleton());
    EXPECT_FALSE(RangeInt(3, 4).IsSingleton());
    EXPECT_FALSE(RangeInt(4, 3).IsSingleton());
}

TEST(RangeInt, BothLimitsAreIn) {
    const RangeInt range(3, 5);
    EXPECT_FALSE(range.IsIn(2));
    EXPECT_TRUE(range.IsIn(3));
    EXPECT_TRUE(range.IsIn(4));
    EXPECT_TRUE(range.IsIn(5));
    EXPECT_FALSE(range.IsIn(6));
    EXPECT_FALSE(RangeInt(5, 3).IsIn(4));
}

TEST(RangeInt, ToRangeTakesTheValueFirst) {
    EXPECT_EQ(RangeInt::ToRange(5, 1, 3), 3);
    EXPECT_EQ(RangeInt::ToRange(0, 1, 3), 1);
    EXPECT_EQ(RangeInt::ToRange(2, 1, 3), 2);
    EXPECT_EQ(RangeR1::ToRange(1.0, 3.0, 5.0), 3.0);  // Here it is the last.
}

TEST(RangeInt, ToRangeTakesItsLimitsInTheirOrder) {
    EXPECT_EQ(RangeInt::ToRange(2, 3, 1), 3);
    EXPECT_EQ(RangeInt::ToRange(5, 3, 1), 1);
    EXPECT_EQ(RangeInt::ToRange(3, 3, 1), 1);
}

TEST(RangeInt, SetLimitKeepLengthMovesTheRange) {
    RangeInt range(3, 5);
    range.SetLimitKeepLength(0, 10);
    EXPECT_THAT(range, IsRange(10, 12));
    range.SetLimitKeepLength(1, 10);
    EXPECT_THAT(range, IsRange(8, 10));
    range.SetLimitKeepLength(7, 2);
    EXPECT_THAT(range, IsRange(0, 2));
    RangeInt empty;
    empty.SetLimitKeepLength(0, 4);
    EXPECT_THAT(empty, IsRange(4, 3));
}

// Set operations. The family and what each pair gives.

const RangeInt kZeroTen(0, 10);
const RangeInt kThreeFour(3, 4);
const RangeInt kZeroFour(0, 4);
const RangeInt kFourTen(4, 10);
const RangeInt kFour(4, 4);
const RangeInt kTwelveFifteen(12, 15);
const RangeInt kReversed(6, 2);
const RangeInt kEmpty;

struct Pair {
    RangeInt range;
    RangeInt other;
    bool any;         // result of Intersect
    RangeInt shared;  // what Intersect leaves
    int pieces;       // result of Subtract
    RangeInt rest;    // what Subtract leaves
};

// For the question whether a limit lies in the other range, real intervals take the limits of
// that in either order: so a range between the limits of a reversed one is taken away.
const Pair kPairs[] = {
    {kZeroTen, kZeroTen, true, {0, 10}, 0, {0, -1}},
    {kZeroTen, kThreeFour, true, {3, 4}, 2, {0, 3}},
    {kZeroTen, kZeroFour, true, {0, 4}, 1, {4, 10}},
    {kZeroTen, kFourTen, true, {4, 10}, 1, {0, 4}},
    {kZeroTen, kFour, true, {4, 4}, 1, {0, 10}},
    {kZeroTen, kTwelveFifteen, false, {0, -1}, 1, {0, 10}},
    {kZeroTen, kReversed, false, {6, 2}, 1, {0, 10}},
    {kZeroTen, kEmpty, false, {0, -1}, 1, {0, 10}},

    {kThreeFour, kZeroTen, true, {3, 4}, 0, {0, -1}},
    {kThreeFour, kThreeFour, true, {3, 4}, 0, {0, -1}},
    {kThreeFour, kZeroFour, true, {3, 4}, 0, {0, -1}},
    {kThreeFour, kFourTen, true, {4, 4}, 1, {3, 4}},
    {kThreeFour, kFour, true, {4, 4}, 1, {3, 4}},
    {kThreeFour, kTwelveFifteen, false, {0, -1}, 1, {3, 4}},
    {kThreeFour, kReversed, false, {0, -1}, 0, {0, -1}},
    {kThreeFour, kEmpty, false, {0, -1}, 1, {3, 4}},

    {kZeroFour, kZeroTen, true, {0, 4}, 0, {0, -1}},
    {kZeroFour, kThreeFour, true, {3, 4}, 1, {0, 3}},
    {kZeroFour, kZeroFour, true, {0, 4}, 0, {0, -1}},
    {kZeroFour, kFourTen, true, {4, 4}, 1, {0, 4}},
    {kZeroFour, kFour, true, {4, 4}, 1, {0, 4}},
    {kZeroFour, kTwelveFifteen, false, {0, -1}, 1, {0, 4}},
    {kZeroFour, kReversed, false, {0, -1}, 1, {0, 4}},
    {kZeroFour, kEmpty, false, {0, -1}, 1, {0, 4}},

    {kFourTen, kZeroTen, true, {4, 10}, 0, {0, -1}},
    {kFourTen, kThreeFour, true, {4, 4}, 1, {4, 10}},
    {kFourTen, kZeroFour, true, {4, 4}, 1, {4, 10}},
    {kFourTen, kFourTen, true, {4, 10}, 0, {0, -1}},
    {kFourTen, kFour, true, {4, 4}, 1, {4, 10}},
    {kFourTen, kTwelveFifteen, false, {0, -1}, 1, {4, 10}},
    {kFourTen, kReversed, false, {0, -1}, 1, {4, 10}},
    {kFourTen, kEmpty, false, {0, -1}, 1, {4, 10}},

    {kFour, kZeroTen, true, {4, 4}, 0, {0, -1}},
    {kFour, kThreeFour, true, {4, 4}, 0, {0, -1}},
    {kFour, kZeroFour, true, {4, 4}, 0, {0, -1}},
    {kFour, kFourTen, true, {4, 4}, 0, {0, -1}},
    {kFour, kFour, true, {4, 4}, 0, {0, -1}},
    {kFour, kTwelveFifteen, false, {0, -1}, 1, {4, 4}},
    {kFour, kReversed, false, {0, -1}, 0, {0, -1}},
    {kFour, kEmpty, false, {0, -1}, 1, {4, 4}},

    {kTwelveFifteen, kZeroTen, false, {0, -1}, 1, {12, 15}},
    {kTwelveFifteen, kThreeFour, false, {0, -1}, 1, {12, 15}},
    {kTwelveFifteen, kZeroFour, false, {0, -1}, 1, {12, 15}},
    {kTwelveFifteen, kFourTen, false, {0, -1}, 1, {12, 15}},
    {kTwelveFifteen, kFour, false, {0, -1}, 1, {12, 15}},
    {kTwelveFifteen, kTwelveFifteen, true, {12, 15}, 0, {0, -1}},
    {kTwelveFifteen, kReversed, false, {0, -1}, 1, {12, 15}},
    {kTwelveFifteen, kEmpty, false, {0, -1}, 1, {12, 15}},

    {kReversed, kZeroTen, false, {6, 2}, 0, {0, -1}},
    {kReversed, kThreeFour, false, {0, -1}, 0, {0, -1}},
    {kReversed, kZeroFour, false, {0, -1}, 0, {0, -1}},
    {kReversed, kFourTen, false, {0, -1}, 0, {0, -1}},
    {kReversed, kFour, false, {0, -1}, 0, {0, -1}},
    {kReversed, kTwelveFifteen, false, {0, -1}, 0, {0, -1}},
    {kReversed, kReversed, false, {0, -1}, 0, {0, -1}},
    {kReversed, kEmpty, false, {0, -1}, 0, {0, -1}},

    {kEmpty, kZeroTen, false, {0, -1}, 0, {0, -1}},
    {kEmpty, kThreeFour, false, {0, -1}, 0, {0, -1}},
    {kEmpty, kZeroFour, false, {0, -1}, 0, {0, -1}},
    {kEmpty, kFourTen, false, {0, -1}, 0, {0, -1}},
    {kEmpty, kFour, false, {0, -1}, 0, {0, -1}},
    {kEmpty, kTwelveFifteen, false, {0, -1}, 0, {0, -1}},
    {kEmpty, kReversed, false, {0, -1}, 0, {0, -1}},
    {kEmpty, kEmpty, false, {0, -1}, 0, {0, -1}},
};

std::string Name(const RangeInt& a, const RangeInt& b) {
    return testing::PrintToString(a) + " and " + testing::PrintToString(b);
}

TEST(RangeInt, TableHasEveryPair) {
    EXPECT_EQ(std::size(kPairs), 8u * 8u);
}

TEST(RangeInt, IntersectFollowsTheTable) {
    for (const Pair& pair : kPairs) {
        SCOPED_TRACE(Name(pair.range, pair.other));
        RangeInt range(pair.range);
        EXPECT_EQ(range.Intersect(pair.other), pair.any);
        EXPECT_EQ(range, pair.shared);
    }
}

TEST(RangeInt, SubtractFollowsTheTable) {
    for (const Pair& pair : kPairs) {
        SCOPED_TRACE(Name(pair.range, pair.other));
        RangeInt range(pair.range);
        EXPECT_EQ(range.Subtract(pair.other), pair.pieces);
        EXPECT_EQ(range, pair.rest);
    }
}

TEST(RangeInt, IntersectWithItself) {
    RangeInt range(3, 5);
    EXPECT_TRUE(range.Intersect(range));
    EXPECT_THAT(range, IsRange(3, 5));
    RangeInt reversed(5, 3);
    EXPECT_FALSE(reversed.Intersect(reversed));
    EXPECT_THAT(reversed, IsRange(0, -1));
}

TEST(RangeInt, IntersectAnswersByTheEndsThatOneRangeTakesFromTheOther) {
    // Each end of this range against each end of the other: below, at, above.
    for (int lo = 0; lo <= 6; ++lo) {
        for (int hi = lo; hi <= 6; ++hi) {
            SCOPED_TRACE(testing::Message() << lo << " to " << hi);
            RangeInt range(2, 4);
            const bool shares = lo <= 4 && hi >= 2;
            EXPECT_EQ(range.Intersect(RangeInt(lo, hi)), shares);
            EXPECT_EQ(range, shares ? RangeInt(std::max(lo, 2), std::min(hi, 4)) : RangeInt());
        }
    }
}

TEST(RangeInt, SubtractFromTheMiddleKeepsTheLowerPieceAndLosesTheUpper) {
    RangeInt range(0, 10);
    const RangeInt other(3, 4);
    EXPECT_EQ(range.Subtract(other), 2);
    EXPECT_THAT(range, IsRange(0, 3));
    EXPECT_THAT(other, IsRange(3, 4));
}

TEST(RangeInt, SubtractLeavesTheEndsOfTheOtherInThePieces) {
    RangeInt range(0, 10);
    EXPECT_EQ(range.Subtract(RangeInt(5, 10)), 1);
    EXPECT_TRUE(range.IsIn(5));
}

TEST(RangeInt, SubtractOfASingleIntegerTakesNothingAway) {
    RangeInt range(0, 10);
    EXPECT_EQ(range.Subtract(RangeInt(5, 5)), 1);
    EXPECT_THAT(range, IsRange(0, 10));
}

TEST(RangeInt, SubtractOfTheEmptyFormTakesAwayWhatLiesBetweenItsLimits) {
    const struct {
        RangeInt range;
        int pieces;
        RangeInt rest;
    } rows[] = {
        {{0, 0}, 0, {0, -1}},
        {{-1, 0}, 0, {0, -1}},
        {{0, 5}, 1, {0, 5}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.range));
        RangeInt range(row.range);
        EXPECT_EQ(range.Subtract(RangeInt()), row.pieces);
        EXPECT_EQ(range, row.rest);
    }
}

TEST(RangeInt, SubtractWithNothingLeftGivesTheEmptyForm) {
    RangeInt range(3, 5);
    EXPECT_EQ(range.Subtract(range), 0);
    EXPECT_THAT(range, IsRange(0, -1));
    RangeInt reversed(5, 3);
    EXPECT_EQ(reversed.Subtract(RangeInt(100, 200)), 0);
    EXPECT_THAT(reversed, IsRange(0, -1));
}

TEST(RangeInt, SubtractIsExactAtTheEndsOfTheIntegers) {
    RangeInt range(kLowest, kHighest);
    EXPECT_EQ(range.Subtract(RangeInt(kLowest, kHighest - 1)), 1);
    EXPECT_THAT(range, IsRange(kHighest - 1, kHighest));
}

// Uncovering.

RangeInt Uncovered(const RangeInt& range, const RangeInt& r, RangeInt out) {
    range.Uncover(r, out);
    return out;
}

TEST(RangeInt, UncoverLeavesTheRangeWhereNothingIsFree) {
    EXPECT_THAT(Uncovered({0, 10}, {0, 10}, {3, 5}), IsRange(3, 5));
    EXPECT_THAT(Uncovered({0, 10}, {-5, 20}, {3, 5}), IsRange(3, 5));
    EXPECT_THAT(Uncovered({5, 3}, {0, 1}, {3, 5}), IsRange(3, 5));
}

TEST(RangeInt, UncoverPutsTheRangeIntoTheOnlyGap) {
    EXPECT_THAT(Uncovered({0, 10}, {6, 10}, {7, 9}), IsRange(4, 6));
    EXPECT_THAT(Uncovered({0, 10}, {6, 12}, {7, 9}), IsRange(4, 6));
    EXPECT_THAT(Uncovered({0, 10}, {0, 4}, {1, 3}), IsRange(4, 6));
    EXPECT_THAT(Uncovered({0, 10}, {-2, 4}, {1, 3}), IsRange(4, 6));
}

TEST(RangeInt, UncoverPutsARangeTooLongForTheGapAtTheEndOfThisRange) {
    EXPECT_THAT(Uncovered({0, 10}, {6, 10}, {20, 27}), IsRange(0, 7));
    EXPECT_THAT(Uncovered({0, 10}, {0, 4}, {20, 27}), IsRange(3, 10));
    EXPECT_THAT(Uncovered({0, 10}, {6, 10}, {20, 26}), IsRange(0, 6));  // Just fits.
    EXPECT_THAT(Uncovered({0, 10}, {0, 4}, {20, 26}), IsRange(4, 10));
}

TEST(RangeInt, UncoverTakesTheGapAboveWhenBothRangesStartTogether) {
    // The single integer takes nothing away, so this range as a whole is the gap.
    EXPECT_THAT(Uncovered({0, 10}, {0, 0}, {20, 22}), IsRange(0, 2));
    EXPECT_THAT(Uncovered({0, 10}, {0, 0}, {20, 31}), IsRange(-1, 10));
}

TEST(RangeInt, UncoverChoosesBetweenTwoGapsByTheLengthOfTheOtherRange) {
    // The gap below has 6, and the other range 2, so it goes below.
    EXPECT_THAT(Uncovered({0, 100}, {6, 8}, {6, 8}), IsRange(4, 6));
    // The gap below has 6, and the other range 7.
    EXPECT_THAT(Uncovered({0, 100}, {6, 13}, {6, 8}), IsRange(13, 15));
    // As long as the other range is the gap below enough.
    EXPECT_THAT(Uncovered({0, 100}, {6, 12}, {6, 8}), IsRange(4, 6));
}

TEST(RangeInt, UncoverDoesNotMeasureTheGapAboveAndCanReachBeyondThisRange) {
    // The gap above has 1, but the other range 7.
    EXPECT_THAT(Uncovered({0, 14}, {6, 13}, {6, 13}), IsRange(13, 20));
}

TEST(RangeInt, UncoverWithTwoGapsTooNarrowGoesToAnEndOfThisRange) {
    EXPECT_THAT(Uncovered({0, 100}, {6, 8}, {0, 7}), IsRange(0, 7));
    EXPECT_THAT(Uncovered({0, 100}, {6, 13}, {0, 8}), IsRange(92, 100));
}

TEST(RangeInt, UncoverTakesWhatRemainsAsOneGapWhenTheOtherLiesApart) {
    // This range as a whole is the gap, below or above the other.
    EXPECT_THAT(Uncovered({0, 10}, {20, 30}, {1, 3}), IsRange(18, 20));
    EXPECT_THAT(Uncovered({20, 30}, {0, 10}, {1, 3}), IsRange(10, 12));
}

TEST(RangeInt, UncoverOfOneOfTheRangesThemselves) {
    RangeInt range(0, 10);
    RangeInt other(0, 4);
    range.Uncover(other, other);
    EXPECT_THAT(other, IsRange(4, 8));
    RangeInt r(6, 10);
    range.Uncover(r, range);
    EXPECT_THAT(range, IsRange(0, 10));
}

// Laws.

RangeInt AnyRange() {
    return {*rc::gen::inRange(-20, 20), *rc::gen::inRange(-20, 20)};
}

RangeInt ProperRange() {
    const int lo = *rc::gen::inRange(-20, 20);
    return {lo, lo + *rc::gen::inRange(0, 20)};
}

// The intersection, one step after the other.
bool IntersectStepByStep(RangeInt& range, const RangeInt& r) {
    if (r.m_min > range.m_max || range.m_min > r.m_max) {
        range = RangeInt(0, -1);
        return false;
    }
    if (r.m_min >= range.m_min) {
        range.m_min = r.m_min;
        if (r.m_max >= range.m_max) return true;
        range.m_max = r.m_max;
        return r.m_min <= r.m_max;
    }
    if (r.m_max > range.m_max) return range.m_min <= range.m_max;
    range.m_max = r.m_max;
    return r.m_max >= range.m_min;
}

TEST(RangeIntLaws, IntersectTakesItsSteps) {
    for (int a = 0; a < 5; ++a) {
        for (int b = 0; b < 5; ++b) {
            for (int c = 0; c < 5; ++c) {
                for (int d = 0; d < 5; ++d) {
                    RangeInt expected(a, b);
                    RangeInt result(a, b);
                    const RangeInt r(c, d);
                    EXPECT_EQ(result.Intersect(r), IntersectStepByStep(expected, r));
                    EXPECT_EQ(result, expected) << Name(RangeInt(a, b), r);
                }
            }
        }
    }
}

TEST(RangeIntLaws, IntersectionHoldsWhatBothHold) {
    EXPECT_TRUE(rc::check("both", [] {
        const RangeInt a = AnyRange();
        const RangeInt b = AnyRange();
        RangeInt shared(a);
        const bool any = shared.Intersect(b);
        RC_ASSERT(any == !shared.IsEmpty());
        for (int x = -45; x <= 45; ++x) RC_ASSERT(shared.IsIn(x) == (a.IsIn(x) && b.IsIn(x)));
    }));
}

TEST(RangeIntLaws, WhatSubtractLeavesIsOfThisRangeAndNotInsideTheOther) {
    EXPECT_TRUE(rc::check("rest", [] {
        const RangeInt range = ProperRange();
        const RangeInt other = ProperRange();
        RC_PRE(!other.IsSingleton());
        RangeInt rest(range);
        const int pieces = rest.Subtract(other);
        RC_ASSERT((pieces == 0) == (other.IsIn(range.m_min) && other.IsIn(range.m_max)));
        if (pieces == 0) return;
        for (int x = rest.m_min; x <= rest.m_max; ++x) {
            RC_ASSERT(range.IsIn(x));
            RC_ASSERT((!other.IsIn(x) || x == other.m_min || x == other.m_max));
        }
    }));
}

TEST(RangeIntLaws, UncoverKeepsTheLength) {
    EXPECT_TRUE(rc::check("length", [] {
        RangeInt out = AnyRange();
        const int length = out.GetLength();
        AnyRange().Uncover(AnyRange(), out);
        RC_ASSERT(out.GetLength() == length);
    }));
}

TEST(RangeIntLaws, TravelsThroughARealRange) {
    EXPECT_TRUE(rc::check("to doubles and back", [](int lo, int hi) {
        RangeR1 real;
        RangeInt(lo, hi).CopyTo(real);
        RangeInt back;
        back.Copy(real);
        RC_ASSERT(back == RangeInt(lo, hi));
    }));
}

TEST(RangeIntLaws, ClampedValueIsInAnOrderedRange) {
    EXPECT_TRUE(rc::check("clamp", [](int x) {
        const RangeInt range = ProperRange();
        const int clamped = RangeInt::ToRange(x, range.m_min, range.m_max);
        RC_ASSERT(range.IsIn(clamped));
        RC_ASSERT((clamped == x) == range.IsIn(x));
    }));
}

}  // namespace
}  // namespace ZT
