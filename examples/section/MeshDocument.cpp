// A mesh in a document.

#include <cmath>
#include <cstddef>

#include "section/DocumentParts.h"
#include "section/Mesh.h"

namespace section {
namespace {

/// Fails where the table that is to be loaded isn't one of rows like those of `rows`, at
/// least one of them, with all their bytes.
void CheckRows(const ZT::PCExBase& pc, const ZT::BufferBase& rows) {
    const IXMLDOMElementPtr block = IXMLDOMElementPtr(pc.GetCurElem())->childElement("BB", 0);
    if (!block) {
        FailAt(pc, "BB");
    }
    int size = 0, binary = 1;
    ZT::ulong count = 0;
    ZT::PCExBase::ReadInt(block, "SR", size);
    ZT::PCExBase::ReadInt(block, "Bn", binary);
    ZT::PCExBase::ReadDWORD(block, "C", count);
    if (size != rows.GetRowSize() || binary != 1 || count == 0 ||
        !HasDigits(block, std::uint64_t{rows.GetRowSize()} * count)) {
        FailAt(pc, "BB");
    }
}

void PersistRows(ZT::PCExBase& pc, const char* name, ZT::BufferBase& rows) {
    OpenElement(pc, name);
    if (pc.IsLoading()) {
        CheckRows(pc, rows);
    }
    rows.PersistXML(pc, true);
    pc.PopElement(false);
}

bool AreFinite(const ZT::BufferBase& vertices) {
    for (ZT::ulong i = 0; i < vertices.GetCount(); ++i) {
        Point point;
        std::memcpy(&point, vertices.GetRow(i), sizeof point);
        for (const float coordinate : point) {
            if (!std::isfinite(coordinate)) {
                return false;
            }
        }
    }
    return true;
}

bool AreIndices(const ZT::BufferBase& facets, std::size_t count) {
    for (ZT::ulong i = 0; i < facets.GetCount(); ++i) {
        Mesh::Corners corners;
        std::memcpy(&corners, facets.GetRow(i), sizeof corners);
        for (const std::uint32_t corner : corners) {
            if (corner >= count) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace

void Mesh::PersistXML(ZT::PCExBase& pc) {
    OpenElement(pc, "Mesh");
    PersistRows(pc, "Vertices", m_vertices);
    PersistRows(pc, "Facets", m_facets);
    if (!AreFinite(m_vertices)) {
        FailAt(pc, "Vertices");
    }
    if (!AreIndices(m_facets, VertexCount())) {
        FailAt(pc, "Facets");
    }
    pc.PopElement(false);
}

}  // namespace section
