#include <platform/collections/CPtrArray.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

namespace {

using testing::ElementsAre;

void* P(std::uintptr_t number) {
    return reinterpret_cast<void*>(number);
}

struct CPtrArrayOfThree : testing::Test {
    CPtrArrayOfThree() {
        for (std::uintptr_t i = 1; i <= 3; ++i) array.Add(P(i));
    }
    std::vector<void*> All() const { return {array.begin(), array.end()}; }

    CPtrArray array;
};

TEST_F(CPtrArrayOfThree, ElementsAreReadAndWrittenByIndex) {
    array[0] = P(10);
    array.SetAt(1, P(20));
    array.ElementAt(2) = P(30);
    EXPECT_EQ(array.GetAt(0), P(10));
    EXPECT_THAT(All(), ElementsAre(P(10), P(20), P(30)));
    EXPECT_EQ(array.GetUpperBound(), 2);
}

TEST_F(CPtrArrayOfThree, NewElementsAreNull) {
    array.SetSize(4);
    array.SetAtGrow(5, P(9));
    EXPECT_THAT(All(), ElementsAre(P(1), P(2), P(3), nullptr, nullptr, P(9)));
}

TEST_F(CPtrArrayOfThree, NullIsInsertedAsAnElement) {
    array.InsertAt(0, nullptr);
    array.Add(nullptr);
    EXPECT_THAT(All(), ElementsAre(nullptr, P(1), P(2), P(3), nullptr));
}

TEST_F(CPtrArrayOfThree, AnArrayIsInsertedElementByElement) {
    CPtrArray other;
    other.Add(P(9));
    array.InsertAt(1, &other);
    EXPECT_THAT(All(), ElementsAre(P(1), P(9), P(2), P(3)));
    array.InsertAt(0, static_cast<void*>(&other));
    EXPECT_EQ(array[0], &other);
}

TEST_F(CPtrArrayOfThree, AppendCopyAndRemove) {
    CPtrArray other;
    other.Copy(array);
    EXPECT_EQ(other.Append(array), 3);
    other.RemoveAt(1, 3);
    EXPECT_EQ(other.GetSize(), 3);
    EXPECT_EQ(other[0], P(1));
    EXPECT_EQ(other[1], P(2));
    other.RemoveAll();
    EXPECT_EQ(other.GetData(), nullptr);
}

TEST_F(CPtrArrayOfThree, OutOfBoundsRaisesInvalidArgument) {
    EXPECT_THROW(array[3], CInvalidArgException*);
    EXPECT_THROW(array.GetAt(-1), CInvalidArgException*);
    EXPECT_THROW(array.SetAt(3, P(1)), CInvalidArgException*);
    EXPECT_THROW(array.RemoveAt(3), CInvalidArgException*);
    EXPECT_THROW(array.SetSize(-1), CInvalidArgException*);
}

TEST(CPtrArray, KnowsItsRunTimeClassAndIsNotCopied) {
    CPtrArray array;
    array.AssertValid();
    EXPECT_STREQ(array.GetRuntimeClass()->m_lpszClassName, "CPtrArray");
    EXPECT_FALSE(std::is_copy_constructible_v<CPtrArray>);
    EXPECT_EQ(sizeof(CPtrArray), 40U);
}

}  // namespace
