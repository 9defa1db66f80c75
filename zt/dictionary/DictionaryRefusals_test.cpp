// Setters of the class that meet an entry of another type.

#include <gtest/gtest.h>
#include <tests/CountedObject.h>
#include <zt/dictionary/DictionaryZT.h>

#include <string>

namespace ZT {
namespace {

using testing_support::CountedObject;

// An entry of every type, named by it, each with a value of its own.
struct DictionaryRefusals : testing::Test {
    DictionaryRefusals() {
        bag.AddItem("int", eDictInt, "");
        bag.SetInt("int", 0x12345678);
        bag.AddItem("double", eDictDouble, "");
        bag.SetDouble("double", 2.5);
        bag.AddItem("bool", eDictBool, "");
        bag.AddItem("3state", eDict3State, "");
        bag.Set3State("3state", ZT3State::eUnknown);
        bag.AddItem("string", eDictString, "");
        bag.SetString("string", "before");
        bag.AddItem("variant", eDictVariant, "");
        bag.Set("variant", COleVariant(77));
        bag.SetInterface("interface", &object);
    }

    // Calls the setter for all entries but that of its own type; none of them may change.
    template <class Setter>
    void ExpectRefused(const std::string& own, Setter set) {
        for (const char* name :
             {"int", "double", "bool", "3state", "string", "variant", "interface"}) {
            if (name != own) set(name);
            ExpectAsBefore(name);
        }
    }
    void ExpectAsBefore(const char* place) {
        SCOPED_TRACE(place);
        EXPECT_TRUE(bag.GetInt("int", number));
        EXPECT_EQ(number, 0x12345678);
        EXPECT_TRUE(bag.GetDouble("double", real));
        EXPECT_EQ(real, 2.5);
        const auto* item = static_cast<DictionaryZT::ItemBasic*>(bag.FindItem("bool"));
        EXPECT_EQ(item->m_value.bits, 0);
        EXPECT_TRUE(bag.Get3State("3state", state));
        EXPECT_EQ(state, ZT3State::eUnknown);
        EXPECT_TRUE(bag.GetString("string", text));
        EXPECT_EQ(text, "before");
        EXPECT_TRUE(bag.Get("variant", variant));
        EXPECT_TRUE(variant == COleVariant(77));
        EXPECT_TRUE(bag.GetInterface("interface", pointer));
        EXPECT_EQ(pointer, &object);
        EXPECT_EQ(bag.GetParamCount(eDictNone), 7);
    }

    DictionaryZT bag{true, true};
    int number = 0;
    double real = 0;
    ZT3State state = ZT3State::eFalse;
    CString text;
    COleVariant variant;
    CountedObject object, other;
    IUnknown* pointer = nullptr;
};

TEST_F(DictionaryRefusals, LeaveTheValuesOfNumbers) {
    ExpectRefused("int", [&](const char* name) { EXPECT_FALSE(bag.SetInt(name, 5)); });
    ExpectRefused("double", [&](const char* name) { EXPECT_FALSE(bag.SetDouble(name, 0.1)); });
    ExpectRefused("bool", [&](const char* name) { EXPECT_FALSE(bag.SetBool(name, true)); });
    ExpectRefused("bool", [&](const char* name) { bag.SetBool2(name, true); });
    ExpectRefused("3state",
                  [&](const char* name) { EXPECT_FALSE(bag.Set3State(name, ZT3State::eTrue)); });
}

TEST_F(DictionaryRefusals, LeaveTheValuesOfTextsVariantsAndPointers) {
    ExpectRefused("string", [&](const char* name) { EXPECT_FALSE(bag.SetString(name, "x")); });
    ExpectRefused("variant",
                  [&](const char* name) { EXPECT_FALSE(bag.Set(name, COleVariant(5))); });
    ExpectRefused("variant",
                  [&](const char* name) { EXPECT_FALSE(bag.SetPointer(name, &number)); });
    ExpectRefused("interface", [&](const char* name) { bag.SetInterface(name, &other); });
    EXPECT_EQ(object.count, 1u);
    EXPECT_EQ(other.count, 1u);
}

}  // namespace
}  // namespace ZT
