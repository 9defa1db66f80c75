// Arcs against arcs, over all pairs of a family and at what is odd about them.

#include <zt/ranges/RangeS1.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zt/ranges/RangeS1Family_test.h>

#include <array>
#include <bitset>
#include <cmath>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace ZT {
namespace {

using namespace testing_support;

using EState = RangeS1::EState;

constexpr double kBeyond = 2e-10;
constexpr double kWithin = 5e-11;

// A regular arc as the set of its places: the points of the grid, at even indices, and the
// open steps between them.
constexpr int kCells = 4 * kHalfTurn;
using Cells = std::bitset<kCells>;

int CellOf(int steps) {
    return (2 * steps + kCells) % kCells;
}

Cells CellsOf(const GridArc& arc) {
    Cells cells;
    for (int cell = CellOf(arc.start); cell != CellOf(arc.end); cell = (cell + 1) % kCells) {
        cells.set(static_cast<std::size_t>(cell));
    }
    cells.set(static_cast<std::size_t>(CellOf(arc.end)));
    return cells;
}

bool Has(const Cells& cells, int cell) {
    return cells[static_cast<std::size_t>((cell + kCells) % kCells)];
}

// Adds the ends to what steps are left.
Cells Closed(const Cells& cells) {
    Cells closed;
    for (int cell = 1; cell < kCells; cell += 2) {
        for (int i = cell - 1; Has(cells, cell) && i <= cell + 1; ++i) {
            closed.set(static_cast<std::size_t>(i % kCells));
        }
    }
    return closed;
}

struct Stretch {
    double start;
    double end;
};

double AngleOfCell(int cell) {
    const int place = cell % kCells;
    return GridAngle((place > 2 * kHalfTurn ? place - kCells : place) / 2.0);
}

// The runs of a set that is not the whole circle, the one that holds `first` ahead.
std::vector<Stretch> RunsOf(const Cells& cells, int first) {
    int begin = first;
    while (Has(cells, begin) && Has(cells, begin - 1)) --begin;
    std::vector<Stretch> runs;
    for (int cell = begin; cell < begin + kCells; ++cell) {
        if (!Has(cells, cell)) continue;
        const int start = cell;
        while (Has(cells, cell + 1)) ++cell;
        runs.push_back({AngleOfCell(start + kCells), AngleOfCell(cell + kCells)});
    }
    return runs;
}

MATCHER_P2(IsNear, lo, hi, "lies between " + InFull(lo) + " and " + InFull(hi)) {
    return std::fabs(arg.m_min - lo) < 1e-14 && std::fabs(arg.m_max - hi) < 1e-14 &&
           arg.m_eState == RangeS1::eStatePartial;
}

template <class Check>
void ForAllPairs(const std::vector<GridArc>& family, Check check) {
    for (const GridArc& a : family) {
        for (const GridArc& b : family) {
            SCOPED_TRACE(a.name + " and " + b.name);
            check(a, b);
        }
    }
}

// What holds for every pair of regular arcs, as sets of places.

TEST(RangeS1Pairs, RegularArcContainsItsSubsets) {
    ForAllPairs(RegularArcs(), [](const GridArc& a, const GridArc& b) {
        EXPECT_EQ(a.Arc() >= b.Arc(), (CellsOf(b) & ~CellsOf(a)).none());
    });
}

TEST(RangeS1Pairs, RegularArcIsInsideOfItsSupersets) {
    ForAllPairs(RegularArcs(), [](const GridArc& a, const GridArc& b) {
        EXPECT_EQ(a.Arc().IsInsideOf(b.Arc()), (CellsOf(a) & ~CellsOf(b)).none());
    });
}

TEST(RangeS1Pairs, RegularArcsAreComplimentaryWhenTheyShareTheirEndsOnly) {
    ForAllPairs(RegularArcs(), [](const GridArc& a, const GridArc& b) {
        const Cells shared = CellsOf(a) & CellsOf(b);
        const bool all = (CellsOf(a) | CellsOf(b)).all();
        EXPECT_EQ(a.Arc().IsComplimentary(b.Arc()), all && shared.count() == 2);
    });
}

TEST(RangeS1Pairs, IntersectionOfRegularArcsIsWhatTheyShare) {
    ForAllPairs(RegularArcs(), [](const GridArc& a, const GridArc& b) {
        const auto runs = RunsOf(CellsOf(a) & CellsOf(b), CellOf(a.start));
        RangeS1 arc = a.Arc();
        RangeS1 r = b.Arc();
        ASSERT_EQ(arc.Intersect(r), runs.size());
        EXPECT_EQ(a.Arc().IsEmptyIntersection(b.Arc()), runs.empty());
        EXPECT_THAT(r, IsNear(GridAngle(b.start), GridAngle(b.end)));
        if (runs.empty()) {
            EXPECT_THAT(arc, IsArc(a.Arc().m_min, a.Arc().m_max, RangeS1::eStateEmpty));
        } else {
            EXPECT_THAT(arc, IsNear(runs[0].start, runs[0].end));
        }
    });
}

TEST(RangeS1Pairs, SubtractionOfRegularArcsLeavesTheRestWithItsEnds) {
    ForAllPairs(RegularArcs(), [](const GridArc& a, const GridArc& b) {
        const auto runs = RunsOf(Closed(CellsOf(a) & ~CellsOf(b)), CellOf(a.start));
        RangeS1 arc = a.Arc();
        RangeS1 r = b.Arc();
        bool changed = true;
        ASSERT_EQ(arc.Subtract(r, &changed), runs.size());
        if (runs.empty()) {
            EXPECT_THAT(arc, IsArc(a.Arc().m_min, a.Arc().m_max, RangeS1::eStateEmpty));
            EXPECT_TRUE(changed);
            return;
        }
        EXPECT_THAT(arc, IsNear(runs[0].start, runs[0].end));
        const Stretch second = runs.size() == 2 ? runs[1] : Stretch{b.Arc().m_min, b.Arc().m_max};
        EXPECT_THAT(r, IsNear(second.start, second.end));
        const bool startMoved = std::fabs(arc.m_min - a.Arc().m_min) > zToler;
        EXPECT_EQ(changed, runs.size() == 1 && startMoved);
    });
}

RangeR1::ERangeLocn LocationAsSets(const GridArc& a, const GridArc& b) {
    const Cells own = CellsOf(a);
    const Cells other = CellsOf(b);
    const bool sameStart = a.start == b.start;
    const bool sameEnd = a.end == b.end;
    if (own == other) return RangeR1::eRangeLocnSame;
    if ((other & ~own).none()) {
        return sameStart ? RangeR1::eRangeLocnInAtMin
               : sameEnd ? RangeR1::eRangeLocnInAtMax
                         : RangeR1::eRangeLocnIn;
    }
    if ((own & ~other).none()) {
        return sameStart ? RangeR1::eRangeLocnCoverAtMin
               : sameEnd ? RangeR1::eRangeLocnCoverAtMax
                         : RangeR1::eRangeLocnCover;
    }
    const auto runs = RunsOf(own & other, CellOf(a.start));
    if (runs.empty()) return RangeR1::eRangeLocnApart;
    return runs[0].start == runs[0].end ? RangeR1::eRangeLocnTouch : RangeR1::eRangeLocnOverlap;
}

TEST(RangeS1Pairs, LocationOfRegularArcsIsThatOfTheSets) {
    ForAllPairs(RegularArcs(), [](const GridArc& a, const GridArc& b) {
        EXPECT_EQ(a.Arc().GetRangeLocation(b.Arc(), zToler), LocationAsSets(a, b));
        EXPECT_EQ(a.Arc().GetRangeLocation(b.Arc(), 1e-6), LocationAsSets(a, b));
    });
}

// The rest of the family, by its steps in whole numbers of half grid steps.
struct Model {
    int start;
    int end;
    bool external;
    EState state;

