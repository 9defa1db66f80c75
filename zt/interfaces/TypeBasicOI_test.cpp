#include <zt/interfaces/TypeBasicOI.h>

#include <gtest/gtest.h>
#include <tests/CountedObject.h>
#include <zt/interfaces/IArrayNum.h>

#include <cstddef>
#include <string>
#include <vector>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

int destroyed = 0;

struct Open : TypeBasicOI {
    using TypeBasicOI::m_nType;
    using TypeBasicOI::m_xTypeBasic_ZT;
    using TypeBasicOI::TypeBasicOI;
    Open(const Open&) = default;
    ~Open() override { ++destroyed; }

    HRESULT QueryInterface(const GUID& iid, void** ppv) override {
        ++queries;
        return TypeBasicOI::QueryInterface(iid, ppv);
    }

    static constexpr std::size_t PartOffset() { return offsetof(Open, m_xTypeBasic_ZT); }
    static constexpr std::size_t TypeOffset() { return offsetof(Open, m_nType); }

    int queries = 0;
};

// The text, which ends here.
std::wstring Taken(BSTR text) {
    const std::wstring taken(text, SysStringLen(text));
    SysFreeString(text);
    return taken;
}

std::vector<double> Numbers(IArrayNum& array) {
    std::int32_t count = -1;
    array.GetCount(&count);
    std::vector<double> numbers;
    for (std::int32_t i = 0; i < count; ++i) array.GetAt(i, &numbers.emplace_back());
    return numbers;
}

// What an object of this type can also serve as. The array needs two releases to end.
std::vector<double> CompatibleWith(int type) {
    Open object(type);
    IUnknown* given = nullptr;
    EXPECT_EQ(object.m_xTypeBasic_ZT.GetCompatibleTypes(&given), S_OK);
    if (given == nullptr) return {-1.0};
    std::vector<double> numbers = Numbers(*static_cast<IArrayNum*>(given));
    EXPECT_EQ(given->Release(), 1u) << "stays alive after the client's release";
    EXPECT_EQ(Numbers(*static_cast<IArrayNum*>(given)), numbers);
    EXPECT_EQ(given->Release(), 0u);
    return numbers;
}

struct TypeBasicOITest : testing::Test {
    TypeBasicOITest() { destroyed = 0; }
    ITypeBasic_ZT* Shown() { return &object.m_xTypeBasic_ZT; }

    Open object{28};
    void* found = this;
};

TEST_F(TypeBasicOITest, FieldsFollowTheRootAndThePart) {
    EXPECT_EQ(Open::PartOffset(), sizeof(RefObj));
    EXPECT_EQ(Open::TypeOffset(), sizeof(RefObj) + sizeof(void*));
    EXPECT_EQ(sizeof(TypeBasicOI), sizeof(RefObj) + 2 * sizeof(void*));
}

TEST_F(TypeBasicOITest, StartsWithoutAReference) {
    EXPECT_EQ(object.GetRef(), 0u);
    EXPECT_EQ(object.m_nType, 28);
    const Open plain;
    EXPECT_EQ(plain.GetRef(), 0u);
    EXPECT_EQ(plain.m_nType, 0);
    const Open odd(-7);
    EXPECT_EQ(odd.m_nType, -7);
}

TEST_F(TypeBasicOITest, CopyTakesCountModeAndType) {
    object.SetByVal(true, false);
    object.AddRef();
    object.AddRef();
    Open copy(object);
    EXPECT_EQ(copy.GetRef(), 2u);
    EXPECT_EQ(copy.m_nType, 28);
    EXPECT_EQ(copy.Release(), 1u);
    EXPECT_EQ(copy.Release(), 0u);
    EXPECT_EQ(destroyed, 0) << "by value";
    EXPECT_EQ(copy.QueryInterface(IID_ITypeBasic_ZT, &found), S_OK);
    EXPECT_EQ(found, static_cast<ITypeBasic_ZT*>(&copy.m_xTypeBasic_ZT)) << "its own part";
    EXPECT_EQ(object.GetRef(), 2u);
}

