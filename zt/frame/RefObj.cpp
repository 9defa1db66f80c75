#include <zt/frame/RefObj.h>

namespace ZT {

RefObj::RefObj() : m_nRefCount(1), m_bRefByVal(false) {}

RefObj::RefObj(const RefObj& other)
    : CObject(), m_nRefCount(other.m_nRefCount), m_bRefByVal(other.m_bRefByVal) {}

RefObj::~RefObj() = default;

HRESULT RefObj::QueryInterface(const GUID&, void** ppv) {
    if (ppv != nullptr) *ppv = nullptr;
    return E_NOINTERFACE;
}

ulong RefObj::Release() {
    --m_nRefCount;
    if (m_nRefCount != 0) return m_nRefCount;
    if (!m_bRefByVal) delete this;
    return 0;
}

ulong RefObj::AddRef() {
    return ++m_nRefCount;
}

void RefObj::SetByVal(bool bByVal, bool bDropRef) {
    m_bRefByVal = bByVal;
    if (bDropRef && m_nRefCount > 0) --m_nRefCount;
}

}  // namespace ZT
