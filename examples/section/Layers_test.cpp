#include "section/Layers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <string>

#include "section/Bounds.h"
#include "section/Failure.h"

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

TEST(Layers, OfAStepThatFitsGainOneMore) {
    EXPECT_EQ(Layers(RangeR1(0, 3), {.m_step = 1.0}).All().size(), 4u);
}

TEST(Layers, OfAFlatHeightAreOne) {
    EXPECT_THAT(Ranges(Layers(RangeR1(7, 7), {.m_count = 20})), ElementsAre(RangeR1(7, 7)));
    EXPECT_THAT(Ranges(Layers(RangeR1(7, 7), {.m_step = 0.5})), ElementsAre(RangeR1(7, 7.5)));
}

TEST(Layers, ThinnerThanTheToleranceAreOne) {
    EXPECT_EQ(Layers(RangeR1(0, 1e-9), {.m_count = 9}).All().size(), 9u);
    EXPECT_EQ(Layers(RangeR1(0, 1e-9), {.m_count = 11}).All().size(), 1u);
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
        RC_ASSERT(layers.All().front().m_range.m_min == height.m_min);
        RC_ASSERT(layers.All().back().m_range.m_max >= height.m_max);
        for (std::size_t i = 1; i < layers.All().size(); ++i) {
            RC_ASSERT(layers.All()[i - 1].m_range.m_max == layers.All()[i].m_range.m_min);
        }
    }));
}

}  // namespace
}  // namespace section
