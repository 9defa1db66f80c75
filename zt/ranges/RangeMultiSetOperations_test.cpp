// Union and intersection of lists of ranges, and what two arcs share.

#include <zt/ranges/RangeMulti.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zt/ranges/RangeFamily_test.h>

#include <initializer_list>
#include <vector>

namespace ZT {
namespace {

using namespace testing_support;
using testing::ElementsAre;

RangeMulti ListOf(std::initializer_list<Range> members) {
    RangeMulti list;
    for (const Range& member : members) list.InsertAt(static_cast<int>(list.GetCount()), member);
    return list;
}

std::vector<Range> All(const RangeMulti& list) {
    return {list.GetData(), list.GetData() + list.GetCount()};
}

// [0, 1], [2, 3] and [4, 5], and one range more.
std::vector<Range> Added(const Range& r) {
    RangeMulti list = ListOf({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}});
    list.Add(r);
    EXPECT_TRUE(list.IsValid());
    return All(list);
}

// --- union

TEST(RangeMultiAdd, ToAnEmptyListInsertsTheRange) {
    RangeMulti list;
    list.Add(Outside(Radians(1.0, 2.0)));
    EXPECT_THAT(All(list), ElementsAre(IsRange(1.0, 2.0, kPartial)));
    EXPECT_TRUE(list[0].m_bExternal);
    EXPECT_EQ(list[0].m_eScalarType, eScalarAngle);
}

TEST(RangeMultiAdd, OfAnEmptyRangeDoesNothing) {
    EXPECT_THAT(Added({2.0, 1.0}),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
    EXPECT_THAT(Added(Radians(1.2, 1.5, kEmpty)), testing::SizeIs(3));
}

TEST(RangeMultiAdd, InAGapInsertsInOrder) {
    EXPECT_THAT(Added({1.5, 1.7}), ElementsAre(HasLimits(0.0, 1.0), HasLimits(1.5, 1.7),
                                               HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
    EXPECT_THAT(Added({-2.0, -1.0}), ElementsAre(HasLimits(-2.0, -1.0), HasLimits(0.0, 1.0),
                                                 HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
    EXPECT_THAT(Added({6.0, 7.0}), ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.0),
                                               HasLimits(4.0, 5.0), HasLimits(6.0, 7.0)));
}

TEST(RangeMultiAdd, MergesAllThatItMeets) {
    EXPECT_THAT(Added({0.5, 4.5}), ElementsAre(HasLimits(0.0, 5.0)));
    EXPECT_THAT(Added({-1.0, 6.0}), ElementsAre(HasLimits(-1.0, 6.0)));
    EXPECT_THAT(Added({2.5, 6.0}), ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 6.0)));
    EXPECT_THAT(Added({-1.0, 2.5}), ElementsAre(HasLimits(-1.0, 3.0), HasLimits(4.0, 5.0)));
}

TEST(RangeMultiAdd, MergesWhatItTouches) {
    EXPECT_THAT(Added({1.0, 2.0}), ElementsAre(HasLimits(0.0, 3.0), HasLimits(4.0, 5.0)));
    EXPECT_THAT(Added({1.0 + 5e-11, 2.0 - 5e-11}),
                ElementsAre(HasLimits(0.0, 3.0), HasLimits(4.0, 5.0)));
    EXPECT_THAT(Added({3.0 + 5e-11, 3.5}),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.5), HasLimits(4.0, 5.0)));
    EXPECT_THAT(Added({3.0 + 2e-10, 3.5}), testing::SizeIs(4));
}

TEST(RangeMultiAdd, WithinAMemberOrOverItWidensThatMemberAlone) {
    EXPECT_THAT(Added({2.25, 2.75}),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
    EXPECT_THAT(Added({1.5, 3.5}),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(1.5, 3.5), HasLimits(4.0, 5.0)));
}

TEST(RangeMultiAdd, LooksForTheFirstOnesFromTheLastThatStartsBelow) {
    // Out of order: the search starts at the last member that starts below 0.5, and does not
    // see the first one, which is met, too.
    RangeMulti list = ListOf({{0.0, 9.0}, {0.25, 0.375}, {20.0, 21.0}});
    list.Add(Range(0.5, 1.0));
    EXPECT_THAT(All(list), ElementsAre(HasLimits(0.0, 9.0), HasLimits(0.25, 0.375),
                                       HasLimits(0.5, 1.0), HasLimits(20.0, 21.0)));
}

TEST(RangeMultiAdd, MergesUpToTheLastThatItMeetsAlsoWhatLiesApartBetween) {
    // Out of order: the last one is met, the one before it is not.
    RangeMulti list = ListOf({{0.0, 1.0}, {5.0, 6.0}, {0.25, 0.3}});
    list.Add(Range(0.1, 0.28));
    EXPECT_THAT(All(list), ElementsAre(HasLimits(0.0, 1.0)));
}

