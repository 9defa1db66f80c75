/// @file
/// Resources of loaded modules: bytes that a module carries in its file.
///
///     HRSRC found = FindResourceA(module, "Gauge", "TABLE");
///     const void* bytes = found ? LockResource(LoadResource(module, found)) : nullptr;
///     DWORD size = SizeofResource(module, found);
///
/// A resource is addressed by its type, its name and a language. A text is compared
/// without the case of ASCII letters. A number below 65536 in the place of a pointer
/// (`MAKEINTRESOURCEA`) is the text of "#" and its digits.
///
/// The bytes are those of the file from which the module was loaded, for as long as the
/// module is loaded, whatever becomes of the file. Two things end that. Whoever writes
/// into the file in its place changes the bytes, as he changes the module's code. And a
/// module has the bytes only from its first look-up on if it is neither the program itself
/// nor one that `AfxLoadLibrary` or one of its kin has loaded or `AfxInitExtensionModule`
/// has started: once another process has put another file in its place before that, nothing
/// is found (ESTALE). A damaged section answers as an absent one (EBADMSG).

#pragma once

#include <platform/modules/ModuleHandle.h>
#include <platform/modules/ResourceRecord.h>

struct HRSRC__;

/// The place of a resource in the directory of its module; null for none. It lasts as
/// long as the module is loaded.
using HRSRC = HRSRC__*;

/// A resource in memory; null for none.
using HGLOBAL = void*;

/// A number as the name or the type of a resource.
inline LPCSTR MAKEINTRESOURCEA(WORD number) {
    return reinterpret_cast<LPCSTR>(static_cast<UINT_PTR>(number));
}

/// Looks up a resource of a loaded module, of the program itself for a null module: the
/// one of language 1033, or else the one of the lowest language. Null, and a code in the
/// last error, if there is none: ENOENT if all is well but the resource is not there,
/// EINVAL for no module or a null text.
ZTP_API HRSRC FindResourceA(HMODULE module, LPCSTR name, LPCSTR type);

/// Looks up a resource in one language. Mind that the type stands before the name here.
ZTP_API HRSRC FindResourceExA(HMODULE module, LPCSTR type, LPCSTR name, WORD language);

/// The resource at `place`, which the same module's look-up gave; null, and EINVAL in the
/// last error, for any other place. Nothing is to be freed.
ZTP_API HGLOBAL LoadResource(HMODULE module, HRSRC place);

/// The first byte, at an address that 16 divides in a section that no other tool has
/// moved. The bytes can only be read. A resource of size 0 has an address too. Null for
/// null.
ZTP_API LPVOID LockResource(HGLOBAL resource);

/// The size in bytes; 0, and EINVAL in the last error, for a place of another module.
ZTP_API DWORD SizeofResource(HMODULE module, HRSRC place);
