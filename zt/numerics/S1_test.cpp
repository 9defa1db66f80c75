// Points on the circle and the arithmetic on raw angles.

#include <zt/numerics/S1.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/collections/CList.h>
#include <rapidcheck.h>
#include <tests/ExactNumbers.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing_support::InFull;
using testing_support::Is;
using testing_support::SameDouble;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kHuge = std::numeric_limits<double>::infinity();

double Up(double x) {
    return std::nextafter(x, kHuge);
}
double Down(double x) {
    return std::nextafter(x, -kHuge);
}

// A point that holds an angle out of the canonical interval.
S1 Raw(double angle) {
    S1 point;
    point.m_angle = angle;
    return point;
}

// One pass of the reduction, in the words of the C library.
double OnePass(double angle) {
    double whole = 0.0;
    const double rest = std::modf(angle / zPi, &whole) * zPi;
    if (std::fmod(whole, 2.0) == 0.0) return zToler > std::fabs(rest - -zPi) ? zPi : rest;
    if (zToler > std::fabs(rest)) return zPi;
    return rest > 0 ? rest - zPi : zPi + rest;
}

// Whether a second pass changes the angle's bits, so that one pass and two are told apart.
bool SecondPassCounts(double angle) {
    return OnePass(angle) != OnePass(OnePass(angle));
}

// The record.

TEST(S1, HoldsTheAngleBehindTheTable) {
    EXPECT_EQ(offsetof(S1, m_angle), 8u);
    EXPECT_EQ(sizeof(S1), 16u);
    EXPECT_TRUE((std::is_same_v<decltype(S1::m_angle), double>));
}

TEST(S1, DestructorIsItsOneVirtualOperation) {
    struct Watched : S1 {
        explicit Watched(bool* ended) : m_ended(ended) {}
        ~Watched() override { *m_ended = true; }
        bool* m_ended;
    };
    bool ended = false;
    S1* const point = new Watched(&ended);
    void** const table = *reinterpret_cast<void***>(point);
    // The deleting destructor is the second entry.
    reinterpret_cast<void (*)(S1*)>(table[1])(point);
    EXPECT_TRUE(ended);
}

TEST(S1, SeamBandIsTenTolerancesToTheBit) {
    EXPECT_THAT(zSeamBand, Is(std::pow(10.0, 1.0) * zToler));
    EXPECT_EQ(std::bit_cast<std::uint64_t>(zSeamBand), 0x3E112E0BE826D695u);
}

TEST(S1, BoundsAtTheSeamHaveTheirBits) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(zPiPlus), 0x400921FB54479CADu);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(zPiMinus), 0x400921FB5440BD75u);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(-zPiMinus), 0xC00921FB5440BD75u);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(-zPiPlus), 0xC00921FB54479CADu);
}

// Making and storing.

TEST(S1, NewPointIsAtZero) {
    EXPECT_THAT(S1().GetAngle(), Is(0.0));
}

TEST(S1, AngleIsBroughtIntoTheCanonicalInterval) {
    EXPECT_THAT(S1(0.0).GetAngle(), Is(0.0));
    EXPECT_THAT(S1(zPi).GetAngle(), Is(zPi));
    EXPECT_THAT(S1(-zPi).GetAngle(), Is(zPi));
    EXPECT_THAT(S1(3 * zPi).GetAngle(), Is(zPi));
    EXPECT_THAT(S1(-3 * zPi).GetAngle(), Is(zPi));
    EXPECT_THAT(S1(1.0).GetAngle(), DoubleNear(1.0, 1e-15));
    EXPECT_THAT(S1(4.0).GetAngle(), DoubleNear(4.0 - z2Pi, 1e-14));
    EXPECT_THAT(S1(-4.0).GetAngle(), DoubleNear(z2Pi - 4.0, 1e-14));
}

TEST(S1, AssigningAnAngleReducesIt) {
    S1 point(1.0);
    point = -zPi;
    EXPECT_THAT(point.GetAngle(), Is(zPi));
    S1& result = point = 0.0;
    EXPECT_EQ(&result, &point);
    EXPECT_THAT(point.GetAngle(), Is(0.0));
}

TEST(S1, CopyingDoesNotReduce) {
    const S1 raw = Raw(100.0);
    const S1 copy(raw);
    EXPECT_THAT(copy.GetAngle(), Is(100.0));
    S1 assigned;
    assigned = raw;
    EXPECT_THAT(assigned.GetAngle(), Is(100.0));
}

// Factor.

TEST(S1, FactorMovesMinusPiToPiWithinTheTolerance) {
    EXPECT_THAT(S1(-zPi + 5e-11).GetAngle(), Is(zPi));
    EXPECT_THAT(S1(-zPi - 5e-11).GetAngle(), Is(zPi));
    EXPECT_THAT(S1(zPi + 5e-11).GetAngle(), Is(zPi));
    EXPECT_THAT(S1(3 * zPi + 5e-11).GetAngle(), Is(zPi));
    EXPECT_THAT(S1(-3 * zPi + 5e-11).GetAngle(), Is(zPi));
    EXPECT_THAT(S1::Factorize(-zPi + 5e-11), Is(zPi));
}

TEST(S1, FactorLeavesWhatLiesBelowPiWhereItIs) {
    EXPECT_THAT(S1(zPi - 5e-11).GetAngle(), DoubleNear(zPi - 5e-11, 1e-15));
    EXPECT_LT(S1(zPi - 5e-11).GetAngle(), zPi);
}

TEST(S1, FactorKeepsWhatLiesBeyondTheToleranceOnItsSideOfTheSeam) {
    EXPECT_THAT(S1(-zPi + 2e-10).GetAngle(), DoubleNear(-zPi + 2e-10, 1e-15));
    EXPECT_THAT(S1(zPi + 2e-10).GetAngle(), DoubleNear(-zPi + 2e-10, 1e-15));
    EXPECT_THAT(S1(-zPi - 2e-10).GetAngle(), DoubleNear(zPi - 2e-10, 1e-15));
}

TEST(S1, FactorTakesEvenHalfTurnsOff) {
    EXPECT_THAT(S1(z2Pi).GetAngle(), Is(0.0));
    EXPECT_THAT(S1(z2Pi + 1.0).GetAngle(), DoubleNear(1.0, 1e-14));
    EXPECT_THAT(S1(-z2Pi - 1.0).GetAngle(), DoubleNear(-1.0, 1e-14));
    EXPECT_THAT(S1(1000 * z2Pi + 2.0).GetAngle(), DoubleNear(2.0, 1e-11));
}

