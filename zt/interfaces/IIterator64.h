/// @file
/// The interface that walks a list. A `POSITION` is an opaque pointer, which comes without any
/// list.

#pragma once

#include <platform/collections/POSITION.h>
#include <zt/interfaces/InterfaceIds.h>

#include <cstdint>

namespace ZT {

/// Walks the positions of a list in either direction. The iterator keeps no place of its own:
/// the position that goes in and comes out is all there is of a walk.
///
/// A null argument gives `DISP_E_PARAMNOTOPTIONAL`. A walk ends with a null position and
/// `S_OK`; stepping on from a null position gives `DISP_E_PARAMNOTOPTIONAL`.
class IIterator64 : public IUnknown {
public:
    /// Number of elements.
    virtual HRESULT GetCount(std::int64_t* count) = 0;
    /// Position of the first element; null in an empty list.
    virtual HRESULT GetHeadPosition(POSITION* position) = 0;
    /// Moves `*position` to the next element; to null after the last.
    virtual HRESULT GetNext(POSITION* position) = 0;
    /// Position of the last element; null in an empty list.
    virtual HRESULT GetTailPosition(POSITION* position) = 0;
    /// Moves `*position` to the previous element; to null before the first.
    virtual HRESULT GetPrev(POSITION* position) = 0;

protected:
    ~IIterator64() = default;
};

}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::IIterator64> {
    static constexpr IID value = ZT::IID_IIterator64;
};
