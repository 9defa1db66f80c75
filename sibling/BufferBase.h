/// @file
/// The older sibling's table of rows.

#pragma once

#include <sibling/Export.h>

#include <cstddef>
#include <cstdint>

namespace PW {

/// Rows of one fixed size in one block of memory, which the buffer owns.
///
/// The row size times the number of rows is the size of the block, computed in 32 bits. A
/// buffer whose size is 0 has no block, and neither has one after `DestroyNoCount`, which
/// keeps the number of rows all the same. `ZT::BufferBase` takes over what such a buffer
/// holds, and hands over to it what it holds itself.
class PW_API BufferBase {
public:
    /// No rows, and a row size of 0.
    BufferBase() = default;
    BufferBase(const BufferBase&) = delete;
    BufferBase& operator=(const BufferBase&) = delete;
    ~BufferBase() { delete[] m_pData; }

    /// Bytes a row.
    unsigned char GetRowSize() const { return m_nRowSize; }

    /// Stores the row size and leaves block and count as they are; so it belongs before
    /// `SetCount`, on a buffer without a block.
    void SetRowSize(unsigned char size) { m_nRowSize = size; }

    /// Number of rows.
    std::uint32_t GetCount() const { return m_nCount; }

    /// Makes `n` the number of rows. Rows that are there keep their bytes; new ones have no
    /// defined contents. When the row size or `n` is 0, no rows are left. An `n` that equals
    /// the present number does nothing. Raises the memory exception, with the buffer
    /// unchanged, when there is no memory.
    void SetCount(std::uint32_t n);

    /// Address of row `i`, valid until the block changes; null beyond the last row or without
    /// a block.
    unsigned char* GetRow(std::uint32_t i) const {
        return m_pData && i < m_nCount ? m_pData + std::size_t{m_nRowSize} * i : nullptr;
    }

    /// Frees the block and keeps row size and count.
    void DestroyNoCount();

    std::uint8_t m_nRowSize = 0;       ///< Bytes a row.
    std::uint32_t m_nCount = 0;        ///< Number of rows.
    std::uint32_t m_nAllocated = 0;    ///< Not used by the operations here.
    unsigned char* m_pData = nullptr;  ///< The block, made by `new[]`, or null.
};

}  // namespace PW
