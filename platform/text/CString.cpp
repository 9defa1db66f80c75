#include <platform/text/CString.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ostream>

#include <platform/com/Bstr.h>
#include <platform/text/Utf8.h>

namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::size_t AtLeastZero(int value) {
    return static_cast<std::size_t>(std::max(value, 0));
}

int Position(std::size_t found) {
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

std::string_view Counted(const char* text, int length) {
    if (length < 0 || (text == nullptr && length != 0)) AfxThrowInvalidArgException();
    return {text, static_cast<std::size_t>(length)};
}

std::wstring_view Counted(const wchar_t* text, int length) {
    if (length < 0 || (text == nullptr && length != 0)) AfxThrowInvalidArgException();
    return {text, static_cast<std::size_t>(length)};
}

std::string_view RequiredSet(const char* set) {
    if (set == nullptr) AfxThrowInvalidArgException();
    return set;
}

// Runs a conversion that uses the standard library's own memory.
template <class Conversion>
auto WithMemory(Conversion conversion) {
    try {
        return conversion();
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}

std::string Narrow(std::wstring_view text) {
    return WithMemory([text] { return Utf8FromWide(text); });
}

std::wstring Widen(std::string_view text) {
    return WithMemory([text] { return WideFromUtf8(text); });
}

std::wstring_view OrEmptyWide(const wchar_t* text) {
    return text == nullptr ? std::wstring_view() : std::wstring_view(text);
}

}  // namespace

CString::CString(const char* text, int length) : m_text(Counted(text, length)) {}

CString::CString(char c, int count) : m_text(AtLeastZero(count), c) {}

CString::CString(const wchar_t* text) : CString(std::string_view(Narrow(OrEmptyWide(text)))) {}

CString::CString(const wchar_t* text, int length)
    : CString(std::string_view(Narrow(Counted(text, length)))) {}

CString& CString::operator=(const char* text) {
    return *this = OrEmpty(text);
}

CString& CString::operator=(const wchar_t* text) {
    return *this = CString(text);
}

CString& CString::operator=(std::string_view text) {
    m_text.assign(Checked(text));
    return *this;
}

CString& CString::operator=(char c) {
    m_text.assign(1, c);
    return *this;
}

void CString::SetString(const char* text, int length) {
    *this = Counted(text, length);
}

void CString::Empty() noexcept {
    Text().swap(m_text);
}

void CString::Resize(int length) {
    m_text.resize(static_cast<std::size_t>(length));
}

char* CString::GetBuffer(int minLength) {
    if (minLength < 0) AfxThrowInvalidArgException();
    if (minLength > GetLength()) Resize(minLength);
    return m_text.data();
}

void CString::ReleaseBuffer(int newLength) {
    if (newLength == -1) newLength = static_cast<int>(::strnlen(m_text.data(), m_text.size()));
    ReleaseBufferSetLength(newLength);
}

char* CString::GetBufferSetLength(int length) {
    if (length < 0) AfxThrowInvalidArgException();
    Resize(length);
    return m_text.data();
}

void CString::ReleaseBufferSetLength(int newLength) {
    Truncate(newLength);
}

void CString::Preallocate(int length) {
    m_text.reserve(AtLeastZero(length));
}

void CString::Truncate(int length) {
    if (length < 0 || length > GetLength()) AfxThrowInvalidArgException();
    Resize(length);
}

void CString::Append(const char* text, int length) {
    AppendView(Counted(text, length));
}

void CString::AppendFormat(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    AppendFormatV(format, arguments);
    va_end(arguments);
}

void CString::AppendFormatV(const char* format, va_list arguments) {
    CString tail;
    tail.FormatV(format, arguments);
    *this += tail;
}

int CString::CompareNoCase(const char* other) const noexcept {
    const std::string_view a = View();
    const std::string_view b = OrEmpty(other);
    const std::size_t shared = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shared; ++i) {
        const int difference =
            static_cast<unsigned char>(Lower(a[i])) - static_cast<unsigned char>(Lower(b[i]));
        if (difference != 0) return difference;
    }
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

int CString::Collate(const char* other) const noexcept {
    return std::strcoll(GetString(), other == nullptr ? "" : other);
}

int CString::CollateNoCase(const char* other) const {
    CString a = *this;
    CString b = other;
    return a.MakeLower().Collate(b.MakeLower());
}

CString CString::Mid(int first, int count) const {
    const std::size_t from = std::min(AtLeastZero(first), m_text.size());
    return View().substr(from, AtLeastZero(count));
}

CString CString::Right(int count) const {
    const int cut = std::clamp(count, 0, GetLength());
    return View().substr(static_cast<std::size_t>(GetLength() - cut));
}

CString CString::SpanIncluding(const char* set) const {
    return View().substr(0, View().find_first_not_of(RequiredSet(set)));
}

CString CString::SpanExcluding(const char* set) const {
    return View().substr(0, View().find_first_of(RequiredSet(set)));
}

CString CString::Tokenize(const char* delimiters, int& start) const {
    if (start < 0) AfxThrowInvalidArgException();
    const std::string_view set = OrEmpty(delimiters);
    const std::size_t from = View().find_first_not_of(set, static_cast<std::size_t>(start));
    if (from == std::string_view::npos) {
        start = -1;
        return {};
    }
    const std::size_t end = std::min(View().find_first_of(set, from), m_text.size());
    start = static_cast<int>(std::min(end + 1, m_text.size()));
    return View().substr(from, end - from);
}

int CString::Find(char c, int start) const noexcept {
    if (start < 0 || start >= GetLength()) return -1;
    const int found = Position(m_text.find(c, static_cast<std::size_t>(start)));
    return found < 0 && c == '\0' ? GetLength() : found;
}

int CString::Find(const char* text, int start) const noexcept {
    if (text == nullptr || start < 0 || start > GetLength()) return -1;
    return Position(m_text.find(text, static_cast<std::size_t>(start)));
}

int CString::Find(const CString& text, int start) const noexcept {
    if (start < 0 || start > GetLength()) return -1;
    return Position(m_text.find(text.m_text, static_cast<std::size_t>(start)));
}

int CString::ReverseFind(char c) const noexcept {
    return c == '\0' ? GetLength() : Position(m_text.rfind(c));
}

int CString::FindOneOf(const char* set) const noexcept {
    return Position(m_text.find_first_of(OrEmpty(set)));
}

CString& CString::MakeUpper() noexcept {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), Upper);
    return *this;
}

