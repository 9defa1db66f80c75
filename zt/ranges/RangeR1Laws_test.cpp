// What holds for all real intervals: laws on random ranges, and every pair of a family.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/RangeMatchers.h>
#include <zt/ranges/RangeR1.h>

#include <vector>

namespace ZT {
namespace {

using testing_support::External;
using testing_support::InFull;
using testing_support::SameDouble;

// Numbers at which operations change their minds: small ones, such that are a little more
// or less than another, and huge ones.
double AnyNumber() {
    const double base = *rc::gen::element(-1e307, -9e306, -1e306, -8.0, -3.5, -1.0, 0.0, 1.0, 2.0,
                                          3.5, 8.0, 100.0, 1e306, 9e306, 1e307);
    const double shift =
        *rc::gen::element(0.0, 0.0, 0.0, 5e-11, -5e-11, 1e-10, -1e-10, 2e-10, 0.25);
    return base + shift;
}

RangeR1 AnyRange() {
    const double lo = AnyNumber();
    const double hi = AnyNumber();
    return *rc::gen::arbitrary<bool>() ? External(lo, hi) : RangeR1(lo, hi);
}

// A plain range in order whose limits are multiples of 1/64, so that sums are exact.
RangeR1 ExactRange() {
    const int lo = *rc::gen::inRange(-6400, 6400);
    const int length = *rc::gen::inRange(0, 6400);
    return {lo / 64.0, (lo + length) / 64.0};
}

double ExactNumber() {
    return *rc::gen::inRange(-6400, 6400) / 64.0;
}

bool SameRange(const RangeR1& a, const RangeR1& b) {
    return SameDouble(a.m_min, b.m_min) && SameDouble(a.m_max, b.m_max) &&
           a.m_bExternal == b.m_bExternal;
}

// The intersection, one step after the other.
bool IntersectStepByStep(RangeR1& range, const RangeR1& r) {
    if (r.m_min > range.m_max + zToler || range.m_min - zToler > r.m_max) {
        range.m_min = zInfinity;
        range.m_max = -zInfinity;
        return false;
    }
    if (!(r.m_min < range.m_min - zToler)) {
        if (!(r.m_max < range.m_max - zToler)) {
            range.m_min = r.m_min;
            return true;
        }
        range.Copy(r);
        return !(range.m_min > range.m_max + zToler);
    }
    if (r.m_max > range.m_max + zToler) return !(range.m_min > range.m_max + zToler);
    range.m_max = r.m_max;
    return !(range.m_min > r.m_max + zToler);
}

// Whether the intersection takes its steps, with the result the same to the bit.
bool IntersectTakesItsSteps(const RangeR1& a, const RangeR1& b) {
    RangeR1 expected(a);
    RangeR1 result(a);
    return IntersectStepByStep(expected, b) == result.Intersect(b) && SameRange(result, expected);
}

TEST(RangeR1Laws, IntersectTakesItsStepsToTheBitAtEveryTie) {
    const double limits[] = {
        -1e307, -1.0,         -2e-10,      -zToler,    -5e-11, -0.0,
        0.0,    5e-11,        zToler,      2 * zToler, 1e-9,   1.0 - zToler,
        1.0,    1.0 + zToler, 1.0 + 5e-11, 1e307,      8192.0, 8192.0 + zToler};
    for (const double lo : limits) {
        for (const double hi : limits) {
            for (const double otherLo : limits) {
                for (const double otherHi : limits) {
                    const RangeR1 a(lo, hi);
                    ASSERT_TRUE(IntersectTakesItsSteps(a, {otherLo, otherHi}))
                        << testing::PrintToString(a) << " and "
                        << testing::PrintToString(RangeR1(otherLo, otherHi));
                    ASSERT_TRUE(IntersectTakesItsSteps(a, External(otherLo, otherHi)));
                }
            }
        }
    }
}

TEST(RangeR1Laws, IntersectTakesItsStepsToTheBit) {
    EXPECT_TRUE(rc::check([] { RC_ASSERT(IntersectTakesItsSteps(AnyRange(), AnyRange())); }));
}

TEST(RangeR1Laws, IntersectTakesItsStepsToTheBitOnAnyNumbers) {
    EXPECT_TRUE(rc::check([] {
        const auto limits =
            *rc::gen::container<std::vector<double>>(4, rc::gen::arbitrary<double>());
        RC_ASSERT(IntersectTakesItsSteps({limits[0], limits[1]}, {limits[2], limits[3]}));
    }));
}

TEST(RangeR1Laws, InFollowsItsDefinition) {
    EXPECT_TRUE(rc::check([] {
        const RangeR1 range = AnyRange();
        const double x = AnyNumber();
        const double tol = *rc::gen::element(0.0, 1e-10, 0.25);
        const bool near = tol > std::fabs(x - range.m_min);
        const bool between = x >= std::min(range.m_min, range.m_max) - tol &&
                             std::max(range.m_min, range.m_max) + tol >= x;
        const bool expected = !between             ? range.m_bExternal
                              : !range.m_bExternal ? true
                                                   : near || tol > std::fabs(x - range.m_max);
        RC_ASSERT(range.In(x, tol) == expected);
    }));
}

TEST(RangeR1Laws, UnionContainsBoth) {
    EXPECT_TRUE(rc::check([] {
        const RangeR1 a = ExactRange();
        const RangeR1 b = ExactRange();
        RangeR1 both(a);
        both.Unite(b);
        RC_ASSERT(both >= a);
        RC_ASSERT(both >= b);
        RangeR1 sum(a);
        sum += b;
        RC_ASSERT(SameRange(sum, both));
    }));
}

TEST(RangeR1Laws, UniteReportsAChangeOfTheLimits) {
    EXPECT_TRUE(rc::check([] {
        const RangeR1 before = AnyRange();
        RangeR1 after(before);
        const bool changed = after.Unite(AnyRange());
        RC_ASSERT(changed == !SameRange(before, after));
    }));
}

TEST(RangeR1Laws, IntersectionLiesWithinBoth) {
    EXPECT_TRUE(rc::check([] {
        const RangeR1 a = ExactRange();
        const RangeR1 b = ExactRange();
        RangeR1 shared(a);
        const bool any = shared.Intersect(b);
        RC_ASSERT(any == a.IsIntersection(b, false));
        RC_ASSERT(shared.IsInsideOf(a));
        RC_ASSERT(shared.IsInsideOf(b));
    }));
}

TEST(RangeR1Laws, IntersectionDoesNotDependOnTheOrderWhenLimitsAreApart) {
    EXPECT_TRUE(rc::check([] {
        const RangeR1 a = ExactRange();
        const RangeR1 b = ExactRange();
        RangeR1 ab(a);
        RangeR1 ba(b);
        ab.Intersect(b);
        ba.Intersect(a);
        RC_ASSERT(SameRange(ab, ba));
    }));
}

TEST(RangeR1Laws, PiecesAndTheRemovedPartMakeUpTheRange) {
    EXPECT_TRUE(rc::check([] {
        const RangeR1 whole = ExactRange();
        const RangeR1 removed = ExactRange();
        RC_PRE(!whole.IsSingleton() && !removed.IsSingleton());
        RangeR1 shared(whole);
        const double sharedLength = shared.Intersect(removed) ? shared.GetLength() : 0.0;
        RangeR1 piece(whole);
        RangeR1 other(removed);
        const int count = piece.Subtract(other);
        const double pieces = (count > 0 ? piece.GetLength() : 0.0) +  //
                              (count > 1 ? other.GetLength() : 0.0);
        RC_ASSERT(pieces + sharedLength == whole.GetLength());
        if (count > 0) RC_ASSERT(piece.IsEmptyIntersection(removed, true));
        if (count > 1) RC_ASSERT(other.IsEmptyIntersection(removed, true));
    }));
}

TEST(RangeR1Laws, ClampedNumberLiesInTheRange) {
    EXPECT_TRUE(rc::check([] {
        const double a = AnyNumber();
        const double b = AnyNumber();
        const double x = AnyNumber();
        RC_ASSERT(RangeR1::InNoToler(RangeR1(a, b).ToRange(x), a, b));
        RC_ASSERT(RangeR1::InNoToler(RangeR1::ToRange(a, b, x), a, b));
    }));
}

TEST(RangeR1Laws, MovesHaveTheirInverse) {
    EXPECT_TRUE(rc::check([] {
        const RangeR1 before = ExactRange();
        const double d = ExactNumber();
        RangeR1 range(before);
        range.Translate(d);
        range.Translate(-d);
        RC_ASSERT(SameRange(range, before));
        range.Expand(d);
        range.Expand(-d);
        RC_ASSERT(SameRange(range, before));
        range.Swap();
        range.Swap();
        RC_ASSERT(SameRange(range, before));
        range.Inflate(4.0, d);
        range.Inflate(0.25, d);
        RC_ASSERT(SameRange(range, before));
        range *= 2.0;
        range *= 0.5;
        RC_ASSERT(SameRange(range, before));
    }));
}

TEST(RangeR1Laws, LengthIsKeptWhereTheNameSaysSo) {
    EXPECT_TRUE(rc::check([] {
        RangeR1 range = ExactRange();
        const double length = range.GetLength();
        range.SetMaxKeepLength(ExactNumber());
        RC_ASSERT(range.GetLength() == length);
        range.SetMinKeepLength(ExactNumber());
        RC_ASSERT(range.GetLength() == length);
        range.SetCenter(ExactNumber());
        RC_ASSERT(range.GetLength() == length);
        range.Center(RangeR1(-1000.0, 1000.0));
        RC_ASSERT(range.GetLength() == length);
        RC_ASSERT(range.GetCenter() == 0.0);
    }));
}

TEST(RangeR1Laws, RatioAndPointAreInverse) {
    EXPECT_TRUE(rc::check([] {
        const RangeR1 range = ExactRange();
        RC_PRE(!range.IsSingleton());
        const double x = ExactNumber();
        RC_ASSERT(std::fabs(range.GetPoint(range.GetRatio(x)) - x) < 1e-9);
        double ratio = x;
        RC_ASSERT(range.ToUnitRange(ratio));
        RC_ASSERT(SameDouble(ratio, range.GetRatio(x)));
    }));
}

TEST(RangeR1Laws, EveryKnotIsFoundOnItsIndex) {
    EXPECT_TRUE(rc::check([] {
        const RangeR1 range = ExactRange();
        RC_PRE(!range.IsSingleton());
        const int n = *rc::gen::inRange(1, 200);
        const int k = *rc::gen::inRange(0, n + 1);
        bool onKnot = false;
        RC_ASSERT(range.GetSegment(range.GetPoint(k, n), n, &onKnot) == k);
        RC_ASSERT(onKnot);
    }));
}

TEST(RangeR1Laws, SegmentsFollowOneAnother) {
    EXPECT_TRUE(rc::check([] {
        const RangeR1 range = ExactRange();
        const int n = *rc::gen::inRange(1, 50);
        double end = range.m_min;
        for (int i = 0; i < n; ++i) {
            RangeR1 segment;
            range.GetSegment(i, n, segment);
            RC_ASSERT(SameDouble(segment.m_min, end));
            end = segment.m_max;
        }
        RC_ASSERT(SameDouble(end, range.m_max));
    }));
}

TEST(RangeR1Laws, DistanceIsNegativeJustInside) {
    EXPECT_TRUE(rc::check([] {
        const RangeR1 range = ExactRange();
        const double x = ExactNumber();
        double nearest = 0.0;
        const double distance = range.GetDist(x, &nearest);
        RC_ASSERT((distance <= 0.0) == RangeR1::InNoToler(x, range.m_min, range.m_max));
        RC_ASSERT(std::fabs(x - nearest) == std::max(0.0, distance));
        RC_ASSERT(std::fabs(distance) == range.GetNearestEnd(x));
    }));
}

TEST(RangeR1Laws, ReciprocalOfTheReciprocalIsTheRange) {
    EXPECT_TRUE(rc::check([] {
        RangeR1 range = ExactRange();
        RC_PRE(range.m_min > 0.0 || range.m_max < 0.0);
        const RangeR1 before(range);
        RC_ASSERT(range.Invert());
        RC_ASSERT(range.Invert());
        RC_ASSERT(range.IsSame(before, 1e-12 * before.GetMaxDist(0.0, nullptr)));
    }));
}

TEST(RangeR1Laws, AssignmentAgreesWithEqualityButAtExactlyTheTolerance) {
    EXPECT_TRUE(rc::check([] {
        RangeR1 a = AnyRange();
        const RangeR1 b = AnyRange();
        const bool tie = std::fabs(a.m_min - b.m_min) == zToler ||  //
                         std::fabs(a.m_max - b.m_max) == zToler;
        RC_PRE(!tie);
        const bool same = a == b && a.m_bExternal == b.m_bExternal;
        RC_ASSERT((a = b) == !same);
    }));
}

// A family of ranges that touch, overlap, hold and miss one another, and what every
// operation that asks about two of them gives for each pair.
struct RangeFamily : testing::Test {
    enum Relation { kApart, kTouch, kOverlap, kInside, kRound, kSame };

