/// @file
/// The interface object that shows a list of objects.

#pragma once

#include <platform/collections/CObList.h>
#include <zt/frame/RefObj.h>
#include <zt/interfaces/ListParts.h>

namespace ZT {

/// Shows a list as `IList64` and `IIterator64`, and walks it as a loop for code inside the
/// library.
///
/// The list is made by this object and ends with it, or it belongs to someone else and must
/// live longer, or there is none. The elements never end with it; they are objects or plain
/// pointers, read as they stand or by a function that was told at the making. The operations
/// use the list without looking whether there is one: an object without a list must not be
/// walked, by its interfaces either.
///
/// The count starts at 0: the first query adds the first reference, and its release ends the
/// object. An outer object that is attached as owner is kept alive while this one lives, and
/// answers the queries that this one does not.
///
/// What cyclic means is said at `ZT::CyclicWalks`. A position that is handed in belongs to this
/// list, unless it is null. As `IIterator64`, a walk does not wrap. As `IList64`, `GetAt` gives
/// what `GetAtVirt` gives, and adds a reference to it when the elements are interface pointers
/// and it is not null.
class ZT_API ListOI : public RefObj {
public:
    /// Reads the element at a position of `list`, a `CObList`.
    using GetAtFunction = void* (*)(void* list, POSITION pos);

    /// @name Making and ending
    /// With `bInterfaces` the elements are interface pointers. The list does not know what its
    /// elements point to: each that is not null must then have been put in as
    /// `static_cast<IUnknown*>(object)`, or be given as that by the function.
    /// @{
    /// No list; plain elements.
    ListOI();
    /// No list.
    explicit ListOI(bool bInterfaces);
    /// With `bOwner` a new, empty list, which ends with this object; otherwise no list.
    ListOI(bool bInterfaces, bool bOwner);
    /// Shows the list `p`, which stays the caller's. Elements are read by `f`, or as they stand
    /// if it is null.
    ListOI(CObList* p, GetAtFunction f, bool bInterfaces);
    /// Copies all fields, count and by-value mode. The copy holds no reference of its own on the
    /// owner and yet releases one at its end, and a list that is owned would end with both:
    /// whoever copies sees to both.
    ListOI(const ListOI& other);
    /// Releases the owner, if there is one, and destroys the list if this object owns it. The
    /// elements stay alive.
    ~ListOI() override;

    /// Sets the count and all fields to zero without ending anything that they held.
    void Construct();
    /// Stores the owner and adds a reference to it, unless it is null. A previous owner is
    /// deliberately not released.
    void AttachOwner(IUnknown* p);
    /// @}

    /// `IList64` and `IIterator64` give the part that shows it, with a reference added. Any
    /// other identifier, deliberately also that of `IUnknown`, goes to the owner; without one it
    /// gives null and `E_NOINTERFACE`. A null `ppv` gives `DISP_E_PARAMNOTOPTIONAL`. The parts do
    /// know `IUnknown`: it gives the part that was asked.
    HRESULT QueryInterface(const GUID& iid, void** ppv) override;

    /// @name Elements
    /// @{
    /// Puts an element behind all others, and returns its position.
    POSITION AddTail(void* p) { return m_pList->AddTail(static_cast<CObject*>(p)); }
    /// The element at a position, as the function gives it that was told at the making, or else
    /// as it stands; for derived classes to answer otherwise. It comes as a `CObject*` whatever
    /// it points to. Without such a function a null position raises the invalid-argument
    /// exception.
    virtual CObject* GetAtVirt(POSITION pos);
    /// @}

