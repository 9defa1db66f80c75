#include <gtest/gtest.h>

#include <platform/files/CArchive.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CNotSupportedException.h>
#include <platform/object/CObject.h>
#include <platform/files/Archived_test.hpp>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

int livingNodes = 0;

class Node : public CObject {
    DECLARE_SERIAL(Node)
    Node() { ++livingNodes; }
    explicit Node(int aValue) : value(aValue) { ++livingNodes; }
    ~Node() override { --livingNodes; }
    void Serialize(CArchive& ar) override;

    int value = 0;
    Node* next = nullptr;
};
IMPLEMENT_SERIAL(Node, CObject, 3)

void Node::Serialize(CArchive& ar) {
    if (ar.IsStoring())
        ar << value << next;
    else
        ar >> value >> next;
}

class Leaf : public Node {
    DECLARE_SERIAL(Leaf)
};
IMPLEMENT_SERIAL(Leaf, Node, 3)

class Unrelated : public CObject {
    DECLARE_SERIAL(Unrelated)
};
IMPLEMENT_SERIAL(Unrelated, CObject, 1)

// Reads the records of all its versions.
class Versioned : public CObject {
    DECLARE_SERIAL(Versioned)
    void Serialize(CArchive& ar) override {
        if (ar.IsStoring()) return;
        schema = ar.GetObjectSchema();
        secondAnswer = ar.GetObjectSchema();
    }
    UINT schema = 0;
    UINT secondAnswer = 0;
};
IMPLEMENT_SERIAL(Versioned, CObject, VERSIONABLE_SCHEMA | 5)

class Unstored : public CObject {
    DECLARE_DYNAMIC(Unstored)
};
IMPLEMENT_DYNAMIC(Unstored, CObject)

// A class record of the given name: schema, length, name.
std::string ClassRecord(const std::string& name, int schema) {
    return "\xFF\xFF"s + static_cast<char>(schema) + '\0' + static_cast<char>(name.size()) + '\0' +
           name;
}

std::string Number(int value) {
    return Stored([value](CArchive& ar) { ar << value; });
}

const std::string null("\0\0", 2);

template <class T = Node>
auto ReadOne() {
    return [](CArchive& ar) { delete ar.ReadObject(T::GetThisClass()); };
}

struct Objects : testing::Test {
    void TearDown() override { EXPECT_EQ(livingNodes, 0); }
};

}  // namespace

TEST_F(Objects, NullIsTwoZeroBytes) {
    const Node* none = nullptr;
    const std::string bytes = Stored([&](CArchive& ar) { ar << none; });
    EXPECT_EQ(bytes, null);
    Loaded(bytes, [](CArchive& ar) { EXPECT_EQ(ar.ReadObject(nullptr), nullptr); });
}

TEST_F(Objects, FirstOfAClassCarriesTheClass) {
    const Node node(7);
    EXPECT_EQ(Stored([&](CArchive& ar) { ar << &node; }),
              ClassRecord("Node", 3) + Number(7) + null);
}

TEST_F(Objects, SecondOfAClassCarriesTheNumberOfTheClass) {
    const Node first(7);
    const Node second(8);
    EXPECT_EQ(Stored([&](CArchive& ar) { ar << &first << &second; }),
              ClassRecord("Node", 3) + Number(7) + null + "\x01\x80"s + Number(8) + null);
}

TEST_F(Objects, ObjectThatWasStoredIsANumber) {
    const Node node(7);
    EXPECT_EQ(Stored([&](CArchive& ar) { ar << &node << &node; }),
              ClassRecord("Node", 3) + Number(7) + null + "\x02\0"s);
}

TEST_F(Objects, AreReadAgainWithTheirClass) {
    const Leaf leaf;
    const Node node(4);
    const std::string bytes = Stored([&](CArchive& ar) { ar << &leaf << &node; });
    Loaded(bytes, [](CArchive& ar) {
        Node* first = nullptr;
        CObject* second = nullptr;
        ar >> first >> second;
        const std::unique_ptr<CObject> ends[] = {std::unique_ptr<CObject>(first),
                                                 std::unique_ptr<CObject>(second)};
        EXPECT_EQ(first->GetRuntimeClass(), RUNTIME_CLASS(Leaf));
        EXPECT_EQ(second->GetRuntimeClass(), RUNTIME_CLASS(Node));
        EXPECT_EQ(static_cast<Node*>(second)->value, 4);
    });
}

