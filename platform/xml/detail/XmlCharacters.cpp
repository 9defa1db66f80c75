#include <platform/xml/detail/XmlCharacters.h>

#include <emmintrin.h>

#include <algorithm>

namespace {

constexpr std::size_t kBlock = sizeof(__m128i);

struct CodeRange {
    char32_t first;
    char32_t last;
};

// What starts a name beyond ASCII.
constexpr CodeRange kNameStarts[] = {
    {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
    {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
    {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF},
};
// What may also stand inside one.
constexpr CodeRange kNameParts[] = {{0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <std::size_t N>
bool Holds(const CodeRange (&ranges)[N], char32_t c) {
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [c](const CodeRange& range) { return range.first <= c && c <= range.last; });
}

bool IsTail(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

// Whether a block is plain ASCII and free of control characters other than tab, line
// feed and carriage return.
bool IsPlain(const char* bytes) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
    // Bytes from 0x80 on are negative, and so below the space, too.
    const __m128i low = _mm_cmplt_epi8(block, _mm_set1_epi8(' '));
    const __m128i white = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(block, _mm_set1_epi8('\t')),
                                                    _mm_cmpeq_epi8(block, _mm_set1_epi8('\n'))),
                                       _mm_cmpeq_epi8(block, _mm_set1_epi8('\r')));
    return _mm_movemask_epi8(_mm_andnot_si128(white, low)) == 0;
}

bool IsAsciiName(std::string_view name, unsigned char& high) {
    if (name.empty() || !HasXmlClass(name[0], kXmlNameStart)) return false;
    for (const char byte : name) {
        if (!HasXmlClass(byte, kXmlNamePart)) return false;
        high = static_cast<unsigned char>(high | static_cast<unsigned char>(byte));
    }
    return true;
}

}  // namespace

std::size_t ReadUtf8(std::string_view text, char32_t& character) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) {
        character = lead;
        return 1;
    }
    const std::size_t length = lead < 0xC2   ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || length > text.size()) return 0;
    char32_t value = lead & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsTail(byte(i))) return 0;
        value = (value << 6) | (byte(i) & 0x3Fu);
    }
    const bool overlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    if (overlong || surrogate || value > 0x10FFFF) return 0;
    character = value;
    return length;
}

std::size_t FindBadXmlCharacter(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        while (at + kBlock <= text.size() && IsPlain(text.data() + at)) at += kBlock;
        const std::size_t stop = std::min(at + kBlock, text.size());
        while (at < stop) {
            char32_t character = 0;
            const std::size_t length = ReadUtf8(text.substr(at), character);
            if (length == 0 || !IsXmlCharacter(character)) return at;
            at += length;
        }
    }
    return std::string_view::npos;
}

bool IsXmlName(std::string_view name) {
    unsigned char high = 0;
    if (!IsAsciiName(name, high)) return false;
    if (high < 0x80) return true;
    for (std::size_t at = 0; at < name.size();) {
        char32_t c = 0;
        const std::size_t length = ReadUtf8(name.substr(at), c);
        if (length == 0) return false;
        const bool fits = c < 0x80 || Holds(kNameStarts, c) || (at > 0 && Holds(kNameParts, c));
        if (!fits) return false;
        at += length;
    }
    return true;
}
