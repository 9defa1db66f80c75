#include "section/Number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace section {
namespace {

double Parsed(std::string_view text) {
    double value = -99.0;
    EXPECT_TRUE(ParseNumber(text, value)) << text;
    return value;
}

TEST(Number, HasSixSignificantDigits) {
    EXPECT_EQ(Number(0.1234567891), "0.123457");
    EXPECT_EQ(Number(1234567.0), "1.23457e+06");
    EXPECT_EQ(Number(1e-10), "1e-10");
    EXPECT_EQ(Number(-2.0), "-2");
}

TEST(Number, IsWrittenWithTheDecimalsAskedFor) {
    EXPECT_EQ(Fixed(1.5, 3), "1.500");
    EXPECT_EQ(Fixed(-0.0625, 2), "-0.06");
    EXPECT_EQ(Fixed(-0.0001, 2), "0.00");
    EXPECT_EQ(Fixed(std::numeric_limits<double>::max(), 0).size(), 309u);
}

TEST(Number, IsReadWhole) {
    EXPECT_EQ(Parsed("1.5"), 1.5);
    EXPECT_EQ(Parsed("+1.5e1"), 15.0);
    EXPECT_EQ(Parsed("-.5"), -0.5);
    double value = 7.0;
    for (const char* text : {"", "+", "+-1", "++1", "1,5", "1.5mm", " 1", "1 ", "e5", "0x10"}) {
        EXPECT_FALSE(ParseNumber(text, value)) << text;
    }
    EXPECT_EQ(value, 7.0);
}

TEST(Number, BeyondTheRangeOfADoubleIsInfiniteOrZero) {
    EXPECT_EQ(Parsed("1e400"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Parsed("1E+400"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Parsed("-1e400"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(Parsed("1e-400"), 0.0);
    EXPECT_EQ(Parsed("1E-400"), 0.0);
}

TEST(Number, MayBeNoNumberByName) {
    EXPECT_TRUE(std::isnan(Parsed("nan")));
    EXPECT_TRUE(std::isinf(Parsed("-inf")));
}

TEST(Number, IsReadAsAWholeNumber) {
    int value = 7;
    EXPECT_TRUE(ParseNumber("+12", value));
    EXPECT_EQ(value, 12);
    for (const char* text : {"", "1.5", "99999999999", "ten", "1 "}) {
        EXPECT_FALSE(ParseNumber(text, value)) << text;
    }
    EXPECT_EQ(value, 12);
}

TEST(Plural, HasAnSBehindAnythingButOne) {
    EXPECT_EQ(Plural(0, "facet"), "0 facets");
    EXPECT_EQ(Plural(1, "facet"), "1 facet");
    EXPECT_EQ(Plural(2, "facet"), "2 facets");
}

}  // namespace
}  // namespace section
