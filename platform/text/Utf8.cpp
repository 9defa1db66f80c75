#include <platform/text/Utf8.h>

#include <cstddef>
#include <cstdint>

namespace {

constexpr wchar_t kReplacement = 0xFFFD;
constexpr std::uint32_t kLastCodePoint = 0x10FFFF;

bool IsSurrogate(std::uint32_t code) {
    return code >= 0xD800 && code <= 0xDFFF;
}
bool IsText(std::uint32_t code) {
    return code <= kLastCodePoint && !IsSurrogate(code);
}

// What a leading byte announces: how many bytes follow, the bits that it gives
// itself, and the limits of the byte after it, which rule out overlong forms,
// surrogates and values that are too large.
struct Lead {
    int following;
    std::uint32_t bits;
    unsigned char low;
    unsigned char high;
};

Lead ReadLead(unsigned char byte) {
    if (byte < 0x80) return {0, byte, 0, 0};
    if (byte < 0xC2) return {-1, 0, 0, 0};
    if (byte < 0xE0) return {1, byte & 0x1Fu, 0x80, 0xBF};
    if (byte == 0xE0) return {2, 0, 0xA0, 0xBF};
    if (byte == 0xED) return {2, 0xD, 0x80, 0x9F};
    if (byte < 0xF0) return {2, byte & 0x0Fu, 0x80, 0xBF};
    if (byte == 0xF0) return {3, 0, 0x90, 0xBF};
    if (byte < 0xF4) return {3, byte & 0x07u, 0x80, 0xBF};
    if (byte == 0xF4) return {3, 4, 0x80, 0x8F};
    return {-1, 0, 0, 0};
}

// The character at `at`, which moves past it, or past the broken part.
wchar_t NextCharacter(std::string_view bytes, std::size_t& at) {
    Lead lead = ReadLead(static_cast<unsigned char>(bytes[at++]));
    if (lead.following < 0) return kReplacement;
    std::uint32_t code = lead.bits;
    for (int left = lead.following; left > 0; --left) {
        if (at == bytes.size()) return kReplacement;
        const auto byte = static_cast<unsigned char>(bytes[at]);
        if (byte < lead.low || byte > lead.high) return kReplacement;
        lead.low = 0x80;
        lead.high = 0xBF;
        code = code << 6 | (byte & 0x3Fu);
        ++at;
    }
    return static_cast<wchar_t>(code);
}

void AppendCharacter(std::string& bytes, std::uint32_t code) {
    const auto put = [&bytes](std::uint32_t value) { bytes.push_back(static_cast<char>(value)); };
    const auto follow = [&put, code](int shift) { put(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        follow(0);
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        follow(6);
        follow(0);
    } else {
        put(0xF0 | code >> 18);
        follow(12);
        follow(6);
        follow(0);
    }
}

}  // namespace

std::wstring WideFromUtf8(std::string_view bytes) {
    std::wstring wide;
    wide.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) wide.push_back(NextCharacter(bytes, at));
    return wide;
}

std::string Utf8FromWide(std::wstring_view wide) {
    std::string bytes;
    bytes.reserve(wide.size());
    for (const wchar_t unit : wide) {
        const auto code = static_cast<std::uint32_t>(unit);
        AppendCharacter(bytes, IsText(code) ? code : static_cast<std::uint32_t>(kReplacement));
    }
    return bytes;
}
