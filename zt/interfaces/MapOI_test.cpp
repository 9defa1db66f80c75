#include <gtest/gtest.h>
#include <platform/object/CInvalidArgException.h>
#include <tests/CountedObject.h>
#include <tests/Raises.h>
#include <zt/interfaces/MapOI.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

using testing_support::IID_ICounted;
using testing_support::Raises;

struct Open : MapOI {
    using MapOI::m_bOwner;
    using MapOI::m_pMap;
    using MapOI::m_xRefMap_ZT;
    using MapOI::MapOI;

    static constexpr std::size_t PartOffset() { return offsetof(Open, m_xRefMap_ZT); }
    static constexpr std::size_t MapOffset() { return offsetof(Open, m_pMap); }
    static constexpr std::size_t OwnerOffset() { return offsetof(Open, m_bOwner); }
};

void* P(std::uintptr_t number) {
    return reinterpret_cast<void*>(number);
}

int ended = 0;

// Counts its end.
struct Ending : Open {
    using Open::Open;
    ~Ending() override { ++ended; }
};

// A map of 1 to 10 and 2 to 20, and an object without a map.
struct MapOITest : testing::Test {
    MapOITest() {
        ended = 0;
        object.m_pMap->SetAt(P(1), P(10));
        object.m_pMap->SetAt(P(2), P(20));
    }

    Open object{true};
    Open empty;
    IRefMap_ZT* shown = &object.m_xRefMap_ZT;
    IRefMap_ZT* nothing = &empty.m_xRefMap_ZT;
    void* found = &object;
    void* value = P(7);
    std::int16_t truth = 7;
};

TEST_F(MapOITest, FieldsFollowTheRoot) {
    EXPECT_EQ(Open::PartOffset(), sizeof(RefObj));
    EXPECT_EQ(Open::MapOffset(), sizeof(RefObj) + 8);
    EXPECT_EQ(Open::OwnerOffset(), sizeof(RefObj) + 16);
    EXPECT_EQ(sizeof(MapOI), sizeof(RefObj) + 24);
}

TEST_F(MapOITest, StartsAtOneWithAMapOrWithout) {
    const Open owner(true);
    EXPECT_EQ(owner.GetRef(), 1u);
    EXPECT_TRUE(owner.m_bOwner);
    ASSERT_NE(owner.m_pMap, nullptr);
    EXPECT_TRUE(owner.m_pMap->IsEmpty());
    const Open told(false);
    EXPECT_EQ(told.GetRef(), 1u);
    EXPECT_FALSE(told.m_bOwner);
    EXPECT_EQ(told.m_pMap, nullptr);
    EXPECT_EQ(empty.GetRef(), 1u);
    EXPECT_FALSE(empty.m_bOwner);
    EXPECT_EQ(empty.m_pMap, nullptr);
}

TEST_F(MapOITest, OneQueryAndOneReleaseLeaveItAlive) {
    auto* counted = new Ending(true);
    EXPECT_EQ(counted->QueryInterface(IID_IRefMap_ZT, &found), S_OK);
    EXPECT_EQ(counted->GetRef(), 2u);
    auto* const part = static_cast<IRefMap_ZT*>(found);
    EXPECT_EQ(part->Release(), 1u);
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(part->Release(), 0u);
    EXPECT_EQ(ended, 1);
}

TEST_F(MapOITest, LeavesAMapThatItDoesNotOwn) {
    CMapPtrToPtr map;
    {
        Open borrower;
        borrower.m_pMap = &map;
        EXPECT_EQ(borrower.m_xRefMap_ZT.SetAt(P(3), P(30)), S_OK);
    }
    EXPECT_EQ(map.GetValueAt(P(3)), P(30));
}

TEST_F(MapOITest, CopySharesTheMap) {
    object.AddRef();
    Open copy(object);
    EXPECT_EQ(copy.GetRef(), 2u);
    EXPECT_EQ(copy.m_pMap, object.m_pMap);
    EXPECT_TRUE(copy.m_bOwner);
    copy.m_bOwner = false;
    EXPECT_EQ(copy.QueryInterface(IID_IRefMap_ZT, &found), S_OK);
    EXPECT_EQ(found, static_cast<IRefMap_ZT*>(&copy.m_xRefMap_ZT)) << "its own part";
    EXPECT_EQ(object.GetRef(), 2u);
}

