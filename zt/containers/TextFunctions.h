/// @file
/// Small helpers on text that belong to no class.

#pragma once

#include <platform/text/CString.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// Puts the text into lower case in place: adds 32 to each byte that the standard
/// `isupper` takes for an upper-case letter. Gives the length of the text, 0 for
/// null.
ZT_API int hxToLower(char* text);

/// The writable bytes of `s`, as many as it is long. They stay valid until `s` is
/// changed; `ReleaseBuffer` is needed only when a zero byte was written to shorten
/// the text.
ZT_API char* hxGetBuff(CString& s);

/// The last position in `s` of any of the characters `chars`; -1 when there is none,
/// for a null `chars` and for an empty `s`.
ZT_API int hxlibReverseFind(const CString& s, const char* chars);

}  // namespace ZT
