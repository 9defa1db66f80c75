#include <platform/object/CDumpContext.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CObject.h>

constinit const CRuntimeClass CObject::classCObject = {
    "CObject", static_cast<INT>(sizeof(CObject)), AFX_NO_SCHEMA, nullptr, nullptr, nullptr,
    nullptr};

static const AFX_CLASSINIT afxRegistrationOfCObject(RUNTIME_CLASS(CObject));

CObject::CObject() = default;
CObject::~CObject() = default;

CRuntimeClass* CObject::GetThisClass() {
    return RUNTIME_CLASS(CObject);
}

CRuntimeClass* CObject::GetRuntimeClass() const {
    return RUNTIME_CLASS(CObject);
}

void CObject::Serialize(CArchive& /*ar*/) {}

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext& dc) const {
    dc << "a " << GetRuntimeClass()->m_lpszClassName << " at " << static_cast<const void*>(this)
       << "\n";
}

BOOL CObject::IsKindOf(const CRuntimeClass* base) const {
    return GetRuntimeClass()->IsDerivedFrom(base);
}

BOOL CObject::IsSerializable() const {
    return GetRuntimeClass()->m_wSchema != AFX_NO_SCHEMA;
}

CObject* AfxDynamicDownCast(CRuntimeClass* target, CObject* object) {
    return object && object->IsKindOf(target) ? object : nullptr;
}

const CObject* AfxDynamicDownCast(CRuntimeClass* target, const CObject* object) {
    return object && object->IsKindOf(target) ? object : nullptr;
}
