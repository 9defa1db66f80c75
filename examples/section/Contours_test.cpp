#include "section/Contours.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "section/TestFiles.h"

namespace section {
namespace {

struct Cutting {
    std::vector<Loop> loops;
    ZT::uint64 open;
    std::vector<Chain> chains;
};

Cutting CutAt(const std::vector<Facet>& facets, double height) {
    ContourCutter cutter(height, ContourCutter::ResolutionFor(Mesh{facets}));
    for (const Facet& facet : facets) {
        cutter.Add(facet);
    }
    ContourSet contours = cutter.TakeContours();
    const ZT::uint64 open = contours.m_chains.size();
    return {std::move(contours.m_loops), open, std::move(contours.m_chains)};
}

TEST(ContourCutter, MakesOneLoopOfACube) {
    const Cutting cut = CutAt(test::Cube(), 0.25);
    ASSERT_EQ(cut.loops.size(), 1u);
    EXPECT_EQ(cut.loops[0].size(), 8u);  // four corners, and a diagonal on each side
    EXPECT_DOUBLE_EQ(LoopLength(cut.loops[0]), 4.0);
    EXPECT_EQ(cut.open, 0u);
}

TEST(ContourCutter, MakesATriangleOfATetrahedron) {
    const Cutting cut = CutAt(test::Tetrahedron(), 2);
    ASSERT_EQ(cut.loops.size(), 1u);
    EXPECT_EQ(cut.loops[0].size(), 3u);
    EXPECT_DOUBLE_EQ(LoopLength(cut.loops[0]), 1.5 + std::hypot(0.5, 1.0));
}

TEST(ContourCutter, MakesTwoLoopsOfARing) {
    const Cutting cut = CutAt(test::Ring(), 0.5);
    ASSERT_EQ(cut.loops.size(), 2u);
    const double a = LoopLength(cut.loops[0]), b = LoopLength(cut.loops[1]);
    EXPECT_DOUBLE_EQ(std::min(a, b), 4.0);
    EXPECT_DOUBLE_EQ(std::max(a, b), 12.0);
}

TEST(ContourCutter, CountsACornerAtTheHeightAsAboveIt) {
    EXPECT_TRUE(CutAt(test::Cube(), 0.0).loops.empty());
    EXPECT_EQ(CutAt(test::Cube(), 1.0).loops.size(), 1u);
    EXPECT_TRUE(CutAt(test::Tetrahedron(), 4.0).loops.empty());
    EXPECT_EQ(CutAt(test::Tetrahedron(), 4.0).open, 0u);
}

TEST(ContourCutter, MakesNothingOfFlatAndDegenerateFacets) {
    const Point p{1, 2, 3};
    for (const Facet& facet : {Facet{p, p, p}, Facet{p, p, Point{0, 0, 0}},
                               Facet{Point{0, 0, 1}, Point{1, 0, 1}, Point{0, 1, 1}}}) {
        const Cutting cut = CutAt({facet}, 1.0);
        EXPECT_TRUE(cut.loops.empty());
        EXPECT_EQ(cut.open, 0u);
    }
}

TEST(ContourCutter, CountsAnOpenChain) {
    std::vector<Facet> facets = test::Tetrahedron();
    facets.pop_back();
    const Cutting cut = CutAt(facets, 1);
    EXPECT_TRUE(cut.loops.empty());
    EXPECT_EQ(cut.open, 1u);
    EXPECT_EQ(CutAt({facets[1]}, 1).open, 1u);
}

TEST(ContourCutter, GivesAnOpenChainFromEndToEnd) {
    // A third of a tetrahedron, cut at the middle of its edges.
    const Cutting cut = CutAt({test::Tetrahedron()[1]}, 2);
    ASSERT_EQ(cut.chains.size(), 1u);
    ASSERT_EQ(cut.chains[0].size(), 2u);
    EXPECT_TRUE(cut.chains[0] == (Chain{{0, 0}, {0.5, 0}}) ||
                cut.chains[0] == (Chain{{0.5, 0}, {0, 0}}));

    std::vector<Facet> open = test::Tetrahedron();
    open.pop_back();
    EXPECT_EQ(CutAt(open, 1).chains.at(0).size(), 3u);
}

TEST(ContourCutter, TakesAFacetThatIsThereTwiceOnce) {
    std::vector<Facet> facets = test::Cube();
    const std::vector<Facet> again = facets;
    facets.insert(facets.end(), again.begin(), again.end());
    const Cutting cut = CutAt(facets, 0.25);
    ASSERT_EQ(cut.loops.size(), 1u);
    EXPECT_DOUBLE_EQ(LoopLength(cut.loops[0]), 4.0);
}

TEST(ContourCutter, GoesOnceAlongEachOfThreeSheetsAtAnEdge) {
    // Three walls on a common edge end in the open: three ends and a knot of three.
    const auto wall = [](float x, float y) {
        return Facet{Point{0, 0, -1}, Point{0, 0, 2}, Point{x, y, -1}};
    };
    const Cutting cut = CutAt({wall(1, 0), wall(-1, 1), wall(-1, -1)}, 0);
    EXPECT_TRUE(cut.loops.empty());
    EXPECT_EQ(cut.open, 2u);
}

TEST(LongestConvexRun, IsFullForASquare) {
    const Loop square{{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    EXPECT_TRUE(LongestConvexRun(square).IsFull());
    EXPECT_EQ(LongestConvexRun(square).GetCount(), 4);
    const Loop clockwise(square.rbegin(), square.rend());
    EXPECT_TRUE(LongestConvexRun(clockwise).IsFull());
}

TEST(LongestConvexRun, GoesStraightOn) {
    EXPECT_TRUE(LongestConvexRun({{0, 0}, {1, 0}, {2, 0}, {2, 2}, {0, 2}}).IsFull());
}

TEST(LongestConvexRun, EndsWhereTheLoopBendsInwards) {
    // An L; only vertex 3 bends inwards, and the run goes on over the seam.
    const Loop l{{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}};
    const ZT::RangeZGroup run = LongestConvexRun(l);
    EXPECT_EQ(run, ZT::RangeZGroup(6, 4, 2));
    EXPECT_EQ(run.GetCount(), 5);
    EXPECT_FALSE(run.In(3));
}

TEST(LongestConvexRun, IsTheLongerOfTwo) {
    const Loop loop{{0, 0}, {4, 0}, {4, 4}, {2, 1}, {0, 4}, {-1, 3}, {-0.5, 2}};
    const ZT::RangeZGroup run = LongestConvexRun(loop);
    EXPECT_FALSE(run.IsFull());
    EXPECT_FALSE(run.In(3));
    EXPECT_EQ(run, ZT::RangeZGroup(7, 0, 2));
}

TEST(ContourFigures, HaveAnEmptyRunWithoutALoop) {
    const ContourFigures figures(
        ContourSet{{}, {{{0, 0}, {1, 0}}, {{2, 0}, {3, 0}}, {{4, 0}, {5, 0}}}});
    EXPECT_EQ(figures.m_nLoops, 0u);
    EXPECT_EQ(figures.m_nOpen, 3u);
    EXPECT_EQ(figures.m_length, 0.0);
    EXPECT_TRUE(figures.m_run.IsEmpty());
}

TEST(ContourFigures, AddTheLengthsUp) {
    const Loop square{{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    const ContourFigures figures(ContourSet{{square, {{5, 5}, {8, 5}, {8, 9}}}, {}});
    EXPECT_EQ(figures.m_nLoops, 2u);
    EXPECT_DOUBLE_EQ(figures.m_length, 16.0);
    EXPECT_EQ(figures.m_run.GetCount(), 4);
}

}  // namespace
}  // namespace section
