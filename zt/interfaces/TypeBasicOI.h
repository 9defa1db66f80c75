/// @file
/// The interface object that shows the number of an object type.

#pragma once

#include <zt/frame/RefObj.h>
#include <zt/interfaces/ITypeBasic_ZT.h>
#include <zt/interfaces/InterfacePart.h>

namespace ZT {

/// Shows the number of an object type as `ITypeBasic_ZT`, with the names and the compatible
/// types that `DynaModule` knows.
///
/// The count starts at 0: the first query gives the first reference, and its release ends the
/// object.
///
/// The array that `GetCompatibleTypes` makes deliberately holds a reference that nobody has:
/// after the client's one `Release` its count is 1, and it stays alive. A client that wants it
/// to end releases it twice.
class ZT_API TypeBasicOI : public RefObj {
public:
    /// Type 0, which is no type of an object.
    TypeBasicOI();
    /// The type with this `EObjectType` number, which is not checked.
    explicit TypeBasicOI(int type);
    /// Copies count, by-value mode and type.
    TypeBasicOI(const TypeBasicOI& other);
    ~TypeBasicOI() override;

    /// `ITypeBasic_ZT` and `IUnknown` give the part that shows the type, with a reference added;
    /// `IID_NativeObject` gives this object, without. Any other identifier gives null and
    /// `E_NOINTERFACE`. A null `ppv` gives `DISP_E_PARAMNOTOPTIONAL`.
    HRESULT QueryInterface(const GUID& iid, void** ppv) override;

protected:
    class ZT_API XTypeBasic_ZT final
        : public InterfacePart<XTypeBasic_ZT, TypeBasicOI, ITypeBasic_ZT> {
    public:
        static auto Place() { return &TypeBasicOI::m_xTypeBasic_ZT; }

        /// Answers for its own identifier; the object answers for all others.
        HRESULT QueryInterface(REFIID iid, void** ppv) override;
        HRESULT GetType(std::int32_t* type) override;
        HRESULT GetTypeName(std::int32_t type, BSTR* name) override;
        HRESULT GetCompatibleTypes(IUnknown** types) override;
    };

    XTypeBasic_ZT m_xTypeBasic_ZT;
    int m_nType;
};

}  // namespace ZT
