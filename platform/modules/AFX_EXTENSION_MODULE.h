/// @file
/// The record of an extension module.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>
#include <platform/modules/ModuleHandle.h>

struct CRuntimeClass;

/// What a shared module that brings classes and resources of its own tells about
/// itself. A module holds one, of static duration and filled with zeros; its
/// start hands the record to `AfxInitExtensionModule`, its end to
/// `AfxTermExtensionModule`. A `CDynLinkLibrary` on the record then links the
/// module into the chain in which classes and resources are looked up.
struct AFX_EXTENSION_MODULE {
    /// Whether the module's start has run.
    BOOL bInitialized = FALSE;
    /// The module.
    HMODULE hModule = nullptr;
    /// The module with the resources; the same, unless it is changed.
    HMODULE hResource = nullptr;
    /// First of the classes that the module registered, linked through
    /// `CRuntimeClass::m_pNextClass`.
    CRuntimeClass* pFirstSharedClass = nullptr;
};

/// Starts a module: fills the record and takes the classes that the module has
/// registered out of the common list into the record, where they are found once
/// a `CDynLinkLibrary` links the record into the chain. The resources of the module
/// can be read from now on, whatever becomes of its file. A record that was started
/// before stays as it is. The result is true; it is false, and the record
/// untouched, for a null `module`.
///
/// For the start of a shared library there is `AfxModuleEntry`.
ZTP_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE module);

/// Ends a module: deletes the `CDynLinkLibrary` objects of the module, or those
/// of all modules if `all` is set, and clears the record, which can be started
/// again but then has no classes. A record that was not started stays as it is
/// and nothing is deleted.
ZTP_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all = FALSE);
