/// @file
/// The message of a numbered cause.

#pragma once

#include <platform/base/Types.h>

#include <cstddef>
#include <span>
#include <string>

/// The text of `cause` from `texts`, with the first "%s" replaced by `name`, or
/// by "an unnamed " and `kind` if the name is empty, with a capital at the start.
/// A cause outside the table counts as `fallback`.
std::string CauseText(std::span<const LPCSTR> texts, INT cause, INT fallback, LPCSTR name,
                      LPCSTR kind);
