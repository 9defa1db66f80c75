#include <zt/memory/BufferBase.h>

#include <platform/base/LargePages.h>
#include <platform/object/Allocation.h>
#include <sibling/BufferBase.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace ZT {

namespace {

// From this many bytes on, a block is worth large pages.
constexpr ulong kLargeBlock = ulong{8} << 20;

// No bytes need no block.
unsigned char* NewBlock(ulong size) {
    if (size == 0) return nullptr;
    unsigned char* const block = AfxNewArray<unsigned char>(size);
    if (size >= kLargeBlock) PreferLargePages(block, size);
    return block;
}

// The count of rows can come from a file that has not their bytes. What makes a block for
// such a count asks here first, so that no block is smaller than its rows.
void RequireRoomFor(uint64 rows, std::uint8_t rowSize) {
    if (rowSize * rows > std::numeric_limits<ulong>::max()) AfxThrowMemoryException();
}

void CopyBytes(unsigned char* to, const unsigned char* from, std::size_t size) {
    if (to && from && size != 0) std::memcpy(to, from, size);
}

void Clear(unsigned char* to, std::size_t size) {
    if (to && size != 0) std::memset(to, 0, size);
}

// Two missing blocks are equal, a missing one and one that is there are not.
bool AreSame(const unsigned char* a, const unsigned char* b, std::size_t size) {
    if (a == b || size == 0) return true;
    return a && b && std::memcmp(a, b, size) == 0;
}

}  // namespace

BufferBase::BufferBase(const PW::BufferBase& src) : BufferBase() {
    m_nRowSize = src.GetRowSize();
    const ulong total = BytesOf(src.GetCount());
    if (total == 0) return;
    if (src.m_pData) m_pData = NewBlock(total);
    CopyBytes(m_pData, src.m_pData, total);
    m_nCount = src.GetCount();
}

// A new block that begins with `kept` bytes of the present one, if there is one.
unsigned char* BufferBase::Resized(ulong total, std::size_t kept) const {
    unsigned char* const block = NewBlock(total);
    CopyBytes(block, m_pData, kept);
    return block;
}

void BufferBase::Replace(unsigned char* block, ulong count) {
    delete[] m_pData;
    m_pData = block;
    m_nCount = count;
    m_nAllocated = 0;
}

void BufferBase::RemoveRow(ulong i) {
    if (!m_pData || i >= m_nCount) return;
    --m_nCount;
    unsigned char* const row = m_pData + std::size_t{m_nRowSize} * i;
    std::memmove(row, row + m_nRowSize, std::size_t{m_nRowSize} * (m_nCount - i));
}

void BufferBase::Allocate(ulong n) {
    if (m_nRowSize != 0) Reshape(m_nRowSize, n);
}

// As `Allocate` does after `SetRowSize`, but the rows in use lend no more bytes than they
// have, and the row size comes last.
void BufferBase::Reshape(std::uint8_t rowSize, ulong n) {
    const ulong total = rowSize * n;
    const ulong kept = m_pData ? std::min({total, rowSize * m_nCount, Total()}) : 0;
    unsigned char* const block = Resized(total, kept);
    Clear(block + kept, total - kept);
    m_nRowSize = rowSize;
    Replace(block, n);
}

void BufferBase::Allocate() {
    RequireRoomFor(m_nCount, m_nRowSize);
    DestroyNoCount();
    m_pData = NewBlock(Total());
}

void BufferBase::Grow(uint64 n) {
    const ulong rows = static_cast<ulong>(n);
    const ulong needed = BytesOf(rows);
    if (m_nAllocated == 0) {
        RequireRoomFor(n, m_nRowSize);
        Allocate(rows);
        m_nAllocated = needed;
    } else {
        // Rows without bytes come here when there are more of them than can be counted.
        const std::uint8_t rowSize = std::max<std::uint8_t>(m_nRowSize, 1);
        // Twice the rows that are asked for, deliberately not twice those that there were.
        RequireRoomFor(2 * n, rowSize);
        Allocate(2 * rows);
        m_nCount = rows;
        m_nAllocated = 2 * needed;
    }
}

