#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <platform/com/Bstr.h>
#include <platform/text/CStringArray.h>
#include <zt/containers/HXString.h>
#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;

template <class Call>
bool RaisesInvalidArgument(Call call) {
    try {
        call();
    } catch (CInvalidArgException* e) {
        e->Delete();
        return true;
    }
    return false;
}

// A text of letters and separators, drawn from few characters so that words meet.
CString SomeText(const char* alphabet) {
    const std::string letters = alphabet;
    const auto picks = *rc::gen::container<std::vector<std::size_t>>(
        rc::gen::inRange<std::size_t>(0, letters.size()));
    std::string text;
    for (const std::size_t pick : picks) text += letters[pick];
    return text.c_str();
}

TEST(HXString, HoldsNothingButItsTable) {
    EXPECT_EQ(sizeof(HXString), sizeof(void*));
    EXPECT_TRUE(std::has_virtual_destructor_v<HXString>);
    HXString a;
    HXString b(a);
    EXPECT_EQ(&(b = a), &b);
}

// Counting

TEST(HXStringCount, CountsWithoutOverlap) {
    EXPECT_EQ(HXString::Count("aaaa", CString("aa"), 0, -1), 2);
    EXPECT_EQ(HXString::Count("aaaaa", CString("aa"), 0, -1), 2);
    EXPECT_EQ(HXString::Count("abcabc", CString("bc"), 0, -1), 2);
    EXPECT_EQ(HXString::Count("abc", CString("x"), 0, -1), 0);
}

TEST(HXStringCount, NegativeLimitsAreTheEndsOfTheText) {
    EXPECT_EQ(HXString::Count("abab", CString("ab"), -5, -5), 2);
    EXPECT_EQ(HXString::Count("abab", 'a', -5, -5), 2);
    EXPECT_EQ(HXString::Count("", CString("ab"), 0, -1), 0);
    EXPECT_EQ(HXString::Count("", 'a', 0, -1), 0);
}

TEST(HXStringCount, BeginsAtFrom) {
    EXPECT_EQ(HXString::Count("abab", CString("ab"), 1, -1), 1);
    EXPECT_EQ(HXString::Count("abab", 'a', 1, -1), 1);
    EXPECT_EQ(HXString::Count("abab", 'a', 9, -1), 0);
}

TEST(HXStringCount, MatchBehindToCountsWhenItsSearchBeganInTime) {
    EXPECT_EQ(HXString::Count("----ab--ab", CString("ab"), 0, 0), 1);
    EXPECT_EQ(HXString::Count("----ab--ab", CString("ab"), 0, 5), 1);
    EXPECT_EQ(HXString::Count("----ab--ab", CString("ab"), 0, 6), 2);
    EXPECT_EQ(HXString::Count("--a--a", 'a', 0, 2), 1);
    EXPECT_EQ(HXString::Count("--a--a", 'a', 0, 3), 2);
}

TEST(HXStringCount, StartBehindToFindsNothing) {
    EXPECT_EQ(HXString::Count("aaaa", CString("a"), 3, 2), 0);
    EXPECT_EQ(HXString::Count("aaaa", 'a', 3, 2), 0);
}

TEST(HXStringCount, EmptyTextIsNotCounted) {
    EXPECT_EQ(HXString::Count("abc", CString(), 0, -1), 0);
}

TEST(HXStringCount, CharacterAgreesWithTheStandardCount) {
    EXPECT_TRUE(rc::check([] {
        const CString s = SomeText("ab ");
        const auto expected = std::count(s.View().begin(), s.View().end(), 'a');
        RC_ASSERT(HXString::Count(s, 'a', 0, -1) == expected);
        RC_ASSERT(HXString::Count(s, CString("a"), 0, -1) == expected);
    }));
}

// Counting words

TEST(HXStringCountWords, EmptyTextHasNone) {
    CString s;
    EXPECT_EQ(HXString::CountWords(s), 0);
}

TEST(HXStringCountWords, TrimsTheCallersText) {
    CString s = "  a, b  ";
    EXPECT_EQ(HXString::CountWords(s), 2);
    EXPECT_EQ(s, "a, b");
}

TEST(HXStringCountWords, SeparatorsAloneLeaveAnEmptyText) {
    CString s = " \n\t\r[]{}*+\\/()~,\"':;";
    EXPECT_EQ(s.GetLength(), 20);
    EXPECT_EQ(HXString::CountWords(s), 0);
    EXPECT_EQ(s, "");
}

TEST(HXStringCountWords, EachOfTheTwentySeparatorsParts) {
    for (const char c : std::string(" \n\t\r[]{}*+\\/()~,\"':;")) {
        CString s = CString("ab") + c + "cd" + c + c + "e";
        EXPECT_EQ(HXString::CountWords(s), 3) << "separator " << c;
    }
}

TEST(HXStringCountWords, OtherMarksDoNotPart) {
    CString s = "a.b-c_d<e>f=g!h?i|j&k#l";
    EXPECT_EQ(HXString::CountWords(s), 1);
}

TEST(HXStringCountWords, IsTheNumberOfRuns) {
    EXPECT_TRUE(rc::check([] {
        CString s = SomeText("ab ,\t");
        const std::string before(s.View());
        int runs = 0;
        bool inside = false;
        for (const char c : before) {
            const bool letter = c == 'a' || c == 'b';
            if (letter && !inside) ++runs;
            inside = letter;
        }
        RC_ASSERT(HXString::CountWords(s) == runs);
    }));
}

// A zero byte is a member of every set, wherever it stands.
TEST(HXString, ZeroByteWithinTheTextPartsWords) {
    const CString s("ab\0cd", 5);
    ASSERT_EQ(s.GetLength(), 5);
    CString counted = s;
    EXPECT_EQ(HXString::CountWords(counted), 2);
    EXPECT_EQ(counted, s);
    EXPECT_EQ(HXString::FindWord(s, "cd", 0), 3);
    EXPECT_EQ(HXString::FindWord(s, "ab", 0), 0);
    EXPECT_EQ(HXString::Skip(s, 2, "x"), 3);
    EXPECT_EQ(HXString::ReveseFindOneOf(s, 4, "x"), 2);
    CString word;
    EXPECT_EQ(HXString::GetNextWord(s, 0, " ", word), 3);
    EXPECT_EQ(word, "cd");
}

// Simple search

struct HXStringFindOneOf : testing::Test {
    HXStringFindOneOf() {
        subs.Add("cd");
        subs.Add("bcd");
        subs.Add("bc");
    }
    CStringArray subs;
    int which = 77;
};

