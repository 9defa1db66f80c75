#include <gtest/gtest.h>
#include <zt/persist/detail/NumberText.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <vector>

using namespace ZT::NumberText;

namespace {

std::string Printed(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

std::string Written(double value) {
    char text[kMaxLength];
    return std::string(text, WriteDouble(text, value));
}

/// What the C library scans from `text`: the bits of the value, or nothing.
template <class Bits, class T>
std::optional<Bits> Reference(const std::string& text, const char* format) {
    T value{};
    if (std::sscanf(text.c_str(), format, &value) != 1) return std::nullopt;
    return std::bit_cast<Bits>(value);
}

template <class Bits, class T>
std::optional<Bits> Ours(const std::string& text, const char* (*scan)(std::string_view, T&)) {
    T value{};
    const char* const place = scan(text, value);
    if (!place) return std::nullopt;
    const std::size_t begin = text.size() - SkipSpace(text).size();
    const std::size_t end = std::min(text.find_first_of(" \t\n\v\f\r", begin), text.size());
    const auto at = static_cast<std::size_t>(place - text.data());
    EXPECT_TRUE(begin <= at && at <= end) << '"' << text << "\" goes on from " << at;
    return std::bit_cast<Bits>(value);
}

void ExpectScansLikeTheCLibrary(const std::string& text) {
    EXPECT_EQ((Ours<std::uint64_t, double>(text, ScanDouble)),
              (Reference<std::uint64_t, double>(text, "%lf")))
        << '"' << text << '"';
    EXPECT_EQ((Ours<std::uint32_t, float>(text, ScanFloat)),
              (Reference<std::uint32_t, float>(text, "%f")))
        << '"' << text << '"';
    EXPECT_EQ((Ours<std::uint32_t, std::int32_t>(text, ScanInt)),
              (Reference<std::uint32_t, std::int32_t>(text, "%d")))
        << '"' << text << '"';
}

TEST(NumberText, DoublesOfRandomBitsAreWrittenAsTheCLibraryWritesThem) {
    std::mt19937_64 random(20);
    for (int i = 0; i < 300'000; ++i) {
        const double value = std::bit_cast<double>(random());
        ASSERT_EQ(Written(value), Printed(value)) << std::bit_cast<std::uint64_t>(value);
    }
}

TEST(NumberText, DoublesOfEverydaySizeAreWrittenAsTheCLibraryWritesThem) {
    std::mt19937_64 random(21);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-12, 12), halves(-4'000'000, 4'000'000);
    for (int i = 0; i < 150'000; ++i) {
        const double value = mantissa(random) * std::pow(10, exponent(random));
        ASSERT_EQ(Written(value), Printed(value));
        const double tie = halves(random) / 2.0 * std::pow(10, exponent(random) / 4);
        ASSERT_EQ(Written(tie), Printed(tie));
    }
}

TEST(NumberText, DoublesBesideATieOfTheSixthDigitAreWrittenAsTheCLibraryWritesThem) {
    std::mt19937_64 random(26);
    std::uniform_int_distribution<int> digits(99'999, 999'999), exponent(-35, 30);
    for (int i = 0; i < 50'000; ++i) {
        char text[64];
        std::snprintf(text, sizeof text, "%d5e%d", digits(random), exponent(random));
        const double tie = std::strtod(text, nullptr);
        double below = tie, above = tie;
        for (int steps = 0; steps < 3; ++steps) {
            ASSERT_EQ(Written(below), Printed(below));
            ASSERT_EQ(Written(above), Printed(above));
            below = std::nextafter(below, 0);
            above = std::nextafter(above, 1e300);
        }
    }
}

TEST(NumberText, DoublesBesideAPowerOfTenAreWrittenAsTheCLibraryWritesThem) {
    for (int exponent = -30; exponent <= 30; ++exponent) {
        const double power = std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
        double below = power, above = power;
        for (int steps = 0; steps < 1000; ++steps) {
            ASSERT_EQ(Written(below), Printed(below));
            ASSERT_EQ(Written(above), Printed(above));
            below = std::nextafter(below, 0);
            above = std::nextafter(above, 1e300);
        }
        for (const double nines : {0.9999995, 0.99999949999, 0.99999950001, 0.9999999, 1.000001}) {
            ASSERT_EQ(Written(nines * power), Printed(nines * power));
        }
    }
}

TEST(NumberText, FloatsOfRandomBitsAreWrittenAsTheCLibraryWritesThem) {
    std::mt19937 random(22);
    for (int i = 0; i < 200'000; ++i) {
        const double value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        ASSERT_EQ(Written(value), Printed(value));
    }
}

TEST(NumberText, DoublesOutOfTheOrdinaryAreWrittenAsTheCLibraryWritesThem) {
    using Limits = std::numeric_limits<double>;
    std::vector<double> values = {0.0,
                                  Limits::infinity(),
                                  Limits::quiet_NaN(),
                                  Limits::signaling_NaN(),
                                  Limits::denorm_min(),
                                  Limits::min(),
                                  Limits::max(),
                                  1e307,
                                  999999.5,
                                  999999.4999999999,
                                  99999.95,
                                  0.0001,
                                  0.00009999995,
                                  0.000099999949999,
                                  1e5,
                                  1e6,
                                  123456.5,
                                  123457.5,
                                  1e22,
                                  1e23};
    for (int exponent = -324; exponent <= 308; ++exponent)
        values.push_back(std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr));
    for (const double value : values) {
        EXPECT_EQ(Written(value), Printed(value));
        EXPECT_EQ(Written(-value), Printed(-value));
    }
    EXPECT_EQ(Written(Limits::quiet_NaN()), "nan");
    EXPECT_EQ(Written(-Limits::quiet_NaN()), "-nan");
    EXPECT_EQ(Written(-Limits::infinity()), "-inf");
    EXPECT_EQ(Written(-0.0), "-0");
}