    explicit Model(const GridArc& arc)
        : start(2 * arc.start), end(2 * arc.end), external(arc.external), state(arc.state) {}

    static constexpr int kTurn = 4 * kHalfTurn;
    static int Way(int from, int to) { return (to - from + 2 * kTurn) % kTurn; }
    static bool On(int x, int from, int to) { return Way(from, x) <= Way(from, to); }
    static int Middle(int from, int to) { return (from + Way(from, to) / 2 + kTurn) % kTurn; }

    bool Holds(int x) const { return external ? On(x, end, start) : On(x, start, end); }
    bool HoldsBoth(const Model& r) const { return Holds(r.start) && Holds(r.end); }
    int InGap() const { return external ? Middle(start, end) : Middle(end, start); }
    int Outside() const { return state == RangeS1::eStatePartial ? Middle(end, start) : 0; }
    bool IsPoint() const { return start == end; }
    void MakeEmpty() { state = RangeS1::eStateEmpty; }

    bool Contains(const Model& r) const {
        switch (state) {
            case RangeS1::eStateFull:
                return true;
            case RangeS1::eStateEmpty:
                return r.state == RangeS1::eStateEmpty;
            default:
                return HoldsBoth(r) && r.state != RangeS1::eStateFull && !r.Holds(InGap());
        }
    }

    bool IsInside(const Model& r) const {
        if (state == RangeS1::eStateEmpty) return true;
        const bool ends = r.state == RangeS1::eStateFull || r.HoldsBoth(*this);
        return ends && state != RangeS1::eStateFull && !Holds(r.Outside());
    }

    void BecomeCopyOf(const Model& r) {
        const bool point = r.start == r.end;
        start = point ? kTurn / 2 : r.start;
        end = point ? kTurn / 2 : r.end;
        state = point ? RangeS1::eStateFull : RangeS1::eStatePartial;
    }

    int Intersect(const Model& r) {
        if (state == RangeS1::eStateEmpty) return 0;
        if (r.state == RangeS1::eStateFull) return 1;
        if (r.state == RangeS1::eStateEmpty) return MakeEmpty(), 0;
        if (state == RangeS1::eStateFull) return BecomeCopyOf(r), 1;
        const int held = (Holds(r.start) ? 1 : 0) + (Holds(r.end) ? 2 : 0);
        const bool inside = IsInside(r);
        const int outside = Outside();
        if (held == 0 && !inside) MakeEmpty();
        if (held == 0) return inside ? 1 : 0;
        const bool two = held == 3 && r.Holds(outside);
        if (held != 2 && !two) start = r.start;
        if (held != 1) end = r.end;
        return two ? 2 : 1;
    }

    // Count and whether the change is told; `r` becomes the second piece.
    std::pair<int, bool> Subtract(Model& r) {
        if (state == RangeS1::eStateEmpty) return {0, false};
        if (state == RangeS1::eStateFull) {
            if (r.state == RangeS1::eStateEmpty) return {1, false};
            start = r.end;
            end = r.start;
            state = RangeS1::eStatePartial;
            return {1, true};
        }
        if (r.IsPoint()) return {1, false};
        if (IsInside(r)) return MakeEmpty(), std::pair(0, true);
        if (!r.IsInside(*this)) {
            const bool full = r.state == RangeS1::eStateFull;
            const bool fromStart = full || r.Holds(start);
            const bool fromEnd = full || r.Holds(end);
            const bool told = fromStart && start != r.end;
            if (fromStart) start = r.end;
            if (fromEnd) end = r.start;
            return {1, told};
        }
        if (start == r.start && end == r.end) return MakeEmpty(), std::pair(0, false);
        if (start == r.start) return start = r.end, std::pair(1, true);
        if (end == r.end) return end = r.start, std::pair(1, false);
        const int oldEnd = end;
        end = r.start;
        r.start = r.end;
        r.end = oldEnd;
        r.state = RangeS1::eStatePartial;
        return {2, false};
    }

    bool IsComplimentary(const Model& r) const {
        if (state == RangeS1::eStateFull) return r.state == RangeS1::eStateEmpty;
        if (state == RangeS1::eStateEmpty) return r.state == RangeS1::eStateFull;
        return r.start == end && r.end == start;
    }

