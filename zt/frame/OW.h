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
    OW(void* p, EType t) : m_pObj(p), m_eType(t) {}

    /// Back to no object, nothing known.
    void Reset() { *this = OW(); }
    void Set(void* p, EType t) { *this = OW(p, t); }
    void Copy(const OW& other) { *this = other; }

    /// Whether the object is an item of a scene.
    bool IsSceneItem() const { return m_eType == eTypeSceneItem; }

    void* m_pObj = nullptr;
    EType m_eType = eTypeUnknown;
};

}  // namespace ZT