TEST_F(Objects, TwoPointersToOneObjectStaySo) {
    const Node node(9);
    const std::string bytes = Stored([&](CArchive& ar) { ar << &node << &node; });
    Loaded(bytes, [](CArchive& ar) {
        Node* first = nullptr;
        Node* second = nullptr;
        ar >> first >> second;
        const std::unique_ptr<Node> end(first);
        EXPECT_EQ(first, second);
    });
}

TEST_F(Objects, RingOfObjectsIsReadAgain) {
    Node a(1);
    Node b(2);
    a.next = &b;
    b.next = &a;
    const std::string bytes = Stored([&](CArchive& ar) { ar << &a; });
    Loaded(bytes, [](CArchive& ar) {
        Node* first = nullptr;
        ar >> first;
        const std::unique_ptr<Node> end(first);
        const std::unique_ptr<Node> other(first->next);
        EXPECT_EQ(other->value, 2);
        EXPECT_EQ(other->next, first);
    });
}

TEST_F(Objects, ManyObjectsHaveLongNumbers) {
    constexpr std::size_t count = 0x8010;
    std::vector<std::unique_ptr<Node>> nodes;
    for (std::size_t i = 0; i < count; ++i)
        nodes.push_back(std::make_unique<Node>(static_cast<int>(i)));
    const Unrelated late;
    const Unrelated later;
    const std::string bytes = Stored([&](CArchive& ar) {
        for (const auto& node : nodes) ar << node.get();
        ar << &late << &later << nodes.back().get() << nodes[0x7FFC].get() << nodes[0x7FFD].get();
    });
    const std::string tail = ClassRecord("Unrelated", 1) + "\xFF\x7F\x12\x80\x00\x80"s +
                             "\xFF\x7F\x11\x80\0\0"s + "\xFE\x7F"s + "\xFF\x7F\xFF\x7F\0\0"s;
    EXPECT_EQ(bytes.substr(bytes.size() - tail.size()), tail);
    Loaded(bytes, [&](CArchive& ar) {
        std::vector<std::unique_ptr<CObject>> read;
        for (std::size_t i = 0; i < count + 2; ++i) read.emplace_back(ar.ReadObject(nullptr));
        EXPECT_EQ(static_cast<Node*>(read[count - 1].get())->value, static_cast<int>(count) - 1);
        EXPECT_EQ(read[count + 1]->GetRuntimeClass(), RUNTIME_CLASS(Unrelated));
        EXPECT_EQ(ar.ReadObject(nullptr), read[count - 1].get());
        EXPECT_EQ(ar.ReadObject(nullptr), read[0x7FFC].get());
        EXPECT_EQ(ar.ReadObject(nullptr), read[0x7FFD].get());
    });
}

TEST_F(Objects, MappedObjectsAreKnownOnBothSides) {
    Node document(100);
    const Node node(1);
    const std::string bytes = Stored([&](CArchive& ar) {
        ar.MapObject(&document);
        ar << &node << &document;
    });
    Loaded(bytes, [&](CArchive& ar) {
        Node own(200);
        ar.MapObject(&own);
        Node* first = nullptr;
        Node* second = nullptr;
        ar >> first >> second;
        const std::unique_ptr<Node> end(first);
        EXPECT_EQ(first->value, 1);
        EXPECT_EQ(second, &own);
    });
}

TEST_F(Objects, ClassWithoutARecordIsNotSupported) {
    const Unstored unstored;
    CMemFile file;
    CArchive storing(&file, CArchive::store);
    EXPECT_THROW(storing << &unstored, CNotSupportedException*);
    EXPECT_THROW(storing.WriteClass(RUNTIME_CLASS(Unstored)), CNotSupportedException*);
    CArchive loading(&file, CArchive::load);
    EXPECT_THROW(loading.ReadObject(RUNTIME_CLASS(Unstored)), CNotSupportedException*);
    EXPECT_THROW(loading.ReadClass(RUNTIME_CLASS(CObject)), CNotSupportedException*);
}

