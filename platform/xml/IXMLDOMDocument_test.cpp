#include <platform/xml/Dom.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <platform/xml/DomTestSupport_test.h>

using namespace std::string_view_literals;
using testing::HasSubstr;

namespace {

HRESULT SystemCode(int error) {
    return ResultFromBits(0x80070000u | static_cast<unsigned>(error));
}

std::string Repeated(std::string_view part, std::size_t count) {
    std::string text;
    text.reserve(part.size() * count);
    for (std::size_t i = 0; i < count; ++i) text += part;
    return text;
}

// ---- Making nodes.

TEST(IXMLDOMDocument, ANewElementIsNotSavedUntilItIsAppended) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    const IXMLDOMElementPtr root = document->createElement("root");
    EXPECT_EQ(document->xml(), "");
    document->appendChild(root);
    const IXMLDOMElementPtr child = document->createElement("child");
    EXPECT_EQ(document->xml(), "<root/>");
    root->appendChild(child);
    child->put_text("a<b");
    EXPECT_EQ(document->xml(), "<root><child>a&lt;b</child></root>");
    EXPECT_EQ(root->selectSingleNode("child")->text(), "a<b");
}

TEST(IXMLDOMDocument, ATagMustBeAnXmlName) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    for (const std::string_view name :
         {""sv, "1a"sv, "-a"sv, ".a"sv, "a b"sv, "a<"sv, "a>"sv, "a&"sv, "a/b"sv, "a\0b"sv,
          "\xC3"sv, "\xC2\xB7z"sv, "\xCC\x80z"sv, "a\xC3\x97"sv, "\xE2\x86\x90"sv, "a=\"1\""sv}) {
        EXPECT_EQ(FailureOf([&] { document->createElement(name); }), E_INVALIDARG) << name;
    }
    EXPECT_EQ(FailureOf([&] { document->createElement(nullptr); }), E_INVALIDARG);
    for (const std::string_view name :
         {"a"sv, "_"sv, ":"sv, "a-1.b"sv, "p:q"sv, "\xC3\xA9"sv, "z\xC2\xB7"sv, "z\xCC\x80"sv,
          "\xF0\x90\x80\x80"sv, "\xE2\x82\xAC"sv}) {
        EXPECT_EQ(document->createElement(name)->tagName(), CString(name));
    }
}

TEST(IXMLDOMDocument, LongTagsAreKept) {
    const std::string name(1000, 'n');
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    EXPECT_EQ(document->createElement(name)->tagName(), CString(name.c_str()));
    EXPECT_EQ(document->createElement(name.substr(0, 63))->tagName().GetLength(), 63);
    EXPECT_EQ(document->createElement(name.substr(0, 64))->tagName().GetLength(), 64);
}

TEST(IXMLDOMDocument, MakesEveryKindOfNode) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    const IXMLDOMElementPtr root = document->appendElement("r");
    root->appendChild(document->createTextNode("t&t"));
    root->appendChild(document->createCDATASection("a]]>b"));
    root->appendChild(document->createComment("c"));
    root->appendChild(document->createProcessingInstruction("p", "d"));
    root->appendChild(document->createProcessingInstruction("p", ""));
    EXPECT_EQ(document->xml(), "<r>t&amp;t<![CDATA[a]]]]><![CDATA[>b]]><!--c--><?p d?><?p?></r>");
    EXPECT_EQ(DocumentOf(document->xml().View())->text(), "t&ta]]>b");
}

