// Typed ranges: the record, its states, units and points.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>
#include <zt/ranges/RangeFamily_test.h>

#include <rapidcheck.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing_support::Degrees;
using testing_support::External;
using testing_support::HasLimits;
using testing_support::Is;
using testing_support::IsRange;
using testing_support::kEmpty;
using testing_support::kFull;
using testing_support::kPartial;
using testing_support::Outside;
using testing_support::Radians;
using testing_support::RawRange;
using testing_support::SameDouble;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr auto kOtherType = static_cast<EScalarType>(2);

// The record.

TEST(Range, FieldsFollowTheTableInOrder) {
    EXPECT_EQ(offsetof(Range, m_eState), 28u);
    EXPECT_EQ(offsetof(Range, m_bDegrees), 32u);
    EXPECT_EQ(offsetof(Range, m_eScalarType), 36u);
    EXPECT_EQ(sizeof(Range), 40u);
    EXPECT_TRUE((std::is_base_of_v<RangeR1, Range>));
    EXPECT_TRUE((std::is_same_v<decltype(Range::m_eState), RangeS1::EState>));
}

struct Recorder : Range {
    explicit Recorder(std::vector<std::string>* log) : m_log(log) {}
    ~Recorder() override { m_log->push_back("destructor"); }
    EClass GetClass() const override {
        m_log->push_back("GetClass");
        return eClassRange;
    }
    void Set(double, double) override { m_log->push_back("Set"); }
    std::vector<std::string>* m_log;
};

TEST(Range, VirtualOperationsAreGetClassSetAndTheDestructorInOrder) {
    std::vector<std::string> log;
    alignas(Recorder) std::byte memory[sizeof(Recorder)];
    auto* const range = new (memory) Recorder(&log);
    void** table = nullptr;
    std::memcpy(&table, memory, sizeof table);
    reinterpret_cast<RangeR1::EClass (*)(const Range*)>(table[0])(range);
    reinterpret_cast<void (*)(Range*, double, double)>(table[1])(range, 0.0, 1.0);
    reinterpret_cast<void (*)(Range*)>(table[2])(range);
    EXPECT_THAT(log, testing::ElementsAre("GetClass", "Set", "destructor"));
}

TEST(Range, ScalarTypesHaveTheirValues) {
    EXPECT_EQ(sizeof(EScalarType), 4u);
    EXPECT_EQ(eScalarReal, 0);
    EXPECT_EQ(eScalarAngle, 1);
}

TEST(Range, ClassIsRange) {
    EXPECT_EQ(Range().GetClass(), RangeR1::eClassRange);
}

// Making and storing.

TEST(Range, NewRangeIsTheFullRealOne) {
    const Range range;
    EXPECT_THAT(range, IsRange(-1e307, 1e307, kFull));
    EXPECT_FALSE(range.m_bExternal);
    EXPECT_FALSE(range.m_bDegrees);
    EXPECT_EQ(range.GetScalarType(), eScalarReal);
    EXPECT_TRUE(range.IsFull());
}

TEST(Range, NewAngularRangeHasTheHugeLimitsAndIsFullButNotValid) {
    const Range range(eScalarAngle);
    EXPECT_THAT(range, IsRange(-1e307, 1e307, kFull));
    EXPECT_FALSE(range.m_bDegrees);
    EXPECT_EQ(range.GetScalarType(), eScalarAngle);
    EXPECT_TRUE(range.IsFull());
    EXPECT_FALSE(range.IsValid());
}

TEST(Range, RangeBetweenLimitsIsRealWithTheStateOfItsLimits) {
    EXPECT_THAT(Range(0.0, 1.0), IsRange(0.0, 1.0, kPartial));
    EXPECT_THAT(Range(2.0, 1.0), IsRange(2.0, 1.0, kEmpty));
    EXPECT_THAT(Range(-1e307, 1e307), IsRange(-1e307, 1e307, kFull));
    EXPECT_EQ(Range(0.0, 1.0).GetScalarType(), eScalarReal);
    EXPECT_FALSE(Range(0.0, 1.0).m_bDegrees);
    EXPECT_FALSE(Range(0.0, 1.0).m_bExternal);
}

TEST(Range, RangeBetweenLimitsHasTheStateThatUpdateStateGives) {
    EXPECT_THAT(Range(-2e306, 2e306), IsRange(-2e306, 2e306, kFull));
    EXPECT_THAT(Range(-1e306, 2e306), IsRange(-1e306, 2e306, kPartial));
    EXPECT_THAT(Range(1, 1 - 5e-11), IsRange(1.0, 1 - 5e-11, kPartial));
}

TEST(Range, EveryKindButTheRealOneIsAngular) {
    for (const auto type : {eScalarAngle, kOtherType, static_cast<EScalarType>(-1)}) {
        SCOPED_TRACE(type);
        Range range = RawRange(type, 3, -3);
        EXPECT_TRUE(range.In(zPi));
        EXPECT_FALSE(range.In(0));
        EXPECT_TRUE(range.InOpen(zPi));
        EXPECT_FALSE(range.InOpen(0));
        EXPECT_TRUE(range.IsValid());
        EXPECT_NEAR(range.GetPoint(0.5), zPi, 1e-14);
        EXPECT_NEAR(range.GetRatio(zPi), 0.5, 1e-14);
        EXPECT_TRUE(RawRange(type, 1, 2, kFull) >= Range(5, 6));
        EXPECT_TRUE(RawRange(type, 1, 2, kFull).IsFull());
        EXPECT_TRUE(RawRange(type, 1, 2, kEmpty).IsEmpty());
    }
}

