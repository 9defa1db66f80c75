#include "section/Model.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

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

bool SameArc(const ZT::RangeS1& a, const ZT::RangeS1& b) {
    return a.m_eState == b.m_eState && SameRange(a, b);
}

bool SameRun(const ZT::RangeZGroup& a, const ZT::RangeZGroup& b) {
    return a == b && a.m_eState == b.m_eState;
}

bool SameContours(const ContourFigures& a, const ContourFigures& b) {
    return a.m_nLoops == b.m_nLoops && a.m_nOpen == b.m_nOpen &&
           SameNumber(a.m_length, b.m_length) && SameRun(a.m_run, b.m_run);
}

bool SameFill(const FillFigures& a, const FillFigures& b) {
    return SameNumber(a.m_material, b.m_material) && SameNumber(a.m_voids, b.m_voids) &&
           SameNumber(a.m_carried, b.m_carried) && a.m_nSlivers == b.m_nSlivers &&
           a.m_nUnpaired == b.m_nUnpaired;
}

bool SameReach(const ReachFigures& a, const ReachFigures& b) {
    return a.m_nContours == b.m_nContours && a.m_nReached == b.m_nReached &&
           SameNumber(a.m_free, b.m_free) && SameArc(a.m_hardest, b.m_hardest);
}

/// What differs between two layers, or nothing.
std::string LayerDifference(const Layer& a, const Layer& b) {
    if (!SameRange(a.m_range, b.m_range)) {
        return "heights";
    }
    if (a.m_nFacets != b.m_nFacets) {
        return "facets";
    }
    if (!SameArc(a.m_facing, b.m_facing)) {
        return "directions";
    }
    if (!SameContours(a.m_contours, b.m_contours)) {
        return "contours";
    }
    if (!SameFill(a.m_fill, b.m_fill)) {
        return "material";
    }
    return SameReach(a.m_reach, b.m_reach) ? "" : "reach";
}

std::string LayersDifference(const Layers& a, const Layers& b) {
    if (a.All().size() != b.All().size()) {
        return "number of layers";
    }
    if (!SameNumber(a.Thickness(), b.Thickness())) {
        return "step of the layers";
    }
    if (!SameRange(a.Height(), b.Height())) {
        return "height of the layers";
    }
    if (a.ScanLineCount() != b.ScanLineCount()) {
        return "number of scan lines";
    }
    if (a.LongestCover() != b.LongestCover()) {
        return "longest cover of the layers";
    }
    for (std::size_t i = 0; i < a.All().size(); ++i) {
        const std::string difference = LayerDifference(a.All()[i], b.All()[i]);
        if (!difference.empty()) {
            return difference + " of layer " + std::to_string(i + 1);
        }
    }
    return {};
}

std::string BytesDifference(const Model& a, const Model& b) {
    if (!(a.m_mesh == b.m_mesh)) {
        return "bytes of the mesh";
    }
    return a.m_input == b.m_input ? "" : "bytes of the input";
}

}  // namespace

Model::Model(const std::string& source, Mesh mesh, const Cut& cut)
    : m_source(Printable(source)),
      m_mesh(std::move(mesh)),
      m_bounds(m_mesh),
      m_facings(m_mesh),
      m_layers(m_bounds.m_axes[eAxisZ], cut) {
    m_layers.CountFacets(m_mesh);
    m_layers.MeasureSections(m_mesh, m_bounds);
}

std::string FirstDifference(const Model& a, const Model& b) {
    if (a.m_source != b.m_source) {
        return "name of the mesh";
    }
    if (a.m_mesh.FacetCount() != b.m_mesh.FacetCount()) {
        return "number of facets";
    }
    if (a.m_facings != b.m_facings) {
        return "facing of the facets";
    }
    std::string difference = BoundsDifference(a.m_bounds, b.m_bounds);
    if (difference.empty()) {
        difference = LayersDifference(a.m_layers, b.m_layers);
    }
    return difference.empty() ? BytesDifference(a, b) : difference;
}

}  // namespace section
