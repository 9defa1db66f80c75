// Files of blobs.

#pragma once

#include <platform/text/CString.h>
#include <zt/frame/Export.h>

class CFile;

namespace ZT::memory {

/// Opens an existing file as it is, without emptying it, or makes a new one.
bool OpenForWriting(CFile& file, const CString& path);

/// Puts `ending` behind the last point of `name`; false, with nothing changed, if there is
/// none.
ZT_API bool ReplaceEnding(CString& name, const char* ending);

}  // namespace ZT::memory
