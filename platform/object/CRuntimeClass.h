/// @file
/// The run-time class scheme: a record per class, found by address or by name.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>

class CArchive;
class CObject;
struct AFX_CLASSINIT;
struct CRuntimeClass;

/// Schema of a class that cannot be stored in an archive.
constexpr UINT AFX_NO_SCHEMA = 0xFFFF;

/// Bit in the schema of a class that reads records of older schemas itself; see
/// `CArchive::GetObjectSchema`.
constexpr UINT VERSIONABLE_SCHEMA = 0x80000000;

/// What the program knows of one class at run time: its name, the size of its
/// objects, how to make one, and the record of its base class.
///
/// A record is a constant of static duration, one a class, mostly made by the
/// macros of `CObject.h`; the members are open so that a class can also lay out
/// its record by hand. Registration alone writes to it. Two records are the same class only if they
/// are the same record: the name is for looking up and for printing.
struct ZTP_API CRuntimeClass {
    /// The name as the class was declared, without a namespace.
    LPCSTR m_lpszClassName;
    /// Bytes of one object.
    INT m_nObjectSize;
    /// Version of the archive record; `AFX_NO_SCHEMA` for a class without one.
    UINT m_wSchema;
    /// Makes a default object on the heap; null for a class that cannot be made
    /// by name.
    CObject* (*m_pfnCreateObject)();
    /// Answers the record of the base class; null for the root.
    CRuntimeClass* (*m_pfnGetBaseClass)();
    /// The next class of the list in which the record is registered.
    mutable CRuntimeClass* m_pNextClass;
    /// What registered the record; null for a class that is not registered.
    mutable const AFX_CLASSINIT* m_pClassInit;

    /// A new default object, owned by the caller. Null if the class has no way to
    /// make one. What the constructor throws passes through.
    CObject* CreateObject() const;

    /// A new object of the registered class `className`; null if there is no such
    /// class or it cannot be made.
    static CObject* CreateObject(LPCSTR className);

    /// Whether the record is `base` or has it among its bases. A null `base`
    /// raises the invalid-argument exception.
    BOOL IsDerivedFrom(const CRuntimeClass* base) const;

    /// The record registered under `className`, or null; a null name gives null.
    ///
    /// Classes of the program and of plain libraries are asked first, the latest
    /// registered before the earlier, then those of the extension modules in the
    /// order of the chain. The classes of an extension module are found only
    /// while a `CDynLinkLibrary` links them into the chain.
    static CRuntimeClass* FromName(LPCSTR className);

    /// Writes schema and name as `CArchive::WriteClass` does for a new class.
    void Store(CArchive& ar) const;

    /// Reads what `Store` wrote and looks the class up by its name; null if no
    /// such class is registered. `*schema` receives the schema of the record.
    static CRuntimeClass* Load(CArchive& ar, UINT* schema);
};

/// Registers a class record for as long as it lives. As an object of static
/// duration beside the record it registers the class when its module is loaded
/// and takes it out again when the module goes away.
struct ZTP_API AFX_CLASSINIT {
    explicit AFX_CLASSINIT(CRuntimeClass* newClass);
    ~AFX_CLASSINIT();
    AFX_CLASSINIT(const AFX_CLASSINIT&) = delete;
    AFX_CLASSINIT& operator=(const AFX_CLASSINIT&) = delete;

private:
    CRuntimeClass* m_class;
};

/// The record of a class that was declared with one of the macros.
#define RUNTIME_CLASS(class_name) (const_cast<CRuntimeClass*>(&class_name::class##class_name))
