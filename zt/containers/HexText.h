/// @file
/// Hexadecimal text, the text form of all blocks: two digits a byte, the high half
/// of the byte first, upper case, no separators.

#pragma once

#include <platform/text/CString.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// The 2n upper-case digits of the `n` bytes at `p`. The bytes 0x0A 0xFF give
/// "0AFF". A null `p` gives the empty text; a text that would pass 2^31-1
/// characters raises the memory exception.
ZT_API CString hxBinaryToString(const unsigned char* p, ulong n);

/// Decodes `n` bytes from the 2n digits at `text`, of either case, into `out`,
/// which must have room for `n` bytes.
///
/// False when one of the 2n characters is no digit, the terminating zero of a
/// shorter text included; the bytes before that pair are then in `out`, and the
/// rest of `out` is untouched. Nothing is read past the 2n digits or past the
/// zero. What follows the 2n digits is not looked at. With `n` = 0 always true;
/// a null `text` or `out` otherwise gives false.
ZT_API bool hxStringToBinary(const char* text, ulong n, unsigned char* out);

/// Decodes all of `text` into a new array, which the caller ends with `delete[]`,
/// and sets `n` to its size.
///
/// A text of odd length gives null and `n` = 0xFFFFFFFF. A text with anything but
/// digits in it does not fail: the array has its full size, and the bytes from the
/// first bad pair on are zero.
ZT_API unsigned char* hxStringToBinary(const CString& text, ulong& n);

/// Whether `c` is one of "0123456789ABCDEF". A lower-case digit is none here,
/// although the decoder takes it.
constexpr bool hxIsHex(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
}

}  // namespace ZT
