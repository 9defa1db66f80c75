/// @file
/// An untyped pointer with the full type of what it points at.

#pragma once

#include <zt/frame/TypeZT.h>

namespace ZT {

/// Carries an object, its type and two bytes of flags through layers that must not know
/// its class. The object is not owned; the flags are the modules'.
class ZT_API OWC {
public:
    /// No object, type and flags 0.
    OWC() = default;
    /// The object with a copy of its type, flags 0.
    OWC(void* p, const TypeZT& t) : m_pObj(p), m_type2(t) {}

    /// Stores object and type. The flags deliberately stay as they were.
    void Set(void* p, const TypeZT& t) {
        m_pObj = p;
        m_type2 = t;
    }
    /// Copies everything, the flags included.
    void Copy(const OWC& other) { *this = other; }

    /// The object; null for none.
    void* m_pObj = nullptr;
    /// Its type.
    TypeZT m_type2;
    /// Carried for the modules.
    std::uint16_t m_nFlags = 0;
};

}  // namespace ZT
