#include <platform/files/CFile.h>
#include <platform/object/CDumpContext.h>
#include <platform/object/CObject.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string>

constinit CDumpContext afxDump;

namespace {

template <class Number, class... Format>
std::string NumberText(Number number, Format... format) {
    char digits[64];
    const auto end = std::to_chars(digits, digits + sizeof digits, number, format...).ptr;
    return {digits, end};
}

void AppendHexPair(std::string& text, BYTE byte) {
    static constexpr char digits[] = "0123456789ABCDEF";
    text += digits[byte >> 4];
    text += digits[byte & 15];
}

}  // namespace

CDumpContext& CDumpContext::operator<<(LPCTSTR text) {
    Write(text ? text : "(NULL)");
    return *this;
}

CDumpContext& CDumpContext::operator<<(const void* address) {
    if (!address) return *this << "NULL";
    return *this << ("$" + NumberText(reinterpret_cast<UINT_PTR>(address), 16)).c_str();
}

CDumpContext& CDumpContext::operator<<(const CObject* object) {
    if (!object) return *this << "NULL";
    return *this << *object;
}

CDumpContext& CDumpContext::operator<<(const CObject& object) {
    object.Dump(*this);
    return *this;
}

void CDumpContext::HexDump(LPCTSTR line, const BYTE* bytes, INT count, INT width) {
    const INT step = std::max(width, 1);
    for (INT from = 0; from < count; from += step) {
        std::string text = line ? line : "";
        for (INT i = from; i < std::min(count, from + step); ++i) {
            text += ' ';
            AppendHexPair(text, bytes[i]);
        }
        *this << (text + "\n").c_str();
    }
}

void CDumpContext::Write(std::string_view text) {
    if (m_pFile)
        m_pFile->Write(text.data(), static_cast<UINT>(text.size()));
    else
        std::fwrite(text.data(), 1, text.size(), stderr);
}

void CDumpContext::Flush() {
    if (m_pFile)
        m_pFile->Flush();
    else
        std::fflush(stderr);
}

CDumpContext& CDumpContext::WriteCharacter(char c) {
    Write({&c, 1});
    return *this;
}

CDumpContext& CDumpContext::WriteReal(float number) {
    return *this << NumberText(number).c_str();
}

CDumpContext& CDumpContext::WriteReal(double number) {
    return *this << NumberText(number).c_str();
}

CDumpContext& CDumpContext::WriteSigned(LONGLONG number) {
    return *this << NumberText(number).c_str();
}

CDumpContext& CDumpContext::WriteUnsigned(ULONGLONG number) {
    return *this << NumberText(number).c_str();
}
