#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CInvalidArgException.h>
#include <rapidcheck.h>
#include <tests/ListNodes.h>
#include <tests/Raises.h>
#include <zt/containers/CyclicPtrList.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::Raises;

using Loop = testing_support::OpenList<CyclicPtrList<void>>;
using Numbers = std::vector<std::uintptr_t>;

std::uintptr_t N(void* element) {
    return reinterpret_cast<std::uintptr_t>(element);
}

// Loops of five, of one and of none, and the positions of the five.
struct CyclicPtrListTest : testing::Test {
    CyclicPtrListTest() {
        five.Fill(5);
        one.Fill(1);
        for (POSITION p = five.GetHeadPosition(); p != nullptr; five.GetNext(p)) at.push_back(p);
        alone = one.GetHeadPosition();
    }
    ~CyclicPtrListTest() override {
        EXPECT_TRUE(five.IsSound());
        EXPECT_TRUE(one.IsSound());
        EXPECT_TRUE(none.IsSound());
    }

    Loop five, one, none;
    std::vector<POSITION> at;
    POSITION alone;
};

TEST_F(CyclicPtrListTest, AddsNothingToTheLayout) {
    EXPECT_EQ(sizeof(CyclicPtrList<void>), sizeof(CPtrList));
    EXPECT_EQ(five.m_nBlockSize, 10);
}

TEST_F(CyclicPtrListTest, GivesElementsOfItsType) {
    int number = 7;
    CyclicPtrList<int> list;
    POSITION pos = list.AddTail(&number);
    static_assert(std::is_same_v<decltype(list.GetNextCyclic(pos)), int*>);
    static_assert(std::is_same_v<decltype(list.Next(pos, true, true)), int*>);
    EXPECT_EQ(list.GetPrevCyclic(pos), &number);
    EXPECT_EQ(list.Next(pos, true), &number);
}

TEST_F(CyclicPtrListTest, WalksStartAtTheHeadOrTheTail) {
    EXPECT_EQ(five.GetStartPosition(true), at[0]);
    EXPECT_EQ(five.GetStartPosition(false), at[4]);
    EXPECT_EQ(five.GetEndPosition(true), at[0]) << "the same sense, whatever the name says";
    EXPECT_EQ(five.GetEndPosition(false), at[4]);
    EXPECT_EQ(none.GetStartPosition(true), nullptr);
    EXPECT_EQ(none.GetEndPosition(false), nullptr);
}

