/// @file
/// Arcs on the circle of angles.

#pragma once

#include <zt/frame/Export.h>
#include <zt/numerics/S1.h>
#include <zt/ranges/RangeR1.h>

#include <cstdint>

class CArchive;

namespace PW {
class RangeS1;
}

namespace ZT {

/// An arc on the circle of angles, from `m_min` counter-clockwise to `m_max`, both
/// included; or, with the external flag set, in the other sense: from `m_max`
/// counter-clockwise to `m_min`.
///
/// The limits are angles in radians in the canonical interval of `S1`, above -pi and up to
/// +pi. The order of two angles says nothing on a circle, so that `m_min` may lie above
/// `m_max`: such an arc crosses the seam at pi. How much of the circle an arc is stands in a
/// state of its own:
/// - **full**: the whole circle. The limits are normally `zPi` and `zPi`; those of a new
///   arc, which is full, are 0.0 and 0.0.
/// - **empty**: no point. The limits keep whatever they held, and some tests answer from
///   them; each says so.
/// - **partial**: the arc between the limits. Two equal limits are a point when they arrive
///   through `Set` or a constructor, and the whole circle when they arrive through `Copy`.
///
/// An arc reuses the record of a real interval, and all operations that are named here hide
/// those of `RangeR1` by that name, also in their other forms. What is not named here stays
/// callable and works on the limits as plain numbers, without a look at the state: so
/// `IsSingleton` asks for equal limits, which a full circle has, and `Unite` or `Swap` write
/// limits that `Update` has to bring into form. What `RangeR1` stores through its virtual
/// `Set` arrives here in canonical form.
///
/// Comparisons are those of `S1`, with the tolerance `zToler` unless there is an argument
/// for it. No operation allocates.
class ZT_API RangeS1 : public RangeR1 {
public:
    /// How much of the circle an arc is.
    enum EState : std::int32_t {
        eStateFull = 0,     ///< The whole circle.
        eStateEmpty = 1,    ///< Nothing, whatever the limits.
        eStatePartial = 2,  ///< What lies between the limits.
    };

    /// The state of the arc.
    EState m_eState;

    /// @name Making and storing
    /// @{

    /// The whole circle, with the limits 0.0 and 0.0, which are not those of `SetFull`.
    RangeS1() : RangeR1(0.0, 0.0), m_eState(eStateFull) {}
    /// The arc from `a` counter-clockwise to `b`, which are brought into canonical form. A
    /// full circle is not detected: (0, 0) is a point and (-pi, pi) the point at the seam.
    RangeS1(double a, double b)
        : RangeR1(S1::Factorize(a), S1::Factorize(b)), m_eState(eStatePartial) {}
    /// The arc from `a` counter-clockwise to `b`, whose angles are taken as they are.
    RangeS1(const S1& a, const S1& b)
        : RangeR1(a.GetAngle(), b.GetAngle()), m_eState(eStatePartial) {}
    /// The same limits, flag and state, to the bit.
    RangeS1(const RangeS1&) = default;

    /// Takes over limits and flag by the rule of `RangeR1::operator=`, which keeps limits that
    /// differ by less than the tolerance, and then the state. The result tells whether limits
    /// or flag changed.
    bool operator=(const RangeS1& r) {
        const bool changed = RangeR1::operator=(r);
        m_eState = r.m_eState;
        return changed;
    }

    EClass GetClass() const override;

    /// Brings two angles into canonical form and makes the arc between them, or the whole
    /// circle if `a` lies at -pi and `b` at pi. That is asked of the angles as they arrive and
    /// once more in canonical form: a raw `a` below -pi, however far, is at -pi for a `b` at
    /// pi. The flag stays.
    void Set(double a, double b) override;

    ~RangeS1() override = default;

    /// Makes the arc between the limits of `r`, through `Set`. Limits that are the same point
    /// by `S1::Equal` give the whole circle, also where `Set` makes a point of them; all others
    /// give a partial arc, also where `Set` finds the whole circle. The flag stays.
    void Copy(const RangeR1& r);

    /// Hands the limits, the flag and the state to the older sibling's arc.
    void CopyToPw(PW::RangeS1* target) const;

    /// Brings the limits into canonical form and looks for the full circle again, by `Set`. So
    /// an empty arc becomes partial or full.
    void Update() { Set(m_min, m_max); }

    /// Makes the arc empty. The limits stay.
    void SetEmpty() { m_eState = eStateEmpty; }

