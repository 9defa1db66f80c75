#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tests/CountedObject.h>
#include <zt/interfaces/Array2OI.h>

#include <cstddef>
#include <cstdint>
#include <vector>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

using testing_support::CountedObject;
using testing_support::IID_ICounted;

// A client's array on the stack, which notes what it is asked.
struct ClientArray final : IArray {
    HRESULT QueryInterface(REFIID id, void** object) override {
        asked = id;
        *object = nullptr;
        if (id != IID_ICounted && id != IID_IUnknown) return E_NOINTERFACE;
        *object = static_cast<IArray*>(this);
        AddRef();
        return S_OK;
    }
    ULONG AddRef() override { return ++count; }
    ULONG Release() override { return --count; }
    HRESULT GetCount(std::int32_t* size) override {
        *size = static_cast<std::int32_t>(elements.size());
        return answer;
    }
    HRESULT GetAt(std::int32_t index, IUnknown** element) override {
        index_ = index;
        if (answer != S_OK) return answer;
        *element = elements[static_cast<std::size_t>(index)];
        if (*element != nullptr) (*element)->AddRef();
        return S_OK;
    }
    HRESULT SetAt(std::int32_t index, IUnknown* element) override {
        index_ = index;
        return Note(3, element);
    }
    HRESULT ArrayOp4() override { return Note(4, nullptr); }
    HRESULT ArrayOp5(IUnknown* object) override { return Note(5, object); }
    HRESULT ArrayOp6(IUnknown* object) override { return Note(6, object); }
    HRESULT ArrayOp7() override { return Note(7, nullptr); }

    HRESULT Note(int operation, void* object) {
        last = operation;
        given = object;
        return answer;
    }

    ULONG count = 100;
    HRESULT answer = S_OK;
    std::vector<IUnknown*> elements;
    IID asked = IID_NULL;
    std::int32_t index_ = -7;
    int last = 0;
    void* given = nullptr;
};

struct Open : Array2OI {
    using Array2OI::Array2OI;
    using Array2OI::m_pArray;
    using Array2OI::m_xArray2;
    using Array2OI::m_xArray_PW;

    static std::vector<std::size_t> Offsets() {
        return {offsetof(Open, m_xArray2), offsetof(Open, m_xArray_PW), offsetof(Open, m_pArray)};
    }
};

int ended = 0;

struct Ending : Open {
    using Open::Open;
    ~Ending() override { ++ended; }
};

VARIANT Variant(VARTYPE type, void* value) {
    VARIANT variant{};
    variant.vt = type;
    variant.byref = value;
    return variant;
}

// An adapter in by-value mode over an array of two objects, and one without an array.
struct Array2OITest : testing::Test {
    Array2OITest() {
        ended = 0;
        array.elements = {&first, &second};
        adapter.SetByVal();
        empty.SetByVal();
    }

    CountedObject first;
    CountedObject second;
    ClientArray array;
    Open adapter{&array};
    Open empty;
    RefObj& object = adapter;
    VariantArrayOperations* shown = &adapter.m_xArray2;
    VariantArrayOperations* shownPW = &adapter.m_xArray_PW;
    VariantArrayOperations* nothing = &empty.m_xArray2;
    void* found = &adapter;
};

TEST_F(Array2OITest, FieldsFollowTheRoot) {
    EXPECT_THAT(Open::Offsets(), testing::ElementsAre(16, 24, 32));
    EXPECT_EQ(sizeof(Array2OI), 40u);
    EXPECT_EQ(sizeof(RefObj), 16u);
}

TEST_F(Array2OITest, StartsAtZeroAndAddsNoReference) {
    const Open made(&array);
    EXPECT_EQ(made.GetRef(), 0u);
    EXPECT_EQ(made.m_pArray, &array);
    EXPECT_EQ(array.count, 100u);
    const Open none;
    EXPECT_EQ(none.GetRef(), 0u);
    EXPECT_EQ(none.m_pArray, nullptr);
}

TEST_F(Array2OITest, ItsEndReleasesNothing) {
    { const Open made(&array); }
    EXPECT_EQ(array.count, 100u);
}

TEST_F(Array2OITest, CopyTakesCountAndPointer) {
    adapter.AddRef();
    Open copy(adapter);
    EXPECT_EQ(copy.GetRef(), 1u);
    EXPECT_EQ(copy.m_pArray, &array);
    EXPECT_EQ(array.count, 100u);
}

