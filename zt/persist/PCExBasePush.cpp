#include <zt/persist/PCExBase.h>
#include <zt/persist/detail/NumberRow.h>

#include <string_view>

namespace ZT {
namespace {

using NumberText::RowText;

/// A closed child of the current element with `text`. If the text cannot be written, the
/// element stays on the stack.
IXMLDOMElementPtr PushText(PCExBase& cursor, const char* name, std::string_view text) {
    IXMLDOMElementPtr element = cursor.PushElement(name);
    if (!element) return element;
    if (!text.empty()) element->appendText(text);
    cursor.PopElement(true);
    return element;
}

/// The same for a row of numbers; no numbers make no element.
IXMLDOMElementPtr PushRow(PCExBase& cursor, const char* name, const RowText& row) {
    if (row.View().empty()) return nullptr;
    return PushText(cursor, name, row.View());
}

}  // namespace

IXMLDOMElementPtr PCExBase::PushInt(const char* name, int v) {
    return PushRow(*this, name, RowText(&v, 1));
}

IXMLDOMElementPtr PCExBase::PushHex(const char* name, uint64 v) {
    char text[NumberText::kMaxLength];
    // The high half is lost: deliberate.
    const char* const end = NumberText::WriteHex(text, static_cast<std::uint32_t>(v));
    return PushText(*this, name, std::string_view(text, end));
}

bool PCExBase::PushBool(const char* name, bool v) {
    return static_cast<bool>(PushText(*this, name, v ? "1" : "0"));
}

IXMLDOMElementPtr PCExBase::PushString(const char* name, const CString& s) {
    return PushText(*this, name, s.View());
}

IXMLDOMElementPtr PCExBase::PushData(const char* name, const double* p, ulong n) {
    return PushRow(*this, name, RowText(p, n));
}

IXMLDOMElementPtr PCExBase::PushDataFloat(const char* name, const float* p, ulong n) {
    return PushRow(*this, name, RowText(p, n));
}

IXMLDOMElementPtr PCExBase::PushDataInt(const char* name, const int* p, ulong n) {
    return PushRow(*this, name, RowText(p, n));
}

IXMLDOMElementPtr PCExBase::PushDataByte(const char* name, const unsigned char* p, ulong n) {
    return PushRow(*this, name, RowText(p, n));
}

}  // namespace ZT
