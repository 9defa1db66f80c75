#include <gtest/gtest.h>

#include <platform/object/Allocation.h>

#include <cstdint>
#include <memory>

TEST(AfxNewArray, MakesAnArrayForArrayDelete) {
    const std::unique_ptr<int[]> numbers(AfxNewArray<int>(3));
    numbers[2] = 7;
    EXPECT_EQ(numbers[2], 7);
    const std::unique_ptr<char[]> none(AfxNewArray<char>(0));
    EXPECT_NE(none, nullptr);
}

// A compiler may leave out an array that nobody looks at, and its failure with it.
void* volatile seen = nullptr;

TEST(AfxNewArray, RaisesTheMemoryExceptionForTooMuch) {
    EXPECT_THROW(seen = AfxNewArray<char>(SIZE_MAX), CMemoryException*);
    EXPECT_THROW(seen = AfxNewArray<double>(SIZE_MAX / 8), CMemoryException*);
    EXPECT_THROW(seen = AfxNewArray<char>(std::size_t{1} << 62), CMemoryException*);
}
