#include <platform/text/CString.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/Raises.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <map>
#include <sstream>
#include <unordered_set>
#include <vector>

#include <platform/com/Bstr.h>

#if defined(__SANITIZE_ADDRESS__)
#define ZT_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZT_ADDRESS_SANITIZER
#endif
#endif

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using testing::ElementsAre;
using testing_support::Raises;

constexpr const char* kNull = nullptr;
constexpr const wchar_t* kNullWide = nullptr;

template <class Work>
testing::AssertionResult RaisesInvalidArg(Work work) {
    return Raises<CInvalidArgException>(work);
}

template <class Work>
testing::AssertionResult RaisesMemory(Work work) {
    return Raises<CMemoryException>(work);
}

const CString kWithZero("ab\0cd", 5);
// Longer than what a string keeps in itself.
const std::string kLong(100, 'x');

TEST(CString, DefaultIsEmpty) {
    const CString s;
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_EQ(s.GetLength(), 0);
    EXPECT_STREQ(s, "");
}

TEST(CString, NullPointersAreTheEmptyText) {
    EXPECT_TRUE(CString(kNull).IsEmpty());
    EXPECT_TRUE(CString(kNullWide).IsEmpty());
    EXPECT_TRUE(CString(nullptr).IsEmpty());
    EXPECT_TRUE(CString(kNull, 0).IsEmpty());
    CString s("x");
    s = kNull;
    EXPECT_TRUE(s.IsEmpty());
    s = "x";
    s = nullptr;
    EXPECT_TRUE(s.IsEmpty());
    s = "x";
    s += kNull;
    EXPECT_EQ(s, "x");
    EXPECT_EQ(s + kNull, "x");
    EXPECT_EQ(kNull + s, "x");
    EXPECT_EQ(CString(), kNull);
    EXPECT_GT(s, kNull);
}

TEST(CString, MadeFromTextUpToItsZero) {
    EXPECT_EQ(CString("ab\0cd").GetLength(), 2);
}

TEST(CString, MadeFromCountedTextKeepsZeroBytes) {
    EXPECT_EQ(kWithZero.GetLength(), 5);
    EXPECT_EQ(kWithZero.View(), "ab\0cd"sv);
    EXPECT_EQ(CString("abc"sv.substr(1)), "bc");
}

TEST(CString, CountedTextChecksItsArguments) {
    EXPECT_TRUE(RaisesInvalidArg([] { CString("a", -1); }));
    EXPECT_TRUE(RaisesInvalidArg([] { CString(kNull, 1); }));
    EXPECT_TRUE(RaisesInvalidArg([] { CString(L"a", -1); }));
    EXPECT_TRUE(RaisesInvalidArg([] { CString(kNullWide, 1); }));
    EXPECT_TRUE(RaisesInvalidArg([] { CString().SetString(kNull, 1); }));
    EXPECT_TRUE(RaisesInvalidArg([] { CString().Append(kNull, 1); }));
}

TEST(CString, MadeFromARepeatedByte) {
    EXPECT_EQ(CString('x', 3), "xxx");
    EXPECT_EQ(CString('x'), "x");
    EXPECT_EQ(CString('x', 0), "");
    EXPECT_EQ(CString('x', -2), "");
    EXPECT_EQ(CString('\0', 2).GetLength(), 2);
}

TEST(CString, MadeFromWideTextIsUtf8) {
    EXPECT_EQ(CString(L"a\u00E9\U0001F600"), "a\xC3\xA9\xF0\x9F\x98\x80");
    EXPECT_EQ(CString(L"abc", 2), "ab");
    EXPECT_EQ(CString(L"a\0b", 3).View(), "a\0b"sv);
    CString s;
    s = L"\u20AC";
    EXPECT_EQ(s, "\xE2\x82\xAC");
}

TEST(CString, CopiesAreIndependent) {
    for (const char* text : {"short", kLong.c_str()}) {
        const CString original(text);
        CString copy(original);
        copy.SetAt(0, 'Z');
        copy += "tail";
        EXPECT_EQ(original, text);
        CString assigned;
        assigned = original;
        assigned.MakeReverse();
        EXPECT_EQ(original, text);
    }
}

TEST(CString, MovedFromStringCanBeUsedAgain) {
    CString from(kLong.c_str());
    CString to(std::move(from));
    EXPECT_EQ(to, kLong.c_str());
    from = "again";
    to = std::move(from);
    EXPECT_EQ(to, "again");
}

