#include "section/Failure.h"

#include <platform/text/Utf8.h>
#include <algorithm>
#include <cstddef>

namespace section {
namespace {

bool IsUnprintable(wchar_t c) {
    return c < 0x20 || (0x7F <= c && c < 0xA0) || (c & 0xFFFE) == 0xFFFE;
}

std::wstring PrintableWide(std::string_view text) {
    std::wstring wide = WideFromUtf8(text);
    std::replace_if(wide.begin(), wide.end(), IsUnprintable, L'\uFFFD');
    return wide;
}

}  // namespace

std::string Printable(std::string_view text) {
    return Utf8FromWide(PrintableWide(text));
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t kLongest = 40;
    std::wstring wide = PrintableWide(text);
    if (wide.size() > kLongest) {
        wide.replace(kLongest, wide.npos, L"…");
    }
    return "'" + Utf8FromWide(wide) + "'";
}

}  // namespace section