TEST(Range, CopyConstructorTakesAllFields) {
    const Range copy(Outside(Degrees(1.0, 1.0, kEmpty)));
    EXPECT_THAT(copy, IsRange(1.0, 1.0, kEmpty));
    EXPECT_TRUE(copy.m_bExternal);
    EXPECT_TRUE(copy.m_bDegrees);
    EXPECT_EQ(copy.m_eScalarType, eScalarAngle);
}

TEST(Range, SetOnARealRangeKeepsTheState) {
    Range range;
    range.Set(1, 2);
    EXPECT_THAT(range, IsRange(1.0, 2.0, kFull));
    EXPECT_FALSE(range.IsFull());
    range.UpdateState();
    EXPECT_THAT(range, IsRange(1.0, 2.0, kPartial));
}

TEST(Range, SetOnAnAngularRangeBringsTheLimitsIntoCanonicalForm) {
    Range range(eScalarAngle);
    range.Set(0.0, 1.0);
    EXPECT_THAT(range, IsRange(0.0, S1::Factorize(1.0), kPartial));
    range.Set(4.0, -7.0);
    EXPECT_THAT(range, IsRange(S1::Factorize(4.0), S1::Factorize(-7.0), kPartial));
    EXPECT_NEAR(range.m_min, 4.0 - z2Pi, 1e-12);
    EXPECT_NEAR(range.m_max, z2Pi - 7.0, 1e-12);
}

TEST(Range, SetTellsTheFullAngleByItsLowerLimitInsideOfTheSeam) {
    Range range = Radians(1, 2);
    range.Set(-3.14159265343979, zPi);
    EXPECT_THAT(range, IsRange(zPi, zPi, kFull));
    range = Radians(1, 2);
    range.SetFullAngle();
    EXPECT_THAT(range, IsRange(zPi, zPi, kFull));
    range.Set(-zPi + 9e-10, zPi);
    EXPECT_THAT(range, IsRange(zPi, zPi, kFull));
    range.Set(-zPi + 1.1e-9, zPi);
    EXPECT_EQ(range.m_eState, kPartial);
    range.Set(-zPi + 2e-10, zPi - 2e-10);
    EXPECT_EQ(range.m_eState, kPartial);
}

TEST(Range, SetTellsTheFullAngleAlsoByAnUpperLimitWithinTheToleranceOfPi) {
    Range range = Radians(1, 2);
    range.Set(-zPi + 2e-10, zPi - 5e-11);
    EXPECT_THAT(range, IsRange(zPi, zPi, kFull));
}

TEST(Range, SetFromMinusPiToPiIsAPartialRangeThatIsNotValid) {
    Range range(eScalarAngle);
    range.Set(-zPi, zPi);
    EXPECT_THAT(range, IsRange(zPi, zPi, kPartial));
    EXPECT_FALSE(range.IsValid());
}

TEST(Range, SetTakesRadiansAlsoInDegrees) {
    Range range = Degrees(1, 2);
    range.Set(10, 20);
    EXPECT_THAT(range, IsRange(S1::Factorize(10), S1::Factorize(20), kPartial));
    EXPECT_TRUE(range.m_bDegrees);
    range.Set(-3.14159265343979, zPi);
    EXPECT_THAT(range, IsRange(180.0, 180.0, kFull));
}

TEST(Range, SetOnAnotherTypeBehavesAsOnAnAngleButStoresNoFullLimits) {
    Range range = RawRange(kOtherType, 1, 2);
    range.Set(7.0, 1.0);
    EXPECT_THAT(range, IsRange(S1::Factorize(7.0), S1::Factorize(1.0), kPartial));
    range = RawRange(kOtherType, 1, 2);
    range.Set(-3.14159265343979, zPi);
    EXPECT_THAT(range, IsRange(1.0, 2.0, kFull));
}

TEST(Range, SetEmptyOnARealRangeKeepsTheState) {
    Range range(0.0, 1.0);
    range.SetEmpty();
    EXPECT_THAT(range, IsRange(1e307, -1e307, kPartial));
    EXPECT_TRUE(range.IsEmpty());
}

TEST(Range, SetEmptyOnAnAngularRangeStoresPiAndTheState) {
    Range radians = Radians(0, 1);
    radians.SetEmpty();
    EXPECT_THAT(radians, IsRange(zPi, zPi, kEmpty));
    Range degrees = Degrees(0, 1);
    degrees.SetEmpty();
    EXPECT_THAT(degrees, IsRange(180.0, 180.0, kEmpty));
}

TEST(Range, SetFullOnARealRangeKeepsTheState) {
    Range range(0.0, 1.0);
    range.SetFull();
    EXPECT_THAT(range, IsRange(-1e307, 1e307, kPartial));
    EXPECT_TRUE(range.IsFull());
    Range external = Outside(Range(0.0, 1.0));
    external.SetFull();
    EXPECT_THAT(external, IsRange(1e307, 1e307, kPartial));
}

TEST(Range, SetFullOnAnAngularRangeStoresPiAndTheState) {
    Range radians = Radians(0, 1);
    radians.SetFull();
    EXPECT_THAT(radians, IsRange(zPi, zPi, kFull));
    Range degrees = Degrees(0, 1);
    degrees.SetFull();
    EXPECT_THAT(degrees, IsRange(180.0, 180.0, kFull));
}

TEST(Range, SetEmptyAndSetFullOnAnotherTypeStoreTheStateOnly) {
    Range range = RawRange(kOtherType, 0, 1);
    range.SetEmpty();
    EXPECT_THAT(range, IsRange(0.0, 1.0, kEmpty));
    range.SetFull();
    EXPECT_THAT(range, IsRange(0.0, 1.0, kFull));
}

