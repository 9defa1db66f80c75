// The record of a real interval, its states, its tests and its archive form.

#include <zt/ranges/RangeR1.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>
#include <platform/object/CArchiveException.h>
#include <sibling/Range.h>
#include <tests/RangeMatchers.h>

#include <bit>
#include <cstddef>
#include <cstring>
#include <limits>
#include <tuple>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing_support::External;
using testing_support::HasLimits;
using testing_support::Is;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// The doubles next to the tolerance, from below and from above.
const double kBelowToler = std::nextafter(zToler, 0.0);
const double kAboveToler = std::nextafter(zToler, 1.0);

// The record.

TEST(RangeR1, FieldsFollowTheTableInOrder) {
    EXPECT_EQ(offsetof(RangeR1, m_min), 8u);
    EXPECT_EQ(offsetof(RangeR1, m_max), 16u);
    EXPECT_EQ(offsetof(RangeR1, m_bExternal), 24u);
    EXPECT_EQ(sizeof(RangeR1), 32u);
}

struct Recorder : RangeR1 {
    explicit Recorder(std::vector<std::string>* log) : m_log(log) {}
    ~Recorder() override { m_log->push_back("destructor"); }
    EClass GetClass() const override {
        m_log->push_back("GetClass");
        return eClassR1;
    }
    void Set(double, double) override { m_log->push_back("Set"); }
    std::vector<std::string>* m_log;
};

TEST(RangeR1, VirtualOperationsAreGetClassSetAndTheDestructorInOrder) {
    std::vector<std::string> log;
    alignas(Recorder) std::byte memory[sizeof(Recorder)];
    auto* const range = new (memory) Recorder(&log);
    void** table = nullptr;
    std::memcpy(&table, memory, sizeof table);
    reinterpret_cast<RangeR1::EClass (*)(const RangeR1*)>(table[0])(range);
    reinterpret_cast<void (*)(RangeR1*, double, double)>(table[1])(range, 0.0, 1.0);
    reinterpret_cast<void (*)(RangeR1*)>(table[2])(range);
    EXPECT_THAT(log, testing::ElementsAre("GetClass", "Set", "destructor"));
}

TEST(RangeR1, HasVirtualDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<RangeR1>);
}

TEST(RangeR1, EnumeratorsHaveTheirValues) {
    EXPECT_EQ(sizeof(RangeR1::EClass), 4u);
    EXPECT_EQ(RangeR1::eClassR1, 0);
    EXPECT_EQ(RangeR1::eClassRange, 1);
    EXPECT_EQ(RangeR1::eClassS1, 2);

    EXPECT_EQ(sizeof(RangeR1::ELocn), 4u);
    EXPECT_EQ(RangeR1::eLocnIn, 1);
    EXPECT_EQ(RangeR1::eLocnAtMin, 2);
    EXPECT_EQ(RangeR1::eLocnAtMax, 3);
    EXPECT_EQ(RangeR1::eLocnOut, 5);
    EXPECT_EQ(RangeR1::eLocnBelow, 6);
    EXPECT_EQ(RangeR1::eLocnAbove, 7);

    EXPECT_EQ(sizeof(RangeR1::ERangeLocn), 4u);
    EXPECT_EQ(RangeR1::eRangeLocnIn, 1);
    EXPECT_EQ(RangeR1::eRangeLocnInAtMin, 2);
    EXPECT_EQ(RangeR1::eRangeLocnInAtMax, 3);
    EXPECT_EQ(RangeR1::eRangeLocnPointAtMin, 4);
    EXPECT_EQ(RangeR1::eRangeLocnPointAtMax, 5);
    EXPECT_EQ(RangeR1::eRangeLocnSame, 7);
    EXPECT_EQ(RangeR1::eRangeLocnCoverAtMin, 8);
    EXPECT_EQ(RangeR1::eRangeLocnCoverAtMax, 9);
    EXPECT_EQ(RangeR1::eRangeLocnCover, 10);
    EXPECT_EQ(RangeR1::eRangeLocnOverlap, 11);
    EXPECT_EQ(RangeR1::eRangeLocnTouch, 12);
    EXPECT_EQ(RangeR1::eRangeLocnApart, 14);
}

TEST(RangeR1, ClassIsR1) {
    EXPECT_EQ(RangeR1().GetClass(), RangeR1::eClassR1);
}

// Making and storing.

TEST(RangeR1, NewRangeIsCanonicallyEmpty) {
    const RangeR1 range;
    EXPECT_THAT(range, HasLimits(1e307, -1e307));
    EXPECT_FALSE(range.IsExternal());
    EXPECT_TRUE(range.IsEmpty());
}

TEST(RangeR1, LimitsAreNotPutInOrder) {
    const RangeR1 range(2.0, 1.0);
    EXPECT_THAT(range, HasLimits(2.0, 1.0));
    EXPECT_FALSE(range.IsExternal());
}

TEST(RangeR1, CopyConstructorTakesAllFields) {
    const RangeR1 copy(External(2.0, 1.0));
    EXPECT_THAT(copy, HasLimits(2.0, 1.0));
    EXPECT_TRUE(copy.IsExternal());
}

// Assignment is one operation under two names.
struct RangeR1Assignment : testing::TestWithParam<bool> {
    static bool Assign(RangeR1& target, const RangeR1& source) {
        return GetParam() ? target.Copy(source) : target = source;
    }
};

INSTANTIATE_TEST_SUITE_P(BothNames, RangeR1Assignment, testing::Bool(),
                         [](const auto& test) { return test.param ? "Copy" : "Operator"; });

TEST_P(RangeR1Assignment, StoresADifferentRange) {
    RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(Assign(range, External(5.0, 3.0)));
    EXPECT_THAT(range, HasLimits(5.0, 3.0));
    EXPECT_TRUE(range.IsExternal());
}

TEST_P(RangeR1Assignment, WithinToleranceKeepsOwnLimits) {
    RangeR1 range(0.0, 1.0);
    const RangeR1 close(5e-11, 1.0 - 5e-11);
    EXPECT_FALSE(Assign(range, close));
    EXPECT_THAT(range, HasLimits(0.0, 1.0));
    EXPECT_TRUE(range == close);
}

TEST_P(RangeR1Assignment, OneLimitBeyondTheToleranceStoresBoth) {
    RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(Assign(range, RangeR1(5e-11, 2.0)));
    EXPECT_THAT(range, HasLimits(5e-11, 2.0));
    EXPECT_TRUE(Assign(range, RangeR1(1.0, 2.0 + 5e-11)));
    EXPECT_THAT(range, HasLimits(1.0, 2.0 + 5e-11));
}

TEST_P(RangeR1Assignment, OtherFlagStoresAll) {
    RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(Assign(range, External(5e-11, 1.0)));
    EXPECT_THAT(range, HasLimits(5e-11, 1.0));
    EXPECT_TRUE(range.IsExternal());
}

TEST_P(RangeR1Assignment, ExactlyTheToleranceIsAChangeAlthoughItIsEqual) {
    RangeR1 range(0.0, 1.0);
    const RangeR1 other(zToler, 1.0);
    EXPECT_TRUE(range == other);
    EXPECT_TRUE(Assign(range, other));
    EXPECT_THAT(range, HasLimits(zToler, 1.0));
    range.Set(-1.0, 0.0);
    EXPECT_TRUE(Assign(range, RangeR1(-1.0, zToler)));
    EXPECT_THAT(range, HasLimits(-1.0, zToler));
}

TEST_P(RangeR1Assignment, NaNIsAChange) {
    RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(Assign(range, RangeR1(kNaN, 1.0)));
    EXPECT_THAT(range, HasLimits(kNaN, 1.0));
}

TEST_P(RangeR1Assignment, ToItselfChangesNothing) {
    RangeR1 range(0.0, 1.0);
    EXPECT_FALSE(Assign(range, range));
    EXPECT_THAT(range, HasLimits(0.0, 1.0));
}

struct SiblingRange : PW::Range {
    std::vector<std::pair<double, double>> sets;
    void Set(double lo, double hi) override {
        sets.emplace_back(lo, hi);
        PW::Range::Set(lo, hi);
    }
};

TEST(RangeR1, CopyToPwGoesThroughTheSiblingsSet) {
    SiblingRange target;
    External(2.0, 1.0).CopyToPw(&target);
    EXPECT_THAT(target.sets, testing::ElementsAre(std::pair(2.0, 1.0)));
    EXPECT_THAT(target.GetMin(), Is(2.0));
    EXPECT_THAT(target.GetMax(), Is(1.0));
    EXPECT_TRUE(target.IsExternal());
    RangeR1(0.0, 1.0).CopyToPw(&target);
    EXPECT_FALSE(target.IsExternal());
}

