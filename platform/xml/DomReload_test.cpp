#include <platform/xml/Dom.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include <platform/xml/DomTestSupport_test.h>

// What the document remembers of its large nodes must go when they go: new nodes come to
// stand where the old ones stood.

namespace {

constexpr int kParents = 1000;
// More children than a node may have without being remembered.
constexpr int kChildren = 40;

std::string Repeated(int count, const std::string& part) {
    std::string text;
    for (int i = 0; i < count; ++i) text += part;
    return text;
}

std::string LargeNodes() {
    return "<R>" + Repeated(kParents, "<p>" + Repeated(kChildren, "<a/>") + "</p>") + "</R>";
}

// Looks through every large node below `root`, so that all of them are remembered.
void LookThrough(const IXMLDOMElementPtr& root) {
    for (const IXMLDOMElementPtr parent : root->childNodes()) {
        ASSERT_TRUE(parent->childElement("a", kChildren - 1) == parent->lastChild());
        ASSERT_EQ(parent->childNodes()->length(), kChildren);
        ASSERT_TRUE(parent->childNodes()->item(kChildren - 1) == parent->lastChild());
    }
}

// Fills `root` with as many large nodes of other children, and asks each for them.
void ExpectNewNodesAreSeenAsTheyAre(const IXMLDOMElementPtr& root) {
    std::vector<IXMLDOMElementPtr> parents;
    for (int i = 0; i < kParents; ++i) {
        parents.push_back(root->appendElement("e"));
        for (int k = 0; k < kChildren; ++k) parents.back()->appendElement("b");
    }
    for (const IXMLDOMElementPtr& parent : parents) {
        ASSERT_TRUE(parent->childElement("b", kChildren - 1) == parent->lastChild());
        ASSERT_EQ(parent->childElementCount(), kChildren);
        ASSERT_EQ(parent->childElementCount("b"), kChildren);
        ASSERT_EQ(parent->childNodes()->length(), kChildren);
        ASSERT_TRUE(parent->childNodes()->item(kChildren - 1) == parent->lastChild());
        ASSERT_FALSE(parent->childElement("a", 0));
        ASSERT_FALSE(parent->childElement("a", kChildren - 1));
    }
}

// The memory of the documents. What was given back is given out again, and nothing of it
// goes until the test ends, so that it is the same with and without sanitizers.
struct Block {
    void* memory;
    std::size_t size;
    bool taken;
};
std::vector<Block> blocks;

void* TakeBlock(std::size_t size) {
    for (Block& block : blocks) {
        if (block.taken || block.size != size) continue;
        block.taken = true;
        return block.memory;
    }
    blocks.push_back({std::malloc(size), size, true});
    return blocks.back().memory;
}

void GiveBlockBack(void* memory) {
    for (Block& block : blocks) {
        if (block.memory == memory) block.taken = false;
    }
}

struct DomReuse : testing::Test {
    DomReuse() { pugi::set_memory_management_functions(TakeBlock, GiveBlockBack); }
    ~DomReuse() override {
        pugi::set_memory_management_functions(m_allocate, m_free);
        for (const Block& block : blocks) std::free(block.memory);
        blocks.clear();
    }

private:
    pugi::allocation_function m_allocate = pugi::get_memory_allocation_function();
    pugi::deallocation_function m_free = pugi::get_memory_deallocation_function();
};

TEST(DomReload, LookUpsInOldNodesLeaveNothingBehindWhenTheOldNodesGo) {
    const IXMLDOMDocumentPtr document = DocumentOf(LargeNodes());
    IXMLDOMElementPtr old = document->documentElement();
    ASSERT_TRUE(document->loadXML("<N/>"));
    LookThrough(old);
    old = nullptr;
    ExpectNewNodesAreSeenAsTheyAre(document->documentElement());
}

// New nodes are made until one of them stands where the old one stood.
TEST_F(DomReuse, TheNodeThatWasAskedLastLeavesNothingBehind) {
    const IXMLDOMDocumentPtr document = DocumentOf("<p>" + Repeated(kChildren, "<a/>") + "</p>");
    IXMLDOMElementPtr old = document->documentElement();
    const void* const place = old.Identity();
    ASSERT_TRUE(document->loadXML("<N><e/></N>"));
    ASSERT_TRUE(old->childElement("a", kChildren - 1) == old->lastChild());
    old = nullptr;
    const IXMLDOMElementPtr root = document->documentElement();
    IXMLDOMElementPtr made = root->firstChild();
    // A copy takes no memory for its tag: every node is a node's size from the one before.
    for (int i = 0; i < 5000 && made.Identity() != place; ++i) {
        made = root->appendChild(root->firstChild()->cloneNode(true));
    }
    ASSERT_EQ(made.Identity(), place);
    for (int i = 0; i < kChildren; ++i) made->appendElement("b");
    EXPECT_FALSE(made->childElement("a", 0));
    EXPECT_TRUE(made->childElement("b", kChildren - 1) == made->lastChild());
    EXPECT_EQ(made->childElementCount(), kChildren);
}

TEST(DomReload, OldNodesOfSeveralLoadsGoTogether) {
    const IXMLDOMDocumentPtr document = DocumentOf(LargeNodes());
    IXMLDOMElementPtr first = document->documentElement();
    ASSERT_TRUE(document->loadXML(LargeNodes()));
    IXMLDOMElementPtr second = document->documentElement();
    ASSERT_TRUE(document->loadXML("<N/>"));
    LookThrough(first);
    LookThrough(second);
    first = nullptr;
    // As long as one handle is left, everything is.
    LookThrough(second);
    second = nullptr;
    ExpectNewNodesAreSeenAsTheyAre(document->documentElement());
}

TEST(DomReload, NodesThatWereTakenOutLeaveNothingBehindWhenTheyGo) {
    const IXMLDOMDocumentPtr document = DocumentOf(LargeNodes());
    IXMLDOMElementPtr old = document->documentElement();
    document->removeChild(old);
    document->appendElement("N");
    LookThrough(old);
    old = nullptr;
    ExpectNewNodesAreSeenAsTheyAre(document->documentElement());
}

TEST(DomReload, LoadingWhereNoHandleIsLeftLeavesNothingBehind) {
    const IXMLDOMDocumentPtr document = DocumentOf(LargeNodes());
    LookThrough(document->documentElement());
    ASSERT_TRUE(document->loadXML("<N/>"));
    ExpectNewNodesAreSeenAsTheyAre(document->documentElement());
}

TEST(DomReload, PresentNodesAreStillKnownAfterOldOnesWent) {
    const IXMLDOMDocumentPtr document = DocumentOf("<R>" + Repeated(kChildren, "<a/>") + "</R>");
    IXMLDOMElementPtr old = document->documentElement();
    ASSERT_TRUE(document->loadXML("<R>" + Repeated(kChildren, "<a/><b/>") + "</R>"));
    ASSERT_TRUE(old->childElement("a", kChildren - 1) == old->lastChild());
    ASSERT_FALSE(old->childElement("b", 0));
    const auto expect_present = [&] {
        const IXMLDOMElementPtr root = document->documentElement();
        EXPECT_TRUE(root->childElement("b", kChildren - 1) == root->lastChild());
        EXPECT_EQ(root->childElementCount(), 2 * kChildren);
        EXPECT_FALSE(root->childElement("a", kChildren));
    };
    expect_present();
    old = nullptr;
    expect_present();
}

}  // namespace
