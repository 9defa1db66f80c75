/// @file
/// Changing the resources in the file of a module.
///
///     HANDLE update = BeginUpdateResourceA("libgauge.so", FALSE);
///     if (update && UpdateResourceA(update, "TABLE", "Gauge", 1033, bytes, size))
///         changed = EndUpdateResourceA(update, FALSE);
///
/// The file shows the old resources or the new ones, all of them, and nothing in between,
/// also when the process or the machine stops at any moment, or the disk is full: a new
/// file is written beside the old one and takes its name. It has the mode of the old one,
/// and its owner as far as the system allows. A module that is loaded keeps its old file,
/// and so its old bytes. Updates of one file at the same time come one after the other,
/// and each keeps what the others did.
///
/// Only the section of resources changes: what is loaded of the module stays where it is
/// in the file, byte for byte. The module's own code does not have to fit this machine.

#pragma once

#include <platform/base/Export.h>
#include <platform/modules/ResourceRecord.h>

/// Begins changes on the file of a module; nothing is written before they end. With
/// `deleteExisting` all the resources that are there go away. Null on failure, with a code
/// in the last error: ENOENT for no such file, EACCES for a file that may not be written
/// to, also one that is read-only for its owner, ENOEXEC for one that is no whole module,
/// EBADMSG for a damaged section, which only `deleteExisting` passes over.
ZTP_API HANDLE BeginUpdateResourceA(LPCSTR path, BOOL deleteExisting);

/// Puts a copy of `size` bytes in the place of a resource, or adds one. Null data of size
/// 0 takes the resource away; data of size 0 at another address is a resource without
/// bytes. Types and names are texts, or numbers as in `MAKEINTRESOURCEA`. Mind that the
/// type stands before the name here. False on failure, with a code in the last error:
/// EINVAL for no open update, a null or empty text or null data of some size, ENOENT if
/// what is to be taken away is not there, ENOMEM. The update stays open then.
ZTP_API BOOL UpdateResourceA(HANDLE handle, LPCSTR type, LPCSTR name, WORD language,
                             const void* data, DWORD size);

/// Writes the changes, or drops them if `discard` is set, and ends the handle either way;
/// one that is never ended keeps its memory. False on failure, with a code in the last
/// error, and the file is as it was: EINVAL for no open update, ENOSPC or EFBIG for want of
/// room, or one of the codes of `BeginUpdateResourceA`.
ZTP_API BOOL EndUpdateResourceA(HANDLE handle, BOOL discard);
