#include <gtest/gtest.h>

#include <platform/object/CMemoryException.h>
#include <sibling/BufferBase.h>
#include <tests/FailingNew.h>
#include <tests/NoMemory.h>
#include <tests/Raises.h>

#include <cstddef>
#include <cstring>

namespace PW {
namespace {

TEST(SiblingBuffer, FieldsStandInOrder) {
    EXPECT_EQ(offsetof(BufferBase, m_nRowSize), 0u);
    EXPECT_EQ(offsetof(BufferBase, m_nCount), 4u);
    EXPECT_EQ(offsetof(BufferBase, m_nAllocated), 8u);
    EXPECT_EQ(offsetof(BufferBase, m_pData), 16u);
    EXPECT_EQ(sizeof(BufferBase), 24u);
}

TEST(SiblingBuffer, BeginsWithoutRows) {
    const BufferBase buffer;
    EXPECT_EQ(buffer.GetRowSize(), 0);
    EXPECT_EQ(buffer.GetCount(), 0u);
    EXPECT_EQ(buffer.GetRow(0), nullptr);
}

TEST(SiblingBuffer, SetCountKeepsTheRowsThatAreThere) {
    BufferBase buffer;
    buffer.SetRowSize(3);
    buffer.SetCount(2);
    ASSERT_NE(buffer.GetRow(1), nullptr);
    EXPECT_EQ(buffer.GetRow(1), buffer.GetRow(0) + 3);
    EXPECT_EQ(buffer.GetRow(2), nullptr);
    std::memcpy(buffer.GetRow(0), "abcdef", 6);
    buffer.SetCount(4);
    EXPECT_EQ(buffer.GetCount(), 4u);
    EXPECT_EQ(std::memcmp(buffer.GetRow(0), "abcdef", 6), 0);
    buffer.SetCount(1);
    EXPECT_EQ(buffer.GetCount(), 1u);
    EXPECT_EQ(std::memcmp(buffer.GetRow(0), "abc", 3), 0);
    unsigned char* const row = buffer.GetRow(0);
    buffer.SetCount(1);
    EXPECT_EQ(buffer.GetRow(0), row);
}

TEST(SiblingBuffer, NoBytesLeaveNoRows) {
    BufferBase buffer;
    buffer.SetCount(5);
    EXPECT_EQ(buffer.GetCount(), 0u);
    buffer.SetRowSize(2);
    buffer.SetCount(5);
    buffer.SetCount(0);
    EXPECT_EQ(buffer.GetCount(), 0u);
    EXPECT_EQ(buffer.GetRow(0), nullptr);
}

TEST(SiblingBuffer, SetCountWithoutMemoryChangesNothing) {
    using testing_support::Raises;
    BufferBase buffer;
    buffer.SetRowSize(255);
    buffer.SetCount(1);
    unsigned char* const row = buffer.GetRow(0);
    ASSERT_NE(row, nullptr);
    std::memset(row, 7, 255);
    const testing_support::NoMemory limit(100'000);
    EXPECT_TRUE(Raises<CMemoryException>([&] { buffer.SetCount(1000); }));
    EXPECT_EQ(buffer.GetCount(), 1u);
    EXPECT_EQ(buffer.GetRow(0), row);
    EXPECT_EQ(row[254], 7);
}

TEST(SiblingBuffer, DestroyNoCountKeepsTheShape) {
    BufferBase buffer;
    buffer.SetRowSize(2);
    buffer.SetCount(5);
    buffer.DestroyNoCount();
    EXPECT_EQ(buffer.GetRowSize(), 2);
    EXPECT_EQ(buffer.GetCount(), 5u);
    EXPECT_EQ(buffer.GetRow(0), nullptr);
    buffer.SetCount(5);
    EXPECT_EQ(buffer.GetRow(0), nullptr);
    buffer.SetCount(6);
    ASSERT_NE(buffer.GetRow(5), nullptr);
    std::memset(buffer.GetRow(0), 7, 12);
    EXPECT_EQ(buffer.GetRow(5)[1], 7);
}

}  // namespace
}  // namespace PW