TEST(S1, FactorTurnsOddHalfTurnsRound) {
    EXPECT_THAT(S1(zPi + 1.0).GetAngle(), DoubleNear(1.0 - zPi, 1e-14));
    EXPECT_THAT(S1(-zPi - 1.0).GetAngle(), DoubleNear(zPi - 1.0, 1e-14));
    EXPECT_THAT(S1(3 * zPi + 1.0).GetAngle(), DoubleNear(1.0 - zPi, 1e-14));
}

TEST(S1, FactorKeepsTheSignOfZero) {
    EXPECT_THAT(S1(-0.0).GetAngle(), Is(-0.0));
    EXPECT_THAT(S1(-z2Pi).GetAngle(), Is(-0.0));
}

TEST(S1, FactorRunsAgainOnTheSameObject) {
    S1 point = Raw(7.0);
    point.Factor();
    EXPECT_THAT(point.GetAngle(), Is(OnePass(7.0)));
    point.Factor();
    EXPECT_THAT(point.GetAngle(), Is(OnePass(OnePass(7.0))));
}

TEST(S1, FactorHasADefinedResultForEveryNumber) {
    EXPECT_THAT(S1(kNaN).GetAngle(), Is(kNaN));
    EXPECT_THAT(S1(kHuge).GetAngle(), Is(0.0));
    EXPECT_THAT(S1(1e307).GetAngle(), Is(0.0));
    EXPECT_LE(std::fabs(S1(2147483649.5 * zPi).GetAngle()), zPi);
    EXPECT_LE(std::fabs(S1(-2147483648.5 * zPi).GetAngle()), zPi);
}

double AnyAngle() {
    switch (*rc::gen::inRange(0, 4)) {
        case 0:
            return *rc::gen::inRange(-9, 10) * zPi * 0.5 +
                   *rc::gen::element(0.0, 5e-11, -5e-11, 1e-10, -1e-10, 2e-10, -2e-10, 1e-9, -1e-9);
        case 1:
            return *rc::gen::inRange(-1'000'000'000, 1'000'000'000) * 6.3e-6;
        default:
            return *rc::gen::inRange(-1'000'000'000, 1'000'000'000) * 3.14159e-9;
    }
}

TEST(S1Laws, FactorIsOnePassToTheBit) {
    EXPECT_TRUE(rc::check([] {
        const double a = AnyAngle();
        RC_ASSERT(SameDouble(S1(a).GetAngle(), OnePass(a)));
        const double any = *rc::gen::arbitrary<double>();
        if (std::fabs(any) < 6e9) RC_ASSERT(SameDouble(S1(any).GetAngle(), OnePass(any)));
    }));
}

TEST(S1Laws, FactorizeIsTwoPassesToTheBit) {
    EXPECT_TRUE(rc::check([] {
        const double a = AnyAngle();
        RC_ASSERT(SameDouble(S1::Factorize(a), OnePass(OnePass(a))));
        RC_ASSERT(SameDouble(S1::GetOpposite(a), OnePass(OnePass(a + zPi))));
        RC_ASSERT(SameDouble(S1::FactorizeDeg(a), OnePass(OnePass(a * zRadPerDeg)) * zDegPerRad));
    }));
}

TEST(S1Laws, FactorizeIsIdempotentToTheBitInTheCanonicalInterval) {
    EXPECT_TRUE(rc::check([] {
        const double once = S1::Factorize(AnyAngle());
        RC_ASSERT(once > -zPi && once <= zPi);
        RC_ASSERT(SameDouble(S1::Factorize(once), once));
    }));
}

TEST(S1Laws, FactorChangesACanonicalAngleByOneBitAtMost) {
    EXPECT_TRUE(rc::check([] {
        const double a = *rc::gen::inRange(-314'159'265, 314'159'265) * 1e-8;
        const double factored = S1(a).GetAngle();
        RC_ASSERT(factored == a || factored == Up(a) || factored == Down(a));
    }));
}

TEST(S1Laws, FactorizeDiffersByWholeTurns) {
    EXPECT_TRUE(rc::check([] {
        const double a = AnyAngle();
        const double turns = (a - S1::Factorize(a)) / z2Pi;
        RC_ASSERT(std::fabs(turns - std::nearbyint(turns)) < 1e-10);
    }));
}

TEST(S1, SecondPassOfFactorizeCanChangeTheLastBit) {
    int changed = 0;
    for (int i = 0; i < 1000; ++i) {
        const double angle = 4.0 + i * 6.7;
        changed += S1(angle).GetAngle() != S1::Factorize(angle);
    }
    EXPECT_GT(changed, 0);
}

TEST(S1, FactorizeTakesTwoPassesAndAPointTakesOne) {
    ASSERT_TRUE(SecondPassCounts(37.5));
    EXPECT_THAT(S1(37.5).GetAngle(), Is(-0.1991118430774801));
    EXPECT_THAT(S1::Factorize(37.5), Is(-0.19911184307748012));
}

TEST(S1, FactorizeDegIsTheCanonicalFormInDegrees) {
    EXPECT_THAT(S1::FactorizeDeg(190.0), DoubleNear(-170.0, 1e-11));
    EXPECT_THAT(S1::FactorizeDeg(-180.0), Is(zPi * zDegPerRad));
    EXPECT_THAT(S1::FactorizeDeg(720.0), DoubleNear(0.0, 1e-11));
    EXPECT_THAT(S1::FactorizeDeg(45.0), DoubleNear(45.0, 1e-13));
}

TEST(S1, OppositeLiesHalfATurnAway) {
    EXPECT_THAT(S1::GetOpposite(0.0), Is(zPi));
    EXPECT_THAT(S1::GetOpposite(zPi), Is(0.0));
    EXPECT_THAT(S1::GetOpposite(1.0), DoubleNear(1.0 - zPi, 1e-15));
    EXPECT_THAT(S1::GetOpposite(-1.0), DoubleNear(zPi - 1.0, 1e-15));
}

TEST(S1, OppositeIsReducedTwice) {
    ASSERT_TRUE(SecondPassCounts(2.22 + zPi));
    EXPECT_THAT(S1::GetOpposite(2.22), Is(-0.9215926535897899));
}

// Operators.

TEST(S1, EqualityMeetsAtTheSeam) {
    EXPECT_TRUE(S1(1.0) == S1(1.0 + 5e-11));
    EXPECT_FALSE(S1(1.0) == S1(1.1));
    EXPECT_TRUE(Raw(zPi) == Raw(-zPi));
    EXPECT_TRUE(S1(zPi) == S1(-zPi + 5e-10));
}

