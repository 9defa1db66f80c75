#include <platform/xml/detail/ChildIndex.h>

#include <functional>
#include <new>

#include <platform/xml/detail/DomNodes.h>

void NodeRun::Add(pugi::xml_node node) {
    if (m_size == 0) {
        m_first = node;
        m_place = node;
    } else if (m_size % kSpacing == 0) {
        m_marks.push_back(node);
    }
    m_last = node;
    ++m_size;
}

void NodeRun::MoveCloser(std::size_t index) {
    const std::size_t distance = m_at < index ? index - m_at : m_at - index;
    if (distance <= index % kSpacing) return;
    m_at = index - index % kSpacing;
    m_place = index < kSpacing ? m_first : m_marks[index / kSpacing - 1];
}

std::uint32_t NamedRuns::Hash(std::string_view name) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
}

std::size_t NamedRuns::FindHashed(std::string_view name, std::uint32_t hash) const {
    if (m_slots.empty()) return kNone;
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t at = hash & mask; m_slots[at].run != 0; at = (at + 1) & mask) {
        if (m_slots[at].hash != hash) continue;
        const std::size_t number = m_slots[at].run - 1;
        if (m_runs[number].name == name) return number;
    }
    return kNone;
}

std::size_t NamedRuns::Find(std::string_view name) const {
    return FindHashed(name, Hash(name));
}

std::size_t NamedRuns::FindOrAdd(std::string_view name) {
    const std::uint32_t hash = Hash(name);
    const std::size_t known = FindHashed(name, hash);
    if (known != kNone) return known;
    if (2 * m_runs.size() >= m_slots.size()) Grow();
    m_runs.push_back({name, NodeRun()});
    Place({hash, static_cast<std::uint32_t>(m_runs.size())});
    return m_runs.size() - 1;
}

void NamedRuns::Place(Slot slot) {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = slot.hash & mask;
    while (m_slots[at].run != 0) at = (at + 1) & mask;
    m_slots[at] = slot;
}

void NamedRuns::Grow() {
    constexpr std::size_t kLeastSlots = 16;
    std::vector<Slot> old(m_slots.empty() ? kLeastSlots : 2 * m_slots.size());
    old.swap(m_slots);
    for (const Slot& slot : old) {
        if (slot.run != 0) Place(slot);
    }
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

// The number of children that count, with no memory.
template <class Counts>
std::size_t ChildIndex::Walk(Counts counts) const {
    std::size_t count = 0;
    for (pugi::xml_node node = After({}); !IsNull(node); node = After(node)) count += counts(node);
    return count;
}

std::size_t ChildIndex::Length() try {
    while (AddNext()) {
    }
    return m_children.Size();
} catch (const std::bad_alloc&) {
    return Walk([](pugi::xml_node) { return true; });
}

pugi::xml_node ChildIndex::Item(std::size_t index) try {
    while (m_children.Size() <= index) {
        if (!AddNext()) return {};
    }
    if (index + 1 == m_children.Size()) return m_children.Last();
    return m_children.At(index, [](pugi::xml_node node, bool forward) {
        return forward ? node.next_sibling() : node.previous_sibling();
    });
} catch (const std::bad_alloc&) {
    pugi::xml_node node = After({});
    while (index-- > 0 && !IsNull(node)) node = After(node);
    return node;
}

void ChildIndex::File(pugi::xml_node element) {
    const char* tag = element.name();
    if (m_recent == NamedRuns::kNone || !EqualsName(tag, m_named.Name(m_recent))) {
        // The name is the text of the first element of the run.
        m_recent = m_named.FindOrAdd(tag);
    }
    m_named.Run(m_recent).Add(element);
    ++m_elements;
}

bool ChildIndex::IsRecent(std::string_view name) const {
    return m_recent != NamedRuns::kNone && m_named.Name(m_recent) == name;
}

bool ChildIndex::FileNext() {
    const pugi::xml_node next = After(m_filed);
    if (IsNull(next)) return false;
    if (IsElement(next)) File(next);
    m_filed = next;
    return true;
}

pugi::xml_node ChildIndex::Named(std::string_view name, std::size_t index) try {
    // Most questions are for one more element of the same tag.
    std::size_t run = IsRecent(name) ? m_recent : m_named.Find(name);
    while (run == NamedRuns::kNone || m_named.Run(run).Size() <= index) {
        if (!FileNext()) return {};
        if (run == NamedRuns::kNone && IsRecent(name)) run = m_recent;
    }
    // The one that was just filed, when the questions go through the elements in order.
    NodeRun& nodes = m_named.Run(run);
    if (index + 1 == nodes.Size()) return nodes.Last();
    return nodes.At(index, [name](pugi::xml_node node, bool forward) {
        do {
            node = forward ? node.next_sibling() : node.previous_sibling();
        } while (!IsElementNamed(node, name));
        return node;
    });
} catch (const std::bad_alloc&) {
    pugi::xml_node node = After({});
    while (!IsNull(node) && !(IsElementNamed(node, name) && index-- == 0)) node = After(node);
    return node;
}

std::size_t ChildIndex::CountNamed(std::string_view name) try {
    while (FileNext()) {
    }
    const std::size_t run = m_named.Find(name);
    return run == NamedRuns::kNone ? 0 : m_named.Run(run).Size();
} catch (const std::bad_alloc&) {
    return Walk([name](pugi::xml_node node) { return IsElementNamed(node, name); });
}

std::size_t ChildIndex::CountElements() try {
    while (FileNext()) {
    }
    return m_elements;
} catch (const std::bad_alloc&) {
    return Walk(IsElement);
}

ChildIndex* ChildIndexTable::Recent(pugi::xml_node parent) {
    return RawNode(parent) == m_recentParent ? m_recent : nullptr;
}

ChildIndex* ChildIndexTable::Of(pugi::xml_node parent, pugi::xml_node end) try {
    m_recent = &m_indexes.try_emplace(RawNode(parent), parent, end).first->second;
    m_recentParent = RawNode(parent);
    return m_recent;
} catch (const std::bad_alloc&) {
    return nullptr;
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
