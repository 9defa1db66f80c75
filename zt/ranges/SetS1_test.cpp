#include <zt/ranges/SetS1.h>

#include <platform/object/CInvalidArgException.h>
#include <tests/Raises.h>
#include <zt/ranges/SetS1_test.h>
#include <zt/frame/VirtualTable_test.hpp>

#include <memory>
#include <type_traits>

namespace {

using namespace testing_support;
using testing::ElementsAre;
using testing::IsEmpty;
using ZT::RangeS1;
using ZT::SetS1;
using ZT::zPi;

// An arc that notes its end.
class NotedArc : public RangeS1 {
public:
    NotedArc(const RangeS1& arc, int* log) : RangeS1(arc), ended(log) {}
    ~NotedArc() override { ++*ended; }

private:
    int* ended;
};

TEST(SetS1, AddsNeitherFieldsNorVirtualOperationsToItsList) {
    EXPECT_EQ(sizeof(SetS1), sizeof(CPtrList));
    EXPECT_TRUE((std::is_base_of_v<ZT::HXPtrListBase2<RangeS1>, SetS1>));
    OwningSet set{RawArc(1, 2)};
    const POSITION head = set.GetHeadPosition();
    EXPECT_EQ(CallSlot<RangeS1*>(&set, kSlotFirstOwn + 1, head), set.GetHead());
    int ended = 0;
    CallSlot<void>(&set, kSlotFirstOwn, static_cast<RangeS1*>(new NotedArc(RawArc(1, 2), &ended)));
    EXPECT_EQ(ended, 1);
}

TEST(SetS1, NewSetIsEmpty) {
    EXPECT_TRUE(SetS1().IsEmpty());
    EXPECT_FALSE(SetS1().IsFull());
}

TEST(SetS1, DestructorLeavesTheArcsAlone) {
    int ended = 0;
    NotedArc arc(RawArc(1, 2), &ended);
    {
        SetS1 set;
        set.InsertSorted(&arc);
    }
    EXPECT_EQ(ended, 0);
}

TEST(SetS1, IsFullByItsHeadAlone) {
    EXPECT_TRUE((OwningSet{FullArc()}).IsFull());
    EXPECT_TRUE((OwningSet{RangeS1()}).IsFull());
    EXPECT_TRUE((OwningSet{FullArc(), RawArc(1, 2)}).IsFull());
    EXPECT_FALSE((OwningSet{RawArc(1, 2), FullArc()}).IsFull());
    EXPECT_FALSE((OwningSet{RawArc(-zPi, zPi)}).IsFull());
}

TEST(SetS1, SetFullDestroysTheArcsAndMakesTheCircle) {
    int ended = 0;
    OwningSet set;
    set.AddTail(new NotedArc(RawArc(1, 2), &ended));
    set.AddTail(new NotedArc(RawArc(2, 3), &ended));
    set.SetFull();
    EXPECT_EQ(ended, 2);
    EXPECT_THAT(Arcs(set), ElementsAre(IsCanonicallyFull()));
    EXPECT_TRUE(set.IsFull());
    set.SetFull();
    EXPECT_THAT(Arcs(set), ElementsAre(IsCanonicallyFull()));
}

// Inserts an arc between two others.
struct SetS1Insertion : testing::Test {
    std::vector<RangeS1> With(double lo, double hi) {
        set.InsertSorted(new RangeS1(RawArc(lo, hi)));
        return Arcs(set);
    }

