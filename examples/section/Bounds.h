/// @file
/// The extent of a mesh along each axis.

#pragma once

#include <array>

#include <zt/ranges/RangeR1.h>

#include "section/Mesh.h"

namespace section {

/// The extent of a facet along an axis. A facet that is perpendicular to the
/// axis has a singleton.
ZT::RangeR1 Extent(const Facet& facet, Axis axis);

/// The box around a mesh, as one real interval per axis. Without any facet all
/// three are empty; a flat mesh has a singleton.
struct Bounds {
    std::array<ZT::RangeR1, eAxisCount> m_axes;

    Bounds() = default;
    explicit Bounds(const Mesh& mesh);

    /// An element "Bounds" with one element an axis.
    void PersistXML(ZT::PCExBase& pc);
};

}  // namespace section
