/// @file
/// The interface of an array of numbers.

#pragma once

#include <zt/interfaces/InterfaceIds.h>

#include <cstdint>

namespace ZT {

/// An array of doubles.
///
/// An index that is refused gives `DISP_E_BADINDEX`, and nothing happens. The last element can
/// be read, but the operations that change something at an index deliberately stop one earlier:
/// they take no index from the last element on, and none at all in an array of one element.
/// `Add` and `SetSize` always work.
///
/// Memory that runs out raises the memory exception, which passes through the interface.
class IArrayNum : public IUnknown {
public:
    /// Number of elements. A null `count` gives `S_OK`.
    virtual HRESULT GetCount(std::int32_t* count) = 0;
    /// Makes the array `size` elements long; new ones are zero. A negative size raises the
    /// invalid-argument exception.
    virtual HRESULT SetSize(std::int32_t size) = 0;
    /// The element at an index. A null `value` gives `S_OK`, once the index has passed.
    virtual HRESULT GetAt(std::int32_t index, double* value) = 0;
    /// Stores a value at an index below that of the last element.
    virtual HRESULT SetAt(std::int32_t index, double value) = 0;
    /// Puts a value at an index below that of the last element; those from there on move up.
    virtual HRESULT InsertAt(std::int32_t index, double value) = 0;
    /// Puts a value behind all others.
    virtual HRESULT Add(double value) = 0;
    /// Takes out the value at an index below that of the last element; those behind move down.
    virtual HRESULT RemoveAt(std::int32_t index) = 0;
    /// Empties the array and frees its memory.
    virtual HRESULT RemoveAll() = 0;

protected:
    ~IArrayNum() = default;
};

}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::IArrayNum> {
    static constexpr IID value = ZT::IID_IArrayNum;
};
