// Tables of rows: making, sizing and single rows.

#include <zt/memory/BufferBase.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CMemoryException.h>
#include <sibling/BufferBase.h>
#include <tests/FailingNew.h>
#include <tests/NoMemory.h>
#include <tests/Raises.h>
#include <zt/memory/Rows_test.hpp>

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing_support::NoMemory;
using testing_support::Raises;

// The layout.

TEST(BufferBase, FieldsStandInOrder) {
    EXPECT_EQ(offsetof(BufferBase, m_nRowSize), 0u);
    EXPECT_EQ(offsetof(BufferBase, m_nCount), 4u);
    EXPECT_EQ(offsetof(BufferBase, m_nAllocated), 8u);
    EXPECT_EQ(offsetof(BufferBase, m_pData), 16u);
    EXPECT_EQ(sizeof(BufferBase), 24u);
    EXPECT_FALSE(std::is_polymorphic_v<BufferBase>);
    EXPECT_TRUE((std::is_same_v<decltype(BufferBase::m_nRowSize), std::uint8_t>));
    EXPECT_TRUE((std::is_same_v<decltype(BufferBase::m_nCount), std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(BufferBase::m_nAllocated), std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(BufferBase::m_pData), unsigned char*>));
}

// Making and letting go.

TEST(BufferBase, BeginsWithoutAnything) {
    BufferBase buffer;
    EXPECT_THAT(buffer, HasFields(0, 0u, 0u));
    EXPECT_EQ(buffer.m_pData, nullptr);
    EXPECT_EQ(buffer.GetRow(0), nullptr);
    EXPECT_EQ(buffer.GetCount(), 0u);
    EXPECT_EQ(buffer.GetRowSize(), 0);
    EXPECT_FALSE(buffer.IsInRange(0));
    EXPECT_EQ(buffer.AddNewRow(), nullptr);
    EXPECT_EQ(buffer.GetCount(), 0u);
}

TEST(BufferBase, ConstructEmptiesAndFreesNothing) {
    Rows rows(2, "aabb");
    const std::unique_ptr<unsigned char[]> block(rows.m_pData);
    rows.m_nAllocated = 4;
    rows.Construct();
    EXPECT_THAT(rows, HasFields(0, 0u, 0u));
    EXPECT_EQ(rows.m_pData, nullptr);
    EXPECT_EQ(block[3], 'b');
}

TEST(BufferBase, ConstructMakesABufferOfRawMemory) {
    alignas(BufferBase) unsigned char memory[sizeof(BufferBase)];
    std::memset(memory, 0xA5, sizeof memory);
    auto* const buffer = reinterpret_cast<BufferBase*>(memory);
    buffer->Construct();
    EXPECT_EQ(buffer->m_nRowSize, 0);
    EXPECT_EQ(buffer->m_nCount, 0u);
    EXPECT_EQ(buffer->m_nAllocated, 0u);
    EXPECT_EQ(buffer->m_pData, nullptr);
}

TEST(BufferBase, AssignmentCopiesAllFieldsAndSharesTheBlock) {
    Rows source(2, "aabb");
    source.m_nAllocated = 4;
    BufferBase assigned;
    assigned = source;
    BufferBase copy(source);
    for (BufferBase* const other : {&assigned, &copy}) {
        EXPECT_THAT(*other, HasFields(2, 2u, 4u));
        EXPECT_EQ(other->m_pData, source.m_pData);
        other->Construct();
    }
}

// Rows by their index.

TEST(BufferBase, RowsLieOneBehindTheOther) {
    Rows rows(3, "aaabbbccc");
    EXPECT_EQ(rows.GetRow(0), rows.m_pData);
    EXPECT_EQ(rows.GetRow(2), rows.m_pData + 6);
    EXPECT_EQ(rows.GetRow(3), nullptr);
    EXPECT_EQ(rows.GetRow(0xFFFFFFFF), nullptr);
    EXPECT_TRUE(rows.IsInRange(2));
    EXPECT_FALSE(rows.IsInRange(3));
}