TEST(IXMLDOMDocument, RefusesNodesThatCannotBeStored) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    EXPECT_EQ(FailureOf([&] { document->createTextNode("\x01"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->createCDATASection("\r"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->createComment("a--b"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->createComment("a-"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->createComment("\r"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->createProcessingInstruction("1", ""); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->createProcessingInstruction("p", "?>"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->createProcessingInstruction("p", " d"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->createProcessingInstruction("p", "\r"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->createProcessingInstruction("XML", "version='1.0'"); }),
              E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->createProcessingInstruction("xml", "encoding='UTF-8'"); }),
              E_INVALIDARG);
}

TEST(IXMLDOMDocument, AnXmlDeclarationIsWrittenWithTheEncodingOfTheText) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    document->appendChild(document->createProcessingInstruction(
        "xml", "version='1.0' encoding='UTF-16' standalone='no'"));
    document->appendElement("r")->put_text("\xC3\xA9");
    EXPECT_EQ(document->xml(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?><r>\xC3\xA9</r>");
}

TEST(IXMLDOMDocument, PutDocumentElementReplacesTheRoot) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    const IXMLDOMElementPtr a = document->createElement("a");
    document->putref_documentElement(a);
    EXPECT_TRUE(document->documentElement() == a);
    document->putref_documentElement(a);
    document->appendChild(document->createComment("c"));
    document->putref_documentElement(document->createElement("b"));
    EXPECT_EQ(document->xml(), "<b/><!--c-->");
    EXPECT_FALSE(a->parentNode());
    EXPECT_EQ(FailureOf([&] { document->putref_documentElement(nullptr); }), E_INVALIDARG);
}

// ---- Loading.

TEST(IXMLDOMDocument, LoadKeepsDeclarationCommentsAndInstructions) {
    const std::string text =
        "<?xml version=\"1.0\" standalone=\"yes\"?><!--a--><?p d?><r><!--b--></r><!--c-->";
    EXPECT_EQ(DocumentOf(text)->xml(), CString(text.c_str()));
}

TEST(IXMLDOMDocument, WhiteSpaceBetweenElementsIsDropped) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r>\n\t<a> </a>\n\t<b> x </b>\n</r>\n");
    EXPECT_EQ(document->xml(), "<r><a> </a><b> x </b></r>");
    EXPECT_EQ(document->documentElement()->childNodes()->length(), 2);
    EXPECT_FALSE(document->preserveWhiteSpace());
}

TEST(IXMLDOMDocument, WhiteSpaceIsKeptWhenThatIsAskedFor) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    document->put_preserveWhiteSpace(true);
    EXPECT_TRUE(document->preserveWhiteSpace());
    ASSERT_TRUE(document->loadXML("\n<r>\n\t<a> </a>\n</r>\n"));
    EXPECT_EQ(document->xml(), "<r>\n\t<a> </a>\n</r>");
    EXPECT_EQ(document->documentElement()->childNodes()->length(), 3);
}

TEST(IXMLDOMDocument, LineEndsBecomeOneLineFeed) {
    const IXMLDOMElementPtr root =
        DocumentOf("<r k='1\r\n2'>a\r\nb\rc\nd&#13;e<![CDATA[\r\n]]></r>")->documentElement();
    EXPECT_EQ(root->text(), "a\nb\nc\nd\re\n");
    EXPECT_EQ(root->attributeView("k"), "1 2");
}

TEST(IXMLDOMDocument, ReferencesAreResolved) {
    const IXMLDOMElementPtr root =
        DocumentOf("<r k='&quot;&apos;&#65;'>&lt;&gt;&amp;&#x20AC;&#128512;</r>")
            ->documentElement();
    EXPECT_EQ(root->text(), "<>&\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(root->attributeView("k"), "\"'A");
}

TEST(IXMLDOMDocument, AByteOrderMarkIsSkipped) {
    EXPECT_EQ(DocumentOf("\xEF\xBB\xBF<?xml version='1.0'?><r/>")->xml(),
              "<?xml version=\"1.0\"?><r/>");
}

TEST(IXMLDOMDocument, TheTextOfLoadXmlIsUtf8WhateverItSays) {
    EXPECT_EQ(DocumentOf("<?xml version='1.0' encoding='utf-16'?><r>\xC3\xA9</r>")->text(),
              "\xC3\xA9");
}

TEST(IXMLDOMDocument, AFailedLoadKeepsTheContentAndTellsWhy) {
    const IXMLDOMDocumentPtr document = DocumentOf("<old>content</old>");
    const IXMLDOMElementPtr old = document->documentElement();
    EXPECT_FALSE(document->loadXML("<new>\n  <a>\xC3\xA9<b></a>\n</new>"));
    EXPECT_EQ(document->xml(), "<old>content</old>");
    EXPECT_TRUE(document->documentElement() == old);
    const IXMLDOMParseError& error = document->parseError();
    EXPECT_EQ(error.errorCode(), DOM_E_MALFORMED);
    EXPECT_EQ(error.line(), 2);
    EXPECT_EQ(error.linepos(), 10);
    EXPECT_EQ(error.filepos(), 16);
    EXPECT_EQ(error.reason(), "The end tag 'a' does not match the start tag 'b'.");
    EXPECT_EQ(error.srcText(), "  <a>\xC3\xA9<b></a>");
    EXPECT_EQ(error.url(), "");
}

TEST(IXMLDOMDocument, AGoodLoadClearsTheError) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    EXPECT_FALSE(document->loadXML("no"));
    EXPECT_TRUE(document->loadXML("<r/>"));
    const IXMLDOMParseError& error = document->parseError();
    EXPECT_EQ(error.errorCode(), 0);
    EXPECT_EQ(error.line(), 0);
    EXPECT_EQ(error.linepos(), 0);
    EXPECT_EQ(error.filepos(), 0);
    EXPECT_EQ(error.reason(), "");
    EXPECT_EQ(error.srcText(), "");
}

TEST(IXMLDOMDocument, LinesAreCountedByEveryKindOfLineEnd) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    EXPECT_FALSE(document->loadXML("<r>\r\n\r\n&x;</r>"));
    EXPECT_EQ(document->parseError().line(), 3);
    EXPECT_EQ(document->parseError().linepos(), 1);
    EXPECT_FALSE(document->loadXML("<r>\r\r &x;</r>"));
    EXPECT_EQ(document->parseError().line(), 3);
    EXPECT_EQ(document->parseError().linepos(), 2);
}

TEST(IXMLDOMDocument, OfALongLineThePartAroundTheFailureIsShown) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    const std::string text = "<r>" + std::string(10000, 'a') + "&nope;" + std::string(10000, 'b');
    EXPECT_FALSE(document->loadXML(text));
    EXPECT_LE(document->parseError().srcText().GetLength(), 200);
    EXPECT_GE(document->parseError().srcText().Find("&nope;"), 0);
    EXPECT_EQ(document->parseError().linepos(), 10004);
}

