/// @file
/// A value of a type that is known at run time.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/ResultCodes.h>
#include <platform/base/Types.h>
#include <platform/com/Bstr.h>
#include <platform/com/IUnknown.h>
#include <platform/com/SafeArray.h>
#include <platform/com/VariantType.h>

/// A type word and the value that it names.
///
/// A plain record: nothing is initialised or freed by itself. `VariantInit` makes one
/// empty, `VariantClear` ends what it owns: a string, an interface reference or an array.
/// With `VT_BYREF` the value is a pointer to memory of another, which is never freed; with
/// the type word `VT_BYREF` alone it is a raw pointer.
struct tagVARIANT {
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union {
        LONGLONG llVal;
        LONG lVal;
        BYTE bVal;
        SHORT iVal;
        float fltVal;
        double dblVal;
        VARIANT_BOOL boolVal;
        SCODE scode;
        DATE date;
        BSTR bstrVal;
        IUnknown* punkVal;
        SAFEARRAY* parray;
        signed char cVal;
        USHORT uiVal;
        ULONG ulVal;
        ULONGLONG ullVal;
        INT intVal;
        UINT uintVal;

        void* byref;
        BYTE* pbVal;
        SHORT* piVal;
        LONG* plVal;
        LONGLONG* pllVal;
        float* pfltVal;
        double* pdblVal;
        VARIANT_BOOL* pboolVal;
        SCODE* pscode;
        DATE* pdate;
        BSTR* pbstrVal;
        IUnknown** ppunkVal;
        SAFEARRAY** pparray;
        tagVARIANT* pvarVal;
        signed char* pcVal;
        USHORT* puiVal;
        ULONG* pulVal;
        ULONGLONG* pullVal;
        INT* pintVal;
        UINT* puintVal;
    };
};
using VARIANT = tagVARIANT;
using VARIANTARG = VARIANT;
using LPVARIANT = VARIANT*;
using LPCVARIANT = const VARIANT*;

/// In `VariantChangeType`: a truth value becomes "True" or "False" instead of "-1" or "0".
inline constexpr USHORT VARIANT_ALPHABOOL = 0x0002;

/// Makes the variant empty without looking at what it held. Null is allowed.
ZTP_API void VariantInit(VARIANT* variant);

/// Ends what the variant owns and makes it empty. `E_INVALIDARG` for null,
/// `DISP_E_BADVARTYPE` for a type word that has no meaning and `DISP_E_ARRAYISLOCKED` for
/// a locked array; the variant is then unchanged.
ZTP_API HRESULT VariantClear(VARIANT* variant);

/// Clears `to` and makes it a copy of `from`: strings and arrays with all elements are
/// copied, interfaces get a reference; pointers of `VT_BYREF` are copied as they stand. The
/// two may be one. On a failure, those of `VariantClear` and `E_OUTOFMEMORY`, `to` is
/// unchanged.
ZTP_API HRESULT VariantCopy(VARIANT* to, const VARIANT* from);

/// As `VariantCopy`, but copies the value that a `VT_BYREF` variant points to. A null
/// pointer, a raw pointer, or a reference to a reference to a variant gives
/// `E_INVALIDARG`.
ZTP_API HRESULT VariantCopyInd(VARIANT* to, const VARIANT* from);

/// Clears `to` and makes it the value of `from` in the type `type`. The two may be one; a
/// reference is followed first. On a failure `to` is unchanged.
///
/// Numbers, dates as numbers, truth values, texts and the empty variant, which is 0 and the
/// empty text, turn into one another. A fraction is rounded to the nearest integer, a half
/// to the even one. True is -1, or all bits in an unsigned type; any number but 0 is true,
/// and so is the text "True" in either case. A text is read as a decimal number with a point,
/// white space around it allowed; numbers are written with up to 15 digits (7 for a `VT_R4`)
/// and a point, whatever the process's locale.
///
/// `DISP_E_OVERFLOW` when the value does not fit, `DISP_E_TYPEMISMATCH` when there is no
/// conversion (a null variant, a text that is no number, a date from or to a text, an array,
/// an interface), `DISP_E_BADVARTYPE` for a type word without meaning, `E_OUTOFMEMORY`.
ZTP_API HRESULT VariantChangeType(VARIANT* to, const VARIANT* from, USHORT flags, VARTYPE type);
