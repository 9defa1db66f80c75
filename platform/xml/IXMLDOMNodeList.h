/// @file
/// A list of nodes.

#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <vector>

#include <platform/base/Export.h>
#include <platform/base/Types.h>
#include <platform/xml/IXMLDOMNodePtr.h>

/// The operations of a list of nodes in document order: the children of a node, which
/// always shows the present ones, or the nodes that a search found, which does not
/// change. Every list has a place of its own for `nextNode`; a copy goes on from
/// there by itself.
///
/// Walking a list by `item`, `nextNode` or range-for takes time in proportion to its
/// length, also when the list is fetched anew before every step.
class ZTP_API IXMLDOMNodeList {
public:
    /// Steps through a list. A child list may be changed during the walk; it ends early
    /// if the node it stands on is taken out.
    class ZTP_API iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = IXMLDOMNodePtr;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = IXMLDOMNodePtr;

        iterator() = default;
        IXMLDOMNodePtr operator*() const;
        iterator& operator++();
        void operator++(int) { ++*this; }
        bool operator==(const iterator& other) const { return m_node == other.m_node; }

    private:
        friend class IXMLDOMNodeList;
        const IXMLDOMNodeList* m_list = nullptr;
        pugi::xml_node_struct* m_node = nullptr;
        std::size_t m_index = 0;
    };

    /// The number of nodes.
    LONG length() const;
    /// The node at `index`, counted from 0; null outside the list.
    IXMLDOMNodePtr item(LONG index) const;
    /// The node at the list's place, which moves on; null at the end.
    IXMLDOMNodePtr nextNode() const;
    /// Moves the list's place back to the start.
    void reset() const { m_position = 0; }

    iterator begin() const;
    iterator end() const { return iterator(); }

private:
    friend class IXMLDOMNodeListPtr;
    friend class DomAccess;

    // The node whose children are listed, or any node of the document for a search.
    IXMLDOMNodePtr m_parent;
    std::shared_ptr<const std::vector<pugi::xml_node_struct*>> m_found;
    mutable LONG m_position = 0;
};
