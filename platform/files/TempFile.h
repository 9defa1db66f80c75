/// @file
/// Temporary files.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>
#include <platform/text/CString.h>

/// Longest path, with the closing zero, that the calls with a plain buffer write.
constexpr UINT MAX_PATH = 260;

/// The directory for temporary files, with a closing slash: what the environment
/// variable TMPDIR names if it is set and not empty, else "/tmp/". It is not
/// checked whether the directory exists.
ZTP_API CString AfxGetTempPath();

/// Copies the directory to `text` and answers its length. If it does not fit into
/// `size` bytes with the closing zero, nothing is copied and the result is the
/// size that is needed. A null `text` has no room.
ZTP_API DWORD GetTempPath(DWORD size, LPTSTR text);

/// Makes a new empty file in `directory` under a name that begins with `prefix`
/// and ends with ".tmp", for this user alone, and answers its path. No other file
/// had that name before, and nobody else is given it. The result is empty on
/// failure, with the reason in the last error: no such directory, no permission,
/// a slash in the prefix.
ZTP_API CString AfxGetTempFileName(LPCTSTR directory, LPCTSTR prefix);

/// `AfxGetTempFileName` into a buffer of `MAX_PATH` bytes. The result is not 0
/// for success, 0 on failure, also when the path is longer than the buffer. With
/// a `unique` that is not 0 the name is made from that number, no file is made,
/// and none is looked for.
ZTP_API UINT GetTempFileName(LPCTSTR directory, LPCTSTR prefix, UINT unique, LPTSTR text);
