#include <platform/object/NewObject.h>
#include <zt/interfaces/ListOI.h>

namespace ZT {

ListOI::ListOI() : ListOI(false) {}

ListOI::ListOI(bool bInterfaces) : ListOI(nullptr, nullptr, bInterfaces) {}

ListOI::ListOI(bool bInterfaces, bool bOwner)
    : ListOI(bOwner ? AfxNewObject<CObList>(10) : nullptr, nullptr, bInterfaces) {
    m_bOwner = bOwner;
}

ListOI::ListOI(CObList* p, GetAtFunction f, bool bInterfaces)
    : m_pReserved(nullptr),
      m_pfnGetAt(f),
      m_pList(p),
      m_bInterfaces(bInterfaces),
      m_bOwner(false),
      m_pOwner(nullptr) {
    m_nRefCount = 0;
}

// No AddRef on the owner, and a second owner of the list, deliberately.
ListOI::ListOI(const ListOI& other) = default;

ListOI::~ListOI() {
    if (m_pOwner != nullptr) m_pOwner->Release();
    if (m_bOwner) delete m_pList;
}

void ListOI::Construct() {
    m_nRefCount = 0;
    m_bRefByVal = false;
    m_pReserved = nullptr;
    m_pfnGetAt = nullptr;
    m_pList = nullptr;
    m_bInterfaces = false;
    m_bOwner = false;
    m_pOwner = nullptr;
}

void ListOI::AttachOwner(IUnknown* p) {
    m_pOwner = p;
    if (p != nullptr) p->AddRef();
}

HRESULT ListOI::QueryInterface(const GUID& iid, void** ppv) {
    return QueryNamedPartsOr(*this, m_pOwner, iid, ppv, m_xList, m_xIterator);
}

CObject* ListOI::GetAtVirt(POSITION pos) {
    if (m_pfnGetAt == nullptr) return m_pList->GetAt(pos);
    return static_cast<CObject*>(m_pfnGetAt(m_pList, pos));
}

void ListOI::CopyCyclic(const ListOI& src, POSITION from, POSITION to) {
    const CObList& source = *src.m_pList;
    const POSITION tail = source.GetTailPosition();
    while (from != nullptr) {
        const POSITION here = from;
        CObject* const element = CyclicWalks::NextRound(source, from);
        // What was appended to the list itself is not part of the run.
        if (here == tail) from = source.GetHeadPosition();
        m_pList->AddTail(element);
        if (here == to) return;
    }
}

HRESULT ListOI::XList::GetIterator(IIterator64** iterator) {
    if (iterator == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    void* found = nullptr;
    if (Owner().QueryInterface(IID_IIterator64, &found) != S_OK) return E_UNEXPECTED;
    *iterator = static_cast<IIterator64*>(found);
    return S_OK;
}

HRESULT ListOI::XList::GetAt(POSITION position, IUnknown** element) {
    ListOI& list = Owner();
    return GiveElement(list, list.m_bInterfaces, position, element);
}

}  // namespace ZT
