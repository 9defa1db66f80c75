#include <platform/xml/Dom.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <string>
#include <vector>

#include <platform/xml/DomTestSupport_test.h>

namespace {

TEST(IXMLDOMNodeList, GivesItsNodesByNumber) {
    const IXMLDOMNodeListPtr list = DocumentOf("<r><a/>t<b/></r>")->documentElement()->childNodes();
    EXPECT_EQ(list->length(), 3);
    EXPECT_EQ(list->item(0)->nodeName(), "a");
    EXPECT_EQ(list->item(1)->nodeName(), "#text");
    EXPECT_EQ(list->item(2)->nodeName(), "b");
    EXPECT_FALSE(list->item(3));
    EXPECT_FALSE(list->item(-1));
}

TEST(IXMLDOMNodeList, StepsThroughItsNodes) {
    const IXMLDOMNodeListPtr list = DocumentOf("<r><a/><b/></r>")->documentElement()->childNodes();
    EXPECT_EQ(list->nextNode()->nodeName(), "a");
    const IXMLDOMNodeListPtr copy = list;
    EXPECT_EQ(list->nextNode()->nodeName(), "b");
    EXPECT_FALSE(list->nextNode());
    EXPECT_FALSE(list->nextNode());
    EXPECT_EQ(copy->nextNode()->nodeName(), "b");
    list->reset();
    EXPECT_EQ(list->nextNode()->nodeName(), "a");
}

TEST(IXMLDOMNodeList, OfChildrenShowsThePresentOnes) {
    const IXMLDOMElementPtr root = DocumentOf("<r><a/></r>")->documentElement();
    const IXMLDOMNodeListPtr list = root->childNodes();
    root->appendElement("b");
    EXPECT_EQ(list->length(), 2);
    root->removeChild(root->firstChild());
    EXPECT_EQ(list->item(0)->nodeName(), "b");
    EXPECT_EQ(list->length(), 1);
}

TEST(IXMLDOMNodeList, AWalkOverChangedChildrenEndsAtANodeThatIsTakenOut) {
    const IXMLDOMElementPtr root = DocumentOf("<r><a/><b/><c/></r>")->documentElement();
    std::string names;
    for (const IXMLDOMNodePtr& node : root->childNodes()) {
        names += node->nameView();
        if (node->nodeName() == "a") root->appendElement("d");
        if (node->nodeName() == "b") root->removeChild(node);
    }
    EXPECT_EQ(names, "ab");
    EXPECT_EQ(root->xml(), "<r><a/><c/><d/></r>");
}

TEST(IXMLDOMNodeList, OfASearchKeepsItsNodes) {
    const IXMLDOMElementPtr root = DocumentOf("<r><a>1</a><a>2</a></r>")->documentElement();
    const IXMLDOMNodeListPtr found = root->selectNodes("a");
    root->put_text("");
    std::string texts;
    for (const IXMLDOMNodePtr& node : found) texts += node->text();
    EXPECT_EQ(texts, "12");
    EXPECT_FALSE(found->item(0)->parentNode());
    EXPECT_EQ(found->nextNode()->text(), "1");
}

// A node with many children beside a plain list of what it should hold, and a second
// such pair to move children to and from.
class Model {
public:
    static constexpr int kTags = 5;

    Model() {
        for (std::size_t which = 0; which < 2; ++which) {
            m_parents[which] = m_document->documentElement()->appendElement("p");
        }
    }

