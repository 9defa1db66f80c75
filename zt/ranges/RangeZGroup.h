/// @file
/// Runs of a cyclic group of integers with a stored state.

#pragma once

#include <zt/frame/Export.h>
#include <zt/numerics/ZGroup.h>
#include <zt/ranges/RangeS1.h>

#include <cstdint>
#include <utility>

namespace ZT {

/// A run of elements of the integers modulo a rank, upwards from `m_first` to `m_last`, both
/// included, which may wrap past rank - 1 to 0: the integer counterpart of `RangeS1`.
///
/// How much of the loop a run holds stands in a state of its own, and the limits of a full or
/// an empty run say nothing:
/// - **full**: every element.
/// - **empty**: none.
/// - **partial**: those from the first to the last. A partial run can hold every element too.
///
/// Limits are brought into the loop by `ZGroup::Factorize`, which adds the rank only once: a
/// number below -rank leaves a negative limit. Limit 0 is the first element, and any other
/// number means the last. With a rank of 0, every operation that reduces by it divides by
/// zero. No operation allocates.
class ZT_API RangeZGroup {
public:
    /// How much of the loop the run holds.
    RangeS1::EState m_eState;
    /// The first element of the run, also called limit 0.
    std::int32_t m_first;
    /// The last element of the run, also called limit 1.
    std::int32_t m_last;
    /// The order of the group.
    std::int32_t m_rank;

    /// @name Making and storing
    /// @{

    /// The full run of a group of rank 2.
    RangeZGroup() : RangeZGroup(2) {}
    /// The full run of a group, with the limits 0 and 0.
    explicit RangeZGroup(int rank)
        : m_eState(RangeS1::eStateFull), m_first(0), m_last(0), m_rank(rank) {}
    /// The partial run from `a` to `b`, which are brought into the loop.
    RangeZGroup(int rank, int a, int b)
        : m_eState(RangeS1::eStatePartial),
          m_first(ZGroup::Factorize(rank, a)),
          m_last(ZGroup::Factorize(rank, b)),
          m_rank(rank) {}
    RangeZGroup(const RangeZGroup&) = default;

    virtual ~RangeZGroup() = default;

    void Copy(const RangeZGroup& r) {
        m_eState = r.m_eState;
        m_first = r.m_first;
        m_last = r.m_last;
        m_rank = r.m_rank;
    }
    /// The result is a copy.
    RangeZGroup operator=(const RangeZGroup& r) {
        Copy(r);
        return *this;
    }

    /// Stores the limits, brought into the loop. The state stays, so that a full or an empty
    /// run does not become partial.
    void Set(int a, int b) {
        m_first = ZGroup::Factorize(m_rank, a);
        m_last = ZGroup::Factorize(m_rank, b);
    }
    /// Becomes the partial run from `a` to `b`, which are brought into the loop, in a group of
    /// another rank. With a rank below 2 nothing happens.
    void Set(int rank, int a, int b) {
        if (rank > 1) Copy(RangeZGroup(rank, a, b));
    }

    /// Makes the run empty. The limits stay.
    void SetEmpty() { m_eState = RangeS1::eStateEmpty; }
    /// Makes the run full. The limits stay.
    void SetFull() { m_eState = RangeS1::eStateFull; }

    /// Stores the rank. The limits are not reduced to it; `Factor` does that.
    void SetRank(int rank) { m_rank = rank; }

    /// Brings the limits into the loop.
    void Factor() { Set(m_first, m_last); }

    /// @}
    /// @name Tests and elements
    /// @{

    /// Whether rank and limits are the same. The state is not compared: an empty run can equal
    /// a full one.
    bool operator==(const RangeZGroup& r) const {
        return m_rank == r.m_rank && m_first == r.m_first && m_last == r.m_last;
    }
    bool operator!=(const RangeZGroup& r) const { return !(*this == r); }

    int GetRank() const { return m_rank; }
    bool IsEmpty() const { return m_eState == RangeS1::eStateEmpty; }
    bool IsFull() const { return m_eState == RangeS1::eStateFull; }

    /// Whether both limits lie between 0 and rank - 1, whatever the state. In a group of rank 1
    /// a negative limit is valid too.
    bool IsValid() const { return m_rank >= 1 && IsLimit(m_first) && IsLimit(m_last); }

    /// The number of elements of the run.
    int GetCount() const {
        if (IsFull()) return m_rank;
        return IsEmpty() ? 0 : WrappingSum(GetSpan(), 1);
    }

    /// Element `i` of the run, counted from its start, or -1 if it has not that many. A full
    /// run is counted from 0, whatever its first limit.
    int Get(int i) const {
        if (i < 0 || i >= GetCount()) return -1;
        return IsFull() ? i : ZGroup::Factorize(m_rank, WrappingSum(m_first, i));
    }

    /// Stores limit `i` into `out`, in the group of this run, whatever the state.
    void GetEnd(unsigned char i, ZGroup& out) const { out.Set(m_rank, i != 0 ? m_last : m_first); }

    /// Whether `x`, brought into the loop, lies on the run.
    bool In(int x) const {
        if (IsFull()) return true;
        return !IsEmpty() && ZGroup(m_rank, x).InRange(m_first, m_last);
    }

    /// Stores the run from behind the last to before the first element into `out`, which may
    /// be this run. The complement of a full run is empty and that of an empty one full.
    ///
    /// A partial run stays partial. If it holds every element, so does its complement.
    void GetComplimentary(RangeZGroup& out) const;

    /// @}
    /// @name Changing
    /// @{

    /// Moves both limits by `d`. The state stays.
    void operator+=(int d) { Set(WrappingSum(m_first, d), WrappingSum(m_last, d)); }
    void operator-=(int d) { Set(WrappingDifference(m_first, d), WrappingDifference(m_last, d)); }

    /// Exchanges the limits. The state stays.
    void SwapEnds() { std::swap(m_first, m_last); }

    /// Moves limit `i` by `d` elements. A partial run that is extended by at least the gap that
    /// is left becomes full, and one that is shortened by at least its count becomes empty; the
    /// limit moves all the same. A run that is not partial stays.
    void MoveEnd(unsigned char i, int d);

    /// @}

private:
    bool IsLimit(int limit) const { return limit < m_rank && (limit >= 0 || m_rank == 1); }

    // The steps from the first element to the last.
    int GetSpan() const {
        const int last = m_last < m_first ? WrappingSum(m_last, m_rank) : m_last;
        return WrappingDifference(last, m_first);
    }
};

}  // namespace ZT
