/// @file
/// Closed intervals of integers.

#pragma once

#include <zt/frame/Export.h>
#include <zt/numerics/WrappingArithmetic.h>

#include <algorithm>
#include <cstdint>

namespace ZT {

class RangeR1;

/// The integers from a first to a last one, both included: an index range.
///
/// Nothing keeps the limits in order. A range is **empty** when `m_min` is greater than
/// `m_max`; the empty form is (0, -1). It is a **singleton** when they are the same; then its
/// length is 0 and its count 1.
///
/// Limit 0 is the lower limit, and any other number means the upper one. A count, a length or
/// a limit that does not fit into 32 bits wraps round. No operation allocates.
class ZT_API RangeInt {
public:
    /// The first integer, also called limit 0.
    std::int32_t m_min;
    /// The last integer, also called limit 1.
    std::int32_t m_max;

    /// @name Making and storing
    /// @{

    /// The empty form.
    RangeInt() : RangeInt(0, -1) {}
    /// The range between two limits, which are not put in order.
    RangeInt(int lo, int hi) : m_min(lo), m_max(hi) {}
    RangeInt(const RangeInt&) = default;
    RangeInt& operator=(const RangeInt&) = default;

    void Copy(const RangeInt& r) { *this = r; }
    /// Rounds each limit of `r` to the nearest integer, an exact half down. A limit that does
    /// not fit into 32 bits, such as an infinite one, gives a defined but useless integer.
    void Copy(const RangeR1& r);
    /// Stores the limits into the fields of `r`, without its `Set`. The flag of `r` stays.
    void CopyTo(RangeR1& r) const;

    /// The empty form.
    void Reset() { Set(0, -1); }
    /// Stores the limits without putting them in order.
    void Set(int lo, int hi) {
        m_min = lo;
        m_max = hi;
    }

    /// Limit `i`.
    std::int32_t& operator[](int i) { return i != 0 ? m_max : m_min; }
    std::int32_t operator[](int i) const { return i != 0 ? m_max : m_min; }

    /// @}
    /// @name Tests and measures
    /// @{

    /// Whether both limits are the same; so two empty ranges can differ.
    bool operator==(const RangeInt& r) const { return Is(r.m_min, r.m_max); }
    bool operator!=(const RangeInt& r) const { return !(*this == r); }

    bool Is(int lo, int hi) const { return m_min == lo && m_max == hi; }
    bool IsEmpty() const { return m_min > m_max; }
    bool IsSingleton() const { return m_min == m_max; }
    /// Whether `x` lies between the limits, both included.
    bool IsIn(int x) const { return m_min <= x && x <= m_max; }

    /// How many integers the range holds; 0 for the empty form, less for one whose limits are
    /// farther apart.
    int GetCount() const { return WrappingSum(GetLength(), 1); }
    /// The upper limit less the lower one, one less than the count.
    int GetLength() const { return WrappingDifference(m_max, m_min); }

    /// `x`, clamped to `a` and `b`, which are taken in that order. Mind the order of the
    /// arguments: here the value comes first, while in `RangeR1::ToRange` it is the last.
    static int ToRange(int x, int a, int b) { return x < a ? a : std::min(x, b); }

    /// @}
    /// @name Changing
    /// @{

    /// Moves the range so that it starts at `x`, or, with an `i` that is not 0, ends there.
    void SetLimitKeepLength(unsigned char i, int x) {
        i != 0 ? Set(WrappingDifference(x, GetLength()), x) : Set(x, WrappingSum(x, GetLength()));
    }

    /// Cuts the range down to what it shares with `r`, and tells whether that is not empty.
    /// Ranges that lie apart leave the empty form.
    bool Intersect(const RangeInt& r) {
        if (r.m_min > m_max || m_min > r.m_max) {
            Reset();
            return false;
        }
        Set(std::max(m_min, r.m_min), std::min(m_max, r.m_max));
        return !IsEmpty();
    }

    /// Takes `r` away, and tells how many pieces remain: 0, 1 or 2. Of two pieces this range
    /// keeps the lower one, and the upper one is lost. Nothing left is the empty form.
    ///
    /// It is the difference of real intervals: the limits of `r` remain in the pieces, so that
    /// (0, 10) without (3, 4) is (0, 3). Taking a single integer, or a range that only touches,
    /// from a range of more than one takes nothing away.
    ///
    /// A range whose limits both lie between those of `r` is taken away as a whole: (4, 4)
    /// without (4, 4) is the empty form. For this question the limits of `r` count in either
    /// order, also those of an empty `r`: the empty form (0, -1) takes (0, 0) and (-1, 0) away.
    unsigned char Subtract(const RangeInt& r);

    /// Moves `out`, keeping its length, to a place beside `r` within this range: to the end of
    /// `r` that faces the larger gap, or, if it is too long for the gap, to the end of this
    /// range there, where it covers a part of `r`. If `r` leaves no gap, by `Subtract`, `out`
    /// stays; so the limits of an empty `r` count in either order here, too.
    ///
    /// The gap above `r` is not measured: the length of `r` itself stands for it. So `out` can
    /// be put into the smaller gap and reach beyond the end of this range.
    void Uncover(const RangeInt& r, RangeInt& out) const;

    /// @}
};

}  // namespace ZT
