#include <zt/ranges/SetR1.h>

template class Collections::ElementArray<ZT::RangeR1, const ZT::RangeR1&>;
template class CArray<ZT::RangeR1, const ZT::RangeR1&>;

namespace ZT {

namespace {

// The best point so far in a search over several sets.
struct Least {
    explicit Least(Pair2<int, double>& out) : best(out) { best = {-1, zFinite}; }

    void Offer(int index, double point) {
        if (point < best.m_second) best = {index, point};
    }

    bool IsFound() const { return best.m_first >= 0; }

    Pair2<int, double>& best;
};

template <class Point>
bool FindLeast(const SetR1::Sets& sets, Pair2<int, double>& out, Point point) {
    Least least(out);
    int index = 0;
    for (const SetR1* set : sets) least.Offer(index++, point(*set));
    return least.IsFound();
}

}  // namespace

SetR1::~SetR1() = default;

void SetR1::Copy(const SetR1& other) {
    SetSize(other.GetSize());
    for (INT_PTR i = GetSize(); i-- > 0;) m_pData[i] = other.m_pData[i];
}

void SetR1::SetRange2(int i, double lo, double hi, const RangeR1* pClip) {
    RangeR1& member = (*this)[i];
    member.Set(lo, hi);
    if (pClip != nullptr) member.Intersect(*pClip);
}

bool SetR1::IsValid() const {
    for (const RangeR1& member : *this) {
        if (member.IsEmpty()) return false;
    }
    return true;
}

bool SetR1::IsValidEx(double d) const {
    if (!IsValid()) return false;
    for (INT_PTR i = 1; i < GetSize(); ++i) {
        if (m_pData[i - 1].m_max > m_pData[i].m_min - d) return false;
    }
    return true;
}

void SetR1::GetBounds(RangeR1& out) const {
    out.SetEmpty();
    for (INT_PTR i = GetSize(); i-- > 0;) out.Unite(m_pData[i]);
}

int SetR1::FindRange(double x) const {
    for (INT_PTR i = 0; i < GetSize(); ++i) {
        if (m_pData[i].In(x, zToler)) return static_cast<int>(i);
    }
    return -1;
}

// The index of the first member from `from` on that ends at or above `x`; the size if none does.
INT_PTR SetR1::FirstEndingFrom(double x, INT_PTR from) const {
    INT_PTR i = from;
    while (i < GetSize() && !(m_pData[i].m_max >= x)) ++i;
    return i;
}

int SetR1::FindPrevRange(double x, bool* pIn) const {
    const INT_PTR i = FirstEndingFrom(x, 0);
    if (i == GetSize()) return -1;
    if (pIn != nullptr) *pIn = x >= m_pData[i].m_min;
    return static_cast<int>(i);
}

double SetR1::GetFirstPoint(double x) const {
    if (IsEmpty()) return zInfinity;
    if (x <= -zFinite) return m_pData[0].m_min;
    const INT_PTR i = FirstEndingFrom(x, 0);
    if (i == GetSize()) return zInfinity;
    return x >= m_pData[i].m_min ? x : m_pData[i].m_min;
}

double SetR1::GetLastPoint() const {
    return IsEmpty() ? zInfinity : m_pData[GetUpperBound()].m_max;
}

double SetR1::GetLastPointFirstRange() const {
    return IsEmpty() ? zInfinity : m_pData[0].m_max;
}

bool SetR1::GetFirstPoint(const Sets& sets, double x, Pair2<int, double>& out) {
    return FindLeast(sets, out, [x](const SetR1& set) { return set.GetFirstPoint(x); });
}

bool SetR1::GetLastPointFirstRange(const Sets& sets, Pair2<int, double>& out) {
    return FindLeast(sets, out, [](const SetR1& set) { return set.GetLastPointFirstRange(); });
}

void SetR1::Unite(const RangeR1& r) {
    const INT_PTR i = FirstEndingFrom(r.m_min, 0);
    if (i == GetSize()) {
        Add(r);
        return;
    }
    RangeR1& first = m_pData[i];
    const bool loIn = r.m_min >= first.m_min;
    // What ends below the lower limit ends below the upper one, if they are in order.
    const INT_PTR j = FirstEndingFrom(r.m_max, r.m_max >= r.m_min ? i : 0);
    if (j == GetSize()) {
        first.Unite(r);
        SetSize(i + 1);
        return;
    }
    const bool hiIn = r.m_max >= m_pData[j].m_min;
    if (j == i) {
        if (loIn) return;
        if (hiIn) {
            first.m_min = r.m_min;
        } else {
            InsertAt(i, r);
        }
    } else if (j > i) {
        // The start stays even if r begins below it, and member j goes even if it lies above r,
        // deliberately.
        first.m_max = hiIn ? m_pData[j].m_max : r.m_max;
        RemoveAt(i + 1, j - i);
    }
}

void SetR1::Unite(const SetR1& other) {
    if (&other == this) return Unite(SetR1(other));
    for (const RangeR1& member : other) Unite(member);
}

// Removes the members for whose index `test` is true; it is called once for each, from the last
// to the first.
template <class Test>
void SetR1::RemoveWhere(Test test) {
    INT_PTR run = 0;
    for (INT_PTR i = GetSize(); i-- > 0;) {
        if (test(i)) {
            ++run;
        } else if (run > 0) {
            RemoveAt(i + 1, run);
            run = 0;
        }
    }
    RemoveAt(0, run);
}

bool SetR1::Intersect(const RangeR1& r) {
    const RangeR1 range(r);  // it may be a member
    RemoveWhere([&](INT_PTR i) { return !m_pData[i].Intersect(range); });
    return !IsEmpty();
}

void SetR1::GetComplimentarySet(const RangeR1& within, SetR1& out) const {
    if (&out == this) return SetR1(*this).GetComplimentarySet(within, out);
    const RangeR1 bounds(within);  // it may be a member of out
    INT_PTR count = 0;
    RangeR1 covered;
    for (const RangeR1& member : *this) {
        RangeR1 clipped(member);
        if (!clipped.Intersect(bounds)) continue;
        if (count++ == 0) covered.m_min = clipped.m_min;
        covered.m_max = clipped.m_max;
    }
    if (count == 0) {
        out.SetSize(1);
        out[0] = bounds;
        return;
    }

    const INT_PTR below = covered.m_min - bounds.m_min > zToler ? 1 : 0;
    const INT_PTR above = bounds.m_max - covered.m_max > zToler ? 1 : 0;
    out.SetSize(below + count - 1 + above);
    if (below > 0) out[0].Set(bounds.m_min, covered.m_min);
    if (above > 0) out[out.GetUpperBound()].Set(covered.m_max, bounds.m_max);
    // The gaps behind the first members of this set, not of the clipped one, deliberately.
    for (INT_PTR i = 0; i + 1 < count; ++i) {
        out[below + i].Set(m_pData[i].m_max, m_pData[i + 1].m_min);
    }
}

void SetR1::Expand(double d) {
    for (RangeR1& member : *this) member.Expand(d);
}

void SetR1::Center(const SetR1& other) {
    if (other.GetSize() != GetSize()) return;
    for (INT_PTR i = GetSize(); i-- > 0;) m_pData[i].Center(other.m_pData[i]);
}

void SetR1::RemoveSingletons() {
    RemoveWhere([&](INT_PTR i) { return m_pData[i].IsSingleton(); });
}

void SetR1::MergeAdjacent() {
    RemoveWhere([&](INT_PTR i) {
        if (i == 0) return false;
        RangeR1& before = m_pData[i - 1];
        if (!(std::fabs(before.m_max - m_pData[i].m_min) < zToler)) return false;
        before.m_max = m_pData[i].m_max;
        return true;
    });
}

void SetR1::MakeValid() {
    RemoveSingletons();
    MergeAdjacent();
}

}  // namespace ZT
