#include <zt/persist/NumberRow.h>
#include <zt/persist/PCExBase.h>

#include <string>

namespace ZT {
namespace {

using NumberText::RowScan;
using NumberText::ScanRow;

/// Scans a row from the text of `node`; a null `p` is ignored.
template <class T>
RowScan ScanNode(const IXMLDOMNodePtr& node, T* p, ulong n) {
    if (!p) return {};
    std::string scratch;
    return ScanRow(node->textView(scratch), p, n);
}

/// The number in the child called `name`.
bool ScanChild(const IXMLDOMNodePtr& node, const char* name, int& v) {
    const IXMLDOMNodePtr child = node->selectSingleNode(name);
    return child && ScanNode(child, &v, 1).count == 1;
}

/// Reads a row, by the look-up that does not heed the index of a child.
template <class T>
void ReadFirst(const IXMLDOMElementPtr* current, const char* name, T* p, ulong n, bool bChild) {
    if (!current) return;
    const IXMLDOMNodePtr node =
        bChild ? (*current)->selectSingleNode(name) : IXMLDOMNodePtr(*current);
    if (node) ScanNode(node, p, n);
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
    const IXMLDOMElementPtr* const current = Current();
    return current && ReadBool(*current, name, v);
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

IXMLDOMNodePtr PCExBase::ReadData(const char* name, double* p, ulong n, bool bChild) {
    if (!p) return nullptr;
    const IXMLDOMNodePtr node = ReadItemElement(name, bChild);
    if (!node || ScanNode(node, p, n).failed) return nullptr;
    return node;
}

void PCExBase::ReadData(IXMLDOMNodePtr node, double* p, ulong n) const {
    ScanNode(node, p, n);
}

void PCExBase::ReadDataFloat(const char* name, float* p, ulong n, bool bChild) {
    const IXMLDOMNodePtr node = ReadItemElement(name, bChild);
    if (node) ScanNode(node, p, n);
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