TEST(RangeMultiAdd, KeepsFlagAndStateOfTheFirstMember) {
    RangeMulti list = ListOf({Outside({0.0, 1.0}), {2.0, 3.0}});
    list[0].m_eState = kEmpty;
    list.Add(Range(0.5, 2.5));
    EXPECT_THAT(All(list), ElementsAre(IsRange(0.0, 3.0, kEmpty)));
    EXPECT_TRUE(list[0].m_bExternal);
}

TEST(RangeMultiAdd, TakesAMemberOfTheList) {
    RangeMulti list = ListOf({{4.0, 5.0}, {0.0, 1.0}});
    list.Add(list[0]);
    EXPECT_THAT(All(list),
                ElementsAre(HasLimits(4.0, 5.0), HasLimits(0.0, 1.0), HasLimits(4.0, 5.0)));
}

TEST(RangeMultiUnite, AddsEachMember) {
    RangeMulti list = ListOf({{0.0, 1.0}, {4.0, 5.0}});
    list.Unite(ListOf({{2.0, 3.0}, {0.5, 2.5}, {7.0, 6.0}}));
    EXPECT_THAT(All(list), ElementsAre(HasLimits(0.0, 3.0), HasLimits(4.0, 5.0)));
    list.Unite(RangeMulti());
    EXPECT_EQ(list.GetCount(), 2);
}

TEST(RangeMultiUnite, OfAListWithItselfLeavesIt) {
    RangeMulti list = ListOf({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}});
    list.Unite(list);
    EXPECT_THAT(All(list),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
    const RangeMulti shared(list);
    list.Unite(shared);
    EXPECT_EQ(list.GetCount(), 3);
}

// --- intersection

TEST(RangeMultiIntersect, WithARangeCutsMembersAndRemovesNone) {
    RangeMulti list = ListOf({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}});
    EXPECT_TRUE(list.Intersect(Range(2.5, 4.5)));
    EXPECT_THAT(All(list),
                ElementsAre(HasLimits(1e307, -1e307), HasLimits(2.5, 3.0), HasLimits(4.0, 4.5)));
    EXPECT_FALSE(list.Intersect(Range(8.0, 9.0)));
    EXPECT_EQ(list.GetCount(), 3);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_FALSE(RangeMulti().Intersect(Range(0.0, 1.0)));
}

TEST(RangeMultiIntersect, WithARangeTakesAMemberOfTheList) {
    RangeMulti list = ListOf({{0.0, 2.0}, {5.0, 6.0}, {1.0, 4.0}});
    EXPECT_TRUE(list.Intersect(list[0]));
    EXPECT_THAT(All(list),
                ElementsAre(HasLimits(0.0, 2.0), HasLimits(1e307, -1e307), HasLimits(1.0, 2.0)));
}

TEST(RangeMultiIntersect, WithARangeGoesByThePlainLimitsAlsoForAngles) {
    RangeMulti list = ListOf({Radians(1.0, 2.0)});
    EXPECT_FALSE(list.Intersect(Range(2.5, 3.0)));
    EXPECT_THAT(list[0], IsRange(1e307, -1e307, kPartial));
    EXPECT_FALSE(list.IsEmpty());
}

std::vector<Range> Shared(RangeMulti list, const RangeMulti& other) {
    list.Intersect(other);
    return All(list);
}

TEST(RangeMultiIntersect, WithAListFormsAllPairs) {
    EXPECT_THAT(Shared(ListOf({{0.0, 2.0}, {3.0, 5.0}}), ListOf({{1.0, 4.0}})),
                ElementsAre(HasLimits(1.0, 2.0), HasLimits(3.0, 4.0)));
    EXPECT_THAT(Shared(ListOf({{0.0, 2.0}, {3.0, 5.0}}), ListOf({{0.0, 1.0}, {4.0, 5.0}})),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(1e307, -1e307), HasLimits(1e307, -1e307),
                            HasLimits(4.0, 5.0)));
    EXPECT_THAT(Shared(ListOf({{0.0, 10.0}}), ListOf({{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}})),
                ElementsAre(HasLimits(1.0, 2.0), HasLimits(3.0, 4.0), HasLimits(5.0, 6.0)));
}

TEST(RangeMultiIntersect, WithAListWithoutMembersLeavesNone) {
    EXPECT_THAT(Shared(ListOf({{0.0, 2.0}}), RangeMulti()), ElementsAre());
    EXPECT_THAT(Shared(RangeMulti(), ListOf({{0.0, 2.0}})), ElementsAre());
}

