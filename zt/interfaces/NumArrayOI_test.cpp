#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CInvalidArgException.h>
#include <rapidcheck.h>
#include <tests/CountedObject.h>
#include <tests/Raises.h>
#include <zt/interfaces/ITypeBasic_ZT.h>
#include <zt/interfaces/NumArrayOI.h>

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

using Numbers = std::vector<double>;

Numbers NumbersOf(const NumArrayOI::Array& array) {
    return Numbers(array.begin(), array.end());
}

struct Open : NumArrayOI {
    using NumArrayOI::m_bOwner;
    using NumArrayOI::m_pArray;
    using NumArrayOI::m_xArrayNum;
    using NumArrayOI::m_xObject_ZT;
    using NumArrayOI::NumArrayOI;

    static std::vector<std::size_t> Offsets() {
        return {offsetof(Open, m_xArrayNum), offsetof(Open, m_xObject_ZT), offsetof(Open, m_pArray),
                offsetof(Open, m_bOwner)};
    }
};

int ended = 0;

// Counts its end.
struct Ending : Open {
    using Open::Open;
    ~Ending() override { ++ended; }
};

// The numbers 1, 2, 3, and an object without an array.
struct NumArrayOITest : testing::Test {
    NumArrayOITest() {
        ended = 0;
        for (const double number : {1.0, 2.0, 3.0}) object.m_pArray->Add(number);
    }

    Numbers Now() const { return NumbersOf(*object.m_pArray); }

    Open object{true};
    Open empty;
    IArrayNum* shown = &object.m_xArrayNum;
    IObject_ZT* self = &object.m_xObject_ZT;
    IObject_ZT* emptySelf = &empty.m_xObject_ZT;
    void* found = &object;
    double value = 7.0;
};

TEST_F(NumArrayOITest, FieldsFollowTheRoot) {
    EXPECT_THAT(Open::Offsets(), ElementsAre(16, 24, 32, 40));
    static_assert(std::is_same_v<decltype(Open::m_pArray), CArray<double, double>*>);
    EXPECT_EQ(sizeof(NumArrayOI), 48u);
    EXPECT_EQ(sizeof(RefObj), 16u);
}

TEST_F(NumArrayOITest, StartsAtOneWithAnArrayOrWithout) {
    const Open owner(true);
    EXPECT_EQ(owner.GetRef(), 1u);
    EXPECT_TRUE(owner.m_bOwner);
    ASSERT_NE(owner.m_pArray, nullptr);
    EXPECT_TRUE(owner.m_pArray->IsEmpty());
    const Open told(false);
    EXPECT_EQ(told.GetRef(), 1u);
    EXPECT_FALSE(told.m_bOwner);
    EXPECT_EQ(told.m_pArray, nullptr);
    EXPECT_EQ(empty.GetRef(), 1u);
    EXPECT_EQ(empty.m_pArray, nullptr);
}

TEST_F(NumArrayOITest, OneQueryAndOneReleaseLeaveItAlive) {
    auto* counted = new Ending(true);
    EXPECT_EQ(counted->QueryInterface(IID_IArrayNum, &found), S_OK);
    EXPECT_EQ(counted->GetRef(), 2u);
    EXPECT_EQ(static_cast<IArrayNum*>(found)->Release(), 1u);
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(counted->Release(), 0u);
    EXPECT_EQ(ended, 1);
}

TEST_F(NumArrayOITest, LeavesAnArrayThatItDoesNotOwn) {
    NumArrayOI::Array array;
    {
        Open borrower(false);
        borrower.m_pArray = &array;
        EXPECT_EQ(borrower.m_xArrayNum.Add(5.0), S_OK);
    }
    EXPECT_THAT(NumbersOf(array), ElementsAre(5.0));
}

TEST_F(NumArrayOITest, CopySharesTheArray) {
    object.AddRef();
    Open copy(object);
    EXPECT_EQ(copy.GetRef(), 2u);
    EXPECT_EQ(copy.m_pArray, object.m_pArray);
    EXPECT_TRUE(copy.m_bOwner);
    copy.m_bOwner = false;
}

