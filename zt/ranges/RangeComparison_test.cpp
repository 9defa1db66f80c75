// Typed ranges against one another: every pair of a family, in each kind, and what holds for
// all.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <zt/ranges/RangeFamily_test.h>

#include <cmath>
#include <string>
#include <vector>

namespace ZT {
namespace {

using testing_support::Degrees;
using testing_support::External;
using testing_support::HasLimits;
using testing_support::IsRange;
using testing_support::kEmpty;
using testing_support::kFull;
using testing_support::kPartial;
using testing_support::Outside;
using testing_support::Radians;
using testing_support::RawRange;

struct Named {
    std::string name;
    Range range;
};

void ExpectSameRange(const Range& a, const Range& b) {
    EXPECT_THAT(a, IsRange(b.m_min, b.m_max, b.m_eState));
    EXPECT_EQ(a.m_bExternal, b.m_bExternal);
    EXPECT_EQ(a.m_bDegrees, b.m_bDegrees);
    EXPECT_EQ(a.m_eScalarType, b.m_eScalarType);
}

bool DifferInALimit(const Range& a, const Range& b) {
    return std::fabs(a.m_min - b.m_min) > 1e-10 || std::fabs(a.m_max - b.m_max) > 1e-10;
}

// Compares every pair with a table that has a row for the containing range and a column for the
// contained one.
void ExpectContainment(const std::vector<Named>& family, const std::vector<std::string>& table) {
    ASSERT_EQ(table.size(), family.size());
    for (std::size_t i = 0; i < family.size(); ++i) {
        ASSERT_EQ(table[i].size(), family.size());
        for (std::size_t j = 0; j < family.size(); ++j) {
            const Range& a = family[i].range;
            const Range& b = family[j].range;
            const bool contains = table[i][j] == '1';
            SCOPED_TRACE(family[i].name + " and " + family[j].name);
            EXPECT_EQ(a >= b, contains);
            EXPECT_EQ(b <= a, contains);
            EXPECT_EQ(b < a, contains && DifferInALimit(a, b));
            EXPECT_EQ(a == b, !DifferInALimit(a, b));
            EXPECT_EQ(a != b, DifferInALimit(a, b));
        }
    }
}

// Real ranges.

std::vector<Named> RealFamily() {
    return {
        {"inner", {2, 3}},
        {"outer", {0, 10}},
        {"later", {8, 12}},
        {"point", {2, 2}},
        {"full", Range()},
        {"empty", {1e307, -1e307}},
        {"reversed", {10, 0}},
        {"outsideOfOuter", Outside(Range(0, 10))},
        {"outsideOfInner", Outside(Range(2, 3))},
    };
}

TEST(RangeRealFamily, ContainsByTheRulesOfRealIntervals) {
    // The empty range has limits that reach from one infinity to the other, and so seems to
    // contain all that is plain. A range outside of its limits contains what lies on one side.
    ExpectContainment(RealFamily(), {"100100000",  // inner
                                     "110100100",  // outer
                                     "001000000",  // later
                                     "000100000",  // point
                                     "111111111",  // full
                                     "111111100",  // empty
                                     "110100100",  // reversed
                                     "000000010",  // outsideOfOuter
                                     "001100011"}  // outsideOfInner
    );
}

TEST(RangeRealFamily, SumTakesTheOuterLimitsAndKeepsTheState) {
    for (const Named& a : RealFamily()) {
        for (const Named& b : RealFamily()) {
            SCOPED_TRACE(a.name + " and " + b.name);
            Range sum(a.range);
            EXPECT_EQ(&(sum += b.range), &sum);
            Range expected(a.range);
            if (a.range.m_min > a.range.m_max + 1e-10) {
                if (DifferInALimit(a.range, b.range)) {
                    expected.m_min = b.range.m_min;
                    expected.m_max = b.range.m_max;
                    expected.m_bExternal = b.range.m_bExternal;
                }
            } else {
                expected.m_min = std::min(a.range.m_min, b.range.m_min);
                expected.m_max = std::max(a.range.m_max, b.range.m_max);
            }
            ExpectSameRange(sum, expected);
        }
    }
}

TEST(RangeReal, ComparesWithAnAngularRangeByTheRealRules) {
    EXPECT_TRUE(Range(-5, 5) >= Radians(3, -3));
    EXPECT_TRUE(Range(-5, 5) >= Radians(1, 2, kFull));
    EXPECT_FALSE(Range(0, 1) >= Radians(zPi, zPi, kEmpty));
    EXPECT_FALSE(Range(0, 1) <= Radians(0.5, 2, kFull));
    EXPECT_TRUE(Range(0, 1) <= Radians(2, 0, kPartial));
}

TEST(RangeReal, SumWithAnAngularRangeTakesItsLimits) {
    Range range(0, 1);
    range += Degrees(5, 10);
    EXPECT_THAT(range, IsRange(0.0, 10.0, kPartial));
    EXPECT_FALSE(range.m_bDegrees);
    EXPECT_EQ(range.m_eScalarType, eScalarReal);
}

// Angular ranges. The limits stand on a grid of 24 steps of 15 degrees.

constexpr int kTurn = 24;

double GridAngle(int steps, bool degrees) {
    return degrees ? steps * 15.0 : steps * zPi / (kTurn / 2);
}

Range GridArc(int start, int end, bool degrees) {
    return RawRange(eScalarAngle, GridAngle(start, degrees), GridAngle(end, degrees), kPartial,
                    degrees);
}

std::vector<Named> AngularFamily(bool degrees) {
    Range full = GridArc(0, 0, degrees);
    full.SetFull();
    Range empty = GridArc(0, 0, degrees);
    empty.SetEmpty();
    Range fresh(eScalarAngle);
    fresh.m_bDegrees = degrees;
    return {
        {"quarter", GridArc(0, 6, degrees)},
        {"half", GridArc(0, 12, degrees)},
        {"overSeam", GridArc(10, -10, degrees)},
        {"wide", GridArc(3, -3, degrees)},
        {"point", GridArc(4, 4, degrees)},
        {"full", full},
        {"empty", empty},
        {"new", fresh},
        {"outsideOfQuarter", Outside(GridArc(0, 6, degrees))},
    };
}

struct RangeAngularFamily : testing::TestWithParam<bool> {
    static std::vector<Named> Family() { return AngularFamily(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(BothUnits, RangeAngularFamily, testing::Bool(),
                         [](const auto& test) { return test.param ? "Degrees" : "Radians"; });

constexpr int kPoints[] = {0, 3, 4, 6, 8, 10, 12, -10, -6, -3, -1};

TEST_P(RangeAngularFamily, HoldsPoints) {
    // The empty range holds the point at which its limits are.
    const std::vector<std::string> table = {
        "11110000000",  // quarter
        "11111110000",  // half
        "00000111000",  // overSeam
        "01111111110",  // wide
        "00100000000",  // point
        "11111111111",  // full
        "00000010000",  // empty
        "11111111111",  // new
        "10011111111",  // outsideOfQuarter
    };
    const auto family = Family();
    for (std::size_t i = 0; i < family.size(); ++i) {
        for (std::size_t j = 0; j < std::size(kPoints); ++j) {
            EXPECT_EQ(family[i].range.In(GridAngle(kPoints[j], GetParam())), table[i][j] == '1')
                << family[i].name << " at " << kPoints[j];
        }
    }
}

TEST_P(RangeAngularFamily, HoldsPointsWithoutItsLimits) {
    const std::vector<std::string> table = {
        "01100000000",  // quarter
        "01111100000",  // half
        "00000010000",  // overSeam
        "00111111100",  // wide
        "00000000000",  // point
        "11111111111",  // full
        "00000000000",  // empty
        "11111111111",  // new
        "00001111111",  // outsideOfQuarter
    };
    const auto family = Family();
    for (std::size_t i = 0; i < family.size(); ++i) {
        for (std::size_t j = 0; j < std::size(kPoints); ++j) {
            EXPECT_EQ(family[i].range.InOpen(GridAngle(kPoints[j], GetParam())), table[i][j] == '1')
                << family[i].name << " at " << kPoints[j];
        }
    }
}

const std::vector<std::string> kAngularContainment = {
    "100010000",  // quarter
    "110010100",  // half
    "001000100",  // overSeam
    "001110100",  // wide
    "000000000",  // point
    "111111111",  // full
    "000000100",  // empty
    "111111111",  // new
    "111000100",  // outsideOfQuarter
};

TEST_P(RangeAngularFamily, ContainsByLimitsAndTheMiddleOfTheGap) {
    // A point has no gap to look into, and so does not contain itself. An empty range answers
    // from the point at which its limits are. The gap is taken without a look at the flag, so
    // that the range outside of the quarter contains the quarter and not itself.
    ExpectContainment(Family(), kAngularContainment);
}

TEST_P(RangeAngularFamily, SumTakesAllOneEndOrNothing) {
    // Nothing (=), all limits (r), the end (e) or the start (s) of the range in the column.
    const std::vector<std::string> table = {
        "=rse=rsrr",  // quarter
        "==ee=r=rr",  // half
        "ss=rsr=rr",  // overSeam
        "ss===r=rs",  // wide
        "rrsrersrs",  // point
        "=========",  // full
        "srrrsr=rr",  // empty
        "=========",  // new
        "===ssr=re",  // outsideOfQuarter
    };
    const auto family = Family();
    for (std::size_t i = 0; i < family.size(); ++i) {
        for (std::size_t j = 0; j < family.size(); ++j) {
            const Range& r = family[j].range;
            SCOPED_TRACE(family[i].name + " and " + family[j].name);
            Range expected(family[i].range);
            const char taken = table[i][j];
            // The same limits and flag count as taken already.
            if (taken == 'r' || taken == 's') expected.m_min = r.m_min;
            if (taken == 'r' || taken == 'e') expected.m_max = r.m_max;
            if (taken == 'r') expected.m_bExternal = r.m_bExternal;
            Range sum(family[i].range);
            EXPECT_EQ(&(sum += r), &sum);
            ExpectSameRange(sum, expected);
        }
    }
}

TEST_P(RangeAngularFamily, EmptyRangeContainsARealOneThatIsEmpty) {
    Range empty = GridArc(0, 0, GetParam());
    empty.SetEmpty();
    EXPECT_TRUE(empty >= Range(2, 1));
    EXPECT_TRUE(empty >= RawRange(eScalarReal, 1e307, -1e307, kFull));
    EXPECT_FALSE(empty >= RawRange(eScalarReal, 1, 2, kEmpty));
}

TEST_P(RangeAngularFamily, FullRangeContainsARealOne) {
    Range full = GridArc(0, 0, GetParam());
    full.SetFull();
    EXPECT_TRUE(full >= Range());
    EXPECT_TRUE(full >= Range(2, 1));
}

TEST_P(RangeAngularFamily, PartialRangeContainsARealOneThatKeepsOutOfItsGap) {
    const Range half = GridArc(0, 12, GetParam());
    const auto real = [](int lo, int hi) {
        return Range(GridAngle(lo, GetParam()), GridAngle(hi, GetParam()));
    };
    EXPECT_TRUE(half >= real(1, 11));
    EXPECT_FALSE(half >= real(1, -1));
    // As real numbers the limits of the wide range reach over its gap.
    EXPECT_FALSE(GridArc(3, -3, GetParam()) >= real(-4, 4));
    EXPECT_TRUE(GridArc(3, -3, GetParam()) >= real(4, 5));
    // Real limits in reverse order hold what lies between.
    EXPECT_TRUE(half >= real(11, 1));
}

TEST(RangeAngular, ComparesTheLimitsOfAnotherUnitAsTheyStand) {
    EXPECT_FALSE(Radians(0, zPi / 2) >= Degrees(30, 60));
    EXPECT_TRUE(Degrees(0, 90) >= Radians(0.5, 1));
    EXPECT_TRUE(Radians(0, 3) >= Degrees(1, 2));
}

TEST(RangeAngular, LiesInARealRangeByTheRulesOfThat) {
    EXPECT_TRUE(Radians(3, -3) <= Range(-5, 5));
    EXPECT_FALSE(Radians(1, 2) <= Range(1.5, 5));
}

TEST(RangeAngular, SumWithARealRangeStaysAngular) {
    Range sum = Radians(0, 1);
    sum += Range(0.5, 2);
    EXPECT_THAT(sum, IsRange(0.0, 2.0, kPartial));
    EXPECT_EQ(sum.m_eScalarType, eScalarAngle);
}

TEST(RangeAngular, StrictContainmentNeedsADifferenceAboveTheTolerance) {
    EXPECT_FALSE(Radians(0, 1) < Radians(0, 1 + 5e-11));
    EXPECT_TRUE(Radians(0, 1) < Radians(0, 1 + 2e-10));
    EXPECT_FALSE(Range(0, 1) < Range(0, 1 + 5e-11));
    EXPECT_TRUE(Range(0, 1) < Range(-2e-10, 1));
    EXPECT_FALSE(Range(0, 1) < Range(0.5, 2));
}

TEST(RangeAngular, EqualityLooksAtTheLimitsAlone) {
    EXPECT_TRUE(Radians(1, 2) == RawRange(eScalarReal, 1, 2 + 5e-11, kEmpty, true));
    EXPECT_TRUE(Outside(Radians(1, 2)) == Radians(1, 2));
    EXPECT_FALSE(Radians(1, 2) == Radians(1, 2 + 2e-10));
    EXPECT_FALSE(Radians(1, 2) == Radians(1 - 2e-10, 2));
    EXPECT_TRUE(RawRange(eScalarReal, 0, zToler) == RawRange(eScalarReal, 0, 0));
}

TEST(RangeAngular, SumKeepsTheStateAlsoOfAnEmptyRange) {
    Range empty = Radians(0, 1);
    empty.SetEmpty();
    empty += Radians(1, 2);
    EXPECT_THAT(empty, IsRange(1.0, zPi, kEmpty));
    Range first = Radians(1, 2);
    first += Radians(zPi, zPi, kFull);
    EXPECT_THAT(first, IsRange(zPi, zPi, kPartial));
}

// The same rules in whole numbers: half steps of the grid.

constexpr int kHalfSteps = 2 * kTurn;

int Turned(int halfSteps) {
    return ((halfSteps % kHalfSteps) + kHalfSteps) % kHalfSteps;
}

struct GridModel {
    int start;
    int end;
    RangeS1::EState state;
    bool external;

    bool HoldsByLimits(int at) const {
        const int from = external ? end : start;
        const int to = external ? start : end;
        return Turned(at - 2 * from) <= Turned(2 * to - 2 * from);
    }
    bool Holds(int at) const { return state == kFull || HoldsByLimits(at); }
    bool Contains(const GridModel& r) const {
        if (state == kFull) return true;
        if (state == kEmpty) return r.state == kEmpty;
        if (!HoldsByLimits(2 * r.start) || !HoldsByLimits(2 * r.end)) return false;
        const int gap = Turned(2 * start - 2 * end);
        return !r.Holds(2 * end + gap / 2);
    }
    Range InUnit(bool degrees) const {
        Range range = GridArc(start, end, degrees);
        range.m_eState = state;
        range.m_bExternal = external;
        return range;
    }
};

GridModel AnyArc() {
    // Above minus half a turn, up to half a turn.
    const auto limit = [] { return *rc::gen::inRange(1 - kTurn / 2, kTurn / 2 + 1); };
    const int start = limit();
    const int end = limit();
    return {start, end, *rc::gen::element(kPartial, kPartial, kPartial, kPartial, kEmpty, kFull),
            *rc::gen::element(false, false, true)};
}

TEST(RangeLaws, AngularContainmentIsThatOfWholeNumbers) {
    EXPECT_TRUE(rc::check([] {
        for (int repeat = 0; repeat < 20; ++repeat) {
            const GridModel a = AnyArc();
            const GridModel b = AnyArc();
            const bool degrees = *rc::gen::arbitrary<bool>();
            const Range x = a.InUnit(degrees);
            const Range y = b.InUnit(degrees);
            RC_ASSERT((x >= y) == a.Contains(b));
            RC_ASSERT((y <= x) == a.Contains(b));
        }
    }));
}

TEST(RangeLaws, AngularRangeHoldsThePointsOfWholeNumbers) {
    EXPECT_TRUE(rc::check([] {
        const GridModel a = AnyArc();
        const bool degrees = *rc::gen::arbitrary<bool>();
        for (int at = 1 - kTurn / 2; at <= kTurn / 2; ++at) {
            RC_ASSERT(a.InUnit(degrees).In(GridAngle(at, degrees)) == a.Holds(2 * at));
        }
    }));
}

TEST(RangeLaws, PointsOfAnArcLieOnIt) {
    EXPECT_TRUE(rc::check([] {
        GridModel a = AnyArc();
        a.external = false;
        const Range range = a.InUnit(false);
        const double t = *rc::gen::inRange(0, 101) / 100.0;
        RC_ASSERT(range.In(range.GetPoint(t)));
    }));
}

TEST(RangeLaws, RatioOfAPointOfAnArcLeadsBack) {
    EXPECT_TRUE(rc::check([] {
        GridModel a = AnyArc();
        a.state = kPartial;
        Range range = a.InUnit(false);
        if (a.start == a.end) return;
        const double t = *rc::gen::inRange(1, 100) / 100.0;
        RC_ASSERT(std::fabs(range.GetRatio(range.GetPoint(t)) - t) < 1e-12);
    }));
}

TEST(RangeLaws, ConversionToDegreesAndBackKeepsTheRangeToTheTolerance) {
    EXPECT_TRUE(rc::check([] {
        const Range range = AnyArc().InUnit(false);
        Range converted(range);
        RC_ASSERT(converted.ToDegrees());
        RC_ASSERT(converted.ToRadians());
        RC_ASSERT(converted == range);
        RC_ASSERT(converted.m_eState == range.m_eState);
    }));
}

TEST(RangeLaws, RealRangeComparesAsItsInterval) {
    EXPECT_TRUE(rc::check([] {
        const auto number = [] {
            return *rc::gen::element(-1e307, -3.0, 0.0, 1.0, 1 + 5e-11, 2.0, 2 + 1e-10, 1e307);
        };
        Range a(number(), number());
        Range b(number(), number());
        a.m_bExternal = *rc::gen::arbitrary<bool>();
        b.m_bExternal = *rc::gen::arbitrary<bool>();
        const RangeR1& intervalA = a;
        const RangeR1& intervalB = b;
        RC_ASSERT((a >= b) == (intervalA >= intervalB));
        RC_ASSERT((a <= b) == (intervalA <= intervalB));
        RC_ASSERT((a == b) == (intervalA == intervalB));
        RC_ASSERT(a.IsEmpty() == intervalA.IsEmpty());
        RC_ASSERT(a.IsFull() == intervalA.IsFull());
        RC_ASSERT(a.IsValid() == intervalA.IsValid());
        RC_ASSERT(a.In(b.m_min) == intervalA.In(b.m_min, zToler));
        RangeR1 expected(intervalA);
        expected += intervalB;
        a += b;
        RC_ASSERT(testing_support::SameDouble(a.m_min, expected.m_min));
        RC_ASSERT(testing_support::SameDouble(a.m_max, expected.m_max));
        RC_ASSERT(a.m_bExternal == expected.m_bExternal);
    }));
}

}  // namespace
}  // namespace ZT
