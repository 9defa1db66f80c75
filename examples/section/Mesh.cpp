#include "section/Mesh.h"

#include "section/MeshBuilder.h"

namespace section {
namespace {

/// Exchanges what two buffers name. The one in between names a block, too, and lets go of
/// it before its end.
void Exchange(ZT::BufferBase& a, ZT::BufferBase& b) noexcept {
    ZT::BufferBase between(a);
    a = b;
    b = between;
    between.Construct();
}

}  // namespace

Mesh::Mesh() {
    m_vertices.SetRowSize(sizeof(Point));
    m_facets.SetRowSize(sizeof(Corners));
}

Mesh::Mesh(const std::vector<Facet>& facets) : Mesh() {
    MeshBuilder builder;
    for (const Facet& facet : facets) {
        builder.Add(facet);
    }
    *this = builder.Take();
}

Mesh::Mesh(const Mesh& other) : Mesh() {
    m_vertices.Copy(other.m_vertices, 0);
    m_facets.Copy(other.m_facets, 0);
}

Mesh::Mesh(Mesh&& other) noexcept : Mesh() {
    Exchange(m_vertices, other.m_vertices);
    Exchange(m_facets, other.m_facets);
}

Mesh& Mesh::operator=(Mesh other) noexcept {
    Exchange(m_vertices, other.m_vertices);
    Exchange(m_facets, other.m_facets);
    return *this;
}

}  // namespace section
