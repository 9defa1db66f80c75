/// @file
/// A triangle mesh as it comes out of an STL file.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include <zt/memory/BufferBase.h>

namespace section {

/// The axes of the mesh, as indices of a coordinate.
enum Axis : std::size_t { eAxisX, eAxisY, eAxisZ, eAxisCount };

/// A point, in single precision as STL holds it. Lengths have the unit of the
/// file, which STL doesn't tell.
using Point = std::array<float, eAxisCount>;

/// A triangle. Its corners may coincide or lie on a line.
using Facet = std::array<Point, 3>;

/// The facets of a mesh in the order of the file, in two tables of rows. A vertex is a row
/// of three coordinates; each different point is one vertex, in the order in which points
/// first came up. A facet is a row of the indices of its three corners.
///
/// A mesh is a value: a copy has tables of its own. `MeshBuilder` makes one facet by facet.
class Mesh {
public:
    /// A row of the table of facets.
    using Corners = std::array<std::uint32_t, 3>;

    /// No facets.
    Mesh();

    /// The mesh of `facets`.
    Mesh(const std::vector<Facet>& facets);

    Mesh(const Mesh& other);
    /// The other one has no facets afterwards.
    Mesh(Mesh&& other) noexcept;
    Mesh& operator=(Mesh other) noexcept;
    ~Mesh() = default;

    std::size_t FacetCount() const { return m_facets.GetCount(); }
    std::size_t VertexCount() const { return m_vertices.GetCount(); }

    /// The corners of facet `i`, which is below the count.
    Facet GetFacet(std::size_t i) const {
        Corners corners;
        std::memcpy(&corners, m_facets.GetRow(static_cast<ZT::ulong>(i)), sizeof corners);
        Facet facet;
        for (std::size_t k = 0; k < facet.size(); ++k) {
            std::memcpy(&facet[k], m_vertices.GetRow(corners[k]), sizeof facet[k]);
        }
        return facet;
    }

    /// Whether vertices and facets are the same, byte by byte and in the same order.
    bool operator==(const Mesh& other) const {
        return m_vertices.IsSame(other.m_vertices) && m_facets.IsSame(other.m_facets);
    }

    /// An element "Mesh" with both tables.
    void PersistXML(ZT::PCExBase& pc);

private:
    friend class MeshBuilder;

    ZT::BufferBase m_vertices;
    ZT::BufferBase m_facets;
};

}  // namespace section
