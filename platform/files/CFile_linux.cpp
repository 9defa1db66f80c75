#include <fcntl.h>
#include <sys/stat.h>

#include <platform/files/CFile.h>
#include <platform/files/CFileStatus.h>
#include <platform/files/detail/FileSharing.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <string>
#include <system_error>

#include <unistd.h>

namespace {

// The system moves no more than this in one call.
constexpr UINT largestTransfer = 0x40000000;

int SystemFlags(UINT openFlags) {
    static constexpr int access[] = {O_RDONLY, O_WRONLY, O_RDWR, O_RDWR};
    int flags = access[openFlags & 3] | O_CLOEXEC | O_NOCTTY;
    if (openFlags & CFile::modeCreate) flags |= O_CREAT;
    if (openFlags & CFile::osWriteThrough) flags |= O_DSYNC;
    return flags;
}

// Runs a system call until no signal interrupts it.
template <class Call>
auto Uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

CString FullPath(LPCTSTR path) {
    std::error_code failure;
    const std::filesystem::path full = std::filesystem::absolute(path, failure);
    if (failure) return path;
    return std::string_view(full.native());
}

bool DirectoryExists(LPCTSTR path) {
    std::error_code failure;
    const std::filesystem::path directory = std::filesystem::path(path).parent_path();
    return directory.empty() || std::filesystem::is_directory(directory, failure);
}

// A file that is not found for want of its directory has a bad path.
INT CauseAtPath(INT error, LPCTSTR path) {
    if (error == ENOENT && (!*path || !DirectoryExists(path))) return CFileException::badPath;
    return CFileException::ErrnoToException(error);
}

[[noreturn]] void ThrowAtPath(int error, LPCTSTR path) {
    AfxThrowFileException(CauseAtPath(error, path), error, path);
}

void Fill(CFileException* exception, INT cause, INT error, LPCTSTR path) {
    if (!exception) return;
    exception->m_cause = cause;
    exception->m_lOsError = error;
    exception->m_strFileName = path;
}

// Empties a file that was opened to be made anew. Devices and pipes have nothing
// to empty.
bool Empty(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0) return false;
    return !S_ISREG(status.st_mode) || Uninterrupted([&] { return ftruncate(descriptor, 0); }) == 0;
}

