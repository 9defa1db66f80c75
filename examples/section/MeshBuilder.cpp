#include "section/MeshBuilder.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace section {
namespace {

constexpr std::size_t kFirstTable = 64;

/// How far the hash of a point is moved down to be a place in a table of `size`.
int ShiftFor(std::size_t size) {
    return 64 - std::countr_zero(size);
}

std::uint64_t HashOf(const Point& point) {
    std::uint32_t bits[eAxisCount];
    std::memcpy(bits, &point, sizeof bits);
    std::uint64_t hash = (std::uint64_t{bits[0]} << 32 | bits[1]) * 0x9E3779B97F4A7C15u;
    hash = (hash ^ hash >> 32) + bits[2];
    return hash * 0xD6E8FEB86659FD93u;
}

bool AreSame(const unsigned char* row, const Point& point) {
    return std::memcmp(row, &point, sizeof point) == 0;
}

/// Room for `count` rows, of which none is in use.
void Reserve(ZT::BufferBase& rows, std::size_t count) {
    if (count > 0) {
        rows.AllocateEx(static_cast<ZT::ulong>(count));
        rows.AllocateEx(0);
    }
}

}  // namespace

MeshBuilder::MeshBuilder(std::size_t facets)
    : m_table(std::bit_ceil(std::max(kFirstTable, facets + facets / 8))),
      m_nShift(ShiftFor(m_table.size())) {
    Reserve(m_mesh.m_facets, facets);
    Reserve(m_mesh.m_vertices, facets / 2 + facets / 16);
}

void MeshBuilder::Add(const Facet& facet) {
    Mesh::Corners corners;
    for (std::size_t k = 0; k < facet.size(); ++k) {
        Point point = facet[k];
        for (float& coordinate : point) {
            coordinate += 0.0f;  // takes the sign from a zero
        }
        corners[k] = IndexOf(point);
    }
    std::memcpy(m_mesh.m_facets.AddNewRow(), &corners, sizeof corners);
    m_last = corners;
}

Mesh MeshBuilder::Take() {
    Mesh taken = std::move(m_mesh);
    *this = MeshBuilder();
    return taken;
}

// Most facets share corners with the one before them, which saves the table.
std::uint32_t MeshBuilder::IndexOf(const Point& point) {
    for (const std::uint32_t index : m_last) {
        const unsigned char* const row = m_mesh.m_vertices.GetRow(index);
        if (row != nullptr && AreSame(row, point)) {
            return index;
        }
    }
    std::uint32_t& place = PlaceOf(point);
    if (place != 0) {
        return place - 1;
    }
    std::memcpy(m_mesh.m_vertices.AddNewRow(), &point, sizeof point);
    place = m_mesh.m_vertices.GetCount();
    const std::uint32_t index = place - 1;
    if (2 * m_mesh.VertexCount() > m_table.size()) {
        Enlarge();
    }
    return index;
}

/// The place of the vertex at `point`, or the free one that it gets.
std::uint32_t& MeshBuilder::PlaceOf(const Point& point) {
    const std::size_t last = m_table.size() - 1;
    auto at = static_cast<std::size_t>(HashOf(point) >> m_nShift);
    while (m_table[at] != 0 && !AreSame(m_mesh.m_vertices.GetRow(m_table[at] - 1), point)) {
        at = (at + 1) & last;
    }
    return m_table[at];
}

void MeshBuilder::Enlarge() {
    m_table.assign(2 * m_table.size(), 0);
    m_nShift = ShiftFor(m_table.size());
    for (std::uint32_t i = 0; i < m_mesh.m_vertices.GetCount(); ++i) {
        Point point;
        std::memcpy(&point, m_mesh.m_vertices.GetRow(i), sizeof point);
        PlaceOf(point) = i + 1;
    }
}

}  // namespace section
