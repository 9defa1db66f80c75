/// @file
/// Elements of a cyclic group of integers, and arithmetic on plain cyclic indices.

#pragma once

#include <zt/frame/Export.h>
#include <zt/numerics/WrappingArithmetic.h>

#include <cstdint>

namespace ZT {

/// An integer modulo a rank: an index that walks round a closed loop, as the vertices of a
/// closed polyline do. It remembers which way it was last stepped.
///
/// A canonical element has a value from 0 to rank - 1. An integer is brought into the loop
/// by its **normal form**: the rank is added once if it is negative, and then the truncating
/// remainder by the rank is taken. That is meant for values that have left the loop by at
/// most one turn, and it is not a full modulo: a value below -rank keeps a negative result.
///
/// The **state** is the direction of the last step. A new element has none, but a copy that is
/// made of another keeps that of the other. `operator=` and `Set` clear it. The four step
/// operators set it, except where a postfix one fails, and nothing else touches it.
///
/// In a group of rank 1 there is nowhere to step to. The postfix operators say so with the
/// value -1, which counts as valid there; the prefix operators stay at 0.
///
/// The rank is not checked. With a rank of 0, every operation that reduces by it divides by
/// zero. A sum, difference or product that does not fit into 32 bits wraps round before it
/// is reduced.
///
/// The static operations do the same on plain integers; where there is one, the rank comes
/// first. No operation allocates.
class ZT_API ZGroup {
public:
    /// The direction of the last step.
    enum EIncremState : std::int32_t {
        eIncremNone = 0,  ///< Not stepped since it was last assigned.
        eIncremUp = 1,    ///< The last step was an increment.
        eIncremDown = 2,  ///< The last step was a decrement.
    };

    /// The element; -1 after a step that failed.
    std::int32_t m_value;
    /// The direction of the last step.
    EIncremState m_eIncrem;
    /// The order of the group.
    std::int32_t m_rank;

    /// @name Making and storing
    /// @{

    /// Element 0 of the group of rank 2.
    ZGroup() : ZGroup(2) {}
    /// Element 0 of a group. The argument is the rank, not the value.
    explicit ZGroup(int rank) : m_value(0), m_eIncrem(eIncremNone), m_rank(rank) {}
    /// The normal form of `value`.
    ZGroup(int rank, int value) : ZGroup(rank) { m_value = Factorize(rank, value); }
    /// The same element with the same state.
    ZGroup(const ZGroup&) = default;

    virtual ~ZGroup() = default;

    /// Takes the normal form of `v` and clears the state. The result is a copy.
    ZGroup operator=(int v) {
        Store(Factorize(m_rank, v));
        return *this;
    }
    /// Takes the value of `g` as it stands and clears the state. The rank stays, and the
    /// value is not reduced to it: an element of a longer loop can leave this one not valid.
    /// The result is a copy.
    ZGroup operator=(ZGroup g) {
        Store(g.m_value);  // Neither reduced nor with its rank, deliberately.
        return *this;
    }

    /// Becomes the normal form of `value` in a group of another rank, and clears the state.
    void Set(int rank, int value) {
        m_rank = rank;
        Store(Factorize(rank, value));
    }

    /// Stores the rank. The value is not reduced to it; `Factor` does that.
    void SetRank(int rank) { m_rank = rank; }

    /// Brings the value into its normal form. The state stays.
    void Factor() { m_value = Factorize(m_rank, m_value); }

    int GetRank() const { return m_rank; }
    EIncremState GetIncrementState() const { return m_eIncrem; }
    operator int() const { return m_value; }

    /// Whether the value lies between 0 and rank - 1. In a group of rank 1 a negative value
    /// is valid too: it stands for a step that failed.
    bool IsValid() const {
        return m_rank >= 1 && m_value < m_rank && (m_value >= 0 || m_rank == 1);
    }

    /// @}
    /// @name Comparison
    /// @{