bool IsDirectory(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

// Whether a descriptor is open although the system calls it bad: it lacks the
// access that was tried.
bool LacksAccess(int descriptor, int error) {
    return error == EBADF && fcntl(descriptor, F_GETFL) >= 0;
}

[[noreturn]] void ThrowTransferFailure(int descriptor, const CString& path) {
    const int error = errno;
    if (LacksAccess(descriptor, error))
        AfxThrowFileException(CFileException::accessDenied, error, path);
    CFileException::ThrowErrno(error, path);
}

struct OpenedFile {
    int descriptor = CFile::hFileNull;
    INT cause = CFileException::none;
    int error = 0;
};

// Closes what was opened; `error` is read before the closing changes it.
OpenedFile Refuse(int descriptor, INT cause, int error) {
    close(descriptor);
    return {CFile::hFileNull, cause, error};
}

OpenedFile OpenFile(LPCTSTR path, UINT openFlags) {
    const int descriptor = Uninterrupted([&] { return open(path, SystemFlags(openFlags), 0666); });
    const int error = errno;
    if (descriptor < 0) return {CFile::hFileNull, CauseAtPath(error, path), error};
    if (IsDirectory(descriptor)) return Refuse(descriptor, CFileException::accessDenied, EISDIR);
    if (!ShareFile(descriptor, openFlags))
        return Refuse(descriptor, CFileException::sharingViolation, EBUSY);
    const bool empty = (openFlags & CFile::modeCreate) && !(openFlags & CFile::modeNoTruncate);
    if (empty && !Empty(descriptor))
        return Refuse(descriptor, CFileException::ErrnoToException(errno), errno);
    return {descriptor};
}

void GiveHints(int descriptor, UINT openFlags) {
    if (openFlags & CFile::osSequentialScan) posix_fadvise(descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
    if (openFlags & CFile::osRandomAccess) posix_fadvise(descriptor, 0, 0, POSIX_FADV_RANDOM);
}

BYTE Attributes(const struct statx& entry, const CString& path) {
    const mode_t kind = entry.stx_mode & S_IFMT;
    UINT attributes = CFile::normal;
    if (!(entry.stx_mode & S_IWUSR)) attributes |= CFile::readOnly;
    if (kind == S_IFDIR) attributes |= CFile::directory;
    if (kind != S_IFDIR && kind != S_IFREG) attributes |= CFile::system;
    if (path.GetAt(std::max(path.ReverseFind('/') + 1, 0)) == '.') attributes |= CFile::hidden;
    return static_cast<BYTE>(attributes);
}

void FillStatus(CFileStatus& status, const struct statx& entry, const CString& path) {
    const bool bornAt = entry.stx_mask & STATX_BTIME;
    status.m_ctime = CTime(bornAt ? entry.stx_btime.tv_sec : entry.stx_ctime.tv_sec);
    status.m_mtime = CTime(entry.stx_mtime.tv_sec);
    status.m_atime = CTime(entry.stx_atime.tv_sec);
    status.m_size = entry.stx_size;
    status.m_attribute = Attributes(entry, path);
    status.m_szFullName = path;
}

constexpr unsigned statusParts = STATX_BASIC_STATS | STATX_BTIME;

timespec TimeToSet(CTime time) {
    timespec set{};
    set.tv_sec = time.GetTime();
    if (time == CTime()) set.tv_nsec = UTIME_OMIT;
    return set;
}

// The range of a lock, cut where the claims on open files begin.
struct flock RangeLock(short type, ULONGLONG position, ULONGLONG count) {
    const ULONGLONG from = std::min(position, firstClaimByte - 1);
    const ULONGLONG most = firstClaimByte - from;
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<off_t>(from);
    lock.l_len = static_cast<off_t>(count == 0 ? most : std::min(count, most));
    return lock;
}

// Renames without replacing, also where the file system cannot do both at once.
int RenameToNew(LPCTSTR oldPath, LPCTSTR newPath) {
    const int result = renameat2(AT_FDCWD, oldPath, AT_FDCWD, newPath, RENAME_NOREPLACE);
    if (result == 0 || (errno != EINVAL && errno != ENOSYS)) return result;
    if (faccessat(AT_FDCWD, newPath, F_OK, AT_SYMLINK_NOFOLLOW) == 0) {
        errno = EEXIST;
        return -1;
    }
    return rename(oldPath, newPath);
}

LPCTSTR OrEmpty(LPCTSTR path) {
    return path ? path : "";
}

}  // namespace

BOOL CFile::Open(LPCTSTR path, UINT openFlags, CFileException* error) {
    if (m_hFile != hFileNull) Close();
    const CString fullPath = FullPath(OrEmpty(path));
    const OpenedFile opened = OpenFile(OrEmpty(path), openFlags);
    if (opened.descriptor == hFileNull) {
        Fill(error, opened.cause, opened.error, fullPath);
        return FALSE;
    }
    GiveHints(opened.descriptor, openFlags);
    m_hFile = opened.descriptor;
    m_bCloseOnDelete = TRUE;
    m_strFileName = fullPath;
    return TRUE;
}

CFile* CFile::Duplicate() const {
    const HFILE handle = fcntl(m_hFile, F_DUPFD_CLOEXEC, 0);
    if (handle < 0) CFileException::ThrowErrno(errno, m_strFileName);
    auto* file = new CFile(handle);
    file->m_strFileName = m_strFileName;
    return file;
}

ULONGLONG CFile::GetPosition() const {
    const off_t position = lseek(m_hFile, 0, SEEK_CUR);
    if (position < 0) CFileException::ThrowErrno(errno, m_strFileName);
    return static_cast<ULONGLONG>(position);
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from) {
    static constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    if (from > end) AfxThrowFileException(CFileException::badSeek, EINVAL, m_strFileName);
    const off_t position = lseek(m_hFile, offset, origins[from]);
    if (position >= 0) return static_cast<ULONGLONG>(position);
    if (errno == EINVAL || errno == EOVERFLOW)
        AfxThrowFileException(CFileException::badSeek, errno, m_strFileName);
    CFileException::ThrowErrno(errno, m_strFileName);
}

void CFile::SetLength(ULONGLONG length) {
    constexpr ULONGLONG longest = LLONG_MAX;
    if (length > longest) CFileException::ThrowErrno(EFBIG, m_strFileName);
    Seek(static_cast<LONGLONG>(length), begin);
    if (Uninterrupted([&] { return ftruncate(m_hFile, static_cast<off_t>(length)); }) == 0) return;
    const int error = errno;
    if (error == EINVAL) AfxThrowFileException(CFileException::accessDenied, error, m_strFileName);
    CFileException::ThrowErrno(error, m_strFileName);
}

ULONGLONG CFile::GetLength() const {
    struct stat status {};
    if (fstat(m_hFile, &status) != 0) CFileException::ThrowErrno(errno, m_strFileName);
    return static_cast<ULONGLONG>(status.st_size);
}

UINT CFile::Read(void* buffer, UINT count) {
    auto* to = static_cast<BYTE*>(buffer);
    UINT total = 0;
    for (;;) {
        const UINT wanted = std::min(count - total, largestTransfer);
        const ssize_t got = Uninterrupted([&] { return read(m_hFile, to + total, wanted); });
        if (got < 0) ThrowTransferFailure(m_hFile, m_strFileName);
        total += static_cast<UINT>(got);
        if (static_cast<UINT>(got) < wanted || total == count) return total;
    }
}

void CFile::Write(const void* buffer, UINT count) {
    const auto* from = static_cast<const BYTE*>(buffer);
    while (count > 0) {
        const UINT wanted = std::min(count, largestTransfer);
        const ssize_t put = Uninterrupted([&] { return write(m_hFile, from, wanted); });
        if (put < 0) ThrowTransferFailure(m_hFile, m_strFileName);
        if (put == 0) CFileException::ThrowErrno(ENOSPC, m_strFileName);
        from += put;
        count -= static_cast<UINT>(put);
    }
}

void CFile::LockRange(ULONGLONG position, ULONGLONG count) {
    struct flock lock = RangeLock(F_WRLCK, position, count);
    if (fcntl(m_hFile, F_OFD_SETLK, &lock) == 0) return;
    const int error = errno;
    if (error == EACCES || error == EAGAIN)
        AfxThrowFileException(CFileException::lockViolation, error, m_strFileName);
    ThrowTransferFailure(m_hFile, m_strFileName);
}

void CFile::UnlockRange(ULONGLONG position, ULONGLONG count) {
    struct flock lock = RangeLock(F_UNLCK, position, count);
    if (fcntl(m_hFile, F_OFD_SETLK, &lock) != 0) CFileException::ThrowErrno(errno, m_strFileName);
}

void CFile::Abort() {
    if (m_hFile != hFileNull) close(m_hFile);
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
}

// A close that was interrupted has closed the file all the same.
void CFile::Close() {
    const HFILE handle = m_hFile;
    const CString path = m_strFileName;
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
    if (handle == hFileNull || close(handle) == 0 || errno == EINTR) return;
    CFileException::ThrowErrno(errno, path);
}

BOOL CFile::GetStatus(CFileStatus& status) const {
    struct statx entry {};
    if (statx(m_hFile, "", AT_EMPTY_PATH, statusParts, &entry) != 0) return FALSE;
    FillStatus(status, entry, m_strFileName);
    return TRUE;
}

BOOL CFile::GetStatus(LPCTSTR path, CFileStatus& status) {
    struct statx entry {};
    if (statx(AT_FDCWD, OrEmpty(path), 0, statusParts, &entry) != 0) return FALSE;
    FillStatus(status, entry, FullPath(path));
    return TRUE;
}

void CFile::SetStatus(LPCTSTR path, const CFileStatus& status) {
    const LPCTSTR target = OrEmpty(path);
    struct stat entry {};
    if (stat(target, &entry) != 0) ThrowAtPath(errno, target);
    const mode_t allowed = entry.st_mode & 07777;
    const mode_t mode = status.m_attribute & readOnly ? allowed & ~mode_t{0222} : allowed | S_IWUSR;
    if (mode != allowed && chmod(target, mode) != 0) CFileException::ThrowErrno(errno, target);
    const timespec times[] = {TimeToSet(status.m_atime), TimeToSet(status.m_mtime)};
    if (utimensat(AT_FDCWD, target, times, 0) != 0) CFileException::ThrowErrno(errno, target);
}

void CFile::Rename(LPCTSTR oldPath, LPCTSTR newPath) {
    const LPCTSTR from = OrEmpty(oldPath);
    const LPCTSTR to = OrEmpty(newPath);
    if (RenameToNew(from, to) == 0) return;
    const int error = errno;
    const INT cause = CauseAtPath(error, from);
    AfxThrowFileException(cause == CFileException::fileNotFound ? CauseAtPath(error, to) : cause,
                          error, from);
}

void CFile::Remove(LPCTSTR path) {
    const LPCTSTR target = OrEmpty(path);
    if (unlink(target) != 0) ThrowAtPath(errno, target);
}
