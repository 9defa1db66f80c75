/// @file
/// A time without memory, for tests of what happens then.

#pragma once

#include <cstddef>

namespace testing_support {

/// The size of the greatest array that `new (std::nothrow)` still gives; one source of the
/// program includes <tests/FailingNew.h>.
extern std::size_t greatest_array;

/// While it lives, the platform finds no memory for an array of more than `greatest` bytes.
class NoMemory {
public:
    explicit NoMemory(std::size_t greatest) : m_before(greatest_array) {
        greatest_array = greatest;
    }
    NoMemory(const NoMemory&) = delete;
    NoMemory& operator=(const NoMemory&) = delete;
    ~NoMemory() { greatest_array = m_before; }

private:
    std::size_t m_before;
};

}  // namespace testing_support
