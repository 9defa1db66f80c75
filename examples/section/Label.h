/// @file
/// The line that names a model.

#pragma once

#include <string>

#include "section/Model.h"

namespace section {

/// The name of the mesh's file, the size of the mesh and the number of its layers, in the words
/// of the text resource for labels. Throws `Failure` if the program lacks it.
std::string LabelOf(const Model& model);

}  // namespace section
