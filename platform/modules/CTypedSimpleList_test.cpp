#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/modules/CTypedSimpleList.h>

using testing::ElementsAre;

namespace {

struct Link {
    Link* next = nullptr;
};

struct Chain : testing::Test {
    Link a, b, c;
    CTypedSimpleList<Link, &Link::next> list;

    void LinkAll() {
        list.AddHead(&c);
        list.AddHead(&b);
        list.AddHead(&a);
    }
};

}  // namespace

TEST_F(Chain, BeginsEmpty) {
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetHead(), nullptr);
    EXPECT_EQ(list.begin(), list.end());
}

TEST_F(Chain, LatestStandsFirst) {
    LinkAll();
    EXPECT_FALSE(list.IsEmpty());
    EXPECT_EQ(list.GetHead(), &a);
    EXPECT_EQ(list.GetNext(&a), &b);
    EXPECT_EQ(list.GetNext(&c), nullptr);
    EXPECT_THAT(list, ElementsAre(&a, &b, &c));
}

TEST_F(Chain, RemovesFromAnyPlace) {
    LinkAll();
    EXPECT_TRUE(list.Remove(&b));
    EXPECT_THAT(list, ElementsAre(&a, &c));
    EXPECT_TRUE(list.Remove(&c));
    EXPECT_THAT(list, ElementsAre(&a));
    EXPECT_TRUE(list.Remove(&a));
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(Chain, RemoveOfAnObjectThatIsNotThereIsFalse) {
    list.AddHead(&a);
    EXPECT_FALSE(list.Remove(&b));
    EXPECT_THAT(list, ElementsAre(&a));
}

TEST_F(Chain, RemovedObjectKeepsItsLinkForAnotherHead) {
    LinkAll();
    auto second = list;
    EXPECT_TRUE(list.Remove(&a));
    EXPECT_THAT(second, ElementsAre(&a, &b, &c));
    EXPECT_TRUE(second.Remove(&a));
    EXPECT_THAT(second, ElementsAre(&b, &c));
}

TEST_F(Chain, RemoveAllForgetsTheChain) {
    LinkAll();
    list.RemoveAll();
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(a.next, &b);
}
