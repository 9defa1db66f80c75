#include <platform/com/ComError.h>
#include <platform/xml/detail/DomName.h>
#include <platform/xml/detail/DomTree.h>

namespace {

constexpr const char* kNoParent = "Only elements and documents have children.";
constexpr const char* kTextOutside = "A text cannot stand outside the root element.";
constexpr const char* kDeclarationInside =
    "An XML declaration can only stand at the very start of a document.";

[[noreturn]] void Refused(const char* reason) {
    _com_raise_error(E_INVALIDARG, reason);
}

// Why the parser's library did not move `child`.
[[noreturn]] void RefuseMove(pugi::xml_node parent, pugi::xml_node child) {
    if (child.type() == pugi::node_document) Refused("A document cannot be a child.");
    if (!IsElement(parent) && parent.type() != pugi::node_document) Refused(kNoParent);
    Refused("A node cannot stand below itself.");
}

// Names and fills a new node; takes it away again without memory.
pugi::xml_node Filled(pugi::xml_node node, std::string_view name, std::string_view value) {
    CheckDomMemory(!IsNull(node));
    const bool had = (name.empty() || DomName(name).GiveTo(node)) &&
                     (value.empty() || node.set_value(value.data(), value.size()));
    if (!had) node.parent().remove_child(node);
    CheckDomMemory(had);
    return node;
}

bool BothOrNeitherEmpty(const char* a, const char* b) {
    return (*a == 0) == (*b == 0);
}

// Whether everything that stands in one node itself has come into the other.
bool IsWholeNode(pugi::xml_node node, pugi::xml_node copy) {
    if (!BothOrNeitherEmpty(node.name(), copy.name()) ||
        !BothOrNeitherEmpty(node.value(), copy.value())) {
        return false;
    }
    pugi::xml_attribute to = copy.first_attribute();
    for (const pugi::xml_attribute from : node.attributes()) {
        if (to.empty() || !BothOrNeitherEmpty(from.name(), to.name())) return false;
        if (!BothOrNeitherEmpty(from.value(), to.value())) return false;
        to = to.next_attribute();
    }
    return true;
}

}  // namespace

// Both are walked in step: where something is lacking in the copy, they part.
bool IsWholeCopy(pugi::xml_node top, pugi::xml_node copy) {
    for (pugi::xml_node node = top; !IsNull(copy) && IsWholeNode(node, copy);) {
        if (IsNull(node.first_child()) != IsNull(copy.first_child())) return false;
        if (!IsNull(node.first_child())) {
            node = node.first_child();
            copy = copy.first_child();
            continue;
        }
        for (; !SameNode(node, top) && IsNull(node.next_sibling()); node = node.parent()) {
            if (!IsNull(copy.next_sibling())) return false;
            copy = copy.parent();
        }
        if (SameNode(node, top)) return true;
        node = node.next_sibling();
        copy = copy.next_sibling();
    }
    return false;
}

void DomTree::CheckCurrent(pugi::xml_node node) const {
    if (m_retired.empty() || SameNode(node.root(), m_document)) return;
    Refused("The node belongs to a content that the document no longer has.");
}

pugi::xml_node DomTree::NewDetached(pugi::xml_node_type type, std::string_view name,
                                    std::string_view value) {
    m_detached = true;
    return Filled(m_holder.append_child(type), name, value);
}

pugi::xml_node DomTree::NewCopy(pugi::xml_node node, bool deep) {
    m_detached = true;
    if (deep || !IsElement(node)) {
        const pugi::xml_node copy = m_holder.append_copy(node);
        if (!IsWholeCopy(node, copy)) RefuseCopy(copy);
        return copy;
    }
    pugi::xml_node copy = NewDetached(pugi::node_element, node.name(), {});
    bool whole = true;
    for (const pugi::xml_attribute attribute : node.attributes()) {
        whole = whole && static_cast<bool>(copy.append_copy(attribute));
    }
    if (!whole || !IsWholeNode(node, copy)) RefuseCopy(copy);
    return copy;
}

