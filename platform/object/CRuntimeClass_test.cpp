#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/modules/AFX_MODULE_STATE.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CObject.h>

#include <memory>
#include <string>

namespace {

class Shape : public CObject {
    DECLARE_DYNAMIC(Shape)
};
IMPLEMENT_DYNAMIC(Shape, CObject)

class Disc : public Shape {
    DECLARE_DYNCREATE(Disc)
    double radius = 1;
};
IMPLEMENT_DYNCREATE(Disc, Shape)

class Ring : public Disc {
    DECLARE_SERIAL(Ring)
    double hole = 0.5;
};
IMPLEMENT_SERIAL(Ring, Disc, 7)

class Square : public Shape {
    DECLARE_SERIAL(Square)
};
IMPLEMENT_SERIAL(Square, Shape, VERSIONABLE_SCHEMA | 2)

CRuntimeClass* BaseOfStranger() {
    return RUNTIME_CLASS(Shape);
}

// A record that nothing registers.
constinit const CRuntimeClass stranger = {"Ring",          8,       AFX_NO_SCHEMA, nullptr,
                                          &BaseOfStranger, nullptr, nullptr};

}  // namespace

TEST(CRuntimeClass, RecordTellsNameAndSize) {
    const CRuntimeClass* record = RUNTIME_CLASS(Disc);
    EXPECT_STREQ(record->m_lpszClassName, "Disc");
    EXPECT_EQ(record->m_nObjectSize, static_cast<INT>(sizeof(Disc)));
}

TEST(CRuntimeClass, OnlyASerialClassHasASchema) {
    EXPECT_EQ(RUNTIME_CLASS(Shape)->m_wSchema, 0xFFFFu);
    EXPECT_EQ(RUNTIME_CLASS(Disc)->m_wSchema, 0xFFFFu);
    EXPECT_EQ(RUNTIME_CLASS(Ring)->m_wSchema, 7u);
    EXPECT_EQ(RUNTIME_CLASS(Square)->m_wSchema, 0x80000002u);
}

TEST(CRuntimeClass, BaseGetterLeadsToTheRoot) {
    const CRuntimeClass* record = RUNTIME_CLASS(Ring);
    record = record->m_pfnGetBaseClass();
    EXPECT_EQ(record, RUNTIME_CLASS(Disc));
    record = record->m_pfnGetBaseClass();
    EXPECT_EQ(record, RUNTIME_CLASS(Shape));
    record = record->m_pfnGetBaseClass();
    EXPECT_EQ(record, RUNTIME_CLASS(CObject));
    EXPECT_EQ(record->m_pfnGetBaseClass, nullptr);
}

TEST(CRuntimeClass, CreateObjectMakesAnObjectOfTheClass) {
    const std::unique_ptr<CObject> object(RUNTIME_CLASS(Disc)->CreateObject());
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->GetRuntimeClass(), RUNTIME_CLASS(Disc));
    EXPECT_EQ(static_cast<Disc*>(object.get())->radius, 1);
}

TEST(CRuntimeClass, CreateObjectOfAClassWithoutAMakerIsNull) {
    EXPECT_EQ(RUNTIME_CLASS(Shape)->CreateObject(), nullptr);
    EXPECT_EQ(RUNTIME_CLASS(CObject)->CreateObject(), nullptr);
}

TEST(CRuntimeClass, CreateObjectByName) {
    const std::unique_ptr<CObject> object(CRuntimeClass::CreateObject("Ring"));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->GetRuntimeClass(), RUNTIME_CLASS(Ring));
}

TEST(CRuntimeClass, CreateObjectByAnUnknownNameIsNull) {
    EXPECT_EQ(CRuntimeClass::CreateObject("Cone"), nullptr);
    EXPECT_EQ(CRuntimeClass::CreateObject("Shape"), nullptr);
    EXPECT_EQ(CRuntimeClass::CreateObject(static_cast<LPCSTR>(nullptr)), nullptr);
}

TEST(CRuntimeClass, DerivesFromItselfAndItsBases) {
    const CRuntimeClass* ring = RUNTIME_CLASS(Ring);
    EXPECT_TRUE(ring->IsDerivedFrom(RUNTIME_CLASS(Ring)));
    EXPECT_TRUE(ring->IsDerivedFrom(RUNTIME_CLASS(Disc)));
    EXPECT_TRUE(ring->IsDerivedFrom(RUNTIME_CLASS(CObject)));
}