TEST(RangeR1, ResetGivesTheSecondEmptyForm) {
    RangeR1 range = External(3.0, 4.0);
    range.Reset();
    EXPECT_THAT(range, HasLimits(0.0, -1.0));
    EXPECT_FALSE(range.IsExternal());
    EXPECT_TRUE(range.IsEmpty());
}

TEST(RangeR1, InvalidateGivesTheCanonicalEmptyFormAndClearsTheFlag) {
    RangeR1 range = External(3.0, 4.0);
    range.Invalidate();
    EXPECT_THAT(range, HasLimits(1e307, -1e307));
    EXPECT_FALSE(range.IsExternal());
    EXPECT_TRUE(range.IsEmpty());
}

TEST(RangeR1, SetEmptyKeepsTheFlag) {
    RangeR1 range = External(3.0, 4.0);
    range.SetEmpty();
    EXPECT_THAT(range, HasLimits(1e307, -1e307));
    EXPECT_TRUE(range.IsExternal());
    EXPECT_TRUE(range.IsEmpty());
}

TEST(RangeR1, SetFullOfAPlainRange) {
    RangeR1 range(0.0, 1.0);
    range.SetFull(true);
    EXPECT_THAT(range, HasLimits(-1e307, 1e307));
    EXPECT_TRUE(range.IsFull());
}

TEST(RangeR1, SetFullOfAnExternalRange) {
    RangeR1 range = External(0.0, 1.0);
    range.SetFull(true);
    EXPECT_THAT(range, HasLimits(1e307, 1e307));
    EXPECT_TRUE(range.IsExternal());
    EXPECT_TRUE(range.IsFull());
}

TEST(RangeR1, SetFullNotInfiniteIsTheFullAngle) {
    RangeR1 range(0.0, 1.0);
    range.SetFull(false);
    EXPECT_THAT(range, HasLimits(-3.14159265343979, 3.14159265358979));
    EXPECT_FALSE(range.IsFull());
}

TEST(RangeR1, FullAngleKeepsClearOfTheSeam) {
    RangeR1 range;
    range.SetFullAngle();
    EXPECT_EQ(std::bit_cast<std::uint64_t>(range.m_min), 0xC00921FB543F05A7u);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(range.m_max), 0x400921FB54442D11u);
    EXPECT_GT(range.m_min + zPi, zToler);
}

TEST(RangeR1, SetStoresUnorderedAndKeepsTheFlag) {
    RangeR1 range = External(0.0, 1.0);
    range.Set(5.0, 4.0);
    EXPECT_THAT(range, HasLimits(5.0, 4.0));
    EXPECT_TRUE(range.IsExternal());
}

TEST(RangeR1, SetUnorderedStoresTheSmallerFirst) {
    RangeR1 range;
    range.SetUnordered(2.0, 1.0);
    EXPECT_THAT(range, HasLimits(1.0, 2.0));
    range.SetUnordered(3.0, 4.0);
    EXPECT_THAT(range, HasLimits(3.0, 4.0));
    range.SetUnordered(0.0, -0.0);
    EXPECT_THAT(range, HasLimits(0.0, -0.0));
}

TEST(RangeR1, SetUnorderedTakesANaNAsOutOfOrder) {
    RangeR1 range;
    range.SetUnordered(kNaN, 1.0);
    EXPECT_THAT(range, HasLimits(1.0, kNaN));
}

TEST(RangeR1, SetExTellsWhetherALimitMoved) {
    RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.SetEx(0.5, 1.0));
    EXPECT_THAT(range, HasLimits(0.5, 1.0));
    EXPECT_TRUE(range.SetEx(0.5, 0.25));
    EXPECT_THAT(range, HasLimits(0.5, 0.25));
}

TEST(RangeR1, SetExComparesEachLimitWithItsOwnOldOne) {
    RangeR1 range(1.0, 2.0);
    EXPECT_FALSE(range.SetEx(1.0, 2.0));
    EXPECT_TRUE(range.SetEx(-1.0, 2.0));
    EXPECT_TRUE(range.SetEx(-1.0, -2.0));
    EXPECT_FALSE(range.SetEx(-1.0, -2.0));
    range.Set(0.0, 0.0);
    EXPECT_TRUE(range.SetEx(kAboveToler, 0.0));
}

TEST(RangeR1, SetExStoresAlsoWhatItDoesNotReport) {
    RangeR1 range(0.0, 1.0);
    EXPECT_FALSE(range.SetEx(5e-11, 1.0 + 5e-11));
    EXPECT_THAT(range, HasLimits(5e-11, 1.0 + 5e-11));
}

TEST(RangeR1, SetExByExactlyTheToleranceIsNoMove) {
    RangeR1 range(0.0, 0.0);
    EXPECT_FALSE(range.SetEx(zToler, -zToler));
    EXPECT_THAT(range, HasLimits(zToler, -zToler));
    range.Set(0.0, 0.0);
    EXPECT_TRUE(range.SetEx(0.0, kAboveToler));
}

TEST(RangeR1, SetExternalKeepsTheLimitsOfARangeThatIsNotFull) {
    RangeR1 range(0.0, 1.0);
    range.SetExternal(true);
    EXPECT_TRUE(range.IsExternal());
    EXPECT_THAT(range, HasLimits(0.0, 1.0));
    range.SetExternal(false);
    EXPECT_FALSE(range.IsExternal());
    EXPECT_THAT(range, HasLimits(0.0, 1.0));
}

TEST(RangeR1, SetExternalKeepsAFullRangeFull) {
    RangeR1 range;
    range.SetFull(true);
    range.SetExternal(true);
    EXPECT_THAT(range, HasLimits(1e307, 1e307));
    EXPECT_TRUE(range.IsFull());
    range.SetExternal(false);
    EXPECT_THAT(range, HasLimits(-1e307, 1e307));
    EXPECT_TRUE(range.IsFull());
}

TEST(RangeR1, SetExternalWithTheSameFlagMakesAFullRangeCanonical) {
    RangeR1 range(-9.5e306, 2e307);
    range.SetExternal(false);
    EXPECT_THAT(range, HasLimits(-1e307, 1e307));
}

// Limits.

TEST(RangeR1, GetGivesBothLimits) {
    double lo = 0.0;
    double hi = 0.0;
    RangeR1(2.0, 1.0).Get(lo, hi);
    EXPECT_THAT(lo, Is(2.0));
    EXPECT_THAT(hi, Is(1.0));
}

TEST(RangeR1, GetLimitTakesAnythingButZeroAsTheUpperOne) {
    const RangeR1 range(1.0, 2.0);
    EXPECT_THAT(range.GetLimit(0), Is(1.0));
    EXPECT_THAT(range.GetLimit(1), Is(2.0));
    EXPECT_THAT(range.GetLimit(255), Is(2.0));
}

TEST(RangeR1, GetEndHasTheOppositeSenseOfGetLimit) {
    const RangeR1 range(1.0, 2.0);
    EXPECT_THAT(range.GetEnd(true), Is(range.m_min));
    EXPECT_THAT(range.GetEnd(false), Is(range.m_max));
    EXPECT_THAT(range.GetLimit(1), Is(range.m_max));
}

TEST(RangeR1, FindLimitGives2ForNone) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_EQ(range.FindLimit(0.0625, 0.125), 0);
    EXPECT_EQ(range.FindLimit(-0.0625, 0.125), 0);
    EXPECT_EQ(range.FindLimit(1.0625, 0.125), 1);
    EXPECT_EQ(range.FindLimit(0.5, 0.125), 2);
    EXPECT_EQ(range.FindLimit(kNaN, 0.125), 2);
    EXPECT_EQ(RangeR1(4.0, 8.0).FindLimit(4.0625, 0.125), 0);
    EXPECT_EQ(RangeR1(4.0, 8.0).FindLimit(8.0625, 0.125), 1);
    EXPECT_EQ(RangeR1(4.0, 8.0).FindLimit(6.0, 0.125), 2);
}

TEST(RangeR1, FindLimitIsStrictAtTheTolerance) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_EQ(range.FindLimit(-0.125, 0.125), 2);
    EXPECT_EQ(range.FindLimit(1.125, 0.125), 2);
    EXPECT_EQ(range.FindLimit(zToler, zToler), 2);
}

TEST(RangeR1, FindLimitPrefersTheLowerOne) {
    EXPECT_EQ(RangeR1(0.0, 0.0).FindLimit(0.0, 1.0), 0);
}

