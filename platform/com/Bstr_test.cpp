#include <platform/com/Bstr.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

namespace {

using namespace std::string_literals;

std::wstring TextOf(BSTR string) {
    return {string, SysStringLen(string)};
}

TEST(Bstr, CopiesTextUpToItsZero) {
    BSTR string = SysAllocString(L"a\u00E9\U0001F600");
    EXPECT_EQ(TextOf(string), L"a\u00E9\U0001F600");
    EXPECT_EQ(SysStringLen(string), 3u);
    EXPECT_EQ(SysStringByteLen(string), 3 * sizeof(wchar_t));
    EXPECT_EQ(string[3], L'\0');
    SysFreeString(string);
}

TEST(Bstr, ByteCountStandsInTheFourBytesBefore) {
    BSTR string = SysAllocString(L"abc");
    std::uint32_t count;
    std::memcpy(&count, reinterpret_cast<char*>(string) - 4, 4);
    EXPECT_EQ(count, 12u);
    SysFreeString(string);
}

TEST(Bstr, NullIsTheEmptyString) {
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    EXPECT_EQ(SysStringByteLen(nullptr), 0u);
    SysFreeString(nullptr);
}

TEST(Bstr, EmptyTextIsAStringOfItsOwn) {
    BSTR string = SysAllocString(L"");
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(SysStringLen(string), 0u);
    EXPECT_EQ(*string, L'\0');
    SysFreeString(string);
}

TEST(Bstr, CountedTextKeepsZeros) {
    BSTR string = SysAllocStringLen(L"a\0b", 3);
    EXPECT_EQ(TextOf(string), L"a\0b"s);
    SysFreeString(string);
}

TEST(Bstr, CountedWithoutTextIsZeros) {
    BSTR string = SysAllocStringLen(nullptr, 2);
    EXPECT_EQ(TextOf(string), L"\0\0"s);
    SysFreeString(string);
}

TEST(Bstr, LengthWhoseBytesDoNotFitGivesNull) {
    EXPECT_EQ(SysAllocStringLen(nullptr, 0x40000000u), nullptr);
    EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFFu), nullptr);
}

TEST(Bstr, BytesNeedNotBeWholeCharacters) {
    BSTR string = SysAllocStringByteLen("abcde", 5);
    EXPECT_EQ(SysStringByteLen(string), 5u);
    EXPECT_EQ(SysStringLen(string), 1u);
    EXPECT_EQ(std::memcmp(string, "abcde\0\0\0\0", 9), 0);
    SysFreeString(string);
}

TEST(Bstr, ReallocationReplacesTheText) {
    BSTR string = SysAllocString(L"abc");
    EXPECT_EQ(SysReAllocString(&string, L"longer text"), 1);
    EXPECT_EQ(TextOf(string), L"longer text");
    EXPECT_EQ(SysReAllocStringLen(&string, L"xyz", 2), 1);
    EXPECT_EQ(TextOf(string), L"xy");
    EXPECT_EQ(SysReAllocString(&string, nullptr), 1);
    EXPECT_EQ(string, nullptr);
    EXPECT_EQ(SysReAllocString(&string, L"from null"), 1);
    EXPECT_EQ(TextOf(string), L"from null");
    SysFreeString(string);
}

TEST(Bstr, ReallocationFromInsideItself) {
    BSTR string = SysAllocString(L"abcdef");
    EXPECT_EQ(SysReAllocString(&string, string + 2), 1);
    EXPECT_EQ(TextOf(string), L"cdef");
    SysFreeString(string);
}

TEST(Bstr, FailedReallocationLeavesTheText) {
    BSTR string = SysAllocString(L"abc");
    EXPECT_EQ(SysReAllocStringLen(&string, nullptr, 0xFFFFFFFFu), 0);
    EXPECT_EQ(TextOf(string), L"abc");
    SysFreeString(string);
    EXPECT_EQ(SysReAllocString(nullptr, L"a"), 0);
    EXPECT_EQ(SysReAllocStringLen(nullptr, L"a", 1), 0);
}

}  // namespace
