#include <platform/files/CFile.h>

IMPLEMENT_DYNAMIC(CFile, CObject)

CFile::CFile() : CFile(hFileNull) {}

CFile::CFile(HFILE handle) : m_hFile(handle), m_bCloseOnDelete(handle != hFileNull) {}

CFile::CFile(LPCTSTR path, UINT openFlags) : CFile(hFileNull) {
    CFileException error;
    if (!CFile::Open(path, openFlags, &error))
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
}

CFile::~CFile() {
    if (m_bCloseOnDelete) CFile::Abort();
}

CString CFile::GetFileName() const {
    return m_strFileName.Mid(m_strFileName.ReverseFind('/') + 1);
}

CString CFile::GetFileTitle() const {
    const CString name = GetFileName();
    const int point = name.ReverseFind('.');
    return point > 0 ? name.Left(point) : name;
}

CString CFile::GetFilePath() const {
    return m_strFileName;
}

void CFile::SetFilePath(LPCTSTR path) {
    m_strFileName = path;
}

void CFile::Flush() {}
