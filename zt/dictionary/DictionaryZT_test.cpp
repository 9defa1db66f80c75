#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/CountedObject.h>
#include <zt/dictionary/DictionaryZT.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <vector>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;
using testing_support::CountedObject;

struct Open : DictionaryZT {
    using DictionaryZT::DictionaryZT;
    using DictionaryZT::m_bOption;
    using DictionaryZT::m_bRefByVal;
    using DictionaryZT::m_map;
    using DictionaryZT::m_xDictionary_ZT;

    static constexpr std::size_t PartOffset() { return offsetof(Open, m_xDictionary_ZT); }
    static constexpr std::size_t MapOffset() { return offsetof(Open, m_map); }
    static constexpr std::size_t OptionOffset() { return offsetof(Open, m_bOption); }
};

// A map with its block size open.
struct OpenMap : CMapStringToPtr {
    static constexpr auto kBlock = &OpenMap::m_nBlockSize;
};

EDictionaryType_ZT Type(int number) {
    return static_cast<EDictionaryType_ZT>(number);
}

constexpr EDictionaryType_ZT kTypes[] = {eDictInt,    eDictDouble,  eDictBool,     eDict3State,
                                         eDictString, eDictVariant, eDictInterface};

// An entry of every type, named by it.
struct DictionaryZTTest : testing::Test {
    DictionaryZTTest() {
        bag.AddItem("int", eDictInt, "an int");
        bag.AddItem("double", eDictDouble, "a double");
        bag.AddItem("bool", eDictBool, "a bool");
        bag.AddItem("3state", eDict3State, "a state");
        bag.AddItem("string", eDictString, "a string");
        bag.AddItem("variant", eDictVariant, "a variant");
        bag.AddItem("interface", eDictInterface, "an interface");
    }

    // The names of which `get` is true, of all entries, an absent one and null.
    template <class Operation>
    static std::set<std::string> NamesThat(Operation get) {
        std::set<std::string> names;
        for (const char* name : {"int", "double", "bool", "3state", "string", "variant",
                                 "interface", "absent", "Int", "INT"}) {
            if (get(name)) names.insert(name);
        }
        if (get(nullptr)) names.insert("(null)");
        return names;
    }

    // The traversal order.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (int i = 0; i < bag.GetParamCount(eDictNone); ++i) {
            names.emplace_back(bag.GetParamName(i).GetString());
        }
        return names;
    }

    Open bag;
    int number = 77;
    double real = 77.5;
    bool truth = true;
    ZT3State state = ZT3State::eUnknown;
    CString text = "before";
    COleVariant variant = 77;
    CountedObject object, other;
    IUnknown* pointer = &other;
};

TEST_F(DictionaryZTTest, TypesHaveTheirFixedNumbers) {
    EXPECT_EQ(sizeof(EDictionaryType_ZT), 4u);
    EXPECT_EQ(eDictNone, 0);
    EXPECT_EQ(eDictInt, 1);
    EXPECT_EQ(eDictDouble, 2);
    EXPECT_EQ(eDictBool, 3);
    EXPECT_EQ(eDict3State, 4);
    EXPECT_EQ(eDictString, 5);
    EXPECT_EQ(eDictVariant, 6);
    EXPECT_EQ(eDictInterface, 7);
    static_assert(std::is_same_v<ZT::EDictionaryType_ZT, ::EDictionaryType_ZT>);
}

TEST_F(DictionaryZTTest, FieldsFollowTheRoot) {
    EXPECT_EQ(Open::PartOffset(), sizeof(RefObj));
    EXPECT_EQ(Open::MapOffset(), Open::PartOffset() + sizeof(void*));
    EXPECT_EQ(Open::OptionOffset(), Open::MapOffset() + sizeof(CMapStringToPtr));
    EXPECT_EQ(sizeof(DictionaryZT), Open::OptionOffset() + 8);
    static_assert(std::is_same_v<decltype(Open::m_map), CMapStringToPtr>);
    static_assert(!std::is_copy_constructible_v<DictionaryZT>);
}

