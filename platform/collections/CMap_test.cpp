#include <platform/collections/CMap.h>
#include <platform/collections/CountedElement_test.h>
#include <platform/text/CString.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdint>
#include <map>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using testing::Pair;
using testing::UnorderedElementsAre;

/// A key without a hash and without an equality of its own.
struct Cell {
    int column, row;
};

}  // namespace

template <>
UINT HashKey<const Cell&>(const Cell& cell) {
    return static_cast<UINT>(cell.column + 31 * cell.row);
}

template <>
BOOL CompareElements<Cell, Cell>(const Cell* a, const Cell* b) {
    return a->column == b->column && a->row == b->row;
}

template <>
UINT HashKey<const CountedElement&>(const CountedElement& element) {
    return static_cast<UINT>(element.Number());
}

namespace {

using Numbers = CMap<std::int64_t, std::int64_t, std::int64_t, std::int64_t>;
using Counted = CMap<CountedElement, const CountedElement&, CountedElement, const CountedElement&>;

struct CMapOfObjects : testing::Test {
    ~CMapOfObjects() override { CountedElement::NeverFail(); }
};

template <class MAP>
auto All(const MAP& map) {
    std::map<std::remove_cvref_t<decltype(map.PGetFirstAssoc()->key)>,
             std::remove_cvref_t<decltype(map.PGetFirstAssoc()->value)>>
        all;
    for (const auto& [key, value] : map) EXPECT_TRUE(all.emplace(key, value).second);
    return all;
}

TEST(CMap, StartsWithSeventeenBucketsAndGrows) {
    Numbers map;
    EXPECT_EQ(map.GetHashTableSize(), 17U);
    for (std::int64_t i = 0; i < 17; ++i) map[i] = i;
    EXPECT_EQ(map.GetHashTableSize(), 17U);
    map[17] = 17;
    EXPECT_GT(map.GetHashTableSize(), 17U);
    map.AssertValid();
}

TEST(CMap, NewValuesAreZero) {
    Numbers map;
    EXPECT_EQ(map[5], 0);
    ++map[5];
    ++map[5];
    ++map[-5];
    EXPECT_THAT(All(map), UnorderedElementsAre(Pair(5, 2), Pair(-5, 1)));
}

TEST(CMap, KeysThatDifferInTheirUpperHalfAreDifferent) {
    Numbers map;
    const std::int64_t far = std::int64_t{1} << 40;
    map.SetAt(1, 10);
    map.SetAt(1 + far, 20);
    std::int64_t value = 0;
    EXPECT_TRUE(map.Lookup(1 + far, value));
    EXPECT_EQ(value, 20);
    EXPECT_TRUE(map.RemoveKey(1));
    EXPECT_FALSE(map.RemoveKey(1));
    EXPECT_TRUE(map.Lookup(1 + far, value));
}

TEST(CMap, PairsAreLookedUpAndWalked) {
    Numbers map;
    for (std::int64_t i = 0; i < 40; ++i) map[i] = i * i;
    map.PLookup(7)->value = -1;
    EXPECT_EQ(map[7], -1);
    EXPECT_EQ(std::as_const(map).PLookup(40), nullptr);
    int seen = 0;
    for (Numbers::CPair* pair = map.PGetFirstAssoc(); pair != nullptr;
         pair = map.PGetNextAssoc(pair)) {
        ++seen;
        EXPECT_EQ(pair->value, pair->key == 7 ? -1 : pair->key * pair->key);
    }
    EXPECT_EQ(seen, 40);
    static_assert(std::is_const_v<decltype(Numbers::CPair::key)>);
}

TEST(CMap, TextsAreKeysByTheirBytes) {
    CMap<CString, LPCTSTR, CString, LPCTSTR> map;
    map.SetAt("arc", "Bogen");
    const std::string key = "arc";
    CString value;
    EXPECT_TRUE(map.Lookup(key.c_str(), value));
    EXPECT_EQ(value, "Bogen");

    CMap<CString, const CString&, int, int> byReference;
    byReference["arc"] = 1;
    byReference[CString("arc")] = 2;
    EXPECT_EQ(byReference.GetCount(), 1);
    EXPECT_EQ(byReference["arc"], 2);
}

TEST(CMap, FloatingKeysHaveTheHashOfTheirValue) {
    CMap<double, double, int, int> map;
    map[0.0] = 1;
    map[-0.0] = 2;
    map[0.5] = 3;
    EXPECT_THAT(All(map), UnorderedElementsAre(Pair(0.0, 2), Pair(0.5, 3)));
}

TEST(CMap, KeysOfAProgramsOwnUseItsHashAndComparison) {
    CMap<Cell, const Cell&, int, int> map;
    map.SetAt({1, 2}, 12);
    map.SetAt({2, 1}, 21);
    map.SetAt({1, 2}, 120);
    EXPECT_EQ(map.GetCount(), 2);
    int value = 0;
    EXPECT_TRUE(map.Lookup({1, 2}, value));
    EXPECT_EQ(value, 120);
    EXPECT_FALSE(map.Lookup({32, 1}, value));
}

TEST(CMap, NullPositionsRaiseInvalidArgument) {
    Numbers map;
    map[1] = 1;
    POSITION pos = nullptr;
    std::int64_t key = 0, value = 0;
    EXPECT_THROW(map.GetNextAssoc(pos, key, value), CInvalidArgException*);
    EXPECT_THROW(map.PGetNextAssoc(nullptr), CInvalidArgException*);
    EXPECT_THROW(Numbers(0), CInvalidArgException*);
    EXPECT_FALSE(std::is_copy_constructible_v<Numbers>);
}

TEST_F(CMapOfObjects, KeysAndValuesLiveExactlyAsLongAsTheyAreInTheMap) {
    ASSERT_EQ(CountedElement::Living(), 0);
    {
        Counted map(2);
        for (int i = 0; i < 50; ++i) map.SetAt(i, 2 * i);
        EXPECT_EQ(CountedElement::Living(), 100);
        EXPECT_TRUE(map.RemoveKey(7));
        EXPECT_EQ(CountedElement::Living(), 98);
        for (const auto& [key, value] : map) {
            EXPECT_TRUE(key.IsAlive());
            EXPECT_TRUE(value.IsAlive());
            EXPECT_EQ(value.Number(), 2 * key.Number());
        }
        map.RemoveAll();
        EXPECT_EQ(CountedElement::Living(), 0);
        map.SetAt(1, 2);
    }
    EXPECT_EQ(CountedElement::Living(), 0);
}

TEST_F(CMapOfObjects, AssociationsStayWhereTheyAreWhenTheTableGrows) {
    Counted map;
    const CountedElement* place = &map[-1];
    for (int i = 0; i < 1000; ++i) map.SetAt(i, map[-1]);
    EXPECT_EQ(&map[-1], place);
    EXPECT_TRUE(place->IsAlive());
}

TEST_F(CMapOfObjects, AKeyThatCannotBeMadeIsNotAdded) {
    Counted map(2);
    const CountedElement one(1), two(2), value(9);
    map.SetAt(one, value);
    for (int allowed = 0; allowed < 2; ++allowed) {
        CountedElement::FailAfter(allowed);
        EXPECT_THROW(map.SetAt(two, value), CountedElement::Failure);
        CountedElement::NeverFail();
        map.AssertValid();
        EXPECT_EQ(map.GetCount(), 1);
        EXPECT_EQ(CountedElement::Living(), 5);
    }
    map.SetAt(two, value);
    EXPECT_EQ(map.GetCount(), 2);
    map.AssertValid();
}

TEST(CMap, BehavesAsAPlainMapUnderAnyOperations) {
    EXPECT_TRUE(rc::check([](const std::vector<std::pair<bool, std::int8_t>>& steps) {
        Numbers map(3);
        std::map<std::int64_t, std::int64_t> model;
        for (const auto& [add, number] : steps) {
            const std::int64_t key = number / 2;
            if (add) {
                map[key] += number;
                model[key] += number;
            } else {
                RC_ASSERT(map.RemoveKey(key) == (model.erase(key) == 1));
            }
            map.AssertValid();
        }
        RC_ASSERT(All(map) == model);
    }));
}

}  // namespace
