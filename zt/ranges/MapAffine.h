/// @file
/// The affine map that carries one real interval onto another.

#pragma once

#include <zt/frame/Export.h>
#include <zt/ranges/RangeR1.h>

namespace ZT {

/// The affine map of the real line that carries a source range onto a target range, lower
/// limit to lower limit. Clients set the two ranges directly.
///
/// A source that is shorter than the tolerance, such as the empty one of a new map, carries
/// every number to the lower limit of the target. The external flags do not count. No
/// operation allocates.
class ZT_API MapAffine {
public:
    /// The target range, and then the source range.
    RangeR1 m_ranges[2];

    /// Two canonical empty ranges.
    MapAffine() = default;
    /// The same limits and flags, to the bit.
    MapAffine(const MapAffine&) = default;
    /// Assigns the two ranges, the target first, each by its own rule: one that differs by less
    /// than the tolerance stays as it is.
    MapAffine& operator=(const MapAffine&) = default;

    /// The point of the target at the ratio that `x` has in the source:
    ///
    ///     MapAffine map;
    ///     map.m_ranges[0].Set(0, 10);
    ///     map.m_ranges[1].Set(0, 1);
    ///     map.Map(0.25);  // 2.5
    double Map(double x) const { return m_ranges[0].Map(x, m_ranges[1]); }

    /// Maps both limits of `in` and stores them into `out`, directly and not through its `Set`,
    /// so that an arc in `out` is not brought into its canonical form. The flag of `out` stays.
    void Map(const RangeR1& in, RangeR1& out) const;
};

}  // namespace ZT
