#include <zt/numerics/IntegerConversion.h>

#include <gtest/gtest.h>

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

TEST(IntegerConversion, AnswersTheSameInAdvanceAndAtRunTime) {
    static_assert(TruncateToInt32(1e300) == kNoInt32);
    static_assert(TruncateToInt64(-1e300) == kNoInt64);
    volatile double huge = 1e300;
    EXPECT_EQ(TruncateToInt32(huge), TruncateToInt32(1e300));
    EXPECT_EQ(TruncateToInt64(-huge), TruncateToInt64(-1e300));
}

}  // namespace
}  // namespace ZT
