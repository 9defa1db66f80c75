#include <platform/base/LastError.h>
#include <zt/frame/ErrorMessage.h>
#include <string_view>

namespace ZT {

CString hxGetErrorMessage() {
    const DWORD code = GetLastError();
    if (code == 0) return CString();
    return hxWithoutLineEnd(std::string_view(SystemErrorText(code)));
}

CString hxWithoutLineEnd(const CString& text) {
    constexpr std::string_view lineEnd = "\r\n";
    if (!text.View().ends_with(lineEnd)) return text;
    return text.Left(text.GetLength() - static_cast<int>(lineEnd.size()));
}

}  // namespace ZT
