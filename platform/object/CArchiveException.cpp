#include <platform/object/CArchiveException.h>
#include <platform/object/detail/CauseText.h>

namespace {

constexpr LPCSTR causeTexts[] = {
    "No error occurred.",
    "An unspecified error occurred while accessing %s.",
    "An attempt was made to write to %s, which is being read.",
    "An attempt was made to access %s past its end.",
    "An attempt was made to read from %s, which is being written.",
    "%s has a bad reference to an object.",
    "%s has an object of an unexpected class.",
    "%s has an object of another version.",
    "The data of %s do not fit into the buffer.",
};

}  // namespace

IMPLEMENT_DYNAMIC(CArchiveException, CException)

CArchiveException::CArchiveException(INT cause, LPCTSTR archiveName)
    : m_cause(cause), m_strFileName(archiveName ? archiveName : "") {}

BOOL CArchiveException::GetErrorMessage(LPTSTR text, UINT size, UINT* helpContext) const {
    const std::string message =
        CauseText(causeTexts, m_cause, genericException, m_strFileName.GetString(), "archive");
    return CopyMessage(message.c_str(), text, size, helpContext);
}

void AfxThrowArchiveException(INT cause, LPCTSTR archiveName) {
    throw new CArchiveException(cause, archiveName);
}