    OwningSet set{RawArc(-3, -2), RawArc(1, 2)};
};

TEST_F(SetS1Insertion, IntoFewerThanTwoAppendsWithoutComparison) {
    OwningSet few;
    few.InsertSorted(new RangeS1(RawArc(2, 3)));
    EXPECT_THAT(Arcs(few), ElementsAre(IsPartial(2, 3)));
    few.InsertSorted(new RangeS1(RawArc(0, 1)));
    EXPECT_THAT(Arcs(few), ElementsAre(IsPartial(2, 3), IsPartial(0, 1)));
}

TEST_F(SetS1Insertion, LinksTheArcItself) {
    auto* const arc = new RangeS1(RawArc(-1, 0));
    set.InsertSorted(arc);
    EXPECT_EQ(set.GetAtIndex(1), arc);
}

TEST_F(SetS1Insertion, GoesIntoItsGap) {
    EXPECT_THAT(With(-1, 0), ElementsAre(IsPartial(-3, -2), IsPartial(-1, 0), IsPartial(1, 2)));
}

TEST_F(SetS1Insertion, BetweenTailAndHeadGoesBeforeTheHead) {
    EXPECT_THAT(With(2.5, 3), ElementsAre(IsPartial(2.5, 3), IsPartial(-3, -2), IsPartial(1, 2)));
}

TEST_F(SetS1Insertion, BetweenTailAndHeadAcrossTheSeamGoesBeforeTheHead) {
    EXPECT_THAT(With(3.1, -3.1),
                ElementsAre(IsPartial(3.1, -3.1), IsPartial(-3, -2), IsPartial(1, 2)));
}

TEST_F(SetS1Insertion, FirstGapThatTakesItWins) {
    // Both gaps of two equal arcs take it.
    OwningSet equal{RawArc(1, 2), RawArc(1, 2)};
    equal.InsertSorted(new RangeS1(RawArc(-1, 0)));
    EXPECT_THAT(Arcs(equal), ElementsAre(IsPartial(-1, 0), IsPartial(1, 2), IsPartial(1, 2)));
}

TEST_F(SetS1Insertion, EndOfTheArcIsNotLookedAt) {
    EXPECT_THAT(With(-1, 1.5), ElementsAre(IsPartial(-3, -2), IsPartial(-1, 1.5), IsPartial(1, 2)));
}

TEST_F(SetS1Insertion, AtTheStartOfAMemberGoesBeforeIt) {
    EXPECT_THAT(With(1, 1.5), ElementsAre(IsPartial(-3, -2), IsPartial(1, 1.5), IsPartial(1, 2)));
}

TEST_F(SetS1Insertion, LaterThanTheStartOfAMemberByLessThanTheToleranceGoesBeforeIt) {
    const double start = 1 + 5e-11;
    EXPECT_THAT(With(start, 1.5),
                ElementsAre(IsPartial(-3, -2), IsPartial(start, 1.5), IsPartial(1, 2)));
}

TEST_F(SetS1Insertion, LaterThanTheStartOfAMemberByMoreThanTheToleranceGoesToTheTail) {
    const double start = 1 + 2e-10;
    EXPECT_THAT(With(start, 1.5),
                ElementsAre(IsPartial(-3, -2), IsPartial(1, 2), IsPartial(start, 1.5)));
}

TEST_F(SetS1Insertion, ThatStartsOnAMemberGoesToTheTail) {
    EXPECT_THAT(With(1.5, 1.7),
                ElementsAre(IsPartial(-3, -2), IsPartial(1, 2), IsPartial(1.5, 1.7)));
}

// The place at the end of a member is a full turn away from it.
TEST_F(SetS1Insertion, ThatStartsAtTheEndOfAMemberGoesToTheTail) {
    EXPECT_THAT(With(-2, -1), ElementsAre(IsPartial(-3, -2), IsPartial(1, 2), IsPartial(-2, -1)));
}

TEST(SetS1, SubtractedArcLeavesTheRestOfTheCircle) {
    OwningSet set;
    set.SetFull();
    set.Subtract(RawArc(1, 2));
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(2, 1)));
}

TEST(SetS1, ArcInsideAMemberLeavesTwoInOrder) {
    OwningSet set{RawArc(-2, -1), RawArc(1, 3)};
    set.Subtract(RawArc(1.5, 2));
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(-2, -1), IsPartial(1, 1.5), IsPartial(2, 3)));
    set.Subtract(RawArc(-1.5, -1.25));
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(-2, -1.5), IsPartial(-1.25, -1), IsPartial(1, 1.5),
                                       IsPartial(2, 3)));
}

TEST(SetS1, MemberStaysTheSameArcAndItsSecondPieceIsNew) {
    OwningSet set{RawArc(1, 3)};
    const RangeS1* const member = set.GetHead();
    const POSITION place = set.GetHeadPosition();
    set.Subtract(RawArc(1.5, 2));
    EXPECT_EQ(set.GetHead(), member);
    EXPECT_EQ(set.GetHeadPosition(), place);
}

TEST(SetS1, SubtractedArcCutsEveryMemberThatItMeets) {
    OwningSet set{RawArc(-3, -1), RawArc(-0.5, 0.5), RawArc(1, 3)};
    set.Subtract(RawArc(-2, 2));
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(-3, -2), IsPartial(2, 3)));
}

// A fresh copy is taken for each member: the second piece of one is not taken from the next.
TEST(SetS1, EachMemberLosesTheSameArc) {
    OwningSet set{RawArc(1, 3), RawArc(1, 3), RawArc(1.2, 2.9)};
    set.Subtract(RawArc(1.5, 2));
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(1, 1.5), IsPartial(2, 3), IsPartial(1, 1.5),
                                       IsPartial(2, 3), IsPartial(1.2, 1.5), IsPartial(2, 2.9)));
}