TEST(RangeMultiIntersect, WithAListTakesKindAndFlagOfTheOther) {
    // The copy of a member of the other is cut, by the member of this list, whose limit wins at
    // a tie.
    RangeMulti list = ListOf({{-1.0, 9.0}, {-1.0, 9.0}});
    list.Intersect(ListOf({Outside(Radians(1.0, 2.0))}));
    EXPECT_THAT(All(list), ElementsAre(IsRange(1.0, 2.0, kPartial), IsRange(1.0, 2.0, kPartial)));
    EXPECT_TRUE(list[1].m_bExternal);
    EXPECT_EQ(list[1].m_eScalarType, eScalarAngle);
    EXPECT_THAT(Shared(ListOf({{0.0, 9.0}}), ListOf({{5e-11, 8.0}})),
                ElementsAre(HasLimits(0.0, 8.0)));
}

TEST(RangeMultiIntersect, WithAListLeavesMembersThatDifferByLessThanTheTolerance) {
    // The pair gives [0, 2 - 5e-11], which is nearly what stands in the place.
    EXPECT_THAT(Shared(ListOf({{0.0, 2.0}}), ListOf({{0.0, 2.0 - 5e-11}})),
                ElementsAre(HasLimits(0.0, 2.0)));
}

TEST(RangeMultiIntersect, WithItselfFormsAllPairs) {
    RangeMulti list = ListOf({{0.0, 2.0}, {1.0, 3.0}});
    list.Intersect(list);
    EXPECT_THAT(All(list), ElementsAre(HasLimits(0.0, 2.0), HasLimits(1.0, 2.0),
                                       HasLimits(1.0, 2.0), HasLimits(1.0, 3.0)));
}

// --- arcs

RangeS1 Arc(double lo, double hi, bool external = false) {
    RangeS1 arc(lo, hi);
    arc.m_bExternal = external;
    return arc;
}

std::vector<Range> Common(const RangeS1& a, const RangeS1& b) {
    RangeMulti list = ListOf({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}});
    list.IntersectS1(a, b);
    EXPECT_GE(list.GetSize(), 2);
    for (const Range& member : All(list)) EXPECT_EQ(member.m_eScalarType, eScalarAngle);
    return All(list);
}

TEST(RangeMultiArcs, AnArcInsideTheOtherIsTheResult) {
    EXPECT_THAT(Common(Arc(0.0, 2.0), Arc(0.5, 1.0)), ElementsAre(IsRange(0.5, 1.0, kPartial)));
    EXPECT_THAT(Common(Arc(0.5, 1.0), Arc(0.0, 2.0)), ElementsAre(IsRange(0.5, 1.0, kPartial)));
    EXPECT_THAT(Common(Arc(2.0, -2.0), Arc(3.0, -3.0)), ElementsAre(IsRange(3.0, -3.0, kPartial)));
    EXPECT_THAT(Common(RangeS1(), Arc(0.5, 1.0)), ElementsAre(IsRange(0.5, 1.0, kPartial)));
    EXPECT_THAT(Common(Arc(0.5, 1.0), RangeS1()), ElementsAre(IsRange(0.5, 1.0, kPartial)));
}

TEST(RangeMultiArcs, TheInnerArcIsCopiedToAnAngularMember) {
    RangeS1 whole;
    whole.SetFull();
    EXPECT_THAT(Common(whole, whole), ElementsAre(IsRange(zPi, zPi, kFull)));
    EXPECT_TRUE(Common(RangeS1(), Arc(0.5, 1.0, true))[0].m_bExternal);
    EXPECT_TRUE(Common(Arc(0.5, 1.0, true), RangeS1())[0].m_bExternal);
}

TEST(RangeMultiArcs, ANewListGetsRoomForTwo) {
    RangeMulti list;
    list.IntersectS1(Arc(0.0, 2.0), Arc(0.5, 1.0));
    EXPECT_EQ(list.GetSize(), 2);
    EXPECT_EQ(list.GetCount(), 1);
}

TEST(RangeMultiArcs, MembersOfANewListAreAngularBeforeTheyGetTheirLimits) {
    RangeMulti list;
    list.IntersectS1(Arc(-2.0, 2.0), Arc(1.0, -1.0));
    EXPECT_THAT(All(list), ElementsAre(IsRange(1.0, 2.0, kPartial), IsRange(-2.0, -1.0, kPartial)));
}

TEST(RangeMultiArcs, AnEmptyArcAnswersFromTheLimitsThatItHasKept) {
    RangeS1 empty = Arc(0.5, 1.0);
    empty.SetEmpty();
    EXPECT_THAT(Common(Arc(0.0, 2.0), empty), ElementsAre(IsRange(0.5, 1.0, kPartial)));
    EXPECT_THAT(Common(empty, Arc(0.0, 2.0)), ElementsAre(IsRange(0.5, 1.0, kPartial)));
    RangeS1 emptyAtPi = Arc(zPi, zPi);
    emptyAtPi.SetEmpty();
    EXPECT_THAT(Common(Arc(3.0, -3.0), emptyAtPi), ElementsAre(IsRange(zPi, zPi, kFull)));
}