TEST_F(HXStringFindOneOf, EarliestPlaceWinsAndTheFirstElementATie) {
    EXPECT_EQ(HXString::FindOneOf("abcd", subs, 0, &which), 1);
    EXPECT_EQ(which, 1);
    EXPECT_EQ(HXString::FindOneOf("abcx", subs, 0, &which), 1);
    EXPECT_EQ(which, 2);
    EXPECT_EQ(HXString::FindOneOf("abcd", subs, 2, &which), 2);
    EXPECT_EQ(which, 0);
}

TEST_F(HXStringFindOneOf, NegativeFromIsTheStart) {
    EXPECT_EQ(HXString::FindOneOf("cdx", subs, -9, &which), 0);
    EXPECT_EQ(which, 0);
}

TEST_F(HXStringFindOneOf, WhichStaysUnwrittenWhenNothingIsFound) {
    EXPECT_EQ(HXString::FindOneOf("xyz", subs, 0, &which), -1);
    EXPECT_EQ(which, 77);
    EXPECT_EQ(HXString::FindOneOf("abcd", subs, 4, &which), -1);
    EXPECT_EQ(which, 77);
    EXPECT_EQ(HXString::FindOneOf("abcd", CStringArray(), 0, &which), -1);
}

TEST_F(HXStringFindOneOf, WhichMayBeNull) {
    EXPECT_EQ(HXString::FindOneOf("abcd", subs, 0, nullptr), 1);
}

TEST_F(HXStringFindOneOf, CharactersAreFoundAtOrAfterFrom) {
    EXPECT_EQ(HXString::FindOneOf("a,b;c", 0, ";,"), 1);
    EXPECT_EQ(HXString::FindOneOf("a,b;c", 1, ";,"), 1);
    EXPECT_EQ(HXString::FindOneOf("a,b;c", 2, ";,"), 3);
}

TEST_F(HXStringFindOneOf, CharactersNotFoundGiveMinusOneAndNotTheLength) {
    EXPECT_EQ(HXString::FindOneOf("abc", 0, ";,"), -1);
    EXPECT_EQ(HXString::FindOneOf("abc", 3, ";,"), -1);
    EXPECT_EQ(HXString::FindOneOf("abc", 9, ";,"), -1);
    EXPECT_EQ(HXString::FindOneOf("abc", 0, ""), -1);
    EXPECT_EQ(HXString::FindOneOf("abc", 0, nullptr), -1);
}

TEST_F(HXStringFindOneOf, CharactersFromANegativePlaceRaise) {
    EXPECT_TRUE(RaisesInvalidArgument([] { HXString::FindOneOf("abc", -1, ";"); }));
    EXPECT_EQ(HXString::FindOneOf("abc", -1, nullptr), -1);
}

TEST(HXStringReveseFindOneOf, FindsAtOrBeforeFrom) {
    EXPECT_EQ(HXString::ReveseFindOneOf("a,b;c", 4, ";,"), 3);
    EXPECT_EQ(HXString::ReveseFindOneOf("a,b;c", 3, ";,"), 3);
    EXPECT_EQ(HXString::ReveseFindOneOf("a,b;c", 2, ";,"), 1);
    EXPECT_EQ(HXString::ReveseFindOneOf("a,b;c", 0, ";,"), -1);
}

TEST(HXStringReveseFindOneOf, AtOrPastTheLengthTheZeroIsFound) {
    EXPECT_EQ(HXString::ReveseFindOneOf("a,b", 3, ","), 3);
    EXPECT_EQ(HXString::ReveseFindOneOf("a,b", 100, ","), 3);
    EXPECT_EQ(HXString::ReveseFindOneOf("", 0, ","), 0);
}

TEST(HXStringReveseFindOneOf, NullSetAndNegativeFromFindNothing) {
    EXPECT_EQ(HXString::ReveseFindOneOf("a,b", 2, nullptr), -1);
    EXPECT_EQ(HXString::ReveseFindOneOf("a,b", -1, ","), -1);
}

TEST(HXStringReverseFind, CharacterIsFoundAtOrBeforeFrom) {
    EXPECT_EQ(HXString::ReverseFind("abab", 'a', 100), 2);
    EXPECT_EQ(HXString::ReverseFind("abab", 'a', 2), 2);
    EXPECT_EQ(HXString::ReverseFind("abab", 'a', 1), 0);
    EXPECT_EQ(HXString::ReverseFind("abab", 'x', 3), -1);
    EXPECT_EQ(HXString::ReverseFind("abab", 'a', -1), -1);
    EXPECT_EQ(HXString::ReverseFind("", 'a', 0), -1);
}

TEST(HXStringReverseFind, ZeroIsFoundAtTheLengthOnly) {
    EXPECT_EQ(HXString::ReverseFind("ab", '\0', 5), 2);
    EXPECT_EQ(HXString::ReverseFind("ab", '\0', 1), -1);
}

TEST(HXStringReverseFind, TextBeginsAtOrBeforeFromAndMayRunPastIt) {
    EXPECT_EQ(HXString::ReverseFind("abcabc", CString("abc"), 100), 3);
    EXPECT_EQ(HXString::ReverseFind("abcabc", CString("abc"), 3), 3);
    EXPECT_EQ(HXString::ReverseFind("abcabc", CString("abc"), 2), 0);
    EXPECT_EQ(HXString::ReverseFind("abcabc", CString("abd"), 5), -1);
    EXPECT_EQ(HXString::ReverseFind("abcabc", CString("abc"), -1), -1);
}

TEST(HXStringReverseFind, TextPastTheEndIsNoMatch) {
    EXPECT_EQ(HXString::ReverseFind("abca", CString("abc"), 3), 0);
    EXPECT_EQ(HXString::ReverseFind("ab", CString("abc"), 1), -1);
}

TEST(HXStringReverseFind, EmptyTextIsFoundAtTheLengthOnly) {
    EXPECT_EQ(HXString::ReverseFind("ab", CString(), 2), 2);
    EXPECT_EQ(HXString::ReverseFind("ab", CString(), 9), 2);
    EXPECT_EQ(HXString::ReverseFind("ab", CString(), 1), -1);
}

TEST(HXStringReverseFind, AgreesWithTheStandardSearch) {
    EXPECT_TRUE(rc::check([] {
        const CString s = SomeText("ab");
        const CString sub = CString("a") + SomeText("ab");
        const int from = *rc::gen::inRange(0, 20);
        const auto expected = s.View().rfind(sub.View(), static_cast<std::size_t>(from));
        RC_ASSERT(HXString::ReverseFind(s, sub, from) == static_cast<int>(expected));
    }));
}

