#include <gtest/gtest.h>
#include <zt/persist/PC.h>

#include <cstddef>
#include <type_traits>

using ZT::ESchema2;
using ZT::PC;

namespace {

int g_object, g_otherObject;

/// Gives no field its default.
void Fill(PC& pc) {
    pc.m_nVersion = 3;
    pc.m_schema = ESchema2(7);
    pc.m_nUserData = 0x100000001;
    pc.m_mode = 1;
    pc.m_strName = "name";
    pc.m_strExInfo = "extended";
    pc.m_nExData = 0x200000002;
    pc.m_nData = 0x300000003;
    pc.m_nParamA = 40;
    pc.m_nParamB = 50;
    pc.m_pExObject = &g_object;
}

void ExpectDefaultsButStrings(const PC& pc) {
    EXPECT_EQ(pc.m_nVersion, 0u);
    EXPECT_EQ(pc.m_schema, ESchema2(0));
    EXPECT_EQ(pc.m_nUserData, 0u);
    EXPECT_EQ(pc.m_mode, -1);
    EXPECT_EQ(pc.m_nExData, 0u);
    EXPECT_EQ(pc.m_nData, 0u);
    EXPECT_EQ(pc.m_nParamA, -1);
    EXPECT_EQ(pc.m_nParamB, 14);
    EXPECT_EQ(pc.m_pExObject, nullptr);
}

void ExpectFilledButExObject(const PC& pc) {
    EXPECT_EQ(pc.m_nVersion, 3u);
    EXPECT_EQ(pc.m_schema, ESchema2(7));
    EXPECT_EQ(pc.m_nUserData, 0x100000001u);
    EXPECT_EQ(pc.m_mode, 1);
    EXPECT_TRUE(pc.m_strName == "name");
    EXPECT_TRUE(pc.m_strExInfo == "extended");
    EXPECT_EQ(pc.m_nExData, 0x200000002u);
    EXPECT_EQ(pc.m_nData, 0x300000003u);
    EXPECT_EQ(pc.m_nParamA, 40);
    EXPECT_EQ(pc.m_nParamB, 50);
}

TEST(PC, FieldsStandInTheStatedOrder) {
    EXPECT_TRUE(std::is_polymorphic_v<PC>);
    EXPECT_TRUE(std::has_virtual_destructor_v<PC>);
    EXPECT_EQ(sizeof(ESchema2), 4u);
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<ESchema2>, std::int32_t>));
    EXPECT_EQ(offsetof(PC, m_nVersion), sizeof(void*));
    EXPECT_EQ(offsetof(PC, m_schema), 12u);
    EXPECT_EQ(offsetof(PC, m_nUserData), 16u);
    EXPECT_EQ(offsetof(PC, m_mode), 24u);
    EXPECT_EQ(offsetof(PC, m_strName), 32u);
    EXPECT_EQ(offsetof(PC, m_strExInfo), 32u + sizeof(CString));
    constexpr std::size_t numbers = 32 + 2 * sizeof(CString);
    EXPECT_EQ(offsetof(PC, m_nExData), numbers);
    EXPECT_EQ(offsetof(PC, m_nData), numbers + 8);
    EXPECT_EQ(offsetof(PC, m_nParamA), numbers + 16);
    EXPECT_EQ(offsetof(PC, m_nParamB), numbers + 20);
    EXPECT_EQ(offsetof(PC, m_pExObject), numbers + 24);
    EXPECT_EQ(sizeof(PC), numbers + 32);
}

TEST(PC, FieldsHaveTheStatedTypes) {
    EXPECT_TRUE((std::is_same_v<decltype(PC::m_nVersion), std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(PC::m_schema), ESchema2>));
    EXPECT_TRUE((std::is_same_v<decltype(PC::m_nUserData), std::uint64_t>));
    EXPECT_TRUE((std::is_same_v<decltype(PC::m_mode), std::int32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(PC::m_nExData), std::uint64_t>));
    EXPECT_TRUE((std::is_same_v<decltype(PC::m_nData), std::uint64_t>));
    EXPECT_TRUE((std::is_same_v<decltype(PC::m_nParamA), std::int32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(PC::m_nParamB), std::int32_t>));
}