TEST(S1, SumAndDifferenceAreReducedOnce) {
    EXPECT_THAT((S1(3.0) + S1(1.0)).GetAngle(), Is(OnePass(S1(3.0).m_angle + S1(1.0).m_angle)));
    EXPECT_THAT((S1(-3.0) - S1(1.0)).GetAngle(), Is(OnePass(S1(-3.0).m_angle - S1(1.0).m_angle)));
    EXPECT_THAT((Raw(0.5 * zPi) + Raw(0.5 * zPi)).GetAngle(), Is(zPi));
    EXPECT_THAT((S1(1.0) - S1(1.0)).GetAngle(), Is(0.0));
    ASSERT_TRUE(SecondPassCounts(2.29 + 3.0));
    EXPECT_THAT((S1(2.29) + S1(3.0)).GetAngle(), Is(-0.99318530717958));
    ASSERT_TRUE(SecondPassCounts(-3.07 - 3.0));
    EXPECT_THAT((S1(-3.07) - S1(3.0)).GetAngle(), Is(0.21318530717957973));
}

TEST(S1, TurningInPlaceReturnsACopyOfTheNewValue) {
    S1 point(3.0);
    const double sum = OnePass(point.m_angle + S1(1.0).m_angle);
    EXPECT_TRUE((std::is_same_v<decltype(point += point), S1>));
    EXPECT_THAT((point += S1(1.0)).GetAngle(), Is(sum));
    EXPECT_THAT(point.GetAngle(), Is(sum));
    const double difference = OnePass(sum - S1(1.0).m_angle);
    EXPECT_THAT((point -= S1(1.0)).GetAngle(), Is(difference));
    EXPECT_THAT(point.GetAngle(), Is(difference));
}

TEST(S1, TurningInPlaceReducesOnce) {
    ASSERT_TRUE(SecondPassCounts(2.29 + 3.0));
    S1 sum(2.29);
    EXPECT_THAT((sum += S1(3.0)).GetAngle(), Is(-0.99318530717958));
    EXPECT_THAT(sum.GetAngle(), Is(-0.99318530717958));
    ASSERT_TRUE(SecondPassCounts(-3.07 - 3.0));
    S1 difference(-3.07);
    EXPECT_THAT((difference -= S1(3.0)).GetAngle(), Is(0.21318530717957973));
    EXPECT_THAT(difference.GetAngle(), Is(0.21318530717957973));
}

TEST(S1, TurningByItselfDoublesTheAngle) {
    S1 point = Raw(0.5 * zPi);
    point += point;
    EXPECT_THAT(point.GetAngle(), Is(zPi));
    const S1& itself = point;
    point -= itself;
    EXPECT_THAT(point.GetAngle(), Is(0.0));
}

TEST(S1, TranslateTellsWhetherItTurned) {
    S1 point(1.0);
    const double before = point.GetAngle();
    EXPECT_FALSE(point.Translate(5e-11));
    EXPECT_FALSE(point.Translate(-5e-11));
    EXPECT_THAT(point.GetAngle(), Is(before));
    EXPECT_TRUE(point.Translate(zToler));
    EXPECT_TRUE(point.Translate(3.0));
    EXPECT_THAT(point.GetAngle(), DoubleNear(4.0 - z2Pi, 1e-9));
}

TEST(S1, TranslateReducesOnce) {
    ASSERT_TRUE(SecondPassCounts(2.29 + 3.0));
    S1 point(2.29);
    EXPECT_TRUE(point.Translate(3.0));
    EXPECT_THAT(point.GetAngle(), Is(-0.99318530717958));
}

TEST(S1, TranslateWithinTheToleranceDoesNotReduceEither) {
    S1 point = Raw(100.0);
    EXPECT_FALSE(point.Translate(0.0));
    EXPECT_THAT(point.GetAngle(), Is(100.0));
}

// Bounds.

TEST(S1, MemberIsValidTakesInMinusPiAndTheTolerance) {
    EXPECT_TRUE(Raw(-zPi).IsValid());
    EXPECT_TRUE(Raw(-zPiPlus).IsValid());
    EXPECT_TRUE(Raw(zPiPlus).IsValid());
    EXPECT_FALSE(Raw(Down(-zPiPlus)).IsValid());
    EXPECT_FALSE(Raw(Up(zPiPlus)).IsValid());
    EXPECT_TRUE(Raw(kNaN).IsValid());
}

TEST(S1, StaticIsValidIsTighterAtMinusPi) {
    EXPECT_FALSE(S1::IsValid(-3.14159265358979));
    EXPECT_TRUE(S1::IsValid(-zPiMinus));
    EXPECT_FALSE(S1::IsValid(Down(-zPiMinus)));
    EXPECT_TRUE(S1::IsValid(zPiPlus));
    EXPECT_FALSE(S1::IsValid(Up(zPiPlus)));
    EXPECT_TRUE(S1::IsValid(0.0));
    EXPECT_TRUE(S1::IsValid(kNaN));
}

TEST(S1, IsValidExtTakesInMinusPi) {
    EXPECT_TRUE(S1::IsValidExt(-zPi));
    EXPECT_TRUE(S1::IsValidExt(-zPi - 5e-11));
    EXPECT_FALSE(S1::IsValidExt(-zPi - 2e-10));
    EXPECT_TRUE(S1::IsValidExt(zPiPlus));
    EXPECT_FALSE(S1::IsValidExt(Up(zPiPlus)));
    EXPECT_TRUE(S1::IsValidExt(-zPiMinus));
}

TEST(S1, InRangeOfOneAngleIsStrictAtBothEnds) {
    EXPECT_FALSE(S1::InRange(-zPiMinus));
    EXPECT_TRUE(S1::InRange(Up(-zPiMinus)));
    EXPECT_FALSE(S1::InRange(zPiPlus));
    EXPECT_TRUE(S1::InRange(Down(zPiPlus)));
    EXPECT_FALSE(S1::InRange(-zPi));
    EXPECT_TRUE(S1::InRange(zPi));
    EXPECT_FALSE(S1::InRange(kNaN));
}

// Stepping and units.

TEST(S1, IncrementWithinTheIntervalIsASum) {
    double a = 1.0;
    EXPECT_THAT(S1::Increment(a, 0.5), Is(1.5));
    EXPECT_THAT(a, Is(1.5));
    EXPECT_THAT(S1::Increment(a, -2.0), Is(-0.5));
}

TEST(S1, IncrementWrapsOnceOnly) {
    double a = 3.0;
    EXPECT_THAT(S1::Increment(a, 10.0), Is(13.0 - z2Pi));
    EXPECT_THAT(a, Is(13.0 - z2Pi));
    EXPECT_GT(a, zPiPlus);
    a = -3.0;
    EXPECT_THAT(S1::Increment(a, -10.0), Is(-13.0 + z2Pi));
}

