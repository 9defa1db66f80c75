/// @file
/// The interface object that shows an array of numbers.

#pragma once

#include <platform/collections/CArray.h>
#include <zt/frame/RefObj.h>
#include <zt/interfaces/IArrayNum.h>
#include <zt/interfaces/IObject_ZT.h>
#include <zt/interfaces/InterfacePart.h>

namespace ZT {

/// Shows an array of doubles as `IArrayNum`, and itself as `IObject_ZT`. The array is made by
/// this object and ends with it, or there is none.
///
/// The count starts at 1: whoever makes it, asks it once for an interface and hands that on,
/// keeps a reference of its own.
///
/// No operation of `IArrayNum` looks whether there is an array: an object to be used through it
/// is made with `NumArrayOI(true)`. From an `IArrayNum` pointer there is no way to the other
/// interfaces of the object.
///
/// As `IObject_ZT`:
/// - `IsSame` makes the variable -1 when `other` is the very pointer by which it was called, else
///   0, whatever it held on entry. A null variable gives `S_OK`.
/// - `GetHandle` gives the low 32 bits of the address of the part that shows `IObject_ZT`.
/// - `CopyFrom` takes over the numbers of `other`, which must be the `IObject_ZT` pointer of a
///   `NumArrayOI`: its answer to `IID_NativeObject` is taken for an array with no further test,
///   and another kind of object that knows this identifier would be misread. A null `other` gives
///   `DISP_E_PARAMNOTOPTIONAL`; no array here or there gives `E_UNEXPECTED`, and so does an
///   `IArrayNum` pointer, which does not lead to the array.
/// - `Clone` gives a new object with the same numbers as `IObject_ZT`. Its count is then 2: it
///   outlives the release of what was given, deliberately. No array here gives `E_UNEXPECTED`; a
///   null `clone` gives `S_OK`, and nothing is made.
class ZT_API NumArrayOI : public RefObj {
public:
    /// What is shown.
    using Array = CArray<double, double>;

    /// No array.
    NumArrayOI();
    /// With `bOwner` a new, empty array, which ends with this object; otherwise no array.
    explicit NumArrayOI(bool bOwner);
    /// Copies count, by-value mode, pointer and ownership. Of an object that owns its array, both
    /// would destroy it: whoever copies sees to it that only one of them ends with the array.
    NumArrayOI(const NumArrayOI& other);
    /// Destroys the array, if there is one and this object owns it.
    ~NumArrayOI() override;

    /// Gives, with a reference added, the part for `IArrayNum` and `IUnknown`, and the one for
    /// `IObject_ZT`. `IID_NativeObject` gives the `Array` itself, which may be null, with no
    /// reference added.
    ///
    /// `ITypeBasic_ZT` gives a new object with a life of its own, which shows the type of arrays
    /// of numbers, 16. Without an array the answer is `ERROR_INVALID_STATE`, a positive number,
    /// and `*ppv` stays as it was: a client that tests for failure by the sign goes on with a
    /// stale pointer.
    ///
    /// Any other identifier gives null and `E_NOINTERFACE`; a null `ppv` gives
    /// `DISP_E_PARAMNOTOPTIONAL`.
    HRESULT QueryInterface(const GUID& iid, void** ppv) override;

protected:
    class ZT_API XArrayNum final : public InterfacePart<XArrayNum, NumArrayOI, IArrayNum> {
    public:
        static auto Place() { return &NumArrayOI::m_xArrayNum; }

        /// `IArrayNum` and `IUnknown` give this part, any other identifier null and
        /// `E_NOINTERFACE`: the object is deliberately not asked.
        HRESULT QueryInterface(REFIID iid, void** ppv) override;
        HRESULT GetCount(std::int32_t* count) override;
        HRESULT SetSize(std::int32_t size) override;
        HRESULT GetAt(std::int32_t index, double* value) override;
        HRESULT SetAt(std::int32_t index, double value) override;
        HRESULT InsertAt(std::int32_t index, double value) override;
        HRESULT Add(double value) override;
        HRESULT RemoveAt(std::int32_t index) override;
        HRESULT RemoveAll() override;

    private:
        Array& Numbers() { return *Owner().m_pArray; }
        bool IsBeforeLast(std::int32_t index) {
            return index >= 0 && index < Numbers().GetSize() - 1;
        }
    };

    class ZT_API XObject_ZT final : public InterfacePart<XObject_ZT, NumArrayOI, IObject_ZT> {
    public:
        static auto Place() { return &NumArrayOI::m_xObject_ZT; }

        /// The object answers, whatever the identifier: that of `IUnknown` gives the other part.
        HRESULT QueryInterface(REFIID iid, void** ppv) override;
        HRESULT IsSame(IUnknown* other, std::int16_t* same) override;
        HRESULT GetHandle(std::uint32_t* handle) override;
        HRESULT CopyFrom(IUnknown* other) override;
        HRESULT Clone(IUnknown** clone) override;
        HRESULT ReservedA() override;
        HRESULT ReservedB() override;
    };

    XArrayNum m_xArrayNum;
    XObject_ZT m_xObject_ZT;
    Array* m_pArray;
    bool m_bOwner;
};

}  // namespace ZT
