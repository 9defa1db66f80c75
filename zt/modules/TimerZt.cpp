#include <zt/modules/TimerZt.h>

#include <platform/time/WaitableTimer.h>
#include <zt/modules/detail/CaughtWork.h>

#include <utility>

namespace ZT {

namespace {

void Tick(LPVOID timer, DWORD low, DWORD high) {
    if (timer != nullptr) static_cast<TimerZt*>(timer)->OnTimer(low, high);
}

}  // namespace

TimerZt::TimerZt() = default;

TimerZt::~TimerZt() = default;

void TimerZt::OnTimer(ulong, ulong) {}

void TimerZt::SetTimer(ulong nPeriod) {
    m_hTimer = CreateWaitableTimerA(nullptr, FALSE, "TimerZt");
    if (m_hTimer == nullptr) return;
    LARGE_INTEGER atOnce;
    atOnce.QuadPart = -1;
    if (!SetWaitableTimer(m_hTimer, &atOnce, static_cast<LONG>(nPeriod), &Tick, this, FALSE)) {
        return;
    }
    const auto runUntilKilled = [this] {
        while (m_hTimer != nullptr) SleepEx(INFINITE, TRUE);
    };
    if (!EndsWell(runUntilKilled)) return KillTimer();
    if (m_bAutoDelete) delete this;
}

void TimerZt::KillTimer() {
    // The loop on another thread must find null when closing wakes it.
    const HANDLE timer = std::exchange(m_hTimer, nullptr);
    if (timer != nullptr) CloseHandle(timer);
}

}  // namespace ZT
