#include "section/StlReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <limits>
#include <sstream>
#include <string>

#include "section/BlockInput.h"
#include "section/Failure.h"
#include "section/TestFiles.h"

namespace section {
namespace {

using test::AsciiStl;
using test::BinaryStl;
using test::Tetrahedron;
using testing::HasSubstr;
using testing::StartsWith;

std::vector<Facet> Read(const std::string& bytes) {
    std::istringstream in(bytes);
    return test::FacetsOf(ReadStl(in, bytes.size()));
}

std::string ReadFailure(const std::string& bytes) {
    try {
        Read(bytes);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "no failure";
}

/// An ASCII file of one facet whose second corner, on line 5, is `vertex`.
std::string WithVertex(const std::string& vertex) {
    return "solid s\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\n" + vertex +
           "\nvertex 0 1 0\nendloop\nendfacet\nendsolid s\n";
}

Point SecondCorner(const std::string& vertex) {
    return Read(WithVertex(vertex)).at(0)[1];
}

// ------------------------------------------------------------------- good files

TEST(StlReader, ReadsBinaryFacetsInTheirOrder) {
    EXPECT_EQ(Read(BinaryStl(Tetrahedron())), Tetrahedron());
}

TEST(StlReader, ReadsAsciiFacetsInTheirOrder) {
    EXPECT_EQ(Read(AsciiStl(Tetrahedron())), Tetrahedron());
}

TEST(StlReader, TakesABinaryFileWhoseHeaderBeginsWithSolid) {
    EXPECT_EQ(Read(BinaryStl(Tetrahedron(), 4, "solid tetrahedron")), Tetrahedron());
    EXPECT_EQ(Read(BinaryStl(Tetrahedron(), 4, "solid" + std::string(75, ' '))), Tetrahedron());
}

TEST(StlReader, JoinsSeveralSolids) {
    const std::string one = AsciiStl(Tetrahedron());
    EXPECT_EQ(Read(one + one).size(), 8u);
    EXPECT_EQ(Read(one + "solid empty\nendsolid\n").size(), 4u);
}

TEST(StlReader, SkipsAnyNameOfASolid) {
    std::string text = AsciiStl(Tetrahedron());
    text.replace(0, text.find('\n'), "solid\tfacet normal " + std::string(5000, 'x'));
    EXPECT_EQ(Read(text).size(), 4u);
    text.replace(0, text.find('\n'), "solid");
    EXPECT_EQ(Read(text).size(), 4u);
}

TEST(StlReader, TakesWordsInAnyCase) {
    const std::string text =
        "SOLID S\nFACET NORMAL 0 0 1\nOUTER LOOP\nVERTEX 0 0 0\nVertex 1E0 0 0\nvertex 0 1 0\n"
        "ENDLOOP\nENDFACET\nENDSOLID S\n";
    EXPECT_EQ(Read(text), (std::vector<Facet>{{Point{0, 0, 0}, Point{1, 0, 0}, Point{0, 1, 0}}}));
}

TEST(StlReader, TakesAnyWhiteSpaceAndABlankStart) {
    EXPECT_EQ(Read("\n \t" + AsciiStl(Tetrahedron())), Tetrahedron());
    EXPECT_EQ(SecondCorner("\tvertex\t 1\n2   3  "), (Point{1, 2, 3}));
}

TEST(StlReader, TakesEveryKindOfLineEnd) {
    for (const std::string end : {"\r\n", "\r", "\n\n"}) {
        std::string text;
        for (const char c : AsciiStl(Tetrahedron())) {
            text += c == '\n' ? end : std::string(1, c);
        }
        EXPECT_EQ(Read(text), Tetrahedron());
    }
}

TEST(StlReader, SkipsAByteOrderMark) {
    EXPECT_EQ(Read("\xEF\xBB\xBF" + AsciiStl(Tetrahedron())), Tetrahedron());
}

TEST(StlReader, NeedsNoLineEndAfterTheLastWord) {
    std::string text = AsciiStl(Tetrahedron());
    text.resize(text.rfind("endsolid") + 8);
    EXPECT_EQ(Read(text), Tetrahedron());
}

TEST(StlReader, LeavesNormalsUnread) {
    std::string text = AsciiStl(Tetrahedron());
    text.replace(text.find("0 0 0"), 5, "nan -nan(ind) junk");
    EXPECT_EQ(Read(text), Tetrahedron());

    std::string bytes = BinaryStl(Tetrahedron());
    bytes.replace(84, 12, 12, '\xFF');
    EXPECT_EQ(Read(bytes), Tetrahedron());
}

TEST(StlReader, TakesEveryFormOfANumber) {
    EXPECT_EQ(SecondCorner("vertex 1.5 -2.5e+1 +3E-1"), (Point{1.5f, -25.0f, 0.3f}));
    EXPECT_EQ(SecondCorner("vertex .5 5. -0"), (Point{0.5f, 5.0f, 0.0f}));
    EXPECT_EQ(SecondCorner("vertex 3.4028234e38 0 0")[0], std::numeric_limits<float>::max());
}

TEST(StlReader, RoundsATinyNumberToZero) {
    EXPECT_EQ(SecondCorner("vertex 1e-60 1e-400 -1E-400"), (Point{0, 0, 0}));
    EXPECT_EQ(SecondCorner("vertex 0.00000000000000000000000000000000000000000000000001 0 0"),
              (Point{0, 0, 0}));
}

TEST(StlReader, TakesDegenerateFacets) {
    const Point p{1, 2, 3};
    const std::vector<Facet> facets{{p, p, p}, {p, p, Point{0, 0, 0}}};
    EXPECT_EQ(Read(BinaryStl(facets)), facets);
    EXPECT_EQ(Read(AsciiStl(facets)), facets);
}

TEST(StlReader, GivesBackEveryFacetOfBothForms) {
    EXPECT_TRUE(rc::check("written and read facets are the same", [] {
        const auto coordinates = *rc::gen::container<std::vector<float>>(
            9 * *rc::gen::inRange<std::size_t>(1, 40),
            rc::gen::map(rc::gen::arbitrary<int>(),
                         [](int i) { return static_cast<float>(i) / 1024.0f; }));
        std::vector<Facet> facets(coordinates.size() / 9);
        std::memcpy(facets.data(), coordinates.data(), coordinates.size() * sizeof(float));
        RC_ASSERT(Read(BinaryStl(facets)) == facets);
        RC_ASSERT(Read(AsciiStl(facets)) == facets);
    }));
}

TEST(StlReader, ReadsFilesLongerThanABlock) {
    const std::vector<Facet> facets(30000, Tetrahedron().back());
    EXPECT_EQ(Read(BinaryStl(facets)), facets);
    EXPECT_EQ(Read(AsciiStl(facets)), facets);
}

TEST(StlReader, TellsHowFarItIs) {
    const std::string bytes = BinaryStl(std::vector<Facet>(50000));
    std::istringstream in(bytes);
    std::vector<std::uint64_t> places;
    ReadStl(in, bytes.size(), [&](std::uint64_t done, std::uint64_t total) {
        EXPECT_EQ(total, bytes.size());
        places.push_back(done);
    });
    EXPECT_GT(places.size(), 2u);
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
    EXPECT_EQ(places.back(), bytes.size());
}

// -------------------------------------------------------------- bad binary files

TEST(StlReader, RefusesACountBeyondTheFile) {
    EXPECT_EQ(ReadFailure(BinaryStl(Tetrahedron(), 5)),
              "byte 80: no STL file, or a damaged one: a facet count of 5 takes 334 bytes, and "
              "the file has 284");
    EXPECT_THAT(ReadFailure(BinaryStl(Tetrahedron(), 0xFFFFFFFF)),
                HasSubstr("a facet count of 4294967295 takes 214748364834 bytes"));
}

TEST(StlReader, RefusesBytesBehindTheLastFacet) {
    EXPECT_THAT(ReadFailure(BinaryStl(Tetrahedron()) + "x"),
                HasSubstr("a facet count of 4 takes 284 bytes, and the file has 285"));
}

TEST(StlReader, RefusesACutOffBinaryFileThatBeginsWithSolid) {
    const std::string whole = BinaryStl(Tetrahedron(), 4, "solid tetrahedron");
    EXPECT_THAT(ReadFailure(whole.substr(0, 200)),
                StartsWith("byte 80: no STL file, or a damaged"));
    EXPECT_THAT(ReadFailure(whole.substr(0, 60)), StartsWith("byte 60: no STL file"));
}

TEST(StlReader, RefusesABinaryFileThatEndsEarly) {
    const std::string bytes = BinaryStl(Tetrahedron());
    std::istringstream in(bytes.substr(0, 150));
    try {
        ReadStl(in, bytes.size());
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(), "byte 150: the file ends within a facet");
    }
}

TEST(StlReader, RefusesANonNumberInABinaryFile) {
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
          -std::numeric_limits<float>::infinity()}) {
        std::vector<Facet> facets = Tetrahedron();
        facets[2][1][2] = bad;
        // Header, two records, the normal, one corner and two coordinates.
        EXPECT_EQ(ReadFailure(BinaryStl(facets)), "byte " +
                                                      std::to_string(84 + 2 * 50 + 12 + 12 + 8) +
                                                      ": a coordinate is no finite number");
    }
}

