#include <platform/object/NewObject.h>
#include <zt/frame/ObjectType.h>
#include <zt/interfaces/ITypeBasic_ZT.h>
#include <zt/interfaces/NumArrayOI.h>
#include <zt/interfaces/TypeBasicOI.h>

#include <memory>

namespace ZT {

NumArrayOI::NumArrayOI() : NumArrayOI(false) {}

NumArrayOI::NumArrayOI(bool bOwner)
    : m_pArray(bOwner ? AfxNewObject<Array>() : nullptr), m_bOwner(bOwner) {}

// The array now has two owners, deliberately.
NumArrayOI::NumArrayOI(const NumArrayOI& other) = default;

NumArrayOI::~NumArrayOI() {
    if (m_bOwner) delete m_pArray;
}

HRESULT NumArrayOI::QueryInterface(const GUID& iid, void** ppv) {
    if (ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    if (iid == IID_NativeObject) {
        *ppv = m_pArray;
        return S_OK;
    }
    if (iid != IID_ITypeBasic_ZT) return QueryParts(*this, iid, ppv, m_xArrayNum, m_xObject_ZT);
    if (m_pArray == nullptr) return ERROR_INVALID_STATE;
    return AfxNewObject<TypeBasicOI>(eObjTypeNumericArray)->QueryInterface(iid, ppv);
}

HRESULT NumArrayOI::XArrayNum::QueryInterface(REFIID iid, void** ppv) {
    return QueryParts(Owner(), iid, ppv, *this);
}

HRESULT NumArrayOI::XArrayNum::GetCount(std::int32_t* count) {
    if (count != nullptr) *count = static_cast<std::int32_t>(Numbers().GetSize());
    return S_OK;
}

HRESULT NumArrayOI::XArrayNum::SetSize(std::int32_t size) {
    Numbers().SetSize(size);
    return S_OK;
}

HRESULT NumArrayOI::XArrayNum::GetAt(std::int32_t index, double* value) {
    const Array& numbers = Numbers();
    if (index < 0 || index >= numbers.GetSize()) return DISP_E_BADINDEX;
    if (value != nullptr) *value = numbers.GetData()[index];
    return S_OK;
}

HRESULT NumArrayOI::XArrayNum::SetAt(std::int32_t index, double value) {
    if (!IsBeforeLast(index)) return DISP_E_BADINDEX;
    Numbers().GetData()[index] = value;
    return S_OK;
}

HRESULT NumArrayOI::XArrayNum::InsertAt(std::int32_t index, double value) {
    if (!IsBeforeLast(index)) return DISP_E_BADINDEX;
    Numbers().InsertAt(index, value);
    return S_OK;
}

HRESULT NumArrayOI::XArrayNum::Add(double value) {
    Numbers().Add(value);
    return S_OK;
}

HRESULT NumArrayOI::XArrayNum::RemoveAt(std::int32_t index) {
    if (!IsBeforeLast(index)) return DISP_E_BADINDEX;
    Numbers().RemoveAt(index);
    return S_OK;
}

HRESULT NumArrayOI::XArrayNum::RemoveAll() {
    Numbers().RemoveAll();
    return S_OK;
}

HRESULT NumArrayOI::XObject_ZT::QueryInterface(REFIID iid, void** ppv) {
    return Owner().QueryInterface(iid, ppv);
}

HRESULT NumArrayOI::XObject_ZT::IsSame(IUnknown* other, std::int16_t* same) {
    if (same != nullptr) *same = other == this ? std::int16_t{-1} : std::int16_t{0};
    return S_OK;
}

HRESULT NumArrayOI::XObject_ZT::GetHandle(std::uint32_t* handle) {
    if (handle != nullptr) {
        *handle = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(this));
    }
    return S_OK;
}

HRESULT NumArrayOI::XObject_ZT::CopyFrom(IUnknown* other) {
    if (other == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    Array* const own = Owner().m_pArray;
    if (own == nullptr) return E_UNEXPECTED;
    void* native = nullptr;
    other->QueryInterface(IID_NativeObject, &native);
    if (native == nullptr) return E_UNEXPECTED;
    own->Copy(*static_cast<const Array*>(native));
    return S_OK;
}

HRESULT NumArrayOI::XObject_ZT::Clone(IUnknown** clone) {
    if (clone == nullptr) return S_OK;
    const Array* const own = Owner().m_pArray;
    if (own == nullptr) return E_UNEXPECTED;
    std::unique_ptr<NumArrayOI> made(AfxNewObject<NumArrayOI>(true));
    made->m_pArray->Copy(*own);
    made->AddRef();
    // The maker's reference stays too, deliberately.
    *clone = &made.release()->m_xObject_ZT;
    return S_OK;
}

HRESULT NumArrayOI::XObject_ZT::ReservedA() {
    return ERROR_CALL_NOT_IMPLEMENTED;
}

HRESULT NumArrayOI::XObject_ZT::ReservedB() {
    return ERROR_CALL_NOT_IMPLEMENTED;
}

}  // namespace ZT
