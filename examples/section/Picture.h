/// @file
/// The sections of a model as a picture.

#pragma once

#include <cstddef>
#include <deque>
#include <filesystem>
#include <string>
#include <vector>

#include "section/Model.h"
#include "section/Section.h"

namespace section {

/// The indices of the layers that a picture shows, at most `most` of them and in ascending
/// order. Layers without a contour are left out. Where there are more than `most`, the
/// lowest and the highest are shown, and between them the more, the more the share of
/// material and the number of contours change from one layer to the next.
std::vector<std::size_t> TellingLayers(const Layers& layers, std::size_t most);

/// The layers that `SectionPicture` has room for.
inline constexpr std::size_t kMostPanels = 12;

/// An SVG document with a panel for each of `sections`, seen from above, x to the right
/// and y upwards, all at one scale: the material and the voids along the scan lines, the
/// contours, and the free ways to each contour as a fan. A legend explains them.
///
/// A picture of more than some 400 kB gets drawn again with less detail, which it then
/// tells.
std::string SectionPicture(const Model& model, const std::deque<Section>& sections);

/// The picture of the telling layers of `model`. Its title is the label. Throws `Failure` if the
/// program lacks the text for it.
std::string DrawModel(const Model& model);

/// Writes `svg` to `path`. The file is whole or it isn't there: a failure leaves what stood
/// there before. Throws `Failure` that begins with the path if it can't be written.
void StorePicture(const std::string& svg, const std::filesystem::path& path);

}  // namespace section
