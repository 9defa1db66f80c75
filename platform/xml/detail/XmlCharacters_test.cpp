#include <platform/xml/Dom.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <string>
#include <vector>

#include <platform/xml/DomTestSupport_test.h>

// What may stand in a document, seen through the operations that refuse the rest.

namespace {

std::string Utf8(unsigned c) {
    std::string text;
    const auto put = [&text](unsigned byte) { text += static_cast<char>(byte); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | c >> 6);
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | c >> 12);
        put(0x80 | (c >> 6 & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | c >> 18);
        put(0x80 | (c >> 12 & 0x3F));
        put(0x80 | (c >> 6 & 0x3F));
        put(0x80 | (c & 0x3F));
    }
    return text;
}

bool InAny(unsigned c, const std::vector<std::pair<unsigned, unsigned>>& ranges) {
    for (const auto& [first, last] : ranges) {
        if (first <= c && c <= last) return true;
    }
    return false;
}

// Productions 2, 4 and 4a of XML 1.0, fifth edition.
bool IsChar(unsigned c) {
    return InAny(c,
                 {{0x9, 0xA}, {0xD, 0xD}, {0x20, 0xD7FF}, {0xE000, 0xFFFD}, {0x10000, 0x10FFFF}});
}
bool IsNameStart(unsigned c) {
    return InAny(c, {{':', ':'},
                     {'A', 'Z'},
                     {'_', '_'},
                     {'a', 'z'},
                     {0xC0, 0xD6},
                     {0xD8, 0xF6},
                     {0xF8, 0x2FF},
                     {0x370, 0x37D},
                     {0x37F, 0x1FFF},
                     {0x200C, 0x200D},
                     {0x2070, 0x218F},
                     {0x2C00, 0x2FEF},
                     {0x3001, 0xD7FF},
                     {0xF900, 0xFDCF},
                     {0xFDF0, 0xFFFD},
                     {0x10000, 0xEFFFF}});
}
bool IsNamePart(unsigned c) {
    return IsNameStart(c) ||
           InAny(c, {{'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}});
}

// Every character of the first plane, and the ends of the others.
std::vector<unsigned> Characters() {
    std::vector<unsigned> all;
    for (unsigned c = 0; c < 0x10002; ++c) all.push_back(c);
    for (const unsigned c : {0xEFFFFu, 0xF0000u, 0x10FFFFu, 0x110000u, 0x1FFFFFu}) all.push_back(c);
    return all;
}

TEST(XmlCharacters, TextsHoldWhatXmlAllows) {
    const IXMLDOMElementPtr root = DocumentOf("<r/>")->documentElement();
    for (const unsigned c : Characters()) {
        const bool taken = FailureOf([&] { root->put_text(Utf8(c)); }) == 0;
        ASSERT_EQ(taken, IsChar(c)) << std::hex << c;
    }
}

TEST(XmlCharacters, NamesHoldWhatXmlAllows) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    for (const unsigned c : Characters()) {
        const bool starts = FailureOf([&] { document->createElement(Utf8(c)); }) == 0;
        const bool stands = FailureOf([&] { document->createElement("a" + Utf8(c)); }) == 0;
        ASSERT_EQ(starts, IsNameStart(c)) << std::hex << c;
        ASSERT_EQ(stands, IsNamePart(c)) << std::hex << c;
    }
}

TEST(XmlCharacters, NamesOnLoadingAreTheSame) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    for (const unsigned c : Characters()) {
        if (c < 0x80) continue;
        ASSERT_EQ(document->loadXML("<" + Utf8(c) + "/>"), IsNameStart(c)) << std::hex << c;
        ASSERT_EQ(document->loadXML("<a " + Utf8(c) + "='1'/>"), IsNameStart(c)) << std::hex << c;
        ASSERT_EQ(document->loadXML("<a" + Utf8(c) + "/>"), IsNamePart(c)) << std::hex << c;
    }
}

TEST(XmlCharacters, ABadByteIsFoundAtEveryPlace) {
    const IXMLDOMElementPtr root = DocumentOf("<r/>")->documentElement();
    for (const char* bad : {"\x01", "\xFF", "\xC3", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
        for (std::size_t size = 0; size < 70; ++size) {
            const std::string before(size, size % 2 == 0 ? 'a' : '\n');
            for (const char* after : {"", "x", "0123456789abcdef0123456789", "\xC3\xA9"}) {
                ASSERT_EQ(FailureOf([&] { root->put_text(before + bad + after); }), E_INVALIDARG);
            }
        }
    }
}

}  // namespace
