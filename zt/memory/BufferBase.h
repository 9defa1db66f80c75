/// @file
/// Tables of rows of one fixed size.

#pragma once

#include <zt/frame/ZT.h>

#include <cstddef>
#include <cstdint>
#include <limits>

namespace PW {
class BufferBase;
}

namespace ZT {

class BufferEx;
class PCExBase;

/// A table of rows of one fixed size, from 0 to 255 bytes, in one block of memory. The
/// buffer does not know what a row means: a row is reached by its index, as an address.
///
/// - A row size of 0 is one that is not yet set.
/// - `m_pData` is null where there is no block. The count can stand above 0 all the same,
///   after `DestroyNoCount` or a loading that found no data; row size and count are then
///   whatever was in the file, up to 4294967295 rows. `GetRow` answers null, and wherever
///   bytes are copied or compared, the buffer counts as one without any. So ask `GetRow`,
///   and not the count, whether a row is there.
/// - `m_nAllocated` is no capacity in general. It is known to `AllocateEx` alone, and 0 says
///   that the block has exactly the bytes of the rows in use.
///
/// The buffer owns its block, which `new[]` made, and ends it with `delete[]`. Plain copies
/// and `CopyShallow` make two buffers name one block, which both destructors would free: the
/// caller ends one of the two with `Construct`. The deep copy is `Copy`.
///
/// The bytes in all are the row size times the count, a number of 32 bits. `SetCount` and
/// `Allocate(ulong)` take a count from the caller and do not guard against a product beyond
/// that: the caller keeps it below 4 GiB, a count from a loaded buffer included. With such a
/// product, or with a row size that was raised by `SetRowSize` over rows in use, the buffer claims
/// bytes that its block does not have. The operations that go by a count which can come from a
/// file, `Allocate()`, `AllocateEx`, `AddNewRow`, `Merge` and `Unite`, raise the memory exception
/// for a block of 4 GiB or more, and change nothing then; `AllocateEx` and `AddNewRow` may do so
/// from 2 GiB on, for the room that they take in advance.
///
/// The address of a row is valid until the next operation that changes the block. When there
/// is no memory for a block, the memory exception is raised; an operation that resizes leaves
/// the buffer as it was then. A buffer serves one thread.
class ZT_API BufferBase {
public:
    /// No rows and no row size.
    BufferBase() { Construct(); }

    /// The rows of the sibling's buffer, in a block of its own. No bytes in all give a count
    /// of 0, whatever the count there.
    explicit BufferBase(const PW::BufferBase& src);

    /// A copy names the same block. For a block of its own, see `Copy`.
    BufferBase(const BufferBase&) = default;
    /// All four fields: both buffers then name one block. What this one held is not freed.
    BufferBase& operator=(const BufferBase&) = default;

    ~BufferBase() { delete[] m_pData; }

    /// Makes the buffer an empty one and frees nothing: for raw memory, or for a buffer whose
    /// block belongs to another one.
    void Construct() {
        m_nRowSize = 0;
        m_nCount = 0;
        m_nAllocated = 0;
        m_pData = nullptr;
    }

    /// @name Rows
    /// @{
    unsigned char GetRowSize() const { return m_nRowSize; }

    /// Stores the row size. Block and count are left alone, so that the rows in use are no
    /// longer what they were; a higher row size over rows in use claims bytes that the block
    /// does not have. Meant for a buffer without rows.
    void SetRowSize(unsigned char size) { m_nRowSize = size; }

    /// Number of rows in use.
    ulong GetCount() const { return m_nCount; }

    bool IsInRange(ulong i) const { return i < m_nCount; }

    /// Address of row `i`; null beyond the last row or without a block.
    unsigned char* GetRow(ulong i) const {
        return m_pData && i < m_nCount ? m_pData + std::size_t{m_nRowSize} * i : nullptr;
    }

    /// Appends a row and gives its address. Grows as `AllocateEx` does. Null, and no row, for
    /// a buffer without a row size and without room; where there is room, which a row size
    /// of 0 never uses up, the row counts and has no bytes at its address. The new row reads as
    /// zero, unless it takes the place of one that `RemoveRow` or a smaller `AllocateEx` has given
    /// up: then it still has the old bytes. A row for which the count has no number raises the
    /// memory exception.
    unsigned char* AddNewRow() {
        Use(uint64{m_nCount} + 1);
        return GetRow(m_nCount - 1);
    }

    /// Removes row `i`; the rows behind it move down by one. Nothing beyond the last row or
    /// without a block. The block keeps its size.
    void RemoveRow(ulong i);
    /// @}

    /// @name Size
    /// Three ways to resize, which differ deliberately.
    /// @{

    /// Exactly `n` rows. Those that are there keep their bytes, new ones read as zero.
    /// Nothing with a row size of 0.
    void Allocate(ulong n);

    /// A new block for the present shape, without defined contents. The old one goes first:
    /// when there is no memory, the buffer has no block and keeps its shape. A shape of 4 GiB
    /// or more raises the memory exception with the old block in place.
    void Allocate();

    /// At least `n` rows, with room for twice as many at each growth, so that rows can be
    /// added one by one. New rows of a new block read as zero; those in room that was left
    /// have the bytes that were there. A smaller `n` gives up rows and keeps the block.
    void AllocateEx(ulong n) { Use(n); }

    /// Exactly `n` rows. Those that are there keep their bytes, new ones have no defined
    /// contents. An `n` that equals the count does nothing, also without a block. When the
    /// row size or `n` is 0, the buffer has no rows and no block afterwards.
    void SetCount(ulong n);

    /// Frees the block; no rows are left. The row size stays.
    void Destroy() {
        DestroyNoCount();
        m_nCount = 0;
    }

