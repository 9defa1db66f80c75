/// @file
/// Numbers as text, by the conventions of the C library in the "C" locale and in
/// no other, whatever locale the process has set. For the library's own use: clients
/// reach it through the cursor.
///
/// The writers put the characters of "%g", "%d" and "0x%08x" at `out`, without a
/// terminating zero, and answer the place behind the last of them. The scanners
/// read one value from the start of a text with the conventions of "%lf", "%f"
/// and "%d": leading white space is skipped, whatever follows the value is left
/// alone, and a zero byte ends the text.

#pragma once

#include <zt/frame/Export.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ZT::NumberText {

/// Room that any of the writers is content with.
constexpr std::size_t kMaxLength = 24;

/// The six characters that count as white space.
constexpr bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// `text` without the white space in front of it.
inline std::string_view SkipSpace(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size() && IsSpace(text[at])) ++at;
    return text.substr(at);
}

/// `text` without the white space at both ends.
ZT_API std::string_view Trim(std::string_view text);

/// "%g": six significant digits. A `float` is written as the `double` it widens to.
ZT_API char* WriteDouble(char* out, double value);

/// "%d".
ZT_API char* WriteInt(char* out, std::int32_t value);

/// "0x%08x".
ZT_API char* WriteHex(char* out, std::uint32_t value);

/// "%lf". False, and `value` unchanged, if `text` does not begin with a number. A
/// number too large for the type is infinite, and one too small is zero.
ZT_API bool ScanDouble(std::string_view text, double& value);

/// "%f"; otherwise as `ScanDouble`. The text is rounded once, to a `float`.
ZT_API bool ScanFloat(std::string_view text, float& value);

/// "%d". A number beyond 64 bits becomes the nearest one of 64, and of that the low
/// 32 bits count. False, and `value` unchanged, if `text` does not begin with a number.
ZT_API bool ScanInt(std::string_view text, std::int32_t& value);

}  // namespace ZT::NumberText
