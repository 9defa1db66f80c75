// Elements of a cyclic group, and the operations on plain cyclic indices.

#include <zt/numerics/ZGroup.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <zt/frame/VirtualTable_test.hpp>

#include <cstddef>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZT {

void PrintTo(const ZGroup& g, std::ostream* os) {
    *os << g.m_value << " of rank " << g.m_rank << ", state " << g.m_eIncrem;
}

namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

MATCHER_P3(IsElement, rank, value, state, "") {
    return arg.m_rank == rank && arg.m_value == value && arg.m_eIncrem == state;
}

constexpr auto kNone = ZGroup::eIncremNone;
constexpr auto kUp = ZGroup::eIncremUp;
constexpr auto kDown = ZGroup::eIncremDown;

// An element with a value that need not be canonical.
ZGroup Raw(int rank, int value) {
    ZGroup g(rank);
    g.m_value = value;
    return g;
}

ZGroup Stepped(int rank, int value, ZGroup::EIncremState state) {
    ZGroup g = Raw(rank, value);
    g.m_eIncrem = state;
    return g;
}

// The record.

TEST(ZGroup, FieldsFollowTheTableInOrder) {
    EXPECT_EQ(offsetof(ZGroup, m_value), 8u);
    EXPECT_EQ(offsetof(ZGroup, m_eIncrem), 12u);
    EXPECT_EQ(offsetof(ZGroup, m_rank), 16u);
    EXPECT_EQ(sizeof(ZGroup), 24u);
}

struct Counted : ZGroup {
    explicit Counted(int* ended) : m_ended(ended) {}
    ~Counted() override { ++*m_ended; }
    int* m_ended;
};

TEST(ZGroup, DestructorIsTheFirstVirtualOperation) {
    EXPECT_TRUE(std::has_virtual_destructor_v<ZGroup>);
    int ended = 0;
    alignas(Counted) std::byte memory[sizeof(Counted)];
    CallSlot<void>(new (memory) Counted(&ended), 0);
    EXPECT_EQ(ended, 1);
}

TEST(ZGroup, StatesHaveTheirValues) {
    EXPECT_EQ(sizeof(ZGroup::EIncremState), 4u);
    EXPECT_EQ(ZGroup::eIncremNone, 0);
    EXPECT_EQ(ZGroup::eIncremUp, 1);
    EXPECT_EQ(ZGroup::eIncremDown, 2);
}

// Making and storing.

TEST(ZGroup, NewElementIsZeroOfRankTwo) {
    EXPECT_THAT(ZGroup(), IsElement(2, 0, kNone));
}

TEST(ZGroup, OneArgumentIsTheRank) {
    EXPECT_THAT(ZGroup(7), IsElement(7, 0, kNone));
}

TEST(ZGroup, ValueIsBroughtIntoTheLoop) {
    EXPECT_THAT(ZGroup(5, 3), IsElement(5, 3, kNone));
    EXPECT_THAT(ZGroup(5, 5), IsElement(5, 0, kNone));
    EXPECT_THAT(ZGroup(5, 7), IsElement(5, 2, kNone));
    EXPECT_THAT(ZGroup(5, 23), IsElement(5, 3, kNone));
    EXPECT_THAT(ZGroup(5, -1), IsElement(5, 4, kNone));
    EXPECT_THAT(ZGroup(5, -5), IsElement(5, 0, kNone));
}

TEST(ZGroup, RankIsAddedOnlyOnceSoAValueBelowMinusTheRankStaysNegative) {
    EXPECT_THAT(ZGroup(5, -7), IsElement(5, -2, kNone));
    EXPECT_FALSE(ZGroup(5, -7).IsValid());
    EXPECT_THAT(ZGroup(5, -10), IsElement(5, 0, kNone));
    EXPECT_THAT(ZGroup(5, -13), IsElement(5, -3, kNone));
}

TEST(ZGroup, CopyTakesAllFields) {
    const ZGroup g = Stepped(5, -9, kDown);
    EXPECT_THAT(ZGroup(g), IsElement(5, -9, kDown));
}

TEST(ZGroup, AssigningAnIntegerReducesItAndClearsTheState) {
    ZGroup g = Stepped(5, 4, kDown);
    const ZGroup result = (g = 7);
    EXPECT_THAT(g, IsElement(5, 2, kNone));
    EXPECT_THAT(result, IsElement(5, 2, kNone));
    g = -1;
    EXPECT_THAT(g, IsElement(5, 4, kNone));
    g = -7;
    EXPECT_THAT(g, IsElement(5, -2, kNone));
}

TEST(ZGroup, AssigningAnElementKeepsTheRankAndDoesNotReduceTheValue) {
    ZGroup g = Stepped(5, 4, kUp);
    const ZGroup result = (g = Stepped(10, 7, kDown));
    EXPECT_THAT(g, IsElement(5, 7, kNone));
    EXPECT_THAT(result, IsElement(5, 7, kNone));
    EXPECT_FALSE(g.IsValid());
}

