#include <platform/files/CArchive.h>
#include <platform/object/CDumpContext.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/time/CTimeSpan.h>

#include <cstdio>
#include <string>

namespace {

std::string TwoDigits(LONG number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%02d", number);
    return digits;
}

std::string Part(const CTimeSpan& span, char code) {
    switch (code) {
        case 'D':
            return std::to_string(span.GetDays());
        case 'H':
            return TwoDigits(span.GetHours());
        case 'M':
            return TwoDigits(span.GetMinutes());
        case 'S':
            return TwoDigits(span.GetSeconds());
        case '%':
            return "%";
        default:
            AfxThrowInvalidArgException();
    }
}

}  // namespace

CString CTimeSpan::Format(LPCTSTR format) const {
    std::string text;
    for (LPCTSTR at = format; at && *at; ++at) {
        if (*at == '%')
            text += Part(*this, *++at);
        else
            text += *at;
    }
    return std::string_view(text);
}

CArchive& operator<<(CArchive& ar, CTimeSpan span) {
    return ar << span.GetTimeSpan();
}

CArchive& operator>>(CArchive& ar, CTimeSpan& span) {
    LONGLONG seconds = 0;
    ar >> seconds;
    span = seconds;
    return ar;
}

CDumpContext& operator<<(CDumpContext& dc, CTimeSpan span) {
    return dc << "CTimeSpan(" << span.GetDays() << " days, " << span.GetHours() << " hours, "
              << span.GetMinutes() << " minutes and " << span.GetSeconds() << " seconds)";
}
