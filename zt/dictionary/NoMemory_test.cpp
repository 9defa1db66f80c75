// What a dictionary does when memory runs out. The program's operator new can be made to fail.

#include <gtest/gtest.h>
#include <platform/object/CMemoryException.h>
#include <tests/AllocationCount.h>
#include <tests/Raises.h>
#include <zt/dictionary/DictionaryZT.h>

#include <memory>
#include <string>

namespace ZT {
namespace {

using testing_support::AllocationsIn;
using testing_support::MemoryFor;
using testing_support::Raises;

// Too long to lie within a string.
const std::string kLong(1000, 'x');

struct DictionaryNoMemory : testing::Test {
    static IDictionary_ZT& Shown(DictionaryZT& bag) {
        void* found = nullptr;
        bag.QueryInterface(IID_IDictionary_ZT, &found);
        return *static_cast<IDictionary_ZT*>(found);
    }

    // Whether the work raises the memory exception, if there is memory for so many allocations.
    template <class Work>
    static bool RaisesWith(std::size_t allocations, Work work) {
        return Raises<CMemoryException>([&] {
            const MemoryFor some(allocations);
            work();
        });
    }

    // Enters a name into one fresh dictionary after another, with memory for one allocation
    // more each time, until it is in; tells how many allocations that takes. What was raised
    // before must have left no entry, and a dictionary that takes it later.
    template <class Enter>
    static std::size_t AllocationsOf(const char* name, Enter enter) {
        constexpr std::size_t many = 20;
        for (std::size_t served = 0; served < many; ++served) {
            DictionaryZT bag(true, true);
            if (!RaisesWith(served, [&] { enter(bag); })) return served;
            EXPECT_EQ(bag.GetParamCount(eDictNone), 0) << served;
            EXPECT_FALSE(bag.IsIn(name)) << served;
            EXPECT_EQ(bag.GetItem(0), nullptr) << served;
            enter(bag);
            EXPECT_TRUE(bag.IsIn(name)) << served;
        }
        return many;
    }
};

// The item, the table and the first block of associations.
constexpr std::size_t kShortEntry = 3;

TEST_F(DictionaryNoMemory, AnEntryIsDeclaredOrNot) {
    for (const EDictionaryType_ZT type : {eDictInt, eDictDouble, eDictBool, eDict3State,
                                          eDictString, eDictVariant, eDictInterface}) {
        const auto declare = [type](DictionaryZT& bag) { bag.AddItem("x", type, ""); };
        EXPECT_EQ(AllocationsOf("x", declare), kShortEntry) << type;
    }
    // The texts take one each.
    EXPECT_EQ(AllocationsOf(
                  kLong.c_str(),
                  [](DictionaryZT& bag) { bag.AddItem(kLong.c_str(), eDictInt, kLong.c_str()); }),
              kShortEntry + 2);
}

TEST_F(DictionaryNoMemory, ClassSettersThatDeclareDoSoOrNot) {
    EXPECT_EQ(AllocationsOf("x", [](DictionaryZT& bag) { bag.SetBool2("x", true); }), kShortEntry);
    EXPECT_EQ(AllocationsOf("x", [](DictionaryZT& bag) { bag.SetInterface("x", nullptr); }),
              kShortEntry);
    EXPECT_EQ(AllocationsOf("x", [](DictionaryZT& bag) { bag.SetPointer("x", nullptr); }),
              kShortEntry);
}

TEST_F(DictionaryNoMemory, InterfaceSettersDeclareOrNot) {
    const auto allocations = [](auto set) {
        return AllocationsOf("x", [set](DictionaryZT& bag) { set(Shown(bag)); });
    };
    VARIANT five = {};
    five.vt = VT_I4;
    five.lVal = 5;
    EXPECT_EQ(allocations([](auto& shown) { shown.SetInt("x", 1); }), kShortEntry);
    EXPECT_EQ(allocations([](auto& shown) { shown.SetDouble("x", 1); }), kShortEntry);
    EXPECT_EQ(allocations([](auto& shown) { shown.SetBool("x", 1); }), kShortEntry);
    EXPECT_EQ(allocations([](auto& shown) { shown.Set3State("x", ZT3State::eTrue); }), kShortEntry);
    EXPECT_EQ(allocations([](auto& shown) { shown.SetString("x", "1"); }), kShortEntry);
    EXPECT_EQ(allocations([&](auto& shown) { shown.Set("x", &five); }), kShortEntry);
    EXPECT_EQ(allocations([](auto& shown) { shown.SetInterface("x", &shown); }), kShortEntry);
}

TEST_F(DictionaryNoMemory, ATextWithoutMemoryLeavesTheOneBefore) {
    DictionaryZT bag(true, true);
    bag.AddItem("s", eDictString, "");
    bag.SetString("s", "before");
    EXPECT_TRUE(RaisesWith(0, [&] { Shown(bag).SetString("s", kLong.c_str()); }));
    CString text;
    EXPECT_TRUE(bag.GetString("s", text));
    EXPECT_EQ(text, "before");
    // The entry of an absent name is there already when its text finds no memory.
    EXPECT_TRUE(RaisesWith(0, [&] { Shown(bag).SetString("new", kLong.c_str()); }));
    EXPECT_FALSE(bag.IsIn("new"));
    EXPECT_TRUE(RaisesWith(1, [&] { Shown(bag).SetString("new", kLong.c_str()); }));
    EXPECT_TRUE(bag.GetString("new", text));
    EXPECT_EQ(text, "");
}

TEST_F(DictionaryNoMemory, TextsThatAreHandedOverRaise) {
    DictionaryZT bag(true, true);
    IDictionary_ZT& shown = Shown(bag);
    bag.AddItem(kLong.c_str(), eDictString, kLong.c_str());
    bag.SetString(kLong.c_str(), kLong.c_str());
    BSTR string = nullptr;
    EXPECT_TRUE(RaisesWith(0, [&] { shown.GetParamName(0, &string); }));
    EXPECT_TRUE(RaisesWith(0, [&] { shown.GetString(kLong.c_str(), &string); }));
    EXPECT_TRUE(RaisesWith(0, [&] { shown.GetParamDescription(kLong.c_str(), &string); }));
    // After the description itself, its wide form.
    EXPECT_TRUE(RaisesWith(1, [&] { shown.GetParamDescription(kLong.c_str(), &string); }));
    EXPECT_TRUE(RaisesWith(0, [&] { bag.GetParamName(0); }));
    EXPECT_EQ(string, nullptr);
}

TEST_F(DictionaryNoMemory, NewItemsRaise) {
    for (const EDictionaryType_ZT type : {eDictInt, eDictString, eDictVariant, eDictInterface}) {
        std::unique_ptr<DictionaryZT::Item> item;
        EXPECT_TRUE(RaisesWith(0, [&] { item.reset(DictionaryZT::CreateNewItem(type)); }));
        EXPECT_EQ(item, nullptr);
        EXPECT_EQ(AllocationsIn([&] { item.reset(DictionaryZT::CreateNewItem(type)); }), 1u);
    }
}

}  // namespace
}  // namespace ZT
