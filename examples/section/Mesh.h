/// @file
/// A triangle mesh as it comes out of an STL file.

#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace section {

/// The axes of the mesh, as indices of a coordinate.
enum Axis : std::size_t { eAxisX, eAxisY, eAxisZ, eAxisCount };

/// A point, in single precision as STL holds it. Lengths have the unit of the
/// file, which STL doesn't tell.
using Point = std::array<float, eAxisCount>;

/// A triangle. Its corners may coincide or lie on a line.
using Facet = std::array<Point, 3>;

/// The facets of a mesh in the order of the file: 36 bytes each, one beside
/// the other. That neighbours share their corners isn't recorded.
struct Mesh {
    std::vector<Facet> m_facets;
};

}  // namespace section
