/// @file
/// The content of a module's section of resources: a directory and the bytes.
///
/// docs/resources.md has the layout.

#pragma once

#include <platform/base/Export.h>
#include <platform/modules/ResourceRecord.h>

#include <optional>
#include <string_view>
#include <vector>

/// The section's name in the module's file.
constexpr std::string_view resourceSectionName = ".ztrsrc";

/// Whether `a` stands before `b` in a directory: by type, then name, then language.
ZTP_API bool IsResourceBefore(const ResourceRecord& a, const ResourceRecord& b);

/// The directory of a section, read where it lies. Nothing that the bytes say is
/// believed before it is checked, each time it is read, since the file behind a mapping
/// can change.
class ZTP_API ResourceSection {
public:
    /// An empty directory.
    ResourceSection() = default;

    explicit ResourceSection(ByteView section) : m_section(section) {}

    /// What is wrong with the section, or null if all of it can be read.
    const char* Damage() const;

    /// How many resources the directory names; 0 if its head cannot be read.
    DWORD Count() const;

    /// A resource by its place in the directory; none if there is no such place, or if
    /// what stands there reaches out of the section.
    std::optional<ResourceRecord> At(DWORD index) const;

    /// The place of a resource; none if it is not there.
    std::optional<DWORD> Find(std::string_view type, std::string_view name, WORD language) const;

    /// The same in any language: in `preferred` if it is there, or else in the first.
    std::optional<DWORD> FindAny(std::string_view type, std::string_view name,
                                 WORD preferred) const;

    /// The address of a place of the directory, and the place at an address; none if no
    /// place begins there.
    const BYTE* AddressOf(DWORD index) const;
    std::optional<DWORD> PlaceAt(const void* address) const;

private:
    std::string_view Text(ByteView entry, std::size_t field) const;

    ByteView m_section;
};

/// The section that holds `records`, which are in the order of `IsResourceBefore`.
ZTP_API std::vector<BYTE> MakeResourceSection(const std::vector<ResourceRecord>& records);