    void Append(std::size_t which, std::size_t kind) {
        const std::string label = std::to_string(m_next++);
        if (kind == kTags) {
            m_parents[which]->appendText(label);
            m_children[which].push_back({"#text", label});
            return;
        }
        const std::string tag(1, static_cast<char>('a' + kind));
        const IXMLDOMElementPtr child = m_document->createElement(tag);
        child->put_text(label);
        m_parents[which]->appendChild(child);
        m_children[which].push_back({tag, label});
    }
    void Insert(std::size_t which, std::size_t at) {
        if (m_children[which].empty()) return;
        const auto place = Place(which, at);
        const std::string label = std::to_string(m_next++);
        const IXMLDOMElementPtr child = m_document->createElement("a");
        child->put_text(label);
        m_parents[which]->insertBefore(child, Item(which, place));
        m_children[which].insert(m_children[which].begin() + place, {"a", label});
    }
    void Remove(std::size_t which, std::size_t at) {
        if (m_children[which].empty()) return;
        const auto place = Place(which, at);
        m_parents[which]->removeChild(Item(which, place));
        m_children[which].erase(m_children[which].begin() + place);
    }
    // To the end of either parent.
    void Move(std::size_t which, std::size_t at, std::size_t to) {
        if (m_children[which].empty()) return;
        const auto place = Place(which, at);
        m_parents[to]->appendChild(Item(which, place));
        const Child moved = m_children[which][static_cast<std::size_t>(place)];
        m_children[which].erase(m_children[which].begin() + place);
        m_children[to].push_back(moved);
    }
    void Replace(std::size_t which, std::size_t at) {
        if (m_children[which].empty()) return;
        const auto place = Place(which, at);
        const std::string label = std::to_string(m_next++);
        const IXMLDOMElementPtr child = m_document->createElement("b");
        child->put_text(label);
        m_parents[which]->replaceChild(child, Item(which, place));
        m_children[which][static_cast<std::size_t>(place)] = {"b", label};
    }
    void Clear(std::size_t which) {
        m_parents[which]->put_text("");
        m_children[which].clear();
    }

    void CheckItem(std::size_t which, std::size_t at) const {
        const std::vector<Child>& children = m_children[which];
        const std::size_t place = children.empty() ? 0 : at % (children.size() + 2);
        const IXMLDOMNodePtr node = Item(which, static_cast<std::ptrdiff_t>(place));
        RC_ASSERT(static_cast<bool>(node) == (place < children.size()));
        if (node) RC_ASSERT(node->text() == children[place].label.c_str());
    }
    void CheckNamed(std::size_t which, std::size_t kind, std::size_t index) const {
        const std::string tag(1, static_cast<char>('a' + kind));
        std::vector<std::string> labels;
        for (const Child& child : m_children[which]) {
            if (child.name == tag) labels.push_back(child.label);
        }
        index %= labels.size() + 2;
        const IXMLDOMElementPtr found =
            m_parents[which]->childElement(tag, static_cast<int>(index));
        RC_ASSERT(static_cast<bool>(found) == (index < labels.size()));
        if (found) RC_ASSERT(found->text() == labels[index].c_str());
        const IXMLDOMNodePtr first = m_parents[which]->selectSingleNode(tag);
        RC_ASSERT(static_cast<bool>(first) == !labels.empty());
        if (first) RC_ASSERT(first->text() == labels[0].c_str());
    }
    void CheckCounts(std::size_t which, std::size_t kind) const {
        const std::string tag(1, static_cast<char>('a' + kind));
        const std::vector<Child>& children = m_children[which];
        const auto named = [&](const Child& child) { return child.name == tag; };
        const auto element = [](const Child& child) { return child.name != "#text"; };
        const auto count = [&](auto is) {
            return static_cast<int>(std::count_if(children.begin(), children.end(), is));
        };
        RC_ASSERT(m_parents[which]->childNodes()->length() == static_cast<int>(children.size()));
        RC_ASSERT(m_parents[which]->childElementCount(tag) == count(named));
        RC_ASSERT(m_parents[which]->childElementCount() == count(element));
    }
    void CheckAll(std::size_t which) const {
        std::vector<std::string> labels, expected;
        for (const IXMLDOMNodePtr& node : m_parents[which]->childNodes()) {
            labels.emplace_back(node->text().GetString());
        }
        for (const Child& child : m_children[which]) expected.push_back(child.label);
        RC_ASSERT(labels == expected);
    }

private:
    struct Child {
        std::string name;
        std::string label;
    };

    std::ptrdiff_t Place(std::size_t which, std::size_t at) const {
        return static_cast<std::ptrdiff_t>(at % m_children[which].size());
    }
    IXMLDOMNodePtr Item(std::size_t which, std::ptrdiff_t place) const {
        return m_parents[which]->childNodes()->item(static_cast<LONG>(place));
    }

