/// @file
/// Visibility of the platform library's symbols.

#pragma once

/// Marks what `ztplatform` shows to the outside; all else is hidden.
#define ZTP_API __attribute__((visibility("default")))
