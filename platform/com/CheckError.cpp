#include <platform/com/CheckError.h>

#include <platform/object/CMemoryException.h>
#include <platform/object/COleException.h>

void AfxCheckError(SCODE result) {
    if (SUCCEEDED(result)) return;
    if (result == E_OUTOFMEMORY) AfxThrowMemoryException();
    AfxThrowOleException(result);
}