TEST_F(NumArrayOITest, ObjectAnswersItsTwoInterfaces) {
    for (const IID& id : {IID_IArrayNum, IID_IUnknown}) {
        EXPECT_EQ(object.QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, shown);
    }
    EXPECT_EQ(object.QueryInterface(IID_IObject_ZT, &found), S_OK);
    EXPECT_EQ(found, self);
    EXPECT_EQ(object.GetRef(), 4u);
    for (const IID& id : {IID_ICounted, IID_IArray2}) {
        found = &object;
        EXPECT_EQ(object.QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(found, nullptr);
    }
    EXPECT_EQ(object.GetRef(), 4u);
}

TEST_F(NumArrayOITest, NativeObjectIsTheArrayWithoutAReference) {
    EXPECT_EQ(object.QueryInterface(IID_NativeObject, &found), S_OK);
    EXPECT_EQ(found, object.m_pArray);
    EXPECT_EQ(object.GetRef(), 1u);
    EXPECT_EQ(empty.QueryInterface(IID_NativeObject, &found), S_OK);
    EXPECT_EQ(found, nullptr);
}

TEST_F(NumArrayOITest, TypeIsAnObjectOfItsOwn) {
    EXPECT_EQ(object.QueryInterface(IID_ITypeBasic_ZT, &found), S_OK);
    auto* const type = static_cast<ITypeBasic_ZT*>(found);
    std::int32_t number = 0;
    EXPECT_EQ(type->GetType(&number), S_OK);
    EXPECT_EQ(number, 16);
    EXPECT_EQ(object.GetRef(), 1u);
    EXPECT_EQ(type->AddRef(), 2u);
    EXPECT_EQ(type->Release(), 1u);
    EXPECT_EQ(type->Release(), 0u);
    EXPECT_EQ(self->QueryInterface(IID_ITypeBasic_ZT, &found), S_OK);
    EXPECT_EQ(static_cast<ITypeBasic_ZT*>(found)->Release(), 0u);
}

TEST_F(NumArrayOITest, TypeWithoutAnArrayPassesForSuccessAndWritesNothing) {
    const HRESULT answer = empty.QueryInterface(IID_ITypeBasic_ZT, &found);
    EXPECT_EQ(answer, 5023);
    EXPECT_TRUE(SUCCEEDED(answer));
    EXPECT_EQ(found, &object);
}

TEST_F(NumArrayOITest, ArrayPartIsClosed) {
    for (const IID& id : {IID_IArrayNum, IID_IUnknown}) {
        found = nullptr;
        EXPECT_EQ(shown->QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, shown);
    }
    EXPECT_EQ(object.GetRef(), 3u);
    for (const IID& id : {IID_IObject_ZT, IID_NativeObject, IID_ITypeBasic_ZT, IID_ICounted}) {
        found = &object;
        EXPECT_EQ(shown->QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(found, nullptr);
    }
    EXPECT_EQ(object.GetRef(), 3u);
}

TEST_F(NumArrayOITest, ObjectPartSendsEverythingToTheObject) {
    EXPECT_EQ(self->QueryInterface(IID_IObject_ZT, &found), S_OK);
    EXPECT_EQ(found, self);
    for (const IID& id : {IID_IUnknown, IID_IArrayNum}) {
        EXPECT_EQ(self->QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, shown) << "the other part";
    }
    EXPECT_EQ(object.GetRef(), 4u);
    EXPECT_EQ(self->QueryInterface(IID_NativeObject, &found), S_OK);
    EXPECT_EQ(found, object.m_pArray);
    EXPECT_EQ(self->QueryInterface(IID_ICounted, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(object.GetRef(), 4u);
}

TEST_F(NumArrayOITest, NullOutPointerIsRefused) {
    for (const IID& id : {IID_IArrayNum, IID_IObject_ZT, IID_IUnknown, IID_NativeObject,
                          IID_ITypeBasic_ZT, IID_ICounted}) {
        EXPECT_EQ(object.QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
        EXPECT_EQ(empty.QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
        EXPECT_EQ(shown->QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
        EXPECT_EQ(self->QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
    }
    EXPECT_EQ(object.GetRef(), 1u);
}

TEST_F(NumArrayOITest, TableOfTheArrayInterfaceIsInOrder) {
    std::int32_t count = 0;
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, &IID_IArrayNum, &found)), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 3u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 2u);
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t*>(shown, 3, &count)), S_OK);
    EXPECT_EQ(count, 3);
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t>(shown, 4, 4)), S_OK);
    EXPECT_THAT(Now(), ElementsAre(1, 2, 3, 0));
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t, double*>(shown, 5, 2, &value)), S_OK);
    EXPECT_EQ(value, 3.0);
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t, double>(shown, 6, 1, 20.0)), S_OK);
    EXPECT_THAT(Now(), ElementsAre(1, 20, 3, 0));
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t, double>(shown, 7, 1, 15.0)), S_OK);
    EXPECT_THAT(Now(), ElementsAre(1, 15, 20, 3, 0));
    EXPECT_EQ((CallSlot<HRESULT, double>(shown, 8, 9.0)), S_OK);
    EXPECT_THAT(Now(), ElementsAre(1, 15, 20, 3, 0, 9));
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t>(shown, 9, 0)), S_OK);
    EXPECT_THAT(Now(), ElementsAre(15, 20, 3, 0, 9));
    EXPECT_EQ(CallSlot<HRESULT>(shown, 10), S_OK);
    EXPECT_THAT(Now(), IsEmpty());
}

