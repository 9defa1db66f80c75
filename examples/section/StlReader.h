/// @file
/// Reads a mesh from an STL file, ASCII or binary.

#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <istream>

#include "section/Mesh.h"

namespace section {

/// Told now and then how many of `total` bytes have been read.
using ReadProgress = std::function<void(std::uint64_t done, std::uint64_t total)>;

/// The mesh in `in`, which holds `length` bytes.
///
/// A file whose length is what the facet count at byte 80 asks for is binary,
/// also when its header begins with "solid"; a text that begins with "solid"
/// is ASCII. In an ASCII file the words are taken in any case and with any
/// white space between them; several solids are joined into one mesh. Normals
/// are skipped unread: many writers leave nonsense there.
///
/// Throws `Failure` that begins with the line (ASCII) or the byte (binary) at
/// which the file is no STL file, is cut off, or has a coordinate that is no
/// finite number of single precision; and for a file without any facet.
///
/// The file is read in blocks, so that only the mesh is held in memory.
Mesh ReadStl(std::istream& in, std::uint64_t length, const ReadProgress& progress = {});

/// The mesh in the file at `path`. Throws `Failure` as `ReadStl` does, with the
/// path in front; also when there is no such file, or it is a directory.
Mesh ReadStlFile(const std::filesystem::path& path, const ReadProgress& progress = {});

}  // namespace section
