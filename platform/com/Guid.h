/// @file
/// 128-bit identifiers of interfaces, classes and objects, and their text form.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>

#include <platform/base/Export.h>
#include <platform/base/ResultCodes.h>
#include <platform/base/Types.h>

/// A globally unique identifier: 16 bytes without padding.
struct _GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];

    friend constexpr bool operator==(const _GUID& a, const _GUID& b) {
        for (int i = 0; i < 8; ++i) {
            if (a.Data4[i] != b.Data4[i]) return false;
        }
        return a.Data1 == b.Data1 && a.Data2 == b.Data2 && a.Data3 == b.Data3;
    }
};
static_assert(sizeof(_GUID) == 16);

using GUID = _GUID;
using IID = GUID;
using CLSID = GUID;
using UUID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

/// All bits zero.
inline constexpr GUID GUID_NULL = {};
inline constexpr IID IID_NULL = {};
inline constexpr CLSID CLSID_NULL = {};

/// Whether two identifiers are the same.
constexpr bool IsEqualGUID(REFGUID a, REFGUID b) {
    return a == b;
}
constexpr bool IsEqualIID(REFIID a, REFIID b) {
    return a == b;
}
constexpr bool IsEqualCLSID(REFCLSID a, REFCLSID b) {
    return a == b;
}

template <>
struct std::hash<_GUID> {
    std::size_t operator()(const _GUID& id) const noexcept {
        std::uint64_t halves[2];
        std::memcpy(halves, &id, sizeof halves);
        return static_cast<std::size_t>((halves[0] * 0x9E3779B97F4A7C15u) ^ halves[1]);
    }
};

/// Characters of the text form with its terminating zero.
inline constexpr int kGuidTextSize = 39;

/// Writes "{6A7F5542-C2BD-480D-97B1-B90F2129774F}" with upper-case digits and a
/// terminating zero. Gives the number of characters written with the zero, 39, or
/// 0 with nothing written when `text` is null or `size` is below 39.
ZTP_API int StringFromGUID2(REFGUID id, OLECHAR* text, int size);

/// Reads the form that `StringFromGUID2` writes; digits of either case, the braces
/// are required and nothing may follow. A null `text` reads as `GUID_NULL`. Another
/// text gives `CO_E_CLASSSTRING` and `GUID_NULL`, a null `id` `E_INVALIDARG`.
ZTP_API HRESULT CLSIDFromString(const OLECHAR* text, CLSID* id);

/// The same as `CLSIDFromString`.
ZTP_API HRESULT IIDFromString(const OLECHAR* text, IID* id);

inline constexpr HRESULT CO_E_CLASSSTRING = ResultFromBits(0x800401F3);

/// Makes a new random identifier: version 4, variant 1. `E_INVALIDARG` for a null
/// `id`; `E_FAIL` with `GUID_NULL` when the system has no random bytes.
ZTP_API HRESULT CoCreateGuid(GUID* id);
