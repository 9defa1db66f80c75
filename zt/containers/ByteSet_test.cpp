#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <zt/containers/ByteSet.h>
#include <cstring>
#include <string>

namespace ZT {
namespace {

TEST(ByteSet, HoldsItsCharactersAndTheZero) {
    const ByteSet set(" \xFF");
    EXPECT_TRUE(set.Has(' '));
    EXPECT_TRUE(set.Has('\xFF'));
    EXPECT_TRUE(set.Has('\0'));
    EXPECT_FALSE(set.Has('a'));
}

TEST(ByteSet, NullTextIsTheZeroAlone) {
    const ByteSet set(nullptr);
    EXPECT_TRUE(set.Has('\0'));
    EXPECT_FALSE(set.Has(' '));
}

TEST(ByteSet, AgreesWithTheByteStringSearch) {
    EXPECT_TRUE(rc::check([](const std::string& members, char c) {
        const bool expected = std::strchr(members.c_str(), c) != nullptr;
        RC_ASSERT(ByteSet(members.c_str()).Has(c) == expected);
    }));
}

TEST(ByteSet, ForwardScansStopBeforeTheEnd) {
    const ByteSet blank(" ");
    EXPECT_EQ(FirstIn("ab c", 0, blank), 2);
    EXPECT_EQ(FirstIn("ab c", 3, blank), -1);
    EXPECT_EQ(FirstIn("ab c", 9, blank), -1);
    EXPECT_EQ(FirstNotIn("  ab", 0, blank), 2);
    EXPECT_EQ(FirstNotIn("ab  ", 2, blank), -1);
}

TEST(ByteSet, DownwardScansSeeTheZeroAtTheEnd) {
    const ByteSet blank(" ");
    EXPECT_EQ(LastIn("a b", 3, blank), 3);
    EXPECT_EQ(LastIn("a b", 2, blank), 1);
    EXPECT_EQ(LastIn("ab", 1, blank), -1);
    EXPECT_EQ(LastNotIn("a  ", 2, blank), 0);
    EXPECT_EQ(LastNotIn("  a", 1, blank), -1);
}

}  // namespace
}  // namespace ZT
