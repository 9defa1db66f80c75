#include "section/Reach.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include <zt/numerics/Constants.h>

namespace section {
namespace {

using ZT::RangeS1;

/// A direction that a segment passes through the point within this angle, in radians, is
/// taken as passing through it.
constexpr double kStraight = 1e-6;

/// An arc shorter than this takes nothing away; to `RangeS1::Subtract` it would be a point,
/// for which it has rules of its own.
constexpr double kLeastArc = 1e-9;

/// No arc longer than this is taken away at once.
constexpr double kQuarter = ZT::zPi / 2;

struct Step {
    double x, y;
};

Step Between(const ContourPoint& a, const ContourPoint& b) {
    return {b.m_x - a.m_x, b.m_y - a.m_y};
}

double Cross(const Step& a, const Step& b) {
    return a.x * b.y - a.y * b.x;
}

double Direction(const Step& step) {
    return std::atan2(step.y, step.x);
}

/// What several segments, one behind the other, cover together: an arc from `low` to
/// `high`, which may lie beyond a half-turn.
struct Covered {
    double low = 0.0, high = 0.0;
};

/// One segment as seen from a point.
struct Sight {
    enum EKind {
        eApart,
        eStartsHere,
        eEndsHere,
        ePassesHere,
    };

    EKind kind;
    double turn = 0.0;
    Step toA, toB;

