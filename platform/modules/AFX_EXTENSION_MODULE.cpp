#include <platform/modules/AFX_EXTENSION_MODULE.h>
#include <platform/modules/AFX_MODULE_STATE.h>
#include <platform/modules/detail/LoadedResources.h>
#include <platform/modules/detail/ModuleClasses.h>

namespace {

void DeleteLibraries(HMODULE module, BOOL all) {
    AFX_MODULE_STATE& state = *AfxGetModuleState();
    CDynLinkLibrary* next = state.m_libraryList.GetHead();
    while (CDynLinkLibrary* library = next) {
        next = library->m_pNextDLL;
        if (all || library->m_hModule == module) delete library;
    }
}

}  // namespace

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE module) {
    if (record.bInitialized) return TRUE;
    if (!module) return FALSE;
    record.bInitialized = TRUE;
    record.hModule = module;
    record.hResource = module;
    record.pFirstSharedClass = nullptr;
    TakeModuleClasses(record);
    KeepResourcesOf(module);
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all) {
    if (!record.bInitialized) return;
    const std::scoped_lock lock(AfxGetModuleState()->m_lock);
    DeleteLibraries(record.hModule, all);
    record = AFX_EXTENSION_MODULE();
}
