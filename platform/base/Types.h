/// @file
/// Fixed-width types under the names that the framework's users know.
///
/// The widths are those of the names, not those of the language's types on this
/// system: a `LONG` has 32 bits although a `long` has 64.

#pragma once

#include <cstddef>
#include <cstdint>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using QWORD = std::uint64_t;
using BOOL = std::int32_t;
using INT = std::int32_t;
using UINT = std::uint32_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;

/// Signed and unsigned integers as wide as a pointer; counts and indices of the
/// collections are `INT_PTR`.
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;

/// A count of bytes in memory.
using SIZE_T = std::size_t;

using LPVOID = void*;

/// Something of the platform's that is only handed back to it.
using HANDLE = void*;

using LPSTR = char*;
using LPCSTR = const char*;
using LPTSTR = char*;
using LPCTSTR = const char*;
using TCHAR = char;

/// A wide character; text crosses as UTF-32 here, one unit a code point.
using WCHAR = wchar_t;
using OLECHAR = wchar_t;
using LPWSTR = wchar_t*;
using LPCWSTR = const wchar_t*;

/// The two values of a `BOOL`. Another library's macros of these names win, so
/// that headers can be included in any order.
#ifndef TRUE
constexpr BOOL TRUE = 1;
#endif
#ifndef FALSE
constexpr BOOL FALSE = 0;
#endif
