#include <zt/numerics/DoubleZT.h>

#include <charconv>

namespace ZT {

namespace {

constexpr int kDecimals = 4;

// A sign, the 307 digits of a number up to `zFinite`, the point and the decimals.
constexpr std::size_t kLongestText = 1 + 307 + 1 + kDecimals;

}  // namespace

CString DoubleZT::ToString(double x) {
    if (x < -zFinite) return CString("-inf ");
    if (x > zFinite) return CString("inf ");
    char text[kLongestText + 1];
    char* const end =
        std::to_chars(text, text + kLongestText, x, std::chars_format::fixed, kDecimals).ptr;
    *end = '\0';
    return CString(text);
}

}  // namespace ZT