TEST(CString, WritingToABufferLeavesCopiesAlone) {
    CString original(kLong.c_str());
    CString copy = original;
    copy.GetBuffer()[0] = '?';
    copy.ReleaseBuffer();
    EXPECT_EQ(original, kLong.c_str());
    EXPECT_EQ(copy[0], '?');
}

TEST(CString, AssignsACharacterAndAView) {
    CString s("abc");
    s = 'x';
    EXPECT_EQ(s, "x");
    s = "a\0b"sv;
    EXPECT_EQ(s.GetLength(), 3);
    s.SetString("hello", 2);
    EXPECT_EQ(s, "he");
    s.SetString("hello");
    EXPECT_EQ(s, "hello");
}

TEST(CString, AssigningFromInsideItself) {
    for (const std::string& text : {"0123456789"s, std::string(60, 'a') + "0123456789"}) {
        CString s(text.c_str());
        s = s.GetString() + 4;
        EXPECT_EQ(s, text.c_str() + 4);
        s = text.c_str();
        s += s.GetString() + 4;
        EXPECT_EQ(s.View(), text + text.substr(4));
        s = text.c_str();
        s += s;
        EXPECT_EQ(s.View(), text + text);
        s = text.c_str();
        s.Append(s.GetString() + 1, 3);
        EXPECT_EQ(s.View(), text + text.substr(1, 3));
        s = text.c_str();
        s.Insert(2, s.GetString() + 1);
        EXPECT_EQ(s.View(), text.substr(0, 2) + text.substr(1) + text.substr(2));
        s = text.c_str();
        s = s.View().substr(3, 2);
        EXPECT_EQ(s.View(), text.substr(3, 2));
        s = text.c_str();
        EXPECT_EQ(s.Replace(s.GetString() + s.GetLength() - 1, s.GetString()), 1);
        EXPECT_EQ(s.View(), text.substr(0, text.size() - 1) + text);
    }
}

TEST(CString, SelfAssignmentKeepsTheText) {
    CString s("abc");
    const CString& same = s;
    s = same;
    EXPECT_EQ(s, "abc");
}

TEST(CString, SwapExchangesTexts) {
    CString a("a"), b(kLong.c_str());
    swap(a, b);
    EXPECT_EQ(b, "a");
    a.Swap(b);
    EXPECT_EQ(a, "a");
}

TEST(CString, EmptyTakesTextAndMemoryAway) {
    CString s(kLong.c_str());
    s.Empty();
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_LT(s.GetAllocLength(), 100);
}

TEST(CString, TerminatingZeroIsReadableAtIndexLength) {
    const CString s("abc");
    EXPECT_EQ(s[0], 'a');
    EXPECT_EQ(s[2], 'c');
    EXPECT_EQ(s[3], '\0');
    EXPECT_EQ(s.GetAt(3), '\0');
    EXPECT_EQ(CString()[0], '\0');
}

TEST(CString, IndexOutOfBoundsRaises) {
    const CString s("abc");
    EXPECT_TRUE(RaisesInvalidArg([&s] { s[-1]; }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s[4]; }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.GetAt(-1); }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.GetAt(4); }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.GetAt(INT_MIN); }));
}

TEST(CString, IndicesOfEveryWidthAreChecked) {
    const CString s("abc");
    EXPECT_EQ(s[1L], 'b');
    EXPECT_EQ(s[std::size_t{1}], 'b');
    EXPECT_EQ(s[1u], 'b');
    EXPECT_TRUE(RaisesInvalidArg([&s] { s[0x100000001L]; }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s[~std::size_t{0}]; }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s[-1L]; }));
}

TEST(CString, SetAtWritesOnlyBelowTheLength) {
    CString s("abc");
    s.SetAt(2, 'Z');
    EXPECT_EQ(s, "abZ");
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.SetAt(3, 'x'); }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.SetAt(-1, 'x'); }));
    EXPECT_EQ(s, "abZ");
}

TEST(CString, BufferTakesWhatIsWrittenUpToItsZero) {
    CString s("abc");
    char* buffer = s.GetBuffer(50);
    EXPECT_STREQ(buffer, "abc");
    std::strcpy(buffer, "hello world");
    s.ReleaseBuffer();
    EXPECT_EQ(s, "hello world");
}

TEST(CString, BufferSmallerThanTheTextKeepsTheText) {
    CString s("abcdef");
    EXPECT_STREQ(s.GetBuffer(2), "abcdef");
    s.ReleaseBuffer();
    EXPECT_EQ(s, "abcdef");
    EXPECT_STREQ(s.GetBuffer(), "abcdef");
}