    RangeR1::ERangeLocn Location(const Model& r) const {
        const bool sameStart = start == r.start;
        const bool sameEnd = end == r.end;
        if (r.IsInside(*this)) {
            if (sameStart && sameEnd) return RangeR1::eRangeLocnSame;
            if (sameStart) {
                return r.IsPoint() ? RangeR1::eRangeLocnPointAtMin : RangeR1::eRangeLocnInAtMin;
            }
            if (!sameEnd) return RangeR1::eRangeLocnIn;
            return r.IsPoint() ? RangeR1::eRangeLocnPointAtMax : RangeR1::eRangeLocnInAtMax;
        }
        if (IsInside(r)) {
            return sameStart ? RangeR1::eRangeLocnCoverAtMin
                   : sameEnd ? RangeR1::eRangeLocnCoverAtMax
                             : RangeR1::eRangeLocnCover;
        }
        Model shared(*this);
        if (shared.Intersect(r) == 0) return RangeR1::eRangeLocnApart;
        return shared.IsPoint() ? RangeR1::eRangeLocnTouch : RangeR1::eRangeLocnOverlap;
    }
};

MATCHER_P(FollowsModel, model,
          "lies between " + InFull(GridAngle(model.start / 2.0)) + " and " +
              InFull(GridAngle(model.end / 2.0)) + ", state " + std::to_string(model.state)) {
    return std::fabs(arg.m_min - GridAngle(model.start / 2.0)) < 1e-14 &&
           std::fabs(arg.m_max - GridAngle(model.end / 2.0)) < 1e-14 &&
           arg.m_bExternal == model.external && arg.m_eState == model.state;
}

TEST(RangeS1Pairs, ContainmentTakesItsStepsOnAllArcs) {
    ForAllPairs(AllArcs(), [](const GridArc& a, const GridArc& b) {
        EXPECT_EQ(a.Arc() >= b.Arc(), Model(a).Contains(Model(b)));
    });
}

TEST(RangeS1Pairs, IsInsideOfTakesItsStepsOnAllArcs) {
    ForAllPairs(AllArcs(), [](const GridArc& a, const GridArc& b) {
        EXPECT_EQ(a.Arc().IsInsideOf(b.Arc()), Model(a).IsInside(Model(b)));
    });
}

TEST(RangeS1Pairs, IsComplimentaryTakesItsStepsOnAllArcs) {
    ForAllPairs(AllArcs(), [](const GridArc& a, const GridArc& b) {
        EXPECT_EQ(a.Arc().IsComplimentary(b.Arc()), Model(a).IsComplimentary(Model(b)));
    });
}

TEST(RangeS1Pairs, IntersectTakesItsStepsOnAllArcs) {
    ForAllPairs(AllArcs(), [](const GridArc& a, const GridArc& b) {
        Model expected(a);
        RangeS1 arc = a.Arc();
        RangeS1 r = b.Arc();
        EXPECT_EQ(arc.Intersect(r), expected.Intersect(Model(b)));
        EXPECT_THAT(arc, FollowsModel(expected));
        EXPECT_THAT(r, FollowsModel(Model(b)));
    });
}

TEST(RangeS1Pairs, IsEmptyIntersectionIsIntersectOnCopiesOfAllArcs) {
    ForAllPairs(AllArcs(), [](const GridArc& a, const GridArc& b) {
        EXPECT_EQ(a.Arc().IsEmptyIntersection(b.Arc()), Model(a).Intersect(Model(b)) == 0);
    });
}

TEST(RangeS1Pairs, SubtractTakesItsStepsOnAllArcs) {
    ForAllPairs(AllArcs(), [](const GridArc& a, const GridArc& b) {
        Model expected(a);
        Model rest(b);
        const auto [count, told] = expected.Subtract(rest);
        RangeS1 arc = a.Arc();
        RangeS1 r = b.Arc();
        bool changed = !told;
        EXPECT_EQ(arc.Subtract(r, &changed), count);
        EXPECT_EQ(changed, told);
        EXPECT_THAT(arc, FollowsModel(expected));
        EXPECT_THAT(r, FollowsModel(rest));
    });
}

TEST(RangeS1Pairs, LocationTakesItsStepsOnAllArcs) {
    ForAllPairs(AllArcs(), [](const GridArc& a, const GridArc& b) {
        EXPECT_EQ(a.Arc().GetRangeLocation(b.Arc(), zToler), Model(a).Location(Model(b)));
    });
}

// The odd ones, worked out by hand. Rows and columns stand in this order: the whole circle, a
// new arc, an empty one that has kept the first quadrant, the point at 0, the upper half, the
// lower half, the first quadrant, and the same with the flag, which is all but that.
std::array<RangeS1, 8> OddArcs() {
    return {FullArc(),        RangeS1(),        EmptyArc(0.0, zPi / 2), RawArc(0.0, 0.0),
            RawArc(0.0, zPi), RawArc(zPi, 0.0), RawArc(0.0, zPi / 2),   ExternalArc(0.0, zPi / 2)};
}

// Compares the answers to a table with one character per answer.
void ExpectTable(const std::array<std::string_view, 8>& rows,
                 const std::function<char(RangeS1&, RangeS1&)>& answer) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::string answers;
        for (std::size_t j = 0; j < rows.size(); ++j) {
            RangeS1 a = OddArcs()[i];
            RangeS1 b = OddArcs()[j];
            answers += answer(a, b);
        }
        EXPECT_EQ(answers, rows[i]) << "row " << i;
    }
}

char Mark(bool yes) {
    return yes ? 'x' : '.';
}

TEST(RangeS1OddPairs, Containment) {
    const auto contains = [](RangeS1& a, RangeS1& b) { return Mark(a >= b); };
    ExpectTable(
        {
            "xxxxxxxx",  // the whole circle contains everything
            "xxxxxxxx",  //
            "..x.....",  // an empty arc contains what is empty
            "........",  // a point does not contain itself
            "..xxx.x.",  // an empty arc counts by the limits that it has kept
            "...x.x..",  //
            "..xx..x.",  //
            "...x.x.x",  //
        },
        contains);
}

TEST(RangeS1OddPairs, InsideOf) {
    const auto inside = [](RangeS1& a, RangeS1& b) { return Mark(a.IsInsideOf(b)); };
    ExpectTable(
        {
            "........",  // the whole circle is inside nothing, not even itself
            "........",  //
            "xxxxxxxx",  // what is empty is inside everything
            "....xxxx",  // a point is not inside itself
            "....x..x",  // the upper half is inside all but the first quadrant, by its flag
            ".....x..",  // and the lower half, which lies there, is not
            "....x.xx",  //
            "........",  // an external arc is not even inside itself
        },
        inside);
}

