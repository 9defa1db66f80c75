#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <platform/files/CArchive.h>
#include <platform/files/Archived_test.hpp>

#include <string>
#include <vector>

namespace {

std::string StoredText(const std::string& text) {
    return Stored([&](CArchive& ar) { ar << CString(std::string_view(text)); });
}

std::string LoadedText(const std::string& bytes) {
    CString text;
    Loaded(bytes, [&](CArchive& ar) { ar >> text; });
    return std::string(text.View());
}

std::vector<std::string> Lines(const std::string& bytes) {
    std::vector<std::string> lines;
    Loaded(bytes, [&](CArchive& ar) {
        for (CString line; ar.ReadString(line);) lines.emplace_back(line.View());
    });
    return lines;
}

}  // namespace

TEST(ArchivedText, ShortLengthTakesOneByte) {
    EXPECT_EQ(StoredText(""), std::string(1, 0));
    EXPECT_EQ(StoredText("abc"),
              "\x03"
              "abc");
    const std::string longest(0xFE, 'x');
    EXPECT_EQ(StoredText(longest), "\xFE" + longest);
}

TEST(ArchivedText, LongerLengthTakesTwoBytesMore) {
    const std::string shortest(0xFF, 'x');
    EXPECT_EQ(StoredText(shortest), std::string("\xFF\xFF\x00", 3) + shortest);
    const std::string longest(0xFFFD, 'x');
    EXPECT_EQ(StoredText(longest), "\xFF\xFD\xFF" + longest);
}

TEST(ArchivedText, LongestLengthTakesFourBytesMore) {
    const std::string shortest(0xFFFE, 'x');
    EXPECT_EQ(StoredText(shortest), std::string("\xFF\xFF\xFF\xFE\xFF\x00\x00", 7) + shortest);
    const std::string longer(0x10001, 'y');
    EXPECT_EQ(StoredText(longer), std::string("\xFF\xFF\xFF\x01\x00\x01\x00", 7) + longer);
}

TEST(ArchivedText, IsReadAgain) {
    for (const unsigned length :
         {0U, 1U, 0xFEU, 0xFFU, 0x100U, 0xFFFDU, 0xFFFEU, 0xFFFFU, 0x10000U, 300000U}) {
        const std::string text(length, 'q');
        EXPECT_EQ(LoadedText(StoredText(text)), text) << length;
    }
}

TEST(ArchivedText, IsReadAgainWhateverItHolds) {
    EXPECT_TRUE(rc::check(
        [](const std::string& text) { RC_ASSERT(LoadedText(StoredText(text)) == text); }));
}

TEST(ArchivedText, KeepsZeroBytes) {
    const std::string text("a\0b", 3);
    EXPECT_EQ(LoadedText(StoredText(text)), text);
}

TEST(ArchivedText, LengthOf64BitsIsRead) {
    const std::string bytes =
        "\xFF" + std::string(6, '\xFF') + std::string("\x02\0\0\0\0\0\0\0", 8);
    EXPECT_EQ(LoadedText(bytes + "ab"), "ab");
}

TEST(ArchivedText, CutTextRaisesEndOfFileAndKeepsTheOldOne) {
    CString text = "old";
    const auto load = [&](CArchive& ar) { ar >> text; };
    EXPECT_EQ(LoadingCause("\x05"
                           "abc",
                           load),
              CArchiveException::endOfFile);
    EXPECT_EQ(LoadingCause("", load), CArchiveException::endOfFile);
    EXPECT_EQ(LoadingCause("\xFF\x10", load), CArchiveException::endOfFile);
    EXPECT_STREQ(text, "old");
}

TEST(ArchivedText, HugeLengthInAShortFileRaisesEndOfFile) {
    CString text;
    const auto load = [&](CArchive& ar) { ar >> text; };
    const std::string fourGigabytes = "\xFF\xFF\xFF" + std::string("\xFE\xFF\xFF\xFF", 4) + "ab";
    EXPECT_EQ(LoadingCause(fourGigabytes, load), CArchiveException::endOfFile);
    EXPECT_EQ(LoadingCause(std::string(15, '\xFF') + "ab", load), CArchiveException::endOfFile);
    EXPECT_EQ(LoadingCause("\xFF\xFE\xFF" + std::string(15, '\xFF') + "ab", load),
              CArchiveException::endOfFile);
}

TEST(ArchivedText, SixteenBitCharactersAreRead) {
    using namespace std::string_literals;
    EXPECT_EQ(LoadedText("\xFF\xFE\xFF\x03"
                         "A\0\xE9\0\x8B\x57"s),
              "A\xC3\xA9\xE5\x9E\x8B");
    EXPECT_EQ(LoadedText("\xFF\xFE\xFF\x02"
                         "\x3D\xD8\x00\xDE"s),
              "\xF0\x9F\x98\x80");
    EXPECT_EQ(LoadedText("\xFF\xFE\xFF\0"s), "");
}

TEST(ArchivedText, LoneSurrogateBecomesTheReplacementCharacter) {
    using namespace std::string_literals;
    EXPECT_EQ(LoadedText("\xFF\xFE\xFF\x02"
                         "\x3D\xD8"
                         "A\0"s),
              "\xEF\xBF\xBD"
              "A");
    EXPECT_EQ(LoadedText("\xFF\xFE\xFF\x01"
                         "\x00\xDE"s),
              "\xEF\xBF\xBD");
}

TEST(ArchivedText, LongTextOfSixteenBitCharactersIsRead) {
    std::string bytes = "\xFF\xFE\xFF\xFF" + std::string("\x00\x01", 2);
    for (int i = 0; i < 256; ++i) bytes += std::string("z\0", 2);
    EXPECT_EQ(LoadedText(bytes), std::string(256, 'z'));
}

TEST(ArchivedLine, WriteStringWritesTheBytesAlone) {
    EXPECT_EQ(Stored([](CArchive& ar) {
                  ar.WriteString("one\n");
                  ar.WriteString("");
                  ar.WriteString(nullptr);
                  ar.WriteString("two");
              }),
              "one\ntwo");
}

TEST(ArchivedLine, LinesEndAtLineFeedsAndAtTheEnd) {
    EXPECT_EQ(Lines("one\ntwo"), (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(Lines("one\ntwo\n"), (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(Lines("\n\n"), (std::vector<std::string>{"", ""}));
    EXPECT_EQ(Lines(""), std::vector<std::string>());
}

TEST(ArchivedLine, CarriageReturnBelongsToTheEndOfTheLineOnly) {
    EXPECT_EQ(Lines("one\r\ntwo\r\n"), (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(Lines("a\rb\n\r"), (std::vector<std::string>{"a\rb", "\r"}));
    EXPECT_EQ(Lines("a\r\r\nb"), (std::vector<std::string>{"a\r", "b"}));
}

TEST(ArchivedLine, LongLineIsRead) {
    const std::string line(10000, 'l');
    EXPECT_EQ(Lines(line + "\nx"), (std::vector<std::string>{line, "x"}));
}

TEST(ArchivedLine, BufferFormStopsAtItsSize) {
    Loaded("abcdef\ngh\n", [](CArchive& ar) {
        char text[5] = "####";
        EXPECT_EQ(ar.ReadString(text, 4), text);
        EXPECT_STREQ(text, "abcd");
        EXPECT_STREQ(ar.ReadString(text, 4), "ef");
        EXPECT_STREQ(ar.ReadString(text, 4), "gh");
        EXPECT_EQ(ar.ReadString(text, 4), nullptr);
        EXPECT_EQ(ar.ReadString(nullptr, 4), nullptr);
    });
}
