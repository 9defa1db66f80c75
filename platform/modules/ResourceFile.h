/// @file
/// Resources of module files that are not loaded.

#pragma once

#include <platform/base/Export.h>
#include <platform/modules/ResourceRecord.h>
#include <platform/text/CString.h>

#include <memory>
#include <optional>

/// The resources in the file of a module, read without loading it, so that nothing of the
/// module runs, whatever machine it is made for. The file stays in memory as long as the
/// object; the records point into it. No file, however damaged, does harm.
class ZTP_API ResourceFile {
public:
    /// No resources.
    ResourceFile();
    ~ResourceFile();
    ResourceFile(const ResourceFile&) = delete;
    ResourceFile& operator=(const ResourceFile&) = delete;

    /// Reads the file at `path`. A module without a section of resources is read as one
    /// that has none. False if the file cannot be read, is no module or has a damaged
    /// section; there are no resources then, and `Failure` tells why.
    bool Open(LPCTSTR path);

    /// Reads a file whose bytes the caller has and keeps in their place.
    bool Read(ByteView file);

    /// Why the last read failed, in words that name the section; empty after success.
    const CString& Failure() const;

    /// Whether the module has a section of resources.
    bool HasSection() const;

    /// The number of resources.
    DWORD GetCount() const;

    /// A resource by its place; places go by type, then name, then language. None past
    /// the end.
    std::optional<ResourceRecord> GetAt(DWORD place) const;

    /// A resource by its type, its name and its language.
    std::optional<ResourceRecord> Find(std::string_view type, std::string_view name,
                                       WORD language = defaultResourceLanguage) const;

    /// The same in any language: the one of language 1033, or else the one of the lowest
    /// language, as the look-up in a loaded module takes it.
    std::optional<ResourceRecord> FindAny(std::string_view type, std::string_view name) const;

private:
    struct Content;
    std::unique_ptr<Content> m_content;
};
