#include <platform/files/CArchive.h>
#include <platform/object/CMemoryException.h>
#include <platform/text/Utf8.h>

#include <algorithm>
#include <limits>
#include <string>

namespace {

constexpr BYTE longLength = 0xFF;
constexpr WORD wideText = 0xFFFE;
constexpr WORD longerLength = 0xFFFF;
constexpr DWORD longestLength = 0xFFFFFFFF;

bool IsHighSurrogate(wchar_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLowSurrogate(wchar_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

// UTF-8 from the bytes of 16-bit characters, the low byte of each first. A
// surrogate without its partner becomes the replacement character.
CString Utf8FromArchived(const CString& bytes) {
    const std::string_view pairs = bytes.View();
    std::wstring wide;
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
        const auto low = static_cast<BYTE>(pairs[i]);
        const auto high = static_cast<BYTE>(pairs[i + 1]);
        const auto unit = static_cast<wchar_t>(low | high << 8);
        if (IsLowSurrogate(unit) && !wide.empty() && IsHighSurrogate(wide.back()))
            wide.back() =
                static_cast<wchar_t>(0x10000 + ((wide.back() - 0xD800) << 10) + (unit - 0xDC00));
        else
            wide += unit;
    }
    return std::string_view(Utf8FromWide(wide));
}

}  // namespace

CArchive& CArchive::operator<<(const CString& text) {
    const auto length = static_cast<DWORD>(text.GetLength());
    if (length < longLength) {
        *this << static_cast<BYTE>(length);
    } else if (length < wideText) {
        *this << longLength << static_cast<WORD>(length);
    } else {
        *this << longLength << longerLength << length;
    }
    Write(text.GetString(), length);
    return *this;
}

// The length behind the byte that says that it is long; `length` is its first
// form.
ULONGLONG CArchive::ReadLongLength(WORD length) {
    if (length < longerLength) return length;
    DWORD longer = 0;
    *this >> longer;
    if (longer < longestLength) return longer;
    ULONGLONG longest = 0;
    *this >> longest;
    return longest;
}

CArchive& CArchive::operator>>(CString& text) {
    BYTE shortLength = 0;
    WORD length = 0;
    *this >> shortLength;
    if (shortLength == longLength) *this >> length;
    if (length != wideText) {
        text = ReadText(shortLength < longLength ? shortLength : ReadLongLength(length));
        return *this;
    }
    *this >> shortLength;
    if (shortLength == longLength) *this >> length;
    const ULONGLONG characters = shortLength < longLength ? shortLength : ReadLongLength(length);
    text = Utf8FromArchived(ReadText(2 * std::min(characters, ~ULONGLONG{0} / 2)));
    return *this;
}

// Reads in pieces, so that a length that the file does not hold asks for no memory.
CString CArchive::ReadText(ULONGLONG bytes) {
    constexpr ULONGLONG piece = 1 << 16;
    CString text;
    while (bytes > 0) {
        const int begin = text.GetLength();
        const auto part = static_cast<int>(std::min(bytes, piece));
        if (part > std::numeric_limits<int>::max() - begin) AfxThrowMemoryException();
        EnsureRead(text.GetBufferSetLength(begin + part) + begin, static_cast<UINT>(part));
        bytes -= static_cast<ULONGLONG>(part);
    }
    return text;
}

void CArchive::WriteString(LPCTSTR text) {
    Write(text, text ? static_cast<UINT>(std::strlen(text)) : 0);
}

// The next byte; false at the end of the file.
bool CArchive::TakeByte(char& byte) {
    if (ReadAhead(1) < 1) return false;
    byte = static_cast<char>(*m_lpBufCur++);
    return true;
}

// The next byte of a line; false at the end of the line, which is taken out, and
// at the end of the file.
bool CArchive::TakeLineByte(char& byte) {
    if (!TakeByte(byte) || byte == '\n') return false;
    const bool ends = byte == '\r' && ReadAhead(1) == 1 && *m_lpBufCur == '\n';
    if (ends) ++m_lpBufCur;
    return !ends;
}

LPTSTR CArchive::ReadString(LPTSTR text, UINT size) {
    CheckTransfer(FALSE);
    if (!text || ReadAhead(1) < 1) return nullptr;
    UINT length = 0;
    char byte = 0;
    while (length < size && TakeLineByte(byte)) text[length++] = byte;
    text[length] = 0;
    return text;
}

BOOL CArchive::ReadString(CString& text) {
    CheckTransfer(FALSE);
    text.Empty();
    if (ReadAhead(1) < 1) return FALSE;
    char byte = 0;
    while (TakeLineByte(byte)) text.AppendChar(byte);
    return TRUE;
}
