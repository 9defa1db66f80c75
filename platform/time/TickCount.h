/// @file
/// Milliseconds since the system's start, and sleeping.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>

/// As a time to wait: without end.
constexpr DWORD INFINITE = 0xFFFFFFFF;

/// Milliseconds since the system started; only rises, whatever happens to the
/// clock on the wall.
ZTP_API ULONGLONG GetTickCount64();

/// The low 32 bits of `GetTickCount64`, which wrap to 0 after about 49.7 days. A
/// difference of two counts, taken unsigned, is right across one wrap.
inline DWORD GetTickCount() {
    return static_cast<DWORD>(GetTickCount64());
}

/// Suspends the calling thread for at least the given time, also when signals
/// arrive in between. With 0 the thread only lets others run; with `INFINITE` it
/// does not return.
ZTP_API void Sleep(DWORD milliseconds);
