#include <zt/persist/Cursor_test.hpp>

#include <cmath>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;

struct PCExBaseRead : CursorTest {
    /// What an array of 9s holds after `n` values were read from `text`, and whether the
    /// node came back.
    std::vector<double> Doubles(const std::string& text, ulong n, bool* found = nullptr) {
        Load("<R><X>" + text + "</X></R>");
        std::vector<double> values(4, 9);
        const IXMLDOMNodePtr node = cursor->ReadData("X", values.data(), n, true);
        if (found) *found = static_cast<bool>(node);
        return values;
    }
};

TEST_F(PCExBaseRead, ReadItemGivesTheTextOfTheChildOrOfTheCurrentElement) {
    Load("<R><S>one</S><S>two</S></R>");
    EXPECT_EQ(cursor->ReadItem("S", true), "one");
    EXPECT_EQ(cursor->ReadItem("T", true), "");
    EXPECT_EQ(cursor->ReadItem("S", false), "onetwo");
    EXPECT_EQ(cursor->ReadItem(nullptr, false), "onetwo");
    cursor->m_nChildIndex = 1;
    EXPECT_EQ(cursor->ReadItem("S", true), "two");
    EXPECT_EQ(cursor->m_nChildIndex, 0);
    PCExBase empty(&pc, doc);
    EXPECT_EQ(empty.ReadItem("S", true), "");
    EXPECT_EQ(empty.ReadItem("S", false), "");
}

TEST_F(PCExBaseRead, ReadIntScansTheChildsText) {
    Load(
        "<R><A>12abc</A><B>abc</B><C> \t-7</C><D/><E>4294967295</E><F>99999999999999999999</F>"
        "<G>1.9</G><H>0x10</H></R>");
    int v = 5;
    EXPECT_TRUE(cursor->ReadInt("A", v));
    EXPECT_EQ(v, 12);
    EXPECT_FALSE(cursor->ReadInt("B", v));
    EXPECT_FALSE(cursor->ReadInt("D", v));
    EXPECT_FALSE(cursor->ReadInt("Z", v));
    EXPECT_EQ(v, 12) << "changed only on true";
    EXPECT_TRUE(cursor->ReadInt("C", v));
    EXPECT_EQ(v, -7);
    EXPECT_TRUE(cursor->ReadInt("E", v));
    EXPECT_EQ(v, -1);
    EXPECT_TRUE(cursor->ReadInt("F", v));
    EXPECT_EQ(v, -1) << "the low half of the largest 64-bit number";
    EXPECT_TRUE(cursor->ReadInt("G", v));
    EXPECT_EQ(v, 1);
    EXPECT_TRUE(cursor->ReadInt("H", v));
    EXPECT_EQ(v, 0);
}

TEST_F(PCExBaseRead, ReadIntOfANodeLooksAmongItsChildren) {
    Load("<R><N><A>3</A></N></R>");
    const IXMLDOMNodePtr node = cursor->GetCurElem()->firstChild();
    int v = 0;
    EXPECT_TRUE(PCExBase::ReadInt(node, "A", v));
    EXPECT_EQ(v, 3);
    EXPECT_FALSE(PCExBase::ReadInt(node, "N", v));
    EXPECT_FALSE(PCExBase::ReadInt(node->firstChild(), "A", v));
}

TEST_F(PCExBaseRead, AnyNumberButZeroReadsAsTrue) {
    Load("<R><A>1</A><B>0</B><C>-5</C><D>x</D><E>256</E></R>");
    const IXMLDOMNodePtr node = cursor->GetCurElem();
    for (const char* name : {"A", "C", "E"}) {
        bool v = false;
        EXPECT_TRUE(cursor->ReadBool(name, v) && v) << name;
        v = false;
        EXPECT_TRUE(PCExBase::ReadBool(node, name, v) && v) << name;
    }
    bool v = true;
    EXPECT_TRUE(cursor->ReadBool("B", v));
    EXPECT_FALSE(v);
    v = true;
    EXPECT_FALSE(cursor->ReadBool("D", v));
    EXPECT_FALSE(PCExBase::ReadBool(node, "Z", v));
    EXPECT_TRUE(v) << "changed only on true";
}

