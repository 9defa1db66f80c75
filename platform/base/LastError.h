/// @file
/// The system's code of the last failure, and its text.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>

#include <string>

/// The code of the calling thread's last failed system operation; 0 for none.
/// The codes are those of `errno`, and so is the place: a call into the C library
/// may change it.
ZTP_API DWORD GetLastError();

/// Stores the code that `GetLastError` answers on this thread.
ZTP_API void SetLastError(DWORD code);

/// The system's text for a code, without a line end, in the language of the
/// process's locale. Empty for a code that the system does not know; code 0 has
/// the system's text for success. The last error does not change.
ZTP_API std::string SystemErrorText(DWORD code);
