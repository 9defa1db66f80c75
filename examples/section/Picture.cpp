#include "section/Picture.h"

#include <algorithm>
#include <cmath>

#include "section/DocumentFile.h"
#include "section/Number.h"
#include "section/SvgText.h"

namespace section {
namespace {

using ZT::RangeR1;
using ZT::SetR1;

constexpr const char* kInk = "#1f2933";
constexpr const char* kFaintInk = "#52606d";
constexpr const char* kFrame = "#cbd2d9";
constexpr const char* kCarried = "#3b7dd8";
constexpr const char* kHanging = "#b07cc6";
constexpr const char* kVoid = "#b8ab98";
constexpr const char* kChain = "#c81e4a";
constexpr const char* kFan = "#f59f00";
constexpr const char* kFanEdge = "#b35c00";

constexpr double kMargin = 28.0;
constexpr double kPageWidth = 1200.0;

// ------------------------------------------------------------------------ choosing layers

/// How much changes from the first of `chosen` up to each of them. Each of three things
/// counts for a third of the whole: the mere number of layers, the share of material and
/// the number of contours.
std::vector<double> ChangesUpTo(const Layers& layers, const std::vector<std::size_t>& chosen) {
    const std::size_t count = chosen.size();
    std::vector<double> shares(count), contours(count), changes(count);
    const auto at = [&](std::size_t i) -> const Layer& { return layers.All()[chosen[i]]; };
    const auto contoursAt = [&](std::size_t i) {
        return static_cast<double>(at(i).m_contours.m_nLoops + at(i).m_contours.m_nOpen);
    };
    for (std::size_t i = 1; i < count; ++i) {
        const double share = at(i).m_fill.Share() - at(i - 1).m_fill.Share();
        shares[i] = shares[i - 1] + std::abs(share);
        contours[i] = contours[i - 1] + (contoursAt(i) != contoursAt(i - 1) ? 1.0 : 0.0);
    }
    const auto part = [](double value, double whole) { return whole > 0.0 ? value / whole : 0.0; };
    for (std::size_t i = 0; i < count; ++i) {
        changes[i] = part(static_cast<double>(i), static_cast<double>(count - 1)) +
                     part(shares[i], shares.back()) + part(contours[i], contours.back());
    }
    return changes;
}

std::vector<std::size_t> LayersWithContours(const Layers& layers) {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < layers.All().size(); ++i) {
        const ContourFigures& contours = layers.All()[i].m_contours;
        if (contours.m_nLoops + contours.m_nOpen > 0) {
            found.push_back(i);
        }
    }
    return found;
}

// ---------------------------------------------------------------------- from mesh to page

/// Where things of a mesh stand in a panel.
class View {
public:
    /// Makes the bounds as large as they fit into a width and a height.
    View(const Bounds& bounds, double width, double height)
        : m_x(bounds.m_axes[eAxisX]), m_y(bounds.m_axes[eAxisY]) {
        const double perWidth = width / m_x.GetLength(), perHeight = height / m_y.GetLength();
        m_scale = std::min(perWidth, perHeight);
        if (!std::isfinite(m_scale)) {
            m_scale = 1.0;
        }
    }

    /// Pixels for a length of 1.
    double Scale() const { return m_scale; }
    double Width() const { return m_x.GetLength() * m_scale; }
    double Height() const { return m_y.GetLength() * m_scale; }

    double X(double x) const { return (x - m_x.m_min) * m_scale; }
    double Y(double y) const { return (m_y.m_max - y) * m_scale; }
    Spot At(const ContourPoint& point) const { return {X(point.m_x), Y(point.m_y)}; }

private:
    RangeR1 m_x, m_y;
    double m_scale;
};

/// How a page is divided.
struct Layout {
    int columns, rows;
    double cellWidth, cellHeight;
    View view;