TEST(Range, SetFullDoesNotReadItsArgument) {
    for (const bool argument : {false, true}) {
        Range real(0.0, 1.0);
        real.SetFull(argument);
        EXPECT_THAT(real, IsRange(-1e307, 1e307, kFull));
        Range external = Outside(Range(0.0, 1.0));
        external.SetFull(argument);
        EXPECT_THAT(external, IsRange(1e307, 1e307, kFull));
        Range radians = Radians(0, 1);
        radians.SetFull(argument);
        EXPECT_THAT(radians, IsRange(zPi, zPi, kFull));
        Range degrees = Degrees(0, 1);
        degrees.SetFull(argument);
        EXPECT_THAT(degrees, IsRange(180.0, 180.0, kFull));
        Range other = RawRange(kOtherType, 0, 1);
        other.SetFull(argument);
        EXPECT_THAT(other, IsRange(0.0, 1.0, kFull));
    }
}

TEST(Range, SetScalarTypeConvertsNothing) {
    Range range(2.0, 1.0);
    range.SetScalarType(eScalarAngle);
    EXPECT_EQ(range.GetScalarType(), eScalarAngle);
    EXPECT_THAT(range, IsRange(2.0, 1.0, kEmpty));
    EXPECT_FALSE(range.m_bDegrees);
}

TEST(Range, SerializeLeavesTheArchiveAsItWas) {
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store);
        Range(1.0, 2.0).Serialize(archive);
    }
    EXPECT_EQ(file.GetLength(), 0u);
    CArchive archive(&file, CArchive::load);
    Range range(1.0, 2.0);
    range.Serialize(archive);
    EXPECT_THAT(range, IsRange(1.0, 2.0, kPartial));
}

TEST(Range, AttachOuterUnknownDoesNothing) {
    Range range(1.0, 2.0);
    range.AttachOuterUnknown(nullptr);
    EXPECT_THAT(range, IsRange(1.0, 2.0, kPartial));
}

// Copies: one operation under two names.

TEST(RangeCopy, OfARangeTakesEverything) {
    Range copy;
    copy.Copy(Outside(Degrees(10, 20)));
    EXPECT_THAT(copy, IsRange(10.0, 20.0, kPartial));
    EXPECT_TRUE(copy.m_bExternal);
    EXPECT_TRUE(copy.m_bDegrees);
    EXPECT_EQ(copy.m_eScalarType, eScalarAngle);

    Range assigned;
    assigned = Range(2.0, 1.0);
    EXPECT_THAT(assigned, IsRange(2.0, 1.0, kEmpty));
}

TEST(RangeCopy, HasNoResult) {
    EXPECT_TRUE((std::is_void_v<decltype(std::declval<Range&>().Copy(std::declval<RangeR1&>()))>));
    EXPECT_TRUE((std::is_void_v<decltype(std::declval<Range&>() = std::declval<const Range&>())>));
}

TEST(RangeCopy, WithinTheToleranceKeepsTheLimitsButTakesTheRest) {
    Range copy = Radians(1, 2);
    copy = RawRange(eScalarReal, 1 + 5e-11, 2, kEmpty, true);
    EXPECT_THAT(copy, IsRange(1.0, 2.0, kEmpty));
    EXPECT_TRUE(copy.m_bDegrees);
    EXPECT_EQ(copy.m_eScalarType, eScalarReal);
}

TEST(RangeCopy, OfAnotherClassIntoARealRangeKeepsTheState) {
    Range copy;
    copy.Copy(External(2, 1));
    EXPECT_THAT(copy, IsRange(2.0, 1.0, kFull));
    EXPECT_TRUE(copy.m_bExternal);
    copy.Copy(RangeS1(1.0, 2.0));
    EXPECT_EQ(copy.m_eState, kFull);
}

TEST(RangeCopy, OfDifferentPointsIntoAnAngularRangeIsPartialAndNotReduced) {
    Range copy = Radians(zPi, zPi, kEmpty);
    copy.Copy(RangeR1(5, 10));
    EXPECT_THAT(copy, IsRange(5.0, 10.0, kPartial));
    copy = Range(eScalarAngle);
    EXPECT_THAT(copy, IsRange(-1e307, 1e307, kPartial));
    copy = Radians(1, 2, kFull);
    EXPECT_THAT(copy, IsRange(1.0, 2.0, kPartial));
}

TEST(RangeCopy, OfAPointIntoAnAngularRangeLeavesTheState) {
    for (const auto state : {kFull, kEmpty, kPartial}) {
        Range copy = Radians(1, 2, state);
        copy.Copy(RangeR1(5, 5));
        EXPECT_THAT(copy, IsRange(5.0, 5.0, state));
        copy = Radians(1, 1, state);
        EXPECT_THAT(copy, IsRange(1.0, 1.0, state));
    }
}

TEST(RangeCopy, OfAPointAtPiIntoAnAngularRangeIsFull) {
    Range copy = Radians(1, 2, kEmpty);
    copy.Copy(RangeR1(zPi - 5e-11, zPi));
    EXPECT_THAT(copy, IsRange(zPi, zPi, kFull));
    copy = Radians(1, 2, kEmpty);
    copy.Copy(RangeR1(zPi, -zPi));
    EXPECT_THAT(copy, IsRange(zPi, zPi, kFull));
}

TEST(RangeCopy, OfAPointAtTheSeamBesidePiIntoAnAngularRangeLeavesTheState) {
    Range copy = Radians(1, 2, kEmpty);
    copy.Copy(RangeR1(zPi - 5e-10, zPi));
    EXPECT_THAT(copy, IsRange(zPi - 5e-10, zPi, kEmpty));
}

