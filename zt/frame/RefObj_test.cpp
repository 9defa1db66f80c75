#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <zt/frame/RefObj.h>
#include <cstddef>
#include <string>
#include <vector>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

int destroyed = 0;

struct Watched : RefObj {
    Watched() = default;
    explicit Watched(const RefObj& other) : RefObj(other) {}
    ~Watched() override { ++destroyed; }

    bool RefByVal() const { return m_bRefByVal; }
    static constexpr std::size_t CountOffset() { return offsetof(Watched, m_nRefCount); }
    static constexpr std::size_t ModeOffset() { return offsetof(Watched, m_bRefByVal); }
};

struct RefObjTest : testing::Test {
    RefObjTest() { destroyed = 0; }
};

std::vector<std::string> calls;

struct Recorder : RefObj {
    HRESULT QueryInterface(const GUID&, void**) override {
        calls.push_back("QueryInterface");
        return S_OK;
    }
    ulong Release() override {
        calls.push_back("Release");
        return 11;
    }
    ulong AddRef() override {
        calls.push_back("AddRef");
        return 12;
    }
};

TEST_F(RefObjTest, FieldsStandInTheirOrder) {
    EXPECT_EQ(Watched::CountOffset(), sizeof(void*));
    EXPECT_EQ(Watched::ModeOffset(), sizeof(void*) + 4);
    EXPECT_EQ(sizeof(RefObj), 16u);
}

TEST_F(RefObjTest, TableHasReleaseBeforeAddRef) {
    calls.clear();
    Recorder object;
    void* found = nullptr;
    EXPECT_EQ(
        (CallSlot<HRESULT, const GUID*, void**>(&object, kSlotFirstOwn, &IID_IUnknown, &found)),
        S_OK);
    EXPECT_EQ(CallSlot<ulong>(&object, kSlotFirstOwn + 1), 11u);
    EXPECT_EQ(CallSlot<ulong>(&object, kSlotFirstOwn + 2), 12u);
    EXPECT_EQ(calls, (std::vector<std::string>{"QueryInterface", "Release", "AddRef"}));
}

TEST_F(RefObjTest, DestructorStandsBehindGetRuntimeClass) {
    auto* object = new Watched;
    EXPECT_EQ(CallSlot<CRuntimeClass*>(object, kSlotGetRuntimeClass), CObject::GetThisClass());
    CallSlot<void>(object, kSlotDeletingDestructor);
    EXPECT_EQ(destroyed, 1);
}

TEST_F(RefObjTest, StartsAtOneAndIsDeletedAtZero) {
    auto* object = new Watched;
    EXPECT_EQ(object->GetRef(), 1u);
    EXPECT_FALSE(object->RefByVal());
    EXPECT_EQ(object->AddRef(), 2u);
    EXPECT_EQ(object->Release(), 1u);
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(object->Release(), 0u);
    EXPECT_EQ(destroyed, 1);
}

TEST_F(RefObjTest, ByValueModeIsNeverDeletedByRelease) {
    Watched object;
    object.SetByVal(true, false);
    EXPECT_EQ(object.Release(), 0u);
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(object.AddRef(), 1u);
    EXPECT_EQ(object.GetRef(), 1u);
}

TEST_F(RefObjTest, ReleaseAtZeroWrapsAndDeletesNothing) {
    Watched object;
    object.SetByVal(false, true);
    ASSERT_EQ(object.GetRef(), 0u);
    EXPECT_EQ(object.Release(), 0xFFFFFFFFu);
    EXPECT_EQ(destroyed, 0);
}

TEST_F(RefObjTest, SetByValTakesTheFirstReferenceBack) {
    Watched object;
    object.SetByVal();
    EXPECT_EQ(object.GetRef(), 0u);
    EXPECT_TRUE(object.RefByVal());
}

TEST_F(RefObjTest, SetByValAtZeroSetsTheModeOnly) {
    Watched object;
    object.SetByVal(false, true);
    ASSERT_EQ(object.GetRef(), 0u);
    object.SetByVal();
    EXPECT_EQ(object.GetRef(), 0u);
    EXPECT_TRUE(object.RefByVal());
}

TEST_F(RefObjTest, SetByValStoresTheModeAndDropsOnlyWhenAsked) {
    Watched object;
    object.AddRef();
    object.AddRef();
    object.SetByVal(true, false);
    EXPECT_EQ(object.GetRef(), 3u);
    EXPECT_TRUE(object.RefByVal());
    object.SetByVal(false, true);
    EXPECT_EQ(object.GetRef(), 2u);
    EXPECT_FALSE(object.RefByVal());
}

TEST_F(RefObjTest, CopyStartsWithTheCountAndModeOfItsSource) {
    Watched source;
    for (int i = 0; i < 4; ++i) source.AddRef();
    source.SetByVal(true, false);
    const Watched copy(static_cast<const RefObj&>(source));
    EXPECT_EQ(copy.GetRef(), 5u);
    EXPECT_TRUE(copy.RefByVal());
    EXPECT_EQ(source.GetRef(), 5u);
}

TEST_F(RefObjTest, BaseHasNoInterface) {
    Watched object;
    void* found = &object;
    EXPECT_EQ(object.QueryInterface(IID_IUnknown, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(object.GetRef(), 1u);
    EXPECT_EQ(object.QueryInterface(IID_IUnknown, nullptr), E_NOINTERFACE);
}

TEST_F(RefObjTest, BalancedReferencesLeaveTheCountAsItWas) {
    EXPECT_TRUE(rc::check([](const std::vector<bool>& steps) {
        Watched object;
        object.SetByVal(true, false);
        ulong expected = 1;
        for (const bool up : steps) {
            expected += up ? 1u : 0xFFFFFFFFu;
            RC_ASSERT((up ? object.AddRef() : object.Release()) == expected);
        }
        RC_ASSERT(object.GetRef() == expected);
    }));
}

}  // namespace
}  // namespace ZT
