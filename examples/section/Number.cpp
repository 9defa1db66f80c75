#include "section/Number.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace section {
namespace {

std::string Format(double value, std::chars_format format, int precision) {
    std::array<char, 400> text;
    const auto [end, error] =
        std::to_chars(text.data(), text.data() + text.size(), value, format, precision);
    return error == std::errc() ? std::string(text.data(), end) : std::string("?");
}

std::string_view WithoutPlus(std::string_view text) {
    const bool plus = text.starts_with('+') && !text.starts_with("+-");
    return plus ? text.substr(1) : text;
}

template <class T>
std::errc Parse(std::string_view text, T& value) {
    text = WithoutPlus(text);
    const char* const end = text.data() + text.size();
    T parsed{};
    const auto [rest, error] = std::from_chars(text.data(), end, parsed);
    if (rest != end) {
        return std::errc::invalid_argument;
    }
    if (error == std::errc()) {
        value = parsed;
    }
    return error;
}

/// Of a number beyond the range of a double: whether it is so on the side of zero.
bool IsTiny(std::string_view text) {
    return text.find("e-") != text.npos || text.find("E-") != text.npos;
}

}  // namespace

std::string Number(double value) {
    return Format(value, std::chars_format::general, 6);
}

std::string Fixed(double value, int decimals) {
    const std::string text = Format(value, std::chars_format::fixed, decimals);
    const bool zero = text.find_first_of("123456789") == text.npos;
    return zero && text.starts_with('-') ? text.substr(1) : text;
}

std::string Plural(std::uint64_t count, const std::string& one) {
    return std::to_string(count) + ' ' + one + (count == 1 ? "" : "s");
}

bool ParseNumber(std::string_view text, double& value) {
    const std::errc error = Parse(text, value);
    if (error == std::errc::result_out_of_range) {
        const double infinity = std::numeric_limits<double>::infinity();
        value = IsTiny(text) ? 0.0 : std::copysign(infinity, text.starts_with('-') ? -1.0 : 1.0);
        return true;
    }
    return error == std::errc();
}

bool ParseNumber(std::string_view text, int& value) {
    return Parse(text, value) == std::errc();
}

}  // namespace section