TEST_F(PCExBaseRead, ReadBYTETakesTheLow8BitsAndReadDWORDThe32) {
    Load("<R><A>300</A><B>-1</B><C>x</C></R>");
    const IXMLDOMNodePtr node = cursor->GetCurElem();
    unsigned char byte = 9;
    EXPECT_TRUE(PCExBase::ReadBYTE(node, "A", byte));
    EXPECT_EQ(byte, 44);
    EXPECT_TRUE(PCExBase::ReadBYTE(node, "B", byte));
    EXPECT_EQ(byte, 255);
    EXPECT_FALSE(PCExBase::ReadBYTE(node, "C", byte));
    EXPECT_FALSE(PCExBase::ReadBYTE(node, "Z", byte));
    EXPECT_EQ(byte, 255);
    ulong word = 9;
    EXPECT_TRUE(PCExBase::ReadDWORD(node, "A", word));
    EXPECT_EQ(word, 300u);
    EXPECT_TRUE(PCExBase::ReadDWORD(node, "B", word));
    EXPECT_EQ(word, 0xFFFFFFFFu);
    EXPECT_FALSE(PCExBase::ReadDWORD(node, "C", word));
    EXPECT_FALSE(PCExBase::ReadDWORD(node, "Z", word));
    EXPECT_EQ(word, 0xFFFFFFFFu);
}

