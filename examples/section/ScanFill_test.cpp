#include "section/ScanFill.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace section {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using ZT::RangeR1;

using Span = std::pair<double, double>;
using Spans = std::vector<Span>;

Bounds Square(double size) {
    Bounds bounds;
    bounds.m_axes = {RangeR1(0, size), RangeR1(0, size), RangeR1(0, 1)};
    return bounds;
}

Loop Rectangle(double x0, double y0, double x1, double y1) {
    return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
}

/// A section in the square from 0 to 4, on scan lines at 0.5, 1.5, 2.5 and 3.5.
struct FourLines {
    ScanLines lines{Square(4), 4};
    Fill fill;

    explicit FourLines(const ContourSet& contours, double sliver = 1e-6) {
        SectionFiller(lines, sliver).Refill(contours, fill);
    }
};

template <class Set>
Spans SpansOf(const Set& set) {
    Spans spans;
    for (const RangeR1& member : set) {
        spans.emplace_back(member.m_min, member.m_max);
    }
    return spans;
}

std::vector<Spans> SpansOf(const std::vector<ZT::SetR1>& sets) {
    std::vector<Spans> spans;
    for (const ZT::SetR1& set : sets) {
        spans.push_back(SpansOf(set));
    }
    return spans;
}

ZT::SetR1 SetOf(const Spans& spans) {
    ZT::SetR1 set;
    for (const Span& span : spans) {
        set.AddRange(span.first, span.second);
    }
    return set;
}

// --------------------------------------------------------------------------- scan lines

TEST(ScanLines, LieInTheMiddlesOfEqualStrips) {
    const ScanLines lines(Square(4), 4);
    EXPECT_THAT(lines.Places(), ElementsAre(0.5, 1.5, 2.5, 3.5));
    EXPECT_EQ(lines.Within(), RangeR1(0, 4));
}

TEST(ScanLines, AreNoneOverFlatOrEmptyBounds) {
    Bounds flat = Square(4);
    flat.m_axes[eAxisX] = RangeR1(1, 1);
    EXPECT_THAT(ScanLines(flat, 4).Places(), IsEmpty());
    flat = Square(4);
    flat.m_axes[eAxisY] = RangeR1(1, 1 + 1e-11);
    EXPECT_THAT(ScanLines(flat, 4).Places(), IsEmpty());
    EXPECT_THAT(ScanLines(Bounds(), 4).Places(), IsEmpty());
}

TEST(ScanLines, AreFewerForManyLayers) {
    EXPECT_EQ(ScanLines::CountFor(0), 64);
    EXPECT_EQ(ScanLines::CountFor(20), 64);
    EXPECT_EQ(ScanLines::CountFor(4096), 64);
    EXPECT_EQ(ScanLines::CountFor(8192), 32);
    EXPECT_EQ(ScanLines::CountFor(100000), 8);
}

// ------------------------------------------------------------------------------ filling

TEST(SectionFiller, FillsASquareAndLeavesVoidsAroundIt) {
    const FourLines section({{Rectangle(1, 1, 3, 3)}, {}});
    EXPECT_THAT(SpansOf(section.fill.m_material),
                ElementsAre(Spans{}, Spans{{1, 3}}, Spans{{1, 3}}, Spans{}));
    EXPECT_THAT(SpansOf(section.fill.m_voids), ElementsAre(Spans{{0, 4}}, Spans{{0, 1}, {3, 4}},
                                                           Spans{{0, 1}, {3, 4}}, Spans{{0, 4}}));
    EXPECT_EQ(section.fill.m_nSlivers, 0u);
    EXPECT_EQ(section.fill.m_nUnpaired, 0u);
}

TEST(SectionFiller, LeavesAHoleOpen) {
    const FourLines section({{Rectangle(0, 0, 4, 4), Rectangle(1, 1, 3, 3)}, {}});
    EXPECT_THAT(
        SpansOf(section.fill.m_material),
        ElementsAre(Spans{{0, 4}}, Spans{{0, 1}, {3, 4}}, Spans{{0, 1}, {3, 4}}, Spans{{0, 4}}));
    EXPECT_THAT(SpansOf(section.fill.m_voids),
                ElementsAre(Spans{}, Spans{{1, 3}}, Spans{{1, 3}}, Spans{}));
}

