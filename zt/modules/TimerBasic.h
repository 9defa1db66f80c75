/// @file
/// A call repeated for a fixed time.

#pragma once

#include <zt/frame/ZT.h>

namespace ZT {

/// Calls `OnTimer` at even intervals for a fixed time, on the thread that starts it: `SetTimer`
/// runs the whole timer and returns when it has ended. A client derives from it and overrides
/// `OnTimer`.
class ZT_API TimerBasic {
public:
    /// Called at each tick, with the ticks counted from 0. The base does nothing.
    virtual void OnTimer(ulong nTick);

    /// Not running.
    TimerBasic();
    TimerBasic(const TimerBasic&) = default;
    TimerBasic& operator=(const TimerBasic&) = default;
    virtual ~TimerBasic();

    /// Runs the timer: a tick every `nInterval` milliseconds, the first at once, for
    /// `nDuration` milliseconds in all and the time that `OnTimer` takes. With 100 and 30 the
    /// ticks come at 0, 30, 60 and 90, and the call returns at 100. There is no tick if either
    /// argument is 0 or the interval is the longer one. What `OnTimer` raises passes through.
    ///
    /// With 0xFFFFFFFF for both the call never returns: a sleep of that length has no end.
    void SetTimer(ulong nInterval, ulong nDuration);

    /// Ends a running timer. Called from tick 1 or a later one, it ends it with that tick, and
    /// no sleep follows. Called from tick 0, it deliberately ends it only with tick 1: the first
    /// sleep and, if there is one, tick 1 still come. Called from another thread, it lets the
    /// present sleep go to its end and one more tick come, if one is left; nothing is locked.
    void KillTimer() { m_nDuration = 0; }

    ulong m_nReserved = 0;  ///< Without a meaning; copied.
    ulong m_nDuration = 0;  ///< How long the timer runs, in milliseconds.
};

}  // namespace ZT
