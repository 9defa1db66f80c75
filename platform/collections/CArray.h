/// @file
/// The array of values.

#pragma once

#include <platform/collections/ElementArray.h>
#include <platform/collections/SerializeElements.h>
#include <platform/object/CObject.h>

#include <algorithm>

/// A growing array of values of `TYPE`, which are handed in as `ARG_TYPE`.
///
/// Its operations are those of `Collections::ElementArray`. An array is not copied by
/// construction or assignment; `Copy` takes over copies of another's elements.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject, public Collections::ElementArray<TYPE, ARG_TYPE> {
public:
    /// Stores the count and, by `SerializeElements`, the elements, or loads them in place of
    /// the present ones. Loading first sets the size; an array of many elements does both in
    /// parts. An exception leaves the elements that it kept from being loaded as they were, or
    /// default ones.
    void Serialize(CArchive& ar) override {
        CObject::Serialize(ar);
        const bool storing = Collections::IsStoring(ar);
        const INT_PTR count = Collections::SerializeCount(ar, this->m_nSize);
        const INT_PTR atATime = Collections::ElementsAtATime(sizeof(TYPE));
        if (count == 0 && !storing) this->RemoveAll();
        for (INT_PTR done = 0; done < count;) {
            const INT_PTR part = std::min(atATime, count - done);
            if (!storing) this->SetSize(done + part);
            SerializeElements(ar, this->m_pData + done, part);
            done += part;
        }
    }

    /// Raises the invalid-argument exception when size, capacity and memory do not agree
    /// with one another.
    void AssertValid() const override {
        CObject::AssertValid();
        if (!this->IsConsistent()) AfxThrowInvalidArgException();
    }
};
