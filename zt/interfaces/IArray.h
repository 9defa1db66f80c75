/// @file
/// The interface of the arrays that client modules bring.

#pragma once

#include <zt/interfaces/InterfaceIds.h>

#include <cstdint>

namespace ZT {

/// An array of objects in a client module. The library neither implements nor creates one; it
/// only asks it.
///
/// What `ArrayOp4` to `ArrayOp7` do is the client's business: the library passes them on and
/// gives them no meaning. The interface has no identifier here.
class IArray : public IUnknown {
public:
    /// Number of elements.
    virtual HRESULT GetCount(std::int32_t* count) = 0;
    /// The element at an index, with a reference added. 0 alone means success.
    virtual HRESULT GetAt(std::int32_t index, IUnknown** element) = 0;
    /// Puts an object at an index.
    virtual HRESULT SetAt(std::int32_t index, IUnknown* element) = 0;
    virtual HRESULT ArrayOp4() = 0;
    virtual HRESULT ArrayOp5(IUnknown* object) = 0;
    virtual HRESULT ArrayOp6(IUnknown* object) = 0;
    virtual HRESULT ArrayOp7() = 0;

protected:
    ~IArray() = default;
};

}  // namespace ZT
