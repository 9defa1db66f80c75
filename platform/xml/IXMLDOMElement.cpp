#include <platform/xml/IXMLDOMElement.h>

#include <platform/com/COleVariant.h>
#include <platform/com/ComError.h>
#include <platform/xml/detail/DomAccess.h>
#include <platform/xml/detail/DomChecks.h>
#include <platform/xml/detail/DomName.h>

namespace {

pugi::xml_attribute FindAttribute(pugi::xml_node element, std::string_view name) {
    pugi::xml_attribute attribute = element.first_attribute();
    while (!attribute.empty() && !EqualsName(attribute.name(), name)) {
        attribute = attribute.next_attribute();
    }
    return attribute;
}

}  // namespace

CString IXMLDOMElement::tagName() const {
    return nodeName();
}

std::optional<std::string_view> IXMLDOMElement::attributeView(DomText name) const {
    const pugi::xml_attribute attribute = FindAttribute(DomAccess::Node(*this), name.View());
    if (attribute.empty()) return std::nullopt;
    return attribute.value();
}

COleVariant IXMLDOMElement::getAttribute(DomText name) const {
    return DomAccess::TextOrNull(attributeView(name));
}

void IXMLDOMElement::setAttribute(DomText name, DomText value) const {
    CheckDomName(name.View());
    CheckDomText(value.View());
    pugi::xml_node element = DomAccess::Node(*this);
    DomAccess::Tree(*this).CheckCurrent(element);
    pugi::xml_attribute attribute = FindAttribute(element, name.View());
    const bool made = attribute.empty();
    if (made) attribute = element.append_attribute("");
    const bool named = !made || DomName(name.View()).GiveTo(attribute);
    const bool had = named && attribute.set_value(value.View().data(), value.View().size());
    if (!had && made) element.remove_attribute(attribute);
    CheckDomMemory(had);
}

void IXMLDOMElement::setAttribute(DomText name, const tagVARIANT& value) const {
    COleVariant text;
    const HRESULT result = VariantChangeType(&text, &value, 0, VT_BSTR);
    if (FAILED(result)) _com_issue_error(result);
    setAttribute(name, _bstr_t(text.bstrVal, true));
}

void IXMLDOMElement::removeAttribute(DomText name) const {
    pugi::xml_node element = DomAccess::Node(*this);
    DomAccess::Tree(*this).CheckCurrent(element);
    element.remove_attribute(FindAttribute(element, name.View()));
}

DomAttributes IXMLDOMElement::attributes() const {
    return DomAttributes(
        DomAccess::Make<IXMLDOMNodePtr>(DomAccess::Tree(*this), DomAccess::Node(*this)));
}

IXMLDOMNodeListPtr IXMLDOMElement::getElementsByTagName(DomText name) const {
    return DomAccess::ElementsBelow(DomAccess::Tree(*this), DomAccess::Node(*this), name.View());
}
