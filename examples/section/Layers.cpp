#include "section/Layers.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "section/Bounds.h"
#include "section/Failure.h"
#include "section/Number.h"

namespace section {
namespace {

/// Extends `height` to a whole number of steps, which is the result.
int ExtendToSteps(ZT::RangeR1& height, double step) {
    if (!(step > ZT::zToler)) {
        throw Failure("a step of " + Number(step) + " is not above the tolerance of " +
                      Number(ZT::zToler));
    }
    if (!(height.GetLength() / step < kMostLayers)) {
        throw Failure("a step of " + Number(step) + " cuts a height of " +
                      Number(height.GetLength()) + " into more than " +
                      std::to_string(kMostLayers) + " layers");
    }
    int count = 0;
    height.Setup(step, count);
    return count;
}

int EqualParts(const ZT::RangeR1& height, int count) {
    if (count < 1 || count > kMostLayers) {
        throw Failure(std::to_string(count) + " layers are asked for, and 1 to " +
                      std::to_string(kMostLayers) + " can be had");
    }
    return ZT::zToler > height.GetLength() / count ? 1 : count;
}

}  // namespace

Layers::Layers(const ZT::RangeR1& height, const Cut& cut) : m_height(height) {
    const int count =
        cut.m_step != 0.0 ? ExtendToSteps(m_height, cut.m_step) : EqualParts(height, cut.m_count);
    m_layers.resize(static_cast<std::size_t>(count));
    int index = 0;
    for (Layer& layer : m_layers) {
        m_height.GetSegment(index++, count, layer.m_range);
    }
}

int Layers::IndexAt(double z) const {
    bool onKnot = false;
    return std::clamp(m_height.GetSegment(z, Count(), &onKnot), 0, Count() - 1);
}

bool Layers::Meets(int index, const ZT::RangeR1& extent) const {
    return m_layers[static_cast<std::size_t>(index)].m_range.IsIntersection(extent, false);
}

// The segments of the two ends are the right ones up to the tolerance and to
// rounding; what a layer meets is settled by the test of the ranges themselves.
Layers::Run Layers::MeetingRun(const ZT::RangeR1& extent) const {
    Run run{IndexAt(extent.m_min), IndexAt(extent.m_max)};
    while (run.first < run.last && !Meets(run.first, extent)) {
        ++run.first;
    }
    while (run.first > 0 && Meets(run.first - 1, extent)) {
        --run.first;
    }
    while (run.last > run.first && !Meets(run.last, extent)) {
        --run.last;
    }
    while (run.last + 1 < Count() && Meets(run.last + 1, extent)) {
        ++run.last;
    }
    return run;
}

// Each facet adds one where its run begins and takes one where it has ended, so
// that the running sum is the count of a layer.
void Layers::CountFacets(const Mesh& mesh) {
    std::vector<ZT::int64> changes(m_layers.size() + 1);
    for (const Facet& facet : mesh.m_facets) {
        const ZT::RangeR1 extent = Extent(facet, eAxisZ);
        if (m_height.IsIntersection(extent, false)) {
            const Run run = MeetingRun(extent);
            ++changes[static_cast<std::size_t>(run.first)];
            --changes[static_cast<std::size_t>(run.last) + 1];
        }
    }
    ZT::int64 count = 0;
    auto change = changes.begin();
    for (Layer& layer : m_layers) {
        count += *change++;
        layer.m_nFacets += static_cast<ZT::uint64>(count);
    }
}

}  // namespace section
