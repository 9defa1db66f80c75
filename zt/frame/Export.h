/// @file
/// Visibility of the library's symbols.

#pragma once

/// Marks what `ztbr64v5` shows to the outside; all else is hidden.
#define ZT_API __attribute__((visibility("default")))
