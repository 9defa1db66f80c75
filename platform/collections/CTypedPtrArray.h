/// @file
/// Arrays of pointers to one type.

#pragma once

#include <platform/base/Types.h>
#include <platform/collections/TypedPointer.h>

#include <concepts>

/// An array of pointers of the type `TYPE`, kept in a `BASE_CLASS`, which is `CPtrArray`,
/// `CObArray` or derived from one of them.
///
/// It is the base array with the pointer's type put on: whatever hands out an element hands
/// out a `TYPE`, and only a `TYPE` goes in. On an array that may be changed, `[]` and
/// `ElementAt` give a place that reads as a `TYPE` and can be assigned to. All else is the
/// base's. For a base of objects, `TYPE` points to a class derived from `CObject`.
template <class BASE_CLASS, class TYPE>
class CTypedPtrArray : public BASE_CLASS {
    using Stored = typename BASE_CLASS::value_type;
    using Place = Collections::TypedPlace<TYPE, Stored>;

public:
    using value_type = TYPE;
    using const_iterator = Collections::TypedWalker<TYPE, const Stored*>;
    using iterator = const_iterator;

    TYPE GetAt(INT_PTR nIndex) const { return Typed(BASE_CLASS::GetAt(nIndex)); }
    TYPE ElementAt(INT_PTR nIndex) const { return GetAt(nIndex); }
    Place ElementAt(INT_PTR nIndex) { return Place(BASE_CLASS::ElementAt(nIndex)); }
    TYPE operator[](INT_PTR nIndex) const { return GetAt(nIndex); }
    Place operator[](INT_PTR nIndex) { return ElementAt(nIndex); }

    void SetAt(INT_PTR nIndex, TYPE newElement) { BASE_CLASS::SetAt(nIndex, ToStored(newElement)); }
    void SetAtGrow(INT_PTR nIndex, TYPE newElement) {
        BASE_CLASS::SetAtGrow(nIndex, ToStored(newElement));
    }
    INT_PTR Add(TYPE newElement) { return BASE_CLASS::Add(ToStored(newElement)); }
    INT_PTR Append(const CTypedPtrArray& src) { return BASE_CLASS::Append(src); }
    void Copy(const CTypedPtrArray& src) { BASE_CLASS::Copy(src); }
    void InsertAt(INT_PTR nIndex, TYPE newElement, INT_PTR nCount = 1) {
        BASE_CLASS::InsertAt(nIndex, ToStored(newElement), nCount);
    }
    /// Inserts another array's elements before the one at `nStartIndex`.
    template <std::derived_from<CTypedPtrArray> ARRAY>
    void InsertAt(INT_PTR nStartIndex, const ARRAY* pNewArray) {
        BASE_CLASS::InsertAt(nStartIndex, pNewArray);
    }

    const_iterator begin() const { return const_iterator(this->GetData()); }
    const_iterator end() const { return const_iterator(this->GetData() + this->GetSize()); }

private:
    static TYPE Typed(Stored stored) { return Collections::AsTyped<TYPE>(stored); }
    static Stored ToStored(TYPE typed) { return Collections::AsStored<Stored>(typed); }
};
