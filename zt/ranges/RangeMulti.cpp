#include <zt/ranges/RangeMulti.h>

template class ZT::CAISimpArr<ZT::Range>;

namespace ZT {

namespace {

// The limits of two arcs, in the order of the array that they are looked up in.
enum Limit { a0, a1, b0, b1 };

struct Piece {
    Limit lo;
    Limit hi;
};

// What two arcs share if the start of b lies on a: always the first piece, and the second one if
// the end of b lies on a, too.
struct PiecesFromStart {
    Piece first;
    Piece second;
    bool mayBeTwo;
};

// By whether a, and then whether b, is external. The rows are what clients rely on, whatever one
// would make of the flags, deliberately.
constexpr PiecesFromStart kFromStart[2][2] = {
    {{{b0, a1}, {a0, b1}, true}, {{a0, b0}, {b1, a1}, true}},
    {{{b0, b1}, {}, false}, {{a1, b0}, {b1, a0}, true}},
};

// The same if only the end of b lies on a.
constexpr Piece kFromEnd[2][2] = {
    {{b1, a1}, {a0, b1}},
    {{a1, b1}, {b1, a0}},
};

}  // namespace

RangeMulti& RangeMulti::operator=(const RangeMulti& src) {
    ShareInstead(src);
    return *this;
}

RangeMulti::~RangeMulti() = default;

void RangeMulti::Copy(const RangeMulti& src) {
    const bool staysInPlace = this == &src && m_nCount <= m_nSize;
    if (!staysInPlace && SharesWith(src)) return CAISimpArr<Range>::Copy(src);
    SetCount(src.m_nCount);
    Assign(0, src.m_pData, m_nCount);
}

void RangeMulti::SetFull() {
    SetCount(1);
    m_pData[0].SetFull();
}

void RangeMulti::SetFullAngle() {
    SetCount(1);
    m_pData[0].SetFullAngle();
}

void RangeMulti::SetAtGrow(int i, double lo, double hi) {
    CAISimpArr<Range>::SetAtGrow(i, Range(lo, hi));
}

// Replaces `n` members, at most one, from `i` on by those of an array, unless that has none.
void RangeMulti::Replace(int64 i, int64 n, const CAISimpArr<Range>& members) {
    if (members.IsEmpty()) return;
    if (SharesWith(members)) return Replace(i, n, DeepCopy(members));
    OpenGap(i + n, members.m_nCount - n);
    Assign(i, members.m_pData, members.m_nCount);
}

void RangeMulti::Add(const Range& r) {
    if (r.IsEmpty()) return;
    const Range range(r);  // it may be a member
    const auto meets = [&](int64 i) { return !m_pData[i].IsEmptyIntersection(range, false); };

    const int before = FindFirstOnLeft(range.m_min);
    int64 first = std::max(before, 0);
    while (first < m_nCount && !meets(first)) ++first;
    if (first >= m_nCount) return InsertAt(before + 1, range);

    int64 last = m_nCount - 1;
    while (!meets(last)) --last;
    m_pData[first].RangeR1::Unite(range);
    if (last <= first) return;
    m_pData[last].RangeR1::Unite(range);
    m_pData[first].RangeR1::Unite(m_pData[last]);
    RemoveAt(first + 1, last - first);
}

void RangeMulti::Unite(const RangeMulti& other) {
    if (SharesWith(other)) {
        RangeMulti own;
        own.Copy(other);
        return Unite(own);
    }
    for (int64 i = 0; i < other.m_nCount; ++i) Add(other[i]);
}

bool RangeMulti::Intersect(const Range& r) {
    const Range range(r);  // it may be a member
    bool anyLeft = false;
    for (int64 i = 0; i < m_nCount; ++i) {
        if (m_pData[i].RangeR1::Intersect(range)) anyLeft = true;
    }
    return anyLeft;
}

void RangeMulti::Intersect(const RangeMulti& other) {
    RangeMulti pieces;
    pieces.SetSizeGrow(std::max(m_nCount * other.m_nCount, int64{0}));
    for (int64 i = 0; i < m_nCount; ++i) {
        for (int64 k = 0; k < other.m_nCount; ++k) {
            Range piece(other[k]);
            piece.RangeR1::Intersect(m_pData[i]);
            *pieces.CAISimpArr<Range>::Add() = piece;
        }
    }
    Copy(pieces);
}

// Member `i`, made angular.
Range& RangeMulti::AngularMember(int64 i) {
    m_pData[i].SetScalarType(eScalarAngle);
    return m_pData[i];
}

void RangeMulti::IntersectS1(const RangeS1& a, const RangeS1& b) {
    SetSize(2, 1);
    if (a >= b) return AngularMember(0).Copy(b);
    if (b >= a) return AngularMember(0).Copy(a);

    const double limits[] = {a.m_min, a.m_max, b.m_min, b.m_max};
    const auto store = [&](int64 i, Piece piece) {
        AngularMember(i).Set(limits[piece.lo], limits[piece.hi]);
    };
    const bool holdsEnd = a.In(b.m_max);
    if (a.In(b.m_min)) {
        const PiecesFromStart& pieces = kFromStart[a.m_bExternal][b.m_bExternal];
        store(0, pieces.first);
        if (!pieces.mayBeTwo || !holdsEnd) return;
        SetCount(2);
        store(1, pieces.second);
    } else if (holdsEnd) {
        store(0, kFromEnd[a.m_bExternal][b.m_bExternal]);
    } else {
        SetEmpty();
    }
}

int RangeMulti::FindFirstOnLeft(double x) const {
    for (int64 i = m_nCount; i-- > 0;) {
        if (m_pData[i].m_min < x + zToler) return static_cast<int>(i);
    }
    return -1;
}

int RangeMulti::FindRange(double x) const {
    for (int64 i = 0; i < m_nCount; ++i) {
        if (m_pData[i].In(x)) return static_cast<int>(i);
    }
    return -1;
}

bool RangeMulti::IsEmpty() const {
    for (int64 i = 0; i < m_nCount; ++i) {
        if (!m_pData[i].IsEmpty()) return false;
    }
    return true;
}

bool RangeMulti::IsValid() const {
    for (int64 i = 1; i < m_nCount; ++i) {
        if (m_pData[i - 1].m_max > m_pData[i].m_min + zToler) return false;
    }
    return true;
}

}  // namespace ZT
