/// @file
/// The chief header of the namespace: the widths of its integers and its
/// three-valued logic.

#pragma once

#include <zt/frame/Export.h>
#include <cstdint>

/// The foundation library.
namespace ZT {

/// Unsigned, 32 bits wide on every system.
using ulong = std::uint32_t;
using uint64 = std::uint64_t;
using int64 = std::int64_t;

/// A yes, a no, or no definite answer.
///
/// Any 32-bit integer can arrive in a value of this type; every one but -1 and 1
/// counts as `eFalse`. The enumerators are reachable without `ZT::` as well.
enum ETri : std::int32_t {
    eUnknown = -1,
    eFalse = 0,
    eTrue = 1,
};

}  // namespace ZT

using ZT::eFalse;
using ZT::eTrue;
using ZT::eUnknown;

/// The three values of `ZT::ETri` once more, for signatures of the dictionary
/// and of persistence. Its enumerators need their scope, `ZT3State::eTrue`,
/// since the plain names are those of `ZT::ETri`.
enum class ZT3State : std::int32_t {
    eUnknown = -1,
    eFalse = 0,
    eTrue = 1,
};
