/// @file
/// The interface object that shows a client's array with variants for its elements.

#pragma once

#include <zt/frame/RefObj.h>
#include <zt/interfaces/IArray.h>
#include <zt/interfaces/IArray2.h>
#include <zt/interfaces/IArray_PW.h>
#include <zt/interfaces/InterfacePart.h>

namespace ZT {

/// An adapter that shows an `IArray` as `IArray2` and `IArray_PW`, and lives and dies with it.
///
/// The adapter itself adds no reference to the array and releases none. Its parts do: each
/// reference that is added to a part is also added to the array, and each release of a part
/// releases the array as well. The count of the adapter starts at 0 and ends it when a release
/// brings it back there.
///
/// A query of the adapter itself, which only code inside the library can make, raises the
/// adapter's own count alone. A pointer that was got that way and is released through the part
/// takes from the array a reference that it did not add. What `Create` gives is balanced.
class ZT_API Array2OI : public RefObj {
public:
    /// No array.
    Array2OI();
    /// Shows `p`, with no reference added to it.
    explicit Array2OI(IArray* p);
    /// Copies count, by-value mode and pointer.
    Array2OI(const Array2OI& other);
    /// Does not release the array.
    ~Array2OI() override;

    /// Gives in `*ppv` a new adapter of `p` as `IArray2`, with one reference, which is one of
    /// the array too. A null `p` or `ppv` gives `DISP_E_PARAMNOTOPTIONAL`, and nothing is made.
    static HRESULT Create(IArray* p, void** ppv);

private:
    template <class Part, class Object, class Interface>
    friend class InterfacePart;

    /// `IArray2` and `IUnknown` give that part, `IArray_PW` the other, with a reference added to
    /// this object alone; `IID_NativeObject` gives this object, with none added.
    HRESULT QueryInterface(const GUID& iid, void** ppv) override;

protected:
    class ZT_API XArray2 final : public InterfacePart<XArray2, Array2OI, IArray2> {
    public:
        static auto Place() { return &Array2OI::m_xArray2; }

        /// `IArray2` gives this part. Every other identifier, deliberately that of `IUnknown`
        /// too, goes to the array: what comes back then is the array and not the adapter. A null
        /// `ppv` gives `DISP_E_PARAMNOTOPTIONAL`, no array `E_UNEXPECTED`.
        HRESULT QueryInterface(REFIID iid, void** ppv) override;
        /// Adds a reference to adapter and array, and gives the count of the array. 1 without an
        /// array.
        ULONG AddRef() override;
        /// Takes a reference off the array and the adapter, and gives the count of the array.
        /// 1 without an array.
        ULONG Release() override;
        HRESULT GetCount(std::int32_t* count) override;
        HRESULT GetAt(std::int32_t index, VARIANT* element) override;
        HRESULT SetAt(std::int32_t index, const VARIANT* element) override;
        HRESULT ArrayOp4() override;
        HRESULT ArrayOp5(const VARIANT* object) override;
        HRESULT ArrayOp6(const VARIANT* object) override;
        HRESULT ReservedA() override;
        HRESULT ReservedB() override;
        HRESULT SetAt2(std::int32_t index, const VARIANT* element) override;
        HRESULT ArrayOp7() override;

    private:
        IArray* Array() { return Owner().m_pArray; }
    };

    /// Does in each of its operations, the three of `IUnknown` included, what the other part
    /// does: so a query for `IArray_PW` on it goes to the array.
    class ZT_API XArray_PW final : public InterfacePart<XArray_PW, Array2OI, IArray_PW> {
    public:
        static auto Place() { return &Array2OI::m_xArray_PW; }

        HRESULT QueryInterface(REFIID iid, void** ppv) override;
        ULONG AddRef() override;
        ULONG Release() override;
        HRESULT GetCount(std::int32_t* count) override;
        HRESULT GetAt(std::int32_t index, VARIANT* element) override;
        HRESULT SetAt(std::int32_t index, const VARIANT* element) override;
        HRESULT ArrayOp4() override;
        HRESULT ArrayOp5(const VARIANT* object) override;
        HRESULT ArrayOp6(const VARIANT* object) override;
        HRESULT ReservedA() override;
        HRESULT ReservedB() override;
        HRESULT SetAt2(std::int32_t index, const VARIANT* element) override;
        HRESULT ArrayOp7() override;

    private:
        XArray2& Other() { return Owner().m_xArray2; }
    };

    XArray2 m_xArray2;
    XArray_PW m_xArray_PW;
    IArray* m_pArray;
};

/// The index of an object in a client's array; -1 when it is not in there, and for a null array.
///
/// Each element is released before it is compared, so the array has to hold references of its
/// own. What the array answers is not looked at: an element that it fails to give counts as
/// null. A null `pObj` is therefore found at the first element that is null or cannot be had.
ZT_API std::int32_t zglFindObj(IArray* pArray, IUnknown* pObj);

}  // namespace ZT
