/// @file
/// Modules as files: their segments and sections.

#pragma once

#include <platform/base/Export.h>
#include <platform/modules/detail/ResourceSection.h>

#include <optional>
#include <string_view>
#include <vector>

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

/// A changed module, in the order of its file.
struct ElfChange {
    std::vector<BYTE> head;  ///< In the place of the old head.
    ByteView kept;           ///< What stays of the old file behind its head.
    std::vector<BYTE> end;   ///< What follows.
};

/// The module that has `content` as its section `name`, in the place of one of that name.
/// All that is loaded, and each other section but the names of the sections, stays where
/// it is in the file. None if `file` is no whole module, or if the section is loaded with
/// it.
ZTP_API std::optional<ElfChange> PutElfSection(ByteView file, std::string_view name,
                                               ByteView content);
