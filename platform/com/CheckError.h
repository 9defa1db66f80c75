/// @file
/// From a failed result to the framework's exceptions.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/ResultCodes.h>

/// Does nothing for a success. `E_OUTOFMEMORY` raises the memory exception, any other
/// failure the OLE exception with that result.
ZTP_API void AfxCheckError(SCODE result);