    Layout(const Bounds& bounds, std::size_t panels)
        : columns(ColumnsFor(panels)),
          rows(static_cast<int>((panels + static_cast<std::size_t>(columns) - 1) /
                                static_cast<std::size_t>(columns))),
          cellWidth((kPageWidth - 2 * kMargin) / columns),
          view(bounds, cellWidth - 2 * kAround, 1160.0 / columns) {
        cellHeight = view.Height() + 2 * kAround + kTitles;
    }

    /// Room for fans around the bounds, and for the words above them.
    static constexpr double kAround = 26.0;
    static constexpr double kTitles = 42.0;

    double FanRadius() const { return columns < 3 ? 26.0 : 18.0; }
    Spot CellAt(std::size_t panel, double top) const {
        const auto perRow = static_cast<std::size_t>(columns);
        return {kMargin + static_cast<double>(panel % perRow) * cellWidth,
                top + static_cast<double>(panel / perRow) * cellHeight};
    }

private:
    static int ColumnsFor(std::size_t panels) { return panels < 5 ? 2 : panels < 7 ? 3 : 4; }
};

std::string Percent(double share) {
    return Fixed(100.0 * share, 1) + " %";
}

std::string Plural(std::size_t count, const std::string& one) {
    return std::to_string(count) + ' ' + one + (count == 1 ? "" : "s");
}

// --------------------------------------------------------------------------------- shapes

std::string Path(std::string_view data, std::vector<SvgAttribute> attributes) {
    if (data.empty()) {
        return {};
    }
    attributes.emplace_back("d", data);
    return SvgElement("path", attributes);
}

std::string Bars(std::string_view data, double thickness, const char* colour) {
    return Path(data, {{"stroke", colour}, {"stroke-width", Pixels(thickness)}, {"fill", "none"}});
}

std::string Lines(std::string_view data, const char* colour, const char* dashes = "none") {
    return Path(data, {{"stroke", colour},
                       {"stroke-width", "1"},
                       {"stroke-dasharray", dashes},
                       {"stroke-linejoin", "round"},
                       {"fill", "none"}});
}

std::string Fan(std::string_view data) {
    return Path(
        data,
        {{"fill", kFan}, {"fill-opacity", "0.45"}, {"stroke", kFanEdge}, {"stroke-width", "0.6"}});
}

std::string Dot(const Spot& spot) {
    return SvgElement(
        "circle",
        {{"cx", Pixels(spot.x)}, {"cy", Pixels(spot.y)}, {"r", "2.2"}, {"fill", kFanEdge}});
}

/// The mark of a contour to which no way is free.
std::string Mark(const Spot& spot) {
    constexpr double kArm = 3.5;
    std::string data;
    for (const double side : {-kArm, kArm}) {
        data +=
            LinePath({{spot.x - kArm, spot.y - side}, {spot.x + kArm, spot.y + side}}, false, 0.0);
    }
    return Path(data, {{"stroke", kChain}, {"stroke-width", "1.6"}, {"fill", "none"}});
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

// --------------------------------------------------------------------------------- panels

/// What the sections of a picture have to show, for its legend.
struct Occurring {
    bool hanging = false, chains = false, fans = false, marks = false;
};

class Panels {
public:
    Panels(const Model& model, const Layout& layout, double detail)
        : m_model(model),
          m_layout(layout),
          m_lines(model.m_layers.LinesIn(model.m_bounds)),
          m_detail(detail) {}

    std::string Draw(const Section& section) {
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

    const Occurring& Occurred() const { return m_occurring; }

private:
    std::string Titles(const Section& section) const {
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
               Words({right, 33}, hangs ? Percent(layer.m_fill.m_carried) + " of it carried" : "",
                     11, kFaintInk, false, "end") +
               Words({left, 47}, reached, 11, kFaintInk) +
               Words({right, 18}, unpaired > 0 ? Plural(unpaired, "line") + " open" : "", 11,
                     kChain, false, "end");
    }

    std::string Filling(const Section& section) {
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
        m_occurring.hanging |= !hanging.empty();
        const double spacing = view.Height() / static_cast<double>(places.size());
        const double thickness = std::clamp(0.62 * spacing, 0.5, 7.0);
        return Bars(voids, std::min(0.5, thickness), kVoid) + Bars(hanging, thickness, kHanging) +
               Bars(carried, thickness, kCarried);
    }

    /// What `carried` leaves of `material`.
    static std::vector<RangeR1> Uncarried(const SetR1& material,
                                          const std::vector<RangeR1>& carried) {
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

    std::vector<Spot> Spots(const std::vector<ContourPoint>& points) const {
        std::vector<Spot> spots;
        for (const ContourPoint& point : points) {
            spots.push_back(m_layout.view.At(point));
        }
        return spots;
    }

    std::string Contours(const ContourSet& contours) {
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
    std::string Ways(const Reach& reach) {
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
    std::vector<const FreeWays*> Apart(const ContourReach& contour, std::size_t most,
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

    static std::string FanPath(const FreeWays& ways, const Spot& spot, double radius) {
        std::string path;
        for (const ZT::RangeS1* const arc : ways.Arcs()) {
            path += SectorPath(spot, radius, arc->GetA(), arc->GetDiff());
        }
        return path;
    }

    const Model& m_model;
    const Layout& m_layout;
    ScanLines m_lines;
    double m_detail;
    Occurring m_occurring;
};

// ---------------------------------------------------------------------- around the panels

/// A round length of about a quarter of the width of the bounds.
double ScaleLength(const Bounds& bounds) {
    const double longest =
        std::max(bounds.m_axes[eAxisX].GetLength(), bounds.m_axes[eAxisY].GetLength());
    if (!(longest > 0.0)) {
        return 0.0;
    }
    const double power = std::pow(10.0, std::floor(std::log10(longest / 4)));
    const double digit = longest / 4 / power;
    return power * (digit < 2 ? 1 : digit < 5 ? 2 : 5);
}

std::string ScaleBar(const Model& model, const View& view, const Spot& place) {
    const double length = ScaleLength(model.m_bounds);
    const double width = length * view.Scale();
    if (!(width > 0.0)) {
        return {};
    }
    const auto line = [&](double x0, double y0, double x1, double y1) {
        return LinePath({{place.x + x0, place.y + y0}, {place.x + x1, place.y + y1}}, false, 0.0);
    };
    return Lines(line(-width, 0, 0, 0) + line(-width, -4, -width, 4) + line(0, -4, 0, 4), kInk) +
           Words({place.x - width / 2, place.y - 8},
                 Number(length) + (length == 1.0 ? " STL unit" : " STL units"), 11, kFaintInk,
                 false, "middle");
}

/// Which way the axes go.
std::string AxesSign(const Spot& place) {
    const auto line = [&](double x0, double y0, double x1, double y1) {
        return LinePath({{place.x + x0, place.y + y0}, {place.x + x1, place.y + y1}}, false, 0.0);
    };
    const std::string data = line(0, 0, 26, 0) + line(22, -3, 26, 0) + line(22, 3, 26, 0) +
                             line(0, 0, 0, -26) + line(-3, -22, 0, -26) + line(3, -22, 0, -26);
    return Lines(data, kInk) + Words({place.x + 30, place.y + 4}, "x", 12, kInk) +
           Words({place.x - 3, place.y - 31}, "y", 12, kInk);
}

/// An entry of the legend: a sample of 34 pixels about a line, and what it stands for.
struct Entry {
    std::string sample;
    std::string text;
};

std::vector<Entry> LegendEntries(const Occurring& occurring, bool filled) {
    const auto stripes = [](double thickness, const char* colour) {
        return Bars("M0 -4.5h30M0 0h30M0 4.5h30", thickness, colour);
    };
    std::vector<Entry> entries;
    if (filled) {
        entries.push_back({stripes(2.8, kCarried), occurring.hanging
                                                       ? "material, the layer below carries it"
                                                       : "material"});
    }
    if (occurring.hanging) {
        entries.push_back({stripes(2.8, kHanging), "material with nothing right below it"});
    }
    if (filled) {
        entries.push_back({stripes(0.5, kVoid), "void inside the bounds"});
    }
    entries.push_back({Lines("M0 4L10 -4L20 4L30 -4", kInk), "contour"});
    if (occurring.chains) {
        entries.push_back(
            {Lines("M0 4L10 -4L20 4L30 -4", kChain, "5 2"), "open chain: the mesh has a hole"});
    }
    if (occurring.fans) {
        entries.push_back({Fan(SectorPath({15, 6}, 14, 0.5, 2.1)) + Dot({15, 6}),
                           "directions from which the dot can be reached"});
    }
    if (occurring.marks) {
        entries.push_back({Mark({15, 0}), "point that no direction reaches"});
    }
    return entries;
}

constexpr double kLegendRow = 26.0;
constexpr int kLegendColumns = 3;

std::string Legend(const std::vector<Entry>& entries, double top) {
    std::string text;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const double column = static_cast<double>(i % kLegendColumns);
        const double row = static_cast<double>(i / kLegendColumns);
        text += MovedGroup({kMargin + Layout::kAround + column * 310.0, top + row * kLegendRow},
                           entries[i].sample + Words({42, 4}, entries[i].text, 12, kInk));
    }
    return text;
}

std::string FileName(const Model& model) {
    return std::filesystem::path(std::string(model.m_source)).filename().string();
}

/// Which layers are shown.
std::string ShownText(const Model& model, std::size_t shown) {
    const std::size_t all = model.m_layers.All().size();
    const std::size_t filled = LayersWithContours(model.m_layers).size();
    if (shown == 0) {
        return "No layer has a contour at its middle height.";
    }
    const std::string empty =
        filled < all ? " " + Plural(all - filled, "layer") + " without a contour left out." : "";
    if (shown == filled) {
        return "Every layer with a contour is shown." + empty;
    }
    return std::to_string(shown) + " of " + std::to_string(filled) +
           " layers are shown, closer together where the share of material and the number of "
           "contours change more." +
           empty;
}

std::string Heading(const Model& model, std::size_t shown) {
    const Layers& layers = model.m_layers;
    const double left = kMargin + Layout::kAround;
    const std::string facts = Plural(model.m_nFacets, "facet") + "; " +
                              Plural(layers.All().size(), "layer") + " along z, each " +
                              Number(layers.Thickness()) +
                              " thick, from z = " + Number(layers.Height().m_min) + " to " +
                              Number(layers.Height().m_max) + "; lengths in STL units";
    return Words({left, 44}, "Sections of " + FileName(model), 20, kInk, true) +
           Words({left, 66}, facts, 12, kFaintInk) +
           Words({left, 83}, ShownText(model, shown), 12, kFaintInk);
}

std::string Notes(const Model& model, const ScanLines& lines, const Occurring& occurring,
                  double detail, double top) {
    std::vector<std::string> notes{
        "Each layer is cut at its middle height. Seen from above.",
        "Reach: in the plane of the section, for a tool without width, at eight points of a "
        "contour; where fans would overlap, those of some points only are drawn."};
    if (!lines.Places().empty()) {
        const double spacing =
            model.m_bounds.m_axes[eAxisY].GetLength() / static_cast<double>(lines.Places().size());
        notes[0] += " Material and voids along " + std::to_string(lines.Places().size()) +
                    " scan lines, " + Number(spacing) +
                    " apart; shares are shares of their length inside the bounds.";
    }
    if (occurring.chains) {
        notes[0] += " An open line crosses the contours an odd number of times.";
    }
    if (detail > 1.0) {
        notes[1] += " Details below " + Pixels(detail) + " pixels are left out.";
    }
    std::string text;
    for (std::size_t i = 0; i < notes.size(); ++i) {
        text += Words({kMargin + Layout::kAround, top + 17.0 * static_cast<double>(i)}, notes[i],
                      11, kFaintInk);
    }
    return text;
}

std::string Drawn(const Model& model, const std::deque<Section>& sections, double detail) {
    constexpr double kTop = 102.0;
    const Layout layout(model.m_bounds, std::max<std::size_t>(sections.size(), 1));
    Panels panels(model, layout, detail);
    std::string body = Heading(model, sections.size());
    for (std::size_t i = 0; i < sections.size(); ++i) {
        body += MovedGroup(layout.CellAt(i, kTop), panels.Draw(sections[i]));
    }
    double y = kTop + (sections.empty() ? 0.0 : layout.rows * layout.cellHeight) + 30.0;
    if (!sections.empty()) {
        const ScanLines lines = model.m_layers.LinesIn(model.m_bounds);
        const std::vector<Entry> entries =
            LegendEntries(panels.Occurred(), !lines.Places().empty());
        const double right = kPageWidth - kMargin - Layout::kAround;
        body += Legend(entries, y) + AxesSign({right - 30, y + 16}) +
                ScaleBar(model, layout.view, {right - 80, y + 16});
        const std::size_t rows = (entries.size() + kLegendColumns - 1) / kLegendColumns;
        y += std::max(2.0, static_cast<double>(rows)) * kLegendRow + 6.0;
        body += Notes(model, lines, panels.Occurred(), detail, y);
        y += 17.0 + kMargin;
    }
    const std::string width = Pixels(kPageWidth), height = Pixels(y);
    return SvgElement(
        "svg",
        {{"xmlns", "http://www.w3.org/2000/svg"},
         {"width", width},
         {"height", height},
         {"viewBox", "0 0 " + width + ' ' + height},
         {"font-family", "sans-serif"}},
        "\n" + SvgElement("title", {}, Escaped("Sections of " + FileName(model))) +
            SvgElement("rect", {{"width", width}, {"height", height}, {"fill", "#ffffff"}}) + body);
}

}  // namespace

// ------------------------------------------------------------------------------ interface

std::vector<std::size_t> TellingLayers(const Layers& layers, std::size_t most) {
    const std::vector<std::size_t> all = LayersWithContours(layers);
    if (all.size() <= most) {
        return all;
    }
    const std::vector<double> changes = ChangesUpTo(layers, all);
    std::vector<std::size_t> telling;
    std::size_t next = 0;
    for (std::size_t taken = 0; taken < most; ++taken) {
        const double due =
            changes.back() * static_cast<double>(taken) / static_cast<double>(most - 1);
        const std::size_t last = all.size() - (most - taken);
        while (next < last && changes[next] < due) {
            ++next;
        }
        telling.push_back(all[next++]);
    }
    return telling;
}

std::string SectionPicture(const Model& model, const std::deque<Section>& sections) {
    constexpr std::size_t kMostBytes = 400000;
    constexpr double kFinest = 0.4, kCoarsest = 20.0;
    double detail = kFinest;
    std::string svg = Drawn(model, sections, detail);
    while (svg.size() > kMostBytes && detail < kCoarsest) {
        detail *= 2;
        svg = Drawn(model, sections, detail);
    }
    return svg;
}

std::string DrawModel(const Model& model, const Mesh& mesh) {
    const std::vector<std::size_t> telling = TellingLayers(model.m_layers, kMostPanels);
    return SectionPicture(model, model.m_layers.SectionsOf(mesh, model.m_bounds, telling));
}

void StorePicture(const std::string& svg, const std::filesystem::path& path) {
    try {
        const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
        document->put_preserveWhiteSpace(true);
        if (!document->loadXML(svg)) {
            throw Failure(Printable(document->parseError().reason()));
        }
        SaveDocument(document, path);
    } catch (const _com_error& error) {
        throw NamingFile(path, TextOf(error));
    }
}

}  // namespace section