    Sight(const ContourPoint& point, const ContourPoint& a, const ContourPoint& b)
        : toA(Between(point, a)), toB(Between(point, b)) {
        if (a == point || b == point) {
            kind = a == point ? eStartsHere : eEndsHere;
            return;
        }
        turn = std::atan2(Cross(toA, toB), toA.x * toB.x + toA.y * toB.y);
        kind = std::abs(turn) > ZT::zPi - kStraight ? ePassesHere : eApart;
    }
};

/// Calls `visit` with the ends of each segment.
template <class Visit>
void ForSegments(const std::vector<ContourPoint>& points, bool closed, const Visit& visit) {
    for (std::size_t i = 1; i < points.size(); ++i) {
        visit(points[i - 1], points[i]);
    }
    if (closed) {
        visit(points.back(), points.front());
    }
}

/// Whether the sector at `point` around the direction `angle` is inside the loops: a ray
/// leaves it through an odd number of segments. A point on the ray counts as right of it,
/// so that each loop is met an even number of times by the whole line.
bool IsInside(const std::vector<Loop>& loops, const ContourPoint& point, double angle) {
    const Step ray{std::cos(angle), std::sin(angle)};
    bool inside = false;
    const auto cross = [&](const ContourPoint& a, const ContourPoint& b) {
        const Step toA = Between(point, a), toB = Between(point, b);
        const double sideA = Cross(ray, toA), sideB = Cross(ray, toB);
        if ((sideA > 0.0) != (sideB > 0.0) && Sight(point, a, b).kind == Sight::eApart) {
            inside ^= (Cross(toA, toB) > 0.0) == (sideB > sideA);
        }
    };
    for (const Loop& loop : loops) {
        ForSegments(loop, true, cross);
    }
    return inside;
}

/// Takes arcs out of `arcs` that are too narrow for a way. The set leaves them to its
/// caller.
void RemoveNarrow(ZT::SetS1& arcs) {
    std::vector<std::unique_ptr<RangeS1>> narrow;
    for (RangeS1* const arc : arcs) {
        if (arc->GetDiff() < FreeWays::kNarrowest) {
            narrow.emplace_back(arc);
        }
    }
    arcs.RemoveSingletons(FreeWays::kNarrowest);
}

}  // namespace

double AngleOf(const ZT::SetS1& arcs) {
    double angle = 0.0;
    for (const RangeS1* const arc : arcs) {
        angle += arc->GetDiff();
    }
    return angle;
}

RangeS1 WidestOf(const ZT::SetS1& arcs) {
    RangeS1 widest;
    widest.SetEmpty();
    for (const RangeS1* const arc : arcs) {
        if (widest.IsEmpty() || arc->GetDiff() > widest.GetDiff() + ZT::zToler) {
            widest = *arc;
        }
    }
    return widest;
}

// ------------------------------------------------------------------------- from one point

FreeWays::FreeWays(const ContourSet& contours, const ContourPoint& from) : m_from(from) {
    m_arcs.SetFull();
    for (const Loop& loop : contours.m_loops) {
        TakeContour(loop, true);
    }
    for (const Chain& chain : contours.m_chains) {
        TakeContour(chain, false);
    }
    TakeMaterial(contours);
    RemoveNarrow(m_arcs);
}

// What neighbours cover is taken away together, which comes to the same as one after the
// other and is less work for the set.
void FreeWays::TakeContour(const std::vector<ContourPoint>& points, bool closed) {
    Covered covered;
    double here = 0.0;
    bool joined = false;
    const auto take = [&] {
        if (joined) {
            TakeArc(covered.low, covered.high);
        }
        joined = false;
    };
    ForSegments(points, closed, [&](const ContourPoint& a, const ContourPoint& b) {
        const Sight sight(m_from, a, b);
        if (sight.kind != Sight::eApart) {
            take();
            if (closed && sight.kind != Sight::eStartsHere) {
                m_edges.push_back(Direction(sight.toA));
            }
            if (closed && sight.kind != Sight::eEndsHere) {
                m_edges.push_back(Direction(sight.toB));
            }
            return;
        }
        if (!joined) {
            here = covered.low = covered.high = Direction(sight.toA);
        }
        const double next = here + sight.turn;
        const Covered both{std::min(covered.low, next), std::max(covered.high, next)};
        if (joined && both.high - both.low > kQuarter) {
            take();
            covered = {std::min(here, next), std::max(here, next)};
        } else {
            covered = both;
        }
        joined = true;
        here = next;
    });
    take();
}

void FreeWays::TakeArc(double from, double to) {
    const double length = to - from;
    if (!(length > kLeastArc)) {
        return;
    }
    const int parts = static_cast<int>(std::ceil(length / kQuarter));
    for (int i = 0; i < parts; ++i) {
        m_arcs.Subtract(RangeS1(from + length * i / parts, from + length * (i + 1) / parts));
    }
}

// From one sector to the next the inside and the outside alternate. Which is which is
// looked up in the widest one.
void FreeWays::TakeMaterial(const ContourSet& contours) {
    if (m_edges.empty()) {
        return;
    }
    for (double& edge : m_edges) {
        edge = ZT::S1::Factorize(edge);
    }
    std::sort(m_edges.begin(), m_edges.end());
    const std::size_t count = m_edges.size();
    const auto width = [&](std::size_t i) {
        return i + 1 < count ? m_edges[i + 1] - m_edges[i]
                             : m_edges.front() + ZT::z2Pi - m_edges.back();
    };
    std::size_t widest = 0;
    for (std::size_t i = 1; i < count; ++i) {
        widest = width(i) > width(widest) ? i : widest;
    }
    bool inside = IsInside(contours.m_loops, m_from, m_edges[widest] + width(widest) / 2);
    for (std::size_t step = 0; step < count; ++step) {
        const std::size_t i = (widest + step) % count;
        if (inside) {
            TakeArc(m_edges[i], m_edges[i] + width(i));
        }
        inside = !inside;
    }
}

// --------------------------------------------------------------------------- of a contour

namespace {

std::size_t Farthest(const std::vector<ContourPoint>& points, const ContourPoint& middle) {
    const auto distance = [&](const ContourPoint& point) {
        const Step step = Between(middle, point);
        return step.x * step.x + step.y * step.y;
    };
    const auto farthest = std::max_element(
        points.begin(), points.end(),
        [&](const ContourPoint& a, const ContourPoint& b) { return distance(a) < distance(b); });
    return static_cast<std::size_t>(farthest - points.begin());
}

/// The places that divide a contour in `count` equal parts, the first one the vertex
/// `start`. Of a chain the tail is followed by the head.
std::vector<ContourPoint> Divided(const std::vector<ContourPoint>& contour, bool closed,
                                  std::size_t start, std::size_t count) {
    constexpr double kSameVertex = 1e-6;  // of a part
    const std::size_t size = contour.size();
    const auto lengthOf = [&](std::size_t from) {
        const Step step = Between(contour[from], contour[(from + 1) % size]);
        return from + 1 == size && !closed ? 0.0 : std::hypot(step.x, step.y);
    };
    double whole = 0.0;
    for (std::size_t i = 0; i < size; ++i) {
        whole += lengthOf(i);
    }
    const double part = whole / static_cast<double>(count);
    std::vector<ContourPoint> places{contour[start]};
    double before = 0.0;
    for (std::size_t i = 0; i < size && places.size() < count; ++i) {
        const std::size_t from = (start + i) % size;
        const ContourPoint &a = contour[from], &b = contour[(from + 1) % size];
        const double length = lengthOf(from);
        double due = part * static_cast<double>(places.size()) - before;
        for (; due < length - kSameVertex * part && places.size() < count; due += part) {
            const double t = due / length;
            const bool atVertex = due < kSameVertex * part;
            places.push_back(
                atVertex ? a
                         : ContourPoint{a.m_x + t * (b.m_x - a.m_x), a.m_y + t * (b.m_y - a.m_y)});
        }
        before += length;
    }
    return places;
}

/// The directions from which none of several points is reached.
struct FromNowhere {
    ZT::SetS1 arcs;