TEST(ZGroup, AssignmentResultsInACopyAndNotInAReference) {
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<ZGroup&>() = 1), ZGroup>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<ZGroup&>() = ZGroup()), ZGroup>));
}

TEST(ZGroup, SelfAssignmentOnlyClearsTheState) {
    ZGroup g = Stepped(5, 7, kUp);
    const ZGroup& same = g;
    g = same;
    EXPECT_THAT(g, IsElement(5, 7, kNone));
}

TEST(ZGroup, SetStoresRankAndReducedValueAndClearsTheState) {
    ZGroup g = Stepped(5, 4, kUp);
    g.Set(3, 4);
    EXPECT_THAT(g, IsElement(3, 1, kNone));
    g.Set(3, -1);
    EXPECT_THAT(g, IsElement(3, 2, kNone));
}

TEST(ZGroup, SetRankLeavesTheValueUnreduced) {
    ZGroup g = Stepped(5, 4, kUp);
    g.SetRank(3);
    EXPECT_THAT(g, IsElement(3, 4, kUp));
    EXPECT_EQ(g.GetRank(), 3);
}

TEST(ZGroup, FactorReducesTheValueAndKeepsTheState) {
    ZGroup g = Stepped(3, 4, kUp);
    g.Factor();
    EXPECT_THAT(g, IsElement(3, 1, kUp));
    ZGroup below = Stepped(3, -2, kDown);
    below.Factor();
    EXPECT_THAT(below, IsElement(3, 1, kDown));
}

TEST(ZGroup, ReadsItsFields) {
    const ZGroup g = Stepped(5, 3, kDown);
    EXPECT_EQ(g.GetRank(), 5);
    EXPECT_EQ(g.GetIncrementState(), kDown);
    EXPECT_EQ(static_cast<int>(g), 3);
    const std::vector<int> entries{10, 11, 12, 13};
    EXPECT_EQ(entries[static_cast<std::size_t>(g)], 13);
}

TEST(ZGroup, IsValidInsideTheLoop) {
    EXPECT_TRUE(Raw(5, 0).IsValid());
    EXPECT_TRUE(Raw(5, 4).IsValid());
    EXPECT_FALSE(Raw(5, 5).IsValid());
    EXPECT_FALSE(Raw(5, -1).IsValid());
    EXPECT_FALSE(Raw(2, -1).IsValid());
}

TEST(ZGroup, AnyNegativeValueIsValidInAGroupOfRankOne) {
    EXPECT_TRUE(Raw(1, 0).IsValid());
    EXPECT_TRUE(Raw(1, -1).IsValid());
    EXPECT_TRUE(Raw(1, -100).IsValid());
    EXPECT_FALSE(Raw(1, 1).IsValid());
}

TEST(ZGroup, NothingIsValidInAGroupWithoutElements) {
    EXPECT_FALSE(Raw(0, 0).IsValid());
    EXPECT_FALSE(Raw(0, -1).IsValid());
    EXPECT_FALSE(Raw(-3, -4).IsValid());
}

// Comparison.

TEST(ZGroup, EqualityWithAnIntegerReducesIt) {
    EXPECT_TRUE(ZGroup(5, 0) == 5);
    EXPECT_TRUE(ZGroup(5, 4) == -1);
    EXPECT_TRUE(ZGroup(5, 2) == 12);
    EXPECT_FALSE(ZGroup(5, 2) == 3);
    EXPECT_FALSE(ZGroup(5, 0) != 5);
    EXPECT_TRUE(ZGroup(5, 2) != 3);
    EXPECT_FALSE(Raw(5, 7) == 7);
}

TEST(ZGroup, EqualityReducesAnIntegerThatStandsFirst) {
    EXPECT_TRUE(5 == ZGroup(5, 0));
    EXPECT_TRUE(-1 == ZGroup(5, 4));
    EXPECT_FALSE(3 == ZGroup(5, 2));
    EXPECT_FALSE(7 == Raw(5, 7));
    EXPECT_FALSE(5 != ZGroup(5, 0));
    EXPECT_TRUE(3 != ZGroup(5, 2));
    EXPECT_TRUE(7 != Raw(5, 7));
}

TEST(ZGroup, EqualityOfElementsIgnoresTheRanksAndTheState) {
    EXPECT_TRUE(ZGroup(5, 3) == ZGroup(10, 3));
    EXPECT_FALSE(ZGroup(5, 3) != ZGroup(10, 3));
    EXPECT_TRUE(ZGroup(5, 3) == Stepped(5, 3, kUp));
    EXPECT_FALSE(Raw(5, 7) == ZGroup(5, 2));
    EXPECT_TRUE(Raw(5, 7) != ZGroup(5, 2));
}

