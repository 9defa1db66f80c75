/// @file
/// From the bytes of a file to UTF-8.

#pragma once

#include <optional>

#include <platform/xml/detail/DomBuffer.h>
#include <platform/xml/detail/XmlSyntax.h>

/// Brings the bytes of a document to UTF-8, in `text` itself, by its byte order mark
/// and its declaration. A fault says that the bytes contradict their declaration, or
/// that the encoding is not one of those that can be read; its place is 0. Bytes that
/// are taken for UTF-8 are not looked at further. Raises `std::bad_alloc` without
/// memory.
std::optional<XmlFault> ConvertToUtf8(DomBuffer& text);