TEST_F(Array2OITest, CreateGivesABalancedPointer) {
    EXPECT_EQ(Array2OI::Create(&array, &found), S_OK);
    auto* const made = static_cast<IArray2*>(found);
    EXPECT_EQ(array.count, 101u);
    EXPECT_EQ(made->AddRef(), 102u);
    EXPECT_EQ(made->Release(), 101u);
    EXPECT_EQ(made->Release(), 100u) << "which ends the adapter";
}

TEST_F(Array2OITest, CreateNeedsAnArrayAndAPlace) {
    EXPECT_EQ(Array2OI::Create(nullptr, &found), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(found, &adapter);
    EXPECT_EQ(Array2OI::Create(&array, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(array.count, 100u);
}

TEST_F(Array2OITest, EndsWhenAReleaseBringsTheCountToZero) {
    auto* counted = new Ending(&array);
    IArray2* const part = &counted->m_xArray2;
    EXPECT_EQ(part->AddRef(), 101u);
    EXPECT_EQ(part->AddRef(), 102u);
    EXPECT_EQ(counted->GetRef(), 2u);
    EXPECT_EQ(part->Release(), 101u);
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(part->Release(), 100u);
    EXPECT_EQ(ended, 1);
}

TEST_F(Array2OITest, SecondPartCountsArrayAndAdapterToo) {
    auto* counted = new Ending(&array);
    IArray_PW* const part = &counted->m_xArray_PW;
    EXPECT_EQ(part->AddRef(), 101u);
    EXPECT_EQ(counted->GetRef(), 1u);
    EXPECT_EQ(part->AddRef(), 102u);
    EXPECT_EQ(counted->GetRef(), 2u);
    EXPECT_EQ(part->Release(), 101u);
    EXPECT_EQ(counted->GetRef(), 1u);
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(part->Release(), 100u);
    EXPECT_EQ(ended, 1);
}

TEST_F(Array2OITest, QueryOfTheObjectCountsTheObjectAlone) {
    for (const IID& id : {IID_IArray2, IID_IUnknown}) {
        EXPECT_EQ(object.QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, static_cast<IArray2*>(&adapter.m_xArray2));
    }
    EXPECT_EQ(object.QueryInterface(IID_IArray_PW, &found), S_OK);
    EXPECT_EQ(found, static_cast<IArray_PW*>(&adapter.m_xArray_PW));
    EXPECT_EQ(adapter.GetRef(), 3u);
    EXPECT_EQ(array.count, 100u);
    EXPECT_EQ(shown->Release(), 99u) << "a reference that was never added";
    EXPECT_EQ(adapter.GetRef(), 2u);
}

TEST_F(Array2OITest, QueryOfTheObjectForItselfAndForOthers) {
    EXPECT_EQ(object.QueryInterface(IID_NativeObject, &found), S_OK);
    EXPECT_EQ(found, static_cast<Array2OI*>(&adapter));
    for (const IID& id : {IID_ICounted, IID_IArrayNum}) {
        found = &adapter;
        EXPECT_EQ(object.QueryInterface(id, &found), E_NOINTERFACE);
        EXPECT_EQ(found, nullptr);
    }
    for (const IID& id : {IID_ICounted, IID_IArray2, IID_NativeObject}) {
        EXPECT_EQ(object.QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
    }
    EXPECT_EQ(adapter.GetRef(), 0u);
    EXPECT_EQ(array.asked, IID_NULL) << "the array is not asked";
}

TEST_F(Array2OITest, PartsKnowOneInterfaceAndSendTheRestToTheArray) {
    for (VariantArrayOperations* part : {shown, shownPW}) {
        const ULONG before = array.count;
        EXPECT_EQ(part->QueryInterface(IID_IArray2, &found), S_OK);
        EXPECT_EQ(found, static_cast<IArray2*>(&adapter.m_xArray2));
        EXPECT_EQ(array.count, before + 1);
        for (const IID& id : {IID_IUnknown, IID_ICounted}) {
            EXPECT_EQ(part->QueryInterface(id, &found), S_OK);
            EXPECT_EQ(found, static_cast<IArray*>(&array)) << "the array, not the adapter";
            EXPECT_EQ(array.asked, id);
        }
        EXPECT_EQ(array.count, before + 3);
        for (const IID& id : {IID_IArray_PW, IID_NativeObject}) {
            found = &adapter;
            EXPECT_EQ(part->QueryInterface(id, &found), E_NOINTERFACE);
            EXPECT_EQ(array.asked, id);
            EXPECT_EQ(found, nullptr);
        }
        EXPECT_EQ(part->QueryInterface(IID_IArray2, nullptr), DISP_E_PARAMNOTOPTIONAL);
    }
    EXPECT_EQ(adapter.GetRef(), 2u);
}

TEST_F(Array2OITest, WithoutAnArrayPartsNeitherCountNorAnswer) {
    for (VariantArrayOperations* part :
         {nothing, static_cast<VariantArrayOperations*>(&empty.m_xArray_PW)}) {
        EXPECT_EQ(part->QueryInterface(IID_IArray2, &found), E_UNEXPECTED);
        EXPECT_EQ(part->QueryInterface(IID_IUnknown, &found), E_UNEXPECTED);
        EXPECT_EQ(found, &adapter);
        EXPECT_EQ(part->QueryInterface(IID_IArray2, nullptr), DISP_E_PARAMNOTOPTIONAL);
        EXPECT_EQ(part->AddRef(), 1u);
        EXPECT_EQ(part->Release(), 1u);
        EXPECT_EQ(empty.GetRef(), 0u);
    }
}

TEST_F(Array2OITest, WithoutAnArrayNothingWorksWhateverTheArguments) {
    std::int32_t count = 7;
    VARIANT variant = Variant(VT_UNKNOWN, &first);
    EXPECT_EQ(nothing->GetCount(&count), E_UNEXPECTED);
    EXPECT_EQ(nothing->GetAt(0, &variant), E_UNEXPECTED);
    EXPECT_EQ(nothing->GetAt(0, nullptr), E_UNEXPECTED);
    EXPECT_EQ(nothing->SetAt(0, &variant), E_UNEXPECTED);
    EXPECT_EQ(nothing->SetAt(0, nullptr), E_UNEXPECTED);
    EXPECT_EQ(nothing->SetAt2(0, nullptr), E_UNEXPECTED);
    EXPECT_EQ(nothing->ArrayOp4(), E_UNEXPECTED);
    EXPECT_EQ(nothing->ArrayOp5(&variant), E_UNEXPECTED);
    EXPECT_EQ(nothing->ArrayOp5(nullptr), E_UNEXPECTED);
    EXPECT_EQ(nothing->ArrayOp6(nullptr), E_UNEXPECTED);
    EXPECT_EQ(nothing->ArrayOp7(), E_UNEXPECTED);
    EXPECT_EQ(nothing->ReservedA(), 120) << "for it needs no array";
    EXPECT_EQ(nothing->ReservedB(), 120);
    EXPECT_EQ(count, 7);
    EXPECT_EQ(variant.punkVal, &first);
}

// Calls each place of the table of a part and looks at what arrives at the array.
void CallEachPlace(void* part, ClientArray& array, IUnknown* element) {
    void* found = nullptr;
    std::int32_t count = 0;
    VARIANT variant = Variant(VT_EMPTY, nullptr);
    VARIANT given = Variant(VT_UNKNOWN, element);
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(part, 0, &IID_ICounted, &found)), S_OK);
    EXPECT_EQ(found, static_cast<IArray*>(&array));
    EXPECT_EQ(CallSlot<ULONG>(part, 1), 102u);
    EXPECT_EQ(CallSlot<ULONG>(part, 2), 101u);
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t*>(part, 3, &count)), S_OK);
    EXPECT_EQ(count, 2);
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t, VARIANT*>(part, 4, 1, &variant)), S_OK);
    EXPECT_EQ(variant.vt, VT_UNKNOWN);
    EXPECT_EQ(variant.punkVal, element);
    array.answer = 33;
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t, VARIANT*>(part, 5, 0, &given)), 33);
    EXPECT_EQ(array.last, 3);
    EXPECT_EQ(array.index_, 0);
    EXPECT_EQ(CallSlot<HRESULT>(part, 6), 33);
    EXPECT_EQ(array.last, 4);
    EXPECT_EQ((CallSlot<HRESULT, VARIANT*>(part, 7, &given)), 33);
    EXPECT_EQ(array.last, 5);
    EXPECT_EQ((CallSlot<HRESULT, VARIANT*>(part, 8, &given)), 33);
    EXPECT_EQ(array.last, 6);
    EXPECT_EQ(CallSlot<HRESULT>(part, 9), 120);
    EXPECT_EQ(CallSlot<HRESULT>(part, 10), 120);
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t, VARIANT*>(part, 11, 1, &given)), 33);
    EXPECT_EQ(array.last, 3);
    EXPECT_EQ(array.index_, 1);
    EXPECT_EQ(array.given, element);
    EXPECT_EQ(CallSlot<HRESULT>(part, 12), 33);
    EXPECT_EQ(array.last, 7);
}

