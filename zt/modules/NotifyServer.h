/// @file
/// The clients that hear of changes to an object.

#pragma once

#include <platform/collections/CPtrArray.h>
#include <zt/frame/ZT.h>

namespace ZT {

class INotify;

/// The clients that want messages about an object, usually a member of that object.
///
/// A server starts plain: its entries are the clients themselves, no references are held, and
/// all clients get all messages. The first client that is added with a mask of events makes it
/// masked, for good: its entries are then records of a client and its mask, and it holds one
/// reference on each client. The two ways are not to be mixed on one server: nothing converts
/// the plain entries of a server that becomes masked, and they would be read as records.
///
/// A client that raises an exception, of any kind, while it is being told something by `Notify`
/// is cut off: the exception ends there, and the client is out of the list at once. In a masked
/// server its reference is deliberately not released. The message of `DetachClient` is apart:
/// what a client raises on that one reaches the caller, and the client stays.
///
/// The two ways of sending go through the clients in opposite orders, and only the one with a
/// mask bears clients that leave the list meanwhile. Nothing is locked.
class ZT_API NotifyServer : public CPtrArray {
public:
    /// A client of a masked server.
    struct ClientRec {
        INotify* m_pClient;  ///< The client.
        ulong m_mask;        ///< The events that it wants, a bit each.
    };

    /// Empty, plain and enabled.
    NotifyServer();
    /// Releases the clients of a masked server. They are not told.
    ~NotifyServer() override;

    /// @name Clients
    /// @{
    /// Adds a client to a plain server, behind the others; holds no reference. Nothing happens
    /// for null, for a client that is there, and on a masked server.
    void AddClient(INotify* c);
    /// Adds a client that wants the events of `mask`, behind the others, with a reference; the
    /// server is masked from now on. For a client that is there, `mask` is added to what it
    /// wants already. Nothing happens for null and for a mask of 0.
    ///
    /// Without memory for its record the client still gets the reference, and stands in the
    /// list as a null entry: it is not found, hears nothing, and ends the round of
    /// `Notify(message, mask)`. Without memory for the list itself the memory exception is
    /// raised, and nothing has happened.
    void AddClient(INotify* c, ulong mask);
    /// Removes a client, if it is there. A masked server first tells it so with a null message,
    /// and then releases it. What the client raises on that message reaches the caller, and the
    /// client stays.
    void DetachClient(INotify* c);
    /// The index of a client, or -1.
    int Find(INotify* c) const;
    /// The client at an index, in a server of either kind. An index out of range raises the
    /// invalid-argument exception.
    INotify* GetNotify(int i) const;
    /// @}

    /// @name Sending
    /// @{
    /// Turns all sending on or off.
    void Enable(bool b) { m_bEnabled = b; }
    /// Tells all clients, first to last, whatever their masks.
    ///
    /// A client that leaves the list meanwhile, because it raises an exception or detaches
    /// itself, deliberately spoils the round: the one behind it is passed over, and the round
    /// ends in the invalid-argument exception at the index that is there no more, unless the
    /// client was the last. One that detaches itself and then raises an exception has the one
    /// now in its place cut off in its stead; if it was the last, there is none, and the round
    /// ends in the invalid-argument exception too. A client that is added meanwhile is not told.
    /// Nor does turning the sending off meanwhile end the round.
    void Notify(void* message);
    /// Tells the clients whose mask shares a bit with `mask`, last to first. In a plain server
    /// it is `Notify(message)`.
    ///
    /// Clients may leave the list meanwhile: nobody is passed over for it. When one detaches
    /// others with a lower index, as many clients, from this one on, are told twice: they move
    /// to indices that are still to come. Only when so many are gone that the next index is out of
    /// range does the round end in the invalid-argument exception. When a client detaches itself
    /// and then raises an exception, the one that has moved into its place is cut off in its stead;
    /// if it was the last, there is none, and the round ends in the invalid-argument exception.
    /// Turning the sending off meanwhile does not end the round.
    void Notify(void* message, ulong mask);
    /// @}

    std::int32_t m_bMasked = 0;  ///< Whether the entries are records.
    bool m_bEnabled = true;      ///< Whether anything is sent.

private:
    // The record at an index of a masked server; null if there was no memory for it.
    ClientRec* RecordAt(INT_PTR i) const { return static_cast<ClientRec*>(GetAt(i)); }
    // The client at an index; null if there was no memory for its record.
    INotify* ClientAt(INT_PTR i) const {
        void* const entry = GetAt(i);
        if (!m_bMasked || entry == nullptr) return static_cast<INotify*>(entry);
        return static_cast<ClientRec*>(entry)->m_pClient;
    }
    void RemoveEntry(INT_PTR i);
};

}  // namespace ZT
