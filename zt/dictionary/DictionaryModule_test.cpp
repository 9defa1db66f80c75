// A dictionary that is handed to a loaded module, which knows only the interface.

#include <gtest/gtest.h>
#include <platform/modules/ModuleHandle.h>
#include <tests/CountedObject.h>
#include <zt/dictionary/DictionaryZT.h>

#include <string>

namespace ZT {
namespace {

using testing_support::CountedObject;

// The client module as this compiler and as another one made it; the second is empty where
// there is no other.
const char* const kOwnModule = ZT_DICTIONARY_CLIENT;
const char* const kForeignModule = ZT_FOREIGN_DICTIONARY_CLIENT;

struct DictionaryModule : testing::TestWithParam<const char*> {
    void SetUp() override {
        if (*GetParam() == '\0') {
            GTEST_SKIP() << "no second compiler was found to build the client module with";
        }
        CString reason;
        module = AfxLoadLibrary(GetParam(), &reason);
        ASSERT_NE(module, nullptr) << reason.GetString();
    }
    void TearDown() override {
        if (module != nullptr) {
            EXPECT_TRUE(AfxFreeLibrary(module));
        }
        EXPECT_EQ(bag.GetRef(), 0u);
        EXPECT_EQ(object.count, 1u);
    }

    template <class Function>
    Function* Find(const char* name) {
        void* const address = GetProcAddress(module, name);
        EXPECT_NE(address, nullptr) << name;
        return reinterpret_cast<Function*>(address);
    }

    // The dictionary as the client gets it.
    IUnknown* Shown() {
        void* shown = nullptr;
        EXPECT_EQ(bag.QueryInterface(IID_IUnknown, &shown), S_OK);
        return static_cast<IUnknown*>(shown);
    }

    HMODULE module = nullptr;
    DictionaryZT bag{true, true};
    CountedObject object;
};

TEST_P(DictionaryModule, ReadsWhatTheHostPutIn) {
    auto* read = Find<bool(IUnknown*, int, IUnknown*, void*)>("ReadDictionary");
    ASSERT_NE(read, nullptr);
    bag.AddItem("host int", eDictInt, "");
    bag.SetInt("host int", -5);
    bag.AddItem("host double", eDictDouble, "");
    bag.SetDouble("host double", 0.1);
    bag.SetBool2("host bool", true);
    bag.AddItem("host state", eDict3State, "");
    bag.Set3State("host state", ZT3State::eUnknown);
    bag.AddItem("host text", eDictString, "a season");
    bag.SetString("host text", "\xC3\xA9t\xC3\xA9");
    bag.SetPointer("host pointer", this);
    bag.SetInterface("host interface", &object);
    IUnknown* shown = Shown();
    EXPECT_TRUE(read(shown, 7, &object, this));
    EXPECT_FALSE(read(shown, 6, &object, this));
    bag.SetInt("host int", 5);
    EXPECT_FALSE(read(shown, 7, &object, this));
    shown->Release();
}

TEST_P(DictionaryModule, FillsWhatTheHostReads) {
    auto* fill = Find<bool(IUnknown*, IUnknown*)>("FillDictionary");
    auto* target = Find<void*()>("TargetOfPointer");
    ASSERT_TRUE(fill != nullptr && target != nullptr);
    IUnknown* shown = Shown();
    EXPECT_TRUE(fill(shown, &object));
    shown->Release();
    int number = 0;
    double real = 0;
    ZT3State state = ZT3State::eFalse;
    CString text;
    IUnknown* found = nullptr;
    EXPECT_TRUE(bag.GetInt("int", number));
    EXPECT_EQ(number, 5);
    EXPECT_TRUE(bag.GetDouble("double", real));
    EXPECT_EQ(real, 2.5);
    EXPECT_EQ(bag.GetBool3("bool"), eTrue);
    EXPECT_TRUE(bag.Get3State("state", state));
    EXPECT_EQ(state, ZT3State::eUnknown);
    EXPECT_TRUE(bag.GetString("text", text));
    EXPECT_EQ(text, "\xC3\xA9t\xC3\xA9");
    EXPECT_EQ(bag.GetPointer("pointer"), target());
    EXPECT_TRUE(bag.GetInterface("interface", found));
    EXPECT_EQ(found, &object);
    EXPECT_EQ(bag.GetParamCount(eDictNone), 7);
}

TEST_P(DictionaryModule, RefusesWhatIsNoDictionary) {
    auto* fill = Find<bool(IUnknown*, IUnknown*)>("FillDictionary");
    ASSERT_NE(fill, nullptr);
    EXPECT_FALSE(fill(&object, &object));
}

std::string NameOf(const testing::TestParamInfo<const char*>& info) {
    return info.index == 0 ? "OfThisCompiler" : "OfAnotherCompiler";
}

INSTANTIATE_TEST_SUITE_P(Modules, DictionaryModule, testing::Values(kOwnModule, kForeignModule),
                         NameOf);

}  // namespace
}  // namespace ZT
