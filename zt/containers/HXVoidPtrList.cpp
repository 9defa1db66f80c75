#include <zt/containers/HXVoidPtrList.h>

namespace ZT {

HXVoidPtrList::HXVoidPtrList() : HXVoidPtrList(false) {}

HXVoidPtrList::HXVoidPtrList(bool bInterfaces) : HXVoidPtrList(bInterfaces, nullptr) {}

HXVoidPtrList::HXVoidPtrList(bool bInterfaces, void (*pfnDelete)(void*))
    : CyclicPtrList(10), m_nRef(0), m_pfnDelete(pfnDelete), m_bInterfaces(bInterfaces) {}

HXVoidPtrList::~HXVoidPtrList() {
    if (m_pfnDelete == nullptr) return;
    for (void* element : *this) m_pfnDelete(element);
}

HRESULT HXVoidPtrList::QueryInterface(const GUID& iid, void** ppv) {
    return QueryNamedParts(*this, iid, ppv, m_xList, m_xIterator);
}

CObject* HXVoidPtrList::GetAtVirt(POSITION pos) {
    return static_cast<CObject*>(GetAt(pos));
}

bool HXVoidPtrList::CheckDuplicates(const CPtrList* pList) {
    POSITION pair[2];
    return !FindDuplicates(pList, pair);
}

bool HXVoidPtrList::FindDuplicates(const CPtrList* pList, POSITION* pair) {
    return CyclicWalks::FindDuplicates(*pList, pair[0], pair[1]);
}

bool HXVoidPtrList::IsInRangeCyclic(POSITION pos, POSITION, POSITION to) {
    return pos != to;
}

HRESULT HXVoidPtrList::XList::GetIterator(IIterator64** iterator) {
    if (iterator == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    HXVoidPtrList& list = Owner();
    *iterator = &list.m_xIterator;
    list.AddRef();
    return S_OK;
}

HRESULT HXVoidPtrList::XList::GetAt(POSITION position, IUnknown** element) {
    HXVoidPtrList& list = Owner();
    return GiveElement(list, list.m_bInterfaces, position, element);
}

}  // namespace ZT