// Items with open distances between their fields.
struct OpenBasic : DictionaryZT::ItemBasic {
    static constexpr std::size_t TypeOffset() { return offsetof(OpenBasic, m_type); }
    static constexpr std::size_t DescriptionOffset() {
        return offsetof(OpenBasic, m_strDescription);
    }
    static constexpr std::size_t ValueOffset() { return offsetof(OpenBasic, m_value); }
};

TEST_F(DictionaryZTTest, FieldsOfItemsStandInTheirOrder) {
    EXPECT_EQ(OpenBasic::TypeOffset(), 8u);
    EXPECT_EQ(OpenBasic::DescriptionOffset(), 16u);
    EXPECT_EQ(sizeof(DictionaryZT::Item), 16 + sizeof(CString));
    EXPECT_EQ(OpenBasic::ValueOffset(), sizeof(DictionaryZT::Item));
    EXPECT_EQ(sizeof(DictionaryZT::ItemBasic::m_value), 8u);
    EXPECT_EQ(sizeof(DictionaryZT::ItemBasic), sizeof(DictionaryZT::Item) + 8);
    EXPECT_EQ(sizeof(DictionaryZT::ItemString), sizeof(DictionaryZT::Item) + sizeof(CString));
    EXPECT_EQ(sizeof(DictionaryZT::ItemVariant), sizeof(DictionaryZT::Item) + sizeof(COleVariant));
    EXPECT_EQ(sizeof(DictionaryZT::ItemInterface), sizeof(DictionaryZT::Item) + 8);
    static_assert(std::has_virtual_destructor_v<DictionaryZT::Item>);
}

TEST_F(DictionaryZTTest, OperationsStandInTheOrderOfTheRoot) {
    void* found = nullptr;
    EXPECT_EQ(
        (CallSlot<HRESULT, const GUID*, void**>(&bag, kSlotFirstOwn, &IID_IDictionary_ZT, &found)),
        S_OK);
    EXPECT_EQ(found, &bag.m_xDictionary_ZT);
    EXPECT_EQ(CallSlot<ulong>(&bag, kSlotFirstOwn + 1), 1u);
    EXPECT_EQ(CallSlot<ulong>(&bag, kSlotFirstOwn + 2), 2u);
}

TEST_F(DictionaryZTTest, StartsEmptyWithTheOptionAndOneReference) {
    const Open plain;
    EXPECT_EQ(plain.GetParamCount(eDictNone), 0);
    EXPECT_TRUE(plain.m_bOption);
    EXPECT_FALSE(plain.m_bRefByVal);
    EXPECT_EQ(plain.GetRef(), 1u);
    EXPECT_TRUE(plain.m_map.IsEmpty());
    EXPECT_EQ(plain.m_map.*OpenMap::kBlock, 10);
}

TEST_F(DictionaryZTTest, TakesOptionAndModeByTheConstructor) {
    const Open counted(false, false);
    EXPECT_FALSE(counted.m_bOption);
    EXPECT_FALSE(counted.m_bRefByVal);
    EXPECT_EQ(counted.GetRef(), 1u);
    EXPECT_EQ(counted.m_map.*OpenMap::kBlock, 10);
    Open byValue(true, true);
    EXPECT_TRUE(byValue.m_bOption);
    EXPECT_TRUE(byValue.m_bRefByVal);
    EXPECT_EQ(byValue.GetRef(), 0u);
    byValue.AddRef();
    EXPECT_EQ(byValue.Release(), 0u);
    EXPECT_TRUE(byValue.AddItem("still here", eDictInt, ""));
}

TEST_F(DictionaryZTTest, LastReleaseEndsDictionaryAndItems) {
    auto* counted = new DictionaryZT();
    counted->AddItem("v", eDictVariant, "");
    counted->Set("v", COleVariant(static_cast<IUnknown*>(&object)));
    EXPECT_EQ(object.count, 2u);
    EXPECT_EQ(counted->AddRef(), 2u);
    EXPECT_EQ(counted->Release(), 1u);
    EXPECT_EQ(object.count, 2u);
    EXPECT_EQ(counted->Release(), 0u);
    EXPECT_EQ(object.count, 1u);
}

