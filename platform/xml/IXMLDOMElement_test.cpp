#include <platform/xml/Dom.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <platform/xml/DomTestSupport_test.h>

using testing::ElementsAre;

namespace {

std::vector<std::string> AttributesOf(const IXMLDOMElementPtr& element) {
    std::vector<std::string> texts;
    for (const DomAttribute& attribute : element->attributes()) {
        texts.push_back(std::string(attribute.name) + "=" + std::string(attribute.value));
    }
    return texts;
}

TEST(IXMLDOMElement, HasATag) {
    EXPECT_EQ(DocumentOf("<p:r/>")->documentElement()->tagName(), "p:r");
}

TEST(IXMLDOMElement, AnAttributeIsAVariantWithAString) {
    const IXMLDOMElementPtr root = DocumentOf("<r k='\xC3\xA9' e=''/>")->documentElement();
    const COleVariant value = root->getAttribute("k");
    ASSERT_EQ(value.vt, VT_BSTR);
    EXPECT_EQ(CString(value.bstrVal), "\xC3\xA9");
    EXPECT_EQ(root->getAttribute("e").vt, VT_BSTR);
    EXPECT_EQ(SysStringLen(root->getAttribute("e").bstrVal), 0u);
}

TEST(IXMLDOMElement, AMissingAttributeIsANullVariant) {
    const IXMLDOMElementPtr root = DocumentOf("<r k='1'/>")->documentElement();
    EXPECT_EQ(root->getAttribute("x").vt, VT_NULL);
    EXPECT_EQ(root->getAttribute("").vt, VT_NULL);
    EXPECT_EQ(root->getAttribute(nullptr).vt, VT_NULL);
    EXPECT_EQ(root->getAttribute("K").vt, VT_NULL);
    EXPECT_EQ(root->attributeView("x"), std::nullopt);
    EXPECT_EQ(root->attributeView("k"), "1");
}

TEST(IXMLDOMElement, SetsAddsAndRemovesAttributes) {
    const IXMLDOMDocumentPtr document = DocumentOf("<r a='1' b='2'/>");
    const IXMLDOMElementPtr root = document->documentElement();
    root->setAttribute("a", "x");
    root->setAttribute("c", "<&\"'\t\n\r>");
    root->setAttribute("d", "");
    root->removeAttribute("b");
    root->removeAttribute("none");
    EXPECT_THAT(AttributesOf(root), ElementsAre("a=x", "c=<&\"'\t\n\r>", "d="));
    EXPECT_EQ(root->attributes().length(), 3);
    EXPECT_EQ(AttributesOf(DocumentOf(document->xml().View())->documentElement()),
              AttributesOf(root));
}

TEST(IXMLDOMElement, RefusesAttributesThatCannotBeStored) {
    const IXMLDOMElementPtr root = DocumentOf("<r/>")->documentElement();
    EXPECT_EQ(FailureOf([&] { root->setAttribute("", "x"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->setAttribute("a b", "x"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->setAttribute("a", "\x01"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->setAttribute("a", "\xFF"); }), E_INVALIDARG);
    EXPECT_EQ(root->xml(), "<r/>");
}

TEST(IXMLDOMElement, FindsElementsAmongAllDescendants) {
    const IXMLDOMDocumentPtr document =
        DocumentOf("<b><a><b>1</b></a><b>2<b>3</b></b><?b x?><c/></b>");
    const IXMLDOMElementPtr root = document->documentElement();
    const IXMLDOMNodeListPtr found = root->getElementsByTagName("b");
    ASSERT_EQ(found->length(), 3);
    EXPECT_EQ(found->item(0)->text(), "1");
    EXPECT_EQ(found->item(1)->text(), "23");
    EXPECT_EQ(found->item(2)->text(), "3");
    EXPECT_EQ(root->getElementsByTagName("*")->length(), 5);
    EXPECT_EQ(document->getElementsByTagName("b")->length(), 4);
    EXPECT_EQ(document->getElementsByTagName("x")->length(), 0);
    EXPECT_EQ(FailureOf([&] { root->getElementsByTagName("a/b"); }), E_INVALIDARG);
    EXPECT_EQ(FailureOf([&] { root->getElementsByTagName(""); }), E_INVALIDARG);
}

TEST(IXMLDOMElement, TakesNumbersAndWideTextsAsAttributes) {
    const IXMLDOMDocumentPtr document = DocumentOf("<a/>");
    const IXMLDOMElementPtr element = document->documentElement();
    element->setAttribute("n", COleVariant(LONG{5}));
    element->setAttribute("x", COleVariant(0.5));
    element->setAttribute(_bstr_t("t"), COleVariant("\xC3\xA9"));
    EXPECT_EQ(document->xml(), "<a n=\"5\" x=\"0.5\" t=\"\xC3\xA9\"/>");
    COleVariant null;
    null.vt = VT_NULL;
    EXPECT_EQ(FailureOf([&] { element->setAttribute("n", null); }), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(FailureOf([&] { element->setAttribute("1", COleVariant(LONG{5})); }), E_INVALIDARG);
    EXPECT_EQ(element->attributeView("n"), "5");
}

}  // namespace
