#include <zt/ranges/RangeMulti.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zt/ranges/RangeFamily_test.h>
#include <platform/files/Archived_test.hpp>
#include <zt/frame/VirtualTable_test.hpp>

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
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

const Range kNothing(1e307, -1e307);

// [0, 1], [2, 3] and [4, 5].
struct ThreeRanges : testing::Test {
    RangeMulti list = ListOf({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}});

    void ExpectUnchanged() const {
        EXPECT_THAT(All(list),
                    ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
    }
};

// --- the record

TEST(RangeMulti, FieldsStandBehindTheTable) {
    static_assert(std::is_base_of_v<CAISimpArr<Range>, RangeMulti>);
    static_assert(sizeof(RangeMulti) == sizeof(void*) + sizeof(CAISimpArr<Range>));
    static_assert(offsetof(RangeMulti, m_pData) == 8);
    static_assert(offsetof(RangeMulti, m_nSize) == 16);
    static_assert(offsetof(RangeMulti, m_nCount) == 24);
    static_assert(offsetof(RangeMulti, m_nBlock) == 32);
}

TEST(RangeMulti, SetFullIsTheFirstInTheTableAndTheDestructorTheNext) {
    struct Observed : RangeMulti {
        explicit Observed(int& seen) : calls(seen) {}
        void SetFull() override { calls += 1; }
        ~Observed() override { calls += 10; }
        int& calls;
    };
    int calls = 0;
    alignas(Observed) std::byte place[sizeof(Observed)];
    RangeMulti* const list = new (place) Observed(calls);
    CallSlot<void>(list, 0);
    EXPECT_EQ(calls, 1);
    CallSlot<void>(list, 1);
    EXPECT_EQ(calls, 11);
}

TEST(RangeMulti, StartsEmptyOrWithDefaultRanges) {
    EXPECT_EQ(RangeMulti().GetCount(), 0);
    EXPECT_EQ(RangeMulti().m_nBlock, 3);
    const RangeMulti list(2);
    EXPECT_THAT(All(list),
                ElementsAre(IsRange(-1e307, 1e307, kFull), IsRange(-1e307, 1e307, kFull)));
}

// --- copying

TEST_F(ThreeRanges, CopiesShareTheMembers) {
    RangeMulti copy(list);
    EXPECT_EQ(copy.GetData(), list.GetData());
    copy.Set(1, 2.5, 3.5);
    EXPECT_THAT(list[1], HasLimits(2.5, 3.5));
    RangeMulti assigned = ListOf({{7.0, 8.0}});
    assigned = list;
    EXPECT_EQ(assigned.GetData(), list.GetData());
    EXPECT_EQ(assigned.GetCount(), 3);
    RangeMulti& same = assigned;
    assigned = same;
    EXPECT_EQ(assigned.GetData(), list.GetData());
}

TEST_F(ThreeRanges, CopiesMayEndInAnyOrder) {
    auto copy = std::make_unique<RangeMulti>(list);
    copy.reset();
    ExpectUnchanged();
    RangeMulti last;
    {
        RangeMulti first = ListOf({{7.0, 8.0}});
        last = first;
    }
    EXPECT_THAT(All(last), ElementsAre(HasLimits(7.0, 8.0)));
}

TEST_F(ThreeRanges, DetachOfOneOfTwoLeavesTheOther) {
    RangeMulti copy(list);
    copy.Detach();
    EXPECT_EQ(copy.GetCount(), 0);
    ExpectUnchanged();
}

TEST_F(ThreeRanges, ACopyThatNeedsMoreRoomMovesAway) {
    RangeMulti copy(list);
    for (int i = 0; i < 20; ++i) copy.Add(Range(10.0 * i + 10.0, 10.0 * i + 11.0));
    copy.Set(0, 9.0, 9.0);
    EXPECT_THAT(list[0], HasLimits(0.0, 1.0));
    EXPECT_EQ(list.GetCount(), 3);
}

TEST_F(ThreeRanges, CopyIsDeep) {
    RangeMulti copy(list);
    copy.Copy(list);
    copy.Set(0, 8.0, 9.0);
    ExpectUnchanged();
    copy.Copy(ListOf({{6.0, 7.0}}));
    EXPECT_THAT(All(copy), ElementsAre(HasLimits(6.0, 7.0)));
    list.Copy(list);
    ExpectUnchanged();
    copy.Copy(RangeMulti());
    EXPECT_EQ(copy.GetCount(), 0);
}

