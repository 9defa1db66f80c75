// Moving, scaling and fitting a real interval.

#include <zt/ranges/RangeR1.h>

namespace ZT {

void RangeR1::Map(RangeR1& r, const RangeR1& from) const {
    r.Set(Map(r.m_min, from), Map(r.m_max, from));
}

void RangeR1::Spread(double len) {
    const double c = GetMiddle();
    StoreLimits(c - len * 0.5, c + len * 0.5);
}

void RangeR1::Scale(double k) {
    const double c = GetCenter();
    const double half = GetLength() * k * 0.5;
    Set(c - half, c + half);
}

void RangeR1::Inflate(double k) {
    const double c = GetCenter();
    const double half = GetLength() * (1 + k) * 0.5;
    Set(c - half, c + half);
}

RangeR1& RangeR1::operator*=(double k) {
    StoreLimits(m_min * k, m_max * k);
    if (k < 0 && IsEmpty()) Swap();
    return *this;
}

bool RangeR1::SetCenter(double c) {
    if (zToler > std::fabs(GetMiddle() - c)) return false;
    const double half = GetLength() * 0.5;
    StoreLimits(c - half, c + half);
    return true;
}

void RangeR1::SetLengthKeepCenter(double len) {
    const double c = GetCenter();
    Set(c - len * 0.5, c + len * 0.5);
}

void RangeR1::SetLengthKeepLimit(double len, unsigned char i) {
    if (i != 0) {
        m_min = m_max - len;
    } else {
        m_max = m_min + len;
    }
}

void RangeR1::AddMargin(const RangeR1& r, double margin) {
    const double needed = margin - zToler;
    const double lo = needed > r.m_min - m_min ? r.m_min - margin : m_min;
    const double hi = needed > m_max - r.m_max ? r.m_max + margin : m_max;
    StoreLimits(lo, hi);
}

void RangeR1::AdjustCentral(const RangeR1& r) {
    const double c = GetMiddle();
    const double half = std::max(std::fabs(r.m_max - c), std::fabs(r.m_min - c));
    StoreLimits(c - half, c + half);
}

void RangeR1::Center(const RangeR1& r) {
    const double room = (r.GetLength() - GetLength()) * 0.5;
    if (zToler > room) return;
    Set(r.m_min + room, r.m_max - room);
}

bool RangeR1::MakeSymmetric() {
    const double m = std::max(std::fabs(m_min), std::fabs(m_max));
    const bool changes = std::fabs(m_min + m) > zToler || std::fabs(m_max - m) > zToler;
    Set(-m, m);
    return changes;
}

bool RangeR1::MakeValid() {
    if (m_max >= m_min) return false;
    Swap();
    return true;
}

void RangeR1::MakeValid(double v) {
    if (zToler > std::fabs(v)) {
        Set(-10, 10);
    } else if (v < 0) {
        Set(1.5 * v, 0);
    } else {
        Set(0, 1.5 * v);
    }
}

bool RangeR1::MoveAwayFrom(const RangeR1& r) {
    RangeR1 shared(*this);
    if (!shared.Intersect(r)) return false;
    const double d = shared.GetLength();
    Translate(r.GetCenter() > GetCenter() ? -d : d);
    return true;
}

void RangeR1::Snap(double& x, double tol) const {
    if (tol > std::fabs(x - m_min)) {
        x = m_min;
    } else if (tol > std::fabs(x - m_max)) {
        x = m_max;
    }
}

void RangeR1::Snap(RangeR1& r, double tol) const {
    Snap(r.m_min, tol);
    Snap(r.m_max, tol);
}

namespace {

// The reciprocal of a limit. That of zero is infinite with the sign opposite to the
// other limit, deliberately.
double Reciprocal(double limit, double other) {
    if (zToler > std::fabs(limit)) return other < 0 ? zInfinity : -zInfinity;
    return std::fabs(limit) > zFinite ? 0 : 1 / limit;
}

}  // namespace

bool RangeR1::Invert() {
    if (!IsValid() || IsEmpty()) return false;
    if (zToler > std::fabs(m_min) && zToler > std::fabs(m_max)) {
        StoreLimits(zInfinity, zInfinity);
        return true;
    }
    // An infinite upper limit takes the reciprocal of the lower one with it, deliberately.
    const bool unlimited = std::fabs(m_max) > zFinite;
    const double a = unlimited ? 0 : Reciprocal(m_min, m_max);
    const double b = Reciprocal(m_max, m_min);
    a >= b ? StoreLimits(b, a) : StoreLimits(a, b);
    return true;
}

}  // namespace ZT
