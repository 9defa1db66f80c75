#include <gtest/gtest.h>

#include <sibling/Range.h>

namespace PW {
namespace {

TEST(SiblingRange, BeginsEmptyAndInternal) {
    const Range range;
    EXPECT_EQ(range.GetMin(), 1e307);
    EXPECT_EQ(range.GetMax(), -1e307);
    EXPECT_FALSE(range.IsExternal());
}

TEST(SiblingRange, KeepsLimitsInWhateverOrder) {
    Range range(3.0, 1.0);
    EXPECT_EQ(range.GetMin(), 3.0);
    EXPECT_EQ(range.GetMax(), 1.0);
    range.Set(-0.5, -7.0);
    EXPECT_EQ(range.GetMin(), -0.5);
    EXPECT_EQ(range.GetMax(), -7.0);
}

TEST(SiblingRange, LimitsAndFlagAreIndependent) {
    Range range(0.0, 1.0);
    range.SetExternal(true);
    EXPECT_TRUE(range.IsExternal());
    EXPECT_EQ(range.GetMin(), 0.0);
    EXPECT_EQ(range.GetMax(), 1.0);
    range.Set(2.0, 3.0);
    EXPECT_TRUE(range.IsExternal());
    range.SetExternal(false);
    EXPECT_FALSE(range.IsExternal());
    EXPECT_EQ(range.GetMin(), 2.0);
}

TEST(SiblingRange, SetReachesADerivedClass) {
    struct Ordered : Range {
        void Set(double lo, double hi) override {
            Range::Set(lo < hi ? lo : hi, lo < hi ? hi : lo);
        }
    };
    Ordered range;
    static_cast<Range&>(range).Set(5.0, 2.0);
    EXPECT_EQ(range.GetMin(), 2.0);
    EXPECT_EQ(range.GetMax(), 5.0);
}

TEST(SiblingRange, CopiesAllThatItHolds) {
    Range source(1.0, 2.0);
    source.SetExternal(true);
    Range copy;
    copy = source;
    for (const Range& range : {copy, Range(source)}) {
        EXPECT_EQ(range.GetMin(), 1.0);
        EXPECT_EQ(range.GetMax(), 2.0);
        EXPECT_TRUE(range.IsExternal());
    }
}

}  // namespace
}  // namespace PW
