/// @file
/// The interface of a list. A `POSITION` is an opaque pointer, which comes without any list.

#pragma once

#include <platform/collections/POSITION.h>
#include <zt/interfaces/InterfaceIds.h>

namespace ZT {

class IIterator64;

/// A list of objects or of untyped pointers, read element by element.
class IList64 : public IUnknown {
public:
    /// The list's iterator, with a reference added. A null `iterator` gives
    /// `DISP_E_PARAMNOTOPTIONAL`.
    virtual HRESULT GetIterator(IIterator64** iterator) = 0;
    /// The element at a position. Only a list that was told that its elements are interface
    /// pointers adds a reference to it; in any other list it need not be an interface at all.
    /// A null `element` gives `S_OK`, and then a null position
    /// `DISP_E_PARAMNOTOPTIONAL`.
    virtual HRESULT GetAt(POSITION position, IUnknown** element) = 0;

protected:
    ~IList64() = default;
};

}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::IList64> {
    static constexpr IID value = ZT::IID_IList64;
};