struct BadText {
    std::string_view text;
    std::size_t place;
    std::string_view reason;
};

void PrintTo(const BadText& bad, std::ostream* out) {
    *out << bad.text;
}

class BadTexts : public testing::TestWithParam<BadText> {};

TEST_P(BadTexts, AreRefusedWithPlaceAndReason) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    EXPECT_FALSE(document->loadXML(GetParam().text));
    EXPECT_EQ(document->parseError().filepos(), static_cast<LONGLONG>(GetParam().place));
    EXPECT_THAT(document->parseError().reason().GetString(),
                HasSubstr(std::string(GetParam().reason)));
    EXPECT_EQ(document->xml(), "");
}

INSTANTIATE_TEST_SUITE_P(
    , BadTexts,
    testing::Values(
        BadText{"", 0, "no root"}, BadText{"  \n", 3, "no root"}, BadText{"<!--c-->", 8, "no root"},
        BadText{"<?xml version='1.0'?>", 21, "no root"}, BadText{"text", 0, "outside"},
        BadText{"<r/>text", 4, "outside"}, BadText{"<r/>&amp;", 4, "outside"},
        BadText{"<r/><![CDATA[x]]>", 4, "outside"}, BadText{"<r/><s/>", 4, "more than one"},
        BadText{"<r></r><s>", 7, "more than one"}, BadText{"<r></s>", 3, "does not match"},
        BadText{"<r><a></r></a>", 6, "does not match"}, BadText{"<ab></a>", 4, "does not match"},
        BadText{"<a></ab>", 3, "does not match"}, BadText{"</r>", 0, "no start tag"},
        BadText{"<r/></r>", 4, "no start tag"}, BadText{"<r><a>", 6, "before the end tag of 'a'"},
        BadText{"<!DOCTYPE r><r/>", 0, "Document type definitions"},
        BadText{"<!DOCTYPE r [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><r>&e;</r>", 0,
                "Document type definitions"},
        BadText{"<?xml version='1.0'?>\n<!DOCTYPE r SYSTEM 'http://x/y'><r/>", 22,
                "Document type definitions"},
        BadText{"<r><!DOCTYPE r></r>", 3, "Document type definitions"},
        BadText{"<r>&foo;</r>", 3, "'foo' is not declared"},
        BadText{"<r k='&foo;'/>", 6, "'foo' is not declared"}, BadText{"<r>& </r>", 3, "'&amp;'"},
        BadText{"<r>a&b</r>", 4, "'&amp;'"}, BadText{"<r>&;</r>", 3, "'&amp;'"},
        BadText{"<r>&#;</r>", 3, "no character"}, BadText{"<r>&#x;</r>", 3, "no character"},
        BadText{"<r>&#0;</r>", 3, "no character"}, BadText{"<r>&#1;</r>", 3, "no character"},
        BadText{"<r>&#xD800;</r>", 3, "no character"},
        BadText{"<r>&#xFFFE;</r>", 3, "no character"},
        BadText{"<r>&#x110000;</r>", 3, "no character"},
        BadText{"<r>&#99999999999999999999;</r>", 3, "no character"},
        BadText{"<r>&#12a;</r>", 3, "no character"}, BadText{"<r>&#X41;</r>", 3, "no character"},
        BadText{"<r>a]]>b</r>", 4, "']]>'"}, BadText{"<r><!--a--b--></r>", 3, "'--'"},
        BadText{"<r><!--a---></r>", 3, "'--'"}, BadText{"<r><!x></r>", 3, "neither"},
        BadText{"<r><![cdata[x]]></r>", 3, "neither"}, BadText{"<r k='a<b'/>", 7, "'<' cannot"},
        BadText{"<r k=v/>", 5, "quotes"}, BadText{"<r k/>", 4, "'='"},
        BadText{"<r k='1'j='2'/>", 8, "White space"},
        BadText{"<r k='1' k='2'/>", 9, "'k' stands twice"},
        BadText{"<r 1='1'/>", 3, "attribute's name"}, BadText{"<1/>", 1, "'<'"},
        BadText{"<r><></r>", 4, "'<'"}, BadText{"< r/>", 1, "'<'"}, BadText{"<r / >", 4, "'>'"},
        BadText{"<r/ >", 3, "'>'"}, BadText{"<r></ r>", 5, "name of an end tag"},
        BadText{"<r></r x>", 7, "'>'"}, BadText{"<r\xC3\x97/>", 1, "A name has"},
        BadText{"<\xE2\x86\x90/>", 1, "A name has"}, BadText{"<r \xC2\xB7='1'/>", 3, "A name has"},
        BadText{"<?1?><r/>", 2, "target"}, BadText{"<?p*?><r/>", 3, "White space"},
        BadText{"<?XML version='1.0'?><r/>", 0, "very start"},
        BadText{" <?xml version='1.0'?><r/>", 1, "very start"},
        BadText{"<r><?xml version='1.0'?></r>", 3, "very start"},
        BadText{"<?xml version='1.0'?><?xml version='1.0'?><r/>", 21, "very start"},
        BadText{"<?xml?><r/>", 0, "declaration is not"},
        BadText{"<?xml encoding='UTF-8'?><r/>", 0, "declaration is not"},
        BadText{"<?xml version='2.0'?><r/>", 0, "declaration is not"},
        BadText{"<?xml version='1.0'encoding='UTF-8'?><r/>", 0, "declaration is not"},
        BadText{"<?xml version='1.0' encoding='-8'?><r/>", 0, "declaration is not"},
        BadText{"<?xml version='1.0' standalone='maybe'?><r/>", 0, "declaration is not"},
        BadText{"<?xml version='1.0' standalone='no' encoding='UTF-8'?><r/>", 0,
                "declaration is not"},
        BadText{"<?xml version='1.0' other='x'?><r/>", 0, "declaration is not"},
        BadText{"<?xml version=1.0?><r/>", 0, "declaration is not"},
        BadText{"<r>\0</r>"sv, 3, "zero byte"}, BadText{"<r/>\0"sv, 4, "zero byte"},
        BadText{"<r>\x01</r>", 3, "not allow"}, BadText{"<r k='\x1F'/>", 6, "not allow"},
        BadText{"<r><!--\x0B--></r>", 7, "not allow"},
        BadText{"<r>\xEF\xBF\xBF</r>", 3, "not allow"}, BadText{"<r>\xFF</r>", 3, "UTF-8"},
        BadText{"<r>\xC3</r>", 3, "UTF-8"}, BadText{"<r>\xC0\xAF</r>", 3, "UTF-8"},
        BadText{"<r>\xED\xA0\x80</r>", 3, "UTF-8"},
        BadText{"<r>0123456789ABCDEF\x80</r>", 19, "UTF-8"},
        BadText{"\xEF\xBB\xBF\xEF\xBB\xBF<r/>", 3, "outside"}));

