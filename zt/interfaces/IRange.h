/// @file
/// The interface of a range of numbers or angles.

#pragma once

#include <zt/interfaces/InterfaceIds.h>

namespace ZT {

/// Two limits that can be read and set: those of an interval, or start and end of an arc.
///
/// The operations that the two kinds of ranges answer differently say so at the object's class.
/// With no range behind the object all three give `E_UNEXPECTED`, but for two cases that are
/// answered first: `GetB` with a null pointer, and `Set` of an object that is read-only.
class IRange : public IUnknown {
public:
    /// The lower limit, or the start of the arc. A null `a` gives `DISP_E_PARAMNOTOPTIONAL`,
    /// but `E_UNEXPECTED` if there is no range either.
    virtual HRESULT GetA(double* a) = 0;
    /// The upper limit, or the end of the arc. A null `b` gives `DISP_E_PARAMNOTOPTIONAL`,
    /// deliberately also if there is no range.
    virtual HRESULT GetB(double* b) = 0;
    /// Stores both limits.
    virtual HRESULT Set(double a, double b) = 0;

protected:
    ~IRange() = default;
};

}  // namespace ZT

template <>
struct InterfaceIdOf<ZT::IRange> {
    static constexpr IID value = ZT::IID_IRange;
};
