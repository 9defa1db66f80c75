/// @file
/// Exceptions that exist before they are needed.

#pragma once

#include <cstddef>
#include <new>

/// The one `T` of the program that stands outside the heap and is never
/// destroyed, so that it can be raised without memory and at any time, also
/// while the program ends.
template <class T>
T* StandingException() {
    alignas(T) static std::byte room[sizeof(T)];
    static T* const exception = new (room) T(false);
    return exception;
}
