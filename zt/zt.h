/// @file
/// The whole library in one include.

#pragma once

#include <zt/containers/ByteSet.h>
#include <zt/containers/HXString.h>
#include <zt/containers/HexText.h>
#include <zt/containers/TextFunctions.h>
#include <zt/frame/ErrorMessage.h>
#include <zt/frame/LibraryStart.h>
#include <zt/frame/ModifiableBasic.h>
#include <zt/frame/OW.h>
#include <zt/frame/OWC.h>
#include <zt/frame/ObjectEx.h>
#include <zt/frame/ObjectType.h>
#include <zt/frame/PwException.h>
#include <zt/frame/RefObj.h>
#include <zt/frame/StateBedrock.h>
#include <zt/frame/TriStateAlg.h>
#include <zt/frame/TypeZT.h>
#include <zt/frame/ZT.h>
#include <zt/frame/ZTObject.h>
#include <zt/numerics/Constants.h>
#include <zt/numerics/DoubleZT.h>
#include <zt/numerics/Interpolator.h>
#include <zt/numerics/S1.h>
#include <zt/numerics/ScalarFunctions.h>
#include <zt/numerics/SolveNl.h>
#include <zt/persist/PC.h>
#include <zt/persist/PCExBase.h>
#include <zt/ranges/Grid1DLocation.h>
#include <zt/ranges/MapAffine.h>
#include <zt/ranges/RangePos.h>
#include <zt/ranges/RangeR1.h>
#include <zt/ranges/RangeS1.h>
#include <zt/ranges/ZTPair.h>
