#include "section/Report.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include <zt/ranges/Range.h>

#include "section/Failure.h"
#include "section/Number.h"
#include "section/Texts.h"

namespace section {
namespace {

constexpr std::size_t kTitleWidth = 10;
constexpr std::size_t kColumnWidth = 13;
constexpr std::size_t kCountWidth = 8;
constexpr std::size_t kArcWidth = 20;
constexpr std::size_t kShareWidth = 9;
constexpr std::size_t kReachWidth = 10;
constexpr std::size_t kMostRows = 24;
constexpr std::size_t kRowsAtEachEnd = 10;

/// The number of characters in `text`, which is UTF-8.
std::size_t WidthOf(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

std::string Right(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, WidthOf(text)), ' ') + text;
}

/// How lengths up to a longest one are written, so that their points stand below one
/// another.
class LengthFormat {
public:
    explicit LengthFormat(double longest) {
        constexpr double kMostFixed = 1e6;
        constexpr double kLeastFixed = 1e-3;
        m_bFixed = longest == 0.0 || (kLeastFixed <= longest && longest < kMostFixed);
        const double magnitude = longest > 0.0 ? std::floor(std::log10(longest)) : 0.0;
        m_decimals = m_bFixed ? 5 - static_cast<int>(magnitude) : 0;
    }

    std::string Column(double length) const {
        return Right(m_bFixed ? Fixed(length, m_decimals) : Number(length), kColumnWidth);
    }

    std::string Columns(const ZT::RangeR1& range) const {
        return Column(range.m_min) + Column(range.m_max);
    }

private:
    bool m_bFixed;
    int m_decimals;
};

/// The longest of the lengths along the axes, and of the distances from zero.
double LongestOf(const Bounds& bounds) {
    double longest = 0.0;
    for (const ZT::RangeR1& range : bounds.m_axes) {
        longest =
            std::max({longest, std::abs(range.m_min), std::abs(range.m_max), range.GetLength()});
    }
    return longest;
}

/// The length of the scan lines of a layer together.
double LengthOf(const ScanLines& lines) {
    return lines.Within().GetSize() * static_cast<double>(lines.Places().size());
}

std::string Degrees(double angle) {
    return Fixed(angle, 1) + "°";
}

/// An arc as the angles from which and to which it runs.
std::string ArcText(const ZT::RangeS1& arc) {
    if (arc.IsEmpty()) {
        return "none";
    }
    if (arc.IsFull()) {
        return "all round";
    }
    ZT::Range range(ZT::eScalarAngle);
    range.Set(arc.m_min, arc.m_max);
    range.ToDegrees();
    const std::string from = Degrees(range.m_min), to = Degrees(range.m_max);
    return from == to ? from : from + " to " + to;
}

/// The longest convex run of a contour, as a share of the vertices of its loop.
std::string RunText(const ContourFigures& contours) {
    if (contours.m_nLoops == 0) {
        return "-";
    }
    return std::to_string(contours.m_run.GetCount()) + '/' +
           std::to_string(contours.m_run.GetRank());
}

/// What the document has of the file that the mesh was read from.
std::string InputText(const Input& input) {
    if (input.IsKept()) {
        return Plural(input.Size(), "byte") + ", stored with the model";
    }
    if (input.Size() > Input::kMost) {
        return Plural(input.Size(), "byte") + ", not stored with the model: more than " +
               std::to_string(Input::kMost);
    }
    return "not stored with the model";
}

std::string BoundsRows(const Model& model, const LengthFormat& format) {
    std::string rows;
    for (const Axis axis : {eAxisX, eAxisY, eAxisZ}) {
        const ZT::RangeR1& range = model.m_bounds.m_axes[axis];
        rows += Right(std::string(1, "xyz"[axis]), kTitleWidth) + format.Columns(range) +
                format.Column(range.GetLength()) + '\n';
    }
    return rows;
}

std::string LayerRow(const Layers& layers, std::size_t index, const LengthFormat& format) {
    const Layer& layer = layers.All()[index];
    const ContourFigures& contours = layer.m_contours;
    return Right(std::to_string(index + 1), kTitleWidth) + format.Columns(layer.m_range) +
           Right(std::to_string(layer.m_nFacets), kCountWidth) +
           Right(ArcText(layer.m_facing), kArcWidth) +
           Right(std::to_string(contours.m_nLoops), kCountWidth - 2) +
           Right(std::to_string(contours.m_nOpen), kCountWidth - 2) +
           format.Column(contours.m_length) + Right(RunText(contours), kCountWidth) + '\n';
}

/// A share in percent, or "-" where it is a share of nothing.
std::string ShareText(double share, double whole) {
    return whole > 0.0 ? Fixed(100.0 * share, 1) + '%' : "-";
}

/// The contours that can be reached out of those looked at.
std::string ReachText(const ReachFigures& reach) {
    return reach.m_nContours == 0
               ? "-"
               : std::to_string(reach.m_nReached) + '/' + std::to_string(reach.m_nContours);
}

std::string FreeText(const ReachFigures& reach) {
    return reach.m_nContours == 0 ? "-" : Degrees(reach.m_free * ZT::zDegPerRad);
}

std::string FillRow(const Layers& layers, std::size_t index, const LengthFormat& format) {
    const Layer& layer = layers.All()[index];
    const FillFigures& fill = layer.m_fill;
    return Right(std::to_string(index + 1), kTitleWidth) + format.Column(fill.m_material) +
           format.Column(fill.m_voids) +
           Right(ShareText(fill.Share(), fill.m_material + fill.m_voids), kShareWidth) +
           Right(index > 0 ? ShareText(fill.m_carried, fill.m_material) : "-", kShareWidth) +
           Right(std::to_string(fill.m_nUnpaired), kCountWidth - 2) +
           Right(ReachText(layer.m_reach), kReachWidth) +
           Right(FreeText(layer.m_reach), kShareWidth) +
           Right(ArcText(layer.m_reach.m_hardest), kArcWidth) + '\n';
}

/// A row for each layer, or for the first and the last of many.
template <class Row>
std::string LayerRows(const Layers& layers, const Row& row) {
    const std::size_t count = layers.All().size();
    const bool all = count <= kMostRows;
    std::string rows;
    for (std::size_t i = 0; i < (all ? count : kRowsAtEachEnd); ++i) {
        rows += row(i);
    }
    if (!all) {
        const std::size_t left = count - 2 * kRowsAtEachEnd;
        rows += Right("...", kTitleWidth) + "  " + std::to_string(left) + " more\n";
    }
    for (std::size_t i = all ? count : count - kRowsAtEachEnd; i < count; ++i) {
        rows += row(i);
    }
    return rows;
}

/// The scan lines, and what was odd along them.
std::string ScanText(const Model& model) {
    const std::size_t lines = model.m_layers.LinesIn(model.m_bounds).Places().size();
    if (lines == 0) {
        return "no lines: the bounds are flat along x or y";
    }
    ZT::uint64 slivers = 0, unpaired = 0;
    for (const Layer& layer : model.m_layers.All()) {
        slivers += layer.m_fill.m_nSlivers;
        unpaired += layer.m_fill.m_nUnpaired;
    }
    const double spacing = model.m_bounds.m_axes[eAxisY].GetLength() / static_cast<double>(lines);
    return Plural(lines, "line") + " along x on each layer, " + Number(spacing) + " apart\n" +
           Right("", kTitleWidth) + Plural(slivers, "sliver") + " cleaned away, " +
           Plural(unpaired, "crossing") + " without a partner";
}

/// How many layers a facet covers at most, and which.
std::string CoverText(const ZT::RangeInt& cover) {
    if (cover.IsSingleton()) {
        return "1 layer";
    }
    return Plural(static_cast<ZT::uint64>(cover.GetCount()), "layer") +
           " at most: " + std::to_string(cover.m_min + 1) + " to " +
           std::to_string(cover.m_max + 1);
}

/// Rows without the end of the last one, which stands in the text of the report.
std::string Inner(std::string rows) {
    rows.pop_back();
    return rows;
}

}  // namespace

