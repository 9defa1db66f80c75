/// @file
/// The layers of a mesh along z, and what its facets come to in each of them.

#pragma once

#include <cstddef>
#include <deque>
#include <vector>

#include <zt/ranges/Grid1D.h>
#include <zt/ranges/RangeInt.h>
#include <zt/ranges/RangeR1.h>
#include <zt/ranges/RangeS1.h>

#include "section/Bounds.h"
#include "section/Contours.h"
#include "section/Mesh.h"
#include "section/Reach.h"
#include "section/ScanFill.h"
#include "section/Section.h"

namespace section {

/// How a height is to be cut: into layers of the height `m_step`, or, if that is 0,
/// of a round height that makes about `m_count` layers.
struct Cut {
    int m_count = 20;
    double m_step = 0.0;
};

/// More layers than this are refused.
inline constexpr int kMostLayers = 100000;

/// A layer: a closed interval of heights, and what the facets that have a point in
/// it come to. A facet at the height where two layers join counts in both.
struct Layer {
    ZT::RangeR1 m_range;
    ZT::uint64 m_nFacets = 0;
    /// The smallest arc of directions that its side facets face; empty without any.
    ZT::RangeS1 m_facing;
    /// The contours at the middle of the layer.
    ContourFigures m_contours;
    /// The material there.
    FillFigures m_fill;
    /// From where the contours can be reached.
    ReachFigures m_reach;

    Layer() { m_facing.SetEmpty(); }

    /// Where the layer is cut.
    double MiddleHeight() const { return m_range.GetPoint(0.5); }

    /// An element "Layer", on which the cursor stands already when loading.
    void PersistXML(ZT::PCExBase& pc);
};

/// A height, cut into layers of equal thickness between knots that are whole
/// multiples of it.
class Layers {
public:
    /// No layer, and an empty height.
    Layers() = default;

    /// Lays layers of `cut.m_step` that cover `height`, and none beyond that: the
    /// first and the last reach over its ends by less than a step. A flat height has
    /// one layer, that which begins at or below it.
    ///
    /// Without a step the layers get the least height of 1, 2, 2.5 or 5 times a
    /// power of ten with which `cut.m_count` cover as much as `height`; one more may
    /// be needed because of the place of the knots. A flat height gets 1. It is
    /// never less than a billionth, nor than a billionth of the distance from zero.
    ///
    /// Throws `Failure` for more than `kMostLayers`, for a step that isn't longer
    /// than the library's tolerance, and for one less than a billionth of the
    /// distance from zero.
    Layers(const ZT::RangeR1& height, const Cut& cut);

    /// Adds the facets of `mesh` to the layers that they meet, within the
    /// library's tolerance. Takes one step per facet and one per layer.
    void CountFacets(const Mesh& mesh);

    /// Finds for each layer which way the facets of `mesh` face, and at its middle height
    /// their contours, the material inside and from where the contours can be reached, in
    /// place of what was found before. `bounds` are those of the mesh.
    ///
    /// Takes one step per facet and layer that it meets, and the sorting of a layer's
    /// directions; for the rest see `SectionFiller` and `Reach`.
    void MeasureSections(const Mesh& mesh, const Bounds& bounds);

    /// The sections of the layers with these indices, which are in ascending order, after
    /// `MeasureSections` of the same mesh.
    std::deque<Section> SectionsOf(const Mesh& mesh, const Bounds& bounds,
                                   const std::vector<std::size_t>& indices) const;

    /// The scan lines of a section.
    ScanLines LinesIn(const Bounds& bounds) const;

    /// The number of scan lines of a section, where the bounds are neither flat along x nor
    /// along y; 0 before `MeasureSections`.
    ZT::uint64 ScanLineCount() const { return m_nScanLines; }

    /// From the first knot to the last.
    const ZT::RangeR1& Height() const { return m_height; }

    /// The layers from below.
    const std::vector<Layer>& All() const { return m_layers; }

    /// Thickness of a layer.
    double Thickness() const { return m_step; }

    /// One more than the number of layers; 0 without any.
    std::size_t KnotCount() const { return m_layers.empty() ? 0 : m_layers.size() + 1; }

    /// Of the layers that a facet covers, by index from 0, the longest run; the first
    /// of several. Empty before facets were counted.
    const ZT::RangeInt& LongestCover() const { return m_longestCover; }

    /// An element "Layers" with the height, the grid and one "Layer" after another.
    void PersistXML(ZT::PCExBase& pc);

private:
    int Count() const { return static_cast<int>(m_layers.size()); }
    bool Meets(int index, const ZT::RangeR1& extent) const;
    ZT::RangeInt CoverOf(const ZT::Grid1D& grid, const ZT::RangeR1& extent) const;
    std::vector<ZT::RangeInt> CoversOf(const Mesh& mesh) const;

    ZT::RangeR1 m_height;
    double m_step = 0.0;
    ZT::uint64 m_nScanLines = 0;
    ZT::RangeInt m_longestCover;
    std::vector<Layer> m_layers;
};

}  // namespace section
