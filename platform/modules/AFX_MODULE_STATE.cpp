#include <platform/modules/AFX_MODULE_STATE.h>

#include <new>

// The state stands in plain memory, since the static objects of any module may
// come before it and go after it.
AFX_MODULE_STATE* AfxGetModuleState() {
    alignas(AFX_MODULE_STATE) static std::byte room[sizeof(AFX_MODULE_STATE)];
    static AFX_MODULE_STATE* const state = [] {
        auto* made = new (room) AFX_MODULE_STATE;
        made->m_hCurrentInstanceHandle = GetModuleHandle(nullptr);
        made->m_hCurrentResourceHandle = made->m_hCurrentInstanceHandle;
        return made;
    }();
    return state;
}

HINSTANCE AfxGetInstanceHandle() {
    return AfxGetModuleState()->m_hCurrentInstanceHandle;
}

HINSTANCE AfxGetResourceHandle() {
    return AfxGetModuleState()->m_hCurrentResourceHandle;
}

void AfxSetResourceHandle(HINSTANCE module) {
    AfxGetModuleState()->m_hCurrentResourceHandle = module;
}
