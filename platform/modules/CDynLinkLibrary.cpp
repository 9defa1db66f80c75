#include <platform/modules/AFX_MODULE_STATE.h>
#include <platform/modules/CDynLinkLibrary.h>
#include <platform/modules/detail/ModuleClasses.h>
#include <platform/object/CDumpContext.h>
#include <platform/text/CString.h>

IMPLEMENT_DYNAMIC(CDynLinkLibrary, CObject)

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& record, BOOL system)
    : CDynLinkLibrary(record.hModule, record.hResource) {
    m_bSystem = system;
    TakeModuleClasses(record);
    m_classList.m_pHead = record.pFirstSharedClass;
}

CDynLinkLibrary::CDynLinkLibrary(HMODULE module, HMODULE resource)
    : m_hModule(module), m_hResource(resource), m_bSystem(FALSE) {
    AFX_MODULE_STATE& state = *AfxGetModuleState();
    const std::scoped_lock lock(state.m_lock);
    state.m_libraryList.AddHead(this);
}

CDynLinkLibrary::~CDynLinkLibrary() {
    AFX_MODULE_STATE& state = *AfxGetModuleState();
    const std::scoped_lock lock(state.m_lock);
    state.m_libraryList.Remove(this);
}

void CDynLinkLibrary::Dump(CDumpContext& dc) const {
    CObject::Dump(dc);
    dc << "module " << AfxGetModuleFileName(m_hModule).GetString()
       << (m_bSystem ? ", part of the framework\n" : "\n");
    if (dc.GetDepth() <= 0) return;
    for (const CRuntimeClass* aClass : m_classList) dc << aClass->m_lpszClassName << "\n";
}
