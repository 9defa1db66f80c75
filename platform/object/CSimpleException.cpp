#include <platform/object/CSimpleException.h>

IMPLEMENT_DYNAMIC(CSimpleException, CException)

CSimpleException::CSimpleException(LPCSTR message, BOOL autoDelete)
    : CException(autoDelete), m_message(message) {}

BOOL CSimpleException::GetErrorMessage(LPTSTR text, UINT size, UINT* helpContext) const {
    return CopyMessage(m_message, text, size, helpContext);
}
