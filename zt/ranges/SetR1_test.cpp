#include <zt/ranges/SetR1.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CInvalidArgException.h>
#include <tests/Raises.h>
#include <zt/ranges/SetFamily_test.h>

#include <cmath>
#include <limits>
#include <type_traits>

namespace ZT {
namespace {

using namespace testing_support;
using testing_support::Is;

const double kNaN = std::numeric_limits<double>::quiet_NaN();

// The next double above and below.
double Above(double x) {
    return std::nextafter(x, zInfinity);
}
double Below(double x) {
    return std::nextafter(x, -zInfinity);
}

// [0, 1] and [2, 3].
struct TwoMembers : testing::Test {
    SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}});
    RangeR1 out;
};

// --- the array

TEST(SetR1, IsItsArrayAndNothingElse) {
    using Array = CArray<RangeR1, const RangeR1&>;
    static_assert(std::is_base_of_v<Array, SetR1> && std::is_base_of_v<CObject, Array>);
    static_assert(sizeof(SetR1) == sizeof(Array));
    static_assert(sizeof(RangeR1) == 32);
    EXPECT_EQ(SetR1().GetSize(), 0);
    EXPECT_TRUE(SetR1().IsEmpty());
    EXPECT_FALSE(SetOf({RangeR1()}).IsEmpty());
}

TEST(SetR1, EndsThroughItsRoot) {
    CObject* const root = new SetR1(SetOf({{0.0, 1.0}}));
    delete root;
}

TEST(SetR1, NewMembersAreTheCanonicalEmptyRange) {
    SetR1 set;
    set.SetSize(2);
    EXPECT_THAT(set, Is({{1e307, -1e307}, {1e307, -1e307}}));
}

TEST_F(TwoMembers, ArrayOperationsKeepNoOrder) {
    set.AddRange(-5.0, -6.0);
    set.InsertAt(1, RangeR1(9.0, 9.5), 2);
    EXPECT_THAT(set, Is({{0.0, 1.0}, {9.0, 9.5}, {9.0, 9.5}, {2.0, 3.0}, {-5.0, -6.0}}));
    set.RemoveAt(0, 3);
    set.InsertAt(0, &set);
    EXPECT_THAT(set, Is({{2.0, 3.0}, {-5.0, -6.0}, {2.0, 3.0}, {-5.0, -6.0}}));
    SetR1 other;
    other.Append(set);
    EXPECT_EQ(other.GetSize(), 4);
    set.RemoveAll();
    EXPECT_TRUE(set.IsEmpty());
}

TEST_F(TwoMembers, AssigningToAMemberGoesByTheRuleOfTheRange) {
    set.SetAt(0, RangeR1(5e-11, 1.0 - 5e-11));
    EXPECT_THAT(set[0], HasLimits(0.0, 1.0));
    set.SetAt(0, External(0.0, 1.0));
    EXPECT_TRUE(set[0].m_bExternal);
}

TEST_F(TwoMembers, MembersThatMoveKeepTheirBits) {
    set.InsertAt(0, External(5e-11, 1.0));
    EXPECT_THAT(set, Is({External(5e-11, 1.0), {0.0, 1.0}, {2.0, 3.0}}));
    set.RemoveAt(0);
    EXPECT_THAT(set, Is({{0.0, 1.0}, {2.0, 3.0}}));
    for (int i = 0; i < 100; ++i) set.Add(set[0]);
    EXPECT_THAT(set[1], HasLimits(2.0, 3.0));
    // They are still ranges, with their virtual operations.
    static_cast<RangeR1&>(set[101]).Set(4.0, 5.0);
    EXPECT_EQ(set[101].GetClass(), RangeR1::eClassR1);
    EXPECT_THAT(set[101], HasLimits(4.0, 5.0));
}

// --- making and copying

