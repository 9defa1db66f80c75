#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CInvalidArgException.h>
#include <rapidcheck.h>
#include <tests/ListNodes.h>
#include <tests/Raises.h>
#include <zt/containers/ListCyclicNT.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing_support::Raises;

using Loop = testing_support::OpenList<ListCyclicNT>;

std::uintptr_t N(void* element) {
    return reinterpret_cast<std::uintptr_t>(element);
}

RangePos Between(POSITION first, POSITION last) {
    RangePos run;
    run.m_posFirst = first;
    run.m_posLast = last;
    return run;
}

// A loop of six and its positions.
struct ListCyclicNTTest : testing::Test {
    ListCyclicNTTest() {
        loop.Fill(6);
        for (POSITION p = loop.GetHeadPosition(); p != nullptr; loop.GetNext(p)) at.push_back(p);
    }
    ~ListCyclicNTTest() override { EXPECT_TRUE(loop.IsSound()); }

    // The indices of the positions that lie in a run.
    std::vector<int> Inside(int first, int last) const {
        std::vector<int> inside;
        const RangePos run = Between(At(first), At(last));
        for (int i = 0; i < 6; ++i) {
            if (loop.InRange(At(i), run)) inside.push_back(i);
        }
        return inside;
    }
    POSITION At(int index) const { return at[static_cast<std::size_t>(index)]; }

    Loop loop;
    std::vector<POSITION> at;
};

TEST_F(ListCyclicNTTest, IsAPlainListOfPointers) {
    EXPECT_EQ(sizeof(ListCyclicNT), sizeof(CPtrList));
    const Loop empty;
    EXPECT_TRUE(empty.IsEmpty());
    EXPECT_EQ(empty.m_nBlockSize, 10);
}

TEST_F(ListCyclicNTTest, WalksRoundInBothDirections) {
    POSITION pos = at[4];
    EXPECT_EQ(N(loop.GetNextCyclic(pos)), 5u);
    EXPECT_EQ(N(loop.GetNextCyclic(pos)), 6u);
    EXPECT_EQ(pos, at[0]);
    EXPECT_EQ(N(loop.GetPrevCyclic(pos)), 1u);
    EXPECT_EQ(pos, at[5]);
    EXPECT_EQ(N(loop.GetPrevCyclic(pos)), 6u);
    EXPECT_EQ(pos, at[4]);
}

TEST_F(ListCyclicNTTest, StaysOnTheOnlyElement) {
    ListCyclicNT one;
    POSITION pos = one.AddTail(&at);
    const POSITION alone = pos;
    EXPECT_EQ(one.GetNextCyclic(pos), &at);
    EXPECT_EQ(pos, alone);
    EXPECT_EQ(one.GetPrevCyclic(pos), &at);
    EXPECT_EQ(pos, alone);
}

TEST_F(ListCyclicNTTest, NullPositionRaisesInBothDirections) {
    POSITION pos = nullptr;
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { loop.GetNextCyclic(pos); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { loop.GetPrevCyclic(pos); }));
}