// Arithmetic. The family: elements of rank 5, one that a plain copy has put out of the loop,
// one below it, and elements of longer loops.

struct Arithmetic {
    int value;
    int rank;
    int other;
    int sum, difference, product, quotient;
};

// The sum, the product and the quotient keep the sign of what is divided by the rank; only the
// difference gets the rank added.
const Arithmetic kArithmetic[] = {
    // a  rank  b    a+b  a-b  a*b  a/b
    {0, 5, 1, 1, 4, 0, 0},     {0, 5, 2, 2, 3, 0, 0},    {0, 5, 4, 4, 1, 0, 0},
    {1, 5, 1, 2, 0, 1, 1},     {1, 5, 2, 3, 4, 2, 0},    {1, 5, 4, 0, 2, 4, 0},
    {2, 5, 1, 3, 1, 2, 2},     {2, 5, 2, 4, 0, 4, 1},    {2, 5, 4, 1, 3, 3, 0},
    {4, 5, 1, 0, 3, 4, 4},     {4, 5, 2, 1, 2, 3, 2},    {4, 5, 4, 3, 0, 1, 1},
    {4, 5, 7, 1, 2, 3, 0},     {1, 5, 7, 3, -1, 2, 0},   {0, 5, 9, 4, -4, 0, 0},
    {7, 5, 1, 3, 1, 2, 2},     {7, 5, 2, 4, 0, 4, 3},    {7, 5, -2, 0, 4, -4, -3},
    {2, 5, -2, 0, 4, -4, -1},  {1, 5, -2, -1, 3, -2, 0}, {-2, 5, -2, -4, 0, 4, 1},
    {-2, 5, 1, -1, 2, -2, -2}, {-2, 5, 4, 2, -1, -3, 0}, {4, 1, 4, 0, 0, 0, 0},
};

TEST(ZGroup, ArithmeticOfElementsFollowsTheTable) {
    for (const Arithmetic& row : kArithmetic) {
        SCOPED_TRACE(testing::Message() << row.value << " and " << row.other);
        const ZGroup a = Stepped(row.rank, row.value, kUp);
        const ZGroup b = Stepped(11, row.other, kDown);
        EXPECT_THAT(a + b, IsElement(row.rank, row.sum, kNone));
        EXPECT_THAT(a - b, IsElement(row.rank, row.difference, kNone));
        EXPECT_THAT(a * b, IsElement(row.rank, row.product, kNone));
        EXPECT_THAT(a / b, IsElement(row.rank, row.quotient, kNone));
    }
}

TEST(ZGroup, ArithmeticInPlaceGivesTheSameValuesAndLeavesTheState) {
    for (const Arithmetic& row : kArithmetic) {
        SCOPED_TRACE(testing::Message() << row.value << " and " << row.other);
        const ZGroup b = Raw(11, row.other);
        ZGroup g = Stepped(row.rank, row.value, kUp);
        g += b;
        EXPECT_THAT(g, IsElement(row.rank, row.sum, kUp));
        ZGroup h = Stepped(row.rank, row.value, kDown);
        h -= b;
        EXPECT_THAT(h, IsElement(row.rank, row.difference, kDown));
    }
}

TEST(ZGroup, SumOfElementsStaysNegativeWhereSumWithAnIntegerIsLifted) {
    EXPECT_THAT(ZGroup(5, 1) + Raw(5, -2), IsElement(5, -1, kNone));
    EXPECT_THAT(ZGroup(5, 1) + -2, IsElement(5, 4, kNone));
    ZGroup g(5, 1);
    g += Raw(5, -2);
    EXPECT_THAT(g, IsElement(5, -1, kNone));
    g = 1;
    g += -2;
    EXPECT_THAT(g, IsElement(5, 4, kNone));
}

TEST(ZGroup, QuotientIsThatOfTheRepresentativesAndNotTheModularInverse) {
    // 2 * 3 is 1 in a group of 5, so the inverse would give 1 / 2 = 3.
    EXPECT_THAT(ZGroup(5, 1) / ZGroup(5, 2), IsElement(5, 0, kNone));
}

TEST(ZGroup, SumAndDifferenceWithAnIntegerAreReduced) {
    const struct {
        int value, i, sum, difference;
    } rows[] = {{3, 0, 3, 3},  {3, 1, 4, 2},  {3, 2, 0, 1},   {3, 4, 2, 4},  {3, 5, 3, 3},
                {3, 9, 2, -1}, {3, -4, 4, 2}, {3, -9, -1, 2}, {0, -5, 0, 0}, {0, -6, -1, 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.value << " and " << row.i);
        ZGroup g = Stepped(5, row.value, kUp);
        EXPECT_THAT(g + row.i, IsElement(5, row.sum, kNone));
        EXPECT_THAT(g - row.i, IsElement(5, row.difference, kNone));
        EXPECT_THAT(g, IsElement(5, row.value, kUp));
        ZGroup up = g;
        up += row.i;
        EXPECT_THAT(up, IsElement(5, row.sum, kUp));
        ZGroup down = g;
        down -= row.i;
        EXPECT_THAT(down, IsElement(5, row.difference, kUp));
    }
}

