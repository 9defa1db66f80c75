/// @file
/// The map from pointers to pointers.

#pragma once

#include <platform/base/Export.h>
#include <platform/collections/AssociationTable.h>
#include <platform/collections/HashKey.h>
#include <platform/object/CObject.h>

namespace Collections {

/// A pointer that is sought in a map.
struct PointerProbe {
    static constexpr bool kStoresHash = false;
    static constexpr INT_PTR kBucketsPerKey = 1;

    explicit PointerProbe(void* sought) : key(sought), hash(HashOfStored(sought)) {}
    static UINT HashOfStored(void* stored) { return HashKey<void*>(stored); }
    bool Matches(void* stored) const { return stored == key; }
    void* Source() const { return key; }

    void* key;
    UINT hash;
};

}  // namespace Collections

/// A hash table from untyped pointers to untyped pointers. It owns neither; null may be a
/// key as well as a value.
///
/// Its operations are those of `Collections::AssociationTable`. A map is not copied.
class ZTP_API CMapPtrToPtr
    : public CObject,
      public Collections::AssociationTable<void*, void*, void*, void*, Collections::PointerProbe> {
    DECLARE_DYNAMIC(CMapPtrToPtr)

public:
    /// An empty map that takes memory for `nBlockSize` associations at a time. A block size
    /// below 1 raises the invalid-argument exception.
    explicit CMapPtrToPtr(INT_PTR nBlockSize = 10);
    ~CMapPtrToPtr() override;

    /// The value of the key; null when the map does not have it.
    void* GetValueAt(void* key) const {
        const CPair* pair = PLookup(key);
        return pair == nullptr ? nullptr : pair->value;
    }

    /// Hash of a key; its bucket is this number modulo the size of the table.
    UINT HashKey(void* key) const { return Collections::PointerProbe::HashOfStored(key); }

    /// Raises the invalid-argument exception when count, table and blocks do not agree with
    /// one another. Walks the whole map.
    void AssertValid() const override;
};
