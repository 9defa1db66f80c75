#include <gtest/gtest.h>
#include <zt/persist/detail/NumberRow.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace ZT::NumberText {
namespace {

template <class T>
struct Row {
    std::vector<T> values;
    bool failed;
    bool operator==(const Row&) const = default;
};

/// The rule for rows as it is told, with the C library's scan at every step.
template <class T>
Row<T> ScannedStepByStep(const std::string& text, ulong n, const char* format) {
    Row<T> row{{}, false};
    std::size_t position = 0;
    while (row.values.size() < n) {
        T value{};
        row.failed = std::sscanf(text.c_str() + position, format, &value) != 1;
        if (row.failed) break;
        row.values.push_back(value);
        const std::size_t blank = text.find(' ', position);
        if (blank == std::string::npos) break;
        position = blank + 1;
    }
    return row;
}

template <class T>
Row<T> Scanned(const std::string& text, ulong n) {
    std::vector<T> values(n + 1, T{77});
    const RowScan scan = ScanRow(std::string_view(text), values.data(), n);
    EXPECT_TRUE(std::all_of(values.begin() + scan.count, values.end(),
                            [](T value) { return value == T{77}; }))
        << '"' << text << "\" changed an entry that it has no value for";
    values.resize(scan.count);
    return {values, scan.failed};
}

TEST(NumberRow, RandomTextsAreScannedByTheRuleForRows) {
    std::mt19937 random(28);
    const std::string alphabet = "0123      \t\n.-+ex";
    std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1), length(0, 20);
    std::uniform_int_distribution<ulong> wanted(0, 8);
    for (int i = 0; i < 40'000 && !testing::Test::HasFailure(); ++i) {
        std::string text(length(random), ' ');
        for (char& c : text) c = alphabet[pick(random)];
        const ulong n = wanted(random);
        EXPECT_TRUE(Scanned<double>(text, n) == ScannedStepByStep<double>(text, n, "%lf"))
            << '"' << text << "\" for " << n;
        EXPECT_TRUE(Scanned<float>(text, n) == ScannedStepByStep<float>(text, n, "%f"))
            << '"' << text << "\" for " << n;
        EXPECT_TRUE(Scanned<int>(text, n) == ScannedStepByStep<int>(text, n, "%d"))
            << '"' << text << "\" for " << n;
    }
}

}  // namespace
}  // namespace ZT::NumberText