TEST_F(Array2OITest, TableOfTheInterfaceIsInOrder) {
    CallEachPlace(static_cast<IArray2*>(&adapter.m_xArray2), array, &second);
}

TEST_F(Array2OITest, TableOfTheSecondInterfaceHasTheSamePlaces) {
    CallEachPlace(static_cast<IArray_PW*>(&adapter.m_xArray_PW), array, &second);
}

// Answers each operation of its own with the place in the table.
template <class Interface>
struct Numbered final : Interface {
    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 2; }
    HRESULT GetCount(std::int32_t*) override { return 3; }
    HRESULT GetAt(std::int32_t, VARIANT*) override { return 4; }
    HRESULT SetAt(std::int32_t, const VARIANT*) override { return 5; }
    HRESULT ArrayOp4() override { return 6; }
    HRESULT ArrayOp5(const VARIANT*) override { return 7; }
    HRESULT ArrayOp6(const VARIANT*) override { return 8; }
    HRESULT ReservedA() override { return 9; }
    HRESULT ReservedB() override { return 10; }
    HRESULT SetAt2(std::int32_t, const VARIANT*) override { return 11; }
    HRESULT ArrayOp7() override { return 12; }
};

struct NumberedArray final : IArray {
    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 2; }
    HRESULT GetCount(std::int32_t*) override { return 3; }
    HRESULT GetAt(std::int32_t, IUnknown**) override { return 4; }
    HRESULT SetAt(std::int32_t, IUnknown*) override { return 5; }
    HRESULT ArrayOp4() override { return 6; }
    HRESULT ArrayOp5(IUnknown*) override { return 7; }
    HRESULT ArrayOp6(IUnknown*) override { return 8; }
    HRESULT ArrayOp7() override { return 9; }
};

