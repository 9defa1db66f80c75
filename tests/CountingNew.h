/// @file
/// Replaces the operator new of a test program by one that counts, and that can be made to
/// fail. Exactly one source of the program includes this file; all may include
/// <tests/AllocationCount.h>.

#pragma once

#include <cstdlib>
#include <limits>
#include <new>
#include <utility>

#include <tests/AllocationCount.h>

namespace testing_support {
namespace {

std::size_t allocations = 0;
std::size_t most_allocations = std::numeric_limits<std::size_t>::max();

void* CountedOrNull(std::size_t size) noexcept {
    if (allocations++ >= most_allocations) return nullptr;
    return std::malloc(size != 0 ? size : 1);
}

void* Counted(std::size_t size) {
    if (void* const memory = CountedOrNull(size)) return memory;
    throw std::bad_alloc();
}

}  // namespace

std::size_t AllocationsSoFar() {
    return allocations;
}

std::size_t LimitAllocations(std::size_t most) {
    return std::exchange(most_allocations, most);
}

}  // namespace testing_support

void* operator new(std::size_t size) {
    return testing_support::Counted(size);
}
void* operator new[](std::size_t size) {
    return testing_support::Counted(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return testing_support::CountedOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return testing_support::CountedOrNull(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
