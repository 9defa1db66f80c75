#include <gtest/gtest.h>
#include <tests/CountedObject.h>
#include <zt/interfaces/NumArrayOI.h>
#include <zt/interfaces/Object_ZtOI.h>
#include <zt/interfaces/ResultCodes.h>

#include <cstddef>
#include <cstdint>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

using testing_support::CountedObject;
using testing_support::IID_ICounted;

struct Open : Object_ZtOI {
    using Object_ZtOI::m_pObject;
    using Object_ZtOI::m_xObject_ZT;
    using Object_ZtOI::Object_ZtOI;

    static constexpr std::size_t PartOffset() { return offsetof(Open, m_xObject_ZT); }
    static constexpr std::size_t ObjectOffset() { return offsetof(Open, m_pObject); }
};

// Gives another object's interfaces for its own, and notes what it was asked for.
struct Wrapped : RefObj {
    HRESULT QueryInterface(const GUID& iid, void** ppv) override {
        asked = iid;
        if (iid != IID_IObject_ZT && iid != IID_ICounted) {
            return RefObj::QueryInterface(iid, ppv);
        }
        *ppv = static_cast<IUnknown*>(&shown);
        shown.AddRef();
        return S_OK;
    }

    CountedObject shown;
    IID asked = IID_NULL;
};

struct ObjectZtOITest : testing::Test {
    IObject_ZT* Shown() { return &adapter.m_xObject_ZT; }

    Wrapped object;
    Open adapter{&object};
    Open empty;
    void* found = &object;
    std::int16_t same = 0;
};

TEST_F(ObjectZtOITest, FieldsFollowTheRoot) {
    EXPECT_EQ(Open::PartOffset(), sizeof(RefObj));
    EXPECT_EQ(Open::ObjectOffset(), sizeof(RefObj) + sizeof(void*));
    EXPECT_EQ(sizeof(Object_ZtOI), sizeof(RefObj) + 2 * sizeof(void*));
}

TEST_F(ObjectZtOITest, StartsAtOneAndHoldsAReference) {
    EXPECT_EQ(adapter.GetRef(), 1u);
    EXPECT_EQ(adapter.m_pObject, &object);
    EXPECT_EQ(object.GetRef(), 2u);
    EXPECT_EQ(empty.GetRef(), 1u);
    EXPECT_EQ(empty.m_pObject, nullptr);
    const Open wrapsNull(nullptr);
    EXPECT_EQ(wrapsNull.m_pObject, nullptr);
}

TEST_F(ObjectZtOITest, ReleasesTheObjectAtItsEnd) {
    { const Open other(&object); }
    EXPECT_EQ(object.GetRef(), 2u);
    auto* counted = new Object_ZtOI(&object);
    EXPECT_EQ(object.GetRef(), 3u);
    counted->Release();
    EXPECT_EQ(object.GetRef(), 2u);
}

TEST_F(ObjectZtOITest, CopyAddsNoReferenceAndReleasesOne) {
    adapter.AddRef();
    object.AddRef();
    {
        Open copy(adapter);
        EXPECT_EQ(copy.GetRef(), 2u);
        EXPECT_EQ(copy.m_pObject, &object);
        EXPECT_EQ(object.GetRef(), 3u);
        copy.QueryInterface(IID_IObject_ZT, &found);
        EXPECT_EQ(found, static_cast<IObject_ZT*>(&copy.m_xObject_ZT)) << "its own part";
    }
    EXPECT_EQ(object.GetRef(), 2u);
}

TEST_F(ObjectZtOITest, CopyKeepsTheByValueMode) {
    Open original;
    original.SetByVal();
    Open copy(original);
    EXPECT_EQ(copy.GetRef(), 0u);
    EXPECT_EQ(copy.AddRef(), 1u);
    EXPECT_EQ(copy.Release(), 0u) << "an object on the stack, which this must not delete";
    EXPECT_EQ(copy.AddRef(), 1u);
}

TEST_F(ObjectZtOITest, AnswersItsInterface) {
    for (const IID& id : {IID_IObject_ZT, IID_IUnknown}) {
        found = nullptr;
        EXPECT_EQ(adapter.QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, Shown());
        found = nullptr;
        EXPECT_EQ(Shown()->QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, Shown());
    }
    EXPECT_EQ(adapter.GetRef(), 5u);
    EXPECT_EQ(object.asked, IID_NULL);
}

