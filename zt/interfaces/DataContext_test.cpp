#include <zt/interfaces/DataContext.h>

#include <gtest/gtest.h>
#include <tests/CountedObject.h>

#include <cstddef>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

int destroyed = 0;

struct Open : DataContext {
    using DataContext::DataContext;
    using DataContext::m_xDataContext;
    Open(const Open&) = default;
    ~Open() override { ++destroyed; }

    HRESULT QueryInterface(const GUID& iid, void** ppv) override {
        ++queries;
        return DataContext::QueryInterface(iid, ppv);
    }

    static constexpr std::size_t PartOffset() { return offsetof(Open, m_xDataContext); }
    static constexpr std::size_t OptionAOffset() { return offsetof(Open, m_bOptionA); }
    static constexpr std::size_t OptionBOffset() { return offsetof(Open, m_bOptionB); }

    int queries = 0;
};

struct DataContextTest : testing::Test {
    DataContextTest() { destroyed = 0; }
    IDataContext* Shown() { return &context.m_xDataContext; }
    void SetFlags(bool a, bool b) {
        context.m_bOptionA = a;
        context.m_bOptionB = b;
    }

    Open context;
    void* found = this;
};

TEST_F(DataContextTest, FieldsFollowTheRootAndThePart) {
    EXPECT_EQ(Open::PartOffset(), sizeof(RefObj));
    EXPECT_EQ(Open::OptionAOffset(), sizeof(RefObj) + sizeof(void*));
    EXPECT_EQ(Open::OptionBOffset(), sizeof(RefObj) + sizeof(void*) + 1);
    EXPECT_EQ(sizeof(DataContext), sizeof(RefObj) + 2 * sizeof(void*));
}

TEST_F(DataContextTest, StartsWithTheFirstFlagAndOneReference) {
    EXPECT_TRUE(context.m_bOptionA);
    EXPECT_FALSE(context.m_bOptionB);
    EXPECT_EQ(context.GetRef(), 1u);
}

TEST_F(DataContextTest, CopyTakesCountModeAndFlags) {
    SetFlags(false, true);
    context.SetByVal(true, false);
    context.AddRef();
    Open copy(context);
    EXPECT_EQ(copy.GetRef(), 2u);
    EXPECT_FALSE(copy.m_bOptionA);
    EXPECT_TRUE(copy.m_bOptionB);
    EXPECT_EQ(copy.Release(), 1u);
    EXPECT_EQ(copy.Release(), 0u);
    EXPECT_EQ(destroyed, 0) << "by value";
    EXPECT_EQ(copy.QueryInterface(IID_IDataContext, &found), S_OK);
    EXPECT_EQ(found, static_cast<IDataContext*>(&copy.m_xDataContext)) << "its own part";
    EXPECT_EQ(context.GetRef(), 2u);
}

TEST_F(DataContextTest, CopyOfFlagsLeavesTheCount) {
    Open other;
    other.m_bOptionA = false;
    other.m_bOptionB = true;
    other.AddRef();
    context.Copy(&other);
    EXPECT_FALSE(context.m_bOptionA);
    EXPECT_TRUE(context.m_bOptionB);
    EXPECT_EQ(context.GetRef(), 1u);
    context.Copy(nullptr);
    EXPECT_FALSE(context.m_bOptionA);
    EXPECT_TRUE(context.m_bOptionB);
}

TEST_F(DataContextTest, ResetSetsTheFirstFlagAndLeavesTheSecond) {
    SetFlags(false, false);
    context.Reset();
    EXPECT_TRUE(context.m_bOptionA);
    EXPECT_FALSE(context.m_bOptionB);
    SetFlags(false, true);
    context.Reset();
    EXPECT_TRUE(context.m_bOptionA);
    EXPECT_TRUE(context.m_bOptionB);
}

TEST_F(DataContextTest, MakerKeepsAReferenceOfItsOwn) {
    for (const IID& id : {IID_IDataContext, IID_IUnknown}) {
        destroyed = 0;
        auto* const counted = new Open;
        EXPECT_EQ(counted->QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, static_cast<IDataContext*>(&counted->m_xDataContext));
        EXPECT_EQ(counted->GetRef(), 2u);
        EXPECT_EQ(static_cast<IDataContext*>(found)->Release(), 1u);
        EXPECT_EQ(destroyed, 0);
        EXPECT_EQ(counted->Release(), 0u);
        EXPECT_EQ(destroyed, 1);
    }
}

TEST_F(DataContextTest, NativeObjectComesWithoutAReference) {
    EXPECT_EQ(context.QueryInterface(IID_NativeObject, &found), S_OK);
    EXPECT_EQ(found, static_cast<DataContext*>(&context));
    found = nullptr;
    EXPECT_EQ(Shown()->QueryInterface(IID_NativeObject, &found), S_OK);
    EXPECT_EQ(found, static_cast<DataContext*>(&context));
    EXPECT_EQ(context.GetRef(), 1u);
}

