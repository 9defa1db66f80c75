#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/time/WaitableTimer.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <dirent.h>

namespace {

using testing::ElementsAre;

// Long enough for any machine; no test waits for it unless it fails.
constexpr DWORD kVeryLong = 60'000;
constexpr LONGLONG kSecond = 10'000'000;

// What a timer calls, with the arguments of all calls.
struct Called {
    std::vector<ULONGLONG> dues;
    std::vector<std::thread::id> threads;
    std::function<void()> then = [] {};

    static void Routine(LPVOID argument, DWORD low, DWORD high) {
        auto& called = *static_cast<Called*>(argument);
        called.dues.push_back(ULONGLONG{high} << 32 | low);
        called.threads.push_back(std::this_thread::get_id());
        called.then();
    }
    std::size_t Count() const { return dues.size(); }
};

// A timer that is closed at its end.
struct OpenTimer {
    HANDLE handle = CreateWaitableTimerA(nullptr, FALSE, nullptr);

    OpenTimer() = default;
    OpenTimer(const OpenTimer&) = delete;
    OpenTimer& operator=(const OpenTimer&) = delete;
    ~OpenTimer() { CloseHandle(handle); }

    BOOL Set(LONGLONG due, LONG period, Called& called) const {
        LARGE_INTEGER time;
        time.QuadPart = due;
        return SetWaitableTimer(handle, &time, period, &Called::Routine, &called, FALSE);
    }
};

struct WaitableTimer : testing::Test {
    OpenTimer timer;
    Called called;
};

int OpenFiles() {
    int count = 0;
    DIR* const directory = opendir("/proc/self/fd");
    while (readdir(directory) != nullptr) ++count;
    closedir(directory);
    return count;
}

}  // namespace

TEST_F(WaitableTimer, CallsTheSleepingThreadAndEndsItsSleep) {
    ASSERT_TRUE(timer.Set(-1, 0, called));
    EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    EXPECT_THAT(called.threads, ElementsAre(std::this_thread::get_id()));
}

