/// @file
/// A run of the elements of a list.

#pragma once

#include <platform/collections/POSITION.h>
#include <zt/frame/Export.h>
#include <zt/ranges/ZTPair.h>

#include <cstdint>

namespace ZT {

/// A run of the elements of a list, by the positions of its first and its last element. A new
/// run is unset: both positions are null.
///
/// It knows nothing of the list. Its positions hold for as long as those of the list do.
class ZT_API RangePos {
public:
    POSITION m_posFirst;
    POSITION m_posLast;

    /// Unset.
    RangePos() : m_posFirst(nullptr), m_posLast(nullptr) {}
    RangePos(const RangePos&) = default;
    RangePos& operator=(const RangePos&) = default;

    virtual ~RangePos() = default;

    /// Stores `v`, widened with its sign, in both positions. Meant for a `v` of 0, which makes
    /// the run unset; any other gives positions that no list knows.
    RangePos& operator=(int v) {
        m_posFirst = m_posLast = reinterpret_cast<POSITION>(std::intptr_t{v});
        return *this;
    }

    /// The same as `operator=`.
    void Copy(const RangePos& other) { *this = other; }

    /// Takes over both positions of a pair.
    void CopyPair(const ZTPair<POSITION>& pair) {
        m_posFirst = pair.m_first;
        m_posLast = pair.m_last;
    }

    /// Makes both positions null.
    void Reset() { m_posFirst = m_posLast = nullptr; }

    /// Whether both positions are null or neither is.
    bool IsValid() const { return (m_posFirst == nullptr) == (m_posLast == nullptr); }

    /// Whether neither position is null.
    bool IsValidEx() const { return m_posFirst != nullptr && m_posLast != nullptr; }
};

}  // namespace ZT
