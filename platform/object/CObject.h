/// @file
/// The root of the object model, and the macros that declare a run-time class.

#pragma once

#include <platform/object/CRuntimeClass.h>

class CArchive;
class CDumpContext;

/// The root of all objects that take part in the run-time class scheme, in
/// archives and in diagnostics.
///
/// It has no fields. Its five virtual operations stand at the head of the table
/// of every class derived from it, in the order below. An object is not copied
/// through its root: a class that can be copied writes its own copy constructor
/// and lets the root be constructed by default.
class ZTP_API CObject {
public:
    /// The record of the object's class.
    virtual CRuntimeClass* GetRuntimeClass() const;

    virtual ~CObject();

    /// Stores the object in an archive or loads it from there; the archive says
    /// which. The base does nothing.
    virtual void Serialize(CArchive& ar);

    /// Checks the object's state. The base accepts every object; an override
    /// raises or reports what is wrong, after asking its base.
    virtual void AssertValid() const;

    /// Writes the state in words. The base writes class name and address.
    virtual void Dump(CDumpContext& dc) const;

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    /// Whether the object is of the class `base` or of one derived from it. A
    /// null `base` raises the invalid-argument exception.
    BOOL IsKindOf(const CRuntimeClass* base) const;

    /// Whether the object's own class has an archive record.
    BOOL IsSerializable() const;

    static const CRuntimeClass classCObject;
    static CRuntimeClass* GetThisClass();

protected:
    CObject();
};

/// `object` as a `T`, or null if it is null or of another class. Through the
/// run-time class records; see `DYNAMIC_DOWNCAST`.
ZTP_API CObject* AfxDynamicDownCast(CRuntimeClass* target, CObject* object);
ZTP_API const CObject* AfxDynamicDownCast(CRuntimeClass* target, const CObject* object);

/// `object` as a pointer to `class_name`, or null if it is of another class.
#define DYNAMIC_DOWNCAST(class_name, object) \
    (static_cast<class_name*>(AfxDynamicDownCast(RUNTIME_CLASS(class_name), (object))))

/// `object` as a pointer to `class_name`, unchecked.
#define STATIC_DOWNCAST(class_name, object) (static_cast<class_name*>(object))

/// In a class: it has a run-time class record, `class<name>`, and `IsKindOf`
/// knows it. Goes with `IMPLEMENT_DYNAMIC` in one source. Leaves the access
/// public.
#define DECLARE_DYNAMIC(class_name)               \
public:                                           \
    static CRuntimeClass* _GetBaseClass();        \
    static const CRuntimeClass class##class_name; \
    static CRuntimeClass* GetThisClass() {        \
        return RUNTIME_CLASS(class_name);         \
    }                                             \
    CRuntimeClass* GetRuntimeClass() const override;

/// As `DECLARE_DYNAMIC`; besides, a default object can be made by name.
#define DECLARE_DYNCREATE(class_name) \
    DECLARE_DYNAMIC(class_name)       \
    static CObject* CreateObject();

/// As `DECLARE_DYNCREATE`; besides, pointers to the class travel through an
/// archive. A class derived from this one that lacks the macro does not.
#define DECLARE_SERIAL(class_name) \
    DECLARE_DYNCREATE(class_name)  \
    using AfxSerialClass = class_name;

/// Defines what the three `DECLARE_` macros declare; for use below.
#define AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, schema, create) \
    CRuntimeClass* class_name::_GetBaseClass() {                                \
        return RUNTIME_CLASS(base_class_name);                                  \
    }                                                                           \
    constinit const CRuntimeClass class_name::class##class_name = {             \
        #class_name, static_cast<INT>(sizeof(class_name)), schema,              \
        create,      &class_name::_GetBaseClass,           nullptr,             \
        nullptr};                                                               \
    [[maybe_unused]] CRuntimeClass* class_name::GetRuntimeClass() const {       \
        return RUNTIME_CLASS(class_name);                                       \
    }                                                                           \
    static const AFX_CLASSINIT afxRegistrationOf##class_name(RUNTIME_CLASS(class_name));

/// The record of a class declared with `DECLARE_DYNAMIC`.
#define IMPLEMENT_DYNAMIC(class_name, base_class_name) \
    AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, AFX_NO_SCHEMA, nullptr)

/// The record of a class declared with `DECLARE_DYNCREATE`.
#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                   \
    CObject* class_name::CreateObject() {                                  \
        return new class_name;                                             \
    }                                                                      \
    AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, AFX_NO_SCHEMA, \
                               &class_name::CreateObject)

/// The record of a class declared with `DECLARE_SERIAL`. `schema` is the version
/// of its archive record, if need be combined with `VERSIONABLE_SCHEMA`.
#define IMPLEMENT_SERIAL(class_name, base_class_name, schema)                          \
    CObject* class_name::CreateObject() {                                              \
        return new class_name;                                                         \
    }                                                                                  \
    AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, static_cast<UINT>(schema), \
                               &class_name::CreateObject)
