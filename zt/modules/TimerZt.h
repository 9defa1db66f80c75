/// @file
/// A call repeated until it is stopped.

#pragma once

#include <platform/base/Types.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// Calls `OnTimer` at even intervals until it is killed, on the thread that starts it:
/// `SetTimer` runs the whole timer and returns when it has ended. A client derives from it and
/// overrides `OnTimer`.
///
/// The timer is idle while `m_hTimer` is null, and running while it is not. Only `KillTimer`,
/// from `OnTimer` or from another thread, or an exception from `OnTimer` ends a running one. The
/// destructor does not: a timer must be idle at its end. A copy of a running timer names the
/// same timer of the system; killing the copy closes that without ending the loop of the one
/// that runs.
class ZT_API TimerZt {
public:
    /// Called at each tick, with the two halves of the time at which it was due: tenths of
    /// microseconds since the beginning of 1601, UTC. The base does nothing.
    virtual void OnTimer(ulong nLow, ulong nHigh);

    /// Idle.
    TimerZt();
    TimerZt(const TimerZt&) = default;
    TimerZt& operator=(const TimerZt&) = default;
    virtual ~TimerZt();

    /// Runs the timer: a tick every `nPeriod` milliseconds, the first at once, and with a period
    /// of 0 no other. Ticks that were missed while `OnTimer` ran come as one. When the timer has
    /// been killed and `m_bAutoDelete` is set, the object is deleted: the caller must not touch
    /// it after the call.
    ///
    /// An exception of any kind from `OnTimer` ends there and ends the timer; the object is then
    /// not deleted. If the system has no timer to give, nothing happens; if it refuses the
    /// period, which above 0x7FFFFFFF it does, the call returns without a tick and the timer
    /// stays in `m_hTimer` until `KillTimer`.
    ///
    /// The timer must be idle: `SetTimer` on a running one, from its `OnTimer` say, and on one
    /// that was refused and not killed, overwrites `m_hTimer`. The old timer of the system then
    /// stays open for good, and if it runs, goes on calling this object, even when that is gone.
    ///
    /// Meanwhile the thread's other waitable timers call as well, and what their calls raise
    /// counts as raised by `OnTimer`.
    void SetTimer(ulong nPeriod);

    /// Ends a running timer: `SetTimer` returns after the present tick. Does nothing to an idle
    /// one. It may be called from another thread; nothing is locked.
    void KillTimer();

    HANDLE m_hTimer = nullptr;   ///< The timer of the system; null while this one is idle.
    bool m_bAutoDelete = false;  ///< Whether the object is deleted when the timer was killed.
};

}  // namespace ZT
