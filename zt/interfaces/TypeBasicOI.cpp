#include <zt/interfaces/TypeBasicOI.h>

#include <platform/object/NewObject.h>
#include <zt/containers/HXString.h>
#include <zt/interfaces/NumArrayOI.h>
#include <zt/modules/DynaModule.h>

#include <memory>

namespace ZT {

TypeBasicOI::TypeBasicOI() : TypeBasicOI(0) {}

TypeBasicOI::TypeBasicOI(int type) : m_nType(type) {
    m_nRefCount = 0;
}

TypeBasicOI::TypeBasicOI(const TypeBasicOI& other) = default;
TypeBasicOI::~TypeBasicOI() = default;

HRESULT TypeBasicOI::QueryInterface(const GUID& iid, void** ppv) {
    return QueryPartsOrNative(*this, iid, ppv, m_xTypeBasic_ZT);
}

HRESULT TypeBasicOI::XTypeBasic_ZT::QueryInterface(REFIID iid, void** ppv) {
    if (ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    if (iid != IID_ITypeBasic_ZT) return Owner().QueryInterface(iid, ppv);
    *ppv = static_cast<ITypeBasic_ZT*>(this);
    AddRef();
    return S_OK;
}

HRESULT TypeBasicOI::XTypeBasic_ZT::GetType(std::int32_t* type) {
    if (type != nullptr) *type = Owner().m_nType;
    return S_OK;
}

HRESULT TypeBasicOI::XTypeBasic_ZT::GetTypeName(std::int32_t type, BSTR* name) {
    const CString text = DynaModule::GetTypeName(type);
    if (text.IsEmpty()) return DISP_E_PARAMNOTOPTIONAL;
    HXString::CStringToBSTR(text, name);
    return S_OK;
}

HRESULT TypeBasicOI::XTypeBasic_ZT::GetCompatibleTypes(IUnknown** types) {
    if (types == nullptr) return S_OK;
    CArray<int, int> compatible;
    DynaModule::GetCompatibleTypes(Owner().m_nType, compatible);
    std::unique_ptr<NumArrayOI> numbers(AfxNewObject<NumArrayOI>(true));
    NumArrayOI::Array* array = nullptr;
    numbers->QueryInterface(IID_NativeObject, reinterpret_cast<void**>(&array));
    array->SetSize(compatible.GetSize());
    for (INT_PTR i = 0; i < compatible.GetSize(); ++i) array->SetAt(i, compatible[i]);
    // The reference of the constructor deliberately stays, without an owner.
    return numbers.release()->QueryInterface(IID_IArrayNum, reinterpret_cast<void**>(types));
}

}  // namespace ZT