TEST(RangeMultiArcs, ArcsApartShareNothing) {
    EXPECT_THAT(Common(Arc(0.0, 1.0), Arc(2.0, 3.0)), ElementsAre());
}

TEST(RangeMultiArcs, TheStartOfTheSecondOnTheFirst) {
    EXPECT_THAT(Common(Arc(0.0, 2.0), Arc(1.0, 3.0)), ElementsAre(IsRange(1.0, 2.0, kPartial)));
    // Both limits on the first, through its gap.
    EXPECT_THAT(Common(Arc(-2.0, 2.0), Arc(1.0, -1.0)),
                ElementsAre(IsRange(1.0, 2.0, kPartial), IsRange(-2.0, -1.0, kPartial)));
}

TEST(RangeMultiArcs, TheEndOfTheSecondOnTheFirstGivesThePartBehindIt) {
    EXPECT_THAT(Common(Arc(0.0, 2.0), Arc(-1.0, 1.0)), ElementsAre(IsRange(1.0, 2.0, kPartial)));
}

TEST(RangeMultiArcs, ExternalSecondArc) {
    // All but (1, 3), counter-clockwise from 3 to 1. Its start, m_min = 1, lies on the first.
    EXPECT_THAT(Common(Arc(0.0, 2.0), Arc(1.0, 3.0, true)),
                ElementsAre(IsRange(0.0, 1.0, kPartial)));
    // Both lie on it: all but (-1, 1), and the first holds both.
    EXPECT_THAT(Common(Arc(-2.0, 2.0), Arc(-1.0, 1.0, true)),
                ElementsAre(IsRange(-2.0, -1.0, kPartial), IsRange(1.0, 2.0, kPartial)));
    // Only m_max = 1 lies on it.
    EXPECT_THAT(Common(Arc(0.0, 2.0), Arc(-1.0, 1.0, true)),
                ElementsAre(IsRange(0.0, 1.0, kPartial)));
}

TEST(RangeMultiArcs, ExternalFirstArc) {
    // The first is all but (0, 2), and holds 3 and -1.
    EXPECT_THAT(Common(Arc(0.0, 2.0, true), Arc(3.0, 1.0)),
                ElementsAre(IsRange(3.0, 1.0, kPartial)));
    // Both limits of the second lie on it: still one member.
    EXPECT_THAT(Common(Arc(0.0, 2.0, true), Arc(-1.0, 3.0)),
                ElementsAre(IsRange(-1.0, 3.0, kPartial)));
    // Only the end lies on it.
    EXPECT_THAT(Common(Arc(0.0, 2.0, true), Arc(1.0, 3.0)),
                ElementsAre(IsRange(2.0, 3.0, kPartial)));
}

TEST(RangeMultiArcs, BothExternal) {
    // All but (0, 2), and all but (3, 1): the start of the second lies on the first.
    EXPECT_THAT(Common(Arc(0.0, 2.0, true), Arc(3.0, 1.0, true)),
                ElementsAre(IsRange(2.0, 3.0, kPartial)));
    // Both limits of the second lie on the first.
    EXPECT_THAT(Common(Arc(0.0, 2.0, true), Arc(2.5, -0.5, true)),
                ElementsAre(IsRange(2.0, 2.5, kPartial), IsRange(-0.5, 0.0, kPartial)));
    // Only the end of the second lies on the first.
    EXPECT_THAT(Common(Arc(0.0, 2.0, true), Arc(1.0, 3.0, true)),
                ElementsAre(IsRange(3.0, 0.0, kPartial)));
}

TEST(RangeMultiArcs, MembersInUseKeepFlagAndUnit) {
    RangeMulti list = ListOf({Outside(Degrees(10.0, 20.0)), {0.0, 1.0}});
    list.IntersectS1(Arc(0.0, 2.0), Arc(1.0, 3.0));
    EXPECT_THAT(All(list), ElementsAre(IsRange(1.0, 2.0, kPartial)));
    EXPECT_TRUE(list[0].m_bExternal);
    EXPECT_TRUE(list[0].m_bDegrees);
    // An inner arc brings its own flag.
    list.IntersectS1(Arc(0.0, 2.0), Arc(0.5, 1.0));
    EXPECT_THAT(All(list), ElementsAre(IsRange(0.5, 1.0, kPartial)));
    EXPECT_FALSE(list[0].m_bExternal);
    EXPECT_TRUE(list[0].m_bDegrees);
}

}  // namespace
}  // namespace ZT
