/// @file
/// Which module a registered class belongs to.

#pragma once

#include <platform/modules/AFX_EXTENSION_MODULE.h>

/// Moves the classes that the record's module has registered in the common list
/// to the front of the record's own, in their order.
void TakeModuleClasses(AFX_EXTENSION_MODULE& record);
