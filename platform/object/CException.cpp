#include <platform/object/CException.h>

#include <cstdio>
#include <cstring>

namespace {

bool ContinuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// How many bytes of `message` fit into `room` without cutting a character.
std::size_t FittingBytes(LPCSTR message, std::size_t room) {
    const std::size_t length = std::strlen(message);
    if (length <= room) return length;
    while (room > 0 && ContinuesCharacter(message[room])) --room;
    return room;
}

}  // namespace

IMPLEMENT_DYNAMIC(CException, CObject)

CException::CException() : m_bAutoDelete(TRUE) {}

CException::CException(BOOL autoDelete) : m_bAutoDelete(autoDelete) {}

void CException::Delete() {
    if (m_bAutoDelete) delete this;
}

BOOL CException::GetErrorMessage(LPTSTR text, UINT size, UINT* helpContext) const {
    CopyMessage("", text, size, helpContext);
    return FALSE;
}

INT CException::ReportError(UINT /*type*/, UINT /*messageId*/) {
    char text[512];
    if (!GetErrorMessage(text, sizeof text)) std::strcpy(text, "An error without a message");
    std::fprintf(stderr, "%s\n", text);
    return 1;
}

BOOL CException::CopyMessage(LPCSTR message, LPTSTR text, UINT size, UINT* helpContext) {
    if (helpContext) *helpContext = 0;
    if (!text || size == 0) return FALSE;
    const std::size_t bytes = FittingBytes(message, size - 1);
    std::memcpy(text, message, bytes);
    text[bytes] = 0;
    return TRUE;
}
