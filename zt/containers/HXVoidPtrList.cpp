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

HRESULT HXVoidPtrList::XIterator::GetCount(std::int64_t* count) {
    if (count == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    *count = Owner().HXVoidPtrList::GetCount();
    return S_OK;
}

HRESULT HXVoidPtrList::XIterator::GetHeadPosition(POSITION* position) {
    if (position == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    *position = Owner().GetStartPosition(true);
    return S_OK;
}

HRESULT HXVoidPtrList::XIterator::GetNext(POSITION* position) {
    if (position == nullptr || *position == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    Owner().Next(*position, true);
    return S_OK;
}

HRESULT HXVoidPtrList::XIterator::GetTailPosition(POSITION* position) {
    if (position == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    *position = Owner().GetStartPosition(false);
    return S_OK;
}

HRESULT HXVoidPtrList::XIterator::GetPrev(POSITION* position) {
    if (position == nullptr || *position == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    Owner().Next(*position, false);
    return S_OK;
}

HRESULT HXVoidPtrList::XList::GetIterator(IIterator64** iterator) {
    if (iterator == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    HXVoidPtrList& list = Owner();
    *iterator = &list.m_xIterator;
    list.AddRef();
    return S_OK;
}

HRESULT HXVoidPtrList::XList::GetAt(POSITION position, IUnknown** element) {
    if (element == nullptr) return S_OK;
    if (position == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    HXVoidPtrList& list = Owner();
    // What the list holds as an object is an interface pointer, if anything can be called on it.
    *element = reinterpret_cast<IUnknown*>(list.GetAtVirt(position));
    if (list.m_bInterfaces && *element != nullptr) (*element)->AddRef();
    return S_OK;
}

}  // namespace ZT
