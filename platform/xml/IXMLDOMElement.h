/// @file
/// An element of an XML document.

#pragma once

#include <optional>
#include <string_view>

#include <platform/xml/DomAttributes.h>
#include <platform/xml/IXMLDOMNode.h>

struct tagVARIANT;

/// The operations of an element: those of a node, and its attributes.
class ZTP_API IXMLDOMElement : public IXMLDOMNode {
public:
    /// The tag.
    CString tagName() const;

    /// The value of the attribute `name` as a variant with a string; one of the type
    /// `VT_NULL` when there is no such attribute.
    COleVariant getAttribute(DomText name) const;
    /// The same without a copy: no value when there is no such attribute. Valid until
    /// the attribute is changed.
    std::optional<std::string_view> attributeView(DomText name) const;
    /// Sets or adds an attribute. A `name` that is no XML name, or a value that
    /// `put_text` would refuse, raises `_com_error` with `E_INVALIDARG`.
    void setAttribute(DomText name, DomText value) const;
    /// The same with a value that is turned into text by `VariantChangeType`, whose failures
    /// are raised, too.
    void setAttribute(DomText name, const tagVARIANT& value) const;
    /// Takes the attribute away; that there is none is no failure.
    void removeAttribute(DomText name) const;
    /// The attributes in document order, to walk over.
    DomAttributes attributes() const;

    /// The elements with the tag `name` among the descendants in document order, as
    /// they are now; "*" stands for every tag. A `name` that is neither that nor an XML
    /// name raises `_com_error` with `E_INVALIDARG`.
    IXMLDOMNodeListPtr getElementsByTagName(DomText name) const;

private:
    template <class>
    friend class DomPtr;
    friend class DomAccess;
    IXMLDOMElement() = default;
    ~IXMLDOMElement() = default;
};