TEST_F(DataContextTest, HasNoOtherInterface) {
    EXPECT_EQ(context.QueryInterface(testing_support::IID_ICounted, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    found = this;
    EXPECT_EQ(Shown()->QueryInterface(testing_support::IID_ICounted, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(context.GetRef(), 1u);
}

TEST_F(DataContextTest, PartHandsEveryQueryToTheObject) {
    int expected = 0;
    for (const IID& id : {IID_IDataContext, IID_IUnknown}) {
        found = nullptr;
        EXPECT_EQ(Shown()->QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, Shown());
        EXPECT_EQ(context.queries, ++expected);
    }
    EXPECT_EQ(context.GetRef(), 3u);
}

TEST_F(DataContextTest, NullOutPointerIsRefused) {
    EXPECT_EQ(context.QueryInterface(IID_IDataContext, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(context.QueryInterface(IID_NativeObject, nullptr), DISP_E_PARAMNOTOPTIONAL);
    context.queries = 0;
    EXPECT_EQ(Shown()->QueryInterface(IID_IDataContext, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(context.queries, 0) << "the part asks first";
    EXPECT_EQ(context.GetRef(), 1u);
}

TEST_F(DataContextTest, AnyNumberButZeroSetsAFlag) {
    for (const std::int16_t flag : {std::int16_t{-1}, std::int16_t{1}, std::int16_t{256}}) {
        SetFlags(false, false);
        EXPECT_EQ(Shown()->SetOptionA(flag), S_OK);
        EXPECT_TRUE(context.m_bOptionA);
        EXPECT_FALSE(context.m_bOptionB);
        SetFlags(false, false);
        EXPECT_EQ(Shown()->SetOptionB(flag), S_OK);
        EXPECT_FALSE(context.m_bOptionA);
        EXPECT_TRUE(context.m_bOptionB);
    }
    SetFlags(true, true);
    EXPECT_EQ(Shown()->SetOptionA(0), S_OK);
    EXPECT_FALSE(context.m_bOptionA);
    EXPECT_TRUE(context.m_bOptionB);
    EXPECT_EQ(Shown()->SetOptionB(0), S_OK);
    EXPECT_FALSE(context.m_bOptionB);
}

TEST_F(DataContextTest, ClassRecordSkipsTheRootOfCountedObjects) {
    const CRuntimeClass& record = DataContext::classDataContext;
    EXPECT_STREQ(record.m_lpszClassName, "DataContext");
    EXPECT_EQ(record.m_nObjectSize, static_cast<INT>(sizeof(DataContext)));
    EXPECT_EQ(record.m_wSchema, 0xFFFFu);
    EXPECT_EQ(record.m_pfnCreateObject, nullptr);
    EXPECT_EQ(record.CreateObject(), nullptr);
    EXPECT_EQ(DataContext::GetThisClass(), &record);
    const DataContext plain;
    EXPECT_EQ(plain.GetRuntimeClass(), &record);
    EXPECT_EQ(DataContext::_GetBaseClass(), CObject::GetThisClass());
    ASSERT_NE(record.m_pfnGetBaseClass, nullptr);
    EXPECT_EQ(record.m_pfnGetBaseClass(), CObject::GetThisClass());
}

TEST_F(DataContextTest, IsOfItsOwnClassAndOfTheRoot) {
    EXPECT_TRUE(context.IsKindOf(RUNTIME_CLASS(DataContext)));
    EXPECT_TRUE(context.IsKindOf(CObject::GetThisClass()));
    EXPECT_FALSE(RefObj().IsKindOf(RUNTIME_CLASS(DataContext)));
    EXPECT_EQ(CRuntimeClass::FromName("DataContext"), &DataContext::classDataContext);
    EXPECT_EQ(CRuntimeClass::CreateObject("DataContext"), nullptr) << "found, but cannot be made";
}

TEST_F(DataContextTest, TableOfThePartIsInOrder) {
    IDataContext* const shown = Shown();
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, &IID_IDataContext, &found)), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 3u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 2u);
    SetFlags(false, false);
    EXPECT_EQ((CallSlot<HRESULT, std::int16_t>(shown, 3, std::int16_t{1})), S_OK);
    EXPECT_TRUE(context.m_bOptionA);
    EXPECT_FALSE(context.m_bOptionB);
    EXPECT_EQ((CallSlot<HRESULT, std::int16_t>(shown, 4, std::int16_t{1})), S_OK);
    EXPECT_TRUE(context.m_bOptionB);
}

TEST_F(DataContextTest, TableOfTheObjectEndsWithReset) {
    EXPECT_EQ(CallSlot<CRuntimeClass*>(&context, kSlotGetRuntimeClass),
              &DataContext::classDataContext);
    EXPECT_EQ((CallSlot<HRESULT, const GUID*, void**>(&context, kSlotFirstOwn, &IID_IDataContext,
                                                      &found)),
              S_OK);
    EXPECT_EQ(found, Shown());
    EXPECT_EQ(CallSlot<ulong>(&context, kSlotFirstOwn + 2), 3u);
    EXPECT_EQ(CallSlot<ulong>(&context, kSlotFirstOwn + 1), 2u);
    SetFlags(false, false);
    CallSlot<void>(&context, kSlotFirstOwn + 3);
    EXPECT_TRUE(context.m_bOptionA);
    EXPECT_FALSE(context.m_bOptionB);
}

// Answers each operation of its own with the place in the table.
struct Numbered final : IDataContext {
    HRESULT QueryInterface(REFIID, void**) override { return 0; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 2; }
    HRESULT SetOptionA(std::int16_t) override { return 3; }
    HRESULT SetOptionB(std::int16_t) override { return 4; }
};

TEST(IDataContextTable, OperationsStandInOrder) {
    Numbered object;
    IDataContext* const shown = &object;
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, nullptr, nullptr)), 0);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 1u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 2u);
    EXPECT_EQ((CallSlot<HRESULT, std::int16_t>(shown, 3, std::int16_t{0})), 3);
    EXPECT_EQ((CallSlot<HRESULT, std::int16_t>(shown, 4, std::int16_t{0})), 4);
    EXPECT_EQ(InterfaceIdOf<IDataContext>::value, IID_IDataContext);
}

}  // namespace
}  // namespace ZT
