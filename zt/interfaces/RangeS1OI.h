/// @file
/// The interface object that shows an arc.

#pragma once

#include <zt/interfaces/IRange.h>
#include <zt/interfaces/InterfacePart.h>
#include <zt/ranges/RangeS1.h>

namespace ZT {

/// An arc with an interface added, which shows the arc that was attached as `IRange`. It does
/// not show itself unless it is attached to itself; **before `AttachRange` it shows nothing**,
/// and all operations of the interface answer `E_UNEXPECTED`, but for `GetB` with a null pointer,
/// which is refused first, with `DISP_E_PARAMNOTOPTIONAL`.
///
/// It lives as a `RangeR1OI` does: counted by itself, made with `new` and ended when its count,
/// which starts at 0, falls back to 0; or embedded in a client's object, which
/// `AttachUnknown` lets count for it.
///
/// As `IRange`, it gives the start by `RangeS1::GetA`, which is -pi for the whole circle, and
/// the stored end. It sets both, in radians, by the arc's virtual `Set`, if both are valid by
/// the static `S1::IsValid`; otherwise it answers `DISP_E_PARAMNOTOPTIONAL`. So -pi is refused,
/// and a NaN is not.
///
/// A query writes `*ppv` only when it succeeds, **and `ppv` is not tested for null**.
class ZT_API RangeS1OI : public RangeS1 {
public:
    /// The whole circle of a new arc, which shows nothing.
    RangeS1OI() = default;
    /// Copies all fields, the count included. **Where `o` shows itself, the copy goes on showing
    /// `o`.**
    RangeS1OI(const RangeS1OI& o) = default;
    /// Takes over the arc by the rule of `RangeS1::operator=`, which keeps limits that differ
    /// by less than the tolerance, and then all other fields as the copy constructor does. The
    /// result tells whether limits or flag changed.
    bool operator=(const RangeS1OI& o);
    ~RangeS1OI() override;

    /// Shows `p`, which must live as long as this object is used. With null there is no range
    /// to show.
    void AttachRange(RangeS1* p) { m_pRange = p; }
    /// Lets `p` count for this object. No reference is added to it: it must outlive this
    /// object.
    void AttachUnknown(IUnknown* p) { m_pUnknown = p; }

    /// `AddRef` of the outer object, if there is one; otherwise adds a reference and gives the
    /// new count.
    ulong AddRef();
    /// `Release` of the outer object, if there is one; otherwise takes a reference off and
    /// gives the new count. At 0 the object is deleted.
    ulong Release();
    /// `IRange` gives the part that shows the arc, with a reference added. Any other identifier
    /// gives `E_NOINTERFACE`, deliberately also that of `IUnknown`.
    HRESULT QueryInterface(const GUID& iid, void** ppv);

protected:
    class ZT_API XRange final : public InterfacePart<XRange, RangeS1OI, IRange> {
    public:
        static auto Place() { return &RangeS1OI::m_xRange; }

        HRESULT QueryInterface(REFIID iid, void** ppv) override;
        HRESULT GetA(double* a) override;
        HRESULT GetB(double* b) override;
        HRESULT Set(double a, double b) override;
    };

    XRange m_xRange;
    RangeS1* m_pRange = nullptr;     // The arc that is shown; null for none.
    IUnknown* m_pUnknown = nullptr;  // What counts for this object; null for its own count.
    ulong m_nRef = 0;
};

}  // namespace ZT
