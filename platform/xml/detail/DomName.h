/// @file
/// Names for the parser's library.

#pragma once

#include <cstring>
#include <string_view>

#include <platform/xml/detail/DomBuffer.h>

/// A name with a zero at its end, the only form in which the parser's library takes
/// names. A short one needs no memory.
class DomName {
public:
    explicit DomName(std::string_view name) {
        if (name.size() >= sizeof m_few) m_many = DomBuffer(name.size());
        m_text = name.size() < sizeof m_few ? m_few : m_many.Data();
        if (m_text == nullptr) return;
        std::memcpy(m_text, name.data(), name.size());
        m_text[name.size()] = 0;
    }
    DomName(const DomName&) = delete;
    DomName& operator=(const DomName&) = delete;

    /// Gives the name to a node or an attribute; false without memory.
    template <class Named>
    bool GiveTo(Named named) const {
        return m_text != nullptr && named.set_name(m_text);
    }

private:
    char m_few[64];
    DomBuffer m_many;
    char* m_text;
};
