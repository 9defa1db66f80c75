#include "section/Report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "section/TestFiles.h"

namespace section {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string Printed(const Mesh& mesh, const Cut& cut) {
    std::ostringstream out;
    PrintModel(out, Model("a.stl", mesh, cut));
    return out.str();
}

class ReportInFolder : public test::InFolder {};

/// A facet that stands on the ground with the given height.
Mesh Standing(float height) {
    return {{{Point{0, 0, 0}, Point{0, 0, height}, Point{height, 0, 0}}}};
}

TEST(Report, StandsInColumns) {
    EXPECT_EQ(Printed(Mesh{test::Tetrahedron()}, Cut{.m_count = 2}),
              "Mesh      a.stl\n"
              "          4 facets, 4 points; lengths in STL units\n"
              "          3 facing sideways, 1 horizontal, 0 degenerate\n"
              "Input     not stored with the model\n"
              "Grid      2 layers along z, 2 thick; 3 knots from 0 to 4\n"
              "          a facet covers 2 layers at most: 1 to 2\n"
              "Scan      64 lines along x on each layer, 0.03125 apart\n"
              "          0 slivers cleaned away, 0 crossings without a partner\n"
              "\n"
              "Bounds             from           to       length\n"
              "         x      0.00000      1.00000      1.00000\n"
              "         y      0.00000      2.00000      2.00000\n"
              "         z      0.00000      4.00000      4.00000\n"
              "\n"
              "Layers             from           to  facets    facing (degrees) loops  open       "
              "length  convex\n"
              "         1      0.00000      2.00000       4     180.0° to 26.6°     1     0      "
              "3.92705     3/3\n"
              "         2      2.00000      4.00000       3     180.0° to 26.6°     1     0      "
              "1.30902     3/3\n"
              "\n"
              "Middle         material        voids    share  carried   odd   reached     free    "
              "     hardest way\n"
              "         1      18.0000      46.0000    28.1%        -     0       1/1   360.0°    "
              "       all round\n"
              "         2       2.0000      62.0000     3.1%   100.0%     0       1/1   360.0°    "
              "       all round\n");
}

TEST(Report, KeepsAForeignNameOnItsLine) {
    Model model("a.stl", Standing(1), {});
    model.m_source = "two\nlines\xC2\x9B";
    std::ostringstream out;
    PrintModel(out, model);
    EXPECT_THAT(out.str(), testing::StartsWith("Mesh      two�lines�\n"));
}

TEST_F(ReportInFolder, TellsWhatIsStoredOfTheInput) {
    Model model("a.stl", Standing(1), {});
    const auto printed = [&] {
        std::ostringstream out;
        PrintModel(out, model);
        return out.str();
    };
    model.m_input = Input(Write("a.stl", "seven b"));
    EXPECT_THAT(printed(), HasSubstr("\nInput     7 bytes, stored with the model\n"));

    // A file with a hole, which takes no room.
    const std::filesystem::path large = Write("large.stl", "");
    std::filesystem::resize_file(large, Input::kMost + 1);
    model.m_input = Input(large);
    EXPECT_THAT(printed(), HasSubstr("\nInput     67108865 bytes, not stored with the model: more "
                                     "than 67108864\n"));
}

TEST(Report, TellsOneFacetAndOneLayer) {
    const std::string printed = Printed(Standing(1), Cut{.m_count = 1});
    EXPECT_THAT(printed, HasSubstr(" 1 facet, 3 points;"));
    EXPECT_THAT(printed, HasSubstr(" 1 layer along z"));
}

TEST(Report, HasSixDigitsForTheLongestLength) {
    EXPECT_THAT(Printed(Standing(123.456f), {}), HasSubstr(" 123.456 "));
    EXPECT_THAT(Printed(Standing(0.0123456f), {}), HasSubstr(" 0.0123456 "));
    EXPECT_THAT(Printed(Standing(123456), {}), HasSubstr(" 123456 "));
}

TEST(Report, TellsHugeAndTinyLengthsWithExponents) {
    EXPECT_THAT(Printed(Standing(2.5e30f), {}), HasSubstr(" 2.5e+30 "));
    EXPECT_THAT(Printed(Standing(2.5e-6f), {}), HasSubstr(" 2.5e-06 "));
}

TEST(Report, TellsAMeshOfNoExtent) {
    EXPECT_THAT(Printed(Standing(0), {}), HasSubstr("z      0.00000      0.00000      0.00000"));
}

TEST(Report, ShowsAllOfAFewLayers) {
    const std::string printed = Printed(Standing(1), Cut{.m_count = 24});
    EXPECT_THAT(printed, HasSubstr("\n        12 "));
    EXPECT_THAT(printed, Not(HasSubstr("more")));
}

TEST(Report, LeavesOutTheMiddleOfManyLayers) {
    const std::string printed = Printed(Standing(1), Cut{.m_count = 100});
    EXPECT_THAT(printed, HasSubstr("\n        10 "));
    EXPECT_THAT(printed, Not(HasSubstr("\n        11 ")));
    EXPECT_THAT(printed, HasSubstr("\n       ...  80 more\n        91 "));
    EXPECT_THAT(printed.substr(printed.find("Middle")),
                HasSubstr("\n       ...  80 more\n        91 "));
    EXPECT_THAT(printed, HasSubstr("\n       100 "));
}

TEST(Report, TellsALayerThatNothingMeets) {
    const std::vector<Facet> facets{{Point{0, 0, 0}, Point{0, 0, 0.1f}, Point{0, 0, 0}},
                                    {Point{0, 0, 1}, Point{0, 0, 1}, Point{0, 0, 1}}};
    EXPECT_THAT(Printed(facets, Cut{.m_count = 4}),
                HasSubstr(" 0                none     0     0      0.00000       -\n"));
}

TEST(Report, TellsALayerThatHasNothingAtItsMiddle) {
    const std::string printed =
        Printed(Mesh{{{Point{0, 0, 0}, Point{1, 0, 0}, Point{0, 1, 0}}}}, Cut{.m_count = 1});
    EXPECT_THAT(printed, HasSubstr("\n         1       0.0000      64.0000     0.0%        -     0 "
                                   "        -        -                none\n"));
}

TEST(Report, TellsThatThereAreNoScanLinesOverFlatBounds) {
    const std::string printed = Printed(Standing(1), Cut{.m_count = 1});
    EXPECT_THAT(printed, HasSubstr("Scan      no lines: the bounds are flat along x or y\n"));
    EXPECT_THAT(printed, HasSubstr("\n         1      0.00000      0.00000        -        -     0 "
                                   "      1/1   360.0°           all round\n"));
}

TEST(Report, TellsCrossingsWithoutAPartnerAndWhatIsNotReached) {
    std::vector<Facet> facets = test::Cube();
    facets.erase(facets.begin() + 2, facets.begin() + 4);
    const std::string open = Printed(Mesh{facets}, Cut{.m_count = 1});
    EXPECT_THAT(open, HasSubstr("0 slivers cleaned away, 64 crossings without a partner\n"));
    EXPECT_THAT(open, HasSubstr("    64       1/1 "));
    EXPECT_THAT(Printed(Mesh{test::Ring()}, Cut{.m_count = 1}),
                HasSubstr(" 88.5%        -     0       1/2   180.0°           all round\n"));
}

TEST(Report, TellsArcsInDegrees) {
    EXPECT_THAT(Printed(Mesh{test::Cube()}, {}), HasSubstr("      0.0° to -90.0° "));
    EXPECT_THAT(Printed(Standing(1), {}), HasSubstr("       90.0° "));
}

TEST(Report, TellsAnArcOverTheSeam) {
    const Mesh mesh{{{Point{0, 0, 0}, Point{0.173648f, -0.984808f, 0}, Point{0, 0, 1}},
                     {Point{0, 0, 0}, Point{-0.173648f, -0.984808f, 0}, Point{0, 0, 1}}}};
    EXPECT_THAT(Printed(mesh, Cut{.m_count = 1}), HasSubstr("  170.0° to -170.0° "));
}

TEST(Report, FitsAHundredColumns) {
    std::vector<Facet> facets = test::Tetrahedron();
    for (Facet& facet : facets) {
        for (Point& corner : facet) {
            corner = {-1.234567e-30f * corner[0], -1.234567e-30f * corner[1], 9.87654e30f};
        }
    }
    std::istringstream printed(Printed(Mesh{facets}, {}));
    for (std::string line; std::getline(printed, line);) {
        EXPECT_LE(line.size(), 102u) << line;
    }
}

}  // namespace
}  // namespace section
