#include <platform/collections/CMapPtrToPtr.h>

IMPLEMENT_DYNAMIC(CMapPtrToPtr, CObject)

CMapPtrToPtr::CMapPtrToPtr(INT_PTR nBlockSize) : AssociationTable(nBlockSize) {}

CMapPtrToPtr::~CMapPtrToPtr() = default;

void CMapPtrToPtr::AssertValid() const {
    CObject::AssertValid();
    if (!IsConsistent()) AfxThrowInvalidArgException();
}
