/// @file
/// Quick look-up among the children of large nodes.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <pugixml.hpp>

/// The first so many nodes of a sequence of siblings, with a place that remembers
/// where the last search ended and a mark at every 64th node.
class NodeRun {
public:
    std::size_t Size() const { return m_size; }
    pugi::xml_node Last() const { return m_last; }
    void Add(pugi::xml_node node);

    /// The `index`-th node, which must be below the size. `step(node, forward)` gives
    /// the neighbour of a node in the sequence.
    template <class Step>
    pugi::xml_node At(std::size_t index, Step step) {
        MoveCloser(index);
        for (; m_at < index; ++m_at) m_place = step(m_place, true);
        for (; m_at > index; --m_at) m_place = step(m_place, false);
        return m_place;
    }

private:
    static constexpr std::size_t kSpacing = 64;

    // Puts the place to the mark before `index` unless it is closer already.
    void MoveCloser(std::size_t index);

    std::size_t m_size = 0;
    pugi::xml_node m_first;
    pugi::xml_node m_last;
    std::size_t m_at = 0;
    pugi::xml_node m_place;
    // The marks after the first node, which has no need of one: a run of one node, and
    // there are many, takes nothing from the heap.
    std::vector<pugi::xml_node> m_marks;
};

/// The runs of the elements of one tag each, found by the tag.
///
/// The runs stand in one row in the order in which their tags came, and a table of small
/// slots tells where: a look-up for a new tag touches one slot and no other tag's text, so
/// that a node with very many tags is still indexed in time proportional to their number.
class NamedRuns {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// The number of the run of `name`; `kNone` when there is none.
    std::size_t Find(std::string_view name) const;
    /// The number of the run of `name`, whose text must stay where it is; made if there is
    /// none.
    std::size_t FindOrAdd(std::string_view name);

    NodeRun& Run(std::size_t number) { return m_runs[number].nodes; }
    std::string_view Name(std::size_t number) const { return m_runs[number].name; }

private:
    struct NamedRun {
        std::string_view name;
        NodeRun nodes;
    };
    // An empty slot has the run 0; others the number of their run and one.
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t run = 0;
    };

    static std::uint32_t Hash(std::string_view name);
    std::size_t FindHashed(std::string_view name, std::uint32_t hash) const;
    void Place(Slot slot);
    void Grow();

    std::vector<NamedRun> m_runs;
    // A power of two of them, at most half full.
    std::vector<Slot> m_slots;
};

/// What is known of the children of one node: by number, and by tag. It is gathered
/// from the front as far as a question needs, and stays right when children are
/// appended; after every other change of the node's children it must be thrown away.
///
/// No question fails: where there is no memory to gather more, the children are walked
/// over.
class ChildIndex {
public:
    /// Children from `end` on are not looked at; null for all.
    ChildIndex(pugi::xml_node parent, pugi::xml_node end) : m_parent(parent), m_end(end) {}

    std::size_t Length();
    /// Null beyond the end.
    pugi::xml_node Item(std::size_t index);
    /// The child element with the tag `name` and `index` others of it before.
    pugi::xml_node Named(std::string_view name, std::size_t index);
    std::size_t CountNamed(std::string_view name);
    std::size_t CountElements();

private:
    pugi::xml_node After(pugi::xml_node child) const;
    template <class Counts>
    std::size_t Walk(Counts counts) const;
    bool AddNext();
    // Files one more child under its tag; false at the end.
    bool FileNext();
    void File(pugi::xml_node element);
    bool IsRecent(std::string_view name) const;

    pugi::xml_node m_parent;
    pugi::xml_node m_end;
    NodeRun m_children;
    pugi::xml_node m_filed;
    std::size_t m_elements = 0;
    NamedRuns m_named;
    // The run that was added to last.
    std::size_t m_recent = NamedRuns::kNone;
};

/// The indexes of a document's large nodes. Nodes with few children have none, and
/// their children are simply walked over.
class ChildIndexTable {
public:
    /// The number of children up to which they are walked over.
    static constexpr std::size_t kFew = 32;

    ChildIndexTable() = default;
    ChildIndexTable(const ChildIndexTable&) = delete;
    ChildIndexTable& operator=(const ChildIndexTable&) = delete;

    /// The index of `parent` if it was the last that was asked for; null otherwise.
    ChildIndex* Recent(pugi::xml_node parent);
    /// The index of `parent`, made if there is none; null without memory for it.
    ChildIndex* Of(pugi::xml_node parent, pugi::xml_node end);
    bool IsEmpty() const { return m_indexes.empty(); }
    /// Forgets `parent`.
    void Drop(pugi::xml_node parent);
    void Clear();

private:
    std::unordered_map<pugi::xml_node_struct*, ChildIndex> m_indexes;
    pugi::xml_node_struct* m_recentParent = nullptr;
    ChildIndex* m_recent = nullptr;
};
