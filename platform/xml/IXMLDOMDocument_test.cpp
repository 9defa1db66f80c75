#include <platform/xml/Dom.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

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

}  // namespace
