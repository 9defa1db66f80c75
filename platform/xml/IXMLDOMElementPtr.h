/// @file
/// The handle on an element.

#pragma once

#include <platform/xml/DomPtr.h>
#include <platform/xml/IXMLDOMElement.h>
#include <platform/xml/IXMLDOMNodePtr.h>

/// A counted handle on an element of a document. See `DomPtr` for what handles do.
class ZTP_API IXMLDOMElementPtr : public DomPtr<IXMLDOMElement> {
public:
    using DomPtr::DomPtr;
    IXMLDOMElementPtr() = default;
    /// The same node if it is an element, otherwise null: asking a node for an
    /// interface that it lacks is not a failure.
    IXMLDOMElementPtr(const IXMLDOMNodePtr& node);
};

inline IXMLDOMNodePtr::IXMLDOMNodePtr(const IXMLDOMElementPtr& element) {
    BindTo(element);
}