TEST(HXStringSkip, GivesTheFirstPlaceOutsideOfTheSet) {
    EXPECT_EQ(HXString::Skip("  ab", 0, " "), 2);
    EXPECT_EQ(HXString::Skip("  ab", 3, " "), 3);
}

TEST(HXStringSkip, NullSetGivesZero) {
    EXPECT_EQ(HXString::Skip("ab", 1, nullptr), 0);
    EXPECT_EQ(HXString::Skip("ab", -1, nullptr), 0);
    EXPECT_EQ(HXString::Skip("ab", 9, nullptr), 0);
}

TEST(HXStringSkip, EndOfTheTextGivesMinusOne) {
    EXPECT_EQ(HXString::Skip("ab  ", 2, " "), -1);
    EXPECT_EQ(HXString::Skip("ab", 2, " "), -1);
    EXPECT_EQ(HXString::Skip("ab", 9, " "), -1);
    EXPECT_EQ(HXString::Skip("", 0, " "), -1);
}

TEST(HXStringSkip, NegativePlaceRaises) {
    EXPECT_TRUE(RaisesInvalidArgument([] { HXString::Skip("abc", -1, " "); }));
}

TEST(HXStringSkipReverse, GivesTheLastPlaceOutsideOfTheSet) {
    EXPECT_EQ(HXString::SkipReverse("ab  ", 3, " "), 1);
    EXPECT_EQ(HXString::SkipReverse("ab  ", 0, " "), 0);
}

TEST(HXStringSkipReverse, NullSetGivesZero) {
    EXPECT_EQ(HXString::SkipReverse("ab", 1, nullptr), 0);
    EXPECT_EQ(HXString::SkipReverse("ab", -1, nullptr), 0);
}

TEST(HXStringSkipReverse, StartOfTheTextAndPlacesOutsideGiveMinusOne) {
    EXPECT_EQ(HXString::SkipReverse("  ab", 1, " "), -1);
    EXPECT_EQ(HXString::SkipReverse("ab", 2, " "), -1);
    EXPECT_EQ(HXString::SkipReverse("ab", -1, " "), -1);
    EXPECT_EQ(HXString::SkipReverse("", 0, " "), -1);
}

TEST(HXStringFindClosing, PassesOverPairsBetween) {
    EXPECT_EQ(HXString::FindClosing("f(a(b)c)", 0, '(', ')'), 7);
    EXPECT_EQ(HXString::FindClosing("f(a(b)c)", 2, '(', ')'), 5);
    EXPECT_EQ(HXString::FindClosing("(()())", 0, '(', ')'), 5);
}

TEST(HXStringFindClosing, UnbalancedTextHasNone) {
    EXPECT_EQ(HXString::FindClosing("abc)", 0, '(', ')'), -1);
    EXPECT_EQ(HXString::FindClosing("((a)", 0, '(', ')'), -1);
    EXPECT_EQ(HXString::FindClosing("", 0, '(', ')'), -1);
    EXPECT_EQ(HXString::FindClosing("(a)", 3, '(', ')'), -1);
    EXPECT_EQ(HXString::FindClosing("(a)", -1, '(', ')'), -1);
}

TEST(HXStringFindClosing, SameCharacterForBothNeverCloses) {
    EXPECT_EQ(HXString::FindClosing("|a|", 0, '|', '|'), -1);
    EXPECT_EQ(HXString::FindClosing("|a|b|c|", 0, '|', '|'), -1);
}

// Words

TEST(HXStringFindWord, NeedsSeparatorsOrEndsOnBothSides) {
    EXPECT_EQ(HXString::FindWord("a(b)c", "b", 0), 2);
    EXPECT_EQ(HXString::FindWord("abc", "b", 0), -1);
    EXPECT_EQ(HXString::FindWord("ab b", "b", 0), 3);
    EXPECT_EQ(HXString::FindWord("b", "b", 0), 0);
    EXPECT_EQ(HXString::FindWord("ba b", "b", 0), 3);
    EXPECT_EQ(HXString::FindWord("b.b", "b", 0), -1);
}

TEST(HXStringFindWord, EndOfTheTextBoundsTheFollowingSideOnly) {
    EXPECT_EQ(HXString::FindWord("xb", "b", 0), -1);
    EXPECT_EQ(HXString::FindWord("x b", "b", 0), 2);
}

TEST(HXStringFindWord, RejectedPlaceIsFollowedByTheNextOneOn) {
    EXPECT_EQ(HXString::FindWord("aaa aa", "aa", 0), 4);
}

TEST(HXStringFindWord, EachOfTheTwentySeparatorsBoundsAWordOnBothSides) {
    for (const char c : std::string(" \n\t\r[]{}*+\\/()~,\"':;")) {
        const CString s = CString("x") + c + "ab" + c + "x";
        EXPECT_EQ(HXString::FindWord(s, "ab", 0), 2) << "separator " << c;
        EXPECT_EQ(HXString::FindWordReverse(s, "ab", -1), 2) << "separator " << c;
    }
    for (const char c : std::string(".-_<>=!?|&#@$%^`")) {
        EXPECT_EQ(HXString::FindWord(CString("x") + c + "ab", "ab", 0), -1) << "mark " << c;
        EXPECT_EQ(HXString::FindWord(CString("ab") + c + "x", "ab", 0), -1) << "mark " << c;
        EXPECT_EQ(HXString::FindWordReverse(CString("x") + c + "ab", "ab", -1), -1) << c;
        EXPECT_EQ(HXString::FindWordReverse(CString("ab") + c + "x", "ab", -1), -1) << c;
    }
}

TEST(HXStringFindWord, BeginsAtFrom) {
    EXPECT_EQ(HXString::FindWord("b b", "b", 1), 2);
    EXPECT_EQ(HXString::FindWord("b b", "b", 3), -1);
    EXPECT_EQ(HXString::FindWord("b b", "b", -1), -1);
}

TEST(HXStringFindWord, NullWordAndEmptyTextFindNothing) {
    EXPECT_EQ(HXString::FindWord("a", nullptr, 0), -1);
    EXPECT_EQ(HXString::FindWord("", "a", 0), -1);
    EXPECT_EQ(HXString::FindWord("", "", 0), -1);
}

TEST(HXStringFindWord, EmptyWordStandsBetweenTwoSeparators) {
    EXPECT_EQ(HXString::FindWord("a  b", "", 0), 2);
    EXPECT_EQ(HXString::FindWord("ab", "", 0), -1);
}