    /// Whether the value is the normal form of `v`.
    bool operator==(int v) const { return m_value == Factorize(m_rank, v); }
    bool operator!=(int v) const { return !(*this == v); }
    /// The same with the integer first.
    friend bool operator==(int v, const ZGroup& g) { return g == v; }
    friend bool operator!=(int v, const ZGroup& g) { return !(g == v); }
    /// Whether the values are the same. The ranks are not compared.
    bool operator==(ZGroup g) const { return m_value == g.m_value; }
    bool operator!=(ZGroup g) const { return !(*this == g); }

    /// @}
    /// @name Arithmetic
    /// The result has the rank of this element, whatever that of the other, and no state; the
    /// operations in place leave the state alone.
    /// @{

    ZGroup operator+(int i) const { return ZGroup(m_rank, WrappingSum(m_value, i)); }
    ZGroup operator-(int i) const { return ZGroup(m_rank, WrappingDifference(m_value, i)); }
    ZGroup operator-(ZGroup g) const { return *this - g.m_value; }
    /// The remainder of the sum. The rank is not added, so a negative sum stays negative.
    ZGroup operator+(ZGroup g) const { return WithRemainderOf(WrappingSum(m_value, g.m_value)); }
    /// The remainder of the product. A negative product stays negative.
    ZGroup operator*(ZGroup g) const {
        return WithRemainderOf(WrappingProduct(m_value, g.m_value));
    }
    /// The remainder of the truncated quotient of the two values. It is not the product with
    /// the inverse element. A divisor with the value 0 divides an integer by zero.
    ZGroup operator/(ZGroup g) const { return WithRemainderOf(m_value / g.m_value); }

    void operator+=(int i) { m_value = Factorize(m_rank, WrappingSum(m_value, i)); }
    void operator-=(int i) { m_value = Factorize(m_rank, WrappingDifference(m_value, i)); }
    void operator-=(ZGroup g) { *this -= g.m_value; }
    /// As `operator+` of elements: a negative sum stays negative.
    void operator+=(ZGroup g) { m_value = Remainder(WrappingSum(m_value, g.m_value), m_rank); }

    /// @}
    /// @name Steps
    /// All four result in a copy of the element after the step.
    /// @{

    /// Steps to the next element. In a group of rank 1 the value is 0 then.
    ZGroup operator++() {
        m_eIncrem = eIncremUp;
        m_value = Remainder(WrappingSum(m_value, 1), m_rank);
        return *this;
    }
    /// Steps to the previous element. In a group of rank 1 the value is 0 then.
    ZGroup operator--() {
        m_eIncrem = eIncremDown;
        m_value = Factorize(m_rank, WrappingDifference(m_value, 1));
        return *this;
    }
    /// Steps to the next element; the result is the new value, not the old one. With a rank
    /// below 2 the step fails: the value becomes -1 and the state stays.
    ZGroup operator++(int) { return m_rank < 2 ? FailedStep() : ++*this; }
    /// Steps to the previous element, likewise.
    ZGroup operator--(int) { return m_rank < 2 ? FailedStep() : --*this; }

    /// @}
    /// @name Adjacency and membership
    /// @{

    /// Whether this element follows `g`, by the rank of this one. In a group of rank 1 nothing
    /// follows; in one of rank 2 any two different values follow one another.
    bool IsNextAfter(const ZGroup& g) const {
        if (m_rank == 1) return false;
        if (m_rank == 2) return m_value != g.m_value;
        if (g.m_value == WrappingDifference(m_rank, 1)) return m_value == 0;
        return m_value == WrappingSum(g.m_value, 1);
    }

    /// Whether either element follows the other, by the rank of the one that follows.
    bool IsNextTo(const ZGroup& g) const { return IsNextAfter(g) || g.IsNextAfter(*this); }

    /// Whether the value lies between those of `a` and `b`, both included, as plain integers:
    /// a run that wraps round the seam holds nothing. A negative value is in no range.
    bool InRange(ZGroup a, ZGroup b) const {
        if (m_value < 0) return false;
        const int offset = WrappingDifference(m_value, a.m_value);
        return 0 <= offset && offset <= WrappingDifference(b.m_value, a.m_value);
    }

