#include <gtest/gtest.h>

#include <platform/files/CMemFile.h>
#include <platform/object/CDumpContext.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CObject.h>

#include <cstdio>
#include <string>
#include <type_traits>

namespace {

class Plain : public CObject {};

class Known : public CObject {
    DECLARE_DYNAMIC(Known)
    mutable std::string calls;
    void Serialize(CArchive& /*ar*/) override { calls += "Serialize "; }
    void AssertValid() const override { calls += "AssertValid "; }
    void Dump(CDumpContext& /*dc*/) const override { calls += "Dump "; }
    ~Known() override {
        if (ended) *ended = true;
    }
    bool* ended = nullptr;
};
IMPLEMENT_DYNAMIC(Known, CObject)

class Stored : public Known {
    DECLARE_SERIAL(Stored)
};
IMPLEMENT_SERIAL(Stored, Known, 1)

class Inherits : public Stored {};

// The entries of an object's table, in their order; the destructor takes two.
template <class Function>
Function TableEntry(const CObject& object, int place) {
    void** table = *reinterpret_cast<void** const*>(&object);
    return reinterpret_cast<Function>(table[place]);
}

}  // namespace

TEST(CObject, HasNoFields) {
    EXPECT_EQ(sizeof(CObject), sizeof(void*));
    EXPECT_EQ(RUNTIME_CLASS(CObject)->m_nObjectSize, static_cast<INT>(sizeof(void*)));
}

TEST(CObject, IsNotCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<Plain>);
    EXPECT_FALSE(std::is_copy_assignable_v<Plain>);
}

TEST(CObject, TableHoldsTheFiveOperationsInOrder) {
    auto* known = new Known;
    bool ended = false;
    known->ended = &ended;
    const CObject& object = *known;
    using GetRuntimeClass = CRuntimeClass* (*)(const CObject*);
    EXPECT_EQ(TableEntry<GetRuntimeClass>(object, 0)(&object), RUNTIME_CLASS(Known));
    int archive = 0;
    TableEntry<void (*)(CObject*, int&)>(object, 3)(known, archive);
    TableEntry<void (*)(const CObject*)>(object, 4)(known);
    TableEntry<void (*)(const CObject*, CDumpContext&)>(object, 5)(known, afxDump);
    EXPECT_EQ(known->calls, "Serialize AssertValid Dump ");
    TableEntry<void (*)(CObject*)>(object, 2)(known);
    EXPECT_TRUE(ended);
}

TEST(CObject, ClassWithoutAMacroHasTheRecordOfItsBase) {
    EXPECT_EQ(Plain().GetRuntimeClass(), RUNTIME_CLASS(CObject));
    EXPECT_EQ(Inherits().GetRuntimeClass(), RUNTIME_CLASS(Stored));
}

TEST(CObject, ClassWithAMacroHasItsOwnRecord) {
    EXPECT_EQ(Known().GetRuntimeClass(), RUNTIME_CLASS(Known));
    EXPECT_EQ(Known::GetThisClass(), RUNTIME_CLASS(Known));
    EXPECT_EQ(CObject::GetThisClass(), RUNTIME_CLASS(CObject));
}

TEST(CObject, IsKindOfItsClassAndItsBases) {
    const Stored stored;
    EXPECT_TRUE(stored.IsKindOf(RUNTIME_CLASS(Stored)));
    EXPECT_TRUE(stored.IsKindOf(RUNTIME_CLASS(Known)));
    EXPECT_TRUE(stored.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(Known().IsKindOf(RUNTIME_CLASS(Stored)));
}

TEST(CObject, IsKindOfNullRaisesInvalidArgument) {
    EXPECT_THROW(Known().IsKindOf(nullptr), CInvalidArgException*);
}

TEST(CObject, OnlyASerialClassIsSerializable) {
    EXPECT_TRUE(Stored().IsSerializable());
    EXPECT_FALSE(Known().IsSerializable());
    EXPECT_FALSE(Plain().IsSerializable());
}

TEST(CObject, DumpWritesClassAndAddress) {
    const Plain plain;
    CMemFile file;
    CDumpContext dc(&file);
    plain.Dump(dc);
    char address[32];
    std::snprintf(address, sizeof address, "$%zx", reinterpret_cast<std::size_t>(&plain));
    std::string text(file.GetLength(), 0);
    file.SeekToBegin();
    file.Read(text.data(), static_cast<UINT>(text.size()));
    EXPECT_EQ(text, "a CObject at " + std::string(address) + "\n");
}

TEST(CObject, DynamicDownCastAsksTheClass) {
    Stored stored;
    CObject* object = &stored;
    EXPECT_EQ(DYNAMIC_DOWNCAST(Known, object), &stored);
    EXPECT_EQ(STATIC_DOWNCAST(Stored, object), &stored);
    Known known;
    object = &known;
    EXPECT_EQ(DYNAMIC_DOWNCAST(Stored, object), nullptr);
    object = nullptr;
    EXPECT_EQ(DYNAMIC_DOWNCAST(Stored, object), nullptr);
}