TEST(SectionFiller, FillsTwoSquaresOnOneLine) {
    const FourLines section({{Rectangle(2.5, 1, 3.5, 2), Rectangle(0.5, 1, 1.5, 2)}, {}});
    EXPECT_THAT(SpansOf(section.fill.m_material),
                ElementsAre(Spans{}, Spans{{0.5, 1.5}, {2.5, 3.5}}, Spans{}, Spans{}));
}

TEST(SectionFiller, CutsASlantedEdgeAtTheLine) {
    const FourLines section({{{{0, 0}, {4, 0}, {0, 4}}}, {}});
    EXPECT_THAT(SpansOf(section.fill.m_material),
                ElementsAre(Spans{{0, 3.5}}, Spans{{0, 2.5}}, Spans{{0, 1.5}}, Spans{{0, 0.5}}));
}

TEST(SectionFiller, CountsAVertexOnALineAsAboveIt) {
    // A diamond with each of its corners on a line. At its top it is one point.
    const FourLines section({{{{2, 0.5}, {3, 1.5}, {2, 2.5}, {1, 1.5}}}, {}});
    EXPECT_THAT(SpansOf(section.fill.m_material),
                ElementsAre(Spans{}, Spans{{1, 3}}, Spans{}, Spans{}));
    EXPECT_EQ(section.fill.m_nUnpaired, 0u);
    EXPECT_EQ(section.fill.m_nSlivers, 1u);
}

TEST(SectionFiller, TakesTheUpperOfTwoEdgesOnLines) {
    const FourLines section({{Rectangle(1, 0.5, 3, 2.5)}, {}});
    EXPECT_THAT(SpansOf(section.fill.m_material),
                ElementsAre(Spans{}, Spans{{1, 3}}, Spans{{1, 3}}, Spans{}));
    EXPECT_EQ(section.fill.m_nUnpaired, 0u);
}

TEST(SectionFiller, UnitesWhatTouches) {
    const FourLines edge({{Rectangle(0, 0, 2, 4), Rectangle(2, 0, 4, 4)}, {}});
    EXPECT_THAT(SpansOf(edge.fill.m_material),
                ElementsAre(Spans{{0, 4}}, Spans{{0, 4}}, Spans{{0, 4}}, Spans{{0, 4}}));
    EXPECT_THAT(SpansOf(edge.fill.m_voids), testing::Each(IsEmpty()));

    // Two squares with a corner in common, which lies on a line.
    const FourLines corner({{Rectangle(0, 0.5, 2, 1.5), Rectangle(2, 1.5, 4, 2.5)}, {}});
    EXPECT_THAT(SpansOf(corner.fill.m_material),
                ElementsAre(Spans{}, Spans{{0, 2}}, Spans{{2, 4}}, Spans{}));
    EXPECT_EQ(corner.fill.m_nUnpaired, 0u);
}

TEST(SectionFiller, UnitesAnyNumberOfPieces) {
    ContourSet apart, touching;
    for (int i = 0; i < 100; ++i) {
        apart.m_loops.push_back(Rectangle(i, 0, i + 0.5, 1));
        touching.m_loops.push_back(Rectangle(i, 0, i + 1, 1));
    }
    Bounds bounds = Square(100);
    bounds.m_axes[eAxisY] = RangeR1(0, 1);
    const ScanLines lines(bounds, 1);
    SectionFiller filler(lines, 1e-6);
    Fill fill;
    filler.Refill(apart, fill);
    EXPECT_EQ(fill.m_material[0].GetSize(), 100);
    EXPECT_TRUE(fill.m_material[0].IsValidEx(0.5));
    EXPECT_EQ(fill.m_voids[0].GetSize(), 100);
    filler.Refill(touching, fill);
    EXPECT_THAT(SpansOf(fill.m_material[0]), ElementsAre(Span(0, 100)));
    EXPECT_THAT(SpansOf(fill.m_voids[0]), IsEmpty());
}

// ------------------------------------------------------------------------------ oddities

TEST(SectionFiller, CountsTheLinesThatCrossAnOpenChainOnce) {
    const FourLines section({{}, {{{2, 0}, {2, 3}}}});
    EXPECT_THAT(SpansOf(section.fill.m_material), testing::Each(IsEmpty()));
    EXPECT_EQ(section.fill.m_nUnpaired, 3u);
    EXPECT_THAT(SpansOf(section.fill.m_voids), testing::Each(ElementsAre(Span(0, 4))));
}

