#include "section/ScanFill.h"

#include <algorithm>

#include <zt/numerics/Constants.h>

namespace section {
namespace {

using ZT::RangeR1;
using ZT::SetR1;

/// `Unite` looks for its place from the front. So a line is united in pieces of this
/// many members, one behind the other.
constexpr INT_PTR kPiece = 32;

}  // namespace

// --------------------------------------------------------------------------- scan lines

ScanLines::ScanLines(const Bounds& bounds, int count) : m_within(bounds.m_axes[eAxisX]) {
    const RangeR1& across = bounds.m_axes[eAxisY];
    if (!(m_within.GetLength() > ZT::zToler) || !(across.GetLength() > ZT::zToler)) {
        return;
    }
    for (int i = 0; i < count; ++i) {
        m_places.push_back(across.GetPoint((i + 0.5) / count));
    }
}

int ScanLines::CountFor(std::size_t layerCount) {
    constexpr std::size_t kTogether = std::size_t{1} << 18;
    constexpr std::size_t kLeastEach = 8;
    const std::size_t each = kTogether / std::max<std::size_t>(layerCount, 1);
    return static_cast<int>(std::clamp(each, kLeastEach, std::size_t{kMostEach}));
}

// ------------------------------------------------------------------------------ filling

SectionFiller::SectionFiller(const ScanLines& lines, double sliver)
    : m_lines(lines), m_sliver(std::max(sliver, ZT::zToler)), m_crossings(lines.Places().size()) {}

void SectionFiller::Refill(const ContourSet& contours, Fill& fill) {
    for (Crossings& crossings : m_crossings) {
        crossings.clear();
    }
    for (const Loop& loop : contours.m_loops) {
        Cross(loop.back(), loop.front(), false);
        for (std::size_t i = 1; i < loop.size(); ++i) {
            Cross(loop[i - 1], loop[i], false);
        }
    }
    for (const Chain& chain : contours.m_chains) {
        for (std::size_t i = 1; i < chain.size(); ++i) {
            Cross(chain[i - 1], chain[i], true);
        }
    }
    fill.m_material.resize(m_crossings.size());
    fill.m_voids.resize(m_crossings.size());
    fill.m_nSlivers = fill.m_nUnpaired = 0;
    for (std::size_t i = 0; i < m_crossings.size(); ++i) {
        SetR1 &material = fill.m_material[i], &voids = fill.m_voids[i];
        fill.m_nUnpaired += DropUnpaired(m_crossings[i]);
        fill.m_nSlivers += FillLine(m_crossings[i], material);
        material.GetComplimentarySet(m_lines.Within(), voids);
        fill.m_nSlivers += RemoveSlivers(voids);
    }
}

// Always from the lower end, so that two contours along one line cross at one place to
// the bit.
void SectionFiller::Cross(const ContourPoint& a, const ContourPoint& b, bool ofChain) {
    const ContourPoint& low = a.m_y < b.m_y ? a : b;
    const ContourPoint& high = a.m_y < b.m_y ? b : a;
    const std::vector<double>& places = m_lines.Places();
    auto place = std::upper_bound(places.begin(), places.end(), low.m_y);
    for (; place != places.end() && *place <= high.m_y; ++place) {
        const double t = (*place - low.m_y) / (high.m_y - low.m_y);
        m_crossings[static_cast<std::size_t>(place - places.begin())].push_back(
            {low.m_x + t * (high.m_x - low.m_x), ofChain});
    }
}

/// Puts the crossings of a line in order and makes their number even; tells whether it
/// was odd.
bool SectionFiller::DropUnpaired(Crossings& crossings) const {
    std::sort(crossings.begin(), crossings.end(),
              [](const Crossing& a, const Crossing& b) { return a.x < b.x; });
    if (crossings.size() % 2 == 0) {
        return false;
    }
    const auto last = std::find_if(crossings.rbegin(), crossings.rend(),
                                   [](const Crossing& crossing) { return crossing.ofChain; });
    crossings.erase(last == crossings.rend() ? crossings.end() - 1 : last.base() - 1);
    return true;
}

/// Makes `material` the spans between crossings, and gives the number of slivers.
ZT::uint64 SectionFiller::FillLine(const Crossings& crossings, SetR1& material) const {
    ZT::uint64 slivers = 0;
    SetR1 piece;
    material.SetSize(0);
    for (std::size_t i = 0; i < crossings.size(); i += 2) {
        piece.Unite(RangeR1(crossings[i].x, crossings[i + 1].x));
        if (piece.GetSize() == kPiece || i + 2 == crossings.size()) {
            slivers += RemoveSlivers(piece);
            piece.MakeValid();
            material.Append(piece);
            piece.SetSize(0);
        }
    }
    material.MergeAdjacent();
    return slivers;
}

ZT::uint64 SectionFiller::RemoveSlivers(SetR1& set) const {
    int kept = 0;
    for (INT_PTR i = 0; i < set.GetSize(); ++i) {
        const RangeR1 member = set[i];
        if (!member.IsSingleton2(m_sliver)) {
            set.SetRange(kept++, member.m_min, member.m_max);
        }
    }
    const auto removed = static_cast<ZT::uint64>(set.GetSize() - kept);
    set.SetSize(kept);
    return removed;
}

// ------------------------------------------------------------------------------ measuring

double TotalLength(const SetR1& set) {
    double length = 0.0;
    for (const RangeR1& member : set) {
        length += member.GetLength();
    }
    return length;
}

// Of `lower`, only the members that can meet a member of `upper` are cut with it: pairs of
// all members would take time in proportion to the product of their numbers.
void FindShared(const SetR1& upper, const SetR1& lower, ZT::RangeMulti& shared) {
    shared.SetEmpty();
    ZT::RangeMulti met;
    INT_PTR first = 0;
    for (const RangeR1& member : upper) {
        while (first < lower.GetSize() && lower[first].m_max < member.m_min) {
            ++first;
        }
        met.SetEmpty();
        for (INT_PTR i = first; i < lower.GetSize() && lower[i].m_min <= member.m_max; ++i) {
            met.Add(ZT::Range(lower[i].m_min, lower[i].m_max));
        }
        met.Intersect(ZT::Range(member.m_min, member.m_max));
        shared.Unite(met);
    }
}

FillFigures::FillFigures(const Fill& fill, const Fill* below)
    : m_nSlivers(fill.m_nSlivers), m_nUnpaired(fill.m_nUnpaired) {
    double carried = 0.0;
    ZT::RangeMulti shared;
    for (std::size_t i = 0; i < fill.m_material.size(); ++i) {
        m_material += TotalLength(fill.m_material[i]);
        m_voids += TotalLength(fill.m_voids[i]);
        if (below != nullptr) {
            FindShared(fill.m_material[i], below->m_material[i], shared);
        }
        for (ZT::int64 k = 0; k < shared.GetCount(); ++k) {
            carried += shared.GetAt(k).GetLength();
        }
    }
    m_carried = m_material > 0.0 ? std::min(carried / m_material, 1.0) : 0.0;
}

double FillFigures::Share() const {
    const double whole = m_material + m_voids;
    return whole > 0.0 ? m_material / whole : 0.0;
}

}  // namespace section
