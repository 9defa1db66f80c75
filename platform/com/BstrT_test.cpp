#include <platform/com/BstrT.h>

#include <gtest/gtest.h>

#include <utility>

namespace {

constexpr const char* kNull = nullptr;
constexpr const wchar_t* kNullWide = nullptr;

const char* Bytes(const _bstr_t& string) {
    return string;
}
const wchar_t* Wide(const _bstr_t& string) {
    return string;
}

TEST(BstrT, NothingHasNoString) {
    for (const _bstr_t& string :
         {_bstr_t(), _bstr_t(kNull), _bstr_t(kNullWide), _bstr_t(BSTR(nullptr), true)}) {
        EXPECT_TRUE(!string);
        EXPECT_EQ(string.GetBSTR(), nullptr);
        EXPECT_EQ(string.length(), 0u);
        EXPECT_EQ(Bytes(string), nullptr);
        EXPECT_EQ(Wide(string), nullptr);
        EXPECT_EQ(string.copy(), nullptr);
    }
}

TEST(BstrT, ShowsBothFormsOfItsText) {
    const _bstr_t fromBytes("a\xC3\xA9");
    EXPECT_STREQ(Wide(fromBytes), L"a\u00E9");
    EXPECT_STREQ(Bytes(fromBytes), "a\xC3\xA9");
    EXPECT_EQ(fromBytes.length(), 2u);
    const _bstr_t fromWide(L"a\u00E9");
    EXPECT_STREQ(Bytes(fromWide), "a\xC3\xA9");
    EXPECT_FALSE(!fromWide);
}

TEST(BstrT, CopiesAreIndependent) {
    _bstr_t original("abc");
    _bstr_t copy = original;
    EXPECT_NE(copy.GetBSTR(), original.GetBSTR());
    original = "changed";
    EXPECT_STREQ(Bytes(copy), "abc");
    copy = original;
    EXPECT_STREQ(Bytes(copy), "changed");
    const _bstr_t& same = copy;
    copy = same;
    EXPECT_STREQ(Bytes(copy), "changed");
}

TEST(BstrT, MovingHandsTheStringOver) {
    _bstr_t from("abc");
    EXPECT_STREQ(Bytes(from), "abc");
    const BSTR string = from.GetBSTR();
    const _bstr_t to(std::move(from));
    EXPECT_EQ(to.GetBSTR(), string);
    EXPECT_STREQ(Bytes(to), "abc");
}

TEST(BstrT, TakesOverOrCopiesAString) {
    const BSTR string = SysAllocString(L"abc");
    const _bstr_t copied(string, true);
    EXPECT_NE(copied.GetBSTR(), string);
    const _bstr_t held(string, false);
    EXPECT_EQ(held.GetBSTR(), string);
}

TEST(BstrT, AttachAndDetachPassTheString) {
    _bstr_t holder("old");
    EXPECT_STREQ(Bytes(holder), "old");
    holder.Attach(SysAllocString(L"new"));
    EXPECT_STREQ(Bytes(holder), "new");
    const BSTR string = holder.Detach();
    EXPECT_TRUE(!holder);
    EXPECT_STREQ(string, L"new");
    SysFreeString(string);
}

TEST(BstrT, CopyIsTheCallers) {
    const _bstr_t holder(L"abc");
    const BSTR copy = holder.copy();
    EXPECT_NE(copy, holder.GetBSTR());
    EXPECT_STREQ(copy, L"abc");
    SysFreeString(copy);
}

TEST(BstrT, JoinsTexts) {
    _bstr_t text("a");
    text += "b";
    text += text;
    EXPECT_STREQ(Bytes(text), "abab");
    EXPECT_STREQ(Bytes(text + _bstr_t(L"\u00E9")), "abab\xC3\xA9");
    EXPECT_STREQ(Bytes(_bstr_t() + text), "abab");
}

TEST(BstrT, ComparesByCodePoint) {
    EXPECT_TRUE(_bstr_t("a") == _bstr_t(L"a"));
    EXPECT_TRUE(_bstr_t("a") != _bstr_t("b"));
    EXPECT_TRUE(_bstr_t("a") < _bstr_t("b"));
    EXPECT_TRUE(_bstr_t() == _bstr_t(""));
    EXPECT_TRUE(_bstr_t() < _bstr_t("a"));
}

TEST(BstrT, ComparesWithPlainText) {
    const _bstr_t string("b\xC3\xA9");
    EXPECT_TRUE(string == "b\xC3\xA9");
    EXPECT_TRUE("b\xC3\xA9" == string);
    EXPECT_TRUE(string == L"b\u00E9");
    EXPECT_TRUE(string != "b");
    EXPECT_TRUE(string > "b");
    EXPECT_TRUE(string < L"c");
    EXPECT_TRUE(_bstr_t() == "");
    EXPECT_TRUE(_bstr_t() == kNull);
    EXPECT_FALSE(string == kNull);
}

}  // namespace
