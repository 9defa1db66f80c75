#include <gtest/gtest.h>
#include <tests/CountedObject.h>
#include <zt/interfaces/OIObj.h>

#include <cstddef>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

using testing_support::CountedObject;

struct Open : OIObj {
    using OIObj::m_pOwner;
    using OIObj::OIObj;

    static constexpr std::size_t OwnerOffset() { return offsetof(Open, m_pOwner); }
};

TEST(OIObjTest, AddsOneFieldToTheRoot) {
    EXPECT_EQ(Open::OwnerOffset(), sizeof(RefObj));
    EXPECT_EQ(sizeof(OIObj), sizeof(RefObj) + sizeof(void*));
}

TEST(OIObjTest, StartsAtOneWithoutOwner) {
    Open object;
    EXPECT_EQ(object.GetRef(), 1u);
    EXPECT_EQ(object.m_pOwner, nullptr);
}

TEST(OIObjTest, HasNoInterface) {
    OIObj object;
    for (const IID& id : {IID_IUnknown, testing_support::IID_ICounted}) {
        void* found = &object;
        EXPECT_EQ(object.QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(found, nullptr);
        EXPECT_EQ(object.QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
    }
    EXPECT_EQ(object.GetRef(), 1u);
}

TEST(OIObjTest, KeepsTheTableOfTheRoot) {
    OIObj object;
    EXPECT_EQ(CallSlot<ulong>(&object, kSlotFirstOwn + 2), 2u);
    EXPECT_EQ(CallSlot<ulong>(&object, kSlotFirstOwn + 1), 1u);
}

TEST(OIObjTest, HoldsAReferenceOnItsOwner) {
    CountedObject owner;
    {
        Open object;
        object.AttachOwner(&owner);
        EXPECT_EQ(object.m_pOwner, &owner);
        EXPECT_EQ(owner.count, 2u);
    }
    EXPECT_EQ(owner.count, 1u);
}

TEST(OIObjTest, LeavesAPreviousOwnersReference) {
    CountedObject first;
    CountedObject second;
    {
        OIObj object;
        object.AttachOwner(&first);
        object.AttachOwner(&second);
        EXPECT_EQ(second.count, 2u);
    }
    EXPECT_EQ(first.count, 2u);
    EXPECT_EQ(second.count, 1u);
}

TEST(OIObjTest, AttachesNull) {
    CountedObject owner;
    {
        Open object;
        object.AttachOwner(&owner);
        object.AttachOwner(nullptr);
        EXPECT_EQ(object.m_pOwner, nullptr);
    }
    EXPECT_EQ(owner.count, 2u);
}

TEST(OIObjTest, CopyAddsNoReferenceAndReleasesOne) {
    CountedObject owner;
    {
        Open object;
        object.AttachOwner(&owner);
        object.AddRef();
        {
            Open copy(object);
            EXPECT_EQ(copy.GetRef(), 2u);
            EXPECT_EQ(copy.m_pOwner, &owner);
            EXPECT_EQ(owner.count, 2u);
        }
        EXPECT_EQ(owner.count, 1u);
    }
    EXPECT_EQ(owner.count, 0u);
}

TEST(OIObjTest, CopyTakesTheMode) {
    OIObj object;
    object.SetByVal();
    OIObj copy(object);
    EXPECT_EQ(copy.GetRef(), 0u);
    copy.AddRef();
    EXPECT_EQ(copy.Release(), 0u) << "stands on the stack and is not deleted";
    EXPECT_EQ(copy.AddRef(), 1u);
}

TEST(OIObjTest, LastReleaseReleasesTheOwner) {
    CountedObject owner;
    auto* object = new OIObj;
    object->AttachOwner(&owner);
    EXPECT_EQ(object->Release(), 0u);
    EXPECT_EQ(owner.count, 1u);
}

}  // namespace
}  // namespace ZT
