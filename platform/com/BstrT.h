/// @file
/// A holder of one `BSTR`.

#pragma once

#include <compare>
#include <string>
#include <string_view>

#include <platform/base/Export.h>
#include <platform/com/Bstr.h>

/// Text that is at home on both sides of an interface: a wide string with its UTF-8
/// form at hand. A value: copies are independent. Empty when made from nothing, from
/// a null pointer or from a null `BSTR`; `GetBSTR` is then null.
///
/// Running out of memory raises `_com_error` with `E_OUTOFMEMORY`.
class ZTP_API _bstr_t {
public:
    _bstr_t() = default;
    /// A copy of wide text up to its zero.
    _bstr_t(const wchar_t* text);
    /// A copy of UTF-8 text up to its zero; broken bytes become U+FFFD.
    _bstr_t(const char* text);
    /// A copy of `string` with all its characters, or with `copy` false the string
    /// itself, which the holder then frees.
    _bstr_t(BSTR string, bool copy);
    _bstr_t(const _bstr_t& other);
    _bstr_t(_bstr_t&& other) noexcept;
    _bstr_t& operator=(const _bstr_t& other);
    _bstr_t& operator=(_bstr_t&& other) noexcept;
    ~_bstr_t();

    /// Length in wide characters.
    UINT length() const { return SysStringLen(m_string); }
    /// Whether the holder has no string at all.
    bool operator!() const { return m_string == nullptr; }

    /// The wide text, null when there is no string.
    operator const wchar_t*() const { return m_string; }
    operator wchar_t*() const { return m_string; }
    /// The UTF-8 text, null when there is no string; lives as long as the holder is
    /// not changed.
    operator const char*() const;

    /// The string itself, which stays the holder's.
    BSTR GetBSTR() const { return m_string; }
    /// A copy that the caller frees with `SysFreeString`.
    BSTR copy() const;
    /// Frees the present string and takes `string` over.
    void Attach(BSTR string);
    /// Hands the string over; the holder is empty from then on.
    BSTR Detach();

    _bstr_t& operator+=(const _bstr_t& tail);
    friend _bstr_t operator+(_bstr_t head, const _bstr_t& tail) { return head += tail; }

    /// Comparison by code point; no string equals the empty one.
    friend bool operator==(const _bstr_t& a, const _bstr_t& b) { return a.View() == b.View(); }
    friend std::strong_ordering operator<=>(const _bstr_t& a, const _bstr_t& b) {
        return a.View() <=> b.View();
    }
    friend bool operator==(const _bstr_t& a, const char* b) { return a == _bstr_t(b); }
    friend bool operator==(const _bstr_t& a, const wchar_t* b) { return a == _bstr_t(b); }
    friend std::strong_ordering operator<=>(const _bstr_t& a, const char* b) {
        return a <=> _bstr_t(b);
    }
    friend std::strong_ordering operator<=>(const _bstr_t& a, const wchar_t* b) {
        return a <=> _bstr_t(b);
    }

private:
    std::wstring_view View() const {
        return m_string == nullptr ? std::wstring_view() : std::wstring_view(m_string, length());
    }

    BSTR m_string = nullptr;
    // The UTF-8 form, made when it is first asked for.
    mutable std::string m_bytes;
    mutable bool m_bytesMade = false;
};
