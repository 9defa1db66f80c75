/// @file
/// Memory for the elements of an array.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>

#include <cstddef>

namespace Collections {

/// Memory for `count` elements of `elementSize` bytes, not initialised. Too large a block,
/// or none to be had, raises the memory exception.
ZTP_API void* AllocateElements(INT_PTR count, std::size_t elementSize, std::size_t alignment);

/// Gives back what `AllocateElements` gave; null is allowed.
ZTP_API void FreeElements(void* memory, std::size_t alignment) noexcept;

/// The capacity of an array that holds `capacity` elements and needs `needed`, more than
/// that. With a step the capacity rises by whole steps' worth at a time, `step` or what is
/// needed; without one, `step` being 0, it doubles, so that adding one by one costs
/// the same per element however large the array becomes.
ZTP_API INT_PTR GrownCapacity(INT_PTR capacity, INT_PTR needed, INT_PTR step);

}  // namespace Collections
