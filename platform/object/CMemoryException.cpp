#include <platform/object/CMemoryException.h>
#include <platform/object/detail/StandingException.h>

IMPLEMENT_DYNAMIC(CMemoryException, CSimpleException)

CMemoryException::CMemoryException(BOOL autoDelete)
    : CSimpleException("Out of memory.", autoDelete) {}

void AfxThrowMemoryException() {
    throw StandingException<CMemoryException>();
}
