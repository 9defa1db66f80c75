/// @file
/// The exception of archives.

#pragma once

#include <platform/object/CException.h>
#include <platform/text/CString.h>

/// Reading or writing an archive failed.
class ZTP_API CArchiveException : public CException {
    DECLARE_DYNAMIC(CArchiveException)

    /// Why. The numbers are fixed.
    enum : INT {
        none = 0,              ///< no failure
        genericException = 1,  ///< unspecified
        readOnly = 2,          ///< writing to an archive that is loading
        endOfFile = 3,         ///< the file ended within a value
        writeOnly = 4,         ///< reading from an archive that is storing
        badIndex = 5,          ///< a reference to no object, or more objects than an archive holds
        badClass = 6,          ///< an object of an unexpected or unknown class
        badSchema = 7,         ///< an object of another version of its class
        bufferFull = 8,        ///< the data do not fit into the buffer
    };

    explicit CArchiveException(INT cause = none, LPCTSTR archiveName = nullptr);

    /// The cause in words, with the name of the archive.
    BOOL GetErrorMessage(LPTSTR text, UINT size, UINT* helpContext = nullptr) const override;

    /// One of the causes above.
    INT m_cause;
    /// The archive's file name; empty for an archive without one.
    CString m_strFileName;
};

/// Raises a `CArchiveException`. A null `archiveName` counts as an empty one.
[[noreturn]] ZTP_API void AfxThrowArchiveException(INT cause, LPCTSTR archiveName = nullptr);
