/// @file
/// The suite's numbering of its kinds of object.

#pragma once

#include <cstdint>

/// What kind of object something is. The numbers are fixed and stored; this library
/// defines none of the objects themselves. The enumerators are reachable through `ZT::`
/// as well.
enum EObjectType : std::int32_t {
    eObjTypeNULL = 0,
    eObjTypeLine = 1,
    eObjTypeMeshSection = 2,
    eObjType3DSGenerator = 3,
    eObjTypeSORGenerator = 4,
    eObjTypeModelGenerator = 5,
    eObjTypeFrame = 6,
    eObjType3DPoint = 7,
    eObjTypePointSet = 8,
    eObjTypeLineStrip = 9,
    eObjTypePlane = 10,
    eObjTypeBox = 11,
    eObjTypeArc = 12,
    eObjTypeFreeFormCurve = 13,
    eObjTypeArcSplineCurve = 14,
    eObjTypePipeSection = 15,
    eObjTypeNumericArray = 16,
    eObjTypeCircle = 17,
    eObjTypeBRepSection = 18,
    eObjTypePathCollisionDetector = 19,
    eObjTypeMove = 20,
    eObjType3DS = 21,
    eObjTypeSOR = 22,
    eObjTypeGraphicItem = 23,
    eObjTypeCutEffect = 24,
    eObjTypeMeasurement = 25,
    eObjTypeLineSection = 26,
    eObjTypeEllipse = 27,
    eObjTypeRay = 28,
    eObjTypeArray = 29,
    eObjTypeSectionOCC = 30,
    eObjTypeESPAlgorithm = 31,
    eObjTypeLabel3D = 32,
    eObjTypeViewPoint = 33,
    eObjTypeSceneItemMeasurement = 34,
    eObjTypeSceneItemAngleAnnotation = 35,
    eObjTypeOverlay = 36,
    eObjTypeListUnkn = 37,
    eObjTypeLabelSection = 38,
    eObjTypeBRepTextSection = 39,
    eObjTypeBRepCharSection = 40,
    eObjTypeSmartLabel = 41,
    eObjTypeMesh = 42,
    eObjTypeSphere = 43,
    eObjTypePrizmInfinite = 44,
};

namespace ZT {

using ::EObjectType;
using enum ::EObjectType;

}  // namespace ZT
