/// @file
/// Start and end of a shared module.

#pragma once

#include <platform/modules/AFX_EXTENSION_MODULE.h>

/// Start and end of a shared module that has a record: an object of static
/// duration in one source of the module runs `AfxInitExtensionModule` when the
/// module is loaded and `AfxTermExtensionModule` when it goes away.
///
///     static AFX_EXTENSION_MODULE extension;
///     static const AfxModuleEntry entry(extension);
///
/// It takes the classes that are registered by then: those of its own source that
/// stand before it. Classes that are registered later are found in the common list
/// until a `CDynLinkLibrary` on the record takes them along.
class AfxModuleEntry {
public:
    /// The module is the one in which `record` lies.
    explicit AfxModuleEntry(AFX_EXTENSION_MODULE& record) : m_record(record) {
        AfxInitExtensionModule(record, AfxModuleFromAddress(&record));
    }
    ~AfxModuleEntry() { AfxTermExtensionModule(m_record, FALSE); }
    AfxModuleEntry(const AfxModuleEntry&) = delete;
    AfxModuleEntry& operator=(const AfxModuleEntry&) = delete;

private:
    AFX_EXTENSION_MODULE& m_record;
};
