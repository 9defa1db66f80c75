/// @file
/// The interface object that shows an interval.

#pragma once

#include <zt/interfaces/IRange.h>
#include <zt/interfaces/InterfacePart.h>
#include <zt/ranges/RangeR1.h>

namespace ZT {

/// An interval with an interface added, so that one held by value can be shown as `IRange`
/// without an allocation of its own. It shows itself, or the interval that was attached.
///
/// It has two lives:
/// - **Counted by itself**, with no outer object: made with `new`, it ends when its count falls
///   to 0. The count starts at 0, so that the first query gives the first reference. One that
///   is not made with `new` must never be released to 0.
/// - **Embedded** in a client's object: the client calls `AttachUnknown` with itself, and
///   `AttachRange` with the value to show. References are then the client's, and this object
///   ends with it.
///
/// As `IRange`, it gives the stored limits, `m_min` and `m_max`, and sets them by the interval's
/// virtual `Set`, in any order. A read-only one refuses `Set`, first of all, with the positive
/// `ERROR_CALL_NOT_IMPLEMENTED`.
///
/// A query writes `*ppv` only when it succeeds, **and `ppv` is not tested for null**.
class ZT_API RangeR1OI : public RangeR1 {
public:
    /// The canonical empty interval, which shows itself.
    RangeR1OI() : m_pRange(this) {}
    /// Copies all fields, the count included. **Where `o` shows itself, the copy goes on showing
    /// `o`.**
    RangeR1OI(const RangeR1OI& o) = default;
    /// Takes over the limits and the flag by the rule of `RangeR1::operator=`, which keeps
    /// limits that differ by less than the tolerance, and then all other fields as the copy
    /// constructor does. The result tells whether limits or flag changed.
    bool operator=(const RangeR1OI& o);
    ~RangeR1OI() override;

    /// Shows `p`, which must live as long as this object is used. With null there is no range
    /// to show.
    void AttachRange(RangeR1* p) { m_pRange = p; }
    /// Lets `p` count for this object. No reference is added to it: it must outlive this
    /// object.
    void AttachUnknown(IUnknown* p) { m_pUnknown = p; }

    /// `AddRef` of the outer object, if there is one; otherwise adds a reference and gives the
    /// new count.
    ulong AddRef();
    /// `Release` of the outer object, if there is one; otherwise takes a reference off and
    /// gives the new count. At 0 the object is deleted.
    ulong Release();
    /// `IRange` and `IUnknown` give the part that shows the interval, with a reference added.
    /// Any other identifier gives `E_NOINTERFACE`.
    HRESULT QueryInterface(const GUID& iid, void** ppv);

protected:
    class ZT_API XRange final : public InterfacePart<XRange, RangeR1OI, IRange> {
    public:
        static auto Place() { return &RangeR1OI::m_xRange; }

        HRESULT QueryInterface(REFIID iid, void** ppv) override;
        HRESULT GetA(double* a) override;
        HRESULT GetB(double* b) override;
        HRESULT Set(double a, double b) override;
    };

    XRange m_xRange;
    RangeR1* m_pRange;               // The interval that is shown; null for none.
    IUnknown* m_pUnknown = nullptr;  // What counts for this object; null for its own count.
    ulong m_nRef = 0;

public:
    /// Whether the interface refuses to set the limits. This library never sets it.
    bool m_bReadOnly = false;
};

}  // namespace ZT
