// Searching and comparing blobs.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <zt/memory/HXBlob.h>
#include <zt/memory/Blob_test.hpp>

#include <cstddef>
#include <vector>

namespace ZT {
namespace {

TEST(HXBlobFindChar, FirstAtOrBehindTheOffset) {
    std::string bytes = "abcabc";
    const HXBlob blob = Naming(bytes);
    EXPECT_EQ(blob.FindChar('b', 0), AddressIn(bytes, 1));
    EXPECT_EQ(blob.FindChar('b', 1), AddressIn(bytes, 1));
    EXPECT_EQ(blob.FindChar('b', 2), AddressIn(bytes, 4));
    EXPECT_EQ(blob.FindChar('b', 5), nullptr);
    EXPECT_EQ(blob.FindChar('c', 6), nullptr);
    EXPECT_EQ(HXBlob(3u, AddressIn(bytes)).FindChar('a', 1), nullptr);
}

TEST(HXBlobFindChar, NullWithoutABlock) {
    EXPECT_EQ(HXBlob().FindChar('a', 0), nullptr);
    EXPECT_EQ(Blockless(5).FindChar('a', 0), nullptr);
}

TEST(HXBlobFindChar, FindsBytesThatAreNoLetters) {
    std::string bytes = "\x01\x00\xFF"s;
    EXPECT_EQ(Naming(bytes).FindChar(0, 0), AddressIn(bytes, 1));
    EXPECT_EQ(Naming(bytes).FindChar(0xFF, 0), AddressIn(bytes, 2));
}

// Where `pattern` is found in the first `size` bytes of `room`; -1 for nowhere.
std::ptrdiff_t Found(std::string room, std::size_t size, std::string pattern) {
    const HXBlob blob(static_cast<ulong>(size), AddressIn(room));
    const unsigned char* const place = blob.FindData(Naming(pattern));
    return place ? place - AddressIn(room) : -1;
}

TEST(HXBlobFindData, FirstMatch) {
    EXPECT_EQ(Found("abcabd", 6, "abd"), 3);
    EXPECT_EQ(Found("abcabd", 6, "ab"), 0);
    EXPECT_EQ(Found("abcabd", 6, "abcabd"), 0);
    EXPECT_EQ(Found("aaab", 4, "aab"), 1);
    EXPECT_EQ(Found("abc", 3, "c"), 2);
    EXPECT_EQ(Found("abc", 3, "x"), -1);
    EXPECT_EQ(Found("a\0b\0c"s, 5, "\0c"s), 3);
}

TEST(HXBlobFindData, NullWithoutBytesInEither) {
    std::string bytes = "abc";
    const HXBlob blob = Naming(bytes);
    for (const HXBlob& none : {HXBlob(), Blockless(2), HXBlob(0u, AddressIn(bytes))}) {
        EXPECT_EQ(blob.FindData(none), nullptr);
        EXPECT_EQ(none.FindData(blob), nullptr);
    }
}

TEST(HXBlobFindData, MatchThatBeginsInsideMayEndBehindTheEnd) {
    EXPECT_EQ(Found("abcdef", 4, "def"), 3);
    EXPECT_EQ(Found("abcdef", 2, "bcdef"), 1);
    EXPECT_EQ(Found("abcdef", 1, "abcdef"), 0);
    EXPECT_EQ(Found("dxxdyyddef", 8, "def"), 7);
}

TEST(HXBlobFindData, MatchThatBeginsBehindTheEndIsNone) {
    EXPECT_EQ(Found("abcdef", 3, "def"), -1);
    EXPECT_EQ(Found("abcdefgh", 4, "dex"), -1);
}

// The search by the letter of its description.
std::ptrdiff_t FoundSlowly(const std::string& room, std::size_t size, const std::string& pattern) {
    for (std::size_t i = 0; i < size; ++i)
        if (room.compare(i, pattern.size(), pattern) == 0) return static_cast<std::ptrdiff_t>(i);
    return -1;
}

RC_GTEST_PROP(HXBlobFindData, IsTheFirstPlaceInside, ()) {
    const auto letters = rc::gen::elementOf("aab"s);
    const auto room = *rc::gen::container<std::string>(letters);
    const auto pattern = *rc::gen::nonEmpty(rc::gen::container<std::string>(letters));
    const auto size = *rc::gen::inRange<std::size_t>(0, room.size() + 1);
    // Room behind the end, as the operation asks for; it is no letter.
    const std::string behind = room + std::string(pattern.size(), '.');
    RC_ASSERT(Found(behind, size, pattern) == FoundSlowly(behind, size, pattern));
}

TEST(HXBlobCompare, EqualSizesAreEnough) {
    std::string a = "abcd";
    std::string b = "wxyz";
    EXPECT_TRUE(Naming(a).IsSameData(Naming(b)));
    EXPECT_TRUE(Naming(a).IsSameData(Blockless(4)));
    EXPECT_FALSE(Naming(a).IsSameData(HXBlob(5u, AddressIn(b))));
    EXPECT_FALSE(Naming(a).IsSameData(HXBlob(3u, AddressIn(a))));
    EXPECT_TRUE(HXBlob().IsSameData(HXBlob()));
}

TEST(HXBlobCompare, AllZeros) {
    std::string bytes = "\0\0\0\1"s;
    EXPECT_TRUE(HXBlob::IsAllZeros(AddressIn(bytes), 3));
    EXPECT_FALSE(HXBlob::IsAllZeros(AddressIn(bytes), 4));
    EXPECT_TRUE(HXBlob::IsAllZeros(AddressIn(bytes), 1));
    EXPECT_FALSE(HXBlob::IsAllZeros(AddressIn(bytes, 3), 1));
    EXPECT_TRUE(HXBlob::IsAllZeros(AddressIn(bytes, 3), 0));
    EXPECT_TRUE(HXBlob::IsAllZeros(AddressIn(bytes, 3), -1));
    EXPECT_TRUE(HXBlob::IsAllZeros(nullptr, 5));
}

TEST(HXBlobSwap, ReversesWholeGroups) {
    std::string bytes = "abcdef";
    Naming(bytes).SwapEndianBytes();
    EXPECT_EQ(bytes, "dcbaef");
    const std::pair<std::size_t, const char*> cases[] = {{0, "abcdefghi"}, {3, "abcdefghi"},
                                                         {4, "dcbaefghi"}, {7, "dcbaefghi"},
                                                         {8, "dcbahgfei"}, {9, "dcbahgfei"}};
    for (const auto& [n, swapped] : cases) {
        std::string text = "abcdefghi";
        HXBlob::SwapEndianBytes(AddressIn(text), static_cast<ulong>(n));
        EXPECT_EQ(text, swapped) << n;
    }
    HXBlob().SwapEndianBytes();
    HXBlob::SwapEndianBytes(nullptr, 8);
}

}  // namespace
}  // namespace ZT