TEST(CString, BufferOfTheLengthLeavesTheLengthAlone) {
    CString s("abc");
    s.GetBuffer(s.GetLength())[1] = 'X';
    EXPECT_EQ(s.GetLength(), 3);
    EXPECT_EQ(s, "aXc");
}

TEST(CString, ReleaseWithoutWritingKeepsTheText) {
    CString s("abc");
    s.GetBuffer(500);
    s.ReleaseBuffer();
    EXPECT_EQ(s, "abc");
    EXPECT_EQ(s.GetLength(), 3);
}

TEST(CString, ReleaseWithALengthKeepsZeroBytes) {
    CString s;
    std::memcpy(s.GetBuffer(4), "a\0bc", 4);
    s.ReleaseBuffer(3);
    EXPECT_EQ(s.View(), "a\0b"sv);
    s.ReleaseBuffer();
    EXPECT_EQ(s, "a");
    std::memcpy(s.GetBuffer(4), "wxyz", 4);
    s.ReleaseBufferSetLength(2);
    EXPECT_EQ(s, "wx");
}

TEST(CString, ReleaseChecksItsLength) {
    CString s("abc");
    s.GetBuffer(10);
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.ReleaseBuffer(11); }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.ReleaseBuffer(-2); }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.ReleaseBufferSetLength(-1); }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.GetBuffer(-1); }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.GetBufferSetLength(-1); }));
}

TEST(CString, BufferOfASetLength) {
    CString s("abcdef");
    std::memcpy(s.GetBufferSetLength(3), "xyz", 3);
    EXPECT_EQ(s, "xyz");
    std::memset(s.GetBufferSetLength(40), 'q', 40);
    EXPECT_EQ(s, CString('q', 40));
}

TEST(CString, PreallocatedStringGrowsInPlace) {
    CString s;
    s.Preallocate(1000);
    EXPECT_GE(s.GetAllocLength(), 1000);
    const char* before = s.GetString();
    for (int i = 0; i < 1000; ++i) s.AppendChar('a');
    EXPECT_EQ(s.GetString(), before);
    s.Truncate(3);
    s.FreeExtra();
    EXPECT_EQ(s, "aaa");
    EXPECT_LT(s.GetAllocLength(), 1000);
}

TEST(CString, TruncateOnlyShortens) {
    CString s("abc");
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.Truncate(4); }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.Truncate(-1); }));
    s.Truncate(0);
    EXPECT_TRUE(s.IsEmpty());
}

TEST(CString, LockedBufferIsTheStringsOwn) {
    CString s("abc");
    s.LockBuffer()[0] = 'X';
    s.UnlockBuffer();
    EXPECT_EQ(s, "Xbc");
}

TEST(CString, Appends) {
    CString s("a");
    s.Append("bc");
    s.Append("d\0e", 3);
    s.Append(CString("f"));
    s.AppendChar('g');
    s += 'h';
    s += "i"sv;
    s += "j";
    EXPECT_EQ(s.View(), "abcd\0efghij"sv);
    s.Append("x", 0);
    EXPECT_EQ(s.GetLength(), 11);
}

TEST(CString, PlusJoinsInEveryCombination) {
    const CString a("a"), b("b");
    EXPECT_EQ(a + b, "ab");
    EXPECT_EQ(a + "b", "ab");
    EXPECT_EQ("a" + b, "ab");
    EXPECT_EQ(a + 'b', "ab");
    EXPECT_EQ('a' + b, "ab");
    EXPECT_EQ(a + "-" + b + '!' + a, "a-b!a");
    EXPECT_EQ(a, "a");
    EXPECT_EQ((kWithZero + kWithZero).View(), "ab\0cdab\0cd"sv);
}

TEST(CString, ComparesWithEveryPartner) {
    const CString a("a"), b("b");
    EXPECT_TRUE(a == a && a == "a" && "a" == a && a == 'a' && 'a' == a && a == "a"sv && "a"sv == a);
    EXPECT_TRUE(a != b && a != "b" && "b" != a && a != 'b' && 'b' != a && a != "b"sv);
    EXPECT_TRUE(a < b && a < "b" && "a" < b && a < "b"sv);
    EXPECT_TRUE(a <= b && a <= "a" && "a" <= b);
    EXPECT_TRUE(b > a && b > "a" && "b" > a);
    EXPECT_TRUE(b >= a && b >= "b" && "b" >= a);
    EXPECT_FALSE(a < a || a > a || a < "a" || "a" < a);
    EXPECT_FALSE(CString("aa") == 'a');
}

