#include <platform/time/TickCount.h>

#include <cerrno>
#include <ctime>

#include <sched.h>
#include <unistd.h>

namespace {

timespec Now() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now;
}

timespec Later(timespec from, DWORD milliseconds) {
    constexpr long nanosecondsPerSecond = 1'000'000'000;
    from.tv_sec += milliseconds / 1000;
    from.tv_nsec += static_cast<long>(milliseconds % 1000) * 1'000'000;
    if (from.tv_nsec >= nanosecondsPerSecond) {
        from.tv_nsec -= nanosecondsPerSecond;
        ++from.tv_sec;
    }
    return from;
}

}  // namespace

ULONGLONG GetTickCount64() {
    const timespec now = Now();
    return static_cast<ULONGLONG>(now.tv_sec) * 1000 +
           static_cast<ULONGLONG>(now.tv_nsec) / 1'000'000;
}

void Sleep(DWORD milliseconds) {
    if (milliseconds == 0) {
        sched_yield();
        return;
    }
    while (milliseconds == INFINITE) pause();
    const timespec end = Later(Now(), milliseconds);
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &end, nullptr) == EINTR) {
    }
}
