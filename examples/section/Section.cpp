#include "section/Section.h"

namespace section {

SectionCutter::SectionCutter(const Mesh& mesh, const Bounds& bounds, const ScanLines& lines,
                             std::size_t layerCount)
    : m_mesh(mesh),
      m_resolution(ContourCutter::ResolutionFor(mesh)),
      m_filler(lines, m_resolution),
      m_middle{bounds.m_axes[eAxisX].GetPoint(0.5), bounds.m_axes[eAxisY].GetPoint(0.5)},
      m_mostSights(Reach::SightsFor(layerCount)) {}

ContourSet SectionCutter::ContoursOf(const std::vector<std::size_t>& met, double height) const {
    ContourCutter cutter(height, m_resolution);
    for (const std::size_t facet : met) {
        cutter.Add(m_mesh.GetFacet(facet));
    }
    return cutter.TakeContours();
}

}  // namespace section
