#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zt/dictionary/DictionaryZT.h>
#include <zt/modules/QC.h>

#include <cstddef>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;

_GUID module = {1, 2, 3, {}};
_GUID otherModule = {2, 2, 3, {}};
const _GUID interfaceId = {4, 5, 6, {}};
const _GUID otherInterface = {5, 5, 6, {}};

// A dictionary with its option open.
struct Open : DictionaryZT {
    static constexpr auto kOption = &Open::m_bOption;
};

// Other values than the defaults in every field but the dictionary.
void Fill(QC& qc) {
    qc.m_pModuleId = &module;
    qc.m_nKey = 0x123456789ABCDEF0;
    qc.m_nQueryKind = 2;
    qc.m_pIID = &interfaceId;
    qc.m_pFound = 3;
    qc.m_pResult = 4;
    qc.m_objType = QC::eQcMesh;
    qc.m_nObjSub = 5;
    qc.m_nSelect = 6;
    for (unsigned i = 0; i < 5; ++i) {
        qc.m_blockA[i] = 10 + i;
        qc.m_blockB[i] = 20 + i;
        qc.m_tail[i] = 30 + i;
    }
    for (unsigned i = 0; i < 6; ++i) qc.m_flagsA[i] = static_cast<unsigned char>(40 + i);
}

// The fields that differ in any bit, in the order of the record.
std::vector<std::string> Differing(const QC& a, const QC& b) {
    std::vector<std::string> names;
    const auto compare = [&](const char* name, const auto& left, const auto& right) {
        if (std::memcmp(&left, &right, sizeof left) != 0) names.emplace_back(name);
    };
    compare("m_pModuleId", a.m_pModuleId, b.m_pModuleId);
    compare("m_nKey", a.m_nKey, b.m_nKey);
    compare("m_nQueryKind", a.m_nQueryKind, b.m_nQueryKind);
    compare("m_pIID", a.m_pIID, b.m_pIID);
    compare("m_pFound", a.m_pFound, b.m_pFound);
    compare("m_pResult", a.m_pResult, b.m_pResult);
    compare("m_objType", a.m_objType, b.m_objType);
    compare("m_nObjSub", a.m_nObjSub, b.m_nObjSub);
    compare("m_blockA", a.m_blockA, b.m_blockA);
    compare("m_flagsA", a.m_flagsA, b.m_flagsA);
    compare("m_nSelect", a.m_nSelect, b.m_nSelect);
    compare("m_blockB", a.m_blockB, b.m_blockB);
    compare("m_tail", a.m_tail, b.m_tail);
    compare("m_pNamedParams", a.m_pNamedParams, b.m_pNamedParams);
    return names;
}

void ExpectDefaults(const QC& qc) {
    EXPECT_EQ(qc.m_pModuleId, nullptr);
    EXPECT_EQ(qc.m_nKey, 0u);
    EXPECT_EQ(qc.m_nQueryKind, 0u);
    EXPECT_EQ(qc.m_pIID, nullptr);
    EXPECT_EQ(qc.m_pFound, 0u);
    EXPECT_EQ(qc.m_pResult, 0u);
    EXPECT_EQ(qc.m_objType, 0);
    EXPECT_EQ(qc.m_nObjSub, 0u);
    EXPECT_THAT(qc.m_blockA, ElementsAre(0, 0, 0, 0, 0));
    EXPECT_THAT(qc.m_flagsA, ElementsAre(0, 0, 0, 0, 0, 0));
    EXPECT_EQ(qc.m_nSelect, -1);
    EXPECT_THAT(qc.m_blockB, ElementsAre(0, 0, 0, 0, 0));
    EXPECT_EQ(qc.m_pNamedParams, nullptr);
}

TEST(QC, FieldsStandInTheirOrderBehindTheTable) {
    EXPECT_EQ(offsetof(QC, m_pModuleId), 8u);
    EXPECT_EQ(offsetof(QC, m_nKey), 16u);
    EXPECT_EQ(offsetof(QC, m_nQueryKind), 24u);
    EXPECT_EQ(offsetof(QC, m_pIID), 32u);
    EXPECT_EQ(offsetof(QC, m_pFound), 40u);
    EXPECT_EQ(offsetof(QC, m_pResult), 48u);
    EXPECT_EQ(offsetof(QC, m_objType), 56u);
    EXPECT_EQ(offsetof(QC, m_nObjSub), 60u);
    EXPECT_EQ(offsetof(QC, m_blockA), 64u);
    EXPECT_EQ(offsetof(QC, m_flagsA), 104u);
    EXPECT_EQ(offsetof(QC, m_nSelect), 112u);
    EXPECT_EQ(offsetof(QC, m_blockB), 120u);
    EXPECT_EQ(offsetof(QC, m_tail), 160u);
    EXPECT_EQ(offsetof(QC, m_pNamedParams), 184u);
    EXPECT_EQ(sizeof(QC), 192u);
}