TEST(HXStringFindWordRef, MovesThePositionBehindTheWord) {
    int position = 0;
    EXPECT_EQ(HXString::FindWordRef("to be to", "to", &position), 0);
    EXPECT_EQ(position, 2);
    EXPECT_EQ(HXString::FindWordRef("to be to", "to", &position), 6);
    EXPECT_EQ(position, 8);
    EXPECT_EQ(HXString::FindWordRef("to be to", "to", &position), -1);
    EXPECT_EQ(position, 8);
}

TEST(HXStringFindWordRef, NullPositionBeginsAtTheStart) {
    EXPECT_EQ(HXString::FindWordRef("a b", "b", nullptr), 2);
}

TEST(HXStringFindWordSep, HasSeparatorsOfTheCallers) {
    int position = 0;
    EXPECT_EQ(HXString::FindWordSep("a.b.c d", "b", ".", &position), 2);
    EXPECT_EQ(position, 3);
    EXPECT_EQ(HXString::FindWordSep("a b", "b", ".", nullptr), -1);
    EXPECT_EQ(HXString::FindWordSep("a.b", "b", ".", nullptr), 2);
}

TEST(HXStringFindWordSep, NullSeparatorsLeaveTheEnds) {
    EXPECT_EQ(HXString::FindWordSep("ab", "ab", nullptr, nullptr), 0);
    EXPECT_EQ(HXString::FindWordSep("a b", "b", nullptr, nullptr), -1);
}

TEST(HXStringFindWordReverse, FindsTheLastWholeWordAtOrBeforeFrom) {
    EXPECT_EQ(HXString::FindWordReverse("b ab b", "b", 100), 5);
    EXPECT_EQ(HXString::FindWordReverse("b ab b", "b", 4), 0);
    EXPECT_EQ(HXString::FindWordReverse("ab", "b", 1), -1);
}

TEST(HXStringFindWordReverse, NegativeFromMeansTheEnd) {
    EXPECT_EQ(HXString::FindWordReverse("b b", "b", -1), 2);
    EXPECT_EQ(HXString::FindWordReverse("", "b", -1), -1);
}

TEST(HXStringFindWordReverse, EmptyWordIsFoundFromTheLengthOnly) {
    EXPECT_EQ(HXString::FindWordReverse("a ", "", 2), 2);
    EXPECT_EQ(HXString::FindWordReverse("a ", "", -1), -1);
    EXPECT_EQ(HXString::FindWordReverse("", "", 0), -1);
}

TEST(HXStringFindWordReverse, OccurrenceAtTheStartThatFailsAtItsEndEndsTheSearch) {
    EXPECT_EQ(HXString::FindWordReverse("ba", "b", -1), -1);
    EXPECT_EQ(HXString::FindWordReverse("ba ba", "b", -1), -1);
}

TEST(HXStringFindWordReverseSep, HasSeparatorsOfTheCallers) {
    EXPECT_EQ(HXString::FindWordReverseSep("a.b b", "b", ".", -1), -1);
    EXPECT_EQ(HXString::FindWordReverseSep("a.b.b c", "b", ".", -1), 2);
    EXPECT_EQ(HXString::FindWordReverseSep("b", "b", nullptr, -1), 0);
}

TEST(HXStringWords, SearchUpAndDownFindTheSameWords) {
    EXPECT_TRUE(rc::check([] {
        const CString s = SomeText("ab ,");
        std::vector<int> up;
        int position = 0;
        for (int p; (p = HXString::FindWordRef(s, "ab", &position)) >= 0;) up.push_back(p);
        std::vector<int> down;
        for (int from = s.GetLength(); from >= 0;) {
            const int p = HXString::FindWordReverse(s, "ab", from);
            if (p < 0) break;
            down.insert(down.begin(), p);
            from = p - 1;
        }
        RC_ASSERT(up == down);
    }));
}

struct HXStringNextWord : testing::Test {
    CString word = "before";
};

TEST_F(HXStringNextWord, GivesTheWordAfterTheOneAtFrom) {
    EXPECT_EQ(HXString::GetNextWord("ab cd", 0, " ", word), 3);
    EXPECT_EQ(word, "cd");
    EXPECT_EQ(HXString::GetNextWord("ab cd  ef", 4, " ", word), 7);
    EXPECT_EQ(word, "ef");
}

TEST_F(HXStringNextWord, OnASeparatorGivesTheWordBehindIt) {
    EXPECT_EQ(HXString::GetNextWord("ab  cd ef", 2, " ", word), 4);
    EXPECT_EQ(word, "cd");
}

TEST_F(HXStringNextWord, LastWordHasNoNextAndLeavesTheResult) {
    EXPECT_EQ(HXString::GetNextWord("ab cd", 3, " ", word), -1);
    EXPECT_EQ(HXString::GetNextWord("ab cd  ", 3, " ", word), -1);
    EXPECT_EQ(HXString::GetNextWord("ab", 0, " ", word), -1);
    EXPECT_EQ(word, "before");
}

TEST_F(HXStringNextWord, PlaceOutsideOrNullSeparatorsFindNothing) {
    EXPECT_EQ(HXString::GetNextWord("ab cd", -1, " ", word), -1);
    EXPECT_EQ(HXString::GetNextWord("ab cd", 5, " ", word), -1);
    EXPECT_EQ(HXString::GetNextWord("", 0, " ", word), -1);
    EXPECT_EQ(HXString::GetNextWord("ab cd", 0, nullptr, word), -1);
    EXPECT_EQ(word, "before");
}

TEST_F(HXStringNextWord, ResultMayBeTheTextItself) {
    CString s = "ab cd";
    EXPECT_EQ(HXString::GetNextWord(s, 0, " ", s), 3);
    EXPECT_EQ(s, "cd");
}

TEST_F(HXStringNextWord, WalkVisitsEachWordOnce) {
    EXPECT_TRUE(rc::check([] {
        // A leading separator, so that the first word is a next one too.
        const CString s = CString(" ") + SomeText("ab ,");
        std::string walked;
        CString next;
        for (int p = 0; (p = HXString::GetNextWord(s, p, " ,", next)) >= 0;) {
            RC_ASSERT(next == s.Mid(p, next.GetLength()));
            walked += std::string(next.View()) + '|';
        }
        std::string expected;
        int start = 0;
        for (CString part = s.Tokenize(" ,", start); start >= 0; part = s.Tokenize(" ,", start)) {
            expected += std::string(part.View()) + '|';
        }
        RC_ASSERT(walked == expected);
    }));
}

struct HXStringPrevWord : testing::Test {
    CString word = "before";
};

