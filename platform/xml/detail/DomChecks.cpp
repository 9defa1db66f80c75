#include <platform/xml/detail/DomChecks.h>

#include <platform/com/ComError.h>
#include <platform/xml/detail/XmlCharacters.h>
#include <platform/xml/detail/XmlSyntax.h>

namespace {

void Require(bool holds, const char* reason) {
    if (!holds) _com_raise_error(E_INVALIDARG, reason);
}

bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

bool IsReservedTarget(std::string_view target) {
    return target.size() == 3 && (target[0] | 0x20) == 'x' && (target[1] | 0x20) == 'm' &&
           (target[2] | 0x20) == 'l';
}

}  // namespace

void CheckDomName(std::string_view name) {
    Require(IsXmlName(name), "The name is no XML name.");
}

void CheckDomText(std::string_view text) {
    Require(FindBadXmlCharacter(text) == std::string_view::npos,
            "The text is not UTF-8, or has a character that XML cannot hold.");
}

void CheckDomSection(std::string_view text) {
    CheckDomText(text);
    Require(!Contains(text, "\r"), "A carriage return cannot be stored here.");
}

void CheckDomComment(std::string_view text) {
    CheckDomSection(text);
    Require(!Contains(text, "--") && !text.ends_with('-'),
            "A comment cannot hold '--' or end in '-'.");
}

void CheckDomInstruction(std::string_view target, std::string_view data) {
    CheckDomName(target);
    CheckDomSection(data);
    Require(!Contains(data, "?>"), "A processing instruction cannot hold '?>'.");
    Require(data.empty() || !HasXmlClass(data[0], kXmlSpace),
            "The data of a processing instruction cannot begin with white space.");
    if (!IsReservedTarget(target)) return;
    Require(target == "xml", "The target of a processing instruction is reserved.");
    XmlDeclaration declaration;
    Require(ReadXmlDeclaration(' ' + std::string(data), declaration),
            "The XML declaration is not in order.");
}
