/// @file
/// The second interface of an array of objects in variants.

#pragma once

#include <zt/interfaces/VariantArrayOperations.h>

namespace ZT {

/// An array of objects, which travel in variants: the same operations at the same places as in
/// `IArray2`, under an identifier of its own.
class IArray_PW : public VariantArrayOperations {
protected:
    ~IArray_PW() = default;
};

}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::IArray_PW> {
    static constexpr IID value = ZT::IID_IArray_PW;
};
