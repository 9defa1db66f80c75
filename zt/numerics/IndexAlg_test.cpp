#include <zt/numerics/IndexAlg.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <initializer_list>
#include <limits>
#include <set>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Array = CArray<int64, int64>;
using Values = std::vector<int64>;

void Fill(Array& array, const Values& values) {
    array.SetSize(static_cast<INT_PTR>(values.size()));
    std::copy(values.begin(), values.end(), array.begin());
}

Values ValuesOf(const Array& array) {
    return Values(array.begin(), array.end());
}

int64 CountUnique(const Values& values) {
    Array array;
    Fill(array, values);
    return IndexAlg::CountUnique(array);
}

struct Compact {
    Values compact;
    Values unique;
};

Compact Compactify(const Values& values) {
    Array in;
    Array compact;
    Array unique;
    Fill(in, values);
    IndexAlg::Compactify(in, compact, unique);
    return {ValuesOf(compact), ValuesOf(unique)};
}

// Takes the arrays out of a list, and ends them.
std::vector<Values> TakePieces(CPtrList& list) {
    std::vector<Values> pieces;
    while (!list.IsEmpty()) {
        auto* const piece = static_cast<Array*>(list.RemoveHead());
        pieces.push_back(ValuesOf(*piece));
        delete piece;
    }
    return pieces;
}

std::vector<Values> Split(const Values& values) {
    Array in;
    Fill(in, values);
    CPtrList out;
    IndexAlg::SplitIndex(in, out);
    return TakePieces(out);
}

// Values that fall into few and into many buckets of the table.
Values AnyValues() {
    return *rc::gen::container<Values>(rc::gen::oneOf(
        rc::gen::inRange<int64>(-3, 10), rc::gen::arbitrary<int64>(),
        rc::gen::map(rc::gen::inRange<int64>(-50, 50), [](int64 v) { return 17 * v; })));
}

TEST(IndexAlg, HoldsNothing) {
    EXPECT_TRUE(std::is_empty_v<IndexAlg>);
    IndexAlg a;
    const IndexAlg b;
    EXPECT_EQ(&(a = b), &a);
}

TEST(IndexAlg, CountOfAnEmptyListIsZero) {
    EXPECT_EQ(CountUnique({}), 0);
}

TEST(IndexAlg, CountsEachValueOnce) {
    EXPECT_EQ(CountUnique({7, 3, 7, 9, 3}), 3);
    EXPECT_EQ(CountUnique({5}), 1);
    EXPECT_EQ(CountUnique({0, 0, 0}), 1);
}

TEST(IndexAlg, MinusOneIsAnOrdinaryValueToCount) {
    EXPECT_EQ(CountUnique({-1, -1}), 1);
    EXPECT_EQ(CountUnique({-1, 0, -1}), 2);
}

TEST(IndexAlg, CountsValuesOfAllSixtyFourBits) {
    constexpr int64 k33Bits = int64{1} << 32;
    constexpr int64 kLowest = std::numeric_limits<int64>::min();
    constexpr int64 kHighest = std::numeric_limits<int64>::max();
    EXPECT_EQ(CountUnique({0, k33Bits, -k33Bits, kLowest, kHighest, 0, k33Bits}), 5);
}

TEST(IndexAlg, CountsFarMoreValuesThanThereAreBuckets) {
    Values values;
    for (int64 i = 0; i < 3000; ++i) values.push_back(i % 1000 * 17);
    EXPECT_EQ(CountUnique(values), 1000);
}

TEST(IndexAlg, CompactifyNumbersInTheOrderOfFirstAppearance) {
    const Compact result = Compactify({7, 3, 7, 9, 3});
    EXPECT_THAT(result.compact, ElementsAre(0, 1, 0, 2, 1));
    EXPECT_THAT(result.unique, ElementsAre(7, 3, 9));
}

TEST(IndexAlg, CompactifyOfAnEmptyListIsEmpty) {
    const Compact result = Compactify({});
    EXPECT_THAT(result.compact, IsEmpty());
    EXPECT_THAT(result.unique, IsEmpty());
}

TEST(IndexAlg, CompactifyTakesMinusOneAsAnOrdinaryValue) {
    const Compact result = Compactify({-1, 4, -1});
    EXPECT_THAT(result.compact, ElementsAre(0, 1, 0));
    EXPECT_THAT(result.unique, ElementsAre(-1, 4));
}

TEST(IndexAlg, CompactifyKeepsNothingOfTheOldArrays) {
    Array in;
    Array compact;
    Array unique;
    Fill(in, {5, 5});
    Fill(compact, {1, 2, 3, 4});
    Fill(unique, {9, 9, 9});
    IndexAlg::Compactify(in, compact, unique);
    EXPECT_THAT(ValuesOf(compact), ElementsAre(0, 0));
    EXPECT_THAT(ValuesOf(unique), ElementsAre(5));
    EXPECT_THAT(ValuesOf(in), ElementsAre(5, 5));
}

