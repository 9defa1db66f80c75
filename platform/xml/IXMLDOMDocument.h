/// @file
/// An XML document.

#pragma once

#include <platform/xml/IXMLDOMNode.h>
#include <platform/xml/IXMLDOMParseError.h>

/// The operations of a document: those of a node, making nodes, loading and saving.
///
/// New nodes are detached until they are put somewhere.
class ZTP_API IXMLDOMDocument : public IXMLDOMNode {
public:
    /// @name Making nodes
    /// Bad names and texts raise `_com_error` with `E_INVALIDARG`; texts are as in
    /// `put_text`.
    /// @{
    /// An element. The tag must be an XML name.
    IXMLDOMElementPtr createElement(DomText name) const;
    IXMLDOMNodePtr createTextNode(DomText text) const;
    /// A comment. Two hyphens in a row, a hyphen at the end and carriage returns cannot
    /// be stored in one and are refused.
    IXMLDOMNodePtr createComment(DomText text) const;
    /// A CDATA section. Carriage returns cannot be stored in one and are refused; "]]>"
    /// can, by two sections in the saved text.
    IXMLDOMNodePtr createCDATASection(DomText text) const;
    /// A processing instruction. "?>", white space at the start and carriage returns in
    /// the data are refused. The target "xml" makes the XML declaration, from data such
    /// as `version="1.0" encoding="UTF-8"`.
    IXMLDOMNodePtr createProcessingInstruction(DomText target, DomText data) const;
    /// @}

    /// @name The root
    /// @{
    /// The one element of the document itself, null before there is one.
    IXMLDOMElementPtr documentElement() const;
    /// Makes `element` the root; an older root is detached. Null is `E_INVALIDARG`.
    void putref_documentElement(const IXMLDOMElementPtr& element) const;
    /// The elements with the tag `name` in the whole document, as on an element.
    IXMLDOMNodeListPtr getElementsByTagName(DomText name) const;
    /// @}

    /// @name Loading
    /// The new content takes the place of the old one; handles on old nodes stay valid,
    /// and the nodes are detached for good: they can no longer be put into the
    /// document. If the text cannot be read, the result is false, `parseError` tells
    /// why, and the document keeps what it held. It keeps it, too, when a load raises
    /// `_com_error` with `E_OUTOFMEMORY`; `parseError` then has that code.
    ///
    /// The text must be well-formed XML 1.0. Nothing outside it is ever opened: a
    /// document type definition, and with it every declared entity, makes the load fail.
    /// Line ends become a single line feed. Comments and processing instructions are
    /// kept.
    /// @{
    /// Loads a file. It may be UTF-8, UTF-16 in both byte orders with a byte order mark
    /// or a declaration, US-ASCII, ISO-8859-1 or windows-1252, as its first bytes and
    /// its declaration say. Other declared encodings are read as long as the text keeps
    /// to ASCII and the encoding is known to contain that; a declaration that
    /// contradicts the bytes makes the load fail. An address is a path like any other.
    bool load(DomText path) const;
    /// Loads a text, which is UTF-8 whatever encoding its declaration names.
    bool loadXML(DomText text) const;
    /// What was wrong with the last load. The record is the document's: it changes with
    /// the next load and ends with the document.
    const IXMLDOMParseError& parseError() const;
    /// Whether white space between elements is kept on loading; false by default. A
    /// text of white space only that is the whole content of its element is kept in
    /// either case.
    bool preserveWhiteSpace() const;
    void put_preserveWhiteSpace(bool preserve) const;
    /// @}

    /// Writes the document in UTF-8, with the nodes as they stand and no white space
    /// added. A declaration is written if there is one, with the encoding, where it
    /// names one, as UTF-8.
    ///
    /// The text goes to a new file beside the old one, which is synced and then takes
    /// the old one's name and permissions: whoever reads the path, or a crash, sees the
    /// old or the new document and never half of one. A symbolic link is followed. What
    /// is no regular file (a device, a pipe) is written to directly.
    ///
    /// Failure raises `_com_error` with 0x80070000 plus the system's error number
    /// (0x8007001C for a full disk), and leaves the old file as it was. Its description
    /// is the path with the system's text, as in "out/x.xml: Permission denied"; that
    /// is what to show, since some of these numbers are general results, too. A
    /// document without a root raises it with `E_UNEXPECTED`, since no one could load
    /// what it would write.
    void save(DomText path) const;

private:
    template <class>
    friend class DomPtr;
    friend class DomAccess;
    IXMLDOMDocument() = default;
    ~IXMLDOMDocument() = default;
};
