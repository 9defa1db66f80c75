/// @file
/// The contours of a mesh at one height: closed loops and open chains.

#pragma once

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <zt/ranges/RangeZGroup.h>

#include "section/Mesh.h"

namespace section {

/// A point of a contour.
struct ContourPoint {
    double m_x, m_y;

    bool operator==(const ContourPoint&) const = default;
};

/// A closed loop: at least three vertices, of which the last joins the first. It may
/// touch itself.
using Loop = std::vector<ContourPoint>;

/// A chain with two ends: at least two vertices, one joined to the next.
using Chain = std::vector<ContourPoint>;

/// The contours of one height.
struct ContourSet {
    std::vector<Loop> m_loops;
    /// Where the mesh has a hole.
    std::vector<Chain> m_chains;
};

/// The length of a loop, once round.
double LoopLength(const Loop& loop);

/// The longest run of vertices at which the loop, walked round its own inside, bends
/// outwards or goes straight on, up to one degree inwards. Full for a convex loop;
/// of runs of the same length the first. A spike, where the loop turns back on
/// itself, belongs to no run.
ZT::RangeZGroup LongestConvexRun(const Loop& loop);

/// What the contours of one height come to.
struct ContourFigures {
    ZT::uint64 m_nLoops = 0;
    /// Chains with two ends: the mesh has a hole there.
    ZT::uint64 m_nOpen = 0;
    /// Of all loops together.
    double m_length = 0.0;
    /// The longest convex run of all loops, in the indices of its own loop, which
    /// are its rank; empty without a loop.
    ZT::RangeZGroup m_run;

    ContourFigures() { m_run.SetEmpty(); }
    explicit ContourFigures(const ContourSet& contours);

    /// An element "Contours" with the members.
    void PersistXML(ZT::PCExBase& pc);
};

/// Cuts facets at one height and joins the pieces.
///
/// A corner at the height counts as above it, so that a facet is cut in one segment
/// or not at all. Ends of segments are one vertex if they fall into the same cell of
/// a square raster; a segment within one cell is dropped, and one that several
/// facets make counts once. Takes a step per facet and per segment.
class ContourCutter {
public:
    /// `resolution` is the width of a cell, above 0; a coordinate has at most 2^31
    /// of them.
    ContourCutter(double height, double resolution) : m_height(height), m_resolution(resolution) {}

    /// The width of a cell that suits `mesh`: what single precision tells apart at
    /// its coordinate farthest from zero along x and y.
    static double ResolutionFor(const Mesh& mesh);

    /// Adds the segment of `facet`, if it is cut.
    void Add(const Facet& facet);

    /// Joins all segments and takes them out. Chains with ends are followed from an
    /// end; what remains comes back to where it began. Where more than two segments
    /// meet, which of them follow one another is left open.
    ContourSet TakeContours();

private:
    static constexpr int kNone = -1;

    /// A vertex, with its segments as a list of ends: 2 * segment + side.
    struct Node {
        ContourPoint point;
        int firstEnd = kNone;
        int degree = 0;
    };

    struct Segment {
        int node[2];
        int nextEnd[2];
        bool used = false;
    };

    ContourPoint PointOn(const Point& below, const Point& above) const;
    int NodeAt(const ContourPoint& point);
    void Join(int a, int b);
    void Link(int segment, int side, int node);
    int TakeNeighbour(int node);
    void Follow(int start, ContourSet& contours);

    double m_height;
    double m_resolution;
    std::vector<Node> m_nodes;
    std::vector<Segment> m_segments;
    std::unordered_map<std::uint64_t, int> m_cells;
    std::unordered_set<std::uint64_t> m_joined;
};

}  // namespace section
