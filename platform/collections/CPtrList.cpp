#include <platform/collections/CPtrList.h>

IMPLEMENT_DYNAMIC(CPtrList, CObject)

CPtrList::CPtrList(INT_PTR nBlockSize) : NodeChain(nBlockSize) {}

CPtrList::~CPtrList() = default;

void CPtrList::AssertValid() const {
    CObject::AssertValid();
    if (!IsConsistent()) AfxThrowInvalidArgException();
}
