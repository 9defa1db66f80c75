/// @file
/// The growing row of elements that all arrays share.

#pragma once

#include <platform/base/Types.h>
#include <platform/collections/ElementHelpers.h>
#include <platform/collections/ElementMemory.h>
#include <platform/object/CInvalidArgException.h>

#include <concepts>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace Collections {

/// The elements of an array and every operation on them: what `CPtrArray`, `CObArray` and
/// `CArray` have in common.
///
/// Indices are signed, from 0. An index out of bounds raises the invalid-argument
/// exception, as does a negative size or number of elements; a size for which there is no
/// memory raises the memory exception and leaves the array as it was. A new element is
/// made by its default constructor, zero for a plain type, and then assigned to. Elements
/// that change places are moved by `RelocateElements`, not assigned.
///
/// Whatever makes the array larger may move its elements: pointers and references to them
/// are stale afterwards. An element of the array itself may be handed to any operation.
template <class TYPE, class ARG_TYPE>
class ElementArray {
public:
    using value_type = TYPE;

    ElementArray() = default;
    ElementArray(const ElementArray&) = delete;
    ElementArray& operator=(const ElementArray&) = delete;

    /// @name Size
    /// @{
    INT_PTR GetSize() const { return m_nSize; }
    INT_PTR GetCount() const { return m_nSize; }
    bool IsEmpty() const { return m_nSize == 0; }
    /// The largest valid index; -1 for an empty array.
    INT_PTR GetUpperBound() const { return m_nSize - 1; }

    /// Makes the array `nNewSize` elements long: ends those beyond, or adds default ones.
    /// Size 0 frees the memory. A `nGrowBy` of 0 or more becomes the step by which the
    /// capacity rises from now on, 0 leaving the choice to the array; a negative one keeps
    /// the present step.
    void SetSize(INT_PTR nNewSize, INT_PTR nGrowBy = -1) {
        if (nNewSize < 0) AfxThrowInvalidArgException();
        if (nGrowBy >= 0) m_nGrowBy = nGrowBy;
        if (nNewSize == 0) return Release();
        if (nNewSize < m_nSize) return Truncate(nNewSize);
        Reserve(nNewSize);
        OpenGap(m_nSize, nNewSize - m_nSize);
    }
    /// Gives back memory beyond the last element.
    void FreeExtra() {
        if (m_nSize == 0) return Release();
        if (m_nSize != m_nMaxSize) Reallocate(m_nSize);
    }
    /// Ends all elements and frees the memory.
    void RemoveAll() { SetSize(0); }
    /// @}

