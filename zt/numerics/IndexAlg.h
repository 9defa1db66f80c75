/// @file
/// Algorithms on lists of indices.

#pragma once

#include <platform/collections/CArray.h>
#include <platform/collections/CPtrList.h>
#include <zt/frame/Export.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// Counting, renumbering and cutting of lists of 64-bit indices. All operations are static;
/// an object holds nothing.
///
/// `CountUnique` and `Compactify` look the values up in a hash table whose size is fixed: a
/// list with thousands of different values takes its time. Failure is the memory exception
/// alone.
class ZT_API IndexAlg {
public:
    /// A list of indices.
    using Array = CArray<int64, int64>;

    IndexAlg() = default;
    ~IndexAlg() = default;
    /// Does nothing.
    IndexAlg& operator=(const IndexAlg&) = default;

    /// The number of different values; 0 for an empty list. -1 is a value like any other.
    static int64 CountUnique(const Array& a);

    /// Numbers the values of `in` from 0 on, without a gap, in the order of their first
    /// appearance. `compact` receives the number of each value and `unique` the value of each
    /// number, so that `unique[compact[i]]` is `in[i]`. -1 is a value like any other.
    ///
    /// What was in `compact` and `unique` is lost. `unique` has to be an array of its own;
    /// `compact` may be `in`, which is then renumbered in place.
    ///
    ///     {7, 3, 7, 9, 3}  gives  compact {0, 1, 0, 2, 1}  and  unique {7, 3, 9}
    static void Compactify(const Array& in, Array& compact, Array& unique);

    /// Cuts `in` at each -1 and appends a new `Array` for each piece to `out`. The arrays
    /// belong to the caller, who deletes them; what is in `out` already stays.
    ///
    /// A -1 at the start, or behind another, makes an empty piece; one at the end makes none.
    /// An empty `in` has no pieces.
    ///
    ///     {1, 2, -1, 3, -1}  gives  {1, 2}  and  {3}
    ///     {-1, 5}            gives  {}  and  {5}
    static void SplitIndex(const Array& in, CPtrList& out);
};

}  // namespace ZT
