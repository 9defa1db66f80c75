#include <platform/com/Guid.h>

#include <sys/random.h>

#include <cerrno>

namespace {

// Fills the identifier with random bytes; a request this small is never cut short,
// but a signal may interrupt it before it begins.
bool FillWithRandomBytes(GUID& id) {
    ssize_t got;
    do {
        got = ::getrandom(&id, sizeof id, 0);
    } while (got < 0 && errno == EINTR);
    return got == static_cast<ssize_t>(sizeof id);
}

}  // namespace

HRESULT CoCreateGuid(GUID* id) {
    if (id == nullptr) return E_INVALIDARG;
    if (!FillWithRandomBytes(*id)) {
        *id = GUID_NULL;
        return E_FAIL;
    }
    id->Data3 = static_cast<std::uint16_t>((id->Data3 & 0x0FFF) | 0x4000);
    id->Data4[0] = static_cast<std::uint8_t>((id->Data4[0] & 0x3F) | 0x80);
    return S_OK;
}
