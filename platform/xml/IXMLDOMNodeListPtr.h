/// @file
/// The handle on a list of nodes.

#pragma once

#include <cstddef>

#include <platform/xml/IXMLDOMNodeList.h>

/// A list of nodes, or null. A copy is a list of the same nodes with a place of its
/// own. A call through a null handle raises `_com_error` with `E_POINTER`.
class ZTP_API IXMLDOMNodeListPtr {
public:
    IXMLDOMNodeListPtr() = default;
    IXMLDOMNodeListPtr(std::nullptr_t) {}

    explicit operator bool() const { return static_cast<bool>(m_list.m_parent); }
    bool operator!() const { return !m_list.m_parent; }
    friend bool operator==(const IXMLDOMNodeListPtr& list, std::nullptr_t) { return !list; }

    /// The operations of the list.
    const IXMLDOMNodeList* operator->() const {
        if (!m_list.m_parent) RaiseNullDomHandle();
        return &m_list;
    }
    const IXMLDOMNodeList& operator*() const { return *operator->(); }

    IXMLDOMNodeList::iterator begin() const { return operator->()->begin(); }
    IXMLDOMNodeList::iterator end() const { return operator->()->end(); }

private:
    friend class DomAccess;
    IXMLDOMNodeList m_list;
};
