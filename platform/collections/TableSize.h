/// @file
/// Sizes of hash tables.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>

namespace Collections {

/// The number of buckets of a hash table, with what it takes to find the bucket of a hash
/// without a division.
class TableSize {
public:
    /// Buckets of a new map.
    static constexpr UINT kDefault = 17;

    /// `buckets` is at least 1.
    constexpr explicit TableSize(UINT buckets = kDefault)
        : m_reciprocal(~std::uint64_t{0} / buckets + 1), m_buckets(buckets) {}

    constexpr UINT Buckets() const { return m_buckets; }

    /// `hash` modulo the number of buckets.
    constexpr UINT BucketOf(UINT hash) const {
        // The fraction that the division leaves, in 64 bits, times the divisor: exact for
        // every 32-bit dividend and divisor.
        const std::uint64_t fraction = m_reciprocal * hash;
        return static_cast<UINT>((static_cast<Wide>(fraction) * m_buckets) >> 64);
    }

    /// The next size in the row of those by which tables grow: primes, each about twice the
    /// one before. The largest stays.
    ZTP_API TableSize Grown() const;

private:
    __extension__ using Wide = unsigned __int128;

    std::uint64_t m_reciprocal;  ///< 2^64 / m_buckets, rounded up; 0 for one bucket
    UINT m_buckets;
};

}  // namespace Collections