TEST_F(DictionaryZTTest, QueryGivesThePartWithAReference) {
    for (const IID& id : {IID_IDictionary_ZT, IID_IUnknown}) {
        void* found = nullptr;
        EXPECT_EQ(bag.QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, static_cast<IDictionary_ZT*>(&bag.m_xDictionary_ZT));
    }
    EXPECT_EQ(bag.GetRef(), 3u);
}

TEST_F(DictionaryZTTest, NativeQueryGivesTheObjectWithoutAReference) {
    void* found = nullptr;
    EXPECT_EQ(bag.QueryInterface(IID_NativeObject, &found), S_OK);
    EXPECT_EQ(static_cast<DictionaryZT*>(found), &bag);
    EXPECT_EQ(bag.GetRef(), 1u);
    found = nullptr;
    EXPECT_EQ(bag.m_xDictionary_ZT.QueryInterface(IID_NativeObject, &found), S_OK);
    EXPECT_EQ(static_cast<DictionaryZT*>(found), &bag);
    EXPECT_EQ(bag.GetRef(), 1u);
}

TEST_F(DictionaryZTTest, OtherQueriesFail) {
    void* found = &bag;
    EXPECT_EQ(bag.QueryInterface(IID_IList64, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    for (const IID& id : {IID_IDictionary_ZT, IID_IUnknown, IID_NativeObject, IID_IList64}) {
        EXPECT_EQ(bag.QueryInterface(id, nullptr), DISP_E_PARAMNOTOPTIONAL);
    }
    EXPECT_EQ(bag.GetRef(), 1u);
}

TEST_F(DictionaryZTTest, AddingEntersANameOnce) {
    DictionaryZT fresh;
    EXPECT_TRUE(fresh.AddItem("a", eDictInt, "d"));
    EXPECT_TRUE(fresh.SetInt("a", 5));
    EXPECT_FALSE(fresh.AddItem("a", eDictInt, "other"));
    EXPECT_FALSE(fresh.AddItem("a", eDictString, "other"));
    EXPECT_EQ(fresh.GetParamCount(eDictNone), 1);
    EXPECT_EQ(fresh.FindItem("a")->m_strDescription, "d");
    EXPECT_TRUE(fresh.GetInt("a", number));
    EXPECT_EQ(number, 5);
}

TEST_F(DictionaryZTTest, AddingNeedsANameAndAType) {
    DictionaryZT fresh;
    EXPECT_FALSE(fresh.AddItem(nullptr, eDictInt, "d"));
    EXPECT_FALSE(fresh.AddItem("b", eDictNone, "d"));
    EXPECT_EQ(fresh.GetParamCount(eDictNone), 0);
    EXPECT_TRUE(fresh.AddItem("", eDictInt, nullptr));
    EXPECT_TRUE(fresh.IsIn(""));
    EXPECT_TRUE(fresh.FindItem("")->m_strDescription.IsEmpty());
}

TEST_F(DictionaryZTTest, NamesAreExactAndOfAnyLength) {
    const std::string longName(100000, 'x');
    EXPECT_TRUE(bag.AddItem("Int", eDictDouble, ""));
    EXPECT_TRUE(bag.AddItem(" int", eDictBool, ""));
    EXPECT_TRUE(bag.AddItem(longName.c_str(), eDictString, ""));
    EXPECT_EQ(bag.GetParamType("int"), eDictInt);
    EXPECT_EQ(bag.GetParamType("Int"), eDictDouble);
    EXPECT_EQ(bag.GetParamType(" int"), eDictBool);
    EXPECT_EQ(bag.GetParamType(longName.c_str()), eDictString);
    EXPECT_EQ(bag.GetParamType(longName.substr(1).c_str()), eDictNone);
}

TEST_F(DictionaryZTTest, NumbersThatAreNoTypeMakeBasicItems) {
    for (const int type : {-1, 8, 1000}) {
        const std::string name = std::to_string(type);
        EXPECT_TRUE(bag.AddItem(name.c_str(), Type(type), "d")) << type;
        EXPECT_NE(dynamic_cast<DictionaryZT::ItemBasic*>(bag.FindItem(name.c_str())), nullptr);
        EXPECT_EQ(bag.GetParamType(name.c_str()), type);
        EXPECT_EQ(bag.GetParamCount(Type(type)), 1);
        EXPECT_FALSE(bag.GetInt(name.c_str(), number));
        EXPECT_FALSE(bag.SetInt(name.c_str(), 1));
    }
}

TEST_F(DictionaryZTTest, NewItemsHaveTheClassOfTheirType) {
    const auto basic = [](int type) {
        const std::unique_ptr<DictionaryZT::Item> item(DictionaryZT::CreateNewItem(Type(type)));
        EXPECT_EQ(item->m_type, type);
        EXPECT_TRUE(item->m_strDescription.IsEmpty());
        const auto* made = dynamic_cast<DictionaryZT::ItemBasic*>(item.get());
        return made != nullptr && made->m_value.intValue == 0 && !made->m_value.boolValue &&
               made->m_value.doubleValue == 0 && made->m_value.stateValue == ZT3State::eFalse;
    };
    for (const int type : {0, 1, 2, 3, 4, 8, -1}) EXPECT_TRUE(basic(type)) << type;

    const std::unique_ptr<DictionaryZT::Item> string(DictionaryZT::CreateNewItem(eDictString));
    EXPECT_EQ(string->m_type, eDictString);
    ASSERT_NE(dynamic_cast<DictionaryZT::ItemString*>(string.get()), nullptr);
    EXPECT_TRUE(static_cast<DictionaryZT::ItemString&>(*string).m_value.IsEmpty());

    const std::unique_ptr<DictionaryZT::Item> holder(DictionaryZT::CreateNewItem(eDictVariant));
    EXPECT_EQ(holder->m_type, eDictVariant);
    ASSERT_NE(dynamic_cast<DictionaryZT::ItemVariant*>(holder.get()), nullptr);
    EXPECT_EQ(static_cast<DictionaryZT::ItemVariant&>(*holder).m_value.vt, VT_EMPTY);

    const std::unique_ptr<DictionaryZT::Item> unknown(DictionaryZT::CreateNewItem(eDictInterface));
    EXPECT_EQ(unknown->m_type, eDictInterface);
    ASSERT_NE(dynamic_cast<DictionaryZT::ItemInterface*>(unknown.get()), nullptr);
    EXPECT_EQ(static_cast<DictionaryZT::ItemInterface&>(*unknown).m_pUnknown, nullptr);
}

TEST_F(DictionaryZTTest, DeclaredEntriesStartCleared) {
    EXPECT_TRUE(bag.GetInt("int", number));
    EXPECT_EQ(number, 0);
    EXPECT_TRUE(bag.GetDouble("double", real));
    EXPECT_EQ(real, 0.0);
    EXPECT_TRUE(bag.GetBool("bool", truth));
    EXPECT_FALSE(truth);
    EXPECT_TRUE(bag.Get3State("3state", state));
    EXPECT_EQ(state, ZT3State::eFalse);
    EXPECT_TRUE(bag.GetString("string", text));
    EXPECT_EQ(text, "");
    EXPECT_TRUE(bag.Get("variant", variant));
    EXPECT_EQ(variant.vt, VT_EMPTY);
    EXPECT_TRUE(bag.GetInterface("interface", pointer));
    EXPECT_EQ(pointer, nullptr);
}

TEST_F(DictionaryZTTest, FindsOnlyNamesThatAreIn) {
    EXPECT_EQ(NamesThat([&](const char* name) { return bag.IsIn(name); }),
              NamesThat([&](const char* name) { return bag.FindItem(name) != nullptr; }));
    EXPECT_THAT(
        NamesThat([&](const char* name) { return bag.IsIn(name); }),
        UnorderedElementsAre("int", "double", "bool", "3state", "string", "variant", "interface"));
}

TEST_F(DictionaryZTTest, IndicesFollowTheWalkOfTheTable) {
    const std::vector<std::string> names = Names();
    EXPECT_THAT(names, UnorderedElementsAre("int", "double", "bool", "3state", "string", "variant",
                                            "interface"));
    POSITION position = bag.m_map.GetStartPosition();
    for (int i = 0; i < 7; ++i) {
        CString key;
        void* value = nullptr;
        bag.m_map.GetNextAssoc(position, key, value);
        EXPECT_EQ(bag.GetParamName(i), key);
        EXPECT_EQ(bag.GetItem(i), static_cast<DictionaryZT::Item*>(value));
        EXPECT_EQ(bag.GetItem(i), bag.FindItem(key));
    }
    for (const int outside :
         {-1, 7, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(bag.GetItem(outside), nullptr) << outside;
        EXPECT_EQ(bag.GetParamName(outside), "") << outside;
    }
    EXPECT_EQ(DictionaryZT().GetItem(0), nullptr);
}

TEST_F(DictionaryZTTest, CountsByType) {
    EXPECT_EQ(bag.GetParamCount(eDictNone), 7);
    for (const EDictionaryType_ZT type : kTypes) EXPECT_EQ(bag.GetParamCount(type), 1) << type;
    bag.AddItem("second", eDict3State, "");
    EXPECT_EQ(bag.GetParamCount(eDict3State), 2);
    EXPECT_EQ(bag.GetParamCount(eDictNone), 8);
    EXPECT_EQ(bag.GetParamCount(Type(8)), 0);
}

TEST_F(DictionaryZTTest, TypeOfAName) {
    EXPECT_EQ(bag.GetParamType("int"), eDictInt);
    EXPECT_EQ(bag.GetParamType("double"), eDictDouble);
    EXPECT_EQ(bag.GetParamType("bool"), eDictBool);
    EXPECT_EQ(bag.GetParamType("3state"), eDict3State);
    EXPECT_EQ(bag.GetParamType("string"), eDictString);
    EXPECT_EQ(bag.GetParamType("variant"), eDictVariant);
    EXPECT_EQ(bag.GetParamType("interface"), eDictInterface);
    EXPECT_EQ(bag.GetParamType("absent"), eDictNone);
    EXPECT_EQ(bag.GetParamType(nullptr), eDictNone);
}

TEST_F(DictionaryZTTest, OnlyStringsTellTheirDescription) {
    EXPECT_TRUE(bag.GetParamDescription("string", text));
    EXPECT_EQ(text, "a string");
    text = "before";
    EXPECT_THAT(NamesThat([&](const char* name) {
                    CString description;
                    return bag.GetParamDescription(name, description);
                }),
                ElementsAre("string"));
    EXPECT_FALSE(bag.GetParamDescription("int", text));
    EXPECT_EQ(text, "before");
    EXPECT_EQ(bag.FindItem("int")->m_strDescription, "an int");
}

TEST_F(DictionaryZTTest, NumbersOfCountedTypes) {
    for (const int type : {1, 2, 3, 5, 6, 7}) EXPECT_EQ(DictionaryZT::IntToType(type), type);
    for (const int type :
         {0, 4, 8, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(DictionaryZT::IntToType(type), eDictNone) << type;
    }
}

TEST_F(DictionaryZTTest, ValuesAreReadByTheirOwnType) {
    const auto only = [](const char* name) { return ElementsAre(name); };
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.GetInt(n, number); }), only("int"));
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.GetDouble(n, real); }), only("double"));
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.GetBool(n, truth); }), only("bool"));
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.Get3State(n, state); }), only("3state"));
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.GetString(n, text); }), only("string"));
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.Get(n, variant); }), only("variant"));
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.GetInterface(n, pointer); }),
                only("interface"));
}

