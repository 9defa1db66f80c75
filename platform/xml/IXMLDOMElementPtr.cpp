#include <platform/xml/IXMLDOMElementPtr.h>

#include <platform/xml/detail/DomAccess.h>

IXMLDOMElementPtr::IXMLDOMElementPtr(const IXMLDOMNodePtr& node) {
    if (!node || !IsElement(DomAccess::Node(*node))) return;
    *this = DomAccess::Make<IXMLDOMElementPtr>(DomAccess::Tree(*node), DomAccess::Node(*node));
}
