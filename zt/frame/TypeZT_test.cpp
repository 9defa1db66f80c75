#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <platform/modules/ModuleHandle.h>
#include <zt/frame/TypeZT.h>
#include <type_traits>

namespace ZT {
namespace {

using testing::ElementsAre;

struct Row {
    int number;
    EObjectType kind;
    const char* name;
};

constexpr Row kRows[] = {
    {0, eObjTypeNULL, "eObjTypeNULL"},
    {1, eObjTypeLine, "eObjTypeLine"},
    {2, eObjTypeMeshSection, "eObjTypeMeshSection"},
    {3, eObjType3DSGenerator, "eObjType3DSGenerator"},
    {4, eObjTypeSORGenerator, "eObjTypeSORGenerator"},
    {5, eObjTypeModelGenerator, "eObjTypeModelGenerator"},
    {6, eObjTypeFrame, "eObjTypeFrame"},
    {7, eObjType3DPoint, "eObjType3DPoint"},
    {8, eObjTypePointSet, "eObjTypePointSet"},
    {9, eObjTypeLineStrip, "eObjTypeLineStrip"},
    {10, eObjTypePlane, "eObjTypePlane"},
    {11, eObjTypeBox, "eObjTypeBox"},
    {12, eObjTypeArc, "eObjTypeArc"},
    {13, eObjTypeFreeFormCurve, "eObjTypeFreeFormCurve"},
    {14, eObjTypeArcSplineCurve, "eObjTypeArcSplineCurve"},
    {15, eObjTypePipeSection, "eObjTypePipeSection"},
    {16, eObjTypeNumericArray, "eObjTypeNumericArray"},
    {17, eObjTypeCircle, "eObjTypeCircle"},
    {18, eObjTypeBRepSection, "eObjTypeBRepSection"},
    {19, eObjTypePathCollisionDetector, "eObjTypePathCollisionDetector"},
    {20, eObjTypeMove, "eObjTypeMove"},
    {21, eObjType3DS, "eObjType3DS"},
    {22, eObjTypeSOR, "eObjTypeSOR"},
    {23, eObjTypeGraphicItem, "eObjTypeGraphicItem"},
    {24, eObjTypeCutEffect, "eObjTypeCutEffect"},
    {25, eObjTypeMeasurement, "eObjTypeMeasurement"},
    {26, eObjTypeLineSection, "eObjTypeLineSection"},
    {27, eObjTypeEllipse, "eObjTypeEllipse"},
    {28, eObjTypeRay, "eObjTypeRay"},
    {29, eObjTypeArray, "eObjTypeArray"},
    {30, eObjTypeSectionOCC, "eObjTypeSectionOCC"},
    {31, eObjTypeESPAlgorithm, "eObjTypeESPAlgorithm"},
    {32, eObjTypeLabel3D, "eObjTypeLabel3D"},
    {33, eObjTypeViewPoint, "eObjTypeViewPoint"},
    {34, eObjTypeSceneItemMeasurement, "eObjTypeSceneItemMeasurement"},
    {35, eObjTypeSceneItemAngleAnnotation, "eObjTypeSceneItemAngleAnnotation"},
    {36, eObjTypeOverlay, "eObjTypeOverlay"},
    {37, eObjTypeListUnkn, "eObjTypeListUnkn"},
    {38, eObjTypeLabelSection, "eObjTypeLabelSection"},
    {39, eObjTypeBRepTextSection, "eObjTypeBRepTextSection"},
    {40, eObjTypeBRepCharSection, "eObjTypeBRepCharSection"},
    {41, eObjTypeSmartLabel, "eObjTypeSmartLabel"},
    {42, eObjTypeMesh, "eObjTypeMesh"},
    {43, eObjTypeSphere, "eObjTypeSphere"},
    {44, eObjTypePrizmInfinite, "eObjTypePrizmInfinite"},
};

TEST(TypeZT, IsFourBytes) {
    EXPECT_EQ(sizeof(TypeZT), 4u);
    EXPECT_EQ(alignof(TypeZT), 1u);
    EXPECT_EQ(TypeZT::m_countCategory, 4);
    static_assert(std::is_same_v<decltype(TypeZT::m_countCategory), const unsigned char>);
    static_assert(std::is_trivially_copyable_v<TypeZT>);
}

TEST(TypeZT, NumberOfLevelsIsExportedByTheLibrary) {
    const HMODULE library =
        AfxModuleFromAddress(reinterpret_cast<const void*>(&TypeZT::EObjectTypeToString));
    const void* const count = GetProcAddress(library, "_ZN2ZT6TypeZT15m_countCategoryE");
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(*static_cast<const unsigned char*>(count), 4);
}

TEST(TypeZT, BeginsWithZeros) {
    EXPECT_THAT(TypeZT().m_category, ElementsAre(0, 0, 0, 0));
}

TEST(TypeZT, TakesTheBytesInTheirOrder) {
    EXPECT_THAT(TypeZT(1, 2, 3, 255).m_category, ElementsAre(1, 2, 3, 255));
}

TEST(TypeZT, ConstructPutsAllBytesBackToZero) {
    TypeZT type(1, 2, 3, 4);
    type.Construct();
    EXPECT_THAT(type.m_category, ElementsAre(0, 0, 0, 0));
}

TEST(TypeZT, CopiesAllFourBytes) {
    const TypeZT source(9, 8, 7, 6);
    const TypeZT constructed(source);
    TypeZT assigned;
    assigned = source;
    TypeZT copied;
    copied.Copy(source);
    EXPECT_EQ(constructed, source);
    EXPECT_EQ(assigned, source);
    EXPECT_EQ(copied, source);
    EXPECT_FALSE(source == TypeZT(9, 8, 7, 5));
}

TEST(TypeZT, EveryKindHasItsNumberAndItsNameAsText) {
    ASSERT_EQ(std::size(kRows), 45u);
    for (int i = 0; i < 45; ++i) {
        const Row& row = kRows[i];
        EXPECT_EQ(row.number, i);
        EXPECT_EQ(static_cast<int>(row.kind), row.number);
        EXPECT_EQ(TypeZT::EObjectTypeToString(row.kind), row.name);
    }
}

TEST(TypeZT, NumbersOutsideOfTheTableAreNoKind) {
    EXPECT_EQ(TypeZT::EObjectTypeToString(static_cast<EObjectType>(44)), "eObjTypePrizmInfinite");
    EXPECT_EQ(TypeZT::EObjectTypeToString(static_cast<EObjectType>(45)), "eObjTypeNULL");
    EXPECT_EQ(TypeZT::EObjectTypeToString(static_cast<EObjectType>(-1)), "eObjTypeNULL");
    EXPECT_TRUE(rc::check([](std::int32_t number) {
        RC_PRE(number < 0 || number > 44);
        RC_ASSERT(TypeZT::EObjectTypeToString(static_cast<EObjectType>(number)) == "eObjTypeNULL");
    }));
}

TEST(TypeZT, KindsAreReachableGloballyAndThroughTheNamespace) {
    static_assert(std::is_same_v<ZT::EObjectType, ::EObjectType>);
    static_assert(std::is_same_v<std::underlying_type_t<::EObjectType>, std::int32_t>);
    EXPECT_EQ(::eObjTypeSphere, ZT::eObjTypeSphere);
}

}  // namespace
}  // namespace ZT