// Without memory for all of it.
void DomTree::RefuseCopy(pugi::xml_node copy) {
    if (!IsNull(copy)) Destroy(copy);
    _com_issue_error(E_OUTOFMEMORY);
}

pugi::xml_node DomTree::NewChild(pugi::xml_node parent, pugi::xml_node_type type,
                                 std::string_view name, std::string_view value) {
    CheckCurrent(parent);
    return Filled(MakeChild(parent, type), name, value);
}

pugi::xml_node DomTree::MakeChild(pugi::xml_node parent, pugi::xml_node_type type) {
    if (!SameNode(parent, m_document)) {
        const pugi::xml_node child = parent.append_child(type);
        if (IsNull(child) && !IsElement(parent)) Refused(kNoParent);
        return child;
    }
    if (type != pugi::node_element) Refused(kTextOutside);
    CheckElementTop({});
    return m_document.insert_child_before(type, m_holder);
}

void DomTree::CheckTopLevel(pugi::xml_node child, pugi::xml_node before,
                            pugi::xml_node leaving) const {
    if (IsTextType(child.type())) Refused(kTextOutside);
    if (IsElement(child) && !SameNode(child, DocumentElement())) CheckElementTop(leaving);
    const pugi::xml_node first = FirstChild(m_document);
    const bool atStart = IsNull(before) ? IsNull(first) : SameNode(before, first);
    const bool declared = !IsNull(first) && IsDeclaration(first) && !SameNode(first, leaving);
    if (IsDeclaration(child) ? !atStart || declared : atStart && declared) {
        Refused(kDeclarationInside);
    }
}

void DomTree::CheckElementTop(pugi::xml_node leaving) const {
    const pugi::xml_node root = DocumentElement();
    if (!IsNull(root) && !SameNode(root, leaving)) {
        Refused("A document has one root element only.");
    }
}

void DomTree::Place(pugi::xml_node parent, pugi::xml_node child, pugi::xml_node before,
                    pugi::xml_node leaving) {
    CheckCurrent(parent);
    CheckCurrent(child);
    if (SameNode(parent, m_document)) {
        CheckTopLevel(child, before, leaving);
    } else if (IsDeclaration(child)) {
        Refused(kDeclarationInside);
    }
    if (SameNode(child, before)) return;
    const pugi::xml_node from = m_indexes.IsEmpty() ? pugi::xml_node() : child.parent();
    const pugi::xml_node place = IsNull(before) ? EndOf(parent) : before;
    const pugi::xml_node moved =
        IsNull(place) ? parent.append_move(child) : parent.insert_move_before(child, place);
    if (IsNull(moved)) RefuseMove(parent, child);
    m_indexes.Drop(from);
    if (!IsNull(before)) m_indexes.Drop(parent);
}

void DomTree::Detach(pugi::xml_node node) {
    CheckCurrent(node);
    const pugi::xml_node from = node.parent();
    m_detached = true;
    static_cast<void>(m_holder.append_move(node));
    m_indexes.Drop(from);
}

bool DomTree::SetFirstContent(pugi::xml_node parent, std::string_view text) {
    CheckCurrent(parent);
    if (SameNode(parent, m_document) || text.empty()) return false;
    if (!IsNull(parent.first_child())) return false;
    const pugi::xml_node child = parent.append_child(pugi::node_pcdata);
    if (IsNull(child) && !IsElement(parent)) return false;
    Filled(child, {}, text);
    return true;
}

void DomTree::SetContent(pugi::xml_node element, std::string_view text) {
    CheckCurrent(element);
    pugi::xml_node first = element.first_child();
    const bool singleText = first.type() == pugi::node_pcdata && IsNull(first.next_sibling());
    if (singleText && !text.empty()) {
        CheckDomMemory(first.set_value(text.data(), text.size()));
        return;
    }
    // First the new text: without memory for it, the old content must stay where it is.
    const pugi::xml_node made =
        text.empty() ? pugi::xml_node() : NewChild(element, pugi::node_pcdata, {}, text);
    while (!SameNode(element.first_child(), made)) Detach(element.first_child());
}
