#include <zt/persist/Xml.h>

#include <platform/base/ResultCodes.h>
#include <platform/object/COleException.h>
#include <platform/time/detail/CalendarTime.h>
#include <zt/containers/HXString.h>
#include <zt/frame/PwException.h>
#include <zt/persist/detail/NumberText.h>

#include <optional>
#include <string>
#include <string_view>

namespace ZT {

namespace {

CString Tag(const char* before, const char* name) {
    return CString(before) + CString(name) + CString(">");
}

// A month or a day.
CString TwoDigits(int v) {
    CString text;
    text.Format(v < 10 ? "0%d" : "%d", v);
    return text;
}

// A value without its elements.
CString Plain(const Xml& content) {
    return content.IsData() ? content.m_strText : CString();
}

// A number without a sign; a negative one comes out as its 32 bits.
std::optional<ulong> Number(std::string_view text) {
    int value = 0;
    if (!NumberText::ScanInt(text, value)) return std::nullopt;
    return static_cast<ulong>(value);
}

bool CanBe(ulong year, ulong month, ulong day) {
    if (year == 1969 && month == 12 && day == 31) return true;
    return year >= 1970 && month >= 1 && month <= 12 && day >= 1 && day <= 31;
}

CTime Midnight(ulong year, ulong month, ulong day) {
    std::tm calendar{};
    calendar.tm_year = static_cast<int>(year - 1900);
    calendar.tm_mon = static_cast<int>(month) - 1;
    calendar.tm_mday = static_cast<int>(day);
    calendar.tm_isdst = -1;
    const LONGLONG seconds = SecondsFromLocal(calendar);
    if (seconds == -1) AfxThrowOleException(E_INVALIDARG);
    return seconds;
}

}  // namespace

void Xml::AddElement(const char* tag, const CString& value) {
    // `value` may be the text itself.
    const CString line = CString("\t") + Tag("<", tag) + value + Tag("</", tag) + CString("\n");
    m_strText += line;
}

void Xml::AddInt(const char* tag, int v) {
    CString value;
    value.Format("%d", v);
    AddElement(tag, value);
}

void Xml::AddBool(const char* tag, bool v) {
    AddElement(tag, v ? "t" : "f");
}

void Xml::AddDate(const char* tag, CTime t) {
    CString year;
    year.Format("%d", t.GetYear());
    AddElement(tag, year + TwoDigits(t.GetMonth()) + TwoDigits(t.GetDay()));
}

void Xml::AddBlock(const char* tag, Xml& inner) {
    inner.Tab();
    AddElement(tag, inner.m_strText);
}

void Xml::Tab() {
    HXString::Tab(m_strText);
}

bool Xml::IsData() const {
    return m_strText.Find('<') == -1;
}

bool Xml::ReadElement(const char* tag, Xml& out) const {
    const CString opening = Tag("<", tag);
    const std::string_view text = m_strText;
    const std::size_t open = text.find(opening.View());
    if (open == std::string_view::npos) return false;
    // From the start and not from the opening tag, deliberately.
    const std::size_t close = text.find(Tag("</", tag).View());
    if (close == std::string_view::npos) return false;
    const std::size_t begin = open + opening.View().size();
    // `out` may be this fragment.
    out = Xml(CString(close > begin ? text.substr(begin, close - begin) : std::string_view()));
    return true;
}

Xml Xml::ReadElement(const char* tag) const {
    Xml content;
    ReadElement(tag, content);
    return content;
}

CString Xml::ReadString(const char* tag) const {
    return Plain(ReadElement(tag));
}

int Xml::ReadInt(const char* tag) const {
    const CString value = ReadString(tag);
    if (value.IsEmpty()) return 0;
    int number = 0;
    if (!NumberText::ScanInt(value.View(), number)) throw new PwException("Bad int in xml string");
    return number;
}

bool Xml::ReadBool(const char* tag) const {
    CString value = ReadString(tag);
    if (value.IsEmpty()) return false;
    value.MakeLower();
    if (value.IsEmpty()) throw new PwException("Bad bool in xml string");
    return value[0] == 't';
}

CTime Xml::ReadDate(const char* tag) const {
    const CString value = ReadString(tag);
    if (value.GetLength() != 8) return {};
    const std::string_view text = value;
    const std::optional<ulong> year = Number(text.substr(0, 4));
    const std::optional<ulong> month = Number(text.substr(4, 2));
    const std::optional<ulong> day = Number(text.substr(6, 2));
    if (!year || !month || !day) return {};
    if (!CanBe(*year, *month, *day)) AfxThrowOleException(E_FAIL);
    return Midnight(*year, *month, *day);
}

}  // namespace ZT
