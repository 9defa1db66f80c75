#include <platform/com/ComError.h>
#include <platform/xml/IXMLDOMDocumentPtr.h>
#include <platform/xml/IXMLDOMElementPtr.h>
#include <platform/xml/IXMLDOMNode.h>
#include <platform/xml/detail/DomAccess.h>
#include <platform/xml/detail/DomChecks.h>

namespace {

// An argument that must be a child of `parent`.
pugi::xml_node ChildArgument(const DomTree& tree, pugi::xml_node parent,
                             const IXMLDOMNodePtr& child) {
    const pugi::xml_node node = DomAccess::Argument(tree, child);
    if (!SameNode(node.parent(), parent)) {
        _com_raise_error(E_INVALIDARG, "The node is no child of this one.");
    }
    return node;
}

}  // namespace

IXMLDOMNodePtr IXMLDOMNode::appendChild(const IXMLDOMNodePtr& child) const {
    DomTree& tree = DomAccess::Tree(*this);
    tree.Place(NodeOf(m_node), DomAccess::Argument(tree, child), {}, {});
    return child;
}

IXMLDOMNodePtr IXMLDOMNode::insertBefore(const IXMLDOMNodePtr& child,
                                         const IXMLDOMNodePtr& reference) const {
    if (!reference) return appendChild(child);
    DomTree& tree = DomAccess::Tree(*this);
    const pugi::xml_node before = ChildArgument(tree, NodeOf(m_node), reference);
    tree.Place(NodeOf(m_node), DomAccess::Argument(tree, child), before, {});
    return child;
}

IXMLDOMNodePtr IXMLDOMNode::replaceChild(const IXMLDOMNodePtr& child,
                                         const IXMLDOMNodePtr& old) const {
    DomTree& tree = DomAccess::Tree(*this);
    const pugi::xml_node leaving = ChildArgument(tree, NodeOf(m_node), old);
    const pugi::xml_node entering = DomAccess::Argument(tree, child);
    if (SameNode(entering, leaving)) return old;
    tree.Place(NodeOf(m_node), entering, leaving, leaving);
    tree.Detach(leaving);
    return old;
}

IXMLDOMNodePtr IXMLDOMNode::removeChild(const IXMLDOMNodePtr& child) const {
    DomTree& tree = DomAccess::Tree(*this);
    tree.Detach(ChildArgument(tree, NodeOf(m_node), child));
    return child;
}

IXMLDOMElementPtr IXMLDOMNode::appendElement(DomText name) const {
    CheckDomName(name.View());
    DomTree& tree = DomAccess::Tree(*this);
    return DomAccess::Make<IXMLDOMElementPtr>(
        tree, tree.NewChild(NodeOf(m_node), pugi::node_element, name.View(), {}));
}

IXMLDOMNodePtr IXMLDOMNode::appendText(DomText text) const {
    CheckDomText(text.View());
    DomTree& tree = DomAccess::Tree(*this);
    return DomAccess::Make<IXMLDOMNodePtr>(
        tree, tree.NewChild(NodeOf(m_node), pugi::node_pcdata, {}, text.View()));
}

IXMLDOMNodePtr IXMLDOMNode::cloneNode(bool deep) const {
    DomTree& tree = DomAccess::Tree(*this);
    const pugi::xml_node node = NodeOf(m_node);
    if (node.type() != pugi::node_document) {
        return DomAccess::Make<IXMLDOMNodePtr>(tree, tree.NewCopy(node, deep));
    }
    const IXMLDOMDocumentPtr copy = IXMLDOMDocumentPtr::CreateInstance();
    if (deep) DomAccess::Tree(*copy).CopyContent(tree);
    return copy;
}
