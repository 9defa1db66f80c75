/// @file
/// The debugger's channel: lines for whoever watches the program.

#pragma once

#include <platform/base/Export.h>

/// Takes one text of the debugger's channel.
using DebugOutputSink = void (*)(const char* text);

/// Hands `text` as it stands to the sink, or to the standard error output while none
/// is set. A null text is not handed on.
ZTP_API void OutputDebugStringA(const char* text);

/// Sets the sink of `OutputDebugStringA` for the process and answers the one before
/// it. Null, the value at the start, stands for the standard error output. Not
/// synchronised: set it before other threads write.
ZTP_API DebugOutputSink SetDebugOutputSink(DebugOutputSink sink);