TEST(RangeR1, FindSameLimitGives3ForNone) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_EQ(range.FindSameLimit(RangeR1(0.0, 1.0)), 0);
    EXPECT_EQ(range.FindSameLimit(RangeR1(5e-11, 7.0)), 0);
    EXPECT_EQ(range.FindSameLimit(RangeR1(5.0, 1.0 + 5e-11)), 1);
    EXPECT_EQ(range.FindSameLimit(RangeR1(5.0, 7.0)), 3);
    EXPECT_EQ(range.FindSameLimit(RangeR1(1.0, 0.0)), 3);
    EXPECT_EQ(range.FindSameLimit(RangeR1(zToler, 7.0)), 3);
    EXPECT_EQ(RangeR1(-1.0, 0.0).FindSameLimit(RangeR1(5.0, zToler)), 3);
    EXPECT_EQ(RangeR1(4.0, 8.0).FindSameLimit(RangeR1(4.0, 9.0)), 0);
    EXPECT_EQ(RangeR1(4.0, 8.0).FindSameLimit(RangeR1(5.0, 8.0)), 1);
}

// Comparison.

TEST(RangeR1, EqualUpToTheTolerance) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range == RangeR1(5e-11, 1.0 - 5e-11));
    EXPECT_FALSE(range == RangeR1(2e-10, 1.0));
    EXPECT_FALSE(range == RangeR1(0.0, 1.0 + 2e-10));
    EXPECT_FALSE(range != RangeR1(5e-11, 1.0 - 5e-11));
    EXPECT_TRUE(range != RangeR1(2e-10, 1.0));
}

TEST(RangeR1, ExactlyTheToleranceIsEqual) {
    const RangeR1 range(0.0, 0.0);
    EXPECT_TRUE(range == RangeR1(zToler, -zToler));
    EXPECT_FALSE(range != RangeR1(zToler, -zToler));
    EXPECT_FALSE(range == RangeR1(kAboveToler, 0.0));
}

TEST(RangeR1, EqualityDoesNotCompareTheFlag) {
    EXPECT_TRUE(RangeR1(0.0, 1.0) == External(0.0, 1.0));
    EXPECT_TRUE(RangeR1(0.0, 1.0).IsSame(External(0.0, 1.0), 0.5));
}

TEST(RangeR1, NaNLimitsDoNotDiffer) {
    EXPECT_TRUE(RangeR1(kNaN, 1.0) == RangeR1(0.0, 1.0));
    EXPECT_TRUE(RangeR1(kNaN, 1.0).IsSame(RangeR1(0.0, 1.0), 0.5));
}

TEST(RangeR1, IsSameIncludesItsTolerance) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.IsSame(RangeR1(0.5, 0.5), 0.5));
    EXPECT_FALSE(range.IsSame(RangeR1(0.5, 0.5), 0.4375));
    EXPECT_FALSE(range.IsSame(RangeR1(0.0, 2.0), 0.5));
    EXPECT_FALSE(range.IsSame(RangeR1(-1.0, 1.0), 0.5));
}

TEST(RangeR1, PlainContainsPlainByItsLimits) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range >= RangeR1(0.25, 0.75));
    EXPECT_TRUE(range >= RangeR1(0.0, 1.0));
    EXPECT_TRUE(range >= RangeR1(-5e-11, 1.0 + 5e-11));
    EXPECT_TRUE(range >= RangeR1(0.75, 0.25));
    EXPECT_FALSE(range >= RangeR1(-0.5, 0.5));
    EXPECT_FALSE(range >= RangeR1(0.5, 1.5));
    EXPECT_FALSE(range >= RangeR1());
}

TEST(RangeR1, ContainmentIncludesExactlyTheTolerance) {
    EXPECT_TRUE(RangeR1(0.0, 0.0) >= RangeR1(-zToler, zToler));
    EXPECT_FALSE(RangeR1(0.0, 0.0) >= RangeR1(-kAboveToler, 0.0));
    EXPECT_FALSE(RangeR1(0.0, 0.0) >= RangeR1(0.0, kAboveToler));
}

TEST(RangeR1, LessOrEqualIsContainmentTheOtherWayRound) {
    EXPECT_TRUE(RangeR1(0.25, 0.75) <= RangeR1(0.0, 1.0));
    EXPECT_FALSE(RangeR1(0.0, 1.0) <= RangeR1(0.25, 0.75));
}

TEST(RangeR1, ExternalContainsExternalByItsLimits) {
    EXPECT_TRUE(External(0.0, 1.0) >= External(0.0, 1.0));
    EXPECT_TRUE(External(0.0, 1.0) >= External(-1.0, 2.0));
    EXPECT_FALSE(External(0.0, 1.0) >= External(0.25, 2.0));
    // Limits within the hole's border are on it.
    EXPECT_TRUE(External(0.0, 1.0) >= External(5e-11, 1.0));
    EXPECT_FALSE(External(0.0, 1.0) >= External(zToler, 1.0));
}

TEST(RangeR1, PlainContainsExternalOnlyWhenFull) {
    EXPECT_FALSE(RangeR1(-100.0, 100.0) >= External(0.0, 1.0));
    EXPECT_TRUE(RangeR1(-1e307, 1e307) >= External(0.0, 1.0));
    EXPECT_FALSE(RangeR1(-1e307, 1e300) >= External(0.0, 1.0));
    EXPECT_FALSE(RangeR1(-zFullBound, 1e307) >= External(0.0, 1.0));
    EXPECT_FALSE(RangeR1(-1e307, zFullBound) >= External(0.0, 1.0));
}

TEST(RangeR1, ExternalContainsPlainBesideItsHole) {
    const RangeR1 range = External(0.0, 1.0);
    EXPECT_TRUE(range >= RangeR1(-2.0, -1.0));
    EXPECT_TRUE(range >= RangeR1(2.0, 3.0));
    EXPECT_TRUE(range >= RangeR1(-2.0, 5e-11));
    EXPECT_TRUE(range >= RangeR1(1.0 - 5e-11, 3.0));
    EXPECT_FALSE(range >= RangeR1(0.25, 0.75));
    EXPECT_FALSE(range >= RangeR1(-1.0, 0.5));
    EXPECT_FALSE(range >= RangeR1(-1.0, 2.0));
    EXPECT_FALSE(range >= RangeR1(0.5, 2.0));
}

TEST(RangeR1, ExternalBorderIsStrictForContainment) {
    EXPECT_FALSE(External(0.0, 1.0) >= RangeR1(-2.0, zToler));
    EXPECT_FALSE(External(-1.0, 0.0) >= RangeR1(-zToler, 2.0));
    EXPECT_FALSE(External(0.0, 1.0) >= RangeR1(zToler, -1.0));
    EXPECT_FALSE(External(-1.0, 0.0) >= RangeR1(1.0, -zToler));
}

TEST(RangeR1, ExternalWithAPointForAHoleContainsWhatLiesBesideIt) {
    EXPECT_TRUE(External(0.0, 0.0) >= RangeR1(5.0, 6.0));
    EXPECT_FALSE(External(0.0, 0.0) >= RangeR1(-5.0, 6.0));
}

TEST(RangeR1, ExternalOutOfOrderContainsJustTheEmpty) {
    const RangeR1 range = External(1.0, 0.0);
    EXPECT_TRUE(range >= RangeR1());
    EXPECT_TRUE(range >= RangeR1(0.0, -1.0));
    EXPECT_FALSE(range >= RangeR1(5.0, 6.0));
    EXPECT_FALSE(range >= RangeR1(-6.0, -5.0));
    EXPECT_FALSE(range >= RangeR1(5.0, 5.0));
}

TEST(RangeR1, ExternalAlsoContainsAnEmptyRangeBesideItsHole) {
    EXPECT_TRUE(External(0.0, 1.0) >= RangeR1(-1.0, -2.0));
    EXPECT_FALSE(External(0.0, 1.0) >= RangeR1());
}

TEST(RangeR1, IsComparesBothLimits) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.Is(0.25, 0.75, 0.25));
    EXPECT_FALSE(range.Is(0.25, 0.75, 0.125));
    EXPECT_FALSE(range.Is(0.25, 5.0, 0.25));
    EXPECT_FALSE(range.Is(-5.0, 1.0, 0.25));
}

