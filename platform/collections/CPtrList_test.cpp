#include <platform/collections/CPtrList.h>
#include <platform/object/CMemoryException.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/ListNodes.h>

#include <cstddef>
#include <iterator>
#include <limits>
#include <type_traits>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Pointers = std::vector<void*>;

void* P(std::uintptr_t number) {
    return reinterpret_cast<void*>(number);
}

using OpenList = testing_support::OpenList<CPtrList>;

Pointers Forward(const CPtrList& list) {
    Pointers found;
    for (POSITION pos = list.GetHeadPosition(); pos != nullptr;) found.push_back(list.GetNext(pos));
    return found;
}

Pointers Backward(const CPtrList& list) {
    Pointers found;
    for (POSITION pos = list.GetTailPosition(); pos != nullptr;) found.push_back(list.GetPrev(pos));
    return found;
}

void Fill(CPtrList& list, std::uintptr_t count) {
    for (std::uintptr_t i = 1; i <= count; ++i) list.AddTail(P(i));
}

/// A list of three: 1, 2, 3.
struct CPtrListOfThree : testing::Test {
    CPtrListOfThree() {
        head = list.AddTail(P(1));
        middle = list.AddTail(P(2));
        tail = list.AddTail(P(3));
    }
    OpenList list;
    POSITION head, middle, tail;
};

TEST(CPtrList, StartsEmptyWithoutMemory) {
    OpenList list;
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(list.GetSize(), 0);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    EXPECT_EQ(list.GetTailPosition(), nullptr);
    EXPECT_EQ(list.m_pBlocks, nullptr);
    EXPECT_EQ(list.m_nBlockSize, 10);
}

TEST(CPtrList, FieldsStandInTheirOrderBehindTheObject) {
    EXPECT_EQ(sizeof(CPtrList), 56U);
    EXPECT_EQ(offsetof(OpenList, m_pNodeHead), 8U);
    EXPECT_EQ(offsetof(OpenList, m_pNodeTail), 16U);
    EXPECT_EQ(offsetof(OpenList, m_nCount), 24U);
    EXPECT_EQ(offsetof(OpenList, m_pNodeFree), 32U);
    EXPECT_EQ(offsetof(OpenList, m_pBlocks), 40U);
    EXPECT_EQ(offsetof(OpenList, m_nBlockSize), 48U);
    EXPECT_EQ(offsetof(OpenList::Node, pNext), 0U);
    EXPECT_EQ(offsetof(OpenList::Node, pPrev), 8U);
    EXPECT_EQ(offsetof(OpenList::Node, data), 16U);
}

TEST(CPtrList, IsNotCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<CPtrList>);
    EXPECT_FALSE(std::is_copy_assignable_v<CPtrList>);
}

