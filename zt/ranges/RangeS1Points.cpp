// Points of an arc: on it, off it, and where they lie.

#include <zt/ranges/RangeS1.h>

namespace ZT {

namespace {

// On an arc, before and after are both outside.
RangeR1::ELocn ArcLocation(RangeR1::ELocn onLine) {
    const bool outside = onLine == RangeR1::eLocnBelow || onLine == RangeR1::eLocnAbove;
    return outside ? RangeR1::eLocnOut : onLine;
}

}  // namespace

double RangeS1::GetPoint(double t) const {
    if (!IsSingular()) return RangeR1::GetPoint(t);
    return S1::Factorize((1 - t) * m_max + t * (m_min + z2Pi));  // From m_max on, deliberately.
}

bool RangeS1::GetAnyOutside(double& x) const {
    if (IsFull()) return false;
    if (IsEmpty()) {
        x = S1::Factorize(RangeR1::GetPoint(0.5, zPi, zPi + z2Pi));
    } else if (S1::InRange(zPi, m_max, m_min, true) && std::fabs(m_min - zPi) > zToler) {
        x = S1::Factorize(RangeR1::GetPoint(0.5, m_min, m_max + z2Pi));
    } else {
        x = RangeR1::GetPoint(0.5, m_max, m_min);
    }
    return true;
}

double RangeS1::ToRangeS1(double x) const {
    const double angle = S1::Factorize(x);
    if (IsEmpty()) return zInfinity;
    if (In(angle)) return angle;
    const bool nearerToStart = S1::diff(angle, m_max, true) > S1::diff(m_min, angle, true);
    return nearerToStart ? m_min : m_max;
}

bool RangeS1::InOpen(double x) const {
    return S1::InRange(x, m_min, m_max, true) && !IsEnd(x);
}

RangeR1::ELocn RangeS1::GetPointLocation(double x, double tol) const {
    if (IsFull()) return eLocnIn;
    if (IsEmpty()) return eLocnOut;
    if (!IsSingular()) return ArcLocation(RangeR1::GetPointLocation(x, tol));

    // From 0 on and not from m_min, deliberately.
    const ELocn upper = RangeR1(0.0, zPi).GetPointLocation(x, tol);
    if (upper == eLocnIn || upper == eLocnAtMin) return upper;
    if (upper == eLocnAtMax) return eLocnIn;

    const ELocn lower = RangeR1(-zPi, m_max).GetPointLocation(x, tol);
    if (lower == eLocnAtMin) return m_max > tol - zPi ? eLocnIn : eLocnAtMax;
    return ArcLocation(lower);
}

}  // namespace ZT
