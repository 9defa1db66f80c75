/// @file
/// Elements of the container templates in archives.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>
#include <platform/object/CNotSupportedException.h>

#include <algorithm>
#include <cstddef>
#include <type_traits>

class CArchive;
class CString;

namespace Collections {

/// Whether the archive stores, and does not load.
ZTP_API bool IsStoring(const CArchive& ar);

/// Storing: writes `count` and returns it. Loading: reads a count, ignoring `count`, and
/// returns it. A count that no file can hold so many elements of raises the archive
/// exception with the cause `endOfFile`.
ZTP_API INT_PTR SerializeCount(CArchive& ar, INT_PTR count);

/// Stores or loads `size` bytes as they stand in memory. A file that ends too early raises
/// the archive exception with the cause `endOfFile`.
ZTP_API void SerializeImage(CArchive& ar, void* bytes, std::size_t size);

/// How many elements of `elementSize` bytes are transferred at a time, so that a false
/// count in a file meets the end of the file before it has claimed much memory.
constexpr INT_PTR ElementsAtATime(std::size_t elementSize) {
    constexpr std::size_t kBytesAtATime = std::size_t{1} << 24;
    return static_cast<INT_PTR>(std::max<std::size_t>(kBytesAtATime / elementSize, 1));
}

}  // namespace Collections

/// Stores or loads `nCount` elements; what `Serialize` of `CArray`, `CList` and `CMap` does
/// with theirs, a list and a map with one element at a time, an array with many.
///
/// By default plain elements are stored as they stand in memory, and any other raise the
/// not-supported exception. A program specialises this for its own elements, before the
/// first container of that type is used.
template <class TYPE>
void SerializeElements(CArchive& ar, TYPE* pElements, INT_PTR nCount) {
    if constexpr (std::is_trivially_copyable_v<TYPE>) {
        Collections::SerializeImage(ar, pElements, static_cast<UINT_PTR>(nCount) * sizeof(TYPE));
    } else {
        AfxThrowNotSupportedException();
    }
}

/// Texts are stored with their lengths.
template <>
ZTP_API void SerializeElements<CString>(CArchive& ar, CString* pElements, INT_PTR nCount);
