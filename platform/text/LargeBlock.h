/// @file
/// Memory of very long texts.

#pragma once

#include <platform/base/Export.h>

#include <cstddef>

/// From this many bytes on, a text takes its memory from `AllocateLargeBlock`.
inline constexpr std::size_t kLargeBlockBytes = std::size_t{8} << 20;

/// A block for a very long text, on large pages where the system has them: handing
/// such a block out page by page would cost more than filling it. Null if there is no
/// memory.
ZTP_API void* AllocateLargeBlock(std::size_t bytes) noexcept;

ZTP_API void FreeLargeBlock(void* block) noexcept;
