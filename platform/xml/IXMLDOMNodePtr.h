/// @file
/// The handle on a node.

#pragma once

#include <platform/xml/DomPtr.h>
#include <platform/xml/IXMLDOMNode.h>

/// A counted handle on any node of a document. See `DomPtr` for what handles do.
class ZTP_API IXMLDOMNodePtr : public DomPtr<IXMLDOMNode> {
public:
    using DomPtr::DomPtr;
    IXMLDOMNodePtr() = default;
    /// The same node.
    IXMLDOMNodePtr(const IXMLDOMElementPtr& element);
    IXMLDOMNodePtr(const IXMLDOMDocumentPtr& document);
};
