/// @file
/// The array of untyped pointers.

#pragma once

#include <platform/base/Export.h>
#include <platform/collections/ElementArray.h>
#include <platform/object/CObject.h>

/// A growing array of untyped pointers. It does not own what they point to; a new element
/// is null.
///
/// Its operations are those of `Collections::ElementArray`. An array is not copied by
/// construction or assignment; `Copy` takes over another's elements.
class ZTP_API CPtrArray : public CObject, public Collections::ElementArray<void*, void*> {
    DECLARE_DYNAMIC(CPtrArray)

public:
    /// An empty array without memory.
    CPtrArray();
    ~CPtrArray() override;

    /// Raises the invalid-argument exception when size, capacity and memory do not agree
    /// with one another.
    void AssertValid() const override;
};
