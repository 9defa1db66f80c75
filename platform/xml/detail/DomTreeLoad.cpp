#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <string>
#include <utility>

#include <platform/com/ComError.h>
#include <platform/xml/detail/DomEncoding.h>
#include <platform/xml/detail/DomFile.h>
#include <platform/xml/detail/DomTree.h>
#include <platform/xml/detail/XmlCharacters.h>

namespace {

constexpr unsigned kParseOptions = pugi::parse_cdata | pugi::parse_comments | pugi::parse_pi |
                                   pugi::parse_escapes | pugi::parse_eol |
                                   pugi::parse_wconv_attribute;

// How much of the line of a failure is shown.
constexpr std::size_t kShownLine = 200;

bool IsLineEnd(char byte) {
    return byte == '\n' || byte == '\r';
}
bool BeginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

// A place in a text for a reader.
struct TextPlace {
    LONG line = 1;
    LONG column = 1;
    std::size_t lineStart = 0;
};

TextPlace FindPlace(std::string_view text, std::size_t at) {
    TextPlace place;
    for (std::size_t i = 0; i < at; ++i) {
        const bool pair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (!IsLineEnd(text[i]) || pair) continue;
        ++place.line;
        place.lineStart = i + 1;
    }
    const auto from = text.begin() + static_cast<std::ptrdiff_t>(place.lineStart);
    const auto to = text.begin() + static_cast<std::ptrdiff_t>(at);
    place.column += static_cast<LONG>(std::count_if(from, to, BeginsCharacter));
    return place;
}

// The line with the failure; of a long one the part around the failure.
std::string_view LineAround(std::string_view text, std::size_t lineStart, std::size_t at) {
    std::size_t start = at - lineStart > kShownLine / 2 ? at - kShownLine / 2 : lineStart;
    while (start < at && !BeginsCharacter(text[start])) ++start;
    const std::string_view shown = text.substr(start, kShownLine);
    const auto end = std::find_if(shown.begin(), shown.end(), IsLineEnd);
    return shown.substr(0, static_cast<std::size_t>(end - shown.begin()));
}

// The inside of the XML declaration; empty if there is none.
std::string DeclarationData(std::string_view text) {
    constexpr std::string_view start = "<?xml";
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    if (!text.starts_with(start) || HasXmlClass(text[start.size()], kXmlNamePart)) return {};
    text = text.substr(start.size(), text.find("?>") - start.size());
    text.remove_prefix(text.find_first_not_of(" \t\r\n"));
    text.remove_suffix(text.size() - 1 - text.find_last_not_of(" \t\r\n"));
    return std::string(text);
}

void AddDeclaration(pugi::xml_document& content, const std::string& data) {
    if (data.empty()) return;
    pugi::xml_node declaration = content.prepend_child(pugi::node_pi);
    CheckDomMemory(declaration.set_name("xml") && declaration.set_value(data.c_str()));
}

}  // namespace

bool DomTree::Refuse(HRESULT code, std::string_view reason) {
    m_parseError.m_errorCode = code;
    m_parseError.m_reason = CString(reason);
    return false;
}

bool DomTree::RefuseText(const XmlFault& fault, std::string_view text) {
    const TextPlace place = FindPlace(text, fault.place);
    m_parseError.m_line = place.line;
    m_parseError.m_linepos = place.column;
    m_parseError.m_filepos = static_cast<LONGLONG>(fault.place);
    m_parseError.m_srcText = CString(LineAround(text, place.lineStart, fault.place));
    return Refuse(DOM_E_MALFORMED, fault.reason);
}

// Does the work of a load, whose outcome the parse error tells, also when there is no memory.
// The work begins the new record itself, after it has taken its copy of what is to be loaded:
// that may be a text of the old record.
template <class Work>
bool DomTree::Recorded(CString& url, Work work) {
    try {
        return WithDomMemory(work);
    } catch (const _com_error& error) {
        // What was written into the record until then may be a part of the truth.
        IXMLDOMParseError failure;
        failure.m_errorCode = error.Error();
        // Short enough to need no memory.
        failure.m_reason = "Out of memory.";
        failure.m_url = std::move(url);
        m_parseError = std::move(failure);
        throw;
    }
}

bool DomTree::LoadFile(std::string_view path) {
    CString url;
    return Recorded(url, [&] {
        url = path.substr(0, path.find('\0'));
        m_parseError = IXMLDOMParseError();
        m_parseError.m_url = url;
        DomBuffer text;
        if (const int error = ReadDomFile(url.GetString(), text); error != 0) {
            CheckDomMemory(error != ENOMEM);
            return Refuse(ResultFromBits(0x80070000u | static_cast<unsigned>(error)),
                          std::strerror(error));
        }
        if (const auto fault = ConvertToUtf8(text)) return RefuseText(*fault, {});
        return Load(text);
    });
}

bool DomTree::LoadText(std::string_view source) {
    CString none;
    return Recorded(none, [&] {
        DomBuffer text(source.size());
        CheckDomMemory(static_cast<bool>(text));
        std::copy(source.begin(), source.end(), text.Data());
        m_parseError = IXMLDOMParseError();
        return Load(text);
    });
}

bool DomTree::Load(DomBuffer& text) {
    if (const auto fault = FindXmlFault(text.Text())) return RefuseText(*fault, text.Text());
    return Parse(text);
}

bool DomTree::Parse(DomBuffer& text) {
    const std::string declaration = DeclarationData(text.Text());
    const unsigned white =
        m_preserveWhiteSpace ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single;
    pugi::xml_document content;
    const std::size_t size = text.Size() + 1;
    const pugi::xml_parse_result result = content.load_buffer_inplace_own(
        text.Detach(), size, kParseOptions | white, pugi::encoding_utf8);
    CheckDomMemory(result.status != pugi::status_out_of_memory);
    if (!result) return Refuse(DOM_E_MALFORMED, result.description());
    AddDeclaration(content, declaration);
    TakeOver(content);
    return true;
}

void DomTree::TakeOver(pugi::xml_document& content) {
    CheckDomMemory(!IsNull(content.append_child(pugi::node_element)));
    m_indexes.Clear();
    if (m_nodes > 0) {
        // First the place: without memory for it, the nodes must stay where they are.
        m_retired.push_back(std::make_unique<pugi::xml_document>());
        *m_retired.back() = std::move(m_document);
    } else {
        m_retired.clear();
    }
    m_document = std::move(content);
    m_holder = m_document.last_child();
    m_detached = !m_retired.empty();
}

void DomTree::CopyContent(const DomTree& source) {
    m_preserveWhiteSpace = source.m_preserveWhiteSpace;
    for (pugi::xml_node node = source.FirstChild(source.m_document); !IsNull(node);
         node = source.Shown(node.next_sibling())) {
        CheckDomMemory(IsWholeCopy(node, m_document.insert_copy_before(node, m_holder)));
    }
}
