/// @file
/// SVG as text: numbers, shapes and words in pixels, with y downwards.

#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace section {

/// A place on the page.
struct Spot {
    double x, y;
};

/// An attribute of an SVG element: its name and its value.
using SvgAttribute = std::pair<std::string_view, std::string>;

/// `value` with at most one decimal, whatever the locale.
std::string Pixels(double value);

/// `text` as content of an element or an attribute: control characters and what isn't UTF-8
/// replaced as `Printable` does, and "&", "<", ">" and quotes escaped.
std::string Escaped(std::string_view text);

/// An element with attributes, which get escaped, and with `content` as it stands.
std::string SvgElement(std::string_view name, const std::vector<SvgAttribute>& attributes,
                       std::string_view content = {});

/// A group moved by `to`, which holds `content`.
std::string MovedGroup(const Spot& to, std::string_view content);

/// Words at `place`, which is their start, or as `anchor` says their "middle" or "end".
std::string Words(const Spot& place, std::string_view text, double size, std::string_view colour,
                  bool bold = false, std::string_view anchor = "start");

/// The path data of a line that goes through `spots`. A spot closer than `detail` to the one
/// before is passed over, except for the last. Nothing for a line that is shorter than that
/// in both directions.
std::string LinePath(const std::vector<Spot>& spots, bool closed, double detail);

/// The path data of a sector with its point at `centre`, counter-clockwise on the page from
/// the angle `from` over `turn`, in radians from the right. With a whole turn, a disc.
std::string SectorPath(const Spot& centre, double radius, double from, double turn);

}  // namespace section