TEST(RangeCopy, AsksWhetherTheSourceStartsAtPiAndNotTheLimitsThatWereKept) {
    Range copy = Radians(zPi - 1.5e-10, zPi, kEmpty);
    copy.Copy(RangeR1(zPi - 8e-11, zPi));
    EXPECT_THAT(copy, IsRange(zPi, zPi, kFull));
}

TEST(RangeCopy, OfAPointAtMinusPiIntoAnAngularRangeLeavesTheState) {
    Range copy = Radians(1, 2, kEmpty);
    copy.Copy(RangeR1(-zPi, zPi));
    EXPECT_THAT(copy, IsRange(-zPi, zPi, kEmpty));
}

TEST(RangeCopy, OfAnEmptyRangeIsFullInRadiansAndEmptyInDegrees) {
    Range radians = Radians(0, 1);
    radians.SetEmpty();
    Range copy;
    copy = radians;
    EXPECT_THAT(copy, IsRange(zPi, zPi, kFull));

    Range degrees = Degrees(0, 1);
    degrees.SetEmpty();
    copy = degrees;
    EXPECT_THAT(copy, IsRange(180.0, 180.0, kEmpty));
}

TEST(RangeCopy, ComparesWithPiInRadiansWhateverTheUnit) {
    Range copy = Degrees(1, 2);
    copy.Copy(RangeR1(zPi, zPi));
    EXPECT_THAT(copy, IsRange(180.0, 180.0, kFull));
    copy = Degrees(1, 2);
    copy.Copy(RangeR1(180, -180));
    EXPECT_THAT(copy, IsRange(180.0, -180.0, kPartial));
    copy.m_eState = kEmpty;
    copy.Copy(RangeR1(180, 180));
    EXPECT_THAT(copy, IsRange(180.0, 180.0, kEmpty));
}

TEST(RangeCopy, OfAPointAtPiIntoAnotherTypeStoresTheStateOnly) {
    Range copy;
    copy = RawRange(kOtherType, zPi - 5e-11, zPi, kEmpty);
    EXPECT_THAT(copy, IsRange(zPi - 5e-11, zPi, kFull));
}

TEST(RangeCopy, OfItselfChangesNothingButTheState) {
    Range range = Radians(1, 2, kEmpty);
    range.Copy(range);
    EXPECT_THAT(range, IsRange(1.0, 2.0, kPartial));
}

// The state.

TEST(RangeState, OfARealRangeIsThatOfItsLimits) {
    for (const auto state : {kFull, kEmpty, kPartial}) {
        EXPECT_FALSE(RawRange(eScalarReal, 0, 1, state).IsFull());
        EXPECT_FALSE(RawRange(eScalarReal, 0, 1, state).IsEmpty());
        EXPECT_TRUE(RawRange(eScalarReal, -1e307, 1e307, state).IsFull());
        EXPECT_TRUE(RawRange(eScalarReal, 1, 0, state).IsEmpty());
        EXPECT_TRUE(Outside(RawRange(eScalarReal, 1e307, 1e307, state)).IsFull());
    }
}

TEST(RangeState, OfAnAngularRangeIsTheStoredOne) {
    for (const auto type : {eScalarAngle, kOtherType}) {
        for (const double hi : {0.0, 1.0, 2.0}) {
            EXPECT_TRUE(RawRange(type, 1, hi, kFull).IsFull());
            EXPECT_FALSE(RawRange(type, 1, hi, kFull).IsEmpty());
            EXPECT_TRUE(RawRange(type, 1, hi, kEmpty).IsEmpty());
            EXPECT_FALSE(RawRange(type, 1, hi, kEmpty).IsFull());
            EXPECT_FALSE(RawRange(type, 1, hi, kPartial).IsFull());
            EXPECT_FALSE(RawRange(type, 1, hi, kPartial).IsEmpty());
        }
    }
}

RangeS1::EState Updated(Range range) {
    for (const auto before : {kFull, kEmpty, kPartial}) {
        Range other(range);
        other.m_eState = before;
        other.UpdateState();
        range.UpdateState();
        EXPECT_EQ(other.m_eState, range.m_eState);
    }
    return range.m_eState;
}

TEST(RangeState, UpdateOfARealRangeAsksForLimitsBeyondTheFiniteOnes) {
    EXPECT_EQ(Updated(Range(0, 1)), kPartial);
    EXPECT_EQ(Updated(Range(1, 1)), kPartial);
    EXPECT_EQ(Updated(Range(1, 0)), kEmpty);
    EXPECT_EQ(Updated(Range(1, 1 - 5e-11)), kPartial);
    EXPECT_EQ(Updated(Range(1e307, -1e307)), kEmpty);
    EXPECT_EQ(Updated(Range(-2e306, 2e306)), kFull);
    EXPECT_FALSE(Range(-2e306, 2e306).IsFull());
    EXPECT_EQ(Updated(Range(-1e306, 2e306)), kPartial);
    EXPECT_EQ(Updated(Range(-2e306, 1e306)), kPartial);
    EXPECT_EQ(Updated(Outside(RawRange(eScalarReal, 1e307, 1e307))), kPartial);
}

TEST(RangeState, UpdateOfAnAngularRangeAsksForTheFullAngle) {
    EXPECT_EQ(Updated(Radians(0, 1)), kPartial);
    EXPECT_EQ(Updated(Radians(1, 1)), kPartial);
    EXPECT_EQ(Updated(Radians(-zPi + 2e-10, zPi)), kFull);
    EXPECT_EQ(Updated(Radians(-zPi, zPi)), kFull);
    EXPECT_EQ(Updated(Radians(-zPi + 5e-10, zPi - 5e-10)), kFull);
    EXPECT_EQ(Updated(Radians(-zPi + 2e-9, zPi)), kPartial);
    EXPECT_EQ(Updated(Degrees(-180, 180)), kFull);
    EXPECT_EQ(Updated(Degrees(-179.99999998854085, 180)), kFull);
    EXPECT_EQ(Updated(Degrees(-179.9999, 180)), kPartial);
    EXPECT_EQ(Updated(RawRange(kOtherType, -zPi, zPi)), kFull);
}

