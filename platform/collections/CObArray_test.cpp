#include <platform/collections/CObArray.h>

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

struct CObArrayOfTwo : testing::Test {
    CObArrayOfTwo() {
        array.Add(&a);
        array.Add(&b);
    }
    std::vector<CObject*> All() const { return {array.begin(), array.end()}; }

    Thing a, b, c;
    CObArray array;
};

TEST_F(CObArrayOfTwo, ElementsAreObjects) {
    static_assert(std::is_same_v<decltype(array[0]), CObject*&>);
    EXPECT_EQ(array[0], &a);
    array.SetAtGrow(3, &c);
    EXPECT_THAT(All(), ElementsAre(&a, &b, nullptr, &c));
}

TEST_F(CObArrayOfTwo, AnArrayIsInsertedElementByElement) {
    CObArray other;
    other.Add(&c);
    array.InsertAt(1, &other);
    EXPECT_THAT(All(), ElementsAre(&a, &c, &b));
    array.InsertAt(0, static_cast<CObject*>(&other));
    EXPECT_EQ(array[0], &other);
}

TEST_F(CObArrayOfTwo, AssertValidAsksEveryObject) {
    array.Add(nullptr);
    array.AssertValid();
    a.sound = false;
    EXPECT_THROW(array.AssertValid(), CInvalidArgException*);
}

TEST_F(CObArrayOfTwo, OutOfBoundsRaisesInvalidArgument) {
    EXPECT_THROW(array[2], CInvalidArgException*);
    EXPECT_THROW(array.RemoveAt(1, 2), CInvalidArgException*);
}

TEST(CObArray, IsMadeByName) {
    CObject* made = CRuntimeClass::CreateObject("CObArray");
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CObArray)));
    delete made;
}

}  // namespace