    FromNowhere() { arcs.SetFull(); }
    ~FromNowhere() { arcs.DeleteAll(); }
    FromNowhere(const FromNowhere&) = delete;
    FromNowhere& operator=(const FromNowhere&) = delete;
};

}  // namespace

// There is no union of two sets. What no point is reached from is the full circle less the
// ways to each of them, and the union is what that leaves of the full circle.
ContourReach::ContourReach(const ContourSet& contours, const std::vector<ContourPoint>& contour,
                           bool closed, const ContourPoint& middle, std::size_t points) {
    FromNowhere blocked;
    for (const ContourPoint& place : Divided(contour, closed, Farthest(contour, middle), points)) {
        m_points.emplace_back(contours, place);
        blocked.arcs.Subtract(m_points.back().Arcs());
    }
    RemoveNarrow(blocked.arcs);
    m_arcs.SetFull();
    m_arcs.Subtract(blocked.arcs);
}

// --------------------------------------------------------------------------- of a section

namespace {

constexpr std::size_t kMostContours = 32;
constexpr std::size_t kPointsEach = 8;

struct Candidate {
    const std::vector<ContourPoint>* contour;
    bool closed;
};

/// How many contours are looked at, for the number of segments of all.
std::size_t ContoursFor(const std::vector<Candidate>& candidates, std::size_t mostSights) {
    std::size_t segments = 1;
    for (const Candidate& candidate : candidates) {
        segments += candidate.contour->size();
    }
    return std::clamp<std::size_t>(mostSights / kPointsEach / segments, 1, kMostContours);
}

/// Leaves the `most` longest of `candidates`, in their order.
void KeepLongest(std::vector<Candidate>& candidates, std::size_t most) {
    if (candidates.size() <= most) {
        return;
    }
    std::vector<std::pair<double, std::size_t>> order;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        order.emplace_back(-LoopLength(*candidates[i].contour), i);
    }
    std::nth_element(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(most), order.end());
    order.resize(most);
    std::sort(order.begin(), order.end(),
              [](const auto& a, const auto& b) { return a.second < b.second; });
    for (std::size_t i = 0; i < most; ++i) {
        candidates[i] = candidates[order[i].second];
    }
    candidates.resize(most);
}

}  // namespace

std::size_t Reach::SightsFor(std::size_t layerCount) {
    constexpr std::size_t kTogether = std::size_t{1} << 26;
    constexpr std::size_t kLeastEach = std::size_t{1} << 10;
    return std::clamp(kTogether / std::max<std::size_t>(layerCount, 1), kLeastEach, kMostSights);
}

Reach::Reach(const ContourSet& contours, const ContourPoint& middle, std::size_t mostSights) {
    std::vector<Candidate> candidates;
    for (const Loop& loop : contours.m_loops) {
        candidates.push_back({&loop, true});
    }
    for (const Chain& chain : contours.m_chains) {
        candidates.push_back({&chain, false});
    }
    KeepLongest(candidates, ContoursFor(candidates, mostSights));
    for (const Candidate& candidate : candidates) {
        m_all.emplace_back(contours, *candidate.contour, candidate.closed, middle, kPointsEach);
    }
}

ReachFigures::ReachFigures(const Reach& reach) : ReachFigures() {
    m_nContours = reach.All().size();
    double least = 2 * ZT::z2Pi;
    for (const ContourReach& contour : reach.All()) {
        const double angle = AngleOf(contour.Arcs());
        m_nReached += angle > 0.0;
        m_free += angle / static_cast<double>(m_nContours);
        if (angle > 0.0 && angle < least - ZT::zToler) {
            least = angle;
            m_hardest = WidestOf(contour.Arcs());
        }
    }
}

}  // namespace section