void PrintModel(std::ostream& out, const Model& model) {
    const Layers& layers = model.m_layers;
    const LengthFormat format(LongestOf(model.m_bounds));
    const LengthFormat sumFormat(LengthOf(layers.LinesIn(model.m_bounds)));
    const auto layerRow = [&](std::size_t i) { return LayerRow(layers, i, format); };
    const auto fillRow = [&](std::size_t i) { return FillRow(layers, i, sumFormat); };
    out << FilledResource(kReportText,
                          {{"source", Printable(model.m_source)},
                           {"facets", Plural(model.m_mesh.FacetCount(), "facet")},
                           {"points", Plural(model.m_mesh.VertexCount(), "point")},
                           {"sideways", std::to_string(model.m_facings.m_nSide)},
                           {"horizontal", std::to_string(model.m_facings.m_nHorizontal)},
                           {"degenerate", std::to_string(model.m_facings.m_nDegenerate)},
                           {"input", InputText(model.m_input)},
                           {"layers", Plural(layers.All().size(), "layer")},
                           {"step", Number(layers.Thickness())},
                           {"knots", Plural(layers.KnotCount(), "knot")},
                           {"low", Number(layers.Height().m_min)},
                           {"high", Number(layers.Height().m_max)},
                           {"cover", CoverText(layers.LongestCover())},
                           {"scan", ScanText(model)},
                           {"bounds", Inner(BoundsRows(model, format))},
                           {"layerRows", Inner(LayerRows(layers, layerRow))},
                           {"middleRows", Inner(LayerRows(layers, fillRow))}});
}

}  // namespace section
