#include "section/Picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/xml/Dom.h>

#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "section/Failure.h"
#include "section/TestFiles.h"

namespace section {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

Model Modelled(const Mesh& mesh, const Cut& cut, const std::string& source = "a.stl") {
    return Model(source, mesh, cut);
}

std::string Drawing(const std::vector<Facet>& facets, const Cut& cut,
                    const std::string& source = "a.stl") {
    const Mesh mesh{facets};
    return DrawModel(Modelled(mesh, cut, source));
}

std::size_t CountOf(const std::string& text, std::string_view word) {
    std::size_t count = 0;
    for (std::size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) {
        ++count;
    }
    return count;
}

/// A stack of cubes of width 1 on top of one another, and a wide one of width 3 at `wide`.
std::vector<Facet> Tower(int height, int wide) {
    std::vector<Facet> facets;
    for (int i = 0; i < height; ++i) {
        for (Facet facet : test::Cube()) {
            for (Point& corner : facet) {
                const float factor = i == wide ? 3.0f : 1.0f;
                corner = {corner[0] * factor, corner[1] * factor,
                          corner[2] + static_cast<float>(i)};
            }
            facets.push_back(facet);
        }
    }
    return facets;
}

// ------------------------------------------------------------------------ choosing layers

TEST(TellingLayers, AreAllOfAFew) {
    const Mesh mesh{Tower(4, 1)};
    EXPECT_THAT(TellingLayers(Modelled(mesh, {.m_step = 1.0}).m_layers, 12),
                ElementsAre(0, 1, 2, 3));
}

TEST(TellingLayers, LeaveOutThoseWithoutAContour) {
    std::vector<Facet> facets = test::Cube();
    for (Facet facet : test::Cube()) {
        for (Point& corner : facet) {
            corner[eAxisZ] += 3;
        }
        facets.push_back(facet);
    }
    const Mesh mesh{facets};
    EXPECT_THAT(TellingLayers(Modelled(mesh, {.m_step = 1.0}).m_layers, 12), ElementsAre(0, 3));
}

TEST(TellingLayers, StandWhereTheShareOfMaterialChanges) {
    const Mesh mesh{Tower(40, 20)};
    const std::vector<std::size_t> telling =
        TellingLayers(Modelled(mesh, {.m_step = 1.0}).m_layers, 6);
    ASSERT_EQ(telling.size(), 6u);
    EXPECT_EQ(telling.front(), 0u);
    EXPECT_EQ(telling.back(), 39u);
    EXPECT_THAT(telling, testing::Contains(20u));
    EXPECT_TRUE(std::is_sorted(telling.begin(), telling.end()));
}

TEST(TellingLayers, AreSpreadEvenlyWhereNothingChanges) {
    const Mesh mesh{test::Cube()};
    EXPECT_THAT(TellingLayers(Modelled(mesh, {.m_step = 0.1}).m_layers, 4),
                ElementsAre(0, 3, 6, 9));
}

TEST(TellingLayers, OfAFlatMeshAreNone) {
    const Mesh mesh{{{Point{0, 0, 7}, Point{1, 0, 7}, Point{0, 1, 7}}}};
    EXPECT_THAT(TellingLayers(Modelled(mesh, {}).m_layers, 12), testing::IsEmpty());
}

// ------------------------------------------------------------------------------- drawing

void ExpectXml(const std::string& svg) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    ASSERT_TRUE(document->loadXML(svg)) << document->parseError().reason();
    EXPECT_EQ(std::string(document->documentElement()->nameView()), "svg");
}

TEST(Picture, IsAnSvgDocumentOfItsOwn) {
    const std::string svg = Drawing(test::Ring(), {.m_step = 0.5});
    ExpectXml(svg);
    EXPECT_THAT(svg, StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"1200\""));
    EXPECT_THAT(svg, AllOf(Not(HasSubstr("href")), Not(HasSubstr("url(")), Not(HasSubstr("nan")),
                           Not(HasSubstr("inf\""))));
    EXPECT_EQ(CountOf(svg, "http"), 1u);
}

TEST(Picture, TellsWhatItShows) {
    const std::string svg = Drawing(test::Ring(), {.m_step = 0.5});
    EXPECT_THAT(svg, AllOf(HasSubstr(">Sections of a.stl, "),
                           HasSubstr(">16 facets; 2 layers along "
                                     "z, each 0.5 thick, from z = "
                                     "0 to 1; lengths in STL "
                                     "units<"),
                           HasSubstr(">Every layer with a contour is shown.<"),
                           HasSubstr(">Layer 1, z = 0.25<"), HasSubstr(">Layer 2, z = 0.75<")));
    // 42 lines of 3 and 22 of 2, out of 64 of 3.
    EXPECT_THAT(svg, HasSubstr(">88.5 % material<"));
    EXPECT_THAT(svg, HasSubstr(">100.0 % of it carried<"));
    EXPECT_EQ(CountOf(svg, "of it carried"), 1u);
    EXPECT_THAT(svg, HasSubstr(">1 of 2 contours reached<"));
}

TEST(Picture, HasALegendOfWhatOccurs) {
    const std::string ring = Drawing(test::Ring(), {.m_step = 0.5});
    EXPECT_THAT(ring, AllOf(HasSubstr(">material<"), HasSubstr(">void inside the bounds<"),
                            HasSubstr(">contour<"), HasSubstr(">directions that reach the dot<"),
                            HasSubstr(">point that no direction reaches<")));
    EXPECT_THAT(ring, AllOf(Not(HasSubstr("open chain")), Not(HasSubstr("right below"))));
    EXPECT_THAT(ring, HasSubstr(">0.5 STL units<"));

    const std::string tower = Drawing(Tower(2, 1), {.m_step = 1.0});
    EXPECT_THAT(tower, AllOf(HasSubstr(">material with nothing right below it<"),
                             HasSubstr(">The lowest layer is drawn as if it were carried.<")));
    EXPECT_THAT(tower, Not(HasSubstr("no direction")));
}