TEST(ZGroup, ResultsThatDoNotFitWrapRoundBeforeTheyAreReduced) {
    // 2^31 - 1 + 1 becomes -2^31, whose remainder by 5 after adding 5 is -3.
    EXPECT_THAT(Raw(5, kHighest) + 1, IsElement(5, -3, kNone));
    EXPECT_THAT(Raw(5, kHighest) + Raw(5, 1), IsElement(5, -3, kNone));
    EXPECT_THAT(Raw(5, kLowest) - 1, IsElement(5, 2, kNone));
    EXPECT_THAT(Raw(5, 65536) * Raw(5, 65536), IsElement(5, 0, kNone));
    ZGroup g = Raw(5, kHighest);
    EXPECT_THAT(++g, IsElement(5, -3, kUp));
    g = Stepped(5, kLowest, kNone);
    EXPECT_THAT(--g, IsElement(5, 2, kDown));
}

// Steps.

TEST(ZGroup, StepsGoRoundTheLoopAndKeepTheirDirection) {
    ZGroup g(5, 4);
    EXPECT_THAT(++g, IsElement(5, 0, kUp));
    EXPECT_THAT(g, IsElement(5, 0, kUp));
    EXPECT_THAT(--g, IsElement(5, 4, kDown));
    EXPECT_THAT(g, IsElement(5, 4, kDown));
    g = 2;
    EXPECT_THAT(g, IsElement(5, 2, kNone));
}

TEST(ZGroup, PostfixStepsReturnTheNewValue) {
    ZGroup g(5, 1);
    EXPECT_THAT(g++, IsElement(5, 2, kUp));
    EXPECT_THAT(g, IsElement(5, 2, kUp));
    EXPECT_THAT(g--, IsElement(5, 1, kDown));
    EXPECT_THAT(g, IsElement(5, 1, kDown));
}

TEST(ZGroup, PostfixStepsInAGroupOfRankTwoGoRoundIt) {
    ZGroup g(2);
    EXPECT_THAT(g++, IsElement(2, 1, kUp));
    EXPECT_THAT(g++, IsElement(2, 0, kUp));
    EXPECT_THAT(g--, IsElement(2, 1, kDown));
    EXPECT_THAT(g, IsElement(2, 1, kDown));
}

TEST(ZGroup, StepsResultInCopiesAndOperationsInPlaceInNothing) {
    ZGroup g(5);
    EXPECT_TRUE((std::is_same_v<decltype(++g), ZGroup>));
    EXPECT_TRUE((std::is_same_v<decltype(--g), ZGroup>));
    EXPECT_TRUE((std::is_same_v<decltype(g++), ZGroup>));
    EXPECT_TRUE((std::is_same_v<decltype(g--), ZGroup>));
    EXPECT_TRUE((std::is_void_v<decltype(g += 1)>));
    EXPECT_TRUE((std::is_void_v<decltype(g -= 1)>));
    EXPECT_TRUE((std::is_void_v<decltype(g += g)>));
    EXPECT_TRUE((std::is_void_v<decltype(g -= g)>));
}

TEST(ZGroup, PrefixStepInAGroupOfRankOneGivesZeroAndSetsTheState) {
    ZGroup g(1);
    EXPECT_THAT(++g, IsElement(1, 0, kUp));
    EXPECT_THAT(--g, IsElement(1, 0, kDown));
}

TEST(ZGroup, PostfixStepInAGroupOfRankOneFailsWithMinusOneAndKeepsTheState) {
    ZGroup g(1);
    EXPECT_THAT(g++, IsElement(1, -1, kNone));
    EXPECT_THAT(g, IsElement(1, -1, kNone));
    EXPECT_TRUE(g.IsValid());
    ZGroup stepped = Stepped(1, 0, kUp);
    EXPECT_THAT(stepped--, IsElement(1, -1, kUp));
}

TEST(ZGroup, PostfixStepFailsAlsoWithoutARank) {
    ZGroup g(0);
    EXPECT_THAT(g++, IsElement(0, -1, kNone));
    EXPECT_THAT(g--, IsElement(0, -1, kNone));
    EXPECT_FALSE(g.IsValid());
}

