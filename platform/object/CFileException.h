/// @file
/// The exception of files.

#pragma once

#include <platform/object/CException.h>
#include <platform/text/CString.h>

/// An operation on a file failed.
class ZTP_API CFileException : public CException {
    DECLARE_DYNAMIC(CFileException)

    /// Why. The numbers are fixed.
    enum : INT {
        none = 0,              ///< no failure
        genericException = 1,  ///< unspecified
        fileNotFound = 2,      ///< there is no such file
        badPath = 3,           ///< a directory of the path does not exist, or the path is not valid
        tooManyOpenFiles = 4,  ///< no descriptor is left
        accessDenied = 5,      ///< not permitted
        invalidFile = 6,       ///< the handle names no open file
        removeCurrentDir = 7,  ///< the current directory cannot be removed
        directoryFull = 8,     ///< no room for another entry
        badSeek = 9,           ///< a position before the start
        hardIO = 10,           ///< the device failed
        sharingViolation = 11,  ///< another one has the file open and does not share it
        lockViolation = 12,     ///< another one has locked the range
        diskFull = 13,          ///< no room, a quota, or a limit on the size
        endOfFile = 14,         ///< the end was reached
    };

    /// `osError` is the system's code, -1 where there is none.
    explicit CFileException(INT cause = none, LONG osError = -1, LPCTSTR fileName = nullptr);

    /// The cause in words, with the name of the file.
    BOOL GetErrorMessage(LPTSTR text, UINT size, UINT* helpContext = nullptr) const override;

    /// The cause that stands for a value of `errno`; `genericException` for one
    /// without a cause of its own.
    static INT ErrnoToException(INT error);

    /// The cause that stands for a code of `GetLastError`, which is the same here.
    static INT OsErrorToException(LONG error);

    /// Raises the exception for a value of `errno`.
    [[noreturn]] static void ThrowErrno(INT error, LPCTSTR fileName = nullptr);

    /// Raises the exception for a code of `GetLastError`.
    [[noreturn]] static void ThrowOsError(LONG error, LPCTSTR fileName = nullptr);

    /// One of the causes above.
    INT m_cause;
    /// The system's code, or -1.
    LONG m_lOsError;
    /// The file's path; empty if it has none.
    CString m_strFileName;
};

/// Raises a `CFileException`. A null `fileName` counts as an empty one.
[[noreturn]] ZTP_API void AfxThrowFileException(INT cause, LONG osError = -1,
                                                LPCTSTR fileName = nullptr);
