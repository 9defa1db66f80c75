/// @file
/// The pointer map that can be asked for a value.

#pragma once

#include <platform/collections/CMapPtrToPtr.h>
#include <zt/frame/Export.h>

namespace ZT {

/// A map from untyped pointers to untyped pointers that also finds a key by its value and can
/// print itself. It owns neither keys nor values.
class ZT_API MapPtrToPtrZT : public CMapPtrToPtr {
public:
    /// Empty.
    MapPtrToPtrZT();

    /// The key of the first association, in the map's own order, that has this value; null when
    /// there is none. A null key that has the value gives the same. Walks the map.
    void* FindValue(void* value) const;

    /// Prints the map to the standard output for a person to look at: a line with its address
    /// and count, one for each pair in the map's own order, and a line feed. Addresses are
    /// reduced to their low 32 bits. After the 21st pair it prints that there are more, also
    /// when there are not, and leaves the others out.
    void Pr() const;
};

}  // namespace ZT
