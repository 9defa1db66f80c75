/// @file
/// A counted handle on a query client.

#pragma once

#include <zt/frame/ZT.h>

namespace ZT {

class IQueryClient;

/// A query client with a count of references to it. The count deletes nothing and calls nobody:
/// the caller reads what `Release` answers and acts on it.
class ZT_API Reference {
public:
    /// No client, count 0.
    Reference() = default;
    /// The client with count 1; with count 0 for a null client.
    explicit Reference(IQueryClient* c) : m_pClient(c), m_nRefs(c != nullptr ? 1 : 0) {}

    /// Adds a reference and gives the new count.
    ulong AddRef() { return ++m_nRefs; }
    /// Takes a reference off, if there is one. Whether references remain.
    bool Release() { return m_nRefs != 0 && --m_nRefs != 0; }

    IQueryClient* m_pClient = nullptr;  ///< The client, not owned; null for none.
    ulong m_nRefs = 0;                  ///< The count.
};

}  // namespace ZT
