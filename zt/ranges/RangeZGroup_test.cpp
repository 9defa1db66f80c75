// Runs of a cyclic group with a stored state.

#include <zt/ranges/RangeZGroup.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <zt/numerics/CyclSegment.h>
#include <zt/frame/VirtualTable_test.hpp>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZT {

void PrintTo(const RangeZGroup& run, std::ostream* os) {
    *os << run.m_first << " to " << run.m_last << " of rank " << run.m_rank << ", state "
        << run.m_eState;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

constexpr auto kFull = RangeS1::eStateFull;
constexpr auto kEmpty = RangeS1::eStateEmpty;
constexpr auto kPartial = RangeS1::eStatePartial;

MATCHER_P4(IsRun, rank, first, last, state, "") {
    return arg.m_rank == rank && arg.m_first == first && arg.m_last == last &&
           arg.m_eState == state;
}

// A run with whatever limits.
RangeZGroup Raw(int rank, int first, int last, RangeS1::EState state) {
    RangeZGroup run(rank);
    run.m_first = first;
    run.m_last = last;
    run.m_eState = state;
    return run;
}

RangeZGroup Empty(int rank) {
    return Raw(rank, 0, 0, kEmpty);
}

// What the run holds by In.
std::vector<int> Members(const RangeZGroup& run) {
    std::vector<int> members;
    for (int i = 0; i < run.m_rank; ++i) {
        if (run.In(i)) members.push_back(i);
    }
    return members;
}

// What the run holds by Get, in its order.
std::vector<int> Walk(const RangeZGroup& run) {
    std::vector<int> elements;
    for (int i = 0; run.Get(i) >= 0; ++i) elements.push_back(run.Get(i));
    return elements;
}

// The record.

TEST(RangeZGroup, FieldsFollowTheTableInOrder) {
    EXPECT_EQ(offsetof(RangeZGroup, m_eState), 8u);
    EXPECT_EQ(offsetof(RangeZGroup, m_first), 12u);
    EXPECT_EQ(offsetof(RangeZGroup, m_last), 16u);
    EXPECT_EQ(offsetof(RangeZGroup, m_rank), 20u);
    EXPECT_EQ(sizeof(RangeZGroup), 24u);
}

struct Counted : RangeZGroup {
    explicit Counted(int* ended) : m_ended(ended) {}
    ~Counted() override { ++*m_ended; }
    int* m_ended;
};

TEST(RangeZGroup, DestructorIsTheFirstVirtualOperation) {
    EXPECT_TRUE(std::has_virtual_destructor_v<RangeZGroup>);
    int ended = 0;
    alignas(Counted) std::byte memory[sizeof(Counted)];
    CallSlot<void>(new (memory) Counted(&ended), 0);
    EXPECT_EQ(ended, 1);
}

// Making and storing.

TEST(RangeZGroup, NewRunIsFullWithRankTwo) {
    EXPECT_THAT(RangeZGroup(), IsRun(2, 0, 0, kFull));
}

TEST(RangeZGroup, NewRunOfARankIsFull) {
    EXPECT_THAT(RangeZGroup(5), IsRun(5, 0, 0, kFull));
}

TEST(RangeZGroup, RunFromLimitsIsPartialAndBringsThemIntoTheLoop) {
    EXPECT_THAT(RangeZGroup(5, 3, 1), IsRun(5, 3, 1, kPartial));
    EXPECT_THAT(RangeZGroup(5, -1, 7), IsRun(5, 4, 2, kPartial));
    EXPECT_THAT(RangeZGroup(5, -7, 5), IsRun(5, -2, 0, kPartial));
    EXPECT_THAT(RangeZGroup(5, 0, 4), IsRun(5, 0, 4, kPartial));
}

TEST(RangeZGroup, CopiesTakeAllFields) {
    const RangeZGroup run = Raw(5, 9, -3, kEmpty);
    EXPECT_THAT(RangeZGroup(run), IsRun(5, 9, -3, kEmpty));
    RangeZGroup copy;
    copy.Copy(run);
    EXPECT_THAT(copy, IsRun(5, 9, -3, kEmpty));
}

TEST(RangeZGroup, AssignmentTakesAllFieldsAndResultsInACopy) {
    RangeZGroup run;
    const RangeZGroup result = (run = Raw(5, 9, -3, kPartial));
    EXPECT_THAT(run, IsRun(5, 9, -3, kPartial));
    EXPECT_THAT(result, IsRun(5, 9, -3, kPartial));
    EXPECT_TRUE(
        (std::is_same_v<decltype(std::declval<RangeZGroup&>() = RangeZGroup()), RangeZGroup>));
}

TEST(RangeZGroup, SetKeepsRankAndState) {
    RangeZGroup run(5);
    run.Set(-1, 7);
    EXPECT_THAT(run, IsRun(5, 4, 2, kFull));
    run = Empty(5);
    run.Set(1, 2);
    EXPECT_THAT(run, IsRun(5, 1, 2, kEmpty));
}

TEST(RangeZGroup, SetWithARankMakesAPartialRun) {
    RangeZGroup run(5);
    run.Set(4, -1, 6);
    EXPECT_THAT(run, IsRun(4, 3, 2, kPartial));
    run = Empty(5);
    run.Set(2, 0, 1);
    EXPECT_THAT(run, IsRun(2, 0, 1, kPartial));
}

TEST(RangeZGroup, SetWithARankBelowTwoDoesNothing) {
    for (const int rank : {1, 0, -1, kLowest}) {
        RangeZGroup run(5);
        run.Set(rank, 0, 0);
        EXPECT_THAT(run, IsRun(5, 0, 0, kFull));
        RangeZGroup partial(5, 3, 1);
        partial.Set(rank, 2, 2);
        EXPECT_THAT(partial, IsRun(5, 3, 1, kPartial));
    }
}

TEST(RangeZGroup, SetEmptyAndSetFullKeepTheLimits) {
    RangeZGroup run(5, 3, 1);
    run.SetEmpty();
    EXPECT_THAT(run, IsRun(5, 3, 1, kEmpty));
    run.SetFull();
    EXPECT_THAT(run, IsRun(5, 3, 1, kFull));
}

TEST(RangeZGroup, SetRankLeavesTheLimits) {
    RangeZGroup run(5, 3, 1);
    run.SetRank(2);
    EXPECT_THAT(run, IsRun(2, 3, 1, kPartial));
    EXPECT_EQ(run.GetRank(), 2);
    run.SetRank(0);
    EXPECT_EQ(run.GetRank(), 0);
}

TEST(RangeZGroup, FactorBringsTheLimitsIntoTheLoop) {
    RangeZGroup run = Raw(3, 4, -1, kEmpty);
    run.Factor();
    EXPECT_THAT(run, IsRun(3, 1, 2, kEmpty));
    run = Raw(3, -7, 3, kPartial);
    run.Factor();
    EXPECT_THAT(run, IsRun(3, -1, 0, kPartial));
}

TEST(RangeZGroup, SwapEndsKeepsTheState) {
    RangeZGroup run(5, 3, 1);
    run.SwapEnds();
    EXPECT_THAT(run, IsRun(5, 1, 3, kPartial));
    run.SetEmpty();
    run.SwapEnds();
    EXPECT_THAT(run, IsRun(5, 3, 1, kEmpty));
}

TEST(RangeZGroup, MovesBothLimits) {
    RangeZGroup run(5, 3, 1);
    run += 3;
    EXPECT_THAT(run, IsRun(5, 1, 4, kPartial));
    run -= 3;
    EXPECT_THAT(run, IsRun(5, 3, 1, kPartial));
    run -= 9;
    EXPECT_THAT(run, IsRun(5, -1, -3, kPartial));
    run = RangeZGroup(5);
    run += -1;
    EXPECT_THAT(run, IsRun(5, 4, 4, kFull));
}

TEST(RangeZGroup, MovesThatDoNotFitWrapRound) {
    RangeZGroup run(5, 3, 1);
    run += kHighest;  // -2^31 + 2 and -2^31.
    EXPECT_THAT(run, IsRun(5, -1, -3, kPartial));
}

// Tests and elements. The family: the loop of five, empty, full, and runs of each kind.

struct Loop5 : testing::Test {
    RangeZGroup empty = Empty(5);
    RangeZGroup full = RangeZGroup(5);
    RangeZGroup two = RangeZGroup(5, 2, 2);
    RangeZGroup oneToThree = RangeZGroup(5, 1, 3);
    RangeZGroup threeToOne = RangeZGroup(5, 3, 1);
    RangeZGroup zeroToFour = RangeZGroup(5, 0, 4);  // every element
    RangeZGroup threeToTwo = RangeZGroup(5, 3, 2);  // every element, from elsewhere
};

TEST_F(Loop5, EqualityIgnoresTheState) {
    EXPECT_TRUE(threeToOne == Raw(5, 3, 1, kEmpty));
    EXPECT_FALSE(threeToOne != Raw(5, 3, 1, kFull));
    EXPECT_TRUE(empty == full);
}

TEST_F(Loop5, EqualityComparesRankAndLimits) {
    EXPECT_TRUE(threeToOne == RangeZGroup(5, 3, 1));
    EXPECT_FALSE(threeToOne == RangeZGroup(6, 3, 1));
    EXPECT_FALSE(threeToOne == RangeZGroup(5, 2, 1));
    EXPECT_FALSE(threeToOne == RangeZGroup(5, 3, 0));
    EXPECT_TRUE(threeToOne != RangeZGroup(5, 3, 0));
    EXPECT_FALSE(zeroToFour == threeToTwo);
}

TEST_F(Loop5, StatesAreThoseThatAreStored) {
    EXPECT_TRUE(empty.IsEmpty());
    EXPECT_FALSE(empty.IsFull());
    EXPECT_FALSE(full.IsEmpty());
    EXPECT_TRUE(full.IsFull());
    EXPECT_FALSE(threeToOne.IsEmpty());
    EXPECT_FALSE(threeToOne.IsFull());
    EXPECT_FALSE(zeroToFour.IsFull());  // Partial, although it holds every element.
}

TEST_F(Loop5, IsValidWithBothLimitsInTheLoop) {
    EXPECT_TRUE(threeToOne.IsValid());
    EXPECT_TRUE(empty.IsValid());
    EXPECT_TRUE(full.IsValid());
    EXPECT_FALSE(Raw(5, 5, 1, kPartial).IsValid());
    EXPECT_FALSE(Raw(5, 1, 5, kPartial).IsValid());
    EXPECT_FALSE(Raw(5, -1, 1, kPartial).IsValid());
    EXPECT_FALSE(Raw(5, 1, -1, kPartial).IsValid());
    EXPECT_FALSE(Raw(5, 1, 5, kEmpty).IsValid());
    EXPECT_FALSE(Raw(5, 1, 5, kFull).IsValid());
}

TEST_F(Loop5, NegativeLimitsAreValidInAGroupOfRankOne) {
    EXPECT_TRUE(Raw(1, -1, -5, kPartial).IsValid());
    EXPECT_FALSE(Raw(1, 1, 0, kPartial).IsValid());
    EXPECT_FALSE(Raw(0, 0, 0, kPartial).IsValid());
    EXPECT_FALSE(Raw(0, -1, -1, kPartial).IsValid());
}

TEST_F(Loop5, CountsItsElements) {
    EXPECT_EQ(empty.GetCount(), 0);
    EXPECT_EQ(full.GetCount(), 5);
    EXPECT_EQ(two.GetCount(), 1);
    EXPECT_EQ(oneToThree.GetCount(), 3);
    EXPECT_EQ(threeToOne.GetCount(), 4);
    EXPECT_EQ(zeroToFour.GetCount(), 5);
    EXPECT_EQ(threeToTwo.GetCount(), 5);
}

TEST_F(Loop5, CountOfLimitsOutsideOfTheLoopAddsTheRankOnce) {
    EXPECT_EQ(Raw(5, 0, 9, kPartial).GetCount(), 10);
    EXPECT_EQ(Raw(5, 9, 0, kPartial).GetCount(), -3);
}

TEST_F(Loop5, WalksFromItsStart) {
    EXPECT_THAT(Walk(empty), IsEmpty());
    EXPECT_THAT(Walk(two), ElementsAre(2));
    EXPECT_THAT(Walk(oneToThree), ElementsAre(1, 2, 3));
    EXPECT_THAT(Walk(threeToOne), ElementsAre(3, 4, 0, 1));
    EXPECT_THAT(Walk(threeToTwo), ElementsAre(3, 4, 0, 1, 2));
}

TEST_F(Loop5, FullRunIsWalkedFromZeroWhateverItsFirstLimit) {
    EXPECT_THAT(Walk(full), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(Walk(Raw(5, 3, 1, kFull)), ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(Loop5, GetOfABadIndexIsMinusOne) {
    EXPECT_EQ(threeToOne.Get(3), 1);
    EXPECT_EQ(threeToOne.Get(4), -1);
    EXPECT_EQ(threeToOne.Get(-1), -1);
    EXPECT_EQ(full.Get(5), -1);
    EXPECT_EQ(full.Get(-1), -1);
    EXPECT_EQ(empty.Get(0), -1);
}

TEST_F(Loop5, GetEndMakesAnElementOfALimitWhateverTheState) {
    ZGroup end(9, 8);
    ++end;
    threeToOne.GetEnd(0, end);
    EXPECT_EQ(end.GetRank(), 5);
    EXPECT_EQ(static_cast<int>(end), 3);
    EXPECT_EQ(end.GetIncrementState(), ZGroup::eIncremNone);
    threeToOne.GetEnd(1, end);
    EXPECT_EQ(static_cast<int>(end), 1);
    threeToOne.GetEnd(200, end);
    EXPECT_EQ(static_cast<int>(end), 1);
    Raw(5, 9, -1, kEmpty).GetEnd(0, end);
    EXPECT_EQ(static_cast<int>(end), 4);
    Raw(5, 9, -1, kEmpty).GetEnd(1, end);
    EXPECT_EQ(static_cast<int>(end), 4);
}

TEST_F(Loop5, HoldsTheElementsOfItsRun) {
    EXPECT_THAT(Members(empty), IsEmpty());
    EXPECT_THAT(Members(full), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(Members(two), ElementsAre(2));
    EXPECT_THAT(Members(oneToThree), ElementsAre(1, 2, 3));
    EXPECT_THAT(Members(threeToOne), ElementsAre(0, 1, 3, 4));
    EXPECT_THAT(Members(zeroToFour), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(Members(threeToTwo), ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(Loop5, InBringsTheNumberIntoTheLoop) {
    EXPECT_TRUE(oneToThree.In(7));
    EXPECT_TRUE(oneToThree.In(-2));
    EXPECT_FALSE(oneToThree.In(10));
    EXPECT_FALSE(oneToThree.In(-1));
    EXPECT_FALSE(oneToThree.In(-8));  // -3 is no element.
    EXPECT_TRUE(full.In(-8));
}

TEST_F(Loop5, InBringsTheLimitsIntoTheLoopFromHoweverFar) {
    EXPECT_TRUE(Raw(5, -9, 13, kPartial).In(2));
    EXPECT_FALSE(Raw(5, -9, 13, kPartial).In(4));
}

TEST_F(Loop5, InOfASingleElementGroup) {
    EXPECT_TRUE(RangeZGroup(1, 0, 0).In(0));
    EXPECT_TRUE(RangeZGroup(1, 0, 0).In(17));
    EXPECT_FALSE(Empty(1).In(0));
}

TEST_F(Loop5, ComplementRunsFromBehindTheLastToBeforeTheFirst) {
    RangeZGroup out;
    threeToOne.GetComplimentary(out);
    EXPECT_THAT(out, IsRun(5, 2, 2, kPartial));
    oneToThree.GetComplimentary(out);
    EXPECT_THAT(out, IsRun(5, 4, 0, kPartial));
    two.GetComplimentary(out);
    EXPECT_THAT(out, IsRun(5, 3, 1, kPartial));
}

TEST_F(Loop5, ComplementOfFullIsEmptyAndOfEmptyFull) {
    RangeZGroup out;
    full.GetComplimentary(out);
    EXPECT_THAT(out, IsRun(5, 1, 4, kEmpty));
    empty.GetComplimentary(out);
    EXPECT_THAT(out, IsRun(5, 1, 4, kFull));
}

TEST_F(Loop5, ComplementOfAPartialRunOfEveryElementHoldsEveryElementToo) {
    RangeZGroup out;
    zeroToFour.GetComplimentary(out);
    EXPECT_THAT(out, IsRun(5, 0, 4, kPartial));
    threeToTwo.GetComplimentary(out);
    EXPECT_THAT(out, IsRun(5, 3, 2, kPartial));
}

TEST_F(Loop5, ComplementCanBeStoredIntoTheRunItself) {
    threeToOne.GetComplimentary(threeToOne);
    EXPECT_THAT(threeToOne, IsRun(5, 2, 2, kPartial));
}

TEST_F(Loop5, ComplementOfLimitsAtTheEndOfTheIntegersWrapsRound) {
    RangeZGroup out;
    Raw(5, kLowest, kHighest, kPartial).GetComplimentary(out);
    EXPECT_THAT(out, IsRun(5, -3, 2, kPartial));
}

// Moving a limit.

struct Move {
    unsigned char i;
    int d;
    int first, last;
    RangeS1::EState state;
};

// Of the run 3, 4, 0 in a loop of five: count 3, gap 2.
const Move kMoves[] = {
    {1, 0, 3, 0, kPartial},     {0, 0, 3, 0, kPartial},      {1, 1, 3, 1, kPartial},
    {1, 2, 3, 2, kFull},        {1, 3, 3, 3, kFull},         {1, 6, 3, 1, kFull},
    {0, -1, 2, 0, kPartial},    {0, -2, 1, 0, kFull},        {0, -3, 0, 0, kFull},
    {0, -9, -1, 0, kFull},      {1, -1, 3, 4, kPartial},     {1, -2, 3, 3, kPartial},
    {1, -3, 3, 2, kEmpty},      {1, -4, 3, 1, kEmpty},       {1, -7, 3, -2, kEmpty},
    {0, 1, 4, 0, kPartial},     {0, 2, 0, 0, kPartial},      {0, 3, 1, 0, kEmpty},
    {0, 9, 2, 0, kEmpty},       {7, 1, 3, 1, kPartial},      {7, -3, 3, 2, kEmpty},
    {1, kHighest, 3, 2, kFull}, {1, kLowest, 3, -3, kEmpty},
};

TEST_F(Loop5, MoveEndFollowsTheTable) {
    for (const Move& move : kMoves) {
        SCOPED_TRACE(testing::Message() << "limit " << int{move.i} << " by " << move.d);
        RangeZGroup run(5, 3, 0);
        run.MoveEnd(move.i, move.d);
        EXPECT_THAT(run, IsRun(5, move.first, move.last, move.state));
    }
}

TEST_F(Loop5, ExtendingByTheGapGivesTheFullRun) {
    threeToOne.MoveEnd(1, 1);
    EXPECT_THAT(threeToOne, IsRun(5, 3, 2, kFull));
    RangeZGroup run(5, 3, 1);
    run.MoveEnd(0, -1);
    EXPECT_THAT(run, IsRun(5, 2, 1, kFull));
}

TEST_F(Loop5, ShorteningByTheCountGivesTheEmptyRun) {
    threeToOne.MoveEnd(0, 4);
    EXPECT_THAT(threeToOne, IsRun(5, 2, 1, kEmpty));
    RangeZGroup run(5, 3, 1);
    run.MoveEnd(1, -4);
    EXPECT_THAT(run, IsRun(5, 3, 2, kEmpty));
}

TEST_F(Loop5, AnyExtensionOfAPartialRunOfEveryElementGivesTheFullRun) {
    zeroToFour.MoveEnd(1, 1);
    EXPECT_THAT(zeroToFour, IsRun(5, 0, 0, kFull));
}

TEST_F(Loop5, MoveEndByNothingLeavesStateAndLimits) {
    const unsigned char limits[] = {0, 1};
    for (const unsigned char i : limits) {
        zeroToFour.MoveEnd(i, 0);
        EXPECT_THAT(zeroToFour, IsRun(5, 0, 4, kPartial));
        RangeZGroup outside = Raw(5, 7, 13, kPartial);
        outside.MoveEnd(i, 0);
        EXPECT_THAT(outside, IsRun(5, 7, 13, kPartial));
    }
}

TEST_F(Loop5, MoveEndLeavesARunThatIsNotPartial) {
    full.MoveEnd(1, -2);
    EXPECT_THAT(full, IsRun(5, 0, 0, kFull));
    empty.MoveEnd(1, 2);
    EXPECT_THAT(empty, IsRun(5, 0, 0, kEmpty));
}

// Laws.

int AnyRank() {
    return *rc::gen::inRange(2, 40);
}

RangeZGroup AnyRun(int rank) {
    RangeZGroup run(rank, *rc::gen::inRange(0, rank), *rc::gen::inRange(0, rank));
    run.m_eState = *rc::gen::element(kFull, kEmpty, kPartial, kPartial, kPartial);
    return run;
}

TEST(RangeZGroupLaws, ARunAndItsComplementShareNoElementAndMissNone) {
    EXPECT_TRUE(rc::check("complement", [] {
        const RangeZGroup run = AnyRun(AnyRank());
        RC_PRE((run.IsFull() || run.GetCount() < run.GetRank()));
        RangeZGroup complement;
        run.GetComplimentary(complement);
        for (int i = 0; i < run.GetRank(); ++i) RC_ASSERT(run.In(i) != complement.In(i));
        RC_ASSERT(run.GetCount() + complement.GetCount() == run.GetRank());
    }));
}

TEST(RangeZGroupLaws, TheComplementOfTheComplementIsTheRun) {
    EXPECT_TRUE(rc::check("twice", [] {
        const RangeZGroup run = AnyRun(AnyRank());
        RangeZGroup twice;
        run.GetComplimentary(twice);
        twice.GetComplimentary(twice);
        RC_ASSERT(twice == run);
        RC_ASSERT(twice.m_eState == run.m_eState);
    }));
}

TEST(RangeZGroupLaws, AWalkVisitsEachElementOnce) {
    EXPECT_TRUE(rc::check("walk", [] {
        const RangeZGroup run = AnyRun(AnyRank());
        std::vector<int> elements = Walk(run);
        RC_ASSERT(static_cast<int>(elements.size()) == run.GetCount());
        std::sort(elements.begin(), elements.end());
        RC_ASSERT(elements == Members(run));
    }));
}

TEST(RangeZGroupLaws, PartialRunsHoldWhatSegmentsContain) {
    EXPECT_TRUE(rc::check("segment", [] {
        const int rank = *rc::gen::inRange(1, 40);
        const int first = *rc::gen::inRange(0, rank);
        const int last = *rc::gen::inRange(0, rank);
        CyclSegment segment(rank);
        segment.Set(first, last);
        const RangeZGroup run(rank, first, last);
        for (int i = 0; i < rank; ++i) RC_ASSERT(run.In(i) == segment.Contains(ZGroup(rank, i)));
    }));
}

TEST(RangeZGroupLaws, MovingALimitAddsOrTakesThatManyElements) {
    EXPECT_TRUE(rc::check("move", [] {
        const int rank = AnyRank();
        RangeZGroup run(rank, *rc::gen::inRange(0, rank), *rc::gen::inRange(0, rank));
        const int count = run.GetCount();
        const unsigned char i = *rc::gen::element<unsigned char>(0, 1);
        const int d = *rc::gen::inRange(-rank, rank);
        RC_PRE(d != 0);
        run.MoveEnd(i, d);
        const int expected = count + (i != 0 ? d : -d);
        RC_ASSERT(run.GetCount() == std::clamp(expected, 0, rank));
        RC_ASSERT(run.IsEmpty() == (expected <= 0));
        RC_ASSERT(run.IsFull() == (expected >= rank && expected > count));
    }));
}

TEST(RangeZGroupLaws, AShiftedRunHoldsTheShiftedElements) {
    EXPECT_TRUE(rc::check("shift", [] {
        const int rank = AnyRank();
        const RangeZGroup run = AnyRun(rank);
        const int d = *rc::gen::inRange(0, rank);
        RangeZGroup shifted(run);
        shifted += d;
        for (int i = 0; i < rank; ++i) RC_ASSERT(run.In(i) == shifted.In(i + d));
        shifted -= d;
        RC_ASSERT(shifted == run);
    }));
}

}  // namespace
}  // namespace ZT
