#include <gtest/gtest.h>

#include <platform/time/TickCount.h>

#include <atomic>
#include <csignal>
#include <thread>

#include <pthread.h>

TEST(TickCount, OnlyRises) {
    ULONGLONG before = GetTickCount64();
    for (int i = 0; i < 10000; ++i) {
        const ULONGLONG now = GetTickCount64();
        ASSERT_GE(now, before);
        before = now;
    }
}

TEST(TickCount, ShortFormIsTheLowHalf) {
    const ULONGLONG before = GetTickCount64();
    const DWORD now = GetTickCount();
    const ULONGLONG after = GetTickCount64();
    EXPECT_LE(now - static_cast<DWORD>(before), static_cast<DWORD>(after - before));
}

TEST(TickCount, CountsMilliseconds) {
    const ULONGLONG before = GetTickCount64();
    Sleep(30);
    const ULONGLONG passed = GetTickCount64() - before;
    EXPECT_GE(passed, 29u);
    EXPECT_LT(passed, 2000u);
}

TEST(Sleep, OfNothingReturnsAtOnce) {
    const ULONGLONG before = GetTickCount64();
    Sleep(0);
    EXPECT_LT(GetTickCount64() - before, 500u);
}

TEST(Sleep, IsNotCutShortBySignals) {
    const auto oldHandler = std::signal(SIGUSR1, [](int) {});
    std::atomic<bool> asleep = true;
    ULONGLONG slept = 0;
    std::thread sleeper([&] {
        const ULONGLONG before = GetTickCount64();
        Sleep(60);
        slept = GetTickCount64() - before;
        asleep = false;
    });
    for (int i = 0; i < 5 && asleep; ++i) {
        Sleep(5);
        pthread_kill(sleeper.native_handle(), SIGUSR1);
    }
    sleeper.join();
    std::signal(SIGUSR1, oldHandler);
    EXPECT_GE(slept, 59u);
}
