#include <platform/xml/IXMLDOMDocumentPtr.h>

#include <new>

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
    try {
        DomTree* tree = DomTree::Create();
        return DomAccess::Make<IXMLDOMDocumentPtr>(*tree, tree->Root());
    } catch (const std::bad_alloc&) {
        _com_issue_error(E_OUTOFMEMORY);
    }
}
