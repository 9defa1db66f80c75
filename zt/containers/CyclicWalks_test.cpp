#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/collections/CObList.h>
#include <platform/object/CInvalidArgException.h>
#include <tests/Raises.h>
#include <zt/containers/CyclicWalks.h>

#include <type_traits>
#include <vector>

// The walks over a list that is not a list of untyped pointers; the rest of what they do is
// tested at CyclicPtrList.

namespace ZT {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::Raises;

struct Thing : CObject {};

struct CyclicWalksTest : testing::Test {
    CyclicWalksTest() {
        for (Thing& thing : things) at.push_back(list.AddTail(&thing));
    }

    static std::vector<CObject*> All(const CObList& from) { return {from.begin(), from.end()}; }

    Thing things[4];
    CObList list;
    std::vector<POSITION> at;
};

TEST_F(CyclicWalksTest, WalkObjects) {
    POSITION pos = CyclicWalks::StartPosition(list, false);
    static_assert(std::is_same_v<decltype(CyclicWalks::GetNextCyclic(list, pos)), CObject*>);
    EXPECT_EQ(CyclicWalks::GetNextCyclic(list, pos), &things[3]);
    EXPECT_EQ(pos, at[0]);
    EXPECT_EQ(CyclicWalks::GetPrevCyclic(list, pos), &things[0]);
    EXPECT_EQ(pos, at[3]);
    EXPECT_EQ(CyclicWalks::Count(list, at[3], at[0]), 2);
    EXPECT_TRUE(CyclicWalks::IsNeighbourPosns(list, at[0], at[1]));
    EXPECT_TRUE(CyclicWalks::IsValidList(list));
}

TEST_F(CyclicWalksTest, NextRoundRaisesWhereGetNextCyclicGivesNull) {
    POSITION pos = nullptr;
    EXPECT_EQ(CyclicWalks::GetNextCyclic(list, pos), nullptr);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { CyclicWalks::NextRound(list, pos); }));
    pos = at[3];
    EXPECT_EQ(CyclicWalks::NextRound(list, pos), &things[3]);
    EXPECT_EQ(pos, at[0]);
}

TEST_F(CyclicWalksTest, CopyAndRemoveObjects) {
    CObList other;
    CyclicWalks::CopyCyclic(other, list, at[2], at[0]);
    EXPECT_THAT(All(other), ElementsAre(&things[2], &things[3], &things[0]));
    CyclicWalks::RemoveCyclic(list, at[2], at[0]);
    EXPECT_THAT(All(list), ElementsAre(&things[1]));
    list.AssertValid();
}

TEST_F(CyclicWalksTest, RemoveRunStopsAtItsEnd) {
    CyclicWalks::RemoveRun(list, at[1], at[2]);
    EXPECT_THAT(All(list), ElementsAre(&things[0], &things[3]));
    list.AssertValid();
}

TEST_F(CyclicWalksTest, RemoveRunDoesNotWrap) {
    CyclicWalks::RemoveRun(list, at[2], at[1]);
    EXPECT_THAT(All(list), ElementsAre(&things[0], &things[1]));
    CyclicWalks::RemoveRun(list, at[0], nullptr);
    EXPECT_THAT(All(list), IsEmpty());
}

TEST_F(CyclicWalksTest, RemoveRunFromNullTakesNothing) {
    CyclicWalks::RemoveRun(list, nullptr, at[1]);
    EXPECT_EQ(list.GetCount(), 4);
}

}  // namespace
}  // namespace ZT
