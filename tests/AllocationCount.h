/// @file
/// The count of allocations in this test program, whose operator new counts.

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

}  // namespace testing_support