TEST(SectionFiller, FillsAnOpenChainWhereItIsCrossedTwice) {
    const FourLines section({{}, {{{1, 3}, {1, 1}, {3, 1}, {3, 2}}}});
    EXPECT_THAT(SpansOf(section.fill.m_material),
                ElementsAre(Spans{}, Spans{{1, 3}}, Spans{}, Spans{}));
    EXPECT_EQ(section.fill.m_nUnpaired, 1u);
}

TEST(SectionFiller, DropsTheCrossingOfTheChainAndNotOfALoop) {
    const Loop square = Rectangle(1, 0, 2, 4);
    for (const double x : {0.5, 1.5, 3.5}) {
        const FourLines section({{square}, {{{x, 0}, {x, 4}}}});
        EXPECT_THAT(SpansOf(section.fill.m_material), testing::Each(ElementsAre(Span(1, 2))));
        EXPECT_EQ(section.fill.m_nUnpaired, 4u);
    }
}

TEST(SectionFiller, CleansSliversOfBothKindsAway) {
    const FourLines material({{Rectangle(1, 0, 1.001, 4), Rectangle(2, 0, 3, 4)}, {}}, 0.01);
    EXPECT_THAT(SpansOf(material.fill.m_material), testing::Each(ElementsAre(Span(2, 3))));
    EXPECT_EQ(material.fill.m_nSlivers, 4u);

    const FourLines gap({{Rectangle(0, 0, 2, 4), Rectangle(2.001, 0, 4, 4)}, {}}, 0.01);
    EXPECT_THAT(SpansOf(gap.fill.m_material),
                testing::Each(ElementsAre(Span(0, 2), Span(2.001, 4))));
    EXPECT_THAT(SpansOf(gap.fill.m_voids), testing::Each(IsEmpty()));
    EXPECT_EQ(gap.fill.m_nSlivers, 4u);
}

TEST(SectionFiller, CleansWhatTheToleranceDoesNotTellAway) {
    const FourLines section({{Rectangle(1, 0, 1 + 1e-11, 4)}, {}}, 0.0);
    EXPECT_THAT(SpansOf(section.fill.m_material), testing::Each(IsEmpty()));
    EXPECT_EQ(section.fill.m_nSlivers, 4u);
}

/// Loops of any shape, which may cross themselves, with many corners on scan lines.
std::vector<Loop> ArbitraryLoops() {
    const auto half = rc::gen::map(rc::gen::inRange(0, 9), [](int i) { return i / 2.0; });
    const auto point = rc::gen::map(rc::gen::pair(half, half), [](const auto& place) {
        return ContourPoint{place.first, place.second};
    });
    std::vector<Loop> loops;
    const int count = *rc::gen::inRange(0, 5);
    for (int i = 0; i < count; ++i) {
        loops.push_back(*rc::gen::container<Loop>(*rc::gen::inRange<std::size_t>(3, 9), point));
    }
    return loops;
}

TEST(SectionFiller, FindsAPartnerForEveryCrossingOfALoop) {
    EXPECT_TRUE(rc::check("material and voids make up every line", [] {
        const FourLines section({ArbitraryLoops(), {}});
        RC_ASSERT(section.fill.m_nUnpaired == 0u);
        for (std::size_t i = 0; i < 4; ++i) {
            const ZT::SetR1 &material = section.fill.m_material[i],
                            &voids = section.fill.m_voids[i];
            RC_ASSERT(material.IsValidEx(0.0));
            RC_ASSERT(std::abs(TotalLength(material) + TotalLength(voids) - 4.0) < 1e-9);
        }
    }));
}

/// Whether `point` is inside `loops` by the even-odd rule, counted with a ray upwards.
bool IsInside(const std::vector<Loop>& loops, const ContourPoint& point) {
    bool inside = false;
    for (const Loop& loop : loops) {
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const ContourPoint &a = loop[i], &b = loop[(i + 1) % loop.size()];
            if ((a.m_x < point.m_x) != (b.m_x < point.m_x)) {
                const double t = (point.m_x - a.m_x) / (b.m_x - a.m_x);
                inside ^= a.m_y + t * (b.m_y - a.m_y) > point.m_y;
            }
        }
    }
    return inside;
}

