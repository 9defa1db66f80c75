#include <zt/ranges/SetR1Spaced.h>

#include <algorithm>

namespace ZT {

SetR1Spaced::~SetR1Spaced() = default;

bool SetR1Spaced::IsValidEx(double d) const {
    if (!IsValid()) return false;
    for (INT_PTR i = 0; i + 1 < GetSize(); ++i) {
        if (m_pData[i].m_max - m_pData[i + 1].m_min + d > zToler) return false;
    }
    return true;
}

int SetR1Spaced::GetCenter() const {
    const int n = GetCount32();
    return std::max(n / 2 - (n % 2 == 0 ? 1 : 0), 0);
}

void SetR1Spaced::Arrange() {
    const int n = GetCount32();
    if (n < 2) return;
    const int c = GetCenter();
    if (c < n - 1) PushRange(c + 1, false, m_pData[c].m_max - m_pData[c + 1].m_min);
    if (c >= 1) PushRange(c - 1, true, m_pData[c - 1].m_max - m_pData[c].m_min);
}

void SetR1Spaced::Arrange(double spacing) {
    if (!(spacing > -zToler)) return;
    if (std::fabs(spacing) < zToler) return Arrange();
    SetR1Spaced spread(*this);
    spread.Expand(spacing * 0.5);
    spread.Arrange();
    Center(spread);
}

double SetR1Spaced::PushRange(int i, bool bLower, double d) {
    const int n = GetCount32();
    if (n < 2 || i >= n) return 0;
    const int c = GetCenter();
    if (bLower) {
        const int stop = i <= c ? 0 : std::min(c + 1, n - 1);
        for (; i >= stop; --i) d = PushSingleRange(i, bLower, d);
    } else {
        const int stop = i >= c ? n - 1 : std::max(c - 1, 0);
        for (; i <= stop; ++i) d = PushSingleRange(i, bLower, d);
    }
    return d;
}

double SetR1Spaced::PushSingleRange(int i, bool bLower, double d) {
    const int n = GetCount32();
    if (i >= n) return 0;
    RangeR1& item = (*this)[i];
    double move = std::max(d, 0.0);
    double rest = d;
    if (bLower ? i >= 1 : i < n - 1) {
        const double gap =
            bLower ? item.m_min - m_pData[i - 1].m_max : m_pData[i + 1].m_min - item.m_max;
        if (gap < 0 && d < 0) move = std::max(gap, d);
        rest = d - gap;
    }
    item.Translate(bLower ? -move : move);
    return rest;
}

}  // namespace ZT
