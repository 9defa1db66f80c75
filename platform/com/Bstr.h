/// @file
/// Counted wide strings that cross interfaces.
///
/// A `BSTR` points at the first character of a block; the four bytes before it hold
/// the length in bytes, without the zero character that always follows the text. It
/// may hold zero characters. The null `BSTR` is the empty string. Whoever receives
/// one ends it with `SysFreeString`, and with nothing else.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>

using BSTR = OLECHAR*;

/// A copy of the text up to its zero; null for a null `text` or without memory.
ZTP_API BSTR SysAllocString(const OLECHAR* text);

/// A copy of `length` characters, zeros included; with a null `text`, that many
/// zeros. Null without memory or when the byte count does not fit 32 bits.
ZTP_API BSTR SysAllocStringLen(const OLECHAR* text, UINT length);

/// A copy of `bytes` raw bytes, which need not be whole characters.
ZTP_API BSTR SysAllocStringByteLen(const char* data, UINT bytes);

/// Replaces `*string` by a copy of `text`, which may lie inside the old one. Gives 1,
/// or 0 with `*string` unchanged when there is no memory or `string` is null.
ZTP_API INT SysReAllocString(BSTR* string, const OLECHAR* text);

/// The same with a length, as in `SysAllocStringLen`.
ZTP_API INT SysReAllocStringLen(BSTR* string, const OLECHAR* text, UINT length);

/// Frees the string; null is allowed.
ZTP_API void SysFreeString(BSTR string);

/// Length in characters, 0 for null.
ZTP_API UINT SysStringLen(BSTR string);

/// Length in bytes, 0 for null.
ZTP_API UINT SysStringByteLen(BSTR string);
