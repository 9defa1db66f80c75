// Whether a set of arcs is valid and in order.

#include <platform/object/CInvalidArgException.h>
#include <tests/Raises.h>
#include <zt/ranges/SetS1.h>
#include <zt/ranges/SetS1_test.h>

#include <cmath>
#include <limits>

namespace {

using namespace testing_support;
using ZT::RangeS1;
using ZT::zPi;

bool IsValid(std::initializer_list<RangeS1> arcs) {
    return OwningSet(arcs).IsValidEx(1e-10);
}

bool IsSorted(std::initializer_list<RangeS1> arcs) {
    return OwningSet(arcs).IsSorted();
}

bool SortingRaises(std::initializer_list<RangeS1> arcs) {
    const OwningSet set(arcs);
    return static_cast<bool>(Raises<CInvalidArgException>([&] { set.IsSorted(); }));
}

TEST(SetS1Validity, ArcsApartAreValid) {
    EXPECT_TRUE(IsValid({RawArc(0, 1), RawArc(2, 3)}));
    EXPECT_TRUE(IsValid({RawArc(0, 1), RawArc(1.5, 2), RawArc(3, -3)}));
    EXPECT_TRUE(IsValid({RawArc(2, 3), RawArc(0, 1)}));
}

TEST(SetS1Validity, EmptyMemberIsNotValid) {
    EXPECT_FALSE(IsValid({RawArc(0, 1), EmptyArc(2, 3)}));
    EXPECT_FALSE(IsValid({EmptyArc(2, 3), RawArc(0, 1)}));
    EXPECT_FALSE(IsValid({EmptyArc(0, 1)}));
}

TEST(SetS1Validity, NeighboursThatMeetAreNotValid) {
    EXPECT_FALSE(IsValid({RawArc(-2, -1), RawArc(0, 1), RawArc(0.5, 2)}));
    EXPECT_FALSE(IsValid({RawArc(0, 1), RawArc(0.5, 2), RawArc(-2, -1)}));
}

TEST(SetS1Validity, NeighboursThatTouchAreNotValid) {
    EXPECT_FALSE(IsValid({RawArc(-2, -1), RawArc(0, 1), RawArc(1, 2)}));
}

TEST(SetS1Validity, TailAndHeadAreNeighbours) {
    EXPECT_FALSE(IsValid({RawArc(3, -2), RawArc(0, 1), RawArc(2, -3)}));
    EXPECT_FALSE(IsValid({RawArc(-1, 0), RawArc(1, 2), RawArc(-2, -0.5)}));
}

TEST(SetS1Validity, OnlyNeighboursAreCompared) {
    EXPECT_TRUE(IsValid({RawArc(0, 1), RawArc(2, 3), RawArc(0.5, 0.6), RawArc(-2, -1)}));
}

// Which of two is asked counts beside an external arc: it meets what lies on it, but an arc that
// holds its middle, which `GetAnyOutside` takes for a point off it, does not meet it.
TEST(SetS1Validity, MembersAreAskedWhetherTheyMeetTheOneBefore) {
    EXPECT_TRUE(IsValid({ExternalArc(1, 2), RawArc(-2, -1), RawArc(1.2, 1.8)}));
    EXPECT_FALSE(IsValid({RawArc(-2, -1), ExternalArc(1, 2), RawArc(1.2, 1.8)}));
}

TEST(SetS1Validity, SetOfOneArcIsNotValid) {
    EXPECT_FALSE(IsValid({RawArc(0, 1)}));
    EXPECT_FALSE(IsValid({FullArc()}));
    EXPECT_FALSE(IsValid({PointArc(1)}));
}

TEST(SetS1Validity, ArgumentDoesNotCount) {
    for (const double d : {0.0, -1.0, 1e307, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_TRUE((OwningSet{RawArc(0, 1), RawArc(1.1, 2)}).IsValidEx(d));
        EXPECT_FALSE((OwningSet{RawArc(0, 1), RawArc(1, 2)}).IsValidEx(d));
    }
}

TEST(SetS1Validity, EmptySetRaises) {
    EXPECT_TRUE(Raises<CInvalidArgException>([] { OwningSet().IsValidEx(1e-10); }));
    EXPECT_TRUE(SortingRaises({}));
}

TEST(SetS1Order, ArcsInOrderFromAnyOfThemOn) {
    EXPECT_TRUE(IsSorted({RawArc(0, 1), RawArc(2, 3)}));
    EXPECT_TRUE(IsSorted({RawArc(-2, -1), RawArc(0, 1), RawArc(2, -3)}));
    EXPECT_TRUE(IsSorted({RawArc(0, 1), RawArc(2, -3), RawArc(-2, -1)}));
    EXPECT_TRUE(IsSorted({RawArc(2, -3), RawArc(-2, -1), RawArc(0, 1)}));
}

// Each member is only tested against the one before it.
TEST(SetS1Order, ArcsTheWrongWayRoundPass) {
    EXPECT_TRUE(IsSorted({RawArc(2, -3), RawArc(0, 1), RawArc(-2, -1)}));
}

TEST(SetS1Order, SetThatIsNotValidIsNotInOrder) {
    EXPECT_FALSE(IsSorted({RawArc(0, 1), RawArc(1, 2)}));
    EXPECT_FALSE(IsSorted({RawArc(0, 1), EmptyArc(2, 3)}));
}

TEST(SetS1Order, SetOfOneArcIsNotInOrder) {
    EXPECT_FALSE(IsSorted({RawArc(0, 1)}));
    EXPECT_FALSE(IsSorted({FullArc()}));
}

// The only such arc is one with limits that no angle has; it does not even meet itself.
TEST(SetS1Order, SetOfOneArcWithoutAPlaceIsInOrder) {
    EXPECT_TRUE(IsValid({RawArc(-4, -4)}));
    EXPECT_TRUE(IsSorted({RawArc(-4, -4)}));
}

// An external arc holds what its limits leave out, so that its neighbour can stand in them.
TEST(SetS1Order, MemberThatStartsBeforeTheEndOfTheLastIsNotInOrder) {
    EXPECT_TRUE(IsValid({ExternalArc(1, 2), RawArc(1.2, 1.8)}));
    EXPECT_FALSE(IsSorted({ExternalArc(1, 2), RawArc(1.2, 1.8)}));
    EXPECT_FALSE(IsSorted({RawArc(1.2, 1.8), ExternalArc(1, 2)}));
}

TEST(SetS1Order, ArcBehindAPoint) {
    EXPECT_TRUE(IsSorted({PointArc(0), RawArc(1, 2)}));
    EXPECT_TRUE(IsSorted({RawArc(1, 2), PointArc(0)}));
    EXPECT_TRUE(IsSorted({PointArc(0), RawArc(1, 2), PointArc(2.5), RawArc(3, -3)}));
}

// Behind a point both limits count, and those of the external arc stand the other way round. Up
// to there the set is in order: the point follows the last arc.
TEST(SetS1Order, ExternalArcBehindAPointIsNotInOrder) {
    EXPECT_TRUE(IsValid({PointArc(1.5), ExternalArc(1, 2), RawArc(-2, -1)}));
    EXPECT_FALSE(IsSorted({PointArc(1.5), ExternalArc(1, 2), RawArc(-2, -1)}));
}

TEST(SetS1Order, TwoPointsAndTheStartBehindThem) {
    EXPECT_TRUE(IsSorted({PointArc(0), PointArc(1), RawArc(2, 2.5)}));
    EXPECT_TRUE(IsValid({PointArc(0), PointArc(2), RawArc(1, 1.5)}));
    EXPECT_FALSE(IsSorted({PointArc(0), PointArc(2), RawArc(1, 1.5)}));
}

// As above, where one of the points is an arc shorter or longer than the tolerance.
TEST(SetS1Order, ArcShorterThanTheToleranceIsAPoint) {
    EXPECT_TRUE(IsSorted({RawArc(0, 5e-11), PointArc(1), RawArc(2, 2.5)}));
    EXPECT_TRUE(IsValid({RawArc(0, 5e-11), PointArc(2), RawArc(1, 1.5)}));
    EXPECT_FALSE(IsSorted({RawArc(0, 5e-11), PointArc(2), RawArc(1, 1.5)}));
    EXPECT_TRUE(IsSorted({RawArc(0, 2e-10), PointArc(2), RawArc(1, 1.5)}));
    EXPECT_TRUE(IsValid({PointArc(0), RawArc(2, 2 + 5e-11), RawArc(1, 1.5)}));
    EXPECT_FALSE(IsSorted({PointArc(0), RawArc(2, 2 + 5e-11), RawArc(1, 1.5)}));
    EXPECT_TRUE(IsSorted({PointArc(0), RawArc(2, 2 + 2e-10), RawArc(1, 1.5)}));
}

TEST(SetS1Order, TwoPointsAlone) {
    EXPECT_TRUE(IsSorted({PointArc(0), PointArc(1)}));
    EXPECT_TRUE(IsSorted({PointArc(1), PointArc(0)}));
}

TEST(SetS1Order, ThreePointsRaise) {
    EXPECT_TRUE(SortingRaises({PointArc(0), PointArc(1), PointArc(2)}));
}

// The first step over (0, 1, 2) passes before the second one raises; here the first one fails.
TEST(SetS1Order, ThreePointsOutOfOrderFailBeforeTheyRaise) {
    EXPECT_FALSE(IsSorted({PointArc(0), PointArc(2), PointArc(1)}));
}

TEST(SetS1Order, OfFourPointsEverySecondIsPassedOver) {
    EXPECT_TRUE(IsSorted({PointArc(0), PointArc(1), PointArc(2), PointArc(3)}));
    EXPECT_TRUE(IsSorted({PointArc(0), PointArc(2), PointArc(1), PointArc(3)}));
}

// Behind a member that was passed over, the point before it is still the one to follow.
TEST(SetS1Order, PassedOverMemberDoesNotBecomeTheLast) {
    EXPECT_TRUE(IsValid({PointArc(0), PointArc(1), RawArc(2, 2.5), RawArc(0.9, 1.1)}));
    EXPECT_FALSE(IsSorted({PointArc(0), PointArc(1), RawArc(2, 2.5), RawArc(0.9, 1.1)}));
    EXPECT_TRUE(IsSorted({PointArc(0), PointArc(1), RawArc(2, 2.5), RawArc(2.7, 3)}));
    EXPECT_TRUE(
        SortingRaises({RawArc(-2, -1), PointArc(0), PointArc(1), RawArc(2, 2.5), PointArc(3)}));
}

}  // namespace
