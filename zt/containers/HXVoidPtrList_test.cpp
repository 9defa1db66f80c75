#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CInvalidArgException.h>
#include <rapidcheck.h>
#include <tests/CountedObject.h>
#include <tests/ListNodes.h>
#include <tests/Raises.h>
#include <zt/containers/HXVoidPtrList.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <tuple>
#include <type_traits>
#include <vector>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::CountedObject;
using testing_support::IID_ICounted;
using testing_support::Raises;

// A list with open fields and parts.
struct Open : testing_support::OpenList<HXVoidPtrList> {
    using testing_support::OpenList<HXVoidPtrList>::OpenList;
    using HXVoidPtrList::m_bInterfaces;
    using HXVoidPtrList::m_nRef;
    using HXVoidPtrList::m_pfnDelete;
    using HXVoidPtrList::m_xIterator;
    using HXVoidPtrList::m_xList;

    static constexpr std::size_t IteratorOffset() { return offsetof(Open, m_xIterator); }
    static constexpr std::size_t ListOffset() { return offsetof(Open, m_xList); }
    static constexpr std::size_t CountOffset() { return offsetof(Open, m_nRef); }
    static constexpr std::size_t DeleteOffset() { return offsetof(Open, m_pfnDelete); }
    static constexpr std::size_t InterfacesOffset() { return offsetof(Open, m_bInterfaces); }
};

void* P(std::uintptr_t number) {
    return reinterpret_cast<void*>(number);
}

std::vector<void*> destroyed;

void NoteDestroyed(void* element) {
    destroyed.push_back(element);
}

// The elements 1 to 4 and their positions.
struct HXVoidPtrListTest : testing::Test {
    HXVoidPtrListTest() {
        destroyed.clear();
        list.Fill(4);
        for (POSITION p = list.GetHeadPosition(); p != nullptr; list.GetNext(p)) at.push_back(p);
        shown = &list.m_xList;
        iterator = &list.m_xIterator;
    }
    ~HXVoidPtrListTest() override { EXPECT_TRUE(list.IsSound()); }

    Open list;
    std::vector<POSITION> at;
    IList64* shown;
    IIterator64* iterator;
    void* found = &list;
};

TEST_F(HXVoidPtrListTest, FieldsFollowTheBaseInTheirOrder) {
    EXPECT_EQ(Open::IteratorOffset(), 56u);
    EXPECT_EQ(Open::ListOffset(), 64u);
    EXPECT_EQ(Open::CountOffset(), 72u);
    EXPECT_EQ(Open::DeleteOffset(), 80u);
    EXPECT_EQ(Open::InterfacesOffset(), 88u);
    EXPECT_EQ(sizeof(HXVoidPtrList), 96u);
    static_assert(std::is_base_of_v<CPtrList, HXVoidPtrList>);
    static_assert(std::is_same_v<decltype(Open::m_nRef), std::uint32_t>);
}

TEST_F(HXVoidPtrListTest, StartsEmptyWithWhatItWasTold) {
    const Open plain;
    EXPECT_TRUE(plain.IsEmpty());
    EXPECT_EQ(plain.m_nBlockSize, 10);
    EXPECT_EQ(plain.m_nRef, 0u);
    EXPECT_EQ(plain.m_pfnDelete, nullptr);
    EXPECT_FALSE(plain.m_bInterfaces);
    const Open interfaces(true);
    EXPECT_TRUE(interfaces.m_bInterfaces);
    EXPECT_EQ(interfaces.m_pfnDelete, nullptr);
    const Open owner(false, NoteDestroyed);
    EXPECT_FALSE(owner.m_bInterfaces);
    EXPECT_EQ(owner.m_pfnDelete, &NoteDestroyed);
    const Open both(true, nullptr);
    EXPECT_TRUE(both.m_bInterfaces);
    EXPECT_EQ(both.m_nRef, 0u);
}

TEST_F(HXVoidPtrListTest, DestroysEveryElementHeadToTailNullIncluded) {
    {
        HXVoidPtrList owner(false, NoteDestroyed);
        owner.AddTail(P(1));
        owner.AddTail(nullptr);
        owner.AddTail(P(2));
        owner.AddTail(P(1));
    }
    EXPECT_THAT(destroyed, ElementsAre(P(1), nullptr, P(2), P(1)));
}