TEST(BufferBase, SetRowSizeLeavesBlockAndCount) {
    Rows rows(4, "aaaabbbb");
    unsigned char* const block = rows.m_pData;
    rows.SetRowSize(2);
    EXPECT_EQ(rows.GetRowSize(), 2);
    EXPECT_EQ(rows.GetCount(), 2u);
    EXPECT_EQ(rows.m_pData, block);
    EXPECT_EQ(rows.GetRow(1), block + 2);
    rows.SetRowSize(255);
    EXPECT_EQ(rows.GetRowSize(), 255);
    rows.SetRowSize(0);
    EXPECT_EQ(rows.GetRow(1), block);
}

TEST(BufferBase, RemoveRowMovesTheFollowingRowsDown) {
    Rows rows(2, "aabbccdd");
    rows.m_nAllocated = 8;
    unsigned char* const block = rows.m_pData;
    rows.RemoveRow(1);
    EXPECT_EQ(TextOf(rows), "aaccdd");
    rows.RemoveRow(0);
    EXPECT_EQ(TextOf(rows), "ccdd");
    rows.RemoveRow(1);
    EXPECT_EQ(TextOf(rows), "cc");
    rows.RemoveRow(0);
    EXPECT_THAT(rows, HasFields(2, 0u, 8u));
    EXPECT_EQ(rows.m_pData, block);
    rows.RemoveRow(0);
    EXPECT_THAT(rows, HasFields(2, 0u, 8u));
}

TEST(BufferBase, RemoveRowBeyondTheLastOrWithoutABlockDoesNothing) {
    Rows rows(2, "aabb");
    rows.RemoveRow(2);
    rows.RemoveRow(0xFFFFFFFF);
    EXPECT_EQ(TextOf(rows), "aabb");
    rows.DestroyNoCount();
    rows.RemoveRow(0);
    EXPECT_EQ(rows.GetCount(), 2u);
}

// Resizing.

TEST(BufferBase, AllocateKeepsTheRowsAndClearsTheNewOnes) {
    Rows rows(2, "aabb");
    rows.m_nAllocated = 4;
    rows.Allocate(4);
    EXPECT_THAT(rows, HasFields(2, 4u, 0u));
    EXPECT_EQ(TextOf(rows), std::string("aabb\0\0\0\0", 8));
    rows.Allocate(1);
    EXPECT_THAT(rows, HasFields(2, 1u, 0u));
    EXPECT_EQ(TextOf(rows), "aa");
    rows.Allocate(1);
    EXPECT_EQ(TextOf(rows), "aa");
    rows.Allocate(0);
    EXPECT_THAT(rows, HasFields(2, 0u, 0u));
    EXPECT_EQ(rows.m_pData, nullptr);
}

TEST(BufferBase, AllocateWithoutARowSizeDoesNothing) {
    Rows rows(2, "aabb");
    unsigned char* const block = rows.m_pData;
    rows.m_nAllocated = 4;
    rows.SetRowSize(0);
    rows.Allocate(7);
    EXPECT_THAT(rows, HasFields(0, 2u, 4u));
    EXPECT_EQ(rows.m_pData, block);
}

TEST(BufferBase, AllocateOfTheShapeReplacesTheBlock) {
    BufferBase buffer;
    buffer.m_nRowSize = 3;
    buffer.m_nCount = 5;
    buffer.m_nAllocated = 99;
    buffer.Allocate();
    EXPECT_THAT(buffer, HasFields(3, 5u, 0u));
    ASSERT_NE(buffer.GetRow(4), nullptr);
    std::memset(buffer.m_pData, 1, 15);
    buffer.m_nCount = 0;
    buffer.Allocate();
    EXPECT_EQ(buffer.m_pData, nullptr);
}

TEST(BufferBase, SetCountKeepsTheRows) {
    Rows rows(2, "aabbcc");
    rows.m_nAllocated = 6;
    rows.SetCount(5);
    EXPECT_THAT(rows, HasFields(2, 5u, 0u));
    EXPECT_EQ(TextOf(rows).substr(0, 6), "aabbcc");
    rows.SetCount(2);
    EXPECT_THAT(rows, HasFields(2, 2u, 0u));
    EXPECT_EQ(TextOf(rows), "aabb");
}

