/// @file
/// The numbers of the variant types.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>

/// What a variant holds: one number of `VARENUM`, combined with `VT_ARRAY` for an array of
/// that type and with `VT_BYREF` for a pointer to it.
using VARTYPE = USHORT;

/// Types of variants and of array elements. The gaps are types that are not in use here.
enum VARENUM : VARTYPE {
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_ARRAY = 0x2000,
    VT_BYREF = 0x4000,
    VT_TYPEMASK = 0x0FFF,
};

/// Whether a type word has a meaning: a type alone, with `VT_ARRAY`, with `VT_BYREF` or with
/// both. `VT_VARIANT` is none alone, `VT_NULL` is one only alone, and `VT_EMPTY` goes with
/// `VT_BYREF` only, as a raw pointer.
ZTP_API bool IsVariantType(VARTYPE word);

/// Truth in a variant: all bits or none.
using VARIANT_BOOL = SHORT;
inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

/// Days since 30 December 1899, midnight.
using DATE = double;
