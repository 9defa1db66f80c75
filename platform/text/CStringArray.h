/// @file
/// The array of strings.

#pragma once

#include <platform/base/Export.h>
#include <platform/collections/ElementArray.h>
#include <platform/object/CObject.h>
#include <platform/text/CString.h>

/// A growing array of strings, which it owns as values; a new element is empty.
///
/// Its operations are those of `Collections::ElementArray`. An array is not copied by
/// construction or assignment; `Copy` takes over another's elements.
class ZTP_API CStringArray : public CObject,
                             public Collections::ElementArray<CString, const CString&> {
    DECLARE_SERIAL(CStringArray)

public:
    /// An empty array without memory.
    CStringArray();
    ~CStringArray() override;

    /// Raises the invalid-argument exception when size, capacity and memory do not agree
    /// with one another.
    void AssertValid() const override;

    /// Stores the number of texts and the texts, or loads them, replacing those of the array.
    void Serialize(CArchive& ar) override;
};
