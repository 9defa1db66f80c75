#include <platform/xml/detail/XmlSyntax.h>

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <vector>

#include <platform/xml/detail/XmlCharacters.h>

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kDeclarationStart = "<?xml";

bool IsSpace(char byte) {
    return HasXmlClass(byte, kXmlSpace);
}

bool EqualsIgnoringCase(std::string_view a, std::string_view lower) {
    return std::equal(a.begin(), a.end(), lower.begin(), lower.end(), [](char x, char y) {
        return (x >= 'A' && x <= 'Z' ? static_cast<char>(x - 'A' + 'a') : x) == y;
    });
}

// The data of a declaration, taken apart from the front.
class DeclarationReader {
public:
    explicit DeclarationReader(std::string_view data) : m_rest(data) {}

    // Reads ` name="value"`; leaves everything alone if something else stands there.
    bool Take(std::string_view name, std::string_view& value) {
        std::string_view rest = m_rest;
        if (!SkipSpace(rest) || !rest.starts_with(name)) return false;
        rest.remove_prefix(name.size());
        SkipSpace(rest);
        if (!rest.starts_with('=')) return false;
        rest.remove_prefix(1);
        SkipSpace(rest);
        if (rest.empty() || (rest[0] != '"' && rest[0] != '\'')) return false;
        const std::size_t end = rest.find(rest[0], 1);
        if (end == std::string_view::npos) return false;
        value = rest.substr(1, end - 1);
        m_rest = rest.substr(end + 1);
        return true;
    }
    bool AtEnd() {
        SkipSpace(m_rest);
        return m_rest.empty();
    }

private:
    static bool SkipSpace(std::string_view& text) {
        const std::size_t before = text.size();
        while (!text.empty() && IsSpace(text[0])) text.remove_prefix(1);
        return text.size() != before;
    }

    std::string_view m_rest;
};

bool IsVersion(std::string_view text) {
    return text.size() > 2 && text.starts_with("1.") &&
           text.find_first_not_of("0123456789", 2) == std::string_view::npos;
}

bool IsEncodingName(std::string_view text) {
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    if (text.empty() || letters.find(text[0]) == std::string_view::npos) return false;
    return std::all_of(text.begin(), text.end(), [letters](char c) {
        return letters.find(c) != std::string_view::npos || (c >= '0' && c <= '9') || c == '.' ||
               c == '_' || c == '-';
    });
}

// Walks over a document from start to end. Every function leaves the place behind what
// it has read, and throws an `XmlFault` where that does not stand. The zero byte behind
// the text stops every loop over bytes, since no other zero byte can occur.
class Walker {
public:
    explicit Walker(std::string_view text)
        : m_begin(text.data()), m_end(text.data() + text.size()), m_at(m_begin) {}

    void Document() {
        if (Rest().starts_with(kByteOrderMark)) m_at += kByteOrderMark.size();
        if (Rest().starts_with(kDeclarationStart) && !HasXmlClass(m_at[5], kXmlNamePart)) {
            Declaration();
        }
        while (m_at != m_end) {
            if (*m_at == '<') {
                Markup();
            } else if (m_open.empty()) {
                OutsideText();
            } else {
                Text();
            }
        }
        if (!m_open.empty()) {
            Fail(m_at, "The text ends before the end tag of '" + std::string(m_open.back()) + "'.");
        }
        if (!m_rootSeen) Fail(m_at, "The text has no root element.");
    }

private:
    [[noreturn]] void Fail(const char* place, std::string reason) const {
        throw XmlFault{static_cast<std::size_t>(place - m_begin), std::move(reason)};
    }
    // As above, where the text may also just have ended.
    [[noreturn]] void FailHere(const char* reason) const {
        Fail(m_at,
             m_at == m_end ? "The text ends in the middle of a tag, comment or section." : reason);
    }

