/// @file
/// The list of untyped pointers.

#pragma once

#include <platform/base/Export.h>
#include <platform/collections/NodeChain.h>
#include <platform/object/CObject.h>

/// A doubly linked list of untyped pointers, which may be null and may occur more than
/// once. It does not own what they point to.
///
/// Its operations are those of `Collections::NodeChain`. A list is not copied; `AddTail`
/// with a list takes over another's elements.
class ZTP_API CPtrList : public CObject, public Collections::NodeChain<void*, void*> {
    DECLARE_DYNAMIC(CPtrList)

public:
    /// An empty list that takes memory for `nBlockSize` elements at a time. A block size
    /// below 1 raises the invalid-argument exception.
    explicit CPtrList(INT_PTR nBlockSize = 10);
    ~CPtrList() override;

    /// Raises the invalid-argument exception when ends, links, count and blocks do not agree
    /// with one another. Walks the whole list.
    void AssertValid() const override;
};
