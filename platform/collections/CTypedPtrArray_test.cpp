#include <platform/collections/CObArray.h>
#include <platform/collections/CPtrArray.h>
#include <platform/collections/CTypedPtrArray.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;

struct Label {
    virtual ~Label() = default;
    int number = 0;
};

/// Its object part does not stand at its beginning.
struct Node : Label, CObject {
    explicit Node(int n) { number = n; }
};

using NodeArray = CTypedPtrArray<CObArray, Node*>;

struct CTypedPtrArrayOfThree : testing::Test {
    CTypedPtrArrayOfThree() {
        for (Node* node : {&a, &b, &c}) array.Add(node);
    }
    static std::vector<Node*> All(const NodeArray& from) { return {from.begin(), from.end()}; }

    Node a{1}, b{2}, c{3}, d{4};
    NodeArray array;
};

TEST_F(CTypedPtrArrayOfThree, PlaceIsCastAsThePointerIs) {
    struct Leaf : Node {
        Leaf() : Node(9) {}
        int depth = 3;
    } leaf;
    array[1] = &leaf;
    EXPECT_EQ(static_cast<Leaf*>(array[1])->depth, 3);
    EXPECT_EQ(((Leaf*)array[1])->depth, 3);
    EXPECT_EQ(static_cast<Label*>(array[1]), static_cast<Label*>(&leaf));
    EXPECT_EQ(static_cast<const void*>(array[1]), static_cast<const void*>(&leaf));
    EXPECT_TRUE(static_cast<bool>(array[1]));
    EXPECT_TRUE(array[1] != nullptr && array[1] == &leaf);
}

TEST_F(CTypedPtrArrayOfThree, ElementsComeOutTyped) {
    const NodeArray& constant = array;
    static_assert(std::is_same_v<decltype(constant[0]), Node*>);
    EXPECT_EQ(constant[0], &a);
    EXPECT_EQ(constant.ElementAt(1), &b);
    EXPECT_EQ(array.GetAt(2), &c);
    EXPECT_EQ(array[2]->number, 3);
    EXPECT_EQ((*array[1]).number, 2);
}

TEST_F(CTypedPtrArrayOfThree, APlaceIsAssignedTo) {
    array[0] = &d;
    array[1] = array[2];
    array.ElementAt(2) = nullptr;
    EXPECT_THAT(All(array), ElementsAre(&d, &c, nullptr));
    EXPECT_TRUE(array[2] == nullptr);
    EXPECT_FALSE(array[0] == array[1]);
}

TEST_F(CTypedPtrArrayOfThree, TheBaseKeepsTheObjectPart) {
    const CObArray& base = array;
    EXPECT_EQ(base[0], static_cast<CObject*>(&a));
    EXPECT_NE(static_cast<const void*>(base[0]), static_cast<const void*>(&a));
}

TEST_F(CTypedPtrArrayOfThree, ElementsAreSetGrownAndInserted) {
    array.SetAt(0, &d);
    array.SetAtGrow(4, &a);
    array.InsertAt(1, &d);
    array.InsertAt(0, nullptr, 2);
    EXPECT_THAT(All(array), ElementsAre(nullptr, nullptr, &d, &d, &b, &c, nullptr, &a));
    array.RemoveAt(0, 6);
    EXPECT_THAT(All(array), ElementsAre(nullptr, &a));
}

TEST_F(CTypedPtrArrayOfThree, ArraysAreAppendedCopiedAndInserted) {
    NodeArray other;
    other.Copy(array);
    EXPECT_EQ(other.Append(array), 3);
    other.InsertAt(1, &array);
    EXPECT_THAT(All(other), ElementsAre(&a, &a, &b, &c, &b, &c, &a, &b, &c));
}

TEST_F(CTypedPtrArrayOfThree, RangeForGivesTypedElements) {
    int sum = 0;
    for (Node* node : array) sum = 10 * sum + node->number;
    EXPECT_EQ(sum, 123);
    static_assert(std::bidirectional_iterator<NodeArray::iterator>);
}

TEST_F(CTypedPtrArrayOfThree, OutOfBoundsRaisesInvalidArgument) {
    EXPECT_THROW(array[3], CInvalidArgException*);
    EXPECT_THROW(std::as_const(array)[3], CInvalidArgException*);
    EXPECT_THROW(array.SetAt(-1, &a), CInvalidArgException*);
}

TEST(CTypedPtrArray, UntypedBaseKeepsAnyPointer) {
    int number = 5;
    CTypedPtrArray<CPtrArray, int*> array;
    array.Add(&number);
    *array[0] = 6;
    EXPECT_EQ(number, 6);
    static_assert(std::is_base_of_v<CPtrArray, CTypedPtrArray<CPtrArray, int*>>);
}

}  // namespace