TEST(CString, ComparesBytesAsUnsigned) {
    EXPECT_GT(CString("\xC3\xA9"), "z");
    EXPECT_GT(CString("\xC3\xA9").Compare("z"), 0);
    EXPECT_LT(CString("ab"), "abc");
    EXPECT_LT(CString("ab").Compare("abc"), 0);
    EXPECT_EQ(CString("ab").Compare("ab"), 0);
}

TEST(CString, ComparesTheFullLength) {
    EXPECT_NE(kWithZero, "ab");
    EXPECT_NE(kWithZero, CString("ab\0ce", 5));
    EXPECT_LT(kWithZero.Compare(CString("ab\0ce", 5)), 0);
    EXPECT_EQ(kWithZero.Compare("ab\0cd"sv), 0);
    EXPECT_GT(kWithZero.Compare("ab"), 0);
}

TEST(CString, CompareNoCaseFoldsAsciiOnly) {
    EXPECT_EQ(CString("AbC1").CompareNoCase("aBc1"), 0);
    EXPECT_LT(CString("abc").CompareNoCase("ABD"), 0);
    EXPECT_GT(CString("ABD").CompareNoCase("abc"), 0);
    EXPECT_LT(CString("ab").CompareNoCase("ABC"), 0);
    EXPECT_GT(CString("abc").CompareNoCase("AB"), 0);
    EXPECT_NE(CString("\xC3\xA9").CompareNoCase("\xC3\x89"), 0);
    // An underscore stands between the upper and the lower letters.
    EXPECT_LT(CString("_").CompareNoCase("A"), 0);
    EXPECT_EQ(CString().CompareNoCase(kNull), 0);
}

TEST(CString, CollatesByTheLocale) {
    EXPECT_EQ(CString("abc").Collate("abc"), 0);
    EXPECT_LT(CString("abc").Collate("abd"), 0);
    EXPECT_GT(CString("abd").Collate("abc"), 0);
    EXPECT_GT(CString("a").Collate(kNull), 0);
    EXPECT_EQ(CString("ABC").CollateNoCase("abc"), 0);
    EXPECT_LT(CString("ABC").CollateNoCase("abd"), 0);
}

TEST(CString, MidBringsPlaceAndCountIntoRange) {
    const CString s("abcdef");
    EXPECT_EQ(s.Mid(2), "cdef");
    EXPECT_EQ(s.Mid(2, 3), "cde");
    EXPECT_EQ(s.Mid(-1), "abcdef");
    EXPECT_EQ(s.Mid(-1, 2), "ab");
    EXPECT_EQ(s.Mid(INT_MIN, INT_MAX), "abcdef");
    EXPECT_EQ(s.Mid(2, -1), "");
    EXPECT_EQ(s.Mid(2, 100), "cdef");
    EXPECT_EQ(s.Mid(3, INT_MAX), "def");
    EXPECT_EQ(s.Mid(6), "");
    EXPECT_EQ(s.Mid(7), "");
    EXPECT_EQ(s.Mid(7, 1), "");
    EXPECT_EQ(s.Mid(0, 0), "");
    EXPECT_EQ(kWithZero.Mid(1, 3).View(), "b\0c"sv);
}

TEST(CString, LeftAndRightCutTheirCounts) {
    const CString s("abc");
    EXPECT_EQ(s.Left(2), "ab");
    EXPECT_EQ(s.Left(-1), "");
    EXPECT_EQ(s.Left(10), "abc");
    EXPECT_EQ(s.Right(2), "bc");
    EXPECT_EQ(s.Right(-1), "");
    EXPECT_EQ(s.Right(10), "abc");
    EXPECT_EQ(s.Right(0), "");
}

TEST(CString, Spans) {
    const CString s("aabbcd");
    EXPECT_EQ(s.SpanIncluding("ab"), "aabb");
    EXPECT_EQ(s.SpanIncluding("x"), "");
    EXPECT_EQ(s.SpanIncluding("abcd"), "aabbcd");
    EXPECT_EQ(s.SpanIncluding(""), "");
    EXPECT_EQ(s.SpanExcluding("cd"), "aabb");
    EXPECT_EQ(s.SpanExcluding("x"), "aabbcd");
    EXPECT_EQ(s.SpanExcluding("a"), "");
    EXPECT_EQ(s.SpanExcluding(""), "aabbcd");
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.SpanIncluding(nullptr); }));
    EXPECT_TRUE(RaisesInvalidArg([&s] { s.SpanExcluding(nullptr); }));
}

