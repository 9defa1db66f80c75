/// @file
/// Numbers as text, and text as numbers, with a point as decimal mark whatever
/// the locale.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace section {

/// `value` with six significant digits, as a document stores it: "0.25", "1e-10".
std::string Number(double value);

/// `value` with `decimals` digits behind the point; zero has no sign.
std::string Fixed(double value, int decimals);

/// `count` and what is counted, such as "1 facet" and "2 facets".
std::string Plural(std::uint64_t count, const std::string& one);

/// Reads all of `text` as a number, which may have a sign and an exponent.
/// False, and `value` as it was, if it is none. A number beyond the range of a
/// double is infinite, and one too close to zero for it is 0; this asks for a
/// `text` of at most 128 characters.
bool ParseNumber(std::string_view text, double& value);

/// Reads all of `text` as a whole number; false, and `value` as it was, if it is
/// none or too large for an int.
bool ParseNumber(std::string_view text, int& value);

}  // namespace section
