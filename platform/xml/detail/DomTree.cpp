#include <platform/xml/detail/DomTree.h>

#include <platform/com/ComError.h>

// What `look` finds in the index of `parent`; where there is no memory to keep one, in an
// index that lasts no longer.
template <class Look>
auto DomTree::Indexed(pugi::xml_node parent, Look look) {
    if (ChildIndex* kept = m_indexes.Of(parent, EndOf(parent))) return look(*kept);
    ChildIndex passing(parent, EndOf(parent));
    return look(passing);
}

void CheckDomMemory(bool had) {
    if (!had) _com_issue_error(E_OUTOFMEMORY);
}

void RaiseNullDomHandle() {
    _com_issue_error(E_POINTER);
}

void DomCounts::Idle() noexcept {
    static_cast<DomTree*>(this)->OnIdle();
}

DomTree::DomTree() {
    AddHolder();
}

void DomTree::AddHolder() {
    m_holder = m_document.append_child(pugi::node_element);
    CheckDomMemory(!IsNull(m_holder));
}

void DomTree::OnIdle() noexcept {
    if (m_documents == 0 && m_nodes == 0) {
        delete this;
    } else {
        FreeDetached();
    }
}

void DomTree::FreeDetached() {
    m_detached = false;
    pugi::xml_node top = m_holder.first_child();
    if (m_retired.empty() && IsNull(top)) return;
    // Any of them may be that of a node which goes now.
    m_indexes.Clear();
    m_retired.clear();
    for (; !IsNull(top); top = m_holder.first_child()) Destroy(top);
}

// Leaf by leaf, since the parser's library frees a whole tree by recursion.
void DomTree::Destroy(pugi::xml_node top) {
    const pugi::xml_node stop = top.parent();
    for (pugi::xml_node node = top; !SameNode(node, stop);) {
        const pugi::xml_node child = node.first_child();
        if (!IsNull(child)) {
            node = child;
            continue;
        }
        pugi::xml_node parent = node.parent();
        parent.remove_child(node);
        node = parent;
    }
}

bool DomTree::IsHidden(pugi::xml_node parent) const {
    if (SameNode(parent, m_holder)) return true;
    if (m_retired.empty()) return false;
    const bool oldRoot = parent.type() == pugi::node_document && !SameNode(parent, m_document);
    const bool oldHolder = IsElement(parent) && *parent.name() == 0;
    return oldRoot || oldHolder;
}

pugi::xml_node DomTree::Parent(pugi::xml_node node) const {
    const pugi::xml_node parent = node.parent();
    return IsHidden(parent) ? pugi::xml_node() : parent;
}

pugi::xml_node DomTree::LastChild(pugi::xml_node parent) const {
    const pugi::xml_node last = parent.last_child();
    return SameNode(last, m_holder) ? last.previous_sibling() : last;
}

pugi::xml_node DomTree::NextBelow(pugi::xml_node top, pugi::xml_node node, bool enter) const {
    if (enter) {
        const pugi::xml_node child = FirstChild(node);
        if (!IsNull(child)) return child;
    }
    for (; !SameNode(node, top); node = node.parent()) {
        const pugi::xml_node next = Shown(node.next_sibling());
        if (!IsNull(next)) return next;
    }
    return {};
}

pugi::xml_node DomTree::DocumentElement() const {
    pugi::xml_node node = FirstChild(m_document);
    while (!IsNull(node) && !IsElement(node)) node = Shown(node.next_sibling());
    return node;
}

pugi::xml_node DomTree::ChildNamed(pugi::xml_node parent, std::string_view name,
                                   std::size_t index) {
    if (ChildIndex* known = m_indexes.Recent(parent)) return known->Named(name, index);
    pugi::xml_node node = FirstChild(parent);
    std::size_t found = 0;
    for (std::size_t step = 0; step < ChildIndexTable::kFew; ++step) {
        if (IsNull(node)) return node;
        if (IsElementNamed(node, name) && found++ == index) return node;
        node = Shown(node.next_sibling());
    }
    if (IsNull(node)) return node;
    return Indexed(parent, [&](ChildIndex& children) { return children.Named(name, index); });
}

pugi::xml_node DomTree::ChildAt(pugi::xml_node parent, std::size_t index) {
    if (ChildIndex* known = m_indexes.Recent(parent)) return known->Item(index);
    if (index >= ChildIndexTable::kFew) {
        return Indexed(parent, [&](ChildIndex& children) { return children.Item(index); });
    }
    pugi::xml_node node = FirstChild(parent);
    while (index-- > 0 && !IsNull(node)) node = Shown(node.next_sibling());
    return node;
}

std::size_t DomTree::ChildCount(pugi::xml_node parent) {
    if (ChildIndex* known = m_indexes.Recent(parent)) return known->Length();
    pugi::xml_node node = FirstChild(parent);
    std::size_t count = 0;
    for (; !IsNull(node) && count < ChildIndexTable::kFew; ++count) {
        node = Shown(node.next_sibling());
    }
    if (IsNull(node)) return count;
    return Indexed(parent, [](ChildIndex& children) { return children.Length(); });
}

std::size_t DomTree::ElementCount(pugi::xml_node parent) {
    if (ChildCount(parent) > ChildIndexTable::kFew) {
        return Indexed(parent, [](ChildIndex& children) { return children.CountElements(); });
    }
    std::size_t count = 0;
    for (pugi::xml_node node = FirstChild(parent); !IsNull(node);
         node = Shown(node.next_sibling())) {
        count += IsElement(node);
    }
    return count;
}

std::size_t DomTree::ElementCount(pugi::xml_node parent, std::string_view name) {
    if (ChildCount(parent) > ChildIndexTable::kFew) {
        return Indexed(parent, [&](ChildIndex& children) { return children.CountNamed(name); });
    }
    std::size_t count = 0;
    for (pugi::xml_node node = FirstChild(parent); !IsNull(node);
         node = Shown(node.next_sibling())) {
        count += IsElementNamed(node, name);
    }
    return count;
}