TEST(RangeR1, IsAsksForInfiniteLimitsOnTheSameSide) {
    EXPECT_TRUE(RangeR1(-2e306, 3e306).Is(-1e307, 1e307, 0.0));
    EXPECT_TRUE(RangeR1(-2e306, 3e306).Is(-5e306, 5e306, 0.0));
    EXPECT_FALSE(RangeR1(-zFinite, 1e307).Is(-1e307, 1e307, 0.0));
    EXPECT_FALSE(RangeR1(-1e307, zFinite).Is(-1e307, 1e307, 0.0));
    EXPECT_TRUE(RangeR1(-1e307, 1.0).Is(-1e307, 1.0, 0.0));
    EXPECT_TRUE(RangeR1(0.0, 1e307).Is(0.0, 1e307, 0.0));
}

TEST(RangeR1, IsTakesInfinityOnTheWrongSideAsANumber) {
    EXPECT_TRUE(RangeR1().Is(1e307, -1e307, 0.0));
    EXPECT_FALSE(RangeR1(2e306, -1e307).Is(1e307, -1e307, 0.0));
}

TEST(RangeR1, IsAfterComparesTheUpperLimits) {
    EXPECT_EQ(RangeR1(2.0, 3.0).IsAfter(RangeR1(0.0, 1.0)), eTrue);
    EXPECT_EQ(RangeR1(0.0, 1.0).IsAfter(RangeR1(2.0, 3.0)), eFalse);
    EXPECT_EQ(RangeR1(0.5, 3.0).IsAfter(RangeR1(0.0, 1.0)), eTrue);
    EXPECT_EQ(RangeR1(0.0, 1.0).IsAfter(RangeR1(0.5, 3.0)), eFalse);
    EXPECT_EQ(External(0.0, 1.0).IsAfter(RangeR1(0.5, 1.0)), eFalse);
}

TEST(RangeR1, IsAfterIsUnknownWhenOneContainsTheOther) {
    EXPECT_EQ(RangeR1(0.0, 3.0).IsAfter(RangeR1(1.0, 2.0)), eUnknown);
    EXPECT_EQ(RangeR1(1.0, 2.0).IsAfter(RangeR1(0.0, 3.0)), eUnknown);
    EXPECT_EQ(RangeR1(1.0, 2.0).IsAfter(RangeR1(1.0, 2.0)), eUnknown);
}

struct AfterClosedCase {
    const char* name;
    RangeR1 range;
    RangeR1 other;
    ETri expected;
};

struct RangeR1AfterClosed : testing::TestWithParam<AfterClosedCase> {};

TEST_P(RangeR1AfterClosed, Answers) {
    EXPECT_EQ(GetParam().range.IsAfterClosed(GetParam().other), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    RangeR1, RangeR1AfterClosed,
    testing::Values(
        AfterClosedCase{"ApartAbove", {2.0, 3.0}, {0.0, 1.0}, eTrue},
        AfterClosedCase{"ApartBelow", {0.0, 1.0}, {2.0, 3.0}, eFalse},
        AfterClosedCase{"OverlapAbove", {0.5, 2.0}, {0.0, 1.0}, eTrue},
        AfterClosedCase{"OverlapBelowIsAfterToo", {0.0, 1.0}, {0.5, 2.0}, eTrue},
        AfterClosedCase{"TouchesFromAbove", {1.0, 2.0}, {0.0, 1.0}, eTrue},
        AfterClosedCase{"TouchesFromBelow", {0.0, 1.0}, {1.0, 2.0}, eFalse},
        AfterClosedCase{"EndsInThePoint", {0.0, 1.0}, {1.0, 1.0}, eUnknown},
        AfterClosedCase{"StartsInThePoint", {1.0, 2.0}, {1.0, 1.0}, eTrue},
        AfterClosedCase{"PointAtTheStartOfTheOther", {1.0, 1.0}, {1.0, 2.0}, eFalse},
        AfterClosedCase{"PointAtTheEndOfTheOther", {1.0, 1.0}, {0.0, 1.0}, eTrue},
        AfterClosedCase{"SamePoint", {1.0, 1.0}, {1.0, 1.0}, eUnknown},
        AfterClosedCase{"PointJustAboveThePoint", {5e-11, 5e-11}, {0.0, 0.0}, eUnknown},
        AfterClosedCase{"PointJustBelowThePoint", {0.0, 0.0}, {5e-11, 5e-11}, eUnknown},
        AfterClosedCase{"PointInside", {1.0, 1.0}, {0.0, 2.0}, eFalse},
        AfterClosedCase{"EmptyThatEndsWithTheOther", {5.0, 1.0}, {0.0, 1.0}, eFalse},
        AfterClosedCase{"EmptyThatEndsWithinTheOther", {5.0, 1.0}, {0.0, 3.0}, eFalse},
        AfterClosedCase{"EndsWithAShortRange", {-1.0, 0.0}, {-5e-11, 0.0}, eUnknown},
        AfterClosedCase{
            "ExactlyTheToleranceOutOfOrderAtTheEnd", {-1.0, 0.0}, {zToler, 0.0}, eFalse},
        AfterClosedCase{"SharesExactlyTheTolerance", {0.0, zToler}, {0.0, 1.0}, eTrue},
        AfterClosedCase{"SharesLess", {0.0, kBelowToler}, {0.0, 1.0}, eFalse},
        AfterClosedCase{
            "ExactlyTheToleranceLongFromAPoint", {0.0, zToler}, {-5e-11, -5e-11}, eTrue},
        AfterClosedCase{"ShorterFromAPoint", {0.0, kBelowToler}, {-5e-11, -5e-11}, eUnknown},
        AfterClosedCase{"RangeRoundThePoint", {0.0, 2.0}, {1.0, 1.0}, eTrue},
        AfterClosedCase{"EqualEndsInAPointOfTheOther", {0.0, 5e-11}, {-1.0, 0.0}, eTrue}),
    [](const auto& test) { return test.param.name; });

// Classification.

TEST(RangeR1, EmptyIsOutOfOrderByMoreThanTheTolerance) {
    EXPECT_TRUE(RangeR1().IsEmpty());
    EXPECT_TRUE(RangeR1(2.0, 1.0).IsEmpty());
    EXPECT_FALSE(RangeR1(0.0, 0.0).IsEmpty());
    EXPECT_FALSE(RangeR1(1.0, 1.0 - 5e-11).IsEmpty());
    EXPECT_FALSE(RangeR1(zToler, 0.0).IsEmpty());
    EXPECT_TRUE(RangeR1(kAboveToler, 0.0).IsEmpty());
    EXPECT_FALSE(RangeR1(kNaN, 0.0).IsEmpty());
}

TEST(RangeR1, SingletonIsAnEmptyIntervalButNotEmpty) {
    const RangeR1 point(0.0, 0.0);
    EXPECT_FALSE(point.IsEmpty());
    EXPECT_TRUE(point.IsSingleton());
    EXPECT_TRUE(point.IsEmptyInterval());
}

TEST(RangeR1, EmptyIntervalHasNoLength) {
    EXPECT_TRUE(RangeR1(2.0, 1.0).IsEmptyInterval());
    EXPECT_TRUE(RangeR1(0.0, kBelowToler).IsEmptyInterval());
    EXPECT_FALSE(RangeR1(0.0, zToler).IsEmptyInterval());
    EXPECT_FALSE(RangeR1(0.0, 1.0).IsEmptyInterval());
    EXPECT_FALSE(RangeR1(kNaN, 1.0).IsEmptyInterval());
}

TEST(RangeR1, EmptyIntervalWithAnInfiniteLowerLimit) {
    EXPECT_TRUE(RangeR1().IsEmptyInterval());
    EXPECT_TRUE(RangeR1(2e306, 9e306).IsEmptyInterval());
    EXPECT_FALSE(RangeR1(-1e307, 0.0).IsEmptyInterval());
    EXPECT_FALSE(RangeR1(-1e307, 5.0).IsEmptyInterval());
    EXPECT_FALSE(RangeR1(-1e307, -zFinite).IsEmptyInterval());
    EXPECT_TRUE(RangeR1(-1e307, -2e306).IsEmptyInterval());
    EXPECT_FALSE(RangeR1(zFinite, 1e307).IsEmptyInterval());
    EXPECT_FALSE(RangeR1(-zFinite, 1e307).IsEmptyInterval());
}

TEST(RangeR1, PlainIsFullWithInfiniteLimits) {
    EXPECT_TRUE(RangeR1(-1e307, 1e307).IsFull());
    EXPECT_FALSE(RangeR1(-zFullBound, 1e307).IsFull());
    EXPECT_FALSE(RangeR1(-1e307, zFullBound).IsFull());
    EXPECT_FALSE(RangeR1(1e307, 1e307).IsFull());
    EXPECT_FALSE(RangeR1().IsFull());
}

TEST(RangeR1, ExternalIsFullWithItsHoleAtInfinity) {
    EXPECT_TRUE(External(1e307, 1e307).IsFull());
    EXPECT_FALSE(External(zFullBound, 1e307).IsFull());
    EXPECT_FALSE(External(1e307, zFullBound).IsFull());
    EXPECT_FALSE(External(-1e307, 1e307).IsFull());
    EXPECT_FALSE(External(-1e307, -1e307).IsFull());
}

TEST(RangeR1, FullExternalIsFullAndNotValid) {
    RangeR1 range = External(0.0, 1.0);
    range.SetFull(true);
    EXPECT_TRUE(range.IsFull());
    EXPECT_FALSE(range.IsValid());
}

TEST(RangeR1, BetweenTheScalarAndTheRangeThresholdLimitsAreFinite) {
    EXPECT_FALSE(RangeR1(-8e306, 8e306).IsFull());
    EXPECT_FALSE(RangeR1(-8e306, 8e306).IsUnlimited(true));
    EXPECT_TRUE(RangeR1(-8e306, 8e306).Is(-1e307, 1e307, 0.0));
}

TEST(RangeR1, UnlimitedIsLongerThanItsBound) {
    EXPECT_TRUE(RangeR1(0.0, 1e307).IsUnlimited());
    EXPECT_TRUE(RangeR1(-1e307, 1e307).IsUnlimited());
    EXPECT_FALSE(RangeR1(0.0, 2e306).IsUnlimited());
    EXPECT_FALSE(RangeR1().IsUnlimited());
    const double bound = std::bit_cast<double>(std::uint64_t{0x7F9116AC579AAC1E});
    EXPECT_FALSE(RangeR1(0.0, bound).IsUnlimited());
    EXPECT_TRUE(RangeR1(0.0, std::nextafter(bound, 1e307)).IsUnlimited());
}

TEST(RangeR1, UnlimitedOnOneSide) {
    EXPECT_TRUE(RangeR1(-1e307, 0.0).IsUnlimited(true));
    EXPECT_FALSE(RangeR1(-1e307, 0.0).IsUnlimited(false));
    EXPECT_TRUE(RangeR1(0.0, 1e307).IsUnlimited(false));
    EXPECT_FALSE(RangeR1(0.0, 1e307).IsUnlimited(true));
    EXPECT_FALSE(RangeR1(-zFullBound, zFullBound).IsUnlimited(true));
    EXPECT_FALSE(RangeR1(-zFullBound, zFullBound).IsUnlimited(false));
}

TEST(RangeR1, ValidIsInOrderAndNotAtOneInfinity) {
    EXPECT_TRUE(RangeR1(0.0, 1.0).IsValid());
    EXPECT_TRUE(RangeR1(0.0, 0.0).IsValid());
    EXPECT_TRUE(RangeR1(-1e307, 1e307).IsValid());
    EXPECT_TRUE(RangeR1(1.0, 1.0 - 5e-11).IsValid());
    EXPECT_TRUE(RangeR1(zToler, 0.0).IsValid());
    EXPECT_FALSE(RangeR1(2.0, 1.0).IsValid());
    EXPECT_FALSE(RangeR1().IsValid());
    EXPECT_FALSE(RangeR1(1e307, 1e307).IsValid());
    EXPECT_FALSE(RangeR1(-1e307, -1e307).IsValid());
    EXPECT_TRUE(RangeR1(zFullBound, 1e307).IsValid());
    EXPECT_TRUE(RangeR1(-1e307, -zFullBound).IsValid());
    EXPECT_TRUE(RangeR1(-1e307, -8e306).IsValid());
    EXPECT_FALSE(RangeR1(1.5 * zToler, 0.0).IsValid());
    EXPECT_TRUE(RangeR1(kNaN, kNaN).IsValid());
}

TEST(RangeR1, SingletonIsShorterThanTheTolerance) {
    EXPECT_TRUE(RangeR1(0.0, kBelowToler).IsSingleton());
    EXPECT_TRUE(RangeR1(kBelowToler, 0.0).IsSingleton());
    EXPECT_FALSE(RangeR1(0.0, zToler).IsSingleton());
    EXPECT_FALSE(RangeR1(1.0, 0.0).IsSingleton());
    EXPECT_TRUE(RangeR1(0.0, 0.25).IsSingleton2(0.5));
    EXPECT_FALSE(RangeR1(0.0, 0.5).IsSingleton2(0.5));
}

TEST(RangeR1, SingletonAtAPlaceIncludesItsTolerance) {
    EXPECT_TRUE(RangeR1(0.0, 1.0).IsSingleton(0.5, 0.5));
    EXPECT_FALSE(RangeR1(0.0, 1.0).IsSingleton(0.5, 0.4375));
    EXPECT_FALSE(RangeR1(0.0, 1.0).IsSingleton(0.0, 0.5));
    EXPECT_TRUE(RangeR1(4.0, 4.25).IsSingleton(4.0, 0.5));
    EXPECT_FALSE(RangeR1(-4.0, 4.0).IsSingleton(4.0, 0.5));
    EXPECT_FALSE(RangeR1(8.0, 4.0).IsSingleton(4.0, 0.5));
    EXPECT_FALSE(RangeR1(4.0, -4.0).IsSingleton(4.0, 0.5));
    EXPECT_FALSE(RangeR1(4.0, 8.0).IsSingleton(4.0, 0.5));
    EXPECT_TRUE(RangeR1(0.0, 1.0).IsSingleton(kNaN, 0.5));
}

// Points.

TEST(RangeR1, InHoldsThePointsBetweenTheLimits) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.In(0.5, zToler));
    EXPECT_TRUE(range.In(0.0, zToler));
    EXPECT_TRUE(range.In(1.0, zToler));
    EXPECT_FALSE(range.In(2.0, zToler));
    EXPECT_FALSE(range.In(-1.0, zToler));
    EXPECT_FALSE(range.In(kNaN, zToler));
}

