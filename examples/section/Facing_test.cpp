#include "section/Facing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "section/TestFiles.h"

namespace section {
namespace {

using ZT::zPi;

constexpr double kDegree = zPi / 180;

/// An upright facet that faces the direction of `degrees`.
Facet FacingTo(double degrees) {
    const auto x = static_cast<float>(-std::sin(degrees * kDegree));
    const auto y = static_cast<float>(std::cos(degrees * kDegree));
    return {Point{0, 0, 0}, Point{x, y, 0}, Point{0, 0, 1}};
}

ZT::RangeS1 ArcOf(std::vector<double> degrees) {
    for (double& angle : degrees) {
        angle *= kDegree;
    }
    return SmallestArc(degrees);
}

void ExpectArc(const ZT::RangeS1& arc, double from, double to) {
    EXPECT_EQ(arc.m_eState, ZT::RangeS1::eStatePartial);
    EXPECT_NEAR(arc.m_min, from * kDegree, 1e-9);
    EXPECT_NEAR(arc.m_max, to * kDegree, 1e-9);
}

TEST(FacingOf, IsTheDirectionOfTheNormal) {
    for (const double degrees : {0.0, 30.0, 90.0, 179.0, -179.0, -90.0, -1.0}) {
        const Facing facing = FacingOf(FacingTo(degrees));
        EXPECT_EQ(facing.m_eKind, Facing::eSide);
        EXPECT_NEAR(facing.m_direction, degrees * kDegree, 1e-6);
    }
}

TEST(FacingOf, IsCanonicalAtTheSeam) {
    const Facing facing = FacingOf({Point{0, 0, 0}, Point{0, -1, 0}, Point{0, 0, 1}});
    EXPECT_EQ(facing.m_eKind, Facing::eSide);
    EXPECT_TRUE(ZT::S1::IsValid(facing.m_direction));
    EXPECT_NEAR(facing.m_direction, zPi, 1e-10);
}

TEST(FacingOf, IsOppositeForAReversedFacet) {
    Facet facet = FacingTo(30);
    std::swap(facet[1], facet[2]);
    EXPECT_NEAR(FacingOf(facet).m_direction, -150 * kDegree, 1e-6);
}

TEST(FacingOf, HasNoDirectionForAHorizontalFacet) {
    const Facet up{Point{0, 0, 5}, Point{1, 0, 5}, Point{0, 1, 5}};
    const Facet down{up[0], up[2], up[1]};
    EXPECT_EQ(FacingOf(up).m_eKind, Facing::eHorizontal);
    EXPECT_EQ(FacingOf(down).m_eKind, Facing::eHorizontal);
    EXPECT_EQ(FacingOf(up).m_direction, 0.0);
}

TEST(FacingOf, HasNoDirectionForADegenerateFacet) {
    const Point p{1, 2, 3}, q{2, 4, 6}, r{3, 6, 9};
    EXPECT_EQ(FacingOf({p, p, p}).m_eKind, Facing::eDegenerate);
    EXPECT_EQ(FacingOf({p, p, q}).m_eKind, Facing::eDegenerate);
    EXPECT_EQ(FacingOf({p, q, r}).m_eKind, Facing::eDegenerate);
}

TEST(FacingOf, IsFoundForFacetsOfEverySize) {
    for (const float size : {1e-30f, 1e-6f, 1e6f, 1e30f}) {
        const Facet facet{Point{0, 0, 0}, Point{0, size, 0}, Point{0, 0, size}};
        EXPECT_EQ(FacingOf(facet).m_eKind, Facing::eSide) << size;
        EXPECT_NEAR(FacingOf(facet).m_direction, 0.0, 1e-12) << size;
    }
}

TEST(FacingCounts, TellTheKindsApart) {
    std::vector<Facet> facets = test::Tetrahedron();
    facets.push_back({Point{0, 0, 0}, Point{0, 0, 0}, Point{1, 1, 1}});
    const FacingCounts counts{Mesh(facets)};
    EXPECT_EQ(counts.m_nSide, 3u);
    EXPECT_EQ(counts.m_nHorizontal, 1u);
    EXPECT_EQ(counts.m_nDegenerate, 1u);
}

TEST(SmallestArc, IsEmptyWithoutADirection) {
    EXPECT_TRUE(ArcOf({}).IsEmpty());
}

TEST(SmallestArc, IsAPointForOneDirection) {
    ExpectArc(ArcOf({45}), 45, 45);
    ExpectArc(ArcOf({45, 45, 45}), 45, 45);
}

TEST(SmallestArc, LeavesOutTheWidestGap) {
    ExpectArc(ArcOf({10, 100, -30}), -30, 100);
    ExpectArc(ArcOf({-90, 0, 170}), 170, 0);
}

TEST(SmallestArc, CrossesTheSeam) {
    ExpectArc(ArcOf({-170, 170, 180, 175}), 170, -170);
}

TEST(SmallestArc, TakesTheFirstOfEqualGaps) {
    ExpectArc(ArcOf({180, 90, 0, -90}), 0, -90);
}

TEST(SmallestArc, TakesBothSidesOfTheSeamForOnePoint) {
    std::vector<double> directions{zPi, -zPi + 1e-12};
    const ZT::RangeS1 arc = SmallestArc(directions);
    EXPECT_EQ(arc.m_eState, ZT::RangeS1::eStatePartial);
    EXPECT_NEAR(arc.GetDiff(), 0.0, 1e-9);
}

}  // namespace
}  // namespace section
