/// @file
/// What a resource is.

#pragma once

#include <platform/base/Types.h>

#include <span>
#include <string_view>

/// A view of any bytes.
using ByteView = std::span<const BYTE>;

/// The language in which resources are kept unless another one is named: English of
/// the United States, by the number that the suite's modules use.
constexpr WORD defaultResourceLanguage = 1033;

/// One resource of a module: what it is looked up by, and its bytes.
///
/// Type and name are texts, in which the letters of ASCII count without their case. A
/// number stands as "#" and its digits.
struct ResourceRecord {
    std::string_view type;
    std::string_view name;
    WORD language = defaultResourceLanguage;
    ByteView bytes;
};