TEST(RangeR1, InIncludesExactlyTheTolerance) {
    const RangeR1 range(0.0, 0.0);
    EXPECT_TRUE(range.In(zToler, zToler));
    EXPECT_TRUE(range.In(-zToler, zToler));
    EXPECT_FALSE(range.In(kAboveToler, zToler));
    EXPECT_FALSE(range.In(-kAboveToler, zToler));
    EXPECT_EQ(range.FindLimit(zToler, zToler), 2);
}

TEST(RangeR1, InOrdersTheLimitsForItself) {
    EXPECT_TRUE(RangeR1(2.0, 1.0).In(1.5, 1e-10));
    EXPECT_FALSE(RangeR1(2.0, 1.0).In(2.5, 1e-10));
}

TEST(RangeR1, InOrdersTheLimitsOfTheCanonicalEmptyRangeToo) {
    EXPECT_TRUE(RangeR1().In(0.5, zToler));
    EXPECT_TRUE(RangeR1(0.0, 1.0).IsInsideOf(RangeR1()));
    EXPECT_TRUE(RangeR1() >= RangeR1(0.0, 1.0));
}

TEST(RangeR1, ExternalHoldsThePointsOutsideItsHole) {
    RangeR1 range(0.0, 1.0);
    range.SetExternal(true);
    EXPECT_FALSE(range.In(0.5, zToler));
    EXPECT_TRUE(range.In(2.0, zToler));
    EXPECT_TRUE(range.In(-2.0, zToler));
    EXPECT_TRUE(range.In(0.0, zToler));
    EXPECT_TRUE(range.In(1.0, zToler));
    EXPECT_TRUE(range.In(kNaN, zToler));
}

TEST(RangeR1, ExternalBorderIsClosedAndStrict) {
    const RangeR1 range = External(0.0, 1.0);
    EXPECT_TRUE(range.In(0.0625, 0.125));
    EXPECT_TRUE(range.In(0.9375, 0.125));
    EXPECT_FALSE(range.In(0.125, 0.125));
    EXPECT_FALSE(range.In(0.875, 0.125));
    // Just outside the hole too: at exactly the tolerance the point is between, but not near.
    EXPECT_FALSE(range.In(-0.125, 0.125));
    EXPECT_FALSE(range.In(1.125, 0.125));
    EXPECT_TRUE(range.In(std::nextafter(-0.125, -1.0), 0.125));
}

TEST(RangeR1, StaticInTakesTheLimitsInEitherOrder) {
    EXPECT_TRUE(RangeR1::In(0.5, 1.0, 0.0, 0.25));
    EXPECT_TRUE(RangeR1::In(-0.25, 0.0, 1.0, 0.25));
    EXPECT_TRUE(RangeR1::In(1.25, 1.0, 0.0, 0.25));
    EXPECT_FALSE(RangeR1::In(1.5, 0.0, 1.0, 0.25));
    EXPECT_FALSE(RangeR1::In(-0.5, 0.0, 1.0, 0.25));
    EXPECT_FALSE(RangeR1::In(kNaN, 0.0, 1.0, 0.25));
}

