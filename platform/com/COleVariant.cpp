#include <platform/com/COleVariant.h>

#include <cstring>
#include <utility>

#include <platform/com/CheckError.h>

namespace {

bool SameValue(const VARIANT& a, const VARIANT& b);

bool SameString(BSTR a, BSTR b) {
    const UINT bytes = SysStringByteLen(a);
    return bytes == SysStringByteLen(b) && (bytes == 0 || std::memcmp(a, b, bytes) == 0);
}

bool SameShape(const SAFEARRAY& a, const SAFEARRAY& b) {
    if (a.cDims != b.cDims || a.cbElements != b.cbElements) return false;
    return std::memcmp(a.rgsabound, b.rgsabound, a.cDims * sizeof(SAFEARRAYBOUND)) == 0;
}

std::size_t ElementCount(const SAFEARRAY& array) {
    std::size_t count = 1;
    const SAFEARRAYBOUND* bounds = array.rgsabound;
    for (UINT i = 0; i < array.cDims; ++i) count *= bounds[i].cElements;
    return count;
}

// A variant of the element's bits, which owns nothing.
VARIANT ElementValue(VARTYPE type, const char* element, std::size_t size) {
    VARIANT value = {};
    value.vt = type;
    std::memcpy(&value.llVal, element, size);
    return value;
}

bool SameElement(VARTYPE type, const char* a, const char* b, std::size_t size) {
    if (type == VT_VARIANT) {
        return SameValue(*reinterpret_cast<const VARIANT*>(a),
                         *reinterpret_cast<const VARIANT*>(b));
    }
    return SameValue(ElementValue(type, a, size), ElementValue(type, b, size));
}

bool IsBytes(VARTYPE type) {
    return type == VT_UI1 || type == VT_I1;
}

bool SameArray(const SAFEARRAY* a, const SAFEARRAY* b) {
    if (a == nullptr || b == nullptr) return a == b;
    VARTYPE type, otherType;
    SafeArrayGetVartype(a, &type);
    SafeArrayGetVartype(b, &otherType);
    if (type != otherType || !SameShape(*a, *b)) return false;
    const std::size_t count = ElementCount(*a);
    const auto* left = static_cast<const char*>(a->pvData);
    const auto* right = static_cast<const char*>(b->pvData);
    if (IsBytes(type)) return std::memcmp(left, right, count) == 0;
    const std::size_t size = a->cbElements;
    for (std::size_t i = 0; i < count; ++i) {
        if (!SameElement(type, left + i * size, right + i * size, size)) return false;
    }
    return true;
}

bool SameScalar(const VARIANT& a, const VARIANT& b) {
    switch (a.vt) {
        case VT_EMPTY:
        case VT_NULL:
            return true;
        case VT_I1:
        case VT_UI1:
            return a.bVal == b.bVal;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            return a.iVal == b.iVal;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_ERROR:
            return a.lVal == b.lVal;
        case VT_R4:
            return a.fltVal == b.fltVal;
        case VT_R8:
        case VT_DATE:
            return a.dblVal == b.dblVal;
        case VT_BSTR:
            return SameString(a.bstrVal, b.bstrVal);
        case VT_UNKNOWN:
        case VT_DISPATCH:
            return a.punkVal == b.punkVal;
        default:
            return a.llVal == b.llVal;
    }
}

bool SameValue(const VARIANT& a, const VARIANT& b) {
    if (a.vt != b.vt) return false;
    if ((a.vt & VT_BYREF) != 0) return a.byref == b.byref;
    if ((a.vt & VT_ARRAY) != 0) return SameArray(a.parray, b.parray);
    return SameScalar(a, b);
}

VARIANT_BOOL Truth(bool value) {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

BSTR Required(BSTR string) {
    if (string == nullptr) AfxThrowMemoryException();
    return string;
}

BSTR StringOfBytes(const char* text) {
    if (text == nullptr) return nullptr;
    return Required(SysAllocStringByteLen(text, static_cast<UINT>(std::strlen(text))));
}

}  // namespace

COleVariant::COleVariant() noexcept : tagVARIANT{} {}

COleVariant::COleVariant(const VARIANT& source) : COleVariant() {
    AfxCheckError(VariantCopy(this, &source));
}

COleVariant::COleVariant(const VARIANT* source) : COleVariant() {
    if (source != nullptr) AfxCheckError(VariantCopy(this, source));
}

COleVariant::COleVariant(const COleVariant& source)
    : COleVariant(static_cast<const VARIANT&>(source)) {}

COleVariant::COleVariant(COleVariant&& source) noexcept : tagVARIANT(source.Detach()) {}

COleVariant::COleVariant(const char* text) : COleVariant(text, VT_BSTR) {}

COleVariant::COleVariant(const CString& text) : COleVariant() {
    bstrVal = text.AllocSysString();
    vt = VT_BSTR;
}

COleVariant::COleVariant(const char* text, VARTYPE type) : COleVariant() {
    if (type != VT_BSTR && type != VT_BSTRT) AfxThrowInvalidArgException();
    if (type == VT_BSTRT) {
        bstrVal = StringOfBytes(text);
    } else if (text != nullptr) {
        bstrVal = CString(text).AllocSysString();
    }
    vt = VT_BSTR;
}

COleVariant::COleVariant(const wchar_t* text) : COleVariant() {
    if (text != nullptr) bstrVal = Required(SysAllocString(text));
    vt = VT_BSTR;
}

COleVariant::COleVariant(signed char value) noexcept : COleVariant() {
    vt = VT_I1;
    cVal = value;
}

COleVariant::COleVariant(BYTE value) noexcept : COleVariant() {
    vt = VT_UI1;
    bVal = value;
}

COleVariant::COleVariant(SHORT value, VARTYPE type) : COleVariant() {
    if (type != VT_I2 && type != VT_BOOL) AfxThrowInvalidArgException();
    vt = type;
    iVal = type == VT_BOOL ? Truth(value != 0) : value;
}

COleVariant::COleVariant(USHORT value) noexcept : COleVariant() {
    vt = VT_UI2;
    uiVal = value;
}

COleVariant::COleVariant(LONG value, VARTYPE type) : COleVariant() {
    if (type == VT_BOOL) {
        boolVal = Truth(value != 0);
    } else if (type == VT_I4 || type == VT_INT || type == VT_ERROR) {
        lVal = value;
    } else {
        AfxThrowInvalidArgException();
    }
    vt = type;
}

COleVariant::COleVariant(ULONG value) noexcept : COleVariant() {
    vt = VT_UI4;
    ulVal = value;
}

COleVariant::COleVariant(LONGLONG value) noexcept : COleVariant() {
    vt = VT_I8;
    llVal = value;
}

COleVariant::COleVariant(LONGLONG value, VARTYPE type) : COleVariant(value) {
    if (type == VT_I8) return;
    if (value != static_cast<LONG>(value)) AfxThrowInvalidArgException();
    *this = COleVariant(static_cast<LONG>(value), type);
}

COleVariant::COleVariant(ULONGLONG value) noexcept : COleVariant() {
    vt = VT_UI8;
    ullVal = value;
}

COleVariant::COleVariant(float value) noexcept : COleVariant() {
    vt = VT_R4;
    fltVal = value;
}

COleVariant::COleVariant(double value) noexcept : COleVariant() {
    vt = VT_R8;
    dblVal = value;
}

COleVariant::COleVariant(IUnknown* object) noexcept : COleVariant() {
    vt = VT_UNKNOWN;
    punkVal = object;
    if (object != nullptr) object->AddRef();
}

COleVariant::~COleVariant() {
    VariantClear(this);
}

COleVariant& COleVariant::operator=(const VARIANT& source) {
    AfxCheckError(VariantCopy(this, &source));
    return *this;
}

COleVariant& COleVariant::operator=(const VARIANT* source) {
    return Take(COleVariant(source));
}

COleVariant& COleVariant::operator=(const COleVariant& source) {
    return *this = static_cast<const VARIANT&>(source);
}

COleVariant& COleVariant::operator=(COleVariant&& source) noexcept {
    std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(source));
    return *this;
}

// The old value is ended by name, so that a failure of that is told.
COleVariant& COleVariant::Take(COleVariant&& fresh) {
    Clear();
    return *this = std::move(fresh);
}

void COleVariant::Clear() {
    AfxCheckError(VariantClear(this));
}

void COleVariant::ChangeType(VARTYPE type, const VARIANT* source) {
    AfxCheckError(VariantChangeType(this, source == nullptr ? this : source, 0, type));
}

void COleVariant::Attach(VARIANT& source) {
    if (&source == this) return;
    Clear();
    static_cast<VARIANT&>(*this) = source;
    VariantInit(&source);
}

VARIANT COleVariant::Detach() noexcept {
    const VARIANT value = *this;
    VariantInit(this);
    return value;
}

bool COleVariant::operator==(const VARIANT& other) const {
    return SameValue(*this, other);
}

bool COleVariant::operator==(const VARIANT* other) const {
    return other != nullptr && SameValue(*this, *other);
}
