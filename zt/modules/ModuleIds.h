/// @file
/// The identifiers of the suite's modules.
///
/// The values are fixed; they are compared by value, never by address. They are variables only
/// because a query or an operation carries the address of one without `const`: nobody writes
/// into them.

#pragma once

#include <platform/com/Guid.h>
#include <zt/frame/Export.h>

namespace ZT {

extern ZT_API _GUID DMID_MESA;
extern ZT_API _GUID DMID_BUTTE;
extern ZT_API _GUID DMID_FJORD;
extern ZT_API _GUID DMID_BROOK;
extern ZT_API _GUID DMID_DELTA;
extern ZT_API _GUID DMID_MOOR;
extern ZT_API _GUID DMID_TARN;
extern ZT_API _GUID DMID_GLADE;
extern ZT_API _GUID DMID_ORBIT;
extern ZT_API _GUID DMID_RIDGE;
extern ZT_API _GUID DMID_SUMMIT;
extern ZT_API _GUID DMID_ZT;
extern ZT_API _GUID DMID_DUNE;
extern ZT_API _GUID DMID_CANVAS;
extern ZT_API _GUID DMID_VISTA;

}  // namespace ZT
