/// @file
/// What the program is asked to do.

#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "section/Layers.h"

namespace section {

/// A job as the command line tells it.
struct Options {
    /// The mesh, or with `m_bRead` the stored model; empty for the usual mesh.
    std::filesystem::path m_file;
    std::filesystem::path m_folder = "out";
    Cut m_cut;
    bool m_bRead = false;
    /// Whether a folder was named.
    bool m_bFolder = false;
    /// Whether the bytes of the mesh's file go along with the model.
    bool m_bInput = true;
    bool m_bHelp = false;
};

/// Takes the arguments behind the program's name. Throws `Failure` for one that
/// isn't known or doesn't fit.
Options ParseCommandLine(const std::vector<std::string>& arguments);

/// What `--help` prints.
std::string HelpText();

}  // namespace section