    /// @name Walking
    /// None of these asks the function or `GetAtVirt`: they give the elements as they stand.
    /// @{
    /// Where a walk begins: the head when it goes forward, otherwise the tail.
    POSITION GetStartPosition(bool bForward) const {
        return CyclicWalks::StartPosition(*m_pList, bForward);
    }
    /// The element at `pos`, which moves on or back; to null at the end of the chain. A null
    /// `pos` raises the invalid-argument exception.
    void* Next(POSITION& pos, bool bForward) const {
        return CyclicWalks::Next(*m_pList, pos, bForward);
    }
    /// With `bCyclic` as `GetNextCyclic`, otherwise as `Next` above.
    const void* Next(POSITION& pos, bool bForward, bool bCyclic) const {
        return CyclicWalks::Next(*m_pList, pos, bForward, bCyclic);
    }
    /// The element at `pos`, which moves on; after the tail to the head. A null `pos` gives null
    /// and stays null.
    const void* GetNextCyclic(POSITION& pos) const {
        return CyclicWalks::GetNextCyclic(*m_pList, pos);
    }
    /// Forward as above, backward as `GetPrevCyclic`: only backward does a null `pos` raise.
    const void* GetNextCyclic(POSITION& pos, bool bForward) const {
        return CyclicWalks::GetNextCyclic(*m_pList, pos, bForward);
    }
    /// The element at `pos`, which moves back; before the head to the tail. A null `pos` raises
    /// the invalid-argument exception.
    const void* GetPrevCyclic(POSITION& pos) const {
        return CyclicWalks::GetPrevCyclic(*m_pList, pos);
    }
    /// @}

    /// @name Runs
    /// @{
    /// Whether `b` stands right behind `a`. The tail and the head are no neighbours; a null
    /// position has none.
    bool IsNeighbourPosns(POSITION a, POSITION b) const {
        return CyclicWalks::IsNeighbourPosns(*m_pList, a, b);
    }
    /// Number of elements of the cyclic run, both ends included: 1 when they are the same
    /// position, 0 for a null `from`. A `to` that is not in the list makes this walk without end.
    /// Only an empty list has no head to go on at: there the nodes behind `from`, which belong to
    /// some other list, are walked once, and the answer is 0 if `to` is not among them.
    int Count(POSITION from, POSITION to) const {
        int count = 1;
        for (; from != nullptr && from != to; ++count) CyclicWalks::NextRound(*m_pList, from);
        return from != nullptr ? count : 0;
    }
    /// Appends the elements of the cyclic run of `src`, both ends included. `src` may be this
    /// list, and then turns round at the tail that it had before. Nothing happens for a null
    /// `from`. A `to` that is not in `src` makes this append without end; of an empty `src`, as
    /// with `Count`, it stops with the last node behind `from`.
    void CopyCyclic(const ListOI& src, POSITION from, POSITION to);
    /// Takes the elements from `from` through `to` out of the list, without wrapping: to the
    /// tail when `to` is not met. They are not destroyed. Nothing happens for a null `from`.
    void Remove(POSITION from, POSITION to) { CyclicWalks::RemoveRun(*m_pList, from, to); }
    /// Takes the cyclic run, both ends included, out of the list: every element when `to` is
    /// null or not in the list. They are not destroyed. Nothing happens for a null `from`.
    void RemoveCyclic(POSITION from, POSITION to) { CyclicWalks::RemoveCyclic(*m_pList, from, to); }
    /// @}

    /// Whether the ends of the list agree with its count, and the head, if there is one, holds
    /// an element that is not null. Nothing between the ends is looked at.
    bool IsValidList() const { return CyclicWalks::IsValidList(*m_pList); }

protected:
    class XIterator final : public IteratorPart<XIterator, ListOI> {
    public:
        static auto Place() { return &ListOI::m_xIterator; }
        static const CObList& ListOf(const ListOI& object) { return *object.m_pList; }
    };

    class ZT_API XList final : public InterfacePart<XList, ListOI, IList64> {
    public:
        static auto Place() { return &ListOI::m_xList; }

        HRESULT GetIterator(IIterator64** iterator) override;
        HRESULT GetAt(POSITION position, IUnknown** element) override;
    };

    XIterator m_xIterator;
    XList m_xList;
    void* m_pReserved;  ///< null; nothing reads it
    GetAtFunction m_pfnGetAt;
    CObList* m_pList;
    bool m_bInterfaces;
    bool m_bOwner;
    IUnknown* m_pOwner;
};

}  // namespace ZT
