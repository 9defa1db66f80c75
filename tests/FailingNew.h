/// @file
/// Replaces the operator new of a test program by which the platform takes its arrays, so
/// that a test can make it fail. Exactly one source of the program includes this file; all
/// may include <tests/NoMemory.h>.

#pragma once

#include <tests/NoMemory.h>

#include <limits>
#include <new>

std::size_t testing_support::greatest_array = std::numeric_limits<std::size_t>::max();

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    if (size > testing_support::greatest_array) return nullptr;
    try {
        return ::operator new[](size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