TEST(S1, IncrementKeepsPiAndMovesMinusPi) {
    double a = 0.0;
    EXPECT_THAT(S1::Increment(a, zPiPlus), Is(zPiPlus));
    a = 0.0;
    EXPECT_THAT(S1::Increment(a, Up(zPiPlus)), Is(Up(zPiPlus) - z2Pi));
    a = 0.0;
    EXPECT_THAT(S1::Increment(a, -zPiMinus), Is(-zPiMinus));
    a = 0.0;
    EXPECT_THAT(S1::Increment(a, -zPi), Is(-zPi + z2Pi));
}

TEST(S1, UnitConversionsDoNotReduce) {
    double a = 10.0;
    S1::ToDegree(a);
    EXPECT_THAT(a, Is(10.0 * 57.29577951308238));
    double b = 720.0;
    S1::ToRadian(b);
    EXPECT_THAT(b, Is(720.0 * 0.017453292519943278));
    double c = 90.0;
    double d = -360.0;
    S1::ToRadian(c, d);
    EXPECT_THAT(c, Is(90.0 * 0.017453292519943278));
    EXPECT_THAT(d, Is(-360.0 * 0.017453292519943278));
}

template <class T>
concept TurnsTwoIntoDegrees = requires(double a) {
    T::ToDegree(a, a);
};
template <class T>
concept TurnsTwoIntoRadians = requires(double a) {
    T::ToRadian(a, a);
};

TEST(S1, TwoAnglesAtOnceTurnIntoRadiansOnly) {
    EXPECT_TRUE(TurnsTwoIntoRadians<S1>);
    EXPECT_FALSE(TurnsTwoIntoDegrees<S1>);
}

// The same point.

TEST(S1, EqualWithinTheTolerance) {
    EXPECT_TRUE(S1::Equal(3.1415, 3.1415, false));
    EXPECT_TRUE(S1::Equal(1.0, 1.0 + 5e-11, false));
    EXPECT_FALSE(S1::Equal(0.0, zToler, false));
    EXPECT_FALSE(S1::Equal(1.0, 1.1, false));
    EXPECT_FALSE(S1::Equal(0.0, z2Pi, false));
    EXPECT_FALSE(S1::Equal(kNaN, kNaN, false));
}

TEST(S1, EqualMeetsAtTheSeam) {
    EXPECT_TRUE(S1::Equal(3.14159265358979, -3.14159265358979, false));
    EXPECT_TRUE(S1::Equal(zPi - 9e-10, -zPi + 9e-10, false));
    EXPECT_TRUE(S1::Equal(zPi + 9e-10, -zPi - 9e-10, false));
    EXPECT_TRUE(S1::Equal(zPi - 9e-10, zPi + 9e-10, false));
    EXPECT_FALSE(S1::Equal(zPi - 1.1e-9, -zPi, false));
    EXPECT_FALSE(S1::Equal(zPi, -zPi + 1.1e-9, false));
}

TEST(S1, EqualInDegreesTakesTheToleranceInDegrees) {
    EXPECT_TRUE(S1::Equal(180.0, -180.0, true));
    EXPECT_FALSE(S1::Equal(180.0, -180.0, false));
    EXPECT_TRUE(S1::Equal(90.0, 90.0 + 5e-11, true));
    // 2e-10 degrees are less than the tolerance in radians, and different all the same.
    EXPECT_FALSE(S1::Equal(90.0, 90.0 + 2e-10, true));
    EXPECT_TRUE(S1::Equal(180.0 - 5e-8, -180.0 + 5e-8, true));
    EXPECT_FALSE(S1::Equal(180.0 - 6e-8, -180.0, true));
}

// Differences.

TEST(S1, DiffIsCounterClockwiseFromTheSecond) {
    EXPECT_THAT(S1::diff(2.0, 0.5, true), Is(1.5));
    EXPECT_THAT(S1::diff(0.1, 0.2, true), Is((0.1 + z2Pi) - 0.2));
    EXPECT_THAT(S1::diff(0.1, 0.2, true), DoubleNear(z2Pi - 0.1, 1e-15));
    EXPECT_THAT(S1::diff(-3.0, 3.0, true), Is((-3.0 + z2Pi) - 3.0));
}

TEST(S1, DiffClockwiseIsTheRestOfTheTurn) {
    EXPECT_THAT(S1::diff(0.1, 0.2, false), Is(z2Pi - ((0.1 + z2Pi) - 0.2)));
    EXPECT_THAT(S1::diff(0.1, 0.2, false), DoubleNear(0.1, 1e-15));
    EXPECT_THAT(S1::diff(2.0, 0.5, false), Is(z2Pi - 1.5));
}

TEST(S1, DiffWithinTheToleranceMayBeSlightlyNegativeInEitherSense) {
    EXPECT_THAT(S1::diff(0.0, 5e-11, true), Is(-5e-11));
    EXPECT_THAT(S1::diff(0.0, 5e-11, false), Is(-5e-11));
    EXPECT_THAT(S1::diff(5e-11, 0.0, false), Is(5e-11));
    EXPECT_THAT(S1::diff(1.0, 1.0, false), Is(0.0));
    // Exactly the tolerance is not raised but turned.
    EXPECT_THAT(S1::diff(0.0, zToler, true), Is(-zToler));
    EXPECT_THAT(S1::diff(0.0, zToler, false), Is(z2Pi - -zToler));
}

TEST(S1, DiffSignedTakesTheShorterWay) {
    EXPECT_THAT(S1::DiffSigned(0.1, 0.2), Is(((0.1 + z2Pi) - 0.2) - z2Pi));
    EXPECT_THAT(S1::DiffSigned(0.1, 0.2), DoubleNear(-0.1, 1e-15));
    EXPECT_THAT(S1::DiffSigned(0.2, 0.1), Is(0.2 - 0.1));
    EXPECT_THAT(S1::DiffSigned(-3.0, 3.0), DoubleNear(z2Pi - 6.0, 1e-14));
    EXPECT_THAT(S1::DiffSigned(3.0, -3.0), Is(6.0 - z2Pi));
    EXPECT_THAT(S1::DiffSigned(zPi, 0.0), Is(zPi));
    EXPECT_THAT(S1::DiffSigned(zPiPlus, 0.0), Is(zPiPlus));
    EXPECT_THAT(S1::DiffSigned(Up(zPiPlus), 0.0), Is(Up(zPiPlus) - z2Pi));
    // Up to the tolerance, itself included, there is no turn to add and to take off.
    EXPECT_THAT(S1::DiffSigned(0.0, 5e-11), Is(-5e-11));
    EXPECT_THAT(S1::DiffSigned(0.0, zToler), Is(-zToler));
}

