/// @file
/// The list of objects.

#pragma once

#include <platform/base/Export.h>
#include <platform/collections/NodeChain.h>
#include <platform/object/CObject.h>

/// A doubly linked list of pointers to objects, which may be null and may occur more than
/// once. It does not own the objects.
///
/// Its operations are those of `Collections::NodeChain`. A list is not copied; `AddTail`
/// with a list takes over another's elements.
class ZTP_API CObList : public CObject, public Collections::NodeChain<CObject*, CObject*> {
    DECLARE_SERIAL(CObList)

public:
    /// An empty list that takes memory for `nBlockSize` elements at a time. A block size
    /// below 1 raises the invalid-argument exception.
    explicit CObList(INT_PTR nBlockSize = 10);
    ~CObList() override;

    /// Stores the count and the objects, or loads objects and adds them behind the present
    /// ones. The caller owns what is loaded. The objects' classes need `DECLARE_SERIAL`;
    /// otherwise storing raises the not-supported exception.
    void Serialize(CArchive& ar) override;

    /// Raises the invalid-argument exception when ends, links, count and blocks do not agree
    /// with one another, and asks every object for its own state.
    void AssertValid() const override;
};
