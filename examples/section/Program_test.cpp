// The built program, run as a person runs it.

#include "section/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string>

#include <zt/memory/HXBlob.h>
#include <zt/memory/ResourceManager.h>

#include "section/Failure.h"
#include "section/TestFiles.h"

namespace section {
namespace {

namespace fs = std::filesystem;

using test::AsciiStl;
using test::BinaryStl;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

struct Outcome {
    int status;
    std::string out, err;
};

class Program : public test::InFolder {
protected:
    /// Runs the program in the test's folder, with `arguments` as a shell reads
    /// them. `setup` stands before it on the shell's line.
    Outcome Run(const std::string& arguments, const std::string& setup = "",
                const std::string& program = SECTION_PROGRAM) const {
        const std::string line = "cd '" + m_folder.string() + "' && " + setup + " '" + program +
                                 "' " + arguments + " >stdout.txt 2>stderr.txt </dev/null";
        const int raw = std::system(line.c_str());
        return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, test::Content(m_folder / "stdout.txt"),
                test::Content(m_folder / "stderr.txt")};
    }

    /// A failure says one line, leaves status 1, prints no table, and leaves no file
    /// in the output folder, whole or half.
    void ExpectFailure(const Outcome& outcome, const std::string& line) const {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "section: " + line + "\n");
        EXPECT_TRUE(!fs::exists(m_folder / "out") || fs::is_empty(m_folder / "out"));
    }

    std::vector<std::string> FilesIn(const std::string& folder) const {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(m_folder / folder)) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }
};

// ------------------------------------------------------------------------ good input

TEST_F(Program, CutsAnAsciiMesh) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    const Outcome outcome = Run("a.stl");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(
        outcome.out,
        AllOf(StartsWith("Mesh      a.stl\n          4 facets, 4 points;"), HasSubstr("20 layers"),
              EndsWith("Written   out/model.xml\n"
                       "          loaded again: the same bytes, and numbers within six digits\n"
                       "          out/section.svg\n")));
    EXPECT_THAT(FilesIn("out"), testing::UnorderedElementsAre("model.xml", "section.svg"));
}

TEST_F(Program, SaysTheSameOfABinaryMesh) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    const std::string ascii = Run("a.stl --without-input").out;
    Write("a.stl", BinaryStl(test::Tetrahedron(), 4, "solid a"));
    EXPECT_EQ(Run("a.stl --without-input").out, ascii);
}

TEST_F(Program, CutsByNumberOrByStep) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    EXPECT_THAT(Run("a.stl --layers 3").out,
                HasSubstr("2 layers along z, 2 thick; 3 knots from 0 to 4"));
    EXPECT_THAT(Run("a.stl --step 0.75").out, HasSubstr("6 layers along z, 0.75 thick"));
}

TEST_F(Program, WritesWhereItIsTold) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    EXPECT_THAT(Run("a.stl --out 'deep/er out'").out, HasSubstr("deep/er out/model.xml\n"));
    EXPECT_THAT(FilesIn("deep/er out"), testing::UnorderedElementsAre("model.xml", "section.svg"));
    EXPECT_FALSE(fs::exists(m_folder / "out"));
}

TEST_F(Program, ReadsWhatItHasWritten) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    const std::string cut = Run("a.stl").out;
    const Outcome read = Run("--read out/model.xml");
    EXPECT_EQ(read.status, 0);
    EXPECT_EQ(read.err, "");
    EXPECT_EQ(read.out, cut.substr(0, cut.find("\nWritten")));
}

TEST_F(Program, DrawsAgainFromAStoredMesh) {
    // Bounds that six digits don't tell.
    std::vector<Facet> facets = test::Ring();
    for (Facet& facet : facets) {
        for (Point& corner : facet) {
            corner[eAxisX] *= 1.2345678f;
        }
    }
    Write("a.stl", AsciiStl(facets));
    const std::string cut = Run("a.stl --layers 3").out;
    fs::remove(m_folder / "a.stl");
    const Outcome read = Run("--read out/model.xml --out again");
    EXPECT_EQ(read.status, 0) << read.err;
    EXPECT_EQ(read.out, cut.substr(0, cut.find("\nWritten")) + "\nWritten   again/section.svg\n");
    EXPECT_THAT(FilesIn("again"), testing::ElementsAre("section.svg"));
    EXPECT_EQ(test::Content(m_folder / "again" / "section.svg"),
              test::Content(m_folder / "out" / "section.svg"));
}

TEST_F(Program, StoresTheInputOrLeavesItOut) {
    Write("a.stl", BinaryStl(test::Tetrahedron()));
    EXPECT_EQ(Run("a.stl").status, 0);
    EXPECT_THAT(test::Content(m_folder / "out" / "model.xml"),
                AllOf(HasSubstr("<Size>284</Size>"), HasSubstr("<Bl>")));
    EXPECT_EQ(Run("a.stl --without-input").status, 0);
    EXPECT_THAT(test::Content(m_folder / "out" / "model.xml"), testing::Not(HasSubstr("<Bl>")));
}