TEST_F(PCExBaseRead, ANullNodeRaisesThePointerFailure) {
    PCExBase cursorOverNothing;
    int i = 0;
    bool b = false;
    unsigned char byte = 0;
    ulong word = 0;
    double d = 0;
    EXPECT_EQ(Failure([&] { PCExBase::ReadInt(nullptr, "A", i); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { PCExBase::ReadBool(nullptr, "A", b); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { PCExBase::ReadBYTE(nullptr, "A", byte); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { PCExBase::ReadDWORD(nullptr, "A", word); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { cursorOverNothing.ReadData(nullptr, &d, 1); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { cursorOverNothing.ReadData(nullptr, &d, 0); }), kPointerFailure);
}

TEST_F(PCExBaseRead, WithoutACurrentElementNothingIsRead) {
    NewDocument();
    Start(kLoading);
    int i = 5;
    bool b = true;
    double d = 5;
    float f = 5;
    unsigned char byte = 5;
    EXPECT_FALSE(cursor->ReadInt("A", i));
    EXPECT_FALSE(cursor->ReadBool("A", b));
    for (const bool child : {false, true}) {
        EXPECT_FALSE(cursor->ReadData("A", &d, 1, child));
        cursor->ReadDataFloat("A", &f, 1, child);
        cursor->ReadDataInt("A", &i, 1, child);
        cursor->ReadDataByte("A", &byte, 1, child);
    }
    EXPECT_TRUE(i == 5 && b && d == 5 && f == 5 && byte == 5);
}

// The scanning loop.

TEST_F(PCExBaseRead, ReadDataFillsAsManyAsThereAreUpToTheWantedNumber) {
    bool found = false;
    EXPECT_THAT(Doubles("1 2 3 4", 3, &found), ElementsAre(1, 2, 3, 9));
    EXPECT_TRUE(found);
    EXPECT_THAT(Doubles("1 2", 3, &found), ElementsAre(1, 2, 9, 9));
    EXPECT_TRUE(found);
    EXPECT_THAT(Doubles("1 2 x", 3, &found), ElementsAre(1, 2, 9, 9));
    EXPECT_FALSE(found);
    EXPECT_THAT(Doubles("1 2 x", 2, &found), ElementsAre(1, 2, 9, 9));
    EXPECT_TRUE(found) << "what follows the wanted values is not looked at";
}

TEST_F(PCExBaseRead, NoWantedValuesLeaveTheArrayAndGiveTheNode) {
    bool found = false;
    EXPECT_THAT(Doubles("1 2", 0, &found), ElementsAre(9, 9, 9, 9));
    EXPECT_TRUE(found);
    EXPECT_THAT(Doubles("x", 0, &found), ElementsAre(9, 9, 9, 9));
    EXPECT_TRUE(found);
}

TEST_F(PCExBaseRead, AnElementWithoutANumberAtTheStartGivesNothing) {
    bool found = true;
    EXPECT_THAT(Doubles("x 1", 2, &found), ElementsAre(9, 9, 9, 9));
    EXPECT_FALSE(found);
    found = true;
    EXPECT_THAT(Doubles("", 2, &found), ElementsAre(9, 9, 9, 9));
    EXPECT_FALSE(found);
}

TEST_F(PCExBaseRead, OfTwoBlanksTheSecondMakesAValueCountTwice) {
    EXPECT_THAT(Doubles("1  2", 3), ElementsAre(1, 2, 2, 9));
    EXPECT_THAT(Doubles("1   2", 4), ElementsAre(1, 2, 2, 2));
    EXPECT_THAT(Doubles(" 1 2", 4), ElementsAre(1, 1, 2, 9)) << "a blank in front does too";
}

TEST_F(PCExBaseRead, OnlyABlankSeparates) {
    EXPECT_THAT(Doubles("1\t2", 2), ElementsAre(1, 9, 9, 9));
    EXPECT_THAT(Doubles("1\n2 3", 3), ElementsAre(1, 3, 9, 9));
    EXPECT_THAT(Doubles("\t\n1 \n2", 2), ElementsAre(1, 2, 9, 9))
        << "white space in front is skipped";
    EXPECT_THAT(Doubles("1,5 2", 2), ElementsAre(1, 2, 9, 9));
}

TEST_F(PCExBaseRead, ABlankAtTheEndIsAFailedScan) {
    bool found = true;
    EXPECT_THAT(Doubles("1 2 ", 3, &found), ElementsAre(1, 2, 9, 9));
    EXPECT_FALSE(found);
}

TEST_F(PCExBaseRead, UnusualNumbersAreReadAsTheCLibraryReadsThem) {
    EXPECT_THAT(Doubles("1e 0x10 +2.5 1e+06", 4), ElementsAre(1, 16, 2.5, 1e6));
    EXPECT_THAT(Doubles("inf -1e999 1e-999 7", 4), ElementsAre(HUGE_VAL, -HUGE_VAL, 0, 7));
}

TEST_F(PCExBaseRead, TextsOfSeveralNodesCountAsOne) {
    EXPECT_THAT(Doubles("1<!-- 7 --> 2<i> 3</i>4", 4), ElementsAre(1, 2, 34, 9));
    EXPECT_THAT(Doubles("<![CDATA[1 2]]> 3", 4), ElementsAre(1, 2, 3, 9));
}

TEST_F(PCExBaseRead, ALongRunOfBlanksTakesLinearTime) {
    constexpr ulong kCount = 300'000;
    Load("<R><X>1" + std::string(kCount, ' ') + "2</X></R>");
    std::vector<double> values(kCount + 2, 9);
    EXPECT_TRUE(cursor->ReadData("X", values.data(), kCount + 2, true));
    EXPECT_EQ(values[0], 1);
    for (ulong i = 1; i <= kCount; ++i) ASSERT_EQ(values[i], 2) << i;
    EXPECT_EQ(values[kCount + 1], 9);
}

TEST_F(PCExBaseRead, ReadDataOfTheCurrentElementLooksAtNoName) {
    Load("<R>1 2<X>3</X></R>");
    double values[] = {9, 9};
    EXPECT_TRUE(cursor->ReadData("X", values, 2, false) == cursor->GetCurElem());
    EXPECT_THAT(values, ElementsAre(1, 23));
}

TEST_F(PCExBaseRead, ReadDataGivesNothingForANullPointerOrAMissingElement) {
    Load("<R><X>1</X></R>");
    cursor->m_nChildIndex = 3;
    EXPECT_FALSE(cursor->ReadData("X", nullptr, 1, true));
    EXPECT_EQ(cursor->m_nChildIndex, 3) << "there is no look-up";
    cursor->m_nChildIndex = 0;
    double v = 9;
    EXPECT_FALSE(cursor->ReadData("Y", &v, 1, true));
    EXPECT_EQ(v, 9);
}

TEST_F(PCExBaseRead, ReadDataAndReadDataFloatHeedTheChildIndex) {
    Load("<R><X>1</X><X>2</X></R>");
    double d = 9;
    cursor->m_nChildIndex = 1;
    EXPECT_TRUE(cursor->ReadData("X", &d, 1, true));
    EXPECT_EQ(d, 2);
    EXPECT_EQ(cursor->m_nChildIndex, 0);
    float f = 9;
    cursor->m_nChildIndex = 1;
    cursor->ReadDataFloat("X", &f, 1, true);
    EXPECT_EQ(f, 2);
    EXPECT_EQ(cursor->m_nChildIndex, 0);
}

TEST_F(PCExBaseRead, TheOtherReadsDoNotLookAtTheChildIndex) {
    Load("<R><X>1</X><X>2</X></R>");
    cursor->m_nChildIndex = 1;
    const IXMLDOMNodePtr node = cursor->GetCurElem();
    int i = 9;
    bool b = false;
    unsigned char byte = 9;
    ulong word = 9;
    cursor->ReadDataInt("X", &i, 1, true);
    EXPECT_EQ(i, 1);
    i = 9;
    EXPECT_TRUE(cursor->ReadInt("X", i));
    EXPECT_EQ(i, 1);
    cursor->ReadDataByte("X", &byte, 1, true);
    EXPECT_EQ(byte, 1);
    EXPECT_TRUE(cursor->ReadBool("X", b));
    EXPECT_TRUE(PCExBase::ReadBool(node, "X", b));
    i = byte = 9;
    EXPECT_TRUE(PCExBase::ReadInt(node, "X", i));
    EXPECT_EQ(i, 1);
    EXPECT_TRUE(PCExBase::ReadBYTE(node, "X", byte));
    EXPECT_EQ(byte, 1);
    EXPECT_TRUE(PCExBase::ReadDWORD(node, "X", word));
    EXPECT_EQ(word, 1u);
    EXPECT_TRUE(cursor->HasChild("X"));
    EXPECT_EQ(cursor->m_nChildIndex, 1);
}

TEST_F(PCExBaseRead, ReadDataOfANodeStopsSilentlyAtAFailedScan) {
    Load("<R>1 x 3</R>");
    double values[] = {9, 9, 9};
    cursor->ReadData(cursor->GetCurElem(), values, 3);
    EXPECT_THAT(values, ElementsAre(1, 9, 9));
    cursor->ReadData(cursor->GetCurElem(), nullptr, 3);
    cursor->ReadData(nullptr, nullptr, 3);
}

TEST_F(PCExBaseRead, ReadDataFloatRoundsTheTextOnceToAFloat) {
    Load("<R>0.1 16777217 1e39 x</R>");
    float values[] = {9, 9, 9, 9};
    cursor->ReadDataFloat(nullptr, values, 4, false);
    EXPECT_THAT(values, ElementsAre(0.1f, 16777216.0f, HUGE_VALF, 9.0f));
    cursor->ReadDataFloat(nullptr, nullptr, 4, false);
}

TEST_F(PCExBaseRead, ReadDataIntReadsTheChildOrTheCurrentElement) {
    Load("<R>7 -8<X>1 2.5 3</X></R>");
    int values[] = {9, 9, 9};
    cursor->ReadDataInt("X", values, 3, true);
    EXPECT_THAT(values, ElementsAre(1, 2, 3));
    cursor->ReadDataInt("X", values, 1, false);
    EXPECT_THAT(values, ElementsAre(7, 2, 3));
    cursor->ReadDataInt("Y", values, 1, true);
    cursor->ReadDataInt("X", values, 0, true);
    cursor->ReadDataInt("X", nullptr, 1, true);
    EXPECT_THAT(values, ElementsAre(7, 2, 3));
}

TEST_F(PCExBaseRead, ReadDataByteStoresTheLow8Bits) {
    Load("<R><X>300 -1 256 7</X></R>");
    unsigned char values[] = {9, 9, 9, 9};
    cursor->ReadDataByte("X", values, 3, true);
    EXPECT_THAT(values, ElementsAre(44, 255, 0, 9));
    values[0] = 9;
    cursor->ReadDataByte("Y", values, 1, false);
    EXPECT_THAT(values, ElementsAre(44, 255, 0, 9)) << "the text of the root is that of its child";
    cursor->ReadDataByte("X", nullptr, 1, true);
}

TEST_F(PCExBaseRead, GetElementCountCountsTheBlanksBetweenTheEnds) {
    const CString padded(" \t\n\v\f\r1 2\f\v ");
    EXPECT_EQ(PCExBase::GetElementCount(padded), 2);
    EXPECT_EQ(padded.GetLength(), 12) << "only a copy is trimmed";
    EXPECT_EQ(PCExBase::GetElementCount(""), 0);
    EXPECT_EQ(PCExBase::GetElementCount(" \t\n\v\f\r"), 0);
    EXPECT_EQ(PCExBase::GetElementCount("4"), 1);
    EXPECT_EQ(PCExBase::GetElementCount("4 5 6"), 3);
    EXPECT_EQ(PCExBase::GetElementCount("4  5"), 3);
    EXPECT_EQ(PCExBase::GetElementCount("4\t5"), 1);
}

}  // namespace
}  // namespace ZT
