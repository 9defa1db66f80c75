#include <platform/files/CArchive.h>
#include <platform/files/CFile.h>
#include <platform/files/detail/ArchiveObjects.h>
#include <platform/object/CException.h>
#include <platform/object/CInvalidArgException.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr INT smallestBuffer = 128;

// What escapes a destructor would end the program.
template <class Action>
void IgnoringExceptions(Action action) {
    try {
        action();
    } catch (CException* exception) {
        exception->Delete();
    } catch (...) {
    }
}

}  // namespace

CArchive::CArchive(CFile* file, UINT mode, INT bufferSize, void* buffer)
    : m_nMode(mode), m_nBufSize(std::max(bufferSize, smallestBuffer)), m_pFile(file) {
    if (!file) AfxThrowInvalidArgException();
    m_strFileName = file->GetFilePath();
    if (!buffer || bufferSize < smallestBuffer) {
        m_ownBuffer = std::make_unique_for_overwrite<BYTE[]>(static_cast<std::size_t>(m_nBufSize));
        buffer = m_ownBuffer.get();
    }
    m_lpBufStart = m_lpBufCur = m_lpBufMax = static_cast<BYTE*>(buffer);
    if (IsStoring()) m_lpBufMax += m_nBufSize;
}

CArchive::~CArchive() {
    if (m_pFile && !(m_nMode & bNoFlushOnDelete)) IgnoringExceptions([this] { Close(); });
}

void CArchive::Fail(INT cause) const {
    AfxThrowArchiveException(cause, m_strFileName);
}

void CArchive::CheckTransfer(BOOL storing) const {
    if (!m_pFile) AfxThrowInvalidArgException();
    if (storing && IsLoading()) Fail(CArchiveException::readOnly);
    if (!storing && IsStoring()) Fail(CArchiveException::writeOnly);
}

void CArchive::Flush() {
    if (!m_pFile) AfxThrowInvalidArgException();
    if (IsBufferEmpty()) return;
    BYTE* const end = m_lpBufCur;
    if (IsLoading()) {
        const LONGLONG unread = m_lpBufMax - m_lpBufCur;
        m_lpBufCur = m_lpBufMax = m_lpBufStart;
        m_pFile->Seek(-unread, CFile::current);
    } else {
        m_lpBufCur = m_lpBufStart;
        m_pFile->Write(m_lpBufStart, static_cast<UINT>(end - m_lpBufStart));
    }
}

void CArchive::Close() {
    if (!m_pFile) return;
    Flush();
    Abort();
}

void CArchive::Abort() {
    m_pFile = nullptr;
    m_lpBufCur = m_lpBufMax = m_lpBufStart;
}

void CArchive::MakeRoom(UINT count) {
    CheckTransfer(TRUE);
    if (m_lpBufMax - m_lpBufCur < static_cast<std::ptrdiff_t>(count)) Flush();
}

void CArchive::Write(const void* bytes, UINT count) {
    CheckTransfer(TRUE);
    if (count == 0) return;
    MakeRoom(count);
    if (count >= static_cast<UINT>(m_nBufSize)) {
        m_pFile->Write(bytes, count);
        return;
    }
    std::memcpy(m_lpBufCur, bytes, count);
    m_lpBufCur += count;
}

// A file may give less than it is asked for before its end.
UINT CArchive::ReadFromFile(BYTE* to, UINT count) {
    UINT total = 0;
    while (total < count) {
        const UINT got = m_pFile->Read(to + total, count - total);
        if (got == 0) break;
        total += got;
    }
    return total;
}

// Brings `count` bytes into the buffer, if the file has them, and whatever else the
// file gives at once. Answers how many of them are there.
UINT CArchive::ReadAhead(UINT count) {
    auto held = static_cast<UINT>(m_lpBufMax - m_lpBufCur);
    if (held >= count) return count;
    std::memmove(m_lpBufStart, m_lpBufCur, held);
    m_lpBufCur = m_lpBufStart;
    m_lpBufMax = m_lpBufStart + held;
    while (held < count) {
        const UINT got = m_pFile->Read(m_lpBufMax, static_cast<UINT>(m_nBufSize) - held);
        if (got == 0) return held;
        held += got;
        m_lpBufMax += got;
    }
    return count;
}

void CArchive::FillBuffer(UINT count) {
    CheckTransfer(FALSE);
    if (count > static_cast<UINT>(m_nBufSize)) Fail(CArchiveException::bufferFull);
    if (ReadAhead(count) < count) Fail(CArchiveException::endOfFile);
}

UINT CArchive::TakeBuffered(BYTE* to, UINT count) {
    const auto taken = std::min(count, static_cast<UINT>(m_lpBufMax - m_lpBufCur));
    std::memcpy(to, m_lpBufCur, taken);
    m_lpBufCur += taken;
    return taken;
}

UINT CArchive::Read(void* bytes, UINT count) {
    CheckTransfer(FALSE);
    if (count == 0) return 0;
    auto* to = static_cast<BYTE*>(bytes);
    const UINT taken = TakeBuffered(to, count);
    const UINT rest = count - taken;
    if (rest >= static_cast<UINT>(m_nBufSize)) return taken + ReadFromFile(to + taken, rest);
    ReadAhead(rest);
    return taken + TakeBuffered(to + taken, rest);
}

void CArchive::EnsureRead(void* bytes, UINT count) {
    if (Read(bytes, count) < count) Fail(CArchiveException::endOfFile);
}

void CArchive::WriteCount(DWORD_PTR count) {
    constexpr WORD longCount = 0xFFFF;
    constexpr DWORD longerCount = 0xFFFFFFFF;
    if (count < longCount) {
        *this << static_cast<WORD>(count);
    } else if (count < longerCount) {
        *this << longCount << static_cast<DWORD>(count);
    } else {
        *this << longCount << longerCount << ULONGLONG{count};
    }
}

DWORD_PTR CArchive::ReadCount() {
    WORD count = 0;
    *this >> count;
    if (count != 0xFFFF) return count;
    DWORD longer = 0;
    *this >> longer;
    if (longer != 0xFFFFFFFF) return longer;
    ULONGLONG longest = 0;
    *this >> longest;
    return longest;
}
