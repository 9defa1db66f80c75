#include <zt/modules/NotifyServer.h>

#include <zt/interfaces/INotify.h>
#include <zt/modules/detail/CaughtWork.h>

#include <memory>
#include <new>

namespace ZT {

namespace {

// Tells a client. If it raises something, the entry that stands in its place by then is to be
// removed.
inline bool Hears(INotify* client, void* message) {
    return EndsWell([=] { client->Notify(message); });
}

}  // namespace

NotifyServer::NotifyServer() = default;

NotifyServer::~NotifyServer() {
    if (!m_bMasked) return;
    for (INT_PTR i = 0; i < GetSize(); ++i) {
        const std::unique_ptr<ClientRec> record(RecordAt(i));
        // A client may look into the list at its end.
        SetAt(i, nullptr);
        if (record) record->m_pClient->Release();
    }
}

INotify* NotifyServer::GetNotify(int i) const {
    return ClientAt(i);
}

int NotifyServer::Find(INotify* c) const {
    if (c == nullptr) return -1;
    for (INT_PTR i = 0; i < GetSize(); ++i) {
        if (ClientAt(i) == c) return static_cast<int>(i);
    }
    return -1;
}

void NotifyServer::AddClient(INotify* c) {
    if (c == nullptr || m_bMasked || Find(c) >= 0) return;
    Add(c);
}

void NotifyServer::AddClient(INotify* c, ulong mask) {
    if (c == nullptr || mask == 0) return;
    const int index = Find(c);
    if (index >= 0) {
        // The entry of a plain server is no record.
        if (m_bMasked) RecordAt(index)->m_mask |= mask;
        return;
    }
    std::unique_ptr<ClientRec> record(new (std::nothrow) ClientRec{c, mask});
    Add(record.get());
    static_cast<void>(record.release());
    c->AddRef();
    m_bMasked = 1;
}

void NotifyServer::DetachClient(INotify* c) {
    if (Find(c) < 0) return;
    if (m_bMasked) {
        c->Notify(nullptr);
        // It may have detached itself on that message.
        if (Find(c) < 0) return;
        c->Release();
    }
    // Others may have been detached in either call.
    const int index = Find(c);
    if (index >= 0) RemoveEntry(index);
}

// Takes an entry out, without releasing the client.
void NotifyServer::RemoveEntry(INT_PTR i) {
    if (m_bMasked) delete RecordAt(i);
    RemoveAt(i);
}

void NotifyServer::Notify(void* message) {
    if (!m_bEnabled) return;
    // Deliberately neither read again nor adjusted when a client leaves the list.
    const INT_PTR count = GetSize();
    for (INT_PTR i = 0; i < count; ++i) {
        INotify* const client = ClientAt(i);
        if (client != nullptr && !Hears(client, message)) RemoveEntry(i);
    }
}

void NotifyServer::Notify(void* message, ulong mask) {
    if (!m_bEnabled) return;
    if (!m_bMasked) return Notify(message);
    for (INT_PTR i = GetSize() - 1; i >= 0; --i) {
        const ClientRec* const record = RecordAt(i);
        if (record == nullptr) return;
        if ((record->m_mask & mask) == 0) continue;
        if (!Hears(record->m_pClient, message)) RemoveEntry(i);
    }
}

}  // namespace ZT