TEST_F(NumArrayOITest, TableOfTheObjectInterfaceIsInOrder) {
    std::int16_t same = 0;
    std::uint32_t handle = 0;
    IUnknown* clone = nullptr;
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(self, 0, &IID_IObject_ZT, &found)), S_OK);
    EXPECT_EQ(found, self);
    EXPECT_EQ(CallSlot<ULONG>(self, 1), 3u);
    EXPECT_EQ(CallSlot<ULONG>(self, 2), 2u);
    EXPECT_EQ((CallSlot<HRESULT, IUnknown*, std::int16_t*>(self, 3, self, &same)), S_OK);
    EXPECT_EQ(same, -1);
    EXPECT_EQ((CallSlot<HRESULT, std::uint32_t*>(self, 4, &handle)), S_OK);
    EXPECT_NE(handle, 0u);
    EXPECT_EQ((CallSlot<HRESULT, IUnknown*>(self, 5, emptySelf)), E_UNEXPECTED);
    EXPECT_EQ((CallSlot<HRESULT, IUnknown**>(self, 6, &clone)), S_OK);
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(clone->Release(), 1u);
    EXPECT_EQ(clone->Release(), 0u);
    EXPECT_EQ(CallSlot<HRESULT>(self, 7), 120);
    EXPECT_EQ(CallSlot<HRESULT>(self, 8), 120);
}

// Answers each operation of its own with the place in the table.
struct Numbered final : IArrayNum {
    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 2; }
    HRESULT GetCount(std::int32_t*) override { return 3; }
    HRESULT SetSize(std::int32_t) override { return 4; }
    HRESULT GetAt(std::int32_t, double*) override { return 5; }
    HRESULT SetAt(std::int32_t, double) override { return 6; }
    HRESULT InsertAt(std::int32_t, double) override { return 7; }
    HRESULT Add(double) override { return 8; }
    HRESULT RemoveAt(std::int32_t) override { return 9; }
    HRESULT RemoveAll() override { return 10; }
};

TEST(IArrayNumInterface, OperationsStandInTheTableInOrder) {
    Numbered object;
    IArrayNum* const shown = &object;
    for (int slot = 1; slot < 11; ++slot) {
        EXPECT_EQ(
            (CallSlot<HRESULT, void*, double>(shown, static_cast<std::size_t>(slot), nullptr, 0.0)),
            slot);
    }
}

TEST_F(NumArrayOITest, GetCountNeedsNoOutput) {
    std::int32_t count = 7;
    EXPECT_EQ(shown->GetCount(nullptr), S_OK);
    EXPECT_EQ(shown->GetCount(&count), S_OK);
    EXPECT_EQ(count, 3);
}

TEST_F(NumArrayOITest, SetSizeCutsAndFillsWithZeros) {
    EXPECT_EQ(shown->SetSize(1), S_OK);
    EXPECT_THAT(Now(), ElementsAre(1));
    EXPECT_EQ(shown->SetSize(3), S_OK);
    EXPECT_THAT(Now(), ElementsAre(1, 0, 0));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { shown->SetSize(-1); }));
}

