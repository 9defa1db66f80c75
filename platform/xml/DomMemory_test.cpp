#include <platform/xml/Dom.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include <platform/xml/DomTestSupport_test.h>

// What happens without memory. The parser's library takes its memory by functions of its
// own, everything else by operator new; both can be made to refuse large blocks.

namespace {

constexpr std::size_t kAny = std::numeric_limits<std::size_t>::max();

std::size_t greatest_new = kAny;
std::size_t greatest_page = kAny;
int larger_pages = 0;

void* NewOrNull(std::size_t size) noexcept {
    return size > greatest_new ? nullptr : std::malloc(size != 0 ? size : 1);
}

void* New(std::size_t size) {
    if (void* const memory = NewOrNull(size)) return memory;
    throw std::bad_alloc();
}

void* Page(std::size_t size) {
    if (size > greatest_page && larger_pages-- <= 0) return nullptr;
    return std::malloc(size);
}

}  // namespace

void* operator new(std::size_t size) {
    return New(size);
}
void* operator new[](std::size_t size) {
    return New(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return NewOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return NewOrNull(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}

namespace {

// While it lives, no block above `greatest` bytes is given by operator new.
struct ShortOfMemory {
    explicit ShortOfMemory(std::size_t greatest) { greatest_new = greatest; }
    ShortOfMemory(const ShortOfMemory&) = delete;
    ShortOfMemory& operator=(const ShortOfMemory&) = delete;
    ~ShortOfMemory() { greatest_new = kAny; }
};

// The same for the memory of the documents themselves, of which `larger` blocks above
// `greatest` bytes are still given.
struct ShortOfPages {
    explicit ShortOfPages(std::size_t greatest, int larger = 0) {
        greatest_page = greatest;
        larger_pages = larger;
    }
    ShortOfPages(const ShortOfPages&) = delete;
    ShortOfPages& operator=(const ShortOfPages&) = delete;
    ~ShortOfPages() { greatest_page = kAny; }
};

// Longer than a page of the parser's library.
const std::string kLong(40000, 'a');

struct DomMemory : testing::Test {
    DomMemory() { pugi::set_memory_management_functions(Page, std::free); }
    ~DomMemory() override {
        root = nullptr;
        document = nullptr;
        pugi::set_memory_management_functions(m_allocate, m_free);
    }

    void Load(const std::string& text) {
        document = DocumentOf(text);
        root = document->documentElement();
    }

    IXMLDOMDocumentPtr document;
    IXMLDOMElementPtr root;

private:
    pugi::allocation_function m_allocate = pugi::get_memory_allocation_function();
    pugi::deallocation_function m_free = pugi::get_memory_deallocation_function();
};

TEST_F(DomMemory, ChildrenAreNotMadeInPart) {
    Load("<r/>");
    const ShortOfPages no_pages(1000);
    EXPECT_EQ(FailureOf([&] { root->appendElement(kLong); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->appendText(kLong); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->put_text(kLong); }), E_OUTOFMEMORY);
    EXPECT_FALSE(root->hasChildNodes());
    EXPECT_EQ(document->xml(), "<r/>");
}

TEST_F(DomMemory, DetachedNodesAreNotMadeInPart) {
    Load("<r/>");
    const ShortOfPages no_pages(1000);
    EXPECT_EQ(FailureOf([&] { document->createElement(kLong); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { document->createTextNode(kLong); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { document->createComment(kLong); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { document->createCDATASection(kLong); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { document->createProcessingInstruction("p", kLong); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { document->createProcessingInstruction(kLong, ""); }), E_OUTOFMEMORY);
    EXPECT_EQ(document->xml(), "<r/>");
}

TEST_F(DomMemory, TextsStayAsTheyWere) {
    Load("<r><!--c-->t</r>");
    const IXMLDOMNodePtr comment = root->firstChild();
    const ShortOfPages no_pages(1000);
    EXPECT_EQ(FailureOf([&] { comment->put_nodeValue(kLong); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->lastChild()->put_text(kLong); }), E_OUTOFMEMORY);
    EXPECT_EQ(document->xml(), "<r><!--c-->t</r>");
}

// Whatever it was: it goes only when the new text is there.
TEST_F(DomMemory, AContentStaysUntilThereIsMemoryForTheNewOne) {
    for (const std::string inside :
         {"<a/>t", "<a><b/></a>", "t<a/>", "<!--c-->", "<![CDATA[t]]>"}) {
        Load("<r>" + inside + "</r>");
        const IXMLDOMNodePtr first = root->firstChild();
        {
            const ShortOfPages no_pages(1000);
            EXPECT_EQ(FailureOf([&] { root->put_text(kLong); }), E_OUTOFMEMORY);
        }
        EXPECT_EQ(document->xml(), CString("<r>" + inside + "</r>"));
        EXPECT_TRUE(root->firstChild() == first);
        EXPECT_TRUE(first->parentNode() == root);
        root->put_text(kLong);
        EXPECT_EQ(document->xml(), CString("<r>" + kLong + "</r>"));
        EXPECT_FALSE(first->parentNode());
        const ShortOfPages no_pages(0);
        root->put_text("");
        EXPECT_EQ(document->xml(), "<r/>");
    }
}

TEST_F(DomMemory, AttributesAreNotMadeInPart) {
    Load("<r k=\"v\"/>");
    const ShortOfPages no_pages(1000);
    EXPECT_EQ(FailureOf([&] { root->setAttribute(kLong, "v"); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->setAttribute("new", kLong); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->setAttribute("k", kLong); }), E_OUTOFMEMORY);
    EXPECT_EQ(root->attributes().length(), 1);
    EXPECT_EQ(document->xml(), "<r k=\"v\"/>");
}

TEST_F(DomMemory, AttributesFromVariantsNeedMemoryOnTheWay) {
    Load("<r k=\"v\"/>");
    const COleVariant number(123456789L);
    const COleVariant text(kLong.c_str());
    {
        const ShortOfMemory no_memory(16);
        EXPECT_EQ(FailureOf([&] { root->setAttribute("k", number); }), E_OUTOFMEMORY);
        EXPECT_EQ(FailureOf([&] { root->setAttribute("k", text); }), E_OUTOFMEMORY);
        EXPECT_EQ(FailureOf([&] { root->setAttribute("new", text); }), E_OUTOFMEMORY);
    }
    EXPECT_EQ(document->xml(), "<r k=\"v\"/>");
    root->setAttribute("k", number);
    EXPECT_EQ(document->xml(), "<r k=\"123456789\"/>");
}

TEST_F(DomMemory, TextsFromStringsNeedMemoryOnTheWay) {
    Load("<r>t</r>");
    const _bstr_t text(kLong.c_str());
    {
        const ShortOfMemory no_memory(16);
        EXPECT_EQ(FailureOf([&] { root->put_text(text); }), E_OUTOFMEMORY);
    }
    EXPECT_EQ(document->xml(), "<r>t</r>");
    root->put_text(text);
    EXPECT_EQ(document->text(), CString(kLong));
}

// A name that is short enough for the document's memory, but not for the way there.
TEST_F(DomMemory, NamesNeedMemoryOnTheWayToo) {
    Load("<r/>");
    const ShortOfPages no_pages(63);
    const std::string name(64, 'n');
    EXPECT_EQ(FailureOf([&] { root->appendElement(name); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->setAttribute(name, "v"); }), E_OUTOFMEMORY);
    EXPECT_EQ(document->xml(), "<r/>");
    root->appendElement(name.substr(1));
    EXPECT_EQ(root->firstChild()->nodeName(), CString(name.substr(1).c_str()));
}

TEST_F(DomMemory, LongNamesAreTakenWhole) {
    Load("<r/>");
    const std::string name(64, 'n');
    root->appendElement(name)->setAttribute(name, "v");
    EXPECT_EQ(document->xml(), CString(("<r><" + name + ' ' + name + "=\"v\"/></r>").c_str()));
}

// Copies within one document share their texts, so these are copies of an old content, and
// of the document itself.
struct DomCopyMemory : DomMemory, testing::WithParamInterface<std::string> {};

TEST_P(DomCopyMemory, CopiesAreNotMadeInPart) {
    Load(GetParam());
    ASSERT_TRUE(document->loadXML("<new/>"));
    {
        const ShortOfPages no_pages(1000);
        EXPECT_EQ(FailureOf([&] { root->cloneNode(true); }), E_OUTOFMEMORY);
    }
    EXPECT_EQ(document->xml(), "<new/>");
    EXPECT_EQ(root->cloneNode(true)->xml(), CString(GetParam().c_str()));
    EXPECT_EQ(root->cloneNode(true)->xml(), root->xml());
}

TEST_P(DomCopyMemory, DocumentsAreNotCopiedInPart) {
    Load(GetParam());
    for (const int pages : {0, 1}) {
        // A document takes a page at once, before anything is copied.
        const ShortOfPages few_pages(1000, pages);
        EXPECT_EQ(FailureOf([&] { document->cloneNode(true); }), E_OUTOFMEMORY) << pages;
    }
    EXPECT_EQ(document->cloneNode(true)->xml(), CString(GetParam().c_str()));
}

std::string ManyNodes() {
    std::string text = "<r>";
    for (int i = 0; i < 2000; ++i) text += "<a><b/></a>";
    return text + "</r>";
}
std::string ManyAttributes() {
    std::string text = "<r><a";
    for (int i = 0; i < 2000; ++i) text += " k" + std::to_string(i) + "=\"v\"";
    return text + "/></r>";
}

INSTANTIATE_TEST_SUITE_P(
    Contents, DomCopyMemory,
    testing::Values("<r><a/><" + kLong + "/></r>", "<r><a/>" + kLong + "<b/></r>",
                    "<r><a k=\"" + kLong + "\"/></r>", "<r><a><!--" + kLong + "--></a><b/></r>",
                    "<r><a " + kLong + "=\"v\"/></r>", ManyNodes(), ManyAttributes()));

TEST_F(DomMemory, FlatCopiesAreNotMadeInPart) {
    for (const std::string& text :
         {"<r k=\"" + kLong + "\"/>", "<r " + kLong + "=\"v\"/>", "<" + kLong + "/>"}) {
        Load(text);
        ASSERT_TRUE(document->loadXML("<new/>"));
        {
            const ShortOfPages no_pages(1000);
            EXPECT_EQ(FailureOf([&] { root->cloneNode(false); }), E_OUTOFMEMORY);
        }
        EXPECT_EQ(root->cloneNode(false)->xml(), CString(text.c_str()));
    }
}

TEST_F(DomMemory, LoadsThatFailKeepTheContent) {
    Load("<r/>");
    const std::string text = "<n>" + kLong + "</n>";
    {
        const ShortOfPages no_pages(1000);
        EXPECT_EQ(FailureOf([&] { document->loadXML(text); }), E_OUTOFMEMORY);
    }
    EXPECT_EQ(document->xml(), "<r/>");
    root->appendElement("a");
    EXPECT_EQ(document->xml(), "<r><a/></r>");
}

// Nothing of an earlier load, and nothing of what would have been said about this one.
void ExpectNoMemoryIsRecorded(const IXMLDOMDocumentPtr& document, const char* url) {
    const IXMLDOMParseError& error = document->parseError();
    EXPECT_EQ(error.errorCode(), E_OUTOFMEMORY);
    EXPECT_EQ(error.reason(), "Out of memory.");
    EXPECT_EQ(error.line(), 0);
    EXPECT_EQ(error.linepos(), 0);
    EXPECT_EQ(error.filepos(), 0);
    EXPECT_EQ(error.srcText(), "");
    EXPECT_EQ(error.url(), url);
}

TEST_F(DomMemory, LoadsThatFailForWantOfMemorySaySo) {
    const std::string good = "<n>" + kLong + "</n>";
    Load("<r/>");
    ASSERT_FALSE(document->loadXML("<r>\n<a></r>"));
    {
        const ShortOfPages no_pages(1000);
        EXPECT_EQ(FailureOf([&] { document->loadXML(good); }), E_OUTOFMEMORY);
        ExpectNoMemoryIsRecorded(document, "");
    }
    // The fault is found, but there is no memory to show its line.
    const std::string bad = "<n>" + kLong + "\n" + std::string(150, ' ') + "</m>";
    {
        const ShortOfMemory no_memory(100);
        EXPECT_EQ(FailureOf([&] { document->loadXML(bad); }), E_OUTOFMEMORY);
        ExpectNoMemoryIsRecorded(document, "");
    }
    EXPECT_FALSE(document->loadXML(bad));
    EXPECT_EQ(document->parseError().errorCode(), DOM_E_MALFORMED);
    EXPECT_EQ(document->parseError().line(), 2);
    EXPECT_TRUE(document->loadXML(good));
    EXPECT_EQ(document->parseError().errorCode(), 0);
    EXPECT_EQ(document->parseError().reason(), "");
}

TEST_F(DomMemory, FilesThatFailForWantOfMemorySaySo) {
    const TestFolder folder;
    const std::string path = folder.Write("long.xml", "<n>" + kLong + "</n>");
    Load("<r/>");
    ASSERT_FALSE(document->loadXML("<r>\n<a></r>"));
    {
        const ShortOfPages no_pages(1000);
        EXPECT_EQ(FailureOf([&] { document->load(path); }), E_OUTOFMEMORY);
        ExpectNoMemoryIsRecorded(document, path.c_str());
    }
    {
        // Not even for the path.
        const ShortOfMemory no_memory(16);
        EXPECT_EQ(FailureOf([&] { document->load(kLong); }), E_OUTOFMEMORY);
        ExpectNoMemoryIsRecorded(document, "");
    }
    EXPECT_TRUE(document->load(path));
    EXPECT_EQ(document->parseError().errorCode(), 0);
}

TEST_F(DomMemory, FilesThatCannotBeReadForWantOfMemoryKeepTheContent) {
    const TestFolder folder;
    const std::string path = folder.Write("long.xml", "<n>" + kLong + "</n>");
    const std::string wide = folder.Write(
        "wide.xml", "<?xml version='1.0' encoding='ISO-8859-1'?><n>" + kLong + "\xE9</n>");
    Load("<r/>");
    {
        const ShortOfPages no_pages(1000);
        EXPECT_EQ(FailureOf([&] { document->load(path); }), E_OUTOFMEMORY);
    }
    {
        // Memory for the bytes, but not for what they turn into.
        const ShortOfPages one_page(1000, 1);
        EXPECT_EQ(FailureOf([&] { document->load(wide); }), E_OUTOFMEMORY);
    }
    EXPECT_EQ(document->xml(), "<r/>");
    EXPECT_TRUE(document->load(wide));
    EXPECT_EQ(document->text(), CString((kLong + "\xC3\xA9").c_str()));
}

TEST_F(DomMemory, FilesThatCannotBeWrittenForWantOfMemoryStay) {
    const TestFolder folder;
    const std::string path = folder.Write("kept.xml", "old");
    Load("<r>" + kLong + "</r>");
    for (const std::size_t greatest : {0u, 16u, 100u, 1000u, 10000u}) {
        const ShortOfMemory no_memory(greatest);
        EXPECT_EQ(FailureOf([&] { document->save(path); }), E_OUTOFMEMORY) << greatest;
    }
    EXPECT_EQ(folder.Read("kept.xml"), "old");
    document->save(path);
    EXPECT_EQ(folder.Read("kept.xml"), "<r>" + kLong + "</r>");
}

// With a handle on the old content, that needs a place to be kept in.
TEST_F(DomMemory, LoadsWithoutMemoryForTheOldContentKeepTheContent) {
    Load("<r/>");
    {
        const ShortOfMemory no_memory(sizeof(pugi::xml_document) - 1);
        EXPECT_EQ(FailureOf([&] { document->loadXML("<n/>"); }), E_OUTOFMEMORY);
    }
    EXPECT_TRUE(document->documentElement() == root);
    root->appendElement("a");
    EXPECT_EQ(document->xml(), "<r><a/></r>");
}

// The list of them grows, until it is larger than each of them.
TEST_F(DomMemory, LoadsWithoutMemoryForTheListOfOldContentsKeepTheContent) {
    Load("<r/>");
    HRESULT code = 0;
    for (int i = 0; i < 1000 && code == 0; ++i) {
        root = document->documentElement();
        const ShortOfMemory no_memory(sizeof(pugi::xml_document));
        code = FailureOf([&] { document->loadXML("<r/>"); });
    }
    EXPECT_EQ(code, E_OUTOFMEMORY);
    EXPECT_TRUE(document->documentElement() == root);
    root->appendElement("a");
    EXPECT_EQ(document->xml(), "<r><a/></r>");
}

TEST_F(DomMemory, TextsAndListsAskForMemory) {
    Load("<r>" + kLong + "<a/>" + kLong + "<a/><a/></r>");
    root->setAttribute("k", kLong);
    std::string scratch;
    const ShortOfMemory no_memory(16);
    EXPECT_EQ(FailureOf([&] { root->textView(scratch); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->text(); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->xml(); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->firstChild()->nodeValue(); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->getAttribute("k"); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->selectNodes("a"); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->getElementsByTagName("a"); }), E_OUTOFMEMORY);
    EXPECT_EQ(root->firstChild()->textView(scratch), kLong);
    EXPECT_EQ(root->attributeView("k"), kLong);
}

TEST_F(DomMemory, TagsAskForMemory) {
    Load("<" + kLong + "/>");
    const ShortOfMemory no_memory(16);
    EXPECT_EQ(FailureOf([&] { root->nodeName(); }), E_OUTOFMEMORY);
    EXPECT_EQ(FailureOf([&] { root->tagName(); }), E_OUTOFMEMORY);
    EXPECT_EQ(root->nameView(), kLong);
}

TEST_F(DomMemory, DocumentsAskForMemory) {
    const ShortOfMemory no_memory(0);
    EXPECT_EQ(FailureOf([] { static_cast<void>(IXMLDOMDocumentPtr::CreateInstance()); }),
              E_OUTOFMEMORY);
    EXPECT_EQ(IXMLDOMDocumentPtr().CreateInstance(CLSID_DOMDocument), E_OUTOFMEMORY);
}

// 300 times the tags "a" and "b" and a text, and 300 tags that come once.
struct DomLookUpMemory : DomMemory, testing::WithParamInterface<std::size_t> {
    static constexpr int kTags = 300;

    void SetUp() override {
        std::string text = "<r>";
        for (int i = 0; i < kTags; ++i) text += "<a/>t<b/><c" + std::to_string(i) + "/>";
        Load(text + "</r>");
        for (IXMLDOMNodePtr node = root->firstChild(); node; node = node->nextSibling()) {
            nodes.push_back(node);
        }
    }

    // Node `i` of the four that come again and again.
    IXMLDOMNodePtr Node(int round, int i) const {
        return nodes[static_cast<std::size_t>(4 * round + i)];
    }

    void ExpectAllIsFound() {
        const auto length = static_cast<LONG>(nodes.size());
        for (LONG i = 0; i < length; i += 7) {
            ASSERT_TRUE(root->childNodes()->item(i) == nodes[static_cast<std::size_t>(i)]);
        }
        ASSERT_FALSE(root->childNodes()->item(length));
        ASSERT_EQ(root->childNodes()->length(), length);
        for (int i = 0; i < kTags; i += 3) {
            ASSERT_TRUE(root->childElement("a", i) == Node(i, 0));
            ASSERT_TRUE(root->childElement("b", kTags - 1 - i) == Node(kTags - 1 - i, 2));
            const std::string tag = 'c' + std::to_string(i);
            ASSERT_TRUE(root->selectSingleNode(tag) == Node(i, 3));
            ASSERT_FALSE(root->childElement(tag, 1));
            ASSERT_EQ(root->childElementCount(tag), 1);
        }
        ASSERT_FALSE(root->childElement("a", kTags));
        ASSERT_EQ(root->childElementCount(), 3 * kTags);
        ASSERT_EQ(root->childElementCount("a"), kTags);
        ASSERT_EQ(root->childElementCount("x"), 0);
    }

    std::vector<IXMLDOMNodePtr> nodes;
};

TEST_P(DomLookUpMemory, LookUpsDoNotFailForWantOfMemory) {
    {
        const ShortOfMemory no_memory(GetParam());
        ExpectAllIsFound();
    }
    // What was gathered until then is right.
    ExpectAllIsFound();
    root->appendElement("a");
    EXPECT_TRUE(root->childElement("a", kTags) == root->lastChild());
}

TEST_P(DomLookUpMemory, LookUpsGoOnWhenMemoryRunsOutInTheMiddle) {
    EXPECT_TRUE(root->childElement("a", 100) == Node(100, 0));
    EXPECT_TRUE(root->childNodes()->item(500) == nodes[500]);
    const ShortOfMemory no_memory(GetParam());
    ExpectAllIsFound();
}

// From a time when there is not even room for an index to one when only its largest parts
// find none.
INSTANTIATE_TEST_SUITE_P(Greatest, DomLookUpMemory,
                         testing::Values(0, 16, 64, 128, 250, 500, 1000, 2000, 4000, 8000, 16000));

}  // namespace
