/// @file
/// The material of a section along scan lines, and its voids.

#pragma once

#include <cstddef>
#include <vector>

#include <zt/ranges/RangeMulti.h>
#include <zt/ranges/RangeR1.h>
#include <zt/ranges/SetR1.h>

#include "section/Bounds.h"
#include "section/Contours.h"

namespace section {

/// The lines along x on which the sections of a mesh are filled: the same ones for all
/// layers, in the middles of equal strips over the bounds along y. Each line runs from
/// one end of the bounds along x to the other.
class ScanLines {
public:
    /// No line over bounds that are empty, or flat along x or y within the library's
    /// tolerance; otherwise `count`.
    ScanLines(const Bounds& bounds, int count);

    /// The most lines that a layer gets.
    static constexpr int kMostEach = 64;

    /// How many lines a layer gets: 64, and of more than 4096 layers fewer, so that all
    /// lines together stay near a quarter of a million, but at least 8.
    static int CountFor(std::size_t layerCount);

    /// Where the lines lie along y, in ascending order.
    const std::vector<double>& Places() const { return m_places; }

    /// From where to where a line runs along x.
    const ZT::RangeR1& Within() const { return m_within; }

private:
    std::vector<double> m_places;
    ZT::RangeR1 m_within;
};

/// A section on each scan line: what is material, and what isn't.
struct Fill {
    /// By scan line. Each set is valid and in ascending order.
    std::vector<ZT::SetR1> m_material, m_voids;
    /// Parts of material or void that were too thin to count, and are in neither.
    ZT::uint64 m_nSlivers = 0;
    /// Crossings that had no partner.
    ZT::uint64 m_nUnpaired = 0;
};

/// Fills sections by the even-odd rule: a line enters material where it crosses a
/// contour, and leaves it at the next crossing.
///
/// A vertex on a line counts as above it. So a line crosses a loop an even number of
/// times, also where it meets a vertex, runs along an edge, or where loops touch. An open
/// chain can leave an odd number; then the last crossing of a chain on that line has no
/// partner. It is left out and counted.
///
/// Takes a step per segment and line that it crosses, and the sorting of a line's
/// crossings.
class SectionFiller {
public:
    /// Parts narrower than `sliver` along a line are cleaned away, and in any case those
    /// below the library's tolerance. `lines` must outlive the filler.
    SectionFiller(const ScanLines& lines, double sliver);

    /// Puts the section with `contours` in place of what `fill` was.
    void Refill(const ContourSet& contours, Fill& fill);

private:
    struct Crossing {
        double x;
        bool ofChain;
    };
    using Crossings = std::vector<Crossing>;

    void Cross(const ContourPoint& a, const ContourPoint& b, bool ofChain);
    bool DropUnpaired(Crossings& crossings) const;
    ZT::uint64 FillLine(const Crossings& crossings, ZT::SetR1& material) const;
    ZT::uint64 RemoveSlivers(ZT::SetR1& set) const;

    const ScanLines& m_lines;
    double m_sliver;
    std::vector<Crossings> m_crossings;
};

/// The length of all members together.
double TotalLength(const ZT::SetR1& set);

/// Makes `shared` what `upper` and `lower` have in common: the material of a scan line
/// that the layer below carries. Takes a step per member of both.
void FindShared(const ZT::SetR1& upper, const ZT::SetR1& lower, ZT::RangeMulti& shared);

/// What the fill of one section comes to.
struct FillFigures {
    /// Lengths on all scan lines together.
    double m_material = 0.0;
    double m_voids = 0.0;
    /// The part of the material, from 0 to 1, below which the layer below has material
    /// on the same scan line. 0 for the lowest layer.
    double m_carried = 0.0;
    ZT::uint64 m_nSlivers = 0;
    ZT::uint64 m_nUnpaired = 0;

    FillFigures() = default;
    /// A null `below` stands for no layer.
    FillFigures(const Fill& fill, const Fill* below);

    /// The part of the lines, from 0 to 1, that is material; 0 without a line.
    double Share() const;

    /// An element "Fill" with the members.
    void PersistXML(ZT::PCExBase& pc);
};

}  // namespace section
