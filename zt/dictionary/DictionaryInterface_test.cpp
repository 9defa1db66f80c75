// The dictionary as another module sees it: every operation through the table of the interface.

#include <gtest/gtest.h>
#include <platform/object/COleException.h>
#include <tests/CountedObject.h>
#include <tests/Raises.h>
#include <zt/dictionary/DictionaryZT.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

using testing_support::CountedObject;
using testing_support::Raises;

constexpr HRESULT kBad = DISP_E_PARAMNOTOPTIONAL;

// The operations in the order of the table.
enum Slot : std::size_t {
    kQueryInterface,
    kAddRef,
    kRelease,
    kGetParamCount,
    kGetParamName,
    kGetParamDescription,
    kGetParamType,
    kGetInt,
    kSetInt,
    kGetDouble,
    kSetDouble,
    kGetBool,
    kSetBool,
    kGet3State,
    kSet3State,
    kGetString,
    kSetString,
    kGet,
    kSet,
    kGetInterface,
    kSetInterface,
};

// The text of a string that was handed over, which is freed.
std::wstring Taken(BSTR& string) {
    const std::wstring text(string, SysStringLen(string));
    SysFreeString(string);
    string = nullptr;
    return text;
}

// A dictionary in by-value mode, and the interface that a query gives.
struct IDictionaryTest : testing::Test {
    IDictionaryTest() {
        void* found = nullptr;
        bag.QueryInterface(IID_IDictionary_ZT, &found);
        shown = static_cast<IDictionary_ZT*>(found);
    }

    // Calls through the bare table, with the result of an interface's operation.
    template <class... Arguments>
    HRESULT Call(Slot slot, Arguments... arguments) {
        return CallSlot<HRESULT, Arguments...>(shown, slot, arguments...);
    }

    int Count() const { return bag.GetParamCount(eDictNone); }

    DictionaryZT bag{true, true};
    IDictionary_ZT* shown = nullptr;
    int number = 77;
    double real = 77.5;
    VARIANT_BOOL truth = 77;
    CString text = "before";
    BSTR string = nullptr;
    VARIANT variant = {};
    CountedObject object, other;
    IUnknown* pointer = &other;
};

