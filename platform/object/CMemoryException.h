/// @file
/// The exception for memory that cannot be had.

#pragma once

#include <platform/object/CSimpleException.h>

/// Memory could not be had. Raising it needs none: the object that
/// `AfxThrowMemoryException` throws stands ready from the start, and `Delete`
/// leaves it alone.
class ZTP_API CMemoryException : public CSimpleException {
    DECLARE_DYNAMIC(CMemoryException)

    explicit CMemoryException(BOOL autoDelete = TRUE);
};

/// Raises the memory exception.
[[noreturn]] ZTP_API void AfxThrowMemoryException();
