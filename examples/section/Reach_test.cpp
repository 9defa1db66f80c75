#include "section/Reach.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "section/Number.h"

namespace section {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using ZT::z2Pi;
using ZT::zPi;

constexpr double kNear = 1e-9;

Loop Rectangle(double x0, double y0, double x1, double y1) {
    return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
}

Loop Reversed(const Loop& loop) {
    return {loop.rbegin(), loop.rend()};
}

/// Arcs in degrees, such as "90..0", or "all".
std::vector<std::string> Degrees(const ZT::SetS1& arcs) {
    std::vector<std::string> texts;
    for (const ZT::RangeS1* const arc : arcs) {
        const auto angle = [](double radians) { return Fixed(radians * ZT::zDegPerRad, 3); };
        texts.push_back(arc->IsFull() ? "all" : angle(arc->m_min) + ".." + angle(arc->m_max));
    }
    return texts;
}

std::vector<std::string> WaysTo(const ContourPoint& point, const ContourSet& contours) {
    return Degrees(FreeWays(contours, point).Arcs());
}

// -------------------------------------------------------------------------- single points

const Loop kSquare = Rectangle(0, 0, 4, 4);

TEST(FreeWays, OfACornerAreThreeQuarters) {
    for (const Loop& square : {kSquare, Reversed(kSquare)}) {
        EXPECT_THAT(WaysTo({0, 0}, {{square}, {}}), ElementsAre("90.000..0.000"));
        EXPECT_THAT(WaysTo({4, 4}, {{square}, {}}), ElementsAre("-90.000..180.000"));
    }
}

TEST(FreeWays, OfAnEdgeAreAHalf) {
    EXPECT_THAT(WaysTo({2, 0}, {{kSquare}, {}}), ElementsAre("180.000..0.000"));
    EXPECT_THAT(WaysTo({4, 1}, {{kSquare}, {}}), ElementsAre("-90.000..90.000"));
}

TEST(FreeWays, OfAHoleAreNone) {
    const ContourSet ring{{kSquare, Rectangle(1, 1, 3, 3)}, {}};
    EXPECT_THAT(WaysTo({1, 1}, ring), IsEmpty());
    EXPECT_THAT(WaysTo({2, 3}, ring), IsEmpty());
    EXPECT_THAT(WaysTo({0, 0}, ring), ElementsAre("90.000..0.000"));
}

TEST(FreeWays, OfAnIslandInAHoleAreNone) {
    EXPECT_THAT(
        WaysTo({1.5, 1.5}, {{Rectangle(1.5, 1.5, 2.5, 2.5), kSquare, Rectangle(1, 1, 3, 3)}, {}}),
        IsEmpty());
}

TEST(FreeWays, LoseWhatANeighbourCovers) {
    // A square of width 1 in front of the right edge of another, seen from its corner.
    const ContourSet squares{{Rectangle(0, 0, 1, 1), Rectangle(3, 0, 4, 1)}, {}};
    EXPECT_THAT(WaysTo({1, 1}, squares),
                UnorderedElementsAre("-90.000..-26.565", "0.000..180.000"));
    EXPECT_THAT(WaysTo({3, 0}, squares), UnorderedElementsAre("90.000..153.435", "180.000..0.000"));
}

TEST(FreeWays, LoseWhatANeighbourOverTheSeamCovers) {
    const ContourSet squares{{Rectangle(0, 0, 1, 2), Rectangle(-2, 0, -1, 2)}, {}};
    EXPECT_THAT(WaysTo({0, 1}, squares),
                UnorderedElementsAre("90.000..135.000", "-135.000..-90.000"));
}

TEST(FreeWays, LeadOutOfAPocket) {
    // A square of width 3 with a slot from its middle upwards.
    const Loop u{{0, 0}, {3, 0}, {3, 3}, {2, 3}, {2, 1}, {1, 1}, {1, 3}, {0, 3}};
    for (const Loop& loop : {u, Reversed(u)}) {
        EXPECT_THAT(WaysTo({1, 1}, {{loop}, {}}), ElementsAre("63.435..90.000"));
        EXPECT_THAT(WaysTo({1.5, 1}, {{loop}, {}}), ElementsAre("75.964..104.036"));
        EXPECT_THAT(WaysTo({1, 2}, {{loop}, {}}), ElementsAre("45.000..90.000"));
        EXPECT_THAT(WaysTo({0, 0}, {{loop}, {}}), ElementsAre("90.000..0.000"));
    }
}

TEST(FreeWays, LeadOutBetweenLoopsThatTouchAtThePoint) {
    const ContourSet touching{{Rectangle(0, 0, 1, 1), Rectangle(1, 1, 2, 2)}, {}};
    EXPECT_THAT(WaysTo({1, 1}, touching),
                UnorderedElementsAre("-90.000..0.000", "90.000..180.000"));
}

TEST(FreeWays, StopAtALoopThatTouchesTheEdge) {
    // Two squares side by side, seen from the upper end of the edge that they share, and
    // from the corner of a small one on the edge of a large one.
    EXPECT_THAT(WaysTo({1, 1}, {{Rectangle(0, 0, 1, 1), Rectangle(1, 0, 2, 1)}, {}}),
                ElementsAre("0.000..180.000"));
    EXPECT_THAT(WaysTo({4, 1}, {{Rectangle(4, 1, 5, 2), kSquare}, {}}),
                ElementsAre("-90.000..0.000"));
}

TEST(FreeWays, AreAllOfTheCircleWhereNothingIs) {
    EXPECT_THAT(WaysTo({0, 0}, {}), ElementsAre("all"));
    EXPECT_EQ(AngleOf(FreeWays({}, {0, 0}).Arcs()), z2Pi);
}

TEST(FreeWays, SeeToBothSidesOfAnOpenChain) {
    const ContourSet straight{{}, {{{0, 0}, {2, 1}}}};
    EXPECT_THAT(WaysTo({0, 0}, straight), ElementsAre("all"));
    EXPECT_THAT(WaysTo({1, 0.5}, straight), ElementsAre("all"));

    const ContourSet bent{{}, {{{-1, 1}, {0, 0}, {1, 1}}}};
    EXPECT_THAT(WaysTo({0, 0}, bent), ElementsAre("all"));
    EXPECT_THAT(WaysTo({1, 1}, bent), ElementsAre("-135.000..180.000"));
}

TEST(FreeWays, OfATenthOfADegreeAreTheNarrowest) {
    // Two walls with a gap between, seen from a distance of 1000.
    const auto waysThrough = [](double gap) {
        const ContourSet walls{
            {},
            {{{1000, gap / 2}, {-1000, 2000}, {-1000, -2000}}, {{1000, -gap / 2}, {-1000, -2000}}}};
        return FreeWays(walls, {0, 0}).Arcs().GetCount();
    };
    EXPECT_EQ(waysThrough(1.8), 1);
    EXPECT_EQ(waysThrough(1.7), 0);
}

// ------------------------------------------------------------------------------ contours

std::vector<std::string> WaysToContour(const ContourSet& contours, std::size_t index = 0) {
    const Reach reach(contours, {2, 2});
    return Degrees(reach.All()[index].Arcs());
}

TEST(ContourReach, LooksFromTheFarthestVertexAndEqualPartsOfTheContour) {
    const ContourSet contours{{kSquare}, {}};
    const ContourReach reach(contours, kSquare, true, {1, 1}, 8);
    std::vector<ContourPoint> points;
    for (const FreeWays& ways : reach.Points()) {
        points.push_back(ways.From());
    }
    EXPECT_THAT(points, ElementsAre(ContourPoint{4, 4}, ContourPoint{2, 4}, ContourPoint{0, 4},
                                    ContourPoint{0, 2}, ContourPoint{0, 0}, ContourPoint{2, 0},
                                    ContourPoint{4, 0}, ContourPoint{4, 2}));
}

TEST(ContourReach, DividesAnOpenChainBetweenItsEnds) {
    const Chain chain{{0, 0}, {8, 0}};
    const ContourReach reach({{}, {chain}}, chain, false, {0, 0}, 4);
    std::vector<ContourPoint> points;
    for (const FreeWays& ways : reach.Points()) {
        points.push_back(ways.From());
    }
    EXPECT_THAT(points, ElementsAre(ContourPoint{8, 0}, ContourPoint{2, 0}, ContourPoint{4, 0},
                                    ContourPoint{6, 0}));
}

TEST(ContourReach, IsTheUnionOfTheWaysToItsPoints) {
    EXPECT_THAT(WaysToContour({{kSquare}, {}}), ElementsAre("all"));
    EXPECT_THAT(WaysToContour({{kSquare, Rectangle(1, 1, 3, 3)}, {}}, 0), ElementsAre("all"));
    EXPECT_THAT(WaysToContour({{kSquare, Rectangle(1, 1, 3, 3)}, {}}, 1), IsEmpty());
}

TEST(ContourReach, LosesWhatIsHiddenFromAllPoints) {
    // A square in a frame that is open to the right: 1 wide, and 9 from the opening.
    const Loop frame{{-2, -2}, {10, -2}, {10, -1}, {-1, -1}, {-1, 2}, {10, 2}, {10, 3}, {-2, 3}};
    const std::vector<std::string> ways = WaysToContour({{Rectangle(0, 0, 1, 1), frame}, {}}, 0);
    // From (1, 0) to (10, 2), and from (1, 1) to (10, -1).
    EXPECT_THAT(ways, ElementsAre("-12.529..12.529"));
}

TEST(ContourReach, OfAConvexLoopIsAllRound) {
    EXPECT_TRUE(rc::check("each point of a convex loop sees a half-plane, all see all", [] {
        Loop loop;
        for (int place = 0; place < 360; place += *rc::gen::inRange(1, 120)) {
            loop.push_back({100 + 3 * std::cos(place * ZT::zRadPerDeg),
                            7 + 2 * std::sin(place * ZT::zRadPerDeg)});
        }
        const Reach reach({{*rc::gen::arbitrary<bool>() ? loop : Reversed(loop)}, {}}, {0, 0});
        double most = 0.0;
        for (const FreeWays& ways : reach.All()[0].Points()) {
            const double angle = AngleOf(ways.Arcs());
            RC_ASSERT(ways.Arcs().GetCount() == 1);
            RC_ASSERT(angle > zPi - 1e-5);
            most = std::max(most, angle);
        }
        RC_ASSERT(most < z2Pi);
        RC_ASSERT(reach.All()[0].Arcs().IsFull() || AngleOf(reach.All()[0].Arcs()) > zPi);
    }));
}

TEST(Reach, LooksAtNoMoreThan32ContoursTheLongestOnes) {
    ContourSet contours;
    for (int i = 0; i < 40; ++i) {
        const double size = i % 5 == 0 ? 1.0 : 2.0;  // 8 small ones and 32 large ones
        contours.m_loops.push_back(Rectangle(4 * i, 0, 4 * i + size, size));
    }
    const Reach reach(contours, {80, 1});
    ASSERT_EQ(reach.All().size(), 32u);
    for (const ContourReach& contour : reach.All()) {
        EXPECT_EQ(contour.Points().size(), 8u);
        EXPECT_GE(std::fmod(contour.Points().front().From().m_x, 20.0), 2.0);
    }
}

TEST(Reach, LooksAtOneContourOfManySegments) {
    const auto circle = [](double x, double radius) {
        Loop loop;
        for (int i = 0; i < 20000; ++i) {
            const double angle = z2Pi * i / 20000;
            loop.push_back({x + radius * std::cos(angle), radius * std::sin(angle)});
        }
        return loop;
    };
    const Reach reach({{circle(0, 1), circle(10, 2)}, {}}, {5, 0});
    ASSERT_EQ(reach.All().size(), 1u);
    EXPECT_NEAR(reach.All()[0].Points().front().From().m_x, 12.0, kNear);
}

TEST(Reach, LooksAtAsManyContoursAsItsSightsAllow) {
    ContourSet contours;
    for (int i = 0; i < 20; ++i) {
        contours.m_loops.push_back(Rectangle(4 * i, 0, 4 * i + 1, 1));
    }
    // 80 segments and one to spare, seen from 8 points of a contour each.
    EXPECT_EQ(Reach(contours, {80, 1}, 8 * 81 * 5).All().size(), 5u);
    EXPECT_EQ(Reach(contours, {80, 1}, 8 * 81 * 5 - 1).All().size(), 4u);
    EXPECT_EQ(Reach(contours, {80, 1}, 1).All().size(), 1u);
}

TEST(Reach, GivesEachOfManyLayersFewerSights) {
    EXPECT_EQ(Reach::SightsFor(0), 262144u);
    EXPECT_EQ(Reach::SightsFor(256), 262144u);
    EXPECT_EQ(Reach::SightsFor(1024), 65536u);
    EXPECT_EQ(Reach::SightsFor(100000), 1024u);
}

TEST(ReachFigures, CountWhatIsReached) {
    const ReachFigures ring{Reach({{kSquare, Rectangle(1, 1, 3, 3)}, {}}, {2, 2})};
    EXPECT_EQ(ring.m_nContours, 2u);
    EXPECT_EQ(ring.m_nReached, 1u);
    EXPECT_NEAR(ring.m_free, zPi, kNear);
    EXPECT_TRUE(ring.m_hardest.IsFull());
}

TEST(ReachFigures, TellTheWidestWayToTheHardestContour) {
    const Loop frame{{-2, -2}, {10, -2}, {10, -1}, {-1, -1}, {-1, 2}, {10, 2}, {10, 3}, {-2, 3}};
    const ReachFigures figures{Reach({{frame, Rectangle(0, 0, 1, 1)}, {}}, {2, 2})};
    EXPECT_EQ(figures.m_nReached, 2u);
    EXPECT_NEAR(figures.m_hardest.GetDiff(), 2 * std::atan2(2, 9), kNear);
}

TEST(ReachFigures, OfNothingAreZero) {
    const ReachFigures none{Reach()};
    EXPECT_EQ(none.m_nContours, 0u);
    EXPECT_EQ(none.m_nReached, 0u);
    EXPECT_EQ(none.m_free, 0.0);
    EXPECT_TRUE(none.m_hardest.IsEmpty());
}

}  // namespace
}  // namespace section
