#include <platform/collections/HashKey.h>
#include <platform/text/CString.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

enum class Colour { kRed = 7 };

TEST(HashKey, SmallIntegersAreTheirOwnHash) {
    EXPECT_EQ(HashKey<int>(5), 5U);
    EXPECT_EQ(HashKey<std::uint64_t>(5), 5U);
    EXPECT_EQ(HashKey<Colour>(Colour::kRed), 7U);
}

UINT HashOfAddress(std::uintptr_t address) {
    return HashKey<void*>(reinterpret_cast<void*>(address));
}

TEST(HashKey, ObjectsSideBySideHaveNeighbouringHashes) {
    EXPECT_EQ(HashOfAddress(0), 0U);
    EXPECT_EQ(HashOfAddress(0x1230), 0x123U);
    EXPECT_EQ(HashOfAddress(0x1240), 0x124U);
}

TEST(HashKey, EveryBitOfAnAddressCounts) {
    EXPECT_EQ(HashOfAddress(0x1234), 0x40000123U);
    EXPECT_EQ(HashOfAddress(0x0000'5678'0000'1230), 0x00000567U ^ 0x80000123U);
    for (int bit = 0; bit < 64; ++bit) EXPECT_NE(HashOfAddress(std::uintptr_t{1} << bit), 0U);
}

TEST(HashKey, BothHalvesOfALongIntegerCount) {
    EXPECT_EQ(HashKey<std::uint64_t>(0x0000000200000001), 3U);
    EXPECT_NE(HashKey<std::int64_t>(1), HashKey<std::int64_t>(1 + (std::int64_t{1} << 40)));
}

TEST(HashKey, TextsOfEqualBytesHaveEqualHashes) {
    const std::string copy = "direction";
    EXPECT_EQ(HashKey<const char*>("direction"), HashKey<const char*>(copy.c_str()));
    EXPECT_EQ(HashKey<const char*>("direction"), HashKey<const CString&>(CString("direction")));
    EXPECT_EQ(HashKey<CString>(CString()), HashKey<const char*>(nullptr));
}

TEST(HashKey, EveryByteOfATextCounts) {
    EXPECT_TRUE(rc::check([](std::string text, std::size_t place, char flip) {
        RC_PRE(!text.empty());
        std::string other = text;
        other[place % text.size()] = static_cast<char>(other[place % text.size()] ^ (flip | 1));
        RC_ASSERT(Collections::HashText(text) != Collections::HashText(other));
    }));
}

TEST(HashKey, NumberedNamesSpreadOverTheTable) {
    constexpr int kNames = 10000;
    std::vector<int> buckets(10007);
    for (int i = 0; i < kNames; ++i) {
        ++buckets[HashKey<const char*>(("name" + std::to_string(i)).c_str()) % buckets.size()];
    }
    // A random spread leaves 1/e of the buckets empty and hardly any above seven.
    const auto empty = std::count(buckets.begin(), buckets.end(), 0);
    EXPECT_NEAR(static_cast<double>(empty) / 10007, 0.368, 0.02);
    EXPECT_LE(*std::max_element(buckets.begin(), buckets.end()), 9);
}

}  // namespace
