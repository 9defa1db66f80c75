#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CInvalidArgException.h>
#include <tests/CountedObject.h>
#include <tests/Raises.h>
#include <zt/interfaces/ListOI.h>
#include <zt/interfaces/NumArrayOI.h>
#include <zt/interfaces/ResultCodes.h>

#include <cstddef>
#include <cstdint>
#include <vector>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::CountedObject;
using testing_support::ICounted;
using testing_support::IID_ICounted;
using testing_support::Raises;

struct Open : ListOI {
    using ListOI::ListOI;
    using ListOI::m_bInterfaces;
    using ListOI::m_bOwner;
    using ListOI::m_bRefByVal;
    using ListOI::m_pfnGetAt;
    using ListOI::m_pList;
    using ListOI::m_pOwner;
    using ListOI::m_pReserved;
    using ListOI::m_xIterator;
    using ListOI::m_xList;

    // The elements as numbers, from head to tail.
    std::vector<std::uintptr_t> Numbers() const {
        std::vector<std::uintptr_t> numbers;
        for (const CObject* p : *m_pList) numbers.push_back(reinterpret_cast<std::uintptr_t>(p));
        return numbers;
    }

    // The places of parts and fields, in their order.
    static std::vector<std::size_t> Offsets() {
        return {offsetof(Open, m_xIterator), offsetof(Open, m_xList), offsetof(Open, m_pReserved),
                offsetof(Open, m_pfnGetAt),  offsetof(Open, m_pList), offsetof(Open, m_bInterfaces),
                offsetof(Open, m_bOwner),    offsetof(Open, m_pOwner)};
    }
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

// What a list read through this function was asked for, and what it answers.
void* askedList = nullptr;
POSITION askedPosition = nullptr;
void* answer = nullptr;

void* ReadAnswer(void* list, POSITION pos) {
    askedList = list;
    askedPosition = pos;
    return answer;
}

// The elements 1 to 4 and their positions.
struct ListOITest : testing::Test {
    ListOITest() {
        ended = 0;
        askedList = nullptr;
        askedPosition = nullptr;
        answer = nullptr;
        for (std::uintptr_t i = 1; i <= 4; ++i) at.push_back(list.AddTail(P(i)));
    }