TEST_F(IDictionaryTest, CountIsThatOfTheDictionary) {
    EXPECT_EQ(bag.GetRef(), 1u);
    void* found = nullptr;
    EXPECT_EQ((Call<const GUID*, void**>(kQueryInterface, &IID_IUnknown, &found)), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ(bag.GetRef(), 2u);
    EXPECT_EQ(CallSlot<ULONG>(shown, kAddRef), 3u);
    EXPECT_EQ(CallSlot<ULONG>(shown, kRelease), 2u);
    EXPECT_EQ((Call<const GUID*, void**>(kQueryInterface, &IID_IDictionary_ZT, &found)), S_OK);
    EXPECT_EQ(found, shown);
    EXPECT_EQ((Call<const GUID*, void**>(kQueryInterface, &IID_IList64, &found)), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ((Call<const GUID*, void**>(kQueryInterface, &IID_IUnknown, nullptr)), kBad);
    EXPECT_EQ(bag.GetRef(), 3u);
}

TEST_F(IDictionaryTest, OperationsStandInTheirOrder) {
    EXPECT_EQ((Call<const char*, int>(kSetInt, "i", 5)), S_OK);
    EXPECT_EQ((Call<const char*, int*>(kGetInt, "i", &number)), S_OK);
    EXPECT_EQ(number, 5);
    EXPECT_EQ((Call<const char*, double>(kSetDouble, "d", 2.5)), S_OK);
    EXPECT_EQ((Call<const char*, double*>(kGetDouble, "d", &real)), S_OK);
    EXPECT_EQ(real, 2.5);
    EXPECT_EQ((Call<const char*, VARIANT_BOOL>(kSetBool, "b", 5)), S_OK);
    EXPECT_EQ((Call<const char*, VARIANT_BOOL*>(kGetBool, "b", &truth)), S_OK);
    EXPECT_EQ(truth, -1);
    EXPECT_EQ((Call<const char*, ZT3State>(kSet3State, "t", ZT3State::eUnknown)), S_OK);
    EXPECT_EQ((Call<const char*, int*>(kGet3State, "t", &number)), S_OK);
    EXPECT_EQ(number, -1);
    EXPECT_EQ((Call<const char*, const char*>(kSetString, "s", "text")), S_OK);
    EXPECT_EQ((Call<const char*, BSTR*>(kGetString, "s", &string)), S_OK);
    EXPECT_EQ(Taken(string), L"text");
    COleVariant five(5);
    EXPECT_EQ((Call<const char*, const VARIANT*>(kSet, "v", five)), S_OK);
    EXPECT_EQ((Call<const char*, VARIANT*>(kGet, "v", &variant)), S_OK);
    EXPECT_EQ(variant.vt, VT_I4);
    EXPECT_EQ(variant.lVal, 5);
    EXPECT_EQ((Call<const char*, IUnknown*>(kSetInterface, "u", &object)), S_OK);
    EXPECT_EQ((Call<const char*, IUnknown**>(kGetInterface, "u", &pointer)), S_OK);
    EXPECT_EQ(pointer, &object);
    EXPECT_EQ((Call<int, int*>(kGetParamCount, 0, &number)), S_OK);
    EXPECT_EQ(number, 7);
    EXPECT_EQ((Call<int, BSTR*>(kGetParamName, 0, &string)), S_OK);
    EXPECT_EQ(CString(Taken(string).c_str()), bag.GetParamName(0));
    EXPECT_EQ((Call<const char*, BSTR*>(kGetParamDescription, "s", &string)), S_OK);
    EXPECT_EQ(Taken(string), L"");
    EXPECT_EQ((Call<const char*, int*>(kGetParamType, "u", &number)), S_OK);
    EXPECT_EQ(number, 7);
}

TEST_F(IDictionaryTest, CountsTypesExceptStates) {
    shown->Set3State("t", ZT3State::eTrue);
    shown->SetInt("i", 1);
    shown->SetInt("j", 1);
    const int counts[] = {3, 2, 0, 0, 3, 0, 0, 0, 3};
    for (int type = 0; type < 9; ++type) {
        EXPECT_EQ(shown->GetParamCount(type, &number), S_OK);
        EXPECT_EQ(number, counts[type]) << type;
    }
    EXPECT_EQ(shown->GetParamCount(-1, &number), S_OK);
    EXPECT_EQ(number, 3);
    EXPECT_EQ(shown->GetParamCount(1, nullptr), kBad);
}

TEST_F(IDictionaryTest, NamesByIndex) {
    EXPECT_EQ(shown->GetParamName(0, &string), DISP_E_BADINDEX);
    EXPECT_EQ(string, nullptr);
    shown->SetInt("", 1);
    EXPECT_EQ(shown->GetParamName(0, &string), S_OK);
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(Taken(string), L"");
    bag.Clear();
    shown->SetInt("\xC3\xA9", 1);
    EXPECT_EQ(shown->GetParamName(0, &string), S_OK);
    EXPECT_EQ(Taken(string), L"\u00E9");
    for (const int index : {1, -1}) {
        EXPECT_EQ(shown->GetParamName(index, &string), DISP_E_BADINDEX) << index;
        EXPECT_EQ(shown->GetParamName(index, nullptr), S_OK) << index;
    }
    EXPECT_EQ(shown->GetParamName(0, nullptr), S_OK);
}

TEST_F(IDictionaryTest, DescriptionsOfStringsOnly) {
    bag.AddItem("s", eDictString, "a string");
    bag.AddItem("i", eDictInt, "an int");
    EXPECT_EQ(shown->GetParamDescription("s", &string), S_OK);
    EXPECT_EQ(Taken(string), L"a string");
    for (const char* name : {"i", "absent", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(shown->GetParamDescription(name, &string), kBad);
        EXPECT_EQ(string, nullptr);
        EXPECT_EQ(shown->GetParamDescription(name, nullptr), S_OK);
    }
    EXPECT_EQ(Count(), 2);
}

TEST_F(IDictionaryTest, TypesOfNames) {
    bag.AddItem("t", eDict3State, "");
    EXPECT_EQ(shown->GetParamType("t", &number), S_OK);
    EXPECT_EQ(number, 4);
    EXPECT_EQ(shown->GetParamType("absent", &number), S_OK);
    EXPECT_EQ(number, 0);
    number = 77;
    EXPECT_EQ(shown->GetParamType(nullptr, &number), kBad);
    EXPECT_EQ(number, 77);
    EXPECT_EQ(shown->GetParamType("t", nullptr), S_OK);
    EXPECT_EQ(shown->GetParamType(nullptr, nullptr), S_OK);
}

TEST_F(IDictionaryTest, SettersDeclareWithoutDescription) {
    const COleVariant five(5);
    EXPECT_EQ(shown->SetInt("i", 5), S_OK);
    EXPECT_EQ(shown->SetDouble("d", 5), S_OK);
    EXPECT_EQ(shown->SetBool("b", 1), S_OK);
    EXPECT_EQ(shown->Set3State("t", ZT3State::eTrue), S_OK);
    EXPECT_EQ(shown->SetString("s", "5"), S_OK);
    EXPECT_EQ(shown->Set("v", five), S_OK);
    EXPECT_EQ(shown->SetInterface("u", &object), S_OK);
    EXPECT_EQ(bag.GetParamType("i"), eDictInt);
    EXPECT_EQ(bag.GetParamType("d"), eDictDouble);
    EXPECT_EQ(bag.GetParamType("b"), eDictBool);
    EXPECT_EQ(bag.GetParamType("t"), eDict3State);
    EXPECT_EQ(bag.GetParamType("s"), eDictString);
    EXPECT_EQ(bag.GetParamType("v"), eDictVariant);
    EXPECT_EQ(bag.GetParamType("u"), eDictInterface);
    EXPECT_EQ(Count(), 7);
    for (int i = 0; i < 7; ++i) EXPECT_EQ(bag.GetItem(i)->m_strDescription, "") << i;
}

TEST_F(IDictionaryTest, SettersChangeWhatIsThereAndKeepItsDescription) {
    bag.AddItem("i", eDictInt, "kept");
    EXPECT_EQ(shown->SetInt("i", 5), S_OK);
    EXPECT_EQ(shown->SetInt("i", 6), S_OK);
    EXPECT_EQ(shown->GetInt("i", &number), S_OK);
    EXPECT_EQ(number, 6);
    EXPECT_EQ(bag.FindItem("i")->m_strDescription, "kept");
    EXPECT_EQ(Count(), 1);
}

TEST_F(IDictionaryTest, SettersReplaceTheValueBefore) {
    EXPECT_EQ(shown->SetDouble("d", 1), S_OK);
    EXPECT_EQ(shown->SetDouble("d", 2), S_OK);
    EXPECT_EQ(shown->GetDouble("d", &real), S_OK);
    EXPECT_EQ(real, 2.0);
    EXPECT_EQ(shown->SetString("s", "a"), S_OK);
    EXPECT_EQ(shown->SetString("s", "b"), S_OK);
    EXPECT_EQ(shown->GetString("s", &string), S_OK);
    EXPECT_EQ(Taken(string), L"b");
    EXPECT_EQ(shown->Set("v", COleVariant(1)), S_OK);
    EXPECT_EQ(shown->Set("v", COleVariant(2.5)), S_OK);
    EXPECT_EQ(shown->Get("v", &variant), S_OK);
    EXPECT_EQ(variant.vt, VT_R8);
    EXPECT_EQ(variant.dblVal, 2.5);
    EXPECT_EQ(Count(), 3);
}

TEST_F(IDictionaryTest, SettersFailOnAnotherType) {
    const COleVariant five(5);
    bag.AddItem("i", eDictInt, "");
    bag.AddItem("s", eDictString, "");
    EXPECT_EQ(shown->SetInt("s", 5), kBad);
    EXPECT_EQ(shown->SetDouble("i", 5), kBad);
    EXPECT_EQ(shown->SetBool("i", 1), kBad);
    EXPECT_EQ(shown->Set3State("i", ZT3State::eTrue), kBad);
    EXPECT_EQ(shown->SetString("i", "5"), kBad);
    EXPECT_EQ(shown->Set("i", five), kBad);
    EXPECT_EQ(shown->SetInterface("i", &object), kBad);
    EXPECT_TRUE(bag.GetInt("i", number));
    EXPECT_EQ(number, 0);
    EXPECT_TRUE(bag.GetString("s", text));
    EXPECT_EQ(text, "");
    EXPECT_EQ(Count(), 2);
}

TEST_F(IDictionaryTest, SettersFailOnANullName) {
    const COleVariant five(5);
    EXPECT_EQ(shown->SetInt(nullptr, 5), kBad);
    EXPECT_EQ(shown->SetDouble(nullptr, 5), kBad);
    EXPECT_EQ(shown->SetBool(nullptr, 1), kBad);
    EXPECT_EQ(shown->Set3State(nullptr, ZT3State::eTrue), kBad);
    EXPECT_EQ(shown->SetString(nullptr, "5"), kBad);
    EXPECT_EQ(shown->SetString(nullptr, nullptr), kBad);
    EXPECT_EQ(shown->Set(nullptr, five), kBad);
    EXPECT_EQ(shown->Set(nullptr, nullptr), kBad);
    EXPECT_EQ(shown->SetInterface(nullptr, &object), kBad);
    EXPECT_EQ(shown->SetInterface(nullptr, nullptr), kBad);
    EXPECT_EQ(Count(), 0);
}

TEST_F(IDictionaryTest, NullValuesChangeNothing) {
    EXPECT_EQ(shown->SetString("absent", nullptr), S_OK);
    EXPECT_EQ(shown->Set("absent", nullptr), S_OK);
    EXPECT_EQ(shown->SetInterface("absent", nullptr), S_OK);
    EXPECT_EQ(Count(), 0);
    shown->SetString("s", "text");
    shown->Set("v", COleVariant(5));
    shown->SetInterface("u", &object);
    EXPECT_EQ(shown->SetString("s", nullptr), S_OK);
    EXPECT_EQ(shown->Set("v", nullptr), S_OK);
    EXPECT_EQ(shown->SetInterface("u", nullptr), S_OK);
    EXPECT_EQ(shown->GetString("s", &string), S_OK);
    EXPECT_EQ(Taken(string), L"text");
    EXPECT_EQ(shown->Get("v", &variant), S_OK);
    EXPECT_EQ(variant.lVal, 5);
    EXPECT_EQ(shown->GetInterface("u", &pointer), S_OK);
    EXPECT_EQ(pointer, &object);
    // A null value also comes before the type of the entry.
    EXPECT_EQ(shown->SetString("u", nullptr), S_OK);
    EXPECT_EQ(shown->Set("s", nullptr), S_OK);
    EXPECT_EQ(shown->SetInterface("v", nullptr), S_OK);
}

TEST_F(IDictionaryTest, GettersFailOnWhatIsAbsentOrOfAnotherType) {
    bag.AddItem("i", eDictInt, "");
    bag.AddItem("v", eDictVariant, "");
    for (const char* name : {"absent", "v", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(shown->GetInt(name, &number), kBad);
        EXPECT_EQ(shown->GetDouble(name, &real), kBad);
        EXPECT_EQ(shown->GetBool(name, &truth), kBad);
        EXPECT_EQ(shown->Get3State(name, &number), kBad);
    }
    for (const char* name : {"absent", "i", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(shown->Get(name, &variant), kBad);
    }
    for (const char* name : {"i", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(shown->GetString(name, &string), kBad);
    }
    EXPECT_EQ(shown->GetInterface(nullptr, &pointer), kBad);
    EXPECT_EQ(number, 77);
    EXPECT_EQ(real, 77.5);
    EXPECT_EQ(truth, 77);
    EXPECT_EQ(string, nullptr);
    EXPECT_EQ(variant.vt, VT_EMPTY);
    EXPECT_EQ(pointer, &other);
    EXPECT_EQ(Count(), 2);
}

TEST_F(IDictionaryTest, NullOutputsGiveSuccess) {
    bag.AddItem("i", eDictInt, "");
    for (const char* name : {"i", "absent"}) {
        EXPECT_EQ(shown->GetInt(name, nullptr), S_OK);
        EXPECT_EQ(shown->GetDouble(name, nullptr), S_OK);
        EXPECT_EQ(shown->GetBool(name, nullptr), S_OK);
        EXPECT_EQ(shown->Get3State(name, nullptr), S_OK);
        EXPECT_EQ(shown->GetString(name, nullptr), S_OK);
        EXPECT_EQ(shown->Get(name, nullptr), S_OK);
        EXPECT_EQ(shown->GetInterface(name, nullptr), S_OK);
    }
    EXPECT_EQ(Count(), 1);
}

TEST_F(IDictionaryTest, SomeTestTheNameBeforeTheOutput) {
    EXPECT_EQ(shown->GetInt(nullptr, nullptr), kBad);
    EXPECT_EQ(shown->GetDouble(nullptr, nullptr), kBad);
    EXPECT_EQ(shown->GetString(nullptr, nullptr), kBad);
    EXPECT_EQ(shown->Get(nullptr, nullptr), kBad);
    EXPECT_EQ(shown->GetInterface(nullptr, nullptr), kBad);
    EXPECT_EQ(shown->GetBool(nullptr, nullptr), S_OK);
    EXPECT_EQ(shown->Get3State(nullptr, nullptr), S_OK);
}

TEST_F(IDictionaryTest, BoolsAreAllBitsOrNone) {
    for (const int value : {1, -1, 2, 0x100}) {
        EXPECT_EQ(shown->SetBool("b", static_cast<VARIANT_BOOL>(value)), S_OK);
        EXPECT_EQ(shown->GetBool("b", &truth), S_OK);
        EXPECT_EQ(truth, -1);
    }
    EXPECT_EQ(shown->SetBool("b", 0), S_OK);
    EXPECT_EQ(shown->GetBool("b", &truth), S_OK);
    EXPECT_EQ(truth, 0);
}

TEST_F(IDictionaryTest, StatesReadAsOneOfThree) {
    const int read[][2] = {{-1, -1}, {0, 0}, {1, 1}, {2, 0}, {-2, 0}};
    for (const auto& [stored, expected] : read) {
        EXPECT_EQ(shown->Set3State("t", static_cast<ZT3State>(stored)), S_OK);
        EXPECT_EQ(shown->Get3State("t", &number), S_OK);
        EXPECT_EQ(number, expected) << stored;
        const auto* item = static_cast<DictionaryZT::ItemBasic*>(bag.FindItem("t"));
        EXPECT_EQ(static_cast<int>(item->m_value.stateValue), stored);
    }
}

TEST_F(IDictionaryTest, ReadingATextDeclaresIt) {
    EXPECT_EQ(shown->GetString("new", &string), S_OK);
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(Taken(string), L"");
    EXPECT_TRUE(bag.IsIn("new"));
    EXPECT_EQ(bag.GetParamType("new"), eDictString);
    EXPECT_EQ(shown->GetParamDescription("new", &string), S_OK);
    EXPECT_EQ(Taken(string), L"");
    EXPECT_EQ(shown->GetString("new", nullptr), S_OK);
    EXPECT_EQ(shown->GetString("other", nullptr), S_OK);
    EXPECT_EQ(Count(), 1);
}

TEST_F(IDictionaryTest, TextsCrossAsWideStrings) {
    EXPECT_EQ(shown->SetString("s", "a\xC3\xA9\xF0\x9F\x94\xA9"), S_OK);
    EXPECT_EQ(shown->GetString("s", &string), S_OK);
    EXPECT_EQ(Taken(string), L"a\u00E9\U0001F529");
    EXPECT_TRUE(bag.GetString("s", text));
    EXPECT_EQ(text, "a\xC3\xA9\xF0\x9F\x94\xA9");
}

TEST_F(IDictionaryTest, VariantsThatOwnNothingComeBackWhole) {
    COleVariant raw;
    raw.vt = VT_BYREF;
    raw.byref = &number;
    for (const COleVariant& value :
         {COleVariant(), COleVariant(5), COleVariant(2.5), COleVariant(true), COleVariant(5L),
          COleVariant(static_cast<BYTE>(200)), raw}) {
        EXPECT_EQ(shown->Set("v", value), S_OK);
        VARIANT out;
        std::memset(static_cast<void*>(&out), 0xAB, sizeof out);
        EXPECT_EQ(shown->Get("v", &out), S_OK);
        EXPECT_TRUE(value == out) << out.vt;
    }
}

TEST_F(IDictionaryTest, VariantsThatOwnSomethingComeBackAsBitsOfACopyThatEnded) {
    EXPECT_EQ(shown->Set("v", COleVariant(static_cast<IUnknown*>(&object))), S_OK);
    EXPECT_EQ(object.count, 2u);
    EXPECT_EQ(shown->Get("v", &variant), S_OK);
    EXPECT_EQ(variant.vt, VT_UNKNOWN);
    EXPECT_EQ(variant.punkVal, &object);
    EXPECT_EQ(object.count, 2u);

    const COleVariant wide("text");
    EXPECT_EQ(shown->Set("v", wide), S_OK);
    EXPECT_EQ(object.count, 1u);
    EXPECT_EQ(shown->Get("v", &variant), S_OK);
    EXPECT_EQ(variant.vt, VT_BSTR);
    EXPECT_NE(variant.bstrVal, nullptr);
    const auto* item = static_cast<DictionaryZT::ItemVariant*>(bag.FindItem("v"));
    EXPECT_NE(variant.bstrVal, item->m_value.bstrVal);
    EXPECT_TRUE(item->m_value == wide);
}

TEST_F(IDictionaryTest, ReadingAVariantDoesNotEndWhatTheOutputHeld) {
    variant.vt = VT_UNKNOWN;
    variant.punkVal = &object;
    shown->Set("v", COleVariant(5));
    EXPECT_EQ(shown->Get("v", &variant), S_OK);
    EXPECT_EQ(object.count, 1u);
}

TEST_F(IDictionaryTest, AVariantThatCannotBeCopiedRaises) {
    variant.vt = 15;
    EXPECT_TRUE(Raises<COleException>([&] { shown->Set("v", &variant); }));
    EXPECT_EQ(bag.GetParamType("v"), eDictVariant);
}

TEST_F(IDictionaryTest, InterfacesAreNeverCounted) {
    EXPECT_EQ(shown->SetInterface("u", &other), S_OK);
    EXPECT_EQ(shown->SetInterface("u", &object), S_OK);
    EXPECT_EQ(shown->GetInterface("u", &pointer), S_OK);
    EXPECT_EQ(pointer, &object);
    EXPECT_EQ(object.count, 1u);
    EXPECT_EQ(other.count, 1u);
}

TEST_F(IDictionaryTest, AnInterfaceThatIsNullIsReadAsSuch) {
    bag.AddItem("u", eDictInterface, "");
    EXPECT_EQ(shown->GetInterface("u", &pointer), S_OK);
    EXPECT_EQ(pointer, nullptr);
}

TEST_F(IDictionaryTest, ReadingAnInterfaceThatIsNotThereSucceeds) {
    bag.AddItem("i", eDictInt, "");
    for (const char* name : {"absent", "i"}) {
        EXPECT_EQ(shown->GetInterface(name, &pointer), S_OK);
        EXPECT_EQ(pointer, &other);
    }
    EXPECT_EQ(Count(), 1);
}

}  // namespace
}  // namespace ZT
