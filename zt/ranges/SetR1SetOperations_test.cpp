// Union, intersection, complement and clean-up of sets of intervals.

#include <zt/ranges/SetR1.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zt/ranges/SetFamily_test.h>

#include <cmath>

namespace ZT {
namespace {

using namespace testing_support;

struct SetOperations : testing::Test {
    // [0, 1] and [2, 3], united with an interval.
    static SetR1 United(const RangeR1& r) {
        SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}});
        set.Unite(r);
        return set;
    }
    static SetR1 Complement(const SetR1& set, const RangeR1& within) {
        SetR1 out = SetOf({{50.0, 60.0}});
        set.GetComplimentarySet(within, out);
        return out;
    }
    const double aboveOne = std::nextafter(1.0, 2.0);
};

// --- union

TEST_F(SetOperations, UniteWithTheEmptySetAppends) {
    SetR1 set;
    set.Unite(RangeR1(1.0, 0.0));
    EXPECT_THAT(set, Is({{1.0, 0.0}}));
}

TEST_F(SetOperations, UniteBehindTheLastMemberAppends) {
    EXPECT_THAT(United({4.0, 5.0}), Is({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}}));
    EXPECT_THAT(United({std::nextafter(3.0, 4.0), 5.0}),
                Is({{0.0, 1.0}, {2.0, 3.0}, {std::nextafter(3.0, 4.0), 5.0}}));
    EXPECT_THAT(United(External(4.0, 5.0)), Is({{0.0, 1.0}, {2.0, 3.0}, External(4.0, 5.0)}));
}

TEST_F(SetOperations, UniteInAGapInserts) {
    EXPECT_THAT(United({1.5, 1.8}), Is({{0.0, 1.0}, {1.5, 1.8}, {2.0, 3.0}}));
    EXPECT_THAT(United({-2.0, -1.0}), Is({{-2.0, -1.0}, {0.0, 1.0}, {2.0, 3.0}}));
    EXPECT_THAT(United(External(1.5, 1.8)), Is({{0.0, 1.0}, External(1.5, 1.8), {2.0, 3.0}}));
}

TEST_F(SetOperations, UniteWithinAMemberChangesNothing) {
    for (const RangeR1& r : {RangeR1(0.25, 0.75), RangeR1(0.0, 1.0), RangeR1(0.5, 0.5)}) {
        EXPECT_THAT(United(r), Is({{0.0, 1.0}, {2.0, 3.0}}));
    }
}

TEST_F(SetOperations, UniteBridgesMembers) {
    EXPECT_THAT(United({0.5, 2.5}), Is({{0.0, 3.0}}));
    EXPECT_THAT(United({0.0, 3.0}), Is({{0.0, 3.0}}));
    EXPECT_THAT(United({1.0, 2.0}), Is({{0.0, 3.0}}));
}

TEST_F(SetOperations, UniteLowersTheStartOfOneMember) {
    EXPECT_THAT(United({-1.0, 0.5}), Is({{-1.0, 1.0}, {2.0, 3.0}}));
    EXPECT_THAT(United({-1.0, 0.0}), Is({{-1.0, 1.0}, {2.0, 3.0}}));
    EXPECT_THAT(United({1.5, 2.0}), Is({{0.0, 1.0}, {1.5, 3.0}}));
    EXPECT_THAT(United({aboveOne, 2.5}), Is({{0.0, 1.0}, {aboveOne, 3.0}}));
}

TEST_F(SetOperations, UnitePastTheEndWidensAndCuts) {
    EXPECT_THAT(United({0.5, 5.0}), Is({{0.0, 5.0}}));
    EXPECT_THAT(United({-1.0, 5.0}), Is({{-1.0, 5.0}}));
    EXPECT_THAT(United({2.5, 5.0}), Is({{0.0, 1.0}, {2.0, 5.0}}));
    EXPECT_THAT(United({3.0, 5.0}), Is({{0.0, 1.0}, {2.0, 5.0}}));
}

TEST_F(SetOperations, UniteAcrossAGapLosesWhatLiesBelowTheFirstMember) {
    EXPECT_THAT(United({-1.0, 2.5}), Is({{0.0, 3.0}}));
}

TEST_F(SetOperations, UniteIntoAGapRemovesTheMemberAboveIt) {
    EXPECT_THAT(United({0.5, 1.5}), Is({{0.0, 1.5}}));
    EXPECT_THAT(United({-1.0, 1.5}), Is({{0.0, 1.5}}));
}

TEST_F(SetOperations, UniteRemovesAllMembersBetween) {
    SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}, {6.0, 7.0}, {8.0, 9.0}});
    set.Unite(RangeR1(2.5, 6.5));
    EXPECT_THAT(set, Is({{0.0, 1.0}, {2.0, 7.0}, {8.0, 9.0}}));
    set.Unite(RangeR1(0.5, 7.5));
    EXPECT_THAT(set, Is({{0.0, 7.5}}));
}

