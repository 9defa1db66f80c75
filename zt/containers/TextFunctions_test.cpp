#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <zt/containers/TextFunctions.h>
#include <string>

namespace ZT {
namespace {

TEST(ToLower, ChangesUpperCaseLettersOnlyAndGivesTheLength) {
    char text[] = "AbZ [@`{\x80 9";
    EXPECT_EQ(hxToLower(text), 11);
    EXPECT_STREQ(text, "abz [@`{\x80 9");
}

TEST(ToLower, NullAndEmptyGiveZero) {
    EXPECT_EQ(hxToLower(nullptr), 0);
    char empty[] = "";
    EXPECT_EQ(hxToLower(empty), 0);
}

TEST(ToLower, StopsAtTheTerminatingZero) {
    char text[] = "AB\0CD";
    EXPECT_EQ(hxToLower(text), 2);
    EXPECT_EQ(std::string(text, 5), std::string("ab\0CD", 5));
}

TEST(GetBuff, IsTheWritableTextItself) {
    CString s = "abc";
    char* const buffer = hxGetBuff(s);
    EXPECT_STREQ(buffer, "abc");
    buffer[1] = 'X';
    EXPECT_EQ(s, "aXc");
    EXPECT_EQ(s.GetLength(), 3);
}

TEST(LibReverseFind, FindsTheLastOfAnyCharacter) {
    EXPECT_EQ(hxlibReverseFind("a/b\\c", "\\/"), 3);
    EXPECT_EQ(hxlibReverseFind("a/b/", "\\/"), 3);
    EXPECT_EQ(hxlibReverseFind("/abc", "\\/"), 0);
    EXPECT_EQ(hxlibReverseFind("abc", "\\/"), -1);
}

TEST(LibReverseFind, NullSetAndEmptyTextFindNothing) {
    EXPECT_EQ(hxlibReverseFind("abc", nullptr), -1);
    EXPECT_EQ(hxlibReverseFind("", "a"), -1);
}

TEST(LibReverseFind, BeginsBeforeTheTerminatingZero) {
    EXPECT_EQ(hxlibReverseFind("abc", ""), -1);
}

TEST(LibReverseFind, AgreesWithTheStandardSearch) {
    EXPECT_TRUE(rc::check([](const std::string& seed) {
        std::string text = seed;
        for (char& c : text) c = "ab/ "[static_cast<unsigned char>(c) % 4];
        const auto expected = static_cast<int>(text.find_last_of("/ "));
        RC_ASSERT(hxlibReverseFind(text.c_str(), "/ ") == expected);
    }));
}

}  // namespace
}  // namespace ZT