TEST(StlReader, RefusesAFileWithoutFacets) {
    EXPECT_EQ(ReadFailure(BinaryStl({})), "byte 80: the file has no facet");
    EXPECT_EQ(ReadFailure("solid s\nendsolid s\n"), "line 3: the file ends without a facet");
}

TEST(StlReader, RefusesWhatIsNoStl) {
    EXPECT_EQ(ReadFailure(""), "byte 0: the file is empty");
    EXPECT_EQ(ReadFailure("hello"),
              "byte 5: no STL file: it neither begins with 'solid' nor has the 84 bytes of a "
              "binary header");
    EXPECT_THAT(ReadFailure("<?xml version=\"1.0\"?>" + std::string(500, 'x')),
                StartsWith("byte 80: no STL file"));
    EXPECT_THAT(ReadFailure("solidity is a language\n"), HasSubstr("'solid' is due"));
}

// --------------------------------------------------------------- bad ASCII files

TEST(StlReader, RefusesAnAsciiFileCutOffAfterAnyWord) {
    const std::string text = AsciiStl(Tetrahedron());
    const std::size_t last = text.rfind("endsolid");
    for (std::size_t end = text.find('\n'); end < last; end = text.find_first_of(" \n", end + 1)) {
        EXPECT_THAT(ReadFailure(text.substr(0, end)), HasSubstr("the file ends where"))
            << text.substr(0, end);
    }
    EXPECT_EQ(ReadFailure("solid s"), "line 1: the file ends where 'facet' is due");
}

