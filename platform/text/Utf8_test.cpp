#include <platform/text/Utf8.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace {

using namespace std::string_literals;

struct Pair {
    std::string bytes;
    std::wstring wide;
};

// One character for each end of each length.
const Pair kPairs[] = {
    {"", L""},
    {"\0"s, L"\0"s},
    {"\x7F", L"\x7F"},
    {"\xC2\x80", L"\x80"},
    {"\xDF\xBF", L"\x7FF"},
    {"\xE0\xA0\x80", L"\x800"},
    {"\xED\x9F\xBF", L"\xD7FF"},
    {"\xEE\x80\x80", L"\xE000"},
    {"\xEF\xBF\xBF", L"\xFFFF"},
    {"\xF0\x90\x80\x80", L"\x10000"},
    {"\xF4\x8F\xBF\xBF", L"\x10FFFF"},
    {"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z", L"a\u00E9\u20AC\U0001F600z"},
};

TEST(Utf8, WholeCharactersCrossBothWays) {
    for (const Pair& pair : kPairs) {
        EXPECT_EQ(WideFromUtf8(pair.bytes), pair.wide);
        EXPECT_EQ(Utf8FromWide(pair.wide), pair.bytes);
    }
}

TEST(Utf8, BrokenBytesBecomeReplacementCharacters) {
    const Pair broken[] = {
        {"\x80", L"\uFFFD"},
        {"a\xFFz", L"a\uFFFDz"},
        {"\xC3", L"\uFFFD"},
        {"\xC3(", L"\uFFFD("},
        {"\xE2\x82", L"\uFFFD"},
        {"\xE2\x82z", L"\uFFFDz"},
        {"\xF0\x9F\x98", L"\uFFFD"},
        {"\xC0\xAF", L"\uFFFD\uFFFD"},
        {"\xE0\x80\xAF", L"\uFFFD\uFFFD\uFFFD"},
        {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},
        {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF5\x80", L"\uFFFD\uFFFD"},
    };
    for (const Pair& pair : broken) EXPECT_EQ(WideFromUtf8(pair.bytes), pair.wide);
}

TEST(Utf8, WideUnitsThatAreNoTextBecomeReplacementCharacters) {
    const std::wstring wide = {0xD800, 0xDFFF, 0x110000, static_cast<wchar_t>(-1), L'a'};
    EXPECT_EQ(Utf8FromWide(wide),
              "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"
              "a");
}

TEST(Utf8, AnyCodePointsComeBack) {
    EXPECT_TRUE(rc::check([](const std::vector<std::uint32_t>& numbers) {
        std::wstring wide;
        for (const std::uint32_t number : numbers) {
            const std::uint32_t code = number % 0x110000;
            if (code < 0xD800 || code > 0xDFFF) wide.push_back(static_cast<wchar_t>(code));
        }
        RC_ASSERT(WideFromUtf8(Utf8FromWide(wide)) == wide);
    }));
}

TEST(Utf8, AnyBytesGiveText) {
    EXPECT_TRUE(rc::check([](const std::string& bytes) {
        const std::wstring wide = WideFromUtf8(bytes);
        RC_ASSERT(wide.size() <= bytes.size());
        RC_ASSERT(WideFromUtf8(Utf8FromWide(wide)) == wide);
    }));
}

}  // namespace
