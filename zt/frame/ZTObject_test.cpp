#include <gtest/gtest.h>

#include <platform/object/CInvalidArgException.h>
#include <zt/frame/ZTObject.h>
#include <memory>
#include <string>
#include <vector>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {

// Stands in for an operation; the base never looks into it.
class OpC {};

namespace {

CRuntimeClass* GetSolidClass();

CRuntimeClass Record(const char* name, CRuntimeClass* (*base)()) {
    return {name, 0, AFX_NO_SCHEMA, nullptr, base, nullptr, nullptr};
}

CRuntimeClass solidClass = Record("Solid", &CObject::GetThisClass);
CRuntimeClass boxClass = Record("Box", &GetSolidClass);
CRuntimeClass solidOfAnotherModule = Record("Solid", nullptr);
CRuntimeClass brokenClass = Record("Broken", [] { return static_cast<CRuntimeClass*>(nullptr); });

CRuntimeClass* GetSolidClass() {
    return &solidClass;
}

struct Box : ZTObject {
    CRuntimeClass* GetRuntimeClass() const override { return record; }
    CRuntimeClass* record = &boxClass;
};

std::vector<std::string> calls;

struct Recorder : ZTObject {
    ~Recorder() override { calls.push_back("~"); }
    CRuntimeClass* GetRuntimeClass() const override {
        calls.push_back("GetRuntimeClass");
        return &boxClass;
    }
    void Serialize(CArchive&) override { calls.push_back("Serialize"); }
    void AssertValid() const override { calls.push_back("AssertValid"); }
    void Dump(CDumpContext&) const override { calls.push_back("Dump"); }
    bool Execute(OpC&) override {
        calls.push_back("Execute");
        return true;
    }
    ZTObject* Clone() override {
        calls.push_back("Clone");
        return nullptr;
    }
};

template <class Call>
bool RaisesInvalidArgument(Call call) {
    try {
        call();
    } catch (CInvalidArgException* e) {
        e->Delete();
        return true;
    }
    return false;
}

TEST(ZTObject, HasNoFields) {
    EXPECT_EQ(sizeof(ZTObject), sizeof(CObject));
}

TEST(ZTObject, TableKeepsTheOrderOfTheOperations) {
    calls.clear();
    auto* object = new Recorder;
    OpC operation;
    EXPECT_EQ(CallSlot<CRuntimeClass*>(object, kSlotGetRuntimeClass), &boxClass);
    CallSlot<void, CArchive*>(object, kSlotSerialize, nullptr);
    CallSlot<void>(object, kSlotAssertValid);
    CallSlot<void, CDumpContext*>(object, kSlotDump, nullptr);
    EXPECT_TRUE((CallSlot<bool, OpC*>(object, kSlotFirstOwn, &operation)));
    EXPECT_EQ(CallSlot<ZTObject*>(object, kSlotFirstOwn + 1), nullptr);
    CallSlot<void>(object, kSlotDeletingDestructor);
    EXPECT_EQ(calls, (std::vector<std::string>{"GetRuntimeClass", "Serialize", "AssertValid",
                                               "Dump", "Execute", "Clone", "~"}));
}

TEST(ZTObject, BaseCannotBeClonedAndHandlesNoOperation) {
    ZTObject object;
    OpC operation;
    EXPECT_EQ(object.Clone(), nullptr);
    EXPECT_FALSE(object.Execute(operation));
}

TEST(ZTObject, IsCopiedAndAssigned) {
    ZTObject object;
    ZTObject copy(object);
    EXPECT_EQ(&(copy = object), &copy);
    EXPECT_STREQ(copy.GetRuntimeClass()->m_lpszClassName, "CObject");
}

TEST(ZTObject, IsOfItsOwnClassAndOfEveryBase) {
    const Box box;
    EXPECT_TRUE(box.IsKindOf_ZT(&boxClass));
    EXPECT_TRUE(box.IsKindOf_ZT(&solidClass));
    EXPECT_TRUE(box.IsKindOf_ZT(CObject::GetThisClass()));
}

TEST(ZTObject, IsNotOfAClassBelowOrBeside) {
    const ZTObject object;
    EXPECT_FALSE(object.IsKindOf_ZT(&boxClass));
    const Box box;
    EXPECT_FALSE(box.IsKindOf_ZT(&brokenClass));
}

TEST(ZTObject, ClassesAreComparedByNameAndNotByRecord) {
    const Box box;
    ASSERT_NE(&solidOfAnotherModule, &solidClass);
    EXPECT_TRUE(box.IsKindOf_ZT(&solidOfAnotherModule));
}

TEST(ZTObject, NullClassRaisesInvalidArgument) {
    const Box box;
    EXPECT_TRUE(RaisesInvalidArgument([&] { box.IsKindOf_ZT(nullptr); }));
}

TEST(ZTObject, ObjectWithoutClassRecordRaisesInvalidArgument) {
    Box box;
    box.record = nullptr;
    EXPECT_TRUE(RaisesInvalidArgument([&] { box.IsKindOf_ZT(&boxClass); }));
}

// Outside of the language's rules, but a promise of the operation.
__attribute__((noinline, no_sanitize("undefined"))) bool IsKindThrough(const ZTObject* object) {
    return object->IsKindOf_ZT(&boxClass);
}

TEST(ZTObject, NullObjectRaisesInvalidArgument) {
    const std::unique_ptr<ZTObject> none;
    EXPECT_TRUE(RaisesInvalidArgument([&] { IsKindThrough(none.get()); }));
}

TEST(ZTObject, IsDerivedFromWalksUpByName) {
    EXPECT_TRUE(ZTObject::IsDerivedFrom_ZT(&boxClass, &boxClass));
    EXPECT_TRUE(ZTObject::IsDerivedFrom_ZT(&boxClass, &solidOfAnotherModule));
    EXPECT_TRUE(ZTObject::IsDerivedFrom_ZT(&boxClass, CObject::GetThisClass()));
    EXPECT_FALSE(ZTObject::IsDerivedFrom_ZT(&solidClass, &boxClass));
    EXPECT_FALSE(ZTObject::IsDerivedFrom_ZT(&solidOfAnotherModule, CObject::GetThisClass()));
}

TEST(ZTObject, IsDerivedFromDoesNotUseTheObject) {
    const ZTObject object;
    EXPECT_TRUE(object.IsDerivedFrom_ZT(&boxClass, &solidClass));
}

TEST(ZTObject, IsDerivedFromRaisesInvalidArgumentOnEitherNull) {
    EXPECT_TRUE(RaisesInvalidArgument([] { ZTObject::IsDerivedFrom_ZT(nullptr, &boxClass); }));
    EXPECT_TRUE(RaisesInvalidArgument([] { ZTObject::IsDerivedFrom_ZT(&boxClass, nullptr); }));
}

TEST(ZTObject, BaseGetterThatAnswersNullEndsTheWalk) {
    EXPECT_FALSE(ZTObject::IsDerivedFrom_ZT(&brokenClass, &boxClass));
}

}  // namespace
}  // namespace ZT