TEST(S1, DistBeyondHalfATurnLosesHalfATurnOnly) {
    EXPECT_THAT(S1::dist(0.0, 4.0), Is(4.0 - zPi));
    EXPECT_THAT(S1::dist(0.0, 3.0), Is(3.0));
    EXPECT_THAT(S1::dist(3.0, -3.0), Is((-3.0 + z2Pi) - 3.0));
    EXPECT_THAT(S1::dist(1.0, 0.0), Is(((0.0 + z2Pi) - 1.0) - zPi));
    EXPECT_THAT(S1::dist(0.0, zPi), Is(zPi));
    EXPECT_THAT(S1::dist(0.0, zPiPlus), Is(zPiPlus - zPi));
    EXPECT_THAT(S1::dist(5e-11, 0.0), Is(-5e-11));
    EXPECT_THAT(S1::dist(zToler, 0.0), Is(-zToler));
}

// On an arc.

TEST(S1, InRangeOfAnArcThatCrossesTheSeam) {
    EXPECT_TRUE(S1::InRange(3.0, 2.0, -2.0, true));
    EXPECT_TRUE(S1::InRange(-3.0, 2.0, -2.0, true));
    EXPECT_TRUE(S1::InRange(zPi, 2.0, -2.0, true));
    EXPECT_TRUE(S1::InRange(2.0, 2.0, -2.0, true));
    EXPECT_TRUE(S1::InRange(-2.0, 2.0, -2.0, true));
    EXPECT_FALSE(S1::InRange(0.0, 2.0, -2.0, true));
    EXPECT_FALSE(S1::InRange(1.9, 2.0, -2.0, true));
    EXPECT_FALSE(S1::InRange(-1.9, 2.0, -2.0, true));
}

TEST(S1, InRangeTurnsWithItsSense) {
    EXPECT_TRUE(S1::InRange(0.0, 2.0, -2.0, false));
    EXPECT_FALSE(S1::InRange(3.0, 2.0, -2.0, false));
    EXPECT_TRUE(S1::InRange(3.0, -2.0, 2.0, false));
    EXPECT_FALSE(S1::InRange(0.0, -2.0, 2.0, false));
    EXPECT_TRUE(S1::InRange(2.0, 2.0, -2.0, false));
}

TEST(S1, InRangeOfAnArcInOrder) {
    EXPECT_TRUE(S1::InRange(1.5, 1.0, 2.0, true));
    EXPECT_TRUE(S1::InRange(1.0 - 5e-11, 1.0, 2.0, true));
    EXPECT_TRUE(S1::InRange(2.0 + 5e-11, 1.0, 2.0, true));
    EXPECT_FALSE(S1::InRange(1.0 - 2e-10, 1.0, 2.0, true));
    EXPECT_FALSE(S1::InRange(2.5, 1.0, 2.0, true));
    EXPECT_TRUE(S1::InRange(zToler + 1.0, 1.0, 1.0, true));
}

TEST(S1, InRangeOfAnArcOutOfOrderIsTheRestOfTheCircleWithTheEnds) {
    // From 2 round to 1, all but what lies between the two.
    EXPECT_TRUE(S1::InRange(2.0, 2.0, 1.0, true));
    EXPECT_TRUE(S1::InRange(1.0, 2.0, 1.0, true));
    EXPECT_TRUE(S1::InRange(2.0 - 5e-11, 2.0, 1.0, true));
    EXPECT_TRUE(S1::InRange(1.0 + 5e-11, 2.0, 1.0, true));
    EXPECT_FALSE(S1::InRange(2.0 - 2e-10, 2.0, 1.0, true));
    EXPECT_FALSE(S1::InRange(1.5, 2.0, 1.0, true));
    EXPECT_TRUE(S1::InRange(0.0, 2.0, 1.0, true));
    EXPECT_TRUE(S1::InRange(zPi, 2.0, 1.0, true));
    EXPECT_TRUE(S1::InRange(3.0, -1.0, -2.0, true));
    EXPECT_FALSE(S1::InRange(-1.5, -1.0, -2.0, true));
    EXPECT_TRUE(S1::InRange(-3.0, 2.0, 0.0, true));
    EXPECT_FALSE(S1::InRange(1.0, 2.0, 0.0, true));
}

TEST(S1, InRangeOfAnArcThatStartsAtPi) {
    EXPECT_TRUE(S1::InRange(zPi, zPi, 1.0, true));
    EXPECT_TRUE(S1::InRange(0.0, zPi, 1.0, true));
    EXPECT_TRUE(S1::InRange(-3.0, zPi, 1.0, true));
    EXPECT_FALSE(S1::InRange(2.0, zPi, 1.0, true));
    EXPECT_TRUE(S1::InRange(-3.0, zPi - 5e-11, 1.0, true));
    EXPECT_FALSE(S1::InRange(3.0, zPi - 5e-11, 1.0, true));
    // Both sides of the seam are the arc's start.
    EXPECT_TRUE(S1::InRange(zPi - 9e-10, zPi, 1.0, true));
    EXPECT_FALSE(S1::InRange(zPi - 1.1e-9, zPi, 1.0, true));
}

TEST(S1, InRangeOfAnArcThatStartsJustBelowPiIsTheRestOfTheCircle) {
    // Beyond the tolerance from pi, and so not by the step for arcs that start at pi.
    EXPECT_TRUE(S1::InRange(zPi, zPi - 2e-10, 1.0, true));
    EXPECT_TRUE(S1::InRange(-3.0, zPi - 2e-10, 1.0, true));
    EXPECT_FALSE(S1::InRange(3.0, zPi - 2e-10, 1.0, true));
}

TEST(S1, InRangeRejectsTheRawMinusPi) {
    EXPECT_FALSE(S1::InRange(-zPi, 2.0, -2.0, true));
    EXPECT_FALSE(S1::InRange(0.0, -zPi, 1.0, true));
    EXPECT_FALSE(S1::InRange(0.0, -1.0, -zPi, false));
    EXPECT_TRUE(S1::InRange(-zPiMinus, 2.0, -2.0, true));
    EXPECT_TRUE(S1::InRange(zPiPlus, 2.0, -2.0, true));
    EXPECT_FALSE(S1::InRange(Up(zPiPlus), 2.0, -2.0, true));
    EXPECT_FALSE(S1::InRange(0.0, -1.0, 4.0, true));
    EXPECT_FALSE(S1::InRange(4.0, 1.0, -1.0, true));
}

