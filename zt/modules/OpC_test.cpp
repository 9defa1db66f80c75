#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zt/modules/OpC.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;

_GUID module = {1, 2, 3, {}};
_GUID otherModule = {2, 2, 3, {}};
constexpr char kName[] = "name";
constexpr char kText[] = "text";

// Other values than the defaults in every field.
void Fill(OpC& op) {
    op.m_pszName = kName;
    op.m_pszText = kText;
    op.m_nWord1 = 0x123456789ABCDEF0;
    op.m_nWord2 = 2;
    op.m_nWord3 = 3;
    op.m_pModuleId = &module;
    op.m_nValue = 4;
    op.m_nSelect = 5;
    for (unsigned i = 0; i < 5; ++i) {
        op.m_blockA[i] = 10 + i;
        op.m_blockB[i] = 20 + i;
        op.m_tail[i] = 30 + i;
    }
    for (unsigned i = 0; i < 3; ++i) op.m_flagsA[i] = static_cast<unsigned char>(40 + i);
}

// The fields that differ in any bit, in the order of the record.
std::vector<std::string> Differing(const OpC& a, const OpC& b) {
    std::vector<std::string> names;
    const auto compare = [&](const char* name, const auto& left, const auto& right) {
        if (std::memcmp(&left, &right, sizeof left) != 0) names.emplace_back(name);
    };
    compare("m_pszName", a.m_pszName, b.m_pszName);
    compare("m_pszText", a.m_pszText, b.m_pszText);
    compare("m_nWord1", a.m_nWord1, b.m_nWord1);
    compare("m_nWord2", a.m_nWord2, b.m_nWord2);
    compare("m_nWord3", a.m_nWord3, b.m_nWord3);
    compare("m_pModuleId", a.m_pModuleId, b.m_pModuleId);
    compare("m_nValue", a.m_nValue, b.m_nValue);
    compare("m_blockA", a.m_blockA, b.m_blockA);
    compare("m_flagsA", a.m_flagsA, b.m_flagsA);
    compare("m_nSelect", a.m_nSelect, b.m_nSelect);
    compare("m_blockB", a.m_blockB, b.m_blockB);
    compare("m_tail", a.m_tail, b.m_tail);
    return names;
}

void ExpectDefaults(const OpC& op) {
    EXPECT_EQ(op.m_pszName, nullptr);
    EXPECT_EQ(op.m_pszText, nullptr);
    EXPECT_EQ(op.m_nWord1, 0u);
    EXPECT_EQ(op.m_nWord2, 0u);
    EXPECT_EQ(op.m_nWord3, 0u);
    EXPECT_EQ(op.m_pModuleId, nullptr);
    EXPECT_EQ(op.m_nValue, 0u);
    EXPECT_THAT(op.m_blockA, ElementsAre(0, 0, 0, 0, 0));
    EXPECT_THAT(op.m_flagsA, ElementsAre(0, 0, 0));
    EXPECT_EQ(op.m_nSelect, -1);
    EXPECT_THAT(op.m_blockB, ElementsAre(0, 0, 0, 0, 0));
}

TEST(OpC, FieldsStandInTheirOrderBehindTheTable) {
    EXPECT_EQ(offsetof(OpC, m_pszName), 8u);
    EXPECT_EQ(offsetof(OpC, m_pszText), 16u);
    EXPECT_EQ(offsetof(OpC, m_nWord1), 24u);
    EXPECT_EQ(offsetof(OpC, m_nWord2), 32u);
    EXPECT_EQ(offsetof(OpC, m_nWord3), 40u);
    EXPECT_EQ(offsetof(OpC, m_pModuleId), 48u);
    EXPECT_EQ(offsetof(OpC, m_nValue), 56u);
    EXPECT_EQ(offsetof(OpC, m_blockA), 64u);
    EXPECT_EQ(offsetof(OpC, m_flagsA), 104u);
    EXPECT_EQ(offsetof(OpC, m_nSelect), 108u);
    EXPECT_EQ(offsetof(OpC, m_blockB), 112u);
    EXPECT_EQ(offsetof(OpC, m_tail), 152u);
    EXPECT_EQ(sizeof(OpC), 176u);
}

