/// @file
/// Cells of an integer plane.

#pragma once

#include <platform/object/CObject.h>
#include <zt/frame/Export.h>

#include <cstdint>

namespace ZT {

/// A cell of an integer plane, with the tests of its neighbourhood.
class ZT_API NPair : public CObject {
public:
    /// The two coordinates.
    std::int32_t m_n[2];

    /// The cell (0, 0).
    NPair() : NPair(0, 0) {}
    NPair(int a, int b) : m_n{a, b} {}
    NPair(const NPair& other) : NPair(other.m_n[0], other.m_n[1]) {}

    NPair& operator=(const NPair& other) {
        Set(other.m_n[0], other.m_n[1]);
        return *this;
    }

    ~NPair() override;

    void Set(int a, int b) {
        m_n[0] = a;
        m_n[1] = b;
    }

    bool operator==(const NPair& other) const {
        return m_n[0] == other.m_n[0] && m_n[1] == other.m_n[1];
    }
    bool operator!=(const NPair& other) const { return !(*this == other); }

    /// Coordinate 0 for an `i` of 0, and coordinate 1 for any other.
    std::int32_t& operator[](int i) { return m_n[i != 0 ? 1 : 0]; }
    std::int32_t operator[](int i) const { return m_n[i != 0 ? 1 : 0]; }

    /// The larger of the two differences of the coordinates: how many steps a king needs. A
    /// distance that does not fit into 32 bits is the greatest integer.
    int DistM(NPair other) const;

    /// Whether `other` is one of the eight neighbours of this cell, diagonals included. A cell
    /// is no neighbour of its own.
    bool IsNextTo(const NPair& other) const { return DistM(other) == 1; }
};

}  // namespace ZT
