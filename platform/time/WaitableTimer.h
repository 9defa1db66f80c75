/// @file
/// Timers that call back on the thread that sleeps.
///
///     LARGE_INTEGER due;
///     due.QuadPart = -10'000'000;  // in a second
///     HANDLE timer = CreateWaitableTimerA(nullptr, FALSE, nullptr);
///     if (timer && SetWaitableTimer(timer, &due, 50, &OnTick, &gauge, FALSE))
///         while (!gauge.IsDone()) SleepEx(INFINITE, TRUE);
///     CloseHandle(timer);
///
/// A timer is armed for the thread that sets it. When it has run out, its completion
/// routine is called on that thread as soon as the thread sleeps by `SleepEx` and says that
/// it can be called meanwhile; while the thread does anything else, nothing happens. What
/// ran out several times before the thread came to sleep calls once.
///
/// Timers and sleeps may be used from all threads at once. A routine may set, cancel and
/// close any timer, its own too, sleep in turn, and raise an exception, which leaves the
/// sleep.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>
#include <platform/time/TickCount.h>

/// A signed number of 64 bits, and its two halves.
union LARGE_INTEGER {
    LONGLONG QuadPart;
    struct {
        DWORD LowPart;
        LONG HighPart;
    } u;
};

/// What a timer calls. `argument` is what the timer was set with. The other two are the
/// lower and the upper half of the time at which the call was due: tenths of microseconds since
/// the beginning of 1601, UTC, by the clock on the wall when the timer was set. Of what ran out
/// several times it is the last.
using PTIMERAPCROUTINE = void (*)(LPVOID argument, DWORD timeLow, DWORD timeHigh);

/// The answer of a sleep that ended because something was called or closed.
constexpr DWORD WAIT_IO_COMPLETION = 0xC0;

/// Makes a timer, which is not armed yet. Null, and a code in the last error, if the process
/// has no room for one. `attributes` and `manualReset` have no meaning here, and `name` makes
/// no timer known to anyone else: two timers of one name are two. The caller closes the timer.
ZTP_API HANDLE CreateWaitableTimerA(void* attributes, BOOL manualReset, LPCSTR name);

/// Arms the timer for the calling thread, anew if it was armed.
///
/// `due` is the time of the first call, in tenths of microseconds: since the beginning of
/// 1601, UTC, if it is positive, counted from now if it is negative; 0 and what is past is
/// due at once. A change of the clock on the wall afterwards moves no call. `period` is the
/// time from one call to the next in milliseconds, 0 for a timer that calls once. With a null
/// `completion` the timer calls nobody and ends no sleep. A timer never wakes the machine,
/// whatever `resume` says.
///
/// False, and a code in the last error, for a handle that is no timer (EBADF), a null `due` or
/// a negative `period` (EINVAL), and when the process has no room for the call-back. The timer
/// is then as it was.
ZTP_API BOOL SetWaitableTimer(HANDLE timer, const LARGE_INTEGER* due, LONG period,
                              PTIMERAPCROUTINE completion, LPVOID argument, BOOL resume);

/// Disarms the timer, which can be set again. What has run out and was not called yet is not
/// called any more. False, and EBADF in the last error, for a handle that is no timer.
ZTP_API BOOL CancelWaitableTimer(HANDLE timer);

/// Closes the timer: disarms it and ends it. When another thread than the one that it is armed
/// for does so, the present sleep of that thread ends, or its next one if it does not sleep: a
/// loop that sleeps for as long as it has a timer thus learns that it has none. A call that
/// has begun by then still runs to its end.
///
/// False, and EBADF in the last error, for a handle that is no timer, one that was closed
/// among them: no handle comes twice.
ZTP_API BOOL CloseHandle(HANDLE timer);

/// Suspends the calling thread for the given time; with `INFINITE` there is no end to it.
///
/// With `alertable`, the completion routines of the thread's timers run meanwhile. After those
/// that were due at the same time the sleep is over, however much time is left, and the result
/// is `WAIT_IO_COMPLETION`; so it is when another thread closed a timer. The result is 0 when
/// the time is over. Without `alertable` it is `Sleep`.
///
/// While there is no memory to look for what is due, nothing is called: the calls are made by the
/// first sleep, this one or a later one, that finds some.
ZTP_API DWORD SleepEx(DWORD milliseconds, BOOL alertable);
