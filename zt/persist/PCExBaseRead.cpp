#include <zt/persist/PCExBase.h>
#include <zt/persist/detail/NumberRow.h>

#include <string>

namespace ZT {
namespace {

using NumberText::RowScan;
using NumberText::ScanRow;

/// Scans a row from the text of a node or an element; a null `p` is ignored.
template <class Node, class T>
RowScan ScanNode(const Node& node, T* p, ulong n) {
    if (!p) return {};
    std::string scratch;
    return ScanRow(node->textView(scratch), p, n);
}

/// The number in the child called `name`.
template <class Node>
bool ScanChild(const Node& node, const char* name, int& v) {
    const IXMLDOMElementPtr child = node->childElement(name, 0);
    return child && ScanNode(child, &v, 1).count == 1;
}

/// Reads a row, by the look-up that does not heed the index of a child.
template <class T>
void ReadFirst(const IXMLDOMElementPtr* current, const char* name, T* p, ulong n, bool bChild) {
    if (!current) return;
    const IXMLDOMElementPtr element = bChild ? (*current)->childElement(name, 0) : *current;
    if (element) ScanNode(element, p, n);
}

}  // namespace

CString PCExBase::ReadItem(const char* name, bool bChild) {
    const IXMLDOMElementPtr element = ReadItemElement(name, bChild);
    if (!element) return {};
    std::string scratch;
    return CString(element->textView(scratch));
}

bool PCExBase::ReadInt(const char* name, int& v) const {
    const IXMLDOMElementPtr* const current = Current();
    return current && ScanChild(*current, name, v);
}

bool PCExBase::ReadInt(IXMLDOMNodePtr node, const char* name, int& v) {
    return ScanChild(node, name, v);
}

bool PCExBase::ReadBool(const char* name, bool& v) const {
    int value = 0;
    if (!ReadInt(name, value)) return false;
    v = value != 0;
    return true;
}

bool PCExBase::ReadBool(IXMLDOMNodePtr node, const char* name, bool& v) {
    int value = 0;
    if (!ScanChild(node, name, value)) return false;
    v = value != 0;
    return true;
}

bool PCExBase::ReadBYTE(IXMLDOMNodePtr node, const char* name, unsigned char& v) {
    int value = 0;
    if (!ScanChild(node, name, value)) return false;
    v = static_cast<unsigned char>(value);
    return true;
}

bool PCExBase::ReadDWORD(IXMLDOMNodePtr node, const char* name, ulong& v) {
    int value = 0;
    if (!ScanChild(node, name, value)) return false;
    v = static_cast<ulong>(value);
    return true;
}

IXMLDOMElementPtr PCExBase::ReadRow(const char* name, double* p, ulong n, bool bChild) {
    if (!p) return nullptr;
    IXMLDOMElementPtr element = ReadItemElement(name, bChild);
    if (!element || ScanNode(element, p, n).failed) return nullptr;
    return element;
}

IXMLDOMNodePtr PCExBase::ReadData(const char* name, double* p, ulong n, bool bChild) {
    return ReadRow(name, p, n, bChild);
}

void PCExBase::ReadData(IXMLDOMNodePtr node, double* p, ulong n) const {
    ScanNode(node, p, n);
}

void PCExBase::ReadDataFloat(const char* name, float* p, ulong n, bool bChild) {
    const IXMLDOMElementPtr element = ReadItemElement(name, bChild);
    if (element) ScanNode(element, p, n);
}

void PCExBase::ReadDataInt(const char* name, int* p, ulong n, bool bChild) const {
    ReadFirst(Current(), name, p, n, bChild);
}

void PCExBase::ReadDataByte(const char* name, unsigned char* p, ulong n, bool bChild) const {
    ReadFirst(Current(), name, p, n, bChild);
}

int PCExBase::GetElementCount(const CString& s) {
    return static_cast<int>(NumberText::CountByBlanks(s.View()));
}

}  // namespace ZT
