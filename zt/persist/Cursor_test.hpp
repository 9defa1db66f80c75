// A cursor over a document of its own, for tests.

#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/com/ComError.h>
#include <platform/xml/Dom.h>
#include <zt/persist/PCExBase.h>

#include <memory>
#include <string>
#include <string_view>

namespace ZT {

enum Mode : int { kNeither = -1, kLoading = 0, kStoring = 1 };

/// What `call` raises, as its 32 bits; 0 if it raises no failure of the document.
template <class Call>
unsigned Failure(Call call) {
    try {
        call();
    } catch (const _com_error& error) {
        return static_cast<unsigned>(error.Error());
    }
    return 0;
}

constexpr unsigned kPointerFailure = 0x80004003;
constexpr unsigned kArgumentFailure = 0x80070057;

struct CursorTest : testing::Test {
    PC pc;
    IXMLDOMDocumentPtr doc;
    std::unique_ptr<PCExBase> cursor;

    /// Stores under a new root "R".
    void Store(bool indent = false) {
        NewDocument();
        Start(kStoring);
        cursor->m_bIndent = indent;
        const IXMLDOMElementPtr root = doc->createElement("R");
        doc->appendChild(root);
        cursor->Push(root);
    }

    /// Loads from `xml`, whose root is the current element.
    void Load(const std::string& xml, Mode mode = kLoading) {
        NewDocument();
        ASSERT_TRUE(doc->loadXML(xml.c_str())) << xml;
        Start(mode);
        cursor->Push(doc->documentElement());
    }

    /// Loads what has been stored.
    void Reload() { Load(Xml()); }

    /// The text of the root.
    std::string Xml() const { return Xml(doc->documentElement()); }

    static std::string Xml(const IXMLDOMNodePtr& node) { return node->xml().GetString(); }

    void NewDocument() {
        cursor.reset();
        doc = IXMLDOMDocumentPtr::CreateInstance();
    }

    void Start(Mode mode) {
        pc.m_mode = mode;
        cursor = std::make_unique<PCExBase>(&pc, doc);
    }
};

}  // namespace ZT
