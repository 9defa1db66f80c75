#include <platform/collections/CObList.h>
#include <platform/collections/CPtrList.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

namespace {

using testing::ElementsAre;

struct Thing : CObject {
    void AssertValid() const override {
        if (!sound) AfxThrowInvalidArgException();
    }
    bool sound = true;
};

struct CObListOfTwo : testing::Test {
    CObListOfTwo() {
        list.AddTail(&a);
        list.AddTail(&b);
    }
    Thing a, b, c;
    CObList list;

    static std::vector<CObject*> All(const CObList& from) { return {from.begin(), from.end()}; }
};

TEST_F(CObListOfTwo, ElementsAreObjects) {
    static_assert(std::is_same_v<decltype(list.GetHead()), CObject*&>);
    EXPECT_EQ(list.GetHead(), &a);
    EXPECT_EQ(list.GetTail(), &b);
    EXPECT_EQ(list.Find(&b), list.GetTailPosition());
    EXPECT_EQ(list.RemoveHead(), &a);
    EXPECT_EQ(list.GetCount(), 1);
}

TEST_F(CObListOfTwo, AListIsAddedElementByElement) {
    CObList other;
    other.AddTail(&c);
    other.AddTail(&list);
    EXPECT_THAT(All(other), ElementsAre(&c, &a, &b));
    other.AddHead(&list);
    EXPECT_THAT(All(other), ElementsAre(&a, &b, &c, &a, &b));
}

TEST_F(CObListOfTwo, AListGoesInAsObjectWhenPassedAsOne) {
    CObList other;
    other.AddTail(static_cast<CObject*>(&list));
    EXPECT_THAT(All(other), ElementsAre(&list));
}

TEST_F(CObListOfTwo, AListOfObjectsIsAnElementOfAListOfPointers) {
    CPtrList pointers;
    pointers.AddTail(&list);
    EXPECT_EQ(pointers.GetCount(), 1);
    EXPECT_EQ(pointers.GetHead(), &list);
}

TEST_F(CObListOfTwo, ObjectsOutliveTheList) {
    list.RemoveAll();
    EXPECT_TRUE(a.sound);
    list.AddTail(&a);
    EXPECT_THAT(All(list), ElementsAre(&a));
}

TEST_F(CObListOfTwo, AssertValidAsksEveryObject) {
    list.AddTail(nullptr);
    list.AssertValid();
    b.sound = false;
    EXPECT_THROW(list.AssertValid(), CInvalidArgException*);
}

TEST(CObList, EndsOfAnEmptyListRaiseInvalidArgument) {
    CObList list;
    EXPECT_THROW(list.GetHead(), CInvalidArgException*);
    EXPECT_THROW(list.RemoveTail(), CInvalidArgException*);
    EXPECT_THROW(CObList(0), CInvalidArgException*);
}

TEST(CObList, IsMadeByName) {
    CObject* made = CRuntimeClass::CreateObject("CObList");
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CObList)));
    EXPECT_TRUE(made->IsSerializable());
    delete made;
}

}  // namespace
