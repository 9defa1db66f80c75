/// @file
/// From a position in a list to an index.

#pragma once

#include <platform/collections/CPtrList.h>
#include <zt/frame/Export.h>

namespace ZT {

/// Number of elements before the one at `pos`; -1 when `pos` is not in the list. Walks the list.
/// The way back is `CPtrList::FindIndex`.
ZT_API int glcPosnToIndexNoType(const CPtrList* pList, POSITION pos);

}  // namespace ZT