TEST(OpC, FieldsHaveTheirTypes) {
    static_assert(std::is_same_v<decltype(OpC::m_pszName), const char*>);
    static_assert(std::is_same_v<decltype(OpC::m_pszText), const char*>);
    static_assert(std::is_same_v<decltype(OpC::m_nWord1), std::uint64_t>);
    static_assert(std::is_same_v<decltype(OpC::m_nWord2), std::uint64_t>);
    static_assert(std::is_same_v<decltype(OpC::m_nWord3), std::uint64_t>);
    static_assert(std::is_same_v<decltype(OpC::m_pModuleId), _GUID*>);
    static_assert(std::is_same_v<decltype(OpC::m_nValue), std::uint32_t>);
    static_assert(std::is_same_v<decltype(OpC::m_blockA), std::uint64_t[5]>);
    static_assert(std::is_same_v<decltype(OpC::m_flagsA), unsigned char[3]>);
    static_assert(std::is_same_v<decltype(OpC::m_nSelect), std::int32_t>);
    static_assert(std::is_same_v<decltype(OpC::m_blockB), std::uint64_t[5]>);
    static_assert(std::is_same_v<decltype(OpC::m_tail), std::uint32_t[5]>);
    static_assert(std::has_virtual_destructor_v<OpC>);
}

TEST(OpC, StartsWithItsDefaults) {
    ExpectDefaults(OpC());
    EXPECT_THAT(OpC().m_tail, ElementsAre(0, 0, 0, 0, 0));
}

TEST(OpC, ConstructorsSetModuleAndTexts) {
    const OpC addressed(&module), both(&module, kName, kText), named(kName, kText);
    EXPECT_EQ(addressed.m_pModuleId, &module);
    EXPECT_THAT(Differing(addressed, OpC()), ElementsAre("m_pModuleId"));
    EXPECT_EQ(both.m_pModuleId, &module);
    EXPECT_EQ(both.m_pszName, kName);
    EXPECT_EQ(both.m_pszText, kText);
    EXPECT_THAT(Differing(both, OpC()), ElementsAre("m_pszName", "m_pszText", "m_pModuleId"));
    EXPECT_EQ(named.m_pszName, kName);
    EXPECT_EQ(named.m_pszText, kText);
    EXPECT_THAT(Differing(named, OpC()), ElementsAre("m_pszName", "m_pszText"));
}

TEST(OpC, CopiesTakeEveryField) {
    OpC op;
    Fill(op);
    EXPECT_EQ(Differing(op, OpC()).size(), 12u);
    const OpC constructed(op);
    EXPECT_THAT(Differing(constructed, op), ElementsAre());
    OpC assigned;
    assigned = op;
    EXPECT_THAT(Differing(assigned, op), ElementsAre());
}

TEST(OpC, ConstructSetsBackAllButTheTail) {
    OpC op;
    Fill(op);
    op.Construct();
    ExpectDefaults(op);
    EXPECT_THAT(op.m_tail, ElementsAre(30, 31, 32, 33, 34));
}

TEST(OpC, CopyKeepsTheTargetsAddressAndTail) {
    OpC from, to(&otherModule);
    Fill(from);
    to.m_tail[4] = 50;
    to.Copy(from);
    EXPECT_THAT(Differing(to, from), ElementsAre("m_pModuleId", "m_tail"));
    EXPECT_EQ(to.m_pModuleId, &otherModule);
    EXPECT_THAT(to.m_tail, ElementsAre(0, 0, 0, 0, 50));
    from.Copy(from);
    EXPECT_EQ(from.m_pModuleId, &module);
    EXPECT_EQ(from.m_nSelect, 5);
}

}  // namespace
}  // namespace ZT
