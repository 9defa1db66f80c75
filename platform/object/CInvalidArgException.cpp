#include <platform/object/CInvalidArgException.h>
#include <platform/object/detail/StandingException.h>

IMPLEMENT_DYNAMIC(CInvalidArgException, CSimpleException)

CInvalidArgException::CInvalidArgException(BOOL autoDelete)
    : CSimpleException("An invalid argument was encountered.", autoDelete) {}

void AfxThrowInvalidArgException() {
    throw StandingException<CInvalidArgException>();
}