TEST(RangeState, UpdateTakesAnEmptyAngularRangeAtPiForAFullOne) {
    Range radians = Radians(0, 1);
    radians.SetEmpty();
    EXPECT_EQ(Updated(radians), kFull);
    Range degrees = Degrees(0, 1);
    degrees.SetEmpty();
    EXPECT_EQ(Updated(degrees), kFull);
}

TEST(RangeState, UpdateTakesAnArcInReverseOrderForAnEmptyOne) {
    Range range = Radians(3, -3);
    EXPECT_TRUE(range.In(zPi));
    EXPECT_EQ(Updated(range), kEmpty);
    EXPECT_EQ(Updated(Degrees(170, -170)), kEmpty);
    EXPECT_EQ(Updated(Radians(1, 1 - 5e-11)), kPartial);
}

TEST(RangeState, RealRangeIsValidByItsLimits) {
    EXPECT_TRUE(Range(0, 1).IsValid());
    EXPECT_FALSE(Range(1, 0).IsValid());
    EXPECT_FALSE(Range(1e307, 1e307).IsValid());
    EXPECT_TRUE(RawRange(eScalarReal, 0, 1, kEmpty).IsValid());
}

TEST(RangeState, AngularRangeIsValidIfItsLimitsFitTheState) {
    EXPECT_TRUE(Radians(0, 1).IsValid());
    EXPECT_TRUE(Radians(3, -3).IsValid());
    EXPECT_FALSE(Radians(0, 1, kFull).IsValid());
    EXPECT_FALSE(Radians(0, 1, kEmpty).IsValid());
    EXPECT_TRUE(Radians(1, 1).IsValid());
    EXPECT_TRUE(Radians(1, 1, kFull).IsValid());
    EXPECT_TRUE(Radians(1, 1, kEmpty).IsValid());
    EXPECT_FALSE(Radians(zPi, zPi).IsValid());
    EXPECT_TRUE(Radians(zPi, zPi, kFull).IsValid());
    EXPECT_TRUE(Radians(zPi, zPi, kEmpty).IsValid());
}

TEST(RangeState, PartialPointAtTheSeamIsNotValidOnlyIfItStartsAtPi) {
    EXPECT_TRUE(Radians(zPi - 5e-10, zPi).IsValid());
    EXPECT_FALSE(Radians(zPi - 5e-11, zPi).IsValid());
}

TEST(RangeState, AngularRangeWithLimitsOutOfTheIntervalIsNotValid) {
    EXPECT_FALSE(Radians(-zPi, 0).IsValid());
    EXPECT_FALSE(Radians(0, 4).IsValid());
    EXPECT_FALSE(Radians(0, -4).IsValid());
    EXPECT_TRUE(Radians(0, zPi + 5e-11).IsValid());
    EXPECT_FALSE(Degrees(-180, 0).IsValid());
    EXPECT_FALSE(Degrees(0, 181).IsValid());
}

TEST(RangeState, ValidityInDegreesIsThatOfTheSameAngles) {
    EXPECT_TRUE(Degrees(0, 90).IsValid());
    EXPECT_TRUE(Degrees(170, -170).IsValid());
    EXPECT_FALSE(Degrees(0, 90, kFull).IsValid());
    EXPECT_FALSE(Degrees(180, 180).IsValid());
    EXPECT_TRUE(Degrees(180, 180, kFull).IsValid());
    // Both sides of the seam are one point; only a start at pi asks for another state.
    EXPECT_FALSE(Degrees(180, -180 + 1e-8).IsValid());
    EXPECT_TRUE(Degrees(-180 + 1e-8, 180).IsValid());
}

// Units.

TEST(RangeUnits, ConversionHappensOnce) {
    Range range = Radians(1, 2);
    EXPECT_TRUE(range.ToDegrees());
    EXPECT_THAT(range, IsRange(zDegPerRad, 2 * zDegPerRad, kPartial));
    EXPECT_TRUE(range.m_bDegrees);
    EXPECT_FALSE(range.ToDegrees());
    range.ToDeg();
    EXPECT_THAT(range, IsRange(zDegPerRad, 2 * zDegPerRad, kPartial));

    Range back = Degrees(90, 180);
    EXPECT_TRUE(back.ToRadians());
    EXPECT_THAT(back, IsRange(90 * zRadPerDeg, 180 * zRadPerDeg, kPartial));
    EXPECT_FALSE(back.m_bDegrees);
    EXPECT_FALSE(back.ToRadians());
    back.ToRad();
    EXPECT_THAT(back, IsRange(90 * zRadPerDeg, 180 * zRadPerDeg, kPartial));
}

TEST(RangeUnits, ShortFormsConvertAnObjectSeenAsConst) {
    Range range = Radians(1, 2);
    const Range& seen = range;
    seen.ToDeg();
    EXPECT_THAT(range, HasLimits(zDegPerRad, 2 * zDegPerRad));
    EXPECT_TRUE(range.m_bDegrees);
    seen.ToRad();
    EXPECT_THAT(range, HasLimits(zDegPerRad * zRadPerDeg, 2 * zDegPerRad * zRadPerDeg));
    EXPECT_FALSE(range.m_bDegrees);
}

