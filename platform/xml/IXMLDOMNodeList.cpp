#include <platform/xml/IXMLDOMNodeList.h>

#include <platform/xml/IXMLDOMNodeListPtr.h>
#include <platform/xml/detail/DomAccess.h>
#include <platform/xml/detail/DomChecks.h>

IXMLDOMNodeListPtr DomAccess::ElementsBelow(DomTree& tree, pugi::xml_node top,
                                            std::string_view name) {
    const bool all = name == "*";
    if (!all) CheckDomName(name);
    const auto fits = [&](pugi::xml_node node) {
        return IsElement(node) && (all || EqualsName(node.name(), name));
    };
    return WithDomMemory([&] {
        Found found;
        for (pugi::xml_node node = tree.NextBelow(top, top, true); !IsNull(node);
             node = tree.NextBelow(top, node, true)) {
            if (fits(node)) found.push_back(RawNode(node));
        }
        return List(tree, top, std::move(found));
    });
}

LONG IXMLDOMNodeList::length() const {
    if (m_found) return static_cast<LONG>(m_found->size());
    DomTree& tree = DomAccess::Tree(*m_parent);
    return static_cast<LONG>(tree.ChildCount(DomAccess::Node(*m_parent)));
}

IXMLDOMNodePtr IXMLDOMNodeList::item(LONG index) const {
    if (index < 0) return {};
    const auto place = static_cast<std::size_t>(index);
    DomTree& tree = DomAccess::Tree(*m_parent);
    pugi::xml_node node;
    if (!m_found) {
        node = tree.ChildAt(DomAccess::Node(*m_parent), place);
    } else if (place < m_found->size()) {
        node = NodeOf((*m_found)[place]);
    }
    return DomAccess::Make<IXMLDOMNodePtr>(tree, node);
}

IXMLDOMNodePtr IXMLDOMNodeList::nextNode() const {
    IXMLDOMNodePtr node = item(m_position);
    if (node) ++m_position;
    return node;
}

IXMLDOMNodeList::iterator IXMLDOMNodeList::begin() const {
    const IXMLDOMNodePtr first = item(0);
    iterator place;
    place.m_list = this;
    if (first) place.m_node = RawNode(DomAccess::Node(*first));
    return place;
}

IXMLDOMNodePtr IXMLDOMNodeList::iterator::operator*() const {
    return DomAccess::Make<IXMLDOMNodePtr>(DomAccess::Tree(*m_list->m_parent), NodeOf(m_node));
}

IXMLDOMNodeList::iterator& IXMLDOMNodeList::iterator::operator++() {
    ++m_index;
    if (m_list->m_found) {
        const DomAccess::Found& found = *m_list->m_found;
        m_node = m_index < found.size() ? found[m_index] : nullptr;
    } else {
        m_node = RawNode(DomAccess::Tree(*m_list->m_parent).Next(NodeOf(m_node)));
    }
    return *this;
}
