/// @file
/// A model as an XML document.

#pragma once

#include <filesystem>

#include "section/Model.h"

namespace section {

/// Stores `model` at `path`, indented for people to read. The file is whole or
/// it isn't there: a failure leaves what stood there before. Throws `Failure`
/// that begins with the path if it can't be written.
void StoreModel(Model model, const std::filesystem::path& path);

/// The model stored at `path`. Numbers come back with six significant digits.
/// Throws `Failure` that begins with the path and, where the text is no XML, the
/// line and column; where it is XML but no whole model, the element.
Model LoadModel(const std::filesystem::path& path);

}  // namespace section
