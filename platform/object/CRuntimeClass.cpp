#include <platform/modules/AFX_MODULE_STATE.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CRuntimeClass.h>

#include <cstring>

namespace {

CRuntimeClass* FindByName(const AfxClassList& classes, LPCSTR className) {
    for (CRuntimeClass* aClass : classes)
        if (std::strcmp(aClass->m_lpszClassName, className) == 0) return aClass;
    return nullptr;
}

void TakeOutOfLists(const CRuntimeClass* aClass) {
    AFX_MODULE_STATE& state = *AfxGetModuleState();
    state.m_classList.Remove(aClass);
    for (CDynLinkLibrary* library : state.m_libraryList) library->m_classList.Remove(aClass);
}

}  // namespace

CObject* CRuntimeClass::CreateObject() const {
    return m_pfnCreateObject ? m_pfnCreateObject() : nullptr;
}

CObject* CRuntimeClass::CreateObject(LPCSTR className) {
    const CRuntimeClass* aClass = FromName(className);
    return aClass ? aClass->CreateObject() : nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const {
    if (!base) AfxThrowInvalidArgException();
    const CRuntimeClass* aClass = this;
    while (aClass && aClass != base)
        aClass = aClass->m_pfnGetBaseClass ? aClass->m_pfnGetBaseClass() : nullptr;
    return aClass != nullptr;
}

CRuntimeClass* CRuntimeClass::FromName(LPCSTR className) {
    if (!className) return nullptr;
    AFX_MODULE_STATE& state = *AfxGetModuleState();
    const std::scoped_lock lock(state.m_lock);
    if (CRuntimeClass* own = FindByName(state.m_classList, className)) return own;
    for (const CDynLinkLibrary* library : state.m_libraryList)
        if (CRuntimeClass* found = FindByName(library->m_classList, className)) return found;
    return nullptr;
}

AFX_CLASSINIT::AFX_CLASSINIT(CRuntimeClass* newClass) : m_class(newClass) {
    AFX_MODULE_STATE& state = *AfxGetModuleState();
    const std::scoped_lock lock(state.m_lock);
    newClass->m_pClassInit = this;
    state.m_classList.AddHead(newClass);
}

AFX_CLASSINIT::~AFX_CLASSINIT() {
    const std::scoped_lock lock(AfxGetModuleState()->m_lock);
    TakeOutOfLists(m_class);
    m_class->m_pNextClass = nullptr;
    m_class->m_pClassInit = nullptr;
}
