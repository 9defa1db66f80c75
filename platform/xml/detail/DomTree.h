/// @file
/// The state behind the handles of one document.

#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include <platform/base/ResultCodes.h>
#include <platform/com/ComError.h>
#include <platform/object/CMemoryException.h>
#include <platform/xml/DomPtr.h>
#include <platform/xml/IXMLDOMParseError.h>
#include <platform/xml/detail/ChildIndex.h>
#include <platform/xml/detail/DomBuffer.h>
#include <platform/xml/detail/DomNodes.h>
#include <platform/xml/detail/XmlSyntax.h>

/// One document: the parser's tree with one more node at its end, the holder, under
/// which all detached nodes stand. The holder is an element without a name, which no
/// document can contain; it is neither shown nor saved. An XML declaration is kept as
/// a processing instruction with the target "xml".
///
/// After a load over nodes that handles still look at, the old tree is kept aside
/// until no node handle is left. Its nodes can be read and no longer changed.
class DomTree final : public DomCounts {
public:
    /// A new, empty document, which the handles on it end.
    static DomTree* Create() { return new DomTree; }

    /// Ends the document or frees what is detached, whichever the counts allow.
    void OnIdle() noexcept;

    pugi::xml_node Root() const { return m_document; }

    /// @name Walking, with the holder and its content hidden
    /// @{
    pugi::xml_node Parent(pugi::xml_node node) const;
    pugi::xml_node FirstChild(pugi::xml_node parent) const { return Shown(parent.first_child()); }
    pugi::xml_node LastChild(pugi::xml_node parent) const;
    pugi::xml_node Next(pugi::xml_node node) const {
        if (HasDetached() && IsDetached(node)) return {};
        return Shown(node.next_sibling());
    }
    pugi::xml_node Previous(pugi::xml_node node) const {
        if (HasDetached() && IsDetached(node)) return {};
        return node.previous_sibling();
    }
    /// The next node below `top` in document order, `node` itself being `top` or below.
    pugi::xml_node NextBelow(pugi::xml_node top, pugi::xml_node node, bool enter) const;
    pugi::xml_node DocumentElement() const;
    /// @}

    /// @name Looking for children
    /// None of these fails for want of memory.
    /// @{
    pugi::xml_node ChildNamed(pugi::xml_node parent, std::string_view name, std::size_t index);
    pugi::xml_node ChildAt(pugi::xml_node parent, std::size_t index);
    std::size_t ChildCount(pugi::xml_node parent);
    std::size_t ElementCount(pugi::xml_node parent);
    std::size_t ElementCount(pugi::xml_node parent, std::string_view name);
    /// @}

    /// @name Changing; every operation checks first and raises `_com_error`
    /// @{
    /// That `node` belongs to the present content.
    void CheckCurrent(pugi::xml_node node) const;
    pugi::xml_node NewDetached(pugi::xml_node_type type, std::string_view name,
                               std::string_view value);
    /// A copy of `node` in the holder.
    pugi::xml_node NewCopy(pugi::xml_node node, bool deep);
    /// A new node as the last child, in its place at once.
    pugi::xml_node NewChild(pugi::xml_node parent, pugi::xml_node_type type, std::string_view name,
                            std::string_view value);
    /// Puts `child` before `before`, or at the end for null. An element that is to be
    /// taken away afterwards does not count as a root.
    void Place(pugi::xml_node parent, pugi::xml_node child, pugi::xml_node before,
               pugi::xml_node leaving);
    void Detach(pugi::xml_node node);
    /// Puts a text into an element that is empty; false if `parent` is no such element, or
    /// the text is empty.
    bool SetFirstContent(pugi::xml_node parent, std::string_view text);
    /// Replaces the content of an element by one text.
    void SetContent(pugi::xml_node element, std::string_view text);
    /// @}

    /// @name Loading
    /// @{
    /// False, with the parse error, for what cannot be read. Without memory, the parse
    /// error says that, and `_com_error` with `E_OUTOFMEMORY` is raised.
    bool LoadFile(std::string_view path);
    bool LoadText(std::string_view text);
    /// Takes over the content of `source`.
    void CopyContent(const DomTree& source);
    const IXMLDOMParseError& ParseError() const { return m_parseError; }
    bool PreservesWhiteSpace() const { return m_preserveWhiteSpace; }
    void PreserveWhiteSpace(bool preserve) { m_preserveWhiteSpace = preserve; }
    /// @}

private:
    DomTree();
    ~DomTree() = default;

    pugi::xml_node Shown(pugi::xml_node node) const {
        return SameNode(node, m_holder) ? pugi::xml_node() : node;
    }
    bool IsDetached(pugi::xml_node node) const { return IsHidden(node.parent()); }
    bool IsHidden(pugi::xml_node parent) const;
    pugi::xml_node EndOf(pugi::xml_node parent) const {
        return SameNode(parent, m_document) ? m_holder : pugi::xml_node();
    }
    template <class Look>
    auto Indexed(pugi::xml_node parent, Look look);
    void CheckTopLevel(pugi::xml_node child, pugi::xml_node before, pugi::xml_node leaving) const;
    void CheckElementTop(pugi::xml_node leaving) const;
    [[noreturn]] void RefuseCopy(pugi::xml_node copy);
    pugi::xml_node MakeChild(pugi::xml_node parent, pugi::xml_node_type type);
    void Destroy(pugi::xml_node top);
    void FreeDetached();

    template <class Work>
    bool Recorded(CString& url, Work work);
    bool Load(DomBuffer& text);
    bool Parse(DomBuffer& text);
    void TakeOver(pugi::xml_document& content);
    void AddHolder();
    bool RefuseText(const XmlFault& fault, std::string_view text);
    bool Refuse(HRESULT code, std::string_view reason);

    pugi::xml_document m_document;
    pugi::xml_node m_holder;
    std::vector<std::unique_ptr<pugi::xml_document>> m_retired;
    ChildIndexTable m_indexes;
    IXMLDOMParseError m_parseError;
    bool m_preserveWhiteSpace = false;
};

/// Whether `node` is an XML declaration.
inline bool IsDeclaration(pugi::xml_node node) {
    return node.type() == pugi::node_pi && EqualsName(node.name(), "xml");
}

/// Whether `copy`, which the parser's library has just made of the node `top`, is there and
/// lacks nothing: that library leaves out without a word what it has no memory for.
bool IsWholeCopy(pugi::xml_node top, pugi::xml_node copy);

/// Raises `_com_error` with `E_OUTOFMEMORY` unless the parser's library had the memory
/// that it needed.
void CheckDomMemory(bool had);

/// Runs `operation`, which takes memory of its own: running out of it raises `_com_error`
/// with `E_OUTOFMEMORY`, too.
template <class Operation>
auto WithDomMemory(Operation operation) {
    try {
        return operation();
    } catch (const std::bad_alloc&) {
    } catch (CMemoryException* exception) {
        exception->Delete();
    }
    _com_issue_error(E_OUTOFMEMORY);
}
