#include <platform/xml/Dom.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <string>
#include <vector>

#include <platform/xml/DomTestSupport_test.h>

using testing::ElementsAre;

namespace {

std::vector<std::string> ChildNames(const IXMLDOMNodePtr& node) {
    std::vector<std::string> names;
    for (const IXMLDOMNodePtr& child : node->childNodes()) names.emplace_back(child->nameView());
    return names;
}

std::string TextOf(const COleVariant& value) {
    return value.vt == VT_BSTR ? CString(value.bstrVal).GetString() : "not a string";
}

// Every kind of node once.
struct Kinds : testing::Test {
    IXMLDOMDocumentPtr document =
        DocumentOf("<?xml version='1.0'?><r>text<![CDATA[data]]><!--note--><?do it?><e>x</e></r>");
    IXMLDOMElementPtr root = document->documentElement();
    IXMLDOMNodePtr declaration = document->firstChild();
    IXMLDOMNodePtr text = root->childNodes()->item(0);
    IXMLDOMNodePtr section = root->childNodes()->item(1);
    IXMLDOMNodePtr comment = root->childNodes()->item(2);
    IXMLDOMNodePtr instruction = root->childNodes()->item(3);
    IXMLDOMNodePtr element = root->childNodes()->item(4);
};

TEST_F(Kinds, HaveTheirNumbers) {
    EXPECT_EQ(element->nodeType(), 1);
    EXPECT_EQ(text->nodeType(), 3);
    EXPECT_EQ(section->nodeType(), 4);
    EXPECT_EQ(instruction->nodeType(), 7);
    EXPECT_EQ(declaration->nodeType(), 7);
    EXPECT_EQ(comment->nodeType(), 8);
    EXPECT_EQ(IXMLDOMNodePtr(document)->nodeType(), 9);
}

TEST_F(Kinds, HaveTheirNames) {
    EXPECT_EQ(document->nodeName(), "#document");
    EXPECT_EQ(declaration->nodeName(), "xml");
    EXPECT_THAT(ChildNames(root), ElementsAre("#text", "#cdata-section", "#comment", "do", "e"));
}

TEST_F(Kinds, HaveTheirValues) {
    EXPECT_EQ(TextOf(text->nodeValue()), "text");
    EXPECT_EQ(TextOf(section->nodeValue()), "data");
    EXPECT_EQ(TextOf(comment->nodeValue()), "note");
    EXPECT_EQ(TextOf(instruction->nodeValue()), "it");
    EXPECT_EQ(TextOf(declaration->nodeValue()), "version='1.0'");
    EXPECT_EQ(element->nodeValue().vt, VT_NULL);
    EXPECT_EQ(document->nodeValue().vt, VT_NULL);
}

TEST_F(Kinds, GiveTheirText) {
    EXPECT_EQ(document->text(), "textdatax");
    EXPECT_EQ(root->text(), "textdatax");
    EXPECT_EQ(text->text(), "text");
    EXPECT_EQ(section->text(), "data");
    EXPECT_EQ(comment->text(), "note");
    EXPECT_EQ(instruction->text(), "it");
}

TEST_F(Kinds, TakeANewValue) {
    text->put_nodeValue("t");
    section->put_nodeValue("s");
    comment->put_nodeValue("c");
    instruction->put_text("i");
    declaration->put_nodeValue("version='1.1'");
    EXPECT_EQ(document->xml(),
              "<?xml version=\"1.1\"?><r>t<![CDATA[s]]><!--c--><?do i?><e>x</e></r>");
}

TEST_F(Kinds, RefuseAValueThatTheyCannotHold) {
    EXPECT_EQ(FailureOf([&] { element->put_nodeValue("x"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->put_nodeValue("x"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->put_text("x"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { text->put_nodeValue("\x01"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { section->put_nodeValue("\r"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { comment->put_nodeValue("a--b"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { comment->put_text("ends in -"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { instruction->put_nodeValue("?>"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { instruction->put_nodeValue(" it"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { declaration->put_nodeValue("it"); }), E_INVALIDARG);
    EXPECT_EQ(document->text(), "textdatax");
}

TEST_F(Kinds, HoldChildrenOnlyIfElementOrDocument) {
    for (const IXMLDOMNodePtr& node : {text, section, comment, instruction, declaration}) {
        EXPECT_EQ(FailureOf([&] { node->appendChild(document->createTextNode("x")); }),
                  E_INVALIDARG);
        EXPECT_EQ(FailureOf([&] { node->appendElement("x"); }), E_INVALIDARG);
        EXPECT_EQ(FailureOf([&] { node->appendText("x"); }), E_INVALIDARG);
        EXPECT_FALSE(node->hasChildNodes());
        EXPECT_EQ(node->childNodes()->length(), 0);
    }
}

TEST_F(Kinds, PrintThemselves) {
    EXPECT_EQ(declaration->xml(), "<?xml version=\"1.0\"?>");
    EXPECT_EQ(text->xml(), "text");
    EXPECT_EQ(section->xml(), "<![CDATA[data]]>");
    EXPECT_EQ(comment->xml(), "<!--note-->");
    EXPECT_EQ(instruction->xml(), "<?do it?>");
    EXPECT_EQ(element->xml(), "<e>x</e>");
}

TEST_F(Kinds, KnowTheirNeighbours) {
    EXPECT_TRUE(text->parentNode() == root);
    EXPECT_FALSE(text->previousSibling());
    EXPECT_TRUE(text->nextSibling() == section);
    EXPECT_TRUE(element->previousSibling() == instruction);
    EXPECT_FALSE(element->nextSibling());
    EXPECT_TRUE(root->firstChild() == text);
    EXPECT_TRUE(root->lastChild() == element);
    EXPECT_TRUE(root->parentNode() == document);
    EXPECT_FALSE(document->parentNode());
    EXPECT_TRUE(document->lastChild() == root);
    EXPECT_TRUE(root->previousSibling() == declaration);
    EXPECT_FALSE(root->nextSibling());
    EXPECT_TRUE(element->ownerDocument() == document);
    EXPECT_FALSE(document->ownerDocument());
}

TEST(IXMLDOMNode, AnEmptyDocumentHasNoChildren) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    EXPECT_FALSE(document->hasChildNodes());
    EXPECT_FALSE(document->firstChild());
    EXPECT_FALSE(document->lastChild());
    EXPECT_FALSE(document->documentElement());
    EXPECT_EQ(document->childNodes()->length(), 0);
    EXPECT_EQ(document->text(), "");
    EXPECT_EQ(document->xml(), "");
}

TEST(IXMLDOMNode, ADetachedNodeHasNoNeighbours) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r/>");
    const IXMLDOMElementPtr a = document->createElement("a");
    const IXMLDOMElementPtr b = document->createElement("b");
    const IXMLDOMElementPtr c = document->createElement("c");
    EXPECT_FALSE(b->nextSibling());
    EXPECT_FALSE(b->previousSibling());
    EXPECT_FALSE(b->parentNode());
    EXPECT_TRUE(b->ownerDocument() == document);
    EXPECT_FALSE(document->documentElement()->nextSibling());
    EXPECT_EQ(document->childNodes()->length(), 1);
    EXPECT_EQ(document->getElementsByTagName("*")->length(), 1);
    EXPECT_EQ(document->text(), "");
}

TEST(IXMLDOMNode, AppendPutsTheChildLastAndReturnsIt) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r><a/></r>");
    const IXMLDOMElementPtr root = document->documentElement();
    const IXMLDOMElementPtr b = document->createElement("b");
    EXPECT_TRUE(root->appendChild(b) == b);
    EXPECT_THAT(ChildNames(root), ElementsAre("a", "b"));
}

TEST(IXMLDOMNode, AppendMovesAChildThatStandsSomewhere) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r><a><x/></a><b/></r>");
    const IXMLDOMElementPtr root = document->documentElement();
    root->lastChild()->appendChild(root->firstChild()->firstChild());
    EXPECT_EQ(document->xml(), "<r><a/><b><x/></b></r>");
    root->appendChild(root->firstChild());
    EXPECT_EQ(document->xml(), "<r><b><x/></b><a/></r>");
}

TEST(IXMLDOMNode, InsertPutsTheChildBeforeTheReference) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r><a/></r>");
    const IXMLDOMElementPtr root = document->documentElement();
    const IXMLDOMElementPtr b = document->createElement("b");
    EXPECT_TRUE(root->insertBefore(b, root->firstChild()) == b);
    EXPECT_THAT(ChildNames(root), ElementsAre("b", "a"));
    root->insertBefore(document->createElement("c"), nullptr);
    EXPECT_THAT(ChildNames(root), ElementsAre("b", "a", "c"));
    root->insertBefore(b, b);
    EXPECT_THAT(ChildNames(root), ElementsAre("b", "a", "c"));
    root->insertBefore(root->lastChild(), b);
    EXPECT_THAT(ChildNames(root), ElementsAre("c", "b", "a"));
}

TEST(IXMLDOMNode, ReplaceDetachesTheOldChildAndReturnsIt) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r><a/><b/><c/></r>");
    const IXMLDOMElementPtr root = document->documentElement();
    const IXMLDOMNodePtr b = root->childNodes()->item(1);
    EXPECT_TRUE(root->replaceChild(document->createElement("x"), b) == b);
    EXPECT_THAT(ChildNames(root), ElementsAre("a", "x", "c"));
    EXPECT_FALSE(b->parentNode());
    root->replaceChild(root->lastChild(), root->firstChild());
    EXPECT_THAT(ChildNames(root), ElementsAre("c", "x"));
    root->replaceChild(root->firstChild(), root->firstChild());
    EXPECT_THAT(ChildNames(root), ElementsAre("c", "x"));
}

TEST(IXMLDOMNode, RemoveDetachesTheChildAndReturnsIt) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r><a/><b/></r>");
    const IXMLDOMElementPtr root = document->documentElement();
    const IXMLDOMNodePtr a = root->firstChild();
    EXPECT_TRUE(root->removeChild(a) == a);
    EXPECT_THAT(ChildNames(root), ElementsAre("b"));
    EXPECT_FALSE(a->parentNode());
    EXPECT_EQ(FailureOf([&] { root->removeChild(a); }), E_INVALIDARG);
}

TEST(IXMLDOMNode, RefusesWhatIsNoChildAsAReference) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r><a><x/></a></r>");
    const IXMLDOMElementPtr root = document->documentElement();
    const IXMLDOMNodePtr inner = root->firstChild()->firstChild();
    const IXMLDOMElementPtr fresh = document->createElement("n");
    EXPECT_EQ(FailureOf([&] { root->insertBefore(fresh, inner); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->replaceChild(fresh, inner); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->removeChild(inner); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->removeChild(root); }), E_INVALIDARG);
    EXPECT_EQ(document->xml(), "<r><a><x/></a></r>");
}

TEST(IXMLDOMNode, RefusesANullArgument) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r><a/></r>");
    const IXMLDOMElementPtr root = document->documentElement();
    EXPECT_EQ(FailureOf([&] { root->appendChild(nullptr); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->insertBefore(nullptr, root->firstChild()); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->replaceChild(nullptr, root->firstChild()); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->replaceChild(root->firstChild(), nullptr); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->removeChild(nullptr); }), E_INVALIDARG);
}

TEST(IXMLDOMNode, RefusesANodeOfAnotherDocument) {
    const IXMLDOMDocumentPtr one = DocumentOf("<r><a/></r>");
    const IXMLDOMDocumentPtr other = DocumentOf("<r><a/></r>");
    const IXMLDOMElementPtr root = one->documentElement();
    const IXMLDOMElementPtr foreign = other->createElement("x");
    EXPECT_EQ(static_cast<std::uint32_t>(FailureOf([&] { root->appendChild(foreign); })),
              0x80070057u);
    EXPECT_EQ(FailureOf([&] { root->insertBefore(foreign, root->firstChild()); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->replaceChild(foreign, root->firstChild()); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->removeChild(other->documentElement()->firstChild()); }),
              E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->appendChild(other); }), E_INVALIDARG);
}

TEST(IXMLDOMNode, RefusesToStandBelowItself) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r><a><b/></a></r>");
    const IXMLDOMNodePtr a = document->documentElement()->firstChild();
    EXPECT_EQ(FailureOf([&] { a->appendChild(a); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { a->firstChild()->appendChild(a); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { a->insertBefore(document->documentElement(), a->firstChild()); }),
              E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { a->appendChild(document); }), E_INVALIDARG);
    EXPECT_EQ(document->xml(), "<r><a><b/></a></r>");
}

TEST(IXMLDOMNode, TheDocumentRefusesTextAndASecondRoot) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r><a/>t</r>");
    const IXMLDOMElementPtr root = document->documentElement();
    EXPECT_EQ(FailureOf([&] { document->appendChild(document->createTextNode(" ")); }),
              E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->appendChild(root->lastChild()); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->appendChild(document->createCDATASection("x")); }),
              E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->appendText("x"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->appendChild(document->createElement("s")); }),
              E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->appendElement("s"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->insertBefore(document->createElement("s"), root); }),
              E_INVALIDARG);
    document->appendChild(root);
    document->replaceChild(root->firstChild(), root);
    EXPECT_EQ(document->xml(), "<a/>");
}

TEST(IXMLDOMNode, TheDocumentTakesCommentsAndInstructionsAroundItsRoot) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r/>");
    document->insertBefore(document->createComment("before"), document->documentElement());
    document->appendChild(document->createProcessingInstruction("after", "all"));
    EXPECT_EQ(document->xml(), "<!--before--><r/><?after all?>");
    EXPECT_THAT(ChildNames(document), ElementsAre("#comment", "r", "after"));
}