TEST(SetS1, MemberOfWhichNothingIsLeftIsDestroyed) {
    int ended = 0;
    OwningSet set{RawArc(-1, 0)};
    set.AddTail(new NotedArc(RawArc(1, 2), &ended));
    set.Subtract(RawArc(1, 2));
    EXPECT_EQ(ended, 1);
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(-1, 0)));
    set.Subtract(RawArc(-2, 1));
    EXPECT_THAT(Arcs(set), IsEmpty());
}

TEST(SetS1, EmptyMemberGoesWithAnySubtraction) {
    OwningSet set{RawArc(-1, 0), EmptyArc(1, 2)};
    set.Subtract(RawArc(2.5, 3));
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(-1, 0)));
}

TEST(SetS1, SubtractedArcStaysAsItIs) {
    OwningSet set{RawArc(1, 3)};
    RangeS1 taken = RawArc(1.5, 2);
    set.Subtract(taken);
    EXPECT_THAT(taken, IsPartial(1.5, 2));
}

TEST(SetS1, SubtractedArcMayBeAMember) {
    OwningSet set{RawArc(1, 2), RawArc(0, 3), RawArc(1.5, 2.5)};
    set.Subtract(*set.GetHead());
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(0, 1), IsPartial(2, 3), IsPartial(2, 2.5)));
}

TEST(SetS1, ArcWithEqualLimitsTakesNothingFromPartialMembers) {
    OwningSet set{RawArc(1, 2), RawArc(3, -3)};
    set.Subtract(PointArc(1.5));
    set.Subtract(FullArc());
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(1, 2), IsPartial(3, -3)));
}

// As an arc subtracts: its limits change places.
TEST(SetS1, ArcWithEqualLimitsMakesAPointOfAFullMember) {
    OwningSet set{FullArc()};
    set.Subtract(PointArc(1.5));
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(1.5, 1.5)));
    set.SetFull();
    set.Subtract(FullArc());
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(zPi, zPi)));
}

TEST(SetS1, EmptyArcCutsPartialMembersByTheLimitsThatItHasKept) {
    OwningSet set{RawArc(1, 3), FullArc()};
    set.Subtract(EmptyArc(1.5, 2));
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(1, 1.5), IsPartial(2, 3), IsCanonicallyFull()));
}

// An empty arc counts as lying inside of a partial one wherever its limits are.
TEST(SetS1, EmptyArcMakesMembersGrowThatItsLimitsDoNotLieOn) {
    OwningSet set{RawArc(1, 2)};
    set.Subtract(EmptyArc(2.5, 3));
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(1, 2.5), IsPartial(3, 2)));
}

TEST(SetS1, EmptyArcTakesAwayWhatLiesBetweenItsLimitsUnlessTheAngleZeroDoes) {
    OwningSet away{RawArc(1.2, 1.8)};
    away.Subtract(EmptyArc(1, 2));
    EXPECT_THAT(Arcs(away), IsEmpty());
    OwningSet aroundZero{RawArc(-0.5, 0.5)};
    aroundZero.Subtract(EmptyArc(-1, 1));
    EXPECT_THAT(Arcs(aroundZero), ElementsAre(IsPartial(-0.5, -1), IsPartial(1, 0.5)));
}

// A limit within the tolerance of the subtracted arc lies on it, and moves to its limit.
TEST(SetS1, MemberThatEndsJustBeforeTheSubtractedArcIsDrawnToIt) {
    const double after = 1 + 5e-11;
    const double before = 1 - 5e-11;
    OwningSet ending{RawArc(0, 1)};
    ending.Subtract(RawArc(after, 2));
    EXPECT_THAT(Arcs(ending), ElementsAre(IsPartial(0, after)));
    OwningSet starting{RawArc(1, 2)};
    starting.Subtract(RawArc(0, before));
    EXPECT_THAT(Arcs(starting), ElementsAre(IsPartial(before, 2)));
}

TEST(SetS1, MemberThatEndsBeforeTheSubtractedArcByMoreThanTheToleranceStays) {
    OwningSet set{RawArc(0, 1), RawArc(-2, -1)};
    set.Subtract(RawArc(1 + 2e-10, 2));
    set.Subtract(RawArc(-1 + 2e-10, -2e-10));
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(0, 1), IsPartial(-2, -1)));
}

