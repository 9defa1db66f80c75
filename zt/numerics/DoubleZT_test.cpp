#include <zt/numerics/DoubleZT.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/ExactNumbers.h>

#include <bit>
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>

namespace ZT {
namespace {

using testing_support::Is;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kIeeeInfinity = std::numeric_limits<double>::infinity();

std::string Text(double x) {
    return static_cast<const char*>(DoubleZT::ToString(x));
}

std::string PrintedByTheCLibrary(double x) {
    char text[512];
    std::snprintf(text, sizeof text, "%.4f", x);
    return text;
}

TEST(DoubleZT, ObjectHoldsNothing) {
    EXPECT_TRUE(std::is_empty_v<DoubleZT>);
}

TEST(DoubleZT, IsEqualTakesTheCallersTolerance) {
    EXPECT_TRUE(DoubleZT::IsEqual(1.0, 1.25, 0.5));
    EXPECT_FALSE(DoubleZT::IsEqual(1.0, 1.75, 0.5));
}

TEST(DoubleZT, IsEqualIsFalseAtExactlyTheTolerance) {
    EXPECT_FALSE(DoubleZT::IsEqual(1.0, 1.5, 0.5));
    EXPECT_FALSE(DoubleZT::IsEqual(1.5, 1.0, 0.5));
}

TEST(DoubleZT, IsEqualHoldsForInfiniteNumbersOfOneSide) {
    EXPECT_TRUE(DoubleZT::IsEqual(1e307, 5e306, 0.5));
    EXPECT_TRUE(DoubleZT::IsEqual(-5e306, -1e307, 0.5));
    EXPECT_FALSE(DoubleZT::IsEqual(1e307, 9e305, 0.5));
    EXPECT_FALSE(DoubleZT::IsEqual(-1e307, 1e307, 0.5));
    EXPECT_FALSE(DoubleZT::IsEqual(1e307, -1e307, 0.5));
}

TEST(DoubleZT, IsEqualTakesTheThresholdItselfAsFinite) {
    EXPECT_TRUE(DoubleZT::IsEqual(zFinite, zFinite, 0.5));
    EXPECT_TRUE(DoubleZT::IsEqual(-zFinite, -zFinite, 0.5));
    EXPECT_FALSE(DoubleZT::IsEqual(zFinite, 1e307, 0.5));
    EXPECT_FALSE(DoubleZT::IsEqual(-zFinite, -1e307, 0.5));
    EXPECT_TRUE(DoubleZT::IsEqual(2e306, 8e306, 0.5));
    EXPECT_TRUE(DoubleZT::IsEqual(-2e306, -8e306, 0.5));
}

TEST(DoubleZT, IsEqualIsFalseForNaN) {
    EXPECT_FALSE(DoubleZT::IsEqual(kNaN, kNaN, 1.0));
    EXPECT_FALSE(DoubleZT::IsEqual(kNaN, 1e307, 1.0));
}

TEST(DoubleZT, IsEqualPercentComparesAFractionOfTheFirstNumber) {
    EXPECT_TRUE(DoubleZT::IsEqualPercent(100.0, 100.5, 0.01));
    EXPECT_FALSE(DoubleZT::IsEqualPercent(100.0, 102.0, 0.01));
    EXPECT_TRUE(DoubleZT::IsEqualPercent(-100.0, -100.5, 0.01));
}

TEST(DoubleZT, IsEqualPercentIsNotSymmetric) {
    EXPECT_FALSE(DoubleZT::IsEqualPercent(1.0, 2.0, 0.75));
    EXPECT_TRUE(DoubleZT::IsEqualPercent(2.0, 1.0, 0.75));
}

TEST(DoubleZT, IsEqualPercentIsFalseAtExactlyTheFraction) {
    EXPECT_FALSE(DoubleZT::IsEqualPercent(2.0, 3.0, 0.5));
}

TEST(DoubleZT, IsEqualPercentDividesTheDifference) {
    // The quotient less one is a little less than the fraction, by rounding.
    const double b = 6.6 + 6.6 * 0.9;
    ASSERT_LT(b / 6.6 - 1, 0.9);
    EXPECT_FALSE(DoubleZT::IsEqualPercent(6.6, b, 0.9));
}

TEST(DoubleZT, IsEqualPercentOfATinyBaseAsksForATinyNumber) {
    EXPECT_TRUE(DoubleZT::IsEqualPercent(9e-9, -9e-9, 0.0));
    EXPECT_TRUE(DoubleZT::IsEqualPercent(0.0, 0.0, 0.0));
    EXPECT_FALSE(DoubleZT::IsEqualPercent(0.0, 1e-8, 1e9));
    EXPECT_FALSE(DoubleZT::IsEqualPercent(0.0, -1.0, 1e9));
    EXPECT_FALSE(DoubleZT::IsEqualPercent(1e-8, 0.0, 0.5));
}

TEST(DoubleZT, IsZeroIsStrict) {
    EXPECT_TRUE(DoubleZT::IsZero(0.25, 0.5));
    EXPECT_TRUE(DoubleZT::IsZero(-0.25, 0.5));
    EXPECT_FALSE(DoubleZT::IsZero(0.5, 0.5));
    EXPECT_FALSE(DoubleZT::IsZero(-1.0, 0.5));
    EXPECT_FALSE(DoubleZT::IsZero(kNaN, 0.5));
}

TEST(DoubleZT, IsFiniteBelowTheThreshold) {
    EXPECT_TRUE(DoubleZT::IsFinite(9e305));
    EXPECT_TRUE(DoubleZT::IsFinite(-9e305));
    EXPECT_FALSE(DoubleZT::IsFinite(zFinite));
    EXPECT_FALSE(DoubleZT::IsFinite(-zFinite));
    EXPECT_FALSE(DoubleZT::IsFinite(1e307));
    EXPECT_FALSE(DoubleZT::IsFinite(kNaN));
    EXPECT_FALSE(DoubleZT::IsFinite(kIeeeInfinity));
}

TEST(DoubleZT, IsNaNOnlyForNaN) {
    EXPECT_TRUE(DoubleZT::IsNaN(kNaN));
    EXPECT_FALSE(DoubleZT::IsNaN(0.0));
    EXPECT_FALSE(DoubleZT::IsNaN(kIeeeInfinity));
}

TEST(DoubleZT, IsNegativeAsksForTheSignThatTheFlagNames) {
    EXPECT_TRUE(DoubleZT::IsNegative(-1.0, true, false, 0.5));
    EXPECT_FALSE(DoubleZT::IsNegative(1.0, true, true, 0.5));
    EXPECT_TRUE(DoubleZT::IsNegative(1.0, false, false, 0.5));
    EXPECT_FALSE(DoubleZT::IsNegative(-1.0, false, true, 0.5));
}

TEST(DoubleZT, IsNegativeNearZeroIsTheAnswerForZero) {
    for (const bool atZero : {false, true}) {
        EXPECT_EQ(DoubleZT::IsNegative(-0.25, true, atZero, 0.5), atZero);
        EXPECT_EQ(DoubleZT::IsNegative(0.25, false, atZero, 0.5), atZero);
    }
}

TEST(DoubleZT, IsNegativeAtExactlyTheToleranceHasASign) {
    EXPECT_TRUE(DoubleZT::IsNegative(-0.5, true, false, 0.5));
    EXPECT_FALSE(DoubleZT::IsNegative(0.5, true, true, 0.5));
}

TEST(DoubleZT, IsNegativeOfZeroWithoutAToleranceIsFalseEitherWay) {
    EXPECT_FALSE(DoubleZT::IsNegative(0.0, true, true, 0.0));
    EXPECT_FALSE(DoubleZT::IsNegative(0.0, false, true, 0.0));
}

TEST(DoubleZT, IsNegativeIsFalseForNaN) {
    EXPECT_FALSE(DoubleZT::IsNegative(kNaN, true, true, 0.5));
    EXPECT_FALSE(DoubleZT::IsNegative(kNaN, false, true, 0.5));
}

TEST(DoubleZT, IsRatioIncludesBothEndsAndTheTolerance) {
    EXPECT_TRUE(DoubleZT::IsRatio(0.5, 0.25));
    EXPECT_TRUE(DoubleZT::IsRatio(-0.25, 0.25));
    EXPECT_TRUE(DoubleZT::IsRatio(1.25, 0.25));
    EXPECT_FALSE(DoubleZT::IsRatio(std::nextafter(-0.25, -1.0), 0.25));
    EXPECT_FALSE(DoubleZT::IsRatio(std::nextafter(1.25, 2.0), 0.25));
    EXPECT_FALSE(DoubleZT::IsRatio(kNaN, 0.25));
    // As a difference from 1 it would be more than the tolerance, by rounding.
    ASSERT_GT((1.0 + zToler) - 1.0, zToler);
    EXPECT_TRUE(DoubleZT::IsRatio(1.0 + zToler, zToler));
}

TEST(DoubleZT, RoundTakesAnExactHalfDown) {
    EXPECT_EQ(DoubleZT::Round(2.5), 2);
    EXPECT_EQ(DoubleZT::Round(-2.5), -3);
    EXPECT_EQ(DoubleZT::Round(2.500001), 3);
    EXPECT_EQ(DoubleZT::Round(-2.4), -2);
}

TEST(DoubleZT, RoundGives32Bits) {
    static_assert(std::is_same_v<decltype(DoubleZT::Round(0.0)), int>);
    EXPECT_EQ(DoubleZT::Round(2147483647.25), 2147483647);
}

TEST(DoubleZT, RoundThatDoesNotFitHasADefinedResult) {
    EXPECT_EQ(DoubleZT::Round(2147483647.75), kNoInt32);
    EXPECT_EQ(DoubleZT::Round(-1e300), kNoInt32);
    EXPECT_EQ(DoubleZT::Round(kNaN), kNoInt32);
    // The rule goes on from the integer that stands for what does not fit.
    EXPECT_EQ(DoubleZT::Round(1e300), kNoInt32 + 1);
}

TEST(DoubleZT, RoundToDigitsDividesTheRoundedMultiple) {
    EXPECT_THAT(DoubleZT::Round(1.2345, 2), Is(123.0 / 100.0));
    EXPECT_THAT(DoubleZT::Round(-1.2355, 2), Is(-124.0 / 100.0));
    EXPECT_THAT(DoubleZT::Round(2.625, 2), Is(262.0 / 100.0));
    EXPECT_THAT(DoubleZT::Round(-2.625, 2), Is(-263.0 / 100.0));
    EXPECT_THAT(DoubleZT::Round(2.75, 0), Is(3.0));
}

TEST(DoubleZT, CeilCountsTheStepsThatCover) {
    EXPECT_EQ(DoubleZT::Ceil(7.5, 2.0), 4);
    EXPECT_EQ(DoubleZT::Ceil(0.25, 2.0), 1);
}

TEST(DoubleZT, CeilOfAWholeNumberOfStepsIsThatNumber) {
    EXPECT_EQ(DoubleZT::Ceil(6.0, 2.0), 3);
    EXPECT_EQ(DoubleZT::Ceil(6.0 + 5e-11, 2.0), 3);
    EXPECT_EQ(DoubleZT::Ceil(0.0, 2.0), 0);
}

TEST(DoubleZT, CeilSnapsToTheStepBefore) {
    // Truncation of a negative number goes up, so the step below it is one less.
    EXPECT_EQ(DoubleZT::Ceil(-2.9999999999999, 1.0), -3);
    EXPECT_EQ(DoubleZT::Ceil(-5.9999999999999, 2.0), -3);
}

TEST(DoubleZT, CeilExactlyTheToleranceFromTheStepBeforeDoesNotSnap) {
    EXPECT_EQ(DoubleZT::Ceil(-zToler, 2 * zToler), 1);
}

TEST(DoubleZT, CeilWithANegativeStepGoesUpToo) {
    EXPECT_EQ(DoubleZT::Ceil(7.5, -2.0), -2);
}

TEST(DoubleZT, CeilWithAStepOfExactlyTheToleranceIsAStep) {
    EXPECT_EQ(DoubleZT::Ceil(3.5 * zToler, zToler), 3);
}

TEST(DoubleZT, CeilOfANegativeNumberIsOneMoreThanTheTruncatedOne) {
    EXPECT_EQ(DoubleZT::Ceil(-7.5, 2.0), -2);
    EXPECT_EQ(DoubleZT::Ceil(-0.5, 1.0), 1);
}

TEST(DoubleZT, CeilWithAStepOfZeroTruncatesTheNumber) {
    EXPECT_EQ(DoubleZT::Ceil(7.9, 0.0), 7);
    EXPECT_EQ(DoubleZT::Ceil(-7.9, std::nextafter(zToler, 0.0)), -7);
}

TEST(DoubleZT, CeilExactlyTheToleranceAboveAStepIsTheNext) {
    EXPECT_EQ(DoubleZT::Ceil(zToler, 1.0), 1);
    EXPECT_EQ(DoubleZT::Ceil(std::nextafter(zToler, 0.0), 1.0), 0);
}

TEST(DoubleZT, CeilThatDoesNotFitHasADefinedResult) {
    EXPECT_EQ(DoubleZT::Ceil(2147483647.5, 1.0), kNoInt32);
}

TEST(DoubleZT, ToStringHasFourDecimals) {
    EXPECT_EQ(Text(1.5), "1.5000");
    EXPECT_EQ(Text(-0.00005), "-0.0001");
    EXPECT_EQ(Text(0.0), "0.0000");
    EXPECT_EQ(Text(-0.0), "-0.0000");
    EXPECT_EQ(Text(123456789.98761), "123456789.9876");
}

TEST(DoubleZT, ToStringOfAnInfiniteNumberHasATrailingBlank) {
    EXPECT_EQ(Text(2e306), "inf ");
    EXPECT_EQ(Text(-2e306), "-inf ");
    EXPECT_EQ(Text(kIeeeInfinity), "inf ");
    EXPECT_EQ(Text(-kIeeeInfinity), "-inf ");
}

TEST(DoubleZT, ToStringOfTheThresholdIsANumber) {
    EXPECT_EQ(Text(zFinite), PrintedByTheCLibrary(1e306));
    EXPECT_EQ(Text(-zFinite), PrintedByTheCLibrary(-1e306));
    EXPECT_EQ(Text(-zFinite).size(), 1 + 307 + 1 + 4u);
}

TEST(DoubleZT, ToStringPrintsANaN) {
    EXPECT_EQ(Text(kNaN), PrintedByTheCLibrary(kNaN));
    EXPECT_EQ(Text(-kNaN), PrintedByTheCLibrary(-kNaN));
}

TEST(DoubleZT, ToStringPrintsAsTheCLibraryDoes) {
    EXPECT_TRUE(rc::check("on random bits", [] {
        const auto bits = *rc::gen::resize(10000, rc::gen::arbitrary<std::uint64_t>());
        const auto x = std::bit_cast<double>(bits);
        if (std::fabs(x) > zFinite) return;
        RC_ASSERT(Text(x) == PrintedByTheCLibrary(x));
    }));
    EXPECT_TRUE(rc::check("on numbers of everyday size", [] {
        const auto n = *rc::gen::resize(1000, rc::gen::arbitrary<std::int64_t>());
        const double x = static_cast<double>(n) / 32768.0;
        RC_ASSERT(Text(x) == PrintedByTheCLibrary(x));
    }));
}

TEST(DoubleZT, ToStringKeepsThePointInAnyLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) == nullptr) continue;
        EXPECT_EQ(Text(1.5), "1.5000") << name;
    }
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
}  // namespace ZT