void BufferBase::SetCount(ulong n) {
    if (n == m_nCount) return;
    const ulong total = BytesOf(n);
    Replace(Resized(total, std::min(total, Total())), total != 0 ? n : 0);
}

void BufferBase::DestroyNoCount() {
    Replace(nullptr, m_nCount);
}

void BufferBase::Copy(const BufferBase& src, uint64 firstRow) {
    if (firstRow != 0 && firstRow >= src.m_nCount) return;
    const ulong first = static_cast<ulong>(firstRow);
    const ulong count = src.m_nCount - first;
    const ulong total = src.BytesOf(count);
    unsigned char* const block = src.m_pData ? NewBlock(total) : nullptr;
    CopyBytes(block, src.GetRow(first), total);
    m_nRowSize = src.m_nRowSize;
    Replace(block, count);
}

void BufferBase::CopyShallow(BufferBase& src, bool bTake) {
    m_nRowSize = src.m_nRowSize;
    m_nCount = src.m_nCount;
    m_pData = src.m_pData;
    if (!bTake) return;
    src.m_nCount = 0;
    src.m_pData = nullptr;
}

void BufferBase::CopyTo(PW::BufferBase& dst) const {
    dst.DestroyNoCount();
    dst.SetRowSize(m_nRowSize);
    dst.m_nCount = 0;  // An equal count would leave it without a block.
    if (HasBytes()) {
        dst.SetCount(m_nCount);
        CopyBytes(dst.GetRow(0), m_pData, Total());
    }
    dst.m_nCount = m_nCount;  // Rows without bytes are rows as well.
}

bool BufferBase::IsSame(const BufferBase& other) const {
    return m_nRowSize == other.m_nRowSize && m_nCount == other.m_nCount &&
           AreSame(m_pData, other.m_pData, Total());
}

uint64 BufferBase::GetCountCoinsidingRows(const BufferBase& other, uint64 firstRow) const {
    if (m_nRowSize != other.m_nRowSize) return 0;
    const ulong limit = std::min(m_nCount, other.m_nCount);
    if (limit <= firstRow) return 0;
    // One pair of rows and no more, deliberately.
    const ulong row = static_cast<ulong>(firstRow);
    return AreSame(GetRow(row), other.GetRow(row), m_nRowSize) ? limit - row : 0;
}

// What the rows in use bring along when they become rows of `rowSize`: their bytes, but of
// rows that were counted before there was a row size no more than the room they lie in.
std::size_t BufferBase::BytesInUse(std::uint8_t rowSize) const {
    if (!m_pData) return 0;
    const std::size_t bytes = std::size_t{rowSize} * m_nCount;
    return m_nRowSize == 0 && m_nAllocated != 0 ? std::min<std::size_t>(bytes, m_nAllocated)
                                                : bytes;
}

// Appends the rows of `other` from `first` on; rows without a block become zeros, on either
// side. `other` may be this buffer or name its block, so that block goes last.
ulong BufferBase::Append(const BufferBase& other, ulong first) {
    const ulong old = m_nCount;
    const ulong added = other.m_nCount - first;
    if (added == 0) return old;
    const std::uint8_t rowSize = m_nRowSize != 0 ? m_nRowSize : other.m_nRowSize;
    if (rowSize != other.m_nRowSize) return 0;
    RequireRoomFor(uint64{old} + added, rowSize);
    const std::size_t head = std::size_t{rowSize} * old;
    const std::size_t tail = std::size_t{rowSize} * added;
    const std::size_t kept = BytesInUse(rowSize);
    unsigned char* const block = Resized(rowSize * (old + added), kept);
    Clear(block + kept, head - kept);
    if (other.m_pData) {
        CopyBytes(block + head, other.GetRow(first), tail);
    } else {
        Clear(block + head, tail);
    }
    m_nRowSize = rowSize;
    Replace(block, block ? old + added : 0);
    return old;
}

ulong BufferBase::Merge(const BufferBase& other) {
    return Append(other, 0);
}

ulong BufferBase::Unite(const BufferBase& other) {
    const ulong coinciding = static_cast<ulong>(GetCountCoinsidingRows(other, 0));
    Append(other, coinciding);
    return coinciding;
}

}  // namespace ZT