TEST(IXMLDOMDocument, AnAttributeTwiceAmongManyIsFound) {
    std::string text = "<r";
    for (int i = 0; i < 100; ++i) text += " a" + std::to_string(i) + "='x'";
    EXPECT_EQ(DocumentOf(text + "/>")->documentElement()->attributes().length(), 100);
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    EXPECT_FALSE(document->loadXML(text + " a50='y'/>"));
    EXPECT_EQ(document->parseError().reason(), "The attribute 'a50' stands twice in one tag.");
    EXPECT_EQ(document->parseError().filepos(), static_cast<LONGLONG>(text.size() + 1));
}

TEST(IXMLDOMDocument, ATextCutOffAnywhereIsRefused) {
    const std::string whole =
        "\xEF\xBB\xBF<?xml version=\"1.0\" encoding='UTF-8'?>\n<!-- c - --><?p data?>"
        "<r k=\"v&quot;\" j = '1'>t&amp;&#65;\xC3\xA9<![CDATA[d]]]]><a:b\n/><e ></e ></r>";
    ASSERT_EQ(DocumentOf(whole)->documentElement()->childNodes()->length(), 4);
    const IXMLDOMDocumentPtr document = DocumentOf("<old/>");
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_FALSE(document->loadXML(std::string_view(whole).substr(0, size))) << size;
        EXPECT_NE(document->parseError().errorCode(), 0) << size;
        EXPECT_FALSE(document->parseError().reason().IsEmpty()) << size;
    }
    EXPECT_EQ(document->xml(), "<old/>");
}

TEST(IXMLDOMDocument, AFileCutOffAnywhereIsRefused) {
    const TestFolder folder;
    std::string wide = "\xFF\xFE";
    for (const char c : "<?xml version='1.0'?><r k='1'>t&lt;<a/></r>"sv) {
        wide += c;
        wide += '\0';
    }
    const IXMLDOMDocumentPtr document = DocumentOf("<old/>");
    for (std::size_t size = 0; size < wide.size(); ++size) {
        const std::string path = folder.Write("cut.xml", wide.substr(0, size));
        EXPECT_FALSE(document->load(path)) << size;
    }
    EXPECT_TRUE(document->load(folder.Write("whole.xml", wide)));
}

TEST(IXMLDOMDocument, HandlesOnOldNodesOutliveALoad) {
    const IXMLDOMDocumentPtr document = DocumentOf("<old><a/><b>text</b></old>");
    const IXMLDOMElementPtr old = document->documentElement();
    const IXMLDOMElementPtr detached = document->createElement("d");
    ASSERT_TRUE(document->loadXML("<new/>"));
    EXPECT_EQ(old->xml(), "<old><a/><b>text</b></old>");
    EXPECT_FALSE(old->parentNode());
    EXPECT_FALSE(old->nextSibling());
    EXPECT_FALSE(old->previousSibling());
    EXPECT_TRUE(old->firstChild()->parentNode() == old);
    EXPECT_TRUE(old->firstChild()->nextSibling() == old->lastChild());
    EXPECT_FALSE(detached->parentNode());
    EXPECT_FALSE(detached->nextSibling());
    EXPECT_TRUE(old->ownerDocument() == document);
    EXPECT_EQ(document->xml(), "<new/>");
    const IXMLDOMElementPtr root = document->documentElement();
    EXPECT_EQ(root->cloneNode(true)->nodeName(), "new");
    EXPECT_EQ(old->cloneNode(true)->text(), "text");
    root->appendChild(old->cloneNode(true));
    EXPECT_EQ(document->text(), "text");
}

