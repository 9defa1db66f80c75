/// @file
/// Modules as files: their segments and sections.

#pragma once

#include <platform/base/Export.h>
#include <platform/modules/detail/ResourceSection.h>

#include <string>
#include <string_view>

/// What a module's file says of one of its sections.
struct ElfSection {
    enum State {
        found,     ///< It is there; `bytes` is its content.
        noModule,  ///< The file is no module, or its head cannot be read.
        none,      ///< The module has no such section.
        damaged,   ///< The section, or the table of sections, reaches out of the file.
    };
    State state = noModule;
    ByteView bytes;
};

/// Looks up a section by its name. Any bytes may stand in `file`.
ZTP_API ElfSection FindElfSection(ByteView file, std::string_view name);

/// Whether `file` begins as a module does and holds all of the segments that its head
/// names, so that the loader finds each byte that it maps.
ZTP_API bool HoldsElfSegments(ByteView file);

/// Writes `content` as the section `name` of the module in the open file `file`, in
/// which `old` stands, its whole content. The section takes the place of one of that
/// name. All that is loaded, and each other section but the names of the sections, stays
/// where it is in the file. 0, or the system's error number: ENOEXEC for what is no whole
/// module.
ZTP_API int PutElfSection(int file, ByteView old, std::string_view name, ByteView content);
