#include "section/SvgText.h"

#include <algorithm>
#include <cmath>

#include <zt/numerics/Constants.h>

#include "section/Failure.h"
#include "section/Number.h"

namespace section {
namespace {

std::string Place(const Spot& spot) {
    return Pixels(spot.x) + ' ' + Pixels(spot.y);
}

Spot OnCircle(const Spot& centre, double radius, double angle) {
    return {centre.x + radius * std::cos(angle), centre.y - radius * std::sin(angle)};
}

bool IsNear(const Spot& a, const Spot& b, double distance) {
    return std::abs(a.x - b.x) < distance && std::abs(a.y - b.y) < distance;
}

}  // namespace

std::string Pixels(double value) {
    std::string text = Fixed(value, 1);
    if (text.ends_with(".0")) {
        text.resize(text.size() - 2);
    }
    return text;
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : Printable(text)) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            case '\'':
                escaped += "&apos;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

std::string SvgElement(std::string_view name, const std::vector<SvgAttribute>& attributes,
                       std::string_view content) {
    std::string text = "<" + std::string(name);
    for (const auto& [key, value] : attributes) {
        text.append(" ").append(key).append("=\"").append(Escaped(value)).append("\"");
    }
    if (content.empty()) {
        return text + "/>\n";
    }
    return text.append(">").append(content).append("</").append(name).append(">\n");
}

std::string MovedGroup(const Spot& to, std::string_view content) {
    return SvgElement("g", {{"transform", "translate(" + Place(to) + ")"}},
                      "\n" + std::string(content));
}

std::string Words(const Spot& place, std::string_view text, double size, std::string_view colour,
                  bool bold, std::string_view anchor) {
    if (text.empty()) {
        return {};
    }
    return SvgElement("text",
                      {{"x", Pixels(place.x)},
                       {"y", Pixels(place.y)},
                       {"font-size", Pixels(size)},
                       {"font-weight", bold ? "bold" : "normal"},
                       {"fill", std::string(colour)},
                       {"text-anchor", std::string(anchor)}},
                      Escaped(text));
}

std::string LinePath(const std::vector<Spot>& spots, bool closed, double detail) {
    const bool visible = std::any_of(spots.begin(), spots.end(), [&](const Spot& spot) {
        return !IsNear(spot, spots.front(), detail);
    });
    if (!visible) {
        return {};
    }
    std::string path = "M" + Place(spots.front());
    Spot latest = spots.front();
    for (std::size_t i = 1; i < spots.size(); ++i) {
        if (i + 1 == spots.size() || !IsNear(spots[i], latest, detail)) {
            path += ' ' + Place(spots[i]);
            latest = spots[i];
        }
    }
    return path + (closed ? "Z" : "");
}

// In three arcs, none of which is longer than a half-turn, so that no flag has to tell
// which way round is meant.
std::string SectorPath(const Spot& centre, double radius, double from, double turn) {
    const bool whole = turn >= ZT::z2Pi - ZT::zToler;
    const Spot start = OnCircle(centre, radius, from);
    std::string path = whole ? "M" + Place(start) : "M" + Place(centre) + "L" + Place(start);
    for (int i = 1; i <= 3; ++i) {
        path += "A" + Pixels(radius) + ' ' + Pixels(radius) + " 0 0 0 " +
                Place(OnCircle(centre, radius, from + turn * i / 3));
    }
    return path + "Z";
}

}  // namespace section
