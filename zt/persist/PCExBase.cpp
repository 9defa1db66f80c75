#include <platform/base/DebugOutput.h>
#include <zt/persist/PCExBase.h>

#include <cstdint>
#include <string_view>

namespace ZT {

namespace {

/// A null name is the empty one, which no element has.
bool IsCalled(const IXMLDOMElementPtr& element, const char* name) {
    return name && element->nameView() == name;
}

}  // namespace

PCExBase::PCExBase() = default;

PCExBase::PCExBase(PC* context, const IXMLDOMDocumentPtr& document)
    : m_pPC(context), m_pDoc(document) {}

PCExBase::~PCExBase() {
    m_flags.Free();
    m_stack.Free();
}

void PCExBase::Construct() {
    m_pPC = nullptr;
    m_bIndent = false;
    m_bFlag = false;
    m_nTabs = 0;
    m_nChildIndex = 0;
}

/// The current element, or null where there is none.
const IXMLDOMElementPtr* PCExBase::Current() const {
    const IXMLDOMElementPtr* const top = m_stack.Top();
    return top && *top ? top : nullptr;
}

IXMLDOMElementPtr PCExBase::GetCurElem() const {
    const IXMLDOMElementPtr* const top = m_stack.Top();
    return top ? *top : IXMLDOMElementPtr();
}

void PCExBase::SetCurElem(const IXMLDOMElementPtr& element) {
    if (IXMLDOMElementPtr* const top = m_stack.Top()) *top = element;
}

void PCExBase::Push(const IXMLDOMElementPtr& element) {
    if (IsStoring()) PushIndent();
    m_stack.Push(element);
}

void PCExBase::Push(const IXMLDOMNodePtr& node) {
    if (node) Push(IXMLDOMElementPtr(node));
}

void PCExBase::PushElement(const IXMLDOMElementPtr& element) {
    AppendChild(element);
    Push(element);
}

IXMLDOMElementPtr PCExBase::PushElement(const char* name) {
    const IXMLDOMElementPtr element = m_pDoc->createElement(name);
    if (element) PushElement(element);
    return element;
}

void PCExBase::PopElement(bool bNoTabs) {
    const bool indenting = IsStoring() && m_bIndent;
    if (indenting) PopIndent();
    const IXMLDOMElementPtr* const current = Current();
    if (!current) return;
    if (indenting && !bNoTabs) AddTabs(*current);
    --m_stack.m_nCount;
}

void PCExBase::PopIfLoading() {
    if (IsLoading()) PopElement(false);
}

void PCExBase::PopIfStoring() {
    if (IsStoring()) PopElement(false);
}

IXMLDOMElementPtr PCExBase::PersistElement(const char* name, bool bChild) {
    if (IsStoring()) return PushElement(name);
    const IXMLDOMElementPtr* const current = Current();
    if (!current) return nullptr;
    if (!bChild) return IsCalled(*current, name) ? *current : nullptr;
    IXMLDOMElementPtr element;
    if (m_nChildIndex == 0) {
        element = (*current)->selectSingleNode(name);
    } else {
        // An index past the list stays, ready to mislead the next look-up: deliberate.
        if (m_nChildIndex >= (*current)->childNodes()->length()) return nullptr;
        element = (*current)->childElement(name, m_nChildIndex);
        m_nChildIndex = 0;
    }
    if (element) Push(element);
    return element;
}

void PCExBase::PushIndent() {
    if (m_bIndent) ++m_nTabs;
}

void PCExBase::PopIndent() {
    if (m_bIndent && m_nTabs != 0) --m_nTabs;
}

CString PCExBase::GetTabs() const {
    return CString('\n') + CString('\t', m_nTabs);
}

void PCExBase::AddTabs(const IXMLDOMElementPtr& element) {
    if (m_bIndent && element) element->appendChild(m_pDoc->createTextNode(GetTabs()));
}

void PCExBase::AppendChild(const IXMLDOMElementPtr& element) {
    AppendChild(IXMLDOMNodePtr(element));
}

void PCExBase::AppendChild(const IXMLDOMNodePtr& node) {
    const IXMLDOMElementPtr* const current = Current();
    if (!current) return;
    AddTabs(*current);
    (*current)->appendChild(node);
}

void PCExBase::PushFlag(bool b) {
    m_flags.Push(m_bFlag);
    m_bFlag = b;
}

void PCExBase::PopFlag() {
    m_bFlag = m_flags.m_pData[--m_flags.m_nCount] != 0;
}

bool PCExBase::HasChild(const char* name) const {
    const IXMLDOMElementPtr* const current = Current();
    return current && (*current)->selectSingleNode(name);
}

int PCExBase::GetChildCount(const char* name) const {
    const IXMLDOMElementPtr* const current = Current();
    return current ? (*current)->childElementCount(name) : 0;
}

int PCExBase::GetChildElementCount(IXMLDOMElementPtr element) {
    return element ? element->childElementCount() : 0;
}

IXMLDOMElementPtr PCExBase::GetChild(const char* name, int index, IXMLDOMElementPtr parent) const {
    if (index < 0) return nullptr;
    // The guard looks at the cursor's index and not at the argument: deliberate.
    if (m_nChildIndex >= parent->childNodes()->length()) return nullptr;
    return parent->childElement(name, index);
}

IXMLDOMElementPtr PCExBase::ReadItemElement(const char* name, bool bChild) {
    const IXMLDOMElementPtr* const current = Current();
    if (!current) return nullptr;
    if (!bChild) return *current;
    if (m_nChildIndex == 0) return (*current)->selectSingleNode(name);
    const IXMLDOMElementPtr element = GetChild(name, m_nChildIndex, *current);
    m_nChildIndex = 0;
    return element;
}

CString PCExBase::GetAttribute(IXMLDOMElementPtr element, const char* name) {
    return CString(element->attributeView(name).value_or(std::string_view()));
}

void PCExBase::Pr() const {
    CString line;
    if (const IXMLDOMElementPtr* const current = Current()) {
        const auto address = reinterpret_cast<std::uintptr_t>(current->Identity());
        line.Format("PCExBase pCurNode: 0x%08x %s StackPosn: %d\n", static_cast<unsigned>(address),
                    (*current)->nodeName().GetString(), GetStackPosn());
    } else {
        line.Format("PCExBase pCurNode: null StackPosn: %d\n", GetStackPosn());
    }
    OutputDebugStringA(line);
}

}  // namespace ZT
