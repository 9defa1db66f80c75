/// @file
/// The root of all interfaces.

#pragma once

#include <platform/base/ResultCodes.h>
#include <platform/base/Types.h>
#include <platform/com/Guid.h>

inline constexpr IID IID_IUnknown = {
    0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

/// Counted access to an object through one of its interfaces.
///
/// The order of the three operations is the order of the table of every interface,
/// whose own operations follow. The table holds no destructor: an object ends when
/// its last reference is released, never by `delete` on an interface.
class IUnknown {
public:
    /// Gives in `*object` the object's interface `id` with one reference added, or
    /// null with a failed result (`E_NOINTERFACE` for an unknown identifier).
    virtual HRESULT QueryInterface(REFIID id, void** object) = 0;
    /// Adds a reference and gives the new count.
    virtual ULONG AddRef() = 0;
    /// Takes a reference off and gives the new count; at 0 the object may be gone.
    virtual ULONG Release() = 0;

protected:
    ~IUnknown() = default;
};

using LPUNKNOWN = IUnknown*;

/// Tells the identifier of an interface to templates such as `ComPtr`: specialise it
/// beside the interface with one static member, `static constexpr IID value`.
template <class Interface>
struct InterfaceIdOf;

template <>
struct InterfaceIdOf<IUnknown> {
    static constexpr IID value = IID_IUnknown;
};
