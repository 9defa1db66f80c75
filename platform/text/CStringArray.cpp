#include <platform/text/CStringArray.h>

IMPLEMENT_DYNAMIC(CStringArray, CObject)

CStringArray::CStringArray() = default;

CStringArray::~CStringArray() = default;

void CStringArray::AssertValid() const {
    CObject::AssertValid();
    if (!IsConsistent()) AfxThrowInvalidArgException();
}
