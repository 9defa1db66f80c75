/// @file
/// The layers of a mesh along z, and how many facets each of them meets.

#pragma once

#include <vector>

#include <zt/ranges/RangeR1.h>

#include "section/Mesh.h"

namespace section {

/// How a height is to be cut: into a number of equal layers, or, if `m_step` is
/// above 0, into layers of that height.
struct Cut {
    int m_count = 20;
    double m_step = 0.0;
};

/// More layers than this are refused.
inline constexpr int kMostLayers = 100000;

/// A layer: a closed interval of heights, and the number of facets that have a
/// point in it. A facet at the height where two layers join counts in both.
struct Layer {
    ZT::RangeR1 m_range;
    ZT::uint64 m_nFacets = 0;

    /// An element "Layer", on which the cursor stands already when loading.
    void PersistXML(ZT::PCExBase& pc);
};

/// A height, cut into layers of equal thickness from below.
class Layers {
public:
    /// No layer, and an empty height.
    Layers() = default;

    /// Cuts `height` in `cut.m_count` layers; or, from its lower end, in layers
    /// of `cut.m_step`. The steps end above the height, never at it, so that a
    /// height of three whole steps has four layers. A height too small to be cut
    /// so, such as that of a flat mesh, has one layer.
    ///
    /// Throws `Failure` for more than `kMostLayers`, and for a step that isn't
    /// longer than the library's tolerance.
    Layers(const ZT::RangeR1& height, const Cut& cut);

    /// Adds the facets of `mesh` to the layers that they meet, within the
    /// library's tolerance. Takes one step per facet and one per layer.
    void CountFacets(const Mesh& mesh);

    /// From the lower end of the first layer to the upper end of the last.
    const ZT::RangeR1& Height() const { return m_height; }

    /// The layers from below.
    const std::vector<Layer>& All() const { return m_layers; }

    /// Thickness of a layer.
    double Thickness() const { return m_height.GetLength() / static_cast<double>(m_layers.size()); }

    /// An element "Layers" with the height and one "Layer" after another.
    void PersistXML(ZT::PCExBase& pc);

private:
    struct Run {
        int first, last;
    };

    int Count() const { return static_cast<int>(m_layers.size()); }
    int IndexAt(double z) const;
    bool Meets(int index, const ZT::RangeR1& extent) const;
    Run MeetingRun(const ZT::RangeR1& extent) const;

    ZT::RangeR1 m_height;
    std::vector<Layer> m_layers;
};

}  // namespace section
