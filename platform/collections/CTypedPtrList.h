/// @file
/// Lists of pointers to one type.

#pragma once

#include <platform/base/Types.h>
#include <platform/collections/POSITION.h>
#include <platform/collections/TypedPointer.h>

#include <concepts>
#include <utility>

/// A list of pointers of the type `TYPE`, kept in a `BASE_CLASS`, which is `CPtrList`,
/// `CObList` or derived from one of them.
///
/// It is the base list with the pointer's type put on: whatever hands out an element hands
/// out a `TYPE`, by value, and only a `TYPE` goes in. `SetAt` replaces an element. All else
/// is the base's. For a base of objects, `TYPE` points to a class derived from `CObject`.
template <class BASE_CLASS, class TYPE>
class CTypedPtrList : public BASE_CLASS {
    using Stored = typename BASE_CLASS::value_type;

public:
    using value_type = TYPE;
    using const_iterator =
        Collections::TypedWalker<TYPE, decltype(std::declval<const BASE_CLASS&>().begin())>;
    using iterator = const_iterator;

    /// An empty list, as the base makes it.
    explicit CTypedPtrList(INT_PTR nBlockSize = 10) : BASE_CLASS(nBlockSize) {}

    TYPE GetHead() const { return Typed(BASE_CLASS::GetHead()); }
    TYPE GetTail() const { return Typed(BASE_CLASS::GetTail()); }
    TYPE RemoveHead() { return Typed(BASE_CLASS::RemoveHead()); }
    TYPE RemoveTail() { return Typed(BASE_CLASS::RemoveTail()); }

    POSITION AddHead(TYPE newElement) { return BASE_CLASS::AddHead(ToStored(newElement)); }
    POSITION AddTail(TYPE newElement) { return BASE_CLASS::AddTail(ToStored(newElement)); }
    /// Puts another list's elements, in their order, in front of the present ones.
    template <std::derived_from<CTypedPtrList> LIST>
    void AddHead(const LIST* pNewList) {
        BASE_CLASS::AddHead(pNewList);
    }
    /// Puts another list's elements, in their order, behind the present ones.
    template <std::derived_from<CTypedPtrList> LIST>
    void AddTail(const LIST* pNewList) {
        BASE_CLASS::AddTail(pNewList);
    }

    TYPE GetNext(POSITION& rPosition) const { return Typed(BASE_CLASS::GetNext(rPosition)); }
    TYPE GetPrev(POSITION& rPosition) const { return Typed(BASE_CLASS::GetPrev(rPosition)); }
    TYPE GetAt(POSITION position) const { return Typed(BASE_CLASS::GetAt(position)); }
    void SetAt(POSITION position, TYPE newElement) {
        BASE_CLASS::SetAt(position, ToStored(newElement));
    }
    POSITION InsertBefore(POSITION position, TYPE newElement) {
        return BASE_CLASS::InsertBefore(position, ToStored(newElement));
    }
    POSITION InsertAfter(POSITION position, TYPE newElement) {
        return BASE_CLASS::InsertAfter(position, ToStored(newElement));
    }
    POSITION Find(TYPE searchValue, POSITION startAfter = nullptr) const {
        return BASE_CLASS::Find(ToStored(searchValue), startAfter);
    }

    const_iterator begin() const { return const_iterator(BASE_CLASS::begin()); }
    const_iterator end() const { return const_iterator(BASE_CLASS::end()); }

private:
    static TYPE Typed(Stored stored) { return Collections::AsTyped<TYPE>(stored); }
    static Stored ToStored(TYPE typed) { return Collections::AsStored<Stored>(typed); }
};
