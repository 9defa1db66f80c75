// What timers and sleeps do while there is no memory. The program's operator new can be made to
// fail.

#include <gtest/gtest.h>
#include <platform/time/WaitableTimer.h>
#include <tests/CountingNew.h>

#include <cerrno>
#include <thread>

namespace {

using testing_support::MemoryFor;

constexpr DWORD kVeryLong = 60'000;

void CountCall(LPVOID argument, DWORD, DWORD) {
    ++*static_cast<int*>(argument);
}

BOOL SetAtOnce(HANDLE timer, int& calls) {
    LARGE_INTEGER due;
    due.QuadPart = -1;
    return SetWaitableTimer(timer, &due, 0, &CountCall, &calls, FALSE);
}

TEST(WaitableTimerMemory, NoTimerIsMade) {
    errno = 0;
    HANDLE timer = nullptr;
    {
        const MemoryFor none(0);
        timer = CreateWaitableTimerA(nullptr, FALSE, nullptr);
    }
    EXPECT_EQ(timer, nullptr);
    EXPECT_EQ(errno, ENOMEM);
}

TEST(WaitableTimerMemory, CallsWaitForTheNextSleepThatFindsSome) {
    int calls = 0;
    const HANDLE timer = CreateWaitableTimerA(nullptr, FALSE, nullptr);
    ASSERT_TRUE(SetAtOnce(timer, calls));
    // Not even for the list of timers; for that and not for the list of what to wait for.
    for (const std::size_t allocations : {std::size_t{0}, std::size_t{1}}) {
        const ULONGLONG before = GetTickCount64();
        DWORD answer = 1;
        {
            const MemoryFor few(allocations);
            answer = SleepEx(20, TRUE);
        }
        EXPECT_EQ(answer, 0u) << allocations;
        EXPECT_GE(GetTickCount64() - before, 19u) << allocations;
        EXPECT_EQ(calls, 0) << allocations;
    }
    EXPECT_EQ(SleepEx(kVeryLong, TRUE), WAIT_IO_COMPLETION);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(CloseHandle(timer));
}

TEST(WaitableTimerMemory, FirstSleepOfAThreadLastsItsTimeWithoutIt) {
    DWORD answer = 1;
    ULONGLONG passed = 0;
    std::thread([&] {
        const ULONGLONG before = GetTickCount64();
        {
            const MemoryFor none(0);
            answer = SleepEx(20, TRUE);
        }
        passed = GetTickCount64() - before;
    }).join();
    EXPECT_EQ(answer, 0u);
    EXPECT_GE(passed, 19u);
}

TEST(WaitableTimerMemory, ThreadThatCannotBeCalledArmsNoTimer) {
    int calls = 0;
    const HANDLE timer = CreateWaitableTimerA(nullptr, FALSE, nullptr);
    BOOL set = TRUE;
    int error = 0;
    std::thread([&] {
        const MemoryFor none(0);
        set = SetAtOnce(timer, calls);
        error = errno;
    }).join();
    EXPECT_FALSE(set);
    EXPECT_EQ(error, ENOMEM);
    EXPECT_TRUE(CloseHandle(timer));
}

}  // namespace
