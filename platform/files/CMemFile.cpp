#include <platform/files/CFileStatus.h>
#include <platform/files/CMemFile.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CMemoryException.h>
#include <platform/object/CNotSupportedException.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

IMPLEMENT_DYNAMIC(CMemFile, CFile)

CMemFile::CMemFile(UINT growBytes) : m_nGrowBytes(growBytes) {}

CMemFile::CMemFile(BYTE* buffer, UINT size, UINT growBytes) : m_nGrowBytes(growBytes) {
    CMemFile::Attach(buffer, size, growBytes);
}

CMemFile::~CMemFile() {
    ReleaseBlock();
}

void CMemFile::Attach(BYTE* buffer, UINT size, UINT growBytes) {
    if (!buffer && size > 0) AfxThrowInvalidArgException();
    ReleaseBlock();
    m_lpBuffer = buffer;
    m_nBufferSize = size;
    m_nFileSize = growBytes == 0 ? size : 0;
    m_nGrowBytes = growBytes;
    m_bAutoDelete = FALSE;
}

BYTE* CMemFile::Detach() {
    BYTE* const block = m_lpBuffer;
    m_lpBuffer = nullptr;
    m_nGrowBytes = 0;
    ReleaseBlock();
    return block;
}

// Leaves an empty file without a block.
void CMemFile::ReleaseBlock() {
    if (m_lpBuffer && m_bAutoDelete) Free(m_lpBuffer);
    m_lpBuffer = nullptr;
    m_nPosition = m_nBufferSize = m_nFileSize = 0;
}

ULONGLONG CMemFile::GetPosition() const {
    return m_nPosition;
}

BOOL CMemFile::GetStatus(CFileStatus& status) const {
    status = CFileStatus();
    status.m_size = m_nFileSize;
    status.m_szFullName = m_strFileName;
    return TRUE;
}

ULONGLONG CMemFile::Seek(LONGLONG offset, UINT from) {
    const SIZE_T origins[] = {0, m_nPosition, m_nFileSize};
    LONGLONG position = 0;
    const bool possible =
        from <= end &&
        !__builtin_add_overflow(static_cast<LONGLONG>(origins[from]), offset, &position) &&
        position >= 0;
    if (!possible) AfxThrowFileException(CFileException::badSeek, -1, m_strFileName);
    m_nPosition = static_cast<SIZE_T>(position);
    return m_nPosition;
}

void CMemFile::SetLength(ULONGLONG length) {
    FillTo(length);
    m_nFileSize = length;
    m_nPosition = std::min(m_nPosition, m_nFileSize);
}

ULONGLONG CMemFile::GetLength() const {
    return m_nFileSize;
}

UINT CMemFile::Read(void* buffer, UINT count) {
    if (m_nPosition >= m_nFileSize) return 0;
    const auto bytes = static_cast<UINT>(std::min<SIZE_T>(count, m_nFileSize - m_nPosition));
    Memcpy(static_cast<BYTE*>(buffer), m_lpBuffer + m_nPosition, bytes);
    m_nPosition += bytes;
    return bytes;
}

void CMemFile::Write(const void* buffer, UINT count) {
    if (count == 0) return;
    const SIZE_T last = m_nPosition + count;
    GrowFile(last);
    FillTo(m_nPosition);
    Memcpy(m_lpBuffer + m_nPosition, static_cast<const BYTE*>(buffer), count);
    m_nPosition = last;
    m_nFileSize = std::max(m_nFileSize, last);
}

void CMemFile::Abort() {
    Close();
}

void CMemFile::Close() {
    m_nGrowBytes = 0;
    ReleaseBlock();
    m_strFileName.Empty();
}

void CMemFile::Flush() {}

CFile* CMemFile::Duplicate() const {
    AfxThrowNotSupportedException();
}

void CMemFile::LockRange(ULONGLONG /*position*/, ULONGLONG /*count*/) {
    AfxThrowNotSupportedException();
}

void CMemFile::UnlockRange(ULONGLONG /*position*/, ULONGLONG /*count*/) {
    AfxThrowNotSupportedException();
}

BYTE* CMemFile::Alloc(SIZE_T bytes) {
    return static_cast<BYTE*>(std::malloc(bytes));
}

BYTE* CMemFile::Realloc(BYTE* block, SIZE_T bytes) {
    return static_cast<BYTE*>(std::realloc(block, bytes));
}

BYTE* CMemFile::Memcpy(BYTE* target, const BYTE* source, SIZE_T bytes) {
    return static_cast<BYTE*>(std::memmove(target, source, bytes));
}

void CMemFile::Free(BYTE* block) {
    std::free(block);
}

// Extends the file to `length` bytes by zeros.
void CMemFile::FillTo(SIZE_T length) {
    if (length <= m_nFileSize) return;
    GrowFile(length);
    std::memset(m_lpBuffer + m_nFileSize, 0, length - m_nFileSize);
    m_nFileSize = length;
}

// The block grows by a half at least, so that a long file written in small pieces
// is not copied for each step.
void CMemFile::GrowFile(SIZE_T length) {
    if (length <= m_nBufferSize) return;
    constexpr SIZE_T largest = std::numeric_limits<SIZE_T>::max() / 4;
    if (m_nGrowBytes == 0 || length > largest) AfxThrowMemoryException();
    const SIZE_T wanted = std::max(length, m_nBufferSize + m_nBufferSize / 2);
    const SIZE_T bytes = (wanted + m_nGrowBytes - 1) / m_nGrowBytes * m_nGrowBytes;
    BYTE* const block = m_lpBuffer ? Realloc(m_lpBuffer, bytes) : Alloc(bytes);
    if (!block) AfxThrowMemoryException();
    m_lpBuffer = block;
    m_nBufferSize = bytes;
}