TEST_F(HXStringPrevWord, GivesTheWordUpToFrom) {
    EXPECT_EQ(HXString::GetPrevWord("ab cd", 4, " ", word), 3);
    EXPECT_EQ(word, "cd");
    EXPECT_EQ(HXString::GetPrevWord("ab cd", 3, " ", word), 3);
    EXPECT_EQ(word, "c");
}

TEST_F(HXStringPrevWord, OnASeparatorGivesTheWordBeforeIt) {
    EXPECT_EQ(HXString::GetPrevWord("ab cd", 2, " ", word), 0);
    EXPECT_EQ(word, "ab");
}

TEST_F(HXStringPrevWord, WithoutAWordTheResultIsEmptyAndTheAnswerZero) {
    for (const int from : {-1, 1, 5, 9}) {
        word = "before";
        EXPECT_EQ(HXString::GetPrevWord("  abc", from, " ", word), 0) << from;
        EXPECT_EQ(word, "") << from;
    }
}

TEST_F(HXStringPrevWord, NullSeparatorsGiveTheFirstCharacter) {
    for (const int from : {-1, 0, 3, 9}) {
        word = "before";
        EXPECT_EQ(HXString::GetPrevWord("ab cd", from, nullptr, word), 0);
        EXPECT_EQ(word, "a");
    }
    EXPECT_EQ(HXString::GetPrevWord("", 0, nullptr, word), 0);
    EXPECT_EQ(word, "");
}

TEST_F(HXStringPrevWord, WalkVisitsEachWordOnce) {
    EXPECT_TRUE(rc::check([] {
        CString s = SomeText("ab ,");
        CString previous;
        int words = 0;
        for (int p = s.GetLength() - 1; p >= 0; ++words) {
            const int start = HXString::GetPrevWord(s, p, " ,", previous);
            if (previous.IsEmpty()) break;
            RC_ASSERT(previous == s.Mid(start, previous.GetLength()));
            p = start - 1;
        }
        RC_ASSERT(words == HXString::CountWords(s));
    }));
}

TEST(HXStringFindFraseReverse, FindsTheLastPhrase) {
    EXPECT_EQ(HXString::FindFraseReverse("one two, one two", "one", "two", -1), 9);
    EXPECT_EQ(HXString::FindFraseReverse("one two, one two", "one", "two", 12), 0);
    EXPECT_EQ(HXString::FindFraseReverse("x one two", "one", "two", -1), 2);
}

TEST(HXStringFindFraseReverse, AnyPhraseSeparatorsStandBetween) {
    EXPECT_EQ(HXString::FindFraseReverse("one ,.;\t\n\r two", "one", "two", -1), 0);
    EXPECT_EQ(HXString::FindFraseReverse("one * two", "one", "two", -1), -1);
}

TEST(HXStringFindFraseReverse, NoOtherWordSeparatorStandsBetween) {
    for (const char c : std::string("[]{}*+\\/()~\"':")) {
        const CString s = CString("one ") + c + " two";
        EXPECT_EQ(HXString::FindFraseReverse(s, "one", "two", -1), -1) << "separator " << c;
    }
}

TEST(HXStringFindFraseReverse, FirstWordIsBoundedByPhraseSeparatorsOnly) {
    EXPECT_EQ(HXString::FindFraseReverse("(one two", "one", "two", -1), -1);
    EXPECT_EQ(HXString::FindFraseReverse("(one two", "(one", "two", -1), 0);
    EXPECT_EQ(HXString::FindFraseReverse(".one two", "one", "two", -1), 1);
    EXPECT_EQ(HXString::FindFraseReverse("(two", "(", "two", -1), 0);
}

TEST(HXStringFindFraseReverse, BothWordsAreWhole) {
    EXPECT_EQ(HXString::FindFraseReverse("one twofold", "one", "two", -1), -1);
    EXPECT_EQ(HXString::FindFraseReverse("someone two", "one", "two", -1), -1);
    EXPECT_EQ(HXString::FindFraseReverse("ONE two", "one", "two", -1), -1);
}

TEST(HXStringFindFraseReverse, SecondWordIsBoundedByWordSeparatorsOnly) {
    EXPECT_EQ(HXString::FindFraseReverse("one.two", "one", "two", -1), -1);
    EXPECT_EQ(HXString::FindFraseReverse("one. two", "one", "two", -1), 0);
}

TEST(HXStringFindFraseReverse, GoesOnBelowASecondWordWithoutItsFirst) {
    EXPECT_EQ(HXString::FindFraseReverse("one two six two", "one", "two", -1), 0);
}

TEST(HXStringFindFraseReverse, SecondWordAtTheStartEndsTheSearch) {
    EXPECT_EQ(HXString::FindFraseReverse("two", "one", "two", -1), -1);
    EXPECT_EQ(HXString::FindFraseReverse("two one", "one", "two", -1), -1);
    EXPECT_EQ(HXString::FindFraseReverse("two", "", "two", -1), -1);
}

TEST(HXStringFindFraseReverse, SeparatorAtTheStartHasTheEmptyWordBeforeIt) {
    EXPECT_EQ(HXString::FindFraseReverse(" two", "", "two", -1), 0);
    EXPECT_EQ(HXString::FindFraseReverse(" two", "one", "two", -1), -1);
}

TEST(HXStringFindFraseReverse, EmptyTextHasNone) {
    EXPECT_EQ(HXString::FindFraseReverse("", "one", "two", -1), -1);
}

// Editing

struct HXStringReplace : testing::Test {
    CString s;

    int Places(const char* text, int first, int last, const CString& with) {
        s = text;
        return HXString::Replace(s, first, last, with);
    }
    int Texts(const char* text, int first, int last, const char* old, const char* with) {
        s = text;
        return HXString::Replace(s, first, last, old, with);
    }
};

TEST_F(HXStringReplace, PlacesAreReplacedBothIncluded) {
    EXPECT_EQ(Places("abcd", 1, 2, "XYZ"), 1);
    EXPECT_EQ(s, "aXYZd");
    EXPECT_EQ(Places("abcd", 0, 3, ""), -4);
    EXPECT_EQ(s, "");
    EXPECT_EQ(Places("abcd", 3, 3, "e"), 0);
    EXPECT_EQ(s, "abce");
}

TEST_F(HXStringReplace, BadPlacesChangeNothing) {
    EXPECT_EQ(Places("abcd", -1, 2, "X"), 0);
    EXPECT_EQ(s, "abcd");
    EXPECT_EQ(Places("abcd", 0, -1, "X"), 0);
    EXPECT_EQ(s, "abcd");
    EXPECT_EQ(Places("abcd", 2, 1, "X"), 0);
    EXPECT_EQ(s, "abcd");
}