TEST_F(ThreeRanges, AListAttachedToItsMembersMayBeAssignedOrCopied) {
    RangeMulti view;
    view.Attach(list.GetData(), 2);
    list = view;
    EXPECT_EQ(list.GetData(), view.GetData());
    EXPECT_THAT(All(list), ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.0)));
    RangeMulti three;
    three.Copy(ListOf({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}}));
    view.Attach(three.GetData() + 1, 2);
    three = view;
    EXPECT_THAT(All(three), ElementsAre(HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
    three.Copy(view);
    EXPECT_THAT(All(three), ElementsAre(HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
}

TEST_F(ThreeRanges, AListAttachedBeyondTheCapacityFigureMayBeAssignedOrCopied) {
    const auto isTheRest = ElementsAre(HasLimits(2.0, 3.0), HasLimits(4.0, 5.0));
    RangeMulti view;
    view.Attach(list.GetData() + 1, 2);
    list.SetCount(1);
    list.Create(1);
    list = view;
    EXPECT_EQ(list.GetData(), view.GetData());
    EXPECT_THAT(All(list), isTheRest);
    RangeMulti three;
    three.Copy(ListOf({{0.0, 1.0}, {2.0, 3.0}, {4.0, 5.0}}));
    view.Attach(three.GetData() + 1, 2);
    three.SetCount(1);
    three.Create(1);
    three.Copy(view);
    EXPECT_THAT(All(three), isTheRest);
}

TEST_F(ThreeRanges, CopyOfItselfAfterTheCapacityFigureShrankKeepsAllThatCounts) {
    list.Create(1);
    list.Copy(list);
    ExpectUnchanged();
}

TEST_F(ThreeRanges, CopyLeavesMembersThatDifferByLessThanTheTolerance) {
    list.Copy(ListOf({{5e-11, 1.0}, {2.0, 3.5}, {4.0, 5.0}, {6.0, 7.0}}));
    EXPECT_THAT(All(list), ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.5),
                                       HasLimits(4.0, 5.0), HasLimits(6.0, 7.0)));
}

TEST(RangeMulti, CopyTakesKindUnitAndFlag) {
    RangeMulti copy;
    copy.Copy(ListOf({Outside(Degrees(10.0, 20.0))}));
    EXPECT_EQ(copy[0].m_eScalarType, eScalarAngle);
    EXPECT_TRUE(copy[0].m_bDegrees);
    EXPECT_TRUE(copy[0].m_bExternal);
    EXPECT_THAT(copy[0], IsRange(10.0, 20.0, kPartial));
}

// --- single members

TEST_F(ThreeRanges, SetGoesThroughTheRange) {
    list[1].SetScalarType(eScalarAngle);
    list.Set(1, 0.5, -zPi);
    EXPECT_THAT(list[1], IsRange(0.5, zPi, kPartial));
    list.Set(0, 9.0, 8.0);
    EXPECT_THAT(list[0], HasLimits(9.0, 8.0));
}

TEST_F(ThreeRanges, SetAtGrowStoresARealRange) {
    list.SetAtGrow(4, 8.0, 7.0);
    EXPECT_EQ(list.GetCount(), 5);
    EXPECT_THAT(list[4], IsRange(8.0, 7.0, kEmpty));
    EXPECT_THAT(list[2], HasLimits(4.0, 5.0));
    RangeMulti other;
    other.SetAtGrow(3, 1.0, 2.0);
    EXPECT_EQ(other.GetCount(), 4);
    EXPECT_GE(other.GetSize(), 4);
    EXPECT_THAT(other[3], HasLimits(1.0, 2.0));
}

TEST_F(ThreeRanges, InsertAtNeitherOrdersNorMerges) {
    list.InsertAt(1, Range(9.0, -9.0));
    list.InsertAt(4, Range(0.0, 1.0));
    EXPECT_THAT(All(list),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(9.0, -9.0), HasLimits(2.0, 3.0),
                            HasLimits(4.0, 5.0), HasLimits(0.0, 1.0)));
}

TEST_F(ThreeRanges, SetAtReplacesAMemberByAList) {
    list.SetAt(1, ListOf({{6.0, 7.0}, {8.0, 9.0}, {10.0, 11.0}}));
    EXPECT_THAT(All(list),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(6.0, 7.0), HasLimits(8.0, 9.0),
                            HasLimits(10.0, 11.0), HasLimits(4.0, 5.0)));
    list.SetAt(4, ListOf({{1.0, 2.0}}));
    EXPECT_THAT(list[4], HasLimits(1.0, 2.0));
    EXPECT_EQ(list.GetCount(), 5);
}

