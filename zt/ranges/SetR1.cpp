#include <zt/ranges/SetR1.h>

#include <algorithm>
#include <bit>
#include <limits>

template class Collections::ElementArray<ZT::RangeR1, const ZT::RangeR1&>;
template class CArray<ZT::RangeR1, const ZT::RangeR1&>;

namespace ZT {

namespace {

// Searches go through the members in their order, since a set may be out of order; what makes
// them quick is that they pass over a block of members at a time.
constexpr INT_PTR kBlock = 8;

// Both limits of a range, the lower one in the first half.
__m128d LimitsOf(const RangeR1& r) {
    return _mm_loadu_pd(&r.m_min);
}

// The extreme lower and the extreme upper limits of a block, as `pick` chooses from two numbers.
// It gives the second if the first is a NaN, so that NaN limits do not count.
template <class Pick>
__m128d ExtremeLimits(const RangeR1* block, double least, Pick pick) {
    const __m128d start = _mm_set1_pd(least);
    const auto ofTwo = [&](INT_PTR i) {
        return pick(LimitsOf(block[i]), pick(LimitsOf(block[i + 1]), start));
    };
    static_assert(kBlock == 8);
    return pick(pick(ofTwo(0), ofTwo(2)), pick(ofTwo(4), ofTwo(6)));
}

__m128d LargestLimits(const RangeR1* block) {
    return ExtremeLimits(block, -std::numeric_limits<double>::infinity(),
                         [](__m128d a, __m128d b) { return _mm_max_pd(a, b); });
}

__m128d SmallestLimits(const RangeR1* block) {
    return ExtremeLimits(block, std::numeric_limits<double>::infinity(),
                         [](__m128d a, __m128d b) { return _mm_min_pd(a, b); });
}

double SecondHalf(__m128d pair) {
    return _mm_cvtsd_f64(_mm_unpackhi_pd(pair, pair));
}

bool AnyExternal(const RangeR1* block) {
    bool any = false;
    for (INT_PTR i = 0; i < kBlock; ++i) any |= block[i].m_bExternal;
    return any;
}

// Whether no member of a block holds x by `RangeR1::In`, since all lie below it. A limit that is
// moved by the tolerance keeps its order among the others, so the extreme one speaks for all.
bool AllBelow(const RangeR1* block, double x) {
    const __m128d ends = _mm_add_pd(LargestLimits(block), _mm_set1_pd(zToler));
    const int below = _mm_movemask_pd(_mm_cmplt_pd(ends, _mm_set1_pd(x)));
    return below - int{AnyExternal(block)} == 3;
}

// The same where all lie above it.
bool AllAbove(const RangeR1* block, double x) {
    const __m128d starts = _mm_sub_pd(SmallestLimits(block), _mm_set1_pd(zToler));
    const int above = _mm_movemask_pd(_mm_cmpgt_pd(starts, _mm_set1_pd(x)));
    return above - int{AnyExternal(block)} == 3;
}

// The first of some members that holds x, or their end.
const RangeR1* FindOneByOne(const RangeR1* at, const RangeR1* end, double x) {
    while (at != end && !at->In(x, zToler)) ++at;
    return at;
}

// Which of two members hold x by `RangeR1::In` if neither is external: bit i for member i.
int HoldersAmongTwo(const RangeR1* two, __m128d x) {
    const __m128d first = LimitsOf(two[0]);
    const __m128d second = LimitsOf(two[1]);
    const __m128d lower = _mm_unpacklo_pd(first, second);
    const __m128d upper = _mm_unpackhi_pd(first, second);
    const __m128d tolerance = _mm_set1_pd(zToler);
    const __m128d lowest = _mm_sub_pd(_mm_min_pd(upper, lower), tolerance);
    const __m128d highest = _mm_add_pd(_mm_max_pd(upper, lower), tolerance);
    return _mm_movemask_pd(_mm_and_pd(_mm_cmpge_pd(x, lowest), _mm_cmpge_pd(highest, x)));
}

// The first member of a block that holds x, or its end. All are asked without a branch, since
// where the first one stands is not foreseeable.
const RangeR1* FindInBlock(const RangeR1* block, double x) {
    if (AnyExternal(block)) return FindOneByOne(block, block + kBlock, x);
    const __m128d both = _mm_set1_pd(x);
    int holders = 1 << kBlock;
    for (INT_PTR i = 0; i < kBlock; i += 2) holders |= HoldersAmongTwo(block + i, both) << i;
    return block + std::countr_zero(static_cast<unsigned>(holders));
}

// The first of the blocks from `at` on for which `passes` is false, or what is left behind them.
template <class Passes>
const RangeR1* PassBlocks(const RangeR1* at, const RangeR1* end, Passes passes) {
    while (end - at >= kBlock && passes(at)) at += kBlock;
    return at;
}

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
    const RangeR1* const last = end();
    const RangeR1* at = begin();
    // In a short set the look whether a block may be passed over costs more than it saves.
    const bool passes = last - at >= 2 * kBlock;
    while (last - at >= kBlock) {
        if (passes) {
            at = PassBlocks(at, last, [x](const RangeR1* block) { return AllBelow(block, x); });
            if (last - at < kBlock) break;
        }
        const RangeR1* const blockEnd = at + kBlock;
        at = FindInBlock(at, x);
        if (at != blockEnd) return static_cast<int>(at - begin());
        if (passes) {
            at = PassBlocks(at, last, [x](const RangeR1* block) { return AllAbove(block, x); });
        }
    }
    at = FindOneByOne(at, last, x);
    return at == last ? -1 : static_cast<int>(at - begin());
}

// The index of the first member from `from` on that ends at or above `x`; the size if none does.
INT_PTR SetR1::FirstEndingFrom(double x, INT_PTR from) const {
    const RangeR1* const last = end();
    const RangeR1* at = PassBlocks(begin() + from, last, [x](const RangeR1* block) {
        return !(SecondHalf(LargestLimits(block)) >= x);
    });
    while (at != last && !(at->m_max >= x)) ++at;
    return at - begin();
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
