/// @file
/// The interface of those who want to hear of changes.

#pragma once

#include <platform/com/IUnknown.h>

namespace ZT {

/// A client that is told what happens to an object.
class INotify : public IUnknown {
public:
    /// Tells a message. What `message` points at is agreed upon between sender and client; null
    /// says that the client is being detached. The result is not looked at. A client that
    /// raises an exception here, of any kind, gets no message any more; only what it raises
    /// while it is being detached reaches the one who detaches it, and the client stays.
    virtual HRESULT Notify(void* message) = 0;

protected:
    ~INotify() = default;
};

}  // namespace ZT