TEST(IXMLDOMNode, AnXmlDeclarationStandsOnlyAtTheStart) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r><a/></r>");
    const IXMLDOMElementPtr root = document->documentElement();
    const auto declaration = [&] {
        return document->createProcessingInstruction("xml", "version='1.0'");
    };
    EXPECT_EQ(FailureOf([&] { document->appendChild(declaration()); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->appendChild(declaration()); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->insertBefore(declaration(), root->firstChild()); }),
              E_INVALIDARG);
    document->insertBefore(declaration(), root);
    EXPECT_EQ(document->xml(), "<?xml version=\"1.0\"?><r><a/></r>");
    EXPECT_EQ(FailureOf([&] { document->insertBefore(declaration(), document->firstChild()); }),
              E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] {
                  document->insertBefore(document->createComment("c"), document->firstChild());
              }),
              E_INVALIDARG);
    document->replaceChild(declaration(), document->firstChild());
    document->replaceChild(document->createComment("c"), document->firstChild());
    EXPECT_EQ(document->xml(), "<!--c--><r><a/></r>");
}

TEST(IXMLDOMNode, AppendElementStandsInItsPlaceAtOnce) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    const IXMLDOMElementPtr root = document->appendElement("r");
    const IXMLDOMElementPtr a = root->appendElement("a");
    const IXMLDOMNodePtr t = root->appendText("t");
    EXPECT_TRUE(a->parentNode() == root);
    EXPECT_EQ(t->nodeType(), NODE_TEXT);
    EXPECT_EQ(document->xml(), "<r><a/>t</r>");
    EXPECT_EQ(FailureOf([&] { root->appendElement("1"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->appendText("\x02"); }), E_INVALIDARG);
    EXPECT_EQ(document->xml(), "<r><a/>t</r>");
}

