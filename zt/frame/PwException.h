/// @file
/// The library's own exception.

#pragma once

#include <platform/object/CException.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// A failure that carries a short text.
///
/// It is thrown by pointer, from `new`; whoever catches it, as `PwException*`,
/// `CException*`, `CObject*` or `void*`, owns it and ends it with `Delete`. The text
/// stands in `m_szMessage` alone: the message and report operations of the base do not
/// know it.
class ZT_API PwException : public CException {
public:
    /// An exception with the empty text.
    PwException();
    /// An exception with the first 49 bytes of `text`; null gives the empty text.
    explicit PwException(const char* text);
    ~PwException() override;

    /// The text, with its terminating zero.
    char m_szMessage[50];
};

}  // namespace ZT
