/// @file
/// The list of values.

#pragma once

#include <platform/collections/NodeChain.h>
#include <platform/collections/SerializeElements.h>
#include <platform/object/CNotSupportedException.h>
#include <platform/object/CObject.h>

#include <memory>
#include <type_traits>

/// A doubly linked list of values of `TYPE`, which are handed in as `ARG_TYPE`.
///
/// Its operations are those of `Collections::NodeChain`. An element is made by its default
/// constructor, zero for a plain type, and then assigned to; it never changes its place in
/// memory. `Find` compares by `CompareElements`. A list is not copied; `AddTail` with a
/// list takes over copies of another's elements.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CList : public CObject, public Collections::NodeChain<TYPE, ARG_TYPE> {
public:
    /// An empty list that takes memory for `nBlockSize` elements at a time. A block size
    /// below 1 raises the invalid-argument exception.
    explicit CList(INT_PTR nBlockSize = 10) : Collections::NodeChain<TYPE, ARG_TYPE>(nBlockSize) {}

    /// Stores the count and, by `SerializeElements`, each element, or loads elements and adds
    /// them behind the present ones. Elements that cannot be handed in as they are kept raise
    /// the not-supported exception on loading.
    void Serialize(CArchive& ar) override {
        CObject::Serialize(ar);
        const INT_PTR count = Collections::SerializeCount(ar, this->m_nCount);
        if (Collections::IsStoring(ar)) {
            for (TYPE& element : *this) SerializeElements(ar, std::addressof(element), 1);
        } else {
            for (INT_PTR i = 0; i < count; ++i) LoadOne(ar);
        }
    }

    /// Raises the invalid-argument exception when ends, links, count and blocks do not agree
    /// with one another. Walks the whole list.
    void AssertValid() const override {
        CObject::AssertValid();
        if (!this->IsConsistent()) AfxThrowInvalidArgException();
    }

private:
    void LoadOne(CArchive& ar) {
        if constexpr (std::is_convertible_v<TYPE&, ARG_TYPE>) {
            TYPE element = TYPE();
            SerializeElements(ar, std::addressof(element), 1);
            this->AddTail(element);
        } else {
            AfxThrowNotSupportedException();
        }
    }
};
