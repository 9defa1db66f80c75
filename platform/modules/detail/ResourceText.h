/// @file
/// Types and names of resources as callers give them.

#pragma once

#include <platform/base/Types.h>

#include <string>

/// The text of a type or a name: the text itself, or "#" and its digits for a number in
/// the place of a pointer. Empty for null.
inline std::string ResourceText(LPCSTR text) {
    const auto number = reinterpret_cast<UINT_PTR>(text);
    if (number == 0) return {};
    return number <= 0xFFFF ? "#" + std::to_string(number) : std::string(text);
}
