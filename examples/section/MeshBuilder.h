/// @file
/// Makes a mesh facet by facet.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "section/Mesh.h"

namespace section {

/// Collects facets into a mesh and finds the corners that they share. Points are the same if
/// their coordinates are; a zero counts, and is kept, as the one without a sign.
class MeshBuilder {
public:
    /// Room for as many facets in advance, and for the vertices that a closed mesh has of them.
    explicit MeshBuilder(std::size_t facets = 0);

    void Add(const Facet& facet);

    /// The mesh of all facets so far. The builder begins again.
    Mesh Take();

private:
    std::uint32_t IndexOf(const Point& point);
    std::uint32_t& PlaceOf(const Point& point);
    void Enlarge();

    Mesh m_mesh;
    /// The corners of the last facet.
    Mesh::Corners m_last{};
    /// A hash table of the vertices: index plus 1, or 0 for a free place. Its size is a power
    /// of two, and at most half of it is taken. Beside a place that is taken one looks on.
    std::vector<std::uint32_t> m_table;
    int m_nShift;
};

}  // namespace section
