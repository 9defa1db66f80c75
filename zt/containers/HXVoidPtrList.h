/// @file
/// The list of untyped pointers that interface clients can read.

#pragma once

#include <zt/containers/CyclicPtrList.h>
#include <zt/frame/ZT.h>
#include <zt/interfaces/ListParts.h>

namespace ZT {

/// A list of untyped pointers that can be walked as a loop, shown to interface clients as
/// `IList64` and `IIterator64`, and told at its making how to destroy its elements. Without
/// that it does not own them.
///
/// The list and its two interface parts share one reference count, which starts at 0 and only
/// counts: the list lives by its owner, and no `Release` ever destroys it.
///
/// As `IList64`, `GetAt` gives what `GetAtVirt` gives, and adds a reference to it when the list
/// was told that its elements are interface pointers and it is not null. As `IIterator64`, a
/// walk does not wrap.
class ZT_API HXVoidPtrList : public CyclicPtrList<void> {
public:
    /// Empty; the elements are plain pointers and are not destroyed.
    HXVoidPtrList();
    /// Empty; the elements are not destroyed. With `bInterfaces` they are interface pointers,
    /// as `SetInterfaces` says.
    explicit HXVoidPtrList(bool bInterfaces);
    /// Empty; `pfnDelete`, which may be null, destroys an element when the list ends. With
    /// `bInterfaces` the elements are interface pointers, as `SetInterfaces` says.
    HXVoidPtrList(bool bInterfaces, void (*pfnDelete)(void*));
    /// Destroys every element from head to tail, null elements included, if the list was told
    /// how.
    ~HXVoidPtrList() override;

    /// @name Interfaces
    /// @{
    /// Adds a reference and gives the new count.
    ulong AddRef() { return ++m_nRef; }
    /// Takes a reference off and gives the new count, which wraps below 0. Destroys nothing.
    ulong Release() { return --m_nRef; }
    /// `IList64` and `IIterator64` give the part that shows it, with a reference added. Any
    /// other identifier, deliberately also that of `IUnknown`, gives null and `E_NOINTERFACE`;
    /// a null `ppv` gives `DISP_E_PARAMNOTOPTIONAL`. The parts do know `IUnknown`: it gives the
    /// part that was asked.
    HRESULT QueryInterface(const GUID& iid, void** ppv);
    /// Whether the elements are interface pointers, so that handing one out through `IList64`
    /// adds a reference to it.
    ///
    /// The list does not know what its elements point to: each that is not null must then have
    /// been put in as `static_cast<IUnknown*>(object)`. The address of the object itself may be
    /// another one, and calls through it go astray.
    void SetInterfaces(bool bInterfaces) { m_bInterfaces = bInterfaces; }
    /// @}

    /// The element at a position, for derived classes to answer otherwise. It comes as a
    /// `CObject*` whatever it points to. A null position raises the invalid-argument
    /// exception.
    virtual CObject* GetAtVirt(POSITION pos);

    /// Takes the elements from `from` through `to` out of the list, without wrapping: to the
    /// tail when `to` is not met. They are not destroyed. Nothing happens for a null `from`.
    void Remove(POSITION from, POSITION to) { CyclicWalks::RemoveRun(*this, from, to); }

    /// Whether no pointer occurs twice in the list. Compares every element with all others.
    static bool CheckDuplicates(const CPtrList* pList);
    /// Whether a pointer occurs twice. Then `pair[0]` becomes the position of the earliest
    /// element with a twin, and `pair[1]` that of its first twin; otherwise the pair stays.
    /// Compares every element with all others.
    static bool FindDuplicates(const CPtrList* pList, POSITION* pair);

    /// Whether `pos` differs from `to`. Deliberately no more than that, and `from` is not
    /// looked at, since there is no list at hand; see `ListCyclicNT::InRange`.
    static bool IsInRangeCyclic(POSITION pos, POSITION from, POSITION to);

protected:
    class XIterator final : public IteratorPart<XIterator, HXVoidPtrList> {
    public:
        static auto Place() { return &HXVoidPtrList::m_xIterator; }
        static const CPtrList& ListOf(const HXVoidPtrList& object) { return object; }
    };

    class XList final : public InterfacePart<XList, HXVoidPtrList, IList64> {
    public:
        static auto Place() { return &HXVoidPtrList::m_xList; }

        HRESULT GetIterator(IIterator64** iterator) override;
        HRESULT GetAt(POSITION position, IUnknown** element) override;
    };

    XIterator m_xIterator;
    XList m_xList;
    ulong m_nRef;
    void (*m_pfnDelete)(void*);
    bool m_bInterfaces;
};

}  // namespace ZT
