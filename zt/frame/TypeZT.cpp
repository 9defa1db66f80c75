#include <zt/frame/TypeZT.h>
#include <iterator>

namespace ZT {

namespace {

constexpr const char* kNames[] = {
    "eObjTypeNULL",
    "eObjTypeLine",
    "eObjTypeMeshSection",
    "eObjType3DSGenerator",
    "eObjTypeSORGenerator",
    "eObjTypeModelGenerator",
    "eObjTypeFrame",
    "eObjType3DPoint",
    "eObjTypePointSet",
    "eObjTypeLineStrip",
    "eObjTypePlane",
    "eObjTypeBox",
    "eObjTypeArc",
    "eObjTypeFreeFormCurve",
    "eObjTypeArcSplineCurve",
    "eObjTypePipeSection",
    "eObjTypeNumericArray",
    "eObjTypeCircle",
    "eObjTypeBRepSection",
    "eObjTypePathCollisionDetector",
    "eObjTypeMove",
    "eObjType3DS",
    "eObjTypeSOR",
    "eObjTypeGraphicItem",
    "eObjTypeCutEffect",
    "eObjTypeMeasurement",
    "eObjTypeLineSection",
    "eObjTypeEllipse",
    "eObjTypeRay",
    "eObjTypeArray",
    "eObjTypeSectionOCC",
    "eObjTypeESPAlgorithm",
    "eObjTypeLabel3D",
    "eObjTypeViewPoint",
    "eObjTypeSceneItemMeasurement",
    "eObjTypeSceneItemAngleAnnotation",
    "eObjTypeOverlay",
    "eObjTypeListUnkn",
    "eObjTypeLabelSection",
    "eObjTypeBRepTextSection",
    "eObjTypeBRepCharSection",
    "eObjTypeSmartLabel",
    "eObjTypeMesh",
    "eObjTypeSphere",
    "eObjTypePrizmInfinite",
};

}  // namespace

const unsigned char TypeZT::m_countCategory;

CString TypeZT::EObjectTypeToString(EObjectType t) {
    const bool known = t >= 0 && t < static_cast<int>(std::size(kNames));
    return kNames[known ? t : eObjTypeNULL];
}

}  // namespace ZT