TEST(ZGroup, StepsFromOutsideOfTheLoopAreReducedLikeTheirSums) {
    ZGroup g = Raw(5, 7);
    EXPECT_THAT(++g, IsElement(5, 3, kUp));
    g = Raw(5, -1);
    EXPECT_THAT(++g, IsElement(5, 0, kUp));
    g = Raw(5, -3);
    EXPECT_THAT(++g, IsElement(5, -2, kUp));  // No rank is added upwards.
    g = Raw(5, -3);
    EXPECT_THAT(--g, IsElement(5, 1, kDown));  // Downwards it is.
}

// Adjacency.

TEST(ZGroup, NextAfterGoesRoundTheLoop) {
    for (int value = 0; value < 5; ++value) {
        for (int other = 0; other < 5; ++other) {
            SCOPED_TRACE(testing::Message() << value << " after " << other);
            const bool follows = value - other == 1 || (value == 0 && other == 4);
            EXPECT_EQ(ZGroup(5, value).IsNextAfter(ZGroup(5, other)), follows);
        }
    }
}

TEST(ZGroup, NothingIsNextInAGroupOfRankOne) {
    EXPECT_FALSE(ZGroup(1).IsNextAfter(ZGroup(1)));
    EXPECT_FALSE(Raw(1, 0).IsNextAfter(Raw(1, -1)));
    EXPECT_FALSE(ZGroup(1).IsNextTo(ZGroup(1)));
}

TEST(ZGroup, AnyTwoDifferentValuesAreNextInAGroupOfRankTwo) {
    EXPECT_TRUE(ZGroup(2, 0).IsNextAfter(ZGroup(2, 1)));
    EXPECT_TRUE(ZGroup(2, 1).IsNextAfter(ZGroup(2, 0)));
    EXPECT_FALSE(ZGroup(2, 1).IsNextAfter(ZGroup(2, 1)));
    EXPECT_TRUE(ZGroup(2, 1).IsNextAfter(Raw(2, 17)));
}

TEST(ZGroup, NextAfterTheLastElementIsOnlyZero) {
    EXPECT_TRUE(ZGroup(5, 0).IsNextAfter(ZGroup(5, 4)));
    EXPECT_FALSE(Raw(5, 5).IsNextAfter(ZGroup(5, 4)));
    EXPECT_TRUE(ZGroup(5, 0).IsNextAfter(Raw(5, -1)));
}

TEST(ZGroup, NextToTakesTheRankOfTheOneThatFollows) {
    // 0 of rank 5 follows 4 of rank 10, since 4 is the last element in its own group.
    EXPECT_TRUE(ZGroup(5, 0).IsNextTo(ZGroup(10, 4)));
    EXPECT_TRUE(ZGroup(10, 4).IsNextTo(ZGroup(5, 0)));
    // In a group of 10 only 9 comes before 0.
    EXPECT_FALSE(ZGroup(10, 0).IsNextTo(ZGroup(5, 4)));
    EXPECT_FALSE(ZGroup(5, 4).IsNextTo(ZGroup(10, 0)));
    // A group of rank 1 has nothing that follows, but its element can be followed.
    EXPECT_TRUE(ZGroup(1).IsNextTo(ZGroup(5, 1)));
}

TEST(ZGroup, NextToIsNextAfterInEitherDirection) {
    EXPECT_TRUE(ZGroup(5, 3).IsNextTo(ZGroup(5, 4)));
    EXPECT_TRUE(ZGroup(5, 4).IsNextTo(ZGroup(5, 3)));
    EXPECT_TRUE(ZGroup(5, 0).IsNextTo(ZGroup(5, 4)));
    EXPECT_FALSE(ZGroup(5, 0).IsNextTo(ZGroup(5, 0)));
    EXPECT_FALSE(ZGroup(5, 0).IsNextTo(ZGroup(5, 2)));
}

// Membership.

TEST(ZGroup, RangeOfElementsDoesNotWrap) {
    EXPECT_FALSE(ZGroup(5, 4).InRange(ZGroup(5, 3), ZGroup(5, 0)));
    EXPECT_TRUE(ZGroup(5, 4).InRangeNoOverflow(3, 0));
    EXPECT_TRUE(ZGroup(5, 4).InRange(3, 0));
}

TEST(ZGroup, RangeOfElementsComparesThePlainRepresentatives) {
    const struct {
        int value, a, b;
        bool in;
    } rows[] = {{2, 1, 3, true},  {1, 1, 3, true},  {3, 1, 3, true},    {0, 1, 3, false},
                {4, 1, 3, false}, {2, 2, 2, true},  {2, 3, 1, false},   {3, 3, 1, false},
                {7, 6, 8, true},  {2, -3, 3, true}, {-2, -3, 3, false}, {2, -3, 1, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.value << " in " << row.a << " to " << row.b);
        EXPECT_EQ(Raw(5, row.value).InRange(Raw(9, row.a), Raw(7, row.b)), row.in);
    }
}

