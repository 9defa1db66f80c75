// What holds for all arcs: laws on random ones.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <zt/ranges/RangeS1.h>
#include <zt/ranges/RangeS1Family_test.h>

#include <cmath>
#include <vector>

namespace ZT {
namespace {

using namespace testing_support;

// A canonical angle on a grid of half a turn cut into 256, so that two that differ are far
// beyond the tolerance from one another.
double GridPoint() {
    return S1::Factorize(*rc::gen::inRange(-255, 257) * (zPi / 256));
}

// An angle between two points of the grid.
double BetweenPoints() {
    return S1::Factorize((*rc::gen::inRange(-256, 256) + 0.5) * (zPi / 256));
}

// A partial arc of some length, in the sense of its limits.
RangeS1 AnyArc() {
    const double a = GridPoint();
    const double b = GridPoint();
    RC_PRE(!S1::Equal(a, b, false));
    return RawArc(a, b);
}

// Any arc at all, with angles at which operations change their minds.
double AnyAngle() {
    const double base = *rc::gen::element(-zPi, -2.0, -1.0, 0.0, 1.0, 2.0, zPi);
    return base + *rc::gen::element(0.0, 0.0, 0.0, 5e-11, -5e-11, 1e-10, -1e-10, 1.5e-10, -1.5e-10,
                                    9e-10, -9e-10, 1.1e-9, -1.1e-9, 0.25);
}

RangeS1 AnyArcAtAll() {
    RangeS1 arc = RawArc(AnyAngle(), AnyAngle(),
                         *rc::gen::element(RangeS1::eStateFull, RangeS1::eStateEmpty,
                                           RangeS1::eStatePartial, RangeS1::eStatePartial));
    arc.m_bExternal = *rc::gen::arbitrary<bool>();
    return arc;
}

bool SameArc(const RangeS1& a, const RangeS1& b) {
    return SameDouble(a.m_min, b.m_min) && SameDouble(a.m_max, b.m_max) &&
           a.m_bExternal == b.m_bExternal && a.m_eState == b.m_eState;
}

// Whether an arc holds `x`; what is empty holds nothing.
bool Holds(const RangeS1& arc, double x) {
    return !arc.IsEmpty() && arc.In(x);
}

TEST(RangeS1Laws, ArcAndComplementCoverTheCircle) {
    EXPECT_TRUE(rc::check([] {
        const RangeS1 arc = AnyArc();
        RangeS1 rest;
        RC_ASSERT(arc.GetComplimentary(rest));
        const double x = *rc::gen::arbitrary<bool>() ? GridPoint() : BetweenPoints();
        RC_ASSERT(arc.In(x) || rest.In(x));
        // They share their ends only.
        const bool end = S1::Equal(x, arc.m_min, false) || S1::Equal(x, arc.m_max, false);
        RC_ASSERT((arc.In(x) && rest.In(x)) == end);
        RC_ASSERT(!(arc.InOpen(x) && rest.In(x)));
    }));
}

TEST(RangeS1Laws, AnglesOfArcAndComplementMakeAFullTurn) {
    EXPECT_TRUE(rc::check([] {
        const RangeS1 arc = AnyArc();
        RangeS1 rest;
        arc.GetComplimentary(rest);
        RC_ASSERT(std::fabs(arc.GetDiff() + rest.GetDiff() - z2Pi) < 1e-13);
        RC_ASSERT(arc.IsComplimentary(rest));
        RC_ASSERT(rest.IsComplimentary(arc));
    }));
}

TEST(RangeS1Laws, ComplementOfTheComplementIsTheArc) {
    EXPECT_TRUE(rc::check([] {
        const RangeS1 arc = AnyArc();
        RangeS1 rest;
        RangeS1 back;
        arc.GetComplimentary(rest);
        rest.GetComplimentary(back);
        RC_ASSERT(SameArc(arc, back));
        back.SetComplimentary();
        back.SetComplimentary();
        RC_ASSERT(back == arc);
        RC_ASSERT(back.m_eState == RangeS1::eStatePartial);
    }));
}

TEST(RangeS1Laws, ComplementIsTheOtherSense) {
    EXPECT_TRUE(rc::check([] {
        const RangeS1 arc = AnyArc();
        RangeS1 rest;
        arc.GetComplimentary(rest);
        const double x = GridPoint();
        RC_ASSERT(rest.In(x) == ExternalArc(arc.m_min, arc.m_max).In(x));
    }));
}

TEST(RangeS1Laws, PointOutsideIsOutside) {
    EXPECT_TRUE(rc::check([] {
        const RangeS1 arc = AnyArc();
        double x = 0.0;
        RC_ASSERT(arc.GetAnyOutside(x));
        RC_ASSERT(!arc.In(x));
    }));
}

TEST(RangeS1Laws, PointOfTheArcIsOnTheArc) {
    EXPECT_TRUE(rc::check([] {
        const RangeS1 arc = AnyArc();
        // Of a singular arc only the ends and the middle are promised.
        const double ratio = *rc::gen::inRange(0, 101) / 100.0;
        const double x = arc.GetPoint(arc.IsSingular() ? std::nearbyint(2 * ratio) / 2 : ratio);
        RC_ASSERT(arc.In(x));
        RC_ASSERT(arc.ToRangeS1(x) == S1::Factorize(x));
    }));
}

TEST(RangeS1Laws, AngleBroughtToTheArcIsOnIt) {
    EXPECT_TRUE(rc::check([] {
        const RangeS1 arc = AnyArc();
        RC_ASSERT(arc.In(arc.ToRangeS1(BetweenPoints() * 3)));
    }));
}

TEST(RangeS1Laws, IntersectionInOnePieceIsWhatBothHold) {
    EXPECT_TRUE(rc::check([] {
        const RangeS1 a = AnyArc();
        const RangeS1 b = AnyArc();
        RangeS1 shared(a);
        RangeS1 other(b);
        const double x = *rc::gen::arbitrary<bool>() ? GridPoint() : BetweenPoints();
        if (shared.Intersect(other) == 2) {
            RC_ASSERT(!Holds(shared, x) || (a.In(x) && b.In(x)));
        } else {
            RC_ASSERT(Holds(shared, x) == (a.In(x) && b.In(x)));
        }
    }));
}

TEST(RangeS1Laws, IntersectionIsEmptyInEitherOrder) {
    EXPECT_TRUE(rc::check([] {
        const RangeS1 a = AnyArc();
        const RangeS1 b = AnyArc();
        RC_ASSERT(a.IsEmptyIntersection(b) == b.IsEmptyIntersection(a));
        RC_ASSERT(a.IsEmptyIntersection(b) ==
                  (a.GetRangeLocation(b, zToler) == RangeR1::eRangeLocnApart));
    }));
}

TEST(RangeS1Laws, PiecesAndTheRemovedPartMakeUpTheArc) {
    EXPECT_TRUE(rc::check([] {
        const RangeS1 whole = AnyArc();
        const RangeS1 removed = AnyArc();
        RangeS1 piece(whole);
        RangeS1 other(removed);
        const int count = piece.Subtract(other, nullptr);
        // Between the points of the grid no end is met.
        const double x = BetweenPoints();
        const bool left = (count > 0 && piece.In(x)) || (count > 1 && other.In(x));
        RC_ASSERT(left == (whole.In(x) && !removed.In(x)));
        RC_ASSERT(piece.IsEmpty() == (count == 0));
    }));
}

TEST(RangeS1Laws, ContainmentMeansToBeInside) {
    EXPECT_TRUE(rc::check([] {
        const RangeS1 a = AnyArc();
        const RangeS1 b = AnyArc();
        RC_ASSERT((a >= b) == b.IsInsideOf(a));
        const double x = BetweenPoints();
        RC_ASSERT(!(a >= b) || !b.In(x) || a.In(x));
    }));
}

TEST(RangeS1Laws, SetThenUpdateChangesNothing) {
    EXPECT_TRUE(rc::check([] {
        RangeS1 arc;
        arc.Set(AnyAngle() * 7, AnyAngle() * 5);
        RC_PRE(!arc.IsFull());
        RangeS1 again(arc);
        again.Update();
        RC_ASSERT(SameArc(again, arc));
    }));
}

TEST(RangeS1Laws, InFollowsItsDefinition) {
    EXPECT_TRUE(rc::check([] {
        const RangeS1 arc = AnyArcAtAll();
        const double x = AnyAngle();
        RC_ASSERT(arc.In(x) ==
                  (arc.IsFull() || S1::InRange(x, arc.m_min, arc.m_max, !arc.m_bExternal)));
    }));
}

// Containment and intersection, one step after the other, for any limits.

bool On(const RangeS1& arc, double x) {
    return S1::InRange(x, arc.m_min, arc.m_max, !arc.m_bExternal);
}

bool ContainsStepByStep(const RangeS1& arc, const RangeS1& r) {
    if (arc.m_eState == RangeS1::eStateFull) return true;
    if (arc.m_eState == RangeS1::eStateEmpty) return r.m_eState == RangeS1::eStateEmpty;
    if (!On(arc, r.m_min)) return false;
    if (!On(arc, r.m_max)) return false;
    const double gap = S1::GetSegmentPoint(arc.m_max, arc.m_min, 0.5, !arc.m_bExternal);
    if (r.m_eState == RangeS1::eStateFull) return false;
    return !On(r, gap);
}

double OutsideStepByStep(const RangeS1& arc) {
    if (arc.m_eState == RangeS1::eStateFull) return 0.0;
    if (arc.m_eState == RangeS1::eStateEmpty) {
        return S1::Factorize((1 - 0.5) * zPi + 0.5 * (zPi + z2Pi));
    }
    if (S1::InRange(zPi, arc.m_max, arc.m_min, true) && std::fabs(arc.m_min - zPi) > zToler) {
        return S1::Factorize((1 - 0.5) * arc.m_min + 0.5 * (arc.m_max + z2Pi));
    }
    return arc.m_max * 0.5 + arc.m_min * 0.5;
}

bool InsideStepByStep(const RangeS1& arc, const RangeS1& r) {
    if (arc.m_eState == RangeS1::eStateEmpty) return true;
    if (r.m_eState != RangeS1::eStateFull && !(On(r, arc.m_min) && On(r, arc.m_max))) return false;
    const double opposite = OutsideStepByStep(r);
    return arc.m_eState != RangeS1::eStateFull && !On(arc, opposite);
}

int IntersectStepByStep(RangeS1& arc, RangeS1& r) {
    if (arc.m_eState == RangeS1::eStateEmpty) return 0;
    if (r.m_eState == RangeS1::eStateEmpty) {
        arc.m_eState = RangeS1::eStateEmpty;
        return 0;
    }
    if (r.m_eState == RangeS1::eStateFull) return 1;
    if (arc.m_eState == RangeS1::eStateFull) {
        arc.Copy(r);
        return 1;
    }
    const bool a = On(arc, r.m_min);
    const bool b = On(arc, r.m_max);
    if (!a && !b) {
        if (InsideStepByStep(arc, r)) return 1;
        arc.m_eState = RangeS1::eStateEmpty;
        return 0;
    }
    if (!a) {
        arc.m_max = r.m_max;
        return 1;
    }
    if (!b) {
        arc.m_min = r.m_min;
        return 1;
    }
    if (!On(r, OutsideStepByStep(arc))) {
        arc.m_min = r.m_min;
        arc.m_max = r.m_max;
        return 1;
    }
    arc.Set(arc.m_min, r.m_max);
    r.Set(r.m_min, arc.m_max);
    return 2;
}

bool TakesItsSteps(const RangeS1& a, const RangeS1& b) {
    if ((a >= b) != ContainsStepByStep(a, b)) return false;
    if (a.IsInsideOf(b) != InsideStepByStep(a, b)) return false;
    RangeS1 expected(a);
    RangeS1 expectedOther(b);
    RangeS1 result(a);
    RangeS1 other(b);
    const int count = IntersectStepByStep(expected, expectedOther);
    return result.Intersect(other) == count && SameArc(result, expected) &&
           SameArc(other, expectedOther);
}

TEST(RangeS1Laws, ContainmentAndIntersectionTakeTheirStepsToTheBitAtEveryTie) {
    std::vector<double> limits;
    for (const double at : {-zPi, -1.0, 0.0, 1.0, zPi}) {
        for (const double by : {0.0, 5e-11, 1e-10, 1.5e-10, 9e-10}) {
            limits.push_back(at + by);
            limits.push_back(at - by);
        }
    }
    for (const double lo : limits) {
        for (const double hi : limits) {
            for (const double otherLo : limits) {
                for (const double otherHi : {-1.0, -5e-11, 1.0 + 1e-10, zPi, 1.5e-10 - zPi}) {
                    const RangeS1 a = RawArc(lo, hi);
                    const RangeS1 b = RawArc(otherLo, otherHi);
                    ASSERT_TRUE(TakesItsSteps(a, b))
                        << testing::PrintToString(a) << " and " << testing::PrintToString(b);
                    ASSERT_TRUE(TakesItsSteps(b, a))
                        << testing::PrintToString(b) << " and " << testing::PrintToString(a);
                }
            }
        }
    }
}

TEST(RangeS1Laws, ContainmentAndIntersectionTakeTheirStepsToTheBit) {
    EXPECT_TRUE(rc::check([] { RC_ASSERT(TakesItsSteps(AnyArcAtAll(), AnyArcAtAll())); }));
    EXPECT_TRUE(rc::check([] { RC_ASSERT(TakesItsSteps(AnyArc(), AnyArc())); }));
}

TEST(RangeS1Laws, ContainmentAndIntersectionTakeTheirStepsToTheBitOnAnyNumbers) {
    EXPECT_TRUE(rc::check([] {
        const auto limits =
            *rc::gen::container<std::vector<double>>(4, rc::gen::arbitrary<double>());
        RC_ASSERT(TakesItsSteps(RawArc(limits[0], limits[1]), RawArc(limits[2], limits[3])));
    }));
}

}  // namespace
}  // namespace ZT
