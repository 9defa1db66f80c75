// Records of a few named values as text.

#include <zt/persist/Xml.h>

#include <gtest/gtest.h>
#include <platform/base/ResultCodes.h>
#include <platform/object/COleException.h>
#include <rapidcheck.h>
#include <tests/TimeZone.h>
#include <zt/frame/PwException.h>

#include <cstddef>
#include <string>
#include <type_traits>

namespace ZT {
namespace {

using testing_support::TimeZone;

/// The text of the library's exception that `work` raises; empty if it raises none.
template <class Work>
std::string Message(Work work) {
    try {
        work();
    } catch (PwException* e) {
        const std::string message = e->m_szMessage;
        e->Delete();
        return message;
    }
    return {};
}

/// The result with which `work` fails; 0 if it does not.
template <class Work>
HRESULT Failure(Work work) {
    try {
        work();
    } catch (COleException* e) {
        const HRESULT result = e->m_sc;
        e->Delete();
        return result;
    }
    return S_OK;
}

/// A fragment with one element "a".
Xml Content(const std::string& value) {
    return Xml(("\t<a>" + value + "</a>\n").c_str());
}

// Making.

TEST(XmlRecord, HoldsItsTextAlone) {
    EXPECT_EQ(offsetof(Xml, m_strText), 0u);
    EXPECT_EQ(sizeof(Xml), sizeof(CString));
    EXPECT_FALSE(std::is_polymorphic_v<Xml>);
}

TEST(XmlRecord, IsMadeOfAnyText) {
    EXPECT_EQ(Xml().m_strText, "");
    EXPECT_EQ(Xml("no <xml").m_strText, "no <xml");
    const CString text("text");
    const Xml made(text);
    const Xml copy(made);
    Xml assigned("other");
    assigned = made;
    EXPECT_EQ(made.m_strText, "text");
    EXPECT_EQ(copy.m_strText, "text");
    EXPECT_EQ(assigned.m_strText, "text");
}

// Adding.

TEST(XmlRecord, AnElementIsALineOfItsOwn) {
    Xml xml;
    xml.AddElement("a", CString("x y"));
    EXPECT_EQ(xml.m_strText, "\t<a>x y</a>\n");
    xml.AddElement("b", CString());
    EXPECT_EQ(xml.m_strText, "\t<a>x y</a>\n\t<b></b>\n");
}

TEST(XmlRecord, IntegersAreDecimal) {
    Xml xml;
    xml.AddInt("a", 5);
    EXPECT_EQ(xml.m_strText, "\t<a>5</a>\n");
    xml.AddInt("b", -12);
    xml.AddInt("c", -2147483647 - 1);
    EXPECT_EQ(xml.m_strText, "\t<a>5</a>\n\t<b>-12</b>\n\t<c>-2147483648</c>\n");
}

TEST(XmlRecord, TruthIsALetter) {
    Xml xml;
    xml.AddBool("yes", true);
    xml.AddBool("no", false);
    EXPECT_EQ(xml.m_strText, "\t<yes>t</yes>\n\t<no>f</no>\n");
}

TEST(XmlRecord, DatesAreEightDigitsOfTheLocalDate) {
    const TimeZone zone(testing_support::kCentralEurope);
    Xml xml;
    xml.AddDate("a", CTime(2024, 1, 5, 0, 0, 0));
    xml.AddDate("b", CTime(2024, 10, 31, 23, 59, 59));
    xml.AddDate("c", CTime(2024, 9, 10, 0, 0, 0));
    EXPECT_EQ(xml.m_strText, "\t<a>20240105</a>\n\t<b>20241031</b>\n\t<c>20240910</c>\n");
}

TEST(XmlRecord, ATimeOutsideTheCalendarHasZerosForItsParts) {
    for (const CTime time : {CTime(-1), CTime(LONGLONG{1} << 40)}) {
        Xml xml;
        xml.AddDate("a", time);
        EXPECT_EQ(xml.m_strText, "\t<a>00000</a>\n");
    }
}

TEST(XmlRecord, ABlockStandsBehindItsTagAndIsIndented) {
    Xml inner;
    inner.AddInt("a", 1);
    inner.AddInt("b", 2);
    Xml outer;
    outer.AddBlock("block", inner);
    EXPECT_EQ(inner.m_strText, "\t\t<a>1</a>\n\t\t<b>2</b>\n");
    EXPECT_EQ(outer.m_strText, "\t<block>\t\t<a>1</a>\n\t\t<b>2</b>\n</block>\n");
    outer.AddBlock("again", inner);
    EXPECT_EQ(inner.m_strText, "\t\t\t<a>1</a>\n\t\t\t<b>2</b>\n");
    EXPECT_EQ(outer.m_strText,
              "\t<block>\t\t<a>1</a>\n\t\t<b>2</b>\n</block>\n"
              "\t<again>\t\t\t<a>1</a>\n\t\t\t<b>2</b>\n</again>\n");
}

TEST(XmlRecord, AnEmptyBlockIsATab) {
    Xml inner;
    Xml outer;
    outer.AddBlock("b", inner);
    EXPECT_EQ(outer.m_strText, "\t<b>\t</b>\n");
    EXPECT_EQ(inner.m_strText, "\t");
}

TEST(XmlRecord, ABlockCanBeAddedToItself) {
    Xml xml;
    xml.AddInt("a", 1);
    xml.AddBlock("b", xml);
    EXPECT_EQ(xml.m_strText, "\t\t<a>1</a>\n\t<b>\t\t<a>1</a>\n</b>\n");
}

TEST(XmlRecord, TabIndentsEveryLine) {
    Xml xml("a\n\nb\n");
    xml.Tab();
    EXPECT_EQ(xml.m_strText, "\ta\n\t\n\tb\n");
    Xml open("a\nb");
    open.Tab();
    EXPECT_EQ(open.m_strText, "\ta\n\tb");
}

TEST(XmlRecord, NothingIsEscaped) {
    Xml xml;
    xml.AddElement("a", CString("1 < 2 & \"3\" > 4"));
    EXPECT_EQ(xml.m_strText, "\t<a>1 < 2 & \"3\" > 4</a>\n");
    EXPECT_EQ(xml.ReadElement("a").m_strText, "1 < 2 & \"3\" > 4");
    EXPECT_FALSE(xml.ReadElement("a").IsData());
}

TEST(XmlRecord, DataIsTextWithoutElements) {
    EXPECT_TRUE(Xml().IsData());
    EXPECT_TRUE(Xml("a > b & c").IsData());
    EXPECT_FALSE(Xml("<").IsData());
    EXPECT_FALSE(Xml("a<b").IsData());
}

// Elements.

TEST(XmlRecord, AnElementIsWhatStandsBetweenItsTags) {
    const Xml xml("\t<a>1</a>\n\t<b>two</b>\n\t<a>3</a>\n");
    Xml out("before");
    EXPECT_TRUE(xml.ReadElement("b", out));
    EXPECT_EQ(out.m_strText, "two");
    EXPECT_TRUE(xml.ReadElement("a", out));
    EXPECT_EQ(out.m_strText, "1");
    EXPECT_EQ(xml.ReadElement("a").m_strText, "1");
}

TEST(XmlRecord, WithoutOneOfItsTagsThereIsNoElement) {
    for (const char* const text : {"", "<a>1", "1</a>", "<A>1</A>", "<ab>1</ab>", "<a >1</a>"}) {
        Xml out("before");
        EXPECT_FALSE(Xml(text).ReadElement("a", out)) << text;
        EXPECT_EQ(out.m_strText, "before");
        EXPECT_EQ(Xml(text).ReadElement("a").m_strText, "");
    }
}

TEST(XmlRecord, AnElementInItsLikeEndsThere) {
    EXPECT_EQ(Xml("<a>1<a>2</a>3</a>").ReadElement("a").m_strText, "1<a>2");
}

TEST(XmlRecord, AClosingTagBeforeTheOpeningOneGivesNothing) {
    Xml out("before");
    EXPECT_TRUE(Xml("</a><a>1</a>").ReadElement("a", out));
    EXPECT_EQ(out.m_strText, "");
    out = Xml("before");
    EXPECT_TRUE(Xml("x</a> <a>").ReadElement("a", out));
    EXPECT_EQ(out.m_strText, "");
}

TEST(XmlRecord, AnElementCanReplaceTheFragment) {
    Xml xml("<a>1<b>2</b>3</a>");
    EXPECT_TRUE(xml.ReadElement("a", xml));
    EXPECT_EQ(xml.m_strText, "1<b>2</b>3");
}

TEST(XmlRecord, BlocksAreReadAsFragments) {
    Xml inner;
    inner.AddInt("n", 7);
    Xml outer;
    outer.AddInt("n", 1);
    outer.AddBlock("block", inner);
    EXPECT_EQ(outer.ReadElement("block").m_strText, "\t\t<n>7</n>\n");
    EXPECT_EQ(outer.ReadElement("block").ReadInt("n"), 7);
    EXPECT_EQ(outer.ReadString("block"), "");
    EXPECT_EQ(outer.ReadInt("n"), 1);
}

// Values.

TEST(XmlRecord, AStringIsTheValue) {
    EXPECT_EQ(Content(" x > y & z ").ReadString("a"), " x > y & z ");
    EXPECT_EQ(Content("").ReadString("a"), "");
    EXPECT_EQ(Content("1").ReadString("b"), "");
    EXPECT_EQ(Content("x<b>1</b>").ReadString("a"), "");
}

TEST(XmlRecord, AnIntegerIsWhatTheValueBeginsWith) {
    const struct {
        const char* value;
        int expected;
    } rows[] = {{"5", 5},
                {"-12", -12},
                {"12x", 12},
                {" \t7 8", 7},
                {"+3", 3},
                {"007", 7},
                {"1.9", 1},
                {"", 0},
                {"1<b/>", 0},
                {"x<b/>", 0},
                {"-2147483648", -2147483647 - 1}};
    for (const auto& row : rows)
        EXPECT_EQ(Content(row.value).ReadInt("a"), row.expected) << row.value;
    EXPECT_EQ(Content("5").ReadInt("b"), 0);
}

TEST(XmlRecord, AValueThatIsNoIntegerIsRaised) {
    for (const char* const value : {"x", "x12", " ", "-", "+-1", "."})
        EXPECT_EQ(Message([&] { Content(value).ReadInt("a"); }), "Bad int in xml string") << value;
}

TEST(XmlRecord, TruthBeginsWithALetter) {
    for (const char* const value : {"t", "T", "true", "TRUE", "to be"})
        EXPECT_TRUE(Content(value).ReadBool("a")) << value;
    for (const char* const value : {"f", "F", "1", "", " t", "yes", "t<b/>"})
        EXPECT_FALSE(Content(value).ReadBool("a")) << value;
    EXPECT_FALSE(Content("t").ReadBool("b"));
}

TEST(XmlRecord, ADateIsMidnightOfTheLocalDay) {
    const TimeZone zone(testing_support::kCentralEurope);
    EXPECT_EQ(Content("20240105").ReadDate("a"), CTime(2024, 1, 5, 0, 0, 0));
    EXPECT_EQ(Content("20240105").ReadDate("a").GetTime(), 1704409200);
    // Daylight saving is in force by the rules of the zone.
    EXPECT_EQ(Content("20240705").ReadDate("a").GetTime(), 1720130400);
}

TEST(XmlRecord, AValueWithoutTheFormOfADateIsTheZeroTime) {
    for (const char* const value : {"", "2024011", "202401055", "2024x105", "202401x5", "x0240105",
                                    "202401 x", "20240 <b", "????0105"})
        EXPECT_EQ(Content(value).ReadDate("a"), CTime()) << value;
    EXPECT_EQ(Content("20240105").ReadDate("b"), CTime());
}

TEST(XmlRecord, ADateThatCannotBeIsRaised) {
    for (const char* const value : {"20241301", "20240001", "20240100", "20240132", "19691230",
                                    "19691131", "19700001", "00010101", "2024-101", "202401-1"})
        EXPECT_EQ(Failure([&] { Content(value).ReadDate("a"); }), E_FAIL) << value;
}

TEST(XmlRecord, ADateOutsideTheCalendarIsRaised) {
    const TimeZone zone("UTC0");
    EXPECT_EQ(Content("19700101").ReadDate("a").GetTime(), 0);
    EXPECT_EQ(Content("30001231").ReadDate("a").GetTime(), 32535129600);
    for (const char* const value : {"19691231", "30010101", "99990101", "-0010101"})
        EXPECT_EQ(Failure([&] { Content(value).ReadDate("a"); }), E_INVALIDARG) << value;
}

TEST(XmlRecord, TheCalendarBeginsAndEndsInUtcWhateverTheZone) {
    {
        const TimeZone east(testing_support::kCentralEurope);
        EXPECT_EQ(Failure([] { Content("19700101").ReadDate("a"); }), E_INVALIDARG);
        EXPECT_EQ(Content("19700102").ReadDate("a").GetTime(), 82800);
        EXPECT_EQ(Content("30010101").ReadDate("a").GetTime(), 32535212400);
        EXPECT_EQ(Failure([] { Content("30010102").ReadDate("a"); }), E_INVALIDARG);
    }
    const TimeZone west("EST5");
    EXPECT_EQ(Content("19700101").ReadDate("a").GetTime(), 18000);
    EXPECT_EQ(Content("30001231").ReadDate("a").GetTime(), 32535147600);
    EXPECT_EQ(Failure([] { Content("30010101").ReadDate("a"); }), E_INVALIDARG);
}

TEST(XmlRecord, TheZeroTimeComesBackInUtcAlone) {
    const struct {
        const char* zone;
        const char* text;
        HRESULT failure;
    } rows[] = {
        {"UTC0", "19700101", S_OK},
        {"EST5", "19691231", E_INVALIDARG},
        {testing_support::kCentralEurope, "19700101", E_INVALIDARG},
    };
    for (const auto& row : rows) {
        const TimeZone zone(row.zone);
        Xml xml;
        xml.AddDate("a", CTime(0));
        EXPECT_EQ(xml.m_strText, ("\t<a>" + std::string(row.text) + "</a>\n").c_str());
        EXPECT_EQ(Failure([&] { EXPECT_EQ(xml.ReadDate("a"), CTime()); }), row.failure) << row.zone;
    }
}

TEST(XmlRecord, TheLastDayOf1969IsTakenWhereItIsAlready1970) {
    const TimeZone zone("FAR24:30");
    EXPECT_EQ(Content("19691231").ReadDate("a").GetTime(), 1800);
    EXPECT_EQ(Failure([] { Content("19691230").ReadDate("a"); }), E_FAIL);
}

TEST(XmlRecord, DaysAreCarriedOverAsTheConversionTakesThem) {
    const TimeZone zone("UTC0");
    EXPECT_EQ(Content("20240431").ReadDate("a"), CTime(2024, 5, 1, 0, 0, 0));
    EXPECT_EQ(Content("20230229").ReadDate("a"), CTime(2023, 3, 1, 0, 0, 0));
}

TEST(XmlRecord, PartsOfADateMayHaveBlanksAndSigns) {
    const TimeZone zone("UTC0");
    EXPECT_EQ(Content("2024 1+5").ReadDate("a"), CTime(2024, 1, 5, 0, 0, 0));
    EXPECT_EQ(Content("20241x5y").ReadDate("a"), CTime(2024, 1, 5, 0, 0, 0));
}

// Laws.

TEST(XmlRecord, ValuesComeBack) {
    const TimeZone zone("UTC0");
    EXPECT_TRUE(rc::check([](int number, bool truth) {
        const int year = *rc::gen::inRange(1970, 3001);
        const int month = *rc::gen::inRange(1, 13);
        const int day = *rc::gen::inRange(1, 29);
        const CTime date(year, month, day, 0, 0, 0);
        Xml inner;
        inner.AddInt("i", number);
        inner.AddBool("b", truth);
        inner.AddDate("d", date);
        Xml outer;
        outer.AddBlock("block", inner);
        const Xml loaded = outer.ReadElement("block");
        RC_ASSERT(loaded.ReadInt("i") == number);
        RC_ASSERT(loaded.ReadBool("b") == truth);
        RC_ASSERT(loaded.ReadDate("d").GetTime() == date.GetTime());
    }));
}

}  // namespace
}  // namespace ZT
