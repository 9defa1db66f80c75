/// @file
/// The record of a message to those who watch an object.

#pragma once

#include <zt/frame/OW.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// What a sender tells the clients of an object: an event, the object, and a payload. It owns
/// nothing.
class ZT_API MessageZt {
public:
    /// What has happened. All values but the default belong to the modules.
    enum EEvent : std::int32_t {
        eEventNone = 0,
    };

    /// No event, no object, payload 0.
    MessageZt();
    /// A message about the object at `p`. The event is deliberately not stored: a sender who
    /// wants one assigns `m_event` afterwards.
    MessageZt(EEvent e, void* p, OW::EType t);
    MessageZt(const MessageZt&) = default;
    MessageZt& operator=(const MessageZt&) = default;
    virtual ~MessageZt();

    /// Puts event and payload back to their defaults. The object stays.
    void Construct();

    EEvent m_event = eEventNone;  ///< What has happened.
    OW m_ow;                      ///< The object concerned.
    uint64 m_pData = 0;           ///< A payload for the modules.
};

}  // namespace ZT
