#include <gtest/gtest.h>

#include <zt/frame/ZT.h>
#include <type_traits>

namespace {

TEST(ZT, IntegersHaveTheWidthsOfTheirNames) {
    static_assert(std::is_same_v<ZT::ulong, std::uint32_t>);
    static_assert(std::is_same_v<ZT::uint64, std::uint64_t>);
    static_assert(std::is_same_v<ZT::int64, std::int64_t>);
    EXPECT_EQ(sizeof(ZT::ulong), 4u);
}

TEST(ZT, TriStateIsASigned32BitNumberFromMinusOne) {
    static_assert(std::is_same_v<std::underlying_type_t<ZT::ETri>, std::int32_t>);
    EXPECT_EQ(static_cast<int>(ZT::eUnknown), -1);
    EXPECT_EQ(static_cast<int>(ZT::eFalse), 0);
    EXPECT_EQ(static_cast<int>(ZT::eTrue), 1);
}

TEST(ZT, TriStateNamesAreReachableGlobally) {
    EXPECT_EQ(::eUnknown, ZT::eUnknown);
    EXPECT_EQ(::eFalse, ZT::eFalse);
    EXPECT_EQ(::eTrue, ZT::eTrue);
}

TEST(ZT, GlobalEnumerationHasTheSameValues) {
    static_assert(std::is_same_v<std::underlying_type_t<ZT3State>, std::int32_t>);
    EXPECT_EQ(static_cast<int>(ZT3State::eUnknown), -1);
    EXPECT_EQ(static_cast<int>(ZT3State::eFalse), 0);
    EXPECT_EQ(static_cast<int>(ZT3State::eTrue), 1);
}

}  // namespace
