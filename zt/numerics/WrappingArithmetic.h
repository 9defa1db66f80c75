/// @file
/// Sums, differences and products of 32-bit integers that have an answer for every input.
///
/// The language leaves a result open that does not fit. These wrap round instead, as the
/// processor does.

#pragma once

#include <cstdint>

namespace ZT {

constexpr std::int32_t WrappingSum(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

constexpr std::int32_t WrappingDifference(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

constexpr std::int32_t WrappingProduct(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

}  // namespace ZT