TEST_F(MapOITest, AnswersItsInterfaceAndNoOther) {
    for (const IID& id : {IID_IRefMap_ZT, IID_IUnknown}) {
        found = nullptr;
        EXPECT_EQ(object.QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, shown);
        found = nullptr;
        EXPECT_EQ(shown->QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, shown);
    }
    EXPECT_EQ(object.GetRef(), 5u);
    for (const IID& id : {IID_ICounted, IID_NativeObject, IID_IList64}) {
        found = &object;
        EXPECT_EQ(object.QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(found, nullptr);
        found = &object;
        EXPECT_EQ(shown->QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(found, nullptr);
    }
    EXPECT_EQ(object.GetRef(), 5u);
}

TEST_F(MapOITest, NullOutPointerIsRefused) {
    EXPECT_EQ(object.QueryInterface(IID_IRefMap_ZT, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(object.QueryInterface(IID_ICounted, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(shown->QueryInterface(IID_IRefMap_ZT, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(nothing->QueryInterface(IID_IRefMap_ZT, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(object.GetRef(), 1u);
}

TEST_F(MapOITest, WithoutAMapThePartAnswersNoQueryAndDoesNotCount) {
    EXPECT_EQ(nothing->QueryInterface(IID_IRefMap_ZT, &found), E_UNEXPECTED);
    EXPECT_EQ(nothing->QueryInterface(IID_IUnknown, &found), E_UNEXPECTED);
    EXPECT_EQ(found, &object);
    EXPECT_EQ(nothing->AddRef(), 0x8000FFFFu);
    EXPECT_EQ(empty.GetRef(), 1u);
    EXPECT_EQ(nothing->Release(), 0x8000FFFFu);
    EXPECT_EQ(empty.GetRef(), 1u);
    EXPECT_EQ(empty.QueryInterface(IID_IRefMap_ZT, &found), S_OK) << "the object does";
    EXPECT_EQ(found, nothing);
    EXPECT_EQ(empty.GetRef(), 2u);
}

TEST_F(MapOITest, WithoutAMapNothingWorksWhateverTheArguments) {
    std::int32_t count = 7;
    POSITION pos = BeforeStartPosition();
    void* key = P(7);
    EXPECT_EQ(nothing->GetCount(&count), E_UNEXPECTED);
    EXPECT_EQ(nothing->GetCount(nullptr), E_UNEXPECTED);
    EXPECT_EQ(nothing->SetAt(P(1), P(2)), E_UNEXPECTED);
    EXPECT_EQ(nothing->Lookup(P(1), &value, &truth), E_UNEXPECTED);
    EXPECT_EQ(nothing->RemoveKey(P(1), &truth), E_UNEXPECTED);
    EXPECT_EQ(nothing->RemoveAll(), E_UNEXPECTED);
    EXPECT_EQ(nothing->GetStartPosition(&pos), E_UNEXPECTED);
    EXPECT_EQ(nothing->GetStartPosition(nullptr), E_UNEXPECTED);
    EXPECT_EQ(nothing->GetNextAssoc(&pos, &key, &value), E_UNEXPECTED);
    EXPECT_EQ(nothing->GetNextAssoc(nullptr, &key, &value), E_UNEXPECTED);
    EXPECT_EQ(count, 7);
    EXPECT_EQ(pos, BeforeStartPosition());
    EXPECT_EQ(key, P(7));
    EXPECT_EQ(value, P(7));
    EXPECT_EQ(truth, 7);
}

TEST_F(MapOITest, TableOfTheInterfaceIsInOrder) {
    std::int32_t count = 0;
    POSITION pos = nullptr;
    void* key = nullptr;
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, &IID_IRefMap_ZT, &found)), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 3u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 2u);
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t*>(shown, 3, &count)), S_OK);
    EXPECT_EQ(count, 2);
    EXPECT_EQ((CallSlot<HRESULT, void*, void*>(shown, 4, P(3), P(30))), S_OK);
    EXPECT_EQ(object.m_pMap->GetValueAt(P(3)), P(30));
    EXPECT_EQ((CallSlot<HRESULT, void*, void**, std::int16_t*>(shown, 5, P(2), &value, &truth)),
              S_OK);
    EXPECT_EQ(value, P(20));
    EXPECT_EQ(truth, -1);
    truth = 7;
    EXPECT_EQ((CallSlot<HRESULT, void*, std::int16_t*>(shown, 6, P(3), &truth)), S_OK);
    EXPECT_EQ(truth, -1);
    EXPECT_EQ(object.m_pMap->GetCount(), 2);
    EXPECT_EQ((CallSlot<HRESULT, POSITION*>(shown, 8, &pos)), S_OK);
    EXPECT_EQ(pos, BeforeStartPosition());
    EXPECT_EQ((CallSlot<HRESULT, POSITION*, void**, void**>(shown, 9, &pos, &key, &value)), S_OK);
    EXPECT_NE(pos, BeforeStartPosition());
    EXPECT_EQ(object.m_pMap->GetValueAt(key), value);
    EXPECT_EQ(CallSlot<HRESULT>(shown, 7), S_OK);
    EXPECT_TRUE(object.m_pMap->IsEmpty());
}

// Answers each operation of its own with the place in the table.
struct Numbered final : IRefMap_ZT {
    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 2; }
    HRESULT GetCount(std::int32_t*) override { return 3; }
    HRESULT SetAt(void*, void*) override { return 4; }
    HRESULT Lookup(void*, void**, std::int16_t*) override { return 5; }
    HRESULT RemoveKey(void*, std::int16_t*) override { return 6; }
    HRESULT RemoveAll() override { return 7; }
    HRESULT GetStartPosition(POSITION*) override { return 8; }
    HRESULT GetNextAssoc(POSITION*, void**, void**) override { return 9; }
};

TEST(IRefMapZt, OperationsStandInTheTableInOrder) {
    Numbered object;
    IRefMap_ZT* const shown = &object;
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 1u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 2u);
    for (int slot = 3; slot < 10; ++slot) {
        EXPECT_EQ((CallSlot<HRESULT, void*, void*, void*>(shown, static_cast<std::size_t>(slot),
                                                          nullptr, nullptr, nullptr)),
                  slot);
    }
}

TEST_F(MapOITest, CountNeedsAnOutput) {
    EXPECT_EQ(shown->GetCount(nullptr), DISP_E_PARAMNOTOPTIONAL);
    std::int32_t count = 7;
    EXPECT_EQ(shown->GetCount(&count), S_OK);
    EXPECT_EQ(count, 2);
}

TEST_F(MapOITest, SetAtReplacesTheValue) {
    EXPECT_EQ(shown->SetAt(P(1), P(11)), S_OK);
    EXPECT_EQ(object.m_pMap->GetValueAt(P(1)), P(11));
    EXPECT_EQ(object.m_pMap->GetCount(), 2);
}

TEST_F(MapOITest, KeysAndValuesAreAsWideAsPointers) {
    EXPECT_EQ(shown->SetAt(P(0x100000001), P(0x200000000)), S_OK);
    EXPECT_EQ(shown->Lookup(P(0x100000001), &value, nullptr), S_OK);
    EXPECT_EQ(value, P(0x200000000));
    EXPECT_EQ(object.m_pMap->GetValueAt(P(1)), P(10)) << "another key";
}

TEST_F(MapOITest, LookupGivesTheValueAndWhetherThereIsOne) {
    EXPECT_EQ(shown->Lookup(P(1), &value, &truth), S_OK);
    EXPECT_EQ(value, P(10));
    EXPECT_EQ(truth, -1);
    value = P(7);
    EXPECT_EQ(shown->Lookup(P(9), &value, &truth), S_OK);
    EXPECT_EQ(value, P(7)) << "not written";
    EXPECT_EQ(truth, 0);
}

TEST_F(MapOITest, LookupNeedsNoOutput) {
    EXPECT_EQ(shown->Lookup(P(2), &value, nullptr), S_OK);
    EXPECT_EQ(value, P(20));
    EXPECT_EQ(shown->Lookup(P(2), nullptr, &truth), S_OK);
    EXPECT_EQ(truth, -1);
    EXPECT_EQ(shown->Lookup(P(2), nullptr, nullptr), S_OK);
    EXPECT_EQ(shown->Lookup(P(9), nullptr, nullptr), S_OK);
}

TEST_F(MapOITest, RemoveKeyTellsWhetherItWasThere) {
    EXPECT_EQ(shown->RemoveKey(P(1), &truth), S_OK);
    EXPECT_EQ(truth, -1);
    EXPECT_EQ(shown->RemoveKey(P(1), &truth), S_OK);
    EXPECT_EQ(truth, 0);
    EXPECT_EQ(shown->RemoveKey(P(2), nullptr), S_OK);
    EXPECT_TRUE(object.m_pMap->IsEmpty());
}

TEST_F(MapOITest, WalkOverAnEmptyMapHasNoStart) {
    EXPECT_EQ(shown->RemoveAll(), S_OK);
    POSITION pos = BeforeStartPosition();
    EXPECT_EQ(shown->GetStartPosition(&pos), S_OK);
    EXPECT_EQ(pos, nullptr);
    EXPECT_EQ(shown->GetStartPosition(nullptr), S_OK);
}

TEST_F(MapOITest, WalkOverOnePairBeginsBeforeItAndEndsBehindIt) {
    shown->RemoveKey(P(2), nullptr);
    POSITION pos = nullptr;
    void* key = nullptr;
    EXPECT_EQ(shown->GetStartPosition(&pos), S_OK);
    EXPECT_EQ(reinterpret_cast<std::intptr_t>(pos), -1);
    EXPECT_EQ(shown->GetNextAssoc(&pos, &key, &value), S_OK);
    EXPECT_EQ(key, P(1));
    EXPECT_EQ(value, P(10));
    EXPECT_EQ(pos, nullptr);
}

TEST_F(MapOITest, WalkVisitsEachPairOnce) {
    for (std::uintptr_t i = 3; i < 50; ++i) shown->SetAt(P(i), P(10 * i));
    POSITION pos = nullptr;
    shown->GetStartPosition(&pos);
    std::map<void*, int> visits;
    while (pos != nullptr && visits.size() < 60) {
        void* key = nullptr;
        ASSERT_EQ(shown->GetNextAssoc(&pos, &key, &value), S_OK);
        EXPECT_EQ(value, P(10 * reinterpret_cast<std::uintptr_t>(key)));
        EXPECT_EQ(++visits[key], 1);
    }
    EXPECT_EQ(visits.size(), 49u);
}

TEST_F(MapOITest, WalkNeedsAPositionAndNoOutput) {
    void* key = P(7);
    EXPECT_EQ(shown->GetNextAssoc(nullptr, &key, &value), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(key, P(7));
    POSITION pos = BeforeStartPosition();
    EXPECT_EQ(shown->GetNextAssoc(&pos, nullptr, nullptr), S_OK);
    EXPECT_NE(pos, nullptr);
    EXPECT_EQ(shown->GetNextAssoc(&pos, &key, nullptr), S_OK);
    EXPECT_NE(key, P(7));
    EXPECT_EQ(pos, nullptr);
    pos = BeforeStartPosition();
    EXPECT_EQ(shown->GetNextAssoc(&pos, nullptr, &value), S_OK);
    EXPECT_NE(value, P(7));
}

TEST_F(MapOITest, WalkFromNoPositionRaises) {
    POSITION pos = nullptr;
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { shown->GetNextAssoc(&pos, nullptr, nullptr); }));
}

}  // namespace
}  // namespace ZT
