#include "section/PicturePanels.h"

#include <algorithm>
#include <cmath>

#include "section/Number.h"
#include "section/PictureShapes.h"

namespace section {
namespace {

using ZT::RangeR1;
using ZT::SetR1;

std::string Percent(double share) {
    return Fixed(100.0 * share, 1) + " %";
}

/// The path data of spans on the scan line at `y`. Spans closer than `detail` are drawn as
/// one, and a shorter one isn't drawn.
template <class Spans>
std::string SpanPath(const Spans& spans, const View& view, double y, double detail) {
    std::string path;
    RangeR1 pending;
    const auto draw = [&] {
        if (pending.GetLength() >= detail) {
            path += "M" + Pixels(pending.m_min) + ' ' + Pixels(view.Y(y)) + "h" +
                    Pixels(pending.GetLength());
        }
    };
    for (const RangeR1& span : spans) {
        const RangeR1 drawn(view.X(span.m_min), view.X(span.m_max));
        if (drawn.m_min - pending.m_max < detail && !pending.IsEmpty()) {
            pending.m_max = drawn.m_max;
        } else {
            draw();
            pending = drawn;
        }
    }
    draw();
    return path;
}

/// What `carried` leaves of `material`.
std::vector<RangeR1> Uncarried(const SetR1& material, const std::vector<RangeR1>& carried) {
    std::vector<RangeR1> rest;
    auto next = carried.begin();
    for (const RangeR1& member : material) {
        double from = member.m_min;
        for (; next != carried.end() && next->m_min < member.m_max; ++next) {
            if (next->m_min > from) {
                rest.emplace_back(from, next->m_min);
            }
            from = next->m_max;
        }
        if (member.m_max > from) {
            rest.emplace_back(from, member.m_max);
        }
    }
    return rest;
}

std::string FanPath(const FreeWays& ways, const Spot& spot, double radius) {
    std::string path;
    for (const ZT::RangeS1* const arc : ways.Arcs()) {
        path += SectorPath(spot, radius, arc->GetA(), arc->GetDiff());
    }
    return path;
}

}  // namespace

Panels::Panels(const Model& model, const Layout& layout, double detail)
    : m_model(model),
      m_layout(layout),
      m_lines(model.m_layers.LinesIn(model.m_bounds)),
      m_detail(detail) {}

std::string Panels::Draw(const Section& section) {
    const View& view = m_layout.view;
    const std::string frame = SvgElement("rect", {{"width", Pixels(view.Width())},
                                                  {"height", Pixels(view.Height())},
                                                  {"fill", "#ffffff"},
                                                  {"stroke", kFrame}});
    return Titles(section) +
           MovedGroup(
               {(m_layout.cellWidth - view.Width()) / 2, Layout::kTitles + Layout::kAround},
               frame + Filling(section) + Contours(section.m_contours) + Ways(section.m_reach));
}

std::string Panels::Titles(const Section& section) const {
    const Layer& layer = m_model.m_layers.All()[section.m_nLayer];
    const ReachFigures& reach = layer.m_reach;
    const std::size_t contours =
        section.m_contours.m_loops.size() + section.m_contours.m_chains.size();
    std::string reached = std::to_string(reach.m_nReached) + " of " +
                          Plural(reach.m_nContours, "contour") + " reached";
    if (reach.m_nContours < contours) {
        reached += ", " + std::to_string(contours) + " in all";
    }
    const ZT::uint64 unpaired = layer.m_fill.m_nUnpaired;
    const bool hangs = section.m_nLayer > 0 && layer.m_fill.m_material > 0.0;
    const double left = Layout::kAround, right = m_layout.cellWidth - Layout::kAround;
    return Words({left, 18},
                 "Layer " + std::to_string(section.m_nLayer + 1) +
                     ", z = " + Number(layer.MiddleHeight()),
                 13, kInk, true) +
           Words({left, 33}, Percent(layer.m_fill.Share()) + " material", 11, kFaintInk) +
           Words({right, 33}, hangs ? Percent(layer.m_fill.m_carried) + " of it carried" : "", 11,
                 kFaintInk, false, "end") +
           Words({left, 47}, reached, 11, kFaintInk) +
           Words({right, 18}, unpaired > 0 ? Plural(unpaired, "line") + " open" : "", 11, kChain,
                 false, "end");
}

std::string Panels::Filling(const Section& section) {
    const std::vector<double>& places = m_lines.Places();
    if (places.empty()) {
        return {};
    }
    const View& view = m_layout.view;
    std::string voids, hanging, carried;
    ZT::RangeMulti shared;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const SetR1& material = section.m_fill.m_material[i];
        voids += SpanPath(section.m_fill.m_voids[i], view, places[i], m_detail);
        if (section.m_nLayer == 0) {
            carried += SpanPath(material, view, places[i], m_detail);
            continue;
        }
        FindShared(material, section.m_below.m_material[i], shared);
        std::vector<RangeR1> members(shared.GetData(), shared.GetData() + shared.GetCount());
        hanging += SpanPath(Uncarried(material, members), view, places[i], m_detail);
        carried += SpanPath(members, view, places[i], m_detail);
    }
    m_occurring.lowest |= section.m_nLayer == 0;
    m_occurring.hanging |= !hanging.empty();
    const double spacing = view.Height() / static_cast<double>(places.size());
    const double thickness = std::clamp(0.62 * spacing, 0.5, 7.0);
    return Bars(voids, std::min(0.5, thickness), kVoid) + Bars(hanging, thickness, kHanging) +
           Bars(carried, thickness, kCarried);
}

