/// @file
/// The panels of a picture, one for each section.

#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include <zt/ranges/RangeR1.h>

#include "section/Bounds.h"
#include "section/Model.h"
#include "section/Section.h"
#include "section/SvgText.h"

namespace section {

/// The width of the page, and what is free at its edges, in pixels.
inline constexpr double kMargin = 28.0;
inline constexpr double kPageWidth = 1200.0;

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
    ZT::RangeR1 m_x, m_y;
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
          view(bounds, cellWidth - 2 * kAround, std::min(1160.0 / columns, 440.0)) {
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
    static int ColumnsFor(std::size_t panels) {
        return panels < 2 ? 1 : panels < 5 ? 2 : panels < 7 ? 3 : 4;
    }
};

/// What the sections of a picture have to show, for its legend.
struct Occurring {
    bool lowest = false, hanging = false, chains = false, fans = false, marks = false;
};

/// Draws sections, one a panel, and keeps in mind what has occurred.
class Panels {
public:
    /// `model` and `layout` must outlive the panels. What is smaller than `detail`, in
    /// pixels, isn't drawn.
    Panels(const Model& model, const Layout& layout, double detail);

    /// A panel with its corner at the origin.
    std::string Draw(const Section& section);

    const Occurring& Occurred() const { return m_occurring; }

private:
    std::string Titles(const Section& section) const;
    std::string Filling(const Section& section);
    std::vector<Spot> Spots(const std::vector<ContourPoint>& points) const;
    std::string Contours(const ContourSet& contours);
    std::string Ways(const Reach& reach);
    std::vector<const FreeWays*> Apart(const ContourReach& contour, std::size_t most,
                                       double distance) const;

    const Model& m_model;
    const Layout& m_layout;
    ScanLines m_lines;
    double m_detail;
    Occurring m_occurring;
};

}  // namespace section
