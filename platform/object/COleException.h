/// @file
/// The exception that carries an `HRESULT`.

#pragma once

#include <platform/base/ResultCodes.h>
#include <platform/object/CException.h>

/// An operation failed with an `HRESULT`.
class ZTP_API COleException : public CException {
    DECLARE_DYNAMIC(COleException)

    COleException();

    /// The result that says what failed.
    SCODE m_sc = S_OK;

    /// The words of the well-known results; for others the number, as in
    /// "The operation failed with the result 0x80040154."
    BOOL GetErrorMessage(LPTSTR text, UINT size, UINT* helpContext = nullptr) const override;

    /// The `HRESULT` that stands for any exception at the border of an interface:
    /// the exception's own for a `COleException`, `E_OUTOFMEMORY` for the memory
    /// exception, `E_NOTIMPL` for the not-supported one, `E_UNEXPECTED` for all
    /// others. The exception is not ended. A null one gives `E_UNEXPECTED`.
    static SCODE Process(const CException* exception);
};

/// Raises a `COleException` with the given result.
[[noreturn]] ZTP_API void AfxThrowOleException(HRESULT result);