TEST(IndexAlg, CompactifyCanRenumberAnArrayInPlace) {
    Array a;
    Array unique;
    Fill(a, {7, 3, 7, 9, 3});
    IndexAlg::Compactify(a, a, unique);
    EXPECT_THAT(ValuesOf(a), ElementsAre(0, 1, 0, 2, 1));
    EXPECT_THAT(ValuesOf(unique), ElementsAre(7, 3, 9));
}

TEST(IndexAlg, SplitCutsAtEachMinusOne) {
    EXPECT_THAT(Split({1, 2, -1, 3, -1}), ElementsAre(Values{1, 2}, Values{3}));
    EXPECT_THAT(Split({1, -1, 2, -1, 3}), ElementsAre(Values{1}, Values{2}, Values{3}));
}

TEST(IndexAlg, SplitWithoutASeparatorIsOnePiece) {
    EXPECT_THAT(Split({1, 2}), ElementsAre(Values{1, 2}));
}

TEST(IndexAlg, SplitOfAnEmptyListAddsNothing) {
    EXPECT_THAT(Split({}), IsEmpty());
}

TEST(IndexAlg, SeparatorAtTheStartMakesAnEmptyPiece) {
    EXPECT_THAT(Split({-1, 5}), ElementsAre(Values{}, Values{5}));
}

TEST(IndexAlg, SeparatorAtTheEndMakesNoPieceBehindIt) {
    EXPECT_THAT(Split({-1}), ElementsAre(Values{}));
    EXPECT_THAT(Split({5, -1}), ElementsAre(Values{5}));
}

TEST(IndexAlg, TwoSeparatorsInARowMakeAnEmptyPiece) {
    EXPECT_THAT(Split({1, -1, -1, 2}), ElementsAre(Values{1}, Values{}, Values{2}));
    EXPECT_THAT(Split({-1, -1}), ElementsAre(Values{}, Values{}));
}

TEST(IndexAlg, OnlyMinusOneSeparates) {
    EXPECT_THAT(Split({-2, 0, std::numeric_limits<int64>::max()}),
                ElementsAre(Values{-2, 0, std::numeric_limits<int64>::max()}));
}

TEST(IndexAlg, SplitAppendsToWhatTheListHolds) {
    Array in;
    Array first;
    Fill(in, {1, -1, 2});
    CPtrList out;
    out.AddTail(&first);
    IndexAlg::SplitIndex(in, out);
    ASSERT_EQ(out.GetCount(), 3);
    EXPECT_EQ(out.RemoveHead(), &first);
    EXPECT_THAT(TakePieces(out), ElementsAre(Values{1}, Values{2}));
    EXPECT_THAT(ValuesOf(in), ElementsAre(1, -1, 2));
}

TEST(IndexAlgLaws, CompactifyCanBeUndone) {
    EXPECT_TRUE(rc::check("there and back", [] {
        const Values values = AnyValues();
        const Compact result = Compactify(values);
        RC_ASSERT(result.compact.size() == values.size());
        for (std::size_t i = 0; i < values.size(); ++i) {
            RC_ASSERT(result.unique.at(static_cast<std::size_t>(result.compact[i])) == values[i]);
        }
    }));
}

TEST(IndexAlgLaws, CompactNumbersRiseByOneWithEachNewValue) {
    EXPECT_TRUE(rc::check("no gaps", [] {
        const Compact result = Compactify(AnyValues());
        int64 next = 0;
        for (const int64 number : result.compact) {
            RC_ASSERT(number >= 0);
            RC_ASSERT(number <= next);
            if (number == next) ++next;
        }
        RC_ASSERT(next == static_cast<int64>(result.unique.size()));
        RC_ASSERT(std::set<int64>(result.unique.begin(), result.unique.end()).size() ==
                  result.unique.size());
    }));
}

TEST(IndexAlgLaws, CountIsThatOfASet) {
    EXPECT_TRUE(rc::check("count", [] {
        const Values values = AnyValues();
        const std::set<int64> set(values.begin(), values.end());
        RC_ASSERT(CountUnique(values) == static_cast<int64>(set.size()));
    }));
}

TEST(IndexAlgLaws, PiecesWithASeparatorBehindEachGiveTheListBack) {
    EXPECT_TRUE(rc::check("join", [] {
        Values values = *rc::gen::container<Values>(rc::gen::inRange<int64>(-1, 3));
        Values joined;
        for (const Values& piece : Split(values)) {
            RC_ASSERT(std::find(piece.begin(), piece.end(), -1) == piece.end());
            joined.insert(joined.end(), piece.begin(), piece.end());
            joined.push_back(-1);
        }
        if (!values.empty() && values.back() != -1) values.push_back(-1);
        RC_ASSERT(joined == values);
    }));
}

}  // namespace
}  // namespace ZT