TEST(PC, AFreshContextHasEveryDefault) {
    const PC pc;
    ExpectDefaultsButStrings(pc);
    EXPECT_TRUE(pc.m_strName.IsEmpty());
    EXPECT_TRUE(pc.m_strExInfo.IsEmpty());
}

TEST(PC, ANumberForTheSchemaIsCheckedAgainstTheKnownOnes) {
    EXPECT_EQ(PC(5, 1).m_schema, ESchema2(1));
    EXPECT_EQ(PC(5, 14).m_schema, ESchema2(14));
    EXPECT_EQ(PC(5, 23).m_schema, ESchema2(23));
    EXPECT_EQ(PC(5, 0u).m_schema, ESchema2(0));
    EXPECT_EQ(PC(5, 24).m_schema, ESchema2(0));
    EXPECT_EQ(PC(5, 0xFFFFFFFF).m_schema, ESchema2(0));
    PC pc(5, 14);
    EXPECT_EQ(pc.m_nVersion, 5u);
    pc.m_nVersion = 0;
    pc.m_schema = ESchema2(0);
    ExpectDefaultsButStrings(pc);
}

TEST(PC, ASchemaValueIsTakenAsItStands) {
    PC pc(5, ESchema2(99));
    EXPECT_EQ(pc.m_nVersion, 5u);
    EXPECT_EQ(pc.m_schema, ESchema2(99));
    pc.m_nVersion = 0;
    pc.m_schema = ESchema2(0);
    ExpectDefaultsButStrings(pc);
}

TEST(PC, ATextBecomesTheExtendedInformation) {
    const PC pc(CString("info"));
    EXPECT_TRUE(pc.m_strExInfo == "info");
    EXPECT_TRUE(pc.m_strName.IsEmpty());
    ExpectDefaultsButStrings(pc);
}

TEST(PC, ACopyConstructedContextHasNoExtendedObject) {
    PC source;
    Fill(source);
    const PC copy(source);
    ExpectFilledButExObject(copy);
    EXPECT_EQ(copy.m_pExObject, nullptr);
}

TEST(PC, AssignmentTakesTheExtendedObjectToo) {
    PC source;
    Fill(source);
    PC target;
    target.m_pExObject = &g_otherObject;
    EXPECT_EQ(&(target = source), &target);
    ExpectFilledButExObject(target);
    EXPECT_EQ(target.m_pExObject, &g_object);
    source.m_pExObject = nullptr;
    target = source;
    EXPECT_EQ(target.m_pExObject, nullptr);
}

TEST(PC, CopyKeepsTheOwnExtendedObject) {
    PC source;
    Fill(source);
    PC target;
    target.m_pExObject = &g_otherObject;
    target.Copy(source);
    ExpectFilledButExObject(target);
    EXPECT_EQ(target.m_pExObject, &g_otherObject);
}

TEST(PC, CopyExInfoTakesTheExtendedInformationAlone) {
    PC source;
    Fill(source);
    PC target;
    target.CopyExInfo(source);
    EXPECT_TRUE(target.m_strExInfo == "extended");
    EXPECT_EQ(target.m_nExData, 0x200000002u);
    EXPECT_EQ(target.m_pExObject, &g_object);
    EXPECT_TRUE(target.m_strName.IsEmpty());
    target.m_nExData = 0;
    target.m_pExObject = nullptr;
    ExpectDefaultsButStrings(target);
}

TEST(PC, CopyExInfoNeverClearsAnExtendedObject) {
    PC source(CString("new"));
    source.m_nExData = 9;
    PC target;
    target.m_pExObject = &g_object;
    target.CopyExInfo(source);
    EXPECT_TRUE(target.m_strExInfo == "new");
    EXPECT_EQ(target.m_nExData, 9u);
    EXPECT_EQ(target.m_pExObject, &g_object);
}

TEST(PC, ConstructLeavesTheTwoStrings) {
    PC pc;
    Fill(pc);
    pc.Construct();
    ExpectDefaultsButStrings(pc);
    EXPECT_TRUE(pc.m_strName == "name");
    EXPECT_TRUE(pc.m_strExInfo == "extended");
}

}  // namespace
