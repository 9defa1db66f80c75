/// @file
/// The program from its arguments to its exit status.

#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "section/ProgressLine.h"

namespace section {

/// Runs the program with the arguments behind its name; the result is its exit
/// status. The table goes to `out`. To `err` goes the one line of a failure, and
/// progress: on a terminal, or else if the mesh is large.
int RunProgram(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
               bool errIsTerminal);

/// `path` if there is such a file; otherwise throws `Failure` that names the
/// package to install.
std::filesystem::path UsualMesh(const std::filesystem::path& path);

/// How progress is told about a mesh of `size` bytes.
ProgressLine::EKind ProgressKind(std::uintmax_t size, bool terminal);

}  // namespace section