TEST(RangeR1, InNoTolerIncludesTheLimitsAndNoMore) {
    EXPECT_TRUE(RangeR1::InNoToler(0.0, 1.0, 0.0));
    EXPECT_TRUE(RangeR1::InNoToler(1.0, 0.0, 1.0));
    EXPECT_FALSE(RangeR1::InNoToler(std::nextafter(1.0, 2.0), 0.0, 1.0));
    EXPECT_FALSE(RangeR1::InNoToler(-1e-300, 0.0, 1.0));
    EXPECT_FALSE(RangeR1::InNoToler(kNaN, 0.0, 1.0));
}

TEST(RangeR1, InOpenLeavesOutTheLimits) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.InOpen(0.5, 0.125));
    EXPECT_FALSE(range.InOpen(0.0625, 0.125));
    EXPECT_FALSE(range.InOpen(0.9375, 0.125));
    EXPECT_FALSE(range.InOpen(1.0625, 0.125));
    EXPECT_FALSE(range.InOpen(2.0, 0.125));
}

TEST(RangeR1, InOpenIncludesExactlyTheToleranceOnBothSidesOfALimit) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.InOpen(0.125, 0.125));
    EXPECT_TRUE(range.InOpen(-0.125, 0.125));
    EXPECT_TRUE(range.InOpen(1.125, 0.125));
}

TEST(RangeR1, InOpenIgnoresTheFlagAndTheOrder) {
    EXPECT_TRUE(External(0.0, 1.0).InOpen(0.5, 0.125));
    EXPECT_FALSE(External(0.0, 1.0).InOpen(2.0, 0.125));
    EXPECT_TRUE(RangeR1(1.0, 0.0).InOpen(0.5, 0.125));
}

TEST(RangeR1, IsInIsTheStaticInButHoldsANaN) {
    for (const double x : {-1.0, -zToler, 0.0, 0.5, 1.0, 2.0}) {
        EXPECT_EQ(RangeR1::IsIn(x, 1.0, 0.0), RangeR1::In(x, 1.0, 0.0, zToler)) << x;
    }
    EXPECT_TRUE(RangeR1::IsIn(kNaN, 0.0, 1.0));
    EXPECT_FALSE(RangeR1::In(kNaN, 0.0, 1.0, zToler));
}

TEST(RangeR1, IsInWithOpenAndClosedBounds) {
    EXPECT_TRUE(RangeR1::IsIn(-zToler, 1.0, 0.0, true, true));
    EXPECT_FALSE(RangeR1::IsIn(-kAboveToler, 1.0, 0.0, true, true));
    EXPECT_TRUE(RangeR1::IsIn(zToler, 1.0, 0.0, false, true));
    EXPECT_FALSE(RangeR1::IsIn(kBelowToler, 1.0, 0.0, false, true));
    EXPECT_TRUE(RangeR1::IsIn(zToler, 0.0, -1.0, true, true));
    EXPECT_FALSE(RangeR1::IsIn(kAboveToler, 0.0, -1.0, true, true));
    EXPECT_TRUE(RangeR1::IsIn(-zToler, 0.0, -1.0, true, false));
    EXPECT_FALSE(RangeR1::IsIn(-kBelowToler, 0.0, -1.0, true, false));
    EXPECT_TRUE(RangeR1::IsIn(kNaN, 0.0, 1.0, false, false));
}

TEST(RangeR1, SemiOpenIsClosedBelowAndOpenAbove) {
    EXPECT_TRUE(RangeR1(0.0, 1.0).IsInSemiOpen(0.5));
    EXPECT_TRUE(RangeR1(0.0, 1.0).IsInSemiOpen(-zToler));
    EXPECT_FALSE(RangeR1(0.0, 1.0).IsInSemiOpen(1.0));
    EXPECT_FALSE(RangeR1(-1.0, 0.0).IsInSemiOpen(-kBelowToler));
    EXPECT_TRUE(RangeR1(-1.0, 0.0).IsInSemiOpen(-zToler));
    EXPECT_TRUE(RangeR1(1.0, 0.0).IsInSemiOpen(0.0));
    EXPECT_FALSE(RangeR1(1.0, 0.0).IsInSemiOpen(1.0));
}

TEST(RangeR1, IsEndNearEitherLimit) {
    EXPECT_TRUE(RangeR1(0.0, 1.0).IsEnd(kBelowToler));
    EXPECT_TRUE(RangeR1(-1.0, 0.0).IsEnd(-kBelowToler));
    EXPECT_TRUE(RangeR1(0.0, 1.0).IsEnd(1.0));
    EXPECT_FALSE(RangeR1(0.0, 1.0).IsEnd(0.5));
    EXPECT_FALSE(RangeR1(0.0, 1.0).IsEnd(zToler));
}

TEST(RangeR1, NearLimitNamesTheLimit) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_EQ(range.IsNearLimit(0.0625, 0.125), eFalse);
    EXPECT_EQ(range.IsNearLimit(0.9375, 0.125), eTrue);
    EXPECT_EQ(range.IsNearLimit(0.5, 0.125), eUnknown);
    EXPECT_EQ(range.IsNearLimit(kNaN, 0.125), eUnknown);
    EXPECT_EQ(RangeR1(4.0, 8.0).IsNearLimit(4.0625, 0.125), eFalse);
    EXPECT_EQ(RangeR1(4.0, 8.0).IsNearLimit(6.0, 0.125), eUnknown);
    EXPECT_EQ(RangeR1(4.0, 8.0).IsNearLimit(7.9375, 0.125), eTrue);
}

TEST(RangeR1, NearLimitIncludesExactlyItsTolerance) {
    EXPECT_EQ(RangeR1(0.0, 1.0).IsNearLimit(0.125, 0.125), eFalse);
    EXPECT_EQ(RangeR1(0.0, 1.0).IsNearLimit(0.875, 0.125), eTrue);
}

TEST(RangeR1, NearLimitIsOneSided) {
    EXPECT_EQ(RangeR1(0.0, 1.0).IsNearLimit(-100.0, 0.1), eFalse);
    EXPECT_EQ(RangeR1(0.0, 1.0).IsNearLimit(100.0, 0.1), eTrue);
}

TEST(RangeR1, ApproachingIsHeadingForTheCentre) {
    const RangeR1 range(0.0, 4.0);
    EXPECT_TRUE(range.IsApproaching(3.0, -1.0));
    EXPECT_FALSE(range.IsApproaching(3.0, 1.0));
    EXPECT_FALSE(range.IsApproaching(3.0, 0.5));
    EXPECT_TRUE(range.IsApproaching(1.0, 1.0));
    EXPECT_FALSE(range.IsApproaching(1.0, -1.0));
}

TEST(RangeR1, ApproachingNeedsASpeed) {
    const RangeR1 range(0.0, 4.0);
    EXPECT_FALSE(range.IsApproaching(3.0, -kBelowToler));
    EXPECT_TRUE(range.IsApproaching(3.0, -zToler));
}

TEST(RangeR1, ApproachingFromTheCentreIsTrueEitherWay) {
    const RangeR1 range(-1.0, 1.0);
    EXPECT_TRUE(range.IsApproaching(0.0, 1.0));
    EXPECT_TRUE(range.IsApproaching(0.0, -1.0));
    EXPECT_FALSE(range.IsApproaching(zToler, 1.0));
    EXPECT_FALSE(range.IsApproaching(-zToler, -1.0));
}

TEST(RangeR1, ApproachingTakesTheCentreInTheFormThatOverflows) {
    const RangeR1 range(1e308, 1e308);
    EXPECT_TRUE(range.IsApproaching(1.5e308, 1.0));
    EXPECT_FALSE(range.IsApproaching(1.5e308, -1.0));
}

TEST(RangeR1, PointLocationGoesFromBelowToAbove) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_EQ(range.GetPointLocation(-1.0, 0.125), RangeR1::eLocnBelow);
    EXPECT_EQ(range.GetPointLocation(0.0, 0.125), RangeR1::eLocnAtMin);
    EXPECT_EQ(range.GetPointLocation(0.5, 0.125), RangeR1::eLocnIn);
    EXPECT_EQ(range.GetPointLocation(1.0, 0.125), RangeR1::eLocnAtMax);
    EXPECT_EQ(range.GetPointLocation(2.0, 0.125), RangeR1::eLocnAbove);
    EXPECT_EQ(range.GetPointLocation(kNaN, 0.125), RangeR1::eLocnAbove);
}

