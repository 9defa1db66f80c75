#include <platform/base/LastError.h>

#include <cerrno>
#include <cstring>

DWORD GetLastError() {
    return static_cast<DWORD>(errno);
}

void SetLastError(DWORD code) {
    errno = static_cast<int>(code);
}

std::string SystemErrorText(DWORD code) {
    const int number = static_cast<int>(code);
    if (!strerrordesc_np(number)) return {};
    const int before = errno;
    char buffer[256];
    std::string text = strerror_r(number, buffer, sizeof buffer);
    errno = before;
    return text;
}
