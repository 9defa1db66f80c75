#include "section/Bounds.h"

namespace section {

ZT::RangeR1 Extent(const Facet& facet, Axis axis) {
    ZT::RangeR1 extent;
    for (const Point& corner : facet) {
        extent.Include(corner[axis]);
    }
    return extent;
}

Bounds::Bounds(const Mesh& mesh) {
    for (std::size_t i = 0; i < mesh.FacetCount(); ++i) {
        const Facet facet = mesh.GetFacet(i);
        for (const Axis axis : {eAxisX, eAxisY, eAxisZ}) {
            m_axes[axis].Include(Extent(facet, axis));
        }
    }
}

}  // namespace section