void ExpectNumbers(void* shown, int end) {
    for (int slot = 1; slot < end; ++slot) {
        EXPECT_EQ((CallSlot<HRESULT, std::int64_t, void*>(shown, static_cast<std::size_t>(slot), 0,
                                                          nullptr)),
                  slot);
    }
}

TEST(ArrayInterfaces, OperationsStandInTheTableInOrder) {
    Numbered<IArray2> array2;
    ExpectNumbers(static_cast<IArray2*>(&array2), 13);
    Numbered<IArray_PW> arrayPW;
    ExpectNumbers(static_cast<IArray_PW*>(&arrayPW), 13);
    NumberedArray array;
    ExpectNumbers(static_cast<IArray*>(&array), 10);
}

TEST_F(Array2OITest, GetCountGivesWhatTheArrayAnswers) {
    std::int32_t count = 0;
    array.answer = E_OUTOFMEMORY;
    EXPECT_EQ(shown->GetCount(&count), E_OUTOFMEMORY);
    EXPECT_EQ(count, 2);
}

TEST_F(Array2OITest, GetAtGivesAnObjectWithAReference) {
    VARIANT variant = Variant(VT_I4, &second);
    EXPECT_EQ(shown->GetAt(0, &variant), S_OK);
    EXPECT_EQ(variant.vt, VT_UNKNOWN);
    EXPECT_EQ(variant.punkVal, &first);
    EXPECT_EQ(first.count, 2u);
    EXPECT_EQ(second.count, 1u) << "what the variant held is not released";
    variant = Variant(VT_UNKNOWN, &second);
    EXPECT_EQ(shown->GetAt(0, &variant), S_OK);
    EXPECT_EQ(second.count, 1u) << "not even an interface";
}

