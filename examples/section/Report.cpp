#include "section/Report.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include <zt/ranges/Range.h>

#include "section/Failure.h"
#include "section/Number.h"

namespace section {
namespace {

constexpr std::size_t kTitleWidth = 10;
constexpr std::size_t kColumnWidth = 13;
constexpr std::size_t kCountWidth = 8;
constexpr std::size_t kArcWidth = 20;
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

std::string Title(const std::string& text) {
    return text + std::string(kTitleWidth - text.size(), ' ');
}

/// How the lengths of one model are written, so that their points stand below
/// one another.
class LengthFormat {
public:
    explicit LengthFormat(const Model& model) {
        double longest = 0.0;
        for (const ZT::RangeR1& range : model.m_bounds.m_axes) {
            longest = std::max(
                {longest, std::abs(range.m_min), std::abs(range.m_max), range.GetLength()});
        }
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

std::string Plural(ZT::uint64 count, const std::string& one) {
    return std::to_string(count) + ' ' + one + (count == 1 ? "" : "s");
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

std::string MeshRows(const Model& model) {
    return Title("Mesh") + Printable(model.m_source) + '\n' + Title("") +
           Plural(model.m_nFacets, "facet") + "; lengths in STL units\n" + Title("") +
           std::to_string(model.m_facings.m_nSide) + " facing sideways, " +
           std::to_string(model.m_facings.m_nHorizontal) + " horizontal, " +
           std::to_string(model.m_facings.m_nDegenerate) + " degenerate\n";
}

std::string BoundsRows(const Model& model, const LengthFormat& format) {
    std::string rows = Title("Bounds") + Right("from", kColumnWidth) + Right("to", kColumnWidth) +
                       Right("length", kColumnWidth) + '\n';
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

std::string LayerHeading() {
    return Title("Layers") + Right("from", kColumnWidth) + Right("to", kColumnWidth) +
           Right("facets", kCountWidth) + Right("facing (degrees)", kArcWidth) +
           Right("loops", kCountWidth - 2) + Right("open", kCountWidth - 2) +
           Right("length", kColumnWidth) + Right("convex", kCountWidth) + '\n';
}

std::string LayerRows(const Layers& layers, const LengthFormat& format) {
    const std::size_t count = layers.All().size();
    const bool all = count <= kMostRows;
    std::string rows = LayerHeading();
    for (std::size_t i = 0; i < (all ? count : kRowsAtEachEnd); ++i) {
        rows += LayerRow(layers, i, format);
    }
    if (!all) {
        const std::size_t left = count - 2 * kRowsAtEachEnd;
        rows += Right("...", kTitleWidth) + "  " + std::to_string(left) + " more\n";
    }
    for (std::size_t i = all ? count : count - kRowsAtEachEnd; i < count; ++i) {
        rows += LayerRow(layers, i, format);
    }
    return rows;
}

/// The grid: its layers and knots, and how many layers a facet covers at most.
std::string GridRows(const Layers& layers) {
    std::string rows =
        Title("Grid") + Plural(layers.All().size(), "layer") + " along z, " +
        Number(layers.Thickness()) + " thick; " + Plural(layers.KnotCount(), "knot") + " from " +
        Number(layers.Height().m_min) + " to " + Number(layers.Height().m_max) + '\n';
    const ZT::RangeInt& cover = layers.LongestCover();
    const std::string first = std::to_string(cover.m_min + 1);
    return rows + Title("") + "a facet covers " +
           (cover.IsSingleton()
                ? "1 layer"
                : Plural(static_cast<ZT::uint64>(cover.GetCount()), "layer") +
                      " at most: " + first + " to " + std::to_string(cover.m_max + 1)) +
           '\n';
}

}  // namespace

void PrintModel(std::ostream& out, const Model& model) {
    const LengthFormat format(model);
    out << MeshRows(model) << GridRows(model.m_layers) << '\n'
        << BoundsRows(model, format) << '\n'
        << LayerRows(model.m_layers, format);
}

}  // namespace section