std::vector<std::string> Tokens(const CString& s, const char* delimiters) {
    std::vector<std::string> tokens;
    int start = 0;
    for (CString token = s.Tokenize(delimiters, start); start != -1;
         token = s.Tokenize(delimiters, start)) {
        tokens.emplace_back(token);
    }
    return tokens;
}

TEST(CString, TokenizesBetweenRunsOfDelimiters) {
    EXPECT_THAT(Tokens("%First Second#Third", "% #"), ElementsAre("First", "Second", "Third"));
    EXPECT_THAT(Tokens("  a   b  ", " "), ElementsAre("a", "b"));
    EXPECT_THAT(Tokens("a,b", ","), ElementsAre("a", "b"));
    EXPECT_THAT(Tokens("abc", ","), ElementsAre("abc"));
    EXPECT_THAT(Tokens(",,,", ","), ElementsAre());
    EXPECT_THAT(Tokens("", ","), ElementsAre());
    EXPECT_THAT(Tokens("a b", ""), ElementsAre("a b"));
    EXPECT_THAT(Tokens("a b", nullptr), ElementsAre("a b"));
}

TEST(CString, TokenizeMovesTheStartPastTheDelimiter) {
    const CString s("ab,c");
    int start = 0;
    EXPECT_EQ(s.Tokenize(",", start), "ab");
    EXPECT_EQ(start, 3);
    EXPECT_EQ(s.Tokenize(",", start), "c");
    EXPECT_EQ(s.Tokenize(",", start), "");
    EXPECT_EQ(start, -1);
    EXPECT_TRUE(RaisesInvalidArg([&] { s.Tokenize(",", start); }));
    start = 100;
    EXPECT_EQ(s.Tokenize(",", start), "");
    EXPECT_EQ(start, -1);
}

TEST(CString, FindsACharacterFromAPlace) {
    const CString s("abcabc");
    EXPECT_EQ(s.Find('b'), 1);
    EXPECT_EQ(s.Find('b', 1), 1);
    EXPECT_EQ(s.Find('b', 2), 4);
    EXPECT_EQ(s.Find('b', 5), -1);
    EXPECT_EQ(s.Find('x'), -1);
    EXPECT_EQ(s.Find('a', -1), -1);
    EXPECT_EQ(s.Find('a', 6), -1);
    EXPECT_EQ(CString().Find('a'), -1);
}

TEST(CString, TheTerminatingZeroCanBeFound) {
    EXPECT_EQ(CString("abc").Find('\0'), 3);
    EXPECT_EQ(CString("abc").Find('\0', 3), -1);
    EXPECT_EQ(CString().Find('\0'), -1);
    EXPECT_EQ(kWithZero.Find('\0'), 2);
    EXPECT_EQ(kWithZero.Find('\0', 3), 5);
    EXPECT_EQ(CString("abc").ReverseFind('\0'), 3);
}

TEST(CString, FindsATextFromAPlace) {
    const CString s("abcabc");
    EXPECT_EQ(s.Find("bc"), 1);
    EXPECT_EQ(s.Find("bc", 2), 4);
    EXPECT_EQ(s.Find("bc", 5), -1);
    EXPECT_EQ(s.Find("bcd"), -1);
    EXPECT_EQ(s.Find(CString("ca")), 2);
    EXPECT_EQ(s.Find(CString("ca"), 3), -1);
    EXPECT_EQ(s.Find(kNull), -1);
    EXPECT_EQ(s.Find("a", -1), -1);
    EXPECT_EQ(s.Find(CString("a"), -1), -1);
    EXPECT_EQ(s.Find("a", 7), -1);
    EXPECT_EQ(s.Find(CString("a"), 7), -1);
    EXPECT_EQ(kWithZero.Find("cd"), 3);
    EXPECT_EQ(kWithZero.Find(CString("b\0c", 3)), 1);
}

TEST(CString, TheEmptyTextIsFoundAtTheStart) {
    const CString s("abc");
    EXPECT_EQ(s.Find(""), 0);
    EXPECT_EQ(s.Find("", 2), 2);
    EXPECT_EQ(s.Find("", 3), 3);
    EXPECT_EQ(s.Find("", 4), -1);
    EXPECT_EQ(CString().Find(""), 0);
}

