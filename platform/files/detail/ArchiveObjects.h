/// @file
/// The numbers of the objects and classes in an archive.

#pragma once

#include <platform/files/CArchive.h>

#include <unordered_map>
#include <vector>

/// Objects and classes share one running number from 1 on; 0 is the null
/// pointer.
struct CArchive::Objects {
    struct Entry {
        CObject* object = nullptr;
        CRuntimeClass* aClass = nullptr;
    };

    /// Storing: the number of what was written.
    std::unordered_map<const void*, DWORD> numbers;
    /// Storing: the number of the next.
    DWORD next = 1;
    /// Loading: what was read, by its number.
    std::vector<Entry> entries = std::vector<Entry>(1);
    /// Loading: schemas of versionable classes, where the archive has another.
    std::unordered_map<const CRuntimeClass*, UINT> schemas;
};
