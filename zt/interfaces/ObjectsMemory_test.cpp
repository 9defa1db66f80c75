// What the objects that show blobs, ranges and types take from the heap, and what happens
// without memory. The program's operator new counts, and fails when told to.

#include <gtest/gtest.h>
#include <platform/object/CMemoryException.h>
#include <tests/AllocationCount.h>
#include <tests/Raises.h>
#include <zt/interfaces/BlobOI.h>
#include <zt/interfaces/RangeR1OI.h>
#include <zt/interfaces/RangeS1OI.h>
#include <zt/interfaces/TypeBasicOI.h>

#include <cstddef>

namespace ZT {
namespace {

using testing_support::AllocationsIn;
using testing_support::MemoryFor;
using testing_support::Raises;

TEST(ObjectsMemory, BlobIsMadeOnlyWhenAskedFor) {
    EXPECT_EQ(AllocationsIn([] { const BlobOI embedded(false, true); }), 0u);
    for (const bool cached : {false, true}) {
        EXPECT_TRUE(Raises<CMemoryException>([&] {
            const MemoryFor none(0);
            const BlobOI allocated(true, cached);
        }));
    }
}

TEST(ObjectsMemory, ShowingARangeTakesNone) {
    RangeR1OI interval;
    RangeS1OI arc;
    arc.AttachRange(&arc);
    EXPECT_EQ(AllocationsIn([&] {
                  void* shown = nullptr;
                  interval.QueryInterface(IID_IRange, &shown);
                  static_cast<IRange*>(shown)->Set(1.0, 2.0);
                  arc.QueryInterface(IID_IRange, &shown);
                  static_cast<IRange*>(shown)->Set(1.0, 2.0);
              }),
              0u);
    EXPECT_EQ(arc.m_max, 2.0);
}

// With every number of blocks that does not suffice, nothing is given and nothing stays behind.
TEST(ObjectsMemory, CompatibleTypesWithoutMemoryRaiseAndLeaveNothing) {
    TypeBasicOI ray(28);
    void* found = nullptr;
    ray.QueryInterface(IID_ITypeBasic_ZT, &found);
    ray.AddRef();
    auto* const shown = static_cast<ITypeBasic_ZT*>(found);
    IUnknown* types = nullptr;
    shown->GetCompatibleTypes(&types);
    types->Release();
    types->Release();
    types = nullptr;
    const std::size_t needed = AllocationsIn([&] { shown->GetCompatibleTypes(&types); });
    EXPECT_GE(needed, 2u);
    EXPECT_EQ(types->Release(), 1u);
    EXPECT_EQ(types->Release(), 0u);
    types = nullptr;
    for (std::size_t blocks = 0; blocks < needed; ++blocks) {
        EXPECT_TRUE(Raises<CMemoryException>([&] {
            const MemoryFor few(blocks);
            shown->GetCompatibleTypes(&types);
        })) << blocks;
        EXPECT_EQ(types, nullptr);
    }
}

}  // namespace
}  // namespace ZT
