/// @file
/// The root of cloneable objects that can execute an operation.

#pragma once

#include <platform/object/CObject.h>
#include <zt/frame/ZT.h>

namespace ZT {

class OpC;

/// The root of cloneable objects that can execute an operation; client modules derive
/// from it. It has no fields.
class ZT_API ZTObject : public CObject {
public:
    ZTObject();
    /// Copies nothing, there being no fields.
    ZTObject(const ZTObject& other);
    ZTObject& operator=(const ZTObject&) { return *this; }
    ~ZTObject() override;

    /// Executes an operation. True when the object handled it; the base never does.
    virtual bool Execute(OpC& operation);

    /// A new copy of the object, which the caller owns; null from the base, which cannot
    /// be copied this way.
    virtual ZTObject* Clone();

    /// Whether the object's class is `c` or has it among its bases. Classes are compared
    /// by name, so a record of the same name from another module counts as the same. A
    /// null `c`, or a null object, raises the invalid-argument exception.
    bool IsKindOf_ZT(const CRuntimeClass* c) const;

    /// Whether the class `a` is `b` or has it among its bases, by name. A null argument
    /// raises the invalid-argument exception.
    static bool IsDerivedFrom_ZT(const CRuntimeClass* a, const CRuntimeClass* b);
};

}  // namespace ZT
