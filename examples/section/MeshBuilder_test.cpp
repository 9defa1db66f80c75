#include "section/MeshBuilder.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <limits>
#include <set>
#include <utility>

#include "section/TestFiles.h"

namespace section {
namespace {

using test::FacetsOf;

TEST(MeshBuilder, MakesOneVertexOfEachDifferentPoint) {
    EXPECT_EQ(Mesh(test::Tetrahedron()).VertexCount(), 4u);
    EXPECT_EQ(Mesh(test::Cube()).VertexCount(), 8u);
    EXPECT_EQ(Mesh(test::Cube()).FacetCount(), 12u);
}

TEST(MeshBuilder, KeepsFacetsAndCornersInTheirOrder) {
    EXPECT_EQ(FacetsOf(Mesh(test::Tetrahedron())), test::Tetrahedron());
}

TEST(MeshBuilder, TakesPointsForDifferentThatDifferInOneBit) {
    const float next = std::nextafter(1.0f, 2.0f);
    const Mesh mesh({{Point{1, 1, 1}, Point{1, 1, next}, Point{1, next, 1}}});
    EXPECT_EQ(mesh.VertexCount(), 3u);
    EXPECT_EQ(mesh.GetFacet(0)[1][eAxisZ], next);
}

TEST(MeshBuilder, KeepsAFacetWhoseCornersCoincide) {
    const Point p{1, 2, 3};
    const Mesh mesh({{p, p, p}, {p, p, p}});
    EXPECT_EQ(mesh.VertexCount(), 1u);
    EXPECT_EQ(mesh.FacetCount(), 2u);
}

TEST(MeshBuilder, TakesAZeroWithASignForOneWithout) {
    const Mesh mesh({{Point{-0.0f, 0, 0}, Point{0, -0.0f, 0}, Point{0, 0, -0.0f}}});
    EXPECT_EQ(mesh.VertexCount(), 1u);
    EXPECT_FALSE(std::signbit(mesh.GetFacet(0)[0][eAxisX]));
}

TEST(MeshBuilder, BeginsAgainWhenItsMeshIsTaken) {
    MeshBuilder builder;
    builder.Add(test::Tetrahedron()[3]);
    EXPECT_EQ(builder.Take().FacetCount(), 1u);
    EXPECT_EQ(builder.Take().FacetCount(), 0u);
    builder.Add(test::Tetrahedron()[0]);
    EXPECT_EQ(FacetsOf(builder.Take()), std::vector<Facet>{test::Tetrahedron()[0]});
}

TEST(MeshBuilder, TakesMoreAndLessThanItHasRoomFor) {
    for (const std::size_t facets : {std::size_t{1}, std::size_t{12}, std::size_t{1000}}) {
        MeshBuilder builder(facets);
        for (const Facet& facet : test::Cube()) {
            builder.Add(facet);
        }
        EXPECT_TRUE(builder.Take() == Mesh(test::Cube())) << facets;
    }
}

TEST(MeshBuilder, FindsEveryPointAgainAmongMany) {
    EXPECT_TRUE(rc::check("a mesh has the facets it was given, and no point twice", [] {
        const auto coordinate = rc::gen::map(rc::gen::inRange(-4, 5),
                                             [](int i) { return 0.25f * static_cast<float>(i); });
        const int count = *rc::gen::inRange(0, 200);
        std::vector<Facet> facets(static_cast<std::size_t>(count));
        std::set<Point> points;
        for (Facet& facet : facets) {
            for (Point& corner : facet) {
                corner = {*coordinate, *coordinate, *coordinate};
                points.insert(corner);
            }
        }
        const Mesh mesh(facets);
        RC_ASSERT(FacetsOf(mesh) == facets);
        RC_ASSERT(mesh.VertexCount() == points.size());
    }));
}

TEST(Mesh, CopiesHaveTablesOfTheirOwn) {
    Mesh copy;
    {
        const Mesh mesh(test::Cube());
        copy = mesh;
        EXPECT_TRUE(copy == mesh);
    }
    EXPECT_EQ(FacetsOf(copy), test::Cube());
}

TEST(Mesh, MovedFromHasNoFacets) {
    Mesh mesh(test::Cube());
    const Mesh moved(std::move(mesh));
    EXPECT_EQ(mesh.FacetCount(), 0u);
    EXPECT_EQ(FacetsOf(moved), test::Cube());
    mesh = moved;
    EXPECT_TRUE(mesh == moved);
}

TEST(Mesh, DiffersWhereOneCoordinateOrOneCornerDoes) {
    std::vector<Facet> other = test::Cube();
    std::swap(other[3][0], other[3][1]);
    EXPECT_FALSE(Mesh(test::Cube()) == Mesh(other));
    other = test::Tetrahedron();
    for (Facet& facet : other) {
        for (Point& corner : facet) {
            corner[eAxisX] *= 1.0f + std::numeric_limits<float>::epsilon();
        }
    }
    EXPECT_FALSE(Mesh(test::Tetrahedron()) == Mesh(other));
}

}  // namespace
}  // namespace section
