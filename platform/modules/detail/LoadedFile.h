/// @file
/// The files behind the modules of the running program.

#pragma once

#include <platform/modules/ModuleHandle.h>

#include <optional>
#include <string>

/// The file from which a module is loaded.
struct LoadedFile {
    /// Tells the file from all others for as long as it is open or mapped. Its content may
    /// change meanwhile.
    std::string identity;
    /// By what path it can be opened now, whatever the name by which it was loaded; empty
    /// if another file has taken its name, or if it has been removed. The program's own
    /// file can always be opened.
    std::string path;
};

/// The file of a loaded module; none if `module` is no module or was loaded from no file.
std::optional<LoadedFile> LoadedFileOf(HMODULE module);

/// How often the program has unloaded a module. While the number stays, each handle
/// stands for the module for which it stood.
unsigned long long CountOfUnloads();

/// A path from the system, without the mark that it puts behind the name of a file that
/// is no longer there. `*there` tells whether there was none.
std::string WithoutMarkOfRemoval(std::string path, bool* there);
