#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/time/WaitableTimer.h>
#include <zt/modules/TimerZt.h>
#include <zt/frame/VirtualTable_test.hpp>
#include <zt/modules/NotifyClient_test.hpp>

#include <atomic>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <vector>

#include <sys/resource.h>

namespace ZT {
namespace {

using testing::ElementsAre;

constexpr ulong kHour = 3'600'000;
constexpr ulong kRefused = 0x80000000;

int ended = 0;

struct Gauge : TimerZt {
    ~Gauge() override { ++ended; }
    void OnTimer(ulong nLow, ulong nHigh) override {
        dues.push_back(uint64{nHigh} << 32 | nLow);
        threads.push_back(std::this_thread::get_id());
        onTick();
    }
    std::size_t Ticks() const { return dues.size(); }

    std::vector<uint64> dues;
    std::vector<std::thread::id> threads;
    std::function<void()> onTick = [this] { KillTimer(); };
};

struct TimerZtTest : testing::Test {
    TimerZtTest() { ended = 0; }
    Gauge timer;
};

TEST_F(TimerZtTest, FieldsStandInTheirOrderBehindTheTable) {
    EXPECT_EQ(offsetof(TimerZt, m_hTimer), 8u);
    EXPECT_EQ(offsetof(TimerZt, m_bAutoDelete), 16u);
    EXPECT_EQ(sizeof(TimerZt), 24u);
    EXPECT_TRUE((std::is_same_v<decltype(TimerZt::m_hTimer), HANDLE>));
    EXPECT_TRUE((std::is_same_v<decltype(TimerZt::m_bAutoDelete), bool>));
    EXPECT_TRUE(std::has_virtual_destructor_v<TimerZt>);
}

TEST_F(TimerZtTest, TickStandsBeforeTheDestructorInTheTable) {
    auto* const onHeap = new Gauge;
    CallSlot<void, ulong, ulong>(onHeap, 0, 5, 6);
    EXPECT_THAT(onHeap->dues, ElementsAre(uint64{6} << 32 | 5));
    CallSlot<void>(onHeap, 2);
    EXPECT_EQ(ended, 1);
}

TEST_F(TimerZtTest, StartsIdle) {
    EXPECT_EQ(timer.m_hTimer, nullptr);
    EXPECT_FALSE(timer.m_bAutoDelete);
    timer.KillTimer();
    EXPECT_EQ(timer.m_hTimer, nullptr);
    TimerZt().OnTimer(1, 2);  // the base does nothing
}

TEST_F(TimerZtTest, FirstTickComesAtOnceAndOnTheCallingThread) {
    timer.SetTimer(kHour);
    EXPECT_THAT(timer.threads, ElementsAre(std::this_thread::get_id()));
    EXPECT_EQ(timer.m_hTimer, nullptr);
}

TEST_F(TimerZtTest, TicksUntilItIsKilled) {
    timer.onTick = [&] {
        EXPECT_NE(timer.m_hTimer, nullptr);
        if (timer.Ticks() == 5) timer.KillTimer();
    };
    timer.SetTimer(2);
    EXPECT_EQ(timer.Ticks(), 5u);
    for (std::size_t i = 1; i < 5; ++i) {
        // Milliseconds are told in tenths of microseconds; a slow machine may miss a tick.
        const uint64 apart = timer.dues[i] - timer.dues[i - 1];
        EXPECT_GT(apart, 0u);
        EXPECT_EQ(apart % 20'000, 0u) << apart;
    }
    // 2020 and 2200, by the calendar.
    EXPECT_GT(timer.dues[0], 132'223'104'000'000'000u);
    EXPECT_LT(timer.dues[0], 189'024'000'000'000'000u);
}

TEST_F(TimerZtTest, TicksComeAPeriodApart) {
    timer.onTick = [&] {
        if (timer.Ticks() == 5) timer.KillTimer();
    };
    const ULONGLONG start = GetTickCount64();
    timer.SetTimer(30);
    // The fifth comes after four periods; a clock of milliseconds may show one less.
    EXPECT_GE(GetTickCount64() - start, 119u);
}

TEST_F(TimerZtTest, CanBeSetAgain) {
    timer.SetTimer(1);
    timer.SetTimer(1);
    EXPECT_EQ(timer.Ticks(), 2u);
}

TEST_F(TimerZtTest, TimersMayRunWithinOneAnother) {
    Gauge inner;
    inner.onTick = [&] {
        if (inner.Ticks() == 3) inner.KillTimer();
    };
    timer.onTick = [&] {
        inner.SetTimer(1);
        timer.KillTimer();
    };
    timer.SetTimer(kHour);
    EXPECT_EQ(timer.Ticks(), 1u);
    EXPECT_EQ(inner.Ticks(), 3u);
}

TEST_F(TimerZtTest, IsKilledFromAnotherThread) {
    for (int round = 0; round < 20; ++round) {
        Gauge running;
        std::atomic<bool> ticked = false;
        running.onTick = [&] { ticked = true; };
        std::thread runner([&] { running.SetTimer(kHour); });
        while (!ticked) std::this_thread::yield();
        running.KillTimer();
        runner.join();
        EXPECT_EQ(running.Ticks(), 1u);
        EXPECT_EQ(running.m_hTimer, nullptr);
    }
}

TEST_F(TimerZtTest, WithAPeriodOf0TicksOnce) {
    std::atomic<bool> ticked = false;
    timer.onTick = [&] { ticked = true; };
    std::thread runner([&] { timer.SetTimer(0); });
    while (!ticked) Sleep(1);
    Sleep(10);
    timer.KillTimer();
    runner.join();
    EXPECT_EQ(timer.Ticks(), 1u);
}

TEST_F(TimerZtTest, KilledTimerIsDeletedIfItIsMarked) {
    auto* const onHeap = new Gauge;
    onHeap->m_bAutoDelete = true;
    onHeap->SetTimer(kHour);
    EXPECT_EQ(ended, 1);
    auto* const kept = new Gauge;
    kept->SetTimer(kHour);
    EXPECT_EQ(ended, 1);
    delete kept;
}

TEST_F(TimerZtTest, MarkedTimerThatAnotherThreadKillsIsDeletedOnItsOwn) {
    auto* const onHeap = new Gauge;
    onHeap->m_bAutoDelete = true;
    std::atomic<bool> ticked = false;
    onHeap->onTick = [&] { ticked = true; };
    std::thread runner([&] { onHeap->SetTimer(kHour); });
    while (!ticked) std::this_thread::yield();
    onHeap->KillTimer();
    runner.join();
    EXPECT_EQ(ended, 1);
}

TEST_F(TimerZtTest, MarkedTimerThatIsKilledAndThenThrowsIsNotDeleted) {
    timer.m_bAutoDelete = true;
    timer.onTick = [&] {
        timer.KillTimer();
        throw 1;
    };
    timer.SetTimer(1);
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(timer.m_hTimer, nullptr);
    EXPECT_EQ(timer.Ticks(), 1u);
}

TEST_F(TimerZtTest, ExceptionEndsTheTimerAndDeletesNothing) {
    auto* const onHeap = new Gauge;
    onHeap->m_bAutoDelete = true;
    HANDLE handle = nullptr;
    onHeap->onTick = [&] {
        handle = onHeap->m_hTimer;
        throw new CountedException;
    };
    onHeap->SetTimer(1);
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(CountedException::alive, 0);
    EXPECT_EQ(onHeap->Ticks(), 1u);
    EXPECT_EQ(onHeap->m_hTimer, nullptr);
    EXPECT_NE(handle, nullptr);
    EXPECT_FALSE(CloseHandle(handle));  // it is closed already
    delete onHeap;
}

TEST_F(TimerZtTest, ExceptionsOfAllKindsEndHere) {
    timer.onTick = [] { throw std::runtime_error("no"); };
    timer.SetTimer(1);
    timer.onTick = [] { throw 1; };
    timer.SetTimer(1);
    timer.onTick = [&] {
        timer.KillTimer();
        throw "text";
    };
    timer.SetTimer(1);
    EXPECT_EQ(timer.Ticks(), 3u);
    EXPECT_EQ(timer.m_hTimer, nullptr);
}

TEST_F(TimerZtTest, PeriodThatIsRefusedLeavesTheHandleOpen) {
    timer.SetTimer(kRefused);
    EXPECT_EQ(timer.Ticks(), 0u);
    const HANDLE handle = timer.m_hTimer;
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(CancelWaitableTimer(handle));
    timer.KillTimer();
    EXPECT_EQ(timer.m_hTimer, nullptr);
    EXPECT_FALSE(CancelWaitableTimer(handle));
}

TEST_F(TimerZtTest, RefusedTimerIsNotDeletedThoughItIsMarked) {
    timer.m_bAutoDelete = true;
    timer.SetTimer(kRefused);
    EXPECT_EQ(ended, 0);
    timer.KillTimer();
}

TEST_F(TimerZtTest, WithoutATimerOfTheSystemNothingHappens) {
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{0, before.rlim_max};
    // A sanitizer that looks at an object for the first time opens files.
    timer.SetTimer(1);
    timer.m_bAutoDelete = true;
    Gauge& stopped = timer;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    stopped.SetTimer(1);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(timer.Ticks(), 1u);
    EXPECT_EQ(timer.m_hTimer, nullptr);
    EXPECT_EQ(ended, 0);
}

TEST_F(TimerZtTest, CopiesNameTheSameTimerAndEndWithoutClosingIt) {
    timer.SetTimer(kRefused);
    timer.m_bAutoDelete = true;
    const HANDLE handle = timer.m_hTimer;
    {
        const TimerZt constructed(timer);
        TimerZt assigned;
        assigned = timer;
        EXPECT_EQ(constructed.m_hTimer, handle);
        EXPECT_TRUE(constructed.m_bAutoDelete);
        EXPECT_EQ(assigned.m_hTimer, handle);
        EXPECT_TRUE(assigned.m_bAutoDelete);
    }
    EXPECT_TRUE(CancelWaitableTimer(handle));
    TimerZt copy(timer);
    copy.KillTimer();
    EXPECT_EQ(copy.m_hTimer, nullptr);
    EXPECT_EQ(timer.m_hTimer, handle);
    EXPECT_FALSE(CancelWaitableTimer(handle));
    timer.KillTimer();
    EXPECT_EQ(timer.m_hTimer, nullptr);
}

}  // namespace
}  // namespace ZT