TEST(ZGroup, RangeWithoutOverflowGoesRoundTheSeam) {
    const struct {
        int value, a, b;
        bool in;
    } rows[] = {
        {0, 3, 1, true},  {1, 3, 1, true},  {2, 3, 1, false},  {3, 3, 1, true},   {4, 3, 1, true},
        {0, 1, 3, false}, {1, 1, 3, true},  {2, 1, 3, true},   {3, 1, 3, true},   {4, 1, 3, false},
        {2, 2, 2, true},  {3, 2, 2, false}, {4, -2, 6, true},  {2, -2, 6, false}, {1, -2, 6, true},
        {0, 0, 4, true},  {4, 0, 4, true},  {0, 3, 2, true},   {-1, 3, 2, false}, {7, 3, 1, true},
        {7, 1, 3, false}, {4, 8, 10, true}, {2, 8, 10, false}, {0, -7, 2, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.value << " in " << row.a << " to " << row.b);
        EXPECT_EQ(Raw(5, row.value).InRangeNoOverflow(row.a, row.b), row.in);
    }
}

TEST(ZGroup, RangeOfIntegersReadsTheStateOnAFullRun) {
    // The run from 3 to 2 holds every element.
    EXPECT_TRUE(ZGroup(5, 3).InRange(3, 2));
    EXPECT_FALSE(Stepped(5, 3, kUp).InRange(3, 2));
    EXPECT_TRUE(Stepped(5, 2, kUp).InRange(3, 2));
    EXPECT_TRUE(Stepped(5, 3, kDown).InRange(3, 2));
    EXPECT_FALSE(Stepped(5, 2, kDown).InRange(3, 2));
    EXPECT_TRUE(Stepped(5, 3, kUp).InRangeNoOverflow(3, 2));
}

TEST(ZGroup, RangeOfIntegersTakesItsLimitsFromHoweverFar) {
    EXPECT_TRUE(ZGroup(5, 3).InRange(-7, -7));
    EXPECT_FALSE(ZGroup(5, 3).InRangeNoOverflow(-7, -7));
}

TEST(ZGroup, BeforeIncrementalIsTrueUntilTheEndIsReached) {
    const ZGroup g(5, 2);
    EXPECT_TRUE(g.IsBeforeIncremental(3, 0));
    EXPECT_FALSE(g.IsBeforeIncremental(2, 0));
    EXPECT_FALSE(g.IsBeforeIncremental(7, 0));
    EXPECT_FALSE(g.IsBeforeIncremental(-3, 0));
}

TEST(ZGroup, BeforeIncrementalDoesNotReadItsSecondArgument) {
    for (const int second : {kLowest, -1, 0, 2, 5, kHighest}) {
        EXPECT_TRUE(ZGroup(5, 2).IsBeforeIncremental(3, second));
        EXPECT_FALSE(ZGroup(5, 2).IsBeforeIncremental(2, second));
    }
}

TEST(ZGroup, AWalkThatHasNotBegunIsBeforeTheIndexOnePastTheEnd) {
    ZGroup g(5);
    EXPECT_TRUE(g.IsBeforeIncremental(5, 0));
    int steps = 0;
    do {
        ++g;
        ++steps;
    } while (g.IsBeforeIncremental(5, 0));
    EXPECT_EQ(steps, 5);
    EXPECT_THAT(g, IsElement(5, 0, kUp));
}

TEST(ZGroup, OnlyTheRankItselfStandsForAWalkThatHasNotBegun) {
    EXPECT_FALSE(ZGroup(5).IsBeforeIncremental(0, 0));
    EXPECT_FALSE(ZGroup(5).IsBeforeIncremental(10, 0));
    EXPECT_TRUE(ZGroup(5, 1).IsBeforeIncremental(5, 0));
}

// Plain indices.

TEST(ZGroupIndices, FactorizeGivesTheNormalForm) {
    EXPECT_EQ(ZGroup::Factorize(5, 0), 0);
    EXPECT_EQ(ZGroup::Factorize(5, 4), 4);
    EXPECT_EQ(ZGroup::Factorize(5, 5), 0);
    EXPECT_EQ(ZGroup::Factorize(5, 14), 4);
    EXPECT_EQ(ZGroup::Factorize(5, -1), 4);
    EXPECT_EQ(ZGroup::Factorize(5, -6), -1);
    EXPECT_EQ(ZGroup::Factorize(1, 3), 0);
    EXPECT_EQ(ZGroup::Factorize(1, -3), 0);
    EXPECT_EQ(ZGroup::Factorize(5, kHighest), 2);
    EXPECT_EQ(ZGroup::Factorize(5, kLowest), -3);
}

