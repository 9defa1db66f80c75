/// @file
/// The base of the exceptions that carry nothing but a fixed text.

#pragma once

#include <platform/object/CException.h>

/// The base of the exceptions that carry nothing but a fixed text. Those that
/// the framework raises stand outside the heap, one object a class.
class ZTP_API CSimpleException : public CException {
    DECLARE_DYNAMIC(CSimpleException)

    /// The fixed text.
    BOOL GetErrorMessage(LPTSTR text, UINT size, UINT* helpContext = nullptr) const override;

protected:
    /// `message` is kept as a pointer and must stay.
    explicit CSimpleException(LPCSTR message, BOOL autoDelete = TRUE);

private:
    LPCSTR m_message;
};
