/// @file
/// Tables of rows written as text, for tests.

#pragma once

#include <gmock/gmock.h>
#include <zt/memory/BufferBase.h>

#include <cstring>
#include <string>

namespace ZT {

/// A buffer whose rows of `rowSize` bytes are, one behind the other, the bytes of `text`.
struct Rows : BufferBase {
    Rows(unsigned char rowSize, const std::string& text) {
        SetRowSize(rowSize);
        SetCount(static_cast<ulong>(text.size() / rowSize));
        if (m_pData) std::memcpy(m_pData, text.data(), text.size());
    }
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;
};

/// The bytes of all rows.
inline std::string TextOf(const BufferBase& buffer) {
    if (!buffer.m_pData) return {};
    return std::string(reinterpret_cast<const char*>(buffer.m_pData),
                       std::size_t{buffer.m_nRowSize} * buffer.m_nCount);
}

/// Matches a buffer with these row size, count and known room.
MATCHER_P3(HasFields, rowSize, count, allocated, "") {
    *result_listener << "whose row size is " << int{arg.m_nRowSize} << ", count " << arg.m_nCount
                     << ", known room " << arg.m_nAllocated;
    return arg.m_nRowSize == rowSize && arg.m_nCount == count && arg.m_nAllocated == allocated;
}

}  // namespace ZT