TEST_F(Objects, NullClassIsAnInvalidArgument) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    EXPECT_THROW(ar.WriteClass(nullptr), CInvalidArgException*);
}

TEST_F(Objects, UnknownClassIsABadClass) {
    EXPECT_EQ(LoadingCause(ClassRecord("Nowhere", 3), ReadOne()), CArchiveException::badClass);
    EXPECT_EQ(LoadingCause(ClassRecord("", 3), ReadOne()), CArchiveException::badClass);
    EXPECT_EQ(LoadingCause(ClassRecord("Unstored", 3), ReadOne()), CArchiveException::badClass);
    EXPECT_EQ(LoadingCause("\xFF\xFF\x03\0\xFF\xFF"s + std::string(0xFFFF, 'N'), ReadOne()),
              CArchiveException::badClass);
}

TEST_F(Objects, AnotherClassThanRequestedIsABadClass) {
    const Node node(1);
    const Leaf leaf;
    const std::string nodes = Stored([&](CArchive& ar) { ar << &node; });
    const std::string leaves = Stored([&](CArchive& ar) { ar << &leaf; });
    EXPECT_EQ(LoadingCause(nodes, ReadOne<Unrelated>()), CArchiveException::badClass);
    EXPECT_EQ(LoadingCause(nodes, ReadOne<Leaf>()), CArchiveException::badClass);
    EXPECT_EQ(LoadingCause(leaves, ReadOne<Node>()), 0);
}

TEST_F(Objects, NumberOfAnObjectOfAnotherClassIsABadClass) {
    const Node node(1);
    const std::string bytes = Stored([&](CArchive& ar) { ar << &node << &node; });
    Loaded(bytes, [](CArchive& ar) {
        const std::unique_ptr<CObject> first(ar.ReadObject(nullptr));
        EXPECT_EQ(ArchiveCauseOf([&] { ar.ReadObject(RUNTIME_CLASS(Unrelated)); }),
                  CArchiveException::badClass);
    });
}

TEST_F(Objects, AnotherVersionIsABadSchema) {
    EXPECT_EQ(LoadingCause(ClassRecord("Node", 2) + Number(7) + null, ReadOne()),
              CArchiveException::badSchema);
    EXPECT_EQ(LoadingCause(ClassRecord("Node", 4) + Number(7) + null, ReadOne()),
              CArchiveException::badSchema);
}

TEST_F(Objects, VersionableClassIsToldTheVersionOfItsRecordOnce) {
    const std::string bytes = ClassRecord("Versioned", 2) + "\x01\x80"s;
    Loaded(bytes, [](CArchive& ar) {
        for (int i = 0; i < 2; ++i) {
            Versioned* read = nullptr;
            ar >> read;
            const std::unique_ptr<Versioned> end(read);
            EXPECT_EQ(read->schema, 2u);
            EXPECT_EQ(read->secondAnswer, 0xFFFFFFFFu);
        }
        EXPECT_EQ(ar.GetObjectSchema(), 0xFFFFFFFFu);
    });
}

TEST_F(Objects, VersionableClassStoresItsOwnVersion) {
    const Versioned versioned;
    const std::string bytes = Stored([&](CArchive& ar) { ar << &versioned; });
    EXPECT_EQ(bytes, ClassRecord("Versioned", 5));
    Loaded(bytes, [](CArchive& ar) {
        Versioned* read = nullptr;
        ar >> read;
        const std::unique_ptr<Versioned> end(read);
        EXPECT_EQ(read->schema, 5u);
    });
}

TEST_F(Objects, NumberOfNothingIsABadIndex) {
    EXPECT_EQ(LoadingCause("\x01\0"s, ReadOne()), CArchiveException::badIndex);
    EXPECT_EQ(LoadingCause("\xFF\x7F\xFF\xFF\xFF\x7F"s, ReadOne()), CArchiveException::badIndex);
    EXPECT_EQ(LoadingCause("\x01\x80"s, ReadOne()), CArchiveException::badIndex);
    EXPECT_EQ(LoadingCause("\x00\x80"s, ReadOne()), CArchiveException::badIndex);
    EXPECT_EQ(LoadingCause("\xFF\x7F\xFF\xFF\xFF\xFF"s, ReadOne()), CArchiveException::badIndex);
}

