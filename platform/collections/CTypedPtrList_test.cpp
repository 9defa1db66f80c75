#include <platform/collections/CObList.h>
#include <platform/collections/CPtrList.h>
#include <platform/collections/CTypedPtrList.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <type_traits>
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

using NodeList = CTypedPtrList<CObList, Node*>;
using NumberList = CTypedPtrList<CPtrList, const int*>;

struct CTypedPtrListOfThree : testing::Test {
    CTypedPtrListOfThree() {
        for (Node* node : {&a, &b, &c}) list.AddTail(node);
    }
    static std::vector<Node*> All(const NodeList& from) { return {from.begin(), from.end()}; }

    Node a{1}, b{2}, c{3}, d{4};
    NodeList list;
};

TEST_F(CTypedPtrListOfThree, ElementsComeOutTyped) {
    static_assert(std::is_same_v<decltype(list.GetHead()), Node*>);
    EXPECT_EQ(list.GetHead()->number, 1);
    EXPECT_EQ(list.GetTail(), &c);
    EXPECT_EQ(list.RemoveHead(), &a);
    EXPECT_EQ(list.RemoveTail(), &c);
    EXPECT_EQ(list.GetAt(list.GetHeadPosition()), &b);
}

TEST_F(CTypedPtrListOfThree, TheBaseKeepsTheObjectPart) {
    const CObList& base = list;
    EXPECT_EQ(base.GetHead(), static_cast<CObject*>(&a));
    EXPECT_NE(static_cast<const void*>(base.GetHead()), static_cast<const void*>(&a));
}

TEST_F(CTypedPtrListOfThree, WalksGiveTypedElements) {
    std::vector<Node*> found;
    for (POSITION pos = list.GetHeadPosition(); pos != nullptr;) found.push_back(list.GetNext(pos));
    for (POSITION pos = list.GetTailPosition(); pos != nullptr;) found.push_back(list.GetPrev(pos));
    EXPECT_THAT(found, ElementsAre(&a, &b, &c, &c, &b, &a));
}

TEST_F(CTypedPtrListOfThree, RangeForGivesTypedElements) {
    int sum = 0;
    for (Node* node : list) sum = 10 * sum + node->number;
    EXPECT_EQ(sum, 123);
    EXPECT_EQ(*std::prev(list.end()), &c);
    static_assert(std::bidirectional_iterator<NodeList::iterator>);
}

TEST_F(CTypedPtrListOfThree, ElementsAreInsertedReplacedAndFound) {
    list.InsertBefore(list.GetTailPosition(), &d);
    list.InsertAfter(list.GetTailPosition(), &d);
    list.AddHead(&d);
    EXPECT_THAT(All(list), ElementsAre(&d, &a, &b, &d, &c, &d));
    list.SetAt(list.GetHeadPosition(), &a);
    EXPECT_EQ(list.Find(&d), list.FindIndex(3));
    EXPECT_EQ(list.Find(&d, list.FindIndex(3)), list.GetTailPosition());
}

TEST_F(CTypedPtrListOfThree, AListIsAddedInItsOrder) {
    NodeList other;
    other.AddTail(&d);
    other.AddTail(&list);
    other.AddHead(&list);
    EXPECT_THAT(All(other), ElementsAre(&a, &b, &c, &d, &a, &b, &c));
}

TEST_F(CTypedPtrListOfThree, NullIsAnElement) {
    list.AddTail(nullptr);
    EXPECT_EQ(list.GetTail(), nullptr);
    EXPECT_EQ(list.Find(nullptr), list.GetTailPosition());
}

TEST_F(CTypedPtrListOfThree, FailuresAreTheBases) {
    POSITION none = nullptr;
    EXPECT_THROW(list.GetNext(none), CInvalidArgException*);
    EXPECT_THROW(list.GetAt(none), CInvalidArgException*);
    EXPECT_THROW(NodeList().GetHead(), CInvalidArgException*);
    EXPECT_THROW(NodeList(0), CInvalidArgException*);
}

TEST(CTypedPtrList, UntypedBaseKeepsPointersToConstants) {
    const int one = 1, two = 2;
    NumberList list;
    list.AddTail(&one);
    list.AddHead(&two);
    EXPECT_EQ(*list.GetHead(), 2);
    EXPECT_EQ(list.RemoveTail(), &one);
}

TEST(CTypedPtrList, DerivesFromItsBase) {
    static_assert(std::is_base_of_v<CObList, NodeList>);
    static_assert(std::is_base_of_v<CPtrList, NumberList>);
    EXPECT_EQ(sizeof(NodeList), sizeof(CObList));
}

}  // namespace
