/// @file
/// A node of an XML document.

#pragma once

#include <string>
#include <string_view>

#include <platform/base/Export.h>
#include <platform/base/Types.h>
#include <platform/text/CString.h>
#include <platform/xml/DomPtr.h>
#include <platform/xml/DomText.h>

class COleVariant;
class IXMLDOMDocumentPtr;
class IXMLDOMElementPtr;
class IXMLDOMNodeListPtr;
class IXMLDOMNodePtr;

/// What `nodeType` answers. Attributes are no nodes of their own here; an element
/// enumerates them.
enum DOMNodeType : std::int32_t {
    NODE_INVALID = 0,
    NODE_ELEMENT = 1,
    NODE_ATTRIBUTE = 2,
    NODE_TEXT = 3,
    NODE_CDATA_SECTION = 4,
    NODE_PROCESSING_INSTRUCTION = 7,
    NODE_COMMENT = 8,
    NODE_DOCUMENT = 9,
};

/// The operations of any node: element, text, CDATA section, comment, processing
/// instruction or the document itself. They are reached through a handle.
///
/// A node stands either in its document's tree or detached: a new node before it is
/// put somewhere, or one that was taken out. A detached node has no parent and no
/// siblings, and never reaches the saved text. Its memory is given back once no
/// handle on a node of the document is left.
///
/// An operation that cannot be done raises `_com_error` and changes nothing: with
/// `E_INVALIDARG` (0x80070057) for an argument that does not fit, and with
/// `E_OUTOFMEMORY` (0x8007000E) without memory for what it makes: a node, a text, a
/// list. Looking for a neighbour or a child answers null where there is none and never
/// runs out of memory: with too little, it only takes longer.
class ZTP_API IXMLDOMNode {
public:
    IXMLDOMNode(const IXMLDOMNode&) = delete;
    IXMLDOMNode& operator=(const IXMLDOMNode&) = delete;

    /// @name What the node is
    /// @{
    /// One of `DOMNodeType`; an XML declaration counts as a processing instruction.
    DOMNodeType nodeType() const;
    /// The tag of an element, the target of a processing instruction, and otherwise
    /// "#text", "#cdata-section", "#comment" or "#document".
    CString nodeName() const;
    /// The same without a copy. Valid as long as the node is.
    std::string_view nameView() const;
    /// The text of a text, CDATA section or comment and the data of a processing
    /// instruction; a variant of type `VT_NULL` for elements and documents.
    COleVariant nodeValue() const;
    /// Writes what `nodeValue` reads, with the limits that the document's operation
    /// for making such a node has; on elements, documents and XML declarations
    /// `E_INVALIDARG`.
    void put_nodeValue(DomText value) const;
    /// @}

    /// @name Text
    /// @{
    /// The text of the node and its descendants, without comments and processing
    /// instructions (unless the node itself is one).
    CString text() const;
    /// The same with no copy where the node has a single text, and otherwise joined in
    /// `scratch`. Valid until the node's content or `scratch` is changed.
    std::string_view textView(std::string& scratch) const;
    /// Replaces the content by one text; an empty `text` leaves no text node. The
    /// nodes that stood there are detached, but a text node that was the whole content
    /// is kept and only its text replaced. On a text, comment and the like as
    /// `put_nodeValue`; on the document `E_INVALIDARG`.
    ///
    /// The text must be UTF-8 without zero bytes and without the characters that XML
    /// cannot hold (below U+0020 all but tab, line feed and carriage return; U+FFFE and
    /// U+FFFF); anything else is `E_INVALIDARG`, so that what can be put into a
    /// document can also be stored and loaded. Every allowed text comes back the same.
    void put_text(DomText text) const;
    /// The XML text of the node with all that it holds, as `save` would write it.
    CString xml() const;
    /// @}

    /// @name Neighbours
    /// Null where there is none, and outwards for a detached node.
    /// @{
    IXMLDOMNodePtr parentNode() const;
    IXMLDOMNodePtr firstChild() const;
    IXMLDOMNodePtr lastChild() const;
    IXMLDOMNodePtr nextSibling() const;
    IXMLDOMNodePtr previousSibling() const;
    bool hasChildNodes() const;
    /// The document, also of a detached node; null for the document itself.
    IXMLDOMDocumentPtr ownerDocument() const;
    /// All children in document order: a list that shows the node's present content
    /// whenever it is asked.
    IXMLDOMNodeListPtr childNodes() const;
    /// @}

    /// @name Looking for children
    /// Tags are compared byte for byte. Asking one node for its children one after the
    /// other, by tag, by number or by both, takes time in proportion to their number.
    /// @{
    /// The first child element with the tag `name`, null if there is none. The query is
    /// a plain tag, with a prefix as it stands in the document; one that is no XML name
    /// (a path, a pattern, an empty text) raises `_com_error` with `E_INVALIDARG`.
    IXMLDOMNodePtr selectSingleNode(DomText name) const;
    /// The child elements with the tag `name`, as they are now, with the failure of
    /// `selectSingleNode`.
    IXMLDOMNodeListPtr selectNodes(DomText name) const;
    /// The child element with the tag `name` before which `index` others with that tag
    /// stand; null if there are fewer, for a negative `index`, and for a `name` that no
    /// element can have.
    IXMLDOMElementPtr childElement(DomText name, int index) const;
    /// The number of child elements.
    int childElementCount() const;
    /// The number of child elements with the tag `name`.
    int childElementCount(DomText name) const;
    /// @}

    /// @name Changing the content
    /// A child is a node of the same document that is neither this node nor one that
    /// holds it. Elements take every node but a document and an XML declaration; the
    /// document takes comments, processing instructions, one element, and an XML
    /// declaration before everything else; other nodes take none. A child that already
    /// stands somewhere is moved. All else is `E_INVALIDARG`.
    /// @{
    /// Puts `child` behind the last child and returns it. The cost grows with the
    /// depth at which this node stands; `appendElement` and `appendText` have no such
    /// cost.
    IXMLDOMNodePtr appendChild(const IXMLDOMNodePtr& child) const;
    /// Puts `child` before `reference`, a child of this node, or behind the last child
    /// if `reference` is null. Returns `child`.
    IXMLDOMNodePtr insertBefore(const IXMLDOMNodePtr& child, const IXMLDOMNodePtr& reference) const;
    /// Puts `child` into the place of `old`, a child of this node, which is detached
    /// and returned.
    IXMLDOMNodePtr replaceChild(const IXMLDOMNodePtr& child, const IXMLDOMNodePtr& old) const;
    /// Detaches `child`, a child of this node, and returns it.
    IXMLDOMNodePtr removeChild(const IXMLDOMNodePtr& child) const;
    /// Makes an element in its place as the last child: `createElement` and
    /// `appendChild` in one step, with the failures of both.
    IXMLDOMElementPtr appendElement(DomText name) const;
    /// The same for a text node.
    IXMLDOMNodePtr appendText(DomText text) const;
    /// A detached copy: with `deep` all that the node holds, otherwise an element with
    /// its attributes only. A copy of the document is a new document.
    IXMLDOMNodePtr cloneNode(bool deep) const;
    /// @}

protected:
    IXMLDOMNode() = default;
    ~IXMLDOMNode() = default;

private:
    template <class>
    friend class DomPtr;
    friend class DomAccess;

    DomCounts* m_counts = nullptr;
    pugi::xml_node_struct* m_node = nullptr;
};
