/// @file
/// A model as a table to look at.

#pragma once

#include <ostream>

#include "section/Model.h"

namespace section {

/// Writes the mesh, its bounds and its layers as aligned columns. Arcs of directions
/// are in degrees, counter-clockwise from the first angle to the second. Of more than
/// 24 layers only the first ten and the last ten are shown. Lengths have as many
/// decimals as six significant digits of the longest need; very small and very
/// large models are told with exponents.
void PrintModel(std::ostream& out, const Model& model);

}  // namespace section