TEST(SetR1, CopyTakesOverSizeMembersAndFlags) {
    const SetR1 source = SetOf({{0.1, 0.2}, External(2.0, 3.0), {5.0, 4.0}});
    const SetR1 copy(source);
    EXPECT_THAT(copy, IsSet(source));
    SetR1 longer = SetOf({{7.0, 8.0}, {7.0, 8.0}, {7.0, 8.0}, {7.0, 8.0}});
    longer.Copy(source);
    EXPECT_THAT(longer, IsSet(source));
    longer.Copy(SetR1());
    EXPECT_TRUE(longer.IsEmpty());
    static_assert(!std::is_assignable_v<SetR1&, SetR1&>);
}

TEST(SetR1, CopyLeavesMembersThatDifferByLessThanTheTolerance) {
    SetR1 set = SetOf({{0.0, 1.0}, {2.0, 3.0}});
    set.Copy(SetOf({{5e-11, 1.0}, {2.0, 3.5}, {5.0, 6.0}}));
    EXPECT_THAT(set, Is({{0.0, 1.0}, {2.0, 3.5}, {5.0, 6.0}}));
}

TEST_F(TwoMembers, CopyOfItselfChangesNothing) {
    set.Copy(set);
    EXPECT_THAT(set, Is({{0.0, 1.0}, {2.0, 3.0}}));
}

TEST_F(TwoMembers, AddRangeAppendsWithoutOrderOrMerging) {
    set.AddRange(0.5, -4.0);
    EXPECT_THAT(set, Is({{0.0, 1.0}, {2.0, 3.0}, {0.5, -4.0}}));
}

TEST_F(TwoMembers, SetRangeStoresLimitsAndKeepsTheFlag) {
    set[1].m_bExternal = true;
    set.SetRange(1, 9.0, 8.0);
    EXPECT_THAT(set, Is({{0.0, 1.0}, External(9.0, 8.0)}));
}

TEST_F(TwoMembers, SetRange2ClipsUnlessThereIsNothingToClipTo) {
    set.SetRange2(0, -4.0, 4.0, nullptr);
    EXPECT_THAT(set[0], HasLimits(-4.0, 4.0));
    const RangeR1 clip(-1.0, 1.5);
    set.SetRange2(0, -4.0, 4.0, &clip);
    EXPECT_THAT(set[0], HasLimits(-1.0, 1.5));
    set.SetRange2(0, 5.0, 6.0, &clip);
    EXPECT_THAT(set, Is({{1e307, -1e307}, {2.0, 3.0}}));
}

// --- tests

TEST_F(TwoMembers, IsValidAsksForNoEmptyMember) {
    EXPECT_TRUE(SetR1().IsValid());
    EXPECT_TRUE(set.IsValid());
    EXPECT_TRUE(SetOf({{2.0, 3.0}, {0.0, 1.0}, {0.5, 0.5}}).IsValid());
    EXPECT_TRUE(SetOf({{0.0, -5e-11}}).IsValid());
    EXPECT_FALSE(SetOf({{0.0, 1.0}, {0.0, -2e-10}}).IsValid());
    EXPECT_FALSE(SetOf({RangeR1(), {0.0, 1.0}}).IsValid());
}

TEST_F(TwoMembers, IsValidExAsksForAGapToTheBit) {
    EXPECT_TRUE(set.IsValidEx(1.0));
    EXPECT_FALSE(set.IsValidEx(Above(1.0)));
    EXPECT_TRUE(SetR1().IsValidEx(1.0));
    EXPECT_TRUE(SetOf({{0.0, 1.0}, {1.0, 2.0}}).IsValidEx(0.0));
    EXPECT_FALSE(SetOf({{0.0, Above(1.0)}, {1.0, 2.0}}).IsValidEx(0.0));
    EXPECT_TRUE(SetOf({{0.0, 1.5}, {1.0, 2.0}}).IsValidEx(-0.5));
    EXPECT_FALSE(SetOf({{0.0, Above(1.5)}, {1.0, 2.0}}).IsValidEx(-0.5));
    EXPECT_FALSE(SetOf({{0.0, 1.0}, {5.0, 4.0}}).IsValidEx(0.0));
    EXPECT_FALSE(SetOf({{0.0, 1.0}, {2.0, 3.0}, {3.5, 4.0}}).IsValidEx(1.0));
}