TEST_F(CyclicPtrListTest, NextEndsAtTheEndsOfTheChain) {
    Numbers forward, backward;
    for (POSITION pos = at[0]; pos != nullptr;) forward.push_back(N(five.Next(pos, true)));
    for (POSITION pos = at[4]; pos != nullptr;) backward.push_back(N(five.Next(pos, false)));
    EXPECT_THAT(forward, ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(backward, ElementsAre(5, 4, 3, 2, 1));
}

TEST_F(CyclicPtrListTest, NextWithoutCyclicIsNext) {
    POSITION pos = at[4];
    EXPECT_EQ(N(five.Next(pos, true, false)), 5u);
    EXPECT_EQ(pos, nullptr);
    pos = at[0];
    EXPECT_EQ(N(five.Next(pos, false, false)), 1u);
    EXPECT_EQ(pos, nullptr);
}

TEST_F(CyclicPtrListTest, NextWithCyclicWraps) {
    POSITION pos = at[4];
    EXPECT_EQ(N(five.Next(pos, true, true)), 5u);
    EXPECT_EQ(pos, at[0]);
    EXPECT_EQ(N(five.Next(pos, false, true)), 1u);
    EXPECT_EQ(pos, at[4]);
}

TEST_F(CyclicPtrListTest, NextOfANullPositionRaises) {
    POSITION pos = nullptr;
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { five.Next(pos, true); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { five.Next(pos, false); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { five.Next(pos, true, false); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { five.Next(pos, false, false); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { five.Next(pos, false, true); }));
    EXPECT_EQ(five.Next(pos, true, true), nullptr);
    EXPECT_EQ(pos, nullptr);
}

TEST_F(CyclicPtrListTest, GetNextCyclicGoesRound) {
    Numbers seen;
    POSITION pos = at[3];
    for (int i = 0; i < 7; ++i) seen.push_back(N(five.GetNextCyclic(pos)));
    EXPECT_THAT(seen, ElementsAre(4, 5, 1, 2, 3, 4, 5));
    EXPECT_EQ(pos, at[0]);
}

TEST_F(CyclicPtrListTest, GetPrevCyclicGoesRoundBackwards) {
    Numbers seen;
    POSITION pos = at[1];
    for (int i = 0; i < 6; ++i) seen.push_back(N(five.GetPrevCyclic(pos)));
    EXPECT_THAT(seen, ElementsAre(2, 1, 5, 4, 3, 2));
    EXPECT_EQ(pos, at[0]);
}

TEST_F(CyclicPtrListTest, OneElementIsItsOwnNeighbourRoundTheLoop) {
    POSITION pos = alone;
    EXPECT_EQ(N(one.GetNextCyclic(pos)), 1u);
    EXPECT_EQ(pos, alone);
    EXPECT_EQ(N(one.GetPrevCyclic(pos)), 1u);
    EXPECT_EQ(pos, alone);
}

TEST_F(CyclicPtrListTest, GetNextCyclicTakesADirection) {
    POSITION pos = at[4];
    EXPECT_EQ(N(five.GetNextCyclic(pos, true)), 5u);
    EXPECT_EQ(pos, at[0]);
    EXPECT_EQ(N(five.GetNextCyclic(pos, false)), 1u);
    EXPECT_EQ(pos, at[4]);
}

TEST_F(CyclicPtrListTest, OnlyBackwardDoesANullPositionRaise) {
    POSITION pos = nullptr;
    EXPECT_EQ(five.GetNextCyclic(pos), nullptr);
    EXPECT_EQ(pos, nullptr);
    EXPECT_EQ(five.GetNextCyclic(pos, true), nullptr);
    EXPECT_EQ(pos, nullptr);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { five.GetPrevCyclic(pos); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { five.GetNextCyclic(pos, false); }));
}

TEST_F(CyclicPtrListTest, NeighboursDoNotWrap) {
    EXPECT_TRUE(five.IsNeighbourPosns(at[0], at[1]));
    EXPECT_TRUE(five.IsNeighbourPosns(at[3], at[4]));
    EXPECT_FALSE(five.IsNeighbourPosns(at[1], at[0]));
    EXPECT_FALSE(five.IsNeighbourPosns(at[0], at[2]));
    EXPECT_FALSE(five.IsNeighbourPosns(at[4], at[0]));
    EXPECT_FALSE(five.IsNeighbourPosns(at[2], at[2]));
    EXPECT_FALSE(one.IsNeighbourPosns(alone, alone));
}

TEST_F(CyclicPtrListTest, NullHasNoNeighbour) {
    EXPECT_FALSE(five.IsNeighbourPosns(nullptr, at[0]));
    EXPECT_FALSE(five.IsNeighbourPosns(at[4], nullptr));
    EXPECT_FALSE(five.IsNeighbourPosns(nullptr, nullptr));
}

TEST_F(CyclicPtrListTest, CountsBothEndsOfARun) {
    EXPECT_EQ(five.Count(at[1], at[3]), 3);
    EXPECT_EQ(five.Count(at[0], at[4]), 5);
    EXPECT_EQ(five.Count(at[3], at[1]), 4);
    EXPECT_EQ(five.Count(at[1], at[0]), 5);
    EXPECT_EQ(five.Count(at[4], at[0]), 2);
}

TEST_F(CyclicPtrListTest, CountOfOnePositionIsOne) {
    for (const POSITION pos : at) EXPECT_EQ(five.Count(pos, pos), 1);
    EXPECT_EQ(one.Count(alone, alone), 1);
}

TEST_F(CyclicPtrListTest, CountOfTailAndHeadIsTwoInAnyList) {
    for (std::uintptr_t count = 2; count < 25; ++count) {
        Loop list;
        list.Fill(count);
        EXPECT_EQ(list.Count(list.GetTailPosition(), list.GetHeadPosition()), 2);
    }
}

TEST_F(CyclicPtrListTest, CountFromNullIsZero) {
    EXPECT_EQ(five.Count(nullptr, at[0]), 0);
    EXPECT_EQ(five.Count(nullptr, nullptr), 0);
    EXPECT_EQ(none.Count(nullptr, nullptr), 0);
}

TEST_F(CyclicPtrListTest, CopyCyclicAppendsARun) {
    one.CopyCyclic(five, at[1], at[3]);
    EXPECT_THAT(one.Numbers(), ElementsAre(1, 2, 3, 4));
    one.CopyCyclic(five, at[3], at[0]);
    EXPECT_THAT(one.Numbers(), ElementsAre(1, 2, 3, 4, 4, 5, 1));
    one.CopyCyclic(five, at[2], at[2]);
    EXPECT_THAT(one.Numbers(), ElementsAre(1, 2, 3, 4, 4, 5, 1, 3));
    EXPECT_THAT(five.Numbers(), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(CyclicPtrListTest, CopyCyclicFromNullCopiesNothing) {
    none.CopyCyclic(five, nullptr, at[3]);
    EXPECT_THAT(none.Numbers(), IsEmpty());
}

TEST_F(CyclicPtrListTest, CopyCyclicOfItselfTurnsAtTheFormerTail) {
    five.CopyCyclic(five, at[3], at[1]);
    EXPECT_THAT(five.Numbers(), ElementsAre(1, 2, 3, 4, 5, 4, 5, 1, 2));
}

TEST_F(CyclicPtrListTest, RemoveCyclicTakesARun) {
    five.RemoveCyclic(at[1], at[3]);
    EXPECT_THAT(five.Numbers(), ElementsAre(1, 5));
}

TEST_F(CyclicPtrListTest, RemoveCyclicTakesARunRoundTheEnds) {
    five.RemoveCyclic(at[3], at[1]);
    EXPECT_THAT(five.Numbers(), ElementsAre(3));
}

TEST_F(CyclicPtrListTest, RemoveCyclicOfTailAndHeadLeavesTheMiddle) {
    five.RemoveCyclic(at[4], at[0]);
    EXPECT_THAT(five.Numbers(), ElementsAre(2, 3, 4));
    EXPECT_EQ(five.GetHeadPosition(), at[1]);
    EXPECT_EQ(five.GetTailPosition(), at[3]);
}

TEST_F(CyclicPtrListTest, RemoveCyclicTakesOneOrAll) {
    five.RemoveCyclic(at[2], at[2]);
    EXPECT_THAT(five.Numbers(), ElementsAre(1, 2, 4, 5));
    five.RemoveCyclic(at[1], at[0]);
    EXPECT_THAT(five.Numbers(), IsEmpty());
    EXPECT_EQ(five.BlockCount(), 0) << "the last element takes the blocks along";
    one.RemoveCyclic(alone, alone);
    EXPECT_TRUE(one.IsEmpty());
}

TEST_F(CyclicPtrListTest, RemoveCyclicWithoutAnEndTakesEverything) {
    five.RemoveCyclic(at[2], nullptr);
    EXPECT_TRUE(five.IsEmpty());
    Loop another;
    another.Fill(12);
    another.RemoveCyclic(another.GetHeadPosition(), alone);
    EXPECT_TRUE(another.IsEmpty());
    EXPECT_TRUE(another.IsSound());
    one.RemoveCyclic(alone, nullptr);
    EXPECT_TRUE(one.IsEmpty());
}

TEST_F(CyclicPtrListTest, RemoveCyclicFromNullTakesNothing) {
    five.RemoveCyclic(nullptr, at[2]);
    five.RemoveCyclic(nullptr, nullptr);
    EXPECT_THAT(five.Numbers(), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(CyclicPtrListTest, RemovedNodesServeTheNextElements) {
    five.RemoveCyclic(at[3], at[0]);
    const POSITION pos = five.AddTail(nullptr);
    EXPECT_NE(std::find(at.begin(), at.end(), pos), at.end());
    EXPECT_EQ(five.BlockCount(), 1);
}

TEST_F(CyclicPtrListTest, IsValidListLooksAtTheEnds) {
    EXPECT_TRUE(none.IsValidList());
    EXPECT_TRUE(one.IsValidList());
    EXPECT_TRUE(five.IsValidList());
    five.SetAt(at[2], nullptr);
    EXPECT_TRUE(five.IsValidList()) << "only the head is asked for its element";
    five.SetAt(at[0], nullptr);
    EXPECT_FALSE(five.IsValidList());
    one.SetAt(alone, nullptr);
    EXPECT_FALSE(one.IsValidList());
}

// A list is damaged for the look and repaired afterwards.
template <class Field, class Value>
bool IsValidWith(const Loop& list, Field& field, Value damage) {
    const Field before = std::exchange(field, damage);
    const bool valid = list.IsValidList();
    field = before;
    return valid;
}

TEST_F(CyclicPtrListTest, IsValidListFindsDamagedEnds) {
    EXPECT_FALSE(IsValidWith(five, five.m_pNodeHead, nullptr));
    EXPECT_FALSE(IsValidWith(five, five.m_pNodeTail, five.m_pNodeHead));
    EXPECT_FALSE(IsValidWith(one, one.m_nCount, 2)) << "two, and head is tail";
    EXPECT_FALSE(IsValidWith(five, five.m_nCount, 1)) << "one, and head is not tail";
    EXPECT_FALSE(IsValidWith(one, one.m_pNodeHead->pNext, five.m_pNodeHead));
    EXPECT_FALSE(IsValidWith(one, one.m_pNodeTail, nullptr));
    EXPECT_TRUE(IsValidWith(five, five.m_nCount, 0)) << "a count of 0 says it all";
    EXPECT_TRUE(IsValidWith(five, five.m_nCount, 3));
}

// The indices of the run from `from` through `to` in a loop of `size`.
std::vector<std::size_t> Run(std::size_t size, std::size_t from, std::size_t to) {
    std::vector<std::size_t> indices{from};
    while (indices.back() != to) indices.push_back((indices.back() + 1) % size);
    return indices;
}

// A loop and the plain numbers that it should hold, under one operation after another.
class Model {
public:
    void Step(unsigned choice, std::size_t a, std::size_t b) {
        if (m_numbers.empty() || choice % 8 < 3) return Append(choice % 12 + 1);
        const std::size_t from = a % m_numbers.size();
        const std::size_t to = b % m_numbers.size();
        RC_ASSERT(static_cast<std::size_t>(m_loop.Count(At(from), At(to))) ==
                  Indices(from, to).size());
        if (choice % 8 < 5) return Copy(from, to);
        if (choice % 8 < 7) return Remove(from, to);
        TurnRound(from);
    }

    void Check() const {
        RC_ASSERT(m_loop.IsSound());
        RC_ASSERT(m_loop.Numbers() == m_numbers);
        RC_ASSERT(m_loop.IsValidList());
    }

private:
    POSITION At(std::size_t index) const { return m_loop.FindIndex(static_cast<INT_PTR>(index)); }
    std::vector<std::size_t> Indices(std::size_t from, std::size_t to) const {
        return Run(m_numbers.size(), from, to);
    }

    void Append(std::size_t count) {
        for (; count > 0; --count) {
            m_numbers.push_back(++m_last);
            m_loop.AddTail(reinterpret_cast<void*>(m_last));
        }
    }
    void Copy(std::size_t from, std::size_t to) {
        m_loop.CopyCyclic(m_loop, At(from), At(to));
        for (const std::size_t index : Indices(from, to)) m_numbers.push_back(m_numbers[index]);
    }
    void Remove(std::size_t from, std::size_t to) {
        m_loop.RemoveCyclic(At(from), At(to));
        for (const std::size_t index : Indices(from, to)) m_numbers[index] = 0;
        std::erase(m_numbers, 0u);
    }
    void TurnRound(std::size_t from) const {
        POSITION pos = At(from);
        for (std::size_t i = 0; i < m_numbers.size(); ++i) {
            RC_ASSERT(N(m_loop.GetNextCyclic(pos)) == m_numbers[(from + i) % m_numbers.size()]);
        }
        RC_ASSERT((pos == At(from)));
        for (std::size_t i = 0; i < m_numbers.size(); ++i) m_loop.GetPrevCyclic(pos);
        RC_ASSERT((pos == At(from)));
    }

    Loop m_loop;
    Numbers m_numbers;
    std::uintptr_t m_last = 0;
};

TEST(CyclicPtrListLaws, BehavesAsPlainNumbersInALoop) {
    EXPECT_TRUE(rc::check([](const std::vector<std::tuple<unsigned, unsigned, unsigned>>& steps) {
        Model model;
        std::size_t left = 40;
        for (const auto& [choice, a, b] : steps) {
            if (left-- == 0) break;
            model.Step(choice, a, b);
            model.Check();
        }
    }));
}

}  // namespace
}  // namespace ZT
