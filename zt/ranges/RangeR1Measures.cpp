// Measures of a real interval: lengths, ratios, distances and factors.

#include <zt/ranges/RangeR1.h>

namespace ZT {

bool RangeR1::ToUnitRange(double& x) const {
    if (!(zToler > GetLength())) {
        x = (x - m_min) / GetLength();
        return true;
    }
    if (!(zToler > std::fabs(x - m_min))) return false;
    x = 0.0;
    return true;
}

int RangeR1::GetCoverSegmCount(double step) const {
    return TruncateToInt32(std::ceil(GetLength() / step));
}

double RangeR1::GetDist(double x, double* pNearest) const {
    if (IsEmpty()) return zInfinity;
    double unused;
    double& nearest = pNearest != nullptr ? *pNearest : unused;
    if (IsFull()) {
        nearest = x;
        return 0.0;
    }
    if (x > GetCenter()) {
        nearest = m_max + zToler > x ? x : m_max;
        return x - m_max;
    }
    nearest = x > m_min - zToler ? x : m_min;
    return m_min - x;
}

double RangeR1::GetDist(const RangeR1& r, bool bInside) const {
    if (!IsIntersection(r, false)) return m_min > r.m_max ? m_min - r.m_max : r.m_min - m_max;
    if (!bInside || !r.IsInsideOf(*this)) return 0.0;
    if (r.IsFull()) return 0.0;
    const double center = r.GetCenter();
    const double fromStart = m_min > center ? m_min - r.m_max : r.m_min - m_min;
    const double fromEnd = m_max > center ? m_max - r.m_max : r.m_min - m_max;
    return std::min(fromStart, fromEnd);
}

double RangeR1::GetMaxDist(double x, double* pFarthest) const {
    if (IsEmpty()) return zInfinity;
    if (IsFull()) return 0.0;
    const bool fromStart = x > GetCenter();
    if (pFarthest != nullptr) *pFarthest = fromStart ? m_min : m_max;
    return fromStart ? x - m_min : m_max - x;
}

double RangeR1::GetMaxDist(const RangeR1& r) const {
    if (IsInsideOf(r)) return std::max(r.m_max - m_min, m_max - r.m_min);
    return std::max(r.m_max, m_max) - std::min(r.m_min, m_min);
}

double RangeR1::GetScale(const RangeR1& r, double pivot) const {
    const bool pivotInside =
        pivot - m_min > zToler && pivot - r.m_min > zToler && m_max - pivot > zToler;
    if (!pivotInside) return zInfinity;
    return std::min((pivot - m_min) / (pivot - r.m_min), (m_max - pivot) / (r.m_max - pivot));
}

double RangeR1::GetArcSingilarSamplingPt(int i, int n, bool bStart) const {
    const double count = n;
    const double k = bStart ? i : count - i;
    const double w = std::cos(k * 0.5 * zPi / count);
    return bStart ? m_min * w + (1 - w) * m_max : m_min * (1 - w) + w * m_max;
}

}  // namespace ZT