TEST_F(HXStringReplace, OnlyWhatWasThereCountsAsRemoved) {
    EXPECT_EQ(Places("abcd", 2, 100, "XYZ"), 1);
    EXPECT_EQ(s, "abXYZ");
    EXPECT_EQ(Places("abcd", 4, 6, "X"), 1);
    EXPECT_EQ(s, "abcdX");
    EXPECT_EQ(Places("abcd", 9, 9, "X"), 1);
    EXPECT_EQ(s, "abcdX");
}

TEST_F(HXStringReplace, TextMayReplaceAPartOfItself) {
    s = "abc";
    EXPECT_EQ(HXString::Replace(s, 1, 1, s), 2);
    EXPECT_EQ(s, "aabcc");
}

TEST_F(HXStringReplace, TextsAreCounted) {
    EXPECT_EQ(Texts("aXbXc", 0, 100, "X", "YY"), 2);
    EXPECT_EQ(s, "aYYbYYc");
    EXPECT_EQ(Texts("aXXbXXc", 0, 100, "XX", ""), 2);
    EXPECT_EQ(s, "abc");
    EXPECT_EQ(Texts("abc", 0, 2, "X", "Y"), 0);
    EXPECT_EQ(s, "abc");
}

TEST_F(HXStringReplace, LastReplacementThatRunsPastTheEndIsMadeButNotCounted) {
    EXPECT_EQ(Texts("aXbXc", 0, 4, "X", "YY"), 1);
    EXPECT_EQ(s, "aYYbYYc");
    EXPECT_EQ(Texts("X", 0, 0, "X", "Y"), 0);
    EXPECT_EQ(s, "Y");
}

TEST_F(HXStringReplace, PlaceOfTheReplacementsDecidesAndNotThatOfTheOldText) {
    // The first replacement already stands past the last place: the second is not made.
    EXPECT_EQ(Texts("XaX", 0, 2, "X", "YYYY"), 0);
    EXPECT_EQ(s, "YYYYaX");
}

TEST_F(HXStringReplace, ShrinkingReplacementsDoNotReachBehindLast) {
    EXPECT_EQ(Texts("XXaXXbXX", 0, 4, "XX", "Z"), 2);
    EXPECT_EQ(s, "ZaZbXX");
}

TEST_F(HXStringReplace, OccurrenceThatRunsOutOfTheSpanStays) {
    EXPECT_EQ(Texts("aXXb", 0, 1, "XX", "Y"), 0);
    EXPECT_EQ(s, "aXXb");
    EXPECT_EQ(Texts("aXXb", 2, 3, "XX", "Y"), 0);
    EXPECT_EQ(s, "aXXb");
}

TEST_F(HXStringReplace, WhatWasPutInIsNotSearched) {
    EXPECT_EQ(Texts("X-", 0, 100, "X", "XX"), 1);
    EXPECT_EQ(s, "XX-");
}

TEST_F(HXStringReplace, BadArgumentsChangeNothing) {
    EXPECT_EQ(Texts("aXb", 0, 2, nullptr, "Y"), 0);
    EXPECT_EQ(Texts("aXb", 0, 2, "X", nullptr), 0);
    EXPECT_EQ(Texts("aXb", 0, 2, "", "Y"), 0);
    EXPECT_EQ(Texts("aXb", -1, 2, "X", "Y"), 0);
    EXPECT_EQ(Texts("aXb", 0, -1, "X", "Y"), 0);
    EXPECT_EQ(Texts("aXb", 2, 1, "X", "Y"), 0);
    EXPECT_EQ(Texts("aXb", 9, 12, "X", "Y"), 0);
    EXPECT_EQ(s, "aXb");
}

TEST_F(HXStringReplace, TextsMayPointIntoTheText) {
    s = "a-b-";
    EXPECT_EQ(HXString::Replace(s, 0, 100, "-", s.GetString()), 2);
    EXPECT_EQ(s, "aa-b-ba-b-");
}

// The walk as it is told: one replacement after the other on the text itself.
int ReplaceStepByStep(std::string& s, int first, int last, const std::string& old,
                      const std::string& with) {
    int count = 0;
    int current = first;
    int remaining = last - first + 1;
    while (true) {
        if (current > static_cast<int>(s.size())) return count;
        const std::string span =
            s.substr(static_cast<std::size_t>(current), static_cast<std::size_t>(remaining));
        const std::size_t found = span.find(old);
        if (found == std::string::npos) return count;
        s.replace(static_cast<std::size_t>(current) + found, old.size(), with);
        current += static_cast<int>(found + with.size());
        if (current > last) return count;
        remaining -= static_cast<int>(found + old.size());
        ++count;
    }
}

TEST_F(HXStringReplace, AgreesWithTheWalkStepByStep) {
    EXPECT_TRUE(rc::check([] {
        CString text = SomeText("abX");
        const CString old = CString("X") + *rc::gen::element("", "a", "X");
        const CString with = *rc::gen::element("", "Y", "YX", "YYYY");
        const int first = *rc::gen::inRange(0, 10);
        const int last = first + *rc::gen::inRange(0, 30);
        std::string expected(text.View());
        const int count = ReplaceStepByStep(expected, first, last, std::string(old.View()),
                                            std::string(with.View()));
        RC_ASSERT(HXString::Replace(text, first, last, old.GetString(), with.GetString()) == count);
        RC_ASSERT(std::string(text.View()) == expected);
    }));
}

struct HXStringReplaceFrase : testing::Test {
    CString s;

    int Run(const char* text, const char* first, const char* second, const char* with,
            int from = 0) {
        s = text;
        return HXString::ReplaceFrase(s, first, second, with, from);
    }
};

TEST_F(HXStringReplaceFrase, PhraseIsReplacedAndTheSeparatorAfterItStays) {
    EXPECT_EQ(Run("say one two, now", "one", "two", "three"), 1);
    EXPECT_EQ(s, "say three, now");
    EXPECT_EQ(Run("one ,; two one\ttwo.", "one", "two", "x"), 2);
    EXPECT_EQ(s, "x x.");
}

TEST_F(HXStringReplaceFrase, EndOfTheTextIsASeparatorAfterTheSecondWord) {
    EXPECT_EQ(Run("one two", "one", "two", "x"), 1);
    EXPECT_EQ(s, "x");
}

TEST_F(HXStringReplaceFrase, SecondWordMustBeFollowedByAPhraseSeparator) {
    EXPECT_EQ(Run("one twofold", "one", "two", "x"), 0);
    EXPECT_EQ(Run("one two)", "one", "two", "x"), 0);
    EXPECT_EQ(s, "one two)");
    EXPECT_EQ(Run("one six", "one", "two", "x"), 0);
}

