// Runs of the elements of a list.

#include <gtest/gtest.h>
#include <zt/ranges/RangePos.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace ZT {
namespace {

POSITION At(std::intptr_t place) {
    return reinterpret_cast<POSITION>(place);
}

RangePos RunOf(POSITION first, POSITION last) {
    RangePos run;
    run.m_posFirst = first;
    run.m_posLast = last;
    return run;
}

void ExpectRun(const RangePos& run, POSITION first, POSITION last) {
    EXPECT_EQ(run.m_posFirst, first);
    EXPECT_EQ(run.m_posLast, last);
}

TEST(RangePos, FieldsFollowTheTableAfterTheOnlyVirtualOperation) {
    EXPECT_TRUE(std::has_virtual_destructor_v<RangePos>);
    EXPECT_EQ(offsetof(RangePos, m_posFirst), 8u);
    EXPECT_EQ(offsetof(RangePos, m_posLast), 16u);
    EXPECT_EQ(sizeof(RangePos), 24u);
}

TEST(RangePos, PairHasTheSameTwoFieldsInTheSameOrder) {
    using Pair = ZTPair<POSITION>;
    EXPECT_EQ(offsetof(Pair, m_first), 0u);
    EXPECT_EQ(offsetof(Pair, m_last), 8u);
    EXPECT_EQ(sizeof(Pair), 16u);
    EXPECT_EQ(Pair().m_first, nullptr);
    EXPECT_EQ(Pair().m_last, nullptr);
}

TEST(RangePos, NewOneIsUnset) {
    ExpectRun(RangePos(), nullptr, nullptr);
}

TEST(RangePos, AllCopiesTakeBothPositions) {
    const RangePos run = RunOf(At(16), At(32));
    ExpectRun(RangePos(run), At(16), At(32));
    RangePos assigned;
    assigned = run;
    ExpectRun(assigned, At(16), At(32));
    RangePos copied;
    copied.Copy(run);
    ExpectRun(copied, At(16), At(32));
    RangePos fromPair;
    fromPair.CopyPair(ZTPair<POSITION>{At(16), At(32)});
    ExpectRun(fromPair, At(16), At(32));
}

TEST(RangePos, ResetAndZeroMakeItUnset) {
    RangePos run = RunOf(At(16), At(32));
    run.Reset();
    ExpectRun(run, nullptr, nullptr);
    run = RunOf(At(16), At(32));
    run = 0;
    ExpectRun(run, nullptr, nullptr);
}

TEST(RangePos, AssignedIntegerIsWidenedWithItsSign) {
    RangePos run;
    run = -1;
    ExpectRun(run, At(-1), At(-1));
    run = 5;
    ExpectRun(run, At(5), At(5));
}

TEST(RangePos, IsValidWithBothPositionsNullOrNeither) {
    EXPECT_TRUE(RangePos().IsValid());
    EXPECT_TRUE(RunOf(At(16), At(32)).IsValid());
    EXPECT_TRUE(RunOf(At(16), At(16)).IsValid());
    EXPECT_FALSE(RunOf(At(16), nullptr).IsValid());
    EXPECT_FALSE(RunOf(nullptr, At(16)).IsValid());
}

TEST(RangePos, IsValidExWithNeitherPositionNull) {
    EXPECT_TRUE(RunOf(At(16), At(32)).IsValidEx());
    EXPECT_FALSE(RangePos().IsValidEx());
    EXPECT_FALSE(RunOf(At(16), nullptr).IsValidEx());
    EXPECT_FALSE(RunOf(nullptr, At(16)).IsValidEx());
}

}  // namespace
}  // namespace ZT