TEST(RangeUnits, ShortFormsConvertTheNumberWithTheRange) {
    Range range = Radians(1, 2);
    double x = 3;
    range.ToDeg(x);
    EXPECT_THAT(x, Is(3 * zDegPerRad));
    EXPECT_TRUE(range.m_bDegrees);
    range.ToDeg(x);
    EXPECT_THAT(x, Is(3 * zDegPerRad));

    Range back = Degrees(90, 180);
    x = 45;
    EXPECT_TRUE(back.ToRad(x));
    EXPECT_THAT(x, Is(45 * zRadPerDeg));
    EXPECT_FALSE(back.m_bDegrees);
    EXPECT_FALSE(back.ToRad(x));
    EXPECT_THAT(x, Is(45 * zRadPerDeg));
}

TEST(RangeUnits, OnlyTheShortFormToRadiansTellsWhetherItConverted) {
    const Range& range = Range();
    double x = 0;
    EXPECT_TRUE((std::is_void_v<decltype(range.ToDeg(x))>));
    EXPECT_TRUE((std::is_same_v<decltype(range.ToRad(x)), bool>));
    EXPECT_TRUE((std::is_void_v<decltype(range.ToDeg())>));
    EXPECT_TRUE((std::is_void_v<decltype(range.ToRad())>));
}

TEST(RangeUnits, RealRangeIsScaledAsWellAndStaysReal) {
    Range range(1, 2);
    EXPECT_TRUE(range.ToDegrees());
    EXPECT_THAT(range, IsRange(zDegPerRad, 2 * zDegPerRad, kPartial));
    EXPECT_EQ(range.m_eScalarType, eScalarReal);
    EXPECT_TRUE(range.m_bDegrees);
}

TEST(RangeUnits, NegativePiInDegreesIsConvertedAndPositiveIsExact) {
    EXPECT_THAT(Radians(0, 1).PI(), Is(3.14159265358979));
    EXPECT_THAT(Degrees(0, 1).PI(), Is(180.0));
    EXPECT_THAT(Radians(0, 1).MPI(), Is(-3.14159265338979));
    EXPECT_THAT(Degrees(0, 1).MPI(), Is(-179.99999998854085));
    EXPECT_THAT(RawRange(eScalarReal, 0, 1, kPartial, true).PI(), Is(180.0));
    EXPECT_NEAR(Degrees(0, 1).MPI() * zRadPerDeg, Radians(0, 1).MPI(), 1e-14);
}

// Points.

TEST(RangePoints, RealRangeHoldsPointsByItsLimits) {
    const Range range(1, 2);
    EXPECT_TRUE(range.In(1));
    EXPECT_TRUE(range.In(2 + 5e-11));
    EXPECT_FALSE(range.In(2 + 2e-10));
    EXPECT_TRUE(range.InOpen(1.5));
    EXPECT_FALSE(range.InOpen(1 + 5e-11));
    EXPECT_FALSE(range.InOpen(3));
    EXPECT_FALSE(Outside(range).In(1.5));
    EXPECT_TRUE(Outside(range).In(5));
    EXPECT_TRUE(Outside(range).InOpen(1.5));
    EXPECT_FALSE(RawRange(eScalarReal, 1, 2, kFull).In(5));
}

TEST(RangePoints, FullAngularRangeHoldsEveryNumber) {
    for (const Range& range : {Radians(1, 2, kFull), Degrees(1, 2, kFull), Range(eScalarAngle)}) {
        for (const double x : {0.0, -zPi, 100.0, 1e307}) {
            EXPECT_TRUE(range.In(x));
            EXPECT_TRUE(range.InOpen(x));
        }
    }
    EXPECT_TRUE(Outside(Radians(1, 2, kFull)).In(1.5));
}

TEST(RangePoints, EmptyAngularRangeAnswersFromItsLimits) {
    EXPECT_TRUE(Radians(1, 2, kEmpty).In(1.5));
    EXPECT_TRUE(Radians(1, 2, kEmpty).InOpen(1.5));
    Range range = Radians(1, 2);
    range.SetEmpty();
    EXPECT_TRUE(range.In(zPi));
    EXPECT_FALSE(range.In(0));
}

TEST(RangePoints, ArcHoldsPointsAcrossTheSeam) {
    const Range range = Radians(3, -3);
    EXPECT_TRUE(range.In(zPi));
    EXPECT_TRUE(range.In(3));
    EXPECT_TRUE(range.In(-3 + 5e-11));
    EXPECT_FALSE(range.In(0));
    EXPECT_FALSE(range.In(-3 + 2e-10));
    EXPECT_TRUE(range.InOpen(zPi));
    EXPECT_FALSE(range.InOpen(3 + 5e-11));
    EXPECT_FALSE(range.InOpen(-3));
}

TEST(RangePoints, ArcDoesNotHoldAnAngleOutOfTheInterval) {
    const Range range = Radians(3, -3);
    EXPECT_FALSE(range.In(-zPi));
    EXPECT_FALSE(range.In(zPi + 2e-10));
    EXPECT_FALSE(Degrees(170, -170).In(-180));
    EXPECT_FALSE(Degrees(170, -170).In(190));
}

TEST(RangePoints, ExternalFlagTurnsTheArcRound) {
    EXPECT_FALSE(Outside(Radians(3, -3)).In(zPi));
    EXPECT_TRUE(Outside(Radians(3, -3)).In(0));
    EXPECT_TRUE(Outside(Degrees(170, -170)).InOpen(0));
}

