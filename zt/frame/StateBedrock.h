/// @file
/// The few values that all modules of a process share.

#pragma once

#include <platform/text/CString.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// Process-wide state for the host and the modules above the library.
///
/// The library gives the flag and the latch no meaning of its own and reads neither;
/// they exist so that modules share one value. Nothing here is synchronised: a host
/// uses it from one thread or serialises the calls.
class ZT_API StateBedrock {
public:
    /// Hears of failed assertions. What the two texts and the number say is agreed on
    /// between those who call `Assert` and those who install the handler; the result is
    /// not looked at.
    using AssertHandler = bool (*)(const char*, const char*, std::int32_t);

    /// The shared flag; `eUnknown` until it is set for the first time.
    static ETri GetFlag() { return m_tri; }
    /// Sets the shared flag to `eTrue` or `eFalse`. There is no way back to `eUnknown`.
    static void SetFlag(bool flag) { m_tri = flag ? eTrue : eFalse; }

    /// Whether `SetNet` was ever called.
    static bool IsNet() { return m_bNet; }
    /// Closes the latch, for good.
    static void SetNet() { m_bNet = true; }

    /// Installs a handler, or with null none, and gives the one that was there.
    static AssertHandler SetAssertHandler(AssertHandler handler);

    /// Hands the arguments to the installed handler, whose answer changes nothing.
    /// Without a handler nothing happens; the program is never stopped from here.
    static void Assert(const char* textA, const char* textB, std::int32_t number);

    /// Appends "_ztuid" and a number that no earlier call in this process appended (up to
    /// 2^32 calls). Suffixes pile up: an earlier one is not replaced.
    static void MakeUnique(CString& s);

    /// The shared flag.
    static ETri m_tri;
    /// The installed handler, or null.
    static AssertHandler m_pAssert;
    /// The latch.
    static bool m_bNet;
    /// How often `MakeUnique` was called; the number that its next call appends.
    static uint64 m_uNique;
};

}  // namespace ZT