    Open list{false, true};
    std::vector<POSITION> at;
    IList64* shown = &list.m_xList;
    IIterator64* iterator = &list.m_xIterator;
    void* found = &list;
    CountedObject owner;
};

TEST_F(ListOITest, FieldsFollowTheRootInTheirOrder) {
    EXPECT_THAT(Open::Offsets(), ElementsAre(16, 24, 32, 40, 48, 56, 57, 64));
    EXPECT_EQ(sizeof(ListOI), 72u);
    EXPECT_EQ(sizeof(RefObj), 16u);
}

TEST_F(ListOITest, StartsAtZeroWithWhatItWasTold) {
    CObList outer;
    const Open none;
    const Open interfaces(true);
    const Open notOwner(true, false);
    const Open wrapper(&outer, ReadAnswer, true);
    const Open* const all[] = {&none, &interfaces, &notOwner, &wrapper, &list};
    for (const Open* made : all) {
        EXPECT_EQ(made->GetRef(), 0u);
        EXPECT_EQ(made->m_pReserved, nullptr);
        EXPECT_EQ(made->m_pOwner, nullptr);
        EXPECT_EQ(made->m_bOwner, made == &list);
        EXPECT_EQ(made->m_bInterfaces, made != &none && made != &list);
        EXPECT_EQ(made->m_pfnGetAt, made == &wrapper ? &ReadAnswer : nullptr);
    }
    EXPECT_EQ(none.m_pList, nullptr);
    EXPECT_EQ(interfaces.m_pList, nullptr);
    EXPECT_EQ(notOwner.m_pList, nullptr);
    EXPECT_EQ(wrapper.m_pList, &outer);
    const Open plain(false);
    EXPECT_FALSE(plain.m_bInterfaces);
    const Open both(true, true);
    EXPECT_TRUE(both.m_bInterfaces);
    EXPECT_TRUE(both.m_bOwner);
    ASSERT_NE(both.m_pList, nullptr);
    EXPECT_TRUE(both.m_pList->IsEmpty());
    const Open unread(&outer, nullptr, false);
    EXPECT_FALSE(unread.m_bInterfaces);
    EXPECT_EQ(unread.m_pfnGetAt, nullptr);
}

TEST_F(ListOITest, OneQueryAndOneReleaseEndIt) {
    auto* counted = new Ending(false, true);
    EXPECT_EQ(counted->QueryInterface(IID_IList64, &found), S_OK);
    EXPECT_EQ(counted->GetRef(), 1u);
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(static_cast<IList64*>(found)->Release(), 0u);
    EXPECT_EQ(ended, 1);
}

TEST_F(ListOITest, EndsNeitherAListOfAnotherNorTheElements) {
    CObList outer;
    CountedObject element;
    {
        Open wrapper(&outer, nullptr, true);
        wrapper.AddTail(static_cast<IUnknown*>(&element));
    }
    EXPECT_EQ(outer.GetCount(), 1);
    {
        Open ending(true, true);
        ending.AddTail(static_cast<IUnknown*>(&element));
    }
    EXPECT_EQ(element.count, 1u);
}

TEST_F(ListOITest, OwnerIsHeldUntilTheEnd) {
    {
        Open held;
        held.AttachOwner(&owner);
        EXPECT_EQ(held.m_pOwner, &owner);
        EXPECT_EQ(owner.count, 2u);
    }
    EXPECT_EQ(owner.count, 1u);
}

// An owner that notes at its release how many elements a list has.
struct NotingOwner final : IUnknown {
    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 2; }
    ULONG Release() override {
        left = list->GetCount();
        return 1;
    }
    const CObList* list = nullptr;
    std::int64_t left = -1;
};

TEST_F(ListOITest, OwnerIsReleasedWhileTheListIsThere) {
    NotingOwner noting;
    {
        Open held(false, true);
        for (const std::uintptr_t i : {1u, 2u, 3u}) held.AddTail(P(i));
        noting.list = held.m_pList;
        held.AttachOwner(&noting);
    }
    EXPECT_EQ(noting.left, 3);
}

TEST_F(ListOITest, PreviousOwnerIsNotReleased) {
    CountedObject next;
    list.AttachOwner(&owner);
    list.AttachOwner(&next);
    EXPECT_EQ(owner.count, 2u);
    EXPECT_EQ(next.count, 2u);
    list.AttachOwner(nullptr);
    EXPECT_EQ(list.m_pOwner, nullptr);
    EXPECT_EQ(next.count, 2u);
}

TEST_F(ListOITest, CopyTakesAllFieldsAndAddsNoReference) {
    CObList outer;
    Open original(&outer, ReadAnswer, true);
    original.m_pReserved = P(9);
    original.AddRef();
    original.AttachOwner(&owner);
    owner.AddRef();
    {
        Open copy(original);
        EXPECT_EQ(copy.GetRef(), 1u);
        EXPECT_EQ(copy.m_pReserved, P(9));
        EXPECT_EQ(copy.m_pfnGetAt, &ReadAnswer);
        EXPECT_EQ(copy.m_pList, &outer);
        EXPECT_TRUE(copy.m_bInterfaces);
        EXPECT_FALSE(copy.m_bOwner);
        EXPECT_EQ(copy.m_pOwner, &owner);
        EXPECT_EQ(owner.count, 3u);
    }
    EXPECT_EQ(owner.count, 2u) << "the copy releases one all the same";
    Open second(list);
    EXPECT_TRUE(second.m_bOwner);
    second.m_bOwner = false;
}