TEST(RangePoints, DegreesAreConvertedForTheTest) {
    const Range range = Degrees(170, -170);
    EXPECT_TRUE(range.In(180));
    EXPECT_TRUE(range.In(175));
    EXPECT_FALSE(range.In(0));
    EXPECT_TRUE(range.InOpen(180));
    EXPECT_FALSE(range.InOpen(170));
    // The tolerance is one of radians.
    EXPECT_TRUE(range.In(170 - 5e-9));
    EXPECT_FALSE(range.In(170 - 6e-9));
    EXPECT_FALSE(range.InOpen(170 + 5e-9));
    EXPECT_TRUE(range.InOpen(170 + 6e-9));
    EXPECT_THAT(range, HasLimits(170.0, -170.0));
}

TEST(RangePoints, PointOfARealRangeIsTheBlend) {
    EXPECT_THAT(Range(1, 3).GetPoint(0.25), Is(1.5));
    EXPECT_THAT(RawRange(eScalarReal, 1, 3, kFull).GetPoint(2), Is(5.0));
}

TEST(RangePoints, PointOfAFullAngularRangeStartsInsideOfTheSeam) {
    for (const Range& range : {Radians(zPi, zPi, kFull), Degrees(180, 180, kFull)}) {
        EXPECT_THAT(range.GetPoint(0), Is(-3.14159265348979));
        EXPECT_THAT(range.GetPoint(5e-11), Is(-3.14159265348979));
        EXPECT_THAT(range.GetPoint(-1), Is(-3.14159265348979));
        EXPECT_THAT(range.GetPoint(zToler), Is((1 - zToler) * -zPi + zToler * zPi));
        EXPECT_THAT(range.GetPoint(0.5), Is(0.0));
        EXPECT_THAT(range.GetPoint(0.25), Is(0.75 * -zPi + 0.25 * zPi));
        EXPECT_THAT(range.GetPoint(1), Is(zPi));
    }
}

TEST(RangePoints, PointOfAPointArcIsItsStart) {
    EXPECT_THAT(Radians(1, 1 + 5e-11).GetPoint(0.5), Is(1.0));
    EXPECT_THAT(Degrees(90, 90).GetPoint(0.5), Is(90.0));
}

TEST(RangePoints, PointOfAnArcRunsCounterClockwiseFromItsStart) {
    EXPECT_NEAR(Radians(1, 2).GetPoint(0.25), 1.25, 1e-14);
    const Range range = Radians(3, -3);
    EXPECT_NEAR(range.GetPoint(0), 3, 1e-14);
    EXPECT_NEAR(range.GetPoint(0.5), zPi, 1e-14);
    EXPECT_NEAR(range.GetPoint(1), -3, 1e-14);
    EXPECT_NEAR(Radians(1, 2, kEmpty).GetPoint(0.5), 1.5, 1e-14);
    EXPECT_NEAR(Outside(Radians(1, 2)).GetPoint(0.5), 1.5, 1e-14);
}

TEST(RangePoints, PointIsTheStartMovedByTheRatioOfTheAngle) {
    EXPECT_TRUE(rc::check([] {
        const Range range =
            Radians(*rc::gen::inRange(-314, 315) / 100.0, *rc::gen::inRange(-314, 315) / 100.0);
        if (std::fabs(range.m_max - range.m_min) < 0.005) return;
        const double t = *rc::gen::inRange(-10, 110) / 100.0;
        S1 point(range.m_min);
        point.Translate(S1::diff(range.m_max, range.m_min, true) * t);
        RC_ASSERT(SameDouble(range.GetPoint(t), point.GetAngle()));
    }));
}

TEST(RangePoints, PointTakesDegreesForRadians) {
    S1 point(0.0);
    point.Translate(45);
    EXPECT_THAT(Degrees(0, 90).GetPoint(0.5), Is(point.GetAngle()));
}

TEST(RangePoints, RatioOfAPointIsZeroForEitherKind) {
    EXPECT_THAT(Range(1, 1).GetRatio(5), Is(0.0));
    EXPECT_THAT(Radians(zPi, zPi, kFull).GetRatio(1), Is(0.0));
    Range degrees = Degrees(10, 10 + 5e-11);
    EXPECT_THAT(degrees.GetRatio(5), Is(0.0));
    EXPECT_THAT(degrees, HasLimits(10.0, 10 + 5e-11));
}

TEST(RangePoints, RatioOfARealRangeIsThatOfItsLimits) {
    EXPECT_THAT(Range(1, 3).GetRatio(1.5), Is(0.25));
    EXPECT_THAT(Range(3, 1).GetRatio(1.5), Is(0.0));
    Range degrees = RawRange(eScalarReal, 1, 3, kPartial, true);
    EXPECT_THAT(degrees.GetRatio(1.5), Is(0.25));
    EXPECT_THAT(degrees, HasLimits(1.0, 3.0));
}

TEST(RangePoints, RatioOfAnArcIsThatOfTheAngles) {
    EXPECT_THAT(Radians(1, 3).GetRatio(1.5), Is(0.25));
    EXPECT_NEAR(Radians(3, -3).GetRatio(zPi), 0.5, 1e-14);
    EXPECT_NEAR(Radians(1, 2).GetRatio(0), z2Pi - 1, 1e-14);
    EXPECT_THAT(Radians(1, 3, kFull).GetRatio(1.5), Is(0.25));
}

TEST(RangePoints, RatioOfARangeInDegreesConvertsItToRadiansAndBack) {
    bool moved = false;
    for (int i = 1; i < 100; ++i) {
        Range range = Degrees(i, i + 50);
        const double ratio = range.GetRatio(i + 20);
        EXPECT_NEAR(ratio, 0.4, 1e-12);
        EXPECT_TRUE(range.m_bDegrees);
        EXPECT_THAT(range,
                    HasLimits(i * zRadPerDeg * zDegPerRad, (i + 50) * zRadPerDeg * zDegPerRad));
        moved |= range.m_min != i;
    }
    EXPECT_TRUE(moved);
}

