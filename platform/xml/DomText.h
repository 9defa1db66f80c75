/// @file
/// Text on its way into the DOM.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <platform/com/BstrT.h>
#include <platform/text/CString.h>

/// A tag, a name or a text as an argument of the DOM's operations: made by itself
/// from every kind of byte text, UTF-8 throughout. It only looks at the text, which
/// must live as long as the call. A null pointer is the empty text.
class DomText {
public:
    DomText(std::nullptr_t) {}
    DomText(const char* text) : m_view(text == nullptr ? "" : text) {}
    DomText(const CString& text) : m_view(text.View()) {}
    DomText(const std::string& text) : m_view(text) {}
    DomText(const _bstr_t& text) : DomText(static_cast<const char*>(text)) {}
    DomText(std::string_view text) : m_view(text.empty() ? "" : text) {}

    std::string_view View() const { return m_view; }

private:
    // Never without a place, not even when empty.
    std::string_view m_view = "";
};
