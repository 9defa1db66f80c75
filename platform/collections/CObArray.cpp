#include <platform/collections/CObArray.h>
#include <platform/collections/SerializeElements.h>
#include <platform/files/CArchive.h>

IMPLEMENT_SERIAL(CObArray, CObject, 0)

CObArray::CObArray() = default;

CObArray::~CObArray() = default;

void CObArray::Serialize(CArchive& ar) {
    CObject::Serialize(ar);
    const INT_PTR count = Collections::SerializeCount(ar, m_nSize);
    if (ar.IsStoring()) {
        for (const CObject* object : *this) ar << object;
        return;
    }
    RemoveAll();
    for (INT_PTR i = 0; i < count; ++i) {
        CObject* object = nullptr;
        ar >> object;
        Add(object);
    }
}

void CObArray::AssertValid() const {
    CObject::AssertValid();
    if (!IsConsistent()) AfxThrowInvalidArgException();
    for (const CObject* object : *this) {
        if (object != nullptr) object->AssertValid();
    }
}
