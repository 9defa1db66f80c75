#include "section/Texts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "section/Failure.h"

namespace section {
namespace {

std::string FailureOf(std::string_view text, const TextValues& values) {
    try {
        Filled(text, values);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "no failure";
}

TEST(Filled, PutsAValueForEachPlaceholder) {
    const TextValues values{{"name", "a.stl"}, {"n", "3"}};
    EXPECT_EQ(Filled("{name}: {n} of {n}", values), "a.stl: 3 of 3");
    EXPECT_EQ(Filled("", values), "");
    EXPECT_EQ(Filled("as it } stands", values), "as it } stands");
}

TEST(Filled, LeavesTheBracesOfAValue) {
    EXPECT_EQ(Filled("<{name}>", {{"name", "{n}{"}, {"n", "3"}}), "<{n}{>");
}

TEST(Filled, RefusesAPlaceholderWithoutAValue) {
    EXPECT_EQ(FailureOf("{name} {size}", {{"name", "a"}}),
              "a text of this program has the unknown placeholder '{size}'");
    EXPECT_EQ(FailureOf("{name", {{"name", "a"}}),
              "a text of this program has the unknown placeholder '{name'");
    EXPECT_EQ(FailureOf("{}", {}), "a text of this program has the unknown placeholder '{}'");
}

TEST(TextResource, IsCarriedByTheProgramThatRuns) {
    EXPECT_THAT(TextResource(kReportText), testing::StartsWith("Mesh      {source}\n"));
    EXPECT_THAT(TextResource(kLabelText), testing::HasSubstr("{name}"));
    EXPECT_NO_THROW(CheckTexts());
}

TEST(TextResource, ThatIsMissingIsNamed) {
    try {
        TextResource("Nothing");
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(),
                     "this program lacks its text 'Nothing', the resource TEXT/Nothing");
    }
}

}  // namespace
}  // namespace section
