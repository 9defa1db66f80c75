/// @file
/// What the container templates do with their elements.
///
/// A program adapts the containers to a type of its own by specialising one of these
/// templates, before the first container of that type is used.

#pragma once

#include <platform/base/Types.h>

#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

/// Whether two elements are the same to `CList::Find` and to the keys of a `CMap`; by
/// default, whether they are equal by `==`.
template <class TYPE, class ARG_TYPE>
BOOL CompareElements(const TYPE* pElement1, const ARG_TYPE* pElement2) {
    return *pElement1 == *pElement2;
}

/// Assigns `nCount` elements, first to last; what `CArray::Copy` and `CArray::Append` do.
template <class TYPE>
void CopyElements(TYPE* pDest, const TYPE* pSrc, INT_PTR nCount) {
    for (INT_PTR i = 0; i < nCount; ++i) pDest[i] = pSrc[i];
}

/// Moves `nCount` elements of an array to memory that may overlap theirs, where nothing
/// lives yet that is not itself moved away; afterwards nothing lives in the old places
/// outside the new ones. What an array does when it grows, opens a gap or closes one.
///
/// Plain types are moved as bytes, others by their move constructor and destructor, never
/// by assignment. Moving an element must not throw. A class whose copies are not exact,
/// or whose destructor would end what the copy still needs, specialises this.
template <class TYPE>
void RelocateElements(TYPE* pDest, TYPE* pSrc, INT_PTR nCount) noexcept {
    const auto moveOne = [&](INT_PTR i) {
        ::new (static_cast<void*>(pDest + i)) TYPE(std::move(pSrc[i]));
        std::destroy_at(pSrc + i);
    };
    if (pDest == pSrc || nCount <= 0) return;
    if constexpr (std::is_trivially_copyable_v<TYPE>) {
        std::memmove(static_cast<void*>(pDest), pSrc, static_cast<UINT_PTR>(nCount) * sizeof(TYPE));
    } else if (std::less<TYPE*>()(pDest, pSrc)) {
        for (INT_PTR i = 0; i < nCount; ++i) moveOne(i);
    } else {
        for (INT_PTR i = nCount; i-- > 0;) moveOne(i);
    }
}