TEST_F(ListCyclicNTTest, InRangeIncludesBothEnds) {
    EXPECT_THAT(Inside(1, 3), ElementsAre(1, 2, 3));
    EXPECT_THAT(Inside(0, 5), ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_THAT(Inside(2, 3), ElementsAre(2, 3));
}

TEST_F(ListCyclicNTTest, InRangeFollowsARunRoundTheEnds) {
    EXPECT_THAT(Inside(4, 1), ElementsAre(0, 1, 4, 5));
    EXPECT_THAT(Inside(5, 0), ElementsAre(0, 5));
    EXPECT_THAT(Inside(3, 2), ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST_F(ListCyclicNTTest, RunFromAPositionToItselfIsTheWholeLoop) {
    EXPECT_THAT(Inside(2, 2), ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_THAT(Inside(0, 0), ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST_F(ListCyclicNTTest, NothingLiesInARunWithoutEnds) {
    EXPECT_FALSE(loop.InRange(at[1], RangePos()));
    EXPECT_FALSE(loop.InRange(at[1], Between(at[1], nullptr)));
    EXPECT_FALSE(loop.InRange(at[1], Between(nullptr, at[1])));
    EXPECT_FALSE(loop.InRange(nullptr, RangePos()));
}

TEST_F(ListCyclicNTTest, NullLiesInNoRun) {
    EXPECT_FALSE(loop.InRange(nullptr, Between(at[0], at[5])));
}

TEST_F(ListCyclicNTTest, RunOfAnotherListHoldsNothingOfThisOne) {
    Loop other;
    other.Fill(3);
    const RangePos foreign = Between(other.GetHeadPosition(), other.GetTailPosition());
    for (const POSITION pos : at) EXPECT_FALSE(loop.InRange(pos, foreign));
}

TEST_F(ListCyclicNTTest, RemoveTakesTheRunAndCountsAllButTheLast) {
    EXPECT_EQ(loop.Remove(at[1], at[3]), 2);
    EXPECT_THAT(loop.Numbers(), ElementsAre(1, 5, 6));
    EXPECT_EQ(loop.Remove(at[0], at[4]), 1);
    EXPECT_THAT(loop.Numbers(), ElementsAre(6));
}

TEST_F(ListCyclicNTTest, RemoveGoesRoundTheEnds) {
    EXPECT_EQ(loop.Remove(at[4], at[1]), 3);
    EXPECT_THAT(loop.Numbers(), ElementsAre(3, 4));
    EXPECT_EQ(loop.GetHeadPosition(), at[2]);
    EXPECT_EQ(loop.GetTailPosition(), at[3]);
}

TEST_F(ListCyclicNTTest, RemoveOfTailAndHeadLeavesTheMiddle) {
    EXPECT_EQ(loop.Remove(at[5], at[0]), 1);
    EXPECT_THAT(loop.Numbers(), ElementsAre(2, 3, 4, 5));
}

TEST_F(ListCyclicNTTest, RemoveTakesEverythingFromOneElementToTheOneBefore) {
    EXPECT_EQ(loop.Remove(at[3], at[2]), 5);
    EXPECT_TRUE(loop.IsEmpty());
    EXPECT_EQ(loop.BlockCount(), 0);
}

TEST_F(ListCyclicNTTest, RemoveWithoutAnEndGoesToTheTail) {
    EXPECT_EQ(loop.Remove(at[2], nullptr), 3);
    EXPECT_THAT(loop.Numbers(), ElementsAre(1, 2));
    EXPECT_EQ(loop.Remove(at[1], nullptr), 0) << "a run of one";
    EXPECT_THAT(loop.Numbers(), ElementsAre(1));
}

TEST_F(ListCyclicNTTest, RemoveOfOneElementCountsNone) {
    EXPECT_EQ(loop.Remove(at[2], at[2]), 0);
    EXPECT_THAT(loop.Numbers(), ElementsAre(1, 2, 4, 5, 6));
}

TEST_F(ListCyclicNTTest, RemoveToAForeignPositionTakesEverything) {
    Loop other;
    other.Fill(1);
    EXPECT_EQ(loop.Remove(at[3], other.GetHeadPosition()), 6);
    EXPECT_TRUE(loop.IsEmpty());
    EXPECT_EQ(other.GetCount(), 1);
    EXPECT_TRUE(other.IsSound());
}

TEST_F(ListCyclicNTTest, RemoveFromNullTakesNothing) {
    EXPECT_EQ(loop.Remove(nullptr, at[3]), 0);
    EXPECT_EQ(loop.Remove(nullptr, nullptr), 0);
    EXPECT_EQ(loop.GetCount(), 6);
}

TEST(ListCyclicNTLaws, RunsBehaveAsOnPlainNumbers) {
    EXPECT_TRUE(rc::check([](const std::vector<std::pair<unsigned, unsigned>>& steps) {
        Loop loop;
        std::vector<std::uintptr_t> numbers;
        std::uintptr_t last = 0;
        for (const auto& [a, b] : steps) {
            for (unsigned i = 0; i < a % 7 + 2; ++i) {
                numbers.push_back(++last);
                loop.AddTail(reinterpret_cast<void*>(last));
            }
            const std::size_t from = a % numbers.size();
            const std::size_t length = b % (numbers.size() - 1) + 2;
            const std::size_t to = (from + length - 1) % numbers.size();
            const POSITION first = loop.FindIndex(static_cast<INT_PTR>(from));
            const POSITION end = loop.FindIndex(static_cast<INT_PTR>(to));
            const auto inRun = [&](std::size_t i) {
                return (i + numbers.size() - from) % numbers.size() < length;
            };
            std::vector<std::uintptr_t> left;
            for (std::size_t i = 0; i < numbers.size(); ++i) {
                const POSITION pos = loop.FindIndex(static_cast<INT_PTR>(i));
                RC_ASSERT(loop.InRange(pos, Between(first, end)) == inRun(i));
                if (!inRun(i)) left.push_back(numbers[i]);
            }
            RC_ASSERT(static_cast<std::size_t>(loop.Remove(first, end)) == length - 1);
            numbers = left;
            RC_ASSERT(static_cast<bool>(loop.IsSound()));
            RC_ASSERT(loop.Numbers() == numbers);
        }
    }));
}

}  // namespace
}  // namespace ZT