TEST(IXMLDOMNode, SelectsTheFirstChildElementWithTheTag) {
    const IXMLDOMDocumentPtr document =
        DocumentOf("<r><?b pi?><a><c/></a>b<b>1</b><b>2</b><p:b>3</p:b></r>");
    const IXMLDOMElementPtr root = document->documentElement();
    EXPECT_EQ(root->selectSingleNode("b")->text(), "1");
    EXPECT_EQ(root->selectSingleNode("p:b")->text(), "3");
    EXPECT_FALSE(root->selectSingleNode("B"));
    EXPECT_FALSE(root->selectSingleNode("c"));
    EXPECT_FALSE(root->selectSingleNode("ab"));
    EXPECT_FALSE(root->selectSingleNode("r"));
    EXPECT_EQ(document->selectSingleNode("r")->nodeName(), "r");
    EXPECT_FALSE(root->firstChild()->selectSingleNode("b"));
}

TEST(IXMLDOMNode, SelectRefusesAQueryThatIsNoTag) {
    const IXMLDOMElementPtr root = DocumentOf("<r><a><b/></a></r>")->documentElement();
    for (const char* query : {"a/b", "//b", "*", "@a", "a[1]", ".", "", "a b"}) {
        EXPECT_EQ(FailureOf([&] { root->selectSingleNode(query); }), E_INVALIDARG) << query;
        EXPECT_EQ(FailureOf([&] { root->selectNodes(query); }), E_INVALIDARG) << query;
    }
    EXPECT_EQ(FailureOf([&] { root->selectSingleNode(nullptr); }), E_INVALIDARG);
}

