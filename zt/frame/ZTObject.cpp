#include <platform/object/CInvalidArgException.h>
#include <zt/frame/ZTObject.h>
#include <cstring>

namespace ZT {

namespace {

// The pointer as a value that the compiler knows nothing of: it may otherwise take
// for granted that an operation is never called through a null pointer.
const ZTObject* Opaque(const ZTObject* object) {
    asm("" : "+r"(object));
    return object;
}

}  // namespace

ZTObject::ZTObject() = default;

ZTObject::ZTObject(const ZTObject&) : CObject() {}

ZTObject::~ZTObject() = default;

bool ZTObject::Execute(OpC&) {
    return false;
}

ZTObject* ZTObject::Clone() {
    return nullptr;
}

bool ZTObject::IsKindOf_ZT(const CRuntimeClass* c) const {
    const ZTObject* object = Opaque(this);
    if (object == nullptr) AfxThrowInvalidArgException();
    return IsDerivedFrom_ZT(object->GetRuntimeClass(), c);
}

bool ZTObject::IsDerivedFrom_ZT(const CRuntimeClass* a, const CRuntimeClass* b) {
    if (a == nullptr || b == nullptr) AfxThrowInvalidArgException();
    for (const CRuntimeClass* record = a; record != nullptr;) {
        if (std::strcmp(record->m_lpszClassName, b->m_lpszClassName) == 0) return true;
        if (record->m_pfnGetBaseClass == nullptr) return false;
        record = record->m_pfnGetBaseClass();
    }
    return false;
}

}  // namespace ZT
