/// @file
/// What the operations of interfaces answer.
///
/// Apart from the three below, an answer is one of the platform's result values:
///
/// | value                     | meaning here                                                |
/// |---------------------------|-------------------------------------------------------------|
/// | `S_OK`                    | done                                                        |
/// | `DISP_E_PARAMNOTOPTIONAL` | a needed argument is null, or has the wrong kind or value   |
/// | `DISP_E_BADINDEX`         | an index is out of range                                    |
/// | `E_UNEXPECTED`            | the object wraps nothing, or the operation failed           |
/// | `E_NOINTERFACE`           | the object has no such interface                            |
/// | `E_OUTOFMEMORY`           | out of memory                                               |

#pragma once

#include <platform/base/ResultCodes.h>

namespace ZT {

/// @name Positive answers
/// Plain numbers of the operating system, and deliberately positive: a client that tests for
/// failure by the sign takes them for success.
/// @{
/// The operation is not implemented.
inline constexpr HRESULT ERROR_CALL_NOT_IMPLEMENTED = 120;
/// A blob could not read its file.
inline constexpr HRESULT ERROR_FILE_NOT_FOUND = 2;
/// An array object without an array was asked for its type.
inline constexpr HRESULT ERROR_INVALID_STATE = 5023;
/// @}

}  // namespace ZT