TEST(NumberText, IntegersAreWrittenInDecimalAndInEightHexadecimalDigits) {
    std::mt19937 random(23);
    std::vector<std::uint32_t> values = {0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0xFF00};
    for (int i = 0; i < 10'000; ++i) values.push_back(static_cast<std::uint32_t>(random()));
    for (const std::uint32_t value : values) {
        char ours[kMaxLength], reference[64];
        std::snprintf(reference, sizeof reference, "%d", static_cast<std::int32_t>(value));
        EXPECT_EQ(std::string(ours, WriteInt(ours, static_cast<std::int32_t>(value))), reference);
        std::snprintf(reference, sizeof reference, "0x%08x", value);
        EXPECT_EQ(std::string(ours, WriteHex(ours, value)), reference);
    }
}

TEST(NumberText, TextsOutOfTheOrdinaryAreScannedAsTheCLibraryScansThem) {
    const std::vector<std::string> starts = {
        "",
        "-",
        "+",
        "+-",
        "-+",
        "--",
        ".",
        "-.",
        "..",
        "1",
        "-1",
        "+1",
        "007",
        "1.",
        ".5",
        "-.5",
        "+.5",
        "1.5",
        "1..5",
        "1.5.5",
        "1e",
        "1e+",
        "1e-",
        "1E5",
        "1e5",
        "1e+5",
        "1e-5",
        "1e5.5",
        "e5",
        ".e5",
        "1.e5",
        "1e++5",
        "1ee5",
        "0x",
        "0X",
        "-0x",
        "0x1",
        "0x1p3",
        "0X1P-3",
        "0x.8",
        "0x1.8",
        "0x1.",
        "0xg",
        "0x1p",
        "0x1p+",
        "00x1",
        "inf",
        "-inf",
        "+INF",
        "infi",
        "in",
        "infinity",
        "nan",
        "-nan",
        "NaN",
        "nan(",
        "nan(12)",
        "nan()",
        "nan(a",
        "na",
        "1e400",
        "-1e400",
        "1e-400",
        "1e39",
        "1e-50",
        "1e38",
        "3.4028236e38",
        "1.17549435e-38",
        "4.9e-324",
        "2.5e-324",
        "1,5",
        "1,000",
        "12abc",
        "abc",
        "1x",
        "1f",
        "1d",
        "1l",
        "_1",
        "2147483647",
        "2147483648",
        "-2147483648",
        "-2147483649",
        "4294967295",
        "4294967296",
        "4294967303",
        "9223372036854775807",
        "9223372036854775808",
        "-9223372036854775808",
        "-9223372036854775809",
        "99999999999999999999999",
        "-99999999999999999999999",
        "+99999999999999999999999",
        "1e99999999999999999999",
        "1e-99999999999999999999",
        "0e99999999999999999999",
        "9007199254740993",
        "0.1",
        "1e23",
        "8.5e-46",
        "16777217",
        "0.000000000000000000000000000000000000000000000000000001",
        std::string(400, '9'),
        "0." + std::string(400, '0') + "1",
        std::string(5000, '1') + "e-4990",
        "-" + std::string(5000, '0') + "12",
        "\xA0"
        "1",
        "\xC2\xA0"
        "1"};
    const std::vector<std::string> fronts = {"", " ", "\t", "\n\v\f\r", "   \t\n"};
    const std::vector<std::string> ends = {"", " ", "\t", "\n", " 7", "x", ".", "e", "-"};
    for (const std::string& start : starts)
        for (const std::string& front : fronts)
            for (const std::string& end : ends) ExpectScansLikeTheCLibrary(front + start + end);
}

TEST(NumberText, RandomRunsOfNumberCharactersAreScannedAsTheCLibraryScansThem) {
    std::mt19937 random(24);
    const std::string alphabet = "00112345678999..eE+--xXpPaAfF  \tinINtyYa()_";
    std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1), length(0, 12);
    for (int i = 0; i < 100'000 && !testing::Test::HasFailure(); ++i) {
        std::string text(length(random), ' ');
        for (char& c : text) c = alphabet[pick(random)];
        ExpectScansLikeTheCLibrary(text);
    }
}

