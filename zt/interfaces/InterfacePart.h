/// @file
/// How an object shows interfaces: as parts that it holds inside itself.

#pragma once

#include <zt/interfaces/InterfaceIds.h>
#include <zt/interfaces/ResultCodes.h>

#include <bit>
#include <cstddef>
#include <type_traits>

namespace ZT {

/// One interface of an object of the class `Object`: a member of that object, not an
/// allocation of its own. It holds no state; it finds the object by its own fixed place in it,
/// and counts with the object's count.
///
/// `Part` is the class derived from this one, which says by `Place` which member of the object
/// it is:
///
/// ```cpp
/// class Lamp : public RefObj {
///     class XSwitch final : public InterfacePart<XSwitch, Lamp, ISwitch> {
///     public:
///         static auto Place() { return &Lamp::m_xSwitch; }
///         HRESULT TurnOn() override {
///             Owner().m_bOn = true;
///             return S_OK;
///         }
///     };
///     XSwitch m_xSwitch;
///     bool m_bOn = false;
///
/// public:
///     HRESULT QueryInterface(const GUID& iid, void** ppv) override {
///         return QueryParts(*this, iid, ppv, m_xSwitch);
///     }
/// };
/// ```
///
/// The object has the operations `QueryInterface`, `AddRef` and `Release`. The interface tells
/// its identifier by a specialisation of the global `InterfaceIdOf`, beside its declaration: see
/// platform/com/IUnknown.h. A part lives nowhere but in its place.
template <class Part, class Object, class Interface>
class InterfacePart : public Interface {
public:
    using Shown = Interface;

    /// The part's own identifier and that of `IUnknown` give the part itself, with a reference
    /// added; any other goes to the object. A null `ppv` gives `DISP_E_PARAMNOTOPTIONAL`.
    HRESULT QueryInterface(REFIID iid, void** ppv) override {
        if (ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
        if (iid != InterfaceIdOf<Interface>::value && iid != IID_IUnknown) {
            return Owner().QueryInterface(iid, ppv);
        }
        *ppv = static_cast<Interface*>(this);
        this->AddRef();
        return S_OK;
    }
    ULONG AddRef() override { return Owner().AddRef(); }
    ULONG Release() override { return Owner().Release(); }

protected:
    ~InterfacePart() = default;

    /// The object that this is a part of.
    Object& Owner() {
        static_assert(std::is_same_v<decltype(Part::Place()), Part Object::*>);
        // A pointer to a member is stored as the member's distance from the object's start.
        const auto distance = std::bit_cast<std::ptrdiff_t>(Part::Place());
        return *reinterpret_cast<Object*>(reinterpret_cast<std::byte*>(this) - distance);
    }
};

/// The part that shows the interface `iid`, as a pointer to that interface; null when none of
/// them does.
template <class... Parts>
void* FindPart(REFIID iid, Parts&... parts) {
    void* found = nullptr;
    ((iid == InterfaceIdOf<typename Parts::Shown>::value
          ? void(found = static_cast<typename Parts::Shown*>(&parts))
          : void()),
     ...);
    return found;
}

/// Answers a query with one of the parts of `object`, found by its own identifier, and adds a
/// reference. Any other identifier, that of `IUnknown` included, gives null and
/// `E_NOINTERFACE`; a null `ppv` gives `DISP_E_PARAMNOTOPTIONAL`.
template <class Object, class... Parts>
HRESULT QueryNamedParts(Object& object, REFIID iid, void** ppv, Parts&... parts) {
    if (ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    *ppv = FindPart(iid, parts...);
    if (*ppv == nullptr) return E_NOINTERFACE;
    object.AddRef();
    return S_OK;
}

/// As `QueryNamedParts`; an identifier that no part shows is asked of `next` instead, with
/// `*ppv` as it was. A null `next` changes nothing.
template <class Object, class Next, class... Parts>
HRESULT QueryNamedPartsOr(Object& object, Next* next, REFIID iid, void** ppv, Parts&... parts) {
    const bool isAsked = ppv != nullptr && next != nullptr && FindPart(iid, parts...) == nullptr;
    return isAsked ? next->QueryInterface(iid, ppv) : QueryNamedParts(object, iid, ppv, parts...);
}

/// As `QueryNamedParts`; besides, the identifier of `IUnknown` gives the first part. This is how
/// an object answers a query unless its class says otherwise.
template <class Object, class First, class... Others>
HRESULT QueryParts(Object& object, REFIID iid, void** ppv, First& first, Others&... others) {
    const IID& named = iid == IID_IUnknown ? InterfaceIdOf<typename First::Shown>::value : iid;
    return QueryNamedParts(object, named, ppv, first, others...);
}

/// As `QueryParts`; besides, `IID_NativeObject` gives `&object`, with no reference added.
template <class Object, class... Parts>
HRESULT QueryPartsOrNative(Object& object, REFIID iid, void** ppv, Parts&... parts) {
    if (ppv == nullptr || iid != IID_NativeObject) return QueryParts(object, iid, ppv, parts...);
    *ppv = &object;
    return S_OK;
}

}  // namespace ZT
