#include <platform/collections/ElementMemory.h>
#include <platform/object/CMemoryException.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace {

using Collections::AllocateElements;
using Collections::FreeElements;
using Collections::GrownCapacity;

constexpr INT_PTR kMost = std::numeric_limits<INT_PTR>::max();

TEST(ElementMemory, MemoryIsAligned) {
    for (std::size_t alignment : {8U, 16U, 64U, 4096U}) {
        void* memory = AllocateElements(3, alignment, alignment);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % alignment, 0U);
        FreeElements(memory, alignment);
    }
    FreeElements(nullptr, 8);
}

TEST(ElementMemory, TooMuchRaisesMemory) {
    EXPECT_THROW(AllocateElements(kMost, 2, 8), CMemoryException*);
    EXPECT_THROW(AllocateElements(kMost / 8 + 1, 8, 8), CMemoryException*);
}

TEST(ElementMemory, CapacityFromNothingIsWhatIsNeededOrAStep) {
    EXPECT_EQ(GrownCapacity(0, 5, 0), 5);
    EXPECT_EQ(GrownCapacity(0, 5, 8), 8);
    EXPECT_EQ(GrownCapacity(0, 9, 8), 9);
}

TEST(ElementMemory, CapacityRisesByAStepOrDoubles) {
    EXPECT_EQ(GrownCapacity(10, 11, 3), 13);
    EXPECT_EQ(GrownCapacity(10, 15, 3), 15);
    EXPECT_EQ(GrownCapacity(10, 11, 0), 20);
    EXPECT_EQ(GrownCapacity(10, 25, 0), 25);
    EXPECT_EQ(GrownCapacity(1, 2, 0), 5);
}

TEST(ElementMemory, CapacityStopsAtTheLargest) {
    EXPECT_EQ(GrownCapacity(kMost - 1, kMost, 0), kMost);
    EXPECT_EQ(GrownCapacity(10, 11, kMost), kMost);
}

}  // namespace
