#include <platform/text/CStringArray.h>

#include <platform/files/CArchive.h>

IMPLEMENT_SERIAL(CStringArray, CObject, 0)

CStringArray::CStringArray() = default;

CStringArray::~CStringArray() = default;

void CStringArray::AssertValid() const {
    CObject::AssertValid();
    if (!IsConsistent()) AfxThrowInvalidArgException();
}

void CStringArray::Serialize(CArchive& ar) {
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar.WriteCount(static_cast<DWORD_PTR>(GetSize()));
        for (const CString& text : *this) ar << text;
        return;
    }
    // A broken record may promise any number of texts: each is read before it gets room.
    RemoveAll();
    for (DWORD_PTR left = ar.ReadCount(); left > 0; --left) {
        CString text;
        ar >> text;
        Add(text);
    }
}