    const std::vector<RangeR1> family{{0.0, 1.0},   {1.0, 2.0}, {0.5, 1.5},
                                      {0.25, 0.75}, {3.0, 4.0}, {-1.0, 5.0}};

    // How the range of the row stands to that of the column.
    const Relation relations[6][6] = {
        {kSame, kTouch, kOverlap, kRound, kApart, kInside},
        {kTouch, kSame, kOverlap, kApart, kApart, kInside},
        {kOverlap, kOverlap, kSame, kOverlap, kApart, kInside},
        {kInside, kApart, kOverlap, kSame, kApart, kInside},
        {kApart, kApart, kApart, kApart, kSame, kInside},
        {kRound, kRound, kRound, kRound, kRound, kSame},
    };

    template <class Check>
    void ForEachPair(Check check) const {
        for (std::size_t i = 0; i < family.size(); ++i) {
            for (std::size_t j = 0; j < family.size(); ++j) {
                SCOPED_TRACE(testing::PrintToString(family[i]) + " and " +
                             testing::PrintToString(family[j]));
                check(family[i], family[j], relations[i][j]);
            }
        }
    }
};

TEST_F(RangeFamily, Containment) {
    ForEachPair([](const RangeR1& a, const RangeR1& b, Relation relation) {
        EXPECT_EQ(a >= b, relation == kRound || relation == kSame);
        EXPECT_EQ(a <= b, relation == kInside || relation == kSame);
        EXPECT_EQ(a.IsIn(b), a >= b);
        EXPECT_EQ(a.IsInsideOf(b), a <= b);
        EXPECT_EQ(a == b, relation == kSame);
        EXPECT_EQ(a != b, relation != kSame);
    });
}

TEST_F(RangeFamily, Intersection) {
    ForEachPair([](const RangeR1& a, const RangeR1& b, Relation relation) {
        RangeR1 shared(a);
        EXPECT_EQ(shared.Intersect(b), relation != kApart);
        EXPECT_EQ(shared.IsSingleton(), relation == kTouch);
        EXPECT_EQ(a.IsIntersection(b, false), relation != kApart);
        EXPECT_EQ(a.IsIntersection(b, true), relation != kApart && relation != kTouch);
        EXPECT_EQ(a.IsEmptyIntersection(b, false), relation == kApart);
        EXPECT_EQ(a.IsEmptyIntersection(b, true), relation == kApart || relation == kTouch);
    });
}

TEST_F(RangeFamily, Difference) {
    ForEachPair([](const RangeR1& a, const RangeR1& b, Relation relation) {
        RangeR1 piece(a);
        RangeR1 other(b);
        const int expected = relation == kInside || relation == kSame ? 0
                             : relation == kRound                     ? 2
                                                                      : 1;
        EXPECT_EQ(piece.Subtract(other), expected);
    });
}

TEST_F(RangeFamily, Order) {
    ForEachPair([](const RangeR1& a, const RangeR1& b, Relation relation) {
        const bool nested = relation == kInside || relation == kRound || relation == kSame;
        EXPECT_EQ(a.IsAfter(b), nested ? eUnknown : a.m_max > b.m_max ? eTrue : eFalse);
        const bool shareLength = nested || relation == kOverlap;
        EXPECT_EQ(a.IsAfterClosed(b), shareLength || a.m_max > b.m_max ? eTrue : eFalse);
    });
}

TEST_F(RangeFamily, Distance) {
    ForEachPair([](const RangeR1& a, const RangeR1& b, Relation relation) {
        const double distance = a.GetDist(b, false);
        EXPECT_EQ(distance > 0.0, relation == kApart) << InFull(distance);
        EXPECT_EQ(distance, b.GetDist(a, false)) << InFull(distance);
    });
}

}  // namespace
}  // namespace ZT
