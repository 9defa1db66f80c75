/// @file
/// The root of reference-counted objects.

#pragma once

#include <platform/com/IUnknown.h>
#include <platform/object/CObject.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// An object that lives by a reference count and can be shown through interfaces.
///
/// The count starts at 1, and the object is deleted when it falls to 0. In by-value
/// mode the object belongs to someone else, a stack or another object: the count goes
/// up and down, but `Release` never deletes. Nothing guards the count against falling
/// below 0, where it wraps to the highest number. It is a plain number: an object
/// shared between threads needs the caller's own lock.
class ZT_API RefObj : public CObject {
public:
    /// Count 1, by-value mode off.
    RefObj();
    /// Copies count and mode: the new object deliberately starts with the count of the
    /// old one.
    RefObj(const RefObj& other);
    ~RefObj() override;

    /// Gives in `*ppv` the interface `iid` with one reference added. The base has none: it
    /// stores null and answers `E_NOINTERFACE`.
    virtual HRESULT QueryInterface(const GUID& iid, void** ppv);

    /// Takes a reference off and gives the new count. At 0 the object is deleted, unless
    /// it is in by-value mode.
    virtual ulong Release();

    /// Adds a reference and gives the new count.
    virtual ulong AddRef();

    /// The count.
    ulong GetRef() const { return m_nRefCount; }

    /// Sets by-value mode and takes one reference off, that of the constructor, unless the
    /// count is 0.
    void SetByVal() { SetByVal(true, true); }

    /// Stores the mode; with `bDropRef` takes one reference off, unless the count is 0.
    /// Never deletes.
    void SetByVal(bool bByVal, bool bDropRef);

protected:
    ulong m_nRefCount;
    bool m_bRefByVal;
};

}  // namespace ZT