TEST(SectionFiller, AgreesWithATestOfSinglePoints) {
    EXPECT_TRUE(rc::check("what is filled is inside", [] {
        const std::vector<Loop> loops = ArbitraryLoops();
        const FourLines section({loops, {}});
        for (std::size_t i = 0; i < 4; ++i) {
            // Places where no edge between halves can meet a line. What lies on the line
            // counts as above it.
            const double below = section.lines.Places()[i] - 1e-9;
            for (const double x : {0.37214, 1.21937, 1.93317, 2.61713, 3.80391}) {
                const bool filled = section.fill.m_material[i].FindRange(x) >= 0;
                RC_ASSERT(filled == IsInside(loops, {x, below}));
            }
        }
    }));
}

// ------------------------------------------------------------------------------ measuring

Spans Shared(const Spans& upper, const Spans& lower) {
    ZT::RangeMulti shared;
    FindShared(SetOf(upper), SetOf(lower), shared);
    Spans spans;
    for (ZT::int64 i = 0; i < shared.GetCount(); ++i) {
        spans.emplace_back(shared.GetAt(i).m_min, shared.GetAt(i).m_max);
    }
    return spans;
}

TEST(FindShared, CutsTheMembersOfOneSetWithThoseOfTheOther) {
    EXPECT_EQ(Shared({{0, 2}, {3, 5}}, {{1, 4}}), (Spans{{1, 2}, {3, 4}}));
    EXPECT_EQ(Shared({{1, 4}}, {{0, 2}, {3, 5}}), (Spans{{1, 2}, {3, 4}}));
    EXPECT_EQ(Shared({{0, 1}, {4, 5}}, {{0, 1}, {4, 5}}), (Spans{{0, 1}, {4, 5}}));
}

TEST(FindShared, IsEmptyWhereNothingMeets) {
    EXPECT_THAT(Shared({{0, 1}, {4, 5}}, {{2, 3}}), IsEmpty());
    EXPECT_THAT(Shared({}, {{2, 3}}), IsEmpty());
    EXPECT_THAT(Shared({{2, 3}}, {}), IsEmpty());
}

Spans ArbitrarySpans() {
    const auto step = rc::gen::inRange(1, 6);
    Spans spans;
    double at = 0.0;
    const int count = *rc::gen::inRange(0, 12);
    for (int i = 0; i < count; ++i) {
        const double from = at + *step, to = from + *step;
        spans.emplace_back(from, to);
        at = to;
    }
    return spans;
}

TEST(FindShared, HasTheLengthThatAllPairsHave) {
    EXPECT_TRUE(rc::check("the shared length is that of all pairs", [] {
        const Spans upper = ArbitrarySpans(), lower = ArbitrarySpans();
        double expected = 0.0, length = 0.0;
        for (const Span& a : upper) {
            for (const Span& b : lower) {
                expected +=
                    std::max(0.0, std::min(a.second, b.second) - std::max(a.first, b.first));
            }
        }
        for (const Span& span : Shared(upper, lower)) {
            length += span.second - span.first;
        }
        RC_ASSERT(length == expected);
    }));
}

TEST(FillFigures, SumTheLengthsOfAllLines) {
    const FourLines section({{Rectangle(1, 1, 3, 3)}, {}});
    const FillFigures figures(section.fill, nullptr);
    EXPECT_EQ(figures.m_material, 4.0);
    EXPECT_EQ(figures.m_voids, 12.0);
    EXPECT_EQ(figures.Share(), 0.25);
    EXPECT_EQ(figures.m_carried, 0.0);
}

TEST(FillFigures, TellTheShareThatTheLayerBelowCarries) {
    const FourLines section({{Rectangle(0, 0, 2, 4)}, {}});
    const FourLines below({{Rectangle(1, 0, 3, 4)}, {}});
    const FourLines half({{Rectangle(0, 2, 4, 4)}, {}});
    EXPECT_EQ(FillFigures(section.fill, &below.fill).m_carried, 0.5);
    EXPECT_EQ(FillFigures(section.fill, &half.fill).m_carried, 0.5);
    EXPECT_EQ(FillFigures(section.fill, &section.fill).m_carried, 1.0);
}

TEST(FillFigures, OfNothingAreZero) {
    const FillFigures none{Fill(), nullptr};
    EXPECT_EQ(none.m_material, 0.0);
    EXPECT_EQ(none.Share(), 0.0);
    const FourLines empty(ContourSet{});
    const FillFigures figures(empty.fill, &empty.fill);
    EXPECT_EQ(figures.m_voids, 16.0);
    EXPECT_EQ(figures.Share(), 0.0);
    EXPECT_EQ(figures.m_carried, 0.0);
}

}  // namespace
}  // namespace section
