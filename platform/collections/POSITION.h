/// @file
/// The opaque place of an element in a list or a map.

#pragma once

#include <cstdint>

/// What a `POSITION` points to; never defined, so that nobody looks behind it.
struct __POSITION;

/// A place in a list or in a map. Null means no place: the end of a walk.
///
/// In a list it stays valid until its element is removed, whatever happens to the
/// others. In a map it names the association that the walk comes to next.
using POSITION = __POSITION*;

/// The place before the first association of a map: where `GetStartPosition` of a map
/// that is not empty begins. Its bits are those of -1.
inline POSITION BeforeStartPosition() {
    return reinterpret_cast<POSITION>(std::intptr_t{-1});
}