TEST_F(Array2OITest, GetAtThatFailsLeavesTheVariant) {
    VARIANT variant = Variant(VT_I4, &second);
    for (const HRESULT failure : {DISP_E_BADINDEX, E_OUTOFMEMORY, HRESULT{1}}) {
        array.answer = failure;
        EXPECT_EQ(shown->GetAt(1, &variant), E_UNEXPECTED);
        EXPECT_EQ(array.index_, 1);
        EXPECT_EQ(variant.vt, VT_I4);
        EXPECT_EQ(variant.byref, &second);
    }
    array.index_ = -7;
    EXPECT_EQ(shown->GetAt(1, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(array.index_, -7) << "the array was not asked";
}

TEST_F(Array2OITest, SetAtAndArrayOp6TakeNothingButAnObject) {
    for (const int type : {0, 2, 3, 8, 9, 12, 0x400D, 0x200D, 0x1D}) {
        VARIANT variant = Variant(static_cast<VARTYPE>(type), &first);
        EXPECT_EQ(shown->SetAt(0, &variant), DISP_E_PARAMNOTOPTIONAL) << type;
        EXPECT_EQ(shown->SetAt2(0, &variant), DISP_E_PARAMNOTOPTIONAL) << type;
        EXPECT_EQ(shown->ArrayOp6(&variant), DISP_E_PARAMNOTOPTIONAL) << type;
    }
    EXPECT_EQ(shown->SetAt(0, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(shown->SetAt2(0, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(shown->ArrayOp6(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(array.last, 0);
    VARIANT variant = Variant(VT_UNKNOWN, &first);
    EXPECT_EQ(shown->ArrayOp6(&variant), S_OK);
    EXPECT_EQ(array.last, 6);
    EXPECT_EQ(array.given, &first);
    array.answer = DISP_E_BADINDEX;
    EXPECT_EQ(shown->SetAt(9, &variant), DISP_E_BADINDEX);
    EXPECT_EQ(array.index_, 9);
    EXPECT_EQ(array.given, &first);
    EXPECT_EQ(first.count, 1u);
}

TEST_F(Array2OITest, ArrayOp5PassesEveryTypeThatSharesABit) {
    for (const int type : {13, 9, 3, 8, 1, 4, 5, 11, 12, 17, 0x200D}) {
        VARIANT variant = Variant(static_cast<VARTYPE>(type), &first);
        array.given = nullptr;
        EXPECT_EQ(shown->ArrayOp5(&variant), S_OK) << type;
        EXPECT_EQ(array.given, &first) << type;
    }
    array.last = 0;
    for (const int type : {0, 2, 16, 18, 0x0100, 0x2002, 0x4002}) {
        VARIANT variant = Variant(static_cast<VARTYPE>(type), &first);
        EXPECT_EQ(shown->ArrayOp5(&variant), DISP_E_PARAMNOTOPTIONAL) << type;
    }
    EXPECT_EQ(shown->ArrayOp5(nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(array.last, 0);
}

TEST_F(Array2OITest, ArrayOp5ReadsThroughAReference) {
    IUnknown* pointer = &second;
    for (const int type : {0x400D, 0x4009, 0x4003, 0x600D}) {
        VARIANT variant = Variant(static_cast<VARTYPE>(type), &pointer);
        array.given = nullptr;
        array.answer = 44;
        EXPECT_EQ(shown->ArrayOp5(&variant), 44) << type;
        EXPECT_EQ(array.given, &second) << type;
    }
}

TEST_F(Array2OITest, FindsAnObjectInAnArray) {
    CountedObject stranger;
    EXPECT_EQ(zglFindObj(&array, &first), 0);
    EXPECT_EQ(zglFindObj(&array, &second), 1);
    EXPECT_EQ(zglFindObj(&array, &stranger), -1);
    EXPECT_EQ(zglFindObj(&array, nullptr), -1);
    EXPECT_EQ(zglFindObj(nullptr, &first), -1);
    EXPECT_EQ(zglFindObj(nullptr, nullptr), -1);
    array.elements = {&first, nullptr, &second, &second};
    EXPECT_EQ(zglFindObj(&array, &second), 2) << "the first of two";
    EXPECT_EQ(zglFindObj(&array, nullptr), 1);
    array.answer = E_UNEXPECTED;
    EXPECT_EQ(zglFindObj(&array, &first), -1) << "no element is given";
    EXPECT_EQ(zglFindObj(&array, nullptr), 0);
    array.answer = S_OK;
    array.elements.clear();
    EXPECT_EQ(zglFindObj(&array, &first), -1);
    EXPECT_EQ(first.count, 1u) << "each is released again";
    EXPECT_EQ(second.count, 1u);
    EXPECT_EQ(array.count, 100u);
}

}  // namespace
}  // namespace ZT
