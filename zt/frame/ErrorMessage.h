/// @file
/// The words for the last failure of the operating system.

#pragma once

#include <platform/text/CString.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// The system's text for the calling thread's last system error; empty when there is
/// none. The last error stays as it is. The library keeps no error state of its own,
/// so any system call between a failure and this one may change what is told.
ZT_API CString hxGetErrorMessage();

/// `text` without one carriage return and line feed at its end; a text that ends
/// otherwise is returned whole.
ZT_API CString hxWithoutLineEnd(const CString& text);

}  // namespace ZT