TEST(RangeR1, PointLocationAtExactlyTheToleranceGoesUp) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_EQ(range.GetPointLocation(-0.125, 0.125), RangeR1::eLocnAtMin);
    EXPECT_EQ(range.GetPointLocation(0.125, 0.125), RangeR1::eLocnIn);
    EXPECT_EQ(range.GetPointLocation(0.875, 0.125), RangeR1::eLocnAtMax);
    EXPECT_EQ(range.GetPointLocation(1.125, 0.125), RangeR1::eLocnAbove);
}

TEST(RangeR1, PointLocationTakesTheLimitsAsTheyStand) {
    EXPECT_EQ(RangeR1(1.0, 0.0).GetPointLocation(0.5, 0.125), RangeR1::eLocnBelow);
    EXPECT_EQ(External(0.0, 1.0).GetPointLocation(0.5, 0.125), RangeR1::eLocnIn);
}

TEST(RangeR1, ToleranceIsAddedToALimitBeforeTheComparison) {
    // In the form of a difference the comparison would end the other way, by rounding.
    ASSERT_GT((1.0 + zToler) - 1.0, zToler);
    ASSERT_LT((0.1 + zToler) - 0.1, zToler);
    ASSERT_LT(0.1 - (0.1 - zToler), zToler);
    EXPECT_TRUE(RangeR1(0.0, 1.0).In(1.0 + zToler, zToler));
    EXPECT_TRUE(RangeR1(1.0, 2.0).In(1.0 - zToler, zToler));
    EXPECT_TRUE(RangeR1::IsIn(1.0 + zToler, 0.0, 1.0));
    EXPECT_TRUE(RangeR1::IsIn(1.0 - zToler, 1.0, 2.0));
    EXPECT_TRUE(RangeR1(0.0, 0.1).IsInSemiOpen(0.1 - zToler));
    EXPECT_FALSE(RangeR1(1.0 + zToler, 1.0).IsEmpty());
    EXPECT_TRUE(RangeR1(1.0 + zToler, 1.0).IsValid());
    EXPECT_EQ(RangeR1(1.0, 2.0).GetPointLocation(1.0 - zToler, zToler), RangeR1::eLocnAtMin);
    EXPECT_EQ(RangeR1(0.1, 2.0).GetPointLocation(0.1 + zToler, zToler), RangeR1::eLocnIn);
    EXPECT_FALSE(External(0.1, 1.0) >= RangeR1(0.0, 0.1 + zToler));
    EXPECT_TRUE(RangeR1(0.0, 1.0).IsIntersection(RangeR1(1.0 + zToler, 2.0), false));
    EXPECT_FALSE(RangeR1(0.0, 0.1).IsEmptyIntersection(RangeR1(0.1 - zToler, 1.0), true));
}

TEST(RangeR1, ToleranceIsComparedWithTheDifferenceOfALimit) {
    // With the tolerance added to the limit the comparison would end the other way.
    EXPECT_EQ(RangeR1(0.1, 2.0).FindLimit(0.1 + zToler, zToler), 0);
    EXPECT_TRUE(RangeR1(0.1, 2.0).IsEnd(0.1 + zToler));
    EXPECT_TRUE(RangeR1(0.1, 0.1 + zToler).IsSingleton());
    EXPECT_TRUE(RangeR1(0.1, 0.1 + zToler).IsEmptyInterval());
    EXPECT_EQ(RangeR1(1.0, 2.0).IsNearLimit(1.0 + zToler, zToler), eUnknown);
}

// Ranges against ranges.

TEST(RangeR1, InsideOfHoldsBothLimits) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.IsInsideOf(RangeR1(0.0, 1.0)));
    EXPECT_TRUE(range.IsInsideOf(RangeR1(-1.0, 2.0)));
    EXPECT_TRUE(range.IsInsideOf(RangeR1(5e-11, 1.0)));
    EXPECT_FALSE(range.IsInsideOf(RangeR1(0.5, 2.0)));
    EXPECT_FALSE(range.IsInsideOf(RangeR1(-1.0, 0.5)));
    EXPECT_TRUE(RangeR1(-zToler, zToler).IsInsideOf(RangeR1(0.0, 0.0)));
    EXPECT_FALSE(RangeR1(-kAboveToler, 0.0).IsInsideOf(RangeR1(0.0, 0.0)));
    EXPECT_FALSE(RangeR1(0.0, kAboveToler).IsInsideOf(RangeR1(0.0, 0.0)));
    EXPECT_TRUE(RangeR1(0.5, 0.5).IsInsideOf(range));
    EXPECT_FALSE(RangeR1(5.0, 5.0).IsInsideOf(range));
}

TEST(RangeR1, EmptyIsInsideOfEverything) {
    EXPECT_TRUE(RangeR1().IsInsideOf(RangeR1(0.0, 1.0)));
    EXPECT_TRUE(RangeR1().IsInsideOf(RangeR1()));
    EXPECT_TRUE(RangeR1(0.0, -1.0).IsInsideOf(RangeR1(5.0, 6.0)));
}

TEST(RangeR1, InsideOfAnExternalLooksAtTheLimitsAlone) {
    EXPECT_TRUE(RangeR1(2.0, 3.0).IsInsideOf(External(0.0, 1.0)));
    EXPECT_FALSE(RangeR1(0.25, 0.5).IsInsideOf(External(0.0, 1.0)));
    EXPECT_TRUE(RangeR1(-1.0, 2.0).IsInsideOf(External(0.0, 1.0)));
}

TEST(RangeR1, IsInIsInsideOfTheOtherWayRound) {
    EXPECT_TRUE(RangeR1(-1.0, 2.0).IsIn(RangeR1(0.0, 1.0)));
    EXPECT_FALSE(RangeR1(0.0, 1.0).IsIn(RangeR1(-1.0, 2.0)));
    EXPECT_TRUE(RangeR1(0.0, 1.0).IsIn(RangeR1()));
}

struct IntersectCase {
    const char* name;
    RangeR1 range;
    RangeR1 other;
    bool any;
    double lo;
    double hi;
};

struct RangeR1Intersect : testing::TestWithParam<IntersectCase> {};

TEST_P(RangeR1Intersect, Gives) {
    RangeR1 range = GetParam().range;
    EXPECT_EQ(range.Intersect(GetParam().other), GetParam().any);
    EXPECT_THAT(range, HasLimits(GetParam().lo, GetParam().hi));
}

INSTANTIATE_TEST_SUITE_P(
    RangeR1, RangeR1Intersect,
    testing::Values(
        IntersectCase{"ApartAbove", {0.0, 1.0}, {1.1, 2.0}, false, 1e307, -1e307},
        IntersectCase{"ApartBelow", {0.0, 1.0}, {-2.0, -1.0}, false, 1e307, -1e307},
        IntersectCase{"TouchAboveGivesAPoint", {0.0, 1.0}, {1.0, 2.0}, true, 1.0, 1.0},
        IntersectCase{"TouchBelowGivesAPoint", {0.0, 1.0}, {-1.0, 0.0}, true, 0.0, 0.0},
        IntersectCase{"OverlapAbove", {0.0, 1.0}, {0.5, 2.0}, true, 0.5, 1.0},
        IntersectCase{"OverlapBelow", {0.0, 1.0}, {-1.0, 0.5}, true, 0.0, 0.5},
        IntersectCase{"OtherInside", {0.0, 1.0}, {0.25, 0.5}, true, 0.25, 0.5},
        IntersectCase{"OtherRound", {0.0, 1.0}, {-1.0, 2.0}, true, 0.0, 1.0},
        IntersectCase{"Same", {0.0, 1.0}, {0.0, 1.0}, true, 0.0, 1.0},
        IntersectCase{"TieAtTheStartTakesTheOthers", {0.0, 1.0}, {-5e-11, 2.0}, true, -5e-11, 1.0},
        IntersectCase{
            "TieAtTheEndInsideTakesTheOwn", {0.0, 1.0}, {0.5, 1.0 - 5e-11}, true, 0.5, 1.0},
        IntersectCase{"TieAtTheEndBelowTakesTheOthers",
                      {0.0, 1.0},
                      {-1.0, 1.0 + 5e-11},
                      true,
                      0.0,
                      1.0 + 5e-11},
        IntersectCase{"GapWithinTheTolerance", {0.0, 0.0}, {5e-11, 1.0}, true, 5e-11, 0.0},
        IntersectCase{"GapOfExactlyTheTolerance", {-1.0, 0.0}, {zToler, 1.0}, true, zToler, 0.0},
        IntersectCase{"GapBeyondTheTolerance", {-1.0, 0.0}, {2e-10, 1.0}, false, 1e307, -1e307},
        IntersectCase{
            "GapBelowOfExactlyTheTolerance", {0.0, 1.0}, {-1.0, -zToler}, true, 0.0, -zToler},
        IntersectCase{"WithEmpty", {0.0, 1.0}, {1e307, -1e307}, false, 1e307, -1e307},
        IntersectCase{"OfEmpty", {1e307, -1e307}, {0.0, 1.0}, false, 1e307, -1e307},
        IntersectCase{"SecondEmptyFormInside", {-2.0, 1.0}, {0.0, -1.0}, false, 0.0, -1.0},
        IntersectCase{"OwnSecondEmptyFormStays", {0.0, -1.0}, {-2.0, 1.0}, false, 0.0, -1.0},
        IntersectCase{"OwnSecondEmptyFormApart", {0.0, -1.0}, {-2.0, -1.0}, false, 1e307, -1e307},
        IntersectCase{"WithFull", {0.0, 1.0}, {-1e307, 1e307}, true, 0.0, 1.0},
        IntersectCase{"OfFull", {-1e307, 1e307}, {0.0, 1.0}, true, 0.0, 1.0}),
    [](const auto& test) { return test.param.name; });