TEST_F(HXStringReplaceFrase, CharacterAfterTheFirstWordIsPassedOverUnseen) {
    EXPECT_EQ(Run("one(two", "one", "two", "x"), 1);
    EXPECT_EQ(s, "x");
    EXPECT_EQ(Run("oneXtwo", "one", "two", "x"), 1);
    EXPECT_EQ(s, "x");
    EXPECT_EQ(Run("onetwo", "one", "two", "x"), 0);
    EXPECT_EQ(s, "onetwo");
}

TEST_F(HXStringReplaceFrase, FirstNeedNotBeAWholeWord) {
    EXPECT_EQ(Run("someone two", "one", "two", "x"), 1);
    EXPECT_EQ(s, "somex");
}

TEST_F(HXStringReplaceFrase, BeginsAtFrom) {
    EXPECT_EQ(Run("one two one two", "one", "two", "x", 1), 1);
    EXPECT_EQ(s, "one two x");
    EXPECT_EQ(Run("one two", "one", "two", "x", -1), 0);
    EXPECT_EQ(Run("one two", "one", "two", "x", 8), 0);
}

TEST_F(HXStringReplaceFrase, WhatWasPutInIsSearchedAgainBehindItsFirstCharacter) {
    EXPECT_EQ(Run("one two two", "one", "two", ">one"), 2);
    EXPECT_EQ(s, ">>one");
    EXPECT_EQ(Run("one two two", "one", "two", "one"), 1);
    EXPECT_EQ(s, "one two");
}

TEST_F(HXStringReplaceFrase, WithoutASecondWordTheSeparatorsGoToo) {
    EXPECT_EQ(Run("one  ; two", "one", "", "x"), 1);
    // The first character of the following word is taken for a separator.
    EXPECT_EQ(s, "xwo");
}

TEST_F(HXStringReplaceFrase, WithoutASecondWordTheCharacterBehindTheGapGoesToo) {
    EXPECT_EQ(Run("one  two, six", "one", "", "x"), 1);
    EXPECT_EQ(s, "xwo, six");
    EXPECT_EQ(Run("one a, b", "one", "", "x"), 1);
    EXPECT_EQ(s, "xb");
}

TEST_F(HXStringReplaceFrase, WithoutASecondWordTheLastCharacterStaysWhenTheTextRunsOut) {
    EXPECT_EQ(Run("one a, ", "one", "", "x"), 1);
    EXPECT_EQ(s, "x ");
    EXPECT_EQ(Run("one a", "one", "", "x"), 1);
    EXPECT_EQ(s, "xa");
}

TEST_F(HXStringReplaceFrase, WhenTheTextRunsOutTheSecondWordIsComparedWithTheStart) {
    // Nothing but separators follows "b", and the text begins with "ab,".
    EXPECT_EQ(Run("ab,", "b", "ab,", "x"), 1);
    EXPECT_EQ(s, "ax,");
    // The same without a separator at the end of the second word: no match.
    EXPECT_EQ(Run("ab,", "b", "ab", "x"), 0);
    EXPECT_EQ(s, "ab,");
}

TEST_F(HXStringReplaceFrase, PhraseEndBeforeItsBeginningTakesNothingOutAndIsNotRepeated) {
    EXPECT_EQ(Run("a, b", "b", "a,", "x"), 1);
    EXPECT_EQ(s, "a, xb");
    EXPECT_EQ(Run("one two", "two", "", "x"), 1);
    EXPECT_EQ(s, "one xtwo");
    EXPECT_EQ(Run("two", "two", "", "x"), 1);
    EXPECT_EQ(s, "xtwo");
}

TEST_F(HXStringReplaceFrase, WalkGoesOnBehindAnInsertionWhileItFindsMore) {
    // What was put in before "bb" makes a "bb" of its own together with it.
    EXPECT_EQ(Run("cc bba", "bb", "", "-b"), 2);
    EXPECT_EQ(s, "cc --ba");
    // Its second word lies across the end of what was put in.
    EXPECT_EQ(Run("a b, b,", "b", "a b,", "xb a ", 4), 2);
    EXPECT_EQ(s, "a b, xxb a ");
}

TEST_F(HXStringReplaceFrase, SameTextBehindEndsTheWalkOnlyWhenTheStartOfTheTextIsBehindIt) {
    // The first replacement changes the start, with which the second word is compared.
    EXPECT_EQ(Run("ab,,", "", "ab,", "b"), 2);
    EXPECT_EQ(s, "abb,,");
}

TEST_F(HXStringReplaceFrase, ReplacementThatWouldBeMadeForEverEndsTheWalk) {
    EXPECT_EQ(Run("one two", "two", "", "<two>"), 3);
    EXPECT_EQ(s, "one <<<two>o");
}

// Where the phrase at `place` ends, as it is told; none when it is no match.
std::optional<int> FraseEndStepByStep(const std::string& s, int place, const std::string& first,
                                      const std::string& second) {
    const std::string gaps = " ,.;\t\n\r";
    const auto skip = [&](int from) {
        return static_cast<int>(s.find_first_not_of(gaps, static_cast<std::size_t>(from)));
    };
    const int length = static_cast<int>(s.size());
    const int q = skip(place + static_cast<int>(first.size()) + 1);
    if (second.empty()) {
        const int end = skip(q + 1);
        return end < 0 ? length - 1 : end;
    }
    const int end = q + static_cast<int>(second.size());
    if (s.substr(static_cast<std::size_t>(std::max(q, 0)), second.size()) != second) return {};
    const bool bounded = end == length || gaps.find(s[static_cast<std::size_t>(end)]) != gaps.npos;
    return bounded ? std::optional(end) : std::nullopt;
}

// The walk as it is told; none when it goes on behind 50 replacements.
std::optional<int> ReplaceFraseStepByStep(std::string& s, const std::string& first,
                                          const std::string& second, const std::string& with,
                                          int from) {
    int count = 0;
    const auto find = [&](int start) {
        return static_cast<int>(s.find(first, static_cast<std::size_t>(start)));
    };
    for (int place = find(from); place >= 0; place = find(place + 1)) {
        const std::optional<int> end = FraseEndStepByStep(s, place, first, second);
        if (!end) continue;
        if (++count > 50) return {};
        s.replace(static_cast<std::size_t>(place),
                  static_cast<std::size_t>(std::max(*end - place, 0)), with);
    }
    return count;
}