TEST_F(SetOperations, UniteComparesToTheBit) {
    EXPECT_THAT(United({1.0, 1.2}), Is({{0.0, 1.2}}));
    EXPECT_THAT(United({aboveOne, 1.2}), Is({{0.0, 1.0}, {aboveOne, 1.2}, {2.0, 3.0}}));
    const double belowTwo = std::nextafter(2.0, 1.0);
    EXPECT_THAT(United({1.5, belowTwo}), Is({{0.0, 1.0}, {1.5, belowTwo}, {2.0, 3.0}}));
}

TEST_F(SetOperations, UniteInReverseThatReachesAMemberBelowChangesNothing) {
    EXPECT_THAT(United({2.5, 0.5}), Is({{0.0, 1.0}, {2.0, 3.0}}));
    EXPECT_THAT(United({1.5, 0.5}), Is({{0.0, 1.0}, {2.0, 3.0}}));
    EXPECT_THAT(United({2.5, -1.0}), Is({{0.0, 1.0}, {2.0, 3.0}}));
}

TEST_F(SetOperations, UniteInReverseOtherwiseTakesTheSameSteps) {
    EXPECT_THAT(United({5.0, 0.5}), Is({{0.0, 1.0}, {2.0, 3.0}, {5.0, 0.5}}));
    EXPECT_THAT(United({2.5, 1.5}), Is({{0.0, 1.0}, {2.0, 3.0}}));
    EXPECT_THAT(United({1.8, 1.5}), Is({{0.0, 1.0}, {1.8, 1.5}, {2.0, 3.0}}));
    EXPECT_THAT(United(RangeR1()), Is({{0.0, 1.0}, {2.0, 3.0}, {1e307, -1e307}}));
}

TEST_F(SetOperations, UniteKeepsTheFlagOfTheMember) {
    SetR1 set = SetOf({External(0.0, 1.0), {2.0, 3.0}});
    set.Unite(External(2.5, 4.0));
    EXPECT_THAT(set, Is({External(0.0, 1.0), {2.0, 4.0}}));
    set.Unite(RangeR1(0.5, 9.0));
    EXPECT_THAT(set, Is({External(0.0, 9.0)}));
}

TEST_F(SetOperations, UniteTakesAMemberOfItsOwn) {
    SetR1 set = SetOf({{2.0, 3.0}, {0.0, 1.0}});
    set.Unite(set[1]);
    EXPECT_THAT(set, Is({{0.0, 1.0}, {2.0, 3.0}, {0.0, 1.0}}));
    set.Unite(set[2]);
    EXPECT_THAT(set, Is({{0.0, 1.0}, {2.0, 3.0}, {0.0, 1.0}}));
}

TEST_F(SetOperations, UniteOfSetsAddsMemberAfterMember) {
    SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}});
    set.Unite(SetOf({{5.0, 6.0}, {0.5, 2.5}}));
    EXPECT_THAT(set, Is({{0.0, 3.0}, {5.0, 6.0}}));
    set.Unite(SetR1());
    EXPECT_THAT(set, Is({{0.0, 3.0}, {5.0, 6.0}}));
    SetR1 other;
    other.Unite(set);
    EXPECT_THAT(other, IsSet(set));
}

TEST_F(SetOperations, UniteWithItselfChangesNothing) {
    SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}});
    set.Unite(set);
    EXPECT_THAT(set, Is({{0.0, 1.0}, {2.0, 3.0}}));
}

// --- intersection

TEST_F(SetOperations, IntersectCutsMembersAndRemovesWhatIsOutside) {
    SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}, {6.0, 7.0}});
    EXPECT_TRUE(set.Intersect(RangeR1(2.5, 4.5)));
    EXPECT_THAT(set, Is({{2.5, 3.0}, {4.0, 4.5}}));
}

TEST_F(SetOperations, IntersectKeepsAPointWhereRangesTouch) {
    SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}});
    EXPECT_TRUE(set.Intersect(RangeR1(1.0, 2.0 - 5e-11)));
    EXPECT_THAT(set, Is({{1.0, 1.0}, {2.0, 2.0 - 5e-11}}));
}

TEST_F(SetOperations, IntersectTellsThatNothingIsLeft) {
    SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}});
    EXPECT_FALSE(set.Intersect(RangeR1(1.2, 1.8)));
    EXPECT_TRUE(set.IsEmpty());
    EXPECT_FALSE(set.Intersect(RangeR1(0.0, 1.0)));
}

