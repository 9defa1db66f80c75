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

/// The loaded module of this name or path, without loading one and without adding a
/// reference; the program itself for a null name. A path names the module that was loaded
/// by it, also after another file took its place, or the one that was loaded from the
/// same file. A name without a slash is that of any loaded module's file, or the name
/// under which the system's search finds a loaded library. Null if there is none, with
/// ENOENT as the last error.
ZTP_API HMODULE GetModuleHandle(LPCTSTR name);

/// The same, by the name that says that the text is of bytes.
inline HMODULE GetModuleHandleA(LPCSTR name) {
    return GetModuleHandle(name);
}

/// The path of the module's file; of the program for a null module. Empty if
/// `module` is no loaded module.
ZTP_API CString AfxGetModuleFileName(HMODULE module);

/// Copies the path to `text`, cut to `size` bytes with the closing zero. The
/// result is the length of the text; `size`, and ENAMETOOLONG as the last error, if the
/// path was cut; 0 on failure, with EINVAL as the last error.
ZTP_API DWORD GetModuleFileName(HMODULE module, LPTSTR text, DWORD size);

/// The same, by the name that says that the text is of bytes.
inline DWORD GetModuleFileNameA(HMODULE module, LPSTR text, DWORD size) {
    return GetModuleFileName(module, text, size);
}

/// Loads a shared library, which runs the constructors of its static objects,
/// or adds a reference to one that is loaded. A name without a slash is looked
/// up as the system looks up libraries. Null on failure; the reason in words
/// then goes to `*reason`, if given, and a code to the last error: ENOENT for a path
/// where nothing is, ENOEXEC for a file that is no module or is cut off.
ZTP_API HMODULE AfxLoadLibrary(LPCTSTR path, CString* reason = nullptr);

/// Takes back one reference of `AfxLoadLibrary`; with the last one the module
/// is unloaded. False, with EINVAL as the last error, if `module` was not loaded by it.
ZTP_API BOOL AfxFreeLibrary(HMODULE module);

/// For `LoadLibraryExA`: the libraries that the module needs are looked for beside it
/// first. Here they are found by the run path that is written in the module, with this
/// flag and without it.
constexpr DWORD LOAD_WITH_ALTERED_SEARCH_PATH = 8;

/// `AfxLoadLibrary` under the name and with the arguments that other systems have.
/// `reserved` is null. Null, with EINVAL as the last error, for a flag other than
/// `LOAD_WITH_ALTERED_SEARCH_PATH`.
ZTP_API HMODULE LoadLibraryExA(LPCSTR path, HANDLE reserved, DWORD flags);

/// `AfxLoadLibrary` and `AfxFreeLibrary` under the names that other systems have.
inline HMODULE LoadLibraryA(LPCSTR path) {
    return AfxLoadLibrary(path);
}
inline BOOL FreeLibrary(HMODULE module) {
    return AfxFreeLibrary(module);
}

/// The address of what `module` exports as `name`, without C++ decoration of the
/// name; null if it exports no such thing.
ZTP_API void* GetProcAddress(HMODULE module, LPCSTR name);
