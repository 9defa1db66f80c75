#include <cstddef>
#include <utility>

#include "section/Contours.h"
#include "section/Facing.h"
#include "section/Layers.h"

namespace section {
namespace {

/// The facets that a layer meets, for one layer after another from below; layers may be
/// passed over, and asked for again.
class Sweep {
public:
    Sweep(const std::vector<ZT::RangeInt>& covers, std::size_t layerCount)
        : m_covers(covers), m_starts(layerCount + 1), m_order(covers.size()) {
        OrderByStart();
    }

    /// The indices of the facets that meet `layer`.
    const std::vector<std::size_t>& MoveTo(std::size_t layer) {
        std::erase_if(m_met, [&](std::size_t facet) { return EndsBelow(facet, layer); });
        const std::size_t end = m_starts[layer + 1];
        for (; m_next < end; ++m_next) {
            if (!EndsBelow(m_order[m_next], layer)) {
                m_met.push_back(m_order[m_next]);
            }
        }
        return m_met;
    }

private:
    bool EndsBelow(std::size_t facet, std::size_t layer) const {
        return m_covers[facet].m_max < static_cast<int>(layer);
    }

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
    std::size_t m_next = 0;
    std::vector<std::size_t> m_met;
};

}  // namespace

ScanLines Layers::LinesIn(const Bounds& bounds) const {
    return {bounds, static_cast<int>(m_nScanLines)};
}

void Layers::MeasureSections(const Mesh& mesh, const Bounds& bounds) {
    const std::vector<ZT::RangeInt> covers = CoversOf(mesh);
    std::vector<Facing> facings;
    facings.reserve(mesh.FacetCount());
    for (std::size_t i = 0; i < mesh.FacetCount(); ++i) {
        facings.push_back(FacingOf(mesh.GetFacet(i)));
    }
    m_nScanLines = static_cast<ZT::uint64>(ScanLines::CountFor(m_layers.size()));
    const ScanLines lines = LinesIn(bounds);
    SectionCutter cutter(mesh, bounds, lines, m_layers.size());
    Sweep sweep(covers, m_layers.size());
    std::vector<double> directions;
    Fill fill, below;
    for (std::size_t i = 0; i < m_layers.size(); ++i) {
        Layer& layer = m_layers[i];
        const std::vector<std::size_t>& met = sweep.MoveTo(i);
        directions.clear();
        for (const std::size_t facet : met) {
            if (facings[facet].m_eKind == Facing::eSide) {
                directions.push_back(facings[facet].m_direction);
            }
        }
        layer.m_facing = SmallestArc(directions);
        const ContourSet contours = cutter.ContoursOf(met, layer.MiddleHeight());
        cutter.Refill(contours, fill);
        layer.m_contours = ContourFigures(contours);
        layer.m_fill = FillFigures(fill, i > 0 ? &below : nullptr);
        layer.m_reach = ReachFigures(cutter.ReachOf(contours));
        std::swap(fill, below);
    }
}

std::deque<Section> Layers::SectionsOf(const Mesh& mesh, const Bounds& bounds,
                                       const std::vector<std::size_t>& indices) const {
    const std::vector<ZT::RangeInt> covers = CoversOf(mesh);
    const ScanLines lines = LinesIn(bounds);
    SectionCutter cutter(mesh, bounds, lines, m_layers.size());
    Sweep sweep(covers, m_layers.size());
    const auto contoursOf = [&](std::size_t index) {
        return cutter.ContoursOf(sweep.MoveTo(index), m_layers[index].MiddleHeight());
    };
    std::deque<Section> sections;
    for (const std::size_t index : indices) {
        Section& section = sections.emplace_back();
        section.m_nLayer = index;
        if (index > 0) {
            cutter.Refill(contoursOf(index - 1), section.m_below);
        }
        section.m_contours = contoursOf(index);
        cutter.Refill(section.m_contours, section.m_fill);
        section.m_reach = cutter.ReachOf(section.m_contours);
    }
    return sections;
}

}  // namespace section
