/// @file
/// An untyped pointer with the kind of what it points at.

#pragma once

#include <zt/frame/ZT.h>

namespace ZT {

/// Carries an object through layers that must not know its class. The object is not
/// owned.
class ZT_API OW {
public:
    /// The kind of the object as the wrapper sees it. Other values belong to the modules.
    enum EType : std::int32_t {
        eTypeUnknown = 0,    ///< nothing is known
        eTypeSceneItem = 1,  ///< an item of a scene
    };

    /// No object, nothing known.
    OW() = default;
    /// The object with its kind.
    OW(void* p, EType t) : m_pObj(p), m_eType(t) {}

    /// Back to no object, nothing known.
    void Reset() { *this = OW(); }
    /// Stores object and kind.
    void Set(void* p, EType t) { *this = OW(p, t); }
    /// Takes both from `other`.
    void Copy(const OW& other) { *this = other; }

    /// Whether the object is an item of a scene.
    bool IsSceneItem() const { return m_eType == eTypeSceneItem; }

    /// The object; null for none.
    void* m_pObj = nullptr;
    /// Its kind.
    EType m_eType = eTypeUnknown;
};

}  // namespace ZT