TEST_F(HXVoidPtrListTest, DestroysNothingUntold) {
    {
        HXVoidPtrList plain(true);
        CountedObject object;
        plain.AddTail(&object);
        plain.RemoveAll();
        HXVoidPtrList owner(false, NoteDestroyed);
        owner.AddTail(P(1));
        owner.RemoveCyclic(owner.GetHeadPosition(), nullptr);
        owner.AddTail(P(2));
        owner.Remove(owner.GetHeadPosition(), nullptr);
        owner.AddTail(P(3));
        owner.RemoveAll();
        EXPECT_EQ(object.count, 1u);
    }
    EXPECT_THAT(destroyed, IsEmpty());
}

TEST_F(HXVoidPtrListTest, OneCountServesTheListAndBothParts) {
    EXPECT_EQ(list.AddRef(), 1u);
    EXPECT_EQ(shown->AddRef(), 2u);
    EXPECT_EQ(iterator->AddRef(), 3u);
    EXPECT_EQ(list.Release(), 2u);
    EXPECT_EQ(iterator->Release(), 1u);
    EXPECT_EQ(shown->Release(), 0u);
}

TEST_F(HXVoidPtrListTest, ReleaseNeverDestroys) {
    list.AddRef();
    EXPECT_EQ(list.Release(), 0u);
    EXPECT_EQ(list.Release(), 0xFFFFFFFFu);
    EXPECT_EQ(shown->Release(), 0xFFFFFFFEu);
    EXPECT_EQ(iterator->Release(), 0xFFFFFFFDu);
    EXPECT_THAT(list.Numbers(), ElementsAre(1, 2, 3, 4));
}