    /// @name Elements
    /// @{
    const TYPE& GetAt(INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& GetAt(INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
    const TYPE& ElementAt(INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& ElementAt(INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
    const TYPE& operator[](INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& operator[](INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
    void SetAt(INT_PTR nIndex, ARG_TYPE newElement) { m_pData[Checked(nIndex)] = newElement; }

    /// The first of the elements, which stand one behind the other; null while the array
    /// has no memory. No index into it is checked.
    const TYPE* GetData() const { return m_pData; }
    TYPE* GetData() { return m_pData; }

    TYPE* begin() { return m_pData; }
    TYPE* end() { return m_pData + m_nSize; }
    const TYPE* begin() const { return m_pData; }
    const TYPE* end() const { return m_pData + m_nSize; }
    /// @}

    /// @name Growing
    /// @{
    /// As `SetAt`, but an index beyond the last element lengthens the array up to it, with
    /// default elements in between.
    void SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement) {
        if (nIndex < 0) AfxThrowInvalidArgException();
        if (nIndex < m_nSize) {
            m_pData[nIndex] = newElement;
        } else {
            InsertCopies(nIndex, newElement, 1);
        }
    }
    /// Puts an element behind the last one, and returns its index.
    INT_PTR Add(ARG_TYPE newElement) {
        const INT_PTR index = m_nSize;
        if (index < m_nMaxSize) {
            MakeAt(m_pData + index, newElement);
            m_nSize = index + 1;
        } else {
            InsertCopies(index, newElement, 1);
        }
        return index;
    }
    /// Adds copies of another array's elements behind the last one, and returns the index
    /// of the first of them. The array may be this one.
    INT_PTR Append(const ElementArray& src) {
        const INT_PTR index = m_nSize;
        const INT_PTR count = src.m_nSize;
        Reserve(Sum(index, count));
        OpenGap(index, count);
        CopyElements(m_pData + index, static_cast<const TYPE*>(src.m_pData), count);
        return index;
    }
    /// Becomes as long as another array and assigns its elements, first to last. The array
    /// may be this one.
    void Copy(const ElementArray& src) {
        if (this == &src) return;
        SetSize(src.m_nSize);
        CopyElements(m_pData, static_cast<const TYPE*>(src.m_pData), m_nSize);
    }
    /// @}

    /// @name Inserting and removing
    /// @{
    /// Inserts an element `nCount` times before the one at `nIndex`. An index beyond the
    /// last element lengthens the array up to it, with default elements in between.
    void InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount = 1) {
        if (nIndex < 0 || nCount < 0) AfxThrowInvalidArgException();
        if (nCount > 0) InsertCopies(nIndex, newElement, nCount);
    }
    /// Inserts copies of another array's elements before the one at `nStartIndex`,
    /// likewise. The array may be this one; an empty one changes nothing, and a null
    /// pointer raises the invalid-argument exception.
    template <std::derived_from<ElementArray> ARRAY>
    void InsertAt(INT_PTR nStartIndex, const ARRAY* pNewArray) {
        if (nStartIndex < 0 || pNewArray == nullptr) AfxThrowInvalidArgException();
        InsertArray(nStartIndex, *pNewArray);
    }
    /// Takes `nCount` elements out, from `nIndex` on; those behind move down. A run that
    /// does not lie inside the array raises the invalid-argument exception. Keeps the
    /// memory.
    void RemoveAt(INT_PTR nIndex, INT_PTR nCount = 1) {
        if (nIndex < 0 || nCount < 0 || nIndex > m_nSize || nCount > m_nSize - nIndex) {
            AfxThrowInvalidArgException();
        }
        std::destroy_n(m_pData + nIndex, nCount);
        const INT_PTR behind = nIndex + nCount;
        RelocateElements(m_pData + nIndex, m_pData + behind, m_nSize - behind);
        m_nSize -= nCount;
    }
    /// @}

protected:
    ~ElementArray() { Release(); }

    /// Whether size, capacity, step and memory agree with one another.
    bool IsConsistent() const {
        if (m_pData == nullptr) return m_nSize == 0 && m_nMaxSize == 0;
        return m_nSize >= 0 && m_nMaxSize >= m_nSize && m_nGrowBy >= 0;
    }

    TYPE* m_pData = nullptr;  ///< room for `m_nMaxSize` elements, `m_nSize` of which live
    INT_PTR m_nSize = 0;
    INT_PTR m_nMaxSize = 0;
    INT_PTR m_nGrowBy = 0;  ///< step of the capacity; 0 for the array's own choice

private:
    /// Elements in a block that is not in use yet, or no longer.
    struct Block {
        explicit Block(INT_PTR capacity)
            : elements(
                  static_cast<TYPE*>(AllocateElements(capacity, sizeof(TYPE), alignof(TYPE)))) {}
        explicit Block(TYPE* old) : elements(old) {}
        Block(const Block&) = delete;
        Block& operator=(const Block&) = delete;
        ~Block() { FreeElements(elements, alignof(TYPE)); }

        TYPE* elements;
    };

    INT_PTR Checked(INT_PTR index) const {
        if (static_cast<UINT_PTR>(index) >= static_cast<UINT_PTR>(m_nSize)) [[unlikely]] {
            AfxThrowInvalidArgException();
        }
        return index;
    }

    /// The size that results from two; one that no memory could hold stays as large.
    static INT_PTR Sum(INT_PTR a, INT_PTR b) { return a > PTRDIFF_MAX - b ? PTRDIFF_MAX : a + b; }

    void Release() noexcept {
        Block old(m_pData);
        std::destroy_n(m_pData, m_nSize);
        m_pData = nullptr;
        m_nSize = m_nMaxSize = 0;
    }

    void Truncate(INT_PTR size) {
        std::destroy(m_pData + size, m_pData + m_nSize);
        m_nSize = size;
    }

    void Reserve(INT_PTR size) {
        if (size > m_nMaxSize) Reallocate(GrownCapacity(m_nMaxSize, size, m_nGrowBy));
    }

    void Reallocate(INT_PTR capacity) {
        Block block(capacity);
        RelocateElements(block.elements, m_pData, m_nSize);
        std::swap(m_pData, block.elements);
        m_nMaxSize = capacity;
    }

    /// Makes `count` default elements at `index`, for which there is room; those from there
    /// on move up.
    void OpenGap(INT_PTR index, INT_PTR count) {
        TYPE* const gap = m_pData + index;
        RelocateElements(gap + count, gap, m_nSize - index);
        INT_PTR made = 0;
        const auto makeAll = [&] {
            for (; made < count; ++made) ::new (static_cast<void*>(gap + made)) TYPE();
        };
        if constexpr (std::is_nothrow_default_constructible_v<TYPE>) {
            makeAll();
        } else {
            try {
                makeAll();
            } catch (...) {
                std::destroy_n(gap, made);
                RelocateElements(gap, gap + count, m_nSize - index);
                throw;
            }
        }
        m_nSize += count;
    }

    /// Makes an element where there is none.
    static void MakeAt(TYPE* place, ARG_TYPE element) {
        ::new (static_cast<void*>(place)) TYPE();
        if constexpr (std::is_nothrow_assignable_v<TYPE&, ARG_TYPE&>) {
            *place = element;
        } else {
            try {
                *place = element;
            } catch (...) {
                std::destroy_at(place);
                throw;
            }
        }
    }

    /// One element outside the array, on its way into it.
    struct Arriving {
        Arriving() : element() {}
        Arriving(const Arriving&) = delete;
        Arriving& operator=(const Arriving&) = delete;
        ~Arriving() {
            if (here) std::destroy_at(std::addressof(element));
        }
        /// Moves on to the place of an element that is ended for it.
        void Replace(TYPE* place) {
            std::destroy_at(place);
            RelocateElements(place, std::addressof(element), 1);
            here = false;
        }

        union {
            TYPE element;
        };
        bool here = true;
    };

    /// Inserts copies of an element. It may lie in this array or refer to something in it,
    /// so the first copy is made before anything moves.
    void InsertCopies(INT_PTR index, ARG_TYPE element, INT_PTR count) {
        Arriving first;
        first.element = element;
        MakeRoom(index, count);
        TYPE* const place = m_pData + index;
        first.Replace(place);
        for (INT_PTR i = 1; i < count; ++i) place[i] = static_cast<const TYPE&>(*place);
    }

    void InsertArray(INT_PTR index, const ElementArray& src) {
        const INT_PTR count = src.m_nSize;
        if (count == 0) return;
        MakeRoom(index, count);
        const TYPE* const elements = src.m_pData;
        if (this != &src) return CopyElements(m_pData + index, elements, count);
        // What stood from the index on has moved up.
        const INT_PTR before = index < count ? index : count;
        CopyElements(m_pData + index, elements, before);
        CopyElements(m_pData + index + before, elements + before + count, count - before);
    }

    /// Makes `count` default elements at `index`, also where that lies beyond the last one.
    void MakeRoom(INT_PTR index, INT_PTR count) {
        if (index < m_nSize) {
            Reserve(Sum(m_nSize, count));
            OpenGap(index, count);
        } else {
            Reserve(Sum(index, count));
            OpenGap(m_nSize, index - m_nSize + count);
        }
    }
};

}  // namespace Collections
