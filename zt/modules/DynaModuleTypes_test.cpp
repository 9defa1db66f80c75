// What modules know of the types of objects.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zt/modules/DynaModule.h>

#include <climits>
#include <map>
#include <string>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(DynaModuleTypes, NamesOfTypes) {
    const std::map<int, std::string> names = {
        {1, "Line"},
        {2, "MeshSection"},
        {6, "Frame"},
        {7, "3DPoint"},
        {8, "PointArraySection"},
        {9, "SegmentStripSection"},
        {10, "Plane"},
        {11, "Box"},
        {12, "Arc"},
        {13, "FreeFormCurve"},
        {14, "SplinedCurve"},
        {15, "PipeSection"},
        {16, "NumericArray"},
        {17, "Circle"},
        {18, "BRepSection"},
        {19, "PathCollisionDetector"},
        {20, "Move"},
        {21, "3DS"},
        {22, "SOR"},
        {23, "GraphicItem"},
        {24, "CutEffect"},
        {25, "Measurement"},
        {27, "Ellipse"},
        {28, "Ray"},
        {29, "Array"},
        {30, "SectionOCC"},
        {31, "ESPAlgorithm"},
        {32, "Label3D"},
        {33, "ViewPoint"},
        {34, "SceneItemMeasurement"},
        {35, "SceneItemAngleAnnotation"},
        {36, "Overlay"},
        {37, "ListUnkn"},
        {38, "LabelSection"},
        {41, "SmartLabel"},
        {42, "Mesh"},
        {43, "Sphere"},
    };
    EXPECT_EQ(names.size(), 37u);
    for (int type = -2; type <= 100; ++type) {
        const auto row = names.find(type);
        EXPECT_STREQ(DynaModule::GetTypeName(type), row == names.end() ? "" : row->second.c_str())
            << type;
    }
    EXPECT_STREQ(DynaModule::GetTypeName(INT_MIN), "");
    EXPECT_STREQ(DynaModule::GetTypeName(INT_MAX), "");
}

TEST(DynaModuleTypes, TypesThatServeAsOthers) {
    const std::map<int, int> rows = {{15, 2}, {21, 2}, {22, 2}, {9, 8}, {28, 1}, {1, 28}};
    for (int type = -2; type <= 50; ++type) {
        CArray<int, int> types;
        types.Add(99);
        DynaModule::GetCompatibleTypes(type, types);
        const std::vector<int> found(types.begin(), types.end());
        const auto row = rows.find(type);
        if (row == rows.end()) {
            EXPECT_THAT(found, IsEmpty()) << type;
        } else {
            EXPECT_THAT(found, ElementsAre(row->second)) << type;
        }
    }
}

}  // namespace
}  // namespace ZT
