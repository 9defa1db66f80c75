#include <platform/collections/CMapPtrToPtr.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstddef>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using testing::Pair;
using testing::UnorderedElementsAre;

using Model = std::map<void*, void*>;

void* P(std::uintptr_t number) {
    return reinterpret_cast<void*>(number);
}

/// A map that looks into its own associations and blocks.
class OpenMap : public CMapPtrToPtr {
public:
    using Assoc = CAssoc;
    using CMapPtrToPtr::CMapPtrToPtr;
    using CMapPtrToPtr::m_nBlockSize;
    using CMapPtrToPtr::m_nCount;
    using CMapPtrToPtr::m_pBlocks;
    using CMapPtrToPtr::m_pFreeList;
    using CMapPtrToPtr::m_pHashTable;

    /// Every place of every block stands once in a bucket or once in the free list, and
    /// these hold nothing else.
    bool OwnsEachPlaceOnce() const {
        std::set<const Assoc*> ours;
        for (CPlex* block = m_pBlocks; block != nullptr; block = block->pNext) {
            auto* places = static_cast<const Assoc*>(block->data());
            for (INT_PTR i = 0; i < m_nBlockSize; ++i) ours.insert(&places[i]);
        }
        for (UINT i = 0; m_pHashTable != nullptr && i < GetHashTableSize(); ++i) {
            if (!TakeEach(m_pHashTable[i], ours)) return false;
        }
        return TakeEach(m_pFreeList, ours) && ours.empty();
    }

private:
    static bool TakeEach(const Assoc* assoc, std::set<const Assoc*>& ours) {
        for (; assoc != nullptr; assoc = assoc->pNext) {
            if (ours.erase(assoc) == 0) return false;
        }
        return true;
    }
};

/// What a walk by positions visits, each time it does.
std::vector<std::pair<void*, void*>> Walk(const CMapPtrToPtr& map) {
    std::vector<std::pair<void*, void*>> found;
    for (POSITION pos = map.GetStartPosition(); pos != nullptr;) {
        void* key = nullptr;
        void* value = nullptr;
        map.GetNextAssoc(pos, key, value);
        found.emplace_back(key, value);
    }
    return found;
}

void Fill(CMapPtrToPtr& map, std::uintptr_t count) {
    for (std::uintptr_t i = 1; i <= count; ++i) map.SetAt(P(i), P(1000 + i));
}

/// A map with 1 and 2.
struct CMapPtrToPtrOfTwo : testing::Test {
    CMapPtrToPtrOfTwo() { Fill(map, 2); }
    OpenMap map;
};

TEST(CMapPtrToPtr, StartsEmptyWithoutMemory) {
    const OpenMap map;
    EXPECT_EQ(map.GetCount(), 0);
    EXPECT_EQ(map.GetSize(), 0);
    EXPECT_TRUE(map.IsEmpty());
    EXPECT_EQ(map.GetHashTableSize(), 17U);
    EXPECT_EQ(map.GetStartPosition(), nullptr);
    EXPECT_EQ(map.PGetFirstAssoc(), nullptr);
    EXPECT_EQ(map.PLookup(P(1)), nullptr);
    EXPECT_EQ(map.m_pHashTable, nullptr);
    EXPECT_EQ(map.m_pBlocks, nullptr);
    EXPECT_EQ(map.m_nBlockSize, 10);
    EXPECT_EQ(map.begin(), map.end());
}

TEST(CMapPtrToPtr, IsNotCopiedAndKnowsItsRunTimeClass) {
    EXPECT_FALSE(std::is_copy_constructible_v<CMapPtrToPtr>);
    EXPECT_FALSE(std::is_copy_assignable_v<CMapPtrToPtr>);
    EXPECT_STREQ(CMapPtrToPtr().GetRuntimeClass()->m_lpszClassName, "CMapPtrToPtr");
}

TEST(CMapPtrToPtr, BlockSizeBelowOneRaisesInvalidArgument) {
    EXPECT_THROW(CMapPtrToPtr(0), CInvalidArgException*);
    EXPECT_THROW(CMapPtrToPtr(-5), CInvalidArgException*);
}

TEST_F(CMapPtrToPtrOfTwo, LookupGivesTheValueOfAKey) {
    void* value = P(7);
    EXPECT_TRUE(map.Lookup(P(2), value));
    EXPECT_EQ(value, P(1002));
}

TEST_F(CMapPtrToPtrOfTwo, LookupOfAMissingKeyLeavesTheValue) {
    void* value = P(7);
    EXPECT_FALSE(map.Lookup(P(3), value));
    EXPECT_FALSE(CMapPtrToPtr().Lookup(P(3), value));
    EXPECT_EQ(value, P(7));
}

