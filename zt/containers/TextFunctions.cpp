#include <zt/containers/ByteSet.h>
#include <zt/containers/TextFunctions.h>
#include <cctype>

namespace ZT {

int hxToLower(char* text) {
    if (text == nullptr) return 0;
    int length = 0;
    for (; text[length] != '\0'; ++length) {
        const auto byte = static_cast<unsigned char>(text[length]);
        if (std::isupper(byte) != 0) text[length] = static_cast<char>(byte + 32);
    }
    return length;
}

char* hxGetBuff(CString& s) {
    return s.GetBuffer(s.GetLength());
}

int hxlibReverseFind(const CString& s, const char* chars) {
    if (chars == nullptr) return -1;
    return LastIn(s, s.GetLength() - 1, ByteSet(chars));
}

}  // namespace ZT