CString& CString::MakeLower() noexcept {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), Lower);
    return *this;
}

CString& CString::MakeReverse() noexcept {
    std::reverse(m_text.begin(), m_text.end());
    return *this;
}

CString& CString::TrimFront(std::string_view set) {
    m_text.erase(0, m_text.find_first_not_of(set));
    return *this;
}

CString& CString::TrimBack(std::string_view set) {
    m_text.erase(m_text.find_last_not_of(set) + 1);
    return *this;
}

CString& CString::TrimLeft() {
    return TrimFront(kWhiteSpace);
}
CString& CString::TrimLeft(char c) {
    return TrimFront({&c, 1});
}
CString& CString::TrimLeft(const char* set) {
    return TrimFront(OrEmpty(set));
}

CString& CString::TrimRight() {
    return TrimBack(kWhiteSpace);
}
CString& CString::TrimRight(char c) {
    return TrimBack({&c, 1});
}
CString& CString::TrimRight(const char* set) {
    return TrimBack(OrEmpty(set));
}

int CString::Insert(int index, char c) {
    return InsertView(index, {&c, 1});
}
int CString::Insert(int index, const char* text) {
    return InsertView(index, OrEmpty(text));
}

int CString::InsertView(int index, std::string_view text) {
    CheckSize(m_text.size() + text.size());
    m_text.insert(std::min(AtLeastZero(index), m_text.size()), text);
    return GetLength();
}

int CString::Delete(int index, int count) {
    const std::size_t from = AtLeastZero(index);
    if (from < m_text.size()) m_text.erase(from, AtLeastZero(count));
    return GetLength();
}

int CString::Remove(char c) {
    return static_cast<int>(std::erase(m_text, c));
}

int CString::Replace(char old, char with) noexcept {
    if (old == with) return 0;
    int count = 0;
    for (char& c : m_text) {
        if (c != old) continue;
        c = with;
        ++count;
    }
    return count;
}

int CString::Replace(const char* old, const char* with) {
    const std::string_view sought = OrEmpty(old);
    const std::string_view put = OrEmpty(with);
    if (sought.empty()) return 0;
    CString changed;
    std::size_t from = 0;
    int count = 0;
    for (auto found = m_text.find(sought); found != Text::npos; found = m_text.find(sought, from)) {
        changed.AppendView(View().substr(from, found - from));
        changed.AppendView(put);
        from = found + sought.size();
        ++count;
    }
    if (count == 0) return 0;
    changed.AppendView(View().substr(from));
    *this = std::move(changed);
    return count;
}

void CString::Format(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::FormatV(const char* format, va_list arguments) {
    if (format == nullptr) AfxThrowInvalidArgException();
    char shortText[256];
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(shortText, sizeof shortText, format, arguments);
    CString written;
    if (length >= 0 && static_cast<std::size_t>(length) < sizeof shortText) {
        written.SetString(shortText, length);
    } else if (length >= 0) {
        char* buffer = written.GetBufferSetLength(length);
        std::vsnprintf(buffer, static_cast<std::size_t>(length) + 1, format, again);
    }
    va_end(again);
    if (length < 0) AfxThrowInvalidArgException();
    *this = std::move(written);
}

wchar_t* CString::AllocSysString() const {
    const std::wstring wide = Widen(View());
    BSTR string = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (string == nullptr) AfxThrowMemoryException();
    return string;
}

wchar_t* CString::SetSysString(wchar_t** string) const {
    if (string == nullptr) AfxThrowInvalidArgException();
    const std::wstring wide = Widen(View());
    if (SysReAllocStringLen(string, wide.data(), static_cast<UINT>(wide.size())) == 0)
        AfxThrowMemoryException();
    return *string;
}

BOOL CString::GetEnvironmentVariable(const char* name) {
    const char* value = name == nullptr ? nullptr : std::getenv(name);
    *this = value;
    return value != nullptr;
}

CString CString::Join(std::string_view a, std::string_view b) {
    CheckSize(a.size() + b.size());
    CString joined;
    joined.m_text.reserve(a.size() + b.size());
    joined.m_text.append(a).append(b);
    return joined;
}

std::ostream& operator<<(std::ostream& stream, const CString& text) {
    return stream << text.View();
}