TEST_F(SetOperations, IntersectRemovesScatteredMembers) {
    SetR1 set = SetOf({{9.0, 9.5}, {0.0, 1.0}, {8.0, 8.5}, {7.0, 7.5}, {0.5, 2.0}, {3.0, 4.0}});
    EXPECT_TRUE(set.Intersect(RangeR1(0.0, 2.0)));
    EXPECT_THAT(set, Is({{0.0, 1.0}, {0.5, 2.0}}));
}

TEST_F(SetOperations, IntersectTakesAMemberOfItsOwn) {
    SetR1 set = SetOf({{0.0, 1.0}, {0.5, 3.0}, {5.0, 6.0}});
    EXPECT_TRUE(set.Intersect(set[1]));
    EXPECT_THAT(set, Is({{0.5, 1.0}, {0.5, 3.0}}));
}

TEST_F(SetOperations, IntersectTakesTheFlagAsTheRangeDoes) {
    SetR1 set = SetOf({{0.0, 9.0}, {2.0, 3.0}});
    EXPECT_TRUE(set.Intersect(External(1.0, 4.0)));
    EXPECT_THAT(set, Is({External(1.0, 4.0), {2.0, 3.0}}));
}

// --- complement

TEST_F(SetOperations, ComplementOfTheEmptySetIsTheBounds) {
    EXPECT_THAT(Complement(SetR1(), {0.0, 1.0}), Is({{0.0, 1.0}}));
    EXPECT_THAT(Complement(SetOf({{4.0, 5.0}}), External(0.0, 1.0)), Is({External(0.0, 1.0)}));
}

TEST_F(SetOperations, ComplementOfACoveringSetIsEmpty) {
    EXPECT_THAT(Complement(SetOf({{-1.0, 2.0}}), {0.0, 1.0}), Is({}));
    EXPECT_THAT(Complement(SetOf({{0.0, 1.0}}), {0.0, 1.0}), Is({}));
}

TEST_F(SetOperations, ComplementIsTheGapsWithTheirEnds) {
    const SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}});
    EXPECT_THAT(Complement(set, {-1.0, 4.0}), Is({{-1.0, 0.0}, {1.0, 2.0}, {3.0, 4.0}}));
    EXPECT_THAT(Complement(set, {0.0, 4.0}), Is({{1.0, 2.0}, {3.0, 4.0}}));
    EXPECT_THAT(Complement(set, {-1.0, 3.0}), Is({{-1.0, 0.0}, {1.0, 2.0}}));
    EXPECT_THAT(Complement(set, {0.5, 2.5}), Is({{1.0, 2.0}}));
    EXPECT_THAT(Complement(set, {-1.0, 0.5}), Is({{-1.0, 0.0}}));
    EXPECT_THAT(set, Is({{0.0, 1.0}, {2.0, 3.0}}));
}

TEST_F(SetOperations, ComplementHasNoElementForAGapWithinTheToleranceOfTheBounds) {
    const SetR1 set = SetOf({{5e-11, 1.0 - 5e-11}});
    EXPECT_THAT(Complement(set, {0.0, 1.0}), Is({}));
    EXPECT_THAT(Complement(SetOf({{zToler, 1.0}}), {0.0, 1.0}), Is({}));
    EXPECT_THAT(Complement(SetOf({{-1.0, 0.0}}), {-1.0, zToler}), Is({}));
    EXPECT_THAT(Complement(SetOf({{2e-10, 1.0}}), {0.0, 1.0}), Is({{0.0, 2e-10}}));
    EXPECT_THAT(Complement(SetOf({{0.0, 1.0 - 2e-10}}), {0.0, 1.0}), Is({{1.0 - 2e-10, 1.0}}));
}

TEST_F(SetOperations, ComplementTakesInnerGapsFromTheFirstMemberOn) {
    const SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}, {5.0, 6.0}});
    // The bounds leave the first member out; the gap is still the one behind it.
    EXPECT_THAT(Complement(set, {1.5, 7.0}), Is({{1.5, 2.0}, {1.0, 2.0}, {6.0, 7.0}}));
    EXPECT_THAT(Complement(set, {-1.0, 4.0}), Is({{-1.0, 0.0}, {1.0, 2.0}, {3.0, 4.0}}));
}

TEST_F(SetOperations, ComplementKeepsTheFlagsOfTheElementsThatItSets) {
    const SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}});
    SetR1 out = SetOf({External(8.0, 9.0), {8.0, 9.0}});
    set.GetComplimentarySet(RangeR1(-1.0, 4.0), out);
    EXPECT_THAT(out, Is({External(-1.0, 0.0), {1.0, 2.0}, {3.0, 4.0}}));
}

TEST_F(SetOperations, ComplementOfTheEmptySetLeavesBoundsThatDifferByLessThanTheTolerance) {
    SetR1 out = SetOf({{5e-11, 1.0}});
    SetR1().GetComplimentarySet(RangeR1(0.0, 1.0), out);
    EXPECT_THAT(out, Is({{5e-11, 1.0}}));
}

