/// @file
/// What the two interfaces of arrays of variants have in common.

#pragma once

#include <platform/com/Variant.h>
#include <zt/interfaces/InterfaceIds.h>

#include <cstdint>

namespace ZT {

/// The operations of `IArray2` and `IArray_PW`: those of `IArray`, with objects that travel in
/// variants of the type `VT_UNKNOWN`.
///
/// Without an array behind it every operation answers `E_UNEXPECTED` before it looks at its
/// arguments, save the two reserved ones. What is forwarded answers as the array does.
class VariantArrayOperations : public IUnknown {
public:
    /// Forwarded.
    virtual HRESULT GetCount(std::int32_t* count) = 0;
    /// The element at an index, with a reference added, as a `VT_UNKNOWN`. The variant is not
    /// cleared first: what it held is lost. A null `element` gives `DISP_E_PARAMNOTOPTIONAL`;
    /// an answer of the array other than 0 gives `E_UNEXPECTED` and leaves the variant.
    virtual HRESULT GetAt(std::int32_t index, VARIANT* element) = 0;
    /// Puts the object of a variant at an index. A null variant, or one whose type is not
    /// exactly `VT_UNKNOWN`, gives `DISP_E_PARAMNOTOPTIONAL`.
    virtual HRESULT SetAt(std::int32_t index, const VARIANT* element) = 0;
    /// Forwarded.
    virtual HRESULT ArrayOp4() = 0;
    /// Forwarded with the object of the variant. A null variant gives
    /// `DISP_E_PARAMNOTOPTIONAL`. With `VT_BYREF` the variant points to the object's pointer and
    /// is read through without a look: it must point somewhere, whatever else its type says.
    ///
    /// The type is deliberately tested loosely: its low byte has to share a bit with `VT_UNKNOWN`.
    /// So `VT_DISPATCH` passes, and also types that hold no object at all, such as `VT_I4` and
    /// `VT_BSTR`, whose value is then handed on as an object's pointer. One without any of the
    /// bits, such as `VT_I2`, gives `DISP_E_PARAMNOTOPTIONAL`.
    virtual HRESULT ArrayOp5(const VARIANT* object) = 0;
    /// Forwarded with the object of the variant. The type is tested as in `SetAt`.
    virtual HRESULT ArrayOp6(const VARIANT* object) = 0;
    /// Answers `ERROR_CALL_NOT_IMPLEMENTED`.
    virtual HRESULT ReservedA() = 0;
    /// Answers `ERROR_CALL_NOT_IMPLEMENTED`.
    virtual HRESULT ReservedB() = 0;
    /// The same as `SetAt`.
    virtual HRESULT SetAt2(std::int32_t index, const VARIANT* element) = 0;
    /// Forwarded.
    virtual HRESULT ArrayOp7() = 0;

protected:
    ~VariantArrayOperations() = default;
};

}  // namespace ZT
