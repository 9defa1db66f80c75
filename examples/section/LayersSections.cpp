#include <cstddef>

#include "section/Contours.h"
#include "section/Facing.h"
#include "section/Layers.h"

namespace section {
namespace {

/// The facets that a layer meets, for one layer after another from below.
class Sweep {
public:
    Sweep(const std::vector<ZT::RangeInt>& covers, std::size_t layerCount)
        : m_covers(covers), m_starts(layerCount + 1), m_order(covers.size()) {
        OrderByStart();
    }

    /// The indices of the facets that meet `layer`.
    const std::vector<std::size_t>& MoveTo(int layer) {
        std::erase_if(m_met, [&](std::size_t facet) { return m_covers[facet].m_max < layer; });
        const auto at = static_cast<std::size_t>(layer);
        for (std::size_t i = m_starts[at]; i < m_starts[at + 1]; ++i) {
            m_met.push_back(m_order[i]);
        }
        return m_met;
    }

private:
    /// Sorts the facets into the order in which layers meet them first, by counting.
    void OrderByStart() {
        for (const ZT::RangeInt& cover : m_covers) {
            if (!cover.IsEmpty()) {
                ++m_starts[static_cast<std::size_t>(cover.m_min) + 1];
            }
        }
        for (std::size_t i = 1; i < m_starts.size(); ++i) {
            m_starts[i] += m_starts[i - 1];
        }
        std::vector<std::size_t> next = m_starts;
        for (std::size_t facet = 0; facet < m_covers.size(); ++facet) {
            if (!m_covers[facet].IsEmpty()) {
                m_order[next[static_cast<std::size_t>(m_covers[facet].m_min)]++] = facet;
            }
        }
    }

    const std::vector<ZT::RangeInt>& m_covers;
    /// For each layer where its facets begin in the order, and where the last end.
    std::vector<std::size_t> m_starts;
    std::vector<std::size_t> m_order;
    std::vector<std::size_t> m_met;
};

ContourFigures ContoursOf(const Mesh& mesh, const std::vector<std::size_t>& met, double height,
                          double resolution) {
    ContourCutter cutter(height, resolution);
    for (const std::size_t facet : met) {
        cutter.Add(mesh.m_facets[facet]);
    }
    const std::vector<Loop> loops = cutter.TakeLoops();
    return {loops, cutter.OpenCount()};
}

}  // namespace

void Layers::MeasureSections(const Mesh& mesh) {
    const std::vector<ZT::RangeInt> covers = CoversOf(mesh);
    const double resolution = ContourCutter::ResolutionFor(mesh);
    std::vector<Facing> facings;
    facings.reserve(mesh.m_facets.size());
    for (const Facet& facet : mesh.m_facets) {
        facings.push_back(FacingOf(facet));
    }
    Sweep sweep(covers, m_layers.size());
    std::vector<double> directions;
    int index = 0;
    for (Layer& layer : m_layers) {
        const std::vector<std::size_t>& met = sweep.MoveTo(index++);
        directions.clear();
        for (const std::size_t facet : met) {
            if (facings[facet].m_eKind == Facing::eSide) {
                directions.push_back(facings[facet].m_direction);
            }
        }
        layer.m_facing = SmallestArc(directions);
        layer.m_contours = ContoursOf(mesh, met, layer.m_range.GetPoint(0.5), resolution);
    }
}

}  // namespace section
