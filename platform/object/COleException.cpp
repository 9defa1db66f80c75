#include <platform/object/CMemoryException.h>
#include <platform/object/CNotSupportedException.h>
#include <platform/object/COleException.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace {

struct ResultText {
    HRESULT result;
    LPCSTR text;
};

constexpr ResultText resultTexts[] = {
    {S_OK, "No error occurred."},
    {E_NOTIMPL, "The operation is not implemented."},
    {E_NOINTERFACE, "There is no such interface."},
    {E_POINTER, "A pointer is not valid."},
    {E_ABORT, "The operation was aborted."},
    {E_FAIL, "The operation failed."},
    {E_UNEXPECTED, "The operation failed unexpectedly."},
    {E_ACCESSDENIED, "Access is denied."},
    {E_HANDLE, "A handle is not valid."},
    {E_OUTOFMEMORY, "Out of memory."},
    {E_INVALIDARG, "An argument is not valid."},
    {DISP_E_TYPEMISMATCH, "A type does not match."},
    {DISP_E_BADVARTYPE, "A variant has a bad type."},
    {DISP_E_OVERFLOW, "A number is out of range."},
    {DISP_E_BADINDEX, "An index is out of bounds."},
    {DISP_E_ARRAYISLOCKED, "The array is locked."},
    {DISP_E_PARAMNOTOPTIONAL, "An argument is missing."},
};

}  // namespace

IMPLEMENT_DYNAMIC(COleException, CException)

COleException::COleException() = default;

BOOL COleException::GetErrorMessage(LPTSTR text, UINT size, UINT* helpContext) const {
    const auto known = std::find_if(std::begin(resultTexts), std::end(resultTexts),
                                    [this](const ResultText& row) { return row.result == m_sc; });
    if (known != std::end(resultTexts)) return CopyMessage(known->text, text, size, helpContext);
    char message[64];
    std::snprintf(message, sizeof message, "The operation failed with the result 0x%08X.",
                  static_cast<unsigned>(m_sc));
    return CopyMessage(message, text, size, helpContext);
}

SCODE COleException::Process(const CException* exception) {
    if (!exception) return E_UNEXPECTED;
    if (exception->IsKindOf(RUNTIME_CLASS(COleException)))
        return static_cast<const COleException*>(exception)->m_sc;
    if (exception->IsKindOf(RUNTIME_CLASS(CMemoryException))) return E_OUTOFMEMORY;
    if (exception->IsKindOf(RUNTIME_CLASS(CNotSupportedException))) return E_NOTIMPL;
    return E_UNEXPECTED;
}

void AfxThrowOleException(HRESULT result) {
    auto* exception = new COleException;
    exception->m_sc = result;
    throw exception;
}
