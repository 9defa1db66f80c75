// Looking up and changing an entry that needs no memory of its own allocates nothing. The
// program's operator new counts.

#include <gtest/gtest.h>
#include <tests/CountingNew.h>
#include <zt/dictionary/DictionaryZT.h>

#include <string>

namespace ZT {
namespace {

using testing_support::AllocationsIn;

TEST(DictionaryHeapUse, TheCountCounts) {
    EXPECT_EQ(AllocationsIn([] { ::operator delete(::operator new(5)); }), 1u);
}

TEST(DictionaryHeapUse, LookingUpAllocatesNothing) {
    const std::string name(1000, 'x');
    DictionaryZT bag;
    bag.AddItem(name.c_str(), eDictInt, "");
    bag.AddItem("double", eDictDouble, "");
    bag.AddItem("bool", eDictBool, "");
    bag.AddItem("3state", eDict3State, "");
    bag.SetPointer("pointer", &bag);
    bag.SetInterface("interface", nullptr);
    bool all = true;
    EXPECT_EQ(AllocationsIn([&] {
                  int number = 0;
                  double real = 0;
                  bool truth = false;
                  ZT3State state;
                  IUnknown* pointer = nullptr;
                  all = bag.SetInt(name.c_str(), 5) && bag.GetInt(name.c_str(), number) &&
                        bag.SetDouble("double", 5) && bag.GetDouble("double", real) &&
                        bag.SetBool("bool", true) && bag.GetBool("bool", truth) &&
                        bag.Set3State("3state", ZT3State::eTrue) &&
                        bag.Get3State("3state", state) && bag.SetPointer("pointer", &all) &&
                        bag.GetPointer("pointer") == &all &&
                        bag.GetInterface("interface", pointer) && bag.GetBool2("bool") &&
                        bag.IsIn(name.c_str()) && !bag.IsIn("a name that is absent and long") &&
                        bag.GetParamCount(eDictNone) == 6;
                  bag.SetBool2("bool", false);
                  bag.SetInterface("interface", pointer);
              }),
              0u);
    EXPECT_TRUE(all);
}

TEST(DictionaryHeapUse, DeclaringAllocates) {
    DictionaryZT bag;
    bool added = false;
    // The item, the table and the first block of associations.
    EXPECT_EQ(AllocationsIn([&] { added = bag.AddItem("x", eDictInt, ""); }), 3u);
    EXPECT_TRUE(added);
}

TEST(DictionaryHeapUse, ExaminingAndRefusingAllocatesNothing) {
    const std::string name(1000, 'x');
    DictionaryZT bag;
    bag.AddItem(name.c_str(), eDictInt, "");
    bag.AddItem("string", eDictString, "");
    const CString value("x");
    const COleVariant five(5);
    bool all = true;
    EXPECT_EQ(AllocationsIn([&] {
                  double real = 0;
                  CString text;
                  COleVariant variant;
                  IUnknown* pointer = nullptr;
                  all = bag.GetParamType(name.c_str()) == eDictInt &&
                        bag.GetParamType("absent") == eDictNone && bag.GetItem(1) != nullptr &&
                        bag.GetItem(2) == nullptr && bag.GetParamCount(eDictInt) == 1 &&
                        bag.GetBool3(name.c_str()) == eUnknown &&
                        !bag.AddItem(name.c_str(), eDictString, "x") &&
                        !bag.GetDouble(name.c_str(), real) && !bag.SetDouble(name.c_str(), 1) &&
                        !bag.SetInt("string", 1) && !bag.GetString(name.c_str(), text) &&
                        !bag.SetString(name.c_str(), value) && !bag.Get("string", variant) &&
                        !bag.Set("string", five) && !bag.SetPointer("string", &bag) &&
                        !bag.GetInterface("string", pointer);
              }),
              0u);
    EXPECT_TRUE(all);
}

TEST(DictionaryHeapUse, TheInterfaceAllocatesNothingForWhatIsThere) {
    const std::string name(1000, 'x');
    DictionaryZT bag(true, true);
    void* found = nullptr;
    bag.QueryInterface(IID_IDictionary_ZT, &found);
    auto& shown = *static_cast<IDictionary_ZT*>(found);
    const COleVariant five(5);
    shown.SetInt(name.c_str(), 1);
    shown.SetDouble("double", 1);
    shown.SetBool("bool", 1);
    shown.Set3State("3state", ZT3State::eTrue);
    shown.SetString("string", "1");
    shown.Set("variant", five);
    shown.SetInterface("interface", &shown);
    bool all = true;
    EXPECT_EQ(AllocationsIn([&] {
                  int number = 0;
                  double real = 0;
                  VARIANT_BOOL truth = VARIANT_FALSE;
                  VARIANT variant = {};
                  IUnknown* pointer = nullptr;
                  all = shown.SetInt(name.c_str(), 2) == S_OK &&
                        shown.GetInt(name.c_str(), &number) == S_OK && number == 2 &&
                        shown.SetDouble("double", 2) == S_OK &&
                        shown.GetDouble("double", &real) == S_OK && real == 2 &&
                        shown.SetBool("bool", 0) == S_OK && shown.GetBool("bool", &truth) == S_OK &&
                        truth == VARIANT_FALSE &&
                        shown.Set3State("3state", ZT3State::eUnknown) == S_OK &&
                        shown.Get3State("3state", &number) == S_OK && number == -1 &&
                        shown.SetString("string", "2") == S_OK &&
                        shown.Set("variant", five) == S_OK &&
                        shown.Get("variant", &variant) == S_OK && variant.lVal == 5 &&
                        shown.SetInterface("interface", &shown) == S_OK &&
                        shown.GetInterface("interface", &pointer) == S_OK && pointer == &shown &&
                        shown.GetParamType("string", &number) == S_OK && number == eDictString &&
                        shown.GetParamCount(eDictNone, &number) == S_OK && number == 7 &&
                        shown.GetInt("double", &number) == DISP_E_PARAMNOTOPTIONAL &&
                        shown.SetInt("double", 1) == DISP_E_PARAMNOTOPTIONAL &&
                        shown.GetInt("absent", &number) == DISP_E_PARAMNOTOPTIONAL;
              }),
              0u);
    EXPECT_TRUE(all);
}

}  // namespace
}  // namespace ZT
