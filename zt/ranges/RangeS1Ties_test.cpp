// Arcs where a comparison is decided by the tolerance or by the seam, and the types of what
// they answer.

#include <zt/ranges/RangeS1.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zt/ranges/RangeS1Family_test.h>

#include <cmath>
#include <ostream>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZT {
namespace {

using namespace testing_support;

constexpr double kWithin = 5e-11;
constexpr double kBeyond = 2e-10;

template <class Expected, class Result>
constexpr bool kSameType = std::is_same_v<Expected, Result>;

TEST(RangeS1Ties, CountsAreBytesAndPlacesAreEnumerations) {
    using Arc = RangeS1&;
    EXPECT_TRUE(
        (kSameType<unsigned char, decltype(std::declval<Arc>().Intersect(std::declval<Arc>()))>));
    EXPECT_TRUE((kSameType<unsigned char,
                           decltype(std::declval<Arc>().Subtract(std::declval<Arc>(), nullptr))>));
    EXPECT_TRUE((kSameType<bool, decltype(std::declval<Arc>() = std::declval<Arc>())>));
    EXPECT_TRUE(
        (kSameType<bool, decltype(std::declval<Arc>().GetAnyOutside(std::declval<double&>()))>));
    EXPECT_TRUE(
        (kSameType<bool, decltype(std::declval<Arc>().GetComplimentary(std::declval<Arc>()))>));
    EXPECT_TRUE((kSameType<RangeR1::ELocn, decltype(std::declval<Arc>().GetPointLocation(0, 0))>));
    EXPECT_TRUE((kSameType<RangeR1::ERangeLocn, decltype(std::declval<Arc>().GetRangeLocation(
                                                    std::declval<Arc>(), 0))>));
    EXPECT_TRUE((kSameType<RangeS1::EState (*)(unsigned char), decltype(&RangeS1::ByteToState)>));
}

// Neither of the two has a default for its last argument.
template <class T>
concept SubtractsWithoutAFlag = requires(T a) {
    a.Subtract(a);
};
template <class T>
concept LocatesWithoutATolerance = requires(T a) {
    a.GetRangeLocation(a);
};
template <class T>
concept LocatesPointsWithoutATolerance = requires(T a) {
    a.GetPointLocation(0.0);
};

TEST(RangeS1Ties, NoArgumentHasADefault) {
    EXPECT_FALSE(SubtractsWithoutAFlag<RangeS1>);
    EXPECT_FALSE(LocatesWithoutATolerance<RangeS1>);
    EXPECT_FALSE(LocatesPointsWithoutATolerance<RangeS1>);
}

TEST(RangeS1Ties, SetTakesACanonicalEndJustBelowPiForPi) {
    RangeS1 arc(1.0, 2.0);
    arc.Set(zPi + 5e-10, 3 * zPi - kWithin);
    EXPECT_THAT(arc, IsCanonicallyFull());
    arc.Set(zPi + 5e-10, 3 * zPi - kBeyond);
    EXPECT_THAT(arc, IsPartial(S1::Factorize(zPi + 5e-10), S1::Factorize(3 * zPi - kBeyond)));
}

TEST(RangeS1Ties, SetTakesNoStartOfMoreThanTheBandForMinusPi) {
    const double start = zSeamBand - zPi;
    RangeS1 arc(1.0, 2.0);
    arc.Set(start + 1e-14, zPi);
    EXPECT_THAT(arc, IsPartial(S1::Factorize(start + 1e-14), zPi));
    arc.Set(start - 1e-14, zPi);
    EXPECT_THAT(arc, IsCanonicallyFull());
}

TEST(RangeS1Ties, LocationAtTheSeamIsInOnlyAboveTheToleranceFromTheEnd) {
    const double end = 0.25 - zPi;
    EXPECT_EQ(RawArc(2.0, end).GetPointLocation(-zPi, 0.25), RangeR1::eLocnAtMax);
    const double above = std::nextafter(end, 0.0);
    EXPECT_EQ(RawArc(2.0, above).GetPointLocation(-zPi, 0.25), RangeR1::eLocnIn);
}

TEST(RangeS1Ties, LocationOnAnExternalArcOffTheSeamTakesItsLimitsAsNumbers) {
    // Through 0 from -2 to 2, which as numbers are out of order.
    const RangeS1 arc = ExternalArc(2.0, -2.0);
    EXPECT_TRUE(arc.In(0.0));
    EXPECT_FALSE(arc.IsSingular());
    EXPECT_EQ(arc.GetPointLocation(0.0, 0.01), RangeR1::eLocnOut);
    EXPECT_EQ(arc.GetPointLocation(-2.0, 0.01), RangeR1::eLocnOut);
    EXPECT_EQ(arc.GetPointLocation(2.0, 0.01), RangeR1::eLocnAtMin);
}

// Limits exactly the tolerance apart are two places.

TEST(RangeS1Ties, ComplementHasItsLimitsWithinLessThanTheTolerance) {
    const double below = std::nextafter(zToler, 0.0);
    EXPECT_FALSE(RawArc(1.0, 0.0).IsComplimentary(RawArc(zToler, 1.0)));
    EXPECT_TRUE(RawArc(1.0, 0.0).IsComplimentary(RawArc(below, 1.0)));
    EXPECT_FALSE(RawArc(0.0, 1.0).IsComplimentary(RawArc(1.0, zToler)));
    EXPECT_TRUE(RawArc(0.0, 1.0).IsComplimentary(RawArc(1.0, below)));
}

TEST(RangeS1Ties, CoverSharesNoLimitAtExactlyTheTolerance) {
    EXPECT_EQ(RawArc(0.0, 1.0).GetRangeLocation(RawArc(-zToler, 2.0), zToler),
              RangeR1::eRangeLocnCover);
    const double below = std::nextafter(-zToler, 0.0);
    EXPECT_EQ(RawArc(0.0, 1.0).GetRangeLocation(RawArc(below, 2.0), zToler),
              RangeR1::eRangeLocnCoverAtMin);
    EXPECT_EQ(RawArc(-1.0, 0.0).GetRangeLocation(RawArc(-2.0, zToler), zToler),
              RangeR1::eRangeLocnCover);
    EXPECT_EQ(RawArc(-1.0, 0.0).GetRangeLocation(RawArc(-2.0, -below), zToler),
              RangeR1::eRangeLocnCoverAtMax);
}

TEST(RangeS1Ties, PointExactlyTheToleranceFromALimitIsNotAtIt) {
    EXPECT_TRUE(RawArc(0.0, 2.0).InOpen(zToler));
    EXPECT_FALSE(RawArc(0.0, 2.0).InOpen(std::nextafter(zToler, 0.0)));
    EXPECT_TRUE(RawArc(-2.0, 0.0).InOpen(-zToler));
    EXPECT_FALSE(RawArc(-2.0, 0.0).InOpen(std::nextafter(-zToler, 0.0)));
}

// Subtraction, one step after the other, for any limits.

bool On(const RangeS1& arc, double x) {
    return S1::InRange(x, arc.m_min, arc.m_max, !arc.m_bExternal);
}

bool Within(double a, double b) {
    return 1e-10 > std::fabs(a - b);
}

struct Subtraction {
    RangeS1 arc;
    RangeS1 r;
    int count = 0;
    bool changed = false;
};

bool operator==(const Subtraction& a, const Subtraction& b) {
    const auto same = [](const RangeS1& p, const RangeS1& q) {
        return SameDouble(p.m_min, q.m_min) && SameDouble(p.m_max, q.m_max) &&
               p.m_bExternal == q.m_bExternal && p.m_eState == q.m_eState;
    };
    return same(a.arc, b.arc) && same(a.r, b.r) && a.count == b.count && a.changed == b.changed;
}

void PrintTo(const Subtraction& d, std::ostream* os) {
    *os << d.count << (d.changed ? " told: " : " not told: ") << testing::PrintToString(d.arc)
        << " and " << testing::PrintToString(d.r);
}

int Inner(RangeS1& arc, RangeS1& r, bool& changed) {
    const bool s = Within(arc.m_min, r.m_min);
    const bool e = Within(arc.m_max, r.m_max);
    if (s && e) {
        arc.m_eState = RangeS1::eStateEmpty;
        return 0;
    }
    if (s) {
        arc.m_min = r.m_max;
        changed = true;
        return 1;
    }
    if (e) {
        arc.m_max = r.m_min;
        return 1;
    }
    const double oldEnd = arc.m_max;
    arc.m_max = S1::Factorize(r.m_min);
    r.Set(r.m_max, oldEnd);
    return 2;
}

int Overlapping(RangeS1& arc, const RangeS1& r, bool& changed) {
    const bool full = r.m_eState == RangeS1::eStateFull;
    if (full || On(r, arc.m_min)) {
        if (!Within(arc.m_min, r.m_max)) changed = true;
        arc.m_min = r.m_max;
    }
    if (full || On(r, arc.m_max)) arc.m_max = r.m_min;
    return 1;
}

int Steps(RangeS1& arc, RangeS1& r, bool& changed) {
    if (arc.m_eState == RangeS1::eStateEmpty) return 0;
    if (arc.m_eState == RangeS1::eStateFull) {
        if (r.m_eState == RangeS1::eStateEmpty) return 1;
        arc.m_min = r.m_max;
        arc.m_max = r.m_min;
        arc.m_eState = RangeS1::eStatePartial;
        changed = true;
        return 1;
    }
    if (Within(r.m_min, r.m_max)) return 1;
    if (arc.IsInsideOf(r)) {
        arc.m_eState = RangeS1::eStateEmpty;
        changed = true;
        return 0;
    }
    return r.IsInsideOf(arc) ? Inner(arc, r, changed) : Overlapping(arc, r, changed);
}

Subtraction Expected(const RangeS1& arc, const RangeS1& r) {
    Subtraction d{arc, r};
    d.count = Steps(d.arc, d.r, d.changed);
    return d;
}

Subtraction Result(const RangeS1& arc, const RangeS1& r) {
    Subtraction d{arc, r};
    d.changed = true;
    d.count = d.arc.Subtract(d.r, &d.changed);
    return d;
}

TEST(RangeS1Ties, SubtractSharesNoStartAtExactlyTheTolerance) {
    const Subtraction d = Result(RawArc(0.0, 2.0), RawArc(zToler, 1.0));
    EXPECT_EQ(d.count, 2);
    EXPECT_FALSE(d.changed);
    EXPECT_THAT(d.arc, IsPartial(0.0, S1::Factorize(zToler)));
    EXPECT_THAT(d.r, IsPartial(S1::Factorize(1.0), S1::Factorize(2.0)));
}

TEST(RangeS1Ties, SubtractTellsOfAStartThatMovesByExactlyTheTolerance) {
    const Subtraction d = Result(RawArc(zToler, 2.0), RawArc(-1.0, 0.0));
    EXPECT_EQ(d.count, 1);
    EXPECT_TRUE(d.changed);
    EXPECT_THAT(d.arc, IsPartial(0.0, 2.0));
}

TEST(RangeS1Ties, SubtractTakesItsStepsToTheBit) {
    std::vector<double> limits;
    for (const double at : {-zPi, -1.0, 0.0, 1.0, zPi}) {
        for (const double by : {0.0, kWithin, -kWithin, 1.5e-10, -1.5e-10}) {
            limits.push_back(at + by);
        }
    }
    std::vector<RangeS1> others;
    for (const double lo : limits) {
        for (const double hi : {-1.0, kWithin, 1.0 + 1.5e-10, zPi}) {
            others.push_back(RawArc(lo, hi));
        }
    }
    others.push_back(ExternalArc(-1.0, 1.0));
    others.push_back(RawArc(-1.0, 1.0, RangeS1::eStateFull));
    others.push_back(EmptyArc(-1.0, 1.0));
    others.push_back(EmptyArc(1.0, 2.0));
    for (const double lo : limits) {
        for (const double hi : limits) {
            const RangeS1 arc = RawArc(lo, hi);
            for (const RangeS1& r : others) {
                ASSERT_EQ(Result(arc, r), Expected(arc, r)) << testing::PrintToString(arc);
                ASSERT_EQ(Result(r, arc), Expected(r, arc)) << testing::PrintToString(r);
            }
        }
    }
}

}  // namespace
}  // namespace ZT