    std::string_view Rest() const { return {m_at, static_cast<std::size_t>(m_end - m_at)}; }
    void SkipSpace() {
        while (IsSpace(*m_at)) ++m_at;
    }
    void Expect(char byte, const char* reason) {
        if (*m_at != byte) FailHere(reason);
        ++m_at;
    }

    void Declaration() {
        const std::size_t end = Rest().find("?>");
        if (end == std::string_view::npos) Fail(m_end, "The text ends in the XML declaration.");
        XmlDeclaration declaration;
        if (!ReadXmlDeclaration(Rest().substr(5, end - 5), declaration)) {
            Fail(m_at, "The XML declaration is not in order.");
        }
        m_at += end + 2;
    }

    void Markup() {
        switch (m_at[1]) {
            case '/':
                EndTag();
                break;
            case '?':
                Instruction();
                break;
            case '!':
                CommentOrSection();
                break;
            default:
                StartTag();
        }
    }

    std::string_view Name(const char* reason) {
        const char* start = m_at;
        if (!HasXmlClass(*start, kXmlNameStart)) FailHere(reason);
        // A place of its own spares the loop the way through memory.
        const char* at = start;
        unsigned char high = 0;
        do {
            high = static_cast<unsigned char>(high | static_cast<unsigned char>(*at));
            ++at;
        } while (HasXmlClass(*at, kXmlNamePart));
        m_at = at;
        const std::string_view name(start, static_cast<std::size_t>(at - start));
        if (high >= 0x80 && !IsXmlName(name)) {
            Fail(start, "A name has a character that names cannot have.");
        }
        return name;
    }

    // Whether `</name>` stands here.
    bool IsPlainEndTag(std::string_view name) const {
        const char* at = m_at + 2;
        for (const char byte : name) {
            if (*at++ != byte) return false;
        }
        return *at == '>';
    }

    void StartTag() {
        const char* start = m_at++;
        const std::string_view name =
            Name("A '<' must begin a tag, and in a text be written as '&lt;'.");
        if (m_open.empty() && m_rootSeen) Fail(start, "There is more than one root element.");
        m_rootSeen = true;
        if (*m_at != '>') Attributes();
        if (*m_at == '/') {
            ++m_at;
            Expect('>', "A '>' must follow the '/' in a tag.");
            return;
        }
        Expect('>', "White space, '/' or '>' must follow here in a tag.");
        m_open.push_back(name);
    }

    void Attributes() {
        m_names.clear();
        for (;;) {
            const char* before = m_at;
            SkipSpace();
            if (*m_at == '>' || *m_at == '/') break;
            if (m_at == before) FailHere("White space, '/' or '>' must follow here in a tag.");
            Attribute();
        }
        if (m_names.size() > kFewNames) CheckManyNames();
    }

    void Attribute() {
        const char* start = m_at;
        const std::string_view name = Name("An attribute's name, '/' or '>' must follow here.");
        if (m_names.size() < kFewNames &&
            std::find(m_names.begin(), m_names.end(), name) != m_names.end()) {
            FailTwice(start, name);
        }
        m_names.push_back(name);
        SkipSpace();
        Expect('=', "A '=' must follow the name of an attribute.");
        SkipSpace();
        const char quote = *m_at;
        if (quote != '"' && quote != '\'')
            FailHere("The value of an attribute must stand in quotes.");
        ++m_at;
        AttributeValue(quote);
    }

    void AttributeValue(char quote) {
        for (;;) {
            while (*m_at != quote && *m_at != '<' && *m_at != '&' && *m_at != 0) ++m_at;
            if (*m_at == quote) break;
            if (*m_at == '&') {
                Reference();
            } else {
                FailHere("A '<' cannot stand in the value of an attribute.");
            }
        }
        ++m_at;
    }

