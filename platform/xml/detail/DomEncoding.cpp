#include <platform/xml/detail/DomEncoding.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <string>

namespace {

using Bytes = std::string_view;

// How the bytes of a text make up its characters.
enum class Form { kBytes, kUtf16Little, kUtf16Big, kUtf32 };

struct Layout {
    Form form = Form::kBytes;
    std::size_t mark = 0;
};

// What a byte from 0x80 to 0x9F stands for in windows-1252; 0 for nothing.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

// Encodings in which every byte below 0x80 is the ASCII character. Names that end in a
// hyphen stand for a whole family.
constexpr std::string_view kAsciiBased[] = {
    "us-ascii", "ascii", "latin1",  "iso-8859-", "windows-125", "cp125",   "koi8-",
    "gb2312",   "gbk",   "gb18030", "big5",      "euc-",        "tis-620",
};

std::string LowerCase(Bytes name) {
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

Layout FindLayout(Bytes text) {
    if (text.starts_with(Bytes("\x00\x00\xFE\xFF", 4)) ||
        text.starts_with(Bytes("\xFF\xFE\x00\x00", 4)) ||
        text.starts_with(Bytes("\x00\x00\x00<", 4)) ||
        text.starts_with(Bytes("<\x00\x00\x00", 4))) {
        return {Form::kUtf32, 0};
    }
    if (text.starts_with("\xFF\xFE")) return {Form::kUtf16Little, 2};
    if (text.starts_with("\xFE\xFF")) return {Form::kUtf16Big, 2};
    if (text.starts_with("\xEF\xBB\xBF")) return {Form::kBytes, 3};
    if (text.starts_with(Bytes("<\x00?\x00", 4))) return {Form::kUtf16Little, 0};
    if (text.starts_with(Bytes("\x00<\x00?", 4))) return {Form::kUtf16Big, 0};
    return {};
}

char* PutUtf8(char* to, char32_t c) {
    const auto tail = [c](unsigned shift) {
        return static_cast<char>(0x80 | ((c >> shift) & 0x3F));
    };
    if (c < 0x80) {
        *to++ = static_cast<char>(c);
    } else if (c < 0x800) {
        *to++ = static_cast<char>(0xC0 | (c >> 6));
        *to++ = tail(0);
    } else if (c < 0x10000) {
        *to++ = static_cast<char>(0xE0 | (c >> 12));
        *to++ = tail(6);
        *to++ = tail(0);
    } else {
        *to++ = static_cast<char>(0xF0 | (c >> 18));
        *to++ = tail(12);
        *to++ = tail(6);
        *to++ = tail(0);
    }
    return to;
}

DomBuffer NewBuffer(std::size_t size) {
    DomBuffer buffer(size);
    if (!buffer) throw std::bad_alloc();
    return buffer;
}

XmlFault Fault(std::string reason) {
    return {0, std::move(reason)};
}

// The units of a UTF-16 text.
class Utf16Reader {
public:
    Utf16Reader(Bytes bytes, bool big) : m_bytes(bytes), m_big(big) {}

    bool AtEnd() const { return m_at == m_bytes.size(); }
    // The next character, or nothing where a surrogate has no partner.
    std::optional<char32_t> Next() {
        const char32_t unit = Unit();
        if (unit < 0xD800 || unit > 0xDFFF) return unit;
        if (unit > 0xDBFF || AtEnd()) return std::nullopt;
        const char32_t low = Unit();
        if (low < 0xDC00 || low > 0xDFFF) return std::nullopt;
        return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
    }

private:
    char32_t Unit() {
        const auto first = static_cast<unsigned char>(m_bytes[m_at]);
        const auto second = static_cast<unsigned char>(m_bytes[m_at + 1]);
        m_at += 2;
        return static_cast<char32_t>(m_big ? (first << 8) | second : (second << 8) | first);
    }

    Bytes m_bytes;
    bool m_big;
    std::size_t m_at = 0;
};

std::optional<XmlFault> FromUtf16(DomBuffer& text, const Layout& layout) {
    const Bytes bytes = text.Text().substr(layout.mark);
    if (bytes.size() % 2 != 0) return Fault("The UTF-16 text ends in the middle of a character.");
    const bool big = layout.form == Form::kUtf16Big;
    DomBuffer converted = NewBuffer(bytes.size() / 2 * 3);
    char* to = converted.Data();
    for (Utf16Reader reader(bytes, big); !reader.AtEnd();) {
        const std::optional<char32_t> character = reader.Next();
        if (!character) return Fault("The text is not valid UTF-16.");
        to = PutUtf8(to, *character);
    }
    converted.Resize(static_cast<std::size_t>(to - converted.Data()));

    const std::string declared = LowerCase(DeclaredXmlEncoding(converted.Text()));
    const bool fits = declared == "utf-16" || declared == (big ? "utf-16be" : "utf-16le") ||
                      declared == "iso-10646-ucs-2" || (declared.empty() && layout.mark != 0);
    if (!fits) return Fault("The text is UTF-16, but its declaration does not say so.");
    text = std::move(converted);
    return std::nullopt;
}

// The bytes from 0x80 on turn into the characters that `character` gives for them.
template <class Mapping>
std::optional<XmlFault> FromSingleBytes(DomBuffer& text, Mapping character) {
    DomBuffer converted = NewBuffer(text.Size() * 3);
    char* to = converted.Data();
    for (const char byte : text.Text()) {
        const char32_t c = character(static_cast<unsigned char>(byte));
        if (c == 0 && byte != 0) return Fault("A byte has no meaning in the declared encoding.");
        to = PutUtf8(to, c);
    }
    converted.Resize(static_cast<std::size_t>(to - converted.Data()));
    text = std::move(converted);
    return std::nullopt;
}

bool IsAscii(Bytes text) {
    unsigned char bits = 0;
    for (const char byte : text)
        bits = static_cast<unsigned char>(bits | static_cast<unsigned char>(byte));
    return bits < 0x80;
}

bool IsAsciiBased(Bytes encoding) {
    return std::any_of(std::begin(kAsciiBased), std::end(kAsciiBased),
                       [encoding](Bytes family) { return encoding.starts_with(family); });
}

std::optional<XmlFault> FromDeclaredBytes(DomBuffer& text, const std::string& encoding) {
    if (encoding.starts_with("utf-16") || encoding.starts_with("utf-32") ||
        encoding.starts_with("iso-10646-ucs-")) {
        return Fault("The declared encoding '" + encoding + "' is not that of the bytes.");
    }
    if (IsAsciiBased(encoding) && IsAscii(text.Text())) return std::nullopt;
    if (encoding == "iso-8859-1" || encoding == "latin1") {
        return FromSingleBytes(text, [](unsigned char byte) -> char32_t { return byte; });
    }
    if (encoding == "windows-1252" || encoding == "cp1252") {
        return FromSingleBytes(text, [](unsigned char byte) -> char32_t {
            return byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80u] : byte;
        });
    }
    if (encoding == "us-ascii" || encoding == "ascii") {
        return Fault("The declared encoding is US-ASCII, but the text has other characters.");
    }
    return Fault("The declared encoding '" + encoding + "' cannot be read.");
}

}  // namespace

std::optional<XmlFault> ConvertToUtf8(DomBuffer& text) {
    const Layout layout = FindLayout(text.Text());
    if (layout.form == Form::kUtf32) return Fault("Texts in UTF-32 cannot be read.");
    if (layout.form != Form::kBytes) return FromUtf16(text, layout);
    const std::string declared = LowerCase(DeclaredXmlEncoding(text.Text().substr(layout.mark)));
    if (declared.empty() || declared == "utf-8" || declared == "utf8") return std::nullopt;
    if (layout.mark != 0) {
        return Fault("The text is UTF-8 by its byte order mark, but its declaration says '" +
                     declared + "'.");
    }
    return FromDeclaredBytes(text, declared);
}