TEST(Picture, DrawsOneFanForEachFreePoint) {
    // A square: eight points, each at the distance of half a side from the next.
    const std::string svg = Drawing(test::Cube(), {.m_step = 1.0});
    EXPECT_EQ(CountOf(svg, "<circle"), 8u + 1u);
}

TEST(Picture, SaysWhichOfManyLayersItShows) {
    EXPECT_THAT(Drawing(test::Cube(), {.m_step = 0.01}),
                HasSubstr(">12 of 100 layers are shown, closer together where"));
    EXPECT_EQ(CountOf(Drawing(test::Cube(), {.m_step = 0.01}), ">Layer "), 12u);
}

TEST(Picture, ShowsAnOpenChain) {
    std::vector<Facet> facets = test::Tetrahedron();
    facets.pop_back();
    const std::string svg = Drawing(facets, {.m_count = 2});
    ExpectXml(svg);
    EXPECT_THAT(svg, AllOf(HasSubstr(">open chain: the mesh has a hole<"), HasSubstr(" open<"),
                           HasSubstr("An open line crosses")));
}

TEST(Picture, EscapesTheNameOfTheMesh) {
    const std::string svg = Drawing(test::Cube(), {}, "there/a <b> & \x01.stl");
    ExpectXml(svg);
    EXPECT_THAT(svg, HasSubstr(">Sections of a &lt;b&gt; &amp; �.stl, "));
}

TEST(Picture, TellsThatThereIsNothingToShow) {
    const Point p{1, 2, 3};
    for (const Facet& facet :
         {Facet{Point{0, 0, 7}, Point{1, 0, 7}, Point{0, 1, 7}}, Facet{p, p, p}}) {
        const std::string svg = Drawing({facet}, {});
        ExpectXml(svg);
        EXPECT_THAT(svg, HasSubstr(">No layer has a contour at its middle height.<"));
    }
}

TEST(Picture, TakesBoundsThatAreFlatAlongAnAxis) {
    for (const Facet& facet : {Facet{Point{0, 0, 0}, Point{3, 0, 0}, Point{0, 0, 1}},
                               Facet{Point{0, 0, 0}, Point{0, 3, 0}, Point{0, 0, 1}},
                               Facet{Point{0, 0, 0}, Point{1e-7f, 3, 0}, Point{0, 0, 1}}}) {
        const std::string svg = Drawing({facet}, {.m_count = 2});
        ExpectXml(svg);
        EXPECT_THAT(svg, AllOf(HasSubstr(">open chain"), Not(HasSubstr("nan"))));
    }
}

TEST(Picture, TakesMeshesOfEverySize) {
    for (const float size : {1e-30f, 1e-6f, 1e30f, 1e38f}) {
        std::vector<Facet> facets = test::Tetrahedron();
        for (Facet& facet : facets) {
            for (Point& corner : facet) {
                corner = {corner[0] * (size / 8), corner[1] * (size / 8), corner[2] * (size / 8)};
            }
        }
        const std::string svg = Drawing(facets, {});
        ExpectXml(svg);
        EXPECT_THAT(svg, AllOf(Not(HasSubstr("nan")), Not(HasSubstr("inf\"")))) << size;
        EXPECT_LT(svg.size(), 100000u) << size;
    }
}

TEST(Picture, OfManyContoursStaysWithinAFewHundredKilobytes) {
    // 80 times 80 posts, each with a contour on each layer.
    std::vector<Facet> facets;
    for (int i = 0; i < 6400; ++i) {
        for (Facet facet : test::Walls(0.3f)) {
            for (Point& corner : facet) {
                corner[eAxisX] += static_cast<float>(i % 80);
                corner[eAxisY] += static_cast<float>(i / 80);
            }
            facets.push_back(facet);
        }
    }
    const std::string svg = Drawing(facets, {.m_count = 20});
    ExpectXml(svg);
    EXPECT_LT(svg.size(), 400000u);
    EXPECT_THAT(svg, HasSubstr("pixels are left out"));
    EXPECT_THAT(svg, HasSubstr(", 6400 in all<"));
}

// ------------------------------------------------------------------------------- storing

using PictureFile = test::InFolder;

TEST_F(PictureFile, HoldsTheText) {
    const std::string svg = Drawing(test::Ring(), {.m_step = 0.5});
    StorePicture(svg, m_folder / "a.svg");
    const std::string content = test::Content(m_folder / "a.svg");
    EXPECT_EQ(CountOf(content, "<path"), CountOf(svg, "<path"));
    EXPECT_EQ(CountOf(content, ">Layer "), 2u);
    ExpectXml(content);
}

TEST_F(PictureFile, TakesThePlaceOfAnOlderOne) {
    Write("a.svg", "older");
    StorePicture("<svg/>", m_folder / "a.svg");
    EXPECT_EQ(test::Content(m_folder / "a.svg"), "<svg/>");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_folder), {}), 1);
}

TEST_F(PictureFile, ThatCannotBeWrittenIsNamedWithTheReason) {
    const std::filesystem::path nowhere = m_folder / "none" / "a.svg";
    try {
        StorePicture("<svg/>", nowhere);
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.what(), nowhere.string() + ": No such file or directory");
    }
    EXPECT_TRUE(std::filesystem::is_empty(m_folder));
}

}  // namespace
}  // namespace section
