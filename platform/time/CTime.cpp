#include <platform/files/CArchive.h>
#include <platform/object/CDumpContext.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/time/CTime.h>
#include <platform/time/detail/CalendarTime.h>

#include <string>

namespace {

constexpr bool Between(INT value, INT first, INT last) {
    return value >= first && value <= last;
}

// A space behind the format tells an empty text from one that does not fit. The
// widest text is bounded, since a format can ask for any width.
CString FormatCalendar(LPCTSTR format, const std::tm& calendar) {
    constexpr std::size_t widest = 1 << 20;
    const std::string closed = std::string(format) + " ";
    for (std::string text(128, 0); text.size() <= widest; text.resize(2 * text.size())) {
        const std::size_t length =
            std::strftime(text.data(), text.size(), closed.c_str(), &calendar);
        if (length > 0) return std::string_view(text.data(), length - 1);
    }
    return {};
}

INT LocalPart(const CTime& time, int std::tm::*part, INT first) {
    std::tm calendar;
    return time.GetLocalTm(&calendar) ? calendar.*part + first : 0;
}

}  // namespace

CTime::CTime(INT year, INT month, INT day, INT hour, INT minute, INT second, INT daylightSaving) {
    const bool onCalendar = Between(year, 1900, 3000) && Between(month, 1, 12) &&
                            Between(day, 1, 31) && Between(hour, 0, 23) && Between(minute, 0, 59) &&
                            Between(second, 0, 59);
    if (!onCalendar) AfxThrowInvalidArgException();
    std::tm calendar{};
    calendar.tm_year = year - 1900;
    calendar.tm_mon = month - 1;
    calendar.tm_mday = day;
    calendar.tm_hour = hour;
    calendar.tm_min = minute;
    calendar.tm_sec = second;
    calendar.tm_isdst = daylightSaving;
    m_time = SecondsFromLocal(calendar);
    if (m_time == -1) AfxThrowInvalidArgException();
}

CTime CTime::GetCurrentTime() {
    return std::time(nullptr);
}

std::tm* CTime::GetGmtTm(std::tm* calendar) const {
    return calendar && GmtFromSeconds(m_time, *calendar) ? calendar : nullptr;
}

std::tm* CTime::GetLocalTm(std::tm* calendar) const {
    return calendar && LocalFromSeconds(m_time, *calendar) ? calendar : nullptr;
}

INT CTime::GetYear() const {
    return LocalPart(*this, &std::tm::tm_year, 1900);
}
INT CTime::GetMonth() const {
    return LocalPart(*this, &std::tm::tm_mon, 1);
}
INT CTime::GetDay() const {
    return LocalPart(*this, &std::tm::tm_mday, 0);
}
INT CTime::GetHour() const {
    return LocalPart(*this, &std::tm::tm_hour, 0);
}
INT CTime::GetMinute() const {
    return LocalPart(*this, &std::tm::tm_min, 0);
}
INT CTime::GetSecond() const {
    return LocalPart(*this, &std::tm::tm_sec, 0);
}
INT CTime::GetDayOfWeek() const {
    return LocalPart(*this, &std::tm::tm_wday, 1);
}

CString CTime::Format(LPCTSTR format) const {
    std::tm calendar;
    if (!format || !GetLocalTm(&calendar)) return {};
    return FormatCalendar(format, calendar);
}

CString CTime::FormatGmt(LPCTSTR format) const {
    std::tm calendar;
    if (!format || !GetGmtTm(&calendar)) return {};
    return FormatCalendar(format, calendar);
}

CArchive& operator<<(CArchive& ar, CTime time) {
    return ar << time.GetTime();
}

CArchive& operator>>(CArchive& ar, CTime& time) {
    LONGLONG seconds = 0;
    ar >> seconds;
    time = seconds;
    return ar;
}

CDumpContext& operator<<(CDumpContext& dc, CTime time) {
    return dc << "CTime(\"" << time.Format("%c").GetString() << "\")";
}
