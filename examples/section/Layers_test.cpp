#include "section/Layers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "section/Bounds.h"
#include "section/Failure.h"
#include "section/TestFiles.h"

namespace section {
namespace {

using testing::ElementsAre;
using ZT::RangeR1;

/// A facet that reaches from `low` to `high` along z.
Facet Between(float low, float high) {
    return {Point{0, 0, low}, Point{1, 0, high}, Point{0, 1, low}};
}

Layers Counted(const RangeR1& height, const Cut& cut, const std::vector<Facet>& facets) {
    Layers layers(height, cut);
    layers.CountFacets(Mesh{facets});
    return layers;
}

std::vector<ZT::uint64> Counts(const Layers& layers) {
    std::vector<ZT::uint64> counts;
    for (const Layer& layer : layers.All()) {
        counts.push_back(layer.m_nFacets);
    }
    return counts;
}

std::vector<RangeR1> Ranges(const Layers& layers) {
    std::vector<RangeR1> ranges;
    for (const Layer& layer : layers.All()) {
        ranges.push_back(layer.m_range);
    }
    return ranges;
}

std::string CutFailure(const RangeR1& height, const Cut& cut) {
    try {
        Layers(height, cut);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "no failure";
}

// ------------------------------------------------------------------------- cutting

TEST(Layers, DivideTheHeightInEqualParts) {
    const Layers layers(RangeR1(-1, 3), {.m_count = 4});
    EXPECT_THAT(Ranges(layers),
                ElementsAre(RangeR1(-1, 0), RangeR1(0, 1), RangeR1(1, 2), RangeR1(2, 3)));
    EXPECT_EQ(layers.Height(), RangeR1(-1, 3));
    EXPECT_EQ(layers.Thickness(), 1.0);
}

TEST(Layers, OfAStepReachAboveTheHeight) {
    const Layers layers(RangeR1(0, 2.5), {.m_step = 1.0});
    EXPECT_THAT(Ranges(layers), ElementsAre(RangeR1(0, 1), RangeR1(1, 2), RangeR1(2, 3)));
    EXPECT_EQ(layers.Height(), RangeR1(0, 3));
}

TEST(Layers, OfAStepThatFitsDivideTheHeight) {
    const Layers layers(RangeR1(0, 3), {.m_step = 1.0});
    EXPECT_THAT(Ranges(layers), ElementsAre(RangeR1(0, 1), RangeR1(1, 2), RangeR1(2, 3)));
    EXPECT_EQ(layers.KnotCount(), 4u);
}

TEST(Layers, AreAlignedToZero) {
    const Layers layers(RangeR1(0.75, 2.25), {.m_step = 0.5});
    EXPECT_EQ(layers.Height(), RangeR1(0.5, 2.5));
    EXPECT_EQ(layers.All().size(), 4u);
}

TEST(Layers, CoverANegativeLowerLimitOffAKnot) {
    EXPECT_THAT(Ranges(Layers(RangeR1(-2.5, 0.5), {.m_step = 1.0})),
                ElementsAre(RangeR1(-3, -2), RangeR1(-2, -1), RangeR1(-1, 0), RangeR1(0, 1)));
    EXPECT_THAT(Ranges(Layers(RangeR1(-0.25, 0.5), {.m_step = 1.0})),
                ElementsAre(RangeR1(-1, 0), RangeR1(0, 1)));
}

TEST(Layers, EndWhereTheHeightEndsBelowZero) {
    EXPECT_THAT(Ranges(Layers(RangeR1(-2.5, -1.25), {.m_step = 1.0})),
                ElementsAre(RangeR1(-3, -2), RangeR1(-2, -1)));
    EXPECT_THAT(Ranges(Layers(RangeR1(-1.25, -1.25), {.m_step = 1.0})),
                ElementsAre(RangeR1(-2, -1)));
    EXPECT_THAT(Ranges(Layers(RangeR1(-2, -1), {.m_step = 1.0})), ElementsAre(RangeR1(-2, -1)));
}

TEST(Layers, OfANumberHaveARoundStep) {
    EXPECT_EQ(Layers(RangeR1(0, 4), {.m_count = 20}).Thickness(), 0.2);
    EXPECT_EQ(Layers(RangeR1(0, 4), {.m_count = 3}).Thickness(), 2.0);
    EXPECT_EQ(Layers(RangeR1(0, 2.4), {.m_count = 10}).Thickness(), 0.25);
    EXPECT_EQ(Layers(RangeR1(0, 2600), {.m_count = 10}).Thickness(), 500.0);
    EXPECT_EQ(Layers(RangeR1(0, 9), {.m_count = 1}).Thickness(), 10.0);
}

TEST(Layers, OfANumberKeepTheirKnotsCountableFarFromZero) {
    EXPECT_EQ(Layers(RangeR1(1e30, 1e30), {.m_count = 20}).Thickness(), 1e21);
}

TEST(Layers, OfAFlatHeightAreOne) {
    EXPECT_THAT(Ranges(Layers(RangeR1(7, 7), {.m_count = 20})), ElementsAre(RangeR1(7, 8)));
    EXPECT_THAT(Ranges(Layers(RangeR1(7, 7), {.m_step = 0.5})), ElementsAre(RangeR1(7, 7.5)));
}

TEST(Layers, OfANumberAreNeverThinnerThanABillionth) {
    EXPECT_EQ(Layers(RangeR1(0, 1e-8), {.m_count = 10}).All().size(), 10u);
    EXPECT_EQ(Layers(RangeR1(0, 1e-8), {.m_count = 1000}).All().size(), 10u);
}

TEST(Layers, AreLimitedInNumber) {
    EXPECT_EQ(Layers(RangeR1(0, 1), {.m_count = 100000}).All().size(), 100000u);
    EXPECT_EQ(CutFailure(RangeR1(0, 1), {.m_count = 100001}),
              "100001 layers are asked for, and 1 to 100000 can be had");
    EXPECT_EQ(CutFailure(RangeR1(0, 1), {.m_count = 0}),
              "0 layers are asked for, and 1 to 100000 can be had");
    EXPECT_EQ(CutFailure(RangeR1(0, 1), {.m_step = 1e-6}),
              "a step of 1e-06 cuts a height of 1 into more than 100000 layers");
}

TEST(Layers, NeedAStepAboveTheTolerance) {
    EXPECT_EQ(CutFailure(RangeR1(0, 0), {.m_step = 1e-10}),
              "a step of 1e-10 is not above the tolerance of 1e-10");
    EXPECT_EQ(CutFailure(RangeR1(0, 0), {.m_step = -1.0}),
              "a step of -1 is not above the tolerance of 1e-10");
}

TEST(Layers, NeedAStepThatCountsUpToTheHeight) {
    EXPECT_EQ(CutFailure(RangeR1(-2e9, -2e9), {.m_step = 1.0}),
              "a step of 1 is too short for a mesh at the height 2e+09");
}

// ------------------------------------------------------------------------ counting

TEST(Layers, CountAFacetInEachLayerThatItReaches) {
    EXPECT_THAT(Counts(Counted(RangeR1(0, 4), {.m_count = 4},
                               {Between(0.5f, 2.5f), Between(1.25f, 1.75f), Between(0.1f, 3.9f)})),
                ElementsAre(2, 3, 2, 1));
}

TEST(Layers, CountAFacetAtAKnotOnBothSides) {
    const std::vector<Facet> flat{Between(2, 2)};
    EXPECT_THAT(Counts(Counted(RangeR1(0, 4), {.m_count = 4}, flat)), ElementsAre(0, 1, 1, 0));
    EXPECT_THAT(Counts(Counted(RangeR1(0, 4), {.m_count = 4}, {Between(1, 3)})),
                ElementsAre(1, 1, 1, 1));
}

TEST(Layers, CountAFacetAtEitherEndOfTheHeight) {
    EXPECT_THAT(Counts(Counted(RangeR1(0, 4), {.m_count = 4},
                               {Between(0, 0), Between(4, 4), Between(4, 4)})),
                ElementsAre(1, 0, 0, 2));
}

TEST(Layers, CountAllFacetsOfAFlatMesh) {
    const std::vector<Facet> facets(3, Between(7, 7));
    EXPECT_THAT(Counts(Counted(RangeR1(7, 7), {}, facets)), ElementsAre(3));
    EXPECT_THAT(Counts(Counted(RangeR1(7, 7), {.m_step = 0.5}, facets)), ElementsAre(3));
}

TEST(Layers, CountNoFacetBeyondTheHeight) {
    EXPECT_THAT(Counts(Counted(RangeR1(0, 4), {.m_count = 2}, {Between(5, 6), Between(-9, -0.5f)})),
                ElementsAre(0, 0));
}

TEST(Layers, AddUpOverSeveralMeshes) {
    Layers layers(RangeR1(0, 2), {.m_count = 2});
    layers.CountFacets(Mesh{{Between(0.25f, 0.5f)}});
    layers.CountFacets(Mesh{{Between(0.25f, 0.5f), Between(1.25f, 1.5f)}});
    EXPECT_THAT(Counts(layers), ElementsAre(2, 1));
}

TEST(Layers, TellTheLongestCoverOfAFacet) {
    const Layers layers =
        Counted(RangeR1(0, 4), {.m_count = 4},
                {Between(0.5f, 0.75f), Between(1.25f, 3.5f), Between(0.5f, 2.5f)});
    EXPECT_EQ(layers.LongestCover(), ZT::RangeInt(1, 3));
    EXPECT_TRUE(Layers(RangeR1(0, 4), {}).LongestCover().IsEmpty());
}

// ------------------------------------------------------------------------ sections

Layers Measured(const std::vector<Facet>& facets, const Cut& cut) {
    const Mesh mesh{facets};
    const Bounds bounds(mesh);
    Layers layers(bounds.m_axes[eAxisZ], cut);
    layers.MeasureSections(mesh, bounds);
    return layers;
}

TEST(Sections, HaveTheLoopsOfEachLayer) {
    const Layers layers = Measured(test::Ring(), {.m_count = 5});
    ASSERT_EQ(layers.All().size(), 5u);
    for (const Layer& layer : layers.All()) {
        EXPECT_EQ(layer.m_contours.m_nLoops, 2u);
        EXPECT_EQ(layer.m_contours.m_nOpen, 0u);
        EXPECT_NEAR(layer.m_contours.m_length, 16.0, 1e-6);
        EXPECT_TRUE(layer.m_contours.m_run.IsFull());
    }
}

TEST(Sections, FaceOnlyTheWaysOfTheirOwnFacets) {
    // A cube on which a wall that faces 90° stands.
    std::vector<Facet> facets = test::Cube();
    facets.push_back({Point{0, 0, 1.25f}, Point{0, 0, 3}, Point{1, 0, 1.25f}});
    const Layers layers = Measured(facets, {.m_step = 1.0});
    ASSERT_EQ(layers.All().size(), 3u);
    EXPECT_NEAR(layers.All()[0].m_facing.GetDiff(), 1.5 * ZT::zPi, 1e-9);
    EXPECT_NEAR(layers.All()[2].m_facing.m_min, ZT::zPi / 2, 1e-9);
    EXPECT_EQ(layers.All()[2].m_facing.GetDiff(), 0.0);
    EXPECT_EQ(layers.All()[2].m_contours.m_nLoops, 0u);
    EXPECT_EQ(layers.All()[2].m_contours.m_nOpen, 1u);
}

TEST(Sections, OfAFlatOrDegenerateMeshFaceNoWay) {
    const Point p{1, 2, 3};
    for (const Facet& facet : {Between(2, 2), Facet{p, p, p}}) {
        const Layers layers = Measured({facet}, {});
        ASSERT_EQ(layers.All().size(), 1u);
        EXPECT_TRUE(layers.All()[0].m_facing.IsEmpty());
        EXPECT_EQ(layers.All()[0].m_contours.m_nLoops, 0u);
        EXPECT_EQ(layers.All()[0].m_contours.m_nOpen, 0u);
    }
}

TEST(Sections, OfARingAreFilledRoundItsHole) {
    // 64 lines over a width of 3; 22 of them meet the hole of width 1.
    const Layers layers = Measured(test::Ring(), {.m_step = 0.5});
    EXPECT_EQ(layers.ScanLineCount(), 64u);
    ASSERT_EQ(layers.All().size(), 2u);
    for (const Layer& layer : layers.All()) {
        EXPECT_NEAR(layer.m_fill.m_material, 42 * 3 + 22 * 2, 1e-9);
        EXPECT_NEAR(layer.m_fill.m_voids, 22, 1e-9);
        EXPECT_EQ(layer.m_fill.m_nUnpaired, 0u);
        EXPECT_EQ(layer.m_reach.m_nContours, 2u);
        EXPECT_EQ(layer.m_reach.m_nReached, 1u);
        EXPECT_NEAR(layer.m_reach.m_free, ZT::zPi, 1e-9);
    }
    EXPECT_EQ(layers.All()[0].m_fill.m_carried, 0.0);
    EXPECT_NEAR(layers.All()[1].m_fill.m_carried, 1.0, 1e-9);
}

/// A prism from z = 0 to 1 over a right-angled triangle with legs of 1.
std::vector<Facet> TrianglePrism() {
    const Point a{0, 0, 0}, b{1, 0, 0}, c{0, 1, 0}, d{0, 0, 1}, e{1, 0, 1}, f{0, 1, 1};
    return {{a, c, b}, {d, e, f}, {a, b, e}, {a, e, d}, {b, c, f}, {b, f, e}, {c, a, d}, {c, d, f}};
}

TEST(Sections, OfATrianglePrismFillHalfOfTheBounds) {
    const Layers layers = Measured(TrianglePrism(), {.m_step = 0.25});
    ASSERT_EQ(layers.All().size(), 4u);
    for (const Layer& layer : layers.All()) {
        EXPECT_NEAR(layer.m_fill.m_material, 32.0, 1e-9);
        EXPECT_NEAR(layer.m_fill.m_voids, 32.0, 1e-9);
        EXPECT_NEAR(layer.m_fill.Share(), 0.5, 1e-9);
        EXPECT_TRUE(layer.m_reach.m_hardest.IsFull());
    }
}

TEST(Sections, OfTwoCubesStandSideBySide) {
    std::vector<Facet> facets = test::Cube();
    for (Facet facet : test::Cube()) {
        for (Point& corner : facet) {
            corner[eAxisX] += 3;
        }
        facets.push_back(facet);
    }
    const Layer layer = Measured(facets, {.m_step = 1.0}).All().front();
    EXPECT_NEAR(layer.m_fill.m_material, 128.0, 1e-9);
    EXPECT_NEAR(layer.m_fill.m_voids, 128.0, 1e-9);
    EXPECT_EQ(layer.m_reach.m_nContours, 2u);
    EXPECT_EQ(layer.m_reach.m_nReached, 2u);
}

TEST(Sections, OfACubeBehindAWallAreNotReachedThroughIt) {
    // The wall is 5 wide and stands 2 before the cube. The cube is reached round both ends
    // of it, from the lowest angle at its far corners; the wall is reached all round.
    std::vector<Facet> facets = test::Cube();
    for (Facet facet : test::Cube()) {
        for (Point& corner : facet) {
            corner[eAxisX] += 3;
            corner[eAxisY] *= 5;
        }
        facets.push_back(facet);
    }
    const ReachFigures reach = Measured(facets, {.m_step = 1.0}).All().front().m_reach;
    const double end = std::atan2(2, 3);
    EXPECT_NEAR(reach.m_hardest.m_min, end, 1e-9);
    EXPECT_NEAR(reach.m_hardest.m_max, -end, 1e-9);
    EXPECT_NEAR(reach.m_free, ZT::z2Pi - end, 1e-9);
}

TEST(Sections, OfABodyThatLeansOverAreCarriedInPart) {
    // Cubes of width 1, the upper one moved by a quarter.
    std::vector<Facet> facets = test::Cube();
    for (Facet facet : test::Cube()) {
        for (Point& corner : facet) {
            corner[eAxisX] += 0.25f;
            corner[eAxisZ] += 1;
        }
        facets.push_back(facet);
    }
    const Layers layers = Measured(facets, {.m_step = 1.0});
    ASSERT_EQ(layers.All().size(), 2u);
    EXPECT_NEAR(layers.All()[1].m_fill.m_carried, 0.75, 1e-9);
    EXPECT_NEAR(layers.All()[1].m_fill.m_voids, 16.0, 1e-9);
}

TEST(Sections, OfACubeWithoutAWallAreFilledWhereItIsClosed) {
    // The wall at x = 0.5 is missing, so that every line is crossed once.
    std::vector<Facet> facets = test::Cube();
    facets.erase(facets.begin() + 2, facets.begin() + 4);
    const Layer sideways = Measured(facets, {.m_step = 1.0}).All().front();
    EXPECT_EQ(sideways.m_contours.m_nOpen, 1u);
    EXPECT_EQ(sideways.m_fill.m_nUnpaired, 64u);
    EXPECT_EQ(sideways.m_fill.m_material, 0.0);
    EXPECT_NEAR(sideways.m_fill.m_voids, 64.0, 1e-9);
    EXPECT_EQ(sideways.m_reach.m_nContours, 1u);
    EXPECT_EQ(sideways.m_reach.m_nReached, 1u);

    // The wall at y = -0.5 is missing, which no line meets.
    facets = test::Cube();
    facets.erase(facets.begin(), facets.begin() + 2);
    const Layer along = Measured(facets, {.m_step = 1.0}).All().front();
    EXPECT_EQ(along.m_fill.m_nUnpaired, 0u);
    EXPECT_NEAR(along.m_fill.m_material, 64.0, 1e-9);
}

TEST(Sections, OfASingleFacetHoldNoMaterial) {
    const Layers layers =
        Measured({{Point{0, 0, 0}, Point{5, 1, 0}, Point{2, 3, 4}}}, {.m_step = 1.0});
    ASSERT_EQ(layers.All().size(), 4u);
    for (const Layer& layer : layers.All()) {
        EXPECT_EQ(layer.m_contours.m_nOpen, 1u);
        EXPECT_EQ(layer.m_fill.m_material, 0.0);
        EXPECT_GT(layer.m_fill.m_nUnpaired, 0u);
        EXPECT_TRUE(layer.m_reach.m_hardest.IsFull());
    }
}

TEST(Sections, AreNotChangedByDegenerateFacets) {
    std::vector<Facet> facets = test::Ring();
    const Layer before = Measured(facets, {.m_step = 1.0}).All().front();
    const Point p{1.5f, 0, 0}, q{1.5f, 0, 1};
    facets.push_back({p, q, q});
    facets.push_back({p, p, p});
    facets.push_back({p, q, Point{1.5f, 0, 0.5f}});
    const Layer after = Measured(facets, {.m_step = 1.0}).All().front();
    EXPECT_EQ(after.m_fill.m_material, before.m_fill.m_material);
    EXPECT_EQ(after.m_fill.m_nUnpaired, 0u);
    EXPECT_EQ(after.m_reach.m_free, before.m_reach.m_free);
}

TEST(Sections, AreFoundAgainForAPicture) {
    const Mesh mesh{test::Ring()};
    const Bounds bounds(mesh);
    Layers layers(bounds.m_axes[eAxisZ], {.m_step = 0.125});
    layers.MeasureSections(mesh, bounds);
    const std::deque<Section> sections = layers.SectionsOf(mesh, bounds, {0, 3, 4, 7});
    ASSERT_EQ(sections.size(), 4u);
    for (const Section& section : sections) {
        const FillFigures& expected = layers.All()[section.m_nLayer].m_fill;
        const FillFigures found(section.m_fill, section.m_nLayer > 0 ? &section.m_below : nullptr);
        EXPECT_EQ(found.m_material, expected.m_material);
        EXPECT_EQ(found.m_carried, expected.m_carried);
        EXPECT_EQ(section.m_contours.m_loops.size(), 2u);
        EXPECT_EQ(section.m_reach.All().size(), 2u);
    }
}

/// A sphere of radius 1 as bands of quads, each of two facets.
std::vector<Facet> Sphere(int bands, int sectors) {
    const auto at = [&](int band, int sector) {
        const double u = ZT::zPi * band / bands, v = 2 * ZT::zPi * (sector % sectors) / sectors;
        const double radius = band == 0 || band == bands ? 0.0 : std::sin(u);
        return Point{static_cast<float>(radius * std::cos(v)),
                     static_cast<float>(radius * std::sin(v)), static_cast<float>(-std::cos(u))};
    };
    std::vector<Facet> facets;
    for (int i = 0; i < bands; ++i) {
        for (int j = 0; j < sectors; ++j) {
            const Point a = at(i, j), b = at(i, j + 1), c = at(i + 1, j + 1), d = at(i + 1, j);
            facets.push_back({a, b, c});
            facets.push_back({a, c, d});
        }
    }
    return facets;
}

TEST(Sections, OfASphereOfManyFacetsAreOneLoopEach) {
    const std::vector<Facet> facets = Sphere(200, 250);
    ASSERT_EQ(facets.size(), 100000u);
    const Layers layers = Measured(facets, {.m_count = 20});
    ASSERT_EQ(layers.All().size(), 20u);
    for (const Layer& layer : layers.All()) {
        const double height = layer.MiddleHeight();
        EXPECT_EQ(layer.m_contours.m_nLoops, 1u);
        EXPECT_EQ(layer.m_contours.m_nOpen, 0u);
        EXPECT_NEAR(layer.m_contours.m_length, 2 * ZT::zPi * std::sqrt(1 - height * height), 0.01);
        EXPECT_GT(layer.m_facing.GetDiff(), 6.2);
        // The lines lie a 32nd apart, over a disc.
        EXPECT_NEAR(layer.m_fill.m_material / 32, ZT::zPi * (1 - height * height), 0.02);
        EXPECT_EQ(layer.m_fill.m_nUnpaired, 0u);
        EXPECT_EQ(layer.m_reach.m_nReached, 1u);
    }
}

// ------------------------------------------------------------------------- any mesh

/// A mesh and a cut: some of its facets end at the knots, some are flat, and its
/// coordinates are those of a small, a usual or a huge model.
struct Case {
    std::vector<Facet> facets;
    Cut cut;
};

Case ArbitraryCase() {
    const float scale = *rc::gen::element(1e-8f, 0.125f, 1.0f, 0.1f, 1e12f);
    const float shift = *rc::gen::element(0.0f, -3.0f, 1e6f);
    const auto height = rc::gen::map(
        rc::gen::inRange(0, 60), [=](int i) { return (static_cast<float>(i) + shift) * scale; });
    Case result;
    result.facets = *rc::gen::nonEmpty(rc::gen::container<std::vector<Facet>>(
        rc::gen::map(rc::gen::pair(height, height),
                     [](const auto& ends) { return Between(ends.first, ends.second); })));
    result.cut.m_count = *rc::gen::inRange(1, 61);
    result.cut.m_step = *rc::gen::element(0.0, 0.0, 1.0, 2.5) * static_cast<double>(scale);
    return result;
}

TEST(Layers, CountAsATestOfEachFacetWithEachLayerDoes) {
    EXPECT_TRUE(rc::check("bucketed counts are those of all pairs", [] {
        const Case given = ArbitraryCase();
        const Bounds bounds(Mesh{given.facets});
        const Layers layers = Counted(bounds.m_axes[eAxisZ], given.cut, given.facets);
        for (const Layer& layer : layers.All()) {
            const auto met =
                std::count_if(given.facets.begin(), given.facets.end(), [&](const Facet& facet) {
                    return layer.m_range.IsIntersection(Extent(facet, eAxisZ), false);
                });
            RC_ASSERT(layer.m_nFacets == static_cast<ZT::uint64>(met));
        }
    }));
}

TEST(Layers, LeaveNoGap) {
    EXPECT_TRUE(rc::check("each layer begins where the one below ends", [] {
        const Case given = ArbitraryCase();
        const RangeR1 height = Bounds(Mesh{given.facets}).m_axes[eAxisZ];
        const Layers layers(height, given.cut);
        // A knot that would be within the tolerance, or rounding, of an end is the end.
        const double slack =
            ZT::zToler + 1e-12 * std::max(std::abs(height.m_min), std::abs(height.m_max));
        RC_ASSERT(layers.All().front().m_range.m_min <= height.m_min + slack);
        RC_ASSERT(layers.All().front().m_range.m_max >= height.m_min - slack);
        RC_ASSERT(layers.All().back().m_range.m_max >= height.m_max - slack);
        RC_ASSERT(layers.All().back().m_range.m_min <= height.m_max + slack);
        for (std::size_t i = 1; i < layers.All().size(); ++i) {
            RC_ASSERT(layers.All()[i - 1].m_range.m_max == layers.All()[i].m_range.m_min);
        }
    }));
}

}  // namespace
}  // namespace section