TEST_F(HXVoidPtrListTest, KnowsItsTwoInterfacesAndNoOther) {
    EXPECT_EQ(list.QueryInterface(IID_IList64, &found), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(list.m_nRef, 1u);
    EXPECT_EQ(list.QueryInterface(IID_IIterator64, &found), S_OK);
    EXPECT_EQ(found, iterator);
    EXPECT_EQ(list.m_nRef, 2u);
    for (const IID& id : {IID_IUnknown, IID_NativeObject, IID_IObject_ZT}) {
        found = &list;
        EXPECT_EQ(list.QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(found, nullptr);
    }
    EXPECT_EQ(list.m_nRef, 2u);
}

TEST_F(HXVoidPtrListTest, PartsAnswerThemselvesAndTheirSibling) {
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
    EXPECT_EQ(list.m_nRef, 6u);
}

TEST_F(HXVoidPtrListTest, NullOutPointerIsRefusedAtAllThreeEntries) {
    for (const IID& id : {IID_IList64, IID_IUnknown, IID_ICounted}) {
        EXPECT_EQ(list.QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
        EXPECT_EQ(shown->QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
        EXPECT_EQ(iterator->QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
    }
    EXPECT_EQ(list.m_nRef, 0u);
}

TEST_F(HXVoidPtrListTest, TableOfTheListInterfaceIsInOrder) {
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

TEST_F(HXVoidPtrListTest, TableOfTheIteratorIsInOrder) {
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

TEST_F(HXVoidPtrListTest, GivesItsIteratorWithAReference) {
    IIterator64* walker = nullptr;
    EXPECT_EQ(shown->GetIterator(&walker), S_OK);
    EXPECT_EQ(walker, iterator);
    EXPECT_EQ(list.m_nRef, 1u);
    EXPECT_EQ(shown->GetIterator(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(list.m_nRef, 1u);
}

TEST_F(HXVoidPtrListTest, IteratorWalksToNullWithoutWrapping) {
    POSITION pos = nullptr;
    EXPECT_EQ(iterator->GetHeadPosition(&pos), S_OK);
    for (const POSITION expected : {at[0], at[1], at[2], at[3]}) {
        EXPECT_EQ(pos, expected);
        EXPECT_EQ(iterator->GetNext(&pos), S_OK);
    }
    EXPECT_EQ(pos, nullptr);
    EXPECT_EQ(iterator->GetNext(&pos), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(iterator->GetTailPosition(&pos), S_OK);
    for (const POSITION expected : {at[3], at[2], at[1], at[0]}) {
        EXPECT_EQ(pos, expected);
        EXPECT_EQ(iterator->GetPrev(&pos), S_OK);
    }
    EXPECT_EQ(pos, nullptr);
    EXPECT_EQ(iterator->GetPrev(&pos), DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(HXVoidPtrListTest, IteratorOfAnEmptyList) {
    Open empty;
    std::int64_t count = 7;
    POSITION head = at[0], tail = at[0];
    EXPECT_EQ(empty.m_xIterator.GetCount(&count), S_OK);
    EXPECT_EQ(empty.m_xIterator.GetHeadPosition(&head), S_OK);
    EXPECT_EQ(empty.m_xIterator.GetTailPosition(&tail), S_OK);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(head, nullptr);
    EXPECT_EQ(tail, nullptr);
}

TEST_F(HXVoidPtrListTest, IteratorRefusesNullArguments) {
    EXPECT_EQ(iterator->GetCount(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(iterator->GetHeadPosition(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(iterator->GetNext(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(iterator->GetTailPosition(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(iterator->GetPrev(nullptr), DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(HXVoidPtrListTest, GetAtTestsTheOutPointerBeforeThePosition) {
    IUnknown* element = iterator;
    EXPECT_EQ(shown->GetAt(at[0], nullptr), S_OK);
    EXPECT_EQ(shown->GetAt(nullptr, nullptr), S_OK);
    EXPECT_EQ(shown->GetAt(nullptr, &element), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(element, iterator);
}

TEST_F(HXVoidPtrListTest, GetAtAddsAReferenceOnlyToInterfaces) {
    CountedObject object;
    IUnknown* element = nullptr;
    const POSITION pos = list.AddTail(static_cast<IUnknown*>(&object));
    EXPECT_EQ(shown->GetAt(pos, &element), S_OK);
    EXPECT_EQ(element, &object);
    EXPECT_EQ(object.count, 1u);
    list.SetInterfaces(true);
    EXPECT_TRUE(list.m_bInterfaces);
    element = nullptr;
    EXPECT_EQ(shown->GetAt(pos, &element), S_OK);
    EXPECT_EQ(element, &object);
    EXPECT_EQ(object.count, 2u);
    list.SetInterfaces(false);
    EXPECT_FALSE(list.m_bInterfaces);
}

TEST_F(HXVoidPtrListTest, GetAtOfANullElementGivesNull) {
    IUnknown* element = iterator;
    list.SetInterfaces(true);
    const POSITION pos = list.AddTail(nullptr);
    EXPECT_EQ(shown->GetAt(pos, &element), S_OK);
    EXPECT_EQ(element, nullptr);
}

// Gives the same object for every position.
struct Answering : Open {
    CObject* GetAtVirt(POSITION pos) override {
        asked = pos;
        return reinterpret_cast<CObject*>(static_cast<IUnknown*>(&object));
    }
    CountedObject object;
    POSITION asked = nullptr;
};

TEST_F(HXVoidPtrListTest, GetAtAsksTheVirtualOperation) {
    Answering answering;
    answering.SetInterfaces(true);
    const POSITION pos = answering.AddTail(nullptr);
    IUnknown* element = nullptr;
    EXPECT_EQ(answering.m_xList.GetAt(pos, &element), S_OK);
    EXPECT_EQ(element, &answering.object);
    EXPECT_EQ(answering.asked, pos);
    EXPECT_EQ(answering.object.count, 2u);
}

TEST_F(HXVoidPtrListTest, GetAtVirtFollowsTheRootInTheTable) {
    CObject* const element = CallSlot<CObject*, POSITION>(&list, kSlotFirstOwn, at[1]);
    EXPECT_EQ(static_cast<void*>(element), P(2));
    EXPECT_EQ(static_cast<void*>(list.GetAtVirt(at[3])), P(4));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { list.GetAtVirt(nullptr); }));
}

TEST_F(HXVoidPtrListTest, RemoveTakesARunWithoutWrapping) {
    list.Remove(at[1], at[2]);
    EXPECT_THAT(list.Numbers(), ElementsAre(1, 4));
}

TEST_F(HXVoidPtrListTest, RemoveGoesToTheTailWhenTheEndIsNotMet) {
    list.Remove(at[2], at[1]);
    EXPECT_THAT(list.Numbers(), ElementsAre(1, 2));
    list.Remove(at[1], nullptr);
    EXPECT_THAT(list.Numbers(), ElementsAre(1));
    list.Remove(at[0], at[0]);
    EXPECT_THAT(list.Numbers(), IsEmpty());
}

TEST_F(HXVoidPtrListTest, RemoveFromNullTakesNothing) {
    list.Remove(nullptr, at[2]);
    list.Remove(nullptr, nullptr);
    EXPECT_THAT(list.Numbers(), ElementsAre(1, 2, 3, 4));
}

TEST_F(HXVoidPtrListTest, FindsTheEarliestElementWithATwin) {
    const POSITION three = list.AddTail(P(3));
    const POSITION two = list.AddTail(P(2));
    list.AddTail(P(2));
    POSITION pair[2] = {};
    EXPECT_TRUE(HXVoidPtrList::FindDuplicates(&list, pair));
    EXPECT_EQ(pair[0], at[1]) << "2 stands before 3, though its twin comes later";
    EXPECT_EQ(pair[1], two);
    EXPECT_FALSE(HXVoidPtrList::CheckDuplicates(&list));
    list.SetAt(at[1], P(9));
    list.SetAt(two, P(8));
    EXPECT_TRUE(HXVoidPtrList::FindDuplicates(&list, pair));
    EXPECT_EQ(pair[0], at[2]);
    EXPECT_EQ(pair[1], three);
}

TEST_F(HXVoidPtrListTest, NullElementsAreTwinsToo) {
    CPtrList nulls;
    const POSITION first = nulls.AddTail(nullptr);
    EXPECT_TRUE(HXVoidPtrList::CheckDuplicates(&nulls));
    const POSITION second = nulls.AddTail(nullptr);
    POSITION pair[2] = {};
    EXPECT_TRUE(HXVoidPtrList::FindDuplicates(&nulls, pair));
    EXPECT_EQ(pair[0], first);
    EXPECT_EQ(pair[1], second);
}

TEST_F(HXVoidPtrListTest, WithoutTwinsThePairStays) {
    POSITION pair[2] = {at[0], at[1]};
    EXPECT_FALSE(HXVoidPtrList::FindDuplicates(&list, pair));
    EXPECT_EQ(pair[0], at[0]);
    EXPECT_EQ(pair[1], at[1]);
    EXPECT_TRUE(HXVoidPtrList::CheckDuplicates(&list));
    const CPtrList empty;
    EXPECT_TRUE(HXVoidPtrList::CheckDuplicates(&empty));
    EXPECT_FALSE(HXVoidPtrList::FindDuplicates(&empty, pair));
}

TEST_F(HXVoidPtrListTest, IsInRangeCyclicOnlyComparesWithTheEnd) {
    EXPECT_FALSE(HXVoidPtrList::IsInRangeCyclic(at[0], at[1], at[0]));
    EXPECT_TRUE(HXVoidPtrList::IsInRangeCyclic(at[0], at[1], at[2]));
    EXPECT_TRUE(HXVoidPtrList::IsInRangeCyclic(at[3], at[0], at[1])) << "far outside";
    EXPECT_TRUE(HXVoidPtrList::IsInRangeCyclic(nullptr, at[0], at[1]));
    EXPECT_FALSE(HXVoidPtrList::IsInRangeCyclic(nullptr, at[0], nullptr));
}

// What a list of plain numbers becomes when a run is taken out of it without wrapping.
std::vector<std::uintptr_t> Without(std::vector<std::uintptr_t> numbers, std::size_t from,
                                    std::size_t to) {
    const auto at = [&](std::size_t i) { return numbers.begin() + static_cast<std::ptrdiff_t>(i); };
    numbers.erase(at(from), to < from ? numbers.end() : at(to + 1));
    return numbers;
}

TEST(HXVoidPtrListLaws, RemoveAndTwinsBehaveAsOnPlainNumbers) {
    EXPECT_TRUE(rc::check([](const std::vector<std::tuple<bool, unsigned, unsigned>>& steps) {
        Open list;
        std::vector<std::uintptr_t> numbers;
        for (const auto& [remove, a, b] : steps) {
            if (remove && !numbers.empty()) {
                const std::size_t from = a % numbers.size();
                const std::size_t to = b % numbers.size();
                list.Remove(list.FindIndex(static_cast<INT_PTR>(from)),
                            list.FindIndex(static_cast<INT_PTR>(to)));
                numbers = Without(numbers, from, to);
            } else {
                const std::uintptr_t number = a % 20;
                b % 2 == 0 ? list.AddTail(P(number)) : list.AddHead(P(number));
                numbers.insert(b % 2 == 0 ? numbers.end() : numbers.begin(), number);
            }
            RC_ASSERT(static_cast<bool>(list.IsSound()));
            RC_ASSERT(list.Numbers() == numbers);
            auto sorted = numbers;
            std::sort(sorted.begin(), sorted.end());
            const bool unique = std::unique(sorted.begin(), sorted.end()) == sorted.end();
            RC_ASSERT(HXVoidPtrList::CheckDuplicates(&list) == unique);
        }
    }));
}

}  // namespace
}  // namespace ZT