    void CheckManyNames() {
        std::sort(m_names.begin(), m_names.end(), [](std::string_view a, std::string_view b) {
            return a != b ? a < b : a.data() < b.data();
        });
        const auto twice = std::adjacent_find(m_names.begin(), m_names.end());
        if (twice != m_names.end()) FailTwice((twice + 1)->data(), *twice);
    }
    [[noreturn]] void FailTwice(const char* place, std::string_view name) const {
        Fail(place, "The attribute '" + std::string(name) + "' stands twice in one tag.");
    }

    void EndTag() {
        if (m_open.empty()) Fail(m_at, "An end tag has no start tag.");
        const std::string_view open = m_open.back();
        if (!IsPlainEndTag(open)) return OtherEndTag(open);
        m_at += open.size() + 3;
        m_open.pop_back();
    }

    // An end tag with white space or with a wrong name.
    void OtherEndTag(std::string_view open) {
        const char* start = m_at;
        m_at += 2;
        const std::string_view name = Name("The name of an end tag must follow '</'.");
        // A name that the end of the text cut off is no wrong name.
        if (name != open && m_at != m_end) {
            Fail(start, "The end tag '" + std::string(name) + "' does not match the start tag '" +
                            std::string(open) + "'.");
        }
        SkipSpace();
        Expect('>', "A '>' must follow the name in an end tag.");
        m_open.pop_back();
    }

    void Instruction() {
        const char* start = m_at;
        m_at += 2;
        const std::string_view target =
            Name("The target of a processing instruction must follow '<?'.");
        if (EqualsIgnoringCase(target, "xml")) {
            Fail(start, "An XML declaration can only stand at the very start of the text.");
        }
        if (!IsSpace(*m_at) && !Rest().starts_with("?>")) {
            FailHere("White space or '?>' must follow the target of a processing instruction.");
        }
        SkipPast("?>", "The text ends in a processing instruction.");
    }

    void CommentOrSection() {
        if (Rest().starts_with("<!--")) return Comment();
        if (Rest().starts_with("<![CDATA[")) return Section();
        if (Rest().starts_with("<!DOCTYPE")) {
            Fail(m_at, "Document type definitions are not accepted.");
        }
        for (const std::string_view whole : {"<!--", "<![CDATA[", "<!DOCTYPE"}) {
            if (whole.starts_with(Rest())) {
                Fail(m_end, "The text ends in the middle of a tag, comment or section.");
            }
        }
        Fail(m_at, "'<!' begins neither a comment nor a CDATA section.");
    }

    void Comment() {
        const char* start = m_at;
        m_at += 4;
        SkipPast("--", "The text ends in a comment.");
        if (m_at == m_end) Fail(m_at, "The text ends in a comment.");
        if (*m_at != '>') Fail(start, "A comment holds '--'.");
        ++m_at;
    }

    void Section() {
        if (m_open.empty()) Fail(m_at, "A CDATA section stands outside the root element.");
        m_at += 9;
        SkipPast("]]>", "The text ends in a CDATA section.");
    }

    void SkipPast(std::string_view mark, const char* reason) {
        const std::size_t found = Rest().find(mark);
        if (found == std::string_view::npos) Fail(m_end, reason);
        m_at += found + mark.size();
    }

    void OutsideText() {
        if (!IsSpace(*m_at)) Fail(m_at, "There is text outside the root element.");
        SkipSpace();
    }

    // Text up to the next '<' or to the end.
    void Text() {
        for (;;) {
            SkipPlainText();
            if (*m_at == '&') {
                Reference();
            } else if (*m_at == ']') {
                if (Rest().starts_with("]]>")) Fail(m_at, "A text holds ']]>'.");
                ++m_at;
            } else {
                return;
            }
        }
    }