    IXMLDOMDocumentPtr m_document = DocumentOf("<r/>");
    IXMLDOMElementPtr m_parents[2];
    std::vector<Child> m_children[2];
    int m_next = 0;
};

void DoOne(Model& model) {
    const auto number = [](std::size_t end) { return *rc::gen::inRange<std::size_t>(0, end); };
    const std::size_t which = number(2);
    switch (number(20)) {
        case 0:
            model.Insert(which, number(1000));
            break;
        case 1:
            model.Remove(which, number(1000));
            break;
        case 2:
            model.Move(which, number(1000), number(2));
            break;
        case 3:
            model.Replace(which, number(1000));
            break;
        case 4:
            if (number(10) == 0) model.Clear(which);
            break;
        case 5:
            model.CheckCounts(which, number(Model::kTags));
            break;
        case 6:
            model.CheckAll(which);
            break;
        case 7:
        case 8:
        case 9:
            model.Append(which, number(Model::kTags + 1));
            break;
        case 10:
        case 11:
        case 12:
        case 13:
        case 14:
            model.CheckItem(which, number(1000));
            break;
        default:
            model.CheckNamed(which, number(Model::kTags), number(1000));
            break;
    }
}

TEST(IXMLDOMNodeList, LookUpAmongManyChildrenAgreesWithAPlainList) {
    EXPECT_TRUE(rc::check([] {
        Model model;
        const auto sizes = *rc::gen::pair(rc::gen::inRange(0, 300), rc::gen::inRange(0, 70));
        for (int i = 0; i < sizes.first; ++i) {
            model.Append(0, *rc::gen::inRange<std::size_t>(0, Model::kTags + 1));
        }
        for (int i = 0; i < sizes.second; ++i) model.Append(1, static_cast<std::size_t>(i) % 3);
        for (int i = 0; i < 200; ++i) DoOne(model);
        model.CheckAll(0);
        model.CheckAll(1);
    }));
}

// Large enough that a cost of the square of the count would take minutes.
constexpr int kMany = 200000;

struct Many : testing::Test {
    Many() {
        for (int i = 0; i < kMany; ++i) {
            root->appendElement(i % 2 == 0 ? "x" : "y")->put_text(std::to_string(i));
        }
    }
    static int NumberIn(const IXMLDOMNodePtr& node) { return std::stoi(node->text().GetString()); }

    IXMLDOMDocumentPtr document = DocumentOf("<r/>");
    IXMLDOMElementPtr root = document->documentElement();
};

TEST_F(Many, ItemInALoopWithTheListFetchedAnew) {
    for (int i = 0; i < root->childNodes()->length(); ++i) {
        ASSERT_EQ(NumberIn(root->childNodes()->item(i)), i);
    }
    for (int i = kMany; i-- > 0;) ASSERT_EQ(NumberIn(root->childNodes()->item(i)), i);
}

TEST_F(Many, ItemFromBothEndsByTurns) {
    for (int i = 0; i < kMany / 2; ++i) {
        ASSERT_EQ(NumberIn(root->childNodes()->item(i)), i);
        ASSERT_EQ(NumberIn(root->childNodes()->item(kMany - 1 - i)), kMany - 1 - i);
    }
}

TEST_F(Many, TwoTagsByTurns) {
    for (int i = 0; i < kMany / 2; ++i) {
        ASSERT_EQ(NumberIn(root->childElement("x", i)), 2 * i);
        ASSERT_EQ(NumberIn(root->childElement("y", i)), 2 * i + 1);
    }
    EXPECT_FALSE(root->childElement("x", kMany / 2));
}

TEST_F(Many, AppendingBetweenLookUps) {
    for (int i = 0; i < kMany; ++i) {
        ASSERT_EQ(root->childNodes()->length(), kMany + i);
        ASSERT_FALSE(root->selectSingleNode("z"));
        root->appendElement("w");
    }
    root->appendElement("z");
    EXPECT_TRUE(root->selectSingleNode("z") == root->lastChild());
}

TEST(IXMLDOMNodeList, ManyDifferentTagsInDocumentOrder) {
    const IXMLDOMElementPtr root = DocumentOf("<r/>")->documentElement();
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < kMany; ++i) {
            root->appendElement("t" + std::to_string(i))->put_text(std::to_string(round));
        }
    }
    for (int i = 0; i < kMany; ++i) {
        ASSERT_EQ(root->selectSingleNode("t" + std::to_string(i))->text(), "0");
    }
    EXPECT_FALSE(root->selectSingleNode("t"));
}

}  // namespace