    /// Makes the arc the whole circle, with the limits `zPi` and `zPi`.
    void SetFull() { StoreArc(zPi, zPi, eStateFull); }

    /// Makes the arc its complement, ends included. The complement of a full arc comes out
    /// full; `GetComplimentary` gives an empty one.
    void SetComplimentary();

    /// Turns both limits by `d` and brings them into canonical form. The state stays.
    void Translate(double d) { StoreLimits(S1::Factorize(m_min + d), S1::Factorize(m_max + d)); }

    /// @}
    /// @name State
    /// @{

    /// Whether the state is empty.
    bool IsEmpty() const { return m_eState == eStateEmpty; }

    /// Whether the state is full.
    bool IsFull() const { return m_eState == eStateFull; }

    /// Whether the arc is empty or has equal limits, as the whole circle has too: a full arc
    /// is an empty interval here.
    bool IsEmptyInterval() const { return IsEmpty() || IsSingleton(); }

    /// Whether the arc holds the seam in its interior or at its start. An arc that ends at the
    /// seam does not, the whole circle does.
    bool IsSingular() const;

    /// The same for the arc from `a` counter-clockwise to `b`, which are brought into
    /// canonical form.
    static bool IsSingular(double a, double b);

    /// Whether both limits are valid by the static `S1::IsValid` and fit the state: limits
    /// that are different points need a partial arc, and limits at pi one that is not. So an
    /// empty arc that has kept the limits of an arc is not valid.
    bool IsValid() const;

    /// @}
    /// @name Measures and points
    /// @{

    /// The start of the arc. The whole circle starts at -pi, the lower side of the seam.
    double GetA() const { return IsFull() ? -zPi : m_min; }

    /// The angle from `m_min` counter-clockwise to `m_max`; a full turn for the whole circle.
    /// Neither the empty state nor the flag is looked at.
    double GetDiff() const { return IsFull() ? z2Pi : S1::diff(m_max, m_min, true); }

    /// The point at the ratio `t`. On an arc that is not singular, from `m_min` at 0 to
    /// `m_max` at 1, by the plain blend of the limits, as they stand. On a singular one from
    /// `m_max` at 0 round to `m_min`, a full turn on, at 1: the ends come in exchanged order,
    /// 0.5 is the middle of the arc, and the ratios between may lie off it, deliberately. The
    /// whole circle runs from pi through 0.
    double GetPoint(double t) const;

    /// The angle from `m_min` counter-clockwise to `x`, as a ratio of the arc: above 1 for an
    /// `x` that is not on it. 0.0 for the whole circle. A point arc divides by zero.
    double GetRatio(double x) const {
        return IsFull() ? 0.0 : S1::diff(x, m_min, true) / S1::diff(m_max, m_min, true);
    }

    /// A point off the arc: the middle of the complement, or, of an empty arc, the angle 0 up
    /// to rounding. False, with `x` as it was, for the whole circle. The flag does not count,
    /// so that the point lies on an external arc.
    bool GetAnyOutside(double& x) const;

    /// `x` in canonical form if it lies on the arc, and otherwise the nearer of the limits, a
    /// tie going to `m_max`. Off an external arc that is the farther one. 1e307 for an empty
    /// arc.
    double ToRangeS1(double x) const;

    /// @}
    /// @name Tests of points
    /// @{

    /// Whether the arc holds the canonical angle `x`, ends included. An empty arc is not asked
    /// for its state: it answers from the limits that it has kept.
    bool In(double x) const { return IsFull() || HoldsByLimits(x); }

    /// Whether `x` lies between `m_min` and `m_max`, away from both. Neither the flag nor the
    /// state counts, so that the whole circle with its limits at pi holds nothing here.
    bool InOpen(double x) const;

    /// The place of `x` against the arc: `eLocnOut`, `eLocnIn`, or at a limit within `tol`.
    ///
    /// On a singular arc the half circle from 0 to pi is asked first, whatever `m_min` is, and
    /// 0 is then `eLocnAtMin`; then what lies from -pi to `m_max`. Its start and the seam are
    /// not told apart from the interior, deliberately. On any other arc the limits count as
    /// they stand, as in `RangeR1::GetPointLocation`.
    ELocn GetPointLocation(double x, double tol) const;

    /// @}
    /// @name Arcs against arcs
    /// @{

