/// @file
/// Arrays that tell their own shape and travel in variants.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/ResultCodes.h>
#include <platform/base/Types.h>
#include <platform/com/VariantType.h>

/// One dimension: how many elements, and the index of the first.
struct tagSAFEARRAYBOUND {
    ULONG cElements;
    LONG lLbound;
};
using SAFEARRAYBOUND = tagSAFEARRAYBOUND;

/// @name What the elements own
/// Bits of `tagSAFEARRAY::fFeatures`.
/// @{
inline constexpr USHORT FADF_HAVEVARTYPE = 0x0080;
inline constexpr USHORT FADF_BSTR = 0x0100;
inline constexpr USHORT FADF_UNKNOWN = 0x0200;
inline constexpr USHORT FADF_DISPATCH = 0x0400;
inline constexpr USHORT FADF_VARIANT = 0x0800;
/// @}

/// An array of elements of one variant type over one or more dimensions.
///
/// The elements stand in one block, the first dimension running fastest. `rgsabound` holds
/// as many bounds as there are dimensions, the last dimension first. An array is made by
/// `SafeArrayCreate` and ended by `SafeArrayDestroy`; while `cLocks` is above 0 its block
/// stays and it cannot be destroyed.
struct tagSAFEARRAY {
    USHORT cDims;
    USHORT fFeatures;
    ULONG cbElements;
    ULONG cLocks;
    void* pvData;
    SAFEARRAYBOUND rgsabound[1];
};
using SAFEARRAY = tagSAFEARRAY;
using LPSAFEARRAY = SAFEARRAY*;

/// A new array of cleared elements. `bounds` has one entry a dimension, the first dimension
/// first. Null for a type that cannot be an element, no dimension, null bounds or no memory.
ZTP_API SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, const SAFEARRAYBOUND* bounds);

/// A new array of one dimension.
ZTP_API SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG elements);

/// Ends the elements and frees the array; null is allowed. `DISP_E_ARRAYISLOCKED`, with
/// nothing done, for a locked array. An element that cannot be ended, a variant that holds a
/// locked array, gives its failure and leaves the array standing.
ZTP_API HRESULT SafeArrayDestroy(SAFEARRAY* array);

/// A new array with copies of all elements, in `*copy`; unlocked. A null `array` gives null.
/// `E_INVALIDARG` for a null `copy`; `E_OUTOFMEMORY`.
ZTP_API HRESULT SafeArrayCopy(const SAFEARRAY* array, SAFEARRAY** copy);

/// Changes the number of elements and the lower bound of the last dimension. Elements that
/// stay keep their values; those that go are ended, new ones are cleared. `E_INVALIDARG` for
/// a null argument, `DISP_E_ARRAYISLOCKED`, `E_OUTOFMEMORY`.
ZTP_API HRESULT SafeArrayRedim(SAFEARRAY* array, const SAFEARRAYBOUND* bound);

/// @name Locks
/// `E_INVALIDARG` for a null argument; `E_UNEXPECTED` for one lock too many (65535 are
/// possible) or an unlocking without a lock.
/// @{
ZTP_API HRESULT SafeArrayLock(SAFEARRAY* array);
ZTP_API HRESULT SafeArrayUnlock(SAFEARRAY* array);
/// Locks the array and gives its block.
ZTP_API HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
ZTP_API HRESULT SafeArrayUnaccessData(SAFEARRAY* array);
/// @}

/// @name Shape
/// @{
/// Number of dimensions; 0 for null.
ZTP_API UINT SafeArrayGetDim(const SAFEARRAY* array);
/// Bytes of an element; 0 for null.
ZTP_API UINT SafeArrayGetElemsize(const SAFEARRAY* array);
/// The element type. `E_INVALIDARG` for a null argument.
ZTP_API HRESULT SafeArrayGetVartype(const SAFEARRAY* array, VARTYPE* type);
/// First index of a dimension, counted from 1. `E_INVALIDARG` for a null argument,
/// `DISP_E_BADINDEX` for no such dimension.
ZTP_API HRESULT SafeArrayGetLBound(const SAFEARRAY* array, UINT dimension, LONG* bound);
/// Last index of a dimension; one below the first when it has no elements.
ZTP_API HRESULT SafeArrayGetUBound(const SAFEARRAY* array, UINT dimension, LONG* bound);
/// @}

/// @name Elements
/// `indices` has one entry a dimension, the first dimension first. `E_INVALIDARG` for a null
/// argument, `DISP_E_BADINDEX` for an index out of bounds.
/// @{
/// Copies an element to `*element`, which must not own anything before. A string or variant
/// is a copy of the caller's own, an interface comes with a reference.
ZTP_API HRESULT SafeArrayGetElement(const SAFEARRAY* array, const LONG* indices, void* element);
/// Stores a copy of `*element`, ending what stood there. For strings and interfaces `element`
/// is the `BSTR` or the interface pointer itself, which may be null.
ZTP_API HRESULT SafeArrayPutElement(SAFEARRAY* array, const LONG* indices, const void* element);
/// Where an element stands; valid while the array is locked.
ZTP_API HRESULT SafeArrayPtrOfIndex(const SAFEARRAY* array, const LONG* indices, void** element);
/// @}
