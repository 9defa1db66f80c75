#include "section/Model.h"

#include <gtest/gtest.h>

#include "section/TestFiles.h"

namespace section {
namespace {

Model Tetrahedron(const std::string& source = "a.stl", int layers = 4) {
    return Model(source, Mesh{test::Tetrahedron()}, Cut{.m_count = layers});
}

/// The tetrahedron, made larger by `factor`.
Model Scaled(float factor) {
    std::vector<Facet> facets = test::Tetrahedron();
    for (Facet& facet : facets) {
        for (Point& corner : facet) {
            corner[eAxisX] *= factor;
        }
    }
    return Model("a.stl", facets, Cut{.m_count = 4});
}

TEST(Model, MeasuresAndCutsAMesh) {
    const Model model = Tetrahedron();
    EXPECT_EQ(model.m_source, CString("a.stl"));
    EXPECT_EQ(model.m_mesh.FacetCount(), 4u);
    EXPECT_EQ(model.m_bounds.m_axes[eAxisY], ZT::RangeR1(0, 2));
    EXPECT_EQ(model.m_layers.Height(), ZT::RangeR1(0, 4));
    ASSERT_EQ(model.m_layers.All().size(), 4u);
    EXPECT_EQ(model.m_layers.All()[0].m_nFacets, 4u);
    EXPECT_EQ(model.m_layers.All()[3].m_nFacets, 3u);
}

TEST(Model, KeepsAPrintableNameOfItsSource) {
    EXPECT_EQ(Tetrahedron("bad\n\x01name").m_source, CString("bad��name"));
}

TEST(FirstDifference, IsNoneBetweenAModelAndItself) {
    EXPECT_EQ(FirstDifference(Tetrahedron(), Tetrahedron()), "");
}

TEST(FirstDifference, NamesWhatDiffers) {
    EXPECT_EQ(FirstDifference(Tetrahedron(), Tetrahedron("b.stl")), "name of the mesh");
    EXPECT_EQ(FirstDifference(Tetrahedron(), Tetrahedron("a.stl", 8)), "number of layers");
    EXPECT_EQ(FirstDifference(Tetrahedron(), Scaled(2)), "bounds along x");

    std::vector<Facet> facets = test::Tetrahedron();
    facets.push_back(facets.back());
    EXPECT_EQ(FirstDifference(Tetrahedron(), Model("a.stl", facets, Cut{.m_count = 4})),
              "number of facets");
}

/// The tetrahedron with one facet more.
Model With(const Facet& facet) {
    std::vector<Facet> facets = test::Tetrahedron();
    facets.push_back(facet);
    return Model("a.stl", facets, Cut{.m_count = 4});
}

TEST(FirstDifference, NamesWhatDiffersInALayer) {
    const auto flatAt = [](float z) {
        return Facet{Point{0, 0, z}, Point{0.1f, 0, z}, Point{0, 0.1f, z}};
    };
    EXPECT_EQ(FirstDifference(With(flatAt(1.5f)), With(flatAt(2.5f))), "facets of layer 2");

    const Facet side = test::Tetrahedron()[1];
    EXPECT_EQ(FirstDifference(With(side), With(flatAt(0))), "facing of the facets");
    EXPECT_EQ(FirstDifference(With(side), With({side[0], side[2], side[1]})),
              "directions of layer 1");
    EXPECT_EQ(FirstDifference(With(side), With({side[0], side[1], Point{0, 0, 3.5f}})),
              "contours of layer 1");
}

TEST(FirstDifference, NamesWhatDiffersInTheMaterialOfALayer) {
    // The same contours, one of them moved over the other: what is carried differs.
    const auto tower = [](float shift) {
        std::vector<Facet> facets = test::Cube();
        for (Facet facet : test::Cube()) {
            for (Point& corner : facet) {
                corner[eAxisX] += shift;
                corner[eAxisZ] += 1;
            }
            facets.push_back(facet);
        }
        facets.push_back({Point{-2, -2, 0}, Point{2, 2, 0}, Point{2, -2, 0}});
        return Model("a.stl", facets, Cut{.m_step = 1.0});
    };
    EXPECT_EQ(FirstDifference(tower(0.25f), tower(-0.25f)), "bytes of the mesh");
    EXPECT_EQ(FirstDifference(tower(0.25f), tower(0.5f)), "material of layer 2");
}

TEST(FirstDifference, NamesWhatDiffersInTheReachOfALayer) {
    // A post in the hole of a ring or beside the ring, on the same scan lines.
    const auto post = [](float x) {
        std::vector<Facet> facets = test::Ring();
        for (Facet facet : test::Walls(0.25f)) {
            for (Point& corner : facet) {
                corner[eAxisX] += x;
            }
            facets.push_back(facet);
        }
        facets.push_back({Point{-3, -3, 0}, Point{3, 3, 0}, Point{3, -3, 0}});
        return Model("a.stl", facets, Cut{.m_step = 1.0});
    };
    EXPECT_EQ(FirstDifference(post(0), post(0)), "");
    EXPECT_EQ(FirstDifference(post(0), post(2)), "reach of layer 1");
}

TEST(FirstDifference, LeavesOutWhatSixDigitsDoNotTell) {
    EXPECT_EQ(FirstDifference(Scaled(1.00001f), Scaled(1.000013f)), "bytes of the mesh");
    EXPECT_EQ(FirstDifference(Scaled(1.00001f), Scaled(1.00002f)), "bounds along x");
}

TEST(FirstDifference, HoldsEachLimitAgainstItsOwnSize) {
    Model a = Tetrahedron(), b = Tetrahedron();
    a.m_bounds.m_axes[eAxisX].Set(1e-6, 1e6);
    b.m_bounds.m_axes[eAxisX].Set(2e-6, 1e6);
    EXPECT_EQ(FirstDifference(a, b), "bounds along x");
}

}  // namespace
}  // namespace section