TEST(S1, InRangeOfNaNFollowsTheComparisons) {
    EXPECT_FALSE(S1::InRange(kNaN, 1.0, 2.0, true));
    EXPECT_FALSE(S1::InRange(kNaN, 2.0, -2.0, true));
    EXPECT_TRUE(S1::InRange(kNaN, 2.0, 1.0, true));
    EXPECT_FALSE(S1::InRange(1.0, kNaN, 2.0, true) && S1::InRange(3.0, kNaN, 2.0, true));
}

// The test, step by step.
bool InRangeStepByStep(double x, double a, double b, bool bCCW) {
    for (const double angle : {a, b, x}) {
        if (angle < -3.14159265348979 || angle > 3.14159265368979) return false;
    }
    if (!bCCW) return InRangeStepByStep(x, b, a, true);
    if (a > 0 && 0 > b) {
        return RangeR1::In(x, a, zPi, 1e-10) || RangeR1::In(x, -zPi, b, 1e-10);
    }
    if (a > b) {
        if (S1::Equal(x, a, false)) return true;
        if (S1::Equal(x, b, false)) return true;
        if (1e-10 > std::fabs(a - zPi)) return RangeR1::In(x, -zPi, b, 1e-10);
        return !InRangeStepByStep(x, b, a, true);
    }
    return RangeR1::In(x, a, b, 1e-10);
}

const std::vector<double>& Bounds() {
    static const std::vector<double> bounds = [] {
        std::vector<double> all;
        for (const double at : {-zPi, -2.0, -1.0, 0.0, 1.0, 2.0, zPi}) {
            for (const double by : {0.0, 5e-11, 1e-10, 1.5e-10, 9e-10, 1.1e-9, 9.9e-9, 1.01e-8}) {
                all.push_back(at + by);
                all.push_back(at - by);
            }
        }
        for (const double at : {zPiMinus, -zPiMinus, zPiPlus, -zPiPlus}) {
            all.push_back(at);
            all.push_back(Up(at));
            all.push_back(Down(at));
        }
        all.push_back(-0.0);
        all.push_back(kNaN);
        all.push_back(100.0);
        return all;
    }();
    return bounds;
}

TEST(S1Laws, InRangeTakesItsStepsAtEveryBound) {
    for (const double x : Bounds()) {
        for (const double a : Bounds()) {
            for (const double b : Bounds()) {
                for (const bool ccw : {false, true}) {
                    ASSERT_EQ(S1::InRange(x, a, b, ccw), InRangeStepByStep(x, a, b, ccw))
                        << InFull(x) << " on " << InFull(a) << " to " << InFull(b) << ccw;
                }
            }
        }
    }
}

TEST(S1Laws, InRangeTakesItsSteps) {
    EXPECT_TRUE(rc::check([] {
        const double x = S1::Factorize(AnyAngle());
        const double a = S1::Factorize(AnyAngle());
        const double b = S1::Factorize(AnyAngle());
        const bool ccw = *rc::gen::arbitrary<bool>();
        RC_ASSERT(S1::InRange(x, a, b, ccw) == InRangeStepByStep(x, a, b, ccw));
    }));
}

TEST(S1Laws, PointLiesOnAnArcOrOnTheRest) {
    EXPECT_TRUE(rc::check([] {
        const double x = S1::Factorize(AnyAngle());
        const double a = S1::Factorize(AnyAngle());
        const double b = S1::Factorize(AnyAngle());
        RC_PRE(!S1::Equal(a, b, false));
        RC_ASSERT(S1::InRange(x, a, b, true) || S1::InRange(x, b, a, true));
        RC_ASSERT(S1::InRange(x, a, b, true) == S1::InRange(x, b, a, false));
    }));
}

TEST(S1, InOpenRangeLeavesTheEndsOut) {
    EXPECT_TRUE(S1::InOpenRange(1.5, 1.0, 2.0, true));
    EXPECT_FALSE(S1::InOpenRange(1.0, 1.0, 2.0, true));
    EXPECT_FALSE(S1::InOpenRange(2.0, 1.0, 2.0, true));
    EXPECT_FALSE(S1::InOpenRange(1.0 + 5e-11, 1.0, 2.0, true));
    EXPECT_FALSE(S1::InOpenRange(1.0 - 5e-11, 1.0, 2.0, true));
    EXPECT_FALSE(S1::InOpenRange(2.0 + 5e-11, 1.0, 2.0, true));
    EXPECT_TRUE(S1::InOpenRange(1.0 + 2e-10, 1.0, 2.0, true));
    EXPECT_FALSE(S1::InOpenRange(3.0, 1.0, 2.0, true));
}

TEST(S1, InOpenRangeAcrossTheSeam) {
    EXPECT_TRUE(S1::InOpenRange(3.0, 2.0, -2.0, true));
    EXPECT_TRUE(S1::InOpenRange(-3.0, 2.0, -2.0, true));
    EXPECT_FALSE(S1::InOpenRange(2.0, 2.0, -2.0, true));
    EXPECT_FALSE(S1::InOpenRange(-2.0, 2.0, -2.0, true));
    EXPECT_TRUE(S1::InOpenRange(0.0, 2.0, -2.0, false));
    EXPECT_FALSE(S1::InOpenRange(-2.0, 2.0, -2.0, false));
    EXPECT_FALSE(S1::InOpenRange(zPi, zPi, 1.0, true));
    // A turn later, the raw lower side of the seam is the arc's end at pi.
    EXPECT_TRUE(S1::InOpenRange(-zPi + 3e-10, zPi, 1.0, true));
}

TEST(S1, InOpenRangeMeetsAnEndOnTheOtherSideOfTheSeam) {
    // The end lies above pi and the angle above -pi, a turn less 3e-11 apart.
    const double end = zPi + 9e-11;
    const double x = -zPi + 1.2e-10;
    EXPECT_TRUE(S1::InRange(x, end, 1.0, true));
    EXPECT_FALSE(S1::InOpenRange(x, end, 1.0, true));
    EXPECT_TRUE(S1::InRange(x, 1.0, end, false));
    EXPECT_FALSE(S1::InOpenRange(x, 1.0, end, false));
}

// The test, step by step.
bool InOpenRangeStepByStep(double x, double a, double b, bool bCCW) {
    if (!InRangeStepByStep(x, a, b, bCCW)) return false;
    double x1 = x;
    if (a > x + 1e-10) x1 += z2Pi;
    if (1e-10 > std::fabs(x1 - a)) return false;
    double x2 = x;
    if (b > x + 1e-10) x2 += z2Pi;
    return !(1e-10 > std::fabs(x2 - b));
}