TEST(StlReader, RefusesAWordThatIsNotDue) {
    EXPECT_EQ(ReadFailure(WithVertex("endloop")), "line 5: 'vertex' is due, not 'endloop'");
    EXPECT_EQ(ReadFailure(WithVertex("vertex 1 2 3\nvertex 4 5 6")),
              "line 7: 'endloop' is due, not 'vertex'");
    EXPECT_EQ(ReadFailure("solid s\nendfacet"), "line 2: 'facet' is due, not 'endfacet'");
    EXPECT_EQ(ReadFailure("solid s\nendsolid\nfacet"), "line 3: 'solid' is due, not 'facet'");
    EXPECT_EQ(ReadFailure("solid s\nfacet normal 0 0\nouter loop\n"),
              "line 3: 'outer' is due, not 'loop'");
}

TEST(StlReader, RefusesWhatIsNoNumber) {
    EXPECT_EQ(ReadFailure(WithVertex("vertex 0 zero 0")),
              "line 5: a coordinate is due, not 'zero'");
    for (const std::string word : {"1,5", "1.5mm", "0x1p3", "--1", "+-1", "+", "e5", "1e"}) {
        EXPECT_EQ(ReadFailure(WithVertex("vertex " + word + " 0 0")),
                  "line 5: a coordinate is due, not '" + word + "'");
    }
    EXPECT_EQ(ReadFailure(WithVertex("vertex 1 2")), "line 6: a coordinate is due, not 'vertex'");
}

