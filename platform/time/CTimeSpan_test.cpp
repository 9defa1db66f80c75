#include <gtest/gtest.h>

#include <platform/files/CMemFile.h>
#include <platform/object/CDumpContext.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/time/CTimeSpan.h>

#include <string>

TEST(CTimeSpan, BeginsEmpty) {
    EXPECT_EQ(CTimeSpan().GetTimeSpan(), 0);
}

TEST(CTimeSpan, IsMadeFromParts) {
    const CTimeSpan span(2, 3, 4, 5);
    EXPECT_EQ(span.GetTotalSeconds(), 2 * 86400 + 3 * 3600 + 4 * 60 + 5);
    EXPECT_EQ(span.GetTotalMinutes(), 2 * 1440 + 3 * 60 + 4);
    EXPECT_EQ(span.GetTotalHours(), 51);
    EXPECT_EQ(span.GetDays(), 2);
    EXPECT_EQ(span.GetHours(), 3);
    EXPECT_EQ(span.GetMinutes(), 4);
    EXPECT_EQ(span.GetSeconds(), 5);
}

TEST(CTimeSpan, PartsBeyondTheirBoundsAreCarried) {
    const CTimeSpan span(0, 0, 0, 90061);
    EXPECT_EQ(span.GetDays(), 1);
    EXPECT_EQ(span.GetHours(), 1);
    EXPECT_EQ(span.GetMinutes(), 1);
    EXPECT_EQ(span.GetSeconds(), 1);
}

TEST(CTimeSpan, LargestDaysDoNotOverflow) {
    EXPECT_EQ(CTimeSpan(2147483647, 0, 0, 0).GetDays(), 2147483647);
}

TEST(CTimeSpan, PartsOfANegativeSpanAreNegative) {
    const CTimeSpan span(-90061);
    EXPECT_EQ(span.GetDays(), -1);
    EXPECT_EQ(span.GetHours(), -1);
    EXPECT_EQ(span.GetMinutes(), -1);
    EXPECT_EQ(span.GetSeconds(), -1);
}

TEST(CTimeSpan, AddsSubtractsAndCompares) {
    const CTimeSpan a(100);
    const CTimeSpan b(30);
    EXPECT_EQ(a + b, CTimeSpan(130));
    EXPECT_EQ(b - a, CTimeSpan(-70));
    CTimeSpan c = a;
    c += b;
    c -= CTimeSpan(1);
    EXPECT_EQ(c, CTimeSpan(129));
    EXPECT_LT(b, a);
    EXPECT_GE(a, a);
    EXPECT_NE(a, b);
}

TEST(CTimeSpan, FormatWritesTheParts) {
    const CTimeSpan span(12, 3, 4, 5);
    EXPECT_STREQ(span.Format("%D days, %H:%M:%S"), "12 days, 03:04:05");
    EXPECT_STREQ(span.Format("100%% of %S"), "100% of 05");
    EXPECT_STREQ(span.Format(""), "");
    EXPECT_STREQ(span.Format(nullptr), "");
}

TEST(CTimeSpan, FormatOfAnythingElseRaisesInvalidArgument) {
    EXPECT_THROW(CTimeSpan().Format("%Y"), CInvalidArgException*);
    EXPECT_THROW(CTimeSpan().Format("end %"), CInvalidArgException*);
}

TEST(CTimeSpan, IsDumpedInWords) {
    CMemFile file;
    CDumpContext dc(&file);
    dc << CTimeSpan(1, 2, 3, 4);
    std::string text(file.GetLength(), 0);
    file.SeekToBegin();
    file.Read(text.data(), static_cast<UINT>(text.size()));
    EXPECT_EQ(text, "CTimeSpan(1 days, 2 hours, 3 minutes and 4 seconds)");
}