std::vector<Spot> Panels::Spots(const std::vector<ContourPoint>& points) const {
    std::vector<Spot> spots;
    for (const ContourPoint& point : points) {
        spots.push_back(m_layout.view.At(point));
    }
    return spots;
}

std::string Panels::Contours(const ContourSet& contours) {
    std::string loops, chains;
    for (const Loop& loop : contours.m_loops) {
        loops += LinePath(Spots(loop), true, m_detail);
    }
    for (const Chain& chain : contours.m_chains) {
        chains += LinePath(Spots(chain), false, m_detail);
    }
    m_occurring.chains |= !chains.empty();
    return Lines(loops, kInk) + Lines(chains, kChain, "5 2");
}

/// Fans at the first point of each contour, and at others of it that are far enough
/// from one another, as long as the panel isn't crowded.
std::string Panels::Ways(const Reach& reach) {
    constexpr std::size_t kMostFans = 24;
    const std::size_t contours = std::max<std::size_t>(reach.All().size(), 1);
    const std::size_t each = std::max<std::size_t>(kMostFans / contours, 1);
    const double crowd = std::sqrt(6.0 / static_cast<double>(contours));
    const double radius = m_layout.FanRadius() * std::clamp(crowd, 0.6, 1.0);
    std::string fans, marks;
    for (const ContourReach& contour : reach.All()) {
        for (const FreeWays* const ways : Apart(contour, each, 1.6 * radius)) {
            const Spot spot = m_layout.view.At(ways->From());
            const std::string path = FanPath(*ways, spot, radius);
            (path.empty() ? marks : fans) += path.empty() ? Mark(spot) : Fan(path) + Dot(spot);
        }
    }
    m_occurring.fans |= !fans.empty();
    m_occurring.marks |= !marks.empty();
    return fans + marks;
}

/// Points of `contour`, at most `most`, no two of which are closer than `distance`.
std::vector<const FreeWays*> Panels::Apart(const ContourReach& contour, std::size_t most,
                                           double distance) const {
    std::vector<const FreeWays*> apart;
    for (const FreeWays& ways : contour.Points()) {
        const Spot spot = m_layout.view.At(ways.From());
        const bool isFree = std::all_of(apart.begin(), apart.end(), [&](const auto* other) {
            const Spot at = m_layout.view.At(other->From());
            return std::hypot(at.x - spot.x, at.y - spot.y) >= distance;
        });
        if (isFree && apart.size() < most) {
            apart.push_back(&ways);
        }
    }
    return apart;
}

}  // namespace section