TEST(RangePoints, IncludeMovesALimitToAPointOutside) {
    Range range(1, 2);
    EXPECT_TRUE(range.Include(0));
    EXPECT_THAT(range, IsRange(0.0, 2.0, kPartial));
    EXPECT_TRUE(range.Include(5));
    EXPECT_THAT(range, IsRange(0.0, 5.0, kPartial));
    EXPECT_FALSE(range.Include(3));
    EXPECT_FALSE(range.Include(-5e-11));
    EXPECT_FALSE(range.Include(5 + 5e-11));
    EXPECT_FALSE(range.Include(kNaN));
    EXPECT_THAT(range, IsRange(0.0, 5.0, kPartial));
}

TEST(RangePoints, IncludeTakesAPointJustBeyondTheTolerance) {
    Range above(0, 5);
    EXPECT_TRUE(above.Include(5 + 2e-10));
    EXPECT_THAT(above, IsRange(0.0, 5 + 2e-10, kPartial));
    Range below(0, 5);
    EXPECT_TRUE(below.Include(-2e-10));
    EXPECT_THAT(below, IsRange(-2e-10, 5.0, kPartial));
}

TEST(RangePoints, IncludeOfAPointBetweenTheLimitsOfAnEmptyAngularRangeChangesNothing) {
    Range kept = Radians(1, 2, kEmpty);
    EXPECT_FALSE(kept.Include(1.5));
    EXPECT_THAT(kept, IsRange(1.0, 2.0, kEmpty));
}

TEST(RangePoints, IncludeIntoAnEmptyRangeMakesAPointAndKeepsTheState) {
    Range canonical(0, 1);
    canonical.SetEmpty();
    EXPECT_TRUE(canonical.Include(5));
    EXPECT_THAT(canonical, IsRange(5.0, 5.0, kPartial));
    Range second(0.0, -1.0);
    EXPECT_TRUE(second.Include(5));
    EXPECT_THAT(second, IsRange(5.0, 5.0, kEmpty));
    second = Range(0.0, -1.0);
    EXPECT_TRUE(second.Include(-0.5));
    EXPECT_THAT(second, IsRange(-0.5, -0.5, kEmpty));
    Range angle = Radians(1, 2);
    angle.SetEmpty();
    EXPECT_TRUE(angle.Include(1));
    EXPECT_THAT(angle, IsRange(1.0, 1.0, kEmpty));
    EXPECT_FALSE(angle.Include(1));
}

TEST(RangePoints, IncludeGoesByTheStateOfAnAngularRangeAndNotByItsLimits) {
    Range kept = Radians(1, 2, kEmpty);
    EXPECT_TRUE(kept.Include(3));
    EXPECT_THAT(kept, IsRange(3.0, 3.0, kEmpty));
    Range partial = Radians(2, 1);
    EXPECT_TRUE(partial.Include(3));
    EXPECT_THAT(partial, IsRange(2.0, 3.0, kPartial));
}

TEST(RangePoints, IncludeTakesAnglesForNumbers) {
    Range seam = Radians(3, -3);
    EXPECT_TRUE(seam.Include(0));
    EXPECT_THAT(seam, IsRange(0.0, 0.0, kPartial));
    Range full = Radians(zPi, zPi, kFull);
    EXPECT_TRUE(full.Include(1));
    EXPECT_THAT(full, IsRange(1.0, zPi, kFull));
}

// Comparison with numbers, and arithmetic.

TEST(RangeNumbers, ComparisonAsksBothLimits) {
    const Range range(1, 2);
    EXPECT_TRUE(range < 3.0);
    EXPECT_FALSE(range < 2.0);
    EXPECT_FALSE(range < 1.5);
    EXPECT_FALSE(range < 0.0);
    EXPECT_TRUE(range <= 3.0);
    EXPECT_TRUE(range <= 2.0);
    EXPECT_FALSE(range <= 1.5);
    EXPECT_FALSE(range <= 0.0);
    EXPECT_TRUE(range > 0.0);
    EXPECT_FALSE(range > 1.0);
    EXPECT_FALSE(range > 1.5);
    EXPECT_FALSE(range > 3.0);
    EXPECT_TRUE(range >= 0.0);
    EXPECT_TRUE(range >= 1.0);
    EXPECT_FALSE(range >= 1.5);
    EXPECT_FALSE(range >= 3.0);
}

TEST(RangeNumbers, ComparisonOfAReversedRangeAsksBothLimitsToo) {
    const Range range = Radians(2, 1);
    EXPECT_FALSE(range < 1.5);
    EXPECT_FALSE(range <= 1.5);
    EXPECT_FALSE(range > 1.5);
    EXPECT_FALSE(range >= 1.5);
    EXPECT_TRUE(range < 3.0);
    EXPECT_TRUE(range > 0.0);
}

TEST(RangeNumbers, ComparisonWithANaNIsTrue) {
    const Range range(1, 2);
    EXPECT_TRUE(range < kNaN);
    EXPECT_TRUE(range <= kNaN);
    EXPECT_TRUE(range > kNaN);
    EXPECT_TRUE(range >= kNaN);
}

TEST(RangeNumbers, ArithmeticIsThatOfTheLowerLimit) {
    EXPECT_THAT(Range(5, 9) - Range(2, 100), Is(3.0));
    EXPECT_THAT(Range(5, 9) - 2.0, Is(3.0));
    EXPECT_THAT(Range(5, 9) + 2.0, Is(7.0));
    EXPECT_THAT(Degrees(90, 180) + 10.0, Is(100.0));
}

}  // namespace
}  // namespace ZT
