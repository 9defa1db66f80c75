#include <platform/time/detail/CalendarTime.h>

namespace {

bool InRange(LONGLONG seconds) {
    return seconds >= firstCalendarSecond && seconds <= lastCalendarSecond;
}

}  // namespace

bool GmtFromSeconds(LONGLONG seconds, std::tm& calendar) {
    const std::time_t time = seconds;
    return InRange(seconds) && gmtime_r(&time, &calendar);
}

bool LocalFromSeconds(LONGLONG seconds, std::tm& calendar) {
    const std::time_t time = seconds;
    tzset();
    return InRange(seconds) && localtime_r(&time, &calendar);
}

LONGLONG SecondsFromLocal(std::tm& calendar) {
    std::tm carried = calendar;
    const LONGLONG seconds = std::mktime(&carried);
    if (!InRange(seconds)) return -1;
    calendar = carried;
    return seconds;
}
