#include "section/Layers.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "section/Bounds.h"
#include "section/Failure.h"
#include "section/Number.h"

namespace section {
namespace {

/// The distance from zero over the least step: knots are numbered with 32 bits.
constexpr double kMostSteps = 1e9;

double Farthest(const ZT::RangeR1& height) {
    return std::max(std::abs(height.m_min), std::abs(height.m_max));
}

double NamedStep(const ZT::RangeR1& height, double step) {
    if (!(step > ZT::zToler)) {
        throw Failure("a step of " + Number(step) + " is not above the tolerance of " +
                      Number(ZT::zToler));
    }
    if (!(height.GetLength() / step < kMostLayers)) {
        throw Failure("a step of " + Number(step) + " cuts a height of " +
                      Number(height.GetLength()) + " into more than " +
                      std::to_string(kMostLayers) + " layers");
    }
    if (!(Farthest(height) / step <= kMostSteps)) {
        throw Failure("a step of " + Number(step) + " is too short for a mesh at the height " +
                      Number(Farthest(height)));
    }
    return step;
}

/// The least of 1, 2, 2.5 and 5 times a power of ten that isn't below `least`, up to
/// rounding.
double RoundStep(double least) {
    constexpr double kRounding = 1.0 - 1e-9;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double digit : {1.0, 2.0, 2.5, 5.0}) {
        if (digit * power >= least * kRounding) {
            return digit * power;
        }
    }
    return 10.0 * power;
}

double StepForCount(const ZT::RangeR1& height, int count) {
    if (count < 1 || count > kMostLayers) {
        throw Failure(std::to_string(count) + " layers are asked for, and 1 to " +
                      std::to_string(kMostLayers) + " can be had");
    }
    constexpr double kLeastStep = 1e-9;
    const double length = height.GetLength();
    const double part = length > ZT::zToler ? length / count : 1.0;
    return RoundStep(std::max({part, kLeastStep, Farthest(height) / kMostSteps}));
}

/// Makes `grid` the knots that `height` needs. Where the aligned cover ends above a
/// negative lower limit the grid is extended; a segment above the height that it
/// then has too many is taken off.
void CoverHeight(ZT::Grid1D& grid, const ZT::RangeR1& height, double step) {
    grid.CoverRangeZeroAligned(height, step, 0.0);
    if (grid.GetSegmentCount() == 0) {
        grid.m_range.m_max += step;
        grid.SetSegmentCount(1);
    }
    grid.Include(height.m_min);
    grid.Include(height.m_max);
    ZT::RangeInt cover;
    grid.GetCoverSet(height, cover);
    grid.SetSegmentCountEx(cover.m_max + 1, true);
}

/// A knot, where the one at zero is zero itself.
double KnotAt(const ZT::Grid1D& grid, int index) {
    const double knot = grid.GetKnot(index);
    return ZT::zToler > std::abs(knot) ? 0.0 : knot;
}

}  // namespace

Layers::Layers(const ZT::RangeR1& height, const Cut& cut)
    : m_step(cut.m_step != 0.0 ? NamedStep(height, cut.m_step)
                               : StepForCount(height, cut.m_count)) {
    ZT::Grid1D grid;
    CoverHeight(grid, height, m_step);
    m_layers.resize(static_cast<std::size_t>(grid.GetSegmentCount()));
    int index = 0;
    for (Layer& layer : m_layers) {
        layer.m_range.Set(KnotAt(grid, index), KnotAt(grid, index + 1));
        ++index;
    }
    m_height.Set(m_layers.front().m_range.m_min, m_layers.back().m_range.m_max);
}

bool Layers::Meets(int index, const ZT::RangeR1& extent) const {
    return m_layers[static_cast<std::size_t>(index)].m_range.IsIntersection(extent, false);
}

// The cover set of the grid is the right run up to the tolerance and to rounding; what
// a layer meets is settled by the test of the ranges themselves.
ZT::RangeInt Layers::CoverOf(const ZT::Grid1D& grid, const ZT::RangeR1& extent) const {
    if (!m_height.IsIntersection(extent, false)) {
        return {};
    }
    ZT::RangeInt run;
    grid.GetCoverSet(extent, run);
    run.m_min = ZT::RangeInt::ToRange(run.m_min, 0, Count() - 1);
    run.m_max = ZT::RangeInt::ToRange(run.m_max, run.m_min, Count() - 1);
    while (run.m_min < run.m_max && !Meets(run.m_min, extent)) {
        ++run.m_min;
    }
    while (run.m_min > 0 && Meets(run.m_min - 1, extent)) {
        --run.m_min;
    }
    while (run.m_max > run.m_min && !Meets(run.m_max, extent)) {
        --run.m_max;
    }
    while (run.m_max + 1 < Count() && Meets(run.m_max + 1, extent)) {
        ++run.m_max;
    }
    return run;
}

std::vector<ZT::RangeInt> Layers::CoversOf(const Mesh& mesh) const {
    const ZT::Grid1D grid(m_height.m_min, m_height.m_max, Count());
    std::vector<ZT::RangeInt> covers;
    covers.reserve(mesh.FacetCount());
    for (std::size_t i = 0; i < mesh.FacetCount(); ++i) {
        covers.push_back(CoverOf(grid, Extent(mesh.GetFacet(i), eAxisZ)));
    }
    return covers;
}

// Each facet adds one where its run begins and takes one where it has ended, so
// that the running sum is the count of a layer.
void Layers::CountFacets(const Mesh& mesh) {
    std::vector<ZT::int64> changes(m_layers.size() + 1);
    for (const ZT::RangeInt& cover : CoversOf(mesh)) {
        if (!cover.IsEmpty()) {
            ++changes[static_cast<std::size_t>(cover.m_min)];
            --changes[static_cast<std::size_t>(cover.m_max) + 1];
        }
        if (cover.GetCount() > m_longestCover.GetCount()) {
            m_longestCover = cover;
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
