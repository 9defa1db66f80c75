#include <platform/collections/CMapStringToPtr.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::Pair;
using testing::UnorderedElementsAre;

void* P(std::uintptr_t number) {
    return reinterpret_cast<void*>(number);
}

constexpr const char* kLong = "a key that is far too long to be kept without memory of its own";

/// A map with "arc" and a long key.
struct CMapStringToPtrOfTwo : testing::Test {
    CMapStringToPtrOfTwo() {
        map.SetAt("arc", P(1));
        map.SetAt(kLong, P(2));
    }
    static std::map<std::string, void*> All(const CMapStringToPtr& from) {
        std::map<std::string, void*> all;
        for (const auto& [key, value] : from) {
            EXPECT_TRUE(all.emplace(key.GetString(), value).second);
        }
        return all;
    }
    CMapStringToPtr map;
};

TEST_F(CMapStringToPtrOfTwo, LookupGivesTheValueOfAKey) {
    void* value = nullptr;
    EXPECT_TRUE(map.Lookup("arc", value));
    EXPECT_EQ(value, P(1));
    EXPECT_TRUE(map.Lookup(kLong, value));
    EXPECT_EQ(value, P(2));
    const std::string copy = kLong;
    EXPECT_TRUE(map.Lookup(copy.c_str(), value));
    EXPECT_TRUE(map.Lookup(CString("arc"), value));
}

TEST_F(CMapStringToPtrOfTwo, LookupOfAMissingKeyLeavesTheValue) {
    void* value = P(7);
    for (const char* key : {"", "ar", "arcs", "Arc", "arC"}) {
        EXPECT_FALSE(map.Lookup(key, value)) << key;
    }
    EXPECT_EQ(value, P(7));
}

TEST_F(CMapStringToPtrOfTwo, KeysAreCopied) {
    char key[] = "seam";
    map.SetAt(key, P(3));
    key[0] = 't';
    void* value = nullptr;
    EXPECT_TRUE(map.Lookup("seam", value));
    EXPECT_FALSE(map.Lookup(key, value));
}

TEST_F(CMapStringToPtrOfTwo, LookupKeyGivesTheMapsOwnText) {
    const std::string sought = "arc";
    LPCTSTR kept = nullptr;
    ASSERT_TRUE(map.LookupKey(sought.c_str(), kept));
    EXPECT_STREQ(kept, "arc");
    EXPECT_NE(kept, sought.c_str());
    LPCTSTR unchanged = kLong;
    EXPECT_FALSE(map.LookupKey("knot", unchanged));
    EXPECT_EQ(unchanged, kLong);
}

TEST_F(CMapStringToPtrOfTwo, TheEmptyTextIsAKey) {
    map.SetAt("", P(3));
    void* value = nullptr;
    EXPECT_TRUE(map.Lookup("", value));
    EXPECT_EQ(value, P(3));
    EXPECT_TRUE(map.RemoveKey(""));
}

TEST_F(CMapStringToPtrOfTwo, ANullTextRaisesInvalidArgument) {
    void* value = nullptr;
    LPCTSTR kept = nullptr;
    EXPECT_THROW(map.Lookup(nullptr, value), CInvalidArgException*);
    EXPECT_THROW(map.LookupKey(nullptr, kept), CInvalidArgException*);
    EXPECT_THROW(map[nullptr], CInvalidArgException*);
    EXPECT_THROW(map.SetAt(nullptr, P(1)), CInvalidArgException*);
    EXPECT_THROW(map.RemoveKey(nullptr), CInvalidArgException*);
    EXPECT_THROW(map.HashKey(nullptr), CInvalidArgException*);
    EXPECT_EQ(map.GetCount(), 2);
}

TEST_F(CMapStringToPtrOfTwo, SetAtReplacesAndIndexingAdds) {
    map.SetAt("arc", P(9));
    EXPECT_EQ(map["knot"], nullptr);
    map["hole"] = P(4);
    EXPECT_THAT(All(map), UnorderedElementsAre(Pair("arc", P(9)), Pair(kLong, P(2)),
                                               Pair("knot", nullptr), Pair("hole", P(4))));
}

