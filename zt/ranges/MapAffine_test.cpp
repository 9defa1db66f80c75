// The affine map between two real intervals.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/RangeMatchers.h>
#include <zt/ranges/MapAffine.h>

#include <cmath>
#include <cstddef>
#include <type_traits>

namespace ZT {
namespace {

using testing_support::External;
using testing_support::HasLimits;
using testing_support::Is;
using testing_support::SameDouble;

MapAffine Between(const RangeR1& source, const RangeR1& target) {
    MapAffine map;
    map.m_ranges[0] = target;
    map.m_ranges[1] = source;
    return map;
}

TEST(MapAffine, HoldsTheTwoRangesAndNothingElse) {
    EXPECT_EQ(offsetof(MapAffine, m_ranges), 0u);
    EXPECT_EQ(sizeof(MapAffine), 2 * sizeof(RangeR1));
    EXPECT_FALSE(std::is_polymorphic_v<MapAffine>);
}

TEST(MapAffine, NewOneHoldsEmptyRanges) {
    const MapAffine map;
    EXPECT_THAT(map.m_ranges[0], HasLimits(1e307, -1e307));
    EXPECT_THAT(map.m_ranges[1], HasLimits(1e307, -1e307));
    EXPECT_THAT(map.Map(5.0), Is(1e307));
}

TEST(MapAffine, FirstRangeIsTheTargetAndSecondTheSource) {
    const MapAffine map = Between({0, 1}, {0, 10});
    EXPECT_THAT(map.Map(0.25), Is(2.5));
    EXPECT_THAT(map.Map(0.0), Is(0.0));
    EXPECT_THAT(map.Map(1.0), Is(10.0));
    EXPECT_THAT(map.Map(-1.0), Is(-10.0));
}

TEST(MapAffine, ShortOrEmptySourceGivesTheLowerLimitOfTheTarget) {
    for (const RangeR1& source : {RangeR1(1, 1), RangeR1(1, 1 + 5e-11), RangeR1(2, 1), RangeR1()}) {
        const MapAffine map = Between(source, {3, 10});
        for (const double x : {-100.0, 1.0, 7.0}) EXPECT_THAT(map.Map(x), Is(3.0));
    }
}

TEST(MapAffine, ReversedTargetIsMappedAsItStands) {
    EXPECT_THAT(Between({0, 4}, {10, 2}).Map(1.0), Is(8.0));
}

TEST(MapAffine, FlagsOfTheRangesDoNotCount) {
    EXPECT_THAT(Between(External(0, 1), External(0, 10)).Map(0.25), Is(2.5));
}

TEST(MapAffine, CopyConstructorTakesAllOfBothRanges) {
    const MapAffine copy(Between(External(0, 1), {5, 3}));
    EXPECT_THAT(copy.m_ranges[0], HasLimits(5.0, 3.0));
    EXPECT_THAT(copy.m_ranges[1], HasLimits(0.0, 1.0));
    EXPECT_FALSE(copy.m_ranges[0].IsExternal());
    EXPECT_TRUE(copy.m_ranges[1].IsExternal());
}

TEST(MapAffine, AssignmentKeepsARangeThatAgreesToTheTolerance) {
    MapAffine map = Between({0, 1}, {0, 10});
    map = Between({0, 2}, {5e-11, 10});
    EXPECT_THAT(map.m_ranges[0], HasLimits(0.0, 10.0));
    EXPECT_THAT(map.m_ranges[1], HasLimits(0.0, 2.0));
    map = Between({5e-11, 2}, {1, 10});
    EXPECT_THAT(map.m_ranges[0], HasLimits(1.0, 10.0));
    EXPECT_THAT(map.m_ranges[1], HasLimits(0.0, 2.0));
}

struct NormalisingRange : RangeR1 {
    using RangeR1::RangeR1;
    void Set(double, double) override { RangeR1::Set(-1, -1); }
};

TEST(MapAffine, RangeIsStoredDirectlyAndNotThroughSet) {
    NormalisingRange out;
    Between({0, 1}, {0, 10}).Map(RangeR1(0.25, 0.5), out);
    EXPECT_THAT(out, HasLimits(2.5, 5.0));
}

TEST(MapAffine, RangeKeepsItsExternalFlag) {
    const MapAffine map = Between({0, 1}, {0, 10});
    RangeR1 external = External(0, 0);
    map.Map(RangeR1(0.25, 0.5), external);
    EXPECT_TRUE(external.IsExternal());
    RangeR1 plain;
    map.Map(External(0.25, 0.5), plain);
    EXPECT_FALSE(plain.IsExternal());
    EXPECT_THAT(plain, HasLimits(2.5, 5.0));
}

TEST(MapAffine, RangeCanBeMappedOntoItself) {
    RangeR1 range(0.25, 0.5);
    const MapAffine map = Between({0, 1}, {0, 10});
    map.Map(range, range);
    EXPECT_THAT(range, HasLimits(2.5, 5.0));
}

TEST(MapAffine, LawMapsByTheBlendAtTheRatio) {
    EXPECT_TRUE(rc::check([] {
        const auto number = [] { return *rc::gen::inRange(-1000, 1000) / 7.0; };
        const RangeR1 source(number(), number());
        const RangeR1 target(number(), number());
        const double x = number();
        const double t = 1e-10 > source.m_max - source.m_min
                             ? 0.0
                             : (x - source.m_min) / (source.m_max - source.m_min);
        RC_ASSERT(
            SameDouble(Between(source, target).Map(x), (1 - t) * target.m_min + t * target.m_max));
    }));
}

TEST(MapAffine, LawTheReverseMapLeadsBack) {
    EXPECT_TRUE(rc::check([] {
        const double from = *rc::gen::inRange(-1000, 1000);
        const double to = *rc::gen::inRange(-1000, 1000);
        const RangeR1 a(from, from + *rc::gen::inRange(1, 100));
        const RangeR1 b(to, to + *rc::gen::inRange(1, 100));
        const double x = *rc::gen::inRange(-1000, 1000) / 8.0;
        RC_ASSERT(std::fabs(Between(b, a).Map(Between(a, b).Map(x)) - x) < 1e-7);
    }));
}

}  // namespace
}  // namespace ZT
