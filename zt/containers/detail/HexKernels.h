/// @file
/// The inner loops of hexadecimal text, one set for each kind of processor.
///
/// Clients use `HexText.h`, which picks the fastest set that the processor runs.
/// All sets give the same result for every input.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include <zt/frame/Export.h>

namespace ZT::hex {

/// One way of doing the two conversions.
struct Kernel {
    const char* name;

    /// Writes the 2 * `count` upper-case digits of `bytes` to `digits`.
    void (*encode)(const std::uint8_t* bytes, std::size_t count, char* digits);

    /// Reads `count` pairs of digits, all of which must be readable, and gives the
    /// number of bytes decoded: fewer than `count` when a pair holds anything but
    /// digits. Writes the decoded bytes and none after them. `bytes` may be where
    /// `digits` begins.
    std::size_t (*decode)(const char* digits, std::size_t count, std::uint8_t* bytes);
};

/// The sets that this processor runs, the plainest first and the fastest last.
ZT_API std::span<const Kernel> Kernels();

}  // namespace ZT::hex
