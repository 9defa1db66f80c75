#include <platform/xml/Dom.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <string>
#include <type_traits>
#include <utility>

#include <platform/xml/DomTestSupport_test.h>

namespace {

static_assert(sizeof(IXMLDOMNodePtr) == 2 * sizeof(void*));
static_assert(sizeof(IXMLDOMElementPtr) == 2 * sizeof(void*));
static_assert(sizeof(IXMLDOMDocumentPtr) == 2 * sizeof(void*));
static_assert(std::is_convertible_v<IXMLDOMElementPtr, IXMLDOMNodePtr>);
static_assert(std::is_convertible_v<IXMLDOMNodePtr, IXMLDOMElementPtr>);
static_assert(std::is_convertible_v<IXMLDOMDocumentPtr, IXMLDOMNodePtr>);

TEST(IXMLDOMNodePtr, IsNullByDefaultAndFromNullptr) {
    EXPECT_FALSE(IXMLDOMNodePtr());
    EXPECT_FALSE(IXMLDOMElementPtr(nullptr));
    EXPECT_TRUE(!IXMLDOMDocumentPtr());
    EXPECT_TRUE(IXMLDOMNodePtr() == nullptr);
    EXPECT_TRUE(IXMLDOMNodeListPtr() == nullptr);
}

TEST(IXMLDOMNodePtr, ACallThroughANullHandleRaisesThePointerFailure) {
    EXPECT_EQ(FailureOf([] { IXMLDOMNodePtr()->text(); }), E_POINTER);
    EXPECT_EQ(FailureOf([] { IXMLDOMElementPtr()->tagName(); }), E_POINTER);
    EXPECT_EQ(FailureOf([] { IXMLDOMDocumentPtr()->createElement("a"); }), E_POINTER);
    EXPECT_EQ(FailureOf([] { IXMLDOMNodeListPtr()->length(); }), E_POINTER);
    EXPECT_EQ(FailureOf([] {
                  for (const IXMLDOMNodePtr& node : IXMLDOMNodeListPtr()) ADD_FAILURE() << !node;
              }),
              E_POINTER);
    EXPECT_EQ(static_cast<std::uint32_t>(FailureOf([] { IXMLDOMNodePtr()->text(); })), 0x80004003u);
}

TEST(IXMLDOMDocumentPtr, CreateInstanceMakesTheHandleOneOnANewDocument) {
    IXMLDOMDocumentPtr document;
    EXPECT_EQ(document.CreateInstance(CLSID_DOMDocument), S_OK);
    ASSERT_TRUE(document);
    EXPECT_FALSE(document->hasChildNodes());
    const IXMLDOMDocumentPtr before = document;
    before->appendElement("a");
    EXPECT_EQ(document.CreateInstance(CLSID_DOMDocument), S_OK);
    EXPECT_TRUE(document != before);
    EXPECT_FALSE(document->hasChildNodes());
    EXPECT_EQ(before->xml(), "<a/>");
}

TEST(IXMLDOMDocumentPtr, CreateInstanceOfAnotherClassGivesItsCodeAndANullHandle) {
    IXMLDOMDocumentPtr document;
    EXPECT_EQ(document.CreateInstance(CLSID_NULL), REGDB_E_CLASSNOTREG);
    EXPECT_EQ(static_cast<std::uint32_t>(REGDB_E_CLASSNOTREG), 0x80040154u);
    EXPECT_FALSE(document);
    ASSERT_EQ(document.CreateInstance(CLSID_DOMDocument), S_OK);
    EXPECT_EQ(document.CreateInstance(CLSID_NULL), REGDB_E_CLASSNOTREG);
    EXPECT_FALSE(document);
}

TEST(IXMLDOMNodePtr, HandlesOfOneNodeAreEqual) {
    const IXMLDOMDocumentPtr document = DocumentOf("<a><b/><b/></a>");
    const IXMLDOMElementPtr root = document->documentElement();
    EXPECT_TRUE(root == document->documentElement());
    EXPECT_TRUE(root == IXMLDOMNodePtr(root));
    EXPECT_TRUE(root->firstChild() != root->lastChild());
    EXPECT_TRUE(root != nullptr);
    EXPECT_TRUE(IXMLDOMNodePtr() == IXMLDOMElementPtr());
}

TEST(IXMLDOMNodePtr, ANodeThatIsNoElementGivesANullElement) {
    const IXMLDOMDocumentPtr document = DocumentOf("<a>text</a>");
    const IXMLDOMNodePtr text = document->documentElement()->firstChild();
    EXPECT_TRUE(text);
    EXPECT_FALSE(IXMLDOMElementPtr(text));
    EXPECT_FALSE(IXMLDOMElementPtr(IXMLDOMNodePtr()));
    EXPECT_FALSE(IXMLDOMElementPtr(IXMLDOMNodePtr(document)));
    EXPECT_TRUE(IXMLDOMElementPtr(text->parentNode()) == document->documentElement());
}

TEST(IXMLDOMNodePtr, OnlyTheDocumentNodeGivesADocument) {
    const IXMLDOMDocumentPtr document = DocumentOf("<a/>");
    EXPECT_TRUE(IXMLDOMDocumentPtr(IXMLDOMNodePtr(document)) == document);
    EXPECT_FALSE(IXMLDOMDocumentPtr(IXMLDOMNodePtr(document->documentElement())));
    EXPECT_FALSE(IXMLDOMDocumentPtr(IXMLDOMNodePtr()));
}

TEST(IXMLDOMNodePtr, CopiesAndMovesKeepTheNode) {
    const IXMLDOMDocumentPtr document = DocumentOf("<a><b/></a>");
    IXMLDOMNodePtr first = document->documentElement();
    IXMLDOMNodePtr second = first;
    IXMLDOMNodePtr third = std::move(first);
    EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): a moved handle is null.
    EXPECT_TRUE(second == third);
    first = third;
    third = std::move(second);
    EXPECT_TRUE(first == third);
    first = *&first;
    EXPECT_EQ(first->nodeName(), "a");
    first = nullptr;
    EXPECT_FALSE(first);
    third.Release();
    EXPECT_FALSE(third);
}

