/// @file
/// Arcs in tests: a family that is named once, and how a failing test prints them.
///
/// The limits of the family stand on a grid of 1/1024 of half a turn, so that its members
/// can be reasoned about in whole numbers: of grid steps for a limit, and of half steps for
/// the middle between two.

#pragma once

#include <gmock/gmock.h>
#include <tests/ExactNumbers.h>
#include <zt/ranges/RangeS1.h>

#include <ostream>
#include <string>
#include <vector>

namespace ZT {

/// Prints an arc for a failing test.
inline void PrintTo(const RangeS1& r, std::ostream* os) {
    const char* const states[] = {"full ", "empty ", ""};
    *os << states[r.m_eState] << (r.m_bExternal ? "external " : "") << '['
        << testing_support::InFull(r.m_min) << ", " << testing_support::InFull(r.m_max) << ']';
}

/// Prints an arc for a failing law.
inline void showValue(const RangeS1& r, std::ostream& os) {
    PrintTo(r, &os);
}

}  // namespace ZT

namespace testing_support {

using ZT::RangeS1;

/// Grid steps in half a turn and in a quarter.
inline constexpr int kHalfTurn = 1024;
inline constexpr int kQuarter = kHalfTurn / 2;

/// The angle of a place on the grid, given in steps.
inline double GridAngle(double steps) {
    return steps * (ZT::zPi / kHalfTurn);
}

/// A member of the family: limits in steps above -1024 and up to 1024, flag and state.
struct GridArc {
    std::string name;
    int start;
    int end;
    bool external = false;
    RangeS1::EState state = RangeS1::eStatePartial;

    bool IsFull() const { return state == RangeS1::eStateFull; }
    bool IsEmpty() const { return state == RangeS1::eStateEmpty; }
    /// Partial, not external and not a point: an arc without anything odd about it.
    bool IsRegular() const { return state == RangeS1::eStatePartial && !external && start != end; }

    /// The arc itself. Its limits are the grid's angles to the bit.
    RangeS1 Arc() const {
        RangeS1 arc;
        arc.m_min = GridAngle(start);
        arc.m_max = GridAngle(end);
        arc.m_bExternal = external;
        arc.m_eState = state;
        return arc;
    }
};

inline void PrintTo(const GridArc& arc, std::ostream* os) {
    *os << arc.name;
}

/// Quadrants, pairs and triples of them, slivers and holes at the ends of the quadrants:
/// every regular member.
inline std::vector<GridArc> RegularArcs() {
    const int q = kQuarter;
    const int h = kHalfTurn;
    return {
        {"quad1", 0, q},
        {"quad2", q, h},
        {"quad3", h, -q},
        {"quad4", -q, 0},
        {"pair12", 0, h},
        {"pair23", q, -q},
        {"pair34", h, 0},
        {"pair41", -q, q},
        {"triple123", 0, -q},
        {"triple234", q, 0},
        {"triple341", h, q},
        {"triple412", -q, h},
        {"inner1", 100, 400},
        {"inner2", q + 100, h - 100},
        {"wide", -900, 900},
        {"sliverAtZero", -1, 1},
        {"sliverAtQuarter", q - 1, q + 1},
        {"sliverAtSeam", h - 1, 1 - h},
        {"sliverAtMinusQuarter", -q - 1, 1 - q},
        {"sliverAfterZero", 0, 1},
        {"sliverBeforeZero", -1, 0},
        {"sliverAfterSeam", h, 1 - h},
        {"sliverBeforeSeam", h - 1, h},
        {"holeAtZero", 1, -1},
        {"holeAtQuarter", q + 1, q - 1},
        {"holeAtSeam", 1 - h, h - 1},
        {"holeAtMinusQuarter", 1 - q, -q - 1},
        {"holeAfterSeam", 1 - h, h},
        {"holeBeforeSeam", h, h - 1},
        {"holeAfterZero", 1, 0},
    };
}

/// All members: the regular ones in both senses of the flag, points, and arcs that are full
/// or empty with whatever limits.
inline std::vector<GridArc> AllArcs() {
    std::vector<GridArc> all = RegularArcs();
    for (const GridArc& arc : RegularArcs()) {
        all.push_back({"external " + arc.name, arc.start, arc.end, true});
    }
    const int q = kQuarter;
    const int h = kHalfTurn;
    for (const int at : {0, 1, q, h, 1 - h, -q, -1}) {
        all.push_back({"point" + std::to_string(at), at, at});
        all.push_back({"external point" + std::to_string(at), at, at, true});
    }
    const auto full = RangeS1::eStateFull;
    const auto empty = RangeS1::eStateEmpty;
    all.push_back({"full", h, h, false, full});
    all.push_back({"newFull", 0, 0, false, full});
    all.push_back({"external full", h, h, true, full});
    all.push_back({"fullKeptQuad1", 0, q, false, full});
    all.push_back({"emptyKeptQuad1", 0, q, false, empty});
    all.push_back({"emptyKeptInner2", q + 100, h - 100, false, empty});
    all.push_back({"emptyKeptTriple234", q, 0, false, empty});
    all.push_back({"external emptyKeptPair12", 0, h, true, empty});
    all.push_back({"emptyKeptZero", 0, 0, false, empty});
    all.push_back({"emptyKeptSeam", h, h, false, empty});
    return all;
}

/// Matches an arc with exactly these limits and this state, whatever its flag.
MATCHER_P3(IsArc, lo, hi, state,
           "has the limits " + InFull(lo) + " and " + InFull(hi) + ", state " +
               std::to_string(state)) {
    return SameDouble(arg.m_min, lo) && SameDouble(arg.m_max, hi) && arg.m_eState == state;
}

/// Matches a partial arc with exactly these limits.
inline auto IsPartial(double lo, double hi) {
    return IsArc(lo, hi, RangeS1::eStatePartial);
}

/// Matches a full arc with its usual limits.
inline auto IsCanonicallyFull() {
    return IsArc(ZT::zPi, ZT::zPi, RangeS1::eStateFull);
}

/// An arc whose limits are stored as they are.
inline RangeS1 RawArc(double lo, double hi, RangeS1::EState state = RangeS1::eStatePartial) {
    RangeS1 arc;
    arc.m_min = lo;
    arc.m_max = hi;
    arc.m_eState = state;
    return arc;
}

/// The same with its flag set.
inline RangeS1 ExternalArc(double lo, double hi, RangeS1::EState state = RangeS1::eStatePartial) {
    RangeS1 arc = RawArc(lo, hi, state);
    arc.m_bExternal = true;
    return arc;
}

inline RangeS1 FullArc() {
    RangeS1 arc;
    arc.SetFull();
    return arc;
}

inline RangeS1 EmptyArc(double lo, double hi) {
    return RawArc(lo, hi, RangeS1::eStateEmpty);
}

}  // namespace testing_support