TEST_F(HXStringReplaceFrase, AgreesWithTheWalkStepByStepWhereItEnds) {
    const auto word = [](const char* alphabet, std::size_t longest) {
        return std::string(SomeText(alphabet).View().substr(0, longest));
    };
    EXPECT_TRUE(rc::check([&] {
        const std::string second = word("ab,", 3);
        const std::string start = *rc::gen::element(second, std::string());
        const std::string text = start + word("ab, ", 12);
        const std::string first = *rc::gen::element<std::string>("b", "bb", "ab", ",", "a b", "");
        const std::string with = word("ab,", 4);
        const int from = *rc::gen::inRange(0, 6);

        std::string expected = text;
        const std::optional<int> count =
            ReplaceFraseStepByStep(expected, first, second, with, from);
        RC_PRE(count.has_value());
        RC_ASSERT(Run(text.c_str(), first.c_str(), second.c_str(), with.c_str(), from) == *count);
        RC_ASSERT(std::string(s.View()) == expected);
    }));
}

TEST_F(HXStringReplaceFrase, NothingPutInWhereNothingIsTakenOutCountsEachPlace) {
    EXPECT_EQ(Run("one two", "two", "", ""), 1);
    EXPECT_EQ(s, "one two");
}

TEST_F(HXStringReplaceFrase, ArgumentsMayBeTheTextItself) {
    s = "one";
    EXPECT_EQ(HXString::ReplaceFrase(s, s, s, s, 0), 0);
    EXPECT_EQ(s, "one");
}

TEST(HXStringPadRight, AppendsWhatLacksAndNeverShortens) {
    CString s = "ab";
    HXString::PadRightMakeLength(s, 5, '.');
    EXPECT_EQ(s, "ab...");
    HXString::PadRightMakeLength(s, 5, '.');
    HXString::PadRightMakeLength(s, 3, '.');
    HXString::PadRightMakeLength(s, 6, '!');
    EXPECT_EQ(s, "ab...!");
    HXString::PadRightMakeLength(s, -1, '.');
    EXPECT_EQ(s, "ab...!");
}

TEST(HXStringTab, IndentsEachLineAndNotTheEnd) {
    CString s = "one\ntwo\n";
    HXString::Tab(s);
    EXPECT_EQ(s, "\tone\n\ttwo\n");
}

TEST(HXStringTab, IndentsEmptyLinesToo) {
    CString s = "\n\na";
    HXString::Tab(s);
    EXPECT_EQ(s, "\t\n\t\n\ta");
}

TEST(HXStringTab, EmptyTextBecomesATab) {
    CString s;
    HXString::Tab(s);
    EXPECT_EQ(s, "\t");
    CString lineFeed = "\n";
    HXString::Tab(lineFeed);
    EXPECT_EQ(lineFeed, "\t\n");
}

// Conversion

TEST(HXStringBstr, WideTextBecomesBytes) {
    wchar_t* bstr = SysAllocString(L"Abc 123");
    EXPECT_EQ(HXString::BSTRtoCString(bstr), "Abc 123");
    SysFreeString(bstr);
}

TEST(HXStringBstr, OtherThanAsciiBecomesUtf8) {
    wchar_t* bstr = SysAllocString(L"\u00E9\u4E2D");
    EXPECT_EQ(HXString::BSTRtoCString(bstr), "\xC3\xA9\xE4\xB8\xAD");
    SysFreeString(bstr);
}

TEST(HXStringBstr, NullAndEmptyGiveTheEmptyText) {
    wchar_t* none = nullptr;
    EXPECT_EQ(HXString::BSTRtoCString(none), "");
    wchar_t* empty = SysAllocString(L"");
    EXPECT_EQ(HXString::BSTRtoCString(empty), "");
    SysFreeString(empty);
}

TEST(HXStringBstr, ConversionEndsAtTheFirstZeroCharacter) {
    wchar_t* bstr = SysAllocStringLen(L"ab\0cd", 5);
    EXPECT_EQ(HXString::BSTRtoCString(bstr), "ab");
    SysFreeString(bstr);
}

TEST(HXStringBstr, NullTargetIsLeftAlone) {
    HXString::CStringToBSTR("abc", nullptr);
}

TEST(HXStringBstr, NewStringIsStoredIntoNull) {
    wchar_t* bstr = nullptr;
    HXString::CStringToBSTR("abc", &bstr);
    EXPECT_STREQ(bstr, L"abc");
    EXPECT_EQ(SysStringLen(bstr), 3u);
    SysFreeString(bstr);
}

TEST(HXStringBstr, OldStringIsReplaced) {
    wchar_t* bstr = SysAllocString(L"old and longer");
    HXString::CStringToBSTR("new", &bstr);
    EXPECT_STREQ(bstr, L"new");
    SysFreeString(bstr);
}

TEST(HXStringBstr, EmptyTextIsANewStringAndTheOldOneIsNotFreed) {
    wchar_t* const old = SysAllocString(L"old");
    wchar_t* bstr = old;
    HXString::CStringToBSTR("", &bstr);
    ASSERT_NE(bstr, nullptr);
    EXPECT_NE(bstr, old);
    EXPECT_EQ(SysStringLen(bstr), 0u);
    EXPECT_STREQ(old, L"old");
    SysFreeString(bstr);
    SysFreeString(old);
}

TEST(HXStringGuid, TextHasUpperCaseDigitsAndUnderscores) {
    const _GUID list = {
        0x06AF987B, 0x6631, 0x43ED, {0xA1, 0x81, 0xFD, 0xC3, 0xFE, 0x7F, 0x01, 0x20}};
    EXPECT_EQ(HXString::GuidToString(list), "06AF987B_6631_43ED_A181_FDC3FE7F0120");
}

TEST(HXStringGuid, TextKeepsLeadingZeros) {
    const _GUID small = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    EXPECT_EQ(HXString::GuidToString(small), "00000001_0002_0003_0405_060708090A0B");
    EXPECT_EQ(HXString::GuidToString(GUID_NULL), "00000000_0000_0000_0000_000000000000");
}

TEST(HXStringGuid, UniqueTextsDiffer) {
    std::set<std::string> texts;
    for (int i = 0; i < 100; ++i) {
        texts.insert(std::string(HXString::GetUniqueStringGuid().View()));
    }
    EXPECT_EQ(texts.size(), 100u);
    for (const std::string& text : texts) {
        ASSERT_EQ(text.size(), 36u);
        for (const std::size_t place : {8u, 13u, 18u, 23u}) EXPECT_EQ(text[place], '_');
    }
}

}  // namespace
}  // namespace ZT
