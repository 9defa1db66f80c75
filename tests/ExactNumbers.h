/// @file
/// Doubles in tests: compared to the last bit and printed in full.

#pragma once

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

namespace testing_support {

/// `x` with as many digits as tell it from every other double, and its bits.
inline std::string InFull(double x) {
    char text[64];
    std::snprintf(text, sizeof text, "%.17g (0x%016llX)", x,
                  static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(x)));
    return text;
}

/// Whether two doubles are the same to the last bit: 0.0 is not -0.0. All NaNs are the
/// same.
inline bool SameDouble(double a, double b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

/// Matches the double `expected` and no other.
MATCHER_P(Is, expected, (negation ? "is not " : "is ") + InFull(expected)) {
    *result_listener << "which is " << InFull(arg);
    return SameDouble(arg, expected);
}

}  // namespace testing_support
