/// @file
/// Between the handles and the nodes behind them.

#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <platform/xml/IXMLDOMNodeListPtr.h>
#include <platform/xml/IXMLDOMNodePtr.h>
#include <platform/xml/detail/DomTree.h>

/// Takes handles apart and makes them.
class DomAccess {
public:
    using Found = std::vector<pugi::xml_node_struct*>;

    static DomTree& Tree(const IXMLDOMNode& node) { return *static_cast<DomTree*>(node.m_counts); }
    static pugi::xml_node Node(const IXMLDOMNode& node) { return NodeOf(node.m_node); }

    /// A handle on `node`; null for a null node.
    template <class Ptr>
    static Ptr Make(DomTree& tree, pugi::xml_node node) {
        Ptr handle;
        handle.Bind(&tree, RawNode(node));
        return handle;
    }

    /// The node of an argument: raises `E_INVALIDARG` for a null handle and for a node of
    /// another document.
    static pugi::xml_node Argument(const DomTree& tree, const IXMLDOMNodePtr& node);

    /// A variant with a string; one of the type `VT_NULL` for no text.
    static COleVariant TextOrNull(std::optional<std::string_view> text);

    /// The list of the children of `parent`.
    static IXMLDOMNodeListPtr Children(DomTree& tree, pugi::xml_node parent) {
        IXMLDOMNodeListPtr list;
        list.m_list.m_parent = Make<IXMLDOMNodePtr>(tree, parent);
        return list;
    }
    /// The list of what was found in the document of `node`.
    static IXMLDOMNodeListPtr List(DomTree& tree, pugi::xml_node node, Found found) {
        IXMLDOMNodeListPtr list = Children(tree, node);
        list.m_list.m_found = std::make_shared<const Found>(std::move(found));
        return list;
    }
    /// The elements with the tag `name`, or all for "*", below `top`.
    static IXMLDOMNodeListPtr ElementsBelow(DomTree& tree, pugi::xml_node top,
                                            std::string_view name);
};
