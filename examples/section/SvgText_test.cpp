#include "section/SvgText.h"

#include <gtest/gtest.h>
#include <zt/numerics/Constants.h>

namespace section {
namespace {

TEST(SvgText, HasPixelsWithOneDecimalAtMost) {
    EXPECT_EQ(Pixels(12.0), "12");
    EXPECT_EQ(Pixels(12.34), "12.3");
    EXPECT_EQ(Pixels(-0.01), "0");
    EXPECT_EQ(Pixels(-2.96), "-3");
    EXPECT_EQ(Pixels(1000000.0), "1000000");
}

TEST(SvgText, EscapesWhatXmlReserves) {
    EXPECT_EQ(Escaped("a<b>&\"c\"'d'"), "a&lt;b&gt;&amp;&quot;c&quot;&apos;d&apos;");
    EXPECT_EQ(Escaped("Würfel"), "Würfel");
    EXPECT_EQ(Escaped("two\nlines\x01"), "two�lines�");
}

TEST(SvgText, WritesElements) {
    EXPECT_EQ(SvgElement("rect", {{"width", "3"}, {"id", "a\"b"}}),
              "<rect width=\"3\" id=\"a&quot;b\"/>\n");
    EXPECT_EQ(SvgElement("g", {}, "<x/>"), "<g><x/></g>\n");
    EXPECT_EQ(MovedGroup({1, 2.5}, "<x/>"), "<g transform=\"translate(1 2.5)\">\n<x/></g>\n");
}

TEST(SvgText, WritesWords) {
    EXPECT_EQ(Words({1, 2}, "a & b", 12, "#000000", true, "end"),
              "<text x=\"1\" y=\"2\" font-size=\"12\" font-weight=\"bold\" fill=\"#000000\" "
              "text-anchor=\"end\">a &amp; b</text>\n");
    EXPECT_EQ(Words({1, 2}, "", 12, "#000000"), "");
}

TEST(LinePath, GoesThroughTheSpots) {
    EXPECT_EQ(LinePath({{0, 0}, {10, 0}, {10, 5.25}}, true, 1), "M0 0 10 0 10 5.2Z");
    EXPECT_EQ(LinePath({{0, 0}, {10, 0}}, false, 1), "M0 0 10 0");
}

TEST(LinePath, PassesOverSpotsThatAreTooClose) {
    EXPECT_EQ(LinePath({{0, 0}, {0.5, 0.5}, {2, 0}, {2.5, 0}, {3.5, 0}}, false, 1),
              "M0 0 2 0 3.5 0");
    EXPECT_EQ(LinePath({{0, 0}, {2, 0}, {2.5, 0}}, false, 1), "M0 0 2 0 2.5 0");
}

TEST(LinePath, IsNothingForALineTooShortToSee) {
    EXPECT_EQ(LinePath({{0, 0}, {0.5, 0}, {0.5, 0.5}}, true, 1), "");
    EXPECT_EQ(LinePath({}, true, 1), "");
}

TEST(SectorPath, RunsCounterClockwiseOnThePage) {
    // A quarter from the right to the top, in three arcs of 30 degrees.
    EXPECT_EQ(SectorPath({10, 10}, 10, 0, ZT::zPi / 2),
              "M10 10L20 10A10 10 0 0 0 18.7 5A10 10 0 0 0 15 1.3A10 10 0 0 0 10 0Z");
}

TEST(SectorPath, IsADiscForAWholeTurn) {
    EXPECT_EQ(SectorPath({10, 10}, 10, 0, ZT::z2Pi),
              "M20 10A10 10 0 0 0 5 1.3A10 10 0 0 0 5 18.7A10 10 0 0 0 20 10Z");
}

}  // namespace
}  // namespace section
