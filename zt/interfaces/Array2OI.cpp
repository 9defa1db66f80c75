#include <platform/object/NewObject.h>
#include <zt/interfaces/Array2OI.h>

namespace ZT {

namespace {

bool HoldsObject(const VARIANT* variant) {
    return variant != nullptr && variant->vt == VT_UNKNOWN;
}

// Deliberately loose: any bit in common passes, and with it types that hold no object.
bool PassesForObject(const VARIANT* variant) {
    return variant != nullptr && (variant->vt & VT_UNKNOWN) != 0;
}

}  // namespace

Array2OI::Array2OI() : Array2OI(nullptr) {}

Array2OI::Array2OI(IArray* p) : m_pArray(p) {
    m_nRefCount = 0;
}

Array2OI::Array2OI(const Array2OI& other) = default;

Array2OI::~Array2OI() = default;

HRESULT Array2OI::Create(IArray* p, void** ppv) {
    if (p == nullptr || ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    auto* const made = AfxNewObject<Array2OI>(p);
    return made->m_xArray2.QueryInterface(IID_IArray2, ppv);
}

HRESULT Array2OI::QueryInterface(const GUID& iid, void** ppv) {
    return QueryPartsOrNative(*this, iid, ppv, m_xArray2, m_xArray_PW);
}

HRESULT Array2OI::XArray2::QueryInterface(REFIID iid, void** ppv) {
    if (ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    if (Array() == nullptr) return E_UNEXPECTED;
    if (iid != IID_IArray2) return Array()->QueryInterface(iid, ppv);
    *ppv = static_cast<IArray2*>(this);
    AddRef();
    return S_OK;
}

ULONG Array2OI::XArray2::AddRef() {
    if (Array() == nullptr) return 1;
    Owner().AddRef();
    return Array()->AddRef();
}

ULONG Array2OI::XArray2::Release() {
    if (Array() == nullptr) return 1;
    const ULONG left = Array()->Release();
    Owner().Release();
    return left;
}

HRESULT Array2OI::XArray2::GetCount(std::int32_t* count) {
    if (Array() == nullptr) return E_UNEXPECTED;
    return Array()->GetCount(count);
}

HRESULT Array2OI::XArray2::GetAt(std::int32_t index, VARIANT* element) {
    if (Array() == nullptr) return E_UNEXPECTED;
    if (element == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    IUnknown* object = nullptr;
    if (Array()->GetAt(index, &object) != S_OK) return E_UNEXPECTED;
    element->vt = VT_UNKNOWN;
    element->punkVal = object;
    return S_OK;
}

HRESULT Array2OI::XArray2::SetAt(std::int32_t index, const VARIANT* element) {
    if (Array() == nullptr) return E_UNEXPECTED;
    if (!HoldsObject(element)) return DISP_E_PARAMNOTOPTIONAL;
    return Array()->SetAt(index, element->punkVal);
}

HRESULT Array2OI::XArray2::ArrayOp4() {
    if (Array() == nullptr) return E_UNEXPECTED;
    return Array()->ArrayOp4();
}

HRESULT Array2OI::XArray2::ArrayOp5(const VARIANT* object) {
    if (Array() == nullptr) return E_UNEXPECTED;
    if (!PassesForObject(object)) return DISP_E_PARAMNOTOPTIONAL;
    const bool isReference = (object->vt & VT_BYREF) != 0;
    return Array()->ArrayOp5(isReference ? *object->ppunkVal : object->punkVal);
}

HRESULT Array2OI::XArray2::ArrayOp6(const VARIANT* object) {
    if (Array() == nullptr) return E_UNEXPECTED;
    if (!HoldsObject(object)) return DISP_E_PARAMNOTOPTIONAL;
    return Array()->ArrayOp6(object->punkVal);
}

HRESULT Array2OI::XArray2::ReservedA() {
    return ERROR_CALL_NOT_IMPLEMENTED;
}

HRESULT Array2OI::XArray2::ReservedB() {
    return ERROR_CALL_NOT_IMPLEMENTED;
}

HRESULT Array2OI::XArray2::SetAt2(std::int32_t index, const VARIANT* element) {
    return SetAt(index, element);
}

HRESULT Array2OI::XArray2::ArrayOp7() {
    if (Array() == nullptr) return E_UNEXPECTED;
    return Array()->ArrayOp7();
}

HRESULT Array2OI::XArray_PW::QueryInterface(REFIID iid, void** ppv) {
    return Other().QueryInterface(iid, ppv);
}

ULONG Array2OI::XArray_PW::AddRef() {
    return Other().AddRef();
}

ULONG Array2OI::XArray_PW::Release() {
    return Other().Release();
}

HRESULT Array2OI::XArray_PW::GetCount(std::int32_t* count) {
    return Other().GetCount(count);
}

HRESULT Array2OI::XArray_PW::GetAt(std::int32_t index, VARIANT* element) {
    return Other().GetAt(index, element);
}

HRESULT Array2OI::XArray_PW::SetAt(std::int32_t index, const VARIANT* element) {
    return Other().SetAt(index, element);
}

HRESULT Array2OI::XArray_PW::ArrayOp4() {
    return Other().ArrayOp4();
}

HRESULT Array2OI::XArray_PW::ArrayOp5(const VARIANT* object) {
    return Other().ArrayOp5(object);
}

HRESULT Array2OI::XArray_PW::ArrayOp6(const VARIANT* object) {
    return Other().ArrayOp6(object);
}

HRESULT Array2OI::XArray_PW::ReservedA() {
    return Other().ReservedA();
}

HRESULT Array2OI::XArray_PW::ReservedB() {
    return Other().ReservedB();
}

HRESULT Array2OI::XArray_PW::SetAt2(std::int32_t index, const VARIANT* element) {
    return Other().SetAt2(index, element);
}

HRESULT Array2OI::XArray_PW::ArrayOp7() {
    return Other().ArrayOp7();
}

std::int32_t zglFindObj(IArray* pArray, IUnknown* pObj) {
    if (pArray == nullptr) return -1;
    std::int32_t count = 0;
    pArray->GetCount(&count);
    for (std::int32_t i = 0; i < count; ++i) {
        IUnknown* element = nullptr;
        pArray->GetAt(i, &element);
        if (element != nullptr) element->Release();
        if (element == pObj) return i;
    }
    return -1;
}

}  // namespace ZT