TEST(RangeS1OddPairs, Complimentary) {
    const auto complimentary = [](RangeS1& a, RangeS1& b) { return Mark(a.IsComplimentary(b)); };
    ExpectTable(
        {
            "..x.....",  //
            "..x.....",  //
            "xx......",  //
            ".x.x....",  // a new arc is at 0 too, whatever its state
            ".....x..",  //
            "....x...",  //
            "........",  //
            "........",  //
        },
        complimentary);
}

TEST(RangeS1OddPairs, CountsOfIntersection) {
    const auto count = [](RangeS1& a, RangeS1& b) {
        return static_cast<char>('0' + a.Intersect(b));
    };
    ExpectTable(
        {
            "11011111",  //
            "11011111",  //
            "00000000",  //
            "11021111",  // a point meets itself twice
            "11011212",  // the halves meet in two points
            "11012111",  //
            "11011112",  //
            "11011212",  //
        },
        count);
}

TEST(RangeS1OddPairs, CountsOfSubtraction) {
    const auto count = [](RangeS1& a, RangeS1& b) {
        return static_cast<char>('0' + a.Subtract(b, nullptr));
    };
    ExpectTable(
        {
            "11111111",  //
            "11111111",  //
            "00000000",  //
            "11110000",  // the whole circle takes nothing from a point
            "11110110",  //
            "11211011",  // what is empty cuts the lower half in two
            "11010100",  //
            "11011101",  //
        },
        count);
}

TEST(RangeS1OddPairs, ChangesToldBySubtraction) {
    const auto changed = [](RangeS1& a, RangeS1& b) {
        bool told = true;
        a.Subtract(b, &told);
        return Mark(told);
    };
    ExpectTable(
        {
            "xx.xxxxx",  //
            "xx.xxxxx",  //
            "........",  //
            "..x.xxxx",  //
            "..x.x.xx",  //
            ".....x.x",  //
            "....x.xx",  //
            "....x..x",  //
        },
        changed);
}

// A character for each place: Same, Point at the start or at the end, In at the start, at the
// end or Strictly, Cover at the start, at the end or strictly, Overlap, Touch, Apart.
char LocationMark(RangeR1::ERangeLocn location) {
    constexpr std::string_view kMarks = "?Simpq?Scnkot?a";
    return kMarks[static_cast<std::size_t>(location)];
}

TEST(RangeS1OddPairs, Locations) {
    const auto location = [](RangeS1& a, RangeS1& b) {
        return LocationMark(a.GetRangeLocation(b, zToler));
    };
    static_assert(RangeR1::eRangeLocnInAtMin == 2 && RangeR1::eRangeLocnApart == 14);
    ExpectTable(
        {
            "ttStoooo",  //
            "ttitoooo",  //
            "kcScckcc",  //
            "ttitcncc",  //
            "ooipStic",  //
            "ooSqtStt",  //
            "ooSpctSc",  //
            "ooSpitSo",  //
        },
        location);
}

// Containment.

TEST(RangeS1SetOperations, EmptyArgumentIsContainedByTheLimitsItHasKept) {
    EXPECT_TRUE(RangeS1(1.0, 3.0) >= EmptyArc(1.5, 2.0));
    EXPECT_FALSE(RangeS1(1.0, 3.0) >= EmptyArc(-1.0, -0.5));
}

TEST(RangeS1SetOperations, ArcWithTheLimitsOfTheGapIsNotContained) {
    EXPECT_FALSE(RangeS1(1.0, 3.0) >= RangeS1(3.0, 1.0));
    EXPECT_FALSE(RangeS1(3.0, 1.0) >= RangeS1(1.0, 3.0));
}

TEST(RangeS1SetOperations, ContainmentToleratesLimitsJustOutside) {
    EXPECT_TRUE(RangeS1(1.0, 2.0) >= RangeS1(1.0 - kWithin, 2.0 + kWithin));
    EXPECT_FALSE(RangeS1(1.0, 2.0) >= RangeS1(1.0 - kBeyond, 2.0));
    EXPECT_FALSE(RangeS1(1.0, 2.0) >= RangeS1(1.0, 2.0 + kBeyond));
}

TEST(RangeS1SetOperations, InheritedOppositeOfContainmentTakesTheLimitsAsNumbers) {
    // From 3 across the seam to -3 lies within neither, but its numbers do.
    EXPECT_TRUE(RangeS1(2.0, 1.0).RangeR1::operator<=(RangeS1(-3.0, 3.0)));
    EXPECT_TRUE(RangeS1(2.0, 1.0) <= RangeS1(-3.0, 3.0));
    EXPECT_FALSE(RangeS1(-3.0, 3.0) >= RangeS1(2.0, 1.0));
}

TEST(RangeS1SetOperations, InsideOfTheWholeCircleIsDecidedByTheAngleZero) {
    EXPECT_TRUE(RangeS1(1.0, 2.0).IsInsideOf(FullArc()));
    EXPECT_TRUE(RangeS1(1.0, 2.0).IsInsideOf(RangeS1()));
    EXPECT_FALSE(RangeS1(-1.0, 2.0).IsInsideOf(FullArc()));
    EXPECT_FALSE(RangeS1(0.0, 2.0).IsInsideOf(FullArc()));
    EXPECT_FALSE(RangeS1(kWithin, 2.0).IsInsideOf(FullArc()));
    EXPECT_TRUE(RangeS1(kBeyond, 2.0).IsInsideOf(FullArc()));
    EXPECT_FALSE(FullArc().IsInsideOf(FullArc()));
    EXPECT_TRUE(EmptyArc(-1.0, 1.0).IsInsideOf(FullArc()));
}

TEST(RangeS1SetOperations, InsideOfAnEmptyArcTakesItsLimitsAndTheAngleZero) {
    EXPECT_TRUE(RangeS1(1.2, 1.8).IsInsideOf(EmptyArc(1.0, 2.0)));
    EXPECT_FALSE(RangeS1(0.5, 1.8).IsInsideOf(EmptyArc(1.0, 2.0)));
    EXPECT_FALSE(RangeS1(-0.5, 0.5).IsInsideOf(EmptyArc(-1.0, 1.0)));
    EXPECT_TRUE(RangeS1(0.25, 0.5).IsInsideOf(EmptyArc(-1.0, 1.0)));
}

