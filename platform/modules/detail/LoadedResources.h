/// @file
/// The resources of the modules that the program has loaded.

#pragma once

#include <platform/modules/ModuleHandle.h>
#include <platform/modules/detail/ResourceSection.h>

#include <optional>

/// The resources of a loaded module. They are those of the file that was loaded, and stay
/// in memory until the module is unloaded. None, and a code in the last error, if there
/// are none to be read: ENOENT if the module has none, EINVAL for no module, EBADMSG for a
/// damaged section, ESTALE for a module whose file was replaced before anybody asked.
std::optional<ResourceSection> ResourcesOf(HMODULE module);

/// The resource of a loaded module at a place that a look-up has given since the module was
/// loaded; none if the place is no such one. Leaves the last error as it comes.
std::optional<ResourceRecord> ResourceAt(HMODULE module, const void* place);

/// Makes sure that the resources of a loaded module can be read from now on, whatever
/// becomes of its file. Leaves the last error alone.
void KeepResourcesOf(HMODULE module);

/// Lets go of the resources of modules that have been unloaded.
void ForgetUnloadedResources();
