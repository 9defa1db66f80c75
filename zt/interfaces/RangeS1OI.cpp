#include <zt/interfaces/RangeS1OI.h>

namespace ZT {

RangeS1OI::~RangeS1OI() = default;

bool RangeS1OI::operator=(const RangeS1OI& o) {
    const bool changed = RangeS1::operator=(o);
    m_pRange = o.m_pRange;
    m_pUnknown = o.m_pUnknown;
    m_nRef = o.m_nRef;
    return changed;
}

ulong RangeS1OI::AddRef() {
    return m_pUnknown != nullptr ? m_pUnknown->AddRef() : ++m_nRef;
}

ulong RangeS1OI::Release() {
    if (m_pUnknown != nullptr) return m_pUnknown->Release();
    const ulong left = --m_nRef;
    if (left == 0) delete this;
    return left;
}

HRESULT RangeS1OI::QueryInterface(const GUID& iid, void** ppv) {
    // A failure deliberately writes nothing, and `IUnknown` is one.
    if (iid != IID_IRange) return E_NOINTERFACE;
    *ppv = static_cast<IRange*>(&m_xRange);
    AddRef();
    return S_OK;
}

HRESULT RangeS1OI::XRange::QueryInterface(REFIID iid, void** ppv) {
    return Owner().QueryInterface(iid, ppv);
}

HRESULT RangeS1OI::XRange::GetA(double* a) {
    const RangeS1* const range = Owner().m_pRange;
    if (range == nullptr) return E_UNEXPECTED;
    if (a == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    *a = range->GetA();
    return S_OK;
}

HRESULT RangeS1OI::XRange::GetB(double* b) {
    // The other way round than in `GetA`, deliberately.
    if (b == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    const RangeS1* const range = Owner().m_pRange;
    if (range == nullptr) return E_UNEXPECTED;
    *b = range->m_max;
    return S_OK;
}

HRESULT RangeS1OI::XRange::Set(double a, double b) {
    RangeS1* const range = Owner().m_pRange;
    if (range == nullptr) return E_UNEXPECTED;
    if (!S1::IsValid(a) || !S1::IsValid(b)) return DISP_E_PARAMNOTOPTIONAL;
    range->Set(a, b);
    return S_OK;
}

}  // namespace ZT