TEST(CString, FindsBackwardAndOneOfASet) {
    const CString s("abcabc");
    EXPECT_EQ(s.ReverseFind('a'), 3);
    EXPECT_EQ(s.ReverseFind('x'), -1);
    EXPECT_EQ(CString().ReverseFind('x'), -1);
    EXPECT_EQ(s.FindOneOf("xcb"), 1);
    EXPECT_EQ(s.FindOneOf("xyz"), -1);
    EXPECT_EQ(s.FindOneOf(""), -1);
    EXPECT_EQ(s.FindOneOf(nullptr), -1);
}

TEST(CString, ChangesTheCaseOfAsciiLetters) {
    CString s("aZ09[`{@\xC3\xA9");
    EXPECT_EQ(s.MakeUpper(), "AZ09[`{@\xC3\xA9");
    EXPECT_EQ(s.MakeLower(), "az09[`{@\xC3\xA9");
}

TEST(CString, Reverses) {
    EXPECT_EQ(CString("abc").MakeReverse(), "cba");
    EXPECT_EQ(CString().MakeReverse(), "");
}

TEST(CString, TrimsWhiteSpace) {
    const char* text = " \t\n\v\f\rab c\r\f\v\n\t ";
    EXPECT_EQ(CString(text).Trim(), "ab c");
    EXPECT_EQ(CString(text).TrimLeft(), "ab c\r\f\v\n\t ");
    EXPECT_EQ(CString(text).TrimRight(), " \t\n\v\f\rab c");
    EXPECT_EQ(CString("   ").Trim(), "");
    EXPECT_EQ(CString("   ").TrimLeft(), "");
    EXPECT_EQ(CString("   ").TrimRight(), "");
    EXPECT_EQ(CString().Trim(), "");
    EXPECT_EQ(CString("\xC2\xA0").Trim(), "\xC2\xA0");
}

TEST(CString, TrimsAByteOrASet) {
    EXPECT_EQ(CString("xxaxbxx").Trim('x'), "axb");
    EXPECT_EQ(CString("xxaxbxx").TrimLeft('x'), "axbxx");
    EXPECT_EQ(CString("xxaxbxx").TrimRight('x'), "xxaxb");
    EXPECT_EQ(CString("xyaxbyx").Trim("xy"), "axb");
    EXPECT_EQ(CString("xyaxbyx").TrimLeft("yx"), "axbyx");
    EXPECT_EQ(CString("xyaxbyx").TrimRight("yx"), "xyaxb");
    EXPECT_EQ(CString(" a ").Trim(""), " a ");
    EXPECT_EQ(CString(" a ").Trim(kNull), " a ");
}

TEST(CString, InsertClampsItsIndex) {
    CString s("bd");
    EXPECT_EQ(s.Insert(0, 'a'), 3);
    EXPECT_EQ(s.Insert(2, "c"), 4);
    EXPECT_EQ(s.Insert(100, "ef"), 6);
    EXPECT_EQ(s.Insert(-5, "_"), 7);
    EXPECT_EQ(s, "_abcdef");
    EXPECT_EQ(s.Insert(3, kNull), 7);
    EXPECT_EQ(s.Insert(3, ""), 7);
    EXPECT_EQ(s.Insert(100, '!'), 8);
    EXPECT_EQ(s, "_abcdef!");
}

TEST(CString, DeleteCutsWhatLiesBeyondTheEnd) {
    CString s("abcdef");
    EXPECT_EQ(s.Delete(1), 5);
    EXPECT_EQ(s, "acdef");
    EXPECT_EQ(s.Delete(1, 2), 3);
    EXPECT_EQ(s, "aef");
    EXPECT_EQ(s.Delete(1, INT_MAX), 1);
    EXPECT_EQ(s.Delete(5, 1), 1);
    EXPECT_EQ(s.Delete(0, 0), 1);
    EXPECT_EQ(s.Delete(0, -3), 1);
    EXPECT_EQ(s, "a");
    EXPECT_EQ(s.Delete(-3, 1), 0);
    EXPECT_EQ(s.Delete(0), 0);
}

TEST(CString, RemoveCountsTheBytesTakenOut) {
    CString s("abacad");
    EXPECT_EQ(s.Remove('a'), 3);
    EXPECT_EQ(s, "bcd");
    EXPECT_EQ(s.Remove('x'), 0);
}