TEST_F(WaitableTimer, CallsOnceWithoutAPeriod) {
    ASSERT_TRUE(timer.Set(-1, 0, called));
    EXPECT_EQ(SleepEx(INFINITE, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(SleepEx(20, TRUE), 0u);
    EXPECT_EQ(called.Count(), 1u);
}

TEST_F(WaitableTimer, CallsOnceASleepWithAPeriod) {
    ASSERT_TRUE(timer.Set(-1, 1, called));
    for (std::size_t ticks = 1; ticks <= 5; ++ticks) {
        EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
        EXPECT_EQ(called.Count(), ticks);
    }
}

TEST_F(WaitableTimer, CallsComeAPeriodApart) {
    const ULONGLONG before = GetTickCount64();
    ASSERT_TRUE(timer.Set(-1, 40, called));
    for (int sleep = 0; sleep < 3; ++sleep) SleepEx(kVeryLong, TRUE);
    EXPECT_EQ(called.Count(), 3u);
    // The third comes after two periods; a clock of milliseconds may show one less.
    EXPECT_GE(GetTickCount64() - before, 79u);
}

TEST_F(WaitableTimer, TellsWhenEachCallWasDue) {
    ASSERT_TRUE(timer.Set(-1, 3, called));
    while (called.Count() < 4) SleepEx(kVeryLong, TRUE);
    for (std::size_t i = 1; i < 4; ++i) {
        // A slow machine may have missed some in between.
        const ULONGLONG apart = called.dues[i] - called.dues[i - 1];
        EXPECT_GT(apart, 0u);
        EXPECT_EQ(apart % (3 * 10'000), 0u) << apart;
    }
    // 2020 and 2200, by the calendar.
    EXPECT_GT(called.dues[0], 132'223'104'000'000'000u);
    EXPECT_LT(called.dues[0], 189'024'000'000'000'000u);
}

TEST_F(WaitableTimer, CallsOnceForWhatRanOutSeveralTimes) {
    ASSERT_TRUE(timer.Set(-1, 2, called));
    ASSERT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    Sleep(30);
    EXPECT_EQ(called.Count(), 1u);  // this sleep cannot be called in
    ASSERT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(called.Count(), 2u);
    // The last of the fourteen or fifteen that were missed.
    EXPECT_GE(called.dues[1] - called.dues[0], 14u * 2 * 10'000);
}

TEST_F(WaitableTimer, WaitsForItsTime) {
    const ULONGLONG before = GetTickCount64();
    ASSERT_TRUE(timer.Set(-kSecond / 20, 0, called));
    EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    const ULONGLONG passed = GetTickCount64() - before;
    EXPECT_GE(passed, 49u);
    EXPECT_LT(passed, kVeryLong / 2);
}

TEST_F(WaitableTimer, TimeOfTheCalendarIsDueThenAndAtOnceWhenItIsPast) {
    ASSERT_TRUE(timer.Set(-1, 0, called));
    SleepEx(kVeryLong, TRUE);
    const auto now = static_cast<LONGLONG>(called.dues[0]);

    ASSERT_TRUE(timer.Set(now, 0, called));
    EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(called.dues[1], called.dues[0]);

    ASSERT_TRUE(timer.Set(0, 0, called));
    EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(called.Count(), 3u);

    ASSERT_TRUE(timer.Set(now + 3600 * kSecond, 0, called));
    EXPECT_EQ(SleepEx(20, TRUE), 0u);
    EXPECT_EQ(called.Count(), 3u);
}

TEST_F(WaitableTimer, FarthestTimesAreNeverDue) {
    ASSERT_TRUE(timer.Set(INT64_MAX, 0, called));
    EXPECT_EQ(SleepEx(5, TRUE), 0u);
    ASSERT_TRUE(timer.Set(INT64_MIN, INT32_MAX, called));
    EXPECT_EQ(SleepEx(5, TRUE), 0u);
    EXPECT_EQ(called.Count(), 0u);
}

TEST_F(WaitableTimer, SleepWithoutWaitingMakesTheCallsThatAreDue) {
    EXPECT_EQ(SleepEx(0, TRUE), 0u);
    ASSERT_TRUE(timer.Set(-1, 0, called));
    Sleep(5);
    EXPECT_EQ(SleepEx(0, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(called.Count(), 1u);
}

TEST_F(WaitableTimer, SleepThatIsNotAlertableIsLeftAlone) {
    ASSERT_TRUE(timer.Set(-1, 1, called));
    const ULONGLONG before = GetTickCount64();
    EXPECT_EQ(SleepEx(20, FALSE), 0u);
    EXPECT_GE(GetTickCount64() - before, 19u);
    EXPECT_EQ(called.Count(), 0u);
}

TEST_F(WaitableTimer, SleepOfAThreadWithoutTimersLastsItsTime) {
    const ULONGLONG before = GetTickCount64();
    EXPECT_EQ(SleepEx(20, TRUE), 0u);
    EXPECT_GE(GetTickCount64() - before, 19u);
}

TEST_F(WaitableTimer, OtherThreadsAreNotCalled) {
    ASSERT_TRUE(timer.Set(-1, 1, called));
    DWORD answer = 1;
    std::thread([&] { answer = SleepEx(20, TRUE); }).join();
    EXPECT_EQ(answer, 0u);
    EXPECT_EQ(called.Count(), 0u);
}

TEST_F(WaitableTimer, CallsTheThreadThatSetItLast) {
    ASSERT_TRUE(timer.Set(-1, 1, called));
    std::thread other([&] {
        ASSERT_TRUE(timer.Set(-1, 1, called));
        EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    });
    const std::thread::id id = other.get_id();
    other.join();
    EXPECT_THAT(called.threads, ElementsAre(id));
    EXPECT_EQ(SleepEx(10, TRUE), 0u);
    EXPECT_EQ(called.Count(), 1u);
}

TEST_F(WaitableTimer, AllThatIsDueIsCalledInOneSleep) {
    const OpenTimer second;
    Called calledSecond;
    ASSERT_TRUE(timer.Set(-1, 0, called));
    ASSERT_TRUE(second.Set(-1, 0, calledSecond));
    Sleep(5);
    EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(called.Count(), 1u);
    EXPECT_EQ(calledSecond.Count(), 1u);
}

TEST_F(WaitableTimer, RoutineMayCloseTheTimersThatAreDueWithIt) {
    const OpenTimer second;
    Called calledSecond;
    called.then = [&] { EXPECT_TRUE(CloseHandle(second.handle)); };
    calledSecond.then = [&] { EXPECT_TRUE(CloseHandle(timer.handle)); };
    ASSERT_TRUE(timer.Set(-1, 1, called));
    ASSERT_TRUE(second.Set(-1, 1, calledSecond));
    Sleep(5);
    EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(called.Count() + calledSecond.Count(), 1u);
}

TEST_F(WaitableTimer, RoutineMayCloseAndSetItsOwnTimer) {
    called.then = [&] { ASSERT_TRUE(timer.Set(-1, 0, called)); };
    ASSERT_TRUE(timer.Set(-1, 0, called));
    SleepEx(kVeryLong, TRUE);
    SleepEx(kVeryLong, TRUE);
    EXPECT_EQ(called.Count(), 2u);
    called.then = [&] { EXPECT_TRUE(CloseHandle(timer.handle)); };
    SleepEx(kVeryLong, TRUE);
    EXPECT_EQ(called.Count(), 3u);
    // Closing one's own timer leaves nothing behind that ends a later sleep.
    EXPECT_EQ(SleepEx(10, TRUE), 0u);
}

TEST_F(WaitableTimer, RoutineMaySleepInTurn) {
    called.then = [&] {
        if (called.Count() < 3) {
            EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
        }
    };
    ASSERT_TRUE(timer.Set(-1, 1, called));
    EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(called.Count(), 3u);
}

TEST_F(WaitableTimer, ExceptionOfTheRoutineLeavesTheSleepAndTheTimerGoesOn) {
    called.then = [&] {
        if (called.Count() == 1) throw std::string("thrown");
    };
    ASSERT_TRUE(timer.Set(-1, 1, called));
    EXPECT_THROW(SleepEx(kVeryLong, TRUE), std::string);
    EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(called.Count(), 2u);
}

TEST_F(WaitableTimer, CancelledTimerCallsNoMoreUntilItIsSet) {
    ASSERT_TRUE(timer.Set(-1, 1, called));
    Sleep(5);
    EXPECT_TRUE(CancelWaitableTimer(timer.handle));
    EXPECT_EQ(SleepEx(10, TRUE), 0u);
    EXPECT_EQ(called.Count(), 0u);
    ASSERT_TRUE(timer.Set(-1, 0, called));
    EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(called.Count(), 1u);
}

TEST_F(WaitableTimer, TimerWithoutARoutineEndsNoSleep) {
    LARGE_INTEGER due;
    due.QuadPart = -1;
    ASSERT_TRUE(SetWaitableTimer(timer.handle, &due, 1, nullptr, nullptr, FALSE));
    EXPECT_EQ(SleepEx(20, TRUE), 0u);
}

TEST_F(WaitableTimer, ClosingFromAnotherThreadEndsTheSleep) {
    std::atomic<bool> armed = false;
    DWORD answer = 0;
    std::thread sleeper([&] {
        armed = timer.Set(-3600 * kSecond, 0, called) != FALSE;
        answer = SleepEx(INFINITE, TRUE);
    });
    while (!armed) Sleep(1);
    EXPECT_TRUE(CloseHandle(timer.handle));
    sleeper.join();
    EXPECT_EQ(answer, WAIT_IO_COMPLETION);
    EXPECT_EQ(called.Count(), 0u);
}

TEST_F(WaitableTimer, ClosingBeforeTheSleepEndsTheNextOneAndNoOther) {
    ASSERT_TRUE(timer.Set(-3600 * kSecond, 0, called));
    std::thread([&] { EXPECT_TRUE(CloseHandle(timer.handle)); }).join();
    EXPECT_EQ(SleepEx(INFINITE, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(SleepEx(10, TRUE), 0u);
}

TEST_F(WaitableTimer, WhatIsNoTimerIsRefused) {
    const HANDLE none = nullptr;
    LARGE_INTEGER due;
    due.QuadPart = -1;
    errno = 0;
    EXPECT_FALSE(SetWaitableTimer(none, &due, 0, &Called::Routine, &called, FALSE));
    EXPECT_EQ(errno, EBADF);
    errno = 0;
    EXPECT_FALSE(CancelWaitableTimer(none));
    EXPECT_EQ(errno, EBADF);
    errno = 0;
    EXPECT_FALSE(CloseHandle(none));
    EXPECT_EQ(errno, EBADF);
}

TEST_F(WaitableTimer, ClosedHandleIsNeverATimerAgain) {
    const HANDLE closed = timer.handle;
    EXPECT_TRUE(CloseHandle(closed));
    const OpenTimer other;
    EXPECT_NE(other.handle, closed);
    EXPECT_FALSE(CloseHandle(closed));
    EXPECT_FALSE(timer.Set(-1, 0, called));
}

TEST_F(WaitableTimer, RefusedTimesLeaveTheTimerAsItWas) {
    ASSERT_TRUE(timer.Set(-1, 0, called));
    errno = 0;
    EXPECT_FALSE(timer.Set(-3600 * kSecond, -1, called));
    EXPECT_EQ(errno, EINVAL);
    errno = 0;
    EXPECT_FALSE(SetWaitableTimer(timer.handle, nullptr, 0, &Called::Routine, &called, FALSE));
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(called.Count(), 1u);
}

TEST_F(WaitableTimer, TimersOfOneNameAreApart) {
    const HANDLE first = CreateWaitableTimerA(nullptr, FALSE, "Gauge");
    const HANDLE second = CreateWaitableTimerA(nullptr, TRUE, "Gauge");
    EXPECT_NE(first, second);
    EXPECT_TRUE(CloseHandle(first));
    EXPECT_TRUE(CancelWaitableTimer(second));
    EXPECT_TRUE(CloseHandle(second));
}

TEST(WaitableTimers, LeaveNoFilesOpen) {
    const auto sleepOnce = [] {
        const OpenTimer timer;
        Called called;
        ASSERT_TRUE(timer.Set(-1, 0, called));
        SleepEx(kVeryLong, TRUE);
    };
    sleepOnce();
    const int before = OpenFiles();
    sleepOnce();
    std::thread(sleepOnce).join();
    EXPECT_EQ(OpenFiles(), before);
}
