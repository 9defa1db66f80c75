#include <platform/base/DebugOutput.h>
#include <zt/persist/Cursor_test.hpp>

#include <cstddef>
#include <regex>
#include <type_traits>

namespace ZT {
namespace {

TEST(PCExBaseLayout, FieldsStandInTheStatedOrder) {
    using Stack = PCExStack<IXMLDOMElementPtr>;
    EXPECT_FALSE(std::is_polymorphic_v<PCExBase>);
    EXPECT_EQ(offsetof(PCExBase, m_pPC), 0u);
    EXPECT_EQ(offsetof(PCExBase, m_pDoc), sizeof(void*));
    constexpr std::size_t indent = sizeof(void*) + sizeof(IXMLDOMDocumentPtr);
    EXPECT_EQ(offsetof(PCExBase, m_bIndent), indent);
    EXPECT_EQ(offsetof(PCExBase, m_nTabs), indent + 2);
    EXPECT_EQ(offsetof(PCExBase, m_stack), indent + 8);
    constexpr std::size_t flag = indent + 8 + sizeof(Stack);
    EXPECT_EQ(offsetof(PCExBase, m_bFlag), flag);
    EXPECT_EQ(offsetof(PCExBase, m_flags), flag + 8);
    EXPECT_EQ(offsetof(PCExBase, m_nChildIndex), flag + 8 + sizeof(Stack));
    EXPECT_EQ(sizeof(PCExBase), flag + 16 + sizeof(Stack));
}

TEST(PCExBaseLayout, BothStacksHaveOneShape) {
    using Elements = PCExStack<IXMLDOMElementPtr>;
    using Bytes = PCExStack<std::uint8_t>;
    EXPECT_EQ(offsetof(Elements, m_nCount), 0u);
    EXPECT_EQ(offsetof(Elements, m_pData), 8u);
    EXPECT_EQ(offsetof(Elements, m_nCapacity), 16u);
    EXPECT_EQ(offsetof(Elements, m_nMarker), 20u);
    EXPECT_EQ(sizeof(Elements), 24u);
    EXPECT_EQ(offsetof(Bytes, m_nCount), 0u);
    EXPECT_EQ(offsetof(Bytes, m_pData), 8u);
    EXPECT_EQ(offsetof(Bytes, m_nCapacity), 16u);
    EXPECT_EQ(offsetof(Bytes, m_nMarker), 20u);
    EXPECT_EQ(sizeof(Bytes), 24u);
    EXPECT_TRUE((std::is_same_v<decltype(Elements::m_nCount), std::int32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(Elements::m_nMarker), std::uint16_t>));
}

TEST(PCExBaseLayout, FieldsHaveTheStatedTypes) {
    EXPECT_TRUE((std::is_same_v<decltype(PCExBase::m_pPC), PC*>));
    EXPECT_TRUE((std::is_same_v<decltype(PCExBase::m_pDoc), IXMLDOMDocumentPtr>));
    EXPECT_TRUE((std::is_same_v<decltype(PCExBase::m_bIndent), bool>));
    EXPECT_TRUE((std::is_same_v<decltype(PCExBase::m_nTabs), std::uint16_t>));
    EXPECT_TRUE((std::is_same_v<decltype(PCExBase::m_bFlag), bool>));
    EXPECT_TRUE((std::is_same_v<decltype(PCExBase::m_nChildIndex), std::uint16_t>));
}

struct PCExBaseTest : CursorTest {};

// Construction.

TEST_F(PCExBaseTest, AFreshCursorHasEveryDefault) {
    const PCExBase fresh;
    EXPECT_EQ(fresh.m_pPC, nullptr);
    EXPECT_FALSE(fresh.m_pDoc);
    EXPECT_FALSE(fresh.m_bIndent);
    EXPECT_EQ(fresh.m_nTabs, 0);
    EXPECT_EQ(fresh.m_stack.m_nCount, 0);
    EXPECT_EQ(fresh.m_stack.m_pData, nullptr);
    EXPECT_EQ(fresh.m_stack.m_nCapacity, 0);
    EXPECT_EQ(fresh.m_stack.m_nMarker, 1);
    EXPECT_FALSE(fresh.m_bFlag);
    EXPECT_EQ(fresh.m_flags.m_nCount, 0);
    EXPECT_EQ(fresh.m_flags.m_pData, nullptr);
    EXPECT_EQ(fresh.m_flags.m_nCapacity, 0);
    EXPECT_EQ(fresh.m_flags.m_nMarker, 1);
    EXPECT_EQ(fresh.m_nChildIndex, 0);
    EXPECT_EQ(fresh.GetStackPosn(), 0);
    EXPECT_FALSE(fresh.GetCurElem());
}

TEST_F(PCExBaseTest, ACursorKeepsItsContextAndAReferenceToItsDocument) {
    NewDocument();
    PCExBase over(&pc, doc);
    EXPECT_EQ(over.m_pPC, &pc);
    doc = nullptr;
    EXPECT_TRUE(over.m_pDoc->createElement("A"));
    EXPECT_EQ(over.m_nTabs, 0);
    EXPECT_EQ(over.GetStackPosn(), 0);
}

TEST_F(PCExBaseTest, ConstructLeavesTheDocumentAndTheStacks) {
    Store(true);
    cursor->PushFlag(true);
    cursor->m_nChildIndex = 4;
    ASSERT_EQ(cursor->m_nTabs, 1);
    cursor->Construct();
    EXPECT_EQ(cursor->m_pPC, nullptr);
    EXPECT_FALSE(cursor->m_bIndent);
    EXPECT_FALSE(cursor->m_bFlag);
    EXPECT_EQ(cursor->m_nTabs, 0);
    EXPECT_EQ(cursor->m_nChildIndex, 0);
    EXPECT_TRUE(cursor->m_pDoc);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    EXPECT_EQ(cursor->m_flags.m_nCount, 1);
}

TEST_F(PCExBaseTest, ACopyOfACursorThatNeverPushedIsIndependent) {
    NewDocument();
    Start(kStoring);
    cursor->m_bIndent = true;
    cursor->m_nTabs = 3;
    cursor->m_bFlag = true;
    cursor->m_nChildIndex = 9;
    PCExBase copy(*cursor);
    EXPECT_EQ(copy.m_pPC, &pc);
    EXPECT_TRUE(copy.m_bIndent);
    EXPECT_EQ(copy.m_nTabs, 3);
    EXPECT_TRUE(copy.m_bFlag);
    EXPECT_EQ(copy.m_nChildIndex, 9);
    copy.PushElement("A");
    EXPECT_EQ(copy.GetStackPosn(), 1);
    EXPECT_EQ(cursor->GetStackPosn(), 0);
    PCExBase assigned;
    assigned = *cursor;
    EXPECT_EQ(assigned.m_nTabs, 3);
    assigned.PushElement("B");
    EXPECT_EQ(cursor->GetStackPosn(), 0);
}

TEST_F(PCExBaseTest, ACopySharesTheArraysOfBothStacks) {
    Store();
    cursor->PushFlag(true);
    PCExBase copy(*cursor);
    EXPECT_EQ(copy.m_stack.m_pData, cursor->m_stack.m_pData);
    EXPECT_EQ(copy.m_stack.m_nCount, 1);
    EXPECT_EQ(copy.m_flags.m_pData, cursor->m_flags.m_pData);
    // Each destructor would free the arrays.
    copy.m_stack.m_pData = nullptr;
    copy.m_flags.m_pData = nullptr;
}

// Stack.

TEST_F(PCExBaseTest, AFullStackGrowsToOneAndThenToTwiceItsCapacity) {
    NewDocument();
    Start(kStoring);
    const int capacities[] = {1, 2, 4, 4, 8, 8, 8, 8, 16};
    for (int i = 0; i < 9; ++i) {
        cursor->PushElement("A");
        cursor->PushFlag(true);
        EXPECT_EQ(cursor->m_stack.m_nCapacity, capacities[i]) << i;
        EXPECT_EQ(cursor->m_flags.m_nCapacity, capacities[i]) << i;
        EXPECT_EQ(cursor->GetStackPosn(), i + 1);
    }
    for (int i = 0; i < 9; ++i) EXPECT_TRUE(cursor->m_stack.m_pData[i]);
    for (int i = 9; i < 16; ++i) EXPECT_FALSE(cursor->m_stack.m_pData[i]);
}

TEST_F(PCExBaseTest, ACapacityBelowOneGrowsToOne) {
    NewDocument();
    Start(kStoring);
    cursor->m_stack.m_nCapacity = -6;
    cursor->PushElement("A");
    EXPECT_EQ(cursor->m_stack.m_nCapacity, 1);
}

TEST_F(PCExBaseTest, APopKeepsTheReferenceUntilThePlaceIsTakenAgain) {
    Store();
    cursor->PushElement("A");
    cursor->PopElement(true);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    EXPECT_EQ(cursor->m_stack.m_nCapacity, 2);
    ASSERT_TRUE(cursor->m_stack.m_pData[1]);
    EXPECT_EQ(cursor->m_stack.m_pData[1]->nodeName(), "A");
    cursor->PushElement("B");
    EXPECT_EQ(cursor->m_stack.m_pData[1]->nodeName(), "B");
}

TEST_F(PCExBaseTest, TheDirectionIsTheContextsMode) {
    Start(kLoading);
    EXPECT_TRUE(cursor->IsLoading());
    EXPECT_FALSE(cursor->IsStoring());
    pc.m_mode = kStoring;
    EXPECT_FALSE(cursor->IsLoading());
    EXPECT_TRUE(cursor->IsStoring());
    pc.m_mode = kNeither;
    EXPECT_FALSE(cursor->IsLoading());
    EXPECT_FALSE(cursor->IsStoring());
    PC fresh;
    cursor->m_pPC = &fresh;
    EXPECT_FALSE(cursor->IsLoading() || cursor->IsStoring());
}

TEST_F(PCExBaseTest, TheTopOfTheStackIsTheCurrentElement) {
    Store();
    EXPECT_EQ(cursor->GetCurElem()->nodeName(), "R");
    const IXMLDOMElementPtr a = cursor->PushElement("A");
    EXPECT_TRUE(cursor->GetCurElem() == a);
    cursor->Push(IXMLDOMElementPtr());
    EXPECT_FALSE(cursor->GetCurElem());
    EXPECT_EQ(cursor->GetStackPosn(), 3);
}

TEST_F(PCExBaseTest, SetCurElemReplacesTheTop) {
    Store();
    cursor->PushElement("A");
    const IXMLDOMElementPtr other = doc->createElement("B");
    cursor->SetCurElem(other);
    EXPECT_EQ(cursor->GetStackPosn(), 2);
    EXPECT_TRUE(cursor->GetCurElem() == other);
    EXPECT_EQ(Xml(), "<R><A/></R>");
}

TEST_F(PCExBaseTest, SetCurElemDoesNothingOnAnEmptyStack) {
    NewDocument();
    Start(kStoring);
    cursor->SetCurElem(doc->createElement("B"));
    EXPECT_EQ(cursor->GetStackPosn(), 0);
    EXPECT_FALSE(cursor->GetCurElem());
}

TEST_F(PCExBaseTest, SetCurElemTakesAndReplacesANullElement) {
    Store();
    cursor->SetCurElem(IXMLDOMElementPtr());
    EXPECT_FALSE(cursor->GetCurElem());
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    cursor->SetCurElem(doc->documentElement());
    EXPECT_EQ(cursor->GetCurElem()->nodeName(), "R");
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBaseTest, ANullEntryOnTopIsNoCurrentElement) {
    Load("<R><A>1</A></R>");
    cursor->Push(IXMLDOMElementPtr());
    EXPECT_FALSE(cursor->HasChild("A"));
    EXPECT_EQ(cursor->GetChildCount("A"), 0);
    EXPECT_FALSE(cursor->ReadItemElement("A", true));
    EXPECT_FALSE(cursor->ReadItemElement("A", false));
    int i = 5;
    EXPECT_FALSE(cursor->ReadInt("A", i));
    cursor->ReadDataInt("A", &i, 1, true);
    uint64 word = 5;
    cursor->PersistDWORD("A", word, false);
    int* p = &i;
    ulong n = 7;
    cursor->PersistDataIntAuto("A", p, n, true);
    EXPECT_TRUE(i == 5 && word == 5 && p == &i && n == 7);
    const IXMLDOMElementPtr element = cursor->PushElement("B");
    EXPECT_FALSE(element->parentNode());
    EXPECT_EQ(cursor->GetStackPosn(), 3);
}

// Opening and closing.

TEST_F(PCExBaseTest, PushAttachesNothing) {
    Store();
    cursor->Push(doc->createElement("A"));
    EXPECT_EQ(cursor->GetStackPosn(), 2);
    EXPECT_EQ(Xml(), "<R/>");
}

TEST_F(PCExBaseTest, PushTakesANullElementAndRaisesTheLevel) {
    Store(true);
    cursor->Push(IXMLDOMElementPtr());
    EXPECT_EQ(cursor->GetStackPosn(), 2);
    EXPECT_EQ(cursor->m_nTabs, 2);
}

TEST_F(PCExBaseTest, PushIgnoresANullNode) {
    Store(true);
    cursor->Push(IXMLDOMNodePtr());
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    EXPECT_EQ(cursor->m_nTabs, 1);
}

TEST_F(PCExBaseTest, PushTakesAnElementNode) {
    Store(true);
    const IXMLDOMNodePtr node = doc->createElement("A");
    cursor->Push(node);
    EXPECT_EQ(cursor->GetCurElem()->nodeName(), "A");
    EXPECT_EQ(cursor->m_nTabs, 2);
}

TEST_F(PCExBaseTest, PushTakesANodeThatIsNoElementAsANullElement) {
    Store(true);
    const IXMLDOMNodePtr text = doc->createTextNode("text");
    cursor->Push(text);
    EXPECT_EQ(cursor->GetStackPosn(), 2);
    EXPECT_FALSE(cursor->GetCurElem());
    EXPECT_EQ(cursor->m_nTabs, 2);
}

TEST_F(PCExBaseTest, PushRaisesTheLevelOnlyWhenStoringWithIndentation) {
    for (const Mode mode : {kNeither, kLoading, kStoring})
        for (const bool indent : {false, true}) {
            NewDocument();
            Start(mode);
            cursor->m_bIndent = indent;
            cursor->Push(doc->createElement("A"));
            EXPECT_EQ(cursor->m_nTabs, mode == kStoring && indent ? 1 : 0) << mode << indent;
        }
}

TEST_F(PCExBaseTest, PushElementAppendsAnElementAndPushesIt) {
    Store();
    const IXMLDOMElementPtr element = doc->createElement("A");
    cursor->PushElement(element);
    EXPECT_TRUE(cursor->GetCurElem() == element);
    EXPECT_EQ(Xml(), "<R><A/></R>");
}

TEST_F(PCExBaseTest, PushElementMakesAppendsAndPushesByName) {
    Store();
    const IXMLDOMElementPtr element = cursor->PushElement("A");
    EXPECT_TRUE(cursor->GetCurElem() == element);
    cursor->PushElement("B");
    EXPECT_EQ(cursor->GetStackPosn(), 3);
    EXPECT_EQ(Xml(), "<R><A><B/></A></R>");
}

TEST_F(PCExBaseTest, PushElementOnAnEmptyStackLeavesTheElementUnattached) {
    NewDocument();
    Start(kStoring);
    cursor->m_bIndent = true;
    const IXMLDOMElementPtr root = cursor->PushElement("R");
    ASSERT_TRUE(root);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    EXPECT_EQ(cursor->m_nTabs, 1);
    EXPECT_FALSE(doc->documentElement());
    EXPECT_EQ(Xml(root), "<R/>");
}

TEST_F(PCExBaseTest, PushElementWithoutADocumentRaisesThePointerFailure) {
    pc.m_mode = kStoring;
    PCExBase bare;
    bare.m_pPC = &pc;
    EXPECT_EQ(Failure([&] { bare.PushElement("A"); }), kPointerFailure);
    EXPECT_EQ(Failure([&] { bare.PersistElement("A", true); }), kPointerFailure);
    EXPECT_EQ(bare.GetStackPosn(), 0);
}

TEST_F(PCExBaseTest, PushElementOfATagThatIsNoNameRaisesAndLeavesTheStack) {
    Store(true);
    for (const char* name : {"", "1a", "a b", "<", static_cast<const char*>(nullptr)})
        EXPECT_EQ(Failure([&] { cursor->PushElement(name); }), kArgumentFailure);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    EXPECT_EQ(cursor->m_nTabs, 1);
    EXPECT_EQ(Xml(), "<R/>");
}

TEST_F(PCExBaseTest, PopElementOnAnEmptyStackLeavesItAndLowersTheLevelWhenStoring) {
    NewDocument();
    Start(kStoring);
    cursor->m_bIndent = true;
    cursor->m_nTabs = 2;
    cursor->PopElement(false);
    EXPECT_EQ(cursor->GetStackPosn(), 0);
    EXPECT_EQ(cursor->m_nTabs, 1);
    pc.m_mode = kLoading;
    cursor->PopElement(false);
    EXPECT_EQ(cursor->GetStackPosn(), 0);
    EXPECT_EQ(cursor->m_nTabs, 1);
}

TEST_F(PCExBaseTest, PopElementLeavesANullEntryOnTopButLowersTheLevel) {
    Store(true);
    cursor->Push(IXMLDOMElementPtr());
    cursor->PopElement(false);
    EXPECT_EQ(cursor->GetStackPosn(), 2);
    EXPECT_EQ(cursor->m_nTabs, 1);
    EXPECT_EQ(Xml(), "<R/>");
}

TEST_F(PCExBaseTest, PopElementNeverLowersTheLevelBelowNothing) {
    Store(true);
    cursor->m_nTabs = 0;
    cursor->PopElement(true);
    EXPECT_EQ(cursor->m_nTabs, 0);
    EXPECT_EQ(cursor->GetStackPosn(), 0);
}

TEST_F(PCExBaseTest, PopElementGivesAContainersClosingTagALineOfItsOwn) {
    Store(true);
    cursor->PopElement(false);
    EXPECT_EQ(Xml(), "<R>\n</R>");
    Store(true);
    cursor->PopElement(true);
    EXPECT_EQ(Xml(), "<R/>");
    Store(false);
    cursor->PopElement(false);
    EXPECT_EQ(Xml(), "<R/>");
}

TEST_F(PCExBaseTest, LoadingNeverTouchesTheLevel) {
    Load("<R><A/></R>");
    cursor->m_bIndent = true;
    cursor->m_nTabs = 5;
    ASSERT_TRUE(cursor->PersistElement("A", true));
    EXPECT_EQ(cursor->m_nTabs, 5);
    cursor->PopElement(false);
    EXPECT_EQ(cursor->m_nTabs, 5);
    EXPECT_EQ(Xml(), "<R><A/></R>");
}

TEST_F(PCExBaseTest, PopIfLoadingAndPopIfStoringPopInTheirDirectionAlone) {
    for (const Mode mode : {kNeither, kLoading, kStoring}) {
        Load("<R/>", mode);
        cursor->PopIfLoading();
        EXPECT_EQ(cursor->GetStackPosn(), mode == kLoading ? 0 : 1) << mode;
        Load("<R/>", mode);
        cursor->PopIfStoring();
        EXPECT_EQ(cursor->GetStackPosn(), mode == kStoring ? 0 : 1) << mode;
    }
}

TEST_F(PCExBaseTest, PopIfStoringGivesTheClosingTagItsLine) {
    Store(true);
    cursor->PopIfStoring();
    EXPECT_EQ(Xml(), "<R>\n</R>");
}

// PersistElement.

TEST_F(PCExBaseTest, PersistElementMakesAChildWhenStoringWhateverTheForm) {
    Store();
    cursor->m_nChildIndex = 7;
    EXPECT_EQ(cursor->PersistElement("R", false)->nodeName(), "R");
    EXPECT_EQ(cursor->GetStackPosn(), 2);
    cursor->PersistElement("A", true);
    EXPECT_EQ(cursor->GetStackPosn(), 3);
    EXPECT_EQ(cursor->m_nChildIndex, 7);
    EXPECT_EQ(Xml(), "<R><R><A/></R></R>");
}

TEST_F(PCExBaseTest, PersistElementWithoutACurrentElementLoadsNothing) {
    NewDocument();
    Start(kLoading);
    cursor->m_nChildIndex = 1;
    EXPECT_FALSE(cursor->PersistElement("A", true));
    EXPECT_FALSE(cursor->PersistElement("A", false));
    cursor->Push(IXMLDOMElementPtr());
    EXPECT_FALSE(cursor->PersistElement("A", true));
    EXPECT_EQ(cursor->m_nChildIndex, 1);
}

TEST_F(PCExBaseTest, PersistElementChecksThatTheCallerStandsOnTheElement) {
    Load("<R><A/></R>");
    cursor->m_nChildIndex = 2;
    EXPECT_TRUE(cursor->PersistElement("R", false) == cursor->GetCurElem());
    EXPECT_FALSE(cursor->PersistElement("r", false));
    EXPECT_FALSE(cursor->PersistElement("A", false));
    EXPECT_FALSE(cursor->PersistElement("", false));
    EXPECT_FALSE(cursor->PersistElement(nullptr, false));
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    EXPECT_EQ(cursor->m_nChildIndex, 2);
}

TEST_F(PCExBaseTest, PersistElementOpensTheFirstChildOfTheName) {
    Load("<R>text<B/><a/><A n='1'/><A n='2'/></R>");
    const IXMLDOMElementPtr element = cursor->PersistElement("A", true);
    ASSERT_TRUE(element);
    EXPECT_EQ(PCExBase::GetAttribute(element, "n"), "1");
    EXPECT_TRUE(cursor->GetCurElem() == element);
    EXPECT_EQ(cursor->GetStackPosn(), 2);
}

TEST_F(PCExBaseTest, PersistElementPushesNothingWhenThereIsNoSuchChild) {
    Load("<R><B><A/></B></R>");
    EXPECT_FALSE(cursor->PersistElement("A", true));
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBaseTest, PersistElementInTheNeitherStateLoads) {
    Load("<R><A/></R>", kNeither);
    EXPECT_TRUE(cursor->PersistElement("A", true));
    EXPECT_EQ(cursor->GetStackPosn(), 2);
    cursor->PopIfLoading();
    cursor->PopIfStoring();
    EXPECT_EQ(cursor->GetStackPosn(), 2);
    EXPECT_EQ(Xml(), "<R><A/></R>");
}

TEST_F(PCExBaseTest, AChildIndexOpensTheChildWithSoManyOfItsNameBeforeIt) {
    Load("<R><B/><X n='0'/>text<X n='1'/><B/><X n='2'/><X n='3'/></R>");
    cursor->m_nChildIndex = 2;
    const IXMLDOMElementPtr element = cursor->PersistElement("X", true);
    ASSERT_TRUE(element);
    EXPECT_EQ(PCExBase::GetAttribute(element, "n"), "2");
    EXPECT_EQ(cursor->GetStackPosn(), 2);
    EXPECT_EQ(cursor->m_nChildIndex, 0);
}

TEST_F(PCExBaseTest, AChildIndexPastTheChildrenOfTheNameOpensNothingAndIsCleared) {
    Load("<R><X/><B/><X/></R>");
    cursor->m_nChildIndex = 2;
    EXPECT_FALSE(cursor->PersistElement("X", true));
    EXPECT_EQ(cursor->m_nChildIndex, 0);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBaseTest, AChildIndexPastTheListOfChildrenOpensNothingAndStays) {
    Load("<R><X/><X/></R>");
    cursor->m_nChildIndex = 2;
    EXPECT_FALSE(cursor->PersistElement("X", true));
    EXPECT_EQ(cursor->m_nChildIndex, 2);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBaseTest, TheListOfChildrenHasTextsTooWhenItIsComparedWithTheIndex) {
    Load("<R>text<X/><X/></R>");
    cursor->m_nChildIndex = 2;
    EXPECT_FALSE(cursor->PersistElement("X", true));
    EXPECT_EQ(cursor->m_nChildIndex, 0);
    cursor->m_nChildIndex = 1;
    EXPECT_TRUE(cursor->PersistElement("X", true));
}

TEST_F(PCExBaseTest, AnIndexOpensEachOfManyChildrenInTurn) {
    Store();
    for (int i = 0; i < 3000; ++i) cursor->PushInt(i % 3 ? "X" : "Y", i);
    Reload();
    for (std::uint16_t i = 0; i < 2000; ++i) {
        cursor->m_nChildIndex = i;
        const IXMLDOMElementPtr element = cursor->PersistElement("X", true);
        ASSERT_TRUE(element) << i;
        ASSERT_EQ(std::string(cursor->ReadItem(nullptr, false)),
                  std::to_string(i / 2 * 3 + i % 2 + 1));
        cursor->PopElement(false);
    }
}

// Indentation.

TEST_F(PCExBaseTest, PopElementInTheNeitherStateWritesNoIndentation) {
    Load("<R><A/></R>", kNeither);
    cursor->m_bIndent = true;
    cursor->m_nTabs = 5;
    ASSERT_TRUE(cursor->PersistElement("A", true));
    EXPECT_EQ(cursor->GetStackPosn(), 2);
    EXPECT_EQ(cursor->m_nTabs, 5);
    cursor->PopElement(false);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    EXPECT_EQ(cursor->m_nTabs, 5);
    EXPECT_EQ(Xml(), "<R><A/></R>");
}

TEST_F(PCExBaseTest, PushIndentAndPopIndentNeedIndentation) {
    Start(kNeither);
    cursor->PushIndent();
    EXPECT_EQ(cursor->m_nTabs, 0);
    cursor->m_nTabs = 2;
    cursor->PopIndent();
    EXPECT_EQ(cursor->m_nTabs, 2);
    cursor->m_bIndent = true;
    cursor->PushIndent();
    EXPECT_EQ(cursor->m_nTabs, 3);
    for (int i = 0; i < 5; ++i) cursor->PopIndent();
    EXPECT_EQ(cursor->m_nTabs, 0);
}

TEST_F(PCExBaseTest, GetTabsIsANewlineAndTheTabsWhetherOrNotIndentationIsOn) {
    Start(kNeither);
    EXPECT_EQ(cursor->GetTabs(), "\n");
    cursor->m_nTabs = 3;
    EXPECT_EQ(cursor->GetTabs(), "\n\t\t\t");
    cursor->m_bIndent = true;
    EXPECT_EQ(cursor->GetTabs(), "\n\t\t\t");
}

TEST_F(PCExBaseTest, AddTabsAppendsTheTabsWithIndentationAlone) {
    Store();
    const IXMLDOMElementPtr root = cursor->GetCurElem();
    cursor->m_nTabs = 2;
    cursor->AddTabs(root);
    EXPECT_EQ(Xml(), "<R/>");
    cursor->m_bIndent = true;
    cursor->AddTabs(IXMLDOMElementPtr());
    EXPECT_EQ(Xml(), "<R/>");
    cursor->AddTabs(root);
    EXPECT_EQ(Xml(), "<R>\n\t\t</R>");
}

TEST_F(PCExBaseTest, AddTabsNeedsADocumentOnlyWhenItWrites) {
    Store(true);
    const IXMLDOMElementPtr root = cursor->GetCurElem();
    cursor->m_pDoc = nullptr;
    EXPECT_EQ(Failure([&] { cursor->AddTabs(IXMLDOMElementPtr()); }), 0u);
    EXPECT_EQ(Failure([&] { cursor->AddTabs(root); }), kPointerFailure);
}

TEST_F(PCExBaseTest, AppendChildLeavesTheChildAloneWithoutACurrentElement) {
    NewDocument();
    Start(kStoring);
    cursor->m_bIndent = true;
    const IXMLDOMElementPtr element = doc->createElement("A");
    cursor->AppendChild(element);
    cursor->Push(IXMLDOMElementPtr());
    cursor->AppendChild(element);
    EXPECT_FALSE(element->parentNode());
}

TEST_F(PCExBaseTest, AppendChildTakesElementsAndOtherNodes) {
    Store();
    cursor->AppendChild(doc->createElement("A"));
    cursor->AppendChild(IXMLDOMNodePtr(doc->createTextNode("text")));
    cursor->AppendChild(IXMLDOMNodePtr(doc->createElement("B")));
    EXPECT_EQ(Xml(), "<R><A/>text<B/></R>");
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBaseTest, AppendChildWritesTheIndentationInFrontInEveryDirection) {
    for (const Mode mode : {kNeither, kLoading, kStoring}) {
        Load("<R/>", mode);
        cursor->m_bIndent = true;
        cursor->m_nTabs = 2;
        cursor->AppendChild(doc->createElement("A"));
        EXPECT_EQ(Xml(), "<R>\n\t\t<A/></R>") << mode;
    }
}

TEST_F(PCExBaseTest, AppendChildOfANodeOfAnotherDocumentRaisesTheArgumentFailure) {
    Store();
    const IXMLDOMDocumentPtr other = IXMLDOMDocumentPtr::CreateInstance();
    EXPECT_EQ(Failure([&] { cursor->PushElement(other->createElement("A")); }), kArgumentFailure);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBaseTest, AppendChildOfANullChildRaisesTheArgumentFailure) {
    Store(true);
    EXPECT_EQ(Failure([&] { cursor->PushElement(IXMLDOMElementPtr()); }), kArgumentFailure);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    EXPECT_EQ(cursor->m_nTabs, 1);
    // The indentation stands there before the failure.
    EXPECT_EQ(Xml(), "<R>\n\t</R>");
    Store(false);
    EXPECT_EQ(Failure([&] { cursor->AppendChild(IXMLDOMNodePtr()); }), kArgumentFailure);
    EXPECT_EQ(Failure([&] { cursor->AppendChild(IXMLDOMElementPtr()); }), kArgumentFailure);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    EXPECT_EQ(Xml(), "<R/>");
}

TEST_F(PCExBaseTest, AppendChildOfANullChildDoesNothingWithoutACurrentElement) {
    NewDocument();
    Start(kStoring);
    cursor->m_bIndent = true;
    cursor->AppendChild(IXMLDOMNodePtr());
    cursor->AppendChild(IXMLDOMElementPtr());
    EXPECT_EQ(cursor->GetStackPosn(), 0);
    EXPECT_FALSE(doc->hasChildNodes());
}

TEST_F(PCExBaseTest, PushElementMakesTheElementInTheCursorsDocument) {
    Store();
    cursor->m_pDoc = IXMLDOMDocumentPtr::CreateInstance();
    EXPECT_EQ(Failure([&] { cursor->PushElement("A"); }), kArgumentFailure);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    EXPECT_EQ(Xml(), "<R/>");
    Store();
    cursor->m_pDoc = nullptr;
    EXPECT_EQ(Failure([&] { cursor->PushElement("A"); }), kPointerFailure);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    EXPECT_EQ(Xml(), "<R/>");
}

TEST_F(PCExBaseTest, IndentedElementsStandOnLinesOfTheirOwnByDepth) {
    Store(true);
    EXPECT_EQ(cursor->m_nTabs, 1);
    cursor->PushInt("A", 1);
    cursor->PushElement("B");
    EXPECT_EQ(cursor->m_nTabs, 2);
    cursor->PushElement("C");
    cursor->PushInt("D", 2);
    cursor->PopElement(false);
    cursor->PushString("E", "");
    cursor->PopElement(false);
    cursor->PushElement("F");
    cursor->PopElement(false);
    EXPECT_EQ(cursor->m_nTabs, 1);
    cursor->PopElement(false);
    EXPECT_EQ(cursor->m_nTabs, 0);
    EXPECT_EQ(Xml(),
              "<R>"
              "\n\t<A>1</A>"
              "\n\t<B>"
              "\n\t\t<C>"
              "\n\t\t\t<D>2</D>"
              "\n\t\t</C>"
              "\n\t\t<E/>"
              "\n\t</B>"
              "\n\t<F>"
              "\n\t</F>"
              "\n</R>");
}

TEST_F(PCExBaseTest, WithoutIndentationThereIsNoTextButTheValues) {
    Store();
    cursor->PushElement("B");
    cursor->PushInt("A", 1);
    cursor->PopElement(false);
    cursor->PopElement(false);
    EXPECT_EQ(Xml(), "<R><B><A>1</A></B></R>");
    EXPECT_EQ(cursor->m_nTabs, 0);
}

// Flags.

TEST_F(PCExBaseTest, PushFlagSavesTheFlagThatPopFlagRestores) {
    Start(kNeither);
    cursor->PushFlag(true);
    EXPECT_TRUE(cursor->m_bFlag);
    cursor->PushFlag(false);
    EXPECT_FALSE(cursor->m_bFlag);
    cursor->PushFlag(false);
    EXPECT_EQ(cursor->m_flags.m_nCount, 3);
    cursor->PopFlag();
    EXPECT_FALSE(cursor->m_bFlag);
    cursor->PopFlag();
    EXPECT_TRUE(cursor->m_bFlag);
    cursor->PopFlag();
    EXPECT_FALSE(cursor->m_bFlag);
    EXPECT_EQ(cursor->m_flags.m_nCount, 0);
}

TEST_F(PCExBaseTest, FlagsAndIndentationAreIndependent) {
    Store(true);
    cursor->PushFlag(true);
    EXPECT_EQ(cursor->m_nTabs, 1);
    EXPECT_EQ(cursor->GetStackPosn(), 1);
    cursor->PushIndent();
    EXPECT_TRUE(cursor->m_bFlag);
    cursor->PopFlag();
    EXPECT_EQ(cursor->m_nTabs, 2);
}

// Children and attributes.

TEST_F(PCExBaseTest, HasChildLooksForAChildElementOfTheCurrentOne) {
    Load("<R>text<A><B/></A></R>");
    cursor->m_nChildIndex = 5;
    EXPECT_TRUE(cursor->HasChild("A"));
    EXPECT_FALSE(cursor->HasChild("a"));
    EXPECT_FALSE(cursor->HasChild("B"));
    EXPECT_EQ(cursor->m_nChildIndex, 5);
    PCExBase empty(&pc, doc);
    EXPECT_FALSE(empty.HasChild("A"));
}

TEST_F(PCExBaseTest, GetChildCountCountsElementsOfTheName) {
    Load("<R>text<A><A/></A><B/>text<A/><!-- A --><a/></R>");
    EXPECT_EQ(cursor->GetChildCount("A"), 2);
    EXPECT_EQ(cursor->GetChildCount("B"), 1);
    EXPECT_EQ(cursor->GetChildCount("C"), 0);
    EXPECT_EQ(cursor->GetChildCount("#text"), 0);
    EXPECT_EQ(cursor->GetChildCount(nullptr), 0);
    PCExBase empty(&pc, doc);
    EXPECT_EQ(empty.GetChildCount("A"), 0);
}

TEST_F(PCExBaseTest, GetChildCountCountsNoIndentation) {
    Store(true);
    for (int i = 0; i < 3; ++i) cursor->PushInt("A", i);
    EXPECT_EQ(cursor->GetCurElem()->childNodes()->length(), 6);
    EXPECT_EQ(cursor->GetChildCount("A"), 3);
    EXPECT_EQ(PCExBase::GetChildElementCount(cursor->GetCurElem()), 3);
}

TEST_F(PCExBaseTest, GetChildElementCountCountsElementsOfAnyName) {
    Load("<R>text<A><A/></A><B/>text<!-- A --></R>");
    EXPECT_EQ(PCExBase::GetChildElementCount(cursor->GetCurElem()), 2);
    EXPECT_EQ(PCExBase::GetChildElementCount(nullptr), 0);
}

TEST_F(PCExBaseTest, GetChildGivesTheChildWithSoManyOfItsNameBeforeIt) {
    Load("<R>text<B/><X n='0'/><X n='1'/></R>");
    const IXMLDOMElementPtr root = cursor->GetCurElem();
    EXPECT_EQ(PCExBase::GetAttribute(cursor->GetChild("X", 0, root), "n"), "0");
    EXPECT_EQ(PCExBase::GetAttribute(cursor->GetChild("X", 1, root), "n"), "1");
    EXPECT_FALSE(cursor->GetChild("X", 2, root));
    EXPECT_FALSE(cursor->GetChild("x", 0, root));
    EXPECT_FALSE(cursor->GetChild(nullptr, 0, root));
    EXPECT_FALSE(cursor->GetChild("X", -1, root));
    EXPECT_FALSE(cursor->GetChild("X", -1, nullptr));
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBaseTest, GetChildOfANullParentRaisesThePointerFailure) {
    Load("<R/>");
    EXPECT_EQ(Failure([&] { cursor->GetChild("X", 0, nullptr); }), kPointerFailure);
}

TEST_F(PCExBaseTest, GetChildIsGuardedByTheCursorsIndexAndNotByItsArgument) {
    Load("<R><X n='0'/><X n='1'/><E/></R>");
    const IXMLDOMElementPtr root = cursor->GetCurElem();
    cursor->m_nChildIndex = 3;
    EXPECT_FALSE(cursor->GetChild("X", 0, root));
    EXPECT_EQ(cursor->m_nChildIndex, 3);
    cursor->m_nChildIndex = 2;
    EXPECT_EQ(PCExBase::GetAttribute(cursor->GetChild("X", 1, root), "n"), "1");
    EXPECT_EQ(cursor->m_nChildIndex, 2);
    cursor->m_nChildIndex = 0;
    EXPECT_FALSE(cursor->GetChild("X", 7, root));
    EXPECT_FALSE(cursor->GetChild("X", 0, cursor->GetChild("E", 0, root)));
}

TEST_F(PCExBaseTest, GetChildComparesTheCursorsIndexWithAListThatHasTextsToo) {
    Load("<R>text<X/><!-- X --></R>");
    const IXMLDOMElementPtr root = cursor->GetCurElem();
    cursor->m_nChildIndex = 2;
    EXPECT_TRUE(cursor->GetChild("X", 0, root));
    cursor->m_nChildIndex = 3;
    EXPECT_FALSE(cursor->GetChild("X", 0, root));
}

TEST_F(PCExBaseTest, ANameThatNoElementCanHaveFindsNothing) {
    Load("<R>1<A>2<B/></A></R>");
    for (const char* name :
         {static_cast<const char*>(nullptr), "", "*", ".", "A/B", "A[1]", "#text"})
        for (std::uint16_t index = 0; index < 2; ++index) {
            cursor->m_nChildIndex = index;
            EXPECT_FALSE(cursor->PersistElement(name, true));
            cursor->m_nChildIndex = index;
            EXPECT_EQ(cursor->ReadItem(name, true), "");
            EXPECT_FALSE(cursor->HasChild(name));
            EXPECT_EQ(cursor->GetChildCount(name), 0);
            EXPECT_FALSE(cursor->GetChild(name, index, cursor->GetCurElem()));
            int v = 5;
            EXPECT_FALSE(cursor->ReadInt(name, v));
        }
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBaseTest, ReadItemElementWithoutACurrentElementGivesNothing) {
    NewDocument();
    Start(kLoading);
    cursor->m_nChildIndex = 3;
    EXPECT_FALSE(cursor->ReadItemElement("A", true));
    EXPECT_FALSE(cursor->ReadItemElement("A", false));
    EXPECT_EQ(cursor->m_nChildIndex, 3);
}

TEST_F(PCExBaseTest, ReadItemElementOfTheCurrentElementLooksAtNoName) {
    Load("<R><A/></R>");
    cursor->m_nChildIndex = 3;
    EXPECT_TRUE(cursor->ReadItemElement("A", false) == cursor->GetCurElem());
    EXPECT_TRUE(cursor->ReadItemElement(nullptr, false) == cursor->GetCurElem());
    EXPECT_EQ(cursor->m_nChildIndex, 3);
}

TEST_F(PCExBaseTest, ReadItemElementFindsTheFirstChildOrTheSelectedOneAndPushesNeither) {
    Load("<R><X n='0'/><B/><X n='1'/></R>");
    EXPECT_EQ(PCExBase::GetAttribute(cursor->ReadItemElement("X", true), "n"), "0");
    cursor->m_nChildIndex = 1;
    EXPECT_EQ(PCExBase::GetAttribute(cursor->ReadItemElement("X", true), "n"), "1");
    EXPECT_EQ(cursor->m_nChildIndex, 0);
    EXPECT_FALSE(cursor->ReadItemElement("C", true));
    EXPECT_EQ(cursor->GetStackPosn(), 1);
}

TEST_F(PCExBaseTest, ReadItemElementClearsTheIndexAlsoWhenItIsPastTheList) {
    Load("<R><X/><X/></R>");
    cursor->m_nChildIndex = 2;
    EXPECT_FALSE(cursor->ReadItemElement("X", true));
    EXPECT_EQ(cursor->m_nChildIndex, 0);
}

TEST_F(PCExBaseTest, GetAttributeGivesTheTextAndTheEmptyTextForAnAbsentOne) {
    Load("<R a='x &amp; y' b='' c='\xC3\xA4'/>");
    const IXMLDOMElementPtr root = cursor->GetCurElem();
    EXPECT_EQ(PCExBase::GetAttribute(root, "a"), "x & y");
    EXPECT_EQ(PCExBase::GetAttribute(root, "b"), "");
    EXPECT_EQ(PCExBase::GetAttribute(root, "c"), "\xC3\xA4");
    EXPECT_EQ(PCExBase::GetAttribute(root, "d"), "");
    EXPECT_EQ(PCExBase::GetAttribute(root, "A"), "");
    EXPECT_EQ(PCExBase::GetAttribute(root, nullptr), "");
}

TEST_F(PCExBaseTest, GetAttributeOfANullElementRaisesThePointerFailure) {
    EXPECT_EQ(Failure([] { PCExBase::GetAttribute(nullptr, "a"); }), kPointerFailure);
}

// Diagnostics.

std::string g_line;

std::string Line(const PCExBase& cursor) {
    g_line.clear();
    const DebugOutputSink previous = SetDebugOutputSink([](const char* text) { g_line += text; });
    cursor.Pr();
    SetDebugOutputSink(previous);
    return g_line;
}

TEST_F(PCExBaseTest, PrTellsTheCurrentElementToTheDebugger) {
    Store();
    cursor->PushElement("Ab");
    EXPECT_TRUE(std::regex_match(Line(*cursor),
                                 std::regex("PCExBase pCurNode: 0x[0-9a-f]{8} Ab StackPosn: 2\n")))
        << g_line;
}

TEST_F(PCExBaseTest, PrTellsThatThereIsNoCurrentElement) {
    Start(kLoading);
    EXPECT_EQ(Line(*cursor), "PCExBase pCurNode: null StackPosn: 0\n");
    cursor->Push(IXMLDOMElementPtr());
    EXPECT_EQ(Line(*cursor), "PCExBase pCurNode: null StackPosn: 1\n");
}

}  // namespace
}  // namespace ZT