// The complement.

TEST(RangeS1SetOperations, GetComplimentaryOfFullIsEmptyAndFalse) {
    RangeS1 out(1.0, 2.0);
    const RangeS1 before(out);
    EXPECT_FALSE(FullArc().GetComplimentary(out));
    EXPECT_THAT(out, IsArc(before.m_min, before.m_max, RangeS1::eStateEmpty));
}

TEST(RangeS1SetOperations, GetComplimentaryOfEmptyIsFull) {
    RangeS1 out(1.0, 2.0);
    EXPECT_TRUE(EmptyArc(1.0, 2.0).GetComplimentary(out));
    EXPECT_THAT(out, IsCanonicallyFull());
}

TEST(RangeS1SetOperations, GetComplimentaryOfPartialExchangesTheLimitsAsTheyStand) {
    RangeS1 out = EmptyArc(0.0, 0.0);
    out.m_bExternal = true;
    EXPECT_TRUE(RawArc(100.0, -zPi).GetComplimentary(out));
    EXPECT_THAT(out, IsPartial(-zPi, 100.0));
    EXPECT_TRUE(out.m_bExternal);
    EXPECT_TRUE(ExternalArc(1.0, 2.0).GetComplimentary(out));
    EXPECT_THAT(out, IsPartial(2.0, 1.0));
}

TEST(RangeS1SetOperations, GetComplimentaryOfAPointIsAPoint) {
    RangeS1 out;
    EXPECT_TRUE(RangeS1(0.0, 0.0).GetComplimentary(out));
    EXPECT_THAT(out, IsPartial(0.0, 0.0));
}

TEST(RangeS1SetOperations, GetComplimentaryIntoItself) {
    RangeS1 arc = RawArc(1.0, 2.0);
    EXPECT_TRUE(arc.GetComplimentary(arc));
    EXPECT_THAT(arc, IsPartial(2.0, 1.0));
}

TEST(RangeS1SetOperations, ComplimentaryIgnoresTheStateOfAPartialArcsArgument) {
    EXPECT_TRUE(RangeS1(1.0, 2.0).IsComplimentary(RangeS1(2.0, 1.0)));
    EXPECT_TRUE(RawArc(1.0, 2.0).IsComplimentary(EmptyArc(2.0, 1.0)));
    EXPECT_TRUE(RawArc(1.0, 2.0).IsComplimentary(EmptyArc(2.0 + kWithin, 1.0 - kWithin)));
    EXPECT_FALSE(RawArc(1.0, 2.0).IsComplimentary(RawArc(2.0 + kBeyond, 1.0)));
    EXPECT_FALSE(RawArc(1.0, 2.0).IsComplimentary(RawArc(2.0, 1.0 - kBeyond)));
    EXPECT_FALSE(RawArc(1.0, 2.0).IsComplimentary(RawArc(1.0, 2.0)));
}

// The intersection.

TEST(RangeS1SetOperations, IntersectWithEmptyLeavesNothingAndKeepsTheLimits) {
    RangeS1 arc = RawArc(1.0, 2.0);
    RangeS1 r = EmptyArc(1.0, 2.0);
    EXPECT_EQ(arc.Intersect(r), 0);
    EXPECT_THAT(arc, IsArc(1.0, 2.0, RangeS1::eStateEmpty));
    EXPECT_THAT(r, IsArc(1.0, 2.0, RangeS1::eStateEmpty));
}

TEST(RangeS1SetOperations, IntersectOfEmptyDoesNotEvenLookAtTheOther) {
    RangeS1 arc = EmptyArc(1.0, 2.0);
    RangeS1 full = FullArc();
    EXPECT_EQ(arc.Intersect(full), 0);
    EXPECT_THAT(arc, IsArc(1.0, 2.0, RangeS1::eStateEmpty));
}

TEST(RangeS1SetOperations, IntersectOfFullTakesThePartialLimitsWithoutTheFlag) {
    RangeS1 arc = FullArc();
    RangeS1 r = ExternalArc(0.0, zPi);
    EXPECT_EQ(arc.Intersect(r), 1);
    EXPECT_THAT(arc, IsPartial(0.0, zPi));
    EXPECT_FALSE(arc.m_bExternal);
}

TEST(RangeS1SetOperations, IntersectOfFullWithAPointIsFull) {
    RangeS1 arc;
    RangeS1 point(1.0, 1.0);
    EXPECT_EQ(arc.Intersect(point), 1);
    EXPECT_THAT(arc, IsCanonicallyFull());
}

TEST(RangeS1SetOperations, IntersectOfApartArcsKeepsTheLimitsOfTheEmptyResult) {
    RangeS1 arc = RawArc(1.0, 2.0);
    RangeS1 r = RawArc(2.0 + kBeyond, 3.0);
    EXPECT_EQ(arc.Intersect(r), 0);
    EXPECT_THAT(arc, IsArc(1.0, 2.0, RangeS1::eStateEmpty));
}

TEST(RangeS1SetOperations, IntersectInsideTheOtherStaysToTheBit) {
    RangeS1 arc = RawArc(1.25, 1.5);
    RangeS1 r = RawArc(1.0, 2.0);
    EXPECT_EQ(arc.Intersect(r), 1);
    EXPECT_THAT(arc, IsPartial(1.25, 1.5));
}

// An angle that changes its last bit when it is brought into canonical form.
double AngleThatRounds() {
    double angle = 1.75;
    while (S1::Factorize(angle) == angle) angle = std::nextafter(angle, 2.0);
    return angle;
}

TEST(RangeS1SetOperations, IntersectStoresSingleLimitsAsTheyStand) {
    const double odd = AngleThatRounds();
    RangeS1 arc = RawArc(0.5, 2.0);
    RangeS1 r = RawArc(odd, 3.0);
    EXPECT_EQ(arc.Intersect(r), 1);
    EXPECT_THAT(arc, IsPartial(odd, 2.0));
    arc = RawArc(0.5, 2.0);
    r = RawArc(0.0, odd);
    EXPECT_EQ(arc.Intersect(r), 1);
    EXPECT_THAT(arc, IsPartial(0.5, odd));
    arc = RawArc(0.5, 2.0);
    r = RawArc(odd, odd + 0.125);
    EXPECT_EQ(arc.Intersect(r), 1);
    EXPECT_THAT(arc, IsPartial(odd, odd + 0.125));
}