TEST_F(Objects, ObjectInThePlaceOfAClassAndTheReverseAreBadIndexes) {
    const Node node(1);
    const std::string bytes = Stored([&](CArchive& ar) { ar << &node; });
    const auto readTwo = [](CArchive& ar) {
        const std::unique_ptr<CObject> first(ar.ReadObject(nullptr));
        ar.ReadObject(nullptr);
    };
    EXPECT_EQ(LoadingCause(bytes + "\x02\x80"s, readTwo), CArchiveException::badIndex);
    EXPECT_EQ(LoadingCause(bytes + "\x01\0"s, readTwo), CArchiveException::badIndex);
}

TEST_F(Objects, CutObjectIsDeletedAgain) {
    const std::string whole = ClassRecord("Node", 3) + Number(7) + null;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(LoadingCause(whole.substr(0, length), ReadOne()), CArchiveException::endOfFile)
            << length;
        EXPECT_EQ(livingNodes, 0) << length;
    }
}

TEST_F(Objects, NumberOfAnObjectThatFailedIsABadIndex) {
    CMemFile file;
    Fill(file, ClassRecord("Node", 3) + Number(7) + "\x05\0"s + "\x02\0"s);
    CArchive ar(&file, CArchive::load);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.ReadObject(nullptr); }), CArchiveException::badIndex);
    EXPECT_EQ(ArchiveCauseOf([&] { ar.ReadObject(nullptr); }), CArchiveException::badIndex);
}

TEST_F(Objects, ReadClassTellsClassAndSchema) {
    const std::string bytes = Stored([](CArchive& ar) {
        ar.WriteClass(RUNTIME_CLASS(Node));
        ar.WriteClass(RUNTIME_CLASS(Node));
    });
    EXPECT_EQ(bytes, ClassRecord("Node", 3) + "\x01\x80"s);
    Loaded(bytes, [](CArchive& ar) {
        for (int i = 0; i < 2; ++i) {
            UINT schema = 0;
            EXPECT_EQ(ar.ReadClass(nullptr, &schema), RUNTIME_CLASS(Node));
            EXPECT_EQ(schema, 3u);
        }
    });
}

TEST_F(Objects, ReadClassOfAnObjectTellsItsNumberIfAsked) {
    Loaded("\x05\0\x05\0"s, [](CArchive& ar) {
        DWORD tag = 0;
        EXPECT_EQ(ar.ReadClass(nullptr, nullptr, &tag), nullptr);
        EXPECT_EQ(tag, 5u);
        EXPECT_EQ(ArchiveCauseOf([&] { ar.ReadClass(); }), CArchiveException::badIndex);
    });
}

TEST_F(Objects, SerializeClassChecksTheClass) {
    const std::string bytes = Stored([](CArchive& ar) { ar.SerializeClass(RUNTIME_CLASS(Leaf)); });
    Loaded(bytes, [](CArchive& ar) {
        ar.SerializeClass(RUNTIME_CLASS(Node));
        EXPECT_EQ(ar.GetObjectSchema(), 3u);
    });
    EXPECT_EQ(
        LoadingCause(bytes, [](CArchive& ar) { ar.SerializeClass(RUNTIME_CLASS(Unrelated)); }),
        CArchiveException::badClass);
}

TEST_F(Objects, HintsChangeNothing) {
    const Node node(7);
    const std::string bytes = Stored([&](CArchive& ar) {
        ar.SetStoreParams(10, 10);
        ar.SetLoadParams(10);
        ar << &node;
    });
    EXPECT_EQ(bytes, ClassRecord("Node", 3) + Number(7) + null);
    Loaded(bytes, [](CArchive& ar) {
        ar.SetLoadParams(1);
        ar.SetStoreParams();
        delete ar.ReadObject(nullptr);
    });
}
