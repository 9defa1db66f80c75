/// @file
/// Seconds since 1970 to and from the calendar.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>

#include <ctime>

/// The times that can be converted: from 1970-01-01 00:00:00 to
/// 3000-12-31 23:59:59, both UTC, in seconds.
constexpr LONGLONG firstCalendarSecond = 0;
constexpr LONGLONG lastCalendarSecond = 32'535'215'999;

/// The calendar in UTC. False, and `calendar` untouched, outside the range above.
ZTP_API bool GmtFromSeconds(LONGLONG seconds, std::tm& calendar);

/// The calendar in the time zone of the process, with the same failure.
ZTP_API bool LocalFromSeconds(LONGLONG seconds, std::tm& calendar);

/// Seconds of a calendar time in the time zone of the process. Fields beyond
/// their range are carried over, and the week day and the day of the year are
/// computed, as `mktime` does; a `tm_isdst` of -1 leaves it to the zone's rules
/// whether daylight saving is in force. The result is -1, and `calendar`
/// untouched, for a time outside the range above.
ZTP_API LONGLONG SecondsFromLocal(std::tm& calendar);
