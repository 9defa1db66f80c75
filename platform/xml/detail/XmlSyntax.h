/// @file
/// Whether a text is an XML document that may be loaded.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Where a text stops being XML, and why.
struct XmlFault {
    std::size_t place = 0;
    std::string reason;
};

/// Looks at the whole of `text`, a UTF-8 text that is followed by a zero byte and may
/// begin with a byte order mark: no fault if it is a well-formed XML 1.0 document with
/// no document type definition. One pass, in time and memory in proportion to the text
/// and to its depth.
std::optional<XmlFault> FindXmlFault(std::string_view text);

/// The encoding that the XML declaration at the start of `text` names; empty if none
/// can be made out. `text` need only be ASCII in its declaration.
std::string_view DeclaredXmlEncoding(std::string_view text);

/// Splits the inside of an XML declaration (`version="1.0" …`) into its parts; false if
/// it is not one.
struct XmlDeclaration {
    std::string_view version, encoding, standalone;
};
bool ReadXmlDeclaration(std::string_view data, XmlDeclaration& declaration);
