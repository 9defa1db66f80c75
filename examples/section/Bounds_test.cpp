#include "section/Bounds.h"

#include <gtest/gtest.h>

#include "section/TestFiles.h"

namespace section {
namespace {

TEST(Bounds, CoverTheMeshAlongEachAxis) {
    const Bounds bounds(Mesh{test::Tetrahedron()});
    EXPECT_EQ(bounds.m_axes[eAxisX], ZT::RangeR1(0, 1));
    EXPECT_EQ(bounds.m_axes[eAxisY], ZT::RangeR1(0, 2));
    EXPECT_EQ(bounds.m_axes[eAxisZ], ZT::RangeR1(0, 4));
}

TEST(Bounds, OfNoFacetAreEmpty) {
    for (const ZT::RangeR1& range : Bounds(Mesh{}).m_axes) {
        EXPECT_TRUE(range.IsEmpty());
    }
}

TEST(Bounds, OfAFlatMeshAreASingletonAlongOneAxis) {
    const Bounds bounds(Mesh{{{Point{0, 0, 7}, Point{1, 0, 7}, Point{0, 1, 7}}}});
    EXPECT_TRUE(bounds.m_axes[eAxisZ].IsSingleton(7.0, 0.0));
    EXPECT_EQ(bounds.m_axes[eAxisX], ZT::RangeR1(0, 1));
}

TEST(Extent, RunsFromTheLowestToTheHighestCorner) {
    const Facet facet{Point{0, 0, 3}, Point{0, 0, -1}, Point{0, 0, 2}};
    EXPECT_EQ(Extent(facet, eAxisZ), ZT::RangeR1(-1, 3));
    EXPECT_TRUE(Extent(facet, eAxisX).IsSingleton(0.0, 0.0));
}

}  // namespace
}  // namespace section