TEST(NumberText, ShortDecimalTextsAreScannedAsTheCLibraryScansThem) {
    std::mt19937_64 random(27);
    std::uniform_int_distribution<int> exponent(-26, 26), precision(1, 19);
    for (int i = 0; i < 50'000 && !testing::Test::HasFailure(); ++i) {
        char text[64];
        const auto digits = static_cast<unsigned long long>(random() >> i % 60);
        std::snprintf(text, sizeof text, i % 2 ? "%llue%d" : "-%llu.%de%d", digits,
                      exponent(random), exponent(random));
        ExpectScansLikeTheCLibrary(text);
        const double value = static_cast<double>(digits) * std::pow(10, exponent(random));
        std::snprintf(text, sizeof text, i % 2 ? "%.*g" : "%.*f", precision(random),
                      std::fmod(value, 1e20));
        ExpectScansLikeTheCLibrary(text);
    }
}

TEST(NumberText, PrintedNumbersOfRandomBitsAreScannedAsTheCLibraryScansThem) {
    std::mt19937_64 random(25);
    for (int i = 0; i < 40'000 && !testing::Test::HasFailure(); ++i) {
        char text[64];
        const double value = std::bit_cast<double>(random());
        const float narrow = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        std::snprintf(text, sizeof text, i % 2 ? "%.17g" : "%g", value);
        ExpectScansLikeTheCLibrary(text);
        std::snprintf(text, sizeof text, i % 2 ? "%.20g" : "%a", static_cast<double>(narrow));
        ExpectScansLikeTheCLibrary(text);
        std::snprintf(text, sizeof text, "%lld", static_cast<long long>(random() >> i % 64));
        ExpectScansLikeTheCLibrary(text);
    }
}

TEST(NumberText, AFailedScanLeavesTheValueAlone) {
    double number = 7;
    float narrow = 8;
    std::int32_t integer = 9;
    for (const char* text : {"", " ", "x1", "-", "+", ".", "\t\n"}) {
        EXPECT_FALSE(ScanDouble(text, number)) << text;
        EXPECT_FALSE(ScanFloat(text, narrow)) << text;
        EXPECT_FALSE(ScanInt(text, integer)) << text;
    }
    EXPECT_EQ(number, 7);
    EXPECT_EQ(narrow, 8);
    EXPECT_EQ(integer, 9);
}

TEST(NumberText, AZeroByteEndsTheText) {
    double number = 0;
    EXPECT_TRUE(ScanDouble(std::string_view("1e\0"
                                            "5",
                                            4),
                           number));
    EXPECT_EQ(number, 1);
    std::int32_t integer = 0;
    EXPECT_TRUE(ScanInt(std::string_view("4\0"
                                         "5",
                                         3),
                        integer));
    EXPECT_EQ(integer, 4);
    EXPECT_FALSE(ScanDouble(std::string_view("\0"
                                             "5",
                                             2),
                            number));
}

TEST(NumberText, TrimTakesAllSixWhiteSpaceCharactersOffBothEnds) {
    EXPECT_EQ(Trim(" \t\n\v\f\ra b\r\f\v\n\t "), "a b");
    EXPECT_EQ(Trim(" \t\n\v\f\r"), "");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(SkipSpace(" \t\n\v\f\ra "), "a ");
    EXPECT_FALSE(IsSpace('\b') || IsSpace('\x0E') || IsSpace('\xA0') || IsSpace('\0'));
}

}  // namespace
