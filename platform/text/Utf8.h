/// @file
/// The one conversion between byte text (UTF-8, the system code page) and wide
/// text (UTF-32: one unit a code point).
///
/// Neither direction fails. What is no text is replaced by U+FFFD: in bytes, each
/// maximal part of a broken sequence, also of an overlong one, of a surrogate and
/// of a value above U+10FFFF; in wide text, each surrogate and each value above
/// U+10FFFF. Zero bytes and zero units are characters like others.

#pragma once

#include <string>
#include <string_view>

#include <platform/base/Export.h>

/// The wide form of `bytes`: "\xC3\xA9" gives one unit, U+00E9.
ZTP_API std::wstring WideFromUtf8(std::string_view bytes);

/// The UTF-8 form of `wide`.
ZTP_API std::string Utf8FromWide(std::wstring_view wide);
