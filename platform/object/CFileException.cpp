#include <platform/object/CFileException.h>
#include <platform/object/detail/CauseText.h>

namespace {

constexpr LPCSTR causeTexts[] = {
    "No error occurred.",
    "An unspecified error occurred while accessing %s.",
    "%s was not found.",
    "%s contains a path that is not valid.",
    "%s could not be opened because there are too many open files.",
    "Access to %s was denied.",
    "A file handle that is not valid was associated with %s.",
    "%s could not be removed because it is the current directory.",
    "%s could not be created because the directory is full.",
    "Seek failed on %s.",
    "A hardware error was reported while accessing %s.",
    "A sharing violation occurred while accessing %s.",
    "A locking violation occurred while accessing %s.",
    "The disk is full while accessing %s.",
    "An attempt was made to access %s past its end.",
};

}  // namespace

IMPLEMENT_DYNAMIC(CFileException, CException)

CFileException::CFileException(INT cause, LONG osError, LPCTSTR fileName)
    : m_cause(cause), m_lOsError(osError), m_strFileName(fileName ? fileName : "") {}

BOOL CFileException::GetErrorMessage(LPTSTR text, UINT size, UINT* helpContext) const {
    const std::string message =
        CauseText(causeTexts, m_cause, genericException, m_strFileName.GetString(), "file");
    return CopyMessage(message.c_str(), text, size, helpContext);
}

INT CFileException::OsErrorToException(LONG error) {
    return ErrnoToException(error);
}

void CFileException::ThrowErrno(INT error, LPCTSTR fileName) {
    AfxThrowFileException(ErrnoToException(error), error, fileName);
}

void CFileException::ThrowOsError(LONG error, LPCTSTR fileName) {
    AfxThrowFileException(OsErrorToException(error), error, fileName);
}

void AfxThrowFileException(INT cause, LONG osError, LPCTSTR fileName) {
    throw new CFileException(cause, osError, fileName);
}
