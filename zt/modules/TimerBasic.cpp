#include <zt/modules/TimerBasic.h>

#include <platform/time/TickCount.h>

#include <cmath>

namespace ZT {

TimerBasic::TimerBasic() = default;

TimerBasic::~TimerBasic() = default;

void TimerBasic::OnTimer(ulong) {}

void TimerBasic::SetTimer(ulong nInterval, ulong nDuration) {
    m_nDuration = nDuration;
    if (nInterval == 0 || nDuration == 0 || nInterval > nDuration) return;
    const ulong rest = nDuration % nInterval;
    const double whole = std::trunc(static_cast<double>(nDuration) / nInterval);
    const ulong ticks = static_cast<ulong>(whole) + (rest != 0 ? 1 : 0);
    ulong wait = nInterval;
    for (ulong i = 0; i < ticks; ++i) {
        OnTimer(i);
        // Deliberately not seen at tick 0, as 0 is not less than 0.
        if (m_nDuration < i * nInterval) return;
        if (rest != 0 && i == ticks - 1) wait = rest;
        Sleep(wait);
    }
}

}  // namespace ZT
