/// @file
/// An object, or the memory exception.

#pragma once

#include <platform/object/CMemoryException.h>

#include <new>
#include <utility>

/// A new object, made from `arguments`, to be ended with `delete`. Where there is no memory
/// for it, the memory exception is raised; what the constructor raises passes through.
template <class T, class... Arguments>
T* AfxNewObject(Arguments&&... arguments) {
    T* const object = new (std::nothrow) T(std::forward<Arguments>(arguments)...);
    if (!object) AfxThrowMemoryException();
    return object;
}
