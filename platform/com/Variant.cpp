#include <platform/com/Variant.h>

namespace {

constexpr VARTYPE kFlags = VT_ARRAY | VT_BYREF;

bool IsScalarType(VARTYPE type) {
    switch (type) {
        case VT_I1:
        case VT_UI1:
        case VT_I2:
        case VT_UI2:
        case VT_I4:
        case VT_UI4:
        case VT_I8:
        case VT_UI8:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_R8:
        case VT_DATE:
        case VT_BOOL:
        case VT_ERROR:
        case VT_BSTR:
        case VT_UNKNOWN:
        case VT_DISPATCH:
            return true;
        default:
            return false;
    }
}

HRESULT CopyString(VARIANT& to) {
    if (to.bstrVal == nullptr) return S_OK;
    to.bstrVal = SysAllocStringByteLen(reinterpret_cast<const char*>(to.bstrVal),
                                       SysStringByteLen(to.bstrVal));
    return to.bstrVal == nullptr ? E_OUTOFMEMORY : S_OK;
}

bool HoldsInterface(VARTYPE word) {
    return word == VT_UNKNOWN || word == VT_DISPATCH;
}

// Turns the bits of another variant into a value of its own.
HRESULT MakeOwn(VARIANT& to) {
    if ((to.vt & VT_BYREF) != 0) return S_OK;
    if ((to.vt & VT_ARRAY) != 0) return SafeArrayCopy(to.parray, &to.parray);
    if (to.vt == VT_BSTR) return CopyString(to);
    if (HoldsInterface(to.vt) && to.punkVal != nullptr) to.punkVal->AddRef();
    return S_OK;
}

HRESULT EndValue(VARIANT& variant) {
    if ((variant.vt & VT_BYREF) != 0) return S_OK;
    if ((variant.vt & VT_ARRAY) != 0) return SafeArrayDestroy(variant.parray);
    if (variant.vt == VT_BSTR) SysFreeString(variant.bstrVal);
    if (HoldsInterface(variant.vt) && variant.punkVal != nullptr) variant.punkVal->Release();
    return S_OK;
}

// The bits of the value that a reference points to.
HRESULT Follow(const VARIANT& from, VARIANT& value) {
    const auto type = static_cast<VARTYPE>(from.vt & ~VT_BYREF);
    if (from.byref == nullptr || type == VT_EMPTY) return E_INVALIDARG;
    VariantInit(&value);
    value.vt = type;
    if ((type & VT_ARRAY) != 0) {
        value.parray = *from.pparray;
        return S_OK;
    }
    switch (type) {
        case VT_I1:
        case VT_UI1:
            value.bVal = *from.pbVal;
            return S_OK;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            value.iVal = *from.piVal;
            return S_OK;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_ERROR:
            value.lVal = *from.plVal;
            return S_OK;
        case VT_R4:
            value.fltVal = *from.pfltVal;
            return S_OK;
        case VT_I8:
        case VT_UI8:
            value.llVal = *from.pllVal;
            return S_OK;
        case VT_R8:
        case VT_DATE:
            value.dblVal = *from.pdblVal;
            return S_OK;
        case VT_BSTR:
            value.bstrVal = *from.pbstrVal;
            return S_OK;
        case VT_UNKNOWN:
        case VT_DISPATCH:
            value.punkVal = *from.ppunkVal;
            return S_OK;
        default:
            return DISP_E_BADVARTYPE;
    }
}

}  // namespace

bool IsVariantType(VARTYPE word) {
    const auto type = static_cast<VARTYPE>(word & ~kFlags);
    if (IsScalarType(type)) return true;
    if (type == VT_VARIANT) return (word & kFlags) != 0;
    if (type == VT_EMPTY) return (word & VT_ARRAY) == 0;
    return word == VT_NULL;
}

void VariantInit(VARIANT* variant) {
    if (variant != nullptr) *variant = {};
}

HRESULT VariantClear(VARIANT* variant) {
    if (variant == nullptr) return E_INVALIDARG;
    if (!IsVariantType(variant->vt)) return DISP_E_BADVARTYPE;
    const HRESULT result = EndValue(*variant);
    if (SUCCEEDED(result)) VariantInit(variant);
    return result;
}

HRESULT VariantCopy(VARIANT* to, const VARIANT* from) {
    if (to == nullptr || from == nullptr) return E_INVALIDARG;
    if (!IsVariantType(from->vt)) return DISP_E_BADVARTYPE;
    if (to == from) return S_OK;
    VARIANT copy = *from;
    HRESULT result = MakeOwn(copy);
    if (FAILED(result)) return result;
    result = VariantClear(to);
    if (FAILED(result)) {
        VariantClear(&copy);
        return result;
    }
    *to = copy;
    return S_OK;
}

HRESULT VariantCopyInd(VARIANT* to, const VARIANT* from) {
    if (to == nullptr || from == nullptr) return E_INVALIDARG;
    if ((from->vt & VT_BYREF) == 0) return VariantCopy(to, from);
    if (!IsVariantType(from->vt)) return DISP_E_BADVARTYPE;
    if (from->vt == (VT_BYREF | VT_VARIANT)) {
        const VARIANT* inner = from->pvarVal;
        if (inner == nullptr || inner->vt == (VT_BYREF | VT_VARIANT)) return E_INVALIDARG;
        return VariantCopyInd(to, inner);
    }
    VARIANT value;
    const HRESULT result = Follow(*from, value);
    return FAILED(result) ? result : VariantCopy(to, &value);
}
