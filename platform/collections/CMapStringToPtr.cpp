#include <platform/collections/CMapStringToPtr.h>

IMPLEMENT_DYNAMIC(CMapStringToPtr, CObject)

CMapStringToPtr::CMapStringToPtr(INT_PTR nBlockSize) : AssociationTable(nBlockSize) {}

CMapStringToPtr::~CMapStringToPtr() = default;

bool CMapStringToPtr::LookupKey(LPCTSTR key, LPCTSTR& rKey) const {
    const CPair* pair = PLookup(key);
    if (pair == nullptr) return false;
    rKey = pair->key;
    return true;
}

void CMapStringToPtr::AssertValid() const {
    CObject::AssertValid();
    if (!IsConsistent()) AfxThrowInvalidArgException();
}
