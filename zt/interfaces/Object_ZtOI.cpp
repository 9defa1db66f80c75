#include <zt/interfaces/Object_ZtOI.h>

namespace ZT {

Object_ZtOI::Object_ZtOI() : Object_ZtOI(nullptr) {}

Object_ZtOI::Object_ZtOI(RefObj* p) : m_pObject(p) {
    if (p != nullptr) p->AddRef();
}

// No AddRef on the wrapped object, deliberately.
Object_ZtOI::Object_ZtOI(const Object_ZtOI& other) = default;

Object_ZtOI::~Object_ZtOI() {
    if (m_pObject != nullptr) m_pObject->Release();
    m_pObject = nullptr;
}

HRESULT Object_ZtOI::QueryInterface(const GUID& iid, void** ppv) {
    const GUID& named = iid == IID_IUnknown ? IID_IObject_ZT : iid;
    return QueryNamedPartsOr(*this, m_pObject, named, ppv, m_xObject_ZT);
}

HRESULT Object_ZtOI::XObject_ZT::IsSame(IUnknown* other, std::int16_t* same) {
    RefObj* const object = Owner().m_pObject;
    if (object == nullptr) return E_UNEXPECTED;
    if (same == nullptr || *same != 0) return S_OK;
    void* found = nullptr;
    // The reference that the query adds is deliberately not released.
    object->QueryInterface(IID_IObject_ZT, &found);
    *same = found == other ? 1 : 0;
    return S_OK;
}

HRESULT Object_ZtOI::XObject_ZT::GetHandle(std::uint32_t* handle) {
    Object_ZtOI& owner = Owner();
    if (owner.m_pObject == nullptr) return E_UNEXPECTED;
    if (handle != nullptr) {
        *handle = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(&owner));
    }
    return S_OK;
}

HRESULT Object_ZtOI::XObject_ZT::CopyFrom(IUnknown*) {
    return ERROR_CALL_NOT_IMPLEMENTED;
}

HRESULT Object_ZtOI::XObject_ZT::Clone(IUnknown**) {
    return ERROR_CALL_NOT_IMPLEMENTED;
}

HRESULT Object_ZtOI::XObject_ZT::ReservedA() {
    return ERROR_CALL_NOT_IMPLEMENTED;
}

HRESULT Object_ZtOI::XObject_ZT::ReservedB() {
    return ERROR_CALL_NOT_IMPLEMENTED;
}

}  // namespace ZT
