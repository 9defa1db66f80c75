#include "section/Report.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include "section/Failure.h"
#include "section/Number.h"

namespace section {
namespace {

constexpr std::size_t kTitleWidth = 10;
constexpr std::size_t kColumnWidth = 14;
constexpr std::size_t kBarWidth = 30;
constexpr std::size_t kMostRows = 24;
constexpr std::size_t kRowsAtEachEnd = 10;

std::string Right(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
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

std::string Heading(std::string_view last) {
    return Right("from", kColumnWidth) + Right("to", kColumnWidth) +
           Right(std::string(last), kColumnWidth) + '\n';
}

std::string MeshRows(const Model& model) {
    return Title("Mesh") + Printable(model.m_source) + '\n' + Title("") +
           std::to_string(model.m_nFacets) + (model.m_nFacets == 1 ? " facet" : " facets") +
           "; lengths in STL units\n";
}

std::string BoundsRows(const Model& model, const LengthFormat& format) {
    std::string rows = Title("Bounds") + Heading("length");
    for (const Axis axis : {eAxisX, eAxisY, eAxisZ}) {
        const ZT::RangeR1& range = model.m_bounds.m_axes[axis];
        rows += Right(std::string(1, "xyz"[axis]), kTitleWidth) + format.Columns(range) +
                format.Column(range.GetLength()) + '\n';
    }
    return rows;
}

ZT::uint64 MostFacets(const Layers& layers) {
    ZT::uint64 most = 1;
    for (const Layer& layer : layers.All()) {
        most = std::max(most, layer.m_nFacets);
    }
    return most;
}

/// A bar as long as the share of `count` in `most`; the smallest share shows.
std::string Bar(ZT::uint64 count, ZT::uint64 most) {
    const double share = static_cast<double>(count) / static_cast<double>(most);
    const double length = std::ceil(share * static_cast<double>(kBarWidth));
    return count == 0 ? std::string() : "  " + std::string(static_cast<std::size_t>(length), '#');
}

std::string LayerRow(const Layers& layers, std::size_t index, ZT::uint64 most,
                     const LengthFormat& format) {
    const Layer& layer = layers.All()[index];
    return Right(std::to_string(index + 1), kTitleWidth) + format.Columns(layer.m_range) +
           Right(std::to_string(layer.m_nFacets), kColumnWidth) + Bar(layer.m_nFacets, most) + '\n';
}

std::string LayerRows(const Layers& layers, const LengthFormat& format) {
    const std::size_t count = layers.All().size();
    const ZT::uint64 most = MostFacets(layers);
    const bool all = count <= kMostRows;
    std::string rows = Title("Layers") + Heading("facets met");
    for (std::size_t i = 0; i < (all ? count : kRowsAtEachEnd); ++i) {
        rows += LayerRow(layers, i, most, format);
    }
    if (!all) {
        const std::size_t left = count - 2 * kRowsAtEachEnd;
        rows += Right("...", kTitleWidth) + "  " + std::to_string(left) + " more\n";
    }
    for (std::size_t i = all ? count : count - kRowsAtEachEnd; i < count; ++i) {
        rows += LayerRow(layers, i, most, format);
    }
    return rows;
}

std::string LayersLine(const Layers& layers) {
    const std::size_t count = layers.All().size();
    return Title("") + std::to_string(count) + (count == 1 ? " layer" : " layers") + " along z, " +
           Number(layers.Thickness()) + " thick\n";
}

}  // namespace

void PrintModel(std::ostream& out, const Model& model) {
    const LengthFormat format(model);
    out << MeshRows(model) << LayersLine(model.m_layers) << '\n'
        << BoundsRows(model, format) << '\n'
        << LayerRows(model.m_layers, format);
}

}  // namespace section
