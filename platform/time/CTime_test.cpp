#include <gtest/gtest.h>

#include <platform/files/CMemFile.h>
#include <platform/object/CDumpContext.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/time/CTime.h>
#include <platform/time/detail/CalendarTime.h>
#include <tests/TimeZone.h>

#include <ctime>
#include <string>

namespace {

using testing_support::TimeZone;

struct InUtc : testing::Test {
    TimeZone zone{"UTC0"};
};

struct InCentralEurope : testing::Test {
    TimeZone zone{testing_support::kCentralEurope};
};

constexpr LONGLONG leapDay = 1709210096;  // 2024-02-29 12:34:56 UTC

}  // namespace

TEST_F(InUtc, DefaultIsTheZeroTime) {
    EXPECT_EQ(CTime().GetTime(), 0);
    EXPECT_EQ(CTime(), CTime(0));
}

TEST_F(InUtc, PartsOfATime) {
    const CTime time(leapDay);
    EXPECT_EQ(time.GetYear(), 2024);
    EXPECT_EQ(time.GetMonth(), 2);
    EXPECT_EQ(time.GetDay(), 29);
    EXPECT_EQ(time.GetHour(), 12);
    EXPECT_EQ(time.GetMinute(), 34);
    EXPECT_EQ(time.GetSecond(), 56);
    EXPECT_EQ(time.GetDayOfWeek(), 5);
}

TEST_F(InUtc, TimeFromTheCalendar) {
    EXPECT_EQ(CTime(2024, 2, 29, 12, 34, 56).GetTime(), leapDay);
    EXPECT_EQ(CTime(1970, 1, 1, 0, 0, 0).GetTime(), 0);
    EXPECT_EQ(CTime(3000, 12, 31, 23, 59, 59).GetTime(), lastCalendarSecond);
}

TEST_F(InUtc, DayBeyondTheMonthIsCarried) {
    EXPECT_EQ(CTime(2023, 4, 31, 0, 0, 0), CTime(2023, 5, 1, 0, 0, 0));
    EXPECT_EQ(CTime(2023, 2, 29, 0, 0, 0), CTime(2023, 3, 1, 0, 0, 0));
}

TEST_F(InUtc, PartsOutOfBoundsRaiseInvalidArgument) {
    EXPECT_THROW(CTime(2024, 0, 1, 0, 0, 0), CInvalidArgException*);
    EXPECT_THROW(CTime(2024, 13, 1, 0, 0, 0), CInvalidArgException*);
    EXPECT_THROW(CTime(2024, 1, 0, 0, 0, 0), CInvalidArgException*);
    EXPECT_THROW(CTime(2024, 1, 32, 0, 0, 0), CInvalidArgException*);
    EXPECT_THROW(CTime(2024, 1, 1, -1, 0, 0), CInvalidArgException*);
    EXPECT_THROW(CTime(2024, 1, 1, 24, 0, 0), CInvalidArgException*);
    EXPECT_THROW(CTime(2024, 1, 1, 0, 60, 0), CInvalidArgException*);
    EXPECT_THROW(CTime(2024, 1, 1, 0, 0, 60), CInvalidArgException*);
    EXPECT_THROW(CTime(1899, 1, 1, 0, 0, 0), CInvalidArgException*);
    EXPECT_THROW(CTime(3001, 1, 1, 0, 0, 0), CInvalidArgException*);
}

TEST_F(InUtc, TimeBeforeTheFirstRaisesInvalidArgument) {
    EXPECT_THROW(CTime(1969, 12, 31, 23, 59, 59), CInvalidArgException*);
    EXPECT_THROW(CTime(1969, 12, 31, 0, 0, 0), CInvalidArgException*);
}

TEST_F(InUtc, PartsOfATimeOutsideTheCalendarAreZero) {
    for (const CTime time : {CTime(-1), CTime(lastCalendarSecond + 1)}) {
        EXPECT_EQ(time.GetYear(), 0);
        EXPECT_EQ(time.GetMonth(), 0);
        EXPECT_EQ(time.GetDay(), 0);
        EXPECT_EQ(time.GetDayOfWeek(), 0);
        std::tm calendar{};
        EXPECT_EQ(time.GetLocalTm(&calendar), nullptr);
        EXPECT_EQ(time.GetGmtTm(&calendar), nullptr);
        EXPECT_STREQ(time.Format("%Y"), "");
        EXPECT_STREQ(time.FormatGmt("%Y"), "");
    }
}

TEST_F(InUtc, LastTimesOfTheCalendarHaveParts) {
    EXPECT_EQ(CTime(lastCalendarSecond).GetYear(), 3000);
    EXPECT_EQ(CTime(LONGLONG{0}).GetYear(), 1970);
}

TEST_F(InUtc, NullCalendarIsNoCalendar) {
    EXPECT_EQ(CTime(leapDay).GetLocalTm(nullptr), nullptr);
    EXPECT_EQ(CTime(leapDay).GetGmtTm(nullptr), nullptr);
}

