/// @file
/// The interface that all kinds of objects can show.

#pragma once

#include <zt/interfaces/InterfaceIds.h>

#include <cstdint>

namespace ZT {

/// An object as such: whether it is the same as another, and copies of it.
///
/// The objects that show it differ in what they call true and in what they test first; each
/// says so at its class.
class IObject_ZT : public IUnknown {
public:
    /// Whether `other` is this object: `*same` becomes 0 if it is not, and another number if
    /// it is. `*same` has to be 0 on entry.
    virtual HRESULT IsSame(IUnknown* other, std::int16_t* same) = 0;
    /// A number that tells objects of one process apart, while they live: the low 32 bits of
    /// an address. A null `handle` gives `S_OK`.
    virtual HRESULT GetHandle(std::uint32_t* handle) = 0;
    /// Takes over the content of `other`, or answers `ERROR_CALL_NOT_IMPLEMENTED`.
    virtual HRESULT CopyFrom(IUnknown* other) = 0;
    /// Gives a new object with the same content, or answers `ERROR_CALL_NOT_IMPLEMENTED`.
    virtual HRESULT Clone(IUnknown** clone) = 0;
    /// Answers `ERROR_CALL_NOT_IMPLEMENTED`.
    virtual HRESULT ReservedA() = 0;
    /// Answers `ERROR_CALL_NOT_IMPLEMENTED`.
    virtual HRESULT ReservedB() = 0;

protected:
    ~IObject_ZT() = default;
};

}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::IObject_ZT> {
    static constexpr IID value = ZT::IID_IObject_ZT;
};
