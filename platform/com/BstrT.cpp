#include <platform/com/BstrT.h>

#include <new>
#include <utility>

#include <platform/com/ComError.h>
#include <platform/text/Utf8.h>

namespace {

BSTR Required(BSTR string) {
    if (string == nullptr) _com_issue_error(E_OUTOFMEMORY);
    return string;
}

BSTR CopyOf(std::wstring_view text) {
    return Required(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
}

// Makes a text in the standard library's own memory.
template <class Making>
auto WithMemory(Making making) {
    try {
        return making();
    } catch (const std::bad_alloc&) {
        _com_issue_error(E_OUTOFMEMORY);
    }
}

std::wstring Widened(const char* text) {
    return WithMemory([text] { return WideFromUtf8(text); });
}

}  // namespace

_bstr_t::_bstr_t(const wchar_t* text)
    : m_string(text == nullptr ? nullptr : Required(SysAllocString(text))) {}

_bstr_t::_bstr_t(const char* text) : m_string(text == nullptr ? nullptr : CopyOf(Widened(text))) {}

_bstr_t::_bstr_t(BSTR string, bool copy) : m_string(string) {
    if (copy && string != nullptr) {
        m_string = Required(
            SysAllocStringByteLen(reinterpret_cast<const char*>(string), SysStringByteLen(string)));
    }
}

_bstr_t::_bstr_t(const _bstr_t& other) : _bstr_t(other.m_string, true) {}

_bstr_t::_bstr_t(_bstr_t&& other) noexcept
    : m_string(std::exchange(other.m_string, nullptr)),
      m_bytes(std::move(other.m_bytes)),
      m_bytesMade(std::exchange(other.m_bytesMade, false)) {}

_bstr_t& _bstr_t::operator=(const _bstr_t& other) {
    if (this != &other) *this = _bstr_t(other);
    return *this;
}

_bstr_t& _bstr_t::operator=(_bstr_t&& other) noexcept {
    std::swap(m_string, other.m_string);
    std::swap(m_bytes, other.m_bytes);
    std::swap(m_bytesMade, other.m_bytesMade);
    return *this;
}

_bstr_t::~_bstr_t() {
    SysFreeString(m_string);
}

_bstr_t::operator const char*() const {
    if (m_string == nullptr) return nullptr;
    if (!m_bytesMade) {
        m_bytes = WithMemory([this] { return Utf8FromWide(View()); });
        m_bytesMade = true;
    }
    return m_bytes.c_str();
}

BSTR _bstr_t::copy() const {
    return m_string == nullptr ? nullptr : _bstr_t(m_string, true).Detach();
}

void _bstr_t::Attach(BSTR string) {
    if (string != m_string) SysFreeString(m_string);
    m_string = string;
    m_bytesMade = false;
}

BSTR _bstr_t::Detach() {
    m_bytesMade = false;
    return std::exchange(m_string, nullptr);
}

_bstr_t& _bstr_t::operator+=(const _bstr_t& tail) {
    const auto join = [&] { return std::wstring(View()).append(tail.View()); };
    Attach(CopyOf(WithMemory(join)));
    return *this;
}