TEST_F(InUtc, FormatWritesByTheConventions) {
    const CTime time(leapDay);
    EXPECT_STREQ(time.Format("%Y-%m-%d %H:%M:%S"), "2024-02-29 12:34:56");
    EXPECT_STREQ(time.Format("100%%"), "100%");
    EXPECT_STREQ(time.Format(""), "");
    EXPECT_STREQ(time.Format(nullptr), "");
    EXPECT_STREQ(time.FormatGmt(nullptr), "");
}

TEST_F(InUtc, FormatMayGiveALongTextWithinABound) {
    const std::string longFormat(5000, 'y');
    EXPECT_EQ(CTime(leapDay).Format(longFormat.c_str()).GetString(), longFormat);
    EXPECT_STREQ(CTime(leapDay).Format("%2000000000d"), "");
}

TEST_F(InUtc, AddsSubtractsAndCompares) {
    const CTime time(leapDay);
    EXPECT_EQ(time + CTimeSpan(1, 0, 0, 0), CTime(2024, 3, 1, 12, 34, 56));
    EXPECT_EQ(time - CTimeSpan(56), CTime(2024, 2, 29, 12, 34, 0));
    EXPECT_EQ(CTime(2024, 3, 1, 0, 0, 0) - CTime(2024, 2, 1, 0, 0, 0), CTimeSpan(29, 0, 0, 0));
    CTime moved = time;
    moved += CTimeSpan(10);
    EXPECT_LT(time, moved);
    moved -= CTimeSpan(10);
    EXPECT_EQ(time, moved);
    EXPECT_NE(time, CTime());
}

TEST_F(InUtc, CurrentTimeIsThatOfTheClock) {
    const std::time_t before = std::time(nullptr);
    const CTime now = CTime::GetCurrentTime();
    EXPECT_GE(now.GetTime(), before);
    EXPECT_LE(now.GetTime(), std::time(nullptr));
}

TEST_F(InCentralEurope, PartsAreLocal) {
    const CTime winter(2024, 1, 5, 0, 30, 0);
    EXPECT_EQ(winter.GetTime(), 1704411000);
    EXPECT_EQ(winter.GetDay(), 5);
    EXPECT_EQ(winter.GetHour(), 0);
    EXPECT_STREQ(winter.Format("%H:%M %Z"), "00:30 CET");
    EXPECT_STREQ(winter.FormatGmt("%m-%d %H:%M"), "01-04 23:30");
}

TEST_F(InCentralEurope, DaylightSavingFollowsTheZoneUnlessItIsTold) {
    const CTime summer(2024, 7, 1, 12, 0, 0);
    EXPECT_STREQ(summer.FormatGmt("%H"), "10");
    EXPECT_EQ(CTime(2024, 7, 1, 12, 0, 0, 1), summer);
    EXPECT_EQ(CTime(2024, 7, 1, 12, 0, 0, 0) - summer, CTimeSpan(0, 1, 0, 0));
    EXPECT_EQ(CTime(2024, 10, 27, 2, 30, 0, 0) - CTime(2024, 10, 27, 2, 30, 0, 1),
              CTimeSpan(0, 1, 0, 0));
}

TEST_F(InCentralEurope, FirstLocalDayBeginsBeforeTheFirstTime) {
    EXPECT_THROW(CTime(1970, 1, 1, 0, 0, 0), CInvalidArgException*);
    EXPECT_EQ(CTime(1970, 1, 1, 1, 0, 0), CTime(0));
}

TEST_F(InUtc, SecondsFromLocalCarriesFieldsOver) {
    std::tm calendar{};
    calendar.tm_year = 124;
    calendar.tm_mon = 1;
    calendar.tm_mday = 30;
    calendar.tm_isdst = -1;
    EXPECT_EQ(SecondsFromLocal(calendar), CTime(2024, 3, 1, 0, 0, 0).GetTime());
    EXPECT_EQ(calendar.tm_mon, 2);
    EXPECT_EQ(calendar.tm_mday, 1);
    EXPECT_EQ(calendar.tm_wday, 5);
    EXPECT_EQ(calendar.tm_yday, 60);
}

TEST_F(InUtc, SecondsFromLocalOutsideTheCalendarTouchesNothing) {
    std::tm calendar{};
    calendar.tm_mon = 13;
    calendar.tm_year = 68;
    calendar.tm_mday = 1;
    EXPECT_EQ(SecondsFromLocal(calendar), -1);
    EXPECT_EQ(calendar.tm_mon, 13);
    calendar.tm_year = 1102;
    EXPECT_EQ(SecondsFromLocal(calendar), -1);
    calendar.tm_year = 2147483647;
    EXPECT_EQ(SecondsFromLocal(calendar), -1);
    EXPECT_EQ(calendar.tm_mon, 13);
}

TEST_F(InUtc, TimeIsDumpedInWords) {
    CMemFile file;
    CDumpContext dc(&file);
    dc << CTime(leapDay);
    std::string text(file.GetLength(), 0);
    file.SeekToBegin();
    file.Read(text.data(), static_cast<UINT>(text.size()));
    EXPECT_EQ(text, "CTime(\"Thu Feb 29 12:34:56 2024\")");
}
