/// @file
/// Result values of interface operations.

#pragma once

#include <cstdint>

/// 32 bits: negative for a failure, 0 or positive for a success.
using HRESULT = std::int32_t;
using SCODE = std::int32_t;

/// The `HRESULT` with the given bits.
constexpr HRESULT ResultFromBits(std::uint32_t bits) {
    return static_cast<HRESULT>(bits);
}

constexpr bool SUCCEEDED(HRESULT result) {
    return result >= 0;
}
constexpr bool FAILED(HRESULT result) {
    return result < 0;
}

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = ResultFromBits(0x80004001);
constexpr HRESULT E_NOINTERFACE = ResultFromBits(0x80004002);
constexpr HRESULT E_POINTER = ResultFromBits(0x80004003);
constexpr HRESULT E_ABORT = ResultFromBits(0x80004004);
constexpr HRESULT E_FAIL = ResultFromBits(0x80004005);
constexpr HRESULT E_UNEXPECTED = ResultFromBits(0x8000FFFF);
constexpr HRESULT REGDB_E_CLASSNOTREG = ResultFromBits(0x80040154);
constexpr HRESULT E_ACCESSDENIED = ResultFromBits(0x80070005);
constexpr HRESULT E_HANDLE = ResultFromBits(0x80070006);
constexpr HRESULT E_OUTOFMEMORY = ResultFromBits(0x8007000E);
constexpr HRESULT E_INVALIDARG = ResultFromBits(0x80070057);
constexpr HRESULT DISP_E_TYPEMISMATCH = ResultFromBits(0x80020005);
constexpr HRESULT DISP_E_BADVARTYPE = ResultFromBits(0x80020008);
constexpr HRESULT DISP_E_OVERFLOW = ResultFromBits(0x8002000A);
constexpr HRESULT DISP_E_BADINDEX = ResultFromBits(0x8002000B);
constexpr HRESULT DISP_E_ARRAYISLOCKED = ResultFromBits(0x8002000D);
constexpr HRESULT DISP_E_PARAMNOTOPTIONAL = ResultFromBits(0x8002000F);
