/// @file
/// A module's link in the chain of class and resource look-up.

#pragma once

#include <platform/modules/AFX_EXTENSION_MODULE.h>
#include <platform/modules/CTypedSimpleList.h>
#include <platform/object/CObject.h>

/// Classes by their registration.
using AfxClassList = CTypedSimpleList<CRuntimeClass, &CRuntimeClass::m_pNextClass>;

/// A module's link in the chain in which classes and resources are looked up by
/// name. It stands at the head of the chain from its construction to its
/// destruction, so what came later is asked first.
///
/// An object of it is made with `new` and never deleted by its maker:
/// `AfxTermExtensionModule` does that when the module goes away.
class ZTP_API CDynLinkLibrary : public CObject {
    DECLARE_DYNAMIC(CDynLinkLibrary)

    /// A link for a started record: takes module, resource module and classes from
    /// it, with those that the module registered since its start. `system` marks
    /// a module that is part of the framework itself.
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& record, BOOL system = FALSE);

    /// A link for a module that has resources and no classes.
    CDynLinkLibrary(HMODULE module, HMODULE resource);

    /// Takes the link out of the chain.
    ~CDynLinkLibrary() override;

    void Dump(CDumpContext& dc) const override;

    /// The module.
    HMODULE m_hModule;
    /// The module whose resources are looked up.
    HMODULE m_hResource;
    /// The module's classes.
    AfxClassList m_classList;
    /// Whether the module is part of the framework.
    BOOL m_bSystem;
    /// The next link of the chain, or null.
    CDynLinkLibrary* m_pNextDLL = nullptr;
};
