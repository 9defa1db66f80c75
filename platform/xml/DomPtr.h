/// @file
/// What the DOM's smart pointers have in common.

#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

#include <platform/base/Export.h>

namespace pugi {
struct xml_node_struct;
}

class DomTree;
class IXMLDOMDocument;

/// How many handles look at a document, and whether it holds nodes that only a handle
/// can reach. Plain counters: all handles of one document belong to one thread.
class DomCounts {
public:
    DomCounts(const DomCounts&) = delete;
    DomCounts& operator=(const DomCounts&) = delete;

    void AddDocument() { ++m_documents; }
    void AddNode() { ++m_nodes; }
    void DropDocument() {
        if (--m_documents == 0 && m_nodes == 0) Idle();
    }
    void DropNode() {
        if (--m_nodes == 0 && (m_documents == 0 || m_detached)) Idle();
    }

    /// Whether there may be nodes outside the document's own tree.
    bool HasDetached() const { return m_detached; }

protected:
    DomCounts() = default;
    ~DomCounts() = default;

    std::size_t m_documents = 0;
    std::size_t m_nodes = 0;
    bool m_detached = false;

private:
    // No node handle is left: ends the document if no other is, too, and otherwise
    // frees the nodes that nobody can reach any more.
    ZTP_API void Idle() noexcept;
};

/// Raises `_com_error` with `E_POINTER`.
[[noreturn]] ZTP_API void RaiseNullDomHandle();

/// A counted handle on one node of a document: two pointers, with no memory of its
/// own. Null, or on a node that stays valid, with its whole document, as long as the
/// handle does. Copies are cheap and equal; two handles are equal when they stand for
/// the same node.
///
/// A call through a null handle raises `_com_error` with `E_POINTER` (0x80004003).
/// Neither the handles nor the documents are safe to share between threads, not even
/// for reading: all handles of a document belong to one thread at a time.
template <class Object>
class DomPtr {
public:
    DomPtr() = default;
    DomPtr(std::nullptr_t) {}
    DomPtr(const DomPtr& other) { Bind(other.m_object.m_counts, other.m_object.m_node); }
    DomPtr(DomPtr&& other) noexcept { swap(other); }
    DomPtr& operator=(const DomPtr& other) {
        DomPtr(other).swap(*this);
        return *this;
    }
    DomPtr& operator=(DomPtr&& other) noexcept {
        DomPtr(std::move(other)).swap(*this);
        return *this;
    }
    ~DomPtr() { Drop(); }

    void swap(DomPtr& other) noexcept {
        std::swap(m_object.m_counts, other.m_object.m_counts);
        std::swap(m_object.m_node, other.m_object.m_node);
    }

    /// Lets go of the node; the handle is null from then on.
    void Release() { DomPtr().swap(*this); }

    explicit operator bool() const { return m_object.m_node != nullptr; }
    bool operator!() const { return m_object.m_node == nullptr; }

    /// The operations of the node.
    const Object* operator->() const {
        if (m_object.m_node == nullptr) RaiseNullDomHandle();
        return &m_object;
    }
    const Object& operator*() const { return *operator->(); }

    /// A value that is the same for all handles of one node; null for a null handle.
    const void* Identity() const { return m_object.m_node; }

protected:
    /// Makes a handle that is still null one on the node of a handle of another kind.
    template <class Other>
    void BindTo(const DomPtr<Other>& other) {
        Bind(other.m_object.m_counts, other.m_object.m_node);
    }

private:
    template <class>
    friend class DomPtr;
    friend class DomAccess;

    static constexpr bool kDocument = std::is_same_v<Object, IXMLDOMDocument>;

    void Bind(DomCounts* counts, pugi::xml_node_struct* node) {
        m_object.m_counts = counts;
        m_object.m_node = node;
        if (node == nullptr) return;
        if constexpr (kDocument) {
            counts->AddDocument();
        } else {
            counts->AddNode();
        }
    }
    void Drop() {
        if (m_object.m_node == nullptr) return;
        if constexpr (kDocument) {
            m_object.m_counts->DropDocument();
        } else {
            m_object.m_counts->DropNode();
        }
    }

    Object m_object;
};

template <class A, class B>
bool operator==(const DomPtr<A>& a, const DomPtr<B>& b) {
    return a.Identity() == b.Identity();
}
template <class A>
bool operator==(const DomPtr<A>& a, std::nullptr_t) {
    return !a;
}
