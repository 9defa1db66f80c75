/// @file
/// The shapes of a picture, in its colours.

#pragma once

#include <string>
#include <string_view>

#include "section/SvgText.h"

namespace section {

inline constexpr const char* kInk = "#1f2933";
inline constexpr const char* kFaintInk = "#52606d";
inline constexpr const char* kFrame = "#cbd2d9";
inline constexpr const char* kCarried = "#3b7dd8";
inline constexpr const char* kHanging = "#b07cc6";
inline constexpr const char* kVoid = "#b8ab98";
inline constexpr const char* kChain = "#c81e4a";
inline constexpr const char* kFan = "#f59f00";
inline constexpr const char* kFanEdge = "#b35c00";

/// Parts of scan lines, from the path data of their middles.
std::string Bars(std::string_view data, double thickness, const char* colour);

/// Contours and other lines, from their path data; `dashes` as SVG counts them.
std::string Lines(std::string_view data, const char* colour, const char* dashes = "none");

/// Sectors of directions, from their path data.
std::string Fan(std::string_view data);

/// The point that a fan belongs to.
std::string Dot(const Spot& spot);

/// A point to which no way is free.
std::string Mark(const Spot& spot);

}  // namespace section
