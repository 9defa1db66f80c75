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

}  // namespace
}  // namespace ZT
