/// @file
/// The map from texts to pointers.

#pragma once

#include <platform/base/Export.h>
#include <platform/collections/AssociationTable.h>
#include <platform/collections/HashKey.h>
#include <platform/object/CObject.h>
#include <platform/text/CString.h>

#include <string_view>

namespace Collections {

/// A text that is sought in a map.
struct TextProbe {
    static constexpr bool kStoresHash = true;
    // Going on along a bucket costs more than the bucket: the next key is another place in
    // memory, and how many there are cannot be foreseen.
    static constexpr INT_PTR kBucketsPerKey = 3;

    explicit TextProbe(const char* sought) : text(Checked(sought)), hash(HashText(text)) {}
    bool Matches(const CString& stored) const { return stored.View() == text; }
    std::string_view Source() const { return text; }

    std::string_view text;
    UINT hash;

private:
    static const char* Checked(const char* sought) {
        if (sought == nullptr) AfxThrowInvalidArgException();
        return sought;
    }
};

}  // namespace Collections

/// A hash table from texts to untyped pointers. It keeps copies of the texts and does not
/// own what the pointers point to.
///
/// Keys are compared byte by byte, so that upper and lower case differ; the empty text is a
/// key like any other. A null text raises the invalid-argument exception. Looking up makes
/// no copy of the text.
///
/// Its operations are those of `Collections::AssociationTable`. A map is not copied.
class ZTP_API CMapStringToPtr
    : public CObject,
      public Collections::AssociationTable<CString, LPCTSTR, void*, void*, Collections::TextProbe> {
    DECLARE_DYNAMIC(CMapStringToPtr)

public:
    /// An empty map that takes memory for `nBlockSize` associations at a time. A block size
    /// below 1 raises the invalid-argument exception.
    explicit CMapStringToPtr(INT_PTR nBlockSize = 10);
    ~CMapStringToPtr() override;

    /// Whether the map has the key; if so, `rKey` becomes the map's own copy of it, which is
    /// valid until the key is removed, and otherwise stays.
    bool LookupKey(LPCTSTR key, LPCTSTR& rKey) const;

    /// Hash of a key; its bucket is this number modulo the size of the table.
    UINT HashKey(LPCTSTR key) const { return Collections::TextProbe(key).hash; }

    /// Raises the invalid-argument exception when count, table and blocks do not agree with
    /// one another. Walks the whole map.
    void AssertValid() const override;
};
