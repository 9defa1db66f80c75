/// @file
/// The base of the framework's exceptions.

#pragma once

#include <platform/object/CObject.h>

/// The base of the framework's exceptions.
///
/// An exception is thrown by pointer and caught by pointer, as `CException*`, as
/// `CObject*` or as its own class. Whoever catches it for good ends it with
/// `Delete`, and never with `delete`: some exceptions stand outside the heap, so
/// that raising them needs no memory.
///
///     try {
///         file.Write(data, size);
///     } catch (CFileException* e) {
///         ...
///         e->Delete();
///     }
class ZTP_API CException : public CObject {
    DECLARE_DYNAMIC(CException)

    /// An exception on the heap, which `Delete` frees.
    CException();

    /// An exception that `Delete` frees only if `autoDelete` is set.
    explicit CException(BOOL autoDelete);

    /// Ends the exception: frees it if it stands on the heap.
    void Delete();

    /// Copies the reason in words to `text`, cut to `size` bytes with the closing
    /// zero and never within a character. `*helpContext`, if given, becomes 0.
    /// False without a text or without room; the base has no text and then stores
    /// the empty one.
    virtual BOOL GetErrorMessage(LPTSTR text, UINT size, UINT* helpContext = nullptr) const;

    /// Tells the reason to the user: prints it on standard error, as one line.
    /// An exception without a text says so. `type` and `messageId` choose a
    /// message box and its text elsewhere and are not used. The result is 1.
    virtual INT ReportError(UINT type = 0, UINT messageId = 0);

protected:
    /// `GetErrorMessage` for a class that has the text.
    static BOOL CopyMessage(LPCSTR message, LPTSTR text, UINT size, UINT* helpContext);

    /// Whether `Delete` frees the object.
    BOOL m_bAutoDelete;
};
