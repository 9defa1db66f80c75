#include <platform/modules/AFX_MODULE_STATE.h>
#include <platform/modules/detail/ModuleClasses.h>

namespace {

// The record of a class can be seen at an address inside the program, where the
// linker copied it; what registered it always lies in the module itself.
bool BelongsTo(const CRuntimeClass* aClass, HMODULE module) {
    return AfxModuleFromAddress(aClass->m_pClassInit) == module;
}

}  // namespace

void TakeModuleClasses(AFX_EXTENSION_MODULE& record) {
    AFX_MODULE_STATE& state = *AfxGetModuleState();
    const std::scoped_lock lock(state.m_lock);
    CRuntimeClass** kept = &state.m_classList.m_pHead;
    CRuntimeClass** taken = &record.pFirstSharedClass;
    CRuntimeClass* const before = record.pFirstSharedClass;
    for (CRuntimeClass* next = *kept; CRuntimeClass* current = next;) {
        next = current->m_pNextClass;
        CRuntimeClass**& end = BelongsTo(current, record.hModule) ? taken : kept;
        *end = current;
        end = &current->m_pNextClass;
    }
    *kept = nullptr;
    *taken = before;
}
