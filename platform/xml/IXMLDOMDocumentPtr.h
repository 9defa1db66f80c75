/// @file
/// The handle on a document.

#pragma once

#include <platform/xml/DomPtr.h>
#include <platform/xml/IXMLDOMDocument.h>
#include <platform/xml/IXMLDOMNodePtr.h>

/// A counted handle on a document. See `DomPtr` for what handles do.
class ZTP_API IXMLDOMDocumentPtr : public DomPtr<IXMLDOMDocument> {
public:
    using DomPtr::DomPtr;
    IXMLDOMDocumentPtr() = default;
    /// The document that a node is, null for every other node.
    IXMLDOMDocumentPtr(const IXMLDOMNodePtr& node);

    /// A new, empty document. Without memory `_com_error` with `E_OUTOFMEMORY`.
    [[nodiscard]] static IXMLDOMDocumentPtr CreateInstance();
};

inline IXMLDOMNodePtr::IXMLDOMNodePtr(const IXMLDOMDocumentPtr& document) {
    BindTo(document);
}