TEST(BufferBase, SetCountToTheCountDoesNothing) {
    Rows rows(2, "aabb");
    rows.m_nAllocated = 4;
    unsigned char* const block = rows.m_pData;
    rows.SetCount(2);
    EXPECT_THAT(rows, HasFields(2, 2u, 4u));
    EXPECT_EQ(rows.m_pData, block);
    rows.DestroyNoCount();
    rows.SetCount(2);
    EXPECT_EQ(rows.m_pData, nullptr);
}

TEST(BufferBase, SetCountWithoutBytesLeavesNoRows) {
    Rows rows(2, "aabb");
    rows.m_nAllocated = 4;
    rows.SetCount(0);
    EXPECT_THAT(rows, HasFields(2, 0u, 0u));
    EXPECT_EQ(rows.m_pData, nullptr);
    Rows sizeless(2, "aabb");
    sizeless.m_nAllocated = 4;
    sizeless.SetRowSize(0);
    sizeless.SetCount(9);
    EXPECT_THAT(sizeless, HasFields(0, 0u, 0u));
    EXPECT_EQ(sizeless.m_pData, nullptr);
}

TEST(BufferBase, DestroyKeepsTheRowSizeAlone) {
    Rows rows(2, "aabb");
    rows.m_nAllocated = 4;
    rows.Destroy();
    EXPECT_THAT(rows, HasFields(2, 0u, 0u));
    EXPECT_EQ(rows.m_pData, nullptr);
}

TEST(BufferBase, DestroyNoCountKeepsTheShape) {
    Rows rows(2, "aabb");
    rows.m_nAllocated = 4;
    rows.DestroyNoCount();
    EXPECT_THAT(rows, HasFields(2, 2u, 0u));
    EXPECT_EQ(rows.GetRow(0), nullptr);
    rows.Allocate();
    EXPECT_THAT(rows, HasFields(2, 2u, 0u));
    ASSERT_NE(rows.GetRow(1), nullptr);
    std::memset(rows.m_pData, 1, 4);
}

TEST(BufferBase, ResizingWithoutABlockStartsFromNothing) {
    Rows rows(2, "aabb");
    rows.DestroyNoCount();
    rows.SetCount(3);
    ASSERT_NE(rows.GetRow(2), nullptr);
    rows.DestroyNoCount();
    rows.Allocate(4);
    EXPECT_EQ(TextOf(rows), std::string(8, '\0'));
    rows.DestroyNoCount();
    ASSERT_NE(rows.AddNewRow(), nullptr);
    EXPECT_EQ(TextOf(rows), std::string(10, '\0'));
}

// 128 * 2^25 is 2^32.
TEST(BufferBase, ACountFromTheCallerIsMultipliedIn32Bits) {
    Rows set(128, std::string(256, 'a'));
    set.SetCount(33554432);
    EXPECT_THAT(set, HasFields(128, 0u, 0u));
    EXPECT_EQ(set.m_pData, nullptr);
    Rows allocated(128, std::string(256, 'a'));
    allocated.Allocate(33554432);
    EXPECT_THAT(allocated, HasFields(128, 33554432u, 0u));
    EXPECT_EQ(allocated.m_pData, nullptr);
}

// Growing row by row.

TEST(BufferBase, AddNewRowGrowsToTwiceTheRowsThatAreAskedFor) {
    BufferBase buffer;
    buffer.SetRowSize(8);
    std::vector<ulong> reallocated;
    ulong allocated = 0;
    for (ulong row = 1; row <= 100; ++row) {
        unsigned char* const place = buffer.AddNewRow();
        ASSERT_EQ(buffer.GetCount(), row);
        EXPECT_EQ(place, buffer.GetRow(row - 1));
        if (buffer.m_nAllocated != allocated) reallocated.push_back(row);
        allocated = buffer.m_nAllocated;
        EXPECT_EQ(TextOf(buffer).substr(8 * row - 8), std::string(8, '\0')) << row;
        std::memset(place, static_cast<int>(row), 8);
    }
    EXPECT_EQ(reallocated, (std::vector<ulong>{1, 2, 5, 11, 23, 47, 95}));
    EXPECT_EQ(allocated, 2 * 95 * 8u);
    for (ulong row = 1; row <= 100; ++row) EXPECT_EQ(*buffer.GetRow(row - 1), row);
}

