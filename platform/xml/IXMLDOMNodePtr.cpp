#include <platform/xml/IXMLDOMNodePtr.h>

#include <platform/xml/DomAccess.h>
#include <platform/xml/IXMLDOMDocumentPtr.h>
#include <platform/xml/IXMLDOMElementPtr.h>

IXMLDOMNodePtr::IXMLDOMNodePtr(const IXMLDOMElementPtr& element) {
    if (!element) return;
    *this = DomAccess::Make<IXMLDOMNodePtr>(DomAccess::Tree(*element), DomAccess::Node(*element));
}

IXMLDOMNodePtr::IXMLDOMNodePtr(const IXMLDOMDocumentPtr& document) {
    if (!document) return;
    *this = DomAccess::Make<IXMLDOMNodePtr>(DomAccess::Tree(*document), DomAccess::Node(*document));
}
