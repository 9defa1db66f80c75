#include <gtest/gtest.h>

#include <sibling/Color.h>

namespace PW {
namespace {

TEST(SiblingColor, BeginsOpaqueBlack) {
    EXPECT_EQ(Color(), Color(0, 0, 0, 255));
}

TEST(SiblingColor, GivesItsComponentsBack) {
    const Color color(1, 2, 3, 4);
    EXPECT_EQ(color.GetRed(), 1);
    EXPECT_EQ(color.GetGreen(), 2);
    EXPECT_EQ(color.GetBlue(), 3);
    EXPECT_EQ(color.GetAlpha(), 4);
}

TEST(SiblingColor, IsOpaqueUnlessToldOtherwise) {
    EXPECT_EQ(Color(9, 8, 7).GetAlpha(), 255);
}

TEST(SiblingColor, IsEqualInAllComponentsOnly) {
    const Color color(1, 2, 3, 4);
    EXPECT_EQ(color, Color(1, 2, 3, 4));
    EXPECT_NE(color, Color(0, 2, 3, 4));
    EXPECT_NE(color, Color(1, 0, 3, 4));
    EXPECT_NE(color, Color(1, 2, 0, 4));
    EXPECT_NE(color, Color(1, 2, 3, 0));
}

}  // namespace
}  // namespace PW