TEST_F(DictionaryZTTest, ValuesAreWrittenByTheirOwnTypeAndDeclareNothing) {
    const auto only = [](const char* name) { return ElementsAre(name); };
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.SetInt(n, 1); }), only("int"));
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.SetDouble(n, 1); }), only("double"));
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.SetBool(n, true); }), only("bool"));
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.Set3State(n, ZT3State::eTrue); }),
                only("3state"));
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.SetString(n, "x"); }), only("string"));
    EXPECT_THAT(NamesThat([&](const char* n) { return bag.Set(n, variant); }), only("variant"));
    EXPECT_EQ(bag.GetParamCount(eDictNone), 7);
}

TEST_F(DictionaryZTTest, FailedReadsLeaveTheOutput) {
    EXPECT_FALSE(bag.GetInt("double", number));
    EXPECT_EQ(number, 77);
    EXPECT_FALSE(bag.GetDouble("int", real));
    EXPECT_EQ(real, 77.5);
    EXPECT_FALSE(bag.GetBool("int", truth));
    EXPECT_TRUE(truth);
    EXPECT_FALSE(bag.Get3State("bool", state));
    EXPECT_EQ(state, ZT3State::eUnknown);
    EXPECT_FALSE(bag.GetString("variant", text));
    EXPECT_EQ(text, "before");
    EXPECT_FALSE(bag.Get("string", variant));
    EXPECT_EQ(variant.lVal, 77);
    EXPECT_FALSE(bag.GetInterface("variant", pointer));
    EXPECT_EQ(pointer, &other);
}

