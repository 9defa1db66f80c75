#include <platform/base/DebugOutput.h>
#include <zt/persist/PCExBase.h>

#include <cstdint>
#include <string_view>
#include <utility>

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
    const IXMLDOMElementPtr* const current = Current();
    // Where nothing is to be written in front of it, the element is made in its place.
    const bool in_place = current && !m_bIndent && (*current)->ownerDocument() == m_pDoc;
    IXMLDOMElementPtr element =
        in_place ? (*current)->appendElement(name) : m_pDoc->createElement(name);
    if (!element) return element;
    if (!in_place) AppendChild(element);
    Push(element);
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
    IXMLDOMElementPtr element = (*current)->childElement(name, m_nChildIndex);
    // An index past the list stays, ready to mislead the next look-up: deliberate.
    if (!element && IsIndexPastChildren(*current)) return nullptr;
    m_nChildIndex = 0;
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
    return current && (*current)->childElement(name, 0);
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
    IXMLDOMElementPtr child = parent->childElement(name, index);
    // The guard looks at the cursor's index and not at the argument: deliberate.
    if (child && m_nChildIndex > index && IsIndexPastChildren(parent)) return nullptr;
    return child;
}

/// Whether `m_nChildIndex` is not below the number of child nodes.
bool PCExBase::IsIndexPastChildren(const IXMLDOMElementPtr& parent) const {
    return m_nChildIndex >= parent->childNodes()->length();
}

IXMLDOMElementPtr PCExBase::ReadItemElement(const char* name, bool bChild) {
    const IXMLDOMElementPtr* const current = Current();
    if (!current) return nullptr;
    if (!bChild) return *current;
    return (*current)->childElement(name, std::exchange(m_nChildIndex, std::uint16_t{0}));
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
