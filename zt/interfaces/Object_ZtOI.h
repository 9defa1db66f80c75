/// @file
/// The interface object that shows any counted object.

#pragma once

#include <zt/frame/RefObj.h>
#include <zt/interfaces/IObject_ZT.h>
#include <zt/interfaces/InterfacePart.h>

namespace ZT {

/// Wraps a counted object to show it as `IObject_ZT`, and holds a reference on it.
///
/// The count starts at 1. Whoever makes it, asks it once for an interface and hands that on,
/// keeps a reference of its own.
///
/// As `IObject_ZT`, with no wrapped object, `IsSame` and `GetHandle` answer `E_UNEXPECTED`.
/// - `IsSame` leaves a result variable that is not 0 on entry as it is and answers `S_OK` at
///   once; otherwise it asks the wrapped object for `IObject_ZT`, and the variable becomes 1
///   when the answer is `other`, else 0. The reference that this query adds is deliberately
///   not released. A null result variable gives `S_OK`.
/// - `GetHandle` gives the low 32 bits of the address of this object, not of the wrapped one.
/// - The other operations answer `ERROR_CALL_NOT_IMPLEMENTED`.
class ZT_API Object_ZtOI : public RefObj {
public:
    /// Wraps nothing.
    Object_ZtOI();
    /// Wraps `p` and adds a reference to it, unless it is null.
    explicit Object_ZtOI(RefObj* p);
    /// Copies count, by-value mode and the pointer. The copy holds no reference of its own on
    /// the wrapped object and yet releases one at its end: whoever copies adds it.
    Object_ZtOI(const Object_ZtOI& other);
    /// Releases the wrapped object, if there is one.
    ~Object_ZtOI() override;

    /// `IObject_ZT` and `IUnknown` give the part that shows this object, with a reference
    /// added; any other identifier goes to the wrapped object. With none, it gives null and
    /// `E_NOINTERFACE`. A null `ppv` gives `DISP_E_PARAMNOTOPTIONAL`.
    HRESULT QueryInterface(const GUID& iid, void** ppv) override;

protected:
    class ZT_API XObject_ZT final : public InterfacePart<XObject_ZT, Object_ZtOI, IObject_ZT> {
    public:
        static auto Place() { return &Object_ZtOI::m_xObject_ZT; }

        HRESULT IsSame(IUnknown* other, std::int16_t* same) override;
        HRESULT GetHandle(std::uint32_t* handle) override;
        HRESULT CopyFrom(IUnknown* other) override;
        HRESULT Clone(IUnknown** clone) override;
        HRESULT ReservedA() override;
        HRESULT ReservedB() override;
    };

    XObject_ZT m_xObject_ZT;
    RefObj* m_pObject;
};

}  // namespace ZT