TEST_F(ThreeRanges, InsertAfterPutsAListBehindAMember) {
    list.InsertAfter(0, ListOf({{6.0, 7.0}, {8.0, 9.0}}));
    EXPECT_THAT(All(list),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(6.0, 7.0), HasLimits(8.0, 9.0),
                            HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
    list.InsertAfter(4, ListOf({{1.0, 2.0}}));
    EXPECT_THAT(list.GetLast(), HasLimits(1.0, 2.0));
    list.InsertAfter(-1, ListOf({{3.0, 4.0}}));
    EXPECT_THAT(list[0], HasLimits(3.0, 4.0));
    EXPECT_EQ(list.GetCount(), 7);
}

TEST_F(ThreeRanges, AListWithoutMembersIsInsertedAsNothing) {
    list.SetAt(1, RangeMulti());
    list.InsertAfter(1, RangeMulti());
    ExpectUnchanged();
}

TEST_F(ThreeRanges, AListMayBeInsertedIntoItself) {
    list.SetAt(0, list);
    EXPECT_THAT(All(list),
                ElementsAre(HasLimits(0.0, 1.0), HasLimits(2.0, 3.0), HasLimits(4.0, 5.0),
                            HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
    list.SetSizeGrow(100);
    list.InsertAfter(3, list);
    EXPECT_EQ(list.GetCount(), 10);
    EXPECT_THAT(list[4], HasLimits(0.0, 1.0));
    EXPECT_THAT(list[9], HasLimits(4.0, 5.0));
}

TEST_F(ThreeRanges, APartOfAListMayBeInsertedIntoIt) {
    list.SetSizeGrow(100);
    RangeMulti view;
    view.Attach(list.GetData() + 1, 2);
    list.InsertAfter(-1, view);
    EXPECT_THAT(All(list),
                ElementsAre(HasLimits(2.0, 3.0), HasLimits(4.0, 5.0), HasLimits(0.0, 1.0),
                            HasLimits(2.0, 3.0), HasLimits(4.0, 5.0)));
}

TEST(RangeMulti, MembersThatAreNearlyTheSameStayWhereTheyAreMovedTo) {
    RangeMulti list = ListOf({{0.0, 1.0}, {5e-11, 1.0}});
    list.SetSizeGrow(3);
    list.InsertAfter(-1, ListOf({{7.0, 8.0}}));
    EXPECT_THAT(All(list),
                ElementsAre(HasLimits(7.0, 8.0), HasLimits(5e-11, 1.0), HasLimits(5e-11, 1.0)));
    RangeMulti replaced = ListOf({{0.0, 1.0}});
    replaced.SetAt(0, ListOf({{5e-11, 1.0}}));
    EXPECT_THAT(All(replaced), ElementsAre(HasLimits(0.0, 1.0)));
    RangeMulti cut = ListOf({{0.0, 1.0}, {5e-11, 1.0}});
    cut.Remove(0, 0);
    EXPECT_THAT(All(cut), ElementsAre(HasLimits(0.0, 1.0)));
}

TEST(RangeMulti, AnEmptyAngularMemberThatIsInsertedOrMovedIsFull) {
    Range empty(eScalarAngle);
    empty.SetEmpty();
    RangeMulti list;
    list.InsertAt(0, empty);
    EXPECT_THAT(All(list), ElementsAre(IsRange(zPi, zPi, kFull)));
    EXPECT_FALSE(list.IsEmpty());

    RangeMulti moved = ListOf({Radians(1.0, 2.0)});
    moved[0].SetEmpty();
    EXPECT_TRUE(moved.IsEmpty());
    moved.InsertAt(0, Range(1.0, 2.0));
    EXPECT_THAT(moved[1], IsRange(zPi, zPi, kFull));

    // In degrees it stays empty.
    Range degrees = Degrees(10.0, 20.0);
    degrees.SetEmpty();
    EXPECT_THAT(All(ListOf({degrees})), ElementsAre(IsRange(180.0, 180.0, kEmpty)));
}

TEST_F(ThreeRanges, InsertingMovesNothingBeyondTheLastMember) {
    list.SetCount(20);
    list.Set(9, 50.0, 60.0);
    list.SetCount(3);
    list.InsertAfter(0, ListOf({{6.0, 7.0}, {8.0, 9.0}}));
    list.SetAt(0, ListOf({{6.0, 7.0}, {8.0, 9.0}}));
    EXPECT_THAT(list.GetData()[9], HasLimits(50.0, 60.0));
}

TEST_F(ThreeRanges, RemoveTakesOutARun) {
    list.Remove(2, 1);
    ExpectUnchanged();
    list.Remove(0, 1);
    EXPECT_THAT(All(list), ElementsAre(HasLimits(4.0, 5.0)));
    list.Remove(0, 0);
    EXPECT_EQ(list.GetCount(), 0);
}

TEST_F(ThreeRanges, SetEmptyKeepsTheRoom) {
    const int64 size = list.GetSize();
    list.SetEmpty();
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(list.GetSize(), size);
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(ThreeRanges, SetFullMakesOneFullRangeOfItsKind) {
    list.SetFull();
    EXPECT_THAT(All(list), ElementsAre(HasLimits(-1e307, 1e307)));
    list[0].SetScalarType(eScalarAngle);
    list.SetFull();
    EXPECT_THAT(All(list), ElementsAre(IsRange(zPi, zPi, kFull)));
    RangeMulti fresh;
    fresh.SetFull();
    EXPECT_THAT(All(fresh), ElementsAre(IsRange(-1e307, 1e307, kFull)));
}

TEST_F(ThreeRanges, SetFullAngleMakesOneFullAngle) {
    list.SetFullAngle();
    EXPECT_THAT(All(list), ElementsAre(HasLimits(-3.14159265343979, zPi)));
    list[0].SetScalarType(eScalarAngle);
    list.SetFullAngle();
    EXPECT_THAT(All(list), ElementsAre(IsRange(zPi, zPi, kFull)));
}

// --- tests and search

TEST_F(ThreeRanges, FindFirstOnLeftWalksDownFromTheLast) {
    EXPECT_EQ(list.FindFirstOnLeft(-1.0), -1);
    EXPECT_EQ(list.FindFirstOnLeft(0.0), 0);
    EXPECT_EQ(list.FindFirstOnLeft(1.5), 0);
    EXPECT_EQ(list.FindFirstOnLeft(2.0 - 5e-11), 1);
    EXPECT_EQ(list.FindFirstOnLeft(2.0 - 2e-10), 0);
    EXPECT_EQ(list.FindFirstOnLeft(100.0), 2);
    EXPECT_EQ(RangeMulti().FindFirstOnLeft(0.0), -1);
    // Exactly the tolerance below is not enough.
    EXPECT_EQ(ListOf({{0.0, 1.0}}).FindFirstOnLeft(-zToler), -1);
    EXPECT_EQ(ListOf({{5.0, 6.0}, {0.0, 1.0}, {7.0, 8.0}}).FindFirstOnLeft(6.0), 1);
}

TEST_F(ThreeRanges, FindRangeGivesTheFirstMemberThatHoldsThePoint) {
    EXPECT_EQ(list.FindRange(2.5), 1);
    EXPECT_EQ(list.FindRange(2.0 - zToler), 1);
    EXPECT_EQ(list.FindRange(1.5), -1);
    EXPECT_EQ(RangeMulti().FindRange(0.0), -1);
    list[1].SetFull();
    EXPECT_EQ(list.FindRange(4.5), 1);
    EXPECT_EQ(ListOf({Radians(1.0, 2.0), Radians(3.0, -3.0)}).FindRange(-3.1), 1);
}

TEST_F(ThreeRanges, IsEmptyLooksThroughTheMembers) {
    EXPECT_TRUE(RangeMulti().IsEmpty());
    EXPECT_FALSE(list.IsEmpty());
    EXPECT_TRUE(ListOf({kNothing, {2.0, 1.0}}).IsEmpty());
    EXPECT_FALSE(ListOf({kNothing, {1.0, 1.0}}).IsEmpty());
    // An angular member is empty by its state.
    EXPECT_FALSE(ListOf({Radians(2.0, 1.0)}).IsEmpty());
    RangeMulti angle = ListOf({Radians(1.0, 2.0)});
    angle[0].m_eState = kEmpty;
    EXPECT_TRUE(angle.IsEmpty());
    EXPECT_EQ(angle.GetCount(), 1);
}

TEST_F(ThreeRanges, IsValidAllowsTouchingWithinTheTolerance) {
    EXPECT_TRUE(RangeMulti().IsValid());
    EXPECT_TRUE(ListOf({{5.0, 4.0}}).IsValid());
    EXPECT_TRUE(list.IsValid());
    EXPECT_TRUE(ListOf({{0.0, 1.0 + 5e-11}, {1.0, 2.0}}).IsValid());
    EXPECT_TRUE(ListOf({{-1.0, zToler}, {0.0, 2.0}}).IsValid());
    EXPECT_FALSE(ListOf({{0.0, 1.0 + 2e-10}, {1.0, 2.0}}).IsValid());
    EXPECT_FALSE(ListOf({{0.0, 1.0}, {2.0, 3.0}, {0.0, 1.0}}).IsValid());
}

// --- the archive record

TEST_F(ThreeRanges, ReloadGivesTheCountAndDefaultRanges) {
    list.SetSizeGrow(6);
    const std::string record = Stored([&](CArchive& ar) { list.Serialize(ar); });
    EXPECT_EQ(record, std::string("\6\0\0\0\3\0\0\0", 8));
    RangeMulti loaded;
    Loaded(record, [&](CArchive& ar) { loaded.Serialize(ar); });
    EXPECT_EQ(loaded.GetSize(), 6);
    EXPECT_THAT(All(loaded), testing::SizeIs(3));
    EXPECT_THAT(All(loaded), testing::Each(IsRange(-1e307, 1e307, kFull)));
}

}  // namespace
}  // namespace ZT
