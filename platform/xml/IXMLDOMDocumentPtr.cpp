#include <platform/xml/IXMLDOMDocumentPtr.h>

#include <platform/com/ComError.h>
#include <platform/xml/detail/DomAccess.h>

IXMLDOMDocumentPtr::IXMLDOMDocumentPtr(const IXMLDOMNodePtr& node) {
    if (!node) return;
    DomTree& tree = DomAccess::Tree(*node);
    if (!SameNode(DomAccess::Node(*node), tree.Root())) return;
    *this = DomAccess::Make<IXMLDOMDocumentPtr>(tree, tree.Root());
}

HRESULT IXMLDOMDocumentPtr::CreateInstance(const CLSID& classId) {
    Release();
    if (classId != CLSID_DOMDocument) return REGDB_E_CLASSNOTREG;
    try {
        *this = CreateInstance();
        return S_OK;
    } catch (const _com_error& error) {
        return error.Error();
    }
}

IXMLDOMDocumentPtr IXMLDOMDocumentPtr::CreateInstance() {
    DomTree* tree = WithDomMemory([] { return DomTree::Create(); });
    return DomAccess::Make<IXMLDOMDocumentPtr>(*tree, tree->Root());
}
