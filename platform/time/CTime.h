/// @file
/// A point in time.

#pragma once

#include <platform/time/CTimeSpan.h>

#include <ctime>

/// A point in time: a signed 64-bit count of seconds since 1970-01-01 00:00:00
/// UTC, with conversions to and from the calendar.
///
/// A count is taken as it is; the calendar knows the years 1970 to 3000. The
/// parts of a time outside are 0, and its text is empty.
class ZTP_API CTime {
public:
    /// The zero time, which also stands for no time.
    constexpr CTime() = default;
    /// The time so many seconds after the start of 1970.
    constexpr CTime(LONGLONG seconds) : m_time(seconds) {}
    /// A time on the calendar of the process's time zone: a year from 1970 to
    /// 3000, month and day from 1, hour from 0. `daylightSaving` is above 0 if
    /// the time is given in daylight-saving time, 0 if in standard time, below 0
    /// to follow the rules of the zone. The day is checked against 31 only, and a
    /// 31 April is 1 May. Other values, and times before 1970 in UTC, raise the
    /// invalid-argument exception.
    CTime(INT year, INT month, INT day, INT hour, INT minute, INT second, INT daylightSaving = -1);

    /// The time of the system's clock.
    static CTime GetCurrentTime();

    /// Seconds since the start of 1970.
    constexpr LONGLONG GetTime() const { return m_time; }

    /// Fills `*calendar` and answers it; null, and nothing is written, for a time
    /// outside the calendar or a null `calendar`. Month counts from 0 and the year
    /// from 1900, as in all of `std::tm`.
    std::tm* GetGmtTm(std::tm* calendar) const;
    std::tm* GetLocalTm(std::tm* calendar) const;

    /// @name Parts
    /// On the calendar of the process's time zone; 0 outside the calendar.
    /// @{
    INT GetYear() const;
    INT GetMonth() const;      ///< 1 to 12
    INT GetDay() const;        ///< 1 to 31
    INT GetHour() const;       ///< 0 to 23
    INT GetMinute() const;     ///< 0 to 59
    INT GetSecond() const;     ///< 0 to 59
    INT GetDayOfWeek() const;  ///< 1 for Sunday to 7 for Saturday
    /// @}

    constexpr CTime& operator+=(CTimeSpan span) {
        m_time += span.GetTimeSpan();
        return *this;
    }
    constexpr CTime& operator-=(CTimeSpan span) {
        m_time -= span.GetTimeSpan();
        return *this;
    }
    friend constexpr CTime operator+(CTime time, CTimeSpan span) { return time += span; }
    friend constexpr CTime operator-(CTime time, CTimeSpan span) { return time -= span; }
    friend constexpr CTimeSpan operator-(CTime a, CTime b) { return a.m_time - b.m_time; }
    friend constexpr bool operator==(CTime, CTime) = default;
    friend constexpr std::strong_ordering operator<=>(CTime, CTime) = default;

    /// Text by the conventions of `strftime`, in the time zone of the process and
    /// in UTC, with the names of the process's locale. Empty for a null format, for
    /// a time outside the calendar, and for a text of more than a mebibyte.
    CString Format(LPCTSTR format) const;
    CString FormatGmt(LPCTSTR format) const;

private:
    LONGLONG m_time = 0;
};

/// Eight bytes in an archive: the seconds.
ZTP_API CArchive& operator<<(CArchive& ar, CTime time);
ZTP_API CArchive& operator>>(CArchive& ar, CTime& time);

/// The time in words.
ZTP_API CDumpContext& operator<<(CDumpContext& dc, CTime time);