TEST(IXMLDOMNode, SelectNodesListsTheChildElementsWithTheTag) {
    const IXMLDOMElementPtr root =
        DocumentOf("<r><b>1</b><a><b>x</b></a><b>2</b>b</r>")->documentElement();
    const IXMLDOMNodeListPtr found = root->selectNodes("b");
    ASSERT_EQ(found->length(), 2);
    EXPECT_EQ(found->item(0)->text(), "1");
    EXPECT_EQ(found->item(1)->text(), "2");
    EXPECT_EQ(root->selectNodes("c")->length(), 0);
    root->appendElement("b");
    EXPECT_EQ(found->length(), 2);
}

TEST(IXMLDOMNode, ChildElementCountsFromZeroAmongTheSameTag) {
    const IXMLDOMElementPtr root =
        DocumentOf("<r><b>0</b><a/>t<b>1</b><b>2</b></r>")->documentElement();
    EXPECT_EQ(root->childElement("b", 0)->text(), "0");
    EXPECT_EQ(root->childElement("b", 2)->text(), "2");
    EXPECT_FALSE(root->childElement("b", 3));
    EXPECT_FALSE(root->childElement("b", -1));
    EXPECT_FALSE(root->childElement("", 0));
    EXPECT_EQ(root->childElementCount(), 4);
    EXPECT_EQ(root->childElementCount("b"), 3);
    EXPECT_EQ(root->childElementCount("c"), 0);
}

