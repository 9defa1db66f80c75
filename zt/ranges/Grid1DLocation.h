/// @file
/// A place on a uniform grid.

#pragma once

#include <platform/object/CObject.h>
#include <zt/frame/Export.h>

#include <cstdint>

namespace ZT {

/// A place on a `Grid1D`: a segment, or, at its start, the knot of the same index. The pair
/// that `Grid1D::GetSegment` gives.
class ZT_API Grid1DLocation : public CObject {
public:
    /// The index on the grid; -1 when not set.
    std::int32_t m_nIndex;
    /// Whether the place is at the knot.
    bool m_bKnot;

    /// Not set: -1, and not at a knot.
    Grid1DLocation() : m_nIndex(-1), m_bKnot(false) {}

    /// Takes over both fields. An object of this root is not copied in another way.
    void Copy(const Grid1DLocation& other) {
        m_nIndex = other.m_nIndex;
        m_bKnot = other.m_bKnot;
    }

    /// Whether both fields agree.
    bool IsSame(const Grid1DLocation& other) const {
        return m_nIndex == other.m_nIndex && m_bKnot == other.m_bKnot;
    }

    bool operator==(const Grid1DLocation& other) const { return IsSame(other); }
    bool operator!=(const Grid1DLocation& other) const { return !IsSame(other); }
};

}  // namespace ZT
