// Runs of a cyclic group of integers.

#include <zt/numerics/CyclSegment.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <zt/frame/VirtualTable_test.hpp>

#include <cstddef>
#include <limits>
#include <new>
#include <type_traits>
#include <vector>

namespace ZT {

void PrintTo(const CyclSegment& run, std::ostream* os) {
    *os << run.a << " to " << run.b << " of rank " << run.rank;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto kNone = ZGroup::eIncremNone;
constexpr auto kUp = ZGroup::eIncremUp;
constexpr auto kDown = ZGroup::eIncremDown;

MATCHER_P3(IsRun, first, last, order, "") {
    return arg.a == first && arg.b == last && arg.rank == order;
}

// A run with ends that need not lie in the loop.
CyclSegment Raw(int rank, int first, int last) {
    CyclSegment run(rank);
    run.a = first;
    run.b = last;
    return run;
}

ZGroup Stepped(int rank, int value, ZGroup::EIncremState state) {
    ZGroup g(rank);
    g.m_value = value;
    g.m_eIncrem = state;
    return g;
}

std::vector<int> Elements(const CyclSegment& run, ZGroup::EIncremState state = kNone) {
    std::vector<int> elements;
    for (int i = 0; i < run.rank; ++i) {
        if (run.Contains(Stepped(run.rank, i, state))) elements.push_back(i);
    }
    return elements;
}

TEST(CyclSegment, FieldsFollowTheTableInOrder) {
    EXPECT_EQ(offsetof(CyclSegment, a), 8u);
    EXPECT_EQ(offsetof(CyclSegment, b), 12u);
    EXPECT_EQ(offsetof(CyclSegment, rank), 16u);
    EXPECT_EQ(sizeof(CyclSegment), 24u);
}

struct Counted : CyclSegment {
    explicit Counted(int* ended) : m_ended(ended) {}
    ~Counted() override { ++*m_ended; }
    int* m_ended;
};

TEST(CyclSegment, DestructorIsTheFirstVirtualOperation) {
    EXPECT_TRUE(std::has_virtual_destructor_v<CyclSegment>);
    int ended = 0;
    alignas(Counted) std::byte memory[sizeof(Counted)];
    CallSlot<void>(new (memory) Counted(&ended), 0);
    EXPECT_EQ(ended, 1);
}

// Making and storing.

TEST(CyclSegment, NewRunIsEmptyWithRankTwo) {
    EXPECT_THAT(CyclSegment(), IsRun(0, -1, 2));
    EXPECT_TRUE(CyclSegment().IsEmpty());
}

TEST(CyclSegment, NewRunOfARankIsEmpty) {
    EXPECT_THAT(CyclSegment(5), IsRun(0, -1, 5));
    EXPECT_TRUE(CyclSegment(5).IsEmpty());
}

TEST(CyclSegment, CopyTakesAllFields) {
    const CyclSegment run = Raw(5, 7, -3);
    EXPECT_THAT(CyclSegment(run), IsRun(7, -3, 5));
    CyclSegment target(9);
    target = run;
    EXPECT_THAT(target, IsRun(7, -3, 5));
}

TEST(CyclSegment, SetBringsTheEndsIntoTheLoopFromHoweverFar) {
    CyclSegment run(5);
    run.Set(-1, 7);
    EXPECT_THAT(run, IsRun(4, 2, 5));
    run.Set(3, 1);
    EXPECT_THAT(run, IsRun(3, 1, 5));
    run.Set(-7, -10);
    EXPECT_THAT(run, IsRun(3, 0, 5));
    run.Set(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    EXPECT_THAT(run, IsRun(2, 2, 5));
}

TEST(CyclSegment, SetLiftsAnyNegativeEndWhereTheNormalFormLiftsOneTurn) {
    CyclSegment run(5);
    run.SetA(-7);
    EXPECT_EQ(run.a, 3);
    EXPECT_EQ(ZGroup::Factorize(5, -7), -2);
}

TEST(CyclSegment, SetAAndSetBStoreOneEndEach) {
    CyclSegment run = Raw(5, 3, 1);
    run.SetA(-2);
    EXPECT_THAT(run, IsRun(3, 1, 5));
    run.SetA(9);
    EXPECT_THAT(run, IsRun(4, 1, 5));
    run.SetB(-1);
    EXPECT_THAT(run, IsRun(4, 4, 5));
    run.SetB(11);
    EXPECT_THAT(run, IsRun(4, 1, 5));
}

TEST(CyclSegment, SetOfElementsStoresPlainRemaindersWithoutLifting) {
    CyclSegment run(5);
    run.Set(Stepped(5, -1, kNone), Stepped(5, 7, kNone));
    EXPECT_THAT(run, IsRun(-1, 2, 5));
    run.Set(Stepped(5, -7, kNone), Stepped(5, -5, kNone));
    EXPECT_THAT(run, IsRun(-2, 0, 5));
}

TEST(CyclSegment, SetOfElementsReducesByTheRankOfTheRun) {
    CyclSegment run(5);
    run.Set(ZGroup(10, 8), ZGroup(3, 2));
    EXPECT_THAT(run, IsRun(3, 2, 5));
}

TEST(CyclSegment, AnElementWhoseStepFailedMakesTheRunEmpty) {
    ZGroup failed(1);
    failed++;
    CyclSegment run(5);
    run.Set(ZGroup(5, 2), failed);
    EXPECT_THAT(run, IsRun(2, -1, 5));
    EXPECT_TRUE(run.IsEmpty());
}

TEST(CyclSegment, ResetKeepsTheRank) {
    CyclSegment run = Raw(5, 3, 1);
    run.Reset();
    EXPECT_THAT(run, IsRun(0, -1, 5));
}

TEST(CyclSegment, SetEmptyKeepsTheStart) {
    CyclSegment run = Raw(5, 3, 1);
    run.SetEmpty(true);
    EXPECT_THAT(run, IsRun(3, -1, 5));
}

TEST(CyclSegment, SetEmptyFalseMakesOneElementOfAnEmptyRun) {
    CyclSegment run = Raw(5, 3, -1);
    run.SetEmpty(false);
    EXPECT_THAT(run, IsRun(3, 3, 5));
    EXPECT_THAT(Elements(run), ElementsAre(3));
    run = Raw(5, 2, -8);
    run.SetEmpty(false);
    EXPECT_THAT(run, IsRun(2, 2, 5));
}

TEST(CyclSegment, SetEmptyFalseLeavesARunThatIsNotEmpty) {
    CyclSegment run = Raw(5, 3, 1);
    run.SetEmpty(false);
    EXPECT_THAT(run, IsRun(3, 1, 5));
}

TEST(CyclSegment, SetFullRunsFromZeroToTheLastElement) {
    CyclSegment run = Raw(5, 3, 1);
    run.SetFull();
    EXPECT_THAT(run, IsRun(0, 4, 5));
    EXPECT_TRUE(run.IsFull());
    run = CyclSegment(2);
    run.SetFull();
    EXPECT_THAT(run, IsRun(0, 1, 2));
    EXPECT_TRUE(run.IsFull());
}

TEST(CyclSegment, SetFullInAGroupOfRankOneIsNotFull) {
    CyclSegment run(1);
    run.SetFull();
    EXPECT_THAT(run, IsRun(0, 0, 1));
    EXPECT_FALSE(run.IsFull());
    EXPECT_THAT(Elements(run), ElementsAre(0));
}

TEST(CyclSegment, SetRankLeavesTheEnds) {
    CyclSegment run = Raw(5, 3, 4);
    run.SetRank(3);
    EXPECT_THAT(run, IsRun(3, 4, 3));
}

TEST(CyclSegment, FactorBringsTheEndsIntoTheLoop) {
    CyclSegment run = Raw(3, 3, 4);
    run.Factor();
    EXPECT_THAT(run, IsRun(0, 1, 3));
    run = Raw(3, -8, -9);
    run.Factor();
    EXPECT_THAT(run, IsRun(1, 0, 3));
}

TEST(CyclSegment, FactorOfAnEmptyRunEndsItsEmptiness) {
    CyclSegment run(5);
    run.Factor();
    EXPECT_THAT(run, IsRun(0, 4, 5));
    EXPECT_TRUE(run.IsFull());
}

// States.

TEST(CyclSegment, ANegativeEndMeansEmpty) {
    EXPECT_TRUE(Raw(5, 0, -1).IsEmpty());
    EXPECT_TRUE(Raw(5, 0, -2).IsEmpty());
    EXPECT_FALSE(Raw(5, 0, 0).IsEmpty());
    EXPECT_FALSE(Raw(5, -1, 0).IsEmpty());
}

TEST(CyclSegment, IsValidWithBothEndsInTheLoopOrTheEmptyEnd) {
    EXPECT_TRUE(Raw(5, 0, 4).IsValid());
    EXPECT_TRUE(Raw(5, 4, 0).IsValid());
    EXPECT_TRUE(Raw(5, 3, -1).IsValid());
    EXPECT_FALSE(Raw(5, -1, 3).IsValid());
    EXPECT_FALSE(Raw(5, 3, -2).IsValid());
    EXPECT_FALSE(Raw(5, 5, 3).IsValid());
    EXPECT_FALSE(Raw(5, 3, 5).IsValid());
    EXPECT_FALSE(Raw(0, 0, -1).IsValid());
    EXPECT_FALSE(Raw(-1, 0, -1).IsValid());
}

TEST(CyclSegment, IsFullWhenTheStartFollowsTheEnd) {
    for (int first = 0; first < 5; ++first) {
        for (int last = 0; last < 5; ++last) {
            SCOPED_TRACE(testing::Message() << first << " to " << last);
            EXPECT_EQ(Raw(5, first, last).IsFull(), (last + 1) % 5 == first);
        }
    }
    EXPECT_FALSE(Raw(5, 0, -1).IsFull());
}

TEST(CyclSegment, IsFullInAGroupOfRankTwoWithTwoDifferentEnds) {
    EXPECT_TRUE(Raw(2, 0, 1).IsFull());
    EXPECT_TRUE(Raw(2, 1, 0).IsFull());
    EXPECT_FALSE(Raw(2, 0, 0).IsFull());
    EXPECT_FALSE(Raw(2, 1, 1).IsFull());
}

TEST(CyclSegment, IsFullComparesTheNormalFormsOfTheEnds) {
    EXPECT_TRUE(Raw(5, 5, 4).IsFull());
    EXPECT_TRUE(Raw(5, 3, 7).IsFull());
    EXPECT_TRUE(Raw(5, -2, 2).IsFull());
    EXPECT_TRUE(Raw(2, 4, 1).IsFull());
    EXPECT_FALSE(Raw(2, 3, 1).IsFull());
}

// Containment. The family: every run of a loop of five and their elements.

TEST(CyclSegment, EmptyRunContainsNothing) {
    EXPECT_THAT(Elements(CyclSegment(5)), IsEmpty());
    EXPECT_THAT(Elements(Raw(5, 3, -1), kUp), IsEmpty());
    EXPECT_THAT(Elements(Raw(5, 3, -4), kDown), IsEmpty());
}

TEST(CyclSegment, RunsContainTheElementsBetweenTheirEnds) {
    EXPECT_THAT(Elements(Raw(5, 0, 0)), ElementsAre(0));
    EXPECT_THAT(Elements(Raw(5, 0, 1)), ElementsAre(0, 1));
    EXPECT_THAT(Elements(Raw(5, 0, 3)), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(Elements(Raw(5, 0, 4)), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(Elements(Raw(5, 1, 3)), ElementsAre(1, 2, 3));
    EXPECT_THAT(Elements(Raw(5, 2, 2)), ElementsAre(2));
    EXPECT_THAT(Elements(Raw(5, 1, 4)), ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(Elements(Raw(5, 4, 4)), ElementsAre(4));
}

TEST(CyclSegment, RunsWrapPastTheLastElement) {
    EXPECT_THAT(Elements(Raw(5, 3, 1)), ElementsAre(0, 1, 3, 4));
    EXPECT_THAT(Elements(Raw(5, 4, 0)), ElementsAre(0, 4));
    EXPECT_THAT(Elements(Raw(5, 4, 2)), ElementsAre(0, 1, 2, 4));
    EXPECT_THAT(Elements(Raw(5, 3, 0)), ElementsAre(0, 3, 4));
    EXPECT_THAT(Elements(Raw(5, 3, 2)), ElementsAre(0, 1, 2, 3, 4));
}

TEST(CyclSegment, StateDoesNotMatterOnAPartialRun) {
    for (const auto state : {kNone, kUp, kDown}) {
        EXPECT_THAT(Elements(Raw(5, 3, 1), state), ElementsAre(0, 1, 3, 4));
        EXPECT_THAT(Elements(Raw(5, 1, 3), state), ElementsAre(1, 2, 3));
    }
}

TEST(CyclSegment, UpwardWalkerStopsAtTheStartOfAFullRun) {
    EXPECT_THAT(Elements(Raw(5, 3, 2), kUp), ElementsAre(0, 1, 2, 4));
    EXPECT_THAT(Elements(Raw(5, 0, 4), kUp), ElementsAre(1, 2, 3, 4));
}

TEST(CyclSegment, DownwardWalkerStopsAtTheEndOfAFullRun) {
    EXPECT_THAT(Elements(Raw(5, 3, 2), kDown), ElementsAre(0, 1, 3, 4));
    EXPECT_THAT(Elements(Raw(5, 0, 4), kDown), ElementsAre(0, 1, 2, 3));
}

TEST(CyclSegment, WalkerOnAFullRunStopsAtTheEndAsItIsStoredAndNotAtItsNormalForm) {
    EXPECT_TRUE(Raw(5, 5, 4).Contains(Stepped(5, 0, kUp)));
    EXPECT_FALSE(Raw(5, 5, 4).Contains(Stepped(5, 5, kUp)));
    EXPECT_TRUE(Raw(5, 3, 7).Contains(Stepped(5, 2, kDown)));
    EXPECT_FALSE(Raw(5, 3, 7).Contains(Stepped(5, 7, kDown)));
}

TEST(CyclSegment, FullRunContainsWhateverHasNotBeenStepped) {
    const CyclSegment full = Raw(5, 3, 2);
    EXPECT_TRUE(full.Contains(Stepped(5, -1, kNone)));
    EXPECT_TRUE(full.Contains(Stepped(5, 17, kNone)));
    EXPECT_FALSE(Raw(5, 3, 1).Contains(Stepped(5, -1, kNone)));
}

TEST(CyclSegment, EndsOfAPartialRunAreTakenByTheRankOfTheElement) {
    const CyclSegment run = Raw(10, 3, 6);
    EXPECT_TRUE(run.Contains(ZGroup(10, 5)));
    // In a group of 5 the run from 3 to 6 goes from 3 to 1.
    EXPECT_TRUE(run.Contains(ZGroup(5, 0)));
    EXPECT_FALSE(run.Contains(ZGroup(5, 2)));
}

TEST(CyclSegment, AWalkOfAFullRunUpwardsTakesOneTurn) {
    const CyclSegment full = Raw(5, 3, 2);
    std::vector<int> visited;
    for (ZGroup g(5, full.a); full.Contains(g); ++g) visited.push_back(g);
    EXPECT_THAT(visited, ElementsAre(3, 4, 0, 1, 2));
}

TEST(CyclSegment, AWalkOfAFullRunDownwardsTakesOneTurn) {
    const CyclSegment full = Raw(5, 3, 2);
    std::vector<int> visited;
    for (ZGroup g(5, full.b); full.Contains(g); --g) visited.push_back(g);
    EXPECT_THAT(visited, ElementsAre(2, 1, 0, 4, 3));
}

// Laws.

CyclSegment AnyRun(int rank) {
    CyclSegment run(rank);
    run.Set(*rc::gen::inRange(0, rank), *rc::gen::inRange(0, rank));
    return run;
}

TEST(CyclSegmentLaws, AWalkVisitsEachElementOnce) {
    EXPECT_TRUE(rc::check("a walk", [](bool up) {
        const int rank = *rc::gen::inRange(2, 40);
        const CyclSegment run = AnyRun(rank);
        std::vector<int> visits(static_cast<std::size_t>(rank));
        for (ZGroup g(rank, up ? run.a : run.b); run.Contains(g); up ? ++g : --g) {
            ++visits[static_cast<std::size_t>(g)];
        }
        for (int i = 0; i < rank; ++i) {
            const int expected = run.Contains(ZGroup(rank, i)) ? 1 : 0;
            RC_ASSERT(visits[static_cast<std::size_t>(i)] == expected);
        }
    }));
}

TEST(CyclSegmentLaws, ARunAndTheGapBetweenItsEndsShareNoElementAndMissNone) {
    EXPECT_TRUE(rc::check("a gap", [] {
        const int rank = *rc::gen::inRange(2, 40);
        const CyclSegment run = AnyRun(rank);
        RC_PRE(!run.IsFull());
        CyclSegment gap(rank);
        gap.Set(run.b + 1, run.a - 1);
        for (int i = 0; i < rank; ++i) {
            RC_ASSERT(run.Contains(ZGroup(rank, i)) != gap.Contains(ZGroup(rank, i)));
        }
    }));
}

TEST(CyclSegmentLaws, EndsAreInTheRun) {
    EXPECT_TRUE(rc::check("ends", [] {
        const int rank = *rc::gen::inRange(1, 40);
        const CyclSegment run = AnyRun(rank);
        RC_ASSERT(run.IsValid());
        RC_ASSERT(run.Contains(ZGroup(rank, run.a)));
        RC_ASSERT(run.Contains(ZGroup(rank, run.b)));
    }));
}

TEST(CyclSegmentLaws, MembershipOfAnElementIsThatOfTheRun) {
    EXPECT_TRUE(rc::check("membership", [] {
        const int rank = *rc::gen::inRange(1, 40);
        const int first = *rc::gen::inRange(-100, 100);
        const int last = *rc::gen::inRange(-100, 100);
        const auto state = *rc::gen::element(kNone, kUp, kDown);
        const ZGroup g = Stepped(rank, *rc::gen::inRange(0, rank), state);
        CyclSegment run(rank);
        run.Set(first, last);
        RC_ASSERT(g.InRange(first, last) == run.Contains(g));
    }));
}

}  // namespace
}  // namespace ZT
