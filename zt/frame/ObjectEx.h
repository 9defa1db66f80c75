/// @file
/// A reference-counted object with an owner, a type byte and a data word.

#pragma once

#include <zt/frame/RefObj.h>

namespace ZT {

class QC;

/// A reference-counted object that knows its owner; client modules derive from it.
///
/// The mark `IsByVal` is its own, apart from the by-value mode of the base, and
/// `Release` does not look at it: it only tells clients whether the object counts as a
/// value, which a new one does and one made from another does not.
class ZT_API ObjectEx : public RefObj {
public:
    /// Count 1, marked as by value, type 0, no owner.
    ObjectEx();
    /// Count 1, not marked as by value, type and owner of `*p`. A null `p` gives what the
    /// default constructor gives.
    explicit ObjectEx(ObjectEx* p);
    /// Copies everything, the count included.
    ObjectEx(const ObjectEx& other);
    ~ObjectEx() override;

    /// Told that the object was changed; what `what` points at is up to the modules. The
    /// base does nothing.
    virtual void OnModified(void* what);
    /// Deletes the object, regardless of the count.
    virtual void Delete();
    /// Answers a query. True when the object handled it; the base never does.
    virtual bool Execute(QC& query);
    /// The data word; 1984 from the base, a number with no meaning.
    virtual ulong GetData();
    /// Stores the data word. The base does nothing.
    virtual void SetData(ulong data);

    /// Stores the owner, which is neither counted nor owned.
    void AttachOwner(CObject* owner) { m_pOwner = owner; }
    /// Makes the object free; the owner is not told.
    void DetachOwner() { m_pOwner = nullptr; }
    /// The owner; null for a free object.
    CObject* GetOwner() const { return m_pOwner; }

    /// The type byte. Its meaning is the modules'; a new object has 0.
    std::uint8_t GetType() const { return m_nType; }

    /// The mark: whether the object counts as a value.
    bool IsByVal() const { return m_bByVal; }
    /// Stores the mark. Unlike the operations of the same name in the base, which it
    /// hides, it changes neither the count nor what `Release` does.
    void SetByVal(bool bByVal) { m_bByVal = bByVal; }

protected:
    CObject* m_pOwner;
    bool m_bByVal;
    std::uint8_t m_nType;
};

}  // namespace ZT