TEST(CString, ReplacesBytes) {
    CString s("abab");
    EXPECT_EQ(s.Replace('a', 'x'), 2);
    EXPECT_EQ(s, "xbxb");
    EXPECT_EQ(s.Replace('x', 'x'), 0);
    EXPECT_EQ(s.Replace('q', 'x'), 0);
}

TEST(CString, ReplacesTexts) {
    CString s("one two one");
    EXPECT_EQ(s.Replace("one", "1"), 2);
    EXPECT_EQ(s, "1 two 1");
    EXPECT_EQ(s.Replace("1", "eleven"), 2);
    EXPECT_EQ(s, "eleven two eleven");
    EXPECT_EQ(s.Replace(" two ", kNull), 1);
    EXPECT_EQ(s, "eleveneleven");
    EXPECT_EQ(s.Replace("", "x"), 0);
    EXPECT_EQ(s.Replace(kNull, "x"), 0);
    EXPECT_EQ(s.Replace("zz", "x"), 0);
    EXPECT_EQ(s, "eleveneleven");
}

TEST(CString, ReplacementIsNotSearchedAgain) {
    CString s("aaa");
    EXPECT_EQ(s.Replace("a", "aa"), 3);
    EXPECT_EQ(s, "aaaaaa");
    EXPECT_EQ(s.Replace("aa", "a"), 3);
    EXPECT_EQ(s, "aaa");
}

TEST(CString, ReplaceReachesBehindZeroBytes) {
    CString s("a\0a", 3);
    EXPECT_EQ(s.Replace("a", "bb"), 2);
    EXPECT_EQ(s.View(), "bb\0bb"sv);
}

TEST(CString, FormatsShortAndLongTexts) {
    CString s;
    s.Format("%d-%s-%.2f-%c", 5, "text", 1.5, 'x');
    EXPECT_EQ(s, "5-text-1.50-x");
    for (const int length : {0, 254, 255, 256, 257, 5000}) {
        s.Format("%*s", length, "");
        EXPECT_EQ(s, CString(' ', length));
    }
}

TEST(CString, FormatMayUseItsOwnText) {
    CString s("abc");
    s.Format("%s_%s", s.GetString(), s.GetString());
    EXPECT_EQ(s, "abc_abc");
    s.AppendFormat("+%s", s.GetString());
    EXPECT_EQ(s, "abc_abc+abc_abc");
    s.AppendFormat("%d", 1);
    EXPECT_EQ(s.Right(1), "1");
}

TEST(CString, FormatTakesStringsAsTheyAre) {
    const CString name("bolt");
    CString s;
    s.Format("%s-%d-%s-%.1f-%c", name, 5, "text", 1.5, 'x');
    EXPECT_EQ(s, "bolt-5-text-1.5-x");
    s.Format("%s%s", s, CString("!"));
    EXPECT_EQ(s, "bolt-5-text-1.5-x!");
    s.AppendFormat("+%s", name);
    EXPECT_EQ(s, "bolt-5-text-1.5-x!+bolt");
    s.Format("[%s]", CString("a\0b", 3));
    EXPECT_EQ(s, "[a]");
}

TEST(CString, FormatKeepsAZeroByte) {
    CString s;
    s.Format("a%cb", 0);
    EXPECT_EQ(s.View(), "a\0b"sv);
}

void CallFormatV(CString& s, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    s.FormatV(format, arguments);
    va_end(arguments);
}

TEST(CString, FormatOfANullFormatRaises) {
    CString s("abc");
    EXPECT_TRUE(RaisesInvalidArg([&s] { CallFormatV(s, nullptr); }));
    EXPECT_EQ(s, "abc");
    CallFormatV(s, "%d%%", 7);
    EXPECT_EQ(s, "7%");
}

TEST(CString, FormatThatCannotBeWrittenRaises) {
    CString s("abc");
    const wchar_t beyond[] = {0x110000, 0};
    EXPECT_TRUE(RaisesInvalidArg([&] { s.Format("%ls", beyond); }));
    EXPECT_EQ(s, "abc");
}

TEST(CString, AllocatesASystemString) {
    const CString s("a\xC3\xA9\0z", 5);
    BSTR string = s.AllocSysString();
    EXPECT_EQ(std::wstring(string, SysStringLen(string)), L"a\u00E9\0z"s);
    SysFreeString(string);
    string = CString().AllocSysString();
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(SysStringLen(string), 0u);
    SysFreeString(string);
}

