#include <platform/collections/CObList.h>
#include <platform/collections/SerializeElements.h>
#include <platform/files/CArchive.h>

IMPLEMENT_SERIAL(CObList, CObject, 0)

CObList::CObList(INT_PTR nBlockSize) : NodeChain(nBlockSize) {}

CObList::~CObList() = default;

void CObList::Serialize(CArchive& ar) {
    CObject::Serialize(ar);
    const INT_PTR count = Collections::SerializeCount(ar, m_nCount);
    if (ar.IsStoring()) {
        for (const CObject* object : *this) ar << object;
        return;
    }
    for (INT_PTR i = 0; i < count; ++i) {
        CObject* object = nullptr;
        ar >> object;
        AddTail(object);
    }
}

void CObList::AssertValid() const {
    CObject::AssertValid();
    if (!IsConsistent()) AfxThrowInvalidArgException();
    for (const CObject* object : *this) {
        if (object != nullptr) object->AssertValid();
    }
}