TEST_F(CMapPtrToPtrOfTwo, PLookupGivesTheAssociation) {
    const CMapPtrToPtr& constant = map;
    map.PLookup(P(1))->value = P(5);
    EXPECT_EQ(constant.PLookup(P(1))->key, P(1));
    EXPECT_EQ(constant.PLookup(P(1))->value, P(5));
    EXPECT_EQ(constant.PLookup(P(9)), nullptr);
}

TEST_F(CMapPtrToPtrOfTwo, SetAtReplacesTheValueOfAKey) {
    map.SetAt(P(1), P(5));
    EXPECT_THAT(Walk(map), UnorderedElementsAre(Pair(P(1), P(5)), Pair(P(2), P(1002))));
}

TEST_F(CMapPtrToPtrOfTwo, IndexingAddsAMissingKeyWithANullValue) {
    EXPECT_EQ(map[P(3)], nullptr);
    EXPECT_EQ(map.GetCount(), 3);
    map[P(3)] = P(1003);
    EXPECT_EQ(map[P(3)], P(1003));
    EXPECT_EQ(map.GetCount(), 3);
}

TEST_F(CMapPtrToPtrOfTwo, NullIsAKeyAndAValue) {
    map.SetAt(nullptr, nullptr);
    void* value = P(7);
    EXPECT_TRUE(map.Lookup(nullptr, value));
    EXPECT_EQ(value, nullptr);
    EXPECT_TRUE(map.RemoveKey(nullptr));
    EXPECT_FALSE(map.Lookup(nullptr, value));
}

TEST_F(CMapPtrToPtrOfTwo, RemoveKeyTellsWhetherThereWasOne) {
    EXPECT_FALSE(map.RemoveKey(P(3)));
    EXPECT_TRUE(map.RemoveKey(P(1)));
    EXPECT_FALSE(map.RemoveKey(P(1)));
    EXPECT_THAT(Walk(map), UnorderedElementsAre(Pair(P(2), P(1002))));
    EXPECT_FALSE(CMapPtrToPtr().RemoveKey(P(1)));
}

TEST_F(CMapPtrToPtrOfTwo, RemovingTheLastKeyFreesTableAndBlocks) {
    map.RemoveKey(P(1));
    EXPECT_NE(map.m_pBlocks, nullptr);
    map.RemoveKey(P(2));
    EXPECT_EQ(map.m_pBlocks, nullptr);
    EXPECT_EQ(map.m_pHashTable, nullptr);
    EXPECT_EQ(map.m_pFreeList, nullptr);
}

TEST_F(CMapPtrToPtrOfTwo, RemoveAllFreesTableAndBlocks) {
    Fill(map, 1000);
    EXPECT_GT(map.GetHashTableSize(), 17U);
    map.RemoveAll();
    EXPECT_TRUE(map.IsEmpty());
    EXPECT_EQ(map.m_pBlocks, nullptr);
    EXPECT_EQ(map.m_pHashTable, nullptr);
    EXPECT_EQ(map.GetHashTableSize(), 17U);
    Fill(map, 1);
    EXPECT_EQ(map.GetCount(), 1);
}

TEST_F(CMapPtrToPtrOfTwo, ARemovedPlaceServesTheNextKey) {
    const auto* place = map.PLookup(P(1));
    map.RemoveKey(P(1));
    map.SetAt(P(9), nullptr);
    EXPECT_EQ(map.PLookup(P(9)), place);
}

TEST_F(CMapPtrToPtrOfTwo, AWalkBeginsAtTheMarkBeforeTheFirst) {
    POSITION pos = map.GetStartPosition();
    EXPECT_EQ(reinterpret_cast<std::intptr_t>(pos), -1);
    EXPECT_EQ(pos, BeforeStartPosition());
    EXPECT_THAT(Walk(map), UnorderedElementsAre(Pair(P(1), P(1001)), Pair(P(2), P(1002))));
}

TEST_F(CMapPtrToPtrOfTwo, TheLastStepLeavesANullPosition) {
    map.RemoveKey(P(1));
    POSITION pos = map.GetStartPosition();
    void *key = nullptr, *value = nullptr;
    map.GetNextAssoc(pos, key, value);
    EXPECT_EQ(key, P(2));
    EXPECT_EQ(value, P(1002));
    EXPECT_EQ(pos, nullptr);
}

