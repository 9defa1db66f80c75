#include "section/Failure.h"

#include <gtest/gtest.h>

namespace section {
namespace {

TEST(Printable, LeavesPlainAndAccentedTextAlone) {
    EXPECT_EQ(Printable("Part 7 (final).stl"), "Part 7 (final).stl");
    EXPECT_EQ(Printable("Würfel 立方体 🧊"), "Würfel 立方体 🧊");
    EXPECT_EQ(Printable(""), "");
}

TEST(Printable, ReplacesControlCharacters) {
    EXPECT_EQ(Printable("two\nlines\tand\x1b[31m\x7f"), "two�lines�and�[31m�");
    EXPECT_EQ(Printable(std::string_view("a\0b", 3)), "a�b");
    EXPECT_EQ(Printable("next\xC2\x85line"), "next�line");
}

TEST(Printable, ReplacesCharactersThatXmlCannotHold) {
    EXPECT_EQ(Printable("a\xEF\xBF\xBE\xEF\xBF\xBF"), "a��");
}

TEST(Printable, ReplacesBytesThatAreNoUtf8) {
    EXPECT_EQ(Printable("W\xFCrfel"), "W�rfel");
    EXPECT_EQ(Printable("cut \xE7\xAB"), "cut �");
}

TEST(Quoted, CutsAfterFortyCharacters) {
    EXPECT_EQ(Quoted("facet"), "'facet'");
    EXPECT_EQ(Quoted(std::string(40, 'x')), "'" + std::string(40, 'x') + "'");
    EXPECT_EQ(Quoted(std::string(41, 'x')), "'" + std::string(40, 'x') + "…'");
}

}  // namespace
}  // namespace section
