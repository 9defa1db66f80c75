#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/time/TickCount.h>
#include <zt/modules/TimerBasic.h>
#include <zt/frame/VirtualTable_test.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A sleep may end within the millisecond in which it is over.
constexpr ULONGLONG kClock = 1;

struct Gauge : TimerBasic {
    void OnTimer(ulong nTick) override {
        ticks.push_back(nTick);
        times.push_back(GetTickCount64() - start);
        threads.push_back(std::this_thread::get_id());
        onTick(nTick);
    }
    void Run(ulong nInterval, ulong nDuration) {
        start = GetTickCount64();
        SetTimer(nInterval, nDuration);
        passed = GetTickCount64() - start;
    }

    // Anew, a few times at most, while a busy machine makes it last `limit` or longer.
    void RunWithin(ULONGLONG limit, ulong nInterval, ulong nDuration) {
        for (int attempt = 0; attempt < 5; ++attempt) {
            ticks.clear();
            times.clear();
            Run(nInterval, nDuration);
            if (passed < limit) return;
        }
    }

    std::vector<ulong> ticks;
    std::vector<ULONGLONG> times;
    std::vector<std::thread::id> threads;
    std::function<void(ulong)> onTick = [](ulong) {};
    ULONGLONG start = 0;
    ULONGLONG passed = 0;
};

TEST(TimerBasic, FieldsStandInTheirOrderBehindTheTable) {
    EXPECT_EQ(offsetof(TimerBasic, m_nReserved), 8u);
    EXPECT_EQ(offsetof(TimerBasic, m_nDuration), 12u);
    EXPECT_EQ(sizeof(TimerBasic), 16u);
    EXPECT_TRUE((std::is_same_v<decltype(TimerBasic::m_nDuration), std::uint32_t>));
    EXPECT_TRUE(std::has_virtual_destructor_v<TimerBasic>);
}

TEST(TimerBasic, TickStandsBeforeTheDestructorInTheTable) {
    struct Ended : Gauge {
        explicit Ended(bool& itsEnd) : end(itsEnd) {}
        ~Ended() override { end = true; }
        bool& end;
    };
    bool end = false;
    auto* const timer = new Ended(end);
    CallSlot<void, ulong>(timer, 0, 7);
    EXPECT_THAT(timer->ticks, ElementsAre(7));
    CallSlot<void>(timer, 2);
    EXPECT_TRUE(end);
}

TEST(TimerBasic, StartsAtRestAndIsCopiedWithItsFields) {
    TimerBasic timer;
    EXPECT_EQ(timer.m_nReserved, 0u);
    EXPECT_EQ(timer.m_nDuration, 0u);
    timer.m_nReserved = 3;
    timer.m_nDuration = 4;
    const TimerBasic constructed(timer);
    TimerBasic assigned;
    assigned = timer;
    EXPECT_EQ(constructed.m_nReserved, 3u);
    EXPECT_EQ(constructed.m_nDuration, 4u);
    EXPECT_EQ(assigned.m_nReserved, 3u);
    EXPECT_EQ(assigned.m_nDuration, 4u);
    timer.SetTimer(1, 2);  // the base does nothing at a tick
}

TEST(TimerBasic, DoesNotTickWithoutAnIntervalOrADurationNorWithTooLongAnInterval) {
    Gauge timer;
    timer.Run(0, 100);
    EXPECT_EQ(timer.m_nDuration, 100u);
    timer.Run(100, 0);
    EXPECT_EQ(timer.m_nDuration, 0u);
    timer.Run(200, 100);
    EXPECT_EQ(timer.m_nDuration, 100u);
    timer.Run(0xFFFFFFFF, 0xFFFFFFFE);
    EXPECT_EQ(timer.m_nDuration, 0xFFFFFFFEu);
    EXPECT_THAT(timer.ticks, IsEmpty());
}

TEST(TimerBasic, EachTickIsFollowedByASleep) {
    Gauge timer;
    timer.Run(50, 100);
    EXPECT_THAT(timer.ticks, ElementsAre(0, 1));
    EXPECT_GE(timer.times[1] + kClock, 50u);
    EXPECT_GE(timer.passed + kClock, 100u);
    EXPECT_EQ(timer.m_nDuration, 100u);
}

