#include <zt/frame/PwException.h>
#include <algorithm>
#include <cstring>

namespace ZT {

PwException::PwException() : PwException(nullptr) {}

PwException::PwException(const char* text) : m_szMessage{} {
    if (text == nullptr) return;
    const std::size_t length = strnlen(text, sizeof m_szMessage - 1);
    std::copy_n(text, length, m_szMessage);
}

PwException::~PwException() = default;

}  // namespace ZT
