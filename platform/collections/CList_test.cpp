#include <platform/collections/CList.h>
#include <platform/collections/CountedElement_test.h>
#include <platform/text/CString.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <deque>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

using Counted = CList<CountedElement>;

/// Texts that are looked for without regard to case.
struct Name {
    std::string text;
};

}  // namespace

template <>
BOOL CompareElements<Name, Name>(const Name* a, const Name* b) {
    return a->text.size() == b->text.size() && (a->text[0] | 32) == (b->text[0] | 32);
}

namespace {

struct CListOfObjects : testing::Test {
    ~CListOfObjects() override { CountedElement::NeverFail(); }

    static std::vector<int> Numbers(const Counted& list) {
        std::vector<int> numbers;
        for (const CountedElement& element : list) {
            EXPECT_TRUE(element.IsAlive());
            numbers.push_back(element.Number());
        }
        return numbers;
    }
};

TEST_F(CListOfObjects, ElementsLiveExactlyAsLongAsTheyAreInTheList) {
    ASSERT_EQ(CountedElement::Living(), 0);
    {
        Counted list(2);
        for (int i = 0; i < 5; ++i) list.AddTail(i);
        EXPECT_EQ(CountedElement::Living(), 5);
        list.RemoveAt(list.FindIndex(2));
        EXPECT_EQ(CountedElement::Living(), 4);
        EXPECT_EQ(list.RemoveHead().Number(), 0);
        EXPECT_EQ(CountedElement::Living(), 3);
        EXPECT_THAT(Numbers(list), ElementsAre(1, 3, 4));
        list.RemoveAll();
        EXPECT_EQ(CountedElement::Living(), 0);
        list.AddTail(7);
    }
    EXPECT_EQ(CountedElement::Living(), 0);
}

TEST_F(CListOfObjects, ElementsStayWhereTheyAre) {
    Counted list(1);
    const POSITION pos = list.AddTail(5);
    const CountedElement* place = &list.GetAt(pos);
    for (int i = 0; i < 100; ++i) list.AddHead(i);
    EXPECT_EQ(&list.GetAt(pos), place);
    EXPECT_TRUE(place->IsAlive());
}

TEST_F(CListOfObjects, AnElementThatCannotBeMadeLeavesTheListAsItWas) {
    Counted list(2);
    const CountedElement four(4);
    list.AddTail(1);
    list.AddTail(2);
    for (int allowed = 0; allowed < 2; ++allowed) {
        CountedElement::FailAfter(allowed);
        EXPECT_THROW(list.AddTail(four), CountedElement::Failure);
        CountedElement::FailAfter(allowed);
        EXPECT_THROW(list.InsertBefore(list.GetTailPosition(), four), CountedElement::Failure);
        CountedElement::NeverFail();
        list.AssertValid();
        EXPECT_THAT(Numbers(list), ElementsAre(1, 2));
        EXPECT_EQ(CountedElement::Living(), 3);
    }
}

TEST_F(CListOfObjects, AnElementThatCannotBeMadeLeavesAnEmptyListEmpty) {
    Counted list;
    const CountedElement four(4);
    CountedElement::FailAfter(1);
    EXPECT_THROW(list.AddHead(four), CountedElement::Failure);
    CountedElement::NeverFail();
    list.AssertValid();
    EXPECT_TRUE(list.IsEmpty());
    list.AddHead(four);
    EXPECT_THAT(Numbers(list), ElementsAre(4));
}

TEST_F(CListOfObjects, AnElementOfTheListMayBeAddedToIt) {
    Counted list;
    list.AddTail(1);
    for (int i = 0; i < 40; ++i) list.AddTail(list.GetHead());
    EXPECT_EQ(list.GetCount(), 41);
    EXPECT_EQ(list.GetTail().Number(), 1);
}

TEST(CList, PlainElementsAreHandedInByValue) {
    CList<double, double> list;
    list.AddTail(2.5);
    list.AddHead(1.5);
    list.InsertAfter(list.GetHeadPosition(), 2.0);
    EXPECT_THAT(std::vector<double>(list.begin(), list.end()), ElementsAre(1.5, 2.0, 2.5));
    EXPECT_EQ(list.Find(2.5), list.GetTailPosition());
    EXPECT_EQ(list.Find(9.0), nullptr);
}

TEST(CList, ElementsMayBeHandedInAsAnotherType) {
    CList<CString, LPCTSTR> list;
    list.AddTail("one");
    list.AddTail("a text that is too long to be kept without memory of its own");
    EXPECT_EQ(list.GetHead(), "one");
    EXPECT_EQ(list.Find("one"), list.GetHeadPosition());
    EXPECT_EQ(list.Find("two"), nullptr);
}

TEST(CList, FindComparesByCompareElements) {
    CList<Name> list;
    list.AddTail({"arc"});
    list.AddTail({"Knot"});
    EXPECT_EQ(list.Find({"knot"}), list.GetTailPosition());
    EXPECT_EQ(list.Find({
                  "seam",
              }),
              list.Find({"SEAM"}));
    EXPECT_EQ(list.Find({"x"}), nullptr);
}

TEST(CList, AListIsAddedInItsOrder) {
    CList<int, int> list, other;
    for (int i : {1, 2, 3}) list.AddTail(i);
    for (int i : {8, 9}) other.AddTail(i);
    list.AddHead(&other);
    list.AddTail(&other);
    EXPECT_THAT(std::vector<int>(list.begin(), list.end()), ElementsAre(8, 9, 1, 2, 3, 8, 9));
}

TEST(CList, NullPositionsAndEmptyEndsRaiseInvalidArgument) {
    CList<int, int> list;
    POSITION none = nullptr;
    EXPECT_THROW(list.GetHead(), CInvalidArgException*);
    EXPECT_THROW(list.RemoveHead(), CInvalidArgException*);
    EXPECT_THROW(list.GetNext(none), CInvalidArgException*);
    EXPECT_THROW(list.RemoveAt(none), CInvalidArgException*);
    EXPECT_THROW((CList<int, int>(0)), CInvalidArgException*);
}

TEST(CList, BehavesAsAQueueOfTextsUnderAnyOperations) {
    EXPECT_TRUE(rc::check([](const std::vector<std::pair<bool, std::string>>& steps) {
        CList<std::string> list(3);
        std::deque<std::string> model;
        for (const auto& [add, text] : steps) {
            if (add || model.empty()) {
                list.AddTail(text);
                model.push_back(text);
            } else {
                RC_ASSERT(list.RemoveHead() == model.front());
                model.pop_front();
            }
            list.AssertValid();
        }
        RC_ASSERT(std::deque<std::string>(list.begin(), list.end()) == model);
    }));
}

}  // namespace