TEST_F(TypeBasicOITest, OneQueryAndOneReleaseEndTheObject) {
    for (const IID& id : {IID_ITypeBasic_ZT, IID_IUnknown}) {
        destroyed = 0;
        auto* const counted = new Open(1);
        EXPECT_EQ(counted->QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, static_cast<ITypeBasic_ZT*>(&counted->m_xTypeBasic_ZT));
        EXPECT_EQ(counted->GetRef(), 1u);
        EXPECT_EQ(destroyed, 0);
        EXPECT_EQ(static_cast<ITypeBasic_ZT*>(found)->Release(), 0u);
        EXPECT_EQ(destroyed, 1);
    }
}

TEST_F(TypeBasicOITest, NativeObjectComesWithoutAReference) {
    EXPECT_EQ(object.QueryInterface(IID_NativeObject, &found), S_OK);
    EXPECT_EQ(found, static_cast<TypeBasicOI*>(&object));
    found = nullptr;
    EXPECT_EQ(Shown()->QueryInterface(IID_NativeObject, &found), S_OK);
    EXPECT_EQ(found, static_cast<TypeBasicOI*>(&object));
    EXPECT_EQ(object.GetRef(), 0u);
}

TEST_F(TypeBasicOITest, HasNoOtherInterface) {
    EXPECT_EQ(object.QueryInterface(testing_support::IID_ICounted, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    found = this;
    EXPECT_EQ(Shown()->QueryInterface(testing_support::IID_ICounted, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(object.GetRef(), 0u);
}

TEST_F(TypeBasicOITest, PartAnswersOnlyItsOwnIdentifierItself) {
    EXPECT_EQ(Shown()->QueryInterface(IID_ITypeBasic_ZT, &found), S_OK);
    EXPECT_EQ(found, Shown());
    EXPECT_EQ(object.queries, 0);
    found = nullptr;
    EXPECT_EQ(Shown()->QueryInterface(IID_IUnknown, &found), S_OK);
    EXPECT_EQ(found, Shown());
    EXPECT_EQ(object.queries, 1);
    EXPECT_EQ(object.GetRef(), 2u);
}

TEST_F(TypeBasicOITest, NullOutPointerIsRefused) {
    EXPECT_EQ(object.QueryInterface(IID_ITypeBasic_ZT, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(object.QueryInterface(IID_NativeObject, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Shown()->QueryInterface(IID_ITypeBasic_ZT, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Shown()->QueryInterface(IID_IUnknown, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(object.GetRef(), 0u);
}

TEST_F(TypeBasicOITest, TellsItsType) {
    std::int32_t type = -1;
    EXPECT_EQ(Shown()->GetType(&type), S_OK);
    EXPECT_EQ(type, 28);
    EXPECT_EQ(Shown()->GetType(nullptr), S_OK);
}

TEST_F(TypeBasicOITest, NamesAnyTypeWhateverItsOwn) {
    const std::pair<int, const wchar_t*> names[] = {
        {1, L"Line"}, {7, L"3DPoint"}, {16, L"NumericArray"}, {28, L"Ray"}, {43, L"Sphere"}};
    for (const auto& [type, expected] : names) {
        BSTR name = nullptr;
        EXPECT_EQ(Shown()->GetTypeName(type, &name), S_OK);
        EXPECT_EQ(Taken(name), expected);
    }
}

TEST_F(TypeBasicOITest, ReplacesTheStringThatIsThere) {
    BSTR name = SysAllocString(L"before");
    EXPECT_EQ(Shown()->GetTypeName(42, &name), S_OK);
    EXPECT_EQ(Taken(name), L"Mesh");
}

TEST_F(TypeBasicOITest, TypeWithoutANameIsRefusedAndNothingWritten) {
    BSTR name = SysAllocString(L"before");
    for (const int type : {0, 3, 4, 5, 26, 39, 40, 44, 45, 100, -1}) {
        EXPECT_EQ(Shown()->GetTypeName(type, &name), DISP_E_PARAMNOTOPTIONAL) << type;
        EXPECT_EQ(Shown()->GetTypeName(type, nullptr), DISP_E_PARAMNOTOPTIONAL) << type;
    }
    EXPECT_EQ(Taken(name), L"before");
    EXPECT_EQ(Shown()->GetTypeName(1, nullptr), S_OK);
}

TEST_F(TypeBasicOITest, GivesTheCompatibleTypeOfItsOwnAsANumber) {
    EXPECT_EQ(CompatibleWith(28), std::vector<double>{1.0});
    EXPECT_EQ(CompatibleWith(1), std::vector<double>{28.0});
    EXPECT_EQ(CompatibleWith(15), std::vector<double>{2.0});
    EXPECT_EQ(CompatibleWith(21), std::vector<double>{2.0});
    EXPECT_EQ(CompatibleWith(22), std::vector<double>{2.0});
    EXPECT_EQ(CompatibleWith(9), std::vector<double>{8.0});
}

TEST_F(TypeBasicOITest, GivesAnEmptyArrayForATypeThatServesAsNoOther) {
    for (const int type : {0, 2, 8, 16, 44, 100, -1}) {
        EXPECT_EQ(CompatibleWith(type), std::vector<double>{}) << type;
    }
}

TEST_F(TypeBasicOITest, CompatibleTypesNeedNoOutput) {
    EXPECT_EQ(Shown()->GetCompatibleTypes(nullptr), S_OK);
    EXPECT_EQ(object.GetRef(), 0u);
}

TEST_F(TypeBasicOITest, TableOfThePartIsInOrder) {
    ITypeBasic_ZT* const shown = Shown();
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, &IID_ITypeBasic_ZT, &found)), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 2u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 1u);
    std::int32_t type = 0;
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t*>(shown, 3, &type)), S_OK);
    EXPECT_EQ(type, 28);
    BSTR name = nullptr;
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t, BSTR*>(shown, 4, 12, &name)), S_OK);
    EXPECT_EQ(Taken(name), L"Arc");
    IUnknown* given = nullptr;
    EXPECT_EQ((CallSlot<HRESULT, IUnknown**>(shown, 5, &given)), S_OK);
    ASSERT_NE(given, nullptr);
    EXPECT_EQ(Numbers(*static_cast<IArrayNum*>(given)), std::vector<double>{1.0});
    EXPECT_EQ(given->Release(), 1u);
    EXPECT_EQ(given->Release(), 0u);
}

TEST_F(TypeBasicOITest, TableOfTheObjectIsThatOfTheRoot) {
    EXPECT_EQ((CallSlot<HRESULT, const GUID*, void**>(&object, kSlotFirstOwn, &IID_ITypeBasic_ZT,
                                                      &found)),
              S_OK);
    EXPECT_EQ(found, Shown());
    EXPECT_EQ(CallSlot<ulong>(&object, kSlotFirstOwn + 2), 2u);
    EXPECT_EQ(CallSlot<ulong>(&object, kSlotFirstOwn + 1), 1u);
}

// Answers each operation of its own with the place in the table.
struct Numbered final : ITypeBasic_ZT {
    HRESULT QueryInterface(REFIID, void**) override { return 0; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 2; }
    HRESULT GetType(std::int32_t*) override { return 3; }
    HRESULT GetTypeName(std::int32_t, BSTR*) override { return 4; }
    HRESULT GetCompatibleTypes(IUnknown**) override { return 5; }
};

TEST(ITypeBasicTable, OperationsStandInOrder) {
    Numbered object;
    ITypeBasic_ZT* const shown = &object;
    EXPECT_EQ((CallSlot<HRESULT, const IID*, void**>(shown, 0, nullptr, nullptr)), 0);
    EXPECT_EQ(CallSlot<ULONG>(shown, 1), 1u);
    EXPECT_EQ(CallSlot<ULONG>(shown, 2), 2u);
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t*>(shown, 3, nullptr)), 3);
    EXPECT_EQ((CallSlot<HRESULT, std::int32_t, BSTR*>(shown, 4, 0, nullptr)), 4);
    EXPECT_EQ((CallSlot<HRESULT, IUnknown**>(shown, 5, nullptr)), 5);
    EXPECT_EQ(InterfaceIdOf<ITypeBasic_ZT>::value, IID_ITypeBasic_ZT);
}

}  // namespace
}  // namespace ZT
