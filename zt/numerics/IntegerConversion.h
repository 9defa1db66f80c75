/// @file
/// Conversions from a double to an integer that have an answer for every input.
///
/// The language leaves a conversion open whose value does not fit the integer, and a
/// compiler may then give one answer in advance and the processor another. These give
/// the processor's answer everywhere, and cost the one instruction.

#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

namespace ZT {

/// What `TruncateToInt32` gives for a number that does not fit.
inline constexpr std::int32_t kNoInt32 = std::numeric_limits<std::int32_t>::min();

/// What `TruncateToInt64` gives for a number that does not fit.
inline constexpr std::int64_t kNoInt64 = std::numeric_limits<std::int64_t>::min();

namespace detail {

// `bound` is the first number above those that fit.
template <class Int>
constexpr Int Truncate(double x, double bound) {
    if (std::is_constant_evaluated()) {
        return x > -bound && x < bound ? static_cast<Int>(x) : std::numeric_limits<Int>::min();
    }
    // Not the compiler's own function for this instruction: of a number that it knows in
    // advance and that does not fit, GCC makes the greatest integer.
    Int result;
    asm("cvttsd2si {%1, %0|%0, %1}" : "=r"(result) : "x"(x));
    return result;
}

}  // namespace detail

/// `x` truncated towards zero. The most negative integer for a NaN and for every
/// number whose integer part does not fit into 32 bits.
constexpr std::int32_t TruncateToInt32(double x) {
    return detail::Truncate<std::int32_t>(x, 2147483648.0);
}

/// `x` truncated towards zero. The most negative integer for a NaN and for every
/// number whose integer part does not fit into 64 bits.
constexpr std::int64_t TruncateToInt64(double x) {
    return detail::Truncate<std::int64_t>(x, 9223372036854775808.0);
}

}  // namespace ZT