TEST(QC, FieldsHaveTheirTypes) {
    static_assert(std::is_same_v<decltype(QC::m_pModuleId), _GUID*>);
    static_assert(std::is_same_v<decltype(QC::m_nKey), std::uint64_t>);
    static_assert(std::is_same_v<decltype(QC::m_nQueryKind), std::uint32_t>);
    static_assert(std::is_same_v<decltype(QC::m_pIID), const _GUID*>);
    static_assert(std::is_same_v<decltype(QC::m_pFound), std::uint64_t>);
    static_assert(std::is_same_v<decltype(QC::m_pResult), std::uint64_t>);
    static_assert(std::is_same_v<decltype(QC::m_objType), QC::EObjecType>);
    static_assert(std::is_same_v<decltype(QC::m_nObjSub), std::uint32_t>);
    static_assert(std::is_same_v<decltype(QC::m_blockA), std::uint64_t[5]>);
    static_assert(std::is_same_v<decltype(QC::m_flagsA), unsigned char[6]>);
    static_assert(std::is_same_v<decltype(QC::m_nSelect), std::int32_t>);
    static_assert(std::is_same_v<decltype(QC::m_blockB), std::uint64_t[5]>);
    static_assert(std::is_same_v<decltype(QC::m_tail), std::uint32_t[5]>);
    static_assert(std::is_same_v<decltype(QC::m_pNamedParams), DictionaryZT*>);
    static_assert(sizeof(QC::EObjecType) == 4);
    static_assert(std::has_virtual_destructor_v<QC>);
}

TEST(QC, StartsWithItsDefaults) {
    ExpectDefaults(QC());
    EXPECT_THAT(QC().m_tail, ElementsAre(0, 0, 0, 0, 0));
}

TEST(QC, ConstructorsSetTheAddresses) {
    const QC asksInterface(interfaceId), asksModule(&module), asksBoth(&module, interfaceId);
    EXPECT_EQ(asksInterface.m_pIID, &interfaceId);
    EXPECT_THAT(Differing(asksInterface, QC()), ElementsAre("m_pIID"));
    EXPECT_EQ(asksModule.m_pModuleId, &module);
    EXPECT_THAT(Differing(asksModule, QC()), ElementsAre("m_pModuleId"));
    EXPECT_EQ(asksBoth.m_pModuleId, &module);
    EXPECT_EQ(asksBoth.m_pIID, &interfaceId);
    EXPECT_THAT(Differing(asksBoth, QC()), ElementsAre("m_pModuleId", "m_pIID"));
}

TEST(QC, TheTestFieldsDifferFromTheDefaults) {
    QC qc;
    Fill(qc);
    EXPECT_THAT(Differing(qc, QC()),
                ElementsAre("m_pModuleId", "m_nKey", "m_nQueryKind", "m_pIID", "m_pFound",
                            "m_pResult", "m_objType", "m_nObjSub", "m_blockA", "m_flagsA",
                            "m_nSelect", "m_blockB", "m_tail"));
}

TEST(QC, CopiesTakeEveryField) {
    QC qc;
    Fill(qc);
    QC constructed(qc), assigned;
    EXPECT_THAT(Differing(constructed, qc), ElementsAre());
    assigned = qc;
    EXPECT_THAT(Differing(assigned, qc), ElementsAre());
}

TEST(QC, CopiesShareTheDictionaryWithoutAReference) {
    QC qc;
    DictionaryZT* const params = qc.GetNamedParams(true);
    {
        QC constructed(qc), assigned;
        assigned = qc;
        EXPECT_EQ(constructed.m_pNamedParams, params);
        EXPECT_EQ(assigned.m_pNamedParams, params);
        EXPECT_EQ(params->GetRef(), 1u);
        constructed.m_pNamedParams = nullptr;
        params->AddRef();
    }
    // `assigned` released the reference that was added for it.
    EXPECT_EQ(params->GetRef(), 1u);
    qc.SetBool("still here", true);
    EXPECT_EQ(qc.GetBool("still here"), eTrue);
}

TEST(QC, AssignmentForgetsTheDictionaryOfTheTarget) {
    QC qc;
    DictionaryZT* const params = qc.GetNamedParams(true);
    qc = QC();
    EXPECT_EQ(qc.m_pNamedParams, nullptr);
    EXPECT_EQ(params->GetRef(), 1u);
    params->Release();
}

TEST(QC, EndReleasesTheDictionaryOnce) {
    auto qc = std::make_unique<QC>();
    DictionaryZT* const params = qc->GetNamedParams(true);
    params->AddRef();
    qc.reset();
    EXPECT_EQ(params->GetRef(), 1u);
    params->Release();
}

TEST(QC, ConstructSetsBackAllButTheTail) {
    QC qc;
    Fill(qc);
    DictionaryZT* const params = qc.GetNamedParams(true);
    qc.Construct();
    ExpectDefaults(qc);
    EXPECT_THAT(qc.m_tail, ElementsAre(30, 31, 32, 33, 34));
    // It was forgotten, not released.
    EXPECT_EQ(params->GetRef(), 1u);
    params->Release();
}