TEST_F(ObjectZtOITest, SendsOtherIdentifiersToTheWrappedObject) {
    EXPECT_EQ(adapter.QueryInterface(IID_ICounted, &found), S_OK);
    EXPECT_EQ(found, &object.shown);
    found = nullptr;
    EXPECT_EQ(Shown()->QueryInterface(IID_ICounted, &found), S_OK);
    EXPECT_EQ(found, &object.shown);
    EXPECT_EQ(adapter.GetRef(), 1u);
    EXPECT_EQ(adapter.QueryInterface(IID_NativeObject, &found), E_NOINTERFACE);
    EXPECT_EQ(object.asked, IID_NativeObject);
    EXPECT_EQ(found, nullptr);
}

TEST_F(ObjectZtOITest, GivesNullWithoutAWrappedObject) {
    EXPECT_EQ(empty.QueryInterface(IID_ICounted, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(empty.QueryInterface(IID_IObject_ZT, &found), S_OK);
    EXPECT_EQ(found, static_cast<IObject_ZT*>(&empty.m_xObject_ZT));
}

TEST_F(ObjectZtOITest, GivesWhatAnObjectWithoutInterfacesGives) {
    RefObj bare;
    Open wrapsBare(&bare);
    EXPECT_EQ(wrapsBare.QueryInterface(IID_ICounted, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
}

TEST_F(ObjectZtOITest, WrappedObjectMayLeaveTheOutPointerAlone) {
    NumArrayOI none(false);
    Object_ZtOI wrapper(&none);
    found = &wrapper;
    EXPECT_EQ(wrapper.QueryInterface(IID_ITypeBasic_ZT, &found), ERROR_INVALID_STATE);
    EXPECT_EQ(found, &wrapper);
}

TEST_F(ObjectZtOITest, NullOutPointerIsRefused) {
    EXPECT_EQ(adapter.QueryInterface(IID_IObject_ZT, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(adapter.QueryInterface(IID_ICounted, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Shown()->QueryInterface(IID_ICounted, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(empty.QueryInterface(IID_ICounted, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(object.asked, IID_NULL);
}

TEST_F(ObjectZtOITest, TableOfTheInterfaceIsInOrder) {
    IObject_ZT* const shown = Shown();
    std::uint32_t handle = 0;
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, &IID_IObject_ZT, &found)), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 3u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 2u);
    IUnknown* const other = &object.shown;
    EXPECT_EQ((CallSlot<HRESULT, IUnknown*, std::int16_t*>(shown, 3, other, &same)), S_OK);
    EXPECT_EQ(same, 1);
    EXPECT_EQ((CallSlot<HRESULT, std::uint32_t*>(shown, 4, &handle)), S_OK);
    EXPECT_NE(handle, 0u);
    EXPECT_EQ((CallSlot<HRESULT, IUnknown*>(shown, 5, other)), 120);
    EXPECT_EQ((CallSlot<HRESULT, IUnknown**>(shown, 6, nullptr)), 120);
    EXPECT_EQ(CallSlot<HRESULT>(shown, 7), 120);
    EXPECT_EQ(CallSlot<HRESULT>(shown, 8), 120);
}

// Answers each operation of its own with the place in the table.
struct Numbered final : IObject_ZT {
    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 1; }
    HRESULT IsSame(IUnknown*, std::int16_t*) override { return 3; }
    HRESULT GetHandle(std::uint32_t*) override { return 4; }
    HRESULT CopyFrom(IUnknown*) override { return 5; }
    HRESULT Clone(IUnknown**) override { return 6; }
    HRESULT ReservedA() override { return 7; }
    HRESULT ReservedB() override { return 8; }
};

TEST(IObjectZt, OperationsStandInTheTableInOrder) {
    Numbered object;
    IObject_ZT* const shown = &object;
    EXPECT_EQ((CallSlot<HRESULT, IUnknown*, std::int16_t*>(shown, 3, nullptr, nullptr)), 3);
    EXPECT_EQ((CallSlot<HRESULT, std::uint32_t*>(shown, 4, nullptr)), 4);
    EXPECT_EQ((CallSlot<HRESULT, IUnknown*>(shown, 5, nullptr)), 5);
    EXPECT_EQ((CallSlot<HRESULT, IUnknown**>(shown, 6, nullptr)), 6);
    EXPECT_EQ(CallSlot<HRESULT>(shown, 7), 7);
    EXPECT_EQ(CallSlot<HRESULT>(shown, 8), 8);
}

TEST_F(ObjectZtOITest, IsSameComparesWithWhatTheObjectShows) {
    EXPECT_EQ(Shown()->IsSame(&object.shown, &same), S_OK);
    EXPECT_EQ(same, 1);
    EXPECT_EQ(object.asked, IID_IObject_ZT);
    EXPECT_EQ(object.shown.count, 2u) << "the query's reference stays";
    CountedObject stranger;
    same = 0;
    EXPECT_EQ(Shown()->IsSame(&stranger, &same), S_OK);
    EXPECT_EQ(same, 0);
    EXPECT_EQ(object.shown.count, 3u);
    EXPECT_EQ(stranger.count, 1u);
}

TEST_F(ObjectZtOITest, IsSameLeavesAResultThatIsNotZero) {
    for (const std::int16_t before : {std::int16_t{1}, std::int16_t{-1}}) {
        CountedObject stranger;
        same = before;
        EXPECT_EQ(Shown()->IsSame(&stranger, &same), S_OK);
        EXPECT_EQ(same, before);
    }
    EXPECT_EQ(object.asked, IID_NULL) << "nothing was asked";
    EXPECT_EQ(object.shown.count, 1u);
}

TEST_F(ObjectZtOITest, IsSameOfAnObjectThatShowsNothing) {
    RefObj bare;
    Open wrapsBare(&bare);
    EXPECT_EQ(wrapsBare.m_xObject_ZT.IsSame(&object.shown, &same), S_OK);
    EXPECT_EQ(same, 0);
    EXPECT_EQ(wrapsBare.m_xObject_ZT.IsSame(nullptr, &same), S_OK);
    EXPECT_EQ(same, 1);
}

TEST_F(ObjectZtOITest, IsSameNeedsAnObjectFirstOfAll) {
    same = 1;
    EXPECT_EQ(empty.m_xObject_ZT.IsSame(&object.shown, &same), E_UNEXPECTED);
    EXPECT_EQ(same, 1);
    EXPECT_EQ(empty.m_xObject_ZT.IsSame(&object.shown, nullptr), E_UNEXPECTED);
    EXPECT_EQ(Shown()->IsSame(&object.shown, nullptr), S_OK);
}

TEST_F(ObjectZtOITest, HandleIsTheLowHalfOfTheAdaptersAddress) {
    std::uint32_t handle = 0;
    EXPECT_EQ(Shown()->GetHandle(&handle), S_OK);
    EXPECT_EQ(handle,
              reinterpret_cast<std::uintptr_t>(static_cast<Object_ZtOI*>(&adapter)) & 0xFFFFFFFFu);
    EXPECT_EQ(Shown()->GetHandle(nullptr), S_OK);
}

TEST_F(ObjectZtOITest, HandleNeedsAnObject) {
    std::uint32_t handle = 7;
    EXPECT_EQ(empty.m_xObject_ZT.GetHandle(&handle), E_UNEXPECTED);
    EXPECT_EQ(handle, 7u);
    EXPECT_EQ(empty.m_xObject_ZT.GetHandle(nullptr), E_UNEXPECTED);
}

TEST_F(ObjectZtOITest, TheRestIsNotImplementedAndPassesForSuccess) {
    EXPECT_EQ(Shown()->CopyFrom(&object.shown), 120);
    IUnknown* clone = &object.shown;
    EXPECT_EQ(Shown()->Clone(&clone), 120);
    EXPECT_EQ(clone, &object.shown);
    EXPECT_EQ(Shown()->ReservedA(), 120);
    EXPECT_EQ(Shown()->ReservedB(), 120);
    EXPECT_EQ(empty.m_xObject_ZT.CopyFrom(nullptr), 120);
}

}  // namespace
}  // namespace ZT
