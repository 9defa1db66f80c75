/// @file
/// Visibility of the sibling library's symbols.

#pragma once

/// Marks what `ztbr64` shows to the outside; all else is hidden.
#define PW_API __attribute__((visibility("default")))
