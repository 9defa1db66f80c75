/// @file
/// The clients that hear when an object goes away.

#pragma once

#include <platform/collections/CPtrArray.h>
#include <zt/frame/ZT.h>

namespace ZT {

class IQueryClient;

/// The clients that want to be told when an object goes away. It holds no references: a client
/// removes itself before its own end. Nobody is told when the list itself ends.
class ZT_API RefMgr : public CPtrArray {
public:
    /// No clients.
    RefMgr();
    ~RefMgr() override;

    /// Adds a client behind the others, unless it is there. Null is kept like any other, and
    /// never called.
    void AddClient(IQueryClient* c);
    /// The index of a client, or -1.
    int Find(IQueryClient* c) const;
    /// Removes a client. Whether it was there.
    bool RemoveClient(IQueryClient* c);
    /// Tells all clients in their order that an object goes away. A client may remove itself
    /// meanwhile; the one behind it is then deliberately passed over. One that is added
    /// meanwhile is told as well. What a client raises ends the round.
    void OnFinalRelease(void* a, void* b);
};

}  // namespace ZT
