#include "section/Model.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "section/Failure.h"

namespace section {
namespace {

/// Rounding to six significant digits moves a number by at most half a unit of
/// its sixth digit, which is largest against the number for 100000. The last
/// part leaves room for the rounding of this test itself.
bool SameNumber(double a, double b) {
    constexpr double kHalfUnit = 5e-6 * (1 + 1e-9);
    return std::abs(a - b) <= kHalfUnit * std::max(std::abs(a), std::abs(b));
}

bool SameRange(const ZT::RangeR1& a, const ZT::RangeR1& b) {
    return SameNumber(a.m_min, b.m_min) && SameNumber(a.m_max, b.m_max);
}

std::string BoundsDifference(const Bounds& a, const Bounds& b) {
    for (const Axis axis : {eAxisX, eAxisY, eAxisZ}) {
        if (!SameRange(a.m_axes[axis], b.m_axes[axis])) {
            return std::string("bounds along ") + "xyz"[axis];
        }
    }
    return {};
}

bool SameLayer(const Layer& a, const Layer& b) {
    return a.m_nFacets == b.m_nFacets && SameRange(a.m_range, b.m_range);
}

std::string LayersDifference(const Layers& a, const Layers& b) {
    if (!SameRange(a.Height(), b.Height())) {
        return "height of the layers";
    }
    if (a.All().size() != b.All().size()) {
        return "number of layers";
    }
    const auto [first, ignored] =
        std::mismatch(a.All().begin(), a.All().end(), b.All().begin(), SameLayer);
    if (first != a.All().end()) {
        return "layer " + std::to_string(first - a.All().begin() + 1);
    }
    return {};
}

}  // namespace

Model::Model(const std::string& source, const Mesh& mesh, const Cut& cut)
    : m_source(Printable(source)),
      m_nFacets(mesh.m_facets.size()),
      m_bounds(mesh),
      m_layers(m_bounds.m_axes[eAxisZ], cut) {
    m_layers.CountFacets(mesh);
}

std::string FirstDifference(const Model& a, const Model& b) {
    if (a.m_source != b.m_source) {
        return "name of the mesh";
    }
    if (a.m_nFacets != b.m_nFacets) {
        return "number of facets";
    }
    const std::string bounds = BoundsDifference(a.m_bounds, b.m_bounds);
    return bounds.empty() ? LayersDifference(a.m_layers, b.m_layers) : bounds;
}

}  // namespace section
