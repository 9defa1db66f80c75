/// @file
/// The array of objects.

#pragma once

#include <platform/base/Export.h>
#include <platform/collections/ElementArray.h>
#include <platform/object/CObject.h>

/// A growing array of pointers to objects. It does not own the objects; a new element is
/// null.
///
/// Its operations are those of `Collections::ElementArray`. An array is not copied by
/// construction or assignment; `Copy` takes over another's elements.
class ZTP_API CObArray : public CObject, public Collections::ElementArray<CObject*, CObject*> {
    DECLARE_SERIAL(CObArray)

public:
    /// An empty array without memory.
    CObArray();
    ~CObArray() override;

    /// Stores the count and the objects, or loads objects in place of the present ones. The
    /// caller owns what is loaded, also when an exception ends it. The objects' classes need
    /// `DECLARE_SERIAL`; otherwise storing raises the not-supported exception.
    void Serialize(CArchive& ar) override;

    /// Raises the invalid-argument exception when size, capacity and memory do not agree
    /// with one another, and asks every object for its own state.
    void AssertValid() const override;
};
