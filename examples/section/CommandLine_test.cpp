#include "section/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "section/Failure.h"

namespace section {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

using Arguments = std::vector<std::string>;

std::string Misuse(const Arguments& arguments) {
    try {
        ParseCommandLine(arguments);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "no failure";
}

TEST(CommandLine, HasADefaultForEverything) {
    const Options options = ParseCommandLine({});
    EXPECT_EQ(options.m_file, "");
    EXPECT_EQ(options.m_folder, "out");
    EXPECT_EQ(options.m_cut.m_count, 20);
    EXPECT_EQ(options.m_cut.m_step, 0.0);
    EXPECT_FALSE(options.m_bRead);
    EXPECT_FALSE(options.m_bFolder);
    EXPECT_TRUE(options.m_bInput);
    EXPECT_FALSE(options.m_bHelp);
}

TEST(CommandLine, TakesOptionsInEveryForm) {
    for (const Arguments& arguments : {Arguments{"-l", "7", "-o", "there", "a.stl"},
                                       Arguments{"--layers", "7", "--out", "there", "a.stl"},
                                       Arguments{"--layers=7", "a.stl", "--out=there"}}) {
        const Options options = ParseCommandLine(arguments);
        EXPECT_EQ(options.m_file, "a.stl");
        EXPECT_EQ(options.m_folder, "there");
        EXPECT_EQ(options.m_cut.m_count, 7);
    }
}

TEST(CommandLine, TakesAStep) {
    EXPECT_EQ(ParseCommandLine({"-s", "0.25"}).m_cut.m_step, 0.25);
    EXPECT_EQ(ParseCommandLine({"--step=1e3"}).m_cut.m_step, 1000.0);
}

TEST(CommandLine, TakesAStoredModel) {
    const Options options = ParseCommandLine({"--read", "out/model.xml"});
    EXPECT_TRUE(options.m_bRead);
    EXPECT_EQ(options.m_file, "out/model.xml");
}

TEST(CommandLine, LeavesTheInputOut) {
    EXPECT_FALSE(ParseCommandLine({"-w", "a.stl"}).m_bInput);
    EXPECT_FALSE(ParseCommandLine({"--without-input"}).m_bInput);
    EXPECT_THAT(Misuse({"--read", "model.xml", "-w"}),
                StartsWith("--read goes without --without-input"));
}

TEST(CommandLine, TellsWhetherAFolderIsNamed) {
    EXPECT_TRUE(ParseCommandLine({"--out", "out"}).m_bFolder);
}

TEST(CommandLine, TakesAFileThatLooksLikeAnOption) {
    EXPECT_EQ(ParseCommandLine({"--", "--layers"}).m_file, "--layers");
    EXPECT_EQ(ParseCommandLine({"-"}).m_file, "-");
}

TEST(CommandLine, AsksForHelpWhateverFollows) {
    EXPECT_TRUE(ParseCommandLine({"-h"}).m_bHelp);
    EXPECT_TRUE(ParseCommandLine({"--read", "--help", "--nonsense"}).m_bHelp);
}

TEST(CommandLine, RefusesANumberOfLayersThatCannotBe) {
    for (const std::string value : {"0", "-3", "100001", "1.5", "ten", "", "99999999999"}) {
        EXPECT_EQ(Misuse({"--layers", value}),
                  "--layers takes a whole number from 1 to 100000, not '" + value +
                      "'; see section --help");
    }
}

TEST(CommandLine, RefusesAStepThatCannotBe) {
    for (const std::string value : {"0", "-1", "1e-10", "nan", "inf", "1e400", "1,5", "1mm", ""}) {
        EXPECT_EQ(Misuse({"--step=" + value}),
                  "--step takes a height above 1e-10, not '" + value + "'; see section --help");
    }
}

TEST(CommandLine, RefusesWhatDoesNotGoTogether) {
    EXPECT_THAT(Misuse({"--layers=3", "--step=1"}), StartsWith("either --layers or --step"));
    EXPECT_THAT(Misuse({"--layers=20", "--step=1"}), StartsWith("either --layers or --step"));
    EXPECT_THAT(Misuse({"a.stl", "b.stl"}), StartsWith("one FILE at a time: 'b.stl'"));
    EXPECT_THAT(Misuse({"--read"}), StartsWith("--read takes the FILE"));
}

TEST(CommandLine, RefusesWhatItDoesNotKnow) {
    EXPECT_THAT(Misuse({"--lay"}), StartsWith("unknown option '--lay'"));
    EXPECT_THAT(Misuse({"-x"}), StartsWith("unknown option '-x'"));
    EXPECT_THAT(Misuse({"--layers"}), StartsWith("--layers lacks its value"));
    EXPECT_THAT(Misuse({"--read=yes"}), StartsWith("--read takes no value"));
    EXPECT_THAT(Misuse({""}), StartsWith("FILE is an empty name"));
    EXPECT_THAT(Misuse({"--out="}), StartsWith("--out takes the name"));
}

TEST(HelpText, NamesEveryOptionAndFitsAScreen) {
    const std::string help = HelpText();
    for (const char* option :
         {"--layers", "--step", "--out", "--without-input", "--read", "--help"}) {
        EXPECT_THAT(help, HasSubstr(option));
    }
    for (std::size_t begin = 0; begin < help.size(); begin = help.find('\n', begin) + 1) {
        EXPECT_LE(help.find('\n', begin) - begin, 90u);
    }
}

}  // namespace
}  // namespace section
