#include <gtest/gtest.h>
#include <platform/collections/CPtrList.h>
#include <zt/containers/PositionIndex.h>

#include <type_traits>

namespace ZT {
namespace {

struct PositionIndexTest : testing::Test {
    PositionIndexTest() {
        first = list.AddTail(&element);
        second = list.AddTail(nullptr);
        third = list.AddTail(&element);
    }
    int element = 0;
    CPtrList list;
    POSITION first, second, third;
};

TEST_F(PositionIndexTest, CountsFromTheHead) {
    static_assert(std::is_same_v<decltype(glcPosnToIndexNoType(&list, first)), int>);
    EXPECT_EQ(glcPosnToIndexNoType(&list, first), 0);
    EXPECT_EQ(glcPosnToIndexNoType(&list, second), 1);
    EXPECT_EQ(glcPosnToIndexNoType(&list, third), 2);
    EXPECT_EQ(list.FindIndex(2), third);
}

TEST_F(PositionIndexTest, GivesMinusOneForAPositionOfNoElement) {
    CPtrList other;
    const POSITION foreign = other.AddTail(&element);
    EXPECT_EQ(glcPosnToIndexNoType(&list, foreign), -1);
    EXPECT_EQ(glcPosnToIndexNoType(&list, nullptr), -1);
}

TEST_F(PositionIndexTest, GivesMinusOneInAnEmptyList) {
    const CPtrList empty;
    EXPECT_EQ(glcPosnToIndexNoType(&empty, first), -1);
    EXPECT_EQ(glcPosnToIndexNoType(&empty, nullptr), -1);
}

}  // namespace
}  // namespace ZT
