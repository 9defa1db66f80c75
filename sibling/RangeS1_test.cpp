#include <gtest/gtest.h>

#include <sibling/RangeS1.h>

namespace PW {
namespace {

TEST(SiblingRangeS1, BeginsEmptyAndInternal) {
    const RangeS1 arc;
    EXPECT_EQ(arc.GetMin(), 1e307);
    EXPECT_EQ(arc.GetMax(), -1e307);
    EXPECT_FALSE(arc.IsExternal());
    EXPECT_EQ(arc.GetState(), RangeS1::eStateEmpty);
}

TEST(SiblingRangeS1, IsPartialBetweenLimitsInWhateverOrder) {
    const RangeS1 arc(2.0, -2.0);
    EXPECT_EQ(arc.GetMin(), 2.0);
    EXPECT_EQ(arc.GetMax(), -2.0);
    EXPECT_FALSE(arc.IsExternal());
    EXPECT_EQ(arc.GetState(), RangeS1::eStatePartial);
}

TEST(SiblingRangeS1, StateLimitsAndFlagAreIndependent) {
    RangeS1 arc(1.0, 2.0);
    for (const auto state : {RangeS1::eStateFull, RangeS1::eStateEmpty, RangeS1::eStatePartial}) {
        arc.SetState(state);
        EXPECT_EQ(arc.GetState(), state);
        EXPECT_EQ(arc.GetMin(), 1.0);
        EXPECT_EQ(arc.GetMax(), 2.0);
        EXPECT_FALSE(arc.IsExternal());
    }
    arc.SetState(RangeS1::eStateFull);
    arc.Set(3.0, -3.0);
    arc.SetExternal(true);
    EXPECT_EQ(arc.GetState(), RangeS1::eStateFull);
    EXPECT_EQ(arc.GetMin(), 3.0);
    EXPECT_EQ(arc.GetMax(), -3.0);
    EXPECT_TRUE(arc.IsExternal());
}

TEST(SiblingRangeS1, StatesHaveTheirValues) {
    EXPECT_EQ(sizeof(RangeS1::EState), 4u);
    EXPECT_EQ(RangeS1::eStateFull, 0);
    EXPECT_EQ(RangeS1::eStateEmpty, 1);
    EXPECT_EQ(RangeS1::eStatePartial, 2);
}

TEST(SiblingRangeS1, CopiesAllThatItHolds) {
    RangeS1 source(1.0, 2.0);
    source.SetExternal(true);
    source.SetState(RangeS1::eStateFull);
    RangeS1 copy;
    copy = source;
    for (const RangeS1& arc : {copy, RangeS1(source)}) {
        EXPECT_EQ(arc.GetMin(), 1.0);
        EXPECT_EQ(arc.GetMax(), 2.0);
        EXPECT_TRUE(arc.IsExternal());
        EXPECT_EQ(arc.GetState(), RangeS1::eStateFull);
    }
}

TEST(SiblingRangeS1, IsARange) {
    RangeS1 arc;
    Range& range = arc;
    range.Set(0.5, 1.5);
    EXPECT_EQ(arc.GetMin(), 0.5);
    EXPECT_EQ(arc.GetMax(), 1.5);
    EXPECT_EQ(arc.GetState(), RangeS1::eStateEmpty);
}

}  // namespace
}  // namespace PW
