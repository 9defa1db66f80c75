#include <zt/modules/OpC.h>

#include <algorithm>

namespace ZT {

OpC::OpC() = default;

OpC::OpC(_GUID* module) : m_pModuleId(module) {}

OpC::OpC(_GUID* module, const char* name, const char* text)
    : m_pszName(name), m_pszText(text), m_pModuleId(module) {}

OpC::OpC(const char* name, const char* text) : m_pszName(name), m_pszText(text) {}

OpC::~OpC() = default;

void OpC::Construct() {
    m_pModuleId = nullptr;
    Copy(OpC());
}

void OpC::Copy(const OpC& other) {
    OpC copy(other);
    copy.m_pModuleId = m_pModuleId;
    std::ranges::copy(m_tail, copy.m_tail);
    *this = copy;
}

}  // namespace ZT