TEST(IXMLDOMDocument, OldNodesCanNoLongerBeChanged) {
    const IXMLDOMDocumentPtr document = DocumentOf("<old>text<a/></old>");
    const IXMLDOMElementPtr old = document->documentElement();
    ASSERT_TRUE(document->loadXML("<new/>"));
    const IXMLDOMElementPtr root = document->documentElement();
    const IXMLDOMElementPtr fresh = document->createElement("x");
    EXPECT_EQ(FailureOf([&] { root->appendChild(old); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { document->replaceChild(old, root); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { old->appendChild(fresh); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { old->appendElement("x"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { old->appendText("x"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { old->removeChild(old->firstChild()); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { old->put_text("x"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { old->firstChild()->put_text("x"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { old->setAttribute("k", "v"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { old->removeAttribute("k"); }), E_INVALIDARG);
    EXPECT_EQ(old->xml(), "<old>text<a/></old>");
    EXPECT_EQ(document->xml(), "<new/>");
}

TEST(IXMLDOMDocument, CanBeLoadedAgainAndAgain) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    IXMLDOMNodePtr kept;
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(document->loadXML("<r><a>" + std::to_string(i) + "</a></r>"));
        if (i % 3 == 0) kept = document->documentElement()->firstChild();
        if (i % 7 == 6) kept = nullptr;
        EXPECT_EQ(document->text(), CString(std::to_string(i).c_str()));
        document->documentElement()->appendElement("b");
    }
    EXPECT_EQ(kept->text(), "18");
}

TEST(IXMLDOMDocument, TheDocumentNodeStaysTheSameThroughALoad) {
    const IXMLDOMDocumentPtr document = DocumentOf("<a/>");
    const IXMLDOMNodePtr node = document;
    ASSERT_TRUE(document->loadXML("<b><c/></b>"));
    EXPECT_TRUE(node == document);
    EXPECT_EQ(node->firstChild()->nodeName(), "b");
    EXPECT_TRUE(document->documentElement()->parentNode() == document);
    EXPECT_FALSE(document->documentElement()->nextSibling());
}

// ---- Files.

TEST(IXMLDOMDocument, AFileThatIsNotThereIsAFailedLoad) {
    const TestFolder folder;
    const IXMLDOMDocumentPtr document = DocumentOf("<old/>");
    EXPECT_FALSE(document->load(folder.Path("missing.xml")));
    EXPECT_EQ(document->parseError().errorCode(), SystemCode(ENOENT));
    EXPECT_EQ(document->parseError().line(), 0);
    EXPECT_EQ(document->parseError().url(), CString(folder.Path("missing.xml").c_str()));
    EXPECT_FALSE(document->parseError().reason().IsEmpty());
    EXPECT_FALSE(document->load(folder.Path()));
    EXPECT_EQ(document->parseError().errorCode(), SystemCode(EISDIR));
    EXPECT_FALSE(document->load(""));
    EXPECT_FALSE(document->load("http://localhost/x.xml"));
    EXPECT_EQ(document->xml(), "<old/>");
}

TEST(IXMLDOMDocument, WhatTheRecordHoldsCanBeLoaded) {
    // A short path is kept in the record itself, a long one elsewhere.
    for (const std::string& path : {std::string("/"), "/tmp/missing/" + std::string(100, 'x')}) {
        const IXMLDOMDocumentPtr document = DocumentOf("<old/>");
        EXPECT_FALSE(document->load(path));
        const HRESULT code = document->parseError().errorCode();
        EXPECT_FALSE(document->load(document->parseError().url()));
        EXPECT_EQ(document->parseError().errorCode(), code);
        EXPECT_EQ(document->parseError().url(), CString(path));
    }
    const IXMLDOMDocumentPtr document = DocumentOf("<old/>");
    EXPECT_FALSE(document->loadXML("<r/>\n</r>"));
    EXPECT_FALSE(document->loadXML(document->parseError().srcText()));
    EXPECT_EQ(document->parseError().srcText(), "</r>");
    EXPECT_EQ(document->parseError().line(), 1);
}

TEST(IXMLDOMDocument, SavesAndLoadsAFile) {
    const TestFolder folder;
    const IXMLDOMDocumentPtr document = DocumentOf("<r k='1'><a>\xC3\xA9 \r&#13;</a></r>");
    document->save(folder.Path("x.xml"));
    EXPECT_EQ(folder.Read("x.xml"), "<r k=\"1\"><a>\xC3\xA9 \n&#13;</a></r>");
    const IXMLDOMDocumentPtr loaded = IXMLDOMDocumentPtr::CreateInstance();
    ASSERT_TRUE(loaded->load(folder.Path("x.xml")));
    EXPECT_EQ(loaded->text(), "\xC3\xA9 \n\r");
    EXPECT_EQ(loaded->parseError().url(), CString(folder.Path("x.xml").c_str()));
}

TEST(IXMLDOMDocument, SavesALargeFileWhole) {
    const TestFolder folder;
    const std::string text = "<r>" + Repeated("<a>some text</a>", 200000) + "</r>";
    DocumentOf(text)->save(folder.Path("x.xml"));
    EXPECT_EQ(folder.Read("x.xml"), text);
}

TEST(IXMLDOMDocument, LoadsFromAPipe) {
    const TestFolder folder;
    const std::string path = folder.Path("pipe");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const std::string text = "<r>" + Repeated("0123456789", 10000) + "</r>";
    const pid_t child = ::fork();
    if (child == 0) {
        folder.Write("pipe", text);
        ::_exit(0);
    }
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    EXPECT_TRUE(document->load(path));
    EXPECT_EQ(document->text().GetLength(), 100000);
}

TEST(IXMLDOMDocument, SavingLeavesNothingButTheFile) {
    const TestFolder folder;
    const IXMLDOMDocumentPtr document = DocumentOf("<r/>");
    document->save(folder.Path("x.xml"));
    document->documentElement()->put_text("new");
    document->save(folder.Path("x.xml"));
    EXPECT_EQ(folder.Read("x.xml"), "<r>new</r>");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(IXMLDOMDocument, SavingKeepsPermissionsAndFollowsALink) {
    const TestFolder folder;
    folder.Write("real.xml", "old");
    std::filesystem::permissions(folder.Path("real.xml"), std::filesystem::perms(0640));
    std::filesystem::create_symlink("real.xml", folder.Path("link.xml"));
    DocumentOf("<r/>")->save(folder.Path("link.xml"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link.xml")));
    EXPECT_EQ(folder.Read("real.xml"), "<r/>");
    EXPECT_EQ(std::filesystem::status(folder.Path("real.xml")).permissions(),
              std::filesystem::perms(0640));
}

TEST(IXMLDOMDocument, ANewFileHasTheUsualPermissions) {
    const TestFolder folder;
    const mode_t before = ::umask(022);
    DocumentOf("<r/>")->save(folder.Path("x.xml"));
    ::umask(before);
    EXPECT_EQ(std::filesystem::status(folder.Path("x.xml")).permissions(),
              std::filesystem::perms(0644));
}

TEST(IXMLDOMDocument, SavingIntoAMissingFolderRaisesTheSystemsError) {
    const TestFolder folder;
    const IXMLDOMDocumentPtr document = DocumentOf("<r/>");
    EXPECT_EQ(FailureOf([&] { document->save(folder.Path("no/x.xml")); }), SystemCode(ENOENT));
    EXPECT_EQ(FailureOf([&] { document->save(folder.Path()); }), SystemCode(EISDIR));
    EXPECT_EQ(FailureOf([&] { document->save(""); }), SystemCode(ENOENT));
    folder.Write("file", "");
    EXPECT_EQ(FailureOf([&] { document->save(folder.Path("file/x.xml")); }), SystemCode(ENOTDIR));
}

TEST(IXMLDOMDocument, AFullDeviceRaisesTheSystemsError) {
    EXPECT_EQ(FailureOf([] { DocumentOf("<r/>")->save("/dev/full"); }), SystemCode(ENOSPC));
    EXPECT_EQ(static_cast<std::uint32_t>(SystemCode(ENOSPC)), 0x8007001Cu);
}

TEST(IXMLDOMDocument, AFailedSaveTellsTheFileAndTheReason) {
    const TestFolder folder;
    const IXMLDOMDocumentPtr document = DocumentOf("<r/>");
    const std::string nowhere = folder.Path("no/x.xml");
    EXPECT_EQ(DescriptionOf([&] { document->save(nowhere); }),
              nowhere + ": No such file or directory");
    EXPECT_EQ(DescriptionOf([&] { document->save(folder.Path()); }),
              folder.Path() + ": Is a directory");
    EXPECT_EQ(DescriptionOf([&] { document->save("/dev/full"); }),
              "/dev/full: No space left on device");
}

TEST(IXMLDOMDocument, AFailedSaveKeepsTheOldFile) {
    const TestFolder folder;
    folder.Write("x.xml", "<old/>");
    const IXMLDOMDocumentPtr document = DocumentOf("<r>" + Repeated("0123456789", 100000) + "</r>");
    // Files may not grow beyond 64 KiB for the time of the save.
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{64 * 1024, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const HRESULT failure = FailureOf([&] { document->save(folder.Path("x.xml")); });
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(failure, SystemCode(EFBIG));
    EXPECT_EQ(folder.Read("x.xml"), "<old/>");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(IXMLDOMDocument, ADocumentWithoutARootIsNotSaved) {
    const TestFolder folder;
    folder.Write("x.xml", "<old/>");
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    document->appendChild(document->createComment("c"));
    EXPECT_EQ(FailureOf([&] { document->save(folder.Path("x.xml")); }), E_UNEXPECTED);
    EXPECT_EQ(folder.Read("x.xml"), "<old/>");
}

// ---- Encodings of files.

std::string Utf16(std::string_view ascii, bool big, std::string_view mark = "") {
    std::string text(mark);
    for (const char c : ascii) {
        if (big) text += '\0';
        text += c;
        if (!big) text += '\0';
    }
    return text;
}

struct Encoded : testing::Test {
    bool Load(std::string_view bytes) { return document->load(folder.Write("x.xml", bytes)); }
    std::string Reason() { return document->parseError().reason().GetString(); }

    TestFolder folder;
    IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
};

TEST_F(Encoded, Utf16InBothOrdersWithAMark) {
    EXPECT_TRUE(Load(Utf16("<r>a</r>", false, "\xFF\xFE"))) << Reason();
    EXPECT_TRUE(Load(Utf16("<r>a</r>", true, "\xFE\xFF"))) << Reason();
    const std::string_view declared = "<?xml version='1.0' encoding='UTF-16'?><r>a</r>";
    EXPECT_TRUE(Load(Utf16(declared, false, "\xFF\xFE"))) << Reason();
    EXPECT_TRUE(Load(Utf16(declared, true, "\xFE\xFF"))) << Reason();
    EXPECT_EQ(document->text(), "a");
    EXPECT_EQ(document->xml(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?><r>a</r>");
}

TEST_F(Encoded, Utf16InBothOrdersWithADeclaration) {
    const std::string_view declared = "<?xml version='1.0' encoding='UTF-16'?><r>a</r>";
    EXPECT_TRUE(Load(Utf16(declared, false))) << Reason();
    EXPECT_TRUE(Load(Utf16(declared, true))) << Reason();
    EXPECT_TRUE(Load(Utf16("<?xml version='1.0' encoding='utf-16be'?><r/>", true))) << Reason();
    EXPECT_TRUE(Load(Utf16("<?xml version='1.0' encoding='utf-16le'?><r/>", false))) << Reason();
}

TEST_F(Encoded, Utf16BeyondAsciiIsTheSameText) {
    // e with acute, the euro sign, a smiling face.
    const std::string little = Utf16("<r>", false, "\xFF\xFE") +
                               std::string("\xE9\x00\xAC\x20\x3D\xD8\x00\xDE", 8) +
                               Utf16("</r>", false);
    const std::string big = Utf16("<r>", true, "\xFE\xFF") +
                            std::string("\x00\xE9\x20\xAC\xD8\x3D\xDE\x00", 8) +
                            Utf16("</r>", true);
    ASSERT_TRUE(Load(little)) << Reason();
    EXPECT_EQ(document->text(), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    ASSERT_TRUE(Load(big)) << Reason();
    EXPECT_EQ(document->text(), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST_F(Encoded, BrokenUtf16IsRefused) {
    const std::string start = Utf16("<r>", false, "\xFF\xFE");
    const std::string end = Utf16("</r>", false);
    EXPECT_FALSE(Load(start + std::string("\x3D\xD8", 2) + end));
    EXPECT_THAT(Reason(), HasSubstr("not valid UTF-16"));
    EXPECT_FALSE(Load(start + std::string("\x00\xDE", 2) + end));
    EXPECT_FALSE(Load(start + end + "x"));
    EXPECT_FALSE(Load(start + std::string("\x3D\xD8", 2)));
    EXPECT_FALSE(Load(start + std::string("\0\0", 2) + end));
    EXPECT_THAT(Reason(), HasSubstr("zero byte"));
}

TEST_F(Encoded, ADeclarationThatContradictsUtf16IsRefused) {
    EXPECT_FALSE(Load(Utf16("<?xml version='1.0' encoding='UTF-8'?><r/>", false, "\xFF\xFE")));
    EXPECT_THAT(Reason(), HasSubstr("declaration does not say so"));
    EXPECT_FALSE(Load(Utf16("<?xml version='1.0' encoding='UTF-16BE'?><r/>", false, "\xFF\xFE")));
    EXPECT_FALSE(Load(Utf16("<?xml version='1.0'?><r/>", false)));
    EXPECT_FALSE(Load(Utf16("<r/>", false)));
    EXPECT_EQ(document->parseError().line(), 1);
    EXPECT_EQ(document->parseError().linepos(), 2);
}

TEST_F(Encoded, ADeclarationThatContradictsBytesIsRefused) {
    for (const char* name : {"UTF-16", "utf-16le", "UTF-32", "ISO-10646-UCS-2"}) {
        EXPECT_FALSE(Load(std::string("<?xml version='1.0' encoding='") + name + "'?><r/>"));
        EXPECT_THAT(Reason(), HasSubstr("not that of the bytes")) << name;
    }
    EXPECT_FALSE(Load("\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?><r/>"));
    EXPECT_THAT(Reason(), HasSubstr("byte order mark"));
    EXPECT_TRUE(Load("\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><r/>"));
    EXPECT_EQ(document->parseError().errorCode(), 0);
}

TEST_F(Encoded, Utf32IsRefused) {
    EXPECT_FALSE(Load(std::string_view("\xFF\xFE\0\0<\0\0\0", 8)));
    EXPECT_THAT(Reason(), HasSubstr("UTF-32"));
    EXPECT_FALSE(Load(std::string_view("\0\0\xFE\xFF\0\0\0<", 8)));
    EXPECT_THAT(Reason(), HasSubstr("UTF-32"));
    EXPECT_FALSE(Load(std::string_view("<\0\0\0r\0\0\0", 8)));
    EXPECT_FALSE(Load(std::string_view("\0\0\0<\0\0\0r", 8)));
    EXPECT_THAT(Reason(), HasSubstr("UTF-32"));
}

TEST_F(Encoded, Latin1AndItsCousinAreConverted) {
    ASSERT_TRUE(Load("<?xml version='1.0' encoding='ISO-8859-1'?><r>\xE9\x80</r>")) << Reason();
    EXPECT_EQ(document->text(), "\xC3\xA9\xC2\x80");
    ASSERT_TRUE(Load("<?xml version='1.0' encoding='windows-1252'?><r>\xE9\x80</r>")) << Reason();
    EXPECT_EQ(document->text(), "\xC3\xA9\xE2\x82\xAC");
    ASSERT_TRUE(Load("<?xml version='1.0' encoding='Latin1'?><r>\xE9</r>")) << Reason();
    EXPECT_EQ(document->text(), "\xC3\xA9");
    EXPECT_FALSE(Load("<?xml version='1.0' encoding='windows-1252'?><r>\x81</r>"));
    EXPECT_THAT(Reason(), HasSubstr("no meaning"));
}

TEST_F(Encoded, OtherEncodingsAreReadInAsciiOnly) {
    EXPECT_TRUE(Load("<?xml version='1.0' encoding='us-ascii'?><r>a</r>")) << Reason();
    EXPECT_TRUE(Load("<?xml version='1.0' encoding='ISO-8859-15'?><r>a</r>")) << Reason();
    EXPECT_TRUE(Load("<?xml version='1.0' encoding='EUC-JP'?><r>a</r>")) << Reason();
    EXPECT_FALSE(Load("<?xml version='1.0' encoding='us-ascii'?><r>\xC3\xA9</r>"));
    EXPECT_THAT(Reason(), HasSubstr("US-ASCII"));
    EXPECT_FALSE(Load("<?xml version='1.0' encoding='ISO-8859-15'?><r>\xC3\xA9</r>"));
    EXPECT_THAT(Reason(), HasSubstr("cannot be read"));
    EXPECT_FALSE(Load("<?xml version='1.0' encoding='UTF-7'?><r>+AGE-</r>"));
    EXPECT_FALSE(Load("<?xml version='1.0' encoding='nonsense'?><r>a</r>"));
    EXPECT_EQ(document->parseError().errorCode(), DOM_E_MALFORMED);
}

// ---- Depth.

struct Deep : testing::Test {
    static constexpr std::size_t kDepth = 100000;
    std::string text = Repeated("<a>", kDepth) + "x" + Repeated("</a>", kDepth);
};

TEST_F(Deep, IsLoadedPrintedAndRead) {
    const IXMLDOMDocumentPtr document = DocumentOf(text);
    EXPECT_TRUE(document->xml() == text.c_str());
    EXPECT_EQ(document->text(), "x");
    EXPECT_EQ(document->getElementsByTagName("a")->length(), static_cast<LONG>(kDepth));
    EXPECT_EQ(document->documentElement()->cloneNode(true)->text(), "x");
}

TEST_F(Deep, IsRefusedWhenCutOff) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    EXPECT_FALSE(document->loadXML(std::string_view(text).substr(0, text.size() - 1)));
}

TEST_F(Deep, IsReplacedByAText) {
    const IXMLDOMDocumentPtr document = DocumentOf(text);
    document->documentElement()->put_text("y");
    EXPECT_EQ(document->xml(), "<a>y</a>");
}

TEST_F(Deep, IsTakenOutAndFreed) {
    const IXMLDOMDocumentPtr document = DocumentOf(text);
    document->documentElement()->removeChild(document->documentElement()->firstChild());
    EXPECT_EQ(document->xml(), "<a/>");
}

TEST_F(Deep, IsBuiltFromTheTop) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    IXMLDOMElementPtr element = document->appendElement("a");
    for (std::size_t i = 1; i < kDepth; ++i) element = element->appendElement("a");
    element->put_text("x");
    EXPECT_TRUE(document->xml() == text.c_str());
}

TEST_F(Deep, IsBuiltFromTheBottom) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    IXMLDOMElementPtr element = document->createElement("a");
    element->put_text("x");
    for (std::size_t i = 1; i < kDepth; ++i) {
        const IXMLDOMElementPtr outer = document->createElement("a");
        outer->appendChild(element);
        element = outer;
    }
    document->appendChild(element);
    EXPECT_TRUE(document->xml() == text.c_str());
}

}  // namespace