TEST(TimerBasic, EachSleepLastsOneInterval) {
    Gauge timer;
    timer.RunWithin(550, 200, 400);
    ASSERT_THAT(timer.ticks, ElementsAre(0, 1));
    EXPECT_GE(timer.times[1] + kClock, 200u);
    EXPECT_LT(timer.times[1], 380u);
    EXPECT_GE(timer.passed + kClock, 400u);
    EXPECT_LT(timer.passed, 550u);
}

TEST(TimerBasic, FirstTickComesAtOnceAndOneSleepFollows) {
    Gauge timer;
    timer.RunWithin(580, 300, 300);
    ASSERT_THAT(timer.ticks, ElementsAre(0));
    EXPECT_LT(timer.times[0], 290u);
    EXPECT_GE(timer.passed + kClock, 300u);
    EXPECT_LT(timer.passed, 580u);
}

TEST(TimerBasic, NoSleepFollowsTheTickThatEndsIt) {
    Gauge timer;
    timer.onTick = [&](ulong) { timer.KillTimer(); };
    timer.RunWithin(580, 300, 3'600'000);
    EXPECT_THAT(timer.ticks, ElementsAre(0, 1));
    EXPECT_GE(timer.passed + kClock, 300u);
    EXPECT_LT(timer.passed, 580u);
}

TEST(TimerBasic, OneTickFillsItsInterval) {
    Gauge timer;
    timer.Run(100, 100);
    EXPECT_THAT(timer.ticks, ElementsAre(0));
    EXPECT_GE(timer.passed + kClock, 100u);
}

TEST(TimerBasic, DurationThatIsNoMultipleGivesOneTickMore) {
    Gauge timer;
    timer.Run(30, 100);
    EXPECT_THAT(timer.ticks, ElementsAre(0, 1, 2, 3));
    for (ulong i = 0; i < 4; ++i) EXPECT_GE(timer.times[i] + kClock, i * 30) << i;
    EXPECT_GE(timer.passed + kClock, 100u);
}

TEST(TimerBasic, LastSleepIsWhatRemains) {
    Gauge timer;
    timer.Run(1200, 1201);
    ASSERT_THAT(timer.ticks, ElementsAre(0, 1));
    // A whole interval would be 1200.
    EXPECT_LT(timer.passed - timer.times[1], 1000u);
}

TEST(TimerBasic, TicksOnTheCallingThread) {
    Gauge timer;
    timer.Run(1, 2);
    EXPECT_THAT(timer.threads, ElementsAre(std::this_thread::get_id(), std::this_thread::get_id()));
}

TEST(TimerBasic, KilledAtItsFirstTickItTicksOnceMore) {
    Gauge timer;
    timer.onTick = [&](ulong) { timer.KillTimer(); };
    timer.Run(20, 3'600'000);
    EXPECT_THAT(timer.ticks, ElementsAre(0, 1));
    EXPECT_GE(timer.passed + kClock, 20u);
    EXPECT_EQ(timer.m_nDuration, 0u);
}

TEST(TimerBasic, KilledAtALaterTickItEndsThere) {
    Gauge timer;
    timer.onTick = [&](ulong tick) {
        if (tick == 2) timer.KillTimer();
    };
    timer.Run(2, 3'600'000);
    EXPECT_THAT(timer.ticks, ElementsAre(0, 1, 2));
}

TEST(TimerBasic, DurationCutShortEndsItBehindThatTime) {
    Gauge timer;
    timer.onTick = [&](ulong) { timer.m_nDuration = 6; };
    // 6 is not less than 3 times 2, but less than 4 times 2.
    timer.Run(2, 3'600'000);
    EXPECT_THAT(timer.ticks, ElementsAre(0, 1, 2, 3, 4));
}

TEST(TimerBasic, IsKilledFromAnotherThread) {
    Gauge timer;
    std::atomic<bool> ticking = false;
    timer.onTick = [&](ulong tick) { ticking = ticking || tick > 1; };
    std::thread runner([&] { timer.SetTimer(1, 3'600'000); });
    while (!ticking) Sleep(1);
    timer.KillTimer();
    runner.join();
    EXPECT_GE(timer.ticks.size(), 3u);
}

TEST(TimerBasic, ExceptionPassesThrough) {
    Gauge timer;
    timer.onTick = [](ulong) { throw std::runtime_error("no"); };
    EXPECT_THROW(timer.SetTimer(1, 100), std::runtime_error);
    EXPECT_THAT(timer.ticks, ElementsAre(0));
}

}  // namespace
}  // namespace ZT
