#include <gtest/gtest.h>

#include <platform/time/TickCount.h>
#include <zt/frame/ModifiableBasic.h>
#include <cstddef>
#include <limits>
#include <utility>

namespace ZT {
namespace {

struct Stamped : ModifiableBasic {
    Stamped() = default;
    explicit Stamped(uint64 time) { m_timeModified = time; }
    static constexpr std::size_t StampOffset() { return offsetof(Stamped, m_timeModified); }
};

// Whether `time` lies between two readings of the clock, which may have begun anew.
bool Between(std::uint32_t before, uint64 time, std::uint32_t after) {
    return time <= std::numeric_limits<std::uint32_t>::max() &&
           static_cast<std::uint32_t>(time) - before <= after - before;
}

TEST(ModifiableBasic, IsOneStamp) {
    EXPECT_EQ(Stamped::StampOffset(), 0u);
    EXPECT_EQ(sizeof(ModifiableBasic), 8u);
}

TEST(ModifiableBasic, NewObjectIsStampedWithThePresentTick) {
    const std::uint32_t before = GetTickCount();
    const ModifiableBasic object;
    EXPECT_TRUE(Between(before, object.GetTimeModified(), GetTickCount()));
}

TEST(ModifiableBasic, SetModifiedStampsThePresentTick) {
    Stamped object(0x500000000u);
    const std::uint32_t before = GetTickCount();
    object.SetModified();
    EXPECT_TRUE(Between(before, object.GetTimeModified(), GetTickCount()));
}

TEST(ModifiableBasic, AssignmentTakesTheStamp) {
    Stamped copied;
    const Stamped source(12345);
    copied = source;
    EXPECT_EQ(copied.GetTimeModified(), 12345u);
    Stamped moved;
    moved = Stamped(777);
    EXPECT_EQ(moved.GetTimeModified(), 777u);
}

}  // namespace
}  // namespace ZT
