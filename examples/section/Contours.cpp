#include "section/Contours.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace section {
namespace {

using ZT::RangeZGroup;
using ZT::ZGroup;

const ContourPoint& At(const Loop& loop, const ZGroup& index) {
    return loop[static_cast<std::size_t>(index.m_value)];
}

ZGroup FirstOf(const Loop& loop) {
    return ZGroup(static_cast<int>(loop.size()));
}

/// Calls `visit` with each index of the loop once.
template <class Visit>
void WalkRound(const Loop& loop, const Visit& visit) {
    ZGroup index = FirstOf(loop);
    do {
        visit(index);
        ++index;
    } while (index != 0);
}

struct Step {
    double x, y;
};

Step Between(const ContourPoint& a, const ContourPoint& b) {
    return {b.m_x - a.m_x, b.m_y - a.m_y};
}

double Cross(const Step& a, const Step& b) {
    return a.x * b.y - a.y * b.x;
}

/// 1 for a loop that goes round its inside counter-clockwise, and -1 for one that
/// goes clockwise.
double Sense(const Loop& loop) {
    double area = 0.0;
    WalkRound(loop, [&](const ZGroup& i) {
        area += Cross(Between(loop.front(), At(loop, i)), Between(loop.front(), At(loop, i + 1)));
    });
    return area < 0.0 ? -1.0 : 1.0;
}

bool IsConvexAt(const Loop& loop, const ZGroup& i, double sense) {
    constexpr double kSineOfOneDegree = 0.0174524064372835;
    const Step in = Between(At(loop, i - 1), At(loop, i));
    const Step out = Between(At(loop, i), At(loop, i + 1));
    const double size = std::hypot(in.x, in.y) * std::hypot(out.x, out.y);
    const double sine = sense * Cross(in, out);
    const bool turnsBack = in.x * out.x + in.y * out.y < 0.0;
    const double least = turnsBack ? kSineOfOneDegree : -kSineOfOneDegree;
    return sine >= least * size;
}

std::uint64_t Packed(std::int32_t a, std::int32_t b) {
    return (std::uint64_t{static_cast<std::uint32_t>(a)} << 32) | static_cast<std::uint32_t>(b);
}

}  // namespace

// ------------------------------------------------------------------------- walking loops

double LoopLength(const Loop& loop) {
    double length = 0.0;
    WalkRound(loop, [&](const ZGroup& i) {
        const Step step = Between(At(loop, i), At(loop, i + 1));
        length += std::hypot(step.x, step.y);
    });
    return length;
}

// The walk begins behind a vertex that belongs to no run, so that no run is met in
// two parts.
RangeZGroup LongestConvexRun(const Loop& loop) {
    const double sense = Sense(loop);
    const int rank = static_cast<int>(loop.size());
    ZGroup index = FirstOf(loop);
    int tried = 0;
    while (tried < rank && IsConvexAt(loop, index, sense)) {
        ++index;
        ++tried;
    }
    RangeZGroup longest(rank);
    if (tried == rank) {
        return longest;
    }
    longest.SetEmpty();
    int length = 0;
    for (int i = 1; i < rank; ++i) {
        ++index;
        length = IsConvexAt(loop, index, sense) ? length + 1 : 0;
        if (length > longest.GetCount()) {
            longest.Set(rank, index - (length - 1), index);
        }
    }
    return longest;
}

ContourFigures::ContourFigures(const ContourSet& contours) : ContourFigures() {
    m_nLoops = contours.m_loops.size();
    m_nOpen = contours.m_chains.size();
    for (const Loop& loop : contours.m_loops) {
        m_length += LoopLength(loop);
        const RangeZGroup run = LongestConvexRun(loop);
        if (run.GetCount() > m_run.GetCount()) {
            m_run = run;
        }
    }
}

// ------------------------------------------------------------------------------- cutting

double ContourCutter::ResolutionFor(const Mesh& mesh) {
    constexpr double kSinglePrecision = 1.0 / (1 << 24);
    float farthest = 0.0f;
    for (std::size_t i = 0; i < mesh.FacetCount(); ++i) {
        for (const Point& corner : mesh.GetFacet(i)) {
            farthest = std::max({farthest, std::abs(corner[eAxisX]), std::abs(corner[eAxisY])});
        }
    }
    return farthest > 0.0f ? static_cast<double>(farthest) * kSinglePrecision : 1.0;
}

