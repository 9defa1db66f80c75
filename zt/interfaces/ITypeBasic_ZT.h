/// @file
/// The interface that tells the type of an object.

#pragma once

#include <platform/com/Bstr.h>
#include <zt/interfaces/InterfaceIds.h>

#include <cstdint>

namespace ZT {

/// The type of an object, by its `EObjectType` number, and what users and other modules make
/// of it.
class ITypeBasic_ZT : public IUnknown {
public:
    /// The number. A null `type` gives `S_OK`.
    virtual HRESULT GetType(std::int32_t* type) = 0;
    /// The name by which users know any type, as a string of the caller's own. `*name` must be
    /// null or a string, which is replaced and freed. A type without a name gives
    /// `DISP_E_PARAMNOTOPTIONAL`, and `*name` stays. A null `name` gives `S_OK` for a type with
    /// a name.
    virtual HRESULT GetTypeName(std::int32_t type, BSTR* name) = 0;
    /// The numbers of the types that an object of this type can also serve as, as a new
    /// `IArrayNum`, with a reference added. A null `types` gives `S_OK`.
    virtual HRESULT GetCompatibleTypes(IUnknown** types) = 0;

protected:
    ~ITypeBasic_ZT() = default;
};

}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::ITypeBasic_ZT> {
    static constexpr IID value = ZT::IID_ITypeBasic_ZT;
};