TEST_F(Program, ReplacesAnOlderModel) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    Run("a.stl");
    EXPECT_EQ(Run("a.stl -l 4").status, 0);
    EXPECT_THAT(Run("--read out/model.xml").out, HasSubstr("4 layers"));
    EXPECT_THAT(FilesIn("out"), testing::UnorderedElementsAre("model.xml", "section.svg"));
    EXPECT_THAT(test::Content(m_folder / "out" / "section.svg"), HasSubstr("; 4 layers along z"));
}

TEST_F(Program, TakesAFlatMeshAOneFacetMeshAndADegenerateOne) {
    const Point p{1, 2, 3};
    for (const std::vector<Facet>& facets :
         {std::vector<Facet>{{Point{0, 0, 7}, Point{1, 0, 7}, Point{0, 1, 7}}},
          std::vector<Facet>{{p, p, p}}, std::vector<Facet>{{p, p, Point{0, 0, 0}}}}) {
        Write("odd.stl", BinaryStl(facets));
        const Outcome outcome = Run("odd.stl");
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_THAT(outcome.out, HasSubstr("1 facet, "));
        EXPECT_THAT(outcome.out, testing::Not(HasSubstr("nan")));
    }
}

TEST_F(Program, TakesAMeshWithAHole) {
    std::vector<Facet> facets = test::Ring();
    facets.erase(facets.begin() + 3);
    Write("hole.stl", BinaryStl(facets));
    const Outcome outcome = Run("hole.stl");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, testing::Not(HasSubstr("nan")));
    EXPECT_THAT(outcome.out, testing::Not(HasSubstr(" 0 crossings without a partner")));
    EXPECT_THAT(test::Content(m_folder / "out" / "section.svg"), HasSubstr("open chain"));
}

TEST_F(Program, KeepsItsNumbersInEveryLocale) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    const std::string usual = Run("a.stl").out;
    const std::string picture = test::Content(m_folder / "out" / "section.svg");
    EXPECT_EQ(Run("a.stl", "LC_ALL=de_DE.UTF-8").out, usual);
    EXPECT_EQ(test::Content(m_folder / "out" / "section.svg"), picture);
}

TEST_F(Program, TakesTheUsualMeshOrNamesThePackage) {
    const Outcome outcome = Run("");
    if (fs::exists("/usr/share/assimp/models/STL/Spider_binary.stl")) {
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_THAT(outcome.out, HasSubstr("1368 facets"));
    } else {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.err, HasSubstr("assimp-testmodels"));
    }
}

TEST_F(Program, HelpsOnDemand) {
    const Outcome outcome = Run("--help");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, StartsWith("Usage: section "));
    EXPECT_EQ(outcome.err, "");
}

// ------------------------------------------------------------------------- bad input

TEST_F(Program, RefusesWhatIsNoFile) {
    ExpectFailure(Run("none.stl"), "none.stl: no such file");
    ExpectFailure(Run("."), ".: a directory, not a file");
    ExpectFailure(Run("/dev/null"), "/dev/null: not a regular file");
}

TEST_F(Program, RefusesWhatIsNoStl) {
    Write("a.txt", "hello\n");
    ExpectFailure(Run("a.txt"),
                  "a.txt: byte 6: no STL file: it neither begins with 'solid' nor has the 84 bytes "
                  "of a binary header");
    Write("empty.stl", "");
    ExpectFailure(Run("empty.stl"), "empty.stl: byte 0: the file is empty");
}

TEST_F(Program, RefusesACountBeyondTheFile) {
    Write("a.stl", BinaryStl(test::Tetrahedron(), 4000000000));
    ExpectFailure(
        Run("a.stl"),
        "a.stl: byte 80: no STL file, or a damaged one: a facet count of 4000000000 takes "
        "200000000084 bytes, and the file has 284");
}

TEST_F(Program, RefusesACutOffAsciiFile) {
    const std::string text = AsciiStl(test::Tetrahedron());
    Write("a.stl", text.substr(0, text.find("endfacet")));
    ExpectFailure(Run("a.stl"), "a.stl: line 8: the file ends where 'endfacet' is due");
}

TEST_F(Program, RefusesANonNumber) {
    std::vector<Facet> facets = test::Tetrahedron();
    facets[0][0][0] = std::numeric_limits<float>::quiet_NaN();
    Write("b.stl", BinaryStl(facets));
    ExpectFailure(Run("b.stl"), "b.stl: byte 96: a coordinate is no finite number");
    Write("a.stl", AsciiStl(facets));
    ExpectFailure(Run("a.stl"),
                  "a.stl: line 4: the coordinate 'nan' is no finite number of single precision");
}

TEST_F(Program, RefusesAnEmptyMesh) {
    Write("a.stl", "solid\nendsolid\n");
    ExpectFailure(Run("a.stl"), "a.stl: line 3: the file ends without a facet");
    Write("b.stl", BinaryStl({}));
    ExpectFailure(Run("b.stl"), "b.stl: byte 80: the file has no facet");
}

