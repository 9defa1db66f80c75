/// @file
/// A difference of two times.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>
#include <platform/text/CString.h>

#include <compare>

class CArchive;
class CDumpContext;

/// A difference of two times: a signed count of seconds, read as days, hours,
/// minutes and seconds. All parts of a negative span are negative or 0.
class ZTP_API CTimeSpan {
public:
    /// The empty span.
    constexpr CTimeSpan() = default;
    /// A span of so many seconds.
    constexpr CTimeSpan(LONGLONG seconds) : m_timeSpan(seconds) {}
    /// The sum of the parts, which need not be within any bounds.
    constexpr CTimeSpan(LONG days, INT hours, INT minutes, INT seconds)
        : m_timeSpan(((LONGLONG{days} * 24 + hours) * 60 + minutes) * 60 + seconds) {}

    /// Whole days.
    constexpr LONGLONG GetDays() const { return m_timeSpan / 86400; }
    /// Whole hours of the span, and those beyond the whole days, -23 to 23.
    constexpr LONGLONG GetTotalHours() const { return m_timeSpan / 3600; }
    constexpr LONG GetHours() const { return static_cast<LONG>(GetTotalHours() % 24); }
    /// Whole minutes of the span, and those beyond the whole hours, -59 to 59.
    constexpr LONGLONG GetTotalMinutes() const { return m_timeSpan / 60; }
    constexpr LONG GetMinutes() const { return static_cast<LONG>(GetTotalMinutes() % 60); }
    /// Seconds of the span, and those beyond the whole minutes, -59 to 59.
    constexpr LONGLONG GetTotalSeconds() const { return m_timeSpan; }
    constexpr LONG GetSeconds() const { return static_cast<LONG>(m_timeSpan % 60); }
    constexpr LONGLONG GetTimeSpan() const { return m_timeSpan; }

    constexpr CTimeSpan& operator+=(CTimeSpan other) {
        m_timeSpan += other.m_timeSpan;
        return *this;
    }
    constexpr CTimeSpan& operator-=(CTimeSpan other) {
        m_timeSpan -= other.m_timeSpan;
        return *this;
    }
    friend constexpr CTimeSpan operator+(CTimeSpan a, CTimeSpan b) { return a += b; }
    friend constexpr CTimeSpan operator-(CTimeSpan a, CTimeSpan b) { return a -= b; }
    friend constexpr bool operator==(CTimeSpan, CTimeSpan) = default;
    friend constexpr std::strong_ordering operator<=>(CTimeSpan, CTimeSpan) = default;

    /// `format` with "%D" replaced by the days, "%H", "%M" and "%S" by hours,
    /// minutes and seconds in two digits, and "%%" by "%". Anything else behind a
    /// "%" raises the invalid-argument exception. A null format gives the empty
    /// string.
    CString Format(LPCTSTR format) const;

private:
    LONGLONG m_timeSpan = 0;
};

/// Eight bytes in an archive: the seconds.
ZTP_API CArchive& operator<<(CArchive& ar, CTimeSpan span);
ZTP_API CArchive& operator>>(CArchive& ar, CTimeSpan& span);

/// Days, hours, minutes and seconds in words.
ZTP_API CDumpContext& operator<<(CDumpContext& dc, CTimeSpan span);
