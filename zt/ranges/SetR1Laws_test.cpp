// What holds for all sets of intervals: laws on random sets, in order and out of it.

#include <zt/ranges/SetR1.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <zt/ranges/SetFamily_test.h>
#include <zt/ranges/SetR1Spaced.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace ZT {
namespace {

using namespace testing_support;

// Multiples of 1/8, so that sums are exact.
double ExactNumber(int most = 400) {
    return *rc::gen::inRange(-most, most) / 8.0;
}

RangeR1 ExactRange() {
    const double lo = ExactNumber();
    return {lo, lo + *rc::gen::inRange(1, 40) / 8.0};
}

// A set in order whose members keep gaps.
SetR1 OrderedSet() {
    SetR1 set;
    const int count = *rc::gen::inRange(0, 30);
    double place = ExactNumber();
    for (int i = 0; i < count; ++i) {
        const double lo = place + *rc::gen::inRange(1, 16) / 8.0;
        place = lo + *rc::gen::inRange(1, 16) / 8.0;
        set.AddRange(lo, place);
    }
    return set;
}

// Numbers at which a search changes its mind.
double AnyNumber() {
    const double base = *rc::gen::element(
        0.0, 1.0, 2.0, 3.0, -1.0, -1e307, 1e307, std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN());
    return base + *rc::gen::element(0.0, 0.0, 5e-11, -5e-11, 1e-10, -1e-10, 2e-10, -2e-10, 0.5);
}

// A set of anything: mostly far to one side of 0, so that a search has something to pass over.
SetR1 AnySet() {
    SetR1 set;
    const int count = *rc::gen::inRange(0, 50);
    const double side = *rc::gen::element(-100.0, 100.0);
    const int oddity = *rc::gen::element(1, 10, 100);
    for (int i = 0; i < count; ++i) {
        if (*rc::gen::inRange(0, oddity) == 0) {
            RangeR1 member(AnyNumber(), AnyNumber());
            member.m_bExternal = *rc::gen::inRange(0, 4) == 0;
            set.Add(member);
        } else {
            set.AddRange(side + i, side - i);
        }
    }
    return set;
}

TEST(SetR1Laws, FindRangeIsTheFirstThatHoldsThePoint) {
    EXPECT_TRUE(rc::check([] {
        const SetR1 set = AnySet();
        for (int i = 0; i < 10; ++i) {
            const double x = AnyNumber();
            int expected = -1;
            for (int k = 0; k < set.GetSize() && expected < 0; ++k) {
                if (set[k].In(x, zToler)) expected = k;
            }
            RC_ASSERT(set.FindRange(x) == expected);
        }
    }));
}

TEST(SetR1Laws, FindPrevRangeIsTheFirstThatEndsAtOrAbove) {
    EXPECT_TRUE(rc::check([] {
        const SetR1 set = AnySet();
        for (int i = 0; i < 10; ++i) {
            const double x = AnyNumber();
            int expected = -1;
            for (int k = 0; k < set.GetSize() && expected < 0; ++k) {
                if (set[k].m_max >= x) expected = k;
            }
            bool in = false;
            RC_ASSERT(set.FindPrevRange(x, &in) == expected);
            if (expected >= 0) RC_ASSERT(in == (x >= set[expected].m_min));
        }
    }));
}

// Points on both sides of every limit decide what a search passes over.
TEST(SetR1Laws, SearchesAgreeWithTheStepsAroundEveryLimit) {
    SetR1 set;
    for (int i = 0; i < 40; ++i) set.AddRange(i, i + 0.5);
    for (int i = 0; i < 40; ++i) {
        for (const double shift : {-2e-10, -zToler, -5e-11, 0.0, 5e-11, zToler, 2e-10}) {
            for (const double limit : {double(i), i + 0.5}) {
                const double x = limit + shift;
                ASSERT_EQ(set.FindRange(x), set[i].In(x, zToler) ? i : -1) << InFull(x);
                const int next = x > set[i].m_max ? i + 1 : i;
                ASSERT_EQ(set.FindPrevRange(x, nullptr), next < 40 ? next : -1) << InFull(x);
            }
        }
    }
}

// The union, one step after the other.
void UniteStepByStep(SetR1& set, const RangeR1& r) {
    const auto firstEndingFrom = [&](double x) {
        INT_PTR i = 0;
        while (i < set.GetSize() && !(set[i].m_max >= x)) ++i;
        return i;
    };
    const INT_PTR n = set.GetSize();
    const INT_PTR i = firstEndingFrom(r.m_min);
    if (n == 0 || i == n) {
        set.Add(r);
        return;
    }
    const bool loIn = r.m_min >= set[i].m_min;
    const INT_PTR j = firstEndingFrom(r.m_max);
    if (j == n) {
        set[i].Unite(r);
        while (set.GetSize() > i + 1) set.RemoveAt(i + 1);
        return;
    }
    const bool hiIn = r.m_max >= set[j].m_min;
    if (j == i && !loIn && hiIn) set[i].m_min = r.m_min;
    if (j == i && !loIn && !hiIn) set.InsertAt(i, RangeR1(r));
    if (j > i) {
        set[i].m_max = hiIn ? set[j].m_max : r.m_max;
        for (INT_PTR k = j; k > i; --k) set.RemoveAt(k);
    }
}

TEST(SetR1Laws, UniteTakesItsStepsToTheBit) {
    EXPECT_TRUE(rc::check([] {
        SetR1 set = AnySet();
        SetR1 expected(set);
        const RangeR1 r(AnyNumber(), AnyNumber());
        set.Unite(r);
        UniteStepByStep(expected, r);
        RC_ASSERT(testing::Matches(IsSet(expected))(set));
    }));
}

TEST(SetR1Laws, UniteKeepsTheOrder) {
    EXPECT_TRUE(rc::check([] {
        SetR1 set = OrderedSet();
        for (int i = 0; i < 10; ++i) {
            set.Unite(ExactRange());
            RC_ASSERT(set.IsValidEx(0.0));
        }
    }));
}

TEST(SetR1Laws, UniteHoldsTheIntervalButForWhatLiesBelowTheFirstMember) {
    EXPECT_TRUE(rc::check([] {
        SetR1 set = OrderedSet();
        const RangeR1 r = ExactRange();
        const int first = set.FindPrevRange(r.m_min, nullptr);
        const double from = first < 0 ? r.m_min : std::max(r.m_min, set[first].m_min);
        set.Unite(r);
        if (from < r.m_max) {
            const int holder = set.FindRange(r.m_max);
            RC_ASSERT(holder >= 0);
            RC_ASSERT(set[holder] >= RangeR1(std::max(from, r.m_min), r.m_max));
        }
    }));
}

TEST(SetR1Laws, ASetAndItsComplementCoverTheBoundsAndShareOnlyEnds) {
    EXPECT_TRUE(rc::check([] {
        SetR1 set = OrderedSet();
        const RangeR1 within = ExactRange();
        set.Intersect(within);
        set.RemoveSingletons();
        SetR1 gaps;
        set.GetComplimentarySet(within, gaps);
        double length = 0.0;
        for (const RangeR1& member : set) length += member.GetLength();
        for (const RangeR1& gap : gaps) {
            length += gap.GetLength();
            for (const RangeR1& member : set) RC_ASSERT(member.IsEmptyIntersection(gap, true));
            RC_ASSERT(gap.IsInsideOf(within));
        }
        RC_ASSERT(length == within.GetLength());
        RC_ASSERT(gaps.IsValidEx(0.0));
    }));
}

TEST(SetR1Laws, ComplementOfTheComplementIsTheSet) {
    EXPECT_TRUE(rc::check([] {
        const SetR1 set = OrderedSet();
        RC_PRE(!set.IsEmpty());
        RangeR1 within;
        set.GetBounds(within);
        within.Expand(1.0);
        SetR1 gaps;
        set.GetComplimentarySet(within, gaps);
        SetR1 back;
        gaps.GetComplimentarySet(within, back);
        RC_ASSERT(testing::Matches(IsSet(set))(back));
    }));
}

TEST(SetR1Laws, IntersectionLiesInBothAndLeavesNothingOut) {
    EXPECT_TRUE(rc::check([] {
        const SetR1 before = OrderedSet();
        const RangeR1 r = ExactRange();
        SetR1 set(before);
        const bool any = set.Intersect(r);
        RC_ASSERT(any == !set.IsEmpty());
        for (int i = 0; i < 20; ++i) {
            const double x = ExactNumber(1000) + 0.0625;  // never at a limit
            const bool inBoth = r.In(x, zToler) && before.FindRange(x) >= 0;
            RC_ASSERT((set.FindRange(x) >= 0) == inBoth);
        }
    }));
}

TEST(SetR1Laws, FirstPointIsInTheSetAndNotBelow) {
    EXPECT_TRUE(rc::check([] {
        const SetR1 set = OrderedSet();
        const double x = ExactNumber(1000);
        const double point = set.GetFirstPoint(x);
        RC_ASSERT(point >= x);
        if (point == zInfinity) {
            RC_ASSERT(set.IsEmpty() || set.GetLastPoint() < x);
        } else {
            RC_ASSERT(set.FindRange(point) >= 0);
            RC_ASSERT(point == x || set.FindRange((x + point) / 2) < 0);
        }
    }));
}

TEST(SetR1Laws, MakeValidLeavesNoPointAndNothingThatTouches) {
    EXPECT_TRUE(rc::check([] {
        SetR1 set;
        double place = 0.0;
        const int count = *rc::gen::inRange(0, 30);
        for (int i = 0; i < count; ++i) {
            const double lo = place + *rc::gen::element(0.0, 0.0, 1.0);
            place = lo + *rc::gen::element(0.0, 1.0, 2.0);
            set.AddRange(lo, place);
        }
        const SetR1 before(set);
        set.MakeValid();
        RC_ASSERT(set.IsEmpty() || set.IsValidEx(1.0));
        double length = 0.0;
        for (const RangeR1& member : before) length += member.GetLength();
        for (const RangeR1& member : set) {
            RC_ASSERT(!member.IsSingleton());
            length -= member.GetLength();
        }
        RC_ASSERT(length == 0.0);
    }));
}

// Items in order by start and by end, each of which meets the next.
SetR1Spaced AnyRow() {
    SetR1Spaced items;
    const int count = *rc::gen::inRange(0, 12);
    double lo = ExactNumber();
    double hi = lo + 1.0;
    for (int i = 0; i < count; ++i) {
        items.AddRange(lo, hi);
        lo += *rc::gen::inRange(0, static_cast<int>((hi - lo) * 8.0) + 1) / 8.0;
        hi += *rc::gen::inRange(0, 16) / 8.0;
    }
    return items;
}

TEST(SetR1SpacedLaws, ArrangeLeavesNoOverlapAndKeepsLengthsAndTheCentralItem) {
    EXPECT_TRUE(rc::check([] {
        const SetR1Spaced before = AnyRow();
        SetR1Spaced items(before);
        items.Arrange();
        RC_ASSERT(items.IsValidEx(0.0));
        const int c = items.GetCenter();
        for (int i = 0; i < items.GetSize(); ++i) {
            RC_ASSERT(items[i].GetLength() == before[i].GetLength());
            if (i == c) RC_ASSERT(SameRange(items[i], before[i]));
        }
        SetR1Spaced again(items);
        again.Arrange();
        RC_ASSERT(testing::Matches(IsSet(items))(again));
    }));
}

TEST(SetR1SpacedLaws, ArrangeKeepsTheSpacing) {
    EXPECT_TRUE(rc::check([] {
        const SetR1Spaced before = AnyRow();
        SetR1Spaced items(before);
        const double spacing = *rc::gen::inRange(1, 30) / 8.0;
        items.Arrange(spacing);
        RC_ASSERT(items.IsValidEx(spacing));
        for (int i = 0; i < items.GetSize(); ++i) {
            RC_ASSERT(items[i].GetLength() == before[i].GetLength());
        }
    }));
}

}  // namespace
}  // namespace ZT
