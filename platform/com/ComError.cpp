#include <platform/com/ComError.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>

namespace {

struct ResultText {
    HRESULT code;
    const char* text;
};

constexpr ResultText kResultTexts[] = {
    {S_OK, "The operation was done"},
    {S_FALSE, "The answer is no"},
    {E_NOTIMPL, "The operation is not implemented"},
    {E_NOINTERFACE, "The object has no such interface"},
    {E_POINTER, "A pointer is null"},
    {E_ABORT, "The operation was broken off"},
    {E_FAIL, "The operation failed"},
    {E_UNEXPECTED, "The object is not in a state for this operation"},
    {REGDB_E_CLASSNOTREG, "There is no such class"},
    {E_ACCESSDENIED, "Access is denied"},
    {E_HANDLE, "The handle is not valid"},
    {E_OUTOFMEMORY, "There is not enough memory"},
    {E_INVALIDARG, "An argument is not valid"},
    {DISP_E_TYPEMISMATCH, "The types do not match"},
    {DISP_E_BADVARTYPE, "The variant type is not valid"},
    {DISP_E_OVERFLOW, "The value does not fit the type"},
    {DISP_E_BADINDEX, "The index is out of range"},
    {DISP_E_ARRAYISLOCKED, "The array is locked"},
    {DISP_E_PARAMNOTOPTIONAL, "A needed parameter is missing"},
};

}  // namespace

_com_error::_com_error(HRESULT code, const char* description)
    : m_code(code), m_description(description) {
    std::snprintf(m_unknown, sizeof m_unknown, "Unknown error 0x%08X",
                  static_cast<unsigned>(m_code));
}

_com_error::_com_error(const _com_error&) = default;
_com_error& _com_error::operator=(const _com_error&) = default;
_com_error::~_com_error() = default;

const char* _com_error::ErrorMessage() const {
    const auto* found = std::find_if(std::begin(kResultTexts), std::end(kResultTexts),
                                     [this](const ResultText& row) { return row.code == m_code; });
    return found == std::end(kResultTexts) ? m_unknown : found->text;
}

void _com_issue_error(HRESULT code) {
    throw _com_error(code);
}

void _com_raise_error(HRESULT code, const char* description) {
    throw _com_error(code, description);
}