TEST(IXMLDOMNode, PutTextReplacesAllContentByOneText) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r><a/>t<!--c--></r>");
    const IXMLDOMElementPtr root = document->documentElement();
    const IXMLDOMNodePtr a = root->firstChild();
    root->put_text("new");
    EXPECT_EQ(document->xml(), "<r>new</r>");
    EXPECT_FALSE(a->parentNode());
    root->put_text("newer");
    EXPECT_EQ(document->xml(), "<r>newer</r>");
    EXPECT_EQ(root->childNodes()->length(), 1);
}

TEST(IXMLDOMNode, PutTextOfNothingLeavesNoTextNode) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r>t</r>");
    const IXMLDOMElementPtr root = document->documentElement();
    root->put_text("");
    EXPECT_FALSE(root->hasChildNodes());
    EXPECT_EQ(document->xml(), "<r/>");
    root->put_text(nullptr);
    EXPECT_FALSE(root->hasChildNodes());
    EXPECT_EQ(root->text(), "");
}

TEST(IXMLDOMNode, PutTextKeepsASingleTextNode) {
    const IXMLDOMElementPtr root = DocumentOf("<r>old</r>")->documentElement();
    const IXMLDOMNodePtr text = root->firstChild();
    root->put_text("new and longer than before");
    EXPECT_TRUE(root->firstChild() == text);
    EXPECT_EQ(text->text(), "new and longer than before");
}

TEST(IXMLDOMNode, TextThatXmlCannotHoldIsRefused) {
    const IXMLDOMElementPtr root = DocumentOf("<r>old</r>")->documentElement();
    using namespace std::string_view_literals;
    for (const std::string_view bad : {"\0"sv,
                                       "a\0b"sv,
                                       "\x01"sv,
                                       "\x08"sv,
                                       "\x0B"sv,
                                       "\x0C"sv,
                                       "\x0E"sv,
                                       "\x1F"sv,
                                       "\x80"sv,
                                       "\xC3"sv,
                                       "\xC0\x80"sv,
                                       "\xC1\xBF"sv,
                                       "\xE0\x80\x80"sv,
                                       "\xED\xA0\x80"sv,
                                       "\xEF\xBF\xBE"sv,
                                       "\xEF\xBF\xBF"sv,
                                       "\xF0\x80\x80\x80"sv,
                                       "\xF4\x90\x80\x80"sv,
                                       "\xF5\x80\x80\x80"sv,
                                       "\xFF"sv,
                                       "0123456789abcdef\xC3"sv,
                                       "0123456789abcdef0\x01"sv}) {
        EXPECT_EQ(FailureOf([&] { root->put_text(bad); }), E_INVALIDARG) << bad;
    }
    EXPECT_EQ(root->text(), "old");
    for (const std::string_view good :
         {"\t\n\r"sv, "\x7F"sv, "\xC2\x80"sv, "\xED\x9F\xBF"sv, "\xEE\x80\x80"sv, "\xEF\xBF\xBD"sv,
          "\xF0\x90\x80\x80"sv, "\xF4\x8F\xBF\xBF"sv}) {
        root->put_text(good);
        EXPECT_EQ(root->text(), CString(good));
    }
}