TEST(RangeS1SetOperations, IntersectBringsTwoPiecesIntoCanonicalForm) {
    const double odd = AngleThatRounds();
    RangeS1 arc = RawArc(odd, 0.5);
    RangeS1 r = RawArc(0.25, odd + 0.5);
    EXPECT_EQ(arc.Intersect(r), 2);
    EXPECT_THAT(arc, IsPartial(S1::Factorize(odd), S1::Factorize(odd + 0.5)));
    // The end of the other goes through the reduction once more than its start.
    EXPECT_THAT(r, IsPartial(S1::Factorize(0.25), S1::Factorize(S1::Factorize(odd + 0.5))));
}

TEST(RangeS1SetOperations, IntersectInTwoPiecesDoesNotDeliverTheSecond) {
    RangeS1 arc = RawArc(-2.0, 2.0);
    RangeS1 r = RawArc(1.0, -1.0);
    EXPECT_EQ(arc.Intersect(r), 2);
    EXPECT_THAT(arc, IsPartial(S1::Factorize(-2.0), S1::Factorize(-1.0)));
    EXPECT_NEAR(arc.m_min, -2.0, 1e-15);
    EXPECT_NEAR(arc.m_max, -1.0, 1e-15);
    // Not from 1 to the old end at 2.
    EXPECT_NEAR(r.m_min, 1.0, 1e-15);
    EXPECT_NEAR(r.m_max, -1.0, 1e-15);
}

// Counts what is stored through its Set.
struct Watched : RangeS1 {
    explicit Watched(const RangeS1& r) : RangeS1(r) {}
    void Set(double a, double b) override {
        ++sets;
        RangeS1::Set(a, b);
    }
    int sets = 0;
};

TEST(RangeS1SetOperations, IntersectReachesADerivedSetForTwoPiecesOnly) {
    Watched arc(RawArc(-2.0, 2.0));
    Watched r(RawArc(1.0, -1.0));
    EXPECT_EQ(arc.Intersect(r), 2);
    EXPECT_EQ(arc.sets, 1);
    EXPECT_EQ(r.sets, 1);
    Watched one(RawArc(-2.0, 2.0));
    Watched other(RawArc(1.0, 3.0));
    EXPECT_EQ(one.Intersect(other), 1);
    EXPECT_EQ(one.sets + other.sets, 0);
}

TEST(RangeS1SetOperations, IntersectOfTouchingArcsIsAPoint) {
    RangeS1 arc = RawArc(1.0, 2.0);
    RangeS1 r = RawArc(2.0, 3.0);
    EXPECT_EQ(arc.Intersect(r), 1);
    EXPECT_THAT(arc, IsPartial(2.0, 2.0));
    // The limit of the argument wins at a tie.
    RangeS1 other = RawArc(1.0, 2.0);
    RangeS1 close = RawArc(2.0 + kWithin, 3.0);
    EXPECT_EQ(other.Intersect(close), 1);
    EXPECT_THAT(other, IsPartial(2.0 + kWithin, 2.0));
}

TEST(RangeS1SetOperations, EmptyIntersectionLeavesBothAsTheyWere) {
    const RangeS1 arc = RawArc(-2.0, 2.0);
    const RangeS1 r = RawArc(1.0, -1.0);
    EXPECT_FALSE(arc.IsEmptyIntersection(r));
    EXPECT_THAT(arc, IsPartial(-2.0, 2.0));
    EXPECT_THAT(r, IsPartial(1.0, -1.0));
    EXPECT_TRUE(RangeS1(1.0, 2.0).IsEmptyIntersection(RangeS1(2.5, 0.5)));
}

// Subtraction.

// What is left of an arc, and what was told.
struct Difference {
    Difference(RangeS1 from, const RangeS1& r) : arc(from), rest(r) {
        count = arc.Subtract(rest, &changed);
    }
    RangeS1 arc;
    RangeS1 rest;
    bool changed = true;
    int count = -1;
};

TEST(RangeS1SetOperations, SubtractFromFullLeavesTheComplement) {
    const Difference d(FullArc(), RawArc(1.0, 2.0));
    EXPECT_EQ(d.count, 1);
    EXPECT_THAT(d.arc, IsPartial(2.0, 1.0));
    EXPECT_TRUE(d.changed);
}

TEST(RangeS1SetOperations, SubtractFromFullStoresTheLimitsAsTheyStand) {
    EXPECT_THAT(Difference(FullArc(), RawArc(-zPi, 100.0)).arc, IsPartial(100.0, -zPi));
    // Even the whole circle leaves its limits, as a point.
    EXPECT_THAT(Difference(FullArc(), FullArc()).arc, IsPartial(zPi, zPi));
}

TEST(RangeS1SetOperations, SubtractEmptyFromFullChangesNothing) {
    const Difference d(FullArc(), EmptyArc(1.0, 2.0));
    EXPECT_EQ(d.count, 1);
    EXPECT_THAT(d.arc, IsCanonicallyFull());
    EXPECT_FALSE(d.changed);
}

TEST(RangeS1SetOperations, SubtractFromEmptyIsNothing) {
    const Difference d(EmptyArc(1.0, 2.0), RawArc(1.0, 2.0));
    EXPECT_EQ(d.count, 0);
    EXPECT_THAT(d.arc, IsArc(1.0, 2.0, RangeS1::eStateEmpty));
    EXPECT_FALSE(d.changed);
}

TEST(RangeS1SetOperations, SubtractOfAPointOrOfTheWholeCircleChangesNothing) {
    for (const RangeS1& r :
         {RawArc(1.5, 1.5), RawArc(1.5, 1.5 + kWithin), FullArc(), RangeS1(), EmptyArc(1.0, 1.0)}) {
        const Difference d(RawArc(1.0, 2.0), r);
        EXPECT_EQ(d.count, 1);
        EXPECT_THAT(d.arc, IsPartial(1.0, 2.0));
        EXPECT_FALSE(d.changed);
    }
}