TEST(S1Laws, InOpenRangeTakesItsStepsAtEveryBound) {
    std::vector<double> bounds = {-2.0, 2.0, kNaN};
    for (const double at : {-zPi, 0.0, 1.0, zPi}) {
        for (const double by : {0.0, 5e-11, 9e-11, 1e-10, 1.2e-10, 2e-10, 1.1e-9}) {
            bounds.push_back(at + by);
            bounds.push_back(at - by);
        }
    }
    for (const double x : bounds) {
        for (const double a : bounds) {
            for (const double b : bounds) {
                for (const bool ccw : {false, true}) {
                    ASSERT_EQ(S1::InOpenRange(x, a, b, ccw), InOpenRangeStepByStep(x, a, b, ccw))
                        << InFull(x) << " on " << InFull(a) << " to " << InFull(b) << ccw;
                }
            }
        }
    }
}

// On the way between two.

TEST(S1, SegmentPointGoesTheShorterWay) {
    EXPECT_THAT(S1(3.0).GetSegmentPoint(S1(-3.0), 0.5).GetAngle(), Is(zPi));
    EXPECT_THAT(S1(-3.0).GetSegmentPoint(S1(3.0), 0.5).GetAngle(), Is(zPi));
    EXPECT_THAT(S1(0.0).GetSegmentPoint(S1(1.0), 0.25).GetAngle(), DoubleNear(0.25, 1e-15));
    EXPECT_THAT(S1(1.0).GetSegmentPoint(S1(0.0), 0.25).GetAngle(), DoubleNear(0.75, 1e-15));
    EXPECT_THAT(S1(2.0).GetSegmentPoint(S1(-2.0), 1.0).GetAngle(), DoubleNear(-2.0, 1e-14));
}

TEST(S1, SegmentPointOfOppositePointsGoesCounterClockwise) {
    EXPECT_THAT(S1(0.0).GetSegmentPoint(S1(zPi), 0.5).GetAngle(), DoubleNear(0.5 * zPi, 1e-15));
    EXPECT_THAT(S1(zPi).GetSegmentPoint(S1(0.0), 0.5).GetAngle(), DoubleNear(-0.5 * zPi, 1e-15));
}

TEST(S1, SegmentPointIsReducedOnceOnTheSum) {
    const S1 from(3.0);
    const double d = OnePass(S1(-2.5).m_angle - from.m_angle);
    EXPECT_THAT(from.GetSegmentPoint(S1(-2.5), 0.75).GetAngle(),
                Is(OnePass(from.m_angle + d * 0.75)));
    ASSERT_TRUE(SecondPassCounts(0.1 + (-3.03 - 0.1) * 2.0));
    EXPECT_THAT(S1(0.1).GetSegmentPoint(S1(-3.03), 2.0).GetAngle(), Is(0.12318530717957943));
}

TEST(S1, SegmentPointReducesTheDifferenceOnce) {
    ASSERT_TRUE(SecondPassCounts(-3.10 - 2.19));
    // Reduced twice, it would lead to -2.6034073464102105.
    EXPECT_THAT(S1(2.19).GetSegmentPoint(S1(-3.10), 1.5).GetAngle(), Is(-2.60340734641021));
}

TEST(S1, ArcPointGoesInItsSense) {
    EXPECT_THAT(S1::GetSegmentPoint(1.0, 2.0, 0.25, true),
                Is(OnePass(OnePass((1 - 0.25) * 1.0 + 0.25 * 2.0))));
    EXPECT_THAT(S1::GetSegmentPoint(2.0, 1.0, 0.5, true),
                Is(OnePass(OnePass((1 - 0.5) * 2.0 + 0.5 * (1.0 + z2Pi)))));
    EXPECT_THAT(S1::GetSegmentPoint(2.0, 1.0, 0.5, true), DoubleNear(1.5 - zPi, 1e-14));
    EXPECT_THAT(S1::GetSegmentPoint(2.0, 1.0, 0.25, false), DoubleNear(1.75, 1e-14));
    EXPECT_THAT(S1::GetSegmentPoint(2.0, 1.0, 0.25, false),
                Is(OnePass(OnePass((1 - (1 - 0.25)) * 1.0 + (1 - 0.25) * 2.0))));
    EXPECT_THAT(S1::GetSegmentPoint(1.0, 2.0, 0.5, false), DoubleNear(1.5 - zPi, 1e-14));
    EXPECT_THAT(S1::GetSegmentPoint(3.0, -3.0, 0.5, true), DoubleNear(zPi, 1e-14));
}

TEST(S1, ArcPointIsReducedTwice) {
    ASSERT_TRUE(SecondPassCounts((1 - 0.75) * 2.7 + 0.75 * (-0.1 + z2Pi)));
    EXPECT_THAT(S1::GetSegmentPoint(2.7, -0.1, 0.75, true), Is(-0.9707963267948957));
}

TEST(S1, ArcPointBetweenEqualAnglesIsTheFirstToTheBit) {
    for (const double t : {0.0, 0.5, 1.0, 7.0}) {
        EXPECT_THAT(S1::GetSegmentPoint(0.1, 0.1, t, true), Is(0.1));
        EXPECT_THAT(S1::GetSegmentPoint(100.0, 100.0 + 5e-11, t, false), Is(100.0));
    }
}

TEST(S1, ArcPointBetweenAnglesTheToleranceApartDoesNotGoRound) {
    // Far enough to have a way, and not out of order.
    EXPECT_THAT(S1::GetSegmentPoint(zToler, 0.0, 0.5, true), DoubleNear(5e-11, 1e-20));
    EXPECT_THAT(S1::GetSegmentPoint(0.0, zToler, 0.5, false), DoubleNear(5e-11, 1e-20));
}

TEST(S1Laws, ArcPointLiesOnItsArc) {
    EXPECT_TRUE(rc::check([] {
        const double a = S1::Factorize(AnyAngle());
        const double b = S1::Factorize(AnyAngle());
        const double t = *rc::gen::inRange(1, 1000) / 1000.0;
        const bool ccw = *rc::gen::arbitrary<bool>();
        RC_PRE(!S1::Equal(a, b, false));
        RC_ASSERT(S1::InRange(S1::GetSegmentPoint(a, b, t, ccw), a, b, ccw));
    }));
}

// Order round the circle.

TEST(S1, CounterClockwiseSequence) {
    EXPECT_TRUE(S1(0.0).IsCCWSequence(S1(1.0), S1(2.0)));
    EXPECT_FALSE(S1(0.0).IsCCWSequence(S1(2.0), S1(1.0)));
    EXPECT_TRUE(S1(2.0).IsCCWSequence(S1(3.0), S1(-3.0)));
    EXPECT_TRUE(S1(2.0).IsCCWSequence(S1(-3.0), S1(1.0)));
    EXPECT_FALSE(S1(2.0).IsCCWSequence(S1(1.0), S1(-3.0)));
    EXPECT_TRUE(S1(zPi).IsCCWSequence(S1(-1.0), S1(1.0)));
    EXPECT_FALSE(S1(zPi).IsCCWSequence(S1(1.0), S1(-1.0)));
}