TEST(IXMLDOMNode, TextViewNeedsNoCopyOfASingleText) {
    const IXMLDOMElementPtr root =
        DocumentOf("<r><a>one</a><b>t<c>w</c>o</b><d><e>deep</e></d><f/></r>")->documentElement();
    std::string scratch = "untouched";
    EXPECT_EQ(root->selectSingleNode("a")->textView(scratch), "one");
    EXPECT_EQ(root->selectSingleNode("f")->textView(scratch), "");
    EXPECT_EQ(scratch, "untouched");
    EXPECT_EQ(root->selectSingleNode("b")->textView(scratch), "two");
    EXPECT_EQ(scratch, "two");
    EXPECT_EQ(root->selectSingleNode("d")->textView(scratch), "deep");
    EXPECT_EQ(root->textView(scratch), "onetwodeep");
}

TEST(IXMLDOMNode, CloneIsDetachedAndItsOwn) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r k='v'><a>t</a></r>");
    const IXMLDOMElementPtr root = document->documentElement();
    const IXMLDOMElementPtr deep = root->cloneNode(true);
    const IXMLDOMElementPtr flat = root->cloneNode(false);
    EXPECT_FALSE(deep->parentNode());
    EXPECT_EQ(deep->xml(), "<r k=\"v\"><a>t</a></r>");
    EXPECT_EQ(flat->xml(), "<r k=\"v\"/>");
    deep->selectSingleNode("a")->put_text("changed");
    EXPECT_EQ(root->text(), "t");
    root->appendChild(deep);
    EXPECT_EQ(root->text(), "tchanged");
}

TEST(IXMLDOMNode, CloneOfADocumentIsADocument) {
    const IXMLDOMDocumentPtr document = DocumentOf("<?xml version='1.0'?><!--c--><r>t</r>");
    const IXMLDOMDocumentPtr copy = document->cloneNode(true);
    ASSERT_TRUE(copy);
    EXPECT_TRUE(copy != document);
    EXPECT_EQ(copy->xml(), document->xml());
    copy->documentElement()->put_text("other");
    EXPECT_EQ(document->text(), "t");
    EXPECT_EQ(IXMLDOMDocumentPtr(document->cloneNode(false))->xml(), "");
}

// A text of characters that XML can hold.
rc::Gen<std::string> XmlText() {
    const auto character = rc::gen::oneOf(
        rc::gen::elementOf(std::vector<std::string>{
            "\r", "\n", "\t", " ", "\r\n", "&", "<", ">", "]]>", "\"", "'", "&amp;", "\xC3\xA9",
            "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xEF\xBF\xBD", "\x7F", "--", "?>"}),
        rc::gen::map(rc::gen::inRange(0x20, 0x7F),
                     [](int c) { return std::string(1, static_cast<char>(c)); }));
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(character),
                        [](const std::vector<std::string>& parts) {
                            std::string text;
                            for (const std::string& part : parts) text += part;
                            return text;
                        });
}

TEST(IXMLDOMNode, EveryTextAndAttributeComesBackTheSame) {
    EXPECT_TRUE(rc::check([] {
        const std::string text = *XmlText();
        const std::string value = *XmlText();
        const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
        const IXMLDOMElementPtr root = document->appendElement("r");
        root->put_text(text);
        root->setAttribute("k", value);
        const IXMLDOMElementPtr loaded = DocumentOf(document->xml().View())->documentElement();
        RC_ASSERT(std::string(loaded->text().GetString()) == text);
        RC_ASSERT(loaded->attributeView("k") == value);
    }));
}

TEST(IXMLDOMNode, EverySectionComesBackTheSame) {
    EXPECT_TRUE(rc::check([] {
        std::string text = *XmlText();
        std::erase(text, '\r');
        const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
        const IXMLDOMElementPtr root = document->appendElement("r");
        root->appendChild(document->createCDATASection(text));
        RC_ASSERT(std::string(DocumentOf(document->xml().View())->text().GetString()) == text);
    }));
}

}  // namespace