TEST_F(CMapPtrToPtrOfTwo, NullPositionRaisesInvalidArgument) {
    POSITION pos = nullptr;
    void *key = P(5), *value = P(6);
    EXPECT_THROW(map.GetNextAssoc(pos, key, value), CInvalidArgException*);
    EXPECT_EQ(key, P(5));
    EXPECT_EQ(value, P(6));
    EXPECT_THROW(map.PGetNextAssoc(nullptr), CInvalidArgException*);
}

TEST_F(CMapPtrToPtrOfTwo, StartPositionOfAMapThatBecameEmptyRaisesInvalidArgument) {
    POSITION pos = map.GetStartPosition();
    map.RemoveAll();
    void *key = nullptr, *value = nullptr;
    EXPECT_THROW(map.GetNextAssoc(pos, key, value), CInvalidArgException*);
}

TEST(CMapPtrToPtr, WalkingByAssociationVisitsEachOnceInTheSameOrder) {
    CMapPtrToPtr map;
    Fill(map, 100);
    std::vector<std::pair<void*, void*>> found;
    for (const auto* pair = std::as_const(map).PGetFirstAssoc(); pair != nullptr;
         pair = std::as_const(map).PGetNextAssoc(pair)) {
        found.emplace_back(pair->key, pair->value);
    }
    EXPECT_EQ(found.size(), 100U);
    EXPECT_EQ(found, Walk(map));
}

TEST(CMapPtrToPtr, RangeForGivesKeyAndValue) {
    CMapPtrToPtr map;
    Fill(map, 50);
    for (auto& [key, value] : map) value = key;
    std::vector<std::pair<void*, void*>> found;
    for (const auto& [key, value] : std::as_const(map)) {
        EXPECT_EQ(key, value);
        found.emplace_back(key, value);
    }
    EXPECT_EQ(found, Walk(map));
    static_assert(std::forward_iterator<CMapPtrToPtr::iterator>);
    static_assert(std::forward_iterator<CMapPtrToPtr::const_iterator>);
    const CMapPtrToPtr::const_iterator first = map.begin();
    EXPECT_EQ(first->key, found[0].first);
}

TEST(CMapPtrToPtr, TheAssociationGivenLastMayBeRemovedDuringAWalk) {
    OpenMap map;
    Fill(map, 200);
    std::set<void*> seen;
    for (POSITION pos = map.GetStartPosition(); pos != nullptr;) {
        void *key = nullptr, *value = nullptr;
        map.GetNextAssoc(pos, key, value);
        EXPECT_TRUE(seen.insert(key).second);
        EXPECT_TRUE(map.RemoveKey(key));
    }
    EXPECT_EQ(seen.size(), 200U);
    EXPECT_TRUE(map.IsEmpty());
    EXPECT_EQ(map.m_pBlocks, nullptr);
}

TEST(CMapPtrToPtr, TheTableGrowsWithItsContent) {
    CMapPtrToPtr map;
    Fill(map, 100000);
    EXPECT_GE(map.GetHashTableSize(), 100000U);
    EXPECT_LE(map.GetHashTableSize(), 400000U);
    map.AssertValid();
    void* value = nullptr;
    for (std::uintptr_t i = 1; i <= 100000; ++i) {
        ASSERT_TRUE(map.Lookup(P(i), value)) << i;
        ASSERT_EQ(value, P(1000 + i));
    }
}

TEST(CMapPtrToPtr, ATableOfFixedSizeNeverGrows) {
    OpenMap map;
    map.InitHashTable(5);
    EXPECT_NE(map.m_pHashTable, nullptr);
    Fill(map, 1000);
    EXPECT_EQ(map.GetHashTableSize(), 5U);
    EXPECT_EQ(Walk(map).size(), 1000U);
    map.AssertValid();
    map.RemoveAll();
    EXPECT_EQ(map.GetHashTableSize(), 5U);
    Fill(map, 100);
    EXPECT_EQ(map.GetHashTableSize(), 5U);
}

TEST(CMapPtrToPtr, OneBucketIsEnough) {
    CMapPtrToPtr map;
    map.InitHashTable(1);
    Fill(map, 30);
    EXPECT_EQ(Walk(map).size(), 30U);
    EXPECT_TRUE(map.RemoveKey(P(15)));
    EXPECT_EQ(map.PLookup(P(15)), nullptr);
    EXPECT_NE(map.PLookup(P(16)), nullptr);
}

