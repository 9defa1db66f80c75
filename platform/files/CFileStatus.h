/// @file
/// What the system knows of a file without reading it.

#pragma once

#include <platform/base/Types.h>
#include <platform/text/CString.h>
#include <platform/time/CTime.h>

/// What the system knows of a file without reading it.
struct CFileStatus {
    /// When the file was made; the last change of its entry where the file system
    /// does not keep that.
    CTime m_ctime;
    /// Last change of the content.
    CTime m_mtime;
    /// Last reading.
    CTime m_atime;
    /// Bytes.
    ULONGLONG m_size = 0;
    /// Bits of `CFile::Attribute`.
    BYTE m_attribute = 0;
    /// The full path.
    CString m_szFullName;
};
