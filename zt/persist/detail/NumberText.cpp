#include <locale.h>
#include <zt/persist/detail/NumberText.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>

namespace ZT::NumberText {
namespace {

/// Sets the "C" locale for the calling thread as long as it lives.
class CLocaleScope {
public:
    CLocaleScope() : m_previous(uselocale(CLocale())) {}
    ~CLocaleScope() { uselocale(m_previous); }
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

private:
    static locale_t CLocale() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t m_previous;
};

/// Scanned by the C library itself: infinities, NaNs, hexadecimal
/// digits, unfinished exponents, numbers out of range. `text` begins with no white
/// space. Only the text up to the next white space, and that one character, is
/// copied, so that a long row of such numbers takes linear time.
template <class Real>
bool ScanUnusual(std::string_view text, const char* format, Real& value) {
    if (text.empty()) return false;
    const auto end = std::find_if(text.begin(), text.end(), IsSpace);
    const std::size_t length =
        std::min(static_cast<std::size_t>(end - text.begin()) + 1, text.size());
    char local[128];
    std::unique_ptr<char[]> heap;
    char* copy = local;
    if (length >= sizeof local) {
        heap = std::make_unique<char[]>(length + 1);
        copy = heap.get();
    }
    std::memcpy(copy, text.data(), length);
    copy[length] = '\0';
    const CLocaleScope scope;
    Real scanned;
    if (std::sscanf(copy, format, &scanned) != 1) return false;
    value = scanned;
    return true;
}

/// A plain decimal number of any length. False for whatever else, also where that is a
/// number.
template <class Real>
bool ScanPlain(std::string_view text, Real& value) {
    const std::size_t sign = !text.empty() && text.front() == '-';
    if (sign >= text.size() || !(IsDigit(text[sign]) || text[sign] == '.')) return false;
    const char* const end = text.data() + text.size();
    Real scanned;
    const auto [next, error] = std::from_chars(text.data(), end, scanned);
    if (error != std::errc{}) return false;
    if (next != end && (*next == 'x' || *next == 'X')) return false;
    value = scanned;
    return true;
}

/// The six digits of a number, and its decimal exponent.
struct Decimal {
    std::uint32_t digits;
    int exponent;
};

/// Rounds `magnitude` to six digits by a single multiplication with, or division by, an
/// exact power of ten. Only one rounding stands between the number and its six digits with
/// their fraction, so they are right unless the fraction is all but one half: then, and for
/// numbers out of the reach of the powers, there is no answer.
std::optional<Decimal> RoundToSixDigits(double magnitude) {
    constexpr double kAllButHalf = 0x1p-28;  // of which 2^-33 is needed
    if (!(magnitude >= 1e-16 && magnitude < 1e26)) return std::nullopt;
    const int binary = static_cast<int>(std::bit_cast<std::uint64_t>(magnitude) >> 52) - 1023;
    int exponent = (binary * 78913) >> 18;
    double scaled = 0;
    // The power of two below the number may have one digit less.
    for (int tries = 0; tries < 2; ++tries, ++exponent) {
        const int shift = 5 - exponent;
        scaled = shift < 0 ? magnitude / Exact<double>::kPowers[-shift]
                           : magnitude * Exact<double>::kPowers[shift];
        if (scaled < 1e6) break;
    }
    if (!(scaled >= 1e5 && scaled < 1e6)) return std::nullopt;
    auto digits = static_cast<std::uint32_t>(scaled);
    const double above_half = scaled - digits - 0.5;
    if (std::abs(above_half) < kAllButHalf) return std::nullopt;
    digits += above_half > 0;
    if (digits < 1'000'000) return Decimal{digits, exponent};
    return Decimal{100'000, exponent + 1};
}

char* WritePair(char* out, std::uint32_t value) {
    out[0] = static_cast<char>('0' + value / 10);
    out[1] = static_cast<char>('0' + value % 10);
    return out + 2;
}

/// Lays six digits out as "%g" does: in full from 0.0001 to below a million, otherwise with
/// an exponent; in both cases without zeros at the end of a fraction.
char* WriteDecimal(char* out, const Decimal& decimal) {
    char digits[6];
    WritePair(WritePair(WritePair(digits, decimal.digits / 10'000), decimal.digits / 100 % 100),
              decimal.digits % 100);
    int count = 6;
    while (count > 1 && digits[count - 1] == '0') --count;
    const bool in_full = decimal.exponent >= -4 && decimal.exponent < 6;
    int whole = in_full ? decimal.exponent + 1 : 1;
    if (whole <= 0) {
        out = std::copy_n("0.000", 2 - whole, out);
        return std::copy_n(digits, count, out);
    }
    out = std::copy_n(digits, whole, out);
    if (count > whole) {
        *out++ = '.';
        out = std::copy(digits + whole, digits + count, out);
    }
    if (in_full) return out;
    *out++ = 'e';
    *out++ = decimal.exponent < 0 ? '-' : '+';
    return WritePair(out, static_cast<std::uint32_t>(std::abs(decimal.exponent)));
}

template <class Real>
bool ScanAny(std::string_view text, const char* format, Real& value) {
    return ScanPlain(text, value) || ScanUnusual(text, format, value);
}

}  // namespace

std::string_view Trim(std::string_view text) {
    std::string_view rest = SkipSpace(text);
    while (!rest.empty() && IsSpace(rest.back())) rest.remove_suffix(1);
    return rest;
}

char* WriteDouble(char* out, double value) {
    const std::optional<Decimal> decimal = RoundToSixDigits(std::abs(value));
    if (!decimal) {
        return std::to_chars(out, out + kMaxLength, value, std::chars_format::general, 6).ptr;
    }
    if (value < 0) *out++ = '-';
    return WriteDecimal(out, *decimal);
}

char* WriteInt(char* out, std::int32_t value) {
    return std::to_chars(out, out + kMaxLength, value).ptr;
}

char* WriteHex(char* out, std::uint32_t value) {
    *out++ = '0';
    *out++ = 'x';
    for (int shift = 28; shift >= 0; shift -= 4) *out++ = "0123456789abcdef"[value >> shift & 15];
    return out;
}

bool ScanOther(std::string_view text, double& value) {
    return ScanAny(text, "%lf", value);
}

bool ScanOther(std::string_view text, float& value) {
    return ScanAny(text, "%f", value);
}

const char* ScanInt(std::string_view text, std::int32_t& value) {
    std::string_view number = SkipSpace(text);
    if (number.size() > 1 && number[0] == '+' && IsDigit(number[1])) number.remove_prefix(1);
    std::int64_t scanned = 0;
    const auto [end, error] =
        std::from_chars(number.data(), number.data() + number.size(), scanned);
    if (error == std::errc::invalid_argument) return nullptr;
    if (error == std::errc::result_out_of_range)
        scanned = number.front() == '-' ? std::numeric_limits<std::int64_t>::min()
                                        : std::numeric_limits<std::int64_t>::max();
    value = static_cast<std::int32_t>(scanned);
    return end;
}

}  // namespace ZT::NumberText
