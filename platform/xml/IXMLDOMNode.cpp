#include <platform/xml/IXMLDOMNode.h>

#include <platform/com/ComError.h>
#include <platform/xml/IXMLDOMDocumentPtr.h>
#include <platform/xml/IXMLDOMElementPtr.h>
#include <platform/xml/detail/DomAccess.h>
#include <platform/xml/detail/DomChecks.h>

namespace {

IXMLDOMNodePtr Handle(DomTree& tree, pugi::xml_node node) {
    return DomAccess::Make<IXMLDOMNodePtr>(tree, node);
}

// A query that found nothing fails if it is none.
void CheckQuery(std::string_view name) {
    CheckDomName(name);
}

}  // namespace

pugi::xml_node DomAccess::Argument(const DomTree& tree, const IXMLDOMNodePtr& node) {
    if (!node) _com_raise_error(E_INVALIDARG, "A node is missing.");
    if (&Tree(*node) != &tree) {
        _com_raise_error(E_INVALIDARG, "The node belongs to another document.");
    }
    return Node(*node);
}

DOMNodeType IXMLDOMNode::nodeType() const {
    switch (NodeOf(m_node).type()) {
        case pugi::node_document:
            return NODE_DOCUMENT;
        case pugi::node_element:
            return NODE_ELEMENT;
        case pugi::node_pcdata:
            return NODE_TEXT;
        case pugi::node_cdata:
            return NODE_CDATA_SECTION;
        case pugi::node_comment:
            return NODE_COMMENT;
        case pugi::node_pi:
            return NODE_PROCESSING_INSTRUCTION;
        default:
            return NODE_INVALID;
    }
}

std::string_view IXMLDOMNode::nameView() const {
    switch (NodeOf(m_node).type()) {
        case pugi::node_document:
            return "#document";
        case pugi::node_pcdata:
            return "#text";
        case pugi::node_cdata:
            return "#cdata-section";
        case pugi::node_comment:
            return "#comment";
        default:
            return NodeOf(m_node).name();
    }
}

CString IXMLDOMNode::nodeName() const {
    return WithDomMemory([this] { return CString(nameView()); });
}

IXMLDOMNodePtr IXMLDOMNode::parentNode() const {
    DomTree& tree = DomAccess::Tree(*this);
    return Handle(tree, tree.Parent(NodeOf(m_node)));
}

IXMLDOMNodePtr IXMLDOMNode::firstChild() const {
    DomTree& tree = DomAccess::Tree(*this);
    return Handle(tree, tree.FirstChild(NodeOf(m_node)));
}

IXMLDOMNodePtr IXMLDOMNode::lastChild() const {
    DomTree& tree = DomAccess::Tree(*this);
    return Handle(tree, tree.LastChild(NodeOf(m_node)));
}

IXMLDOMNodePtr IXMLDOMNode::nextSibling() const {
    DomTree& tree = DomAccess::Tree(*this);
    return Handle(tree, tree.Next(NodeOf(m_node)));
}

IXMLDOMNodePtr IXMLDOMNode::previousSibling() const {
    DomTree& tree = DomAccess::Tree(*this);
    return Handle(tree, tree.Previous(NodeOf(m_node)));
}

bool IXMLDOMNode::hasChildNodes() const {
    return !IsNull(DomAccess::Tree(*this).FirstChild(NodeOf(m_node)));
}

IXMLDOMDocumentPtr IXMLDOMNode::ownerDocument() const {
    DomTree& tree = DomAccess::Tree(*this);
    if (SameNode(NodeOf(m_node), tree.Root())) return {};
    return DomAccess::Make<IXMLDOMDocumentPtr>(tree, tree.Root());
}

IXMLDOMNodeListPtr IXMLDOMNode::childNodes() const {
    return DomAccess::Children(DomAccess::Tree(*this), NodeOf(m_node));
}

IXMLDOMNodePtr IXMLDOMNode::selectSingleNode(DomText name) const {
    DomTree& tree = DomAccess::Tree(*this);
    const pugi::xml_node found = tree.ChildNamed(NodeOf(m_node), name.View(), 0);
    if (IsNull(found)) CheckQuery(name.View());
    return Handle(tree, found);
}

IXMLDOMNodeListPtr IXMLDOMNode::selectNodes(DomText name) const {
    CheckQuery(name.View());
    DomTree& tree = DomAccess::Tree(*this);
    return WithDomMemory([&] {
        DomAccess::Found found;
        for (pugi::xml_node node = tree.FirstChild(NodeOf(m_node)); !IsNull(node);
             node = tree.Next(node)) {
            if (IsElementNamed(node, name.View())) found.push_back(RawNode(node));
        }
        return DomAccess::List(tree, NodeOf(m_node), std::move(found));
    });
}

IXMLDOMElementPtr IXMLDOMNode::childElement(DomText name, int index) const {
    if (index < 0) return {};
    DomTree& tree = DomAccess::Tree(*this);
    return DomAccess::Make<IXMLDOMElementPtr>(
        tree, tree.ChildNamed(NodeOf(m_node), name.View(), static_cast<std::size_t>(index)));
}

int IXMLDOMNode::childElementCount() const {
    return static_cast<int>(DomAccess::Tree(*this).ElementCount(NodeOf(m_node)));
}

int IXMLDOMNode::childElementCount(DomText name) const {
    return static_cast<int>(DomAccess::Tree(*this).ElementCount(NodeOf(m_node), name.View()));
}
