/// @file
/// The root of interface objects that may live inside another.

#pragma once

#include <zt/frame/RefObj.h>

namespace ZT {

/// A counted object that keeps another one alive, its owner, while it lives itself: what an
/// object derives from that is given out while it depends on the one around it.
///
/// The count starts at 1. It has no interface of its own.
class ZT_API OIObj : public RefObj {
public:
    /// No owner.
    OIObj();
    /// Copies count, by-value mode and owner. The copy holds no reference of its own on the
    /// owner and yet releases one at its end: whoever copies adds it.
    OIObj(const OIObj& other);
    /// Releases the owner, if there is one.
    ~OIObj() override;

    /// Null and `E_NOINTERFACE` for every identifier, that of `IUnknown` included; a null `ppv`
    /// gives `DISP_E_PARAMNOTOPTIONAL`. Derived classes answer with their interfaces.
    HRESULT QueryInterface(const GUID& iid, void** ppv) override;

    /// Stores the owner and adds a reference to it, unless it is null. A previous owner is
    /// deliberately not released.
    void AttachOwner(IUnknown* p);

protected:
    IUnknown* m_pOwner;
};

}  // namespace ZT