// Arcs subtract without a look at the flag; the second piece comes back in the subtracted one.
TEST(SetS1, NewArcHasTheFlagOfTheSubtractedOne) {
    OwningSet set{RawArc(1, 3)};
    set.Subtract(ExternalArc(2, 1.5));
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(1, 2), IsPartial(1.5, 3)));
    EXPECT_FALSE(set.GetHead()->m_bExternal);
    EXPECT_TRUE(set.GetTail()->m_bExternal);
}

TEST(SetS1, SubtractedFullSetDestroysAllArcs) {
    int ended = 0;
    OwningSet set;
    set.AddTail(new NotedArc(RawArc(1, 2), &ended));
    set.AddTail(new NotedArc(FullArc(), &ended));
    set.Subtract(OwningSet{FullArc(), RawArc(1, 2)});
    EXPECT_EQ(ended, 2);
    EXPECT_TRUE(set.IsEmpty());
}

TEST(SetS1, FullArcBehindTheHeadDoesNotMakeTheSubtractedSetFull) {
    OwningSet set{RawArc(1, 3)};
    set.Subtract(OwningSet{RawArc(1, 2), FullArc()});
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(2, 3)));
}

TEST(SetS1, SubtractedEmptySetChangesNothing) {
    OwningSet set{RawArc(1, 2), FullArc()};
    set.Subtract(OwningSet());
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(1, 2), IsCanonicallyFull()));
}

TEST(SetS1, SubtractedSetTakesAwayEachOfItsMembers) {
    OwningSet set;
    set.SetFull();
    OwningSet other{RawArc(-2, -1), RawArc(1, 2)};
    set.Subtract(other);
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(-1, 1), IsPartial(2, -2)));
    EXPECT_THAT(Arcs(other), ElementsAre(IsPartial(-2, -1), IsPartial(1, 2)));
}

// What the first member leaves of the circle is the piece in which the order begins.
TEST(SetS1, SubtractedSetGoesFromHeadToTail) {
    OwningSet set;
    set.SetFull();
    set.Subtract(OwningSet{RawArc(1, 2), RawArc(-2, -1)});
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(2, -2), IsPartial(-1, 1)));
    set.SetFull();
    set.Subtract(OwningSet{RawArc(-2, -1), RawArc(1, 2)});
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(-1, 1), IsPartial(2, -2)));
}

TEST(SetS1, SetTakenAwayFromItselfIsEmpty) {
    OwningSet set{RawArc(-2, -1), RawArc(1, 2), RawArc(3, -3)};
    set.Subtract(set);
    EXPECT_TRUE(set.IsEmpty());
    set.SetFull();
    set.Subtract(set);
    EXPECT_TRUE(set.IsEmpty());
}

TEST(SetS1, RemovesArcsBelowALengthWithoutDestroyingThem) {
    int ended = 0;
    NotedArc shortArc(RawArc(0, 0.25), &ended);
    NotedArc point(PointArc(3), &ended);
    NotedArc acrossTheSeam(RawArc(3.1, -3.1), &ended);
    OwningSet set{RawArc(-1, -0.5)};
    set.AddHead(&point);
    set.AddTail(&shortArc);
    set.AddTail(&acrossTheSeam);
    set.AddTail(new RangeS1(FullArc()));
    set.RemoveSingletons(0.25);
    EXPECT_EQ(set.FindIndex(&point), -1);
    EXPECT_EQ(set.FindIndex(&acrossTheSeam), -1);
    EXPECT_EQ(set.FindIndex(&shortArc), 1);  // Just as long as that.
    EXPECT_EQ(set.GetCount(), 3);
    set.RemoveSingletons(0.5);
    EXPECT_THAT(Arcs(set), ElementsAre(IsPartial(-1, -0.5), IsCanonicallyFull()));
    set.RemoveSingletons(0);
    EXPECT_EQ(set.GetCount(), 2);
    EXPECT_EQ(ended, 0);
}

TEST(SetS1, NearestRangesAreNotGiven) {
    OwningSet set{RawArc(1, 2)};
    POSITION places[] = {nullptr, set.GetHeadPosition()};
    EXPECT_EQ(set.GetNearestRanges(places), 0);
    EXPECT_EQ(places[0], nullptr);
    EXPECT_EQ(places[1], set.GetHeadPosition());
    EXPECT_EQ(set.GetNearestRanges(nullptr), 0);
    EXPECT_TRUE((std::is_same_v<decltype(set.GetNearestRanges(places)), unsigned char>));
}

}  // namespace
