/// @file
/// Bytes with a view of their bits, for tests.

#pragma once

#include <zt/containers/HXBitArray.h>

#include <utility>
#include <vector>

namespace ZT {

// The greatest index that single precision has in common with the integers, and one above it
// that it rounds into the next byte.
inline constexpr int kLastExact = 16777216;
inline constexpr int kRounded = 16777223;

// Bytes with a view of all their bits.
struct Bits {
    explicit Bits(std::vector<unsigned char> values)
        : bytes(std::move(values)), array(bytes.data(), 8 * static_cast<int>(bytes.size())) {}
    Bits(const Bits&) = delete;
    Bits& operator=(const Bits&) = delete;

    std::vector<unsigned char> bytes;
    HXBitArray array;
};

}  // namespace ZT
