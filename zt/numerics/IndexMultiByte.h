/// @file
/// Short paths of byte-sized indices.

#pragma once

#include <zt/frame/Export.h>

namespace ZT {

/// A path of at most 20 byte-sized indices, one a level, that is extended and shortened at
/// its end. It is read through its fields.
class ZT_API IndexMultiByte {
public:
    /// The number of levels that a path can have.
    static constexpr unsigned char kMaxDepth = 20;

    /// The path, first level first. What stands from `m_nDepth` on is not part of it.
    unsigned char m_bytes[kMaxDepth];
    /// The number of levels in use.
    unsigned char m_nDepth;

    /// The path without a level, all bytes 0.
    IndexMultiByte() : m_bytes{}, m_nDepth(0) {}

    /// Adds a level. A path that is full already drops the byte, silently.
    void Push(unsigned char b) {
        if (m_nDepth < kMaxDepth) m_bytes[m_nDepth++] = b;
    }

    /// Takes the last level off. Its byte stays in the array; a path without a level stays as
    /// it is.
    void Pop() {
        if (m_nDepth > 0) --m_nDepth;
    }
};

}  // namespace ZT
