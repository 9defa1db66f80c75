#include <zt/numerics/S1.h>

#include <platform/collections/CList.h>

namespace ZT {

// More half turns than 32 bits count, or none that can be counted.
double S1::FactoredFar(double angle) {
    double whole;
    const double fraction = std::modf(angle / zPi, &whole);
    return FromHalfTurns((TruncateToInt32(whole) & 1) != 0, fraction * zPi);
}

S1 S1::GetSegmentPoint(const S1& other, double t) const {
    double d = (other - *this).m_angle;
    // A difference that has been reduced is never longer than half a turn.
    if (std::fabs(d) > zPiPlus) {
        const double otherWay = z2Pi - std::fabs(d);
        d = d > 0 ? -otherWay : otherWay;
    }
    return S1(m_angle + d * t);
}

bool S1::IsCCWSequence(const S1& a, const S1& b) const {
    const double toSeam = zPi - m_angle;
    S1 first(a);
    S1 second(b);
    if (std::fabs(toSeam) > zToler) {
        first = first.m_angle + toSeam;
        second = second.m_angle + toSeam;
    }
    return second.m_angle > first.m_angle - zToler;
}

void S1::InsertSorted(CList<S1, S1>& list) const {
    if (list.GetCount() < 2) {
        list.AddTail(*this);
        return;
    }
    POSITION previous = list.GetTailPosition();
    for (POSITION next = list.GetHeadPosition(); next != nullptr;) {
        const POSITION current = next;
        const S1& value = list.GetNext(next);
        if (list.GetAt(previous).IsCCWSequence(*this, value)) {
            list.InsertAfter(previous, *this);
            return;
        }
        previous = current;
    }
    // A value that no gap takes is dropped, deliberately.
}

bool S1::InRangeNearEnd(double x, double s, double e) {
    if (!IsValid(s) || !IsValid(e) || !IsValid(x)) return false;
    if (s > 0 && 0 > e) {
        return RangeR1::In(x, s, zPi, zToler) || RangeR1::In(x, -zPi, e, zToler);
    }
    if (!(s > e)) return RangeR1::In(x, s, e, zToler);
    if (Equal(x, s, false) || Equal(x, e, false)) return true;
    if (zToler > std::fabs(s - zPi)) return RangeR1::In(x, -zPi, e, zToler);
    return !RangeR1::In(x, e, s, zToler);
}

bool S1::InOpenRange(double x, double a, double b, bool bCCW) {
    if (!InRange(x, a, b, bCCW)) return false;
    const double fromA = Raised(x, a);
    if (zToler > std::fabs(fromA - a)) return false;
    const double fromB = Raised(x, b);
    return !(zToler > std::fabs(fromB - b));
}

}  // namespace ZT
