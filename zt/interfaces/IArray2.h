/// @file
/// The interface of an array of objects in variants.

#pragma once

#include <zt/interfaces/VariantArrayOperations.h>

namespace ZT {

/// An array of objects, which travel in variants.
class IArray2 : public VariantArrayOperations {
protected:
    ~IArray2() = default;
};

}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::IArray2> {
    static constexpr IID value = ZT::IID_IArray2;
};