TEST_F(DictionaryZTTest, NumbersComeBackAsTheyWent) {
    for (const int value :
         {0, 1, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_TRUE(bag.SetInt("int", value));
        EXPECT_TRUE(bag.GetInt("int", number));
        EXPECT_EQ(number, value);
    }
    for (const double value : {0.1, -1e307, 5e-324, std::numeric_limits<double>::infinity()}) {
        EXPECT_TRUE(bag.SetDouble("double", value));
        EXPECT_TRUE(bag.GetDouble("double", real));
        EXPECT_EQ(real, value);
    }
    bag.SetDouble("double", -0.0);
    bag.GetDouble("double", real);
    EXPECT_TRUE(std::signbit(real));
    for (const bool value : {true, false}) {
        EXPECT_TRUE(bag.SetBool("bool", value));
        EXPECT_TRUE(bag.GetBool("bool", truth));
        EXPECT_EQ(truth, value);
    }
}

TEST_F(DictionaryZTTest, StatesAreStoredAsTheyComeAndReadAsOneOfThree) {
    const std::map<int, int> read = {{-1, -1}, {0, 0}, {1, 1}, {2, 0}, {-2, 0}, {1000, 0}};
    for (const auto& [stored, expected] : read) {
        EXPECT_TRUE(bag.Set3State("3state", static_cast<ZT3State>(stored)));
        const auto* item = static_cast<DictionaryZT::ItemBasic*>(bag.FindItem("3state"));
        EXPECT_EQ(static_cast<int>(item->m_value.stateValue), stored);
        EXPECT_TRUE(bag.Get3State("3state", state));
        EXPECT_EQ(static_cast<int>(state), expected) << stored;
    }
}

TEST_F(DictionaryZTTest, TextsAndVariantsAreCopies) {
    CString source("value");
    EXPECT_TRUE(bag.SetString("string", source));
    source = "changed";
    EXPECT_TRUE(bag.GetString("string", text));
    EXPECT_EQ(text, "value");

    COleVariant wide("value");
    EXPECT_TRUE(bag.Set("variant", wide));
    EXPECT_TRUE(bag.Get("variant", variant));
    EXPECT_NE(variant.bstrVal, wide.bstrVal);
    EXPECT_TRUE(variant == wide);
    wide = 5;
    EXPECT_TRUE(bag.Get("variant", variant));
    EXPECT_STREQ(variant.bstrVal, L"value");
}

TEST_F(DictionaryZTTest, VariantsOfInterfacesAreCounted) {
    EXPECT_TRUE(bag.Set("variant", COleVariant(static_cast<IUnknown*>(&object))));
    EXPECT_EQ(object.count, 2u);
    EXPECT_TRUE(bag.Get("variant", variant));
    EXPECT_EQ(object.count, 3u);
    EXPECT_TRUE(bag.Set("variant", COleVariant(1)));
    EXPECT_EQ(object.count, 2u);
}

TEST_F(DictionaryZTTest, OptionsTellUnsetFromRefused) {
    EXPECT_EQ(bag.GetBool3("absent"), eUnknown);
    EXPECT_EQ(bag.GetBool3("int"), eUnknown);
    EXPECT_EQ(bag.GetBool3("3state"), eUnknown);
    EXPECT_EQ(bag.GetBool3(nullptr), eUnknown);
    EXPECT_EQ(bag.GetBool3("bool"), eFalse);
    EXPECT_FALSE(bag.GetBool2("absent"));
    EXPECT_FALSE(bag.GetBool2("int"));
    EXPECT_FALSE(bag.GetBool2(nullptr));
    EXPECT_FALSE(bag.GetBool2("bool"));
    bag.SetBool("bool", true);
    EXPECT_EQ(bag.GetBool3("bool"), eTrue);
    EXPECT_TRUE(bag.GetBool2("bool"));
}

TEST_F(DictionaryZTTest, SettingAnOptionDeclaresIt) {
    bag.SetBool2("new", true);
    EXPECT_EQ(bag.GetBool3("new"), eTrue);
    EXPECT_EQ(bag.FindItem("new")->m_strDescription, "");
    bag.SetBool2("new", false);
    EXPECT_EQ(bag.GetBool3("new"), eFalse);
    EXPECT_EQ(bag.GetParamCount(eDictNone), 8);
    bag.SetBool2("bool", true);
    EXPECT_EQ(bag.FindItem("bool")->m_strDescription, "a bool");
    bag.SetInt("int", 5);
    bag.SetBool2("int", true);
    bag.SetBool2(nullptr, true);
    EXPECT_TRUE(bag.GetInt("int", number));
    EXPECT_EQ(number, 5);
    EXPECT_EQ(bag.GetParamCount(eDictNone), 8);
}

TEST_F(DictionaryZTTest, InterfacesAreNeverCounted) {
    bag.SetInterface("new", &object);
    EXPECT_EQ(bag.GetParamType("new"), eDictInterface);
    EXPECT_EQ(bag.FindItem("new")->m_strDescription, "");
    bag.SetInterface("new", &other);
    EXPECT_TRUE(bag.GetInterface("new", pointer));
    EXPECT_EQ(pointer, &other);
    bag.SetInterface("new", nullptr);
    EXPECT_TRUE(bag.GetInterface("new", pointer));
    EXPECT_EQ(pointer, nullptr);
    bag.SetInterface("new", &object);
    bag.SetInterface("int", &object);
    bag.SetInterface(nullptr, &object);
    EXPECT_EQ(bag.GetParamType("int"), eDictInt);
    EXPECT_EQ(bag.GetParamCount(eDictNone), 8);
    bag.Clear();
    EXPECT_EQ(object.count, 1u);
    EXPECT_EQ(other.count, 1u);
}

TEST_F(DictionaryZTTest, PointersLieInVariants) {
    EXPECT_TRUE(bag.SetPointer("p", &number));
    EXPECT_EQ(bag.GetPointer("p"), &number);
    EXPECT_EQ(bag.GetParamType("p"), eDictVariant);
    EXPECT_EQ(bag.FindItem("p")->m_strDescription, "");
    EXPECT_TRUE(bag.Get("p", variant));
    EXPECT_EQ(variant.vt, 0x4000);
    EXPECT_EQ(variant.byref, &number);
    EXPECT_TRUE(bag.SetPointer("p", nullptr));
    EXPECT_EQ(bag.GetPointer("p"), nullptr);
    EXPECT_TRUE(bag.SetPointer("variant", &real));
    EXPECT_EQ(bag.GetPointer("variant"), &real);
    EXPECT_EQ(bag.GetParamCount(eDictNone), 8);
    EXPECT_FALSE(bag.SetPointer("int", &number));
    EXPECT_FALSE(bag.SetPointer(nullptr, &number));
    EXPECT_EQ(bag.GetParamCount(eDictNone), 8);
}

TEST_F(DictionaryZTTest, PointersComeOnlyOutOfTheirTypeWord) {
    EXPECT_EQ(bag.GetPointer("variant"), nullptr);
    EXPECT_EQ(bag.GetPointer("int"), nullptr);
    EXPECT_EQ(bag.GetPointer("absent"), nullptr);
    EXPECT_EQ(bag.GetPointer(nullptr), nullptr);
    COleVariant reference;
    reference.vt = VT_BYREF | VT_I4;
    reference.plVal = &number;
    bag.Set("variant", reference);
    EXPECT_EQ(bag.GetPointer("variant"), nullptr);
    reference.vt = VT_BYREF;
    bag.Set("variant", reference);
    EXPECT_EQ(bag.GetPointer("variant"), &number);
}

TEST_F(DictionaryZTTest, PointersOverwriteAVariantWithoutEndingIt) {
    bag.Set("variant", COleVariant(static_cast<IUnknown*>(&object)));
    EXPECT_EQ(object.count, 2u);
    EXPECT_TRUE(bag.SetPointer("variant", &number));
    EXPECT_EQ(object.count, 2u);
    bag.Clear();
    EXPECT_EQ(object.count, 2u);
}

TEST_F(DictionaryZTTest, ClearEndsItemsAndFreesNames) {
    bag.Set("variant", COleVariant(static_cast<IUnknown*>(&object)));
    bag.Clear();
    EXPECT_EQ(object.count, 1u);
    EXPECT_EQ(bag.GetParamCount(eDictNone), 0);
    EXPECT_FALSE(bag.IsIn("int"));
    EXPECT_TRUE(bag.AddItem("int", eDictString, ""));
    EXPECT_EQ(bag.GetParamType("int"), eDictString);
    bag.Clear();
    bag.Clear();
    EXPECT_EQ(bag.GetItem(0), nullptr);
}

// Whatever is declared and set, the table agrees with a plain map of names to types and ints.
TEST_F(DictionaryZTTest, AgreesWithAPlainMap) {
    const bool holds = rc::check([](const std::vector<std::pair<std::uint8_t, int>>& steps) {
        DictionaryZT table;
        std::map<std::string, std::pair<EDictionaryType_ZT, int>> plain;
        for (const auto& [byte, value] : steps) {
            const std::string name = std::to_string(byte % 16);
            const EDictionaryType_ZT type = kTypes[static_cast<unsigned>(byte) / 16 % 7];
            RC_ASSERT(table.AddItem(name.c_str(), type, "") ==
                      plain.try_emplace(name, type, 0).second);
            const bool isInt = plain[name].first == eDictInt;
            RC_ASSERT(table.SetInt(name.c_str(), value) == isInt);
            if (isInt) plain[name].second = value;
        }
        RC_ASSERT(table.GetParamCount(eDictNone) == static_cast<int>(plain.size()));
        for (const auto& [name, expected] : plain) {
            int value = 0;
            RC_ASSERT(table.GetParamType(name.c_str()) == expected.first);
            RC_ASSERT(table.GetInt(name.c_str(), value) == (expected.first == eDictInt));
            RC_ASSERT(value == expected.second);
        }
        for (int i = 0; i < static_cast<int>(plain.size()); ++i) {
            RC_ASSERT(plain.count(table.GetParamName(i).GetString()) == 1u);
            RC_ASSERT(table.FindItem(table.GetParamName(i)) == table.GetItem(i));
        }
    });
    EXPECT_TRUE(holds);
}

}  // namespace
}  // namespace ZT
