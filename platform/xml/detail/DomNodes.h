/// @file
/// The parser's nodes as the DOM uses them: conversions that cost nothing.

#pragma once

#include <bit>
#include <string_view>

#include <pugixml.hpp>

static_assert(sizeof(pugi::xml_node) == sizeof(pugi::xml_node_struct*));
static_assert(sizeof(pugi::xml_attribute) == sizeof(pugi::xml_attribute_struct*));

inline pugi::xml_node_struct* RawNode(pugi::xml_node node) {
    return std::bit_cast<pugi::xml_node_struct*>(node);
}
inline pugi::xml_node NodeOf(pugi::xml_node_struct* node) {
    return std::bit_cast<pugi::xml_node>(node);
}
inline bool SameNode(pugi::xml_node a, pugi::xml_node b) {
    return RawNode(a) == RawNode(b);
}
inline bool IsNull(pugi::xml_node node) {
    return RawNode(node) == nullptr;
}

/// Whether the zero-ended `tag` is `name`. Tags are short: a call would cost more.
inline bool EqualsName(const char* tag, std::string_view name) {
    for (const char byte : name) {
        if (*tag != byte || byte == 0) return false;
        ++tag;
    }
    return *tag == 0;
}

inline bool IsElement(pugi::xml_node node) {
    return node.type() == pugi::node_element;
}
inline bool IsElementNamed(pugi::xml_node node, std::string_view name) {
    return EqualsName(node.name(), name) && IsElement(node);
}
inline bool IsTextType(pugi::xml_node_type type) {
    return type == pugi::node_pcdata || type == pugi::node_cdata;
}