TEST_F(SetOperations, ComplementMayReplaceTheSetItself) {
    SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}});
    set.GetComplimentarySet(RangeR1(-1.0, 4.0), set);
    EXPECT_THAT(set, Is({{-1.0, 0.0}, {1.0, 2.0}, {3.0, 4.0}}));
}

TEST_F(SetOperations, ComplementTakesBoundsThatAreAMemberOfTheResult) {
    SetR1 out = SetOf({{-1.0, 4.0}});
    SetOf({{0.0, 1.0}, {2.0, 3.0}}).GetComplimentarySet(out[0], out);
    EXPECT_THAT(out, Is({{-1.0, 0.0}, {1.0, 2.0}, {3.0, 4.0}}));
}

// --- all members

TEST_F(SetOperations, ExpandMovesAllLimitsOutwards) {
    SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}});
    set.Expand(0.75);
    EXPECT_THAT(set, Is({{-0.75, 1.75}, {1.25, 3.75}}));
    set.Expand(-0.75);
    EXPECT_THAT(set, Is({{0.0, 1.0}, {2.0, 3.0}}));
}

TEST_F(SetOperations, CenterPutsEachMemberIntoTheMiddleOfItsTwin) {
    SetR1 set = SetOf({{0.0, 1.0}, {2.0, 4.0}, {5.0, 9.0}});
    set.Center(SetOf({{10.0, 13.0}, {-6.0, 6.0}, {5.0, 6.0}}));
    EXPECT_THAT(set, Is({{11.0, 12.0}, {-1.0, 1.0}, {5.0, 9.0}}));
}

TEST_F(SetOperations, CenterInASetOfAnotherSizeDoesNothing) {
    SetR1 set = SetOf({{0.0, 1.0}});
    set.Center(SetOf({{10.0, 13.0}, {-6.0, 6.0}}));
    set.Center(SetR1());
    EXPECT_THAT(set, Is({{0.0, 1.0}}));
    SetR1().Center(SetR1());
}

TEST_F(SetOperations, RemoveSingletonsRemovesPointsWithinTheTolerance) {
    SetR1 set =
        SetOf({{0.0, 5e-11}, {1.0, 1.0}, {2.0, 3.0}, {4.0, 4.0 - 5e-11}, {5.0, 5.0 + 2e-10}});
    set.RemoveSingletons();
    EXPECT_THAT(set, Is({{2.0, 3.0}, {5.0, 5.0 + 2e-10}}));
    SetR1 points = SetOf({{1.0, 1.0}, {2.0, 2.0}});
    points.RemoveSingletons();
    EXPECT_TRUE(points.IsEmpty());
    points.RemoveSingletons();
}

TEST_F(SetOperations, MergeAdjacentCollapsesAChain) {
    SetR1 set = SetOf({{0.0, 1.0}, {1.0, 2.0}, {2.0 + 5e-11, 3.0}, {4.0, 5.0}, {5.0, 6.0}});
    set.MergeAdjacent();
    EXPECT_THAT(set, Is({{0.0, 3.0}, {4.0, 6.0}}));
}

TEST_F(SetOperations, MergeAdjacentLeavesGapsAndOverlapsOfTheToleranceOrMore) {
    // The distance of the ends is exactly the tolerance.
    SetR1 set = SetOf({{-1.0, 0.0}, {zToler, 1.0}, {0.5, 2.0}});
    set.MergeAdjacent();
    EXPECT_THAT(set, Is({{-1.0, 0.0}, {zToler, 1.0}, {0.5, 2.0}}));
    SetR1 narrow = SetOf({{-1.0, 0.0}, {std::nextafter(zToler, 0.0), 1.0}});
    narrow.MergeAdjacent();
    EXPECT_THAT(narrow, Is({{-1.0, 1.0}}));
}

TEST_F(SetOperations, MergeAdjacentTakesTheEndAlsoWhereThatIsLower) {
    SetR1 set = SetOf({{0.0, 1.0}, {1.0, 0.5}});
    set.MergeAdjacent();
    EXPECT_THAT(set, Is({{0.0, 0.5}}));
}

TEST_F(SetOperations, MakeValidRemovesPointsBeforeItMerges) {
    SetR1 set = SetOf({{0.0, 1.0}, {1.0, 1.0}, {1.0, 2.0}});
    set.MakeValid();
    EXPECT_THAT(set, Is({{0.0, 2.0}}));
    SetR1 apart = SetOf({{0.0, 1.0}, {1.0 + 7e-11, 1.0 + 7e-11}, {1.0 + 1.4e-10, 2.0}});
    apart.MakeValid();
    EXPECT_THAT(apart, Is({{0.0, 1.0}, {1.0 + 1.4e-10, 2.0}}));
}

}  // namespace
}  // namespace ZT
