#include <zt/persist/Cursor_test.hpp>

namespace ZT {
namespace {

struct PCExBasePush : CursorTest {};

TEST_F(PCExBasePush, PushIntWritesDecimal) {
    Store();
    const IXMLDOMElementPtr element = cursor->PushInt("I", -3);
    EXPECT_EQ(element->nodeName(), "I");
    EXPECT_EQ(Xml(), "<R><I>-3</I></R>");
    EXPECT_EQ(cursor->GetStackPosn(), 1) << "the element is closed again";
}

TEST_F(PCExBasePush, PushHexWritesTheLow32BitsInEightDigits) {
    Store();
    EXPECT_EQ(cursor->PushHex("H", 0x123456789)->text(), "0x23456789");
    EXPECT_EQ(cursor->PushHex("H", 0xFF00)->text(), "0x0000ff00");
    EXPECT_EQ(cursor->PushHex("H", 0xABCDEF0100000000)->text(), "0x00000000");
    EXPECT_EQ(cursor->PushHex("H", ~uint64{0})->text(), "0xffffffff");
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBasePush, PushBoolWritesOneDigitAndSaysThatTheElementWasMade) {
    Store();
    EXPECT_TRUE(cursor->PushBool("B", true));
    EXPECT_TRUE(cursor->PushBool("B", false));
    EXPECT_EQ(Xml(), "<R><B>1</B><B>0</B></R>");
}

TEST_F(PCExBasePush, PushStringWritesTheText) {
    Store();
    EXPECT_EQ(cursor->PushString("S", "a <b> & \"c\" \xC3\xA4")->text(), "a <b> & \"c\" \xC3\xA4");
    EXPECT_EQ(cursor->PushString("S", " \t ")->text(), " \t ");
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBasePush, AnEmptyStringMakesAnElementWithoutAText) {
    Store();
    const IXMLDOMElementPtr element = cursor->PushString("S", CString());
    ASSERT_TRUE(element);
    EXPECT_FALSE(element->firstChild());
    EXPECT_EQ(Xml(), "<R><S/></R>");
}

TEST_F(PCExBasePush, RowsOfNumbersAreOneElementEach) {
    Store();
    const double doubles[] = {1, 0.5, 1e6};
    const float floats[] = {0.5f, 2};
    const int ints[] = {-3, 4};
    const unsigned char bytes[] = {255, 0};
    EXPECT_EQ(cursor->PushData("D", doubles, 3)->nodeName(), "D");
    EXPECT_EQ(cursor->PushDataFloat("F", floats, 2)->nodeName(), "F");
    EXPECT_EQ(cursor->PushDataInt("I", ints, 2)->nodeName(), "I");
    EXPECT_EQ(cursor->PushDataByte("B", bytes, 2)->nodeName(), "B");
    EXPECT_EQ(Xml(), "<R><D>1 0.5 1e+06</D><F>0.5 2</F><I>-3 4</I><B>255 0</B></R>");
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBasePush, NoValuesLeaveNoTrace) {
    Store(true);
    const double d = 1;
    const float f = 1;
    const int i = 1;
    const unsigned char b = 1;
    EXPECT_FALSE(cursor->PushData("X", nullptr, 4));
    EXPECT_FALSE(cursor->PushData("X", &d, 0));
    EXPECT_FALSE(cursor->PushDataFloat("X", nullptr, 4));
    EXPECT_FALSE(cursor->PushDataFloat("X", &f, 0));
    EXPECT_FALSE(cursor->PushDataInt("X", nullptr, 4));
    EXPECT_FALSE(cursor->PushDataInt("X", &i, 0));
    EXPECT_FALSE(cursor->PushDataByte("X", nullptr, 4));
    EXPECT_FALSE(cursor->PushDataByte("X", &b, 0));
    EXPECT_EQ(Xml(), "<R/>");
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBasePush, AValueAndItsClosingTagStayOnOneLine) {
    Store(true);
    cursor->PushInt("I", 5);
    cursor->PushString("S", "");
    EXPECT_EQ(Xml(), "<R>\n\t<I>5</I>\n\t<S/></R>");
    EXPECT_EQ(cursor->m_nTabs, 1);
}

TEST_F(PCExBasePush, ValuesArePushedWhateverTheDirection) {
    Load("<R/>", kNeither);
    cursor->PushInt("I", 5);
    EXPECT_EQ(Xml(), "<R><I>5</I></R>");
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBasePush, OnAnEmptyStackTheElementStaysUnattached) {
    NewDocument();
    Start(kStoring);
    const IXMLDOMElementPtr element = cursor->PushInt("I", 5);
    EXPECT_EQ(Xml(element), "<I>5</I>");
    EXPECT_FALSE(element->parentNode());
    EXPECT_EQ(cursor->GetStackPosn(), 0);
}

TEST_F(PCExBasePush, WithoutADocumentThePointerFailureIsRaised) {
    pc.m_mode = kStoring;
    PCExBase bare;
    bare.m_pPC = &pc;
    const double d = 1;
    EXPECT_EQ(Failure([&] { bare.PushInt("I", 1); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PushHex("I", 1); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PushBool("I", true); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PushString("I", "1"); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PushData("I", &d, 1); }), kPointerFailure);
    EXPECT_FALSE(bare.PushData("I", &d, 0)) << "which needs no document";
}

TEST_F(PCExBasePush, AValueWhoseTextCannotBeWrittenStaysOnTheStack) {
    Store();
    EXPECT_EQ(Failure([&] { cursor->PushString("S", "\x01"); }), kArgumentFailure);
    EXPECT_EQ(cursor->GetStackPosn(), 2);
    EXPECT_EQ(cursor->GetCurElem()->nodeName(), "S");
    EXPECT_EQ(Failure([&] { cursor->PushString("T", CString("a\0b", 3)); }), kArgumentFailure);
    EXPECT_EQ(cursor->GetStackPosn(), 3);
}

TEST_F(PCExBasePush, AValueWhoseTextCannotBeWrittenKeepsTheLevelItRaised) {
    Store(true);
    EXPECT_EQ(Failure([&] { cursor->PushString("S", "\x01"); }), kArgumentFailure);
    EXPECT_EQ(cursor->GetCurElem()->nodeName(), "S");
    EXPECT_EQ(cursor->m_nTabs, 2);
    EXPECT_EQ(Xml(), "<R>\n\t<S/></R>");
}

}  // namespace
}  // namespace ZT
