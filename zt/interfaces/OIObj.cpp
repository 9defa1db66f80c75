#include <zt/interfaces/OIObj.h>

namespace ZT {

OIObj::OIObj() : m_pOwner(nullptr) {}

// No AddRef on the owner, deliberately.
OIObj::OIObj(const OIObj& other) = default;

OIObj::~OIObj() {
    if (m_pOwner != nullptr) m_pOwner->Release();
}

HRESULT OIObj::QueryInterface(const GUID& iid, void** ppv) {
    if (ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    return RefObj::QueryInterface(iid, ppv);
}

void OIObj::AttachOwner(IUnknown* p) {
    m_pOwner = p;
    if (p != nullptr) p->AddRef();
}

}  // namespace ZT
