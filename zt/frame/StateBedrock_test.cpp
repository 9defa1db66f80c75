#include <gtest/gtest.h>

#include <zt/frame/StateBedrock.h>
#include <string>
#include <type_traits>

namespace ZT {
namespace {

std::string heard;
bool answer = false;

bool Hear(const char* a, const char* b, std::int32_t number) {
    heard = std::string(a) + "|" + b + "|" + std::to_string(number);
    return answer;
}

bool HearNothing(const char*, const char*, std::int32_t) {
    return true;
}

// Each test finds the state as a fresh process has it, and leaves it so.
struct StateBedrockTest : testing::Test {
    StateBedrockTest() { Reset(); }
    ~StateBedrockTest() override { Reset(); }

    static void Reset() {
        StateBedrock::m_tri = eUnknown;
        StateBedrock::m_pAssert = nullptr;
        StateBedrock::m_bNet = false;
        StateBedrock::m_uNique = 0;
        heard.clear();
    }
};

// Read while the program's static objects are made, before any test touches them.
const ETri kFlagAtLoad = StateBedrock::GetFlag();
const bool kNetAtLoad = StateBedrock::IsNet();
const uint64 kCounterAtLoad = StateBedrock::m_uNique;
const bool kHandlerAtLoad = StateBedrock::m_pAssert != nullptr;

TEST_F(StateBedrockTest, BeginsUnknownOpenUncountedAndWithoutHandler) {
    EXPECT_EQ(kFlagAtLoad, eUnknown);
    EXPECT_FALSE(kNetAtLoad);
    EXPECT_EQ(kCounterAtLoad, 0u);
    EXPECT_FALSE(kHandlerAtLoad);
}

TEST_F(StateBedrockTest, MembersHaveTheirTypesAndAnObjectHoldsNone) {
    static_assert(std::is_same_v<decltype(StateBedrock::m_tri), ETri>);
    static_assert(std::is_same_v<decltype(StateBedrock::m_bNet), bool>);
    static_assert(std::is_same_v<decltype(StateBedrock::m_uNique), std::uint64_t>);
    static_assert(std::is_same_v<decltype(StateBedrock::m_pAssert),
                                 bool (*)(const char*, const char*, std::int32_t)>);
    static_assert(std::is_empty_v<StateBedrock>);
}

TEST_F(StateBedrockTest, FlagIsTwoValuedOnceSet) {
    EXPECT_EQ(StateBedrock::GetFlag(), eUnknown);
    StateBedrock::SetFlag(true);
    EXPECT_EQ(StateBedrock::GetFlag(), eTrue);
    StateBedrock::SetFlag(false);
    EXPECT_EQ(StateBedrock::GetFlag(), eFalse);
}

TEST_F(StateBedrockTest, NetLatchStaysClosed) {
    EXPECT_FALSE(StateBedrock::IsNet());
    StateBedrock::SetNet();
    EXPECT_TRUE(StateBedrock::IsNet());
    StateBedrock::SetNet();
    EXPECT_TRUE(StateBedrock::IsNet());
}

TEST_F(StateBedrockTest, SetAssertHandlerGivesThePreviousOne) {
    EXPECT_EQ(StateBedrock::SetAssertHandler(Hear), nullptr);
    EXPECT_EQ(StateBedrock::SetAssertHandler(HearNothing), Hear);
    EXPECT_EQ(StateBedrock::SetAssertHandler(nullptr), HearNothing);
    EXPECT_EQ(StateBedrock::SetAssertHandler(nullptr), nullptr);
}

TEST_F(StateBedrockTest, AssertHandsAllArgumentsToTheHandlerWhateverItAnswers) {
    StateBedrock::SetAssertHandler(Hear);
    for (const bool result : {false, true}) {
        answer = result;
        heard.clear();
        StateBedrock::Assert("a", "b", -7);
        EXPECT_EQ(heard, "a|b|-7");
        EXPECT_EQ(StateBedrock::m_pAssert, Hear);
    }
}

TEST_F(StateBedrockTest, AssertWithoutHandlerIsSilent) {
    StateBedrock::SetAssertHandler(Hear);
    StateBedrock::SetAssertHandler(nullptr);
    StateBedrock::Assert("a", "b", 1);
    EXPECT_EQ(heard, "");
}

TEST_F(StateBedrockTest, MakeUniqueCountsOverAllStrings) {
    CString a = "Box";
    CString b;
    StateBedrock::MakeUnique(a);
    StateBedrock::MakeUnique(b);
    EXPECT_EQ(a, "Box_ztuid0");
    EXPECT_EQ(b, "_ztuid1");
    EXPECT_EQ(StateBedrock::m_uNique, 2u);
}

TEST_F(StateBedrockTest, MakeUniqueStacksSuffixes) {
    CString s = "x%d";
    StateBedrock::MakeUnique(s);
    StateBedrock::MakeUnique(s);
    EXPECT_EQ(s, "x%d_ztuid0_ztuid1");
}

TEST_F(StateBedrockTest, MakeUniqueWritesTheLow32BitsOfA64BitCounter) {
    StateBedrock::m_uNique = 0xFFFFFFFFu;
    CString last = "a";
    CString first = "a";
    StateBedrock::MakeUnique(last);
    StateBedrock::MakeUnique(first);
    EXPECT_EQ(last, "a_ztuid4294967295");
    EXPECT_EQ(first, "a_ztuid0");
    EXPECT_EQ(StateBedrock::m_uNique, 0x100000001u);
}

}  // namespace
}  // namespace ZT