TEST(QC, CopyWithoutAddressLeavesModuleInterfaceAndDictionary) {
    QC from;
    Fill(from);
    from.GetNamedParams(true);
    QC to(&otherModule, otherInterface);
    DictionaryZT* const params = to.GetNamedParams(true);
    to.m_nObjSub = 50;
    to.m_tail[4] = 51;
    to.CopyNoID(from);
    EXPECT_THAT(Differing(to, from),
                ElementsAre("m_pModuleId", "m_pIID", "m_nObjSub", "m_tail", "m_pNamedParams"));
    EXPECT_EQ(to.m_pModuleId, &otherModule);
    EXPECT_EQ(to.m_pIID, &otherInterface);
    EXPECT_EQ(to.m_nObjSub, 50u);
    EXPECT_THAT(to.m_tail, ElementsAre(0, 0, 0, 0, 51));
    EXPECT_EQ(to.m_pNamedParams, params);
    EXPECT_EQ(params->GetRef(), 1u);
}

TEST(QC, CopyWithoutAddressOntoItselfChangesNothing) {
    QC qc;
    Fill(qc);
    const QC before(qc);
    qc.CopyNoID(qc);
    EXPECT_THAT(Differing(qc, before), ElementsAre());
}

TEST(QC, SetsItsModule) {
    QC qc;
    qc.SetModuleId(&module);
    EXPECT_EQ(qc.m_pModuleId, &module);
    qc.SetModuleId(nullptr);
    EXPECT_EQ(qc.m_pModuleId, nullptr);
}

TEST(QC, NotesThatSomethingWasFound) {
    QC qc;
    EXPECT_TRUE(qc.ReturnFound(false));
    EXPECT_THAT(Differing(qc, QC()), ElementsAre());
    EXPECT_TRUE(qc.ReturnFound(true));
    EXPECT_EQ(qc.m_pFound, 1u);
    EXPECT_THAT(Differing(qc, QC()), ElementsAre("m_pFound"));
    qc.m_pFound = 5;
    EXPECT_TRUE(qc.ReturnFound(true));
    EXPECT_EQ(qc.m_pFound, 5u);
    EXPECT_TRUE(qc.ReturnFound(false));
    EXPECT_EQ(qc.m_pFound, 5u);
}

TEST(QC, OptionsAreUnknownUntilTheyAreSet) {
    QC qc;
    EXPECT_EQ(qc.GetBool("option"), eUnknown);
    EXPECT_EQ(qc.m_pNamedParams, nullptr);
    qc.SetBool("option", false);
    ASSERT_NE(qc.m_pNamedParams, nullptr);
    EXPECT_EQ(qc.GetBool("option"), eFalse);
    qc.SetBool("option", true);
    EXPECT_EQ(qc.GetBool("option"), eTrue);
    EXPECT_EQ(qc.GetBool("other"), eUnknown);
    EXPECT_EQ(qc.GetBool(nullptr), eUnknown);
    EXPECT_EQ(qc.m_pNamedParams->GetParamCount(eDictBool), 1);
}

TEST(QC, AnOptionWithoutNameIsNotSetButMakesTheDictionary) {
    QC qc;
    qc.SetBool(nullptr, true);
    ASSERT_NE(qc.m_pNamedParams, nullptr);
    EXPECT_EQ(qc.m_pNamedParams->GetParamCount(eDictNone), 0);
    EXPECT_EQ(qc.GetBool(nullptr), eUnknown);
}

TEST(QC, OptionsLeaveParametersOfOtherTypes) {
    QC qc;
    qc.GetNamedParams(true)->AddItem("size", eDictInt, "");
    qc.SetBool("size", true);
    qc.SetBool(nullptr, true);
    EXPECT_EQ(qc.GetBool("size"), eUnknown);
    EXPECT_EQ(qc.m_pNamedParams->GetParamCount(eDictNone), 1);
}

TEST(QC, MakesNamedParametersOnce) {
    QC qc;
    EXPECT_EQ(qc.GetNamedParams(false), nullptr);
    DictionaryZT* const params = qc.GetNamedParams(true);
    ASSERT_NE(params, nullptr);
    EXPECT_EQ(params->GetRef(), 1u);
    EXPECT_TRUE(params->*Open::kOption);
    EXPECT_EQ(qc.GetNamedParams(true), params);
    EXPECT_EQ(qc.GetNamedParams(false), params);
    EXPECT_EQ(params->GetRef(), 1u);
}

TEST(QC, TypesOfObjectsInQueries) {
    const std::map<int, int> numbers = {{18, 5},  {42, 11}, {30, 14}, {39, 22},
                                        {14, 23}, {32, 31}, {25, 32}, {38, 33}};
    for (int type = -1; type <= 50; ++type) {
        const auto row = numbers.find(type);
        EXPECT_EQ(QC::EObjectTypeToQc(static_cast<EObjectType>(type)),
                  row == numbers.end() ? 0 : row->second)
            << type;
    }
    EXPECT_EQ(QC::EObjectTypeToQc(eObjTypeLine), QC::eQcNone);
    EXPECT_EQ(QC::eQcCanvas, 21);
}

}  // namespace
}  // namespace ZT
