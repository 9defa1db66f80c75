/// @file
/// The exception for an argument that an operation cannot take.

#pragma once

#include <platform/object/CSimpleException.h>

/// An operation was given an argument that it cannot take: an index out of
/// bounds, a null position, a null pointer where an object is needed. The object
/// that `AfxThrowInvalidArgException` throws stands ready from the start, and
/// `Delete` leaves it alone.
class ZTP_API CInvalidArgException : public CSimpleException {
    DECLARE_DYNAMIC(CInvalidArgException)

    explicit CInvalidArgException(BOOL autoDelete = TRUE);
};

/// Raises the invalid-argument exception.
[[noreturn]] ZTP_API void AfxThrowInvalidArgException();
