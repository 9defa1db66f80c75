#include <platform/object/CFileException.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace {

struct ErrnoCause {
    int error;
    INT cause;
};

constexpr ErrnoCause errnoCauses[] = {
    {0, CFileException::none},
    {ENOENT, CFileException::fileNotFound},
    {ENXIO, CFileException::fileNotFound},
    {ENODEV, CFileException::fileNotFound},
    {ENOTDIR, CFileException::badPath},
    {ENAMETOOLONG, CFileException::badPath},
    {ELOOP, CFileException::badPath},
    {EMFILE, CFileException::tooManyOpenFiles},
    {ENFILE, CFileException::tooManyOpenFiles},
    {EPERM, CFileException::accessDenied},
    {EACCES, CFileException::accessDenied},
    {EEXIST, CFileException::accessDenied},
    {EISDIR, CFileException::accessDenied},
    {EROFS, CFileException::accessDenied},
    {EBADF, CFileException::invalidFile},
    {EMLINK, CFileException::directoryFull},
    {ESPIPE, CFileException::badSeek},
    {EIO, CFileException::hardIO},
    {EBUSY, CFileException::sharingViolation},
    {ETXTBSY, CFileException::sharingViolation},
    {EAGAIN, CFileException::lockViolation},
    {EDEADLK, CFileException::lockViolation},
    {ENOLCK, CFileException::lockViolation},
    {ENOSPC, CFileException::diskFull},
    {EDQUOT, CFileException::diskFull},
    {EFBIG, CFileException::diskFull},
};

}  // namespace

INT CFileException::ErrnoToException(INT error) {
    const auto row = std::find_if(std::begin(errnoCauses), std::end(errnoCauses),
                                  [error](const ErrnoCause& r) { return r.error == error; });
    return row == std::end(errnoCauses) ? static_cast<INT>(genericException) : row->cause;
}
