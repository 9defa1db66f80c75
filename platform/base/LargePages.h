/// @file
/// Large pages under large blocks of memory.

#pragma once

#include <platform/base/Export.h>

#include <cstddef>

/// Asks the system for large pages under a block, before its first use: to hand a block of
/// some megabytes out page by page costs more than to fill it. Advice only; it changes
/// neither the bytes nor the way in which the block ends, and does nothing where no whole
/// large page lies in the block.
ZTP_API void PreferLargePages(void* block, std::size_t bytes) noexcept;