TEST(CPtrList, KnowsItsRunTimeClass) {
    CPtrList list;
    EXPECT_STREQ(list.GetRuntimeClass()->m_lpszClassName, "CPtrList");
    EXPECT_TRUE(list.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(list.IsSerializable());
}

TEST(CPtrList, BlockSizeBelowOneRaisesInvalidArgument) {
    EXPECT_THROW(CPtrList(0), CInvalidArgException*);
    EXPECT_THROW(CPtrList(-1), CInvalidArgException*);
}

TEST(CPtrList, BlockTooLargeForMemoryRaisesMemoryAndLeavesTheListEmpty) {
    OpenList list(std::numeric_limits<INT_PTR>::max());
    EXPECT_THROW(list.AddTail(P(1)), CMemoryException*);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    list.AssertValid();
}

TEST(CPtrList, EndsOfAnEmptyListRaiseInvalidArgument) {
    CPtrList list;
    const CPtrList& constant = list;
    EXPECT_THROW(list.GetHead(), CInvalidArgException*);
    EXPECT_THROW(list.GetTail(), CInvalidArgException*);
    EXPECT_THROW(constant.GetHead(), CInvalidArgException*);
    EXPECT_THROW(constant.GetTail(), CInvalidArgException*);
    EXPECT_THROW(list.RemoveHead(), CInvalidArgException*);
    EXPECT_THROW(list.RemoveTail(), CInvalidArgException*);
}

TEST(CPtrList, AddTailAppendsAndReturnsThePosition) {
    CPtrList list;
    list.AddTail(P(1));
    const POSITION pos = list.AddTail(P(2));
    EXPECT_EQ(pos, list.GetTailPosition());
    EXPECT_EQ(list.GetAt(pos), P(2));
    EXPECT_THAT(Forward(list), ElementsAre(P(1), P(2)));
    EXPECT_THAT(Backward(list), ElementsAre(P(2), P(1)));
}

TEST(CPtrList, AddHeadPrependsAndReturnsThePosition) {
    CPtrList list;
    list.AddHead(P(1));
    const POSITION pos = list.AddHead(P(2));
    EXPECT_EQ(pos, list.GetHeadPosition());
    EXPECT_EQ(list.GetAt(pos), P(2));
    EXPECT_THAT(Forward(list), ElementsAre(P(2), P(1)));
    EXPECT_THAT(Backward(list), ElementsAre(P(1), P(2)));
}

TEST(CPtrList, NullIsAnElement) {
    CPtrList list;
    list.AddTail(nullptr);
    list.AddHead(nullptr);
    EXPECT_THAT(Forward(list), ElementsAre(nullptr, nullptr));
    EXPECT_EQ(list.Find(nullptr), list.GetHeadPosition());
}

TEST_F(CPtrListOfThree, GetHeadAndGetTailGiveTheEndsForWriting) {
    EXPECT_EQ(list.GetHead(), P(1));
    EXPECT_EQ(list.GetTail(), P(3));
    list.GetHead() = P(10);
    list.GetTail() = P(30);
    EXPECT_THAT(Forward(list), ElementsAre(P(10), P(2), P(30)));
}

TEST_F(CPtrListOfThree, RemoveHeadAndRemoveTailReturnWhatTheyTake) {
    EXPECT_EQ(list.RemoveHead(), P(1));
    EXPECT_EQ(list.RemoveTail(), P(3));
    EXPECT_THAT(Forward(list), ElementsAre(P(2)));
    EXPECT_EQ(list.GetHeadPosition(), middle);
    EXPECT_EQ(list.GetTailPosition(), middle);
    EXPECT_EQ(list.RemoveTail(), P(2));
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(CPtrListOfThree, AddTailOfAListKeepsItsOrder) {
    CPtrList other;
    other.AddTail(P(8));
    other.AddTail(P(9));
    list.AddTail(&other);
    EXPECT_THAT(Forward(list), ElementsAre(P(1), P(2), P(3), P(8), P(9)));
    EXPECT_THAT(Forward(other), ElementsAre(P(8), P(9)));
}

TEST_F(CPtrListOfThree, AddHeadOfAListKeepsItsOrder) {
    CPtrList other;
    other.AddTail(P(8));
    other.AddTail(P(9));
    list.AddHead(&other);
    EXPECT_THAT(Forward(list), ElementsAre(P(8), P(9), P(1), P(2), P(3)));
    EXPECT_THAT(Backward(list), ElementsAre(P(3), P(2), P(1), P(9), P(8)));
}

TEST_F(CPtrListOfThree, AListAddedToItselfIsDoubled) {
    list.AddTail(&list);
    EXPECT_THAT(Forward(list), ElementsAre(P(1), P(2), P(3), P(1), P(2), P(3)));
    list.RemoveTail();
    list.AddHead(&list);
    EXPECT_EQ(list.GetCount(), 10);
    EXPECT_EQ(list.GetAt(list.FindIndex(5)), P(1));
}

TEST_F(CPtrListOfThree, AddingAnEmptyListChangesNothing) {
    const CPtrList other;
    list.AddHead(&other);
    list.AddTail(&other);
    EXPECT_THAT(Forward(list), ElementsAre(P(1), P(2), P(3)));
}

TEST_F(CPtrListOfThree, AddingANullListRaisesInvalidArgument) {
    const CPtrList* none = nullptr;
    EXPECT_THROW(list.AddHead(none), CInvalidArgException*);
    EXPECT_THROW(list.AddTail(none), CInvalidArgException*);
}

TEST_F(CPtrListOfThree, APointerToAListGoesInAsElementWhenUntyped) {
    list.AddTail(static_cast<void*>(&list));
    EXPECT_EQ(list.GetCount(), 4);
    EXPECT_EQ(list.GetTail(), &list);
}

TEST_F(CPtrListOfThree, GetNextReturnsTheElementAndSteps) {
    POSITION pos = head;
    EXPECT_EQ(list.GetNext(pos), P(1));
    EXPECT_EQ(pos, middle);
    pos = tail;
    EXPECT_EQ(list.GetNext(pos), P(3));
    EXPECT_EQ(pos, nullptr);
}

TEST_F(CPtrListOfThree, GetPrevReturnsTheElementAndStepsBack) {
    POSITION pos = tail;
    EXPECT_EQ(list.GetPrev(pos), P(3));
    EXPECT_EQ(pos, middle);
    pos = head;
    EXPECT_EQ(list.GetPrev(pos), P(1));
    EXPECT_EQ(pos, nullptr);
}

TEST_F(CPtrListOfThree, GetNextGivesTheElementForWriting) {
    POSITION pos = middle;
    list.GetNext(pos) = P(20);
    pos = tail;
    list.GetPrev(pos) = P(30);
    EXPECT_THAT(Forward(list), ElementsAre(P(1), P(20), P(30)));
}

TEST_F(CPtrListOfThree, NullPositionRaisesInvalidArgument) {
    const CPtrList& constant = list;
    POSITION none = nullptr;
    EXPECT_THROW(list.GetNext(none), CInvalidArgException*);
    EXPECT_THROW(list.GetPrev(none), CInvalidArgException*);
    EXPECT_THROW(constant.GetNext(none), CInvalidArgException*);
    EXPECT_THROW(constant.GetPrev(none), CInvalidArgException*);
    EXPECT_THROW(list.GetAt(nullptr), CInvalidArgException*);
    EXPECT_THROW(constant.GetAt(nullptr), CInvalidArgException*);
    EXPECT_THROW(list.SetAt(nullptr, P(9)), CInvalidArgException*);
    EXPECT_THROW(list.RemoveAt(nullptr), CInvalidArgException*);
    EXPECT_EQ(none, nullptr);
    EXPECT_THAT(Forward(list), ElementsAre(P(1), P(2), P(3)));
}

TEST_F(CPtrListOfThree, SetAtReplacesTheElement) {
    list.SetAt(middle, P(20));
    list.GetAt(tail) = P(30);
    EXPECT_THAT(Forward(list), ElementsAre(P(1), P(20), P(30)));
}

TEST_F(CPtrListOfThree, RemoveAtLeavesTheOtherPositionsValid) {
    list.RemoveAt(middle);
    EXPECT_THAT(Forward(list), ElementsAre(P(1), P(3)));
    EXPECT_THAT(Backward(list), ElementsAre(P(3), P(1)));
    EXPECT_EQ(list.GetAt(head), P(1));
    EXPECT_EQ(list.GetAt(tail), P(3));
    list.RemoveAt(head);
    EXPECT_EQ(list.GetHeadPosition(), tail);
    list.RemoveAt(tail);
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(CPtrListOfThree, ANodeBehindAWalkMayBeRemoved) {
    for (POSITION pos = list.GetHeadPosition(); pos != nullptr;) {
        const POSITION here = pos;
        list.GetNext(pos);
        list.RemoveAt(here);
    }
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(CPtrListOfThree, InsertBefore) {
    EXPECT_EQ(list.GetAt(list.InsertBefore(middle, P(8))), P(8));
    list.InsertBefore(head, P(7));
    EXPECT_THAT(Forward(list), ElementsAre(P(7), P(1), P(8), P(2), P(3)));
    EXPECT_THAT(Backward(list), ElementsAre(P(3), P(2), P(8), P(1), P(7)));
}

TEST_F(CPtrListOfThree, InsertAfter) {
    EXPECT_EQ(list.GetAt(list.InsertAfter(middle, P(8))), P(8));
    const POSITION last = list.InsertAfter(tail, P(9));
    EXPECT_EQ(list.GetTailPosition(), last);
    EXPECT_THAT(Forward(list), ElementsAre(P(1), P(2), P(8), P(3), P(9)));
    EXPECT_THAT(Backward(list), ElementsAre(P(9), P(3), P(8), P(2), P(1)));
}

TEST_F(CPtrListOfThree, InsertAtANullPositionGoesToTheEnds) {
    const POSITION first = list.InsertBefore(nullptr, P(0));
    const POSITION last = list.InsertAfter(nullptr, P(4));
    EXPECT_EQ(list.GetHeadPosition(), first);
    EXPECT_EQ(list.GetTailPosition(), last);
    EXPECT_THAT(Forward(list), ElementsAre(P(0), P(1), P(2), P(3), P(4)));
}

TEST_F(CPtrListOfThree, FindSearchesFromTheHeadOrBehindAPosition) {
    const POSITION second = list.AddTail(P(2));
    EXPECT_EQ(list.Find(P(2)), middle);
    EXPECT_EQ(list.Find(P(2), middle), second);
    EXPECT_EQ(list.Find(P(2), second), nullptr);
    EXPECT_EQ(list.Find(P(1), head), nullptr);
    EXPECT_EQ(list.Find(P(9)), nullptr);
}

TEST_F(CPtrListOfThree, FindIndexCountsFromTheHead) {
    EXPECT_EQ(list.FindIndex(0), head);
    EXPECT_EQ(list.FindIndex(1), middle);
    EXPECT_EQ(list.FindIndex(2), tail);
    EXPECT_EQ(list.FindIndex(3), nullptr);
    EXPECT_EQ(list.FindIndex(-1), nullptr);
}

TEST_F(CPtrListOfThree, RangeForWalksForward) {
    Pointers found;
    for (void*& element : list) {
        found.push_back(element);
        element = P(7);
    }
    EXPECT_THAT(found, ElementsAre(P(1), P(2), P(3)));
    EXPECT_THAT(Forward(list), ElementsAre(P(7), P(7), P(7)));
}

TEST_F(CPtrListOfThree, IteratorsWalkBothWaysAndKnowTheirPosition) {
    const CPtrList& constant = list;
    EXPECT_THAT(Pointers(std::make_reverse_iterator(constant.end()),
                         std::make_reverse_iterator(constant.begin())),
                ElementsAre(P(3), P(2), P(1)));
    CPtrList::const_iterator walker = list.begin();
    EXPECT_EQ(walker.Position(), head);
    EXPECT_EQ((++walker).Position(), middle);
    EXPECT_EQ((walker--).Position(), middle);
    EXPECT_EQ((walker++).Position(), head);
    EXPECT_EQ(list.end().Position(), nullptr);
    static_assert(std::bidirectional_iterator<CPtrList::iterator>);
    static_assert(std::bidirectional_iterator<CPtrList::const_iterator>);
}

TEST_F(CPtrListOfThree, RemoveAllFreesTheBlocks) {
    list.RemoveAll();
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.m_pBlocks, nullptr);
    EXPECT_EQ(list.m_pNodeFree, nullptr);
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    list.AddTail(P(5));
    EXPECT_THAT(Forward(list), ElementsAre(P(5)));
}

TEST_F(CPtrListOfThree, RemovingTheLastElementFreesTheBlocks) {
    list.RemoveHead();
    list.RemoveHead();
    EXPECT_NE(list.m_pBlocks, nullptr);
    list.RemoveHead();
    EXPECT_EQ(list.m_pBlocks, nullptr);
    EXPECT_EQ(list.m_pNodeFree, nullptr);
}

TEST_F(CPtrListOfThree, ARemovedNodeServesTheNextElement) {
    list.RemoveAt(middle);
    EXPECT_EQ(OpenList::NodeOf(middle), list.m_pNodeFree);
    EXPECT_EQ(list.AddHead(P(9)), middle);
}

TEST(CPtrList, BlocksHoldAsManyNodesAsAskedFor) {
    OpenList list(4);
    for (std::ptrdiff_t count = 1; count <= 13; ++count) {
        list.AddTail(nullptr);
        EXPECT_EQ(list.BlockCount(), (count + 3) / 4) << count;
    }
}

TEST(CPtrList, AssertValidAcceptsASoundList) {
    CPtrList list;
    list.AssertValid();
    Fill(list, 25);
    list.AssertValid();
}

TEST(CPtrList, AssertValidRaisesOnBrokenFields) {
    const auto broken = [](void (*damage)(OpenList&), void (*repair)(OpenList&)) {
        OpenList list;
        Fill(list, 3);
        damage(list);
        EXPECT_THROW(list.AssertValid(), CInvalidArgException*);
        repair(list);
        list.AssertValid();
    };
    broken([](OpenList& l) { ++l.m_nCount; }, [](OpenList& l) { --l.m_nCount; });
    broken([](OpenList& l) { --l.m_nCount; }, [](OpenList& l) { ++l.m_nCount; });
    broken([](OpenList& l) { l.m_pNodeTail = l.m_pNodeHead; },
           [](OpenList& l) { l.m_pNodeTail = l.m_pNodeHead->pNext->pNext; });
    broken([](OpenList& l) { l.m_pNodeTail->pPrev = nullptr; },
           [](OpenList& l) { l.m_pNodeTail->pPrev = l.m_pNodeHead->pNext; });
    broken([](OpenList& l) { l.m_nBlockSize = 0; }, [](OpenList& l) { l.m_nBlockSize = 10; });
}

// What a derived class may do with the fields.
TEST(CPtrList, ADerivedClassMayHandItsNodesToAnotherList) {
    OpenList from, to;
    Fill(from, 12);
    to.m_pNodeHead = std::exchange(from.m_pNodeHead, nullptr);
    to.m_pNodeTail = std::exchange(from.m_pNodeTail, nullptr);
    to.m_nCount = std::exchange(from.m_nCount, 0);
    to.m_pNodeFree = std::exchange(from.m_pNodeFree, nullptr);
    to.m_pBlocks = std::exchange(from.m_pBlocks, nullptr);
    from.AssertValid();
    to.AssertValid();
    EXPECT_EQ(to.GetCount(), 12);
    EXPECT_TRUE(to.OwnsEachNodeOnce());
    to.AddTail(P(13));
    EXPECT_TRUE(to.OwnsEachNodeOnce());
}

/// One random operation on a list and on the vector that models it.
void Apply(OpenList& list, Pointers& model, unsigned kind, std::size_t place) {
    void* const element = P(place);
    const std::size_t index = model.empty() ? 0 : place % model.size();
    const POSITION pos = list.FindIndex(static_cast<INT_PTR>(index));
    const auto at = model.begin() + static_cast<std::ptrdiff_t>(index);
    switch (kind % 10) {
        case 0:
        case 1:
            list.AddTail(element);
            return model.push_back(element);
        case 2:
            list.AddHead(element);
            return void(model.insert(model.begin(), element));
        case 3:
            list.InsertBefore(pos, element);
            return void(model.insert(at, element));
        case 4:
            list.InsertAfter(pos, element);
            return void(model.insert(model.empty() ? at : at + 1, element));
        case 5:
            if (place % 16 != 0) return;
            list.RemoveAll();
            return model.clear();
        default:
            break;
    }
    if (model.empty()) return;
    switch (kind % 10) {
        case 6:
            RC_ASSERT((list.RemoveHead() == model.front()));
            return void(model.erase(model.begin()));
        case 7:
            RC_ASSERT((list.RemoveTail() == model.back()));
            return model.pop_back();
        case 8:
            list.RemoveAt(pos);
            return void(model.erase(at));
        default:
            list.SetAt(pos, element);
            *at = element;
    }
}

TEST(CPtrList, BehavesAsAPlainSequenceUnderAnyOperations) {
    EXPECT_TRUE(rc::check([](const std::vector<std::pair<unsigned, std::uint16_t>>& steps) {
        OpenList list(3);
        Pointers model;
        for (const auto& [kind, place] : steps) {
            Apply(list, model, kind, place);
            list.AssertValid();
            RC_ASSERT(list.OwnsEachNodeOnce());
            RC_ASSERT(list.GetCount() == static_cast<INT_PTR>(model.size()));
        }
        RC_ASSERT((Forward(list) == model));
        RC_ASSERT((Backward(list) == Pointers(model.rbegin(), model.rend())));
        RC_ASSERT((list.m_pBlocks == nullptr) == model.empty());
    }));
}

}  // namespace
