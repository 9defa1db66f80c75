/// @file
/// The exception for an operation that an object does not have.

#pragma once

#include <platform/object/CSimpleException.h>

/// An object was asked for an operation that its class does not offer, as
/// locking a range of a file in memory. The object that
/// `AfxThrowNotSupportedException` throws stands ready from the start, and
/// `Delete` leaves it alone.
class ZTP_API CNotSupportedException : public CSimpleException {
    DECLARE_DYNAMIC(CNotSupportedException)

    explicit CNotSupportedException(BOOL autoDelete = TRUE);
};

/// Raises the not-supported exception.
[[noreturn]] ZTP_API void AfxThrowNotSupportedException();
