/// @file
/// A model as a table to look at.

#pragma once

#include <ostream>

#include "section/Model.h"

namespace section {

/// Writes the mesh, the file it was read from, its bounds and its layers as aligned columns. A
/// second table tells what is at the middle of each layer: the lengths of material and voids along
/// all scan lines, the share of the lines that is material, the share of the material that the
/// layer below carries, crossings without a partner ("odd"), the contours that can be reached out
/// of those looked at, the angle from which one of these is reached on the average, and the widest
/// way to the one that is the hardest to reach.
///
/// Arcs of directions are in degrees, counter-clockwise from the first angle to the
/// second. Of more than 24 layers only the first ten and the last ten are shown. Lengths
/// have as many decimals as six significant digits of the longest need; very small and
/// very large models are told with exponents.
///
/// The wording and the headings are those of the text resource for reports. Throws `Failure`
/// if the program lacks it.
void PrintModel(std::ostream& out, const Model& model);

}  // namespace section