TEST(CRuntimeClass, DoesNotDeriveFromOthers) {
    EXPECT_FALSE(RUNTIME_CLASS(Disc)->IsDerivedFrom(RUNTIME_CLASS(Ring)));
    EXPECT_FALSE(RUNTIME_CLASS(Square)->IsDerivedFrom(RUNTIME_CLASS(Disc)));
    EXPECT_FALSE(RUNTIME_CLASS(CObject)->IsDerivedFrom(RUNTIME_CLASS(Shape)));
}

TEST(CRuntimeClass, AnotherRecordOfTheSameNameIsAnotherClass) {
    EXPECT_FALSE(RUNTIME_CLASS(Ring)->IsDerivedFrom(&stranger));
    EXPECT_TRUE(stranger.IsDerivedFrom(RUNTIME_CLASS(Shape)));
}

TEST(CRuntimeClass, IsDerivedFromNullRaisesInvalidArgument) {
    EXPECT_THROW(RUNTIME_CLASS(Ring)->IsDerivedFrom(nullptr), CInvalidArgException*);
}

TEST(CRuntimeClass, FromNameFindsRegisteredClasses) {
    EXPECT_EQ(CRuntimeClass::FromName("Shape"), RUNTIME_CLASS(Shape));
    EXPECT_EQ(CRuntimeClass::FromName("Ring"), RUNTIME_CLASS(Ring));
    EXPECT_EQ(CRuntimeClass::FromName("CObject"), RUNTIME_CLASS(CObject));
    EXPECT_EQ(CRuntimeClass::FromName("CInvalidArgException"), RUNTIME_CLASS(CInvalidArgException));
}

TEST(CRuntimeClass, FromNameOfAnUnknownOrNullNameIsNull) {
    EXPECT_EQ(CRuntimeClass::FromName("ring"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName(""), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName(nullptr), nullptr);
}

TEST(CRuntimeClass, IsRegisteredForAsLongAsItsRegistrationLives) {
    CRuntimeClass record = {"Passing",       8,       AFX_NO_SCHEMA, nullptr,
                            &BaseOfStranger, nullptr, nullptr};
    {
        const AFX_CLASSINIT registration(&record);
        EXPECT_EQ(CRuntimeClass::FromName("Passing"), &record);
        EXPECT_EQ(record.m_pClassInit, &registration);
    }
    EXPECT_EQ(CRuntimeClass::FromName("Passing"), nullptr);
    EXPECT_EQ(record.m_pClassInit, nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("Shape"), RUNTIME_CLASS(Shape));
}

TEST(CRuntimeClass, OfTwoClassesOfOneNameTheLatestRegisteredIsFound) {
    CRuntimeClass early = {"Twice", 8, AFX_NO_SCHEMA, nullptr, nullptr, nullptr, nullptr};
    CRuntimeClass late = early;
    const AFX_CLASSINIT first(&early);
    {
        const AFX_CLASSINIT second(&late);
        EXPECT_EQ(CRuntimeClass::FromName("Twice"), &late);
    }
    EXPECT_EQ(CRuntimeClass::FromName("Twice"), &early);
}

TEST(CRuntimeClass, TakenOutOfTheMiddleOfTheListLeavesTheOthers) {
    CRuntimeClass a = {"A1", 8, AFX_NO_SCHEMA, nullptr, nullptr, nullptr, nullptr};
    CRuntimeClass b = {"B1", 8, AFX_NO_SCHEMA, nullptr, nullptr, nullptr, nullptr};
    CRuntimeClass c = {"C1", 8, AFX_NO_SCHEMA, nullptr, nullptr, nullptr, nullptr};
    const AFX_CLASSINIT first(&a);
    auto middle = std::make_unique<AFX_CLASSINIT>(&b);
    const AFX_CLASSINIT last(&c);
    middle.reset();
    EXPECT_EQ(CRuntimeClass::FromName("A1"), &a);
    EXPECT_EQ(CRuntimeClass::FromName("B1"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("C1"), &c);
}
