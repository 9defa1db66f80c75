#include <gtest/gtest.h>

#include <zt/frame/ObjectEx.h>
#include <cstddef>
#include <string>
#include <vector>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {

// Stands in for a query; the base never looks into it.
class QC {};

namespace {

int destroyed = 0;

struct Typed : ObjectEx {
    Typed() = default;
    explicit Typed(std::uint8_t type) { m_nType = type; }
    explicit Typed(ObjectEx* p) : ObjectEx(p) {}
    Typed(const Typed& other) = default;
    ~Typed() override { ++destroyed; }

    static constexpr std::size_t OwnerOffset() { return offsetof(Typed, m_pOwner); }
    static constexpr std::size_t ByValOffset() { return offsetof(Typed, m_bByVal); }
    static constexpr std::size_t TypeOffset() { return offsetof(Typed, m_nType); }
};

struct ObjectExTest : testing::Test {
    ObjectExTest() { destroyed = 0; }
    ObjectEx owner;
};

std::vector<std::string> calls;
ulong stored = 0;

struct Recorder : ObjectEx {
    void OnModified(void* what) override {
        EXPECT_EQ(what, this);
        calls.push_back("OnModified");
    }
    void Delete() override { calls.push_back("Delete"); }
    bool Execute(QC&) override {
        calls.push_back("Execute");
        return true;
    }
    ulong GetData() override {
        calls.push_back("GetData");
        return 5;
    }
    void SetData(ulong data) override {
        stored = data;
        calls.push_back("SetData");
    }
};

TEST_F(ObjectExTest, FieldsStandInTheirOrder) {
    EXPECT_EQ(Typed::OwnerOffset(), sizeof(RefObj));
    EXPECT_EQ(Typed::ByValOffset(), sizeof(RefObj) + 8);
    EXPECT_EQ(Typed::TypeOffset(), sizeof(RefObj) + 9);
    EXPECT_EQ(sizeof(ObjectEx), 32u);
}

TEST_F(ObjectExTest, TableKeepsTheOrderOfTheOperations) {
    calls.clear();
    Recorder object;
    QC query;
    const std::size_t first = kSlotFirstOwn + 3;
    CallSlot<void, void*>(&object, first, &object);
    CallSlot<void>(&object, first + 1);
    EXPECT_TRUE((CallSlot<bool, QC*>(&object, first + 2, &query)));
    EXPECT_EQ(CallSlot<ulong>(&object, first + 3), 5u);
    CallSlot<void, ulong>(&object, first + 4, 9);
    EXPECT_EQ(stored, 9u);
    EXPECT_EQ(calls,
              (std::vector<std::string>{"OnModified", "Delete", "Execute", "GetData", "SetData"}));
}

TEST_F(ObjectExTest, TableBeginsWithThatOfRefObj) {
    Typed object;
    EXPECT_EQ(CallSlot<ulong>(&object, kSlotFirstOwn + 2), 2u);
    EXPECT_EQ(CallSlot<ulong>(&object, kSlotFirstOwn + 1), 1u);
}

TEST_F(ObjectExTest, NewObjectCountsAsByValueAndIsFree) {
    const ObjectEx object;
    EXPECT_EQ(object.GetRef(), 1u);
    EXPECT_TRUE(object.IsByVal());
    EXPECT_EQ(object.GetOwner(), nullptr);
    EXPECT_EQ(object.GetType(), 0);
}

TEST_F(ObjectExTest, ObjectMadeFromAnotherTakesTypeAndOwnerButIsNotByValue) {
    for (const bool mark : {false, true}) {
        Typed source(7);
        source.AttachOwner(&owner);
        source.SetByVal(mark);
        source.AddRef();
        const Typed object(static_cast<ObjectEx*>(&source));
        EXPECT_FALSE(object.IsByVal());
        EXPECT_EQ(object.GetType(), 7);
        EXPECT_EQ(object.GetOwner(), &owner);
        EXPECT_EQ(object.GetRef(), 1u);
    }
}

TEST_F(ObjectExTest, ObjectMadeFromNullIsLikeANewOne) {
    const ObjectEx object(static_cast<ObjectEx*>(nullptr));
    EXPECT_EQ(object.GetRef(), 1u);
    EXPECT_TRUE(object.IsByVal());
    EXPECT_EQ(object.GetOwner(), nullptr);
    EXPECT_EQ(object.GetType(), 0);
}

TEST_F(ObjectExTest, CopyTakesEverythingWithTheCount) {
    Typed source(3);
    source.AttachOwner(&owner);
    source.SetByVal(false);
    source.AddRef();
    const Typed copy(source);
    EXPECT_EQ(copy.GetRef(), 2u);
    EXPECT_FALSE(copy.IsByVal());
    EXPECT_EQ(copy.GetOwner(), &owner);
    EXPECT_EQ(copy.GetType(), 3);
}

TEST_F(ObjectExTest, OwnerIsStoredWithoutAReference) {
    ObjectEx object;
    object.AttachOwner(&owner);
    EXPECT_EQ(object.GetOwner(), &owner);
    EXPECT_EQ(owner.GetRef(), 1u);
    object.DetachOwner();
    EXPECT_EQ(object.GetOwner(), nullptr);
}

TEST_F(ObjectExTest, MarkChangesNeitherTheCountNorRelease) {
    auto* object = new Typed;
    object->SetByVal(false);
    object->SetByVal(true);
    EXPECT_TRUE(object->IsByVal());
    EXPECT_EQ(object->GetRef(), 1u);
    EXPECT_EQ(object->Release(), 0u);
    EXPECT_EQ(destroyed, 1);
}

TEST_F(ObjectExTest, ByValueModeOfTheBaseIsReachedThroughTheBase) {
    Typed object;
    object.RefObj::SetByVal(true, false);
    EXPECT_EQ(object.Release(), 0u);
    EXPECT_EQ(destroyed, 0);
    EXPECT_TRUE(object.IsByVal());
}

TEST_F(ObjectExTest, DeleteIgnoresTheCount) {
    auto* object = new Typed;
    object->AddRef();
    object->AddRef();
    object->Delete();
    EXPECT_EQ(destroyed, 1);
}

TEST_F(ObjectExTest, BaseOperationsAnswerTheirDefaults) {
    ObjectEx object;
    QC query;
    EXPECT_FALSE(object.Execute(query));
    EXPECT_EQ(object.GetData(), 1984u);
    object.SetData(7);
    EXPECT_EQ(object.GetData(), 1984u);
    object.OnModified(&query);
    EXPECT_EQ(object.GetRef(), 1u);
}

}  // namespace
}  // namespace ZT
