#include <platform/object/CNotSupportedException.h>
#include <platform/object/detail/StandingException.h>

IMPLEMENT_DYNAMIC(CNotSupportedException, CSimpleException)

CNotSupportedException::CNotSupportedException(BOOL autoDelete)
    : CSimpleException("An attempt was made to use an operation that is not supported.",
                       autoDelete) {}

void AfxThrowNotSupportedException() {
    throw StandingException<CNotSupportedException>();
}