    /// Whether this contains `r`. The whole circle contains everything, an empty arc what is
    /// empty, and a partial arc an `r` whose limits lie on it and which does not reach into the
    /// middle of the gap. An empty `r` answers from the limits that it has kept. A point does
    /// not contain itself, since its gap has no middle but the point.
    bool operator>=(const RangeS1& r) const;

    /// Whether this arc lies inside `r`: if it is empty, or if its limits lie on `r` and it
    /// does not hold the point that `r.GetAnyOutside` gives. For a full `r` that point is the
    /// angle 0.0, deliberately: an arc that holds it is not inside the whole circle, and the
    /// whole circle is inside nothing.
    bool IsInsideOf(const RangeS1& r) const;

    /// Whether `Intersect` on copies of the two leaves nothing.
    bool IsEmptyIntersection(const RangeS1& r) const;

    /// Whether `r` is the rest of the circle: full for an empty arc, empty for a full one, and
    /// otherwise with the limits exchanged, within the tolerance. Then the state of `r` is not
    /// looked at.
    bool IsComplimentary(const RangeS1& r) const;

    /// Makes `out` the rest of the circle, ends included, and tells whether there is any. Of
    /// the whole circle there is none: `out` becomes empty, keeps its limits, and the result
    /// is false. The flag of `out` stays.
    bool GetComplimentary(RangeS1& out) const;

    /// Cuts this arc down to what it shares with `r`, and tells in how many pieces that is: 0,
    /// 1 or 2. If they share nothing, the arc becomes empty and keeps its limits.
    ///
    /// Where two pieces remain, `r` passes through the gap of this arc. This arc becomes the
    /// piece from its own start to the end of `r`. The other piece is not delivered: `r` goes
    /// through its `Set` with its own limits. A single piece takes a limit of `r` that lies on
    /// this arc as it stands, also where the two are within the tolerance of one another; an
    /// arc on which neither lies keeps its own to the bit. A whole circle takes over the
    /// limits of a partial `r` by `Copy`, without its flag.
    unsigned char Intersect(RangeS1& r);

    /// Takes `r` away from this arc, ends excluded, and tells how many pieces remain: 0, 1 or
    /// 2. If nothing remains, the arc becomes empty and keeps its limits. Of two pieces the
    /// second is returned in `r`, through its `Set`.
    ///
    /// An `r` with equal limits, by `RangeR1::IsSingleton`, takes nothing away from a partial
    /// arc: a point, and the whole circle too.
    ///
    /// `*pChanged`, unless `pChanged` is null, tells about a change in some cases only,
    /// deliberately: when a full arc is cut, when the arc lies inside `r`, and when its start
    /// moves. It stays false when only the end moves, when two pieces remain, and when an `r`
    /// with the same limits takes all.
    unsigned char Subtract(RangeS1& r, bool* pChanged);

    /// The place of `r` against this arc. With a `tol` above the library's tolerance the limits
    /// of `r` are first snapped to those of this arc. Two pieces that are shared are judged by
    /// the first, which `Intersect` delivers.
    ERangeLocn GetRangeLocation(const RangeS1& r, double tol) const;

    /// @}
    /// @name Persistence
    /// @{

    /// Stores the limits and the state in an archive, or loads them: 16 bytes and one. The
    /// flag is not part of the record and stays as it is on loading. The archive raises its
    /// exception when it ends early.
    void Serialize(CArchive& archive);

    /// The state that a stored byte stands for: partial for any that is not 0 or 1.
    static EState ByteToState(unsigned char byte);

    /// @}

private:
    void StoreLimits(double a, double b) {
        m_min = a;
        m_max = b;
    }

    void StoreArc(double a, double b, EState state) {
        StoreLimits(a, b);
        m_eState = state;
    }

    // Whether `x` lies on the arc between the limits in the sense of the flag, whatever the
    // state.
    bool HoldsByLimits(double x) const { return S1::InRange(x, m_min, m_max, !m_bExternal); }

    bool HoldsLimitsOf(const RangeS1& r) const {
        return HoldsByLimits(r.m_min) && HoldsByLimits(r.m_max);
    }

    void SettleState(double a, double b);
    unsigned char IntersectPartial(RangeS1& r);
    unsigned char CutFull(const RangeS1& r, bool& changed);
    unsigned char CutInner(RangeS1& r, bool& changed);
    unsigned char CutEnds(const RangeS1& r, bool& changed);
    ERangeLocn GetInnerLocation(const RangeS1& r, double tol) const;
    ERangeLocn GetCoverLocation(const RangeS1& r) const;
};

}  // namespace ZT
