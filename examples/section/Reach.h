/// @file
/// From where a tool can reach the contours of a section.

#pragma once

#include <cstddef>
#include <deque>
#include <vector>

#include <zt/ranges/RangeS1.h>
#include <zt/ranges/SetS1.h>

#include "section/Contours.h"

namespace section {

/// The directions, about the axis z, in which the way from a point of a section out of
/// its bounds is free. A tool without width comes to the point along them.
///
/// The set starts as the full circle. Each segment of a contour, of this one and of all
/// others, takes the arc away that it covers as seen from the point. Segments that end at
/// the point or pass through it bound the material there: of the sectors between them,
/// those inside the loops by the even-odd rule are taken away. Open chains have no inside
/// and are thin walls, whose points see to both sides.
class FreeWays {
public:
    /// Ways narrower than this, in radians, are none: a tenth of a degree.
    static constexpr double kNarrowest = 0.00174532925199433;

    /// Takes a step per segment, more precisely per arc taken away and way left so far.
    FreeWays(const ContourSet& contours, const ContourPoint& from);
    /// The set doesn't own its arcs.
    ~FreeWays() { m_arcs.DeleteAll(); }
    FreeWays(const FreeWays&) = delete;
    FreeWays& operator=(const FreeWays&) = delete;

    const ContourPoint& From() const { return m_from; }

    /// In counter-clockwise order, with canonical angles, in radians from x towards y.
    const ZT::SetS1& Arcs() const { return m_arcs; }

private:
    void TakeContour(const std::vector<ContourPoint>& points, bool closed);
    void TakeArc(double from, double to);
    void TakeMaterial(const ContourSet& contours);

    ContourPoint m_from;
    ZT::SetS1 m_arcs;
    /// The directions of the loops' segments at the point.
    std::vector<double> m_edges;
};

/// The directions from which a tool reaches a contour at one of several points: at its
/// vertex farthest from the middle of the mesh, which is what a tool from outside meets
/// first, and where the contour is divided from there in equal parts.
class ContourReach {
public:
    /// Looks from `points` points of `contour`, which is one of `contours`.
    ContourReach(const ContourSet& contours, const std::vector<ContourPoint>& contour, bool closed,
                 const ContourPoint& middle, std::size_t points);
    ~ContourReach() { m_arcs.DeleteAll(); }
    ContourReach(const ContourReach&) = delete;
    ContourReach& operator=(const ContourReach&) = delete;

    /// The ways to each point, the first one that of the farthest vertex.
    const std::deque<FreeWays>& Points() const { return m_points; }

    /// The union of the ways to all points.
    const ZT::SetS1& Arcs() const { return m_arcs; }

private:
    std::deque<FreeWays> m_points;
    ZT::SetS1 m_arcs;
};

/// The angle of all arcs of a set together.
double AngleOf(const ZT::SetS1& arcs);

/// The widest arc of a set, the first of several; empty without any.
ZT::RangeS1 WidestOf(const ZT::SetS1& arcs);

/// From where the contours of one section are reached, each at eight points.
///
/// The time for a point grows with the segments of the section: each is a sight. So the
/// longest contours are looked at, as many of them as keep the number of sights within a
/// limit, but at least 1 and at most 32; the others aren't.
class Reach {
public:
    /// The most sights of a section: a quarter of a million.
    static constexpr std::size_t kMostSights = std::size_t{1} << 18;

    /// How many sights each of `layerCount` layers gets: of more than 256 layers fewer, so
    /// that all together stay near 64 million, but at least 1024.
    static std::size_t SightsFor(std::size_t layerCount);

    Reach() = default;
    Reach(const ContourSet& contours, const ContourPoint& middle,
          std::size_t mostSights = kMostSights);

    /// One for each contour that was looked at: loops in their order, then chains.
    const std::deque<ContourReach>& All() const { return m_all; }

private:
    std::deque<ContourReach> m_all;
};

/// What the reach of one section comes to.
struct ReachFigures {
    /// Loops and open chains that were looked at.
    ZT::uint64 m_nContours = 0;
    /// How many of them can be reached at all.
    ZT::uint64 m_nReached = 0;
    /// The angle from which a contour is reached, on the average of those looked at; in
    /// radians.
    double m_free = 0.0;
    /// The widest way to the contour that is the hardest to reach: of those reached, the
    /// one with the least angle, and the first of several. Empty without any.
    ZT::RangeS1 m_hardest;

    ReachFigures() { m_hardest.SetEmpty(); }
    explicit ReachFigures(const Reach& reach);

    /// An element "Reach" with the members.
    void PersistXML(ZT::PCExBase& pc);
};

}  // namespace section
