/// @file
/// A layer of a mesh, cut at its middle height.

#pragma once

#include <cstddef>
#include <vector>

#include "section/Bounds.h"
#include "section/Contours.h"
#include "section/Mesh.h"
#include "section/Reach.h"
#include "section/ScanFill.h"

namespace section {

/// All that a picture shows of a layer.
struct Section {
    /// Index of the layer, from 0.
    std::size_t m_nLayer = 0;
    ContourSet m_contours;
    Fill m_fill;
    /// The fill of the layer below; without scan lines for the lowest layer.
    Fill m_below;
    Reach m_reach;
};

/// Cuts a mesh at one height after another.
class SectionCutter {
public:
    /// `mesh` and `lines` must outlive the cutter; `bounds` are those of the mesh.
    SectionCutter(const Mesh& mesh, const Bounds& bounds, const ScanLines& lines,
                  std::size_t layerCount);

    /// The contours at `height` of the facets with the indices `met`.
    ContourSet ContoursOf(const std::vector<std::size_t>& met, double height) const;

    /// Puts the section with `contours` in place of what `fill` was. Slivers are what is
    /// narrower than a cell of the contours' raster.
    void Refill(const ContourSet& contours, Fill& fill) { m_filler.Refill(contours, fill); }

    Reach ReachOf(const ContourSet& contours) const { return {contours, m_middle, m_mostSights}; }

private:
    const Mesh& m_mesh;
    double m_resolution;
    SectionFiller m_filler;
    ContourPoint m_middle;
    std::size_t m_mostSights;
};

}  // namespace section