TEST_F(CMapStringToPtrOfTwo, RemoveKeyTellsWhetherThereWasOne) {
    EXPECT_FALSE(map.RemoveKey("knot"));
    EXPECT_TRUE(map.RemoveKey(kLong));
    EXPECT_FALSE(map.RemoveKey(kLong));
    EXPECT_THAT(All(map), UnorderedElementsAre(Pair("arc", P(1))));
}

TEST_F(CMapStringToPtrOfTwo, AKeyOfTheMapMayBeHandedToIt) {
    EXPECT_TRUE(map.RemoveKey(map.PGetFirstAssoc()->key));
    EXPECT_TRUE(map.RemoveKey(map.PGetFirstAssoc()->key));
    EXPECT_TRUE(map.IsEmpty());
}

TEST_F(CMapStringToPtrOfTwo, WalksGiveKeysAndValues) {
    std::set<std::string> keys;
    for (POSITION pos = map.GetStartPosition(); pos != nullptr;) {
        CString key;
        void* value = nullptr;
        map.GetNextAssoc(pos, key, value);
        keys.insert(key.GetString());
        EXPECT_TRUE(map.RemoveKey(key));
    }
    EXPECT_EQ(keys, (std::set<std::string>{"arc", kLong}));
    EXPECT_TRUE(map.IsEmpty());
}

TEST_F(CMapStringToPtrOfTwo, NullPositionRaisesInvalidArgument) {
    POSITION pos = nullptr;
    CString key;
    void* value = nullptr;
    EXPECT_THROW(map.GetNextAssoc(pos, key, value), CInvalidArgException*);
}

TEST_F(CMapStringToPtrOfTwo, HashKeyIsThatOfTheBytes) {
    EXPECT_EQ(map.HashKey("arc"), map.HashKey(CString("arc")));
    EXPECT_NE(map.HashKey("arc"), map.HashKey("cra"));
}

TEST(CMapStringToPtr, TheTableGrowsUnlessItsSizeIsFixed) {
    CMapStringToPtr growing, fixed;
    fixed.InitHashTable(5);
    for (int i = 0; i < 1000; ++i) {
        growing.SetAt(std::to_string(i).c_str(), &growing);
        fixed.SetAt(std::to_string(i).c_str(), &fixed);
    }
    EXPECT_GE(growing.GetHashTableSize(), 3000U);
    EXPECT_EQ(fixed.GetHashTableSize(), 5U);
    void* value = nullptr;
    for (int i = 0; i < 1000; ++i) {
        EXPECT_TRUE(growing.Lookup(std::to_string(i).c_str(), value));
        EXPECT_TRUE(fixed.Lookup(std::to_string(i).c_str(), value));
    }
    growing.AssertValid();
    fixed.AssertValid();
}

TEST(CMapStringToPtr, KnowsItsRunTimeClass) {
    EXPECT_STREQ(CMapStringToPtr().GetRuntimeClass()->m_lpszClassName, "CMapStringToPtr");
    EXPECT_THROW(CMapStringToPtr(0), CInvalidArgException*);
}

TEST(CMapStringToPtr, BehavesAsAPlainMapUnderAnyOperations) {
    EXPECT_TRUE(rc::check([](const std::vector<std::pair<unsigned, std::uint8_t>>& steps) {
        CMapStringToPtr map(3);
        std::map<std::string, void*> model;
        for (const auto& [kind, number] : steps) {
            const std::string key(number % 32, 'k');
            if (kind % 3 == 0) {
                RC_ASSERT(map.RemoveKey(key.c_str()) == (model.erase(key) == 1));
            } else {
                map[key.c_str()] = P(number);
                model[key] = P(number);
            }
            map.AssertValid();
        }
        RC_ASSERT((CMapStringToPtrOfTwo::All(map) == model));
    }));
}

}  // namespace
