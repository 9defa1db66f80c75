// What objects behind interfaces take from the heap, and what happens without memory: the
// memory exception passes through the interface. The program's operator new counts, and fails
// when told to.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CMemoryException.h>
#include <tests/CountingNew.h>
#include <tests/Raises.h>
#include <zt/interfaces/Array2OI.h>
#include <zt/interfaces/ListOI.h>
#include <zt/interfaces/MapOI.h>
#include <zt/interfaces/NumArrayOI.h>

#include <cstdint>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing_support::AllocationsIn;
using testing_support::MemoryFor;
using testing_support::Raises;

// Whether `work` raises the memory exception when it is given only so many blocks.
template <class Work>
testing::AssertionResult LacksMemory(std::size_t blocks, Work work) {
    return Raises<CMemoryException>([&] {
        const MemoryFor few(blocks);
        work();
    });
}

// The numbers 1 and 2 and the object's two interfaces.
struct InterfaceHeapUse : testing::Test {
    InterfaceHeapUse() {
        void* found = nullptr;
        numbers.QueryInterface(IID_IArrayNum, &found);
        shown = static_cast<IArrayNum*>(found);
        numbers.QueryInterface(IID_IObject_ZT, &found);
        self = static_cast<IObject_ZT*>(found);
        numbers.QueryInterface(IID_NativeObject, &found);
        array = static_cast<NumArrayOI::Array*>(found);
        shown->Add(1.0);
        shown->Add(2.0);
        array->FreeExtra();
    }

    NumArrayOI numbers{true};
    IArrayNum* shown = nullptr;
    IObject_ZT* self = nullptr;
    NumArrayOI::Array* array = nullptr;
};

TEST_F(InterfaceHeapUse, NothingIsMadeForNoArray) {
    void* found = nullptr;
    HRESULT answer = S_OK;
    EXPECT_EQ(AllocationsIn([&] { answer = Array2OI::Create(nullptr, &found); }), 0u);
    EXPECT_EQ(answer, DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(InterfaceHeapUse, NoContainerIsMadeWhenNoneIsAskedFor) {
    EXPECT_EQ(AllocationsIn([] { const MapOI none(false); }), 0u);
    EXPECT_EQ(AllocationsIn([] { const ListOI none(true, false); }), 0u);
    EXPECT_EQ(AllocationsIn([] { const NumArrayOI none(false); }), 0u);
}

TEST_F(InterfaceHeapUse, ContainersNeedMemory) {
    EXPECT_TRUE(LacksMemory(0, [] { const MapOI map(true); }));
    EXPECT_TRUE(LacksMemory(0, [] { const ListOI list(false, true); }));
    EXPECT_TRUE(LacksMemory(0, [] { const NumArrayOI made(true); }));
}

TEST_F(InterfaceHeapUse, ListTakesItsNodesTenAtATime) {
    ListOI list(false, true);
    const auto addTen = [&list] {
        for (int i = 0; i < 10; ++i) list.AddTail(nullptr);
    };
    EXPECT_EQ(AllocationsIn(addTen), 1u);
    EXPECT_EQ(AllocationsIn([&list] { list.AddTail(nullptr); }), 1u) << "the eleventh";
    EXPECT_EQ(AllocationsIn(addTen), 1u) << "the twenty-first";
}

TEST_F(InterfaceHeapUse, ReadingAndStoringTakesNoMemory) {
    double value = 0.0;
    EXPECT_EQ(AllocationsIn([&] {
                  shown->GetAt(1, &value);
                  shown->SetAt(0, value);
              }),
              0u);
    EXPECT_THAT(*array, ElementsAre(2.0, 2.0));
}

TEST_F(InterfaceHeapUse, CloneWithoutMemoryRaisesAndLeavesNothing) {
    IUnknown* clone = nullptr;
    // The object and its array; what the array takes for the numbers is not counted.
    for (const std::size_t blocks : {0u, 1u}) {
        EXPECT_TRUE(LacksMemory(blocks, [&] { self->Clone(&clone); })) << blocks;
        EXPECT_EQ(clone, nullptr);
    }
    EXPECT_EQ(AllocationsIn([&] { self->Clone(&clone); }), 2u);
    EXPECT_EQ(clone->Release(), 1u);
    EXPECT_EQ(clone->Release(), 0u);
}

TEST_F(InterfaceHeapUse, TypeOfNumbersNeedsMemory) {
    void* found = nullptr;
    EXPECT_TRUE(LacksMemory(0, [&] { numbers.QueryInterface(IID_ITypeBasic_ZT, &found); }));
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(numbers.GetRef(), 3u);
}

}  // namespace
}  // namespace ZT