// Always from the lower corner, so that both facets at an edge get the same point to
// the bit.
ContourPoint ContourCutter::PointOn(const Point& below, const Point& above) const {
    const double low = static_cast<double>(below[eAxisZ]);
    const double t = (m_height - low) / (static_cast<double>(above[eAxisZ]) - low);
    const auto at = [&](Axis axis) {
        const double from = static_cast<double>(below[axis]);
        return from + t * (static_cast<double>(above[axis]) - from);
    };
    return {at(eAxisX), at(eAxisY)};
}

void ContourCutter::Add(const Facet& facet) {
    int ends[2] = {kNone, kNone};
    int count = 0;
    for (std::size_t i = 0; i < facet.size(); ++i) {
        const Point& a = facet[i];
        const Point& b = facet[ZGroup::F(static_cast<int>(i) + 1)];
        const bool aBelow = static_cast<double>(a[eAxisZ]) < m_height;
        const bool bBelow = static_cast<double>(b[eAxisZ]) < m_height;
        if (aBelow != bBelow) {
            ends[count++] = NodeAt(aBelow ? PointOn(a, b) : PointOn(b, a));
        }
    }
    if (count == 2) {
        Join(ends[0], ends[1]);
    }
}

int ContourCutter::NodeAt(const ContourPoint& point) {
    const auto cell = [this](double x) {
        return static_cast<std::int32_t>(std::floor(x / m_resolution + 0.5));
    };
    const int next = static_cast<int>(m_nodes.size());
    const auto [place, isNew] = m_cells.try_emplace(Packed(cell(point.m_x), cell(point.m_y)), next);
    if (isNew) {
        m_nodes.push_back({.point = point});
    }
    return place->second;
}

void ContourCutter::Join(int a, int b) {
    if (a == b || !m_joined.insert(Packed(std::min(a, b), std::max(a, b))).second) {
        return;
    }
    m_segments.push_back({.node = {a, b}, .nextEnd = {kNone, kNone}});
    const int segment = static_cast<int>(m_segments.size()) - 1;
    Link(segment, 0, a);
    Link(segment, 1, b);
}

void ContourCutter::Link(int segment, int side, int node) {
    Node& at = m_nodes[static_cast<std::size_t>(node)];
    m_segments[static_cast<std::size_t>(segment)].nextEnd[side] = at.firstEnd;
    at.firstEnd = 2 * segment + side;
    ++at.degree;
}

// ------------------------------------------------------------------------------- joining

/// The node at the other end of a segment of `node` that no chain has used, or none.
int ContourCutter::TakeNeighbour(int node) {
    Node& at = m_nodes[static_cast<std::size_t>(node)];
    while (at.firstEnd != kNone) {
        Segment& segment = m_segments[static_cast<std::size_t>(at.firstEnd / 2)];
        const int side = at.firstEnd % 2;
        at.firstEnd = segment.nextEnd[side];
        if (!std::exchange(segment.used, true)) {
            const int other = segment.node[1 - side];
            --at.degree;
            --m_nodes[static_cast<std::size_t>(other)].degree;
            return other;
        }
    }
    return kNone;
}

void ContourCutter::Follow(int start, ContourSet& contours) {
    std::vector<ContourPoint> chain;
    int node = start;
    do {
        chain.push_back(m_nodes[static_cast<std::size_t>(node)].point);
        node = TakeNeighbour(node);
    } while (node != kNone && node != start);
    (node == start ? contours.m_loops : contours.m_chains).push_back(std::move(chain));
}

// A chain that begins at a node of odd degree either comes back, and leaves the node
// odd, or ends at another such node. When none is left, every chain comes back.
ContourSet ContourCutter::TakeContours() {
    ContourSet contours;
    const int count = static_cast<int>(m_nodes.size());
    for (int i = 0; i < count; ++i) {
        while (m_nodes[static_cast<std::size_t>(i)].degree % 2 != 0) {
            Follow(i, contours);
        }
    }
    for (int i = 0; i < count; ++i) {
        while (m_nodes[static_cast<std::size_t>(i)].degree > 0) {
            Follow(i, contours);
        }
    }
    m_nodes.clear();
    m_segments.clear();
    m_cells.clear();
    m_joined.clear();
    return contours;
}

}  // namespace section