TEST(BufferBase, AllocateExTakesAnUnknownRoomForExact) {
    Rows rows(2, "aabb");
    rows.AllocateEx(3);
    EXPECT_THAT(rows, HasFields(2, 3u, 6u));
    EXPECT_EQ(TextOf(rows), std::string("aabb\0\0", 6));
    rows.AllocateEx(4);
    EXPECT_THAT(rows, HasFields(2, 4u, 16u));
    EXPECT_EQ(TextOf(rows), std::string("aabb\0\0\0\0", 8));
    unsigned char* const block = rows.m_pData;
    rows.AllocateEx(8);
    EXPECT_THAT(rows, HasFields(2, 8u, 16u));
    EXPECT_EQ(rows.m_pData, block);
    rows.AllocateEx(9);
    EXPECT_THAT(rows, HasFields(2, 9u, 36u));
}

TEST(BufferBase, AllocateExShrinksInPlace) {
    Rows rows(2, "aabb");
    rows.AllocateEx(2);
    unsigned char* const block = rows.m_pData;
    rows.AllocateEx(1);
    EXPECT_THAT(rows, HasFields(2, 1u, 4u));
    rows.AllocateEx(0);
    EXPECT_THAT(rows, HasFields(2, 0u, 4u));
    EXPECT_EQ(rows.m_pData, block);
}

TEST(BufferBase, AllocateExToNoRowsDropsAnUnknownBlock) {
    Rows rows(2, "aabb");
    rows.AllocateEx(0);
    EXPECT_THAT(rows, HasFields(2, 0u, 0u));
    EXPECT_EQ(rows.m_pData, nullptr);
}

TEST(BufferBase, ARowInRoomThatWasGivenUpHasTheOldBytes) {
    Rows rows(2, "aabb");
    rows.AllocateEx(2);
    rows.RemoveRow(1);
    EXPECT_THAT(rows, HasFields(2, 1u, 4u));
    ASSERT_NE(rows.AddNewRow(), nullptr);
    EXPECT_EQ(TextOf(rows), "aabb");
    rows.AllocateEx(1);
    rows.AllocateEx(2);
    EXPECT_EQ(TextOf(rows), "aabb");
}

TEST(BufferBase, RoomIsNeverUsedUpByRowsWithoutASize) {
    Rows rows(2, "aabb");
    rows.AllocateEx(2);
    rows.SetRowSize(0);
    EXPECT_EQ(rows.AddNewRow(), rows.m_pData);
    EXPECT_THAT(rows, HasFields(0, 3u, 4u));
    ASSERT_NE(rows.m_pData, nullptr);
    // They bring along no more than the room they lie in.
    EXPECT_EQ(rows.Merge(Rows(2, "cc")), 3u);
    EXPECT_EQ(TextOf(rows), std::string("aabb\0\0cc", 8));
}

TEST(BufferBase, MoreRowsThanCanBeCountedRaiseTheMemoryException) {
    Rows rows(2, "aabb");
    rows.AllocateEx(2);
    rows.SetRowSize(0);
    rows.AllocateEx(4294967295);
    const unsigned char* const block = rows.m_pData;
    for (const bool sized : {false, true}) {
        const unsigned char rowSize = sized ? 1 : 0;
        rows.SetRowSize(rowSize);
        EXPECT_TRUE(Raises<CMemoryException>([&] { rows.AddNewRow(); }));
        EXPECT_THAT(rows, HasFields(rowSize, 4294967295u, 4u));
        EXPECT_EQ(rows.m_pData, block);
    }
}

// 255 * 16843010 is 2^32 + 254, and 255 * 8421505 is 2^31 + 127.
TEST(BufferBase, NoBlockOf4GiBIsTakenForSmaller) {
    Rows rows(255, std::string(255, 'a'));
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.AllocateEx(16843010); }));
    EXPECT_THAT(rows, HasFields(255, 1u, 0u));
    rows.AllocateEx(1);
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.AllocateEx(16843010); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.AllocateEx(8421505); }));
    EXPECT_THAT(rows, HasFields(255, 1u, 255u));
    unsigned char* const block = rows.m_pData;
    rows.m_nCount = 16843010;
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.Allocate(); }));
    EXPECT_THAT(rows, HasFields(255, 16843010u, 255u));
    EXPECT_EQ(rows.m_pData, block);
}