TEST(ZGroupIndices, FIsTheNormalFormForTheCornersOfATriangle) {
    EXPECT_EQ(ZGroup::F(-1), 2);
    EXPECT_EQ(ZGroup::F(4), 1);
    EXPECT_EQ(ZGroup::F(3), 0);
    EXPECT_EQ(ZGroup::F(2), 2);
    EXPECT_EQ(ZGroup::F(-4), 255);  // -1 in 8 bits.
    EXPECT_TRUE((std::is_same_v<decltype(ZGroup::F(0)), unsigned char>));
}

TEST(ZGroupIndices, IncrementAndDecrementStepAnIndex) {
    const struct {
        int v, up, down;
    } rows[] = {{0, 1, 4}, {1, 2, 0}, {4, 0, 3}, {5, 1, 4}, {-1, 0, 3}, {-3, 3, 1}, {-7, -1, -3}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.v);
        int v = row.v;
        ZGroup::Increment(5, v);
        EXPECT_EQ(v, row.up);
        v = row.v;
        ZGroup::Decrement(5, v);
        EXPECT_EQ(v, row.down);
        EXPECT_EQ(ZGroup::GetIncrement(5, row.v, true), row.up);
        EXPECT_EQ(ZGroup::GetIncrement(5, row.v, false), row.down);
    }
}

TEST(ZGroupIndices, StaticIncrementLiftsANegativeIndexWhereThePrefixOperatorDoesNot) {
    EXPECT_EQ(ZGroup::GetIncrement(5, -3, true), 3);
    ZGroup g = Raw(5, -3);
    EXPECT_THAT(++g, IsElement(5, -2, kUp));
}

TEST(ZGroupIndices, IncrementInEightBitsGoesBothWays) {
    const struct {
        unsigned char rank, v, up, down;
    } rows[] = {{5, 0, 1, 4},       {5, 4, 0, 3},     {5, 7, 3, 1},      {1, 0, 0, 0},
                {255, 254, 0, 253}, {255, 0, 1, 254}, {200, 255, 56, 54}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << int{row.v} << " of " << int{row.rank});
        unsigned char v = row.v;
        ZGroup::Increment(row.rank, v, true);
        EXPECT_EQ(v, row.up);
        v = row.v;
        ZGroup::Increment(row.rank, v, false);
        EXPECT_EQ(v, row.down);
    }
}

TEST(ZGroupIndices, MinimumOfTwoNeighboursIsTheOneThatComesFirst) {
    EXPECT_EQ(ZGroup::GetMin(5, 4, 0), 4);
    EXPECT_EQ(ZGroup::GetMin(5, 0, 4), 4);
    EXPECT_EQ(ZGroup::GetMin(5, 1, 2), 1);
    EXPECT_EQ(ZGroup::GetMin(5, 2, 1), 1);
}

TEST(ZGroupIndices, MinimumOfIndicesThatAreNoNeighboursIsTheSecond) {
    EXPECT_EQ(ZGroup::GetMin(5, 0, 2), 2);
    EXPECT_EQ(ZGroup::GetMin(5, 2, 0), 0);
    EXPECT_EQ(ZGroup::GetMin(5, 3, 3), 3);
    EXPECT_EQ(ZGroup::GetMin(1, 0, 1), 1);
}

TEST(ZGroupIndices, MinimumIsTheArgumentAsItStands) {
    EXPECT_EQ(ZGroup::GetMin(5, -1, 0), -1);
    EXPECT_EQ(ZGroup::GetMin(5, 9, 5), 9);
}

TEST(ZGroupIndices, NextIsEitherNeighbour) {
    for (int a = 0; a < 5; ++a) {
        for (int b = 0; b < 5; ++b) {
            SCOPED_TRACE(testing::Message() << a << " and " << b);
            const bool neighbours = (a + 1) % 5 == b || (b + 1) % 5 == a;
            EXPECT_EQ(ZGroup::IsNext(5, a, b), neighbours);
            EXPECT_EQ(ZGroup::IsNext(5, a - 5, b + 5), neighbours);
        }
    }
}

TEST(ZGroupIndices, NextInSmallGroups) {
    EXPECT_FALSE(ZGroup::IsNext(1, 0, 0));
    EXPECT_FALSE(ZGroup::IsNext(1, 0, 1));
    EXPECT_TRUE(ZGroup::IsNext(2, 0, 1));
    EXPECT_TRUE(ZGroup::IsNext(2, 1, 0));
    EXPECT_FALSE(ZGroup::IsNext(2, 1, 1));
    EXPECT_FALSE(ZGroup::IsNext(2, 0, 2));
}

TEST(ZGroupIndices, NextComparesNormalFormsThatCanStayNegative) {
    EXPECT_FALSE(ZGroup::IsNext(5, -7, 4));  // -2 and 4
    EXPECT_FALSE(ZGroup::IsNext(5, 4, -7));
    EXPECT_TRUE(ZGroup::IsNext(2, -3, 1));   // -1 and 1, which differ
    EXPECT_TRUE(ZGroup::IsNext(5, -7, -6));  // -2 and -1
}

