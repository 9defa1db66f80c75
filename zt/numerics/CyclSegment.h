/// @file
/// Runs of a cyclic group of integers.

#pragma once

#include <zt/frame/Export.h>
#include <zt/numerics/ZGroup.h>

#include <cstdint>

namespace ZT {

/// A run of elements of the integers modulo `rank`, from `a` to `b`, both included, wrapping
/// past rank - 1 to 0 when `a` is greater than `b`: the integer counterpart of an arc.
///
/// - A negative `b` means that the run is **empty**.
/// - The run is **full** when `a` is the element after `b`: the ends are neighbours, and
///   there is no gap between them.
///
/// The rank is not checked. With a rank of 0, every operation that reduces by it divides by
/// zero. No operation allocates.
class ZT_API CyclSegment {
public:
    /// The first element.
    std::int32_t a;
    /// The last element; negative for the empty run.
    std::int32_t b;
    /// The order of the group.
    std::int32_t rank;

    /// The empty run of a group of rank 2.
    CyclSegment() : CyclSegment(2) {}
    /// The empty run of a group.
    explicit CyclSegment(int order) : a(0), b(-1), rank(order) {}
    CyclSegment(const CyclSegment&) = default;
    CyclSegment& operator=(const CyclSegment&) = default;

    virtual ~CyclSegment() = default;

    bool IsEmpty() const { return b < 0; }

    /// Whether the ends lie in the loop, or are those of the empty run. The empty run has to
    /// end at -1.
    bool IsValid() const { return a >= 0 && b >= -1 && a < rank && b < rank; }

    /// Whether the run holds every element. In a group of rank 1 no run is full, since no
    /// element follows another there.
    bool IsFull() const { return !IsEmpty() && ZGroup(rank, a).IsNextAfter(ZGroup(rank, b)); }

    /// The empty run that starts at 0. The rank stays.
    void Reset() {
        a = 0;
        b = -1;
    }

    /// Makes the run empty; it keeps its start. With `bEmpty` false, an empty run becomes the
    /// single element at its start, and any other stays.
    void SetEmpty(bool bEmpty) {
        if (bEmpty) {
            b = -1;
        } else if (b < 0) {
            b = a;
        }
    }

    /// The run from 0 to rank - 1.
    void SetFull() {
        a = 0;
        b = WrappingDifference(rank, 1);
    }

    /// Stores the rank. The ends are not reduced to it; `Factor` does that.
    void SetRank(int order) { rank = order; }

    /// Stores the ends, brought into the loop from however far.
    void Set(int first, int last) {
        SetA(first);
        SetB(last);
    }

    /// Stores the remainders of the two values by the rank of this run. A negative one is not
    /// brought into the loop here: an end at -1, after a step that failed, makes the run empty.
    void Set(const ZGroup& first, const ZGroup& last) {
        a = first.m_value % rank;  // Not lifted as by Set(int, int), deliberately.
        b = last.m_value % rank;
    }

    /// Stores the first element, brought into the loop.
    void SetA(int first) { a = Reduced(first); }

    /// Stores the last element, brought into the loop. So no value makes the run empty.
    void SetB(int last) { b = Reduced(last); }

    /// Brings both ends into the loop. An empty run ends at rank - 1 then and is not empty any
    /// more.
    void Factor() { Set(a, b); }

    /// Whether `g` lies on the run, with the ends taken by the rank of `g`.
    ///
    /// On a full run the answer depends on how `g` was last stepped: a walker going up sees
    /// the start, and one going down sees the end, as the place to stop, so that a full turn
    /// ends. Anything else is on a full run.
    bool Contains(const ZGroup& g) const {
        if (IsEmpty()) return false;
        if (!IsFull()) return g.InRangeNoOverflow(a, b);
        switch (g.GetIncrementState()) {
            case ZGroup::eIncremUp:
                return g.m_value != a;
            case ZGroup::eIncremDown:
                return g.m_value != b;
            default:
                return true;
        }
    }

private:
    int Reduced(int v) const {
        if (v >= 0 && v < rank) return v;
        const int remainder = v % rank;
        return remainder < 0 ? WrappingSum(remainder, rank) : remainder;
    }
};

}  // namespace ZT
