/// @file
/// Numbers as text, by the conventions of the C library in the "C" locale and in
/// no other, whatever locale the process has set. For the library's own use: clients
/// reach it through the cursor.
///
/// The writers put the characters of "%g", "%d" and "0x%08x" at `out`, without a
/// terminating zero, and answer the place behind the last of them. The scanners
/// read one value from the start of a text with the conventions of "%lf", "%f"
/// and "%d": leading white space is skipped, whatever follows the value is left
/// alone, and a zero byte ends the text. They answer a place from the first character of
/// the number to the one behind it, so that it saves the way to go on from there; null, with
/// the value unchanged, if the text does not begin with a number.

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

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
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

/// What the inline forms below leave over: numbers of many digits or large exponents,
/// infinities, NaNs, hexadecimal digits, and whatever is no number. `text` begins with no
/// white space.
ZT_API bool ScanOther(std::string_view text, double& value);
ZT_API bool ScanOther(std::string_view text, float& value);

/// Up to which powers of ten, and integers, a type is exact.
template <class Real>
struct Exact;

template <>
struct Exact<double> {
    static constexpr int kExponent = 22;
    static constexpr std::uint64_t kInteger = std::uint64_t{1} << 53;
    static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
};

template <>
struct Exact<float> {
    static constexpr int kExponent = 10;
    static constexpr std::uint64_t kInteger = std::uint64_t{1} << 24;
    static constexpr float kPowers[] = {1e0f, 1e1f, 1e2f, 1e3f, 1e4f, 1e5f,
                                        1e6f, 1e7f, 1e8f, 1e9f, 1e10f};
};

/// Walks over decimal digits.
struct DigitReader {
    const char* at;
    const char* const end;
    std::uint64_t value = 0;
    std::ptrdiff_t count = 0;

    bool Sees(char c) const { return at != end && *at == c; }
    bool SeesLetter(char lower) const { return at != end && (*at | 0x20) == lower; }
    void Read() {
        const char* const first = at;
        for (; at != end && IsDigit(*at); ++at)
            value = 10 * value + static_cast<std::uint64_t>(*at - '0');
        count += at - first;
    }
};

/// A decimal number of few digits: one exact integer times or over one exact power of
/// ten, so that the only rounding is that of the result. The place behind it; null for all
/// else.
template <class Real>
const char* ScanShort(std::string_view text, Real& value) {
    constexpr std::ptrdiff_t kDigits = 18;
    DigitReader digits{text.data(), text.data() + text.size()};
    const bool negative = digits.Sees('-');
    digits.at += negative;
    digits.Read();
    std::ptrdiff_t exponent = 0;
    if (digits.Sees('.')) {
        exponent = digits.count;
        ++digits.at;
        digits.Read();
        exponent -= digits.count;
    }
    if (digits.count == 0 || digits.count > kDigits || digits.SeesLetter('x')) return nullptr;
    if (digits.SeesLetter('e')) {
        DigitReader power{digits.at + 1, digits.end};
        const bool down = power.Sees('-');
        power.at += down || power.Sees('+');
        power.Read();
        if (power.count == 0 || power.count > kDigits) return nullptr;
        const auto size = static_cast<std::ptrdiff_t>(power.value);
        exponent += down ? -size : size;
        digits.at = power.at;
    }
    const std::ptrdiff_t distance = exponent < 0 ? -exponent : exponent;
    if (digits.value > Exact<Real>::kInteger || distance > Exact<Real>::kExponent) return nullptr;
    const Real integer = static_cast<Real>(digits.value);
    const Real scale = Exact<Real>::kPowers[distance];
    const Real magnitude = exponent < 0 ? integer / scale : integer * scale;
    value = negative ? -magnitude : magnitude;
    return digits.at;
}

/// Both of the above, for a text that may begin with white space.
template <class Real>
const char* ScanReal(std::string_view text, Real& value) {
    const std::string_view number = SkipSpace(text);
    if (const char* const end = ScanShort(number, value)) return end;
    return ScanOther(number, value) ? number.data() : nullptr;
}

/// "%lf". A number too large for the type is infinite, and one too small is zero.
inline const char* ScanDouble(std::string_view text, double& value) {
    return ScanReal(text, value);
}

/// "%f"; otherwise as `ScanDouble`. The text is rounded once, to a `float`.
inline const char* ScanFloat(std::string_view text, float& value) {
    return ScanReal(text, value);
}

/// "%d". A number beyond 64 bits becomes the nearest one of 64, and of that the low
/// 32 bits count.
ZT_API const char* ScanInt(std::string_view text, std::int32_t& value);

}  // namespace ZT::NumberText
