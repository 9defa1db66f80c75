/// @file
/// Memory, or the memory exception.

#pragma once

#include <platform/object/CMemoryException.h>

#include <cstddef>
#include <limits>
#include <new>

/// An array of `count` default-made elements, numbers without a value, to be ended
/// with `delete[]`. A count for which there is no memory raises the memory
/// exception; 0 gives an array without elements.
template <class T>
T* AfxNewArray(std::size_t count) {
    constexpr std::size_t most = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(T);
    T* const array = count <= most ? new (std::nothrow) T[count] : nullptr;
    if (!array) AfxThrowMemoryException();
    return array;
}