    /// Whether the element lies on the run from `a` to `b`, both included, which may wrap
    /// round the seam: what a `CyclSegment` of this rank says. On a run that holds every
    /// element, one that has been stepped sees the start or the end as the place to stop.
    bool InRange(int a, int b) const;

    /// The same without regard to the state: a full run holds every element that is not
    /// negative. A limit out of the loop is taken by its normal form.
    bool InRangeNoOverflow(int a, int b) const {
        if (m_value < 0) return false;
        const int first = Factorize(m_rank, a);
        const int last = Factorize(m_rank, b);
        if (first > last) return m_value >= first || m_value <= last;
        return m_value >= first && m_value <= last;
    }

    /// Whether a walk that ends at `a` has still to go on: whether the value differs from the
    /// normal form of `a`. An `a` of the rank itself, one past the end, stands for a full
    /// turn, and an element 0 that has not been stepped is before it. The second argument is
    /// not read.
    bool IsBeforeIncremental(int a, int) const {
        if (a == m_rank && m_value == 0 && m_eIncrem == eIncremNone) return true;
        return m_value != Factorize(m_rank, a);
    }

    /// @}
    /// @name Plain cyclic indices
    /// @{

    /// The normal form of `v`.
    static int Factorize(int rank, int v) {
        // The rank is added once only, deliberately.
        return Remainder(v < 0 ? WrappingSum(v, rank) : v, rank);
    }

    /// The normal form of `v` for the rank 3, the corners of a triangle, in an unsigned byte.
    /// For a `v` below -3 the normal form can be negative, and comes out as 254 or 255.
    static unsigned char F(int v) { return static_cast<unsigned char>(Factorize(3, v)); }

    /// Steps `v` to the next index.
    static void Increment(int rank, int& v) { v = GetIncrement(rank, v, true); }

    /// Steps `v` to the previous index.
    static void Decrement(int rank, int& v) { v = GetIncrement(rank, v, false); }

    /// Steps `v` to the next index, or, with `bUp` false, to the previous one, in 8 bits.
    static void Increment(unsigned char rank, unsigned char& v, bool bUp) {
        const int stepped = bUp ? v + 1 : (v == 0 ? rank : v) - 1;
        v = static_cast<unsigned char>(stepped % rank);
    }

    /// The index after `v`, or, with `bUp` false, the one before it.
    static int GetIncrement(int rank, int v, bool bUp) {
        return Factorize(rank, bUp ? WrappingSum(v, 1) : WrappingDifference(v, 1));
    }

    /// Of two neighbours, the one that comes first. If `a` and `b` are no neighbours the result
    /// is `b`, and not a minimum.
    static int GetMin(int rank, int a, int b) { return IsNextAfter(rank, a, b) ? a : b; }

    /// Whether the normal forms of `a` and `b` are neighbours, in either order. In a group of
    /// rank 1 there are none; in one of rank 2 any two different indices are.
    static bool IsNext(int rank, int a, int b);

    /// Whether `b` follows `a`. Mind the order: the member operation asks whether this
    /// follows its argument, and this one whether its last argument follows the one before.
    static bool IsNextAfter(int rank, int a, int b) {
        return Factorize(rank, WrappingDifference(b, a)) == 1;
    }

    /// @}

private:
    // The truncating remainder. Most values are in the loop already and need no division.
    static int Remainder(int v, int rank) { return v >= 0 && v < rank ? v : v % rank; }

    void Store(int value) {
        m_value = value;
        m_eIncrem = eIncremNone;
    }

    ZGroup WithRemainderOf(int value) const {
        ZGroup result(m_rank);
        result.m_value = Remainder(value, m_rank);
        return result;
    }

    ZGroup FailedStep() {
        m_value = -1;  // Unlike the prefix form, which gives 0, deliberately.
        return *this;
    }
};

}  // namespace ZT
