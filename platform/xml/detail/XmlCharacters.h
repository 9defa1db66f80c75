/// @file
/// Which bytes XML accepts as characters and as names.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// What a byte may be in an XML text; bytes of several-byte characters count as parts
/// of names until they are looked at closely.
enum XmlByteClass : std::uint8_t {
    kXmlSpace = 1,
    kXmlNameStart = 2,
    kXmlNamePart = 4,
};

constexpr std::array<std::uint8_t, 256> MakeXmlByteClasses() {
    std::array<std::uint8_t, 256> classes{};
    for (const char c : {' ', '\t', '\n', '\r'}) classes[static_cast<unsigned char>(c)] = kXmlSpace;
    for (std::size_t c = 0; c < 256; ++c) {
        const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        const bool starts = letter || c == '_' || c == ':' || c >= 0x80;
        const bool inside = (c >= '0' && c <= '9') || c == '-' || c == '.';
        if (starts) classes[c] = kXmlNameStart | kXmlNamePart;
        if (inside) classes[c] = kXmlNamePart;
    }
    return classes;
}

inline constexpr std::array<std::uint8_t, 256> kXmlByteClasses = MakeXmlByteClasses();

inline bool HasXmlClass(char byte, unsigned classes) {
    return (kXmlByteClasses[static_cast<unsigned char>(byte)] & classes) != 0;
}

/// Reads the character at the front of `text`, which is not empty: its length in
/// bytes, or 0 if no well-formed UTF-8 stands there.
std::size_t ReadUtf8(std::string_view text, char32_t& character);

/// Whether XML 1.0 allows the character in a document.
constexpr bool IsXmlCharacter(char32_t c) {
    if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
    return c <= 0xD7FF || (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

/// Place of the first byte that belongs to no XML character in UTF-8; `npos` if all is
/// well.
std::size_t FindBadXmlCharacter(std::string_view text);

/// Whether `name` is a Name of XML 1.0, fifth edition.
bool IsXmlName(std::string_view name);
