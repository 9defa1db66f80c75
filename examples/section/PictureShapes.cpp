#include "section/PictureShapes.h"

#include <vector>

namespace section {
namespace {

/// A path with `data`; nothing without any.
std::string Path(std::string_view data, std::vector<SvgAttribute> attributes) {
    if (data.empty()) {
        return {};
    }
    attributes.emplace_back("d", data);
    return SvgElement("path", attributes);
}

}  // namespace

std::string Bars(std::string_view data, double thickness, const char* colour) {
    return Path(data, {{"stroke", colour}, {"stroke-width", Pixels(thickness)}, {"fill", "none"}});
}

std::string Lines(std::string_view data, const char* colour, const char* dashes) {
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

std::string Mark(const Spot& spot) {
    constexpr double kArm = 3.5;
    std::string data;
    for (const double side : {-kArm, kArm}) {
        data +=
            LinePath({{spot.x - kArm, spot.y - side}, {spot.x + kArm, spot.y + side}}, false, 0.0);
    }
    return Path(data, {{"stroke", kChain}, {"stroke-width", "1.6"}, {"fill", "none"}});
}

}  // namespace section