TEST(RangeR1, IntersectTakesTheFlagOfARangeInsideIt) {
    RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.Intersect(External(0.25, 0.5)));
    EXPECT_TRUE(range.IsExternal());
}

TEST(RangeR1, IntersectKeepsItsFlagOtherwise) {
    for (const RangeR1& other : {External(0.5, 2.0), External(-1.0, 0.5), External(-1.0, 2.0),
                                 External(5.0, 6.0), External(0.0, 1.0)}) {
        RangeR1 range(0.0, 1.0);
        range.Intersect(other);
        EXPECT_FALSE(range.IsExternal());
    }
}

TEST(RangeR1, IsIntersectionCountsTouching) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.IsIntersection(RangeR1(0.5, 2.0), false));
    EXPECT_TRUE(range.IsIntersection(RangeR1(1.0, 2.0), false));
    EXPECT_TRUE(range.IsIntersection(RangeR1(-1.0, 0.0), false));
    EXPECT_FALSE(range.IsIntersection(RangeR1(1.5, 2.0), false));
    EXPECT_FALSE(range.IsIntersection(RangeR1(-2.0, -1.0), false));
    EXPECT_FALSE(range.IsIntersection(RangeR1(), false));
    EXPECT_FALSE(RangeR1().IsIntersection(range, false));
    EXPECT_FALSE(range.IsIntersection(RangeR1(0.75, 0.25), false));
}

TEST(RangeR1, IsIntersectionAcrossAGapOfExactlyTheTolerance) {
    EXPECT_TRUE(RangeR1(-1.0, 0.0).IsIntersection(RangeR1(zToler, 1.0), false));
    EXPECT_TRUE(RangeR1(0.0, 1.0).IsIntersection(RangeR1(-1.0, -zToler), false));
    EXPECT_FALSE(RangeR1(-1.0, 0.0).IsIntersection(RangeR1(kAboveToler, 1.0), false));
    EXPECT_FALSE(RangeR1(0.0, 1.0).IsIntersection(RangeR1(-1.0, -kAboveToler), false));
}

TEST(RangeR1, IsIntersectionWithASingleton) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.IsIntersection(RangeR1(0.5, 0.5), false));
    EXPECT_FALSE(range.IsIntersection(RangeR1(0.5, 0.5), true));
}

TEST(RangeR1, StrictIsIntersectionNeedsALength) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.IsIntersection(RangeR1(0.5, 2.0), true));
    EXPECT_FALSE(range.IsIntersection(RangeR1(1.0, 2.0), true));
    EXPECT_FALSE(range.IsIntersection(RangeR1(5.0, 6.0), true));
    EXPECT_TRUE(RangeR1(-1.0, zToler).IsIntersection(RangeR1(0.0, 1.0), true));
    EXPECT_FALSE(RangeR1(-1.0, kBelowToler).IsIntersection(RangeR1(0.0, 1.0), true));
}

TEST(RangeR1, StrictIsIntersectionAtInfinity) {
    EXPECT_TRUE(RangeR1(-1e307, 0.0).IsIntersection(RangeR1(-1e307, 5.0), true));
    EXPECT_FALSE(RangeR1(-1e307, -2e306).IsIntersection(RangeR1(-1e307, 5.0), true));
    EXPECT_FALSE(RangeR1(2e306, 8e306).IsIntersection(RangeR1(0.0, 1e307), true));
    EXPECT_FALSE(RangeR1().IsIntersection(RangeR1(0.0, 1.0), true));
}

TEST(RangeR1, EmptyIntersectionIsTheOppositeWithoutStrictness) {
    for (const RangeR1& other : {RangeR1(0.5, 2.0), RangeR1(1.0, 2.0), RangeR1(3.0, 4.0), RangeR1(),
                                 RangeR1(0.5, 0.5), RangeR1(0.75, 0.25)}) {
        EXPECT_NE(RangeR1(0.0, 1.0).IsEmptyIntersection(other, false),
                  RangeR1(0.0, 1.0).IsIntersection(other, false));
    }
}

TEST(RangeR1, StrictEmptyIntersectionOfRangesThatTouch) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.IsEmptyIntersection(RangeR1(1.0, 2.0), true));
    EXPECT_TRUE(range.IsEmptyIntersection(RangeR1(-1.0, 0.0), true));
    EXPECT_FALSE(range.IsEmptyIntersection(RangeR1(0.5, 2.0), true));
    EXPECT_FALSE(range.IsEmptyIntersection(RangeR1(-1.0, 0.5), true));
    EXPECT_TRUE(range.IsEmptyIntersection(RangeR1(5.0, 6.0), true));
}

TEST(RangeR1, StrictEmptyIntersectionWithNoLength) {
    const RangeR1 range(0.0, 1.0);
    EXPECT_TRUE(range.IsEmptyIntersection(RangeR1(0.5, 0.5), true));
    EXPECT_TRUE(RangeR1(0.5, 0.5).IsEmptyIntersection(range, true));
    EXPECT_TRUE(range.IsEmptyIntersection(RangeR1(), true));
    EXPECT_TRUE(RangeR1().IsEmptyIntersection(range, true));
}

TEST(RangeR1, StrictEmptyIntersectionIsFalseForAnOverlapOfExactlyTheTolerance) {
    EXPECT_FALSE(RangeR1(-1.0, zToler).IsEmptyIntersection(RangeR1(0.0, 1.0), true));
    EXPECT_TRUE(RangeR1(-1.0, kBelowToler).IsEmptyIntersection(RangeR1(0.0, 1.0), true));
    EXPECT_FALSE(RangeR1(0.0, 1.0).IsEmptyIntersection(RangeR1(-1.0, zToler), true));
}

// The archive.

std::vector<BYTE> Stored(RangeR1 range) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    range.Serialize(archive);
    archive.Close();
    std::vector<BYTE> bytes(static_cast<std::size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

TEST(RangeR1, ArchiveHoldsTheTwoLimitsAndNothingElse) {
    const std::vector<BYTE> bytes = Stored(External(1.0, -2.5));
    EXPECT_THAT(bytes, testing::ElementsAre(0, 0, 0, 0, 0, 0, 0xF0, 0x3F,  //
                                            0, 0, 0, 0, 0, 0, 0x04, 0xC0));
}

TEST(RangeR1, ArchiveGivesTheLimitsBackAndKeepsTheFlag) {
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store);
        RangeR1(0.1, -1e307).Serialize(archive);
    }
    file.SeekToBegin();
    CArchive archive(&file, CArchive::load);
    RangeR1 range = External(5.0, 6.0);
    range.Serialize(archive);
    EXPECT_THAT(range, HasLimits(0.1, -1e307));
    EXPECT_TRUE(range.IsExternal());
}

TEST(RangeR1, ArchiveThatEndsEarlyRaisesItsException) {
    CMemFile file;
    file.Write("12345678", 8);
    file.SeekToBegin();
    CArchive archive(&file, CArchive::load);
    RangeR1 range;
    try {
        range.Serialize(archive);
        ADD_FAILURE() << "no exception";
    } catch (CArchiveException* exception) {
        EXPECT_EQ(exception->m_cause, CArchiveException::endOfFile);
        exception->Delete();
    }
}

}  // namespace
}  // namespace ZT
