#include <zt/numerics/IndexMultiByte.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <numeric>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing::Each;
using testing::ElementsAreArray;

TEST(IndexMultiByte, FieldsFollowTheTableInOrder) {
    EXPECT_EQ(offsetof(IndexMultiByte, m_bytes), 0u);
    EXPECT_EQ(offsetof(IndexMultiByte, m_nDepth), 20u);
    EXPECT_EQ(sizeof(IndexMultiByte), 21u);
    EXPECT_FALSE(std::is_polymorphic_v<IndexMultiByte>);
}

TEST(IndexMultiByte, NewPathIsAllZero) {
    alignas(IndexMultiByte) unsigned char memory[sizeof(IndexMultiByte)];
    std::fill(std::begin(memory), std::end(memory), static_cast<unsigned char>(0xEE));
    const auto* const path = new (memory) IndexMultiByte;
    EXPECT_THAT(path->m_bytes, Each(0));
    EXPECT_EQ(path->m_nDepth, 0);
}

TEST(IndexMultiByte, PushAddsALevelAtTheEnd) {
    IndexMultiByte path;
    path.Push(7);
    path.Push(255);
    EXPECT_EQ(path.m_nDepth, 2);
    EXPECT_EQ(path.m_bytes[0], 7);
    EXPECT_EQ(path.m_bytes[1], 255);
    EXPECT_EQ(path.m_bytes[2], 0);
}

TEST(IndexMultiByte, PushBeyondTwentyLevelsIsDropped) {
    std::vector<unsigned char> bytes(20);
    std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(1));
    IndexMultiByte path;
    for (const unsigned char b : bytes) path.Push(b);
    path.Push(21);
    EXPECT_EQ(path.m_nDepth, 20);
    EXPECT_THAT(path.m_bytes, ElementsAreArray(bytes));
}

TEST(IndexMultiByte, PopLeavesTheByteInTheArray) {
    IndexMultiByte path;
    path.Push(7);
    path.Push(8);
    path.Pop();
    EXPECT_EQ(path.m_nDepth, 1);
    EXPECT_EQ(path.m_bytes[1], 8);
    path.Push(9);
    EXPECT_EQ(path.m_nDepth, 2);
    EXPECT_EQ(path.m_bytes[1], 9);
}

TEST(IndexMultiByte, PopOfANewPathChangesNothing) {
    IndexMultiByte path;
    path.Pop();
    EXPECT_EQ(path.m_nDepth, 0);
}

TEST(IndexMultiByte, AssignmentTakesAllFields) {
    IndexMultiByte path;
    path.Push(7);
    path.Push(8);
    path.Pop();
    IndexMultiByte copy;
    copy.Push(1);
    copy = path;
    EXPECT_THAT(copy.m_bytes, ElementsAreArray(path.m_bytes));
    EXPECT_EQ(copy.m_bytes[1], 8);
    EXPECT_EQ(copy.m_nDepth, 1);
}

}  // namespace
}  // namespace ZT