TEST(ZGroupIndices, StaticNextAfterAsksWhetherTheLastArgumentFollows) {
    EXPECT_TRUE(ZGroup::IsNextAfter(5, 1, 2));
    EXPECT_FALSE(ZGroup::IsNextAfter(5, 2, 1));
    EXPECT_TRUE(ZGroup::IsNextAfter(5, 4, 0));
    EXPECT_FALSE(ZGroup::IsNextAfter(5, 0, 4));
    EXPECT_TRUE(ZGroup(5, 2).IsNextAfter(ZGroup(5, 1)));
}

TEST(ZGroupIndices, StaticNextAfterReducesTheDifference) {
    EXPECT_TRUE(ZGroup::IsNextAfter(5, 0, 6));
    EXPECT_TRUE(ZGroup::IsNextAfter(5, -1, 5));
    EXPECT_FALSE(ZGroup::IsNextAfter(5, 9, 0));  // -9 stays negative.
    EXPECT_FALSE(ZGroup::IsNextAfter(1, 0, 1));
    EXPECT_TRUE(ZGroup::IsNextAfter(2, 1, 0));
}

// Laws.

TEST(ZGroupLaws, NormalFormOfAnIndexWithinOneTurnIsItsResidue) {
    EXPECT_TRUE(rc::check("from -rank on", [] {
        const int rank = *rc::gen::inRange(1, 1000);
        const int v = *rc::gen::inRange(-rank, 100000);
        const int normal = ZGroup::Factorize(rank, v);
        RC_ASSERT(normal >= 0);
        RC_ASSERT(normal < rank);
        RC_ASSERT((v - normal) % rank == 0);
    }));
}

TEST(ZGroupLaws, NormalFormIsWhatTheWordsSayForEveryInteger) {
    EXPECT_TRUE(rc::check("any integer", [] {
        const int rank = *rc::gen::inRange(1, kHighest);
        const int v = *rc::gen::arbitrary<int>();
        const long long lifted = v < 0 ? static_cast<long long>(v) + rank : v;
        RC_ASSERT(ZGroup::Factorize(rank, v) == lifted % rank);
    }));
}

TEST(ZGroupLaws, AFullTurnOfStepsVisitsEachElementOnce) {
    EXPECT_TRUE(rc::check("a turn", [](bool up) {
        const int rank = *rc::gen::inRange(2, 60);
        ZGroup g(rank, *rc::gen::inRange(0, rank));
        const int start = g;
        std::vector<int> visits(static_cast<std::size_t>(rank));
        for (int i = 0; i < rank; ++i) {
            const ZGroup before = g;
            up ? ++g : --g;
            RC_ASSERT((up ? g.IsNextAfter(before) : before.IsNextAfter(g)));
            ++visits[static_cast<std::size_t>(g)];
        }
        RC_ASSERT(g == start);
        RC_ASSERT(visits == std::vector<int>(static_cast<std::size_t>(rank), 1));
    }));
}

TEST(ZGroupLaws, AStepBackUndoesAStep) {
    EXPECT_TRUE(rc::check("there and back", [] {
        const int rank = *rc::gen::inRange(1, 60);
        ZGroup g(rank, *rc::gen::inRange(0, rank));
        const ZGroup start = g;
        ++g;
        --g;
        RC_ASSERT(g == start);
        --g;
        ++g;
        RC_ASSERT(g == start);
    }));
}

TEST(ZGroupLaws, NextIsNextAfterInEitherDirection) {
    EXPECT_TRUE(rc::check("neighbours", [] {
        const int rank = *rc::gen::inRange(1, 8);
        const int a = *rc::gen::inRange(0, rank);
        const int b = *rc::gen::inRange(0, rank);
        const bool either = ZGroup::IsNextAfter(rank, a, b) || ZGroup::IsNextAfter(rank, b, a);
        RC_ASSERT(ZGroup::IsNext(rank, a, b) == either);
        RC_ASSERT(ZGroup(rank, a).IsNextTo(ZGroup(rank, b)) == either);
    }));
}

TEST(ZGroupLaws, SumsAndDifferencesAreThoseOfTheResidues) {
    EXPECT_TRUE(rc::check("sums", [] {
        const int rank = *rc::gen::inRange(1, 60);
        const int a = *rc::gen::inRange(0, rank);
        const int b = *rc::gen::inRange(0, rank);
        const ZGroup g(rank, a);
        const ZGroup h(rank, b);
        RC_ASSERT(g + h == (a + b) % rank);
        RC_ASSERT((g + h) - h == g);
        RC_ASSERT(g + b == g + h);
        RC_ASSERT(g - b == g - h);
        RC_ASSERT(g * h == a * b % rank);
    }));
}

}  // namespace
}  // namespace ZT
