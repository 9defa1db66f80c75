// What holds for all ranges with open and closed ends: the set operations take their steps on
// random ranges, and give the sets that they should where ends are far apart.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/RangeMatchers.h>
#include <zt/ranges/RangeEx.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace ZT {

void showValue(const RangeEx& r, std::ostream& os) {
    os << (r.m_bExternal ? "all but " : "") << (r.m_bClosed[0] ? '[' : '(')
       << testing_support::InFull(r.m_min) << ", " << testing_support::InFull(r.m_max)
       << (r.m_bClosed[1] ? ']' : ')');
}

namespace {

using testing_support::SameDouble;

// Numbers at which operations change their minds.
double AnyNumber() {
    const double base = *rc::gen::element(-1e307, -2.0, 0.0, 1.0, 1.0, 3.0, 3.0, 1e307);
    const double shift = *rc::gen::element(0.0, 0.0, 0.0, 5e-11, -5e-11, 8e-11, 1e-10, 2e-10);
    return base + shift;
}

RangeEx AnyRange() {
    RangeEx range(AnyNumber(), AnyNumber(), *rc::gen::arbitrary<bool>(),
                  *rc::gen::arbitrary<bool>());
    if (*rc::gen::inRange(0, 4) != 0 && range.m_min > range.m_max) range.Swap();
    range.m_bExternal = *rc::gen::inRange(0, 6) == 0;
    return range;
}

// A range in order with limits that are whole numbers.
RangeEx WholeRange() {
    const int lo = *rc::gen::inRange(-5, 5);
    return RangeEx(lo, lo + *rc::gen::inRange(0, 8), *rc::gen::arbitrary<bool>(),
                   *rc::gen::arbitrary<bool>());
}

bool Same(const RangeEx& a, const RangeEx& b) {
    return SameDouble(a.m_min, b.m_min) && SameDouble(a.m_max, b.m_max) &&
           a.m_bExternal == b.m_bExternal && a.m_bClosed[0] == b.m_bClosed[0] &&
           a.m_bClosed[1] == b.m_bClosed[1];
}

double Limit(const RangeR1& r, int k) {
    return k == 0 ? r.m_min : r.m_max;
}

bool Near(double a, double b) {
    return zToler > std::fabs(a - b);
}

bool InStepByStep(const RangeEx& range, double x) {
    if (!range.RangeR1::In(x, zToler)) return false;
    for (int k = 0; k < 2; ++k) {
        if (!range.m_bClosed[k] && Near(x, Limit(range, k))) return false;
    }
    return true;
}

bool IsOpenPoint(const RangeEx& range) {
    return range.RangeR1::IsSingleton() && !range.m_bClosed[0] && !range.m_bClosed[1];
}

void IncludeStepByStep(RangeEx& range, double x) {
    if (InStepByStep(range, x)) return;
    const bool e = range.RangeR1::IsEmpty();
    const double m = range.m_min;
    range.RangeR1::Include(x);
    if (e) {
        range.m_bClosed[0] = true;
        range.m_bClosed[1] = true;
        return;
    }
    if (x < m + zToler) {
        range.m_bClosed[0] = true;
    } else {
        range.m_bClosed[1] = true;
    }
}

bool IsEmptyIntersectionStepByStep(const RangeEx& range, const RangeEx& r) {
    if (range.RangeR1::IsEmptyIntersection(r, false)) return true;
    if (Near(range.m_max, r.m_min) && (!range.m_bClosed[1] || !r.m_bClosed[0])) return true;
    if (!Near(range.m_min, r.m_max)) return false;
    if (range.m_bClosed[0] && r.m_bClosed[1]) return false;
    return true;
}

bool IntersectStepByStep(RangeEx& range, const RangeEx& r) {
    RangeR1 i(range);
    i.Intersect(r);
    if (i.IsEmpty()) return false;
    for (int k = 0; k < 2; ++k) {
        const double e = Limit(i, k);
        range.m_bClosed[k] = InStepByStep(range, e) && InStepByStep(r, e);
    }
    range.RangeR1::operator=(i);
    if (range.RangeR1::IsEmpty()) return false;
    return !IsOpenPoint(range);
}

bool UniteStepByStep(RangeEx& range, const RangeEx& r) {
    bool c = false;
    for (int k = 0; k < 2; ++k) {
        const double e = Limit(range, k);
        if (!r.RangeR1::In(e, zToler)) continue;
        if (!r.m_bClosed[0] && Near(e, r.m_min)) continue;
        if (!r.m_bClosed[1] && Near(e, r.m_max)) continue;
        const bool old = range.m_bClosed[k];
        if (r.RangeR1::InOpen(e, zToler)) {
            range.m_bClosed[k] = r.m_bClosed[k];
        } else {
            range.m_bClosed[k] = true;
        }
        c = range.m_bClosed[k] != old;
    }
    if (range.RangeR1::Unite(r)) return true;
    return c;
}

int SubtractStepByStep(RangeEx& range, RangeEx& r, bool& startChanged) {
    startChanged = false;
    const bool inside = range.RangeR1::IsEmpty() || IsOpenPoint(range) ||
                        (r.RangeR1::In(range.m_min, zToler) && r.RangeR1::In(range.m_max, zToler));
    if (inside) {
        range.RangeR1::SetEmpty();
        return 0;
    }
    RangeEx i(range);
    if (!IntersectStepByStep(i, r)) return 1;
    RangeEx c(range);
    const bool a = i.m_min > range.m_min;
    if (a) {
        c.m_max = i.m_min;
        c.m_bClosed[1] = !r.m_bClosed[0];
    } else {
        startChanged = true;
    }
    const auto takeC = [&] {
        range.RangeR1::operator=(c);
        range.m_bClosed[0] = c.m_bClosed[0];
        range.m_bClosed[1] = c.m_bClosed[1];
    };
    if (range.m_max > i.m_max) {
        if (!a) {
            range.Set(i.m_max, range.m_max);
            range.m_bClosed[1] = !r.m_bClosed[0];
            return 1;
        }
        r.Set(i.m_max, range.m_max);
        r.m_bClosed[0] = !r.m_bClosed[1];
        r.m_bClosed[1] = range.m_bClosed[1];
        takeC();
        return 2;
    }
    if (a) {
        takeC();
        return 1;
    }
    range.m_bClosed[1] = InStepByStep(r, range.m_max);
    return 0;
}

TEST(RangeExLaws, InTakesItsSteps) {
    EXPECT_TRUE(rc::check("In", [] {
        const RangeEx range = AnyRange();
        const double x = AnyNumber();
        RC_ASSERT(range.In(x, zToler) == InStepByStep(range, x));
    }));
}

TEST(RangeExLaws, IncludeTakesItsSteps) {
    EXPECT_TRUE(rc::check("Include", [] {
        const RangeEx range = AnyRange();
        const double x = AnyNumber();
        RangeEx expected(range);
        RangeEx result(range);
        IncludeStepByStep(expected, x);
        result.Include(x);
        RC_ASSERT(Same(result, expected));
    }));
}

TEST(RangeExLaws, SetOperationsTakeTheirSteps) {
    EXPECT_TRUE(rc::check("Intersect, Unite and the test", [] {
        const RangeEx range = AnyRange();
        const RangeEx other = AnyRange();
        RC_ASSERT(range.IsEmptyIntersection(other) == IsEmptyIntersectionStepByStep(range, other));

        RangeEx expected(range);
        RangeEx result(range);
        const bool any = IntersectStepByStep(expected, other);
        RC_ASSERT(result.Intersect(other) == any);
        RC_ASSERT(Same(result, expected));

        RangeEx united(range);
        RangeEx unitedExpected(range);
        const bool changed = UniteStepByStep(unitedExpected, other);
        RC_ASSERT(united.Unite(other) == changed);
        RC_ASSERT(Same(united, unitedExpected));
    }));
}

TEST(RangeExLaws, SubtractTakesItsSteps) {
    EXPECT_TRUE(rc::check("Subtract", [] {
        const RangeEx range = AnyRange();
        const RangeEx other = AnyRange();
        RangeEx expected(range);
        RangeEx expectedOther(other);
        RangeEx result(range);
        RangeEx resultOther(other);
        bool expectedStart = false;
        bool start = true;
        const int pieces = SubtractStepByStep(expected, expectedOther, expectedStart);
        RC_ASSERT(result.Subtract(resultOther, &start) == pieces);
        RC_ASSERT(start == expectedStart);
        RC_ASSERT(Same(result, expected));
        RC_ASSERT(Same(resultOther, expectedOther));
    }));
}

TEST(RangeExLaws, IntersectionHoldsWhatBothHold) {
    EXPECT_TRUE(rc::check("both", [] {
        const RangeEx a = WholeRange();
        const RangeEx b = WholeRange();
        RangeEx shared(a);
        const bool any = shared.Intersect(b);
        for (double x = -7.0; x <= 15.0; x += 0.5) {
            const bool inBoth = a.In(x, zToler) && b.In(x, zToler);
            RC_ASSERT((any && shared.In(x, zToler)) == inBoth);
        }
    }));
}

TEST(RangeExLaws, UnionHoldsWhatEitherHolds) {
    EXPECT_TRUE(rc::check("either", [] {
        const RangeEx a = WholeRange();
        const RangeEx b = WholeRange();
        RC_PRE(!a.IsEmptyIntersection(b));
        RC_PRE(!a.IsEmpty());
        RC_PRE(!b.IsEmpty());
        RangeEx united(a);
        united.Unite(b);
        for (double x = -6.5; x <= 15.0; x += 1.0) {
            RC_ASSERT(united.In(x, zToler) == (a.In(x, zToler) || b.In(x, zToler)));
        }
    }));
}

TEST(RangeExLaws, TwoPiecesHoldWhatIsNotTakenAway) {
    EXPECT_TRUE(rc::check("two pieces", [] {
        const RangeEx b = WholeRange();
        // A point that is half open is no set, and an open one takes nothing away.
        RC_PRE((!b.RangeR1::IsSingleton() || b.IsSingleton()));
        const RangeEx a(b.m_min - *rc::gen::inRange(1, 3), b.m_max + *rc::gen::inRange(1, 3),
                        *rc::gen::arbitrary<bool>(), *rc::gen::arbitrary<bool>());
        RangeEx below(a);
        RangeEx above(b);
        RC_ASSERT(below.Subtract(above, nullptr) == 2);
        for (double x = -7.0; x <= 15.0; x += 0.5) {
            const bool rest = a.In(x, zToler) && !b.In(x, zToler);
            RC_ASSERT((below.In(x, zToler) || above.In(x, zToler)) == rest);
        }
    }));
}

}  // namespace
}  // namespace ZT