TEST(RangeS1SetOperations, SubtractOfACoverLeavesNothingAndTellsSo) {
    for (const RangeS1& r : {RawArc(1.0, 2.0), RawArc(0.5, 2.5), RawArc(1.0, 3.0)}) {
        const Difference d(RawArc(1.0, 2.0), r);
        EXPECT_EQ(d.count, 0);
        EXPECT_THAT(d.arc, IsArc(1.0, 2.0, RangeS1::eStateEmpty));
        EXPECT_TRUE(d.changed);
    }
}

TEST(RangeS1SetOperations, SubtractOfAnArcInsideLeavesTwoPiecesAndDoesNotTell) {
    const Difference d(RawArc(1.0, 3.0), RawArc(1.5, 2.0));
    EXPECT_EQ(d.count, 2);
    EXPECT_THAT(d.arc, IsPartial(1.0, S1::Factorize(1.5)));
    EXPECT_THAT(d.rest, IsPartial(S1::Factorize(2.0), S1::Factorize(3.0)));
    EXPECT_FALSE(d.changed);
}

TEST(RangeS1SetOperations, SubtractReducesInTwoPiecesButNotTheStart) {
    const double odd = AngleThatRounds();
    const Difference d(RawArc(odd, 3.0), RawArc(odd + 0.5, odd + 1.0));
    EXPECT_THAT(d.arc, IsPartial(odd, S1::Factorize(odd + 0.5)));
    EXPECT_THAT(d.rest, IsPartial(S1::Factorize(odd + 1.0), S1::Factorize(3.0)));
}

TEST(RangeS1SetOperations, SubtractStoresSingleLimitsAsTheyStand) {
    const double odd = AngleThatRounds();
    const RangeS1 arc = RawArc(0.5, 3.0);
    EXPECT_THAT(Difference(arc, RawArc(0.5, odd)).arc, IsPartial(odd, 3.0));
    EXPECT_THAT(Difference(arc, RawArc(odd, 3.0)).arc, IsPartial(0.5, odd));
    EXPECT_THAT(Difference(arc, RawArc(0.25, odd)).arc, IsPartial(odd, 3.0));
    EXPECT_THAT(Difference(arc, RawArc(odd, -3.0)).arc, IsPartial(0.5, odd));
    EXPECT_THAT(Difference(FullArc(), RawArc(odd, 3.0)).arc, IsPartial(3.0, odd));
}

TEST(RangeS1SetOperations, SubtractReachesADerivedSetForTheSecondPieceOnly) {
    const auto setsOf = [](const RangeS1& from, const RangeS1& r) {
        Watched arc(from);
        Watched rest(r);
        arc.Subtract(rest, nullptr);
        return std::pair(arc.sets, rest.sets);
    };
    EXPECT_EQ(setsOf(RawArc(1.0, 3.0), RawArc(1.5, 2.0)), std::pair(0, 1));
    for (const RangeS1& r : {RawArc(1.0, 2.0), RawArc(2.0, 3.0), RawArc(0.5, 2.0),
                             RawArc(2.0, -3.0), RawArc(2.5, 1.5), RawArc(0.5, -3.0)}) {
        EXPECT_EQ(setsOf(RawArc(1.0, 3.0), r), std::pair(0, 0)) << testing::PrintToString(r);
    }
    EXPECT_EQ(setsOf(FullArc(), RawArc(1.0, 2.0)), std::pair(0, 0));
}

TEST(RangeS1SetOperations, SubtractBeyondTheToleranceFromTheEndsLeavesTwoPieces) {
    EXPECT_EQ(Difference(RawArc(1.0, 3.0), RawArc(1.0 + kBeyond, 2.0)).count, 2);
    EXPECT_EQ(Difference(RawArc(1.0, 3.0), RawArc(2.0, 3.0 - kBeyond)).count, 2);
}

TEST(RangeS1SetOperations, SubtractOfASliverAtTheStartTells) {
    const Difference d(RawArc(1.0, 3.0), RawArc(0.0, 1.0 + kBeyond));
    EXPECT_EQ(d.count, 1);
    EXPECT_THAT(d.arc, IsPartial(1.0 + kBeyond, 3.0));
    EXPECT_TRUE(d.changed);
}

TEST(RangeS1SetOperations, SubtractAtTheStartTellsAndAtTheEndDoesNot) {
    const Difference start(RawArc(1.0, 3.0), RawArc(1.0 + kWithin, 2.0));
    EXPECT_EQ(start.count, 1);
    EXPECT_THAT(start.arc, IsPartial(2.0, 3.0));
    EXPECT_TRUE(start.changed);
    const Difference end(RawArc(1.0, 3.0), RawArc(2.0, 3.0 - kWithin));
    EXPECT_EQ(end.count, 1);
    EXPECT_THAT(end.arc, IsPartial(1.0, 2.0));
    EXPECT_FALSE(end.changed);
}

TEST(RangeS1SetOperations, SubtractOfEmptyWithTheSameLimitsTakesAllAndDoesNotTell) {
    const Difference d(RawArc(-1.0, 1.0), EmptyArc(-1.0, 1.0));
    EXPECT_EQ(d.count, 0);
    EXPECT_THAT(d.arc, IsArc(-1.0, 1.0, RangeS1::eStateEmpty));
    EXPECT_FALSE(d.changed);
}

TEST(RangeS1SetOperations, SubtractOfEmptyWithTheSameLimitsTellsWhereZeroIsOff) {
    const Difference d(RawArc(1.0, 2.0), EmptyArc(1.0, 2.0));
    EXPECT_EQ(d.count, 0);
    EXPECT_TRUE(d.changed);
}

TEST(RangeS1SetOperations, SubtractOfAnOverlapAtTheStartTells) {
    const Difference d(RawArc(1.0, 3.0), RawArc(0.5, 2.0));
    EXPECT_EQ(d.count, 1);
    EXPECT_THAT(d.arc, IsPartial(2.0, 3.0));
    EXPECT_TRUE(d.changed);
}

TEST(RangeS1SetOperations, SubtractOfAnOverlapAtTheEndDoesNotTell) {
    const Difference d(RawArc(1.0, 2.0), RawArc(1.5, 3.0));
    EXPECT_EQ(d.count, 1);
    EXPECT_THAT(d.arc, IsPartial(1.0, 1.5));
    EXPECT_FALSE(d.changed);
}

