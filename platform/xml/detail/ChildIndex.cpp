#include <platform/xml/detail/ChildIndex.h>

#include <platform/xml/detail/DomNodes.h>

void NodeRun::Add(pugi::xml_node node) {
    if (m_size == 0) m_place = node;
    if (m_size % kSpacing == 0) m_marks.push_back(node);
    m_last = node;
    ++m_size;
}

void NodeRun::MoveCloser(std::size_t index) {
    const std::size_t distance = m_at < index ? index - m_at : m_at - index;
    if (distance <= index % kSpacing) return;
    m_at = index - index % kSpacing;
    m_place = m_marks[index / kSpacing];
}

pugi::xml_node ChildIndex::After(pugi::xml_node child) const {
    const pugi::xml_node next = IsNull(child) ? m_parent.first_child() : child.next_sibling();
    return SameNode(next, m_end) ? pugi::xml_node() : next;
}

bool ChildIndex::AddNext() {
    const pugi::xml_node next = After(m_children.Last());
    if (IsNull(next)) return false;
    m_children.Add(next);
    return true;
}

std::size_t ChildIndex::Length() {
    while (AddNext()) {
    }
    return m_children.Size();
}

pugi::xml_node ChildIndex::Item(std::size_t index) {
    while (m_children.Size() <= index) {
        if (!AddNext()) return {};
    }
    return m_children.At(index, [](pugi::xml_node node, bool forward) {
        return forward ? node.next_sibling() : node.previous_sibling();
    });
}

void ChildIndex::File(pugi::xml_node element) {
    const char* tag = element.name();
    if (m_recent == nullptr || !EqualsName(tag, m_recentName)) {
        // The key is the text of the first element of the run.
        const auto place = m_named.try_emplace(tag).first;
        m_recentName = place->first;
        m_recent = &place->second;
    }
    m_recent->Add(element);
    ++m_elements;
}

bool ChildIndex::FileNext() {
    const pugi::xml_node next = After(m_filed);
    if (IsNull(next)) return false;
    if (IsElement(next)) File(next);
    m_filed = next;
    return true;
}

pugi::xml_node ChildIndex::Named(std::string_view name, std::size_t index) {
    auto place = m_named.find(name);
    while (place == m_named.end() || place->second.Size() <= index) {
        if (!FileNext()) return {};
        if (place == m_named.end() && m_recentName == name) place = m_named.find(name);
    }
    return place->second.At(index, [name](pugi::xml_node node, bool forward) {
        do {
            node = forward ? node.next_sibling() : node.previous_sibling();
        } while (!IsElementNamed(node, name));
        return node;
    });
}

std::size_t ChildIndex::CountNamed(std::string_view name) {
    while (FileNext()) {
    }
    const auto place = m_named.find(name);
    return place == m_named.end() ? 0 : place->second.Size();
}

std::size_t ChildIndex::CountElements() {
    while (FileNext()) {
    }
    return m_elements;
}

ChildIndex* ChildIndexTable::Recent(pugi::xml_node parent) {
    return RawNode(parent) == m_recentParent ? m_recent : nullptr;
}

ChildIndex& ChildIndexTable::Of(pugi::xml_node parent, pugi::xml_node end) {
    m_recent = &m_indexes.try_emplace(RawNode(parent), parent, end).first->second;
    m_recentParent = RawNode(parent);
    return *m_recent;
}

void ChildIndexTable::Drop(pugi::xml_node parent) {
    if (m_indexes.empty()) return;
    m_indexes.erase(RawNode(parent));
    m_recentParent = nullptr;
    m_recent = nullptr;
}

void ChildIndexTable::Clear() {
    m_indexes.clear();
    m_recentParent = nullptr;
    m_recent = nullptr;
}
