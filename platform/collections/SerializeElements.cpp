#include <platform/collections/SerializeElements.h>
#include <platform/files/CArchive.h>
#include <platform/text/CString.h>

#include <limits>

namespace Collections {

namespace {

constexpr std::size_t kLargestTransfer = std::numeric_limits<INT>::max();

}  // namespace

bool IsStoring(const CArchive& ar) {
    return ar.IsStoring() != 0;
}

INT_PTR SerializeCount(CArchive& ar, INT_PTR count) {
    if (IsStoring(ar)) {
        ar.WriteCount(static_cast<DWORD_PTR>(count));
        return count;
    }
    const DWORD_PTR stored = ar.ReadCount();
    if (stored > static_cast<DWORD_PTR>(std::numeric_limits<INT_PTR>::max())) {
        AfxThrowArchiveException(CArchiveException::endOfFile, ar.m_strFileName);
    }
    return static_cast<INT_PTR>(stored);
}

void SerializeImage(CArchive& ar, void* bytes, std::size_t size) {
    for (auto* at = static_cast<BYTE*>(bytes); size > 0;) {
        const std::size_t part = std::min(size, kLargestTransfer);
        if (IsStoring(ar)) {
            ar.Write(at, static_cast<UINT>(part));
        } else {
            ar.EnsureRead(at, static_cast<UINT>(part));
        }
        at += part;
        size -= part;
    }
}

}  // namespace Collections

template <>
void SerializeElements<CString>(CArchive& ar, CString* pElements, INT_PTR nCount) {
    for (CString* text = pElements; text != pElements + nCount; ++text) {
        if (Collections::IsStoring(ar)) {
            ar << *text;
        } else {
            ar >> *text;
        }
    }
}