TEST_F(TwoMembers, IsComparesTheOneMemberWithinTheTolerance) {
    EXPECT_FALSE(SetR1().Is(0.0, 1.0));
    EXPECT_FALSE(set.Is(0.0, 1.0));
    EXPECT_TRUE(SetOf({{5e-11, 1.0}}).Is(0.0, 1.0));
    EXPECT_TRUE(SetOf({{1e-10, 1.0}}).Is(0.0, 1.0));
    EXPECT_FALSE(SetOf({{1.5e-10, 1.0}}).Is(0.0, 1.0));
    EXPECT_FALSE(SetOf({{0.0, 1.1}}).Is(0.0, 1.0));
    EXPECT_TRUE(SetOf({{-2e306, 1.0}}).Is(-1e307, 1.0));
}

TEST_F(TwoMembers, IsComparesTheMemberOfTheIndex) {
    EXPECT_TRUE(set.Is(1, 2.0 + 5e-11, 3.0));
    EXPECT_FALSE(set.Is(1, 2.0 + 2e-10, 3.0));
    EXPECT_FALSE(set.Is(0, 2.0, 3.0));
}

TEST_F(TwoMembers, Is2TakesTheToleranceOfTheCaller) {
    EXPECT_TRUE(set.Is2(1, 2.25, 2.75, 0.25));
    EXPECT_FALSE(set.Is2(1, 2.25, 2.75, 0.2));
    EXPECT_TRUE(SetOf({{0.0, 1.0}}).Is2(0.25, 1.0, 0.25));
    EXPECT_FALSE(SetOf({{0.0, 1.0}}).Is2(0.25, 1.0, 0.2));
    EXPECT_FALSE(set.Is2(0.0, 1.0, 100.0));
}

TEST_F(TwoMembers, IndexOutsideRaisesInvalidArgument) {
    for (const int i : {-1, 2}) {
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.Is(i, 0.0, 1.0); }));
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.Is2(i, 0.0, 1.0, 0.1); }));
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.SetRange(i, 0.0, 1.0); }));
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { set.SetRange2(i, 0.0, 1.0, nullptr); }));
    }
    EXPECT_THAT(set, Is({{0.0, 1.0}, {2.0, 3.0}}));
}

// --- members and points

TEST_F(TwoMembers, BoundsSpanAllMembers) {
    set.GetBounds(out);
    EXPECT_THAT(out, HasLimits(0.0, 3.0));
    SetOf({{2.0, 3.0}, {-7.0, -6.0}, {0.0, 9.0}}).GetBounds(out);
    EXPECT_THAT(out, HasLimits(-7.0, 9.0));
}

TEST_F(TwoMembers, BoundsOfTheEmptySetAreEmptyAndTheFlagStays) {
    out = External(4.0, 5.0);
    SetR1().GetBounds(out);
    EXPECT_TRUE(SameRange(out, External(1e307, -1e307)));
}

TEST_F(TwoMembers, FindRangeGivesTheFirstMemberThatHoldsThePoint) {
    EXPECT_EQ(set.FindRange(0.5), 0);
    EXPECT_EQ(set.FindRange(2.5), 1);
    EXPECT_EQ(set.FindRange(1.5), -1);
    EXPECT_EQ(set.FindRange(-0.5), -1);
    EXPECT_EQ(set.FindRange(3.5), -1);
    EXPECT_EQ(SetR1().FindRange(0.0), -1);
}

TEST_F(TwoMembers, FindRangeIncludesBordersAndTolerance) {
    EXPECT_EQ(set.FindRange(-zToler), 0);
    EXPECT_EQ(set.FindRange(-2e-10), -1);
    EXPECT_EQ(set.FindRange(3.0 + zToler), 1);
    EXPECT_EQ(set.FindRange(3.0 + 2e-10), -1);
    EXPECT_EQ(set.FindRange(kNaN), -1);
}

