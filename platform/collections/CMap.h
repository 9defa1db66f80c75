/// @file
/// The map from values to values.

#pragma once

#include <platform/collections/AssociationTable.h>
#include <platform/collections/ElementHelpers.h>
#include <platform/collections/HashKey.h>
#include <platform/collections/SerializeElements.h>
#include <platform/object/CNotSupportedException.h>
#include <platform/object/CObject.h>

#include <memory>
#include <type_traits>

namespace Collections {

/// A key of a `CMap` that is sought; `HashKey` and `CompareElements` say what is the same.
/// Refers to the key that it was made from.
template <class KEY, class ARG_KEY>
struct KeyProbe {
    using Sought = std::remove_reference_t<ARG_KEY>;
    static constexpr bool kStoresHash = true;
    static constexpr INT_PTR kBucketsPerKey = 1;

    explicit KeyProbe(Sought& sought) : key(sought), hash(HashKey<ARG_KEY>(sought)) {}
    bool Matches(const KEY& stored) const {
        return CompareElements(std::addressof(stored), std::addressof(key)) != 0;
    }
    Sought& Source() const { return key; }

    Sought& key;
    UINT hash;
};

}  // namespace Collections

/// A hash table from keys of the type `KEY`, handed in as `ARG_KEY`, to values of the type
/// `VALUE`, handed in as `ARG_VALUE`.
///
/// The hash of a key comes from `HashKey<ARG_KEY>`, and `CompareElements` tells whether a
/// stored key is the one that is sought; a program specialises both for keys of its own. A
/// stored key is made from the one handed in; a value is made by its default constructor,
/// zero for a plain type, and then assigned to.
///
/// Its operations are those of `Collections::AssociationTable`. A map is not copied.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CMap : public CObject,
             public Collections::AssociationTable<KEY, ARG_KEY, VALUE, ARG_VALUE,
                                                  Collections::KeyProbe<KEY, ARG_KEY>> {
    using Table = Collections::AssociationTable<KEY, ARG_KEY, VALUE, ARG_VALUE,
                                                Collections::KeyProbe<KEY, ARG_KEY>>;

public:
    /// An empty map that takes memory for `nBlockSize` associations at a time. A block size
    /// below 1 raises the invalid-argument exception.
    explicit CMap(INT_PTR nBlockSize = 10) : Table(nBlockSize) {}

    /// Stores the count and, by `SerializeElements`, each key and its value, or loads keys and
    /// values and adds them to the present ones. Keys and values that cannot be handed in as
    /// they are kept raise the not-supported exception on loading.
    void Serialize(CArchive& ar) override {
        CObject::Serialize(ar);
        const INT_PTR count = Collections::SerializeCount(ar, this->m_nCount);
        if (Collections::IsStoring(ar)) {
            for (auto& pair : *this) StoreOne(ar, pair);
        } else {
            for (INT_PTR i = 0; i < count; ++i) LoadOne(ar);
        }
    }

    /// Raises the invalid-argument exception when count, table and blocks do not agree with
    /// one another. Walks the whole map.
    void AssertValid() const override {
        CObject::AssertValid();
        if (!this->IsConsistent()) AfxThrowInvalidArgException();
    }

private:
    static constexpr bool kCanLoad = std::is_default_constructible_v<KEY> &&
                                     std::is_convertible_v<KEY&, ARG_KEY> &&
                                     std::is_convertible_v<VALUE&, ARG_VALUE>;

    static void StoreOne(CArchive& ar, typename Table::CPair& pair) {
        SerializeElements(ar, const_cast<KEY*>(std::addressof(pair.key)), 1);
        SerializeElements(ar, std::addressof(pair.value), 1);
    }

    void LoadOne(CArchive& ar) {
        if constexpr (kCanLoad) {
            KEY key = KEY();
            VALUE value = VALUE();
            SerializeElements(ar, std::addressof(key), 1);
            SerializeElements(ar, std::addressof(value), 1);
            this->SetAt(key, value);
        } else {
            AfxThrowNotSupportedException();
        }
    }
};