TEST_F(ListOITest, ConstructZeroesEverythingAndEndsNothing) {
    CObList outer;
    Open made(&outer, ReadAnswer, true);
    made.m_pReserved = P(9);
    made.m_bOwner = true;
    made.AddRef();
    made.AttachOwner(&owner);
    made.SetByVal(true, false);
    made.Construct();
    EXPECT_EQ(made.GetRef(), 0u);
    EXPECT_FALSE(made.m_bRefByVal);
    EXPECT_EQ(made.m_pReserved, nullptr);
    EXPECT_EQ(made.m_pfnGetAt, nullptr);
    EXPECT_EQ(made.m_pList, nullptr);
    EXPECT_FALSE(made.m_bInterfaces);
    EXPECT_FALSE(made.m_bOwner);
    EXPECT_EQ(made.m_pOwner, nullptr);
    EXPECT_EQ(owner.count, 2u);
}

TEST_F(ListOITest, KnowsItsTwoInterfacesAndNoOther) {
    EXPECT_EQ(list.QueryInterface(IID_IList64, &found), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(list.GetRef(), 1u);
    EXPECT_EQ(list.QueryInterface(IID_IIterator64, &found), S_OK);
    EXPECT_EQ(found, iterator);
    EXPECT_EQ(list.GetRef(), 2u);
    for (const IID& id : {IID_IUnknown, IID_NativeObject, IID_ICounted}) {
        found = &list;
        EXPECT_EQ(list.QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(found, nullptr);
    }
    EXPECT_EQ(list.GetRef(), 2u);
}

TEST_F(ListOITest, PartsAnswerThemselvesAndTheirSibling) {
    IUnknown* const parts[] = {shown, iterator};
    for (IUnknown* part : parts) {
        EXPECT_EQ(part->QueryInterface(IID_IUnknown, &found), S_OK);
        EXPECT_EQ(found, part);
        EXPECT_EQ(part->QueryInterface(IID_IList64, &found), S_OK);
        EXPECT_EQ(found, shown);
        EXPECT_EQ(part->QueryInterface(IID_IIterator64, &found), S_OK);
        EXPECT_EQ(found, iterator);
        EXPECT_EQ(part->QueryInterface(IID_ICounted, &found), E_NOINTERFACE);
        EXPECT_EQ(found, nullptr);
    }
    EXPECT_EQ(list.GetRef(), 6u);
}

TEST_F(ListOITest, OwnerAnswersWhatTheListDoesNot) {
    list.AttachOwner(&owner);
    for (const IID& id : {IID_ICounted, IID_IUnknown}) {
        EXPECT_EQ(list.QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, static_cast<ICounted*>(&owner));
    }
    EXPECT_EQ(shown->QueryInterface(IID_ICounted, &found), S_OK);
    EXPECT_EQ(found, static_cast<ICounted*>(&owner));
    EXPECT_EQ(owner.count, 5u);
    EXPECT_EQ(owner.queries, 3);
    EXPECT_EQ(list.QueryInterface(IID_IRefMap_ZT, &found), E_NOINTERFACE);
    EXPECT_EQ(owner.queries, 4);
    EXPECT_EQ(list.GetRef(), 0u);
    EXPECT_EQ(list.QueryInterface(IID_IList64, &found), S_OK);
    EXPECT_EQ(shown->QueryInterface(IID_IUnknown, &found), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(owner.queries, 4) << "these are the list's own";
    EXPECT_EQ(list.GetRef(), 2u);
}

TEST_F(ListOITest, OwnerThatLeavesTheOutPointerAloneIsNotSpokenFor) {
    NumArrayOI none(false);
    ASSERT_EQ(none.QueryInterface(IID_IObject_ZT, &found), S_OK);
    list.AttachOwner(static_cast<IObject_ZT*>(found));
    for (IUnknown* const asked :
         {static_cast<IUnknown*>(shown), static_cast<IUnknown*>(iterator)}) {
        found = &list;
        EXPECT_EQ(asked->QueryInterface(IID_ITypeBasic_ZT, &found), ERROR_INVALID_STATE);
        EXPECT_EQ(found, &list);
    }
    found = &list;
    EXPECT_EQ(list.QueryInterface(IID_ITypeBasic_ZT, &found), ERROR_INVALID_STATE);
    EXPECT_EQ(found, &list);
    EXPECT_EQ(list.GetRef(), 0u);
    list.m_pOwner = nullptr;
}

TEST_F(ListOITest, NullOutPointerIsRefused) {
    list.AttachOwner(&owner);
    for (const IID& id : {IID_IList64, IID_IUnknown, IID_ICounted}) {
        EXPECT_EQ(list.QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
        EXPECT_EQ(shown->QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
        EXPECT_EQ(iterator->QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
    }
    EXPECT_EQ(list.GetRef(), 0u);
    EXPECT_EQ(owner.queries, 0);
}

TEST_F(ListOITest, TableOfTheListInterfaceIsInOrder) {
    IUnknown* element = nullptr;
    IIterator64* walker = nullptr;
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, &IID_IList64, &found)), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 2u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 1u);
    EXPECT_EQ((CallSlot<HRESULT, IIterator64**>(shown, 3, &walker)), S_OK);
    EXPECT_EQ(walker, iterator);
    EXPECT_EQ((CallSlot<HRESULT, POSITION, IUnknown**>(shown, 4, at[2], &element)), S_OK);
    EXPECT_EQ(static_cast<void*>(element), P(3));
}

TEST_F(ListOITest, TableOfTheIteratorIsInOrder) {
    std::int64_t count = 0;
    POSITION pos = nullptr;
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(iterator, 0, &IID_IUnknown, &found)), S_OK);
    EXPECT_EQ(found, iterator);
    EXPECT_EQ(CallSlot<ULONG>(iterator, 1), 2u);
    EXPECT_EQ(CallSlot<ULONG>(iterator, 2), 1u);
    EXPECT_EQ((CallSlot<HRESULT, std::int64_t*>(iterator, 3, &count)), S_OK);
    EXPECT_EQ(count, 4);
    EXPECT_EQ((CallSlot<HRESULT, POSITION*>(iterator, 4, &pos)), S_OK);
    EXPECT_EQ(pos, at[0]);
    EXPECT_EQ((CallSlot<HRESULT, POSITION*>(iterator, 5, &pos)), S_OK);
    EXPECT_EQ(pos, at[1]);
    EXPECT_EQ((CallSlot<HRESULT, POSITION*>(iterator, 6, &pos)), S_OK);
    EXPECT_EQ(pos, at[3]);
    EXPECT_EQ((CallSlot<HRESULT, POSITION*>(iterator, 7, &pos)), S_OK);
    EXPECT_EQ(pos, at[2]);
}

TEST_F(ListOITest, GetAtVirtFollowsTheRootInTheTable) {
    CObject* const element = CallSlot<CObject*, POSITION>(&list, kSlotFirstOwn + 3, at[1]);
    EXPECT_EQ(static_cast<void*>(element), P(2));
}

TEST_F(ListOITest, IteratorWalksBothWaysWithoutWrapping) {
    POSITION pos = at[2];
    EXPECT_EQ(iterator->GetNext(&pos), S_OK);
    EXPECT_EQ(pos, at[3]);
    EXPECT_EQ(iterator->GetNext(&pos), S_OK);
    EXPECT_EQ(pos, nullptr);
    EXPECT_EQ(iterator->GetNext(&pos), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(iterator->GetPrev(&pos), DISP_E_PARAMNOTOPTIONAL);
    pos = at[0];
    EXPECT_EQ(iterator->GetPrev(&pos), S_OK);
    EXPECT_EQ(pos, nullptr);
}

TEST_F(ListOITest, IteratorOverNoElements) {
    Open empty(false, true);
    std::int64_t count = 7;
    POSITION pos = at[0];
    EXPECT_EQ(empty.m_xIterator.GetCount(&count), S_OK);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(empty.m_xIterator.GetHeadPosition(&pos), S_OK);
    EXPECT_EQ(pos, nullptr);
    pos = at[0];
    EXPECT_EQ(empty.m_xIterator.GetTailPosition(&pos), S_OK);
    EXPECT_EQ(pos, nullptr);
}

TEST_F(ListOITest, IteratorNeedsItsArgument) {
    EXPECT_EQ(iterator->GetCount(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(iterator->GetHeadPosition(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(iterator->GetNext(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(iterator->GetTailPosition(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(iterator->GetPrev(nullptr), DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(ListOITest, GetIteratorAddsAReference) {
    IIterator64* walker = nullptr;
    EXPECT_EQ(shown->GetIterator(&walker), S_OK);
    EXPECT_EQ(walker, iterator);
    EXPECT_EQ(list.GetRef(), 1u);
    EXPECT_EQ(shown->GetIterator(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(list.GetRef(), 1u);
}

// Answers every query with a number that is neither success nor a failure.
struct Refusing : Open {
    HRESULT QueryInterface(const GUID& iid, void**) override {
        asked = iid;
        return 1;
    }
    IID asked = IID_NULL;
};

TEST_F(ListOITest, GetIteratorAsksTheObject) {
    Refusing refusing;
    IIterator64* walker = iterator;
    EXPECT_EQ(refusing.m_xList.GetIterator(&walker), E_UNEXPECTED);
    EXPECT_EQ(walker, iterator);
    EXPECT_EQ(refusing.asked, IID_IIterator64);
}

TEST_F(ListOITest, GetAtTestsTheOutPointerBeforeThePosition) {
    IUnknown* element = iterator;
    EXPECT_EQ(shown->GetAt(at[0], nullptr), S_OK);
    EXPECT_EQ(shown->GetAt(nullptr, nullptr), S_OK);
    EXPECT_EQ(shown->GetAt(nullptr, &element), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(element, iterator);
}

TEST_F(ListOITest, GetAtAddsAReferenceOnlyToInterfaces) {
    CountedObject object;
    IUnknown* element = nullptr;
    const POSITION pos = list.AddTail(static_cast<IUnknown*>(&object));
    EXPECT_EQ(shown->GetAt(pos, &element), S_OK);
    EXPECT_EQ(element, &object);
    EXPECT_EQ(object.count, 1u);
    list.m_bInterfaces = true;
    element = nullptr;
    EXPECT_EQ(shown->GetAt(pos, &element), S_OK);
    EXPECT_EQ(element, &object);
    EXPECT_EQ(object.count, 2u);
    list.SetByVal(true, false);
    EXPECT_EQ(shown->GetAt(list.AddTail(nullptr), &element), S_OK);
    EXPECT_EQ(element, nullptr);
}

TEST_F(ListOITest, FunctionReadsTheElements) {
    Open wrapper(list.m_pList, ReadAnswer, true);
    CountedObject object;
    answer = static_cast<IUnknown*>(&object);
    IUnknown* element = nullptr;
    EXPECT_EQ(wrapper.m_xList.GetAt(at[2], &element), S_OK);
    EXPECT_EQ(element, &object);
    EXPECT_EQ(object.count, 2u);
    EXPECT_EQ(askedList, list.m_pList);
    EXPECT_EQ(askedPosition, at[2]);
    answer = P(8);
    EXPECT_EQ(static_cast<void*>(wrapper.GetAtVirt(nullptr)), P(8)) << "null goes to the function";
    EXPECT_EQ(askedPosition, nullptr);
    POSITION pos = at[2];
    EXPECT_EQ(wrapper.Next(pos, true), P(3)) << "walks do not ask it";
}

// Gives the same object for every position.
struct Answering : Open {
    using Open::Open;
    CObject* GetAtVirt(POSITION) override {
        return reinterpret_cast<CObject*>(static_cast<IUnknown*>(&object));
    }
    CountedObject object;
};

TEST_F(ListOITest, GetAtAsksTheVirtualOperation) {
    Answering answering(true);
    IUnknown* element = nullptr;
    EXPECT_EQ(answering.m_xList.GetAt(at[0], &element), S_OK);
    EXPECT_EQ(element, &answering.object);
    EXPECT_EQ(answering.object.count, 2u);
}

TEST_F(ListOITest, GetAtVirtReadsTheElementAsItStands) {
    EXPECT_EQ(static_cast<void*>(list.GetAtVirt(at[3])), P(4));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.GetAtVirt(nullptr); }));
}

TEST_F(ListOITest, WalksWithoutWrapping) {
    EXPECT_EQ(list.GetStartPosition(true), at[0]);
    EXPECT_EQ(list.GetStartPosition(false), at[3]);
    POSITION pos = at[3];
    EXPECT_EQ(list.Next(pos, true), P(4));
    EXPECT_EQ(pos, nullptr);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.Next(pos, true); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.Next(pos, false); }));
    pos = at[1];
    EXPECT_EQ(list.Next(pos, false, false), P(2));
    EXPECT_EQ(list.Next(pos, false), P(1));
    EXPECT_EQ(pos, nullptr);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.Next(pos, true, false); }));
}

TEST_F(ListOITest, WalksRound) {
    POSITION pos = at[3];
    EXPECT_EQ(list.GetNextCyclic(pos), P(4));
    EXPECT_EQ(pos, at[0]);
    EXPECT_EQ(list.GetPrevCyclic(pos), P(1));
    EXPECT_EQ(pos, at[3]);
    EXPECT_EQ(list.GetNextCyclic(pos, true), P(4));
    EXPECT_EQ(list.GetNextCyclic(pos, false), P(1));
    EXPECT_EQ(list.Next(pos, true, true), P(4));
    EXPECT_EQ(list.Next(pos, false, true), P(1));
    EXPECT_EQ(list.Next(pos, false, true), P(4));
    EXPECT_EQ(pos, at[2]);
}

TEST_F(ListOITest, WalksRoundOneElement) {
    Open one(false, true);
    const POSITION only = one.AddTail(P(5));
    POSITION pos = only;
    EXPECT_EQ(one.GetNextCyclic(pos), P(5));
    EXPECT_EQ(pos, only);
    EXPECT_EQ(one.GetPrevCyclic(pos), P(5));
    EXPECT_EQ(pos, only);
}

TEST_F(ListOITest, OnlyTheCyclicStepForwardTakesNull) {
    POSITION pos = nullptr;
    EXPECT_EQ(list.GetNextCyclic(pos), nullptr);
    EXPECT_EQ(list.GetNextCyclic(pos, true), nullptr);
    EXPECT_EQ(list.Next(pos, true, true), nullptr);
    EXPECT_EQ(pos, nullptr);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.GetPrevCyclic(pos); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.GetNextCyclic(pos, false); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.Next(pos, false, true); }));
}

TEST_F(ListOITest, NeighboursStandBehindOneAnother) {
    EXPECT_TRUE(list.IsNeighbourPosns(at[0], at[1]));
    EXPECT_FALSE(list.IsNeighbourPosns(at[1], at[0]));
    EXPECT_FALSE(list.IsNeighbourPosns(at[0], at[2]));
    EXPECT_FALSE(list.IsNeighbourPosns(at[3], at[0])) << "not round the end";
    EXPECT_FALSE(list.IsNeighbourPosns(at[3], nullptr));
    EXPECT_FALSE(list.IsNeighbourPosns(nullptr, at[0]));
}

TEST_F(ListOITest, CountsRuns) {
    EXPECT_EQ(list.Count(at[1], at[1]), 1);
    EXPECT_EQ(list.Count(at[0], at[3]), 4);
    EXPECT_EQ(list.Count(at[3], at[0]), 2);
    EXPECT_EQ(list.Count(at[2], at[1]), 4);
    EXPECT_EQ(list.Count(nullptr, at[1]), 0);
    EXPECT_EQ(list.Count(nullptr, nullptr), 0);
    const Open empty(false, true);
    EXPECT_EQ(empty.Count(at[3], at[0]), 0) << "the walk comes to no node";
    EXPECT_EQ(empty.Count(at[3], at[3]), 1);
    EXPECT_EQ(empty.Count(at[0], at[1]), 2) << "on the nodes of another list";
    EXPECT_EQ(empty.Count(at[0], at[3]), 4);
    EXPECT_EQ(empty.Count(at[0], nullptr), 0);
}

TEST_F(ListOITest, CopiesARunRoundTheEnd) {
    Open copy(false, true);
    copy.AddTail(P(9));
    copy.CopyCyclic(list, at[2], at[0]);
    EXPECT_THAT(copy.Numbers(), ElementsAre(9, 3, 4, 1));
    copy.CopyCyclic(list, nullptr, at[0]);
    EXPECT_EQ(copy.m_pList->GetCount(), 4);
    copy.CopyCyclic(list, at[1], at[1]);
    EXPECT_THAT(copy.Numbers(), ElementsAre(9, 3, 4, 1, 2));
    EXPECT_THAT(list.Numbers(), ElementsAre(1, 2, 3, 4));
    list.CopyCyclic(list, at[2], at[0]);
    EXPECT_THAT(list.Numbers(), ElementsAre(1, 2, 3, 4, 3, 4, 1)) << "round the former tail";
}

TEST_F(ListOITest, CopiesFromAnEmptyListUpToTheLastNode) {
    const Open empty(false, true);
    Open copy(false, true);
    copy.CopyCyclic(empty, at[3], at[0]);
    EXPECT_THAT(copy.Numbers(), ElementsAre(4));
    copy.CopyCyclic(empty, at[0], at[1]);
    EXPECT_THAT(copy.Numbers(), ElementsAre(4, 1, 2));
    copy.CopyCyclic(empty, at[2], nullptr);
    EXPECT_THAT(copy.Numbers(), ElementsAre(4, 1, 2, 3, 4));
}

TEST_F(ListOITest, RemoveTakesARunWithoutWrapping) {
    list.Remove(nullptr, at[1]);
    EXPECT_THAT(list.Numbers(), ElementsAre(1, 2, 3, 4));
    list.Remove(at[1], at[2]);
    EXPECT_THAT(list.Numbers(), ElementsAre(1, 4));
    list.Remove(at[3], at[0]);
    EXPECT_THAT(list.Numbers(), ElementsAre(1));
}

TEST_F(ListOITest, RemoveCyclicGoesRound) {
    list.RemoveCyclic(nullptr, at[1]);
    EXPECT_THAT(list.Numbers(), ElementsAre(1, 2, 3, 4));
    list.RemoveCyclic(at[3], at[0]);
    EXPECT_THAT(list.Numbers(), ElementsAre(2, 3));
    list.RemoveCyclic(at[2], nullptr);
    EXPECT_THAT(list.Numbers(), IsEmpty());
}

// A list whose ends can be set.
struct Bent : CObList {
    using CObList::m_nCount;
    using CObList::m_pNodeHead;
    using CObList::m_pNodeTail;
};

TEST_F(ListOITest, LooksAtTheEndsOfAList) {
    EXPECT_TRUE(list.IsValidList());
    Bent bent;
    const Open seen(&bent, nullptr, false);
    EXPECT_TRUE(seen.IsValidList()) << "empty";
    bent.AddTail(static_cast<CObject*>(nullptr));
    EXPECT_FALSE(seen.IsValidList()) << "a head of null";
    bent.SetAt(bent.GetHeadPosition(), &bent);
    EXPECT_TRUE(seen.IsValidList());
    bent.AddTail(static_cast<CObject*>(nullptr));
    EXPECT_TRUE(seen.IsValidList()) << "only the head must not be null";
    bent.m_nCount = 1;
    EXPECT_FALSE(seen.IsValidList()) << "one element with another behind it";
    bent.m_nCount = 2;
    auto* const tail = bent.m_pNodeTail;
    bent.m_pNodeTail = bent.m_pNodeHead;
    EXPECT_FALSE(seen.IsValidList()) << "two elements at one node";
    bent.m_pNodeTail = tail;
    auto* const head = bent.m_pNodeHead;
    bent.m_pNodeHead = nullptr;
    EXPECT_FALSE(seen.IsValidList()) << "no head";
    bent.m_pNodeHead = head;
}

}  // namespace
}  // namespace ZT