TEST(SetR1, FindRangeTakesTheFirstOfSeveral) {
    EXPECT_EQ(SetOf({{0.0, 1.0}, {1.0, 2.0}}).FindRange(1.0), 0);
    EXPECT_EQ(SetOf({{0.0, 1.0}, {1.0, 2.0}}).FindRange(1.0 + zToler), 0);
    EXPECT_EQ(SetOf({{5.0, 6.0}, {0.0, 9.0}, {5.0, 6.0}}).FindRange(5.5), 0);
    EXPECT_EQ(SetOf({{5.0, 6.0}, {0.0, 9.0}, {1.0, 2.0}}).FindRange(1.5), 1);
}

TEST(SetR1, FindRangeFollowsLimitsInReverseAndExternalFlags) {
    EXPECT_EQ(SetOf({{5.0, 6.0}, {2.0, 1.0}}).FindRange(1.5), 1);
    EXPECT_EQ(SetOf({{5.0, 6.0}, External(1.0, 2.0), {1.0, 2.0}}).FindRange(1.5), 2);
    EXPECT_EQ(SetOf({{5.0, 6.0}, External(1.0, 2.0), {7.0, 8.0}}).FindRange(7.5), 1);
    EXPECT_EQ(SetOf({{5.0, 6.0}, External(1.0, 2.0)}).FindRange(kNaN), 1);
    EXPECT_EQ(SetOf({{5.0, 6.0}, RangeR1()}).FindRange(0.0), 1);
}

TEST_F(TwoMembers, FindPrevRangeGivesTheFirstMemberThatEndsAtOrAbove) {
    bool in = false;
    EXPECT_EQ(set.FindPrevRange(0.5, &in), 0);
    EXPECT_TRUE(in);
    EXPECT_EQ(set.FindPrevRange(1.5, &in), 1);
    EXPECT_FALSE(in);
    EXPECT_EQ(set.FindPrevRange(-5.0, nullptr), 0);
    EXPECT_EQ(set.FindPrevRange(kNaN, nullptr), -1);
}

TEST_F(TwoMembers, FindPrevRangeComparesToTheBit) {
    bool in = false;
    EXPECT_EQ(set.FindPrevRange(1.0, &in), 0);
    EXPECT_TRUE(in);
    EXPECT_EQ(set.FindPrevRange(Above(1.0), &in), 1);
    EXPECT_FALSE(in);
    EXPECT_EQ(set.FindPrevRange(2.0, &in), 1);
    EXPECT_TRUE(in);
    EXPECT_EQ(set.FindPrevRange(Below(2.0), &in), 1);
    EXPECT_FALSE(in);
}

TEST_F(TwoMembers, FindPrevRangeLeavesTheFlagIfNoMemberIsFound) {
    for (bool in : {false, true}) {
        const bool before = in;
        EXPECT_EQ(set.FindPrevRange(Above(3.0), &in), -1);
        EXPECT_EQ(SetR1().FindPrevRange(0.0, &in), -1);
        EXPECT_EQ(in, before);
    }
}

TEST(SetR1, FindPrevRangeGoesThroughMembersInTheirOrder) {
    EXPECT_EQ(SetOf({{5.0, 6.0}, {0.0, 1.0}}).FindPrevRange(0.5, nullptr), 0);
    EXPECT_EQ(SetOf({{0.0, 1.0}, {5.0, 6.0}, {2.0, 3.0}}).FindPrevRange(2.5, nullptr), 1);
}

TEST_F(TwoMembers, FirstPointIsThePointItselfOrTheNextStart) {
    EXPECT_THAT(set.GetFirstPoint(-1.0), testing_support::Is(0.0));
    EXPECT_THAT(set.GetFirstPoint(0.25), testing_support::Is(0.25));
    EXPECT_THAT(set.GetFirstPoint(1.0), testing_support::Is(1.0));
    EXPECT_THAT(set.GetFirstPoint(Above(1.0)), testing_support::Is(2.0));
    EXPECT_THAT(set.GetFirstPoint(1.5), testing_support::Is(2.0));
    EXPECT_THAT(set.GetFirstPoint(2.0), testing_support::Is(2.0));
    EXPECT_THAT(set.GetFirstPoint(3.0), testing_support::Is(3.0));
    EXPECT_THAT(set.GetFirstPoint(Above(3.0)), testing_support::Is(1e307));
    EXPECT_THAT(SetR1().GetFirstPoint(0.0), testing_support::Is(1e307));
    EXPECT_THAT(SetR1().GetFirstPoint(-1e307), testing_support::Is(1e307));
}

