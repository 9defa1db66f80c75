#include <rapidcheck.h>
#include <zt/persist/Cursor_test.hpp>

#include <cstdio>
#include <limits>
#include <vector>

namespace ZT {
namespace {

TEST(PCExBaseFormat, DoublesHaveSixSignificantDigitsAndOneBlankBetweenThem) {
    const double values[] = {1, 0.5, 1000000};
    EXPECT_EQ(PCExBase::FormatData(values, 3), "1 0.5 1e+06");
    const double more[] = {0.25, 0.0000123456789, -0.0, 123456.5, -1e307, 0.1234567891};
    EXPECT_EQ(PCExBase::FormatData(more, 6), "0.25 1.23457e-05 -0 123456 -1e+307 0.123457");
}

TEST(PCExBaseFormat, FloatsAreWidenedToDoubles) {
    const PCExBase cursor;
    const float values[] = {0.5f, 0.1f, 16777216.0f, -1e-38f};
    EXPECT_EQ(cursor.FormatDataFloat(values, 4), "0.5 0.1 1.67772e+07 -1e-38");
}

TEST(PCExBaseFormat, IntegersAreDecimal) {
    const PCExBase cursor;
    const int values[] = {-3, 0, 2147483647, -2147483647 - 1};
    EXPECT_EQ(cursor.FormatDataInt(values, 4), "-3 0 2147483647 -2147483648");
}

TEST(PCExBaseFormat, BytesAreDecimal) {
    const PCExBase cursor;
    const unsigned char values[] = {255, 0, 7, 128};
    EXPECT_EQ(cursor.FormatDataByte(values, 4), "255 0 7 128");
}

TEST(PCExBaseFormat, ANullPointerOrNoValuesGiveTheEmptyText) {
    const PCExBase cursor;
    const double d = 1;
    const float f = 1;
    const int i = 1;
    const unsigned char b = 1;
    EXPECT_EQ(PCExBase::FormatData(nullptr, 4), "");
    EXPECT_EQ(PCExBase::FormatData(&d, 0), "");
    EXPECT_EQ(cursor.FormatDataFloat(nullptr, 4), "");
    EXPECT_EQ(cursor.FormatDataFloat(&f, 0), "");
    EXPECT_EQ(cursor.FormatDataInt(nullptr, 4), "");
    EXPECT_EQ(cursor.FormatDataInt(&i, 0), "");
    EXPECT_EQ(cursor.FormatDataByte(nullptr, 4), "");
    EXPECT_EQ(cursor.FormatDataByte(&b, 0), "");
}

TEST(PCExBaseFormat, OneValueHasNoBlank) {
    const double d = 1.5;
    EXPECT_EQ(PCExBase::FormatData(&d, 1), "1.5");
}

TEST(PCExBaseFormat, TheLongestTextsFit) {
    const std::vector<double> doubles(1000, -std::numeric_limits<double>::max());
    std::string expected = "-1.79769e+308";
    for (int i = 1; i < 1000; ++i) expected += " -1.79769e+308";
    EXPECT_EQ(PCExBase::FormatData(doubles.data(), 1000), expected);
    const PCExBase cursor;
    const std::vector<int> integers(1000, std::numeric_limits<int>::min());
    EXPECT_EQ(cursor.FormatDataInt(integers.data(), 1000).GetLength(), 1000 * 12 - 1);
    const std::vector<unsigned char> bytes(1000, 255);
    EXPECT_EQ(cursor.FormatDataByte(bytes.data(), 1000).GetLength(), 1000 * 4 - 1);
    for (const ulong n : {16u, 17u, 18u, 19u, 20u})
        EXPECT_EQ(PCExBase::FormatData(doubles.data(), n).GetLength(),
                  static_cast<int>(n) * 14 - 1);
}

TEST(PCExBaseFormat, EveryRowIsTheValuesPrintedOneByOne) {
    EXPECT_TRUE(rc::check([](const std::vector<double>& values) {
        std::string expected;
        for (const double value : values) {
            char text[64];
            std::snprintf(text, sizeof text, expected.empty() ? "%g" : " %g", value);
            expected += text;
        }
        const CString row = PCExBase::FormatData(values.data(), static_cast<ulong>(values.size()));
        RC_ASSERT(std::string(row) == expected);
    }));
}

}  // namespace
}  // namespace ZT
