/// @file
/// Conversions from a double to an integer that have an answer for every input.
///
/// The language leaves a conversion open whose value does not fit the integer, and a
/// compiler may then give one answer in advance and the processor another. These give
/// the same answer everywhere, for two comparisons that are always foreseen.

#pragma once

#include <cstdint>
#include <limits>

namespace ZT {

/// What `TruncateToInt32` gives for a number that does not fit.
inline constexpr std::int32_t kNoInt32 = std::numeric_limits<std::int32_t>::min();

/// What `TruncateToInt64` gives for a number that does not fit.
inline constexpr std::int64_t kNoInt64 = std::numeric_limits<std::int64_t>::min();

/// `x` truncated towards zero. The most negative integer for a NaN and for every
/// number whose integer part does not fit into 32 bits.
constexpr std::int32_t TruncateToInt32(double x) {
    constexpr double kBound = 2147483648.0;
    return x > -kBound && x < kBound ? static_cast<std::int32_t>(x) : kNoInt32;
}

/// `x` truncated towards zero. The most negative integer for a NaN and for every
/// number whose integer part does not fit into 64 bits.
constexpr std::int64_t TruncateToInt64(double x) {
    constexpr double kBound = 9223372036854775808.0;
    return x > -kBound && x < kBound ? static_cast<std::int64_t>(x) : kNoInt64;
}

}  // namespace ZT