TEST(StlReader, RefusesANonNumberInAnAsciiFile) {
    for (const std::string word :
         {"nan", "NaN", "-nan", "inf", "-Infinity", "1e39", "-3.5e38", "1e400", "-1E+400"}) {
        EXPECT_EQ(ReadFailure(WithVertex("vertex " + word + " 0 0")),
                  "line 5: the coordinate '" + word + "' is no finite number of single precision");
    }
}

TEST(StlReader, CountsLinesByEveryKindOfLineEnd) {
    EXPECT_THAT(ReadFailure("solid s\r\n\r\nbad"), StartsWith("line 3:"));
    EXPECT_THAT(ReadFailure("solid s\r\rbad"), StartsWith("line 3:"));
    EXPECT_THAT(ReadFailure("\r\nsolid s\r\nfacet\rbad\nworse"), StartsWith("line 4:"));
}

TEST(StlReader, RefusesAnEndlessWord) {
    EXPECT_EQ(ReadFailure("solid s\n" + std::string(129, 'x')),
              "line 2: no STL text: a word of more than 128 characters");
    EXPECT_THAT(ReadFailure("solid s\n" + std::string(128, 'x')), HasSubstr("'facet' is due, not"));
}

TEST(StlReader, KeepsForeignBytesOutOfItsMessage) {
    EXPECT_EQ(ReadFailure("solid s\n\x1b[2J\xFF"), "line 2: 'facet' is due, not '�[2J�'");
}

// -------------------------------------------------------------------------- files

using StlFile = test::InFolder;

std::string FileFailure(const std::filesystem::path& path) {
    try {
        ReadStlFile(path);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "no failure";
}

TEST_F(StlFile, IsReadByItsPath) {
    EXPECT_TRUE(ReadStlFile(Write("Würfel 1.stl", AsciiStl(Tetrahedron()))) == Tetrahedron());
    EXPECT_TRUE(ReadStlFile(Write("b.stl", BinaryStl(Tetrahedron()))) == Tetrahedron());
}

TEST_F(StlFile, IsNamedInFrontOfTheFailure) {
    const auto path = Write("cut.stl", "solid s\nfacet");
    EXPECT_EQ(FileFailure(path), path.string() + ": line 2: the file ends where 'normal' is due");
}

TEST_F(StlFile, MustBeAFile) {
    EXPECT_EQ(FileFailure(m_folder / "none.stl"),
              (m_folder / "none.stl").string() + ": no such file");
    EXPECT_EQ(FileFailure(m_folder), m_folder.string() + ": a directory, not a file");
    EXPECT_EQ(FileFailure("/dev/null"), "/dev/null: not a regular file");
}

// ---------------------------------------------------------------------- the window

TEST(BlockInput, ShowsWordsThatStraddleItsBlocks) {
    std::string bytes;
    for (int i = 0; i < 1000; ++i) {
        bytes += std::to_string(100 + i % 900);
    }
    std::istringstream in(bytes);
    BlockInput input(in, bytes.size(), {}, 257);
    std::string seen;
    for (auto view = input.Peek(3); !view.empty(); view = input.Peek(3)) {
        ASSERT_GE(view.size(), 3u);
        EXPECT_EQ(input.Offset(), seen.size());
        seen += view.substr(0, 3);
        input.Skip(3);
    }
    EXPECT_EQ(seen, bytes);
    EXPECT_EQ(input.Offset(), bytes.size());
}

}  // namespace
}  // namespace section