    // Up to the next byte that means something in a text.
    void SkipPlainText() {
        const char* at = m_at;
        for (; m_end - at >= static_cast<std::ptrdiff_t>(sizeof(__m128i)); at += sizeof(__m128i)) {
            const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
            const __m128i stops =
                _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(block, _mm_set1_epi8('<')),
                                          _mm_cmpeq_epi8(block, _mm_set1_epi8('&'))),
                             _mm_cmpeq_epi8(block, _mm_set1_epi8(']')));
            const auto mask = static_cast<unsigned>(_mm_movemask_epi8(stops));
            if (mask == 0) continue;
            m_at = at + std::countr_zero(mask);
            return;
        }
        while (*at != '<' && *at != '&' && *at != ']' && *at != 0) ++at;
        m_at = at;
    }

    void Reference() {
        const char* start = m_at++;
        if (*m_at == '#') return CharacterReference(start);
        const char* name = m_at;
        while (HasXmlClass(*m_at, kXmlNamePart)) ++m_at;
        const std::string_view entity(name, static_cast<std::size_t>(m_at - name));
        if (m_at == m_end) Fail(m_at, "The text ends in a reference.");
        if (*m_at != ';' || entity.empty()) {
            Fail(start, "A '&' must begin a reference, and otherwise be written as '&amp;'.");
        }
        ++m_at;
        for (const std::string_view known : {"lt", "gt", "amp", "quot", "apos"}) {
            if (entity == known) return;
        }
        Fail(start, "The entity '" + std::string(entity) + "' is not declared.");
    }

    void CharacterReference(const char* start) {
        ++m_at;
        const int base = *m_at == 'x' ? 16 : 10;
        if (base == 16) ++m_at;
        const char* digits = m_at;
        while ((*m_at >= '0' && *m_at <= '9') ||
               (base == 16 && ((*m_at >= 'a' && *m_at <= 'f') || (*m_at >= 'A' && *m_at <= 'F')))) {
            ++m_at;
        }
        if (m_at == m_end) Fail(m_at, "The text ends in a reference.");
        std::uint32_t value = 0;
        const auto [end, error] = std::from_chars(digits, m_at, value, base);
        if (*m_at != ';' || end != m_at || error != std::errc() || !IsXmlCharacter(value)) {
            Fail(start, "A reference names no character.");
        }
        ++m_at;
    }

    // Up to this many names of attributes are compared one by one.
    static constexpr std::size_t kFewNames = 12;

    const char* m_begin;
    const char* m_end;
    const char* m_at;
    bool m_rootSeen = false;
    std::vector<std::string_view> m_open;
    std::vector<std::string_view> m_names;
};

std::string BadCharacterReason(std::string_view text, std::size_t place) {
    char32_t character = 0;
    if (ReadUtf8(text.substr(place), character) == 0) return "The text is not valid UTF-8 here.";
    if (character == 0) return "The text holds a zero byte.";
    return "The text holds a character that XML does not allow.";
}

}  // namespace

std::optional<XmlFault> FindXmlFault(std::string_view text) {
    const std::size_t bad = FindBadXmlCharacter(text);
    if (bad != std::string_view::npos) return XmlFault{bad, BadCharacterReason(text, bad)};
    try {
        Walker(text).Document();
    } catch (XmlFault& fault) {
        return std::move(fault);
    }
    return std::nullopt;
}

bool ReadXmlDeclaration(std::string_view data, XmlDeclaration& declaration) {
    DeclarationReader reader(data);
    if (!reader.Take("version", declaration.version) || !IsVersion(declaration.version))
        return false;
    if (reader.Take("encoding", declaration.encoding) && !IsEncodingName(declaration.encoding)) {
        return false;
    }
    if (reader.Take("standalone", declaration.standalone) && declaration.standalone != "yes" &&
        declaration.standalone != "no") {
        return false;
    }
    return reader.AtEnd();
}

std::string_view DeclaredXmlEncoding(std::string_view text) {
    if (!text.starts_with(kDeclarationStart)) return {};
    const std::size_t end = text.find("?>");
    if (end == std::string_view::npos) return {};
    XmlDeclaration declaration;
    if (!ReadXmlDeclaration(text.substr(5, end - 5), declaration)) return {};
    return declaration.encoding;
}