TEST(CString, SetsASystemString) {
    BSTR string = nullptr;
    EXPECT_EQ(CString("abc").SetSysString(&string), string);
    EXPECT_STREQ(string, L"abc");
    CString("longer text").SetSysString(&string);
    EXPECT_STREQ(string, L"longer text");
    SysFreeString(string);
    EXPECT_TRUE(RaisesInvalidArg([] { CString("a").SetSysString(nullptr); }));
}

TEST(CString, TakesAnEnvironmentVariable) {
    ::setenv("ZT_CSTRING_TEST", "value", 1);
    CString s("old");
    EXPECT_TRUE(s.GetEnvironmentVariable("ZT_CSTRING_TEST"));
    EXPECT_EQ(s, "value");
    ::unsetenv("ZT_CSTRING_TEST");
    EXPECT_FALSE(s.GetEnvironmentVariable("ZT_CSTRING_TEST"));
    EXPECT_EQ(s, "");
    EXPECT_FALSE(s.GetEnvironmentVariable(nullptr));
}

TEST(CString, IsAKeyOfMapsAndSets) {
    std::map<CString, int> ordered = {{"b", 2}, {"a", 1}};
    EXPECT_EQ(ordered.begin()->first, "a");
    const std::unordered_set<CString> hashed = {"a", "b", "a"};
    EXPECT_EQ(hashed.size(), 2u);
    EXPECT_TRUE(hashed.contains("b"));
    EXPECT_EQ(std::hash<CString>()("ab"), std::hash<CString>()(CString("a") + "b"));
}

TEST(CString, WritesItsBytesToAStream) {
    std::ostringstream stream;
    stream << CString("abc") << kWithZero;
    EXPECT_EQ(stream.str(), "abcab\0cd"s);
}

TEST(CString, ConvertsToAView) {
    const std::string_view view = kWithZero;
    EXPECT_EQ(view, "ab\0cd"sv);
}

TEST(CString, TextBeyondTheLargestLengthRaises) {
    CString s("abc");
    const std::string_view impossible(s.GetString(), std::size_t{1} << 32);
    EXPECT_TRUE(RaisesMemory([&] { s += impossible; }));
    EXPECT_TRUE(RaisesMemory([&] { s = impossible; }));
    EXPECT_EQ(s, "abc");
    EXPECT_TRUE(RaisesMemory([&] { s.Insert(0, "x"), s.Append(CString(impossible)); }));
}

TEST(CString, MemoryThatCannotBeHadRaises) {
#ifdef ZT_ADDRESS_SANITIZER
    GTEST_SKIP() << "the sanitizer ends the program on such a request";
#else
    volatile std::size_t count = std::size_t{1} << 62;
    EXPECT_TRUE(RaisesMemory([&] { StringAllocator<char>().allocate(count); }));
#endif
}

TEST(CString, ReplaceAgreesWithAByteWalk) {
    EXPECT_TRUE(rc::check([] {
        const auto letters = rc::gen::container<std::string>(rc::gen::inRange('a', 'd'));
        const std::string text = *letters, old = *letters, with = *letters;
        std::string expected;
        int count = 0;
        for (std::size_t i = 0; i < text.size();) {
            if (!old.empty() && text.compare(i, old.size(), old) == 0) {
                expected += with;
                i += old.size();
                ++count;
            } else {
                expected += text[i++];
            }
        }
        CString s(text.c_str());
        RC_ASSERT(s.Replace(old.c_str(), with.c_str()) == count);
        RC_ASSERT(s.View() == expected);
    }));
}

TEST(CString, ADeletedInsertionLeavesTheText) {
    EXPECT_TRUE(rc::check([](const std::string& text, const std::string& inserted) {
        const int length = static_cast<int>(text.size());
        const int place = *rc::gen::inRange(0, length + 1);
        CString s{std::string_view(text)};
        const CString put(inserted.c_str());
        s.Insert(place, put);
        RC_ASSERT(s.Mid(place, put.GetLength()) == put);
        s.Delete(place, put.GetLength());
        RC_ASSERT(s.View() == text);
    }));
}

TEST(CString, LeftAndRightMakeTheWhole) {
    EXPECT_TRUE(rc::check([](const std::string& text, int count) {
        const CString s{std::string_view(text)};
        const int cut = std::clamp(count, 0, s.GetLength());
        RC_ASSERT(s.Left(count) + s.Right(s.GetLength() - cut) == s);
    }));
}

}  // namespace