TEST_F(NumArrayOITest, GetAtReadsUpToTheLast) {
    for (const std::int32_t index : {0, 1, 2}) {
        EXPECT_EQ(shown->GetAt(index, &value), S_OK);
        EXPECT_EQ(value, index + 1.0);
    }
    value = 7.0;
    for (const std::int32_t index : {-1, 3, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(shown->GetAt(index, &value), DISP_E_BADINDEX);
        EXPECT_EQ(shown->GetAt(index, nullptr), DISP_E_BADINDEX) << "the index goes first";
    }
    EXPECT_EQ(value, 7.0);
    EXPECT_EQ(shown->GetAt(2, nullptr), S_OK);
}

TEST_F(NumArrayOITest, LastElementCanBeReadButNotChanged) {
    for (const std::int32_t index : {-1, 2, 3, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(shown->SetAt(index, 9.0), DISP_E_BADINDEX);
        EXPECT_EQ(shown->InsertAt(index, 9.0), DISP_E_BADINDEX);
        EXPECT_EQ(shown->RemoveAt(index), DISP_E_BADINDEX);
    }
    EXPECT_THAT(Now(), ElementsAre(1, 2, 3));
    EXPECT_EQ(shown->SetAt(1, 9.0), S_OK);
    EXPECT_THAT(Now(), ElementsAre(1, 9, 3));
    EXPECT_EQ(shown->RemoveAt(0), S_OK);
    EXPECT_THAT(Now(), ElementsAre(9, 3));
    EXPECT_EQ(shown->RemoveAt(1), DISP_E_BADINDEX);
    EXPECT_EQ(shown->RemoveAt(0), S_OK);
    EXPECT_THAT(Now(), ElementsAre(3));
}

TEST_F(NumArrayOITest, NoIndexPassesInAnArrayOfOneOrNone) {
    for (const std::int32_t size : {1, 0}) {
        shown->SetSize(size);
        EXPECT_EQ(shown->SetAt(0, 9.0), DISP_E_BADINDEX);
        EXPECT_EQ(shown->InsertAt(0, 9.0), DISP_E_BADINDEX);
        EXPECT_EQ(shown->RemoveAt(0), DISP_E_BADINDEX);
        EXPECT_EQ(shown->GetAt(0, &value), size == 1 ? S_OK : DISP_E_BADINDEX);
    }
    EXPECT_EQ(shown->Add(4.0), S_OK);
    EXPECT_THAT(Now(), ElementsAre(4));
}

TEST_F(NumArrayOITest, RemoveAllFreesTheMemoryAndKeepsTheArray) {
    const NumArrayOI::Array* const array = object.m_pArray;
    EXPECT_EQ(shown->RemoveAll(), S_OK);
    EXPECT_EQ(object.m_pArray, array);
    EXPECT_EQ(array->GetSize(), 0);
    EXPECT_EQ(array->GetData(), nullptr);
    EXPECT_EQ(shown->Add(4.0), S_OK);
    EXPECT_THAT(Now(), ElementsAre(4));
}

TEST_F(NumArrayOITest, IsSameComparesThePointerAlone) {
    for (const std::int16_t before : {std::int16_t{0}, std::int16_t{1}}) {
        std::int16_t same = before;
        EXPECT_EQ(self->IsSame(self, &same), S_OK);
        EXPECT_EQ(same, -1);
        IUnknown* const others[] = {shown, emptySelf, nullptr};
        for (IUnknown* other : others) {
            same = before == 0 ? std::int16_t{-1} : before;
            EXPECT_EQ(self->IsSame(other, &same), S_OK);
            EXPECT_EQ(same, 0);
        }
    }
    EXPECT_EQ(self->IsSame(self, nullptr), S_OK);
    EXPECT_EQ(object.GetRef(), 1u);
}

TEST_F(NumArrayOITest, HandleIsTheLowHalfOfThePartsAddress) {
    std::uint32_t handle = 0;
    EXPECT_EQ(self->GetHandle(&handle), S_OK);
    EXPECT_EQ(handle, reinterpret_cast<std::uintptr_t>(self) & 0xFFFFFFFFu);
    EXPECT_EQ(self->GetHandle(nullptr), S_OK);
    EXPECT_EQ(emptySelf->GetHandle(&handle), S_OK) << "needs no array";
    EXPECT_EQ(handle, reinterpret_cast<std::uintptr_t>(emptySelf) & 0xFFFFFFFFu);
}

TEST_F(NumArrayOITest, CopyFromTakesOverTheNumbers) {
    Open source(true);
    source.m_pArray->Add(8.0);
    source.m_pArray->Add(-0.5);
    EXPECT_EQ(self->CopyFrom(&source.m_xObject_ZT), S_OK);
    EXPECT_THAT(Now(), ElementsAre(8.0, -0.5));
    EXPECT_NE(object.m_pArray, source.m_pArray);
    EXPECT_EQ(source.GetRef(), 1u);
    EXPECT_EQ(self->CopyFrom(self), S_OK);
    EXPECT_THAT(Now(), ElementsAre(8.0, -0.5));
    source.m_pArray->RemoveAll();
    EXPECT_EQ(self->CopyFrom(&source.m_xObject_ZT), S_OK);
    EXPECT_THAT(Now(), IsEmpty());
}

TEST_F(NumArrayOITest, CopyFromGrowsToTheSizeOfTheSource) {
    Open source(true);
    for (const double number : {5.0, 6.0, 7.0, 8.0, 9.0}) source.m_pArray->Add(number);
    EXPECT_EQ(self->CopyFrom(&source.m_xObject_ZT), S_OK);
    EXPECT_THAT(Now(), ElementsAre(5, 6, 7, 8, 9));
    EXPECT_THAT(NumbersOf(*source.m_pArray), ElementsAre(5, 6, 7, 8, 9));
    Open none(true);
    source.m_pArray->SetSize(1);
    EXPECT_EQ(none.m_xObject_ZT.CopyFrom(&source.m_xObject_ZT), S_OK);
    EXPECT_THAT(NumbersOf(*none.m_pArray), ElementsAre(5));
}

TEST_F(NumArrayOITest, CopyFromNeedsAnArrayOnBothSides) {
    CountedObject stranger;
    EXPECT_EQ(self->CopyFrom(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(emptySelf->CopyFrom(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(emptySelf->CopyFrom(&stranger), E_UNEXPECTED);
    EXPECT_EQ(stranger.queries, 0);
    EXPECT_EQ(self->CopyFrom(emptySelf), E_UNEXPECTED);
    EXPECT_EQ(self->CopyFrom(&stranger), E_UNEXPECTED);
    EXPECT_EQ(stranger.queries, 1);
    EXPECT_EQ(self->CopyFrom(shown), E_UNEXPECTED) << "that part is closed";
    EXPECT_THAT(Now(), ElementsAre(1, 2, 3));
}

TEST_F(NumArrayOITest, CloneIsASecondObjectWithACountOfTwo) {
    IUnknown* clone = nullptr;
    EXPECT_EQ(self->Clone(&clone), S_OK);
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(clone->QueryInterface(IID_IObject_ZT, &found), S_OK);
    EXPECT_EQ(found, clone);
    EXPECT_EQ(clone->Release(), 2u);
    EXPECT_EQ(clone->QueryInterface(IID_NativeObject, &found), S_OK);
    const auto* const numbers = static_cast<NumArrayOI::Array*>(found);
    EXPECT_NE(numbers, object.m_pArray);
    EXPECT_THAT(NumbersOf(*numbers), ElementsAre(1, 2, 3));
    shown->SetAt(0, 9.0);
    EXPECT_EQ(clone->Release(), 1u);
    EXPECT_THAT(NumbersOf(*numbers), ElementsAre(1, 2, 3)) << "alive after the client's release";
    EXPECT_EQ(clone->Release(), 0u);
    EXPECT_EQ(object.GetRef(), 1u);
}

TEST_F(NumArrayOITest, CloneNeedsAnArrayAndAPlace) {
    IUnknown* clone = self;
    EXPECT_EQ(self->Clone(nullptr), S_OK);
    EXPECT_EQ(emptySelf->Clone(nullptr), S_OK) << "the place is tested first";
    EXPECT_EQ(emptySelf->Clone(&clone), E_UNEXPECTED);
    EXPECT_EQ(clone, self);
}

TEST_F(NumArrayOITest, ReservedOperationsPassForSuccess) {
    EXPECT_EQ(self->ReservedA(), 120);
    EXPECT_EQ(self->ReservedB(), 120);
    EXPECT_EQ(emptySelf->ReservedA(), 120);
}

// One operation on plain numbers, with the bound of the interface.
HRESULT OnPlainNumbers(Numbers& numbers, int operation, std::int32_t index, double value) {
    if (operation == 3) {
        numbers.push_back(value);
        return S_OK;
    }
    if (index < 0 || index >= static_cast<std::int32_t>(numbers.size()) - 1) {
        return DISP_E_BADINDEX;
    }
    const auto place = numbers.begin() + index;
    if (operation == 0) *place = value;
    if (operation == 1) numbers.insert(place, value);
    if (operation == 2) numbers.erase(place);
    return S_OK;
}

HRESULT OnInterface(IArrayNum& numbers, int operation, std::int32_t index, double value) {
    switch (operation) {
        case 0:
            return numbers.SetAt(index, value);
        case 1:
            return numbers.InsertAt(index, value);
        case 2:
            return numbers.RemoveAt(index);
        default:
            return numbers.Add(value);
    }
}

TEST(NumArrayOILaws, BehavesAsPlainNumbersWithATighterBound) {
    EXPECT_TRUE(rc::check([](const std::vector<std::tuple<unsigned, unsigned, int>>& steps) {
        Open object(true);
        Numbers numbers;
        for (const auto& [operation, place, value] : steps) {
            const int what = static_cast<int>(operation % 6) % 4;
            const auto index = static_cast<std::int32_t>(place % (numbers.size() + 3)) - 1;
            const HRESULT expected = OnPlainNumbers(numbers, what, index, value);
            RC_ASSERT(OnInterface(object.m_xArrayNum, what, index, value) == expected);
            RC_ASSERT(NumbersOf(*object.m_pArray) == numbers);
        }
    }));
}

}  // namespace
}  // namespace ZT
