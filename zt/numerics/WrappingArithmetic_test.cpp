#include <zt/numerics/WrappingArithmetic.h>

#include <gtest/gtest.h>

#include <limits>

namespace ZT {
namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

TEST(WrappingArithmetic, IsPlainArithmeticWhereTheResultFits) {
    EXPECT_EQ(WrappingSum(3, -5), -2);
    EXPECT_EQ(WrappingDifference(3, -5), 8);
    EXPECT_EQ(WrappingProduct(-3, 5), -15);
    EXPECT_EQ(WrappingProduct(-3, -5), 15);
}

TEST(WrappingArithmetic, WrapsRoundWhereTheResultDoesNotFit) {
    EXPECT_EQ(WrappingSum(kHighest, 1), kLowest);
    EXPECT_EQ(WrappingSum(kLowest, -1), kHighest);
    EXPECT_EQ(WrappingDifference(kLowest, 1), kHighest);
    EXPECT_EQ(WrappingDifference(0, kLowest), kLowest);
    EXPECT_EQ(WrappingProduct(kLowest, -1), kLowest);
    EXPECT_EQ(WrappingProduct(65536, 65536), 0);
}

}  // namespace
}  // namespace ZT