TEST(IXMLDOMNodePtr, AnyHandleKeepsTheDocumentAlive) {
    IXMLDOMDocumentPtr document = DocumentOf("<a><b>text</b></a>");
    IXMLDOMNodePtr inner = document->documentElement()->firstChild();
    document = nullptr;
    EXPECT_EQ(inner->text(), "text");
    EXPECT_EQ(inner->parentNode()->nodeName(), "a");
    document = inner->ownerDocument();
    inner = nullptr;
    EXPECT_EQ(document->xml(), "<a><b>text</b></a>");
}

TEST(IXMLDOMNodePtr, AListKeepsTheDocumentAlive) {
    IXMLDOMNodeListPtr list = DocumentOf("<a><b/><c/></a>")->documentElement()->childNodes();
    EXPECT_EQ(list->item(1)->nodeName(), "c");
}

TEST(IXMLDOMNodePtr, AnIteratorOverATemporaryListIsSafe) {
    std::string names;
    for (const IXMLDOMNodePtr& node :
         DocumentOf("<a><b/><c/></a>")->documentElement()->childNodes()) {
        names += node->nameView();
    }
    EXPECT_EQ(names, "bc");
}

TEST(IXMLDOMNodePtr, DetachedNodesLiveAsLongAsAHandle) {
    const IXMLDOMDocumentPtr document = DocumentOf("<a><b><c>deep</c></b></a>");
    const IXMLDOMElementPtr root = document->documentElement();
    IXMLDOMNodePtr inner = root->firstChild()->firstChild();
    root->removeChild(root->firstChild());
    EXPECT_EQ(inner->text(), "deep");
    EXPECT_EQ(inner->parentNode()->nodeName(), "b");
    EXPECT_FALSE(inner->parentNode()->parentNode());
    root->appendChild(inner->parentNode());
    EXPECT_EQ(document->xml(), "<a><b><c>deep</c></b></a>");
}

TEST(IXMLDOMNodePtr, NodesThatNobodyCanReachGiveTheirMemoryBack) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r/>");
    const std::string text(1000, 'x');
    const auto change = [&] {
        document->createElement("dropped")->put_text(text);
        document->documentElement()->appendElement("removed")->put_text(text);
        document->documentElement()->removeChild(document->documentElement()->lastChild());
        document->loadXML("<r><a/></r>");
    };
    change();
    const std::size_t before = ::mallinfo2().uordblks;
    for (int i = 0; i < 10000; ++i) change();
    EXPECT_LT(::mallinfo2().uordblks, before + 1000000);
    EXPECT_EQ(document->xml(), "<r><a/></r>");
}

TEST(IXMLDOMNodePtr, AHandleOnOneDetachedNodeKeepsIt) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r/>");
    const IXMLDOMElementPtr kept = document->createElement("kept");
    kept->put_text("text");
    for (int i = 0; i < 100; ++i) document->createElement("dropped");
    EXPECT_EQ(kept->xml(), "<kept>text</kept>");
}

}  // namespace