TEST(SetR1, FirstPointFromMinusInfinityIsTheFirstStartWhateverTheMembers) {
    const SetR1 set = SetOf({{5.0, -1e307}, {2.0, 3.0}});
    EXPECT_THAT(set.GetFirstPoint(-1e306), testing_support::Is(5.0));
    EXPECT_THAT(set.GetFirstPoint(-1e307), testing_support::Is(5.0));
    EXPECT_THAT(set.GetFirstPoint(Above(-1e306)), testing_support::Is(2.0));
}

TEST_F(TwoMembers, LastPoints) {
    EXPECT_THAT(set.GetLastPoint(), testing_support::Is(3.0));
    EXPECT_THAT(set.GetLastPointFirstRange(), testing_support::Is(1.0));
    EXPECT_THAT(SetR1().GetLastPoint(), testing_support::Is(1e307));
    EXPECT_THAT(SetR1().GetLastPointFirstRange(), testing_support::Is(1e307));
}

// --- several sets

struct SeveralSets : testing::Test {
    SetR1 empty;
    SetR1 early = SetOf({{0.0, 1.0}, {4.0, 5.0}});
    SetR1 late = SetOf({{2.0, 2.5}});
    SetR1 beyond = SetOf({{1e306, 1e306}});
    SetR1::Sets sets;
    Pair2<int, double> out{7, 7.0};

    void Expect(bool found, int index, double point, bool result) {
        EXPECT_EQ(result, found);
        EXPECT_EQ(out.m_first, index);
        EXPECT_THAT(out.m_second, testing_support::Is(point));
    }
};

TEST_F(SeveralSets, TheSetWithTheLeastFirstPointWins) {
    sets.Add(&empty);
    sets.Add(&early);
    sets.Add(&late);
    Expect(true, 1, 0.5, SetR1::GetFirstPoint(sets, 0.5, out));
    Expect(true, 2, 2.0, SetR1::GetFirstPoint(sets, 1.5, out));
    Expect(true, 1, 4.0, SetR1::GetFirstPoint(sets, 3.0, out));
    Expect(true, 1, 0.0, SetR1::GetFirstPoint(sets, -1e307, out));
}

TEST_F(SeveralSets, TheEarliestSetWinsATie) {
    sets.Add(&late);
    sets.Add(&late);
    Expect(true, 0, 2.25, SetR1::GetFirstPoint(sets, 2.25, out));
    Expect(true, 0, 2.5, SetR1::GetLastPointFirstRange(sets, out));
}

TEST_F(SeveralSets, NothingWinsAtOrAboveTheBar) {
    sets.Add(&empty);
    sets.Add(&beyond);
    Expect(false, -1, 1e306, SetR1::GetFirstPoint(sets, 0.0, out));
    Expect(false, -1, 1e306, SetR1::GetLastPointFirstRange(sets, out));
    sets.Add(&early);
    Expect(false, -1, 1e306, SetR1::GetFirstPoint(sets, 6.0, out));
    beyond.SetRange(0, Below(1e306), Below(1e306));
    Expect(true, 1, Below(1e306), SetR1::GetFirstPoint(sets, 6.0, out));
}

TEST_F(SeveralSets, NothingWinsAmongNone) {
    Expect(false, -1, 1e306, SetR1::GetFirstPoint(sets, 0.0, out));
    Expect(false, -1, 1e306, SetR1::GetLastPointFirstRange(sets, out));
}

TEST_F(SeveralSets, TheSetWithTheLeastEndOfAFirstMemberWins) {
    sets.Add(&late);
    sets.Add(&empty);
    sets.Add(&early);
    Expect(true, 2, 1.0, SetR1::GetLastPointFirstRange(sets, out));
    early.SetRange(0, 0.0, 1e307);
    Expect(true, 0, 2.5, SetR1::GetLastPointFirstRange(sets, out));
}

}  // namespace
}  // namespace ZT
