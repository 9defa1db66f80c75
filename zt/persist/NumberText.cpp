#include <locale.h>
#include <zt/persist/NumberText.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>

namespace ZT::NumberText {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

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

/// The number is scanned by the C library itself: infinities, NaNs, hexadecimal
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

/// A plain decimal number, which is nearly every number. False for whatever else,
/// also where that is a number.
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

template <class Real>
bool ScanReal(std::string_view text, const char* format, Real& value) {
    const std::string_view number = SkipSpace(text);
    return ScanPlain(number, value) || ScanUnusual(number, format, value);
}

}  // namespace

std::string_view Trim(std::string_view text) {
    std::string_view rest = SkipSpace(text);
    while (!rest.empty() && IsSpace(rest.back())) rest.remove_suffix(1);
    return rest;
}

char* WriteDouble(char* out, double value) {
    return std::to_chars(out, out + kMaxLength, value, std::chars_format::general, 6).ptr;
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

bool ScanDouble(std::string_view text, double& value) {
    return ScanReal(text, "%lf", value);
}

bool ScanFloat(std::string_view text, float& value) {
    return ScanReal(text, "%f", value);
}

bool ScanInt(std::string_view text, std::int32_t& value) {
    std::string_view number = SkipSpace(text);
    if (number.size() > 1 && number[0] == '+' && IsDigit(number[1])) number.remove_prefix(1);
    std::int64_t scanned = 0;
    const auto error = std::from_chars(number.data(), number.data() + number.size(), scanned).ec;
    if (error == std::errc::invalid_argument) return false;
    if (error == std::errc::result_out_of_range)
        scanned = number.front() == '-' ? std::numeric_limits<std::int64_t>::min()
                                        : std::numeric_limits<std::int64_t>::max();
    value = static_cast<std::int32_t>(scanned);
    return true;
}

}  // namespace ZT::NumberText
