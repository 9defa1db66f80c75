#include <zt/numerics/IntegerConversion.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>

namespace ZT {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kIeeeInfinity = std::numeric_limits<double>::infinity();

TEST(IntegerConversion, TruncatesTowardsZero) {
    EXPECT_EQ(TruncateToInt32(2.9), 2);
    EXPECT_EQ(TruncateToInt32(-2.9), -2);
    EXPECT_EQ(TruncateToInt64(4294967296.9), 4294967296);
    EXPECT_EQ(TruncateToInt64(-4294967296.9), -4294967296);
}

TEST(IntegerConversion, KeepsTheLastNumbersThatFit) {
    EXPECT_EQ(TruncateToInt32(2147483647.9), 2147483647);
    EXPECT_EQ(TruncateToInt32(-2147483648.9), kNoInt32);
    EXPECT_EQ(TruncateToInt64(9223372036854774784.0), 9223372036854774784);
}

TEST(IntegerConversion, WhatDoesNotFitIsTheMostNegativeInteger) {
    for (const double x : {2147483648.0, -2147483649.0, 1e307, -1e307, kNaN, kIeeeInfinity}) {
        EXPECT_EQ(TruncateToInt32(x), kNoInt32) << x;
    }
    for (const double x : {9223372036854775808.0, 1e307, -1e307, kNaN, -kIeeeInfinity}) {
        EXPECT_EQ(TruncateToInt64(x), kNoInt64) << x;
    }
}

// Numbers that fit just so, that do not by little or by far, and that are none.
constexpr double kEdges[] = {0.0,
                             -0.9,
                             2147483647.9,
                             2147483648.0,
                             -2147483648.0,
                             -2147483648.9,
                             -2147483649.0,
                             9223372036854774784.0,
                             9223372036854775808.0,
                             -9223372036854775808.0,
                             -9223372036854777856.0,
                             1e300,
                             -1e300,
                             kIeeeInfinity,
                             -kIeeeInfinity,
                             kNaN};

struct Truncated {
    std::int32_t narrow[std::size(kEdges)];
    std::int64_t wide[std::size(kEdges)];
};

constexpr Truncated TruncateEdges() {
    Truncated result{};
    for (std::size_t i = 0; i < std::size(kEdges); ++i) {
        result.narrow[i] = TruncateToInt32(kEdges[i]);
        result.wide[i] = TruncateToInt64(kEdges[i]);
    }
    return result;
}

TEST(IntegerConversion, AnswersTheSameInAdvanceAndAtRunTime) {
    constexpr Truncated inAdvance = TruncateEdges();
    for (std::size_t i = 0; i < std::size(kEdges); ++i) {
        volatile double x = kEdges[i];
        EXPECT_EQ(TruncateToInt32(x), inAdvance.narrow[i]) << x;
        EXPECT_EQ(TruncateToInt64(x), inAdvance.wide[i]) << x;
    }
}

TEST(IntegerConversion, AnswersTheSameForANumberThatTheCompilerKnows) {
    const double huge = 1e300;
    EXPECT_EQ(TruncateToInt32(huge), kNoInt32);
    EXPECT_EQ(TruncateToInt64(huge), kNoInt64);
}

}  // namespace
}  // namespace ZT
