/// @file
/// A four-byte classification of an object.

#pragma once

#include <platform/text/CString.h>
#include <zt/frame/ObjectType.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// An object's category on four levels, the first byte first. What the bytes say is up
/// to the modules; all 0 says nothing.
class ZT_API TypeZT {
public:
    /// The number of levels; a constant of the library that clients link to.
    static const unsigned char m_countCategory = 4;

    /// All four bytes 0.
    TypeZT() = default;
    /// The four bytes in their order.
    TypeZT(unsigned char a, unsigned char b, unsigned char c, unsigned char d)
        : m_category{a, b, c, d} {}

    /// Puts all four bytes back to 0.
    void Construct() { *this = TypeZT(); }
    /// Takes all four bytes of `other`.
    void Copy(const TypeZT& other) { *this = other; }

    /// Whether all four bytes agree.
    bool operator==(const TypeZT&) const = default;

    /// The name of an object kind: "eObjTypeBox" for `eObjTypeBox`. A number that is no
    /// kind gives "eObjTypeNULL".
    static CString EObjectTypeToString(EObjectType t);

    /// The bytes, one a level.
    unsigned char m_category[m_countCategory] = {};
};

}  // namespace ZT
