/// @file
/// Who shares an open file with whom.

#pragma once

#include <platform/base/Types.h>

/// From here on the bytes of a file serve as claims; no file is so long.
constexpr ULONGLONG firstClaimByte = ULONGLONG{1} << 62;

/// Tells all others that `descriptor` has its file open with the access and the
/// sharing of `openFlags` (see `CFile`), until the file is closed. False if that
/// is against what another one has told, or another one does what `openFlags`
/// denies; the descriptor is then to be closed. Where the file system has no
/// locks nothing is denied.
bool ShareFile(int descriptor, UINT openFlags);
