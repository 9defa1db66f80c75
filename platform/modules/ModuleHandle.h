/// @file
/// Handles of the shared modules of the running program.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>

struct HINSTANCE__;

/// A module of the running program: the program itself or a shared library. The
/// value is the address at which the module is mapped, so it names the module
/// for as long as the module stays loaded. Null is no module.
using HINSTANCE = HINSTANCE__*;
using HMODULE = HINSTANCE;

class CString;

/// The module in which `address`, of a function or of static data, lies; null if
/// it lies in none.
ZTP_API HMODULE AfxModuleFromAddress(const void* address);

/// The loaded module of this name or path, as the loader would find it, without
/// loading one; the program itself for a null name. Null if there is none.
ZTP_API HMODULE GetModuleHandle(LPCTSTR name);

/// The path of the module's file; of the program for a null module. Empty if
/// `module` is no loaded module.
ZTP_API CString AfxGetModuleFileName(HMODULE module);

/// Copies the path to `text`, cut to `size` bytes with the closing zero. The
/// result is the length of the text, `size` if the path was cut, 0 on failure.
ZTP_API DWORD GetModuleFileName(HMODULE module, LPTSTR text, DWORD size);

/// Loads a shared library, which runs the constructors of its static objects,
/// or adds a reference to one that is loaded. A name without a slash is looked
/// up as the system looks up libraries. Null on failure; the reason in words
/// then goes to `*reason`, if given, and a code to the last error.
ZTP_API HMODULE AfxLoadLibrary(LPCTSTR path, CString* reason = nullptr);

/// Takes back one reference of `AfxLoadLibrary`; with the last one the module
/// is unloaded. False if `module` was not loaded by it.
ZTP_API BOOL AfxFreeLibrary(HMODULE module);

/// The address of what `module` exports as `name`, without C++ decoration of the
/// name; null if it exports no such thing.
ZTP_API void* GetProcAddress(HMODULE module, LPCSTR name);