TEST(RangeS1SetOperations, SubtractOfAnOverlapAtBothEndsCutsBoth) {
    const Difference d(RawArc(-2.0, 2.0), RawArc(1.0, -1.0));
    EXPECT_EQ(d.count, 1);
    EXPECT_THAT(d.arc, IsPartial(-1.0, 1.0));
    EXPECT_TRUE(d.changed);
}

TEST(RangeS1SetOperations, SubtractOfATouchAtTheStartTakesTheOtherLimitAndDoesNotTell) {
    const Difference d(RawArc(1.0, 2.0), RawArc(0.0, 1.0 - kWithin));
    EXPECT_EQ(d.count, 1);
    EXPECT_THAT(d.arc, IsPartial(1.0 - kWithin, 2.0));
    EXPECT_FALSE(d.changed);
}

TEST(RangeS1SetOperations, SubtractOfWhatLiesApartChangesNothing) {
    const Difference d(RawArc(1.0, 2.0), RawArc(2.5, 3.0));
    EXPECT_EQ(d.count, 1);
    EXPECT_THAT(d.arc, IsPartial(1.0, 2.0));
    EXPECT_FALSE(d.changed);
}

TEST(RangeS1SetOperations, SubtractOfAFullArcThatKeptAnArcCutsByItsLimits) {
    // 0 lies on this arc, so that it is not inside the whole circle.
    const Difference d(RawArc(-1.0, 3.0), RawArc(1.0, 2.0, RangeS1::eStateFull));
    EXPECT_EQ(d.count, 1);
    EXPECT_THAT(d.arc, IsPartial(2.0, 1.0));
    EXPECT_TRUE(d.changed);
}

TEST(RangeS1SetOperations, SubtractWithoutAPlaceForTheChange) {
    RangeS1 arc = RawArc(1.0, 3.0);
    RangeS1 r = RawArc(1.0, 2.0);
    EXPECT_EQ(arc.Subtract(r, nullptr), 1);
    EXPECT_THAT(arc, IsPartial(2.0, 3.0));
}

// The place.

TEST(RangeS1SetOperations, LocationSnapsAboveTheLibrarysToleranceOnly) {
    const RangeS1 arc = RawArc(1.0, 2.0);
    const RangeS1 close = RawArc(1.0 - 0.001, 2.0 + 0.001);
    EXPECT_EQ(arc.GetRangeLocation(close, 0.01), RangeR1::eRangeLocnSame);
    EXPECT_EQ(arc.GetRangeLocation(close, zToler), RangeR1::eRangeLocnCover);
    EXPECT_EQ(arc.GetRangeLocation(close, 0.0005), RangeR1::eRangeLocnCover);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(1.001, 1.002), 0.01), RangeR1::eRangeLocnPointAtMin);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(1.995, 1.999), 0.01), RangeR1::eRangeLocnPointAtMax);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(2.001, 3.0), 0.01), RangeR1::eRangeLocnTouch);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(2.001, 3.0), zToler), RangeR1::eRangeLocnApart);
    EXPECT_THAT(close, IsPartial(1.0 - 0.001, 2.0 + 0.001));
}

TEST(RangeS1SetOperations, LocationWithACoarseTolerance) {
    const RangeS1 arc = RawArc(1.0, 2.0);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(1.005, 1.5), 0.01), RangeR1::eRangeLocnInAtMin);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(1.5, 1.995), 0.01), RangeR1::eRangeLocnInAtMax);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(1.5, 1.505), 0.01), RangeR1::eRangeLocnIn);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(0.5, 2.005), 0.01), RangeR1::eRangeLocnCoverAtMax);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(0.995, 2.5), 0.01), RangeR1::eRangeLocnCoverAtMin);
}

TEST(RangeS1SetOperations, LocationInsideTakesTheGivenToleranceAndAroundTheLibrarys) {
    const RangeS1 arc = RawArc(1.0, 2.0);
    constexpr double kFine = 1e-12;
    EXPECT_EQ(arc.GetRangeLocation(RawArc(1.0 + kWithin, 1.5), kFine), RangeR1::eRangeLocnIn);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(1.5, 2.0 - kWithin), kFine), RangeR1::eRangeLocnIn);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(1.0, 1.0 + kWithin), kFine), RangeR1::eRangeLocnInAtMin);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(1.0 - kWithin, 2.5), kFine),
              RangeR1::eRangeLocnCoverAtMin);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(0.5, 2.0 + kWithin), kFine),
              RangeR1::eRangeLocnCoverAtMax);
}

TEST(RangeS1SetOperations, LocationAtExactlyTheTolerance) {
    const RangeS1 arc = RawArc(0.0, 1.0);
    // Neither limit is further off than the tolerance, and neither is snapped.
    EXPECT_EQ(arc.GetRangeLocation(RawArc(0.25, 0.75), 0.25), RangeR1::eRangeLocnSame);
    // Sharing a limit is strict.
    EXPECT_EQ(arc.GetRangeLocation(RawArc(0.25, 0.5), 0.25), RangeR1::eRangeLocnIn);
    EXPECT_EQ(arc.GetRangeLocation(RawArc(0.5, 0.75), 0.25), RangeR1::eRangeLocnIn);
}

TEST(RangeS1SetOperations, LocationOfTwoPiecesIsDecidedByTheFirst) {
    // They share the point at -2 and the long piece from 1 to 2.
    EXPECT_EQ(RawArc(-2.0, 2.0).GetRangeLocation(RawArc(1.0, -2.0), zToler),
              RangeR1::eRangeLocnTouch);
    EXPECT_EQ(RawArc(-2.0, 2.0).GetRangeLocation(RawArc(2.0, -1.0), zToler),
              RangeR1::eRangeLocnOverlap);
}

TEST(RangeS1SetOperations, LocationLeavesBothAsTheyWere) {
    const RangeS1 arc = RawArc(-2.0, 2.0);
    const RangeS1 r = RawArc(1.0, -1.0);
    EXPECT_EQ(arc.GetRangeLocation(r, 0.1), RangeR1::eRangeLocnOverlap);
    EXPECT_THAT(arc, IsPartial(-2.0, 2.0));
    EXPECT_THAT(r, IsPartial(1.0, -1.0));
}

}  // namespace
}  // namespace ZT
