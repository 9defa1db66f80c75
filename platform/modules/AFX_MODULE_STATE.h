/// @file
/// What the program knows of its modules.

#pragma once

#include <platform/modules/CDynLinkLibrary.h>

#include <mutex>

/// What the program knows of its modules: the classes that no extension module
/// has taken, and the chain of the extension modules. There is one state a
/// process; it exists before all static objects and outlives them.
///
///     for (CDynLinkLibrary* library : AfxGetModuleState()->m_libraryList) ...
struct ZTP_API AFX_MODULE_STATE {
    /// The program's own module.
    HINSTANCE m_hCurrentInstanceHandle = nullptr;
    /// The module whose resources are asked first; the program's own, unless it
    /// is changed.
    HINSTANCE m_hCurrentResourceHandle = nullptr;
    /// Classes of the program and of plain libraries, the latest first.
    AfxClassList m_classList;
    /// The extension modules, the latest first.
    CTypedSimpleList<CDynLinkLibrary, &CDynLinkLibrary::m_pNextDLL> m_libraryList;
    /// Held by the platform while it walks or changes one of the lists, since a
    /// module can be loaded on any thread. A caller that walks a list while other
    /// threads load modules holds it too.
    std::recursive_mutex m_lock;
};

/// The state of the process.
ZTP_API AFX_MODULE_STATE* AfxGetModuleState();

/// The program's own module.
ZTP_API HINSTANCE AfxGetInstanceHandle();

/// The module whose resources are asked first.
ZTP_API HINSTANCE AfxGetResourceHandle();
ZTP_API void AfxSetResourceHandle(HINSTANCE module);