TEST(CMapPtrToPtr, ATableMayGetItsMemoryLater) {
    OpenMap map;
    map.InitHashTable(101, false);
    EXPECT_EQ(map.GetHashTableSize(), 101U);
    EXPECT_EQ(map.m_pHashTable, nullptr);
    Fill(map, 1);
    EXPECT_NE(map.m_pHashTable, nullptr);
}

TEST(CMapPtrToPtr, TheTableMayBeFixedAgainWhileEmpty) {
    CMapPtrToPtr map;
    map.InitHashTable(101);
    map.InitHashTable(7);
    EXPECT_EQ(map.GetHashTableSize(), 7U);
}

TEST_F(CMapPtrToPtrOfTwo, FixingTheTableWronglyRaisesInvalidArgument) {
    EXPECT_THROW(map.InitHashTable(7), CInvalidArgException*);
    EXPECT_THROW(CMapPtrToPtr().InitHashTable(0), CInvalidArgException*);
    EXPECT_EQ(map.GetHashTableSize(), 17U);
}

TEST(CMapPtrToPtr, BlockTooLargeForMemoryRaisesMemoryAndAddsNothing) {
    CMapPtrToPtr map(std::numeric_limits<INT_PTR>::max());
    EXPECT_THROW(map.SetAt(P(1), P(2)), CMemoryException*);
    EXPECT_TRUE(map.IsEmpty());
    map.AssertValid();
}

TEST(CMapPtrToPtr, HashKeyTellsTheBucket) {
    OpenMap map;
    map.InitHashTable(11);
    void* const key = P(0x123456789ABCDEF0);
    map.SetAt(key, nullptr);
    ASSERT_NE(map.m_pHashTable[map.HashKey(key) % 11], nullptr);
    EXPECT_EQ(map.m_pHashTable[map.HashKey(key) % 11]->key, key);
}

TEST_F(CMapPtrToPtrOfTwo, AssertValidRaisesOnBrokenFields) {
    map.AssertValid();
    ++map.m_nCount;
    EXPECT_THROW(map.AssertValid(), CInvalidArgException*);
    map.m_nCount -= 2;
    EXPECT_THROW(map.AssertValid(), CInvalidArgException*);
    ++map.m_nCount;
    const UINT bucket = map.HashKey(P(1)) % map.GetHashTableSize();
    const UINT wrong = (bucket + 1) % map.GetHashTableSize();
    std::swap(map.m_pHashTable[bucket], map.m_pHashTable[wrong]);
    EXPECT_THROW(map.AssertValid(), CInvalidArgException*);
    std::swap(map.m_pHashTable[bucket], map.m_pHashTable[wrong]);
    map.AssertValid();
}

/// One random operation on a map and on its model.
void Apply(CMapPtrToPtr& map, Model& model, unsigned kind, std::uintptr_t number) {
    void* const key = P(number % 64 * 16);
    void* value = nullptr;
    switch (kind % 6) {
        case 0:
        case 1:
            map.SetAt(key, P(number));
            model[key] = P(number);
            return;
        case 2:
            RC_ASSERT((map[key] == model[key]));
            return;
        case 3:
        case 4:
            RC_ASSERT(map.RemoveKey(key) == (model.erase(key) == 1));
            return;
        default:
            RC_ASSERT(map.Lookup(key, value) == model.contains(key));
            if (model.contains(key)) RC_ASSERT((value == model[key]));
    }
}

TEST(CMapPtrToPtr, BehavesAsAPlainMapUnderAnyOperations) {
    EXPECT_TRUE(
        rc::check([](const std::vector<std::pair<unsigned, std::uint16_t>>& steps, bool fixed) {
            OpenMap map(3);
            if (fixed) map.InitHashTable(4);
            Model model;
            for (const auto& [kind, number] : steps) {
                Apply(map, model, kind, number);
                map.AssertValid();
                RC_ASSERT(map.OwnsEachPlaceOnce());
                RC_ASSERT(map.GetCount() == static_cast<INT_PTR>(model.size()));
            }
            const auto walked = Walk(map);
            RC_ASSERT((Model(walked.begin(), walked.end()) == model));
            RC_ASSERT(walked.size() == model.size());
        }));
}

TEST(CMapPtrToPtr, GetValueAtGivesNullForAKeyThatIsNotThere) {
    CMapPtrToPtr map;
    int key = 0;
    int value = 0;
    EXPECT_EQ(map.GetValueAt(&key), nullptr);
    map.SetAt(&key, &value);
    EXPECT_EQ(map.GetValueAt(&key), &value);
    EXPECT_EQ(map.GetValueAt(&value), nullptr);
    EXPECT_EQ(map.GetCount(), 1);
}

}  // namespace
