#include <platform/collections/CPtrArray.h>

IMPLEMENT_DYNAMIC(CPtrArray, CObject)

CPtrArray::CPtrArray() = default;

CPtrArray::~CPtrArray() = default;

void CPtrArray::AssertValid() const {
    CObject::AssertValid();
    if (!IsConsistent()) AfxThrowInvalidArgException();
}
