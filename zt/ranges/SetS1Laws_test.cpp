// What holds for all sets of arcs: laws on random ones.

#include <rapidcheck.h>
#include <tests/Evenly.h>
#include <zt/ranges/SetS1.h>
#include <zt/ranges/SetS1_test.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>
#include <vector>

namespace {

using namespace testing_support;
using ZT::RangeS1;
using ZT::S1;
using ZT::SetS1;
using ZT::z2Pi;
using ZT::zPi;

// Steps of the grid on which the limits of random arcs lie: half a turn cut into 64, so that
// limits often coincide. Between two steps no limit is met.
constexpr int kSteps = 64;

double Place(double steps) {
    return S1::Factorize(steps * (zPi / kSteps));
}

// An arc of some length: mostly a short one, so that several leave something of the circle.
RangeS1 AnyGridArc() {
    const int start = Evenly(-kSteps, kSteps);
    const int length = Evenly(1, *rc::gen::element(10, 10, 10, 10, 10, 2 * kSteps));
    return RawArc(Place(start), Place(start + length));
}

std::vector<RangeS1> AnyGridArcs() {
    std::vector<RangeS1> arcs;
    for (int count = Evenly(0, 8); count > 0; --count) arcs.push_back(AnyGridArc());
    return arcs;
}

bool HoldAny(const std::vector<RangeS1>& arcs, double x) {
    return std::any_of(arcs.begin(), arcs.end(), [x](const RangeS1& arc) { return arc.In(x); });
}

// Whether the two hold the same places between the steps of the grid.
template <class Test>
bool HoldsAtTheSamePlacesAs(const SetS1& set, Test test) {
    const std::vector<RangeS1> arcs = Arcs(set);
    for (int step = -kSteps; step < kSteps; ++step) {
        const double x = Place(step + 0.5);
        if (HoldAny(arcs, x) != test(x)) return false;
    }
    return true;
}

void Subtract(SetS1& set, const std::vector<RangeS1>& arcs) {
    for (const RangeS1& arc : arcs) set.Subtract(arc);
}

// The circle without some arcs.
struct CircleWithout : OwningSet {
    explicit CircleWithout(const std::vector<RangeS1>& taken) {
        SetFull();
        ::Subtract(*this, taken);
    }
};

struct ComplementOf : OwningSet {
    explicit ComplementOf(const SetS1* set) {
        SetFull();
        Subtract(*set);
    }
};

TEST(SetS1Laws, CircleLessArcsHoldsWhatNoneOfThemHolds) {
    EXPECT_TRUE(rc::check([] {
        const std::vector<RangeS1> taken = AnyGridArcs();
        const CircleWithout left(taken);
        RC_ASSERT(HoldsAtTheSamePlacesAs(left, [&](double x) { return !HoldAny(taken, x); }));
    }));
}

// Limits anywhere, and places close to them but beyond the tolerance.
double AnyAngle() {
    return Place(Evenly(-6400000, 6400000) / 1e5);
}

bool IsAtALimit(double x, const RangeS1& arc) {
    return std::fabs(S1::DiffSigned(x, arc.m_min)) < 1.5e-9 ||
           std::fabs(S1::DiffSigned(x, arc.m_max)) < 1.5e-9;
}

TEST(SetS1Laws, CircleLessArcsHoldsWhatNoneOfThemHoldsCloseToTheirLimits) {
    EXPECT_TRUE(rc::check([] {
        std::vector<RangeS1> taken;
        for (int count = Evenly(1, 8); count > 0; --count) {
            const double start = AnyAngle();
            const double end = AnyAngle();
            RC_PRE(std::fabs(end - start) > 1e-6);
            taken.push_back(RawArc(start, end));
        }
        const CircleWithout left(taken);
        const std::vector<RangeS1> arcs = Arcs(left);
        for (const RangeS1& arc : taken) {
            for (const double x : {arc.m_min - 2e-9, arc.m_min + 2e-9, arc.m_max - 2e-9,
                                   arc.m_max + 2e-9, arc.GetPoint(0.5)}) {
                const double place = S1::Factorize(x);
                const bool atALimit =
                    std::any_of(taken.begin(), taken.end(),
                                [place](const RangeS1& other) { return IsAtALimit(place, other); });
                RC_ASSERT(atALimit || HoldAny(arcs, place) == !HoldAny(taken, place));
            }
        }
    }));
}

TEST(SetS1Laws, ComplementHoldsTheRest) {
    EXPECT_TRUE(rc::check([] {
        const CircleWithout set(AnyGridArcs());
        const ComplementOf complement(&set);
        const std::vector<RangeS1> arcs = Arcs(set);
        RC_ASSERT(HoldsAtTheSamePlacesAs(complement, [&](double x) { return !HoldAny(arcs, x); }));
    }));
}

// The arcs of a set from the one that starts first after -pi.
std::vector<RangeS1> FromTheSeam(const SetS1& set) {
    std::vector<RangeS1> arcs = Arcs(set);
    std::vector<std::size_t> order(arcs.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(),
              [&](auto a, auto b) { return arcs[a].m_min < arcs[b].m_min; });
    std::vector<RangeS1> sorted;
    for (const std::size_t i : order) sorted.push_back(arcs[i]);
    return sorted;
}

bool SameArc(const RangeS1& a, const RangeS1& b) {
    return a.m_eState == b.m_eState && S1::Equal(a.m_min, b.m_min, false) &&
           S1::Equal(a.m_max, b.m_max, false);
}

TEST(SetS1Laws, ComplementOfTheComplementIsTheSet) {
    EXPECT_TRUE(rc::check([] {
        const CircleWithout set(AnyGridArcs());
        const ComplementOf complement(&set);
        const ComplementOf back(&complement);
        const std::vector<RangeS1> before = FromTheSeam(set);
        const std::vector<RangeS1> after = FromTheSeam(back);
        RC_ASSERT(std::equal(before.begin(), before.end(), after.begin(), after.end(), SameArc));
    }));
}

TEST(SetS1Laws, MembersAreDisjointAndInOrder) {
    EXPECT_TRUE(rc::check([] {
        const CircleWithout set(AnyGridArcs());
        RC_PRE(set.GetCount() > 1);
        RC_ASSERT(set.IsValidEx(0));
        RC_ASSERT(set.IsSorted());
        const std::vector<RangeS1> arcs = Arcs(set);
        double turn = 0;
        for (std::size_t i = 0; i < arcs.size(); ++i) {
            const RangeS1& next = arcs[(i + 1) % arcs.size()];
            turn += arcs[i].GetDiff() + S1::diff(next.m_min, arcs[i].m_max, true);
            for (std::size_t j = 0; j < i; ++j) RC_ASSERT(arcs[i].IsEmptyIntersection(arcs[j]));
        }
        RC_ASSERT(std::fabs(turn - z2Pi) < 1e-9);  // Once round, so the members are in order.
    }));
}

TEST(SetS1Laws, WhatIsTakenAwayTwiceChangesNothing) {
    EXPECT_TRUE(rc::check([] {
        CircleWithout set(AnyGridArcs());
        const std::vector<RangeS1> taken = AnyGridArcs();
        Subtract(set, taken);
        const std::vector<RangeS1> before = Arcs(set);
        Subtract(set, taken);
        const std::vector<RangeS1> after = Arcs(set);
        RC_PRE(!set.IsFull());
        RC_ASSERT(std::equal(before.begin(), before.end(), after.begin(), after.end(), SameArc));
    }));
}

// An arc of any state and sense, with limits at which operations change their minds.
RangeS1 AnyArcAtAll() {
    const auto limit = [] {
        const double base = *rc::gen::element(-zPi, -2.0, -1.0, 0.0, 1.0, 2.0, zPi);
        return base + *rc::gen::element(0.0, 0.0, 0.0, 5e-11, -5e-11, 1.5e-10, -1.5e-10, 1e-9,
                                        -1e-9, 1.1e-9, -1.1e-9, 0.25);
    };
    RangeS1 arc = RawArc(
        limit(), limit(),
        *rc::gen::element(RangeS1::eStatePartial, RangeS1::eStatePartial, RangeS1::eStatePartial,
                          RangeS1::eStatePartial, RangeS1::eStateFull, RangeS1::eStateEmpty));
    arc.m_bExternal = Evenly(0, 5) == 0;
    return arc;
}

bool SameToTheBit(const RangeS1& a, const RangeS1& b) {
    return SameDouble(a.m_min, b.m_min) && SameDouble(a.m_max, b.m_max) &&
           a.m_bExternal == b.m_bExternal && a.m_eState == b.m_eState;
}

TEST(SetS1Laws, EachMemberIsCutAsAnArcIs) {
    EXPECT_TRUE(rc::check([] {
        OwningSet set;
        std::vector<RangeS1> expected;
        const RangeS1 taken = AnyArcAtAll();
        for (int count = Evenly(1, 6); count > 0; --count) {
            RangeS1 arc = AnyArcAtAll();
            set.AddTail(new RangeS1(arc));
            RangeS1 second(taken);
            const int pieces = arc.Subtract(second, nullptr);
            if (pieces > 0) expected.push_back(arc);
            if (pieces > 1) expected.push_back(second);
        }
        set.Subtract(taken);
        const std::vector<RangeS1> arcs = Arcs(set);
        RC_ASSERT(
            std::equal(arcs.begin(), arcs.end(), expected.begin(), expected.end(), SameToTheBit));
    }));
}

TEST(SetS1Laws, ArcsInsertedInAnyOrderAreInOrder) {
    EXPECT_TRUE(rc::check([] {
        // Every other step of some starts an arc of one step.
        const auto starts = *rc::gen::container<std::set<int>>(rc::gen::inRange(0, kSteps));
        RC_PRE(starts.size() > 1);
        std::vector<int> inserted(starts.begin(), starts.end());
        for (std::size_t i = inserted.size(); i > 1; --i) {
            std::swap(inserted[i - 1], inserted[Evenly<std::size_t>(0, i)]);
        }
        OwningSet set;
        for (const int start : inserted) {
            set.InsertSorted(new RangeS1(
                RawArc(Place(2 * start - kSteps + 0.25), Place(2 * start - kSteps + 1.25))));
        }
        std::vector<double> found;
        for (const RangeS1* arc : set) found.push_back(arc->m_min);
        std::rotate(found.begin(), std::min_element(found.begin(), found.end()), found.end());
        RC_ASSERT(found.size() == starts.size());
        RC_ASSERT(std::is_sorted(found.begin(), found.end()));
        RC_ASSERT(set.IsSorted());
    }));
}

}  // namespace
