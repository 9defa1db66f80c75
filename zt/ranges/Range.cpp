#include <zt/ranges/Range.h>

namespace ZT {

Range::Range(double lo, double hi)
    : RangeR1(lo, hi), m_bDegrees(false), m_eScalarType(eScalarReal) {
    UpdateState();
}

RangeR1::EClass Range::GetClass() const {
    return eClassRange;
}

void Range::Set(double lo, double hi) {
    if (IsReal()) {
        RangeR1::Set(lo, hi);
        return;
    }
    // In radians whatever the unit, and only then compared with pi, deliberately.
    const double a = S1::Factorize(lo);
    const double b = S1::Factorize(hi);
    if (b > zPiMinus && a < zSeamBand - zPi) {
        SetFull();
    } else {
        Store(a, b, RangeS1::eStatePartial);
    }
}

void Range::Copy(const RangeR1& r) {
    RangeR1::operator=(r);
    if (r.GetClass() == eClassRange) {
        const auto& typed = static_cast<const Range&>(r);
        m_eState = typed.m_eState;
        m_eScalarType = typed.m_eScalarType;
        m_bDegrees = typed.m_bDegrees;
    }
    if (IsReal()) return;
    if (!S1::Equal(m_min, m_max, m_bDegrees)) {
        m_eState = RangeS1::eStatePartial;
    } else if (zToler > std::fabs(r.m_min - zPi)) {
        SetFull();  // Also the copy of an empty range, but not one in degrees, deliberately.
    }
}

// Of the kinds that count as angles only the angle itself has limits to store, deliberately.
void Range::SetWhole(RangeS1::EState state) {
    if (m_eScalarType == eScalarAngle) m_min = m_max = PI();
    m_eState = state;
}

void Range::SetEmpty() {
    if (IsReal()) {
        RangeR1::SetEmpty();
    } else {
        SetWhole(RangeS1::eStateEmpty);
    }
}

void Range::SetFull() {
    if (IsReal()) {
        RangeR1::SetFull(true);
    } else {
        SetWhole(RangeS1::eStateFull);
    }
}

void Range::SetFull(bool) {
    RangeR1::SetFull(IsReal());
    m_eState = RangeS1::eStateFull;
}

void Range::UpdateState() {
    m_eState = StateOfLimits();
}

RangeS1::EState Range::StateOfLimits() const {
    const bool isFull =
        IsReal() ? m_min < -zFinite && m_max > zFinite
                 : S1::Equal(m_min, MPI(), m_bDegrees) && S1::Equal(m_max, PI(), m_bDegrees);
    if (isFull) return RangeS1::eStateFull;
    // The order of the limits counts also for angles here, deliberately.
    return RangeR1::IsEmpty() ? RangeS1::eStateEmpty : RangeS1::eStatePartial;
}

bool Range::ToDegrees() {
    if (m_bDegrees) return false;
    RangeR1::ToDegrees();
    m_bDegrees = true;
    return true;
}

bool Range::ToRadians() {
    if (!m_bDegrees) return false;
    RangeR1::ToRadians();
    m_bDegrees = false;
    return true;
}

bool Range::IsValid() const {
    if (IsReal()) return RangeR1::IsValid();
    const double lo = InRadians(m_min);
    const double hi = InRadians(m_max);
    if (!S1::IsValid(lo) || !S1::IsValid(hi)) return false;
    const bool isPartial = m_eState == RangeS1::eStatePartial;
    if (!S1::Equal(lo, hi, false)) return isPartial;
    return !(zToler > std::fabs(lo - zPi) && isPartial);
}

bool Range::InOpen(double x) const {
    if (IsReal()) return RangeR1::InOpen(x, zToler);
    if (m_eState == RangeS1::eStateFull) return true;
    const double angle = InRadians(x);
    return HoldsAngle(x) && !(zToler > std::fabs(angle - InRadians(m_min))) &&
           !(zToler > std::fabs(angle - InRadians(m_max)));
}

double Range::GetPoint(double t) const {
    if (IsReal()) return RangeR1::GetPoint(t);
    if (m_eState == RangeS1::eStateFull) {
        return zToler > t ? -zPiMinus : (1 - t) * -zPi + t * zPi;
    }
    if (HasEqualLimits()) return m_min;
    S1 point(m_min);
    point.Translate(S1::diff(m_max, m_min, true) * t);
    return point.GetAngle();
}

double Range::GetRatio(double x) {
    if (HasEqualLimits()) return 0.0;
    if (IsReal()) return RangeR1::GetRatio(x);
    const bool converted = ToRad(x);
    const double ratio = S1::diff(x, m_min, true) / S1::diff(m_max, m_min, true);
    if (converted) ToDegrees();
    return ratio;
}

bool Range::Include(double x) {
    const bool wasEmpty = IsEmpty();
    bool changed = false;
    if (x < m_min - zToler) {
        m_min = x;
        if (wasEmpty) m_max = x;
        changed = true;
    }
    if (x > m_max + zToler) {
        m_max = x;
        if (wasEmpty) m_min = x;
        changed = true;
    }
    return changed;
}

double Range::MiddleOfGap() const {
    double middle = S1::GetSegmentPoint(InRadians(m_max), InRadians(m_min), 0.5, true);
    if (m_bDegrees) S1::ToDegree(middle);
    return middle;
}

bool Range::operator>=(const Range& r) const {
    if (IsReal()) return RangeR1::operator>=(r);
    if (m_eState == RangeS1::eStateFull) return true;
    if (m_eState == RangeS1::eStateEmpty) return r.IsEmpty();
    return In(r.m_min) && In(r.m_max) && !r.In(MiddleOfGap());
}

Range& Range::operator+=(const Range& r) {
    if (IsReal()) {
        RangeR1::operator+=(r);
    } else if (*this >= r) {
        return *this;
    } else if (r >= *this) {
        RangeR1::operator=(r);
    } else if (In(r.m_min)) {
        m_max = r.m_max;
    } else {
        m_min = r.m_min;
    }
    return *this;
}

}  // namespace ZT
