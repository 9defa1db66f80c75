#include <zt/interfaces/RangeR1OI.h>

namespace ZT {

RangeR1OI::~RangeR1OI() = default;

bool RangeR1OI::operator=(const RangeR1OI& o) {
    const bool changed = RangeR1::operator=(o);
    m_pRange = o.m_pRange;
    m_pUnknown = o.m_pUnknown;
    m_nRef = o.m_nRef;
    m_bReadOnly = o.m_bReadOnly;
    return changed;
}

ulong RangeR1OI::AddRef() {
    return m_pUnknown != nullptr ? m_pUnknown->AddRef() : ++m_nRef;
}

ulong RangeR1OI::Release() {
    if (m_pUnknown != nullptr) return m_pUnknown->Release();
    const ulong left = --m_nRef;
    if (left == 0) delete this;
    return left;
}

HRESULT RangeR1OI::QueryInterface(const GUID& iid, void** ppv) {
    // A failure deliberately writes nothing.
    if (iid != IID_IRange && iid != IID_IUnknown) return E_NOINTERFACE;
    *ppv = static_cast<IRange*>(&m_xRange);
    AddRef();
    return S_OK;
}

HRESULT RangeR1OI::XRange::QueryInterface(REFIID iid, void** ppv) {
    return Owner().QueryInterface(iid, ppv);
}

HRESULT RangeR1OI::XRange::GetA(double* a) {
    const RangeR1* const range = Owner().m_pRange;
    if (range == nullptr) return E_UNEXPECTED;
    if (a == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    *a = range->m_min;
    return S_OK;
}

HRESULT RangeR1OI::XRange::GetB(double* b) {
    // The other way round than in `GetA`, deliberately.
    if (b == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    const RangeR1* const range = Owner().m_pRange;
    if (range == nullptr) return E_UNEXPECTED;
    *b = range->m_max;
    return S_OK;
}

HRESULT RangeR1OI::XRange::Set(double a, double b) {
    RangeR1OI& owner = Owner();
    if (owner.m_bReadOnly) return ERROR_CALL_NOT_IMPLEMENTED;
    if (owner.m_pRange == nullptr) return E_UNEXPECTED;
    owner.m_pRange->Set(a, b);
    return S_OK;
}

}  // namespace ZT