    /// Frees the block and keeps row size and count: `Allocate()` makes one of that shape
    /// again.
    void DestroyNoCount();
    /// @}

    /// @name Copies
    /// @{

    /// A deep copy of the rows of `src` from `firstRow` on, and of its row size. With a
    /// `firstRow` of 0 an empty `src` empties this buffer; any other `firstRow` that is not
    /// below the count of `src` changes nothing.
    void Copy(const BufferBase& src, uint64 firstRow);

    /// Names the block of `src`, with its row size and count. What this buffer held is not
    /// freed. With `bTake`, `src` lets go of the block and has no rows afterwards; without,
    /// both name it.
    ///
    /// `m_nAllocated` stays on both sides, so `AllocateEx` and `AddNewRow` take the room of
    /// the old block for that of the new one. Unless it is 0, follow with an operation that
    /// replaces the block before any that grows it. That holds for a `src` that was emptied
    /// with `bTake` as well: within the room it seems to have, `AddNewRow` counts rows there
    /// and answers null, since no block is left.
    void CopyShallow(BufferBase& src, bool bTake);

    /// Makes the sibling's buffer an equal copy of this one, with a block of its own.
    void CopyTo(PW::BufferBase& dst) const;
    /// @}

    /// @name Comparing and joining
    /// @{

    /// Equal row sizes, counts and bytes.
    bool IsSame(const BufferBase& other) const;

    /// Number of rows from `firstRow` to the end of the shorter buffer if the rows at
    /// `firstRow` are equal, and 0 if they are not, if one buffer has no such row, or if the
    /// row sizes differ. Only that one pair of rows is compared; those behind it count as
    /// equal without a look.
    uint64 GetCountCoinsidingRows(const BufferBase& other, uint64 firstRow) const;

    /// Whether the first rows are equal; the others are not looked at.
    bool IsOverlapping(const BufferBase& other) const {
        return GetCountCoinsidingRows(other, 0) != 0;
    }

    /// Appends all rows of `other` and gives the index of the first one of them, which is the
    /// old count. With no rows in `other` that is all it does. A row size of 0 becomes that
    /// of `other`; with any other row size than that of `other` nothing changes and the
    /// result is 0, which is also the result of a merge into an empty buffer.
    ///
    /// Where rows are appended, there is a block for all of them: rows that had none, in
    /// `other` or here, are zero in it.
    ulong Merge(const BufferBase& other);

    /// Appends the rows of `other` behind those that coincide, as `GetCountCoinsidingRows`
    /// counts them, and gives the number of those. When there are none, all of `other` is
    /// appended, as by `Merge`. Two buffers of one row size and both without a block coincide
    /// as far as the shorter one goes.
    ulong Unite(const BufferBase& other);
    /// @}

    /// Stores the buffer as a child "BB" of the current element, or loads it from the first
    /// such child; with a cursor that does neither, nothing happens.
    ///
    /// | child | content |
    /// |---|---|
    /// | "SR" | row size |
    /// | "C" | number of rows |
    /// | "Bn" | 1 for hexadecimal text, 0 for decimal words |
    /// | "Dt" | the data; absent when there are no bytes |
    ///
    /// Storing with `bBinary` writes all bytes as hexadecimal text. Without, it is complete
    /// only for rows of 6 bytes and for 16 bytes in all: rows of 6 bytes are written as
    /// 16-bit words, and announced as rows of 12, since words are loaded as 32-bit ones; of
    /// all other buffers the first four 32-bit words are written, and what a shorter block
    /// lacks of them as 0.
    ///
    /// Rows without a block are stored with an empty "Dt" as hexadecimal text, and with zeros
    /// as words: one for every two bytes of rows of 6 bytes, and four of all others. Either
    /// way the loaded buffer has a block, of zeros.
    ///
    /// Loading goes by the element's own "Bn", hexadecimal when it is missing. Row size and
    /// count that are missing stay as they were. Text that ends early, or has something else
    /// where a digit or a number should be, ends the loading there without a report, and the
    /// bytes from there on are zero. Without "Dt" the buffer has the row size and count that
    /// were read, whatever they are, and no block; nothing is raised. With "Dt", a shape for
    /// which there is no memory, or which has 4 GiB or more, raises the memory exception and
    /// leaves the buffer in the same state.
    void PersistXML(PCExBase& pc, bool bBinary);

    std::uint8_t m_nRowSize;     ///< Bytes a row; 0 is not yet set.
    std::uint32_t m_nCount;      ///< Rows in use.
    std::uint32_t m_nAllocated;  ///< Bytes of the block as `AllocateEx` knows them, or 0.
    unsigned char* m_pData;      ///< The block, or null.

private:
    friend class BufferEx;

    /// The bytes of `n` rows, deliberately in 32 bits.
    ulong BytesOf(ulong n) const { return m_nRowSize * n; }
    ulong Total() const { return BytesOf(m_nCount); }
    bool HasBytes() const { return m_pData && Total() != 0; }

    /// `AllocateEx`, which may be asked for one row more than can be counted.
    void Use(uint64 n) {
        const bool countable = n <= std::numeric_limits<ulong>::max();
        if (m_nAllocated != 0 && countable && m_nRowSize * n <= m_nAllocated) {
            m_nCount = static_cast<ulong>(n);
        } else {
            Grow(n);
        }
    }

    unsigned char* Resized(ulong total, std::size_t kept) const;
    std::size_t BytesInUse(std::uint8_t rowSize) const;
    void Reshape(std::uint8_t rowSize, ulong n);
    void Replace(unsigned char* block, ulong count);
    void Grow(uint64 n);
    ulong Append(const BufferBase& other, ulong first);

    void Store(PCExBase& pc, bool bBinary) const;
    void Load(PCExBase& pc);
};

}  // namespace ZT
