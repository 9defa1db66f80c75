/// @file
/// The algebra of the three-valued logic.

#pragma once

#include <platform/text/CString.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// Static operations on `ETri`. A value that is neither -1 nor 1 counts as `eFalse`
/// everywhere.
class ZT_API TriStateAlg {
public:
    /// -1 gives `eUnknown`, 1 gives `eTrue`, every other number `eFalse`.
    static constexpr ETri IntToNik(int value) {
        if (value == eUnknown) return eUnknown;
        return value == eTrue ? eTrue : eFalse;
    }

    /// The same mapping into the other enumeration.
    static constexpr ZT3State IntTo3State(int value) {
        return static_cast<ZT3State>(IntToNik(value));
    }

    /// The negation: what is unknown stays unknown.
    static constexpr ETri Not(ETri value) {
        if (value == eUnknown) return eUnknown;
        return value == eTrue ? eFalse : eTrue;
    }

    /// Negates in place.
    static constexpr void Inverse(ETri& value) { value = Not(value); }

    /// The name of the value: "eUnknown", "eTrue" or "eFalse".
    static CString ToString(ETri value);
};

}  // namespace ZT