TEST(S1, CounterClockwiseSequenceToleratesATie) {
    EXPECT_TRUE(S1(0.0).IsCCWSequence(S1(1.0), S1(1.0)));
    EXPECT_TRUE(S1(0.0).IsCCWSequence(S1(1.0 + 5e-11), S1(1.0)));
    EXPECT_FALSE(S1(0.0).IsCCWSequence(S1(1.0 + 2e-10), S1(1.0)));
}

TEST(S1, CounterClockwiseSequenceToleratesLessThanTheTolerance) {
    // From the seam the angles count as they stand.
    EXPECT_FALSE(S1(zPi).IsCCWSequence(Raw(0.0), Raw(-zToler)));
    EXPECT_TRUE(S1(zPi).IsCCWSequence(Raw(0.0), Raw(std::nextafter(-zToler, 0.0))));
}

TEST(S1, PointAtTheStartOfASequenceIsAFullTurnAway) {
    EXPECT_TRUE(S1(1.0).IsCCWSequence(S1(2.0), S1(1.0)));
    EXPECT_FALSE(S1(1.0).IsCCWSequence(S1(1.0), S1(2.0)));
}

TEST(S1, SequenceFromTheSeamTakesTheAnglesAsTheyStand) {
    EXPECT_FALSE(S1(zPi).IsCCWSequence(Raw(100.0), S1(0.0)));
    EXPECT_TRUE(Raw(zPi - 5e-11).IsCCWSequence(S1(0.0), Raw(100.0)));
    // Any other start turns the two, and so reduces them.
    EXPECT_TRUE(S1(0.0).IsCCWSequence(Raw(16 * z2Pi + 1.0), S1(2.0)));
}

std::vector<double> Angles(const CList<S1, S1>& list) {
    std::vector<double> angles;
    for (const S1& point : list) angles.push_back(point.GetAngle());
    return angles;
}

// Points at quarter turns and between, all of which keep their bits.
struct S1List : testing::Test {
    void Append(std::initializer_list<double> angles) {
        for (const double angle : angles) list.AddTail(Raw(angle));
    }
    void Insert(double angle) { Raw(angle).InsertSorted(list); }
    CList<S1, S1> list;
};

TEST_F(S1List, FirstTwoAreAppendedWithoutAComparison) {
    Insert(1.0);
    Insert(-1.0);
    EXPECT_THAT(Angles(list), ElementsAre(1.0, -1.0));
}

TEST_F(S1List, TakesAPointBetweenTwo) {
    Append({0.0, 1.0, 2.0});
    Insert(1.5);
    EXPECT_THAT(Angles(list), ElementsAre(0.0, 1.0, 1.5, 2.0));
    Insert(0.5);
    EXPECT_THAT(Angles(list), ElementsAre(0.0, 0.5, 1.0, 1.5, 2.0));
}

TEST_F(S1List, GapBetweenTailAndHeadAppendsAtTheTail) {
    Append({0.0, 1.0, 2.0});
    Insert(3.0);
    EXPECT_THAT(Angles(list), ElementsAre(0.0, 1.0, 2.0, 3.0));
    Insert(-3.0);
    EXPECT_THAT(Angles(list), ElementsAre(0.0, 1.0, 2.0, 3.0, -3.0));
}

TEST_F(S1List, OrderMayBeginAnywhere) {
    Append({2.0, -2.0, 0.0});
    Insert(zPi);
    EXPECT_THAT(Angles(list), ElementsAre(2.0, zPi, -2.0, 0.0));
    Insert(1.0);
    EXPECT_THAT(Angles(list), ElementsAre(2.0, zPi, -2.0, 0.0, 1.0));
}

TEST_F(S1List, PointAtAnotherGoesBeforeIt) {
    Append({0.0, 1.0, 2.0});
    Insert(1.0 + 5e-11);
    EXPECT_THAT(Angles(list), ElementsAre(0.0, 1.0 + 5e-11, 1.0, 2.0));
}

TEST_F(S1List, PointAtTheHeadGoesToTheTail) {
    Append({0.0, 1.0, 2.0});
    Insert(5e-11);
    EXPECT_THAT(Angles(list), ElementsAre(0.0, 1.0, 2.0, 5e-11));
}

TEST_F(S1List, PointTheToleranceAfterAnotherIsDropped) {
    // Too far to go before the point at 0, and yet a full turn after it.
    Append({0.0, 1.0});
    Insert(1e-10);
    EXPECT_THAT(Angles(list), ElementsAre(0.0, 1.0));
}

TEST_F(S1List, PointThatIsNoNumberIsDropped) {
    Append({0.0, 1.0});
    Insert(kNaN);
    EXPECT_THAT(Angles(list), ElementsAre(0.0, 1.0));
}

TEST_F(S1List, ListOutOfOrderCanDropThePoint) {
    // Seen from the seam the raw angle lies before all others, and seen from itself after.
    Append({zPi, -100.0});
    Insert(0.0);
    EXPECT_THAT(Angles(list), ElementsAre(zPi, -100.0));
}

TEST_F(S1List, KeepsTheRawAngleOfThePoint) {
    Append({0.0, 1.0});
    Insert(z2Pi + 0.5);
    EXPECT_THAT(Angles(list), ElementsAre(0.0, z2Pi + 0.5, 1.0));
}

TEST(S1Laws, InsertedPointsStandInCounterClockwiseOrder) {
    EXPECT_TRUE(rc::check([] {
        // Multiples of a fraction of a turn, each once, so that none meets another.
        const auto steps = *rc::gen::unique<std::vector<int>>(rc::gen::inRange(-511, 512));
        CList<S1, S1> list;
        for (const int step : steps) S1(step * (zPi / 512)).InsertSorted(list);
        RC_ASSERT(list.GetCount() == static_cast<INT_PTR>(steps.size()));
        const std::vector<double> angles = Angles(list);
        double turned = 0.0;
        for (std::size_t i = 0; i < angles.size(); ++i) {
            turned += S1::diff(angles[(i + 1) % angles.size()], angles[i], true);
        }
        // One turn in all, and not two.
        RC_ASSERT(angles.size() < 2 || std::fabs(turned - z2Pi) < 1e-9);
    }));
}

}  // namespace
}  // namespace ZT