TEST(BufferBase, EveryOtherChangeOfTheBlockForgetsTheRoom) {
    const auto forgets = [](auto change) {
        Rows rows(2, "aabb");
        rows.AllocateEx(2);
        Rows other(2, "cc");
        change(rows, other);
        EXPECT_EQ(rows.m_nAllocated, 0u);
    };
    forgets([](Rows& rows, Rows&) { rows.Allocate(3); });
    forgets([](Rows& rows, Rows&) { rows.Allocate(); });
    forgets([](Rows& rows, Rows&) { rows.SetCount(3); });
    forgets([](Rows& rows, Rows&) { rows.Destroy(); });
    forgets([](Rows& rows, Rows&) { rows.DestroyNoCount(); });
    forgets([](Rows& rows, Rows& other) { rows.Copy(other, 0); });
    forgets([](Rows& rows, Rows& other) { rows.Merge(other); });
    forgets([](Rows& rows, Rows& other) { rows.Unite(other); });
}

// No memory.

// So many rows of 255 bytes have more bytes than the limit.
constexpr ulong kTooMany = 1000;
constexpr std::size_t kMost = 100'000;

TEST(BufferBase, AFailedResizeLeavesTheBufferAsItWas) {
    Rows rows(255, std::string(510, 'a'));
    unsigned char* const block = rows.m_pData;
    const NoMemory limit(kMost);
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.SetCount(kTooMany); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.Allocate(kTooMany); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.AllocateEx(kTooMany); }));
    EXPECT_THAT(rows, HasFields(255, 2u, 0u));
    EXPECT_EQ(rows.m_pData, block);
    rows.AllocateEx(2);
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.AllocateEx(kTooMany); }));
    EXPECT_THAT(rows, HasFields(255, 2u, 510u));
    EXPECT_EQ(TextOf(rows), std::string(510, 'a'));
}

TEST(BufferBase, AFailedNewBlockLeavesTheShapeWithoutABlock) {
    Rows rows(1, "a");
    rows.m_nAllocated = 1;
    rows.m_nRowSize = 255;
    rows.m_nCount = kTooMany;
    const NoMemory limit(kMost);
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.Allocate(); }));
    EXPECT_THAT(rows, HasFields(255, kTooMany, 0u));
    EXPECT_EQ(rows.m_pData, nullptr);
    EXPECT_EQ(rows.GetRow(0), nullptr);
}

TEST(BufferBase, AFailedCopyOrMergeChangesNothing) {
    Rows huge(255, std::string(255 * kTooMany, 'a'));
    Rows rows(2, "aabb");
    Rows sizeless(1, "a");
    sizeless.SetRowSize(0);
    const NoMemory limit(kMost);
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.Copy(huge, 1); }));
    EXPECT_THAT(rows, HasFields(2, 2u, 0u));
    EXPECT_EQ(TextOf(rows), "aabb");
    EXPECT_TRUE(Raises<CMemoryException>([&] { sizeless.Merge(huge); }));
    EXPECT_THAT(sizeless, HasFields(0, 1u, 0u));
    EXPECT_TRUE(Raises<CMemoryException>([&] { huge.Merge(huge); }));
    EXPECT_THAT(huge, HasFields(255, kTooMany, 0u));
}

TEST(BufferBase, AFailedCopyToTheSiblingLeavesItWithoutRows) {
    const Rows huge(255, std::string(255 * kTooMany, 'a'));
    PW::BufferBase sibling;
    const NoMemory limit(kMost);
    EXPECT_TRUE(Raises<CMemoryException>([&] { huge.CopyTo(sibling); }));
    EXPECT_EQ(sibling.GetCount(), 0u);
    EXPECT_EQ(sibling.GetRow(0), nullptr);
}

}  // namespace
}  // namespace ZT
