#include <platform/com/ComError.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string>

#include <platform/base/LastError.h>

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

// The text of `code`, or null.
const char* OwnText(HRESULT code) {
    const auto* found = std::find_if(std::begin(kResultTexts), std::end(kResultTexts),
                                     [code](const ResultText& row) { return row.code == code; });
    return found == std::end(kResultTexts) ? nullptr : found->text;
}

// The text of the system's error whose number `code` carries; empty for none.
std::string SystemText(HRESULT code) {
    const auto bits = static_cast<std::uint32_t>(code);
    constexpr std::uint32_t ofTheSystem = 0x80070000;
    const DWORD number = bits & 0xFFFF;
    return (bits & 0xFFFF0000) == ofTheSystem && number != 0 ? SystemErrorText(number) : "";
}

}  // namespace

_com_error::_com_error(HRESULT code, const char* description)
    : m_code(code), m_description(description) {
    if (OwnText(code) != nullptr) return;
    if (const std::string text = SystemText(code); !text.empty()) {
        std::snprintf(m_text, sizeof m_text, "%s", text.c_str());
    } else {
        std::snprintf(m_text, sizeof m_text, "Unknown error 0x%08X", static_cast<unsigned>(code));
    }
}
_com_error::_com_error(const _com_error&) = default;
_com_error& _com_error::operator=(const _com_error&) = default;
_com_error::~_com_error() = default;

const char* _com_error::ErrorMessage() const {
    const char* own = OwnText(m_code);
    return own == nullptr ? m_text : own;
}

void _com_issue_error(HRESULT code) {
    throw _com_error(code);
}

void _com_raise_error(HRESULT code, const char* description) {
    throw _com_error(code, description);
}
