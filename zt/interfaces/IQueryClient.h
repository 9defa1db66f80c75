/// @file
/// The interface of those who want to hear of the end of an object.

#pragma once

#include <platform/com/IUnknown.h>

namespace ZT {

/// A client that is told when an object goes away.
class IQueryClient : public IUnknown {
public:
    /// For the modules; this library never calls it.
    virtual HRESULT Reserved() = 0;
    /// Tells that an object goes away. What the two point at is agreed upon between sender and
    /// client. The result is not looked at.
    virtual HRESULT OnFinalRelease(void* a, void* b) = 0;

protected:
    ~IQueryClient() = default;
};

}  // namespace ZT
