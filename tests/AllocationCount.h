/// @file
/// The count of allocations in this test program, whose operator new counts, and a time in
/// which it ends.

#pragma once

#include <cstddef>

namespace testing_support {

/// How often memory was allocated since the program began.
std::size_t AllocationsSoFar();

/// How often `calls` allocates.
template <class Calls>
std::size_t AllocationsIn(Calls calls) {
    const std::size_t before = AllocationsSoFar();
    calls();
    return AllocationsSoFar() - before;
}

/// Lets `AllocationsSoFar` reach this number; every allocation after that finds no memory.
/// Gives what was set before.
std::size_t LimitAllocations(std::size_t most);

/// While it lives, there is memory for `allocations` more, whatever their size, and for none
/// after them.
class MemoryFor {
public:
    explicit MemoryFor(std::size_t allocations)
        : m_before(LimitAllocations(AllocationsSoFar() + allocations)) {}
    MemoryFor(const MemoryFor&) = delete;
    MemoryFor& operator=(const MemoryFor&) = delete;
    ~MemoryFor() { LimitAllocations(m_before); }

private:
    std::size_t m_before;
};

}  // namespace testing_support
