#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <zt/frame/TriStateAlg.h>

namespace ZT {
namespace {

constexpr ETri kStray = static_cast<ETri>(7);

TEST(TriStateAlg, IntToNikTakesMinusOneAndOneExactly) {
    EXPECT_EQ(TriStateAlg::IntToNik(-1), eUnknown);
    EXPECT_EQ(TriStateAlg::IntToNik(0), eFalse);
    EXPECT_EQ(TriStateAlg::IntToNik(1), eTrue);
    EXPECT_EQ(TriStateAlg::IntToNik(2), eFalse);
    EXPECT_EQ(TriStateAlg::IntToNik(-2), eFalse);
}

TEST(TriStateAlg, IntTo3StateIsTheSameMapping) {
    EXPECT_EQ(TriStateAlg::IntTo3State(-1), ZT3State::eUnknown);
    EXPECT_EQ(TriStateAlg::IntTo3State(0), ZT3State::eFalse);
    EXPECT_EQ(TriStateAlg::IntTo3State(1), ZT3State::eTrue);
    EXPECT_EQ(TriStateAlg::IntTo3State(2), ZT3State::eFalse);
}

TEST(TriStateAlg, NotKeepsUnknownAndTakesStrayValuesForFalse) {
    EXPECT_EQ(TriStateAlg::Not(eUnknown), eUnknown);
    EXPECT_EQ(TriStateAlg::Not(eTrue), eFalse);
    EXPECT_EQ(TriStateAlg::Not(eFalse), eTrue);
    EXPECT_EQ(TriStateAlg::Not(kStray), eTrue);
}

TEST(TriStateAlg, InverseIsNotInPlace) {
    for (ETri value : {eUnknown, eFalse, eTrue, kStray}) {
        const ETri expected = TriStateAlg::Not(value);
        TriStateAlg::Inverse(value);
        EXPECT_EQ(value, expected);
    }
}

TEST(TriStateAlg, ToStringGivesTheNames) {
    EXPECT_EQ(TriStateAlg::ToString(eUnknown), "eUnknown");
    EXPECT_EQ(TriStateAlg::ToString(eTrue), "eTrue");
    EXPECT_EQ(TriStateAlg::ToString(eFalse), "eFalse");
    EXPECT_EQ(TriStateAlg::ToString(static_cast<ETri>(2)), "eFalse");
}

TEST(TriStateAlg, EveryOtherNumberIsFalse) {
    EXPECT_TRUE(rc::check([](std::int32_t number) {
        RC_PRE(number != -1 && number != 1);
        RC_ASSERT(TriStateAlg::IntToNik(number) == eFalse);
        RC_ASSERT(TriStateAlg::IntTo3State(number) == ZT3State::eFalse);
        RC_ASSERT(TriStateAlg::Not(static_cast<ETri>(number)) == eTrue);
        RC_ASSERT(TriStateAlg::ToString(static_cast<ETri>(number)) == "eFalse");
    }));
}

}  // namespace
}  // namespace ZT