TEST_F(Program, RefusesAStepTooSmallForTheMesh) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    ExpectFailure(Run("a.stl --step 1e-6"),
                  "a step of 1e-06 cuts a height of 4 into more than 100000 layers");
}

TEST_F(Program, RefusesMisuse) {
    ExpectFailure(Run("--nonsense"), "unknown option '--nonsense'; see section --help");
    ExpectFailure(Run("--read model.xml --step 1"),
                  "--read goes without --layers and --step; see section --help");
    ExpectFailure(Run("--layers none"),
                  "--layers takes a whole number from 1 to 100000, not 'none'; see section --help");
}

TEST_F(Program, SaysOneLineForANameOfTwo) {
    ExpectFailure(Run("'two\nlines.stl'"), "two�lines.stl: no such file");
}

TEST_F(Program, RefusesADamagedModelWithItsPlace) {
    Write("bad.xml", "<Section>\n\t<Model>\n</Section>\n");
    const Outcome outcome = Run("--read bad.xml");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, StartsWith("section: bad.xml: line 3, column "));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1);
    EXPECT_THAT(Run("--read none.xml").err, StartsWith("section: none.xml: "));
}

TEST_F(Program, KeepsTheOlderModelWhenTheMeshIsBad) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    Run("a.stl");
    const std::string older = test::Content(m_folder / "out" / "model.xml");
    const std::string picture = test::Content(m_folder / "out" / "section.svg");
    Write("a.stl", "solid\nfacet");
    EXPECT_EQ(Run("a.stl").status, 1);
    EXPECT_EQ(test::Content(m_folder / "out" / "model.xml"), older);
    EXPECT_EQ(test::Content(m_folder / "out" / "section.svg"), picture);
}

// ------------------------------------------------------------------------- own texts

TEST_F(Program, SaysWhichTextItLacks) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    for (const char* const name : {"Report", "Label"}) {
        const fs::path stripped = m_folder / "stripped";
        fs::copy_file(SECTION_PROGRAM, stripped, fs::copy_options::overwrite_existing);
        ZT::HXBlob nothing;
        ASSERT_TRUE(ZT::ResourceManager::UpdateResourceA(stripped.c_str(), name, "TEXT", nothing));
        ExpectFailure(Run("a.stl", "", "./stripped"), std::string("this program lacks its text '") +
                                                          name + "', the resource TEXT/" + name);
    }
}

// ------------------------------------------------------------------------- bad output

TEST_F(Program, LeavesNothingHalfWrittenWhereTheDiskEnds) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    // A limit on the size of files stands for the full disk.
    ExpectFailure(Run("a.stl --layers 1000", "trap '' XFSZ && ulimit -f 8 &&"),
                  "out/model.xml: File too large");
}

TEST_F(Program, LeavesNoHalfPictureWhereTheDiskEnds) {
    // Four kilobytes hold the model of one layer, and not its picture.
    Write("a.stl", AsciiStl(test::Ring()));
    const Outcome outcome =
        Run("a.stl --layers 1 --without-input", "trap '' XFSZ && ulimit -f 8 &&");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "section: out/section.svg: File too large\n");
    EXPECT_THAT(FilesIn("out"), testing::ElementsAre("model.xml"));
}

TEST_F(Program, RefusesAModelOfAnOlderVersion) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    Run("a.stl");
    std::string model = test::Content(m_folder / "out" / "model.xml");
    model.replace(model.find("<Version>4"), 10, "<Version>3");
    Write("older.xml", model);
    const Outcome outcome = Run("--read older.xml");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "section: older.xml: a model of version 3, and this program knows version 4\n");
}

TEST_F(Program, RefusesAFolderThatIsAFile) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    Write("file", "mine");
    const Outcome outcome = Run("a.stl --out file");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, StartsWith("section: file: can't be made a folder"));
    EXPECT_EQ(test::Content(m_folder / "file"), "mine");
}

TEST_F(Program, TellsThatItsTableCannotBeWritten) {
    Write("a.stl", AsciiStl(test::Tetrahedron()));
    const Outcome outcome = Run("a.stl 2>said.txt >/dev/full #");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(test::Content(m_folder / "said.txt"),
              "section: the standard output can't be written\n");
}

// --------------------------------------------------------------------- inside the program

TEST(UsualMesh, NamesThePackageWhereItIsMissing) {
    try {
        UsualMesh("/nowhere/Spider_binary.stl");
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(),
                     "no FILE is given, and /nowhere/Spider_binary.stl isn't there; install the "
                     "package assimp-testmodels or name an STL file");
    }
}

TEST(ProgressKind, IsSilentForASmallMeshAndNoTerminal) {
    EXPECT_EQ(ProgressKind(1000, true), ProgressLine::eTerminal);
    EXPECT_EQ(ProgressKind(1000, false), ProgressLine::eSilent);
    EXPECT_EQ(ProgressKind(std::uintmax_t{100} << 20, false), ProgressLine::ePlain);
}

}  // namespace
}  // namespace section
